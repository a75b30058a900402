#include <ZORBase/ZORGeometry/CADTypes6D.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <array>
#include <cfloat>
#include <climits>
#include <cmath>
#include <cstring>
#include <functional>
#include <string>
#include <type_traits>

namespace ZORBase {
namespace {

using namespace std::string_view_literals;
using Test::Calling;
using Test::DecimalCommaLocale;
using Test::IsExactPose;
using Test::IsNearPose;
using Test::RaisesGeneralError;
using Test::TLocaleGuard;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

TPoint6D Tool(double X, double Y, double Z, double A, double B, double C) { return TPoint6D::Create(X, Y, Z, A, B, C); }
TPoint6D SixTimes(double Value) { return Tool(Value, Value, Value, Value, Value, Value); }

// Components of a machine and of measured data: up to some metres, not on a grid.
rc::Gen<double> Component() {
  return rc::gen::map(rc::gen::inRange<std::int64_t>(-4'000'000'000, 4'000'000'000),
                      [](std::int64_t Steps) { return static_cast<double>(Steps) * 1e-6; });
}
rc::Gen<TPoint6D> AnyTool() {
  return rc::gen::map(rc::gen::container<std::array<double, 6>>(Component()), &TPoint6D::FromArray);
}

// ---------------------------------------------------------------------------------------------- the record

static_assert(std::is_trivially_copyable_v<TPoint6D> && std::is_standard_layout_v<TPoint6D>);
static_assert(sizeof(TPoint6D) == 6 * sizeof(double));
static_assert(std::is_convertible_v<TPoint2D, TPoint6D>);

TEST(TPoint6D, IsZeroByDefault) { EXPECT_THAT(TPoint6D(), IsExactPose(SixTimes(0))); }

TEST(TPoint6D, ItsSixDoublesLieInTheOrderXYZABC) {
  const TPoint6D pose = Tool(1, 2, 3, 4, 5, 6);
  std::array<double, 6> values{};
  std::memcpy(values.data(), &pose, sizeof pose);
  EXPECT_EQ(values, (std::array<double, 6>{1, 2, 3, 4, 5, 6}));
  EXPECT_EQ(pose.ToArray(), values);
  EXPECT_THAT(TPoint6D::FromArray(values), IsExactPose(pose));
}

TEST(TPoint6D, IsMadeOfAPointAndAVector) {
  const TPoint6D pose = TPoint6D::Create(TPoint3D::Create(1, 2, 3), TPoint3D::Create(4, 5, 6));
  EXPECT_THAT(pose, IsExactPose(Tool(1, 2, 3, 4, 5, 6)));
}

TEST(TPoint6D, APlanePointBecomesAPoseWithoutHeightAndDirection) {
  const TPoint6D pose = TPoint2D::Create(1, 2);
  EXPECT_THAT(pose, IsExactPose(Tool(1, 2, 0, 0, 0, 0)));
}

TEST(TPoint6D, PointAndVectorAreReadAndWrittenApart) {
  TPoint6D pose = Tool(1, 2, 3, 4, 5, 6);
  EXPECT_EQ(pose.GetPoint().Z, 3);
  EXPECT_EQ(pose.GetVector().X, 4);
  pose.SetPoint(TPoint3D::Create(7, 8, 9));
  EXPECT_THAT(pose, IsExactPose(Tool(7, 8, 9, 4, 5, 6)));
  pose.SetVector(TPoint3D::Create(-1, -2, -3));
  EXPECT_THAT(pose, IsExactPose(Tool(7, 8, 9, -1, -2, -3)));
}

TEST(TPoint6D, ItemsAndAxisReachTheFieldsByIndex) {
  TPoint6D pose;
  for (int i = 0; i < 6; ++i) pose.Items(i) = i + 1;
  EXPECT_THAT(pose, IsExactPose(Tool(1, 2, 3, 4, 5, 6)));
  pose.Axis(3) = -4;
  EXPECT_EQ(pose.A, -4);
  const TPoint6D& view = pose;
  EXPECT_EQ(view.Items(5), 6);
  EXPECT_EQ(view.Axis(0), 1);
}

TEST(TPoint6D, AnItemOutside0To5IsAnError) {
  TPoint6D pose = Tool(1, 2, 3, 4, 5, 6);
  const TPoint6D& view = pose;
  EXPECT_THAT(Calling([&] { pose.Items(6) = 0; }), RaisesGeneralError("TPoint6D has the items 0 to 5, not 6"));
  EXPECT_THAT(Calling([&] { (void)view.Items(-1); }), RaisesGeneralError("TPoint6D has the items 0 to 5, not -1"));
  EXPECT_THAT(Calling([&] { (void)view.Axis(INT_MAX); }),
              RaisesGeneralError("TPoint6D has the items 0 to 5, not 2147483647"));
}

TEST(TPoint6D, ItsConstantsHoldFromLoadTimeOnAndThroughTheStartUp) {
  EXPECT_THAT(TPoint6D::FZero, IsExactPose(SixTimes(0)));
  EXPECT_THAT(TPoint6D::FOnes, IsExactPose(SixTimes(1)));
  CADTypes6D::initialization();
  EXPECT_THAT(TPoint6D::FZero, IsExactPose(SixTimes(0)));
  EXPECT_THAT(TPoint6D::FOnes, IsExactPose(SixTimes(1)));
  CADTypes6D::Finalization();
  EXPECT_THAT(TPoint6D::FZero, IsExactPose(SixTimes(0)));
  EXPECT_THAT(TPoint6D::FOnes, IsExactPose(SixTimes(1)));
}

// ---------------------------------------------------------------------------------------------- arithmetic

TEST(TPoint6D, CalculatesByComponent) {
  const TPoint6D p = Tool(1, 2, 3, -4, 5, -6);
  const TPoint6D q = Tool(8, -4, 2, 2, -1, 0.5);
  EXPECT_THAT(p + q, IsExactPose(Tool(9, -2, 5, -2, 4, -5.5)));
  EXPECT_THAT(p - q, IsExactPose(Tool(-7, 6, 1, -6, 6, -6.5)));
  EXPECT_THAT(-p, IsExactPose(Tool(-1, -2, -3, 4, -5, 6)));
  EXPECT_THAT(p * 0.5, IsExactPose(Tool(0.5, 1, 1.5, -2, 2.5, -3)));
  EXPECT_THAT(0.5 * p, IsExactPose(p * 0.5));
  EXPECT_THAT(p / 4, IsExactPose(Tool(0.25, 0.5, 0.75, -1, 1.25, -1.5)));
  EXPECT_THAT(TPoint6D::Abs(p), IsExactPose(Tool(1, 2, 3, 4, 5, 6)));
  EXPECT_THAT(p.DotVecMul(q), IsExactPose(Tool(8, -8, 6, -8, -5, -3)));
  EXPECT_THAT(p.DotVecDiv(q), IsExactPose(Tool(0.125, -0.5, 1.5, -2, -5, -12)));
}

TEST(TPoint6D, AbsTakesTheSignOfZeroAway) { EXPECT_THAT(TPoint6D::Abs(SixTimes(-0.0)), IsExactPose(SixTimes(0.0))); }

// 49 * (1/49) is not 1: the reciprocal is rounded before it multiplies.
TEST(TPoint6D, DividesByTheReciprocal) {
  EXPECT_THAT(SixTimes(49) / 49, IsExactPose(SixTimes(0x1.fffffffffffffp-1)));
  EXPECT_THAT(SixTimes(5) / 10, IsExactPose(SixTimes(0.5)));
}

TEST(TPoint6D, AZeroDividesAsFloatingPointDoes) {
  EXPECT_THAT(Tool(1, -1, 2, -2, 3, -3) / 0.0,
              IsExactPose(Tool(kInfinity, -kInfinity, kInfinity, -kInfinity, kInfinity, -kInfinity)));
  EXPECT_TRUE(std::isnan((TPoint6D::FZero / 0.0).X));
  const TPoint6D quotient = Tool(1, -1, 0, 1, 1, 1).DotVecDiv(Tool(0, 0, 0, -0.0, 2, kInfinity));
  EXPECT_EQ(quotient.X, kInfinity);
  EXPECT_EQ(quotient.Y, -kInfinity);
  EXPECT_TRUE(std::isnan(quotient.Z));
  EXPECT_EQ(quotient.A, -kInfinity);
  EXPECT_EQ(quotient.B, 0.5);
  EXPECT_EQ(quotient.C, 0);
}

#if LDBL_MANT_DIG == 64  // where extended precision has 80 bits

// 1 + (2^-53 + 2^-70) goes to 1 by way of 64 bits and to 1 + 2^-52 directly.
TEST(TPoint6D, SumsAndProductsAreFormedInExtendedPrecision) {
  const double small = 0x1p-53 + 0x1p-70;
  EXPECT_THAT(SixTimes(1) + SixTimes(small), IsExactPose(SixTimes(1)));
  EXPECT_THAT(SixTimes(1) - SixTimes(-small), IsExactPose(SixTimes(1)));
  int differences = 0;
  for (int i = 1; i <= 20000; ++i) {
    const double a = 1 + i * 0x1.123456789abcdp-20;
    const double b = 2 - i * 0x1.fedcba9876543p-21;
    const auto product = static_cast<double>(static_cast<long double>(a) * static_cast<long double>(b));
    ASSERT_THAT(SixTimes(a) * b, IsExactPose(SixTimes(product)));
    ASSERT_THAT(SixTimes(a).DotVecMul(SixTimes(b)), IsExactPose(SixTimes(product)));
    differences += product != a * b ? 1 : 0;
  }
  EXPECT_GT(differences, 0) << "no example told the two roundings apart";
}

TEST(TPoint6D, DotMulKeepsOneExtendedSum) {
  // Each small term is lost next to 1 in double precision; five of them together are not lost in 64 bits.
  const double small = 0x1p-54;
  EXPECT_EQ(Tool(1, small, small, small, small, small).DotMul(SixTimes(1)), 1 + 0x1p-52);
  // Products that overflow a double meet again in one that does not.
  EXPECT_EQ(Tool(1e200, 1e200, 3, 0, 0, 0).DotMul(Tool(1e200, -1e200, 1, 0, 0, 0)), 3);
}

#endif

TEST(TPoint6D, DotMulSumsTheProductsOfAllSixComponents) {
  EXPECT_EQ(Tool(1, 2, 3, 4, 5, 6).DotMul(Tool(6, -5, 4, -3, 2, -1)), 6 - 10 + 12 - 12 + 10 - 6);
}

TEST(TPoint6D, MagCountsAllSixComponents) {
  EXPECT_EQ(Tool(1, 2, 2, 0, 0, 0).Mag(), 3);
  EXPECT_EQ(Tool(1, 1, 1, 1, 1, 2).MagSqr(), 9);
  EXPECT_EQ(Tool(-1, 1, -1, 1, -1, 2).Mag(), 3);
  EXPECT_EQ(TPoint6D().Mag(), 0);
}

TEST(TPoint6D, GetMinItemIsTheSmallestComponentWithItsSign) {
  EXPECT_EQ(Tool(3, 1, 2, 5, 4, 6).GetMinItem(), 1);
  for (int i = 0; i < 6; ++i) {
    TPoint6D pose = SixTimes(1);
    pose.Items(i) = -7;
    EXPECT_EQ(pose.GetMinItem(), -7) << i;
  }
}

TEST(TPoint6D, GetMinItemIsReplacedOnlyOnStrictlySmaller) {
  EXPECT_FALSE(std::signbit(Tool(0.0, -0.0, 1, 1, 1, 1).GetMinItem()));
  EXPECT_TRUE(std::signbit(Tool(-0.0, 0.0, 1, 1, 1, 1).GetMinItem()));
  EXPECT_EQ(Tool(1, kNaN, 2, 3, 4, 5).GetMinItem(), 1);
}

RC_GTEST_PROP(TPoint6D, SumsAndDifferencesUndoEachOther, ()) {
  const TPoint6D p = *AnyTool();
  const TPoint6D q = *AnyTool();
  RC_ASSERT(TPoint6D::Abs(p + q - q - p).Mag() <= 1e-11);
  RC_ASSERT((p - q).ToArray() == (-(q - p)).ToArray());
  RC_ASSERT((p + q).ToArray() == (q + p).ToArray());
  RC_ASSERT(p.DotMul(q) == q.DotMul(p));
  RC_ASSERT(std::fabs(p.DotMul(q)) <= p.Mag() * q.Mag() * (1 + 1e-15));
}

// ---------------------------------------------------------------------------------------------- equality

TEST(TPoint6D, EqualityAllowsForAMillionthInEachComponent) {
  EXPECT_TRUE(Tool(1, 0, 0, 0, 0, 0) == Tool(1.0000009, 0, 0, 0, 0, 0));
  for (int i = 0; i < 6; ++i) {
    TPoint6D near = Tool(1, 2, 3, 4, 5, 6);
    TPoint6D far = near;
    near.Items(i) += 0.9e-6;
    far.Items(i) -= 2e-6;
    EXPECT_TRUE(Tool(1, 2, 3, 4, 5, 6) == near) << i;
    EXPECT_FALSE(Tool(1, 2, 3, 4, 5, 6) != near) << i;
    EXPECT_FALSE(Tool(1, 2, 3, 4, 5, 6) == far) << i;
    EXPECT_TRUE(Tool(1, 2, 3, 4, 5, 6) != far) << i;
  }
  EXPECT_TRUE(SixTimes(0) == SixTimes(0.9e-6));
}

TEST(TPoint6D, ADifferenceOfExactlyTheToleranceIsEqual) {
  EXPECT_TRUE(SixTimes(0) == SixTimes(1e-6));
  EXPECT_TRUE(SixTimes(0) != SixTimes(std::nextafter(1e-6, 1.0)));
}

TEST(TPoint6D, AComponentThatIsNoNumberEqualsNothing) {
  const TPoint6D pose = Tool(0, 0, 0, 0, 0, kNaN);
  EXPECT_FALSE(pose == pose);
  EXPECT_TRUE(pose != pose);
}

// ---------------------------------------------------------------------------------------------- normalising

TEST(TPoint6D, NormalizeScalesPositionAndDirectionTogether) {
  TPoint6D pose = Tool(3, 0, 0, 4, 0, 0);
  pose.Normalize();
  EXPECT_THAT(pose, IsExactPose(Tool(0.6, 0, 0, 0.8, 0, 0)));
}

TEST(TPoint6D, NormalizeOfNextToNothingGivesAllZeros) {
  for (const double length : {1e-9, 1e-8, 0.0, -1e-8}) {
    TPoint6D pose = Tool(length, 0, 0, 0, 0, 0);
    pose.Normalize();
    EXPECT_THAT(pose, IsExactPose(SixTimes(0))) << length;
  }
  EXPECT_THAT(Tool(0, 0, 0, 0, -1.1e-8, 0).Normal(), IsExactPose(Tool(0, 0, 0, 0, -1, 0)));
}

TEST(TPoint6D, NormalIsANormalizedCopy) {
  const TPoint6D pose = Tool(1, 2, 2, 0, 0, 0);
  EXPECT_THAT(pose.Normal(), IsExactPose(Tool(1.0 / 3, 2.0 / 3, 2.0 / 3, 0, 0, 0)));
  EXPECT_EQ(pose.X, 1);
}

TEST(TPoint6D, VecNormalizeMakesTheDirectionAUnitVectorAndKeepsThePosition) {
  TPoint6D pose = Tool(10, 20, 30, 0, 3, -4);
  EXPECT_THAT(pose.VecNormal(), IsExactPose(Tool(10, 20, 30, 0, 0.6, -0.8)));
  EXPECT_EQ(pose.B, 3);
  pose.VecNormalize();
  EXPECT_THAT(pose, IsExactPose(Tool(10, 20, 30, 0, 0.6, -0.8)));
}

TEST(TPoint6D, AZeroDirectionStaysZero) {
  EXPECT_THAT(Tool(1, 2, 3, 0, 0, 0).VecNormal(), IsExactPose(Tool(1, 2, 3, 0, 0, 0)));
}

TEST(TPoint6D, ATinyDirectionIsADirection) {
  EXPECT_THAT(Tool(1, 2, 3, 0, 0, -1e-12).VecNormal(), IsExactPose(Tool(1, 2, 3, 0, 0, -1)));
}

RC_GTEST_PROP(TPoint6D, ANormalHasLength1InSixComponentsOrInTheDirection, ()) {
  const TPoint6D pose = *AnyTool();
  RC_PRE(pose.GetVector().Mag() > 1e-6);
  RC_ASSERT(std::fabs(pose.Normal().Mag() - 1) <= 4e-16);
  RC_ASSERT((pose.Normal() * pose.Mag() - pose).Mag() <= 1e-15 * pose.Mag());
  RC_ASSERT(std::fabs(pose.VecNormal().GetVector().Mag() - 1) <= 4e-16);
}

TEST(TPoint6D, ShadowLengthIsTheSignedLengthOfTheProjection) {
  EXPECT_EQ(Tool(3, 4, 0, 0, 0, 5).ShadowLengthOnVec(Tool(2, 0, 0, 0, 0, 0)), 3);
  EXPECT_EQ(Tool(3, 4, 0, 0, 0, 5).ShadowLengthOnVec(Tool(0, 0, 0, 0, 0, -7)), -5);
  EXPECT_EQ(Tool(1, 0, 0, 0, 0, 0).ShadowLengthOnVec(Tool(0, 1, 0, 1, 0, 0)), 0);
  EXPECT_EQ(Tool(1, 2, 2, 4, 0, 0).ShadowLengthOnVec(Tool(1, 2, 2, 4, 0, 0)), 5);
}

TEST(TPoint6D, TheShadowOnNextToNothingIsTheOwnLength) {
  EXPECT_EQ(Tool(1, 2, 2, 0, 0, 0).ShadowLengthOnVec(TPoint6D::FZero), 3);
  EXPECT_EQ(Tool(-1, 2, 2, 0, 0, 0).ShadowLengthOnVec(Tool(1e-8, 0, 0, 0, 0, 0)), 3);
  EXPECT_EQ(Tool(-1, 2, 2, 0, 0, 0).ShadowLengthOnVec(Tool(1.1e-8, 0, 0, 0, 0, 0)), -1);
}

TEST(TPoint6D, RestrainRangeClampsEachComponent) {
  TPoint6D pose = Tool(-5, 0, 5, 1, 2, 3);
  pose.RestrainRange(Tool(-1, -1, -1, 1, 4, 0), Tool(1, 1, 1, 1, 5, 2.5));
  EXPECT_THAT(pose, IsExactPose(Tool(-1, 0, 1, 1, 4, 2.5)));
}

TEST(TPoint6D, WhereTheLowerBoundLiesAboveTheUpperTheUpperWins) {
  for (const double value : {0.0, 3.0, 9.0}) {
    TPoint6D pose = SixTimes(value);
    pose.RestrainRange(SixTimes(5), SixTimes(1));
    EXPECT_THAT(pose, IsExactPose(SixTimes(1)));
  }
}

TEST(TPoint6D, APoseMayBeItsOwnBound) {
  TPoint6D pose = Tool(1, 2, 3, 4, 5, 6);
  pose.RestrainRange(pose, SixTimes(4));
  EXPECT_THAT(pose, IsExactPose(Tool(1, 2, 3, 4, 4, 4)));
}

// ---------------------------------------------------------------------------------------------- text

TEST(TPoint6D, ToString1033WritesSixFixedNumbers) {
  EXPECT_EQ(Tool(1, 2, 3, 0, 0, 1).ToString1033(3), "1.000,2.000,3.000,0.000,0.000,1.000");
  EXPECT_EQ(Tool(10, 0, -5.25, 0, 0, 1).ToString1033(3), "10.000,0.000,-5.250,0.000,0.000,1.000");
  EXPECT_EQ(Tool(1234567.5, -0.0004, 0.0005, 2.5, -0.0, 1e-20).ToString1033(3),
            "1234567.500,-0.000,0.001,2.500,-0.000,0.000");
}

TEST(TPoint6D, TheNumberOfDigitsIsClampedTo0To12) {
  const TPoint6D pose = Tool(1, 2, 3, 0, 0, 1);
  for (const int digits : {-4, -1, 0, INT_MIN}) EXPECT_EQ(pose.ToString1033(digits), "1,2,3,0,0,1");
  const std::string twelve =
      "1.000000000000,2.000000000000,3.000000000000,0.000000000000,0.000000000000,1.000000000000";
  for (const int digits : {12, 13, 20, INT_MAX}) {
    EXPECT_EQ(pose.ToString1033(digits), twelve);
    const TLocaleGuard locale(std::locale::classic());
    EXPECT_EQ(pose.ToString(digits), twelve);
  }
}

TEST(TPoint6D, AppendString1033LeavesTheTextBefore) {
  std::string text = "1: ";
  Tool(1, 2, 3, 0, 0, 1).AppendString1033(text, 0);
  EXPECT_EQ(text, "1: 1,2,3,0,0,1");
}

TEST(TPoint6D, Parse1033TakesCommasBlanksAndQuotes) {
  const TPoint6D expected = Tool(1, 2, 3, 4, 5, 6);
  for (const std::string_view text : {"1,2,3,4,5,6"sv, "1, 2, 3, 4, 5, 6"sv, "1 2 3 4 5 6"sv, " 1 , 2 ,3,4,5,6 "sv,
                                      "\t1\t2 3,4 ,5\x0B"
                                      "6\r\n"sv,
                                      R"("1","2" "3",4,5,"6")"sv, "1,2,3,4,5,6, "sv, "+1,2.,3.0,40e-1,0.5E1,006"sv}) {
    EXPECT_THAT(TPoint6D::Parse1033(text), IsExactPose(expected)) << text;
  }
}

TEST(TPoint6D, AnotherCountThanSixIsNamed) {
  const auto text = [](std::string_view S, int Count) {
    return "TPoint6D Parse from string Failed(" + std::string(S) + "). Error Item Number: " + std::to_string(Count);
  };
  EXPECT_THAT(Calling([] { TPoint6D::Parse1033("1,2,3,4,5"); }),
              RaisesGeneralError("TPoint6D Parse from string Failed(1,2,3,4,5). Error Item Number: 5"));
  for (const auto& [row, count] : {std::pair{"1,2,3,4,5,6,7", 7}, {"1,2,3,4,5,6,", 7}, {"", 0}, {"   ", 0}, {"1", 1}}) {
    EXPECT_THAT(Calling([row = row] { TPoint6D::Parse1033(row); }), RaisesGeneralError(text(row, count)));
    EXPECT_THAT(Calling([row = row] { TPoint6D::Parse(row); }), RaisesGeneralError(text(row, count)));
  }
}

TEST(TPoint6D, AnItemThatIsNoNumberIsNamed) {
  for (const std::string item : {"", "x", "nan", "inf", "-inf", "0x1p3", "1.5.2",
                                 "\xE2\x88\x92"
                                 "1",
                                 "1e", "1;"}) {
    const std::string row = "1," + item + ",3,4,5,6";
    EXPECT_THAT(Calling([&] { TPoint6D::Parse1033(row); }),
                RaisesGeneralError("TPoint6D Parse from string Failed(" + row + "). '" + item +
                                   "' is not a valid floating point value"));
  }
  EXPECT_THAT(
      Calling([] { TPoint6D::Parse1033("1,1e400,3,4,5,6"); }),
      RaisesGeneralError("TPoint6D Parse from string Failed(1,1e400,3,4,5,6). '1e400' is too large for a floating "
                         "point value"));
}

// A decimal comma parts items, so the count is wrong.
TEST(TPoint6D, DecimalCommasGiveAWrongCount) {
  EXPECT_THAT(Calling([] { TPoint6D::Parse1033("1,5 2,5 3,5 4,5 5,5 6,5"); }),
              RaisesGeneralError(EndsWith("Error Item Number: 12")));
}

TEST(TPoint6D, TheLocaleFormsFollowTheLocaleAndTheOthersDoNot) {
  for (const std::locale& locale : {std::locale("de_DE.UTF-8"), DecimalCommaLocale()}) {
    const TLocaleGuard guard(locale);
    const TPoint6D pose = Tool(1234567.5, -2.25, 0, 0, 0, 1);
    EXPECT_EQ(pose.ToString(2), "1234567,50,-2,25,0,00,0,00,0,00,1,00");
    EXPECT_EQ(pose.ToString1033(2), "1234567.50,-2.25,0.00,0.00,0.00,1.00");
    EXPECT_THAT(TPoint6D::Parse(R"("1234567,5" "-2,25" 0 0 0 1)"), IsExactPose(pose));
    EXPECT_THAT(TPoint6D::Parse1033("1234567.5,-2.25,0,0,0,1"), IsExactPose(pose));
    EXPECT_THAT(Calling([] { TPoint6D::Parse("1.5,2,3,4,5,6"); }),
                RaisesGeneralError(
                    "TPoint6D Parse from string Failed(1.5,2,3,4,5,6). '1.5' is not a valid floating point value"));
    EXPECT_THAT(Calling([] { TPoint6D::Parse1033(R"("1,5" 2 3 4 5 6)"); }),
                RaisesGeneralError(HasSubstr("'1,5' is not a valid")));
  }
}

TEST(TPoint6D, InTheClassicLocaleBothFormsAreTheSame) {
  const TLocaleGuard guard(std::locale::classic());
  const TPoint6D pose = Tool(1234567.5, -2.25, 0.1, 0, 0, 1);
  EXPECT_EQ(pose.ToString(5), pose.ToString1033(5));
  EXPECT_THAT(TPoint6D::Parse(pose.ToString(5)), IsExactPose(pose));
}

RC_GTEST_PROP(TPoint6D, WhatIsPrintedParsesBackToThePrintedDigits, ()) {
  const TPoint6D pose = *AnyTool();
  const int digits = *rc::gen::inRange(0, 13);
  const std::string text = pose.ToString1033(digits);
  const TPoint6D parsed = TPoint6D::Parse1033(text);
  RC_ASSERT(parsed.ToString1033(digits) == text);
  for (int i = 0; i < 6; ++i) {
    RC_ASSERT(std::fabs(parsed.Items(i) - pose.Items(i)) <=
              0.5001 * std::pow(10.0, -digits) + 1e-15 * std::fabs(pose.Items(i)));
  }
}

}  // namespace
}  // namespace ZORBase
