#include "common/BaseServices/NumberTextSupport.h"

#include <clocale>
#include <locale>
#include <string>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::Coordinate;
using Test::DecimalCommaLocale;
using Test::Fixed;
using Test::NotANumberText;
using Test::RaisesGeneralError;
using Test::TLocaleGuard;

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
      EXPECT_THAT(Calling([&] { StrToFloat(text); }), RaisesGeneralError(NotANumberText(text)));
    }
    EXPECT_THAT(Calling([] { StrToFloat("1,5e400"); }),
                RaisesGeneralError("'1,5e400' is too large for a floating point value"));
  }
}

TEST(LocaleForms, InTheClassicLocaleAreThoseOf1033) {
  const TLocaleGuard guard(std::locale::classic());
  EXPECT_EQ(LocaleDecimalPoint(), ".");
  EXPECT_EQ(Fixed(1234.5, 1, nfLocale), "1234.5");
  EXPECT_EQ(StrToFloat("1234.5"), 1234.5);
  EXPECT_THAT(Calling([] { StrToFloat("1,5"); }), RaisesGeneralError("'1,5' is not a valid floating point value"));
}

TEST(LocaleForms, The1033FormsDoNotFollowAnyLocale) {
  for (const std::locale& locale : {std::locale("de_DE.UTF-8"), DecimalCommaLocale()}) {
    const TLocaleGuard guard(locale);
    EXPECT_EQ(Fixed(1234567.5, 2), "1234567.50");
    EXPECT_EQ(StrToFloat1033("1234567.5"), 1234567.5);
    EXPECT_THAT(Calling([] { StrToFloat1033("1,5"); }),
                RaisesGeneralError("'1,5' is not a valid floating point value"));
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
  EXPECT_THAT(Calling([] { StrToFloat("1.5"); }), RaisesGeneralError(NotANumberText("1.5")));
}

RC_GTEST_PROP(LocaleForms, ParseBackWhatTheyPrint, ()) {
  const double value = *Coordinate();
  const TLocaleGuard guard(*rc::gen::element(std::locale::classic(), DecimalCommaLocale()));
  const std::string text = Fixed(value, 6, nfLocale);
  RC_ASSERT(Fixed(StrToFloat(text), 6, nfLocale) == text);
}

}  // namespace
}  // namespace ZORBase
