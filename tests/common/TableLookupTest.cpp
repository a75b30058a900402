#include <ZORBase/common/TableLookup.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <algorithm>
#include <cfloat>
#include <random>
#include <utility>
#include <vector>

namespace ZORBase {
namespace {

using TPlace = std::pair<int, bool>;

TPlace Find(const std::vector<double>& Keys, double Value) {
  const TRowPlace place = FindRow(
      static_cast<int>(Keys.size()), [&](int Row) { return Keys[static_cast<std::size_t>(Row)]; }, Value);
  return {place.Row, place.Between};
}

TPlace FindFrom(int Start, const std::vector<double>& Keys, double Value) {
  const TRowPlace place = FindRowFrom(
      Start, static_cast<int>(Keys.size()), [&](int Row) { return Keys.at(static_cast<std::size_t>(Row)); }, Value);
  return {place.Row, place.Between};
}

// For a value that is covered: Keys.front() <= Value < Keys.back().
TPlace FindAt(const std::vector<double>& Keys, double Value) {
  const auto above = std::upper_bound(Keys.begin(), Keys.end(), Value);
  const TRowPlace place = FindRowAt(
      static_cast<int>(above - Keys.begin()) - 1, static_cast<int>(Keys.size()),
      [&](int Row) { return Keys.at(static_cast<std::size_t>(Row)); }, Value);
  return {place.Row, place.Between};
}

// The bisection step by step, with the middle row taken by truncation.
TPlace FindStepByStep(const std::vector<double>& Keys, double Value) {
  const long double eps = 1e-7L;
  const int last = static_cast<int>(Keys.size()) - 1;
  if (Keys.front() + eps > Value) return {0, false};
  if (Keys.back() - eps < Value) return {last, false};
  int lo = 0;
  int hi = last;
  while (hi - lo > 1) {
    const int mid = static_cast<int>((hi + lo) / 2.0);
    const long double key = Keys[static_cast<std::size_t>(mid)];
    if (std::fabs(key - static_cast<long double>(Value)) < eps) return {mid, false};
    if (key >= Value) {
      hi = mid;
    } else {
      lo = mid;
    }
  }
  return {lo, true};
}

const std::vector<double> kKeys = {0, 1, 2, 4, 8};

TEST(FindRow, AValueBetweenTwoRowsNamesTheLowerOne) {
  EXPECT_EQ(Find(kKeys, 0.5), TPlace(0, true));
  EXPECT_EQ(Find(kKeys, 1.5), TPlace(1, true));
  EXPECT_EQ(Find(kKeys, 3.9), TPlace(2, true));
  EXPECT_EQ(Find(kKeys, 7.9), TPlace(3, true));
}

TEST(FindRow, AValueOutsideIsThatOfTheNearestEnd) {
  EXPECT_EQ(Find(kKeys, -1), TPlace(0, false));
  EXPECT_EQ(Find(kKeys, -kInfinity), TPlace(0, false));
  EXPECT_EQ(Find(kKeys, 9), TPlace(4, false));
  EXPECT_EQ(Find(kKeys, kInfinity), TPlace(4, false));
}

TEST(FindRow, AValueCloserThan1eMinus7ToAnEndIsThatOfTheEnd) {
  EXPECT_EQ(Find(kKeys, 0), TPlace(0, false));
  EXPECT_EQ(Find(kKeys, 0.9e-7), TPlace(0, false));
  EXPECT_EQ(Find(kKeys, 1.1e-7), TPlace(0, true));
  EXPECT_EQ(Find(kKeys, 8 - 0.9e-7), TPlace(4, false));
  EXPECT_EQ(Find(kKeys, 8 - 1.1e-7), TPlace(3, true));
}

#if LDBL_MANT_DIG == 64  // where extended precision has 80 bits

// The double 1e-7 lies below the extended-precision 1e-7, so it still belongs to the first row.
TEST(FindRow, TheToleranceIsThatOfExtendedPrecision) {
  EXPECT_EQ(Find(kKeys, 1e-7), TPlace(0, false));
  EXPECT_EQ(Find(kKeys, std::nextafter(1e-7, 1.0)), TPlace(0, true));
}

#endif

TEST(FindRow, AnInnerRowAnswersWhereTheBisectionMeetsIt) {
  EXPECT_EQ(Find(kKeys, 2 + 0.9e-7), TPlace(2, false));
  EXPECT_EQ(Find(kKeys, 1 - 0.9e-7), TPlace(1, false));
  EXPECT_EQ(Find(kKeys, 4 - 0.9e-7), TPlace(3, false));
}

TEST(FindRow, OneRowAnswersEverythingAndTwoRowsHaveOneGap) {
  for (const double value : {-1.0, 3.0, 7.0}) EXPECT_EQ(Find({3}, value), TPlace(0, false));
  EXPECT_EQ(Find({3, 4}, 3.5), TPlace(0, true));
}

TEST(FindRow, WhatIsNoNumberEndsInTheLastGap) {
  EXPECT_EQ(Find(kKeys, std::nan("")), TPlace(3, true));
  EXPECT_EQ(Find({3, 4}, std::nan("")), TPlace(0, true));
}

// Rising keys with steps of 0, of less than the tolerance, and of more.
rc::Gen<std::vector<double>> AnyKeys() {
  const auto step = rc::gen::element(0.0, 3e-8, 1e-7, 1.5e-7, 2.5e-7, 0.25, 1.0);
  return rc::gen::map(rc::gen::nonEmpty(rc::gen::container<std::vector<double>>(step)), [](std::vector<double> Steps) {
    double sum = 0;
    for (double& entry : Steps) entry = sum += entry;
    return Steps;
  });
}

rc::Gen<double> ValueNear(const std::vector<double>& Keys) {
  const auto offset = rc::gen::element(-0.3, -2e-7, -1.1e-7, -1e-7, -0.9e-7, 0.0, 0.9e-7, 1e-7, 1.1e-7, 2e-7, 0.3);
  return rc::gen::map(rc::gen::pair(rc::gen::elementOf(Keys), offset),
                      [](const std::pair<double, double>& Parts) { return Parts.first + Parts.second; });
}

RC_GTEST_PROP(FindRow, IsTheBisectionStepByStep, ()) {
  const auto keys = *AnyKeys();
  const double value = *ValueNear(keys);
  RC_ASSERT(Find(keys, value) == FindStepByStep(keys, value));
}

RC_GTEST_PROP(FindRowFrom, AnswersAsFindRowFromEveryStart, ()) {
  const auto keys = *AnyKeys();
  const double value = *rc::gen::oneOf(ValueNear(keys), rc::gen::element(-kInfinity, kInfinity, std::nan("")));
  for (int start = -2; start < static_cast<int>(keys.size()) + 2; ++start) {
    RC_ASSERT(FindFrom(start, keys, value) == Find(keys, value));
  }
}

TEST(FindRowFrom, NearItsStartALargeTableCostsAFewLooks) {
  int looks = 0;
  const auto key = [&](int Row) { return ++looks, static_cast<double>(Row); };
  constexpr int count = 1'000'000'000;
  const TRowPlace place = FindRowFrom(500'000'000, count, key, 500'000'002.5);
  EXPECT_EQ(place.Row, 500'000'002);
  EXPECT_TRUE(place.Between);
  EXPECT_LT(looks, 15);
}

// x^3 has the slopes 3 x^2, so the step gives x^3 back.
TEST(HermiteStep, ReproducesACubic) {
  const auto cube = [](double X) { return X * X * X - 2 * X + 1; };
  const auto slope = [](double X) { return 3 * X * X - 2; };
  for (double x = -1; x <= 3; x += 0.125) {
    EXPECT_NEAR(HermiteStep(x, -1, 3, cube(-1), cube(3), slope(-1), slope(3)), cube(x), 1e-13);
  }
}

TEST(HermiteStep, GivesTheEndValuesExactly) {
  EXPECT_EQ(HermiteStep(0.1, 0.1, 0.7, 3.3, -4.4, 100, 1000), 3.3);
  EXPECT_EQ(HermiteStep(0.7, 0.1, 0.7, 3.3, -4.4, 100, 1000), -4.4);
}

// Keys as close as 3e-8, so that several rows are within the tolerance at once; some are repeated.
TEST(FindRowAt, TakesTheStepsOfTheBisection) {
  std::mt19937_64 random(20240709);
  const auto unit = [&] { return static_cast<double>(random() >> 11U) * 0x1p-53; };
  for (const std::size_t count : {3U, 4U, 10U, 500U}) {
    for (const double spacing : {3e-8, 1e-7, 3e-7, 1.0}) {
      std::vector<double> keys = {0.0};
      while (keys.size() < count) keys.push_back(keys.back() + (random() % 4 == 0 ? 0.0 : spacing * unit()));
      keys.push_back(keys.back() + spacing);
      for (int i = 0; i < 3000; ++i) {
        const double near = keys[random() % keys.size()];
        for (const double value :
             {near, near + 3e-7 * (unit() - 0.5), near + 1e-7, near - 1e-7, keys.back() * unit()}) {
          if (value < keys.front() || value >= keys.back()) continue;
          ASSERT_EQ(FindAt(keys, value), FindStepByStep(keys, value)) << value << " in " << keys.size();
        }
      }
    }
  }
}

// From 2^41 on, a key and the tolerance sum up to the key, even in extended precision: its own row does not answer first.
TEST(FindRowAt, TakesTheStepsOfTheBisectionAmongKeysThatSwallowTheTolerance) {
  const std::vector<double> keys = {4e12, 5e12, 6e12, 7e12, 8e12};
  EXPECT_EQ(FindAt(keys, 4e12), TPlace(0, true));
  for (const double key : keys) {
    for (const double value : {key, std::nextafter(key, kInfinity), std::nextafter(key, -kInfinity), key + 1e11}) {
      if (value < keys.front() || value >= keys.back()) continue;
      EXPECT_EQ(FindAt(keys, value), FindStepByStep(keys, value)) << value;
    }
  }
}

}  // namespace
}  // namespace ZORBase
