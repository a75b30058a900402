// CADTypesXD: points of up to 44 coordinates, and smooth curves through them.
//   TPointXD, SafeDivXD   a point or vector, and the guarded division that goes with it
//   TCubicBezXD           a cubic Bezier segment with arc length
//   TTWoDerivCurveXD      a curve through points with continuous tangent and nearly continuous curvature
#pragma once

#include <ZORBase/ZORGeometry/CADTypesXD/TCubicBezXD.h>
#include <ZORBase/ZORGeometry/CADTypesXD/TPointXD.h>
#include <ZORBase/ZORGeometry/CADTypesXD/TTWoDerivCurveXD.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::CADTypesXD {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::CADTypesXD
