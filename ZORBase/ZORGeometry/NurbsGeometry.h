// NurbsGeometry: cubic B-spline curves through measured points.
//   TNurbsBasicFunc   knots, span search, basis values and their derivatives
//   TSUTable          arc length <-> parameter, both ways
//   TNurbsCurve       what the curves share, over the type of their points
//   TNurbs2D          the curve through points of the plane
//   TNurbs6D          the curve through poses; position and direction are blended alike
// Fit: CreateCross, CreateByCtlPoints.  Evaluate: EvalPoint, CurveDerivsAlg1.  Measure: CurveLength, ParamOfLength,
// LengthOfParam.
#pragma once

#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs2D.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsCurve.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TSUTable.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::NurbsGeometry {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::NurbsGeometry
