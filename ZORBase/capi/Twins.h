// Twins: which type of the library each struct of the mathematics is. Internal. The fields stand in the same order.
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <ZORBase/ZORGeometry/CADTypesEuler.h>
#include <ZORBase/capi/Call.h>
#include <ZORBase/common/Cadtypes.h>

namespace ZORBase::capi {

#define ZORBASE_TWINS(Outside, Inside) \
  template <>                          \
  struct TTwin<Outside> {              \
    using Type = Inside;               \
  };                                   \
  template <>                          \
  struct TTwin<Inside> {               \
    using Type = Outside;              \
  }

ZORBASE_TWINS(zorbase_point2, TPoint2D);
ZORBASE_TWINS(zorbase_point, TPoint3D);
ZORBASE_TWINS(zorbase_pose, TPoint6D);
ZORBASE_TWINS(zorbase_euler_pose, TEulerPoint);
ZORBASE_TWINS(zorbase_matrix, TMatrix4D);
ZORBASE_TWINS(zorbase_quaternion, TQuaternion);

#undef ZORBASE_TWINS

}  // namespace ZORBase::capi
