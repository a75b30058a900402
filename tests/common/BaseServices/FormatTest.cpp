#include <ZORBase/common/BaseServices/NumberText.h>

#include "support/TestSupport.h"

#include <cstdint>
#include <limits>

namespace ZORBase {
namespace {

using namespace std::string_view_literals;
using Test::Calling;
using Test::DecimalCommaLocale;
using Test::RaisesGeneralError;
using Test::TLocaleGuard;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

TEST(Format1033, FillsItsItemsInOrder) {
  EXPECT_EQ(Format1033(""), "");
  EXPECT_EQ(Format1033("no item"), "no item");
  EXPECT_EQ(Format1033("%s has %d items, %.2f long", "path", 3, 1.255), "path has 3 items, 1.25 long");
  EXPECT_EQ(Format1033("%.3f,%.3f", 1.0, -2.5), "1.000,-2.500");
  EXPECT_EQ(Format1033("%d%d%d", 1, 2, 3), "123");
}

TEST(Format1033, TakesEveryKindOfText) {
  const std::string text = "a";
  EXPECT_EQ(Format1033("%s%s%s", text, "b", "c\0d"sv), "abc\0d"sv);
  EXPECT_EQ(Format1033("%s", "点"), "点");
  EXPECT_EQ(Format1033("%s", "%d"), "%d");
}

TEST(Format1033, TakesEveryKindOfInteger) {
  EXPECT_EQ(Format1033("%d %d", std::numeric_limits<std::int64_t>::min(), std::numeric_limits<std::uint64_t>::max()),
            "-9223372036854775808 18446744073709551615");
  EXPECT_EQ(Format1033("%d %d", std::int8_t{-5}, std::uint8_t{200}), "-5 200");
  EXPECT_EQ(Format1033("%.1f %.0f", 3, 7U), "3.0 7");
}

TEST(Format1033, AnFWithoutANumberHasSixDecimals) { EXPECT_EQ(Format1033("%f", 0.5), "0.500000"); }

TEST(Format1033, TakesAnyNumberOfDecimals) {
  EXPECT_EQ(Format1033("%.0f", 2.5), "2");
  EXPECT_EQ(Format1033("%.60f", 0.5), "0.5" + std::string(59, '0'));
}

TEST(Format1033, ADoublePercentIsOne) {
  EXPECT_EQ(Format1033("%d%% of %s%%", 5, "x"), "5% of x%");
  EXPECT_EQ(Format1033("%%d"), "%d");
}

TEST(Format1033, RefusesAnItemThatItsArgumentDoesNotFit) {
  EXPECT_THAT(Calling([] { Format1033("%d", 1.5); }),
              RaisesGeneralError("Format '%d' has an item 'd' that its argument does not fit"));
  EXPECT_THAT(Calling([] { Format1033("%d", "1"); }), RaisesGeneralError(HasSubstr("item 'd'")));
  EXPECT_THAT(Calling([] { Format1033("%s", 1); }), RaisesGeneralError(HasSubstr("item 's'")));
  EXPECT_THAT(Calling([] { Format1033("%s", 1.0); }), RaisesGeneralError(HasSubstr("item 's'")));
  EXPECT_THAT(Calling([] { Format1033("%.2f", "x"); }), RaisesGeneralError(HasSubstr("item 'f'")));
  EXPECT_THAT(Calling([] { Format1033("%x", 1); }), RaisesGeneralError(HasSubstr("item 'x'")));
  EXPECT_THAT(Calling([] { Format1033("%8.3f", 1.0); }), RaisesGeneralError(HasSubstr("item '8'")));
}

TEST(Format1033, RefusesAnotherCountOfArgumentsThanOfItems) {
  EXPECT_THAT(Calling([] { Format1033("%d %d", 1); }),
              RaisesGeneralError("Format '%d %d' has more items than there are arguments"));
  EXPECT_THAT(Calling([] { Format1033("%d", 1, 2); }),
              RaisesGeneralError("Format '%d' has fewer items than there are arguments"));
  EXPECT_THAT(Calling([] { Format1033("", "x"); }),
              RaisesGeneralError("Format '' has fewer items than there are arguments"));
}

TEST(Format1033, RefusesABrokenPattern) {
  EXPECT_THAT(Calling([] { Format1033("100 %", 1); }), RaisesGeneralError("Format '100 %' ends within an item"));
  EXPECT_THAT(Calling([] { Format1033("%.f", 1.0); }),
              RaisesGeneralError(HasSubstr("no number of digits behind '%.'")));
  EXPECT_THAT(Calling([] { Format1033("%.-1f", 1.0); }),
              RaisesGeneralError(HasSubstr("no number of digits behind '%.'")));
  EXPECT_THAT(Calling([] { Format1033("%.99999999999f", 1.0); }), RaisesGeneralError(HasSubstr("no number of digits")));
  // A pattern of a few characters is not to take gigabytes.
  EXPECT_THAT(Calling([] { Format1033("%.2147483647f", 1.0); }),
              RaisesGeneralError(HasSubstr("at most 1000000 decimals")));
  EXPECT_THAT(Calling([] { Format1033("%.", 1.0); }), RaisesGeneralError(HasSubstr("no number of digits")));
  EXPECT_THAT(Calling([] { Format1033("%.3", 1.0); }), RaisesGeneralError(HasSubstr("needs an 'f' behind '%.N'")));
  EXPECT_THAT(Calling([] { Format1033("%.3d", 1); }), RaisesGeneralError(HasSubstr("needs an 'f' behind '%.N'")));
}

TEST(Format1033, NamesALongPatternByItsBeginning) {
  EXPECT_THAT(Calling([] { Format1033("%q" + std::string(1'000'000, 'x'), 1); }),
              RaisesGeneralError(
                  AllOf(StartsWith("Format '%qxxx"), HasSubstr("xxx...' "), testing::SizeIs(testing::Lt(400U)))));
}

TEST(Format, FollowsTheLocaleWhereFormat1033DoesNot) {
  const TLocaleGuard locale(DecimalCommaLocale());
  EXPECT_EQ(Format("%.2f|%d|%s|%f", 12345.5, 1234567, "1.5", 1000000), "12345,50|1234567|1.5|1000000,000000");
  EXPECT_EQ(Format1033("%.2f|%d|%s|%f", 12345.5, 1234567, "1.5", 1000000), "12345.50|1234567|1.5|1000000.000000");
}

}  // namespace
}  // namespace ZORBase
