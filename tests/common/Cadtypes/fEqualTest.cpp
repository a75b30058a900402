#include <ZORBase/common/Cadtypes/fEqual.h>

#include "support/TestSupport.h"

#include <cmath>

namespace ZORBase {
namespace {

static_assert(fEqual(1.0, 1.0, 0.0));

TEST(fEqual, ADifferenceOfExactlyTheToleranceIsEqual) {
  EXPECT_TRUE(fEqual(0.0, 1e-6, 1e-6));
  EXPECT_TRUE(fEqual(1e-6, 0.0, 1e-6));
  EXPECT_TRUE(fEqual(-0.25, 0.25, 0.5));
  EXPECT_FALSE(fEqual(0.0, std::nextafter(1e-6, 1.0), 1e-6));
  EXPECT_FALSE(fEqual(std::nextafter(-1e-6, -1.0), 0.0, 1e-6));
}

TEST(fEqual, TheToleranceIsAbsolute) {
  EXPECT_TRUE(fEqual(1e9, 1e9 + 5e-7, 1e-6));
  EXPECT_FALSE(fEqual(1e9, 1e9 + 2e-6, 1e-6));
  EXPECT_TRUE(fEqual(1e-9, -1e-9, 1e-6));
}

TEST(fEqual, ANegativeToleranceEqualsNothing) { EXPECT_FALSE(fEqual(1.0, 1.0, -1e-6)); }

TEST(fEqual, WhatIsNoNumberEqualsNothing) {
  EXPECT_FALSE(fEqual(kNaN, kNaN, 1e-6));
  EXPECT_FALSE(fEqual(kNaN, 0.0, kInfinity));
  EXPECT_FALSE(fEqual(0.0, 0.0, kNaN));
}

TEST(fEqual, AnInfinityIsFarFromEveryNumber) {
  EXPECT_FALSE(fEqual(kInfinity, 1e308, 1e-6));
  EXPECT_FALSE(fEqual(kInfinity, -kInfinity, 1e-6));
}

}  // namespace
}  // namespace ZORBase
