#include <ZORBase/common/BaseServices/NumberText.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <algorithm>
#include <bit>
#include <charconv>
#include <clocale>
#include <cmath>
#include <limits>
#include <vector>

namespace ZORBase {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using Test::DecimalCommaLocale;
using Test::RaisesGeneralError;
using Test::TLocaleGuard;
using testing::EndsWith;
using testing::StartsWith;

constexpr double kMax = std::numeric_limits<double>::max();
constexpr double kTiny = std::numeric_limits<double>::denorm_min();

std::uint64_t Bits(double Value) { return std::bit_cast<std::uint64_t>(Value); }

std::string Fixed(double Value, int Decimals, TNumberForm Form = nf1033) {
  std::string text;
  AppendFixed(text, Value, Decimals, Form);
  return text;
}

std::string NotANumberText(std::string_view Text) {
  std::string text = "'";
  text += Text;
  return text += "' is not a valid floating point value";
}

std::string WithZeros(std::string_view Before, std::size_t Count, std::string_view After = "") {
  std::string text(Before);
  text.append(Count, '0');
  return text += After;
}

// ---------------------------------------------------------------------------------------------- exact decimals

// The decimal digits of Mantissa * 2^Exponent, all of them: with 2^-e = 5^e / 10^e a negative power of two is a product
// by fives and a shift of the point.
struct TExactDecimal {
  std::string Digits;      // without a point
  std::size_t Places = 0;  // of them behind the point

  TExactDecimal(std::uint64_t Mantissa, int Exponent) : Digits(std::to_string(Mantissa)) {
    for (int i = 0; i < std::abs(Exponent); ++i) MultiplyBy(Exponent > 0 ? 2 : 5);
    if (Exponent < 0) Places = static_cast<std::size_t>(-Exponent);
    while (Digits.size() <= Places) Digits.insert(Digits.begin(), '0');
  }

  std::string Text() const {
    std::string text = Digits;
    text.insert(text.end() - static_cast<std::ptrdiff_t>(Places), '.');
    return text;
  }

  // Rounded to a number of decimals, ties to the even digit.
  std::string Text(std::size_t Decimals) const {
    TExactDecimal rounded = *this;
    std::string rest;  // the digits that are not kept, without the zeros at their end
    for (; rounded.Places > Decimals; --rounded.Places) {
      if (!rest.empty() || rounded.Digits.back() != '0') rest.insert(rest.begin(), rounded.Digits.back());
      rounded.Digits.pop_back();
    }
    for (; rounded.Places < Decimals; ++rounded.Places) rounded.Digits.push_back('0');
    if (rest > "5" || (rest == "5" && (rounded.Digits.back() - '0') % 2 == 1)) rounded.AddOne();
    return Decimals == 0 ? rounded.Digits : rounded.Text();
  }

 private:
  void MultiplyBy(int Factor) {
    int carry = 0;
    for (auto digit = Digits.rbegin(); digit != Digits.rend(); ++digit) {
      const int product = (*digit - '0') * Factor + carry;
      *digit = static_cast<char>('0' + product % 10);
      carry = product / 10;
    }
    if (carry > 0) Digits.insert(0, 1, static_cast<char>('0' + carry));
  }

  void AddOne() {
    auto digit = Digits.rbegin();
    for (; digit != Digits.rend() && *digit == '9'; ++digit) *digit = '0';
    if (digit == Digits.rend()) {
      Digits.insert(0, 1, '1');
    } else {
      ++*digit;
    }
  }
};

// A finite magnitude as mantissa and exponent of two.
struct TParts {
  std::uint64_t Mantissa;
  int Exponent;
};

TParts PartsOf(double Value) {
  const std::uint64_t bits = Bits(std::fabs(Value));
  const std::uint64_t fraction = bits & ((std::uint64_t{1} << 52U) - 1);
  const int exponent = static_cast<int>(bits >> 52U);
  if (exponent == 0) return {fraction, -1074};
  return {fraction | (std::uint64_t{1} << 52U), exponent - 1075};
}

std::string ExactFixed(double Value, int Decimals) {
  const TParts parts = PartsOf(Value);
  const std::string text = TExactDecimal(parts.Mantissa, parts.Exponent).Text(static_cast<std::size_t>(Decimals));
  return (std::signbit(Value) ? "-" : "") + text;
}

// Every finite double, each binary exponent as often as the others.
rc::Gen<double> AnyFinite() {
  const auto make = [](const std::tuple<std::uint64_t, std::uint64_t, bool>& Parts) {
    const auto& [exponent, fraction, isNegative] = Parts;
    return std::bit_cast<double>((std::uint64_t{isNegative} << 63U) | (exponent << 52U) | (fraction >> 12U));
  };
  return rc::gen::resize(
      100, rc::gen::map(rc::gen::tuple(rc::gen::inRange<std::uint64_t>(0, 2047), rc::gen::arbitrary<std::uint64_t>(),
                                       rc::gen::arbitrary<bool>()),
                        make));
}

// Coordinates of a machine: up to some metres in steps of its resolution, and the sums that leave them off the grid.
rc::Gen<double> Coordinate() {
  return rc::gen::map(rc::gen::inRange<std::int64_t>(-4'000'000'000, 4'000'000'000),
                      [](std::int64_t Steps) { return static_cast<double>(Steps) * 1e-6; });
}

TEST(ExactDecimal, KnowsTheDigitsThatCanBeWorkedOutByHand) {
  EXPECT_EQ(TExactDecimal(1, 10).Text(), "1024.");
  EXPECT_EQ(TExactDecimal(3, -3).Text(), "0.375");
  EXPECT_EQ(TExactDecimal(3, -3).Text(2), "0.38");
  EXPECT_EQ(TExactDecimal(1, -3).Text(2), "0.12");
  EXPECT_EQ(TExactDecimal(2047, -11).Text(1), "1.0");
  EXPECT_EQ(TExactDecimal(5, -1).Text(0), "2");
  EXPECT_EQ(TExactDecimal(1, -1).Text(3), "0.500");
}

// ---------------------------------------------------------------------------------------------- text to number

TEST(StrToFloat1033, TakesSignsPointsExponentsAndBlanksAroundThem) {
  const std::vector<std::pair<std::string_view, double>> texts = {
      {"0", 0},       {"1", 1},       {"-1", -1},         {"+1", 1},     {"1.", 1},         {".5", 0.5},
      {"-.5", -0.5},  {"+.5", 0.5},   {"1.5", 1.5},       {"1e3", 1000}, {"1E3", 1000},     {"1e+3", 1000},
      {"1e-3", 1e-3}, {"1.e2", 100},  {".5e1", 5},        {"00012", 12}, {"-007.50", -7.5}, {"1e0003", 1000},
      {"  1  ", 1},   {"\t1\r\n", 1}, {"\x01-2\x1F", -2},
  };
  for (const auto& [text, value] : texts) EXPECT_EQ(StrToFloat1033(text), value) << text;
}

TEST(StrToFloat1033, KeepsTheSignOfZero) {
  EXPECT_EQ(Bits(StrToFloat1033("-0")), Bits(-0.0));
  EXPECT_EQ(Bits(StrToFloat1033("-0.000e5")), Bits(-0.0));
  EXPECT_EQ(Bits(StrToFloat1033("+0")), Bits(0.0));
}

TEST(StrToFloat1033, RefusesEverythingElse) {
  const std::vector<std::string_view> texts = {
      "",
      " ",
      "+",
      "-",
      ".",
      "-.",
      "e5",
      "1e",
      "1e+",
      "1e-",
      ".e1",
      "--1",
      "+-1",
      "-+1",
      "++1",
      "- 1",
      "1 2",
      "1e 5",
      "1.2.3",
      "1e5.0",
      "1e5e5",
      "1f",
      "1d",
      "1L",
      "1_000",
      "1'000",
      "1,000.5",
      "1,5",
      "0x10",
      "0x1p3",
      "-0x1.8p3",
      "0X1P3",
      "1p3",
      "nan",
      "NaN",
      "-nan",
      "nan(1)",
      "inf",
      "-inf",
      "INF",
      "infinity",
      "Infinity",
      "abc",
      "$1",
      "1%",
      "#1",
      "1.#INF",
      "\xE2\x88\x92"
      "1",
      "\xEF\xBC\x91",
      "\xC2\xA0"
      "1",
      "1\xC2\xA0",
      "\xEF\xBB\xBF"
      "1",
      "\"1\"",
  };
  for (const std::string_view text : texts) {
    EXPECT_THAT([&] { StrToFloat1033(text); }, RaisesGeneralError(NotANumberText(text)));
  }
}

TEST(StrToFloat1033, NamesAByteZeroWithoutLosingTheReason) {
  EXPECT_THAT([] { StrToFloat1033("1\0"sv); }, RaisesGeneralError("'1\\0' is not a valid floating point value"));
  EXPECT_THAT([] { StrToFloat1033("\0001"sv); }, RaisesGeneralError("'\\01' is not a valid floating point value"));
  EXPECT_THAT([] { StrToFloat1033("1\0002"sv); }, RaisesGeneralError("'1\\02' is not a valid floating point value"));
}

TEST(StrToFloat1033, RefusesWhatIsTooLargeForADouble) {
  for (const std::string& text :
       {"1e309"s, "1e400"s, "-1e400"s, "2e308"s, "1e99999999999999999999"s, "0.0000001e400"s, WithZeros("1", 400),
        WithZeros("1", 400, ".5e-20"), WithZeros("1", 400, "e99999999999999999999"),
        WithZeros("0.", 500, "1e99999999999999999999")}) {
    EXPECT_THAT(
        [&] { StrToFloat1033(text); },
        RaisesGeneralError(testing::AllOf(StartsWith(NumberErrorText(text, TNumberStatus::TooLarge).substr(0, 100)),
                                          EndsWith("' is too large for a floating point value"))));
  }
}

TEST(StrToFloat1033, ALargeExponentAndALongFractionMayCancel) {
  EXPECT_EQ(StrToFloat1033(WithZeros("1", 400, "e-400")), 1.0);
  EXPECT_EQ(StrToFloat1033(WithZeros("0.", 399, "1e400")), 1.0);
  EXPECT_EQ(StrToFloat1033(WithZeros("0.", 399, "1")), 0.0);
  EXPECT_EQ(StrToFloat1033("0e99999999999999999999"), 0.0);
  EXPECT_EQ(StrToFloat1033("0.000e400"), 0.0);
}

TEST(StrToFloat1033, ANumberTooSmallForADoubleGivesTheNearestOne) {
  EXPECT_EQ(Bits(StrToFloat1033("1e-400")), Bits(0.0));
  EXPECT_EQ(Bits(StrToFloat1033("-1e-400")), Bits(-0.0));
  EXPECT_EQ(StrToFloat1033("1e-99999999999999999999"), 0.0);
  EXPECT_EQ(StrToFloat1033("123456789e-340"), 0.0);
  EXPECT_EQ(StrToFloat1033("4.9406564584124654e-324"), kTiny);
  EXPECT_EQ(StrToFloat1033("2.5e-324"), kTiny);
  EXPECT_EQ(StrToFloat1033("2.4e-324"), 0.0);
  EXPECT_EQ(StrToFloat1033("2.2250738585072011e-308"), 0x0.fffffffffffffp-1022);
  EXPECT_EQ(StrToFloat1033("2.2250738585072012e-308"), 0x1p-1022);
}

TEST(StrToFloat1033, TheMiddleBetweenZeroAndTheSmallestDoubleIsZeroAndAnythingAboveItIsNot) {
  const std::string middle = TExactDecimal(1, -1075).Text();
  EXPECT_EQ(StrToFloat1033(middle), 0.0);
  EXPECT_EQ(StrToFloat1033(middle + "000000000000000000001"), kTiny);
}

TEST(StrToFloat1033, TheLargestDoubleEndsHalfAUnitAboveItself) {
  const std::string middle = TExactDecimal((std::uint64_t{1} << 54U) - 1, 970).Text();
  EXPECT_EQ(StrToFloat1033("1.7976931348623157e308"), kMax);
  EXPECT_EQ(StrToFloat1033("1.7976931348623158e308"), kMax);
  ASSERT_THAT(middle, EndsWith("497792."));
  const std::string below = middle.substr(0, middle.size() - 2) + "1.9";
  EXPECT_EQ(StrToFloat1033(below), kMax);
  EXPECT_THAT([&] { StrToFloat1033(middle); }, RaisesGeneralError(EndsWith("too large for a floating point value")));
}

RC_GTEST_PROP(StrToFloat1033, TheShortestTextOfADoubleGivesItsBits, ()) {
  const double value = *AnyFinite();
  std::array<char, 64> buffer{};
  const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value).ptr;
  RC_ASSERT(Bits(StrToFloat1033({buffer.data(), end})) == Bits(value));
}

RC_GTEST_PROP(StrToFloat1033, AllDigitsOfADoubleGiveItsBits, ()) {
  const double value = std::fabs(*AnyFinite());
  const TParts parts = PartsOf(value);
  RC_ASSERT(Bits(StrToFloat1033(TExactDecimal(parts.Mantissa, parts.Exponent).Text())) == Bits(value));
}

RC_GTEST_PROP(StrToFloat1033, TheMiddleOfTwoDoublesGoesToTheEvenOneAndAnythingAboveItUp, ()) {
  const double value = std::fabs(*AnyFinite());
  RC_PRE(value < kMax);
  const double next = std::nextafter(value, kInfinity);
  const TParts parts = PartsOf(value);
  const std::string middle = TExactDecimal(2 * parts.Mantissa + 1, parts.Exponent - 1).Text();
  RC_ASSERT(StrToFloat1033(middle) == (Bits(value) % 2 == 0 ? value : next));
  RC_ASSERT(StrToFloat1033(middle + "0001") == next);
}

TEST(TryStrToFloat, TellsInsteadOfRaisingAndLeavesTheValue) {
  for (const TNumberForm form : {nf1033, nfLocale}) {
    double value = 42.0;
    EXPECT_EQ(TryStrToFloat("abc", form, value), TNumberStatus::NotANumber);
    EXPECT_EQ(TryStrToFloat("1e400", form, value), TNumberStatus::TooLarge);
    EXPECT_EQ(TryStrToFloat("-1e400", form, value), TNumberStatus::TooLarge);
    EXPECT_EQ(TryStrToFloat("", form, value), TNumberStatus::NotANumber);
    EXPECT_EQ(value, 42.0);
    EXPECT_EQ(TryStrToFloat(" -3 ", form, value), TNumberStatus::Good);
    EXPECT_EQ(value, -3.0);
  }
}

TEST(NumberErrorText, QuotesALongTextWithItsBeginningOnly) {
  const std::string text = NumberErrorText("x" + std::string(10'000'000, '1'), TNumberStatus::NotANumber);
  EXPECT_LT(text.size(), 400U);
  EXPECT_THAT(text, StartsWith("'x1111"));
  EXPECT_THAT(text, EndsWith("...' is not a valid floating point value"));
}

TEST(Shortened, KeepsA256ByteTextAndCutsALongerOne) {
  EXPECT_EQ(Shortened(""), "");
  EXPECT_EQ(Shortened(std::string(256, 'x')), std::string(256, 'x'));
  EXPECT_EQ(Shortened(std::string(257, 'x')), std::string(256, 'x') + "...");
}

TEST(Shortened, ShowsAByteZeroWhichWouldEndTheMessage) {
  EXPECT_EQ(Shortened("1\0002\0"sv), "1\\02\\0");
  EXPECT_EQ(Shortened(std::string(300, '\0')).substr(0, 6), "\\0\\0\\0");
  EXPECT_THAT(Shortened(std::string(300, '\0')), EndsWith("\\0..."));
}

TEST(Shortened, NeverCutsAUtf8Character) {
  const std::string point = "点";  // three bytes
  for (std::size_t start = 250; start <= 256; ++start) {
    const std::string text = std::string(start, 'x') + point + point + point;
    const std::size_t whole = (256 - start) / 3;
    std::string expected = std::string(start, 'x');
    for (std::size_t i = 0; i < whole; ++i) expected += point;
    EXPECT_EQ(Shortened(text), start + 9 <= 256 ? text : expected + "...") << start;
  }
  EXPECT_THAT(Shortened(std::string(300, '\x80')), EndsWith("..."));
}

// ---------------------------------------------------------------------------------------------- number to text

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

// ---------------------------------------------------------------------------------------------- locales

TEST(LocaleForms, FollowTheDecimalPointOfTheGlobalLocaleAndNeverGroup) {
  for (const std::locale& locale : {std::locale("de_DE.UTF-8"), DecimalCommaLocale()}) {
    const TLocaleGuard guard(locale);
    EXPECT_EQ(LocaleDecimalPoint(), ",");
    EXPECT_EQ(Fixed(1234567.5, 2, nfLocale), "1234567,50");
    EXPECT_EQ(Fixed(1234567, 0, nfLocale), "1234567");
    EXPECT_EQ(FloatToStr(-1234567.25), "-1234567,25");
    EXPECT_EQ(FloatToStr(1e100), "1e+100");
    EXPECT_EQ(StrToFloat("1234567,5"), 1234567.5);
    EXPECT_EQ(StrToFloat(" -,5e1 "), -5.0);
    EXPECT_EQ(StrToFloat("7"), 7.0);
    for (const char* const text : {"1.5", "1.234.567,5", "1,5,5", "1,234.5", ",", "1;5", "nan", "0x1,8p1"}) {
      EXPECT_THAT([&] { StrToFloat(text); }, RaisesGeneralError(NotANumberText(text)));
    }
    EXPECT_THAT([] { StrToFloat("1,5e400"); }, RaisesGeneralError("'1,5e400' is too large for a floating point value"));
  }
}

TEST(LocaleForms, InTheClassicLocaleAreThoseOf1033) {
  const TLocaleGuard guard(std::locale::classic());
  EXPECT_EQ(LocaleDecimalPoint(), ".");
  EXPECT_EQ(Fixed(1234.5, 1, nfLocale), "1234.5");
  EXPECT_EQ(StrToFloat("1234.5"), 1234.5);
  EXPECT_THAT([] { StrToFloat("1,5"); }, RaisesGeneralError("'1,5' is not a valid floating point value"));
}

TEST(LocaleForms, The1033FormsDoNotFollowAnyLocale) {
  for (const std::locale& locale : {std::locale("de_DE.UTF-8"), DecimalCommaLocale()}) {
    const TLocaleGuard guard(locale);
    EXPECT_EQ(Fixed(1234567.5, 2), "1234567.50");
    EXPECT_EQ(StrToFloat1033("1234567.5"), 1234567.5);
    EXPECT_THAT([] { StrToFloat1033("1,5"); }, RaisesGeneralError("'1,5' is not a valid floating point value"));
  }
}

// A host that is not written in C++ sets the C locale only.
TEST(LocaleForms, FollowTheCLocaleWhereTheCppLocaleIsClassic) {
  const TLocaleGuard guard(std::locale::classic());
  ASSERT_NE(std::setlocale(LC_ALL, "de_DE.UTF-8"), nullptr);
  EXPECT_EQ(LocaleDecimalPoint(), ",");
  EXPECT_EQ(Fixed(1.5, 1, nfLocale), "1,5");
  EXPECT_EQ(StrToFloat("1,5"), 1.5);
  std::setlocale(LC_ALL, "C");
}

TEST(LocaleForms, TheCppLocaleHasPrecedenceOverTheCLocale) {
  const TLocaleGuard german(std::locale("de_DE.UTF-8"));
  struct TPoint : std::numpunct<char> {};
  const TLocaleGuard withAPoint(std::locale(std::locale("de_DE.UTF-8"), new TPoint));
  EXPECT_EQ(LocaleDecimalPoint(), ".");
  EXPECT_EQ(Fixed(1.5, 1, nfLocale), "1.5");
}

TEST(LocaleForms, ADecimalPointMayHaveSeveralBytes) {
  const TLocaleGuard guard(std::locale("ps_AF"));
  EXPECT_EQ(Fixed(1.5, 1, nfLocale),
            "1\xD9\xAB"
            "5");
  EXPECT_EQ(StrToFloat("1\xD9\xAB"
                       "5"),
            1.5);
  EXPECT_THAT([] { StrToFloat("1.5"); }, RaisesGeneralError(NotANumberText("1.5")));
}

RC_GTEST_PROP(LocaleForms, ParseBackWhatTheyPrint, ()) {
  const double value = *Coordinate();
  const TLocaleGuard guard(*rc::gen::element(std::locale::classic(), DecimalCommaLocale()));
  const std::string text = Fixed(value, 6, nfLocale);
  RC_ASSERT(Fixed(StrToFloat(text), 6, nfLocale) == text);
}

}  // namespace
}  // namespace ZORBase
