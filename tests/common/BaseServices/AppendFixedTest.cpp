#include "common/BaseServices/NumberTextSupport.h"

#include <cmath>
#include <limits>
#include <locale>
#include <string_view>
#include <utility>
#include <vector>

namespace ZORBase {
namespace {

using Test::AnyFinite;
using Test::Calling;
using Test::Coordinate;
using Test::DecimalCommaLocale;
using Test::ExactFixed;
using Test::Fixed;
using Test::kLargestInt;
using Test::kMax;
using Test::kTiny;
using Test::RaisesGeneralError;
using Test::TExactDecimal;
using Test::TLocaleGuard;

TEST(ExactDecimal, KnowsTheDigitsThatCanBeWorkedOutByHand) {
  EXPECT_EQ(TExactDecimal(1, 10).Text(), "1024.");
  EXPECT_EQ(TExactDecimal(3, -3).Text(), "0.375");
  EXPECT_EQ(TExactDecimal(3, -3).Text(2), "0.38");
  EXPECT_EQ(TExactDecimal(1, -3).Text(2), "0.12");
  EXPECT_EQ(TExactDecimal(2047, -11).Text(1), "1.0");
  EXPECT_EQ(TExactDecimal(5, -1).Text(0), "2");
  EXPECT_EQ(TExactDecimal(1, -1).Text(3), "0.500");
}

TEST(AppendFixed, DigitsAreThoseOfTheExactBinaryValueTiesToEven) {
  EXPECT_EQ(Fixed(0.5, 0), "0");
  EXPECT_EQ(Fixed(1.5, 0), "2");
  EXPECT_EQ(Fixed(2.5, 0), "2");
  EXPECT_EQ(Fixed(0.125, 2), "0.12");
  EXPECT_EQ(Fixed(0.375, 2), "0.38");
  EXPECT_EQ(Fixed(2.675, 2), "2.67");  // the double lies below
  EXPECT_EQ(Fixed(1.005, 2), "1.00");
  EXPECT_EQ(Fixed(0.1, 55), "0.1000000000000000055511151231257827021181583404541015625");
  EXPECT_EQ(Fixed(1e23, 0), "99999999999999991611392");
  EXPECT_EQ(Fixed(999.9996, 3), "1000.000");
}

TEST(AppendFixed, KeepsTheSignOfANegativeThatRoundsToZero) {
  EXPECT_EQ(Fixed(-0.0004, 3), "-0.000");
  EXPECT_EQ(Fixed(-0.0, 3), "-0.000");
  EXPECT_EQ(Fixed(-kTiny, 0), "-0");
  EXPECT_EQ(Fixed(0.0, 3), "0.000");
}

TEST(AppendFixed, ANegativeCountOfDecimalsIsNone) {
  EXPECT_EQ(Fixed(1.25, -4), "1");
  EXPECT_EQ(Fixed(1.25, std::numeric_limits<int>::min()), "1");
}

TEST(AppendFixed, WritesTheExtremesToTheLastDigit) {
  for (const double value : {kMax, -kMax, kTiny, -kTiny, 0x1p-1022, 0x0.fffffffffffffp-1022}) {
    for (const int decimals : {0, 3, 12, 323, 324, 1073, 1074, 1075, 3000}) {
      ASSERT_EQ(Fixed(value, decimals), ExactFixed(value, decimals)) << value << " with " << decimals;
    }
  }
}

TEST(AppendFixed, NanAndInfinitiesReadAsWords) {
  for (const TNumberForm form : {nf1033, nfLocale}) {
    EXPECT_EQ(Fixed(kNaN, 3, form), "nan");
    EXPECT_EQ(Fixed(-kNaN, 3, form), "nan");
    EXPECT_EQ(Fixed(kInfinity, 3, form), "inf");
    EXPECT_EQ(Fixed(-kInfinity, 3, form), "-inf");
  }
}

TEST(AppendFixed, LeavesTheTextBeforeItAlone) {
  const TLocaleGuard locale(DecimalCommaLocale());
  std::string text = "a.b ";
  AppendFixed(text, 1.5, 2, nfLocale);
  AppendFixed(text, 2.5, 2, nf1033);
  EXPECT_EQ(text, "a.b 1,502.50");
}

TEST(AppendFixed, WritesAMillionDecimalsAndRefusesMore) {
  std::string text = "a ";
  for (const int decimals : {kMostDecimals + 1, kLargestInt}) {
    EXPECT_THAT(
        Calling([&] { AppendFixed(text, 0.5, decimals); }),
        RaisesGeneralError("A number is written with at most 1000000 decimals, not " + std::to_string(decimals)));
    EXPECT_EQ(text, "a ");
  }
  AppendFixed(text, 0.5, kMostDecimals);
  EXPECT_EQ(text, "a 0.5" + std::string(999'999, '0'));
}

RC_GTEST_PROP(AppendFixed, EqualsTheExactDecimalExpansion, ()) {
  const double value = *AnyFinite();
  const int decimals = *rc::gen::resize(100, rc::gen::inRange(0, 1100));
  RC_ASSERT(Fixed(value, decimals) == ExactFixed(value, decimals));
}

RC_GTEST_PROP(AppendFixed, EqualsTheExactDecimalExpansionOfCoordinates, ()) {
  const double value = *Coordinate();
  for (int decimals = 0; decimals <= 12; ++decimals) RC_ASSERT(Fixed(value, decimals) == ExactFixed(value, decimals));
}

RC_GTEST_PROP(AppendFixed, WhatItPrintsParsesBackToThePrintedDigits, ()) {
  const double value = *rc::gen::oneOf(AnyFinite(), Coordinate());
  const int decimals = *rc::gen::inRange(0, 20);
  const std::string text = Fixed(value, decimals);
  const double parsed = StrToFloat1033(text);
  RC_ASSERT(Fixed(parsed, decimals) == text);
  RC_ASSERT(std::fabs(parsed - value) <= 0.5 * std::pow(10.0, -decimals) * (1 + 1e-12) + std::fabs(value) * 0x1p-53);
}

RC_GTEST_PROP(AppendFixed, SeventeenDigitsBehindThePointBringASmallNumberBackToTheBit, ()) {
  const double value = *rc::gen::map(Coordinate(), [](double Value) { return 1.0 + std::fabs(Value) * 1e-4; });
  RC_ASSERT(StrToFloat1033(Fixed(value, 17)) == value);
}

TEST(FloatToStr, GivesUpTo15SignificantDigits) {
  const TLocaleGuard locale(std::locale::classic());
  const std::vector<std::pair<double, std::string_view>> texts = {
      {0.0, "0"},
      {-0.0, "-0"},
      {1.0, "1"},
      {0.1, "0.1"},
      {-1.5, "-1.5"},
      {0.1 + 0.2, "0.3"},
      {1.0 / 3, "0.333333333333333"},
      {1e20, "1e+20"},
      {123456789012345, "123456789012345"},
      {0.0001, "0.0001"},
      {0.00001, "1e-05"},
      {1e15, "1e+15"},
      {kInfinity, "inf"},
      {-kInfinity, "-inf"},
      {kNaN, "nan"},
      {-kNaN, "nan"},
  };
  for (const auto& [value, text] : texts) EXPECT_EQ(FloatToStr(value), text);
}

}  // namespace
}  // namespace ZORBase
