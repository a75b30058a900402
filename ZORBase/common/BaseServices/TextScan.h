// TextScan (internal): finds a character of a set, sixteen at a time.
#pragma once

#include <bit>
#include <cstddef>

#if defined(__SSE2__) || defined(_M_X64)
#include <emmintrin.h>
#define ZORBASE_SCAN_SSE2 1
#endif

namespace ZORBase {

#if defined(ZORBASE_SCAN_SSE2)
using TScanBlock = __m128i;
inline constexpr std::ptrdiff_t kScanBlock = sizeof(TScanBlock);
inline TScanBlock LoadScanBlock(const char* Text) { return _mm_loadu_si128(reinterpret_cast<const __m128i*>(Text)); }
#endif

/// The characters that end a line.
struct TLineEnds {
  static constexpr bool Has(char Character) { return Character == '\n' || Character == '\r'; }
#if defined(ZORBASE_SCAN_SSE2)
  static unsigned MaskOf(TScanBlock Block) {
    const __m128i isEnd =
        _mm_or_si128(_mm_cmpeq_epi8(Block, _mm_set1_epi8('\n')), _mm_cmpeq_epi8(Block, _mm_set1_epi8('\r')));
    return static_cast<unsigned>(_mm_movemask_epi8(isEnd));
  }
#endif
};

/// The characters that end an item which is not quoted: a comma, blanks, and the byte 0.
struct TItemEnds {
  static constexpr bool Has(char Character) { return static_cast<unsigned char>(Character) <= 32 || Character == ','; }
#if defined(ZORBASE_SCAN_SSE2)
  static unsigned MaskOf(TScanBlock Block) {
    const __m128i isLow = _mm_cmpeq_epi8(_mm_min_epu8(Block, _mm_set1_epi8(32)), Block);
    return static_cast<unsigned>(_mm_movemask_epi8(_mm_or_si128(isLow, _mm_cmpeq_epi8(Block, _mm_set1_epi8(',')))));
  }
#endif
};

/// FindFirst where the first sixteen characters have none, or are not there.
template <class TSet>
const char* FindFirstFar(const char* Begin, const char* From, const char* End) {
#if defined(ZORBASE_SCAN_SSE2)
  for (; End - From >= kScanBlock; From += kScanBlock) {
    const unsigned mask = TSet::MaskOf(LoadScanBlock(From));
    if (mask != 0) return From + std::countr_zero(mask);
  }
  if (End - Begin >= kScanBlock) {
    const char* const block = End - kScanBlock;
    const unsigned mask = TSet::MaskOf(LoadScanBlock(block)) >> static_cast<unsigned>(From - block);
    return mask != 0 ? From + std::countr_zero(mask) : End;
  }
#endif
  while (From != End && !TSet::Has(*From)) ++From;
  return From;
}

/// \return the first place from From on, up to End, that holds a character of TSet; End where there is none. Nothing outside
///         Begin..End is read; a block that would reach beyond End begins before From instead.
template <class TSet>
const char* FindFirst(const char* Begin, const char* From, const char* End) {
#if defined(ZORBASE_SCAN_SSE2)
  if (End - From >= kScanBlock) {
    const unsigned mask = TSet::MaskOf(LoadScanBlock(From));
    if (mask != 0) return From + std::countr_zero(mask);
  }
#endif
  return FindFirstFar<TSet>(Begin, From, End);
}

}  // namespace ZORBase
