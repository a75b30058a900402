#include <ZORBase/common/BaseServices/TextScan.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <random>
#include <string>

namespace ZORBase {
namespace {

// The place found in a text that lies in memory of its own, so that reading outside is noticed, and the one found one by one.
template <class TSet>
void ExpectFirst(const std::string& Text, std::size_t From) {
  const auto copy = std::make_unique<char[]>(Text.size());
  std::copy(Text.begin(), Text.end(), copy.get());
  const char* const end = copy.get() + Text.size();
  const char* const found = FindFirst<TSet>(copy.get(), copy.get() + From, end);
  const char* const expected = std::find_if(copy.get() + From, copy.get() + Text.size(), TSet::Has);
  ASSERT_EQ(found - copy.get(), expected - copy.get()) << "in \"" << Text << "\" from " << From;
}

TEST(FindFirst, FindsTheFirstOneWhereverItIsAndWhereverTheSearchBegins) {
  for (std::size_t length = 0; length <= 70; ++length) {
    for (std::size_t place = 0; place <= length; ++place) {
      std::string text(length, 'x');
      if (place < length) text[place] = ',';
      for (std::size_t from = 0; from <= length; ++from) ExpectFirst<TItemEnds>(text, from);
      if (HasFatalFailure()) return;
    }
  }
}

TEST(FindFirst, KnowsEveryCharacterOfItsSet) {
  for (int code = 0; code < 256; ++code) {
    for (const std::size_t length : {std::size_t{1}, std::size_t{16}, std::size_t{21}}) {
      std::string text(length, 'x');
      text.back() = static_cast<char>(code);
      ExpectFirst<TItemEnds>(text, 0);
      ExpectFirst<TLineEnds>(text, 0);
      const bool isItemEnd = code <= 32 || code == ',';
      EXPECT_EQ(TItemEnds::Has(static_cast<char>(code)), isItemEnd) << code;
      EXPECT_EQ(TLineEnds::Has(static_cast<char>(code)), code == '\n' || code == '\r') << code;
      if (HasFatalFailure()) return;
    }
  }
}

TEST(FindFirst, FindsTheFirstOfSeveral) {
  std::mt19937_64 random(1);
  for (int i = 0; i < 20'000; ++i) {
    std::string text(random() % 100, 'x');
    for (char& character : text) {
      if (random() % 16 == 0) character = "\r\n,\x01 "[random() % 5];
    }
    const std::size_t from = text.empty() ? 0 : random() % text.size();
    ExpectFirst<TItemEnds>(text, from);
    ExpectFirst<TLineEnds>(text, from);
    if (HasFatalFailure()) return;
  }
}

}  // namespace
}  // namespace ZORBase
