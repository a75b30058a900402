#pragma once

#include <ZORBase/common/Cadtypes/TPoint3D.h>

namespace ZORBase {

/// A straight line from one point to another.
struct TLine3D {
  TPoint3D StartPt;  ///< where it begins
  TPoint3D EndPt;    ///< where it ends
};

}  // namespace ZORBase
