#include <ZORBase/common/BaseServices/TDelimitedText.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <string>
#include <vector>

namespace ZORBase {
namespace {

using namespace std::string_literals;
using namespace std::string_view_literals;
using Test::Calling;
using Test::RaisesGeneralError;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::vector<std::string> ItemsOf(std::string_view Text) {
  std::vector<std::string> items;
  for (TDelimitedText text(Text); text.Next();) items.emplace_back(text.Item());
  return items;
}

TEST(TDelimitedText, CommasBlanksAndBothPartItems) {
  EXPECT_THAT(ItemsOf("1,2,3"), ElementsAre("1", "2", "3"));
  EXPECT_THAT(ItemsOf("1 2 3"), ElementsAre("1", "2", "3"));
  EXPECT_THAT(ItemsOf("1, 2 ,3 , 4"), ElementsAre("1", "2", "3", "4"));
  EXPECT_THAT(ItemsOf("1   2"), ElementsAre("1", "2"));
}

TEST(TDelimitedText, AllCodesFrom1To32AreBlanks) {
  for (char code = 1; code <= 32; ++code) {
    const std::string blank(1, code);
    EXPECT_THAT(ItemsOf(blank + "1" + blank + "," + blank + blank + "2" + blank), ElementsAre("1", "2")) << int{code};
  }
}

TEST(TDelimitedText, CodesAbove127ArePartOfItems) {
  for (int code = 128; code < 256; ++code) {
    const std::string letter(1, static_cast<char>(code));
    EXPECT_THAT(ItemsOf("a" + letter + " b"), ElementsAre("a" + letter, "b")) << code;
  }
}

TEST(TDelimitedText, NothingAndBlanksHoldNoItems) {
  EXPECT_THAT(ItemsOf(""), IsEmpty());
  EXPECT_THAT(ItemsOf("  \t "), IsEmpty());
}

TEST(TDelimitedText, TwoCommasHoldAnEmptyItemBetweenThem) {
  EXPECT_THAT(ItemsOf("1,,2"), ElementsAre("1", "", "2"));
  EXPECT_THAT(ItemsOf("1, ,2"), ElementsAre("1", "", "2"));
  EXPECT_THAT(ItemsOf(",1"), ElementsAre("", "1"));
  EXPECT_THAT(ItemsOf(" ,1"), ElementsAre("", "1"));
}

TEST(TDelimitedText, ACommaThatIsTheLastCharacterAddsAnEmptyItem) {
  EXPECT_THAT(ItemsOf("1,"), ElementsAre("1", ""));
  EXPECT_THAT(ItemsOf("1 ,"), ElementsAre("1", ""));
  EXPECT_THAT(ItemsOf(","), ElementsAre("", ""));
  EXPECT_THAT(ItemsOf(",,"), ElementsAre("", "", ""));
}

TEST(TDelimitedText, ABlankBehindTheLastCommaTakesItsEmptyItemAway) {
  EXPECT_THAT(ItemsOf("1, "), ElementsAre("1"));
  EXPECT_THAT(ItemsOf("1,\t"), ElementsAre("1"));
}

TEST(TDelimitedText, QuotesHoldCommasAndBlanks) {
  EXPECT_THAT(ItemsOf(R"("1,5" "a b",c)"), ElementsAre("1,5", "a b", "c"));
  EXPECT_THAT(ItemsOf(R"(" x ")"), ElementsAre(" x "));
  EXPECT_THAT(ItemsOf(R"("")"), ElementsAre(""));
  EXPECT_THAT(ItemsOf(R"("1",)"), ElementsAre("1", ""));
}

TEST(TDelimitedText, ADoubledQuoteInsideIsOneQuote) {
  EXPECT_THAT(ItemsOf(R"("a""b")"), ElementsAre(R"(a"b)"));
  EXPECT_THAT(ItemsOf(R"("""")"), ElementsAre(R"(")"));
  EXPECT_THAT(ItemsOf(R"("""a""" "b""")"), ElementsAre(R"("a")", R"(b")"));
  EXPECT_THAT(ItemsOf(R"("a""b""c,d""e" f)"), ElementsAre(R"(a"b"c,d"e)", "f"));
}

TEST(TDelimitedText, AQuoteWithinAnItemIsAnOrdinaryCharacter) {
  EXPECT_THAT(ItemsOf(R"(a"b c")"), ElementsAre(R"(a"b)", R"(c")"));
}

TEST(TDelimitedText, TextRightBehindAQuotedItemIsAnItemOfItsOwn) {
  EXPECT_THAT(ItemsOf(R"("a"b)"), ElementsAre("a", "b"));
}

TEST(TDelimitedText, AQuoteThatIsNeverClosedRunsToTheEnd) {
  EXPECT_THAT(ItemsOf(R"(1,"2, 3)"), ElementsAre("1", "2, 3"));
  EXPECT_THAT(ItemsOf(R"(")"), ElementsAre(""));
  EXPECT_THAT(ItemsOf(R"("a"")"), ElementsAre(R"(a")"));
}

TEST(TDelimitedText, AByteZeroIsAnErrorWhereverItStands) {
  EXPECT_THAT(Calling([] { ItemsOf("\0"sv); }), RaisesGeneralError(HasSubstr("byte 0 stands at column 1;")));
  EXPECT_THAT(Calling([] { ItemsOf("1,2\0003"sv); }), RaisesGeneralError(HasSubstr("byte 0 stands at column 4;")));
  EXPECT_THAT(Calling([] { ItemsOf("1,2 \0"sv); }), RaisesGeneralError(HasSubstr("column 5;")));
  EXPECT_THAT(Calling([] { ItemsOf("1,\0,2"sv); }), RaisesGeneralError(HasSubstr("column 3;")));
  EXPECT_THAT(Calling([] { ItemsOf("\"ab\0c\""sv); }), RaisesGeneralError(HasSubstr("column 4;")));
  EXPECT_THAT(Calling([] { ItemsOf("\"ab\"\"\0c\""sv); }), RaisesGeneralError(HasSubstr("column 6;")));
  EXPECT_THAT(Calling([] { ItemsOf("\"a\"\0"sv); }), RaisesGeneralError(HasSubstr("column 4;")));
}

TEST(TDelimitedText, BehindTheLastItemThereIsNoneForGood) {
  TDelimitedText text("1,");
  EXPECT_TRUE(text.Next());
  EXPECT_TRUE(text.Next());
  EXPECT_FALSE(text.Next());
  EXPECT_FALSE(text.Next());
  EXPECT_EQ(text.Item(), "");
}

TEST(TDelimitedText, PlainItemsAreViewsOfTheText) {
  const std::string line = "12, 34";
  TDelimitedText text(line);
  ASSERT_TRUE(text.Next());
  EXPECT_EQ(text.Item().data(), line.data());
  ASSERT_TRUE(text.Next());
  EXPECT_EQ(text.Item().data(), line.data() + 4);
}

RC_GTEST_PROP(TDelimitedText, ItemsThatWereQuotedComeBackAsTheyWere, ()) {
  const auto items = *rc::gen::container<std::vector<std::string>>(
      rc::gen::container<std::string>(rc::gen::elementOf("ab\", \t\n;.-"s)));
  std::string text;
  for (const std::string& item : items) {
    text += text.empty() ? "\"" : ",\"";
    for (const char character : item) text += character == '"' ? "\"\"" : std::string(1, character);
    text += '"';
  }
  RC_ASSERT(ItemsOf(text) == items);
}

// The walk ends on every text: each item takes at least one character, and an empty one may follow the last comma.
RC_GTEST_PROP(TDelimitedText, AnyTextHasAtMostOneItemMoreThanCharacters, ()) {
  const auto text = *rc::gen::container<std::string>(rc::gen::elementOf("1,\" \x01\xff"s));
  RC_ASSERT(ItemsOf(text).size() <= text.size() + 1);
}

}  // namespace
}  // namespace ZORBase
