#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4D.h>
#include <ZORBase/common/BaseServices/TList.h>

namespace ZORBase {

/// An ordered list of transforms.
class TMatrix4DList : public TList<TMatrix4D> {
 public:
  using TList<TMatrix4D>::TList;
};

}  // namespace ZORBase
