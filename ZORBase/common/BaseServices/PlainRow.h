// PlainRow (internal): a row of decimal numbers of the common form, each taken from sixteen characters at once.
//   TryReadPlainRow   "12.5,-0.375,8" to doubles
// It gives what <charconv> gives for the items, to the last bit, or declines: then it is for those who take them one by one.
#pragma once

#include <ZORBase/common/BaseServices/PlainDecimal.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <span>

namespace ZORBase::PlainDecimal {

#if defined(ZORBASE_HAS_SSE2)

using TBlock = __m128i;
inline constexpr std::size_t kBlockSize = sizeof(TBlock);

inline TBlock LoadBlock(const void* From) { return _mm_loadu_si128(static_cast<const TBlock*>(From)); }

/// A bit for each byte of the block that is Character, the lowest one for the first.
inline std::uint32_t PlacesOf(TBlock Block, char Character) {
  return static_cast<std::uint32_t>(_mm_movemask_epi8(_mm_cmpeq_epi8(Block, _mm_set1_epi8(Character))));
}

/// Ones in the Count <= 16 last bytes of a block, zeros before them.
inline TBlock LastOnes(std::size_t Count) {
  static constexpr auto kZerosThenOnes = [] {
    std::array<std::uint8_t, 2 * kBlockSize> bytes{};
    std::fill(bytes.begin() + kBlockSize, bytes.end(), std::uint8_t{0xFF});
    return bytes;
  }();
  return LoadBlock(kZerosThenOnes.data() + Count);
}

/// \return the length of the item that begins at Place of a text of Size >= 16 characters, up to a comma or the end of the text;
/// 16 or more where there is neither within 16 characters. Place is at most Size + 1, which gives 0.
inline std::size_t ItemLength(const char* Text, std::size_t Size, std::size_t Place) {
  const std::size_t block = std::min(Place, Size - kBlockSize);
  constexpr std::uint32_t kBehind = ~std::uint32_t{0} << kBlockSize;
  return static_cast<std::size_t>(
      std::countr_zero((PlacesOf(LoadBlock(Text + block), ',') | kBehind) >> (Place - block)));
}

/// The powers of ten to divide by, and their negatives.
inline constexpr auto kSignedPowers = [] {
  std::array<std::array<double, kBlockSize>, 2> powers{};
  for (std::size_t i = 0; i < kBlockSize; ++i) powers[0][i] = kPowersOfTen[i].Real, powers[1][i] = -powers[0][i];
  return powers;
}();

/// \return the 16 characters before End, with zeros in place of those before Begin, from which on 16 can be loaded.
inline TBlock BlockBefore(const char* Begin, const char* End) {
  const auto count = static_cast<std::size_t>(End - Begin);
  if (count >= kBlockSize) return LoadBlock(End - kBlockSize);
  const std::uint64_t first = LoadWord(Begin);
  const bool isLong = count >= kWordDigits;
  const std::uint64_t upper = isLong ? LoadWord(End - kWordDigits) : RaisedBytes(first, count);
  const std::uint64_t lower = isLong ? RaisedBytes(first, count - kWordDigits) : 0;
  return _mm_set_epi64x(static_cast<std::int64_t>(upper), static_cast<std::int64_t>(lower));
}

/// Reads the last Length <= 15 characters of Block: digits, with or without a point. Value gets the sign that was before them.
inline bool TryReadBlock(TBlock Block, std::size_t Length, bool IsNegative, double& Value) {
  auto decimals = kBlockSize - static_cast<std::size_t>(std::bit_width(PlacesOf(Block, '.') | 1U));
  auto count = Length - 1;
  if (decimals > count) {  // the point, if there is one, belongs to an item before
    decimals = 0;
    ++count;
  } else {
    // The characters before the point move up by one place, over it.
    const TBlock behindPoint = LastOnes(decimals);
    Block = _mm_or_si128(_mm_and_si128(behindPoint, Block), _mm_andnot_si128(behindPoint, _mm_slli_si128(Block, 1)));
  }
  const TBlock digits = _mm_and_si128(_mm_xor_si128(Block, _mm_set1_epi8('0')), LastOnes(count));
  TBlock numbers;
  if (!TryNumbersOf(digits, numbers) || count == 0) return false;
  // So few digits are exact in double arithmetic, and the division is the only rounding.
  const __m128d parts = _mm_mul_pd(_mm_cvtepi32_pd(numbers), _mm_set_pd(1.0, static_cast<double>(kWordLimit)));
  const __m128d mantissa = _mm_add_sd(parts, _mm_unpackhi_pd(parts, parts));
  Value = _mm_cvtsd_f64(mantissa) / kSignedPowers[IsNegative ? 1 : 0][decimals];
  return true;
}

/// Reads as many numbers as Values has places, parted by single commas, from a text that holds nothing else: each an optional
/// "-" and up to 15 digits, or up to 14 with a point; 15 characters in all.
/// \return false, with Values in no settled state, for every other text.
inline bool TryReadPlainRow(const char* Begin, const char* End, std::span<double> Values) {
  const auto size = static_cast<std::size_t>(End - Begin);
  if (size < kBlockSize) return false;
  std::size_t place = 0;
  for (double& value : Values) {
    const std::size_t length = ItemLength(Begin, size, place);
    if (length == 0 || length >= kBlockSize) return false;
    const bool isNegative = Begin[place] == '-';
    place += length;
    const std::size_t magnitudeLength = length - (isNegative ? 1 : 0);
    const TBlock block = BlockBefore(Begin, Begin + place);
    if (magnitudeLength == 0 || !TryReadBlock(block, magnitudeLength, isNegative, value)) return false;
    ++place;
  }
  return place == size + 1;
}

#else

inline bool TryReadPlainRow(const char*, const char*, std::span<double>) { return false; }

#endif

}  // namespace ZORBase::PlainDecimal
