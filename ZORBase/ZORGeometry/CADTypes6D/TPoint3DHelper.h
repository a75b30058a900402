#pragma once

#include <ZORBase/common/Cadtypes/TPoint3D.h>

namespace ZORBase {

/// What the pose types add to TPoint3D.
struct TPoint3DHelper {
  /// \return the unit vector along Z.
  static constexpr TPoint3D VerticalVec() { return TPoint3D::Create(0.0, 0.0, 1.0); }
};

}  // namespace ZORBase
