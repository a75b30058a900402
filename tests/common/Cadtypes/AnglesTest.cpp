#include <ZORBase/common/Cadtypes/Angles.h>

#include "support/TestSupport.h"

namespace ZORBase {
namespace {

static_assert(DegToRad(180.0) == kPi && RadToDeg(kPi) == 180.0);

TEST(Angles, RightAnglesConvertToTheNearestDoublesAndBack) {
  for (const int turns : {-4, -2, -1, 0, 1, 2, 4}) {
    EXPECT_EQ(DegToRad(90.0 * turns), kPi / 2 * turns);
    EXPECT_EQ(RadToDeg(kPi / 2 * turns), 90.0 * turns);
  }
}

// pi / 1800 with 20 digits.
TEST(Angles, ATenthOfADegreeIsRight) { EXPECT_DOUBLE_EQ(DegToRad(0.1), 0.0017453292519943295769); }

RC_GTEST_PROP(Angles, ThereAndBackIsTheAngle, (int MilliDegrees)) {
  const double degrees = MilliDegrees / 1000.0;
  RC_ASSERT(std::fabs(RadToDeg(DegToRad(degrees)) - degrees) <= 4e-16 * std::fabs(degrees));
}

}  // namespace
}  // namespace ZORBase
