// CADTypes6D: six-component tool poses, and the transforms and orientations to move them with.
//   TPoint6D         a position X, Y, Z and a direction A, B, C
//   TPoint6DList     an ordered list of them, with a text file
//   TPoint3DHelper   what the pose types add to TPoint3D
//   TMatrix4D        a transform: compose, invert, apply, to and from Euler angles and axes; TMatrix4DList, a list of them
//   TQuaternion      an orientation as four numbers, with logarithm and exponential
//   OrientationInterpolation   NLerp, SLerp and Squad between quaternions or matrices, and the angle between two
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/OrientationInterpolation.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4D.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4DList.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TPoint3DHelper.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TQuaternion.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::CADTypes6D {
/// Fills TPoint6D::FZero, then TPoint6D::FOnes.
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::CADTypes6D
