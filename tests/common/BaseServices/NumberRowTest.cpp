#include <ZORBase/common/BaseServices/NumberRow.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <algorithm>
#include <limits>
#include <vector>

namespace ZORBase {
namespace {

using namespace std::string_view_literals;
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
  EXPECT_THAT([] { Row("1,2", 3); }, RaisesGeneralError("TRow Parse from string Failed(1,2). Error Item Number: 2"));
  EXPECT_THAT([] { Row("1,2,3,4", 3); },
              RaisesGeneralError("TRow Parse from string Failed(1,2,3,4). Error Item Number: 4"));
  EXPECT_THAT([] { Row("", 3); }, RaisesGeneralError("TRow Parse from string Failed(). Error Item Number: 0"));
  EXPECT_THAT([] { Row("1,2,3,", 3); },
              RaisesGeneralError("TRow Parse from string Failed(1,2,3,). Error Item Number: 4"));
}

TEST(ParseNumberRow, NamesTheFirstItemThatIsNoNumber) {
  EXPECT_THAT([] { Row("1,x,y", 3); },
              RaisesGeneralError("TRow Parse from string Failed(1,x,y). 'x' is not a valid floating point value"));
  EXPECT_THAT([] { Row("1,,3", 3); },
              RaisesGeneralError("TRow Parse from string Failed(1,,3). '' is not a valid floating point value"));
  EXPECT_THAT(
      [] { Row("1,2,1e400", 3); },
      RaisesGeneralError("TRow Parse from string Failed(1,2,1e400). '1e400' is too large for a floating point value"));
}

TEST(ParseNumberRow, AWrongCountWeighsMoreThanAnItemThatIsNoNumber) {
  EXPECT_THAT([] { Row("x,y", 3); }, RaisesGeneralError("TRow Parse from string Failed(x,y). Error Item Number: 2"));
  EXPECT_THAT([] { Row("1,2,3,x", 3); }, RaisesGeneralError(EndsWith("Error Item Number: 4")));
}

TEST(ParseNumberRow, AByteZeroIsNamedByItsColumn) {
  EXPECT_THAT([] { Row("1,2\0,3"sv, 3); }, RaisesGeneralError(AllOf(StartsWith("TRow Parse from string Failed(1,2"),
                                                                    HasSubstr("byte 0 stands at column 4"))));
}

TEST(ParseNumberRow, ALongTextIsGivenWithItsBeginning) {
  const std::string text = std::string(1'000'000, '1') + ",x";
  EXPECT_THAT([&] { Row(text, 3); },
              RaisesGeneralError(AllOf(StartsWith("TRow Parse from string Failed(1111"),
                                       EndsWith("111...). Error Item Number: 2"), SizeIs(Lt(400U)))));
  EXPECT_THAT([&] { Row(text, 2); }, RaisesGeneralError(SizeIs(Lt(800U))));
}

TEST(NumberRow, InALocaleWithADecimalCommaQuotedItemsCarryTheirComma) {
  const TLocaleGuard locale(DecimalCommaLocale());
  EXPECT_THAT(Row(R"("1,5" "-2,25" 3)", 3, nfLocale), ElementsAre(1.5, -2.25, 3));
  EXPECT_EQ(RowText(std::vector{1.5, 2.0}, 1, nfLocale), "1,5,2,0");
  EXPECT_EQ(RowText(std::vector{1.5, 2.0}, 1, nf1033), "1.5,2.0");
  EXPECT_THAT(Row("1.5,2", 2, nf1033), ElementsAre(1.5, 2));
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
