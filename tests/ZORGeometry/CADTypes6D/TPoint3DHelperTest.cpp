#include <ZORBase/ZORGeometry/CADTypes6D/TPoint3DHelper.h>

#include "support/TestSupport.h"

namespace ZORBase {
namespace {

TEST(TPoint3DHelper, VerticalVecIsTheUnitVectorAlongZ) {
  constexpr TPoint3D vertical = TPoint3DHelper::VerticalVec();
  EXPECT_EQ(vertical.X, 0);
  EXPECT_EQ(vertical.Y, 0);
  EXPECT_EQ(vertical.Z, 1);
}

}  // namespace
}  // namespace ZORBase
