#include <ZORBase/common/Cadtypes/TLine3D.h>

#include "support/TestSupport.h"

#include <type_traits>

namespace ZORBase {
namespace {

static_assert(std::is_trivially_copyable_v<TLine3D> && sizeof(TLine3D) == 6 * sizeof(double));

TEST(TLine3D, HoldsItsStartAndThenItsEnd) {
  const TLine3D line = {TPoint3D::Create(1, 2, 3), TPoint3D::Create(4, 5, 6)};
  EXPECT_EQ(line.StartPt.Z, 3);
  EXPECT_EQ(line.EndPt.X, 4);
  EXPECT_EQ(TLine3D().StartPt.Mag() + TLine3D().EndPt.Mag(), 0);
}

}  // namespace
}  // namespace ZORBase
