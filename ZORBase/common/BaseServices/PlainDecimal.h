// PlainDecimal (internal): decimal numbers of the common form, eight digits of a machine word at a time.
//   TryReadPlain   "-123.456" to a double
//   WritePlain     a double to "-123.456"
// Both give what <charconv> gives, to the last bit and digit, or decline: then it is for <charconv>. They decline everything
// where the first byte of a word is not its lowest one.
#pragma once

#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define ZORBASE_HAS_SSE2 1
#endif

namespace ZORBase::PlainDecimal {

inline constexpr std::size_t kWordDigits = 8;
inline constexpr std::uint64_t kWordLimit = 100'000'000;  // the first number with more digits than a word has
inline constexpr std::size_t kMaxDecimals = 2 * kWordDigits;

/// A power of ten, which is exact as a double, too.
struct TPowerOfTen {
  std::uint64_t Whole = 1;
  double Real = 1.0;
};

inline constexpr auto kPowersOfTen = [] {
  std::array<TPowerOfTen, kMaxDecimals + 1> powers;
  for (std::size_t i = 1; i < powers.size(); ++i) powers[i] = {10 * powers[i - 1].Whole, 10 * powers[i - 1].Real};
  return powers;
}();

// ---------------------------------------------------------------------------------------------- bytes of a word

/// The same byte eight times.
constexpr std::uint64_t InEveryByte(unsigned char Byte) { return 0x0101010101010101U * Byte; }

inline std::uint64_t LoadWord(const char* Text) {
  std::uint64_t word = 0;
  std::memcpy(&word, Text, sizeof word);
  return word;
}

inline void StoreWord(char* Text, std::uint64_t Word) { std::memcpy(Text, &Word, sizeof Word); }

/// The Length < 8 characters of a short text, the first one lowest, zeros behind them. No byte outside the text is read.
inline std::uint64_t LoadShort(const char* Text, std::size_t Length) {
  const auto byteAt = [&](std::size_t Place) { return std::uint64_t{static_cast<unsigned char>(Text[Place])}; };
  if (Length >= 4) {
    std::uint32_t first = 0;
    std::uint32_t last = 0;  // may hold some of the first ones again
    std::memcpy(&first, Text, sizeof first);
    std::memcpy(&last, Text + Length - sizeof last, sizeof last);
    return first | std::uint64_t{last} << 8U * (Length - sizeof last);
  }
  if (Length == 0) return 0;
  return byteAt(0) | byteAt(Length / 2) << 8U * (Length / 2) | byteAt(Length - 1) << 8U * (Length - 1);
}

/// Moves the Count <= 8 lowest bytes to the top and clears those below. In two steps: a word cannot be shifted by 64 bits.
constexpr std::uint64_t RaisedBytes(std::uint64_t Word, std::size_t Count) {
  const auto half = static_cast<unsigned>(4 * (kWordDigits - Count));
  return Word << half << half;
}

/// Keeps the Count <= 8 highest bytes and clears those below.
constexpr std::uint64_t HighestBytes(std::uint64_t Word, std::size_t Count) {
  return Word & RaisedBytes(~std::uint64_t{0}, Count);
}

// ---------------------------------------------------------------------------------------------- digits of words

/// Two numbers below 10^8, or their digits: eight in a word, the first one lowest.
struct TTwoWords {
  std::uint64_t First;
  std::uint64_t Second;
};

#if defined(ZORBASE_HAS_SSE2)

/// Turns sixteen digits, the first one lowest, into two numbers, by way of pairs and fours: the two lowest 32-bit lanes of
/// Numbers. \return false where a byte is none of 0..9.
inline bool TryNumbersOf(__m128i Digits, __m128i& Numbers) {
  const __m128i isDigit = _mm_cmpeq_epi8(_mm_min_epu8(Digits, _mm_set1_epi8(9)), Digits);
  const __m128i tens = _mm_mullo_epi16(_mm_and_si128(Digits, _mm_set1_epi16(0xFF)), _mm_set1_epi16(10));
  const __m128i pairs = _mm_add_epi16(tens, _mm_srli_epi16(Digits, 8));
  const __m128i fours = _mm_madd_epi16(pairs, _mm_set1_epi32(1 << 16 | 100));
  Numbers = _mm_madd_epi16(_mm_packs_epi32(fours, fours), _mm_set1_epi32(1 << 16 | 10'000));
  return _mm_movemask_epi8(isDigit) == 0xFFFF;
}

inline bool TryNumbersOf(const TTwoWords& Digits, TTwoWords& Numbers) {
  __m128i numbers;
  const bool areDigits = TryNumbersOf(
      _mm_set_epi64x(static_cast<std::int64_t>(Digits.Second), static_cast<std::int64_t>(Digits.First)), numbers);
  const auto both = static_cast<std::uint64_t>(_mm_cvtsi128_si64(numbers));
  Numbers = {both & 0xFFFF'FFFFU, both >> 32U};
  return areDigits;
}

/// Turns numbers into digits. Fours are cut off by a product with 2^45 / 10000, pairs and digits by one with 2^19 / 100 and
/// with 2^16 / 10, each rounded up: exact for so small numbers.
inline TTwoWords DigitsOf(const TTwoWords& Numbers) {
  const __m128i eights =
      _mm_set_epi64x(static_cast<std::int64_t>(Numbers.Second), static_cast<std::int64_t>(Numbers.First));
  const __m128i upper = _mm_srli_epi64(_mm_mul_epu32(eights, _mm_set1_epi64x(3'518'437'209)), 45);
  const __m128i lower = _mm_sub_epi32(eights, _mm_mul_epu32(upper, _mm_set1_epi64x(10'000)));
  const __m128i fours = _mm_or_si128(upper, _mm_slli_epi64(lower, 32));
  const __m128i hundreds = _mm_srli_epi16(_mm_mulhi_epu16(fours, _mm_set1_epi16(5243)), 3);
  const __m128i rest = _mm_sub_epi32(fours, _mm_madd_epi16(hundreds, _mm_set1_epi32(100)));
  const __m128i pairs = _mm_or_si128(hundreds, _mm_slli_epi32(rest, 16));
  const __m128i tens = _mm_mulhi_epu16(pairs, _mm_set1_epi16(6554));
  // The ones belong above the tens: 256 (pair - 10 tens) + tens.
  const __m128i digits = _mm_sub_epi16(_mm_slli_epi16(pairs, 8), _mm_mullo_epi16(tens, _mm_set1_epi16(2559)));
  return {static_cast<std::uint64_t>(_mm_cvtsi128_si64(digits)),
          static_cast<std::uint64_t>(_mm_cvtsi128_si64(_mm_unpackhi_epi64(digits, digits)))};
}

#else

inline bool TryNumbersOf(const TTwoWords& Digits, TTwoWords& Numbers) {
  const auto numberOf = [](std::uint64_t Ones) {
    const std::uint64_t pairs = (10 * Ones + (Ones >> 8U)) & 0x00FF'00FF'00FF'00FFU;
    const std::uint64_t fours = (100 * pairs + (pairs >> 16U)) & 0x0000'FFFF'0000'FFFFU;
    return (10'000 * fours + (fours >> 32U)) & 0xFFFF'FFFFU;
  };
  const auto areDigits = [](std::uint64_t Ones) {
    return (((Ones + InEveryByte(0x7F - 9)) | Ones) & InEveryByte(0x80)) == 0;
  };
  Numbers = {numberOf(Digits.First), numberOf(Digits.Second)};
  return areDigits(Digits.First) && areDigits(Digits.Second);
}

inline TTwoWords DigitsOf(const TTwoWords& Numbers) {
  const auto digitsOf = [](std::uint64_t Eight) {
    const std::uint64_t fours = Eight / 10'000 | (Eight % 10'000) << 32U;
    const std::uint64_t hundreds = ((fours * 5243) >> 19U) & 0x0000'007F'0000'007FU;
    const std::uint64_t pairs = hundreds | (fours - 100 * hundreds) << 16U;
    const std::uint64_t tens = ((pairs * 103) >> 10U) & 0x000F'000F'000F'000FU;
    return tens | (pairs - 10 * tens) << 8U;
  };
  return {digitsOf(Numbers.First), digitsOf(Numbers.Second)};
}

#endif

// ---------------------------------------------------------------------------------------------- text to number

/// A number that is one whole number divided by another, both of them doubles: one division gives the nearest double.
struct TQuotient {
  double Numerator;
  double Divisor;
};

/// Reads a text of an optional "-" and up to 8 digits, or up to 7 and a point and up to 16 more: 19 in all, and 2^53 at most
/// when the point is left out. The division is left to the caller, who may have several to make at once.
/// \return false, with Quotient as it was, for every other text.
inline bool TryReadPlain(const char* Begin, const char* End, TQuotient& Quotient) {
  if (std::endian::native != std::endian::little || Begin == End) return false;
  const bool isNegative = *Begin == '-';
  Begin += isNegative ? 1 : 0;
  const auto length = static_cast<std::size_t>(End - Begin);

  // The first eight characters, and the last eight; those of a shorter text stand at the bottom, and at the top.
  const bool isShort = length < kWordDigits;
  const std::uint64_t first = isShort ? LoadShort(Begin, length) : LoadWord(Begin);
  const std::uint64_t last = isShort ? RaisedBytes(first, length) : LoadWord(End - kWordDigits);
  const std::uint64_t fromPoint = first ^ InEveryByte('.');
  const std::uint64_t points =
      (fromPoint - InEveryByte(1)) & ~fromPoint & InEveryByte(0x80);  // the lowest one is right
  const bool hasPoint = points != 0;
  if (!hasPoint && length > kWordDigits) return false;
  const std::size_t wholes = hasPoint ? static_cast<std::size_t>(std::countr_zero(points)) / 8 : length;
  const std::size_t decimals = hasPoint ? length - wholes - 1 : 0;
  if (wholes + decimals == 0 || decimals > kMaxDecimals) return false;

  const std::uint64_t zeros = InEveryByte('0');
  TTwoWords digits{RaisedBytes(first ^ zeros, wholes), last ^ zeros};
  if (decimals < kWordDigits) digits.Second = HighestBytes(digits.Second, decimals);
  TTwoWords parts{};
  if (!TryNumbersOf(digits, parts)) return false;
  std::uint64_t mantissa = parts.First * kPowersOfTen[decimals].Whole + parts.Second;
  if (decimals >= kWordDigits) {
    digits = {0, RaisedBytes(LoadWord(End - decimals) ^ zeros, decimals - kWordDigits)};
    constexpr std::size_t kMaxDigits = 19;  // of a 64-bit whole number
    if (wholes + decimals > kMaxDigits || !TryNumbersOf(digits, parts)) return false;
    mantissa += kWordLimit * parts.Second;
    if (mantissa > std::uint64_t{1} << 53U) return false;
  }
  // The sign is set without a branch: nobody can predict it.
  const double magnitude = static_cast<double>(static_cast<std::int64_t>(mantissa));
  const std::uint64_t sign = std::uint64_t{isNegative} << 63U;
  Quotient = {std::bit_cast<double>(std::bit_cast<std::uint64_t>(magnitude) | sign), kPowersOfTen[decimals].Real};
  return true;
}

// ---------------------------------------------------------------------------------------------- number to text

#if defined(__SIZEOF_INT128__)
#define ZORBASE_HAS_WIDE_PRODUCT 1

/// A magnitude as a whole number and as many 10^-Decimals as are nearest to the rest, ties to even. That may be one whole.
struct TFixedParts {
  std::uint64_t Whole;
  std::uint64_t Fraction;
};

/// The magnitude is Mantissa / 2^Shift; its decimals are those of a whole number over a power of two, so that nothing is lost.
/// Mantissa < 2^53, 26 < Shift < 128, Power <= 10^16.
inline TFixedParts FixedPartsOf(std::uint64_t Mantissa, unsigned Shift, std::uint64_t Power) {
  __extension__ using TWide = unsigned __int128;
  constexpr std::uint64_t kHalf = std::uint64_t{1} << 63U;
  if (Shift < 64) {
    const std::uint64_t whole = Mantissa >> Shift;
    const TWide scaled = TWide{Mantissa << (64 - Shift)} * Power;  // the bits behind the point, in units of 2^-64
    const auto fraction = static_cast<std::uint64_t>(scaled >> 64U);
    const std::uint64_t odd = (Power == 1 ? whole : fraction) & 1U;
    return {whole, fraction + (static_cast<std::uint64_t>(scaled) > kHalf - odd ? 1 : 0)};
  }
  const TWide scaled = TWide{Mantissa} * Power;
  const auto fraction = static_cast<std::uint64_t>(scaled >> Shift);
  const std::uint64_t odd = Power == 1 ? 0 : fraction & 1U;
  const TWide rest = scaled - (TWide{fraction} << Shift);
  return {0, fraction + (rest + odd > TWide{1} << (Shift - 1) ? 1 : 0)};
}

#endif

/// What WritePlain may write, in bytes: a sign, a word of digits, a point and two words.
inline constexpr std::size_t kPlainRoom = 32;

/// Writes Value with exactly Decimals digits behind the point, from Out on; the bytes up to Out + kPlainRoom may be written.
/// \return the end of the text, or nullptr for a magnitude of 2^26 or more, what is not finite, and more than 16 decimals.
inline char* WritePlain(char* Out, double Value, int Decimals) {
#if defined(ZORBASE_HAS_WIDE_PRODUCT)
  constexpr unsigned kMantissaBits = 52;
  constexpr unsigned kExponentOfOne = 1023;
  constexpr unsigned kMaxShift = 127;
  constexpr std::uint64_t kHiddenBit = std::uint64_t{1} << kMantissaBits;
  const auto bits = std::bit_cast<std::uint64_t>(Value);
  const auto exponent = static_cast<unsigned>(bits >> kMantissaBits) & 0x7FFU;
  const auto decimals = static_cast<unsigned>(Decimals);
  const bool isPlain = exponent < kExponentOfOne + 26 && decimals <= kMaxDecimals;
  if (std::endian::native != std::endian::little || !isPlain) return nullptr;

  // What is below 2^-75 is below half of the last decimal: the same as 0.
  const unsigned shift = kExponentOfOne + kMantissaBits - exponent;
  const bool isZero = shift > kMaxShift;
  const std::uint64_t mantissa = isZero ? 0 : (bits & (kHiddenBit - 1)) | kHiddenBit;
  const std::uint64_t one = kPowersOfTen[decimals].Whole;
  TFixedParts parts = FixedPartsOf(mantissa, isZero ? 63 : shift, one);
  const bool carries = parts.Fraction == one;
  parts.Whole += carries ? 1 : 0;
  parts.Fraction = carries ? 0 : parts.Fraction;

  const bool isLong = decimals > kWordDigits;
  const std::uint64_t fraction = parts.Fraction * kPowersOfTen[(isLong ? kMaxDecimals : kWordDigits) - decimals].Whole;
  const TTwoWords digits = DigitsOf({parts.Whole, isLong ? fraction / kWordLimit : fraction});
  const std::uint64_t zeros = InEveryByte('0');
  *Out = '-';
  Out += bits >> 63U;
  const auto leading = static_cast<unsigned>(std::countr_zero(digits.First | std::uint64_t{1} << 56U)) / 8;
  StoreWord(Out, (digits.First | zeros) >> 8U * leading);
  Out += kWordDigits - leading;
  if (decimals == 0) return Out;
  *Out++ = '.';
  StoreWord(Out, digits.Second | zeros);
  if (isLong) StoreWord(Out + kWordDigits, DigitsOf({fraction % kWordLimit, 0}).First | zeros);
  return Out + decimals;
#else
  static_cast<void>(Out), static_cast<void>(Value), static_cast<void>(Decimals);
  return nullptr;
#endif
}

}  // namespace ZORBase::PlainDecimal
