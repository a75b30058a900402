// CADTypesEuler: tool poses as an operator or a controller writes them, with rotation angles.
//   TEulerAng        three rotation angles about x, y and z
//   TEulerPoint      a position with its angles
//   TEulerPointList  an ordered list of them, with a text file, convertible to six-component poses
#pragma once

#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerAng.h>
#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerPoint.h>
#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerPointList.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::CADTypesEuler {
/// Fills TEulerAng::FZero, then TEulerPoint::FZero.
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::CADTypesEuler
