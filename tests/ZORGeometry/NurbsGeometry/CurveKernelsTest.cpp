// The parts that the fast curve is made of.
#include <ZORBase/ZORGeometry/NurbsGeometry/CurvePoint.h>
#include <ZORBase/kernels/BucketIndex.h>
#include <ZORBase/kernels/CurveBlend.h>
#include <ZORBase/kernels/ExtendedStore.h>

#include <limits>

#include "CurveTestSupport.h"
#include "PlainCurve.h"

namespace ZORBase::Test {
namespace {

TBucketIndex IndexOf(const std::vector<double>& Keys, double BucketsPerKey = 2.0) {
  TBucketIndex index;
  index.Build(
      Keys.size(), [&](std::size_t i) { return Keys[i]; }, BucketsPerKey);
  return index;
}

std::size_t Find(const TBucketIndex& Index, const std::vector<double>& Keys, double X) {
  return Index.Find([&](std::size_t i) { return Keys.at(i); }, X);
}

std::size_t FindByGuess(const TBucketIndex& Index, const std::vector<double>& Keys, double X) {
  return Index.FindByGuess([&](std::size_t i) { return Keys.at(i); }, X);
}

/// Count rising keys: spread, crowded in clusters, and repeated.
std::vector<double> RandomKeys(std::mt19937_64& Random, int Count) {
  std::vector<double> keys;
  double key = Uniform(Random, -5, 5);
  for (int i = 0; i < Count; ++i) {
    keys.push_back(key);
    const auto kind = Random() % 8;
    key += kind < 2 ? 0.0 : (kind < 5 ? Uniform(Random, 0, 1e-9) : std::pow(10, Uniform(Random, -3, 2)));
  }
  keys.push_back(key + 1);
  return keys;
}

TEST(BucketIndex, FindsTheOnePlaceOfAValueAmongKeysOfEverySpread) {
  std::mt19937_64 random(20240702);
  for (const int count : {2, 3, 4, 5, 10, 100, 3000}) {
    for (const double bucketsPerKey : {1.0 / 16.0, 0.3, 1.0, 2.0}) {
      const std::vector<double> keys = RandomKeys(random, count);
      const TBucketIndex index = IndexOf(keys, bucketsPerKey);
      for (int i = 0; i < 3000; ++i) {
        const double key = keys[random() % keys.size()];
        for (const double x : {key, std::nextafter(key, -kInfinity), std::nextafter(key, kInfinity),
                               key + Uniform(random, 0, 1e-9), Uniform(random, keys.front(), keys.back())}) {
          ASSERT_EQ(index.Covers(x), keys.front() <= x && x < keys.back()) << x;
          if (!index.Covers(x)) continue;
          const std::size_t place = Find(index, keys, x);
          ASSERT_LE(keys.at(place), x);
          ASSERT_GT(keys.at(place + 1), x);
          ASSERT_EQ(FindByGuess(index, keys, x), place) << x;
        }
      }
    }
  }
}

// The distances change by up to 5 percent, and every hundredth key follows closely: guesses that hit, and guesses that miss.
TEST(BucketIndex, GuessesAmongKeysAtAlmostEqualDistances) {
  std::mt19937_64 random(20261143);
  for (const int count : {5, 6, 17, 1000, 20000}) {
    std::vector<double> keys = {-1.0};
    for (int i = 1; i < count; ++i)
      keys.push_back(keys.back() + 0.03 * (i % 100 == 0 ? 1e-9 : Uniform(random, 0.95, 1.05)));
    const TBucketIndex index = IndexOf(keys, 1.0 / 16.0);
    for (int i = 0; i < 20000; ++i) {
      const double x = i < count - 1 ? keys[static_cast<std::size_t>(i)] : Uniform(random, keys.front(), keys.back());
      const std::size_t place = FindByGuess(index, keys, x);
      ASSERT_LE(keys.at(place), x);
      ASSERT_GT(keys.at(place + 1), x);
    }
  }
}

TEST(BucketIndex, CoversNothingWithoutRisingFiniteKeys) {
  for (const std::vector<double>& keys : std::vector<std::vector<double>>{{},
                                                                          {1},
                                                                          {1, 2},
                                                                          {1, 1, 1, 1},
                                                                          {1, 3, 2, 4},
                                                                          {1, 2, std::nan(""), 4},
                                                                          {-kInfinity, 0, 1, 2},
                                                                          {0, 1, 2, kInfinity},
                                                                          {std::nan(""), 1, 2, 3}}) {
    const TBucketIndex index = IndexOf(keys);
    for (const double x : {0.0, 1.0, 1.5, 2.0, kInfinity, std::nan("")})
      EXPECT_FALSE(index.Covers(x)) << keys.size() << " keys, " << x;
  }
}

TEST(BucketIndex, KeysOverTooSmallOrTooLargeARangeAreLeftAlone) {
  EXPECT_FALSE(IndexOf({0, 5e-324, 1e-323, 1.5e-323}).Covers(5e-324));
  EXPECT_FALSE(IndexOf({-1.5e308, 0, 1.5e308}).Covers(std::nextafter(1.5e308, 0)));
}

// Places are kept in 32 bits. That there are too many is told by their number alone.
TEST(BucketIndex, MoreKeysThanItHasNumbersForAreLeftAlone) {
  TBucketIndex index = IndexOf({0, 1, 2, 3});
  index.Build(std::numeric_limits<std::uint32_t>::max(), [](std::size_t i) {
    ADD_FAILURE() << "key " << i << " was asked for";
    return 0.0;
  });
  EXPECT_FALSE(index.Covers(1.5));
}

TEST(BucketIndex, BuiltAgainItKnowsTheNewKeysOnly) {
  TBucketIndex index = IndexOf({0, 1, 2, 3});
  const std::vector<double> keys = {10, 11, 12, 13, 14};
  index.Build(keys.size(), [&](std::size_t i) { return keys[i]; });
  EXPECT_FALSE(index.Covers(1.5));
  EXPECT_EQ(Find(index, keys, 12.5), 2U);
  index.Build(0, [](std::size_t) { return 0.0; });
  EXPECT_FALSE(index.Covers(12.5));
}

TEST(BucketIndex, WhatIsMovedFromCoversNothing) {
  TBucketIndex index = IndexOf({0, 1, 2, 3});
  TBucketIndex other = std::move(index);
  EXPECT_TRUE(other.Covers(1.5));
  EXPECT_FALSE(index.Covers(1.5));  // NOLINT(bugprone-use-after-move): that is the question
  index = std::move(other);
  EXPECT_TRUE(index.Covers(1.5));
  EXPECT_FALSE(other.Covers(1.5));  // NOLINT(bugprone-use-after-move)
}

// A guess may lie on either side of the right interval, or be none at all.
TEST(SpanNear, IsTheSpanOfTheParameterWhateverTheGuess) {
  std::mt19937_64 random(20261148);
  TNurbsBasicFunc basis;
  basis.CreateCross(std::vector<double>{0, 0, 0, 0, 0.125, 0.3, 0.3, 0.6, 0.9, 1, 1, 1, 1}, 13);
  for (int round = 0; round < 200; ++round) {
    const double u = round % 2 == 0 ? Uniform(random, -0.1, 1.1) : basis.Items(static_cast<int>(random() % 13));
    for (int guess = -2; guess < 15; ++guess)
      ASSERT_EQ(SpanNear(basis, guess, u), basis.FindSpan(u)) << u << ", guess " << guess;
  }
}

// Pairs whose sum or product rounds twice: to 64 bits it lies half way between two doubles.
TEST(ExtendedStore, RoundsTwice) {
  double stored = 0;
  StoreSum(stored, 1.0, 0x1p-53 + 0x1p-105);
  EXPECT_EQ(stored, 1.0);
  EXPECT_GT(1.0 + (0x1p-53 + 0x1p-105), 1.0) << "where a sum is rounded once";
}

TEST(ExtendedStore, StoresTheBitsOfExtendedArithmetic) {
  std::mt19937_64 random(20240703);
  const auto number = [&] {
    constexpr std::array special = {0.0,    -0.0,  1.0,    -1.0,      5e-324,    -5e-324,
                                    1e-310, 1e308, -1e308, kInfinity, -kInfinity};
    if (random() % 8 == 0) return special[random() % special.size()];
    return Uniform(random, -1, 1) * std::pow(10, Uniform(random, -20, 20));
  };
  for (int i = 0; i < 1000000; ++i) {
    const double a = number();
    const double b = number();
    double sum = 0;
    double difference = 0;
    double product = 0;
    double sumOrZero = 0;
    StoreSum(sum, a, b);
    StoreDifference(difference, a, b);
    StoreProduct(product, a, b);
    StoreSumOrZero(sumOrZero, a, b);
    const auto expected = static_cast<double>(static_cast<long double>(a) + b);
    ASSERT_TRUE(IsSameNumber(sum, expected)) << a << " + " << b;
    ASSERT_TRUE(IsSameNumber(sumOrZero, expected == 0 ? 0.0 : expected)) << a << " + " << b;
    ASSERT_TRUE(IsSameNumber(difference, static_cast<double>(static_cast<long double>(a) - b))) << a << " - " << b;
    ASSERT_TRUE(IsSameNumber(product, static_cast<double>(static_cast<long double>(a) * b))) << a << " * " << b;
  }
}

TEST(CurveBlend, NegativeZerosSumUpToZeroAsTheyDoWhenTheSumBeginsWithZero) {
  for (const double item : {-0.0, -5e-324, -1e-310}) {
    const std::vector<double> points(24, item);
    const double weight = 1e-20;
    const double N[4] = {weight, weight, weight, weight};
    double sum[6] = {1, 1, 1, 1, 1, 1};
    BlendExtended(points.data(), N, sum);
    for (const double component : sum) EXPECT_TRUE(IsSameNumber(component, 0.0)) << item;
  }
}

}  // namespace
}  // namespace ZORBase::Test
