#pragma once

#include <ZORBase/common/Cadtypes/TPoint3D.h>

namespace ZORBase {

/// A straight line from one point to another.
struct TLine3D {
  TPoint3D StartPt;
  TPoint3D EndPt;
};

}  // namespace ZORBase
