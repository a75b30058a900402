#include <ZORBase/common/RisingZero.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <cmath>
#include <utility>

namespace ZORBase {
namespace {

// x^3 + x - Shift, which rises everywhere.
auto Cubic(double Shift) {
  return [Shift](double x) { return std::pair(x * x * x + x - Shift, 3.0 * x * x + 1.0); };
}

RC_GTEST_PROP(ZeroOfRising, IsWhereTheFunctionWasMadeToVanishWhereverTheSearchStarts, ()) {
  const double zero = 1e-6 * *rc::gen::inRange(1, 1'000'000);
  const double start = 1e-6 * *rc::gen::inRange(1, 1'000'000);
  const double found = ZeroOfRising(0.0, 1.0, start, Cubic(zero * zero * zero + zero));
  RC_ASSERT(std::fabs(found - zero) <= 4e-16);
}

TEST(ZeroOfRising, AStepThatLeavesTheBracketHalvesIt) {
  // Newton's step from 0.9 leads to where the square root is no number.
  int calls = 0;
  const auto root = [&](double x) {
    ++calls;
    EXPECT_TRUE(x > 0.0 && x < 1.0) << x;
    return std::pair(std::sqrt(x) - 0.1, 0.5 / std::sqrt(x));
  };
  EXPECT_NEAR(ZeroOfRising(0.0, 1.0, 0.9, root), 0.01, 1e-17);
  EXPECT_LT(calls, 15);
}

TEST(ZeroOfRising, BelowZeroTheSearchSettlesAsSoonAsAboveIt) {
  int calls = 0;
  const auto counted = [&](double x) {
    ++calls;
    return Cubic(-0.3)(x);
  };
  const double found = ZeroOfRising(-1.0, 0.0, -0.5, counted);
  EXPECT_NEAR(found * found * found + found, -0.3, 1e-16);
  EXPECT_LT(calls, 10);
}

TEST(ZeroOfRising, AValueOfZeroEndsTheSearchAtOnce) {
  int calls = 0;
  const auto line = [&](double x) {
    ++calls;
    return std::pair(x - 0.25, 1.0);
  };
  EXPECT_EQ(ZeroOfRising(0.0, 1.0, 0.25, line), 0.25);
  EXPECT_EQ(calls, 1);
}

// Without a slope every step halves the bracket, from 1 down to the distance of two doubles: 2^-53 after 53 of them.
TEST(ZeroOfRising, WithoutASlopeTheBracketIsHalvedDownToTheDoubles) {
  int calls = 0;
  const auto step = [&](double x) {
    ++calls;
    return std::pair(x < 1.0 / 3.0 ? -1.0 : 1.0, 0.0);
  };
  EXPECT_NEAR(ZeroOfRising(0.0, 1.0, 0.5, step), 1.0 / 3.0, 2e-16);
  EXPECT_LE(calls, 55);
}

TEST(ZeroOfRising, WhatIsNoNumberEndsTheSearchToo) {
  int calls = 0;
  const auto nothing = [&](double) {
    ++calls;
    return std::pair(kNaN, kNaN);
  };
  const double found = ZeroOfRising(0.0, 1.0, 0.5, nothing);
  EXPECT_TRUE(found >= 0.0 && found <= 1.0);
  EXPECT_LE(calls, 100);
}

// On the way to 0 each half is as far from the one before, in proportion, as that was.
TEST(ZeroOfRising, ASearchThatDoesNotSettleEndsAfterAHundredSteps) {
  int calls = 0;
  const auto above = [&](double) {
    ++calls;
    return std::pair(1.0, 0.0);
  };
  EXPECT_EQ(ZeroOfRising(0.0, 1.0, 0.5, above), 0x1p-101);
  EXPECT_EQ(calls, 100);
}

}  // namespace
}  // namespace ZORBase
