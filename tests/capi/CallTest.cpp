// What the C interface makes of exceptions that its own calls can hardly be brought to raise. The library keeps this part to
// itself, so that it is compiled here once more.
#include <ZORBase/capi/Call.cpp>

#include "capi/CapiTestSupport.h"

namespace ZORBase::Test {
namespace {

std::string TextAfter(zorbase_status Expected, void (*Work)()) {
  EXPECT_EQ(capi::Call("zorbase_example", Work), Expected);
  return capi::CurrentError();
}

TEST(CallOfTheCInterface, GivesEachExceptionItsStatusAndItsText) {
  EXPECT_EQ(TextAfter(ZORBASE_OK, [] {}), "");
  EXPECT_EQ(TextAfter(ZORBASE_ERROR, [] { RaiseGeneralError("the reason"); }), "the reason");
  EXPECT_EQ(TextAfter(ZORBASE_NO_MEMORY, [] { throw std::bad_alloc(); }), "zorbase_example: not enough memory");
  EXPECT_EQ(TextAfter(ZORBASE_NO_MEMORY, [] { throw std::length_error("vector"); }),
            "zorbase_example: more than memory can hold");
  EXPECT_EQ(TextAfter(ZORBASE_NOT_POSSIBLE, [] { capi::Refuse(ZORBASE_NOT_POSSIBLE, "not so"); }),
            "zorbase_example: not so");
}

TEST(CallOfTheCInterface, LetsNothingElsePassEither) {
  EXPECT_EQ(TextAfter(ZORBASE_UNEXPECTED, [] { throw std::runtime_error("broken"); }), "zorbase_example: broken");
  EXPECT_EQ(TextAfter(ZORBASE_UNEXPECTED, [] { throw 7; }), "zorbase_example: an error of an unknown kind");
}

TEST(CallOfTheCInterface, CutsALongTextBetweenCharactersAndNotInside) {
  const std::string cut = TextAfter(ZORBASE_UNEXPECTED, [] {
    std::string text;
    while (text.size() < 3000) text += "\u00e4";
    throw std::runtime_error(text);
  });
  EXPECT_LE(cut.size(), 2047U);
  EXPECT_GE(cut.size(), 2045U);
  EXPECT_THAT(cut, testing::EndsWith("\u00e4..."));
}

// No character begins where it could be cut.
TEST(CallOfTheCInterface, LeavesALongTextOutThatIsNoneOfCharacters) {
  EXPECT_EQ(TextAfter(ZORBASE_UNEXPECTED, [] { throw std::runtime_error(std::string(3000, '\x80')); }),
            "zorbase_example: ...");
}

}  // namespace
}  // namespace ZORBase::Test
