#include <ZORBase/common/Cadtypes/ArcTan2.h>
#include <gtest/gtest.h>

#include <cmath>

#include "support/Numbers.h"

namespace ZORBase {
namespace {

using Test::kPi;

TEST(ArcTan2, ATurnByHalfIsPositiveWhateverTheSignOfZero) {
  EXPECT_EQ(ArcTan2(0.0, -1.0), kPi);
  EXPECT_EQ(ArcTan2(-0.0, -1.0), kPi);
}

TEST(ArcTan2, NoTurnIsAPositiveZero) {
  EXPECT_EQ(ArcTan2(-0.0, 1.0), 0.0);
  EXPECT_FALSE(std::signbit(ArcTan2(-0.0, 1.0)));
}

TEST(ArcTan2, TheAxesAndDiagonalsOfEveryQuadrantAreWhereTheyAre) {
  EXPECT_EQ(ArcTan2(2.0, 0.0), kPi / 2);
  EXPECT_EQ(ArcTan2(-2.0, 0.0), -kPi / 2);
  EXPECT_DOUBLE_EQ(ArcTan2(3.0, 3.0), kPi / 4);
  EXPECT_DOUBLE_EQ(ArcTan2(3.0, -3.0), 3 * kPi / 4);
  EXPECT_DOUBLE_EQ(ArcTan2(-3.0, -3.0), -3 * kPi / 4);
  EXPECT_DOUBLE_EQ(ArcTan2(-3.0, 3.0), -kPi / 4);
}

}  // namespace
}  // namespace ZORBase
