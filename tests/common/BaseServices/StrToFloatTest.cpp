#include "common/BaseServices/NumberTextSupport.h"

#include <array>
#include <charconv>
#include <cmath>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace ZORBase {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using Test::AnyFinite;
using Test::Bits;
using Test::Calling;
using Test::kMax;
using Test::kTiny;
using Test::NotANumberText;
using Test::PartsOf;
using Test::RaisesGeneralError;
using Test::TExactDecimal;
using Test::TParts;
using Test::WithZeros;
using testing::EndsWith;
using testing::StartsWith;

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
    EXPECT_THAT(Calling([&] { StrToFloat1033(text); }), RaisesGeneralError(NotANumberText(text)));
  }
}

TEST(StrToFloat1033, NamesAByteZeroWithoutLosingTheReason) {
  EXPECT_THAT(Calling([] { StrToFloat1033("1\0"sv); }),
              RaisesGeneralError("'1\\0' is not a valid floating point value"));
  EXPECT_THAT(Calling([] { StrToFloat1033("\0001"sv); }),
              RaisesGeneralError("'\\01' is not a valid floating point value"));
  EXPECT_THAT(Calling([] { StrToFloat1033("1\0002"sv); }),
              RaisesGeneralError("'1\\02' is not a valid floating point value"));
}

TEST(StrToFloat1033, RefusesWhatIsTooLargeForADouble) {
  for (const std::string& text :
       {"1e309"s, "1e400"s, "1e+400"s, "1e+99999999999999999999"s, "-1e400"s, "2e308"s, "1e99999999999999999999"s,
        "0.0000001e400"s, WithZeros("1", 400), WithZeros("1", 400, ".5e-20"),
        WithZeros("1", 400, "e99999999999999999999"), WithZeros("0.", 500, "1e99999999999999999999")}) {
    EXPECT_THAT(
        Calling([&] { StrToFloat1033(text); }),
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
  EXPECT_THAT(Calling([&] { StrToFloat1033(middle); }),
              RaisesGeneralError(EndsWith("too large for a floating point value")));
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

}  // namespace
}  // namespace ZORBase
