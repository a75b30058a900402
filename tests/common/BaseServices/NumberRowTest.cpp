#include <ZORBase/common/BaseServices/NumberRow.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <vector>

namespace ZORBase {
namespace {

using namespace std::string_view_literals;
using Test::Calling;
using Test::DecimalCommaLocale;
using Test::RaisesGeneralError;
using Test::TLocaleGuard;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Lt;
using testing::SizeIs;
using testing::StartsWith;

std::vector<double> Row(std::string_view Text, std::size_t Count, TNumberForm Form = nf1033) {
  std::vector<double> values(Count);
  ParseNumberRow(Text, values, Form, "TRow");
  return values;
}

std::string RowText(std::span<const double> Values, int Decimals, TNumberForm Form = nf1033) {
  std::string text;
  AppendNumberRow(text, Values, Decimals, Form);
  return text;
}

TEST(AppendNumberRow, PartsTheNumbersByCommasOnly) {
  EXPECT_EQ(RowText(std::vector{1.0, -2.5, 3.25}, 3), "1.000,-2.500,3.250");
  EXPECT_EQ(RowText(std::vector{1.0}, 0), "1");
  EXPECT_EQ(RowText({}, 3), "");
}

TEST(AppendNumberRow, AppendsToWhatIsThere) {
  std::string text = "P: ";
  AppendNumberRow(text, std::vector{1.0, 2.0}, 1, nf1033);
  EXPECT_EQ(text, "P: 1.0,2.0");
}

TEST(ParseNumberRow, TakesCommasAndBlanks) {
  EXPECT_THAT(Row("1,2,3", 3), ElementsAre(1, 2, 3));
  EXPECT_THAT(Row(" 1 , 2\t3 ", 3), ElementsAre(1, 2, 3));
  EXPECT_THAT(Row("\"1\" \" 2 \",3", 3), ElementsAre(1, 2, 3));
  EXPECT_THAT(Row("1,2,3, ", 3), ElementsAre(1, 2, 3));
  EXPECT_THAT(Row("", 0), ElementsAre());
}

TEST(ParseNumberRow, NamesTheTextAndTheNumberOfItems) {
  EXPECT_THAT(Calling([] { Row("1,2", 3); }),
              RaisesGeneralError("TRow Parse from string Failed(1,2). Error Item Number: 2"));
  EXPECT_THAT(Calling([] { Row("1,2,3,4", 3); }),
              RaisesGeneralError("TRow Parse from string Failed(1,2,3,4). Error Item Number: 4"));
  EXPECT_THAT(Calling([] { Row("", 3); }), RaisesGeneralError("TRow Parse from string Failed(). Error Item Number: 0"));
  EXPECT_THAT(Calling([] { Row("1,2,3,", 3); }),
              RaisesGeneralError("TRow Parse from string Failed(1,2,3,). Error Item Number: 4"));
}

TEST(ParseNumberRow, NamesTheFirstItemThatIsNoNumber) {
  EXPECT_THAT(Calling([] { Row("1,x,y", 3); }),
              RaisesGeneralError("TRow Parse from string Failed(1,x,y). 'x' is not a valid floating point value"));
  EXPECT_THAT(Calling([] { Row("1,,3", 3); }),
              RaisesGeneralError("TRow Parse from string Failed(1,,3). '' is not a valid floating point value"));
  EXPECT_THAT(
      Calling([] { Row("1,2,1e400", 3); }),
      RaisesGeneralError("TRow Parse from string Failed(1,2,1e400). '1e400' is too large for a floating point value"));
}

TEST(ParseNumberRow, AWrongCountWeighsMoreThanAnItemThatIsNoNumber) {
  EXPECT_THAT(Calling([] { Row("x,y", 3); }),
              RaisesGeneralError("TRow Parse from string Failed(x,y). Error Item Number: 2"));
  EXPECT_THAT(Calling([] { Row("1,2,3,x", 3); }), RaisesGeneralError(EndsWith("Error Item Number: 4")));
}

TEST(ParseNumberRow, AByteZeroIsNamedByItsColumn) {
  EXPECT_THAT(Calling([] { Row("1,2\0,3"sv, 3); }),
              RaisesGeneralError(
                  AllOf(StartsWith("TRow Parse from string Failed(1,2"), HasSubstr("byte 0 stands at column 4"))));
}

TEST(ParseNumberRow, ALongTextIsGivenWithItsBeginning) {
  const std::string text = std::string(1'000'000, '1') + ",x";
  EXPECT_THAT(Calling([&] { Row(text, 3); }),
              RaisesGeneralError(AllOf(StartsWith("TRow Parse from string Failed(1111"),
                                       EndsWith("111...). Error Item Number: 2"), SizeIs(Lt(400U)))));
  EXPECT_THAT(Calling([&] { Row(text, 2); }), RaisesGeneralError(SizeIs(Lt(800U))));
}

TEST(NumberRow, InALocaleWithADecimalCommaQuotedItemsCarryTheirComma) {
  const TLocaleGuard locale(DecimalCommaLocale());
  EXPECT_THAT(Row(R"("1,5" "-2,25" 3)", 3, nfLocale), ElementsAre(1.5, -2.25, 3));
  EXPECT_EQ(RowText(std::vector{1.5, 2.0}, 1, nfLocale), "1,5,2,0");
  EXPECT_EQ(RowText(std::vector{1.5, 2.0}, 1, nf1033), "1.5,2.0");
  EXPECT_THAT(Row("1.5,2", 2, nf1033), ElementsAre(1.5, 2));
}

// ---------------------------------------------------------------------------------------------- the rules, step by step

// The items of a text, character by character: with their blanks passed over, quotes undone, and an empty one behind a "," at
// the very end. No byte 0.
std::vector<std::string> PlainItems(std::string_view Text) {
  std::vector<std::string> items;
  std::size_t i = 0;
  const auto isBlank = [&] { return i < Text.size() && static_cast<unsigned char>(Text[i]) <= 32; };
  while (isBlank()) ++i;
  while (i < Text.size()) {
    std::string item;
    if (Text[i] == '"') {
      for (++i; i < Text.size(); ++i) {
        if (Text[i] == '"' && (i + 1 == Text.size() || Text[i + 1] != '"')) break;
        if (Text[i] == '"') ++i;
        item += Text[i];
      }
      if (i < Text.size()) ++i;
    } else {
      while (i < Text.size() && Text[i] != ',' && !isBlank()) item += Text[i++];
    }
    items.push_back(item);
    while (isBlank()) ++i;
    if (i == Text.size() || Text[i] != ',') continue;
    if (++i == Text.size()) items.emplace_back();
    while (isBlank()) ++i;
  }
  return items;
}

// What a row of three gives by these items and the conversion of one number: its bits, or the reason why not.
std::string PlainOutcome(std::string_view Text) {
  const std::vector<std::string> items = PlainItems(Text);
  if (items.size() != 3) return "Error Item Number: " + std::to_string(items.size());
  std::string outcome;
  for (const std::string& item : items) {
    const auto error =
        Test::GeneralErrorOf([&] { StrToFloat1033(item + " "); });  // with a blank, which no short cut takes
    if (error)
      return NumberErrorText(item, error->ends_with("too large for a floating point value")
                                       ? TNumberStatus::TooLarge
                                       : TNumberStatus::NotANumber);
    outcome += std::to_string(std::bit_cast<std::uint64_t>(StrToFloat1033(item + " "))) + " ";
  }
  return outcome;
}

std::string Outcome(std::string_view Text) {
  std::vector<double> row;
  const auto error = Test::GeneralErrorOf([&] { row = Row(Text, 3); });
  if (error) return error->substr(error->find("). ") + 3);
  std::string outcome;
  for (const double value : row) outcome += std::to_string(std::bit_cast<std::uint64_t>(value)) + " ";
  return outcome;
}

TEST(NumberRow, TextsOfAllKindsGiveWhatTheRulesGiveStepByStep) {
  std::mt19937_64 random(1);
  const std::vector<std::string_view> pieces = {"1",       "-2.5", "143.457451",    "-0.296198",  ".5",
                                                "1e3",     "+7",   "1234567890123", "-0",         "0.5000000000",
                                                "x",       "",     "1e999",         "\"3\"",      "\"4,5\"",
                                                "9.",      "\"",   "12345678",      "00000000.5", "0.1234567890123456",
                                                "\xC3\xA4"};
  const std::vector<std::string_view> separators = {",", ",", ",", ",", ", ", " ", "\t", " ,", ",,", ";", "  "};
  int rows = 0;
  for (int i = 0; i < 200'000; ++i) {
    // Nasty in one place, or everywhere.
    const bool isTame = random() % 4 != 0;
    const auto piece = [&] { return pieces[random() % (isTame ? 5 : pieces.size())]; };
    const auto separator = [&] { return separators[random() % (isTame ? 4 : separators.size())]; };
    std::string text(random() % 8 == 0 ? separator() : "");
    const std::size_t count = random() % 4 == 0 ? random() % 6 : 3;
    for (std::size_t k = 0; k < count; ++k) {
      if (k > 0) text += separator();
      text += piece();
    }
    if (random() % 8 == 0) text += separator();
    if (random() % 8 == 0 && !text.empty()) text[random() % text.size()] = "\",. -e9"[random() % 7];
    const std::string outcome = Outcome(text);
    ASSERT_EQ(outcome, PlainOutcome(text)) << text;
    rows += outcome.ends_with(' ') ? 1 : 0;
  }
  EXPECT_GT(rows, 20'000);
}

TEST(NumberRow, ARowMayHaveMoreNumbersThanAreWorkedOnAtOnce) {
  std::vector<double> values(200);
  for (std::size_t i = 0; i < values.size(); ++i) values[i] = static_cast<double>(i) * 1.25 - 100.0;
  values[70] = 1e20;
  values[71] = std::numeric_limits<double>::infinity();
  const std::string text = RowText(values, 2);
  EXPECT_THAT(text, StartsWith("-100.00,-98.75,"));
  EXPECT_THAT(text, HasSubstr(",-13.75,100000000000000000000.00,inf,-10.00,"));
  EXPECT_THAT(text, EndsWith(",147.50,148.75"));
  values[71] = 0.0;
  EXPECT_EQ(Row(RowText(values, 2), values.size()), values);
}

RC_GTEST_PROP(NumberRow, WhatIsPrintedParsesBackToThePrintedDigits, ()) {
  const auto steps = *rc::gen::container<std::vector<int>>(rc::gen::arbitrary<int>());
  const int decimals = *rc::gen::inRange(0, 13);
  std::vector<double> values(steps.size());
  std::transform(steps.begin(), steps.end(), values.begin(), [](int Step) { return Step * 1e-4; });
  const std::string text = RowText(values, decimals);
  const std::vector<double> parsed = Row(text, values.size());
  RC_ASSERT(RowText(parsed, decimals) == text);
  for (std::size_t i = 0; i < values.size(); ++i) {
    RC_ASSERT(std::fabs(parsed[i] - values[i]) <= 0.5001 * std::pow(10.0, -decimals) + 1e-15 * std::fabs(values[i]));
  }
}

}  // namespace
}  // namespace ZORBase
