// CADTypes6D: six-component tool poses.
//   TPoint6D         a position X, Y, Z and a direction A, B, C
//   TPoint6DList     an ordered list of them, with a text file
//   TPoint3DHelper   what the pose types add to TPoint3D
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint3DHelper.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::CADTypes6D {
/// Fills TPoint6D::FZero, then TPoint6D::FOnes.
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::CADTypes6D
