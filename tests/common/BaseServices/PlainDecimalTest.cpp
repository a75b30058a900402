#include <ZORBase/common/BaseServices/PlainDecimal.h>

#include <gtest/gtest.h>

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <random>
#include <string>
#include <string_view>
#include <vector>

namespace ZORBase::PlainDecimal {
namespace {

using TRandom = std::mt19937_64;

// What is read of a text that lies in memory of its own, with nothing around it, so that reading too far is noticed.
std::optional<double> Read(std::string_view Text) {
  const auto copy = std::make_unique<char[]>(Text.size());
  Text.copy(copy.get(), Text.size());
  TQuotient quotient{};
  if (!TryReadPlain(copy.get(), copy.get() + Text.size(), quotient)) return std::nullopt;
  return quotient.Numerator / quotient.Divisor;
}

std::optional<std::string> Written(double Value, int Decimals) {
  std::array<char, kPlainRoom> room{};
  const char* const end = WritePlain(room.data(), Value, Decimals);
  if (end == nullptr) return std::nullopt;
  return std::string(room.data(), static_cast<std::size_t>(end - room.data()));
}

std::string ByCharconv(double Value, int Decimals) {
  std::array<char, 400> room{};
  const auto end = std::to_chars(room.data(), room.data() + room.size(), Value, std::chars_format::fixed, Decimals).ptr;
  return {room.data(), end};
}

std::uint64_t Bits(double Value) { return std::bit_cast<std::uint64_t>(Value); }

void ExpectWrittenAsByCharconv(double Value, int Decimals) {
  const auto text = Written(Value, Decimals);
  ASSERT_TRUE(text) << Value;
  ASSERT_EQ(*text, ByCharconv(Value, Decimals)) << Bits(Value) << " with " << Decimals;
}

// ---------------------------------------------------------------------------------------------- reading

TEST(TryReadPlain, ReadsSignWholesAndDecimals) {
  const std::vector<std::pair<std::string_view, double>> texts = {{"0", 0.0},
                                                                  {"7", 7.0},
                                                                  {"-7", -7.0},
                                                                  {"12345678", 12345678.0},
                                                                  {"1.", 1.0},
                                                                  {".5", 0.5},
                                                                  {"-.5", -0.5},
                                                                  {"0.1", 0.1},
                                                                  {"-123.456", -123.456},
                                                                  {"00012.50", 12.5},
                                                                  {"1.2345678", 1.2345678},
                                                                  {"1.23456789", 1.23456789},
                                                                  {"-48.7030474253", -48.7030474253},
                                                                  {"200.0000000000", 200.0},
                                                                  {".5000000000000000", 0.5},
                                                                  {"1234567.12345678", 1234567.12345678}};
  for (const auto& [text, value] : texts) {
    const auto read = Read(text);
    ASSERT_TRUE(read) << text;
    EXPECT_EQ(Bits(*read), Bits(value)) << text;
  }
  EXPECT_EQ(Bits(Read("-0").value()), Bits(-0.0));
  EXPECT_EQ(Bits(Read("-0.000").value()), Bits(-0.0));
}

TEST(TryReadPlain, DeclinesEverythingElse) {
  for (const std::string_view text : {"",           "-",
                                      ".",          "-.",
                                      "+1",         "--1",
                                      "1-",         "1e5",
                                      "1E5",        "0x1",
                                      "nan",        "inf",
                                      " 1",         "1 ",
                                      "1,5",        "1..2",
                                      "1.2.3",      "1.-2",
                                      "a",          "1a",
                                      "a1",         "1.a",
                                      "1.234567a",  "1.2345678a",
                                      "a2345678",   "1234567a",
                                      "1234/678",   "1234:678",
                                      "1.:",        "1./",
                                      "123456789",  "123456789.5",
                                      "12345678.5", "1.12345678901234567",
                                      "\xB1.5",     "1.\xB5"}) {
    EXPECT_FALSE(Read(text)) << text;
  }
  EXPECT_FALSE(Read(std::string_view("1\0", 2)));
  EXPECT_FALSE(Read(std::string_view("1.0\0", 4)));
}

TEST(TryReadPlain, KeepsTheValueOfATextThatItDeclines) {
  TQuotient quotient{3.0, 4.0};
  const std::string_view text = "1.2.3";
  EXPECT_FALSE(TryReadPlain(text.data(), text.data() + text.size(), quotient));
  EXPECT_EQ(quotient.Numerator, 3.0);
  EXPECT_EQ(quotient.Divisor, 4.0);
}

// Whole numbers end to be doubles at 2^53 = 9007199254740992.
TEST(TryReadPlain, GoesUpTo2To53WithoutThePoint) {
  EXPECT_EQ(Read("9007199.254740992").value(), 9007199.254740992);
  EXPECT_FALSE(Read("9007199.254740993"));
  EXPECT_FALSE(Read("99999999.9999999999999"));
  EXPECT_EQ(Read("0.9007199254740992").value(), 0.9007199254740992);
  EXPECT_FALSE(Read("0.9007199254740993"));
}

// Digits, points, signs and their neighbours in the code, in every length: what is accepted has the bits of from_chars.
TEST(TryReadPlain, WhatItAcceptsHasTheBitsOfCharconv) {
  TRandom random(1);
  constexpr std::string_view characters = "00123456789.";
  constexpr std::string_view strays = "-+eE/: ,\x01\x80\xB0\xFF";
  int accepted = 0;
  for (int i = 0; i < 1'000'000; ++i) {
    std::string text = random() % 3 == 0 ? "-" : "";
    const std::size_t length = random() % 22;
    for (std::size_t k = 0; k < length; ++k) text += characters[random() % characters.size()];
    if (random() % 8 == 0 && !text.empty()) text[random() % text.size()] = strays[random() % strays.size()];
    const auto read = Read(text);
    if (!read) continue;
    ++accepted;
    double expected = 0.0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), expected);
    ASSERT_EQ(parsed.ptr, text.data() + text.size()) << text;
    ASSERT_EQ(Bits(*read), Bits(expected)) << text;
  }
  EXPECT_GT(accepted, 200'000);
}

TEST(TryReadPlain, AcceptsEveryCoordinateWithUpTo12Decimals) {
  TRandom random(2);
  std::uniform_real_distribution<double> coordinate(-900.0, 900.0);
  for (int i = 0; i < 200'000; ++i) {
    const std::string text = ByCharconv(coordinate(random), i % 13);
    double expected = 0.0;
    std::from_chars(text.data(), text.data() + text.size(), expected);
    const auto read = Read(text);
    ASSERT_TRUE(read) << text;
    ASSERT_EQ(Bits(*read), Bits(expected)) << text;
  }
}

// ---------------------------------------------------------------------------------------------- writing

TEST(WritePlain, WritesSignWholesAndDecimals) {
  EXPECT_EQ(Written(0.0, 0), "0");
  EXPECT_EQ(Written(-0.0, 3), "-0.000");
  EXPECT_EQ(Written(-123.456, 3), "-123.456");
  EXPECT_EQ(Written(0.05, 1), "0.1");  // the double lies above
  EXPECT_EQ(Written(67108863.0, 2), "67108863.00");
  EXPECT_EQ(Written(1.0 / 3.0, 16), "0.3333333333333333");
}

TEST(WritePlain, CarriesIntoTheWholes) {
  EXPECT_EQ(Written(0.9996, 3), "1.000");
  EXPECT_EQ(Written(9.9999999999, 6), "10.000000");
  EXPECT_EQ(Written(-99999.5, 0), "-100000");
  EXPECT_EQ(Written(std::nextafter(67108864.0, 0.0), 4), "67108864.0000");
}

TEST(WritePlain, DeclinesWhatIsNotPlain) {
  for (const double value : {67108864.0, 1e9, 1e300, std::numeric_limits<double>::infinity(), std::nan("")}) {
    EXPECT_FALSE(Written(value, 3)) << value;
    EXPECT_FALSE(Written(-value, 3)) << value;
  }
  EXPECT_FALSE(Written(1.0, 17));
  EXPECT_TRUE(Written(1.0, 16));
}

// Half of a last place is a double where it is a multiple of a power of two: k / 2^(d + 1) with d decimals.
TEST(WritePlain, TiesGoToTheEvenDigitAndTheirNeighboursDoNot) {
  TRandom random(3);
  for (int decimals = 0; decimals <= 16; ++decimals) {
    for (int i = 0; i < 20'000; ++i) {
      const std::uint64_t size = std::uint64_t{1}
                                 << (i % 24 + 1);  // small ones, too, whose bits lie far behind the point
      const double tie = std::ldexp(static_cast<double>((random() % size) | 1U), -decimals - 1);
      for (const double value : {tie, std::nextafter(tie, 0.0), std::nextafter(tie, 1e9), -tie}) {
        ExpectWrittenAsByCharconv(value, decimals);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST(WritePlain, HasTheDigitsOfCharconvAtEverySize) {
  TRandom random(4);
  constexpr std::uint64_t kExponents = 1023 + 26;
  for (int i = 0; i < 2'000'000; ++i) {
    // Every exponent alike, and every other time one of those that have digits to show.
    const std::uint64_t exponent = i % 2 == 0 ? random() % kExponents : kExponents - 1 - random() % 90;
    const std::uint64_t bits = (random() & 0x800F'FFFF'FFFF'FFFFU) | exponent << 52U;
    ExpectWrittenAsByCharconv(std::bit_cast<double>(bits), static_cast<int>(random() % 17));
    if (HasFatalFailure()) return;
  }
}

TEST(WritePlain, HasTheDigitsOfCharconvForCoordinates) {
  TRandom random(5);
  std::uniform_real_distribution<double> coordinate(-3000.0, 3000.0);
  for (int i = 0; i < 1'000'000; ++i) {
    const double value = coordinate(random);
    const double measured = std::nearbyint(value * 1e4) / 1e4;
    ExpectWrittenAsByCharconv(value, i % 13);
    ExpectWrittenAsByCharconv(measured, i % 13);
    if (HasFatalFailure()) return;
  }
}

TEST(WritePlain, StaysWithinItsRoom) {
  for (const int decimals : {0, 8, 9, 16}) {
    std::array<char, kPlainRoom + 8> room;
    room.fill('#');
    ASSERT_NE(WritePlain(room.data(), -67108863.0, decimals), nullptr);
    for (std::size_t i = kPlainRoom; i < room.size(); ++i) EXPECT_EQ(room[i], '#');
  }
}

}  // namespace
}  // namespace ZORBase::PlainDecimal
