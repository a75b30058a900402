#include <ZORBase/ZORGeometry/CADTypesXD/TPointXD.h>

#include "PointXDSupport.h"
#include "support/TestSupport.h"

#include <limits>
#include <type_traits>
#include <vector>

namespace ZORBase {
namespace {

using Test::Bits;
using Test::Calling;
using Test::IsExactPointXD;
using Test::IsExactPose;
using Test::PointBy;
using Test::PointOf;
using Test::RaisesGeneralError;
using Test::RandomPoint;
using Test::TLocaleGuard;
using Test::TRandom;
using Test::WithTail;

// Copied and stored by value, an integer and 44 numbers.
static_assert(std::is_trivially_copyable_v<TPointXD>);
static_assert(std::is_standard_layout_v<TPointXD>);
static_assert(sizeof(TPointXD) == 45 * sizeof(double));
static_assert(std::is_same_v<decltype(TPointXD::FDimension), std::int32_t>);

// Into a TPointXD without a word, out of it only on request.
static_assert(std::is_convertible_v<TPoint2D, TPointXD>);
static_assert(std::is_convertible_v<TPoint3D, TPointXD>);
static_assert(std::is_convertible_v<TPoint6D, TPointXD>);
static_assert(!std::is_convertible_v<TPointXD, TPoint2D> && std::is_constructible_v<TPoint2D, TPointXD>);

// ---------------------------------------------------------------------------------------------- the guarded division

TEST(SafeDivXD, DividesFromTheLimitOn) {
  EXPECT_EQ(SafeDivXD(6, 3, 1e-12), 2);
  EXPECT_EQ(SafeDivXD(6, -1e-3, 1e-3), 6 / -1e-3);
  EXPECT_EQ(SafeDivXD(0, 1e-3, 1e-3), 0);
}

TEST(SafeDivXD, ASmallNumeratorOverASmallDenominatorIsZero) {
  EXPECT_EQ(SafeDivXD(1e-4, 1e-4, 1e-3), 0);
  EXPECT_EQ(SafeDivXD(-1e-4, 0, 1e-3), 0);
  EXPECT_EQ(SafeDivXD(0, 0, 1e-12), 0);
}

TEST(SafeDivXD, SaturatesAt1e12WhateverTheLimit) {
  for (const double limit : {1e-12, 1e-3, 0.5}) {
    EXPECT_EQ(SafeDivXD(1, 0, limit), 1e12);
    EXPECT_EQ(SafeDivXD(-1, 0, limit), -1e12);
    EXPECT_EQ(SafeDivXD(-1, -0.0, limit), -1e12);
    EXPECT_EQ(SafeDivXD(2, -0.5 * limit, limit), -1e12);
    EXPECT_EQ(SafeDivXD(-2, 0.5 * limit, limit), -1e12);
    EXPECT_EQ(SafeDivXD(-2, -0.5 * limit, limit), 1e12);
    EXPECT_EQ(SafeDivXD(limit, 0, limit), 1e12);
  }
}

TEST(SafeDivXD, HasNoFloorUnderItsLimit) {
  EXPECT_EQ(SafeDivXD(1, 1e-100, 1e-100), 1e100);
  EXPECT_EQ(SafeDivXD(1, 0, 0), kInfinity);
  EXPECT_EQ(SafeDivXD(1, 1e-20, -1), 1e20);
}

TEST(SafeDivXD, TheSignIsThatOfTheQuotientWhereTheProductUnderflows) {
  EXPECT_EQ(SafeDivXD(-1e-170, 1e-201, 1e-200), -1e12);
  EXPECT_EQ(SafeDivXD(1e-170, 1e-201, 1e-200), 1e12);
  EXPECT_EQ(SafeDivXD(-1e-170, -1e-201, 1e-200), 1e12);
}

// ---------------------------------------------------------------------------------------------- making and taking apart

TEST(TPointXD, CreateClampsTheDimensionTo1To44) {
  constexpr int kLowest = std::numeric_limits<int>::min();
  constexpr int kHighest = std::numeric_limits<int>::max();
  constexpr std::array<std::array<int, 2>, 9> kCases = {
      {{kLowest, 1}, {-5, 1}, {0, 1}, {1, 1}, {2, 2}, {43, 43}, {44, 44}, {100, 44}, {kHighest, 44}}};
  for (const auto& [asked, given] : kCases) {
    const TPointXD point = TPointXD::Create(asked);
    EXPECT_EQ(point.FDimension, given) << asked;
    for (const double coordinate : point.Items) EXPECT_EQ(Bits(coordinate), Bits(0.0));
  }
}

TEST(TPointXD, XToCNameTheFirstSixCoordinates) {
  TPointXD point = PointOf({1, 2, 3, 4, 5, 6, 7});
  const TPointXD& constant = point;
  EXPECT_EQ(constant.X(), 1);
  EXPECT_EQ(constant.Y(), 2);
  EXPECT_EQ(constant.Z(), 3);
  EXPECT_EQ(constant.A(), 4);
  EXPECT_EQ(constant.B(), 5);
  EXPECT_EQ(constant.C(), 6);
  point.X() = 10;
  point.Y() = 20;
  point.Z() = 30;
  point.A() = 40;
  point.B() = 50;
  point.C() = 60;
  EXPECT_THAT(point, IsExactPointXD(PointOf({10, 20, 30, 40, 50, 60, 7})));
}

TEST(TPointXD, APointOfThePlaneOfSpaceAndAPoseKeepTheirCoordinates) {
  EXPECT_THAT(TPointXD(TPoint2D::Create(1, 2)), IsExactPointXD(PointOf({1, 2})));
  EXPECT_THAT(TPointXD(TPoint3D::Create(1, 2, 3)), IsExactPointXD(PointOf({1, 2, 3})));
  EXPECT_THAT(TPointXD(TPoint6D::Create(1, 2, 3, 4, 5, 6)), IsExactPointXD(PointOf({1, 2, 3, 4, 5, 6})));
}

TEST(TPointXD, APointOfSpaceTakesXAndYOnly) {
  for (const TPointXD& point : {PointOf({1, 2, 3}), PointOf({1, 2}), PointOf({1, 2, 3, 4, 5, 6, 7})}) {
    const auto converted = static_cast<TPoint3D>(point);
    EXPECT_EQ(converted.X, 1);
    EXPECT_EQ(converted.Y, 2);
    EXPECT_EQ(converted.Z, 0);
  }
}

TEST(TPointXD, MissingCoordinatesOfAConversionAreZeroWhateverIsStoredThere) {
  const TPointXD one = WithTail(PointOf({7}), 9);
  EXPECT_THAT(static_cast<TPoint6D>(one), IsExactPose(TPoint6D::Create(7, 0, 0, 0, 0, 0)));
  EXPECT_EQ(static_cast<TPoint2D>(one).X, 7);
  EXPECT_EQ(static_cast<TPoint2D>(one).Y, 0);
  EXPECT_EQ(static_cast<TPoint3D>(one).X, 7);
  EXPECT_EQ(static_cast<TPoint3D>(one).Y, 0);
}

TEST(TPointXD, APoseTakesTheFirstSixCoordinatesAndAPlanePointTheFirstTwo) {
  const TPointXD point = PointOf({1, 2, 3, 4, 5, 6, 7, 8});
  EXPECT_THAT(static_cast<TPoint6D>(point), IsExactPose(TPoint6D::Create(1, 2, 3, 4, 5, 6)));
  EXPECT_EQ(static_cast<TPoint2D>(point).X, 1);
  EXPECT_EQ(static_cast<TPoint2D>(point).Y, 2);
  EXPECT_THAT(static_cast<TPoint6D>(PointOf({1, 2, 3, 4})), IsExactPose(TPoint6D::Create(1, 2, 3, 4, 0, 0)));
}

TEST(TPointXD, FromSpanTakes1To44Coordinates) {
  const std::vector<double> numbers(45, 2.5);
  const std::span<const double> all(numbers);
  EXPECT_THAT(TPointXD::FromSpan(all.first(1)), IsExactPointXD(PointOf({2.5})));
  EXPECT_THAT(TPointXD::FromSpan(all.first(44)), IsExactPointXD(PointBy(44, [](int) { return 2.5; })));
  EXPECT_THAT(Calling([&] { TPointXD::FromSpan(all); }), RaisesGeneralError(testing::HasSubstr("45")));
  EXPECT_THAT(Calling([&] { TPointXD::FromSpan({}); }), RaisesGeneralError(testing::HasSubstr("0")));
}

TEST(TPointXD, CoordinatesAreThoseInUseAndCanBeWritten) {
  TPointXD point = WithTail(PointOf({1, 2, 3}), 9);
  EXPECT_THAT(std::as_const(point).Coordinates(), testing::ElementsAre(1, 2, 3));
  point.Coordinates()[2] = 5;
  EXPECT_EQ(point.Z(), 5);
}

// ---------------------------------------------------------------------------------------------- arithmetic

TEST(TPointXD, ASumAndADifferenceHaveTheLargerDimension) {
  const TPointXD two = PointOf({1, 2});
  const TPointXD three = PointOf({1, 2, 3});
  EXPECT_THAT(two + three, IsExactPointXD(PointOf({2, 4, 3})));
  EXPECT_THAT(three + two, IsExactPointXD(PointOf({2, 4, 3})));
  EXPECT_THAT(two - three, IsExactPointXD(PointOf({0, 0, -3})));
  EXPECT_THAT(three - two, IsExactPointXD(PointOf({0, 0, 3})));
}

TEST(TPointXD, AProductOfPointsHasTheSmallerDimension) {
  EXPECT_THAT(PointOf({1, 2}) * PointOf({1, 2, 3}), IsExactPointXD(PointOf({1, 4})));
  EXPECT_THAT(PointOf({1, 2, 3}) * PointOf({1, 2}), IsExactPointXD(PointOf({1, 4})));
}

TEST(TPointXD, ANumberScalesFromBothSides) {
  EXPECT_THAT(PointOf({1, -2, 3}) * 0.5, IsExactPointXD(PointOf({0.5, -1, 1.5})));
  EXPECT_THAT(0.5 * PointOf({1, -2, 3}), IsExactPointXD(PointOf({0.5, -1, 1.5})));
}

TEST(TPointXD, DivisionByAlmostNothingSaturatesEachCoordinate) {
  EXPECT_THAT(PointOf({1, 2, 3}) / 0, IsExactPointXD(PointOf({1e12, 1e12, 1e12})));
  const TPointXD mixed = PointOf({-1, 0, 1e-13}) / 1e-13;
  EXPECT_EQ(mixed.FDimension, 3);
  EXPECT_EQ(mixed.X(), -1e12);
  EXPECT_EQ(mixed.Y(), 0);
  EXPECT_EQ(mixed.Z(), 0);
  EXPECT_THAT(PointOf({1, 2, 4}) / 1e-12, IsExactPointXD(PointOf({1 / 1e-12, 2 / 1e-12, 4 / 1e-12})));
  EXPECT_THAT(PointOf({1, -2, 3}) / -4, IsExactPointXD(PointOf({-0.25, 0.5, -0.75})));
}

TEST(TPointXD, AbsoluteValuesCoordinateByCoordinate) {
  EXPECT_THAT(TPointXD::Abs(PointOf({-1, 2, -0.0, -kInfinity})), IsExactPointXD(PointOf({1, 2, 0, kInfinity})));
}

TEST(TPointXD, LengthsOfRightTriangles) {
  EXPECT_EQ(PointOf({3, 4}).Mag(), 5);
  EXPECT_EQ(PointOf({2, 3, 6}).Mag(), 7);
  EXPECT_EQ(PointOf({2, 3, 6}).MagSqr(), 49);
  EXPECT_EQ(PointBy(44, [](int) { return -2.0; }).MagSqr(), 176);
  EXPECT_EQ(PointOf({1, 1}).DistanceTo(PointOf({4, 5})), 5);
  EXPECT_EQ(PointOf({1, 1}).DistanceTo(PointOf({1, 1, -7})), 7);
}

// Each of the three small squares is a quarter of the last bit of 1: alone it rounds away, together they round up.
TEST(TPointXD, SquaresAreSummedInExtendedPrecision) {
  const double small = std::ldexp(1, -27);
  EXPECT_EQ(PointOf({1, small, small, small}).MagSqr(), 1 + std::numeric_limits<double>::epsilon());
  // The sum is stored as a double, which 2^2000 is not.
  EXPECT_EQ(PointOf({std::ldexp(1, 1000)}).MagSqr(), kInfinity);
}

TEST(TPointXD, ADotProductOfPointsOfOneDimension) {
  EXPECT_EQ(PointOf({1, 2, 3}).DotMul(PointOf({4, -5, 6})), 12);
  EXPECT_EQ(PointBy(44, [](int i) { return i; }).DotMul(PointBy(44, [](int) { return 1.0; })), 946);
}

TEST(TPointXD, EqualityHasATolerance) {
  EXPECT_TRUE(PointOf({1, 2}) == PointOf({1, 2 + 1e-13}));
  EXPECT_FALSE(PointOf({1, 2}) == PointOf({1, 2, 0}));
  EXPECT_TRUE(PointOf({1, 2}) != PointOf({1, 2, 0}));
  EXPECT_TRUE(PointOf({0}) == PointOf({1e-12}));
  EXPECT_TRUE(PointOf({-1e-12, 0}) == PointOf({0, 1e-12}));
  EXPECT_FALSE(PointOf({0, 0}) == PointOf({0, std::nextafter(1e-12, 1)}));
  EXPECT_TRUE(PointOf({0, 0}) != PointOf({0, std::nextafter(-1e-12, -1)}));
}

TEST(TPointXD, WhatIsStoredBehindTheCoordinatesDoesNotCountInAComparison) {
  EXPECT_TRUE(WithTail(PointOf({1, 2}), 5) == PointOf({1, 2}));
  EXPECT_FALSE(WithTail(PointOf({1, 2}), 5) != PointOf({1, 2}));
}

TEST(TPointXD, AnglesBetweenKnownDirections) {
  EXPECT_EQ(PointOf({1, 0}).AngleBetween(PointOf({-1, 0})), kPi);
  EXPECT_EQ(PointOf({1, 0}).AngleBetween(PointOf({0, 5})), kPi / 2);
  EXPECT_EQ(PointOf({2, 0}).AngleBetween(PointOf({7, 0})), 0);
  EXPECT_NEAR(PointOf({1, 1, 0}).AngleBetween(PointOf({0, 1, 1})), kPi / 3, 1e-15);
}

TEST(TPointXD, TheAngleWithAZeroVectorIsARightAngle) {
  EXPECT_EQ(PointOf({1, 0}).AngleBetween(PointOf({0, 0})), kPi / 2);
  EXPECT_EQ(PointOf({0, 0}).AngleBetween(PointOf({1, 0})), kPi / 2);
  EXPECT_EQ(PointOf({0, 0}).AngleBetween(PointOf({0, 0})), kPi / 2);
  // Too short for the guarded quotient.
  EXPECT_EQ(PointOf({1e-7}).AngleBetween(PointOf({1e-7})), kPi / 2);
}

TEST(TPointXD, ACosineThatRoundsBeyondOneIsStillAnAngle) {
  TRandom random(41);
  for (int i = 0; i < 2000; ++i) {
    const TPointXD point = RandomPoint(random, 1 + i % 44, 10);
    EXPECT_NEAR(point.AngleBetween(point), 0, 1e-7);
    EXPECT_NEAR(point.AngleBetween(point * -3), kPi, 1e-7);
  }
}

TEST(TPointXD, NormalHasLengthOneAndNormalizeReplacesThePoint) {
  EXPECT_THAT(PointOf({3, 4}).Normal(), IsExactPointXD(PointOf({3.0 / 5, 4.0 / 5})));
  TPointXD point = PointOf({0, 0, -2});
  point.Normalize();
  EXPECT_THAT(point, IsExactPointXD(PointOf({0, 0, -1})));
}

TEST(TPointXD, NormalOfAlmostNothingIsTheZeroVectorOfTheDimension) {
  EXPECT_TRUE(PointOf({5e-13, -5e-13, 0}).Normal() == TPointXD::Create(3));
  EXPECT_EQ(PointOf({5e-13, -5e-13, 0}).Normal().MagSqr(), 0);
  EXPECT_EQ(TPointXD::Create(44).Normal().MagSqr(), 0);
  EXPECT_EQ(TPointXD::Create(44).Normal().FDimension, 44);
  EXPECT_EQ(PointOf({0, 1e-12}).Normal().Y(), 1);
}

TEST(TPointXD, LargerAndSmallerCoordinatesKeepTheRestOfTheLongerPoint) {
  const TPointXD two = PointOf({1, 5});
  const TPointXD four = PointOf({3, 2, -7, 8});
  EXPECT_THAT(two.ExtMax(four), IsExactPointXD(PointOf({3, 5, -7, 8})));
  EXPECT_THAT(four.ExtMax(two), IsExactPointXD(PointOf({3, 5, -7, 8})));
  EXPECT_THAT(two.ExtMin(four), IsExactPointXD(PointOf({1, 2, -7, 8})));
  EXPECT_THAT(four.ExtMin(two), IsExactPointXD(PointOf({1, 2, -7, 8})));
  // What the shorter point stores behind its own coordinates has no say here.
  EXPECT_THAT(WithTail(two, 100).ExtMax(four), IsExactPointXD(PointOf({3, 5, -7, 8})));
  EXPECT_THAT(four.ExtMin(WithTail(two, -100)), IsExactPointXD(PointOf({1, 2, -7, 8})));
}

// ---------------------------------------------------------------------------------------------- asymmetries

TEST(TPointXD, ADotProductRunsOverTheLeftDimensionAndReadsWhatTheRightSideStores) {
  const TPointXD two = WithTail(PointOf({1, 2}), 10);
  const TPointXD three = PointOf({1, 2, 3});
  EXPECT_EQ(two.DotMul(three), 5);
  EXPECT_EQ(three.DotMul(two), 35);
  EXPECT_EQ(PointOf({1, 2}).DotMul(three), three.DotMul(PointOf({1, 2})));
}

TEST(TPointXD, ASumReadsWhatTheShorterPointStores) {
  const TPointXD two = WithTail(PointOf({1, 2}), 10);
  const TPointXD three = PointOf({1, 2, 3});
  EXPECT_THAT(two + three, IsExactPointXD(PointOf({2, 4, 13})));
  EXPECT_THAT(three - two, IsExactPointXD(PointOf({0, 0, -7})));
  EXPECT_EQ(three.DistanceTo(two), 7);
}

TEST(TPointXD, AnAngleReadsTheDotProductOfItsLeftSide) {
  const TPointXD two = PointOf({1, 0});
  const TPointXD three = PointOf({1, 0, 1});
  EXPECT_NEAR(two.AngleBetween(three), kPi / 4, 1e-15);
  EXPECT_NEAR(three.AngleBetween(two), kPi / 4, 1e-15);
  EXPECT_NEAR(three.AngleBetween(WithTail(two, -1)), kPi / 2, 1e-15);
}

TEST(TPointXD, EveryOperationWritesZerosBehindTheCoordinates) {
  const TPointXD p = WithTail(PointOf({3, -4}), 9);
  const TPointXD q = WithTail(PointOf({1, 2, 3}), 7);
  const std::vector<TPointXD> results = {
      p + q, q - p, p * q, p * 2, 2 * q, p / 2, TPointXD::Abs(p), p.Normal(), p.ExtMax(q), q.ExtMin(p), q.ExtMax(p)};
  for (std::size_t i = 0; i < results.size(); ++i) {
    EXPECT_THAT(results[i], IsExactPointXD(WithTail(results[i], 0))) << "result " << i;
  }
  TPointXD normalized = p;
  normalized.Normalize();
  EXPECT_THAT(normalized, IsExactPointXD(PointOf({3.0 / 5, -4.0 / 5})));
}

// ---------------------------------------------------------------------------------------------- text

TEST(TPointXD, TextBeginsWithTheSeparator) {
  const TLocaleGuard guard(std::locale::classic());
  EXPECT_EQ(PointOf({1, 2.5}).ToString(), ", 1, 2.5");
  EXPECT_EQ(PointOf({0}).ToString(), ", 0");
  EXPECT_EQ(PointOf({0.1, 1.0 / 3, -2e-7}).ToString(), ", 0.1, 0.333333333333333, -2e-07");
  EXPECT_EQ(WithTail(PointOf({1}), 4).ToString(), ", 1");
}

TEST(TPointXD, TextFollowsTheLocale) {
  const TLocaleGuard guard(std::locale("de_DE.UTF-8"));
  EXPECT_EQ(PointOf({1, 2.5, 123456.75}).ToString(), ", 1, 2,5, 123456,75");
}

}  // namespace
}  // namespace ZORBase
