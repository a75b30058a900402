#include <ZORBase/common/BaseServices/PlainRow.h>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <bit>
#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace ZORBase::PlainDecimal {
namespace {

// What is read of a row that lies in memory of its own, with nothing around it, so that reading too far is noticed.
std::optional<std::vector<double>> ReadRowOf(std::string_view Text, std::size_t Count) {
  const auto copy = std::make_unique<char[]>(Text.size());
  Text.copy(copy.get(), Text.size());
  std::vector<double> values(Count);
  if (!TryReadPlainRow(copy.get(), copy.get() + Text.size(), values)) return std::nullopt;
  return values;
}

// The bits of the numbers, so that 0 and -0 differ.
std::vector<std::uint64_t> BitsOf(const std::vector<double>& Values) {
  std::vector<std::uint64_t> bits;
  for (const double value : Values) bits.push_back(std::bit_cast<std::uint64_t>(value));
  return bits;
}

double ByFromChars(const std::string& Item) {
  double value = 0.0;
  const auto parsed = std::from_chars(Item.data(), Item.data() + Item.size(), value);
  EXPECT_TRUE(parsed.ec == std::errc() && parsed.ptr == Item.data() + Item.size()) << Item;
  return value;
}

std::string RowOf(const std::vector<std::string>& Items) {
  std::string row;
  for (const std::string& item : Items) row += (row.empty() ? "" : ",") + item;
  return row;
}

// What a number may be at least in front of and behind the one under test, so that the row is long enough.
const std::string kLongItem = "-1234567.125";

#if defined(ZORBASE_HAS_SSE2)

TEST(TryReadPlainRow, ReadsTheRowOfAPose) {
  const auto values = ReadRowOf("-43.457451,30.363845,200.000000,-0.500000,0.000000,-0.000000", 6);
  ASSERT_TRUE(values);
  EXPECT_EQ(BitsOf(*values), BitsOf({-43.457451, 30.363845, 200.0, -0.5, 0.0, -0.0}));
}

TEST(TryReadPlainRow, ReadsEveryFormOfANumberInEveryPlaceOfARow) {
  for (const std::string form :
       {"0", "-0", "7", "-7", "7.", "-7.", ".7", "-.7", "0.7", "12345678", "-12345678.9", "1.23456789",
        "123456789012345", "12345678901234.", ".12345678901234", "-1234567.654321"}) {
    for (std::size_t place = 0; place < 3; ++place) {
      std::vector<std::string> items(3, kLongItem);
      items[place] = form;
      std::vector<double> expected;
      for (const std::string& item : items) expected.push_back(ByFromChars(item));
      const auto values = ReadRowOf(RowOf(items), items.size());
      ASSERT_TRUE(values) << form;
      EXPECT_EQ(BitsOf(*values), BitsOf(expected)) << RowOf(items);
    }
  }
}

TEST(TryReadPlainRow, ReadsARowOfShortNumbersFrom16CharactersOn) {
  EXPECT_EQ(ReadRowOf("1,2,3,4,5,6,7,8,", 8), std::nullopt);
  EXPECT_EQ(ReadRowOf("1,2,3,4,5,6,7,8", 8), std::nullopt);
  EXPECT_EQ(ReadRowOf("1,2,3,4,5,6,7,89", 8), (std::vector<double>{1, 2, 3, 4, 5, 6, 7, 89}));
}

TEST(TryReadPlainRow, DeclinesEveryOtherItemInEveryPlace) {
  for (const std::string item : {"",
                                 "-",
                                 ".",
                                 "-.",
                                 "+1",
                                 "--1",
                                 "1-",
                                 "1.2.3",
                                 "1e5",
                                 "0x1",
                                 "nan",
                                 " 1",
                                 "1 ",
                                 "\"1\"",
                                 "1;2",
                                 "1/2",
                                 "1:2",
                                 "1234567890123456",
                                 "0.12345678901234",
                                 "1234567890123456789012345"}) {
    for (std::size_t place = 0; place < 3; ++place) {
      std::vector<std::string> items(3, kLongItem);
      items[place] = item;
      EXPECT_FALSE(ReadRowOf(RowOf(items), items.size())) << RowOf(items);
    }
  }
  EXPECT_FALSE(ReadRowOf(std::string_view("1.25,1\0,1.25,12345678", 21), 4));
}

TEST(TryReadPlainRow, DeclinesAnotherCount) {
  const std::string row = RowOf({kLongItem, kLongItem, kLongItem});
  EXPECT_FALSE(ReadRowOf(row, 0));
  EXPECT_FALSE(ReadRowOf(row, 2));
  EXPECT_FALSE(ReadRowOf(row, 4));
  EXPECT_FALSE(ReadRowOf(row + ",", 3));
  EXPECT_FALSE(ReadRowOf(row + ",", 4));
  EXPECT_FALSE(ReadRowOf("," + row, 3));
  EXPECT_FALSE(ReadRowOf("", 0));
  EXPECT_FALSE(ReadRowOf("", 1));
}

// An item of up to 16 characters of the kind that numbers are made of; one in two is a number.
std::string ItemOf(std::uint64_t Seed) {
  constexpr std::string_view kAlphabet = "0123456789012345.-";
  std::string item = Seed % 4 == 0 ? "-" : "";
  const std::uint64_t length = 1 + (Seed >> 2U) % 15;
  const std::uint64_t point = (Seed >> 6U) % 16;
  std::uint64_t digits = Seed >> 10U;
  for (std::uint64_t i = 0; i < length; ++i, digits = digits * 6364136223846793005U + 1442695040888963407U) {
    const bool isAny = Seed % 64 == 1;
    item += i == point ? '.' : kAlphabet[(digits >> 33U) % (isAny ? kAlphabet.size() : 16)];
  }
  return item;
}

// A row that is read has what the reader of a single number gives; and one that is not has an item that is not plain.
RC_GTEST_PROP(TryReadPlainRow, HasTheBitsOfSingleNumbers, (const std::vector<std::uint64_t>& Seeds)) {
  std::vector<std::string> items;
  for (const std::uint64_t seed : Seeds) items.push_back(ItemOf(seed * 0x9E3779B97F4A7C15U ^ seed >> 29U));
  const std::string row = RowOf(items);
  RC_PRE(row.size() >= 16);
  const auto values = ReadRowOf(row, items.size());
  bool isPlain = true;
  for (const std::string& item : items) {
    TQuotient quotient{};
    isPlain = isPlain && item.size() < 16 && TryReadPlain(item.data(), item.data() + item.size(), quotient);
  }
  if (isPlain) RC_ASSERT(values.has_value());
  if (!values) return;
  for (std::size_t i = 0; i < items.size(); ++i) {
    RC_ASSERT(std::bit_cast<std::uint64_t>((*values)[i]) == std::bit_cast<std::uint64_t>(ByFromChars(items[i])));
  }
}

#else

TEST(TryReadPlainRow, DeclinesEverythingWithoutTheInstructions) {
  EXPECT_FALSE(ReadRowOf(kLongItem + "," + kLongItem, 2));
}

#endif

}  // namespace
}  // namespace ZORBase::PlainDecimal
