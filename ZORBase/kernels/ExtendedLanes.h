// ExtendedLanes: sums and products of four pairs of numbers, formed in extended precision and stored as doubles. Internal.
//   Product, Sum, Difference   the bits of StoreProduct, StoreSum and StoreDifference
//   AreModeratePoses           numbers whose products the lanes can form
//   kHasExtendedLanes          whether this machine has what they need
// To be included by kernel sources only, and used in functions marked ZORBASE_BY_LANES.
//
// What is rounded to 64 bits and then to 53 differs from the double result r only if the first rounding ends half way between r
// and a neighbour, a distance h from either, where the exact result does not lie. The error e of r is then less than h by at
// most h / 2^11. As h is a power of two, the leading ten bits of the fraction of e are then all ones: one added to the last
// of them carries, and what is left of it in eleven bits is h itself. A smaller e stays below h, and h stays h. So the sum of r and
// the e so changed is rounded to r, and in the one case from half way, as the stored result is.
//
// The error of a sum is exact after six operations (D. E. Knuth, "The Art of Computer Programming", volume 2, 4.2.2), that of
// a product after a fused multiply-add, unless it underflows. This is the one place for that instruction: it is written by
// hand into functions for AVX2, which does not have it, so that no compiler forms another one.
#pragma once

#include <ZORBase/kernels/ExtendedStore.h>
#include <ZORBase/kernels/TargetClones.h>

#include <cmath>
#include <cstddef>

#if defined(__GNUC__) && defined(__x86_64__) && !defined(ZORBASE_WITHOUT_LANES)
#define ZORBASE_HAS_EXTENDED_LANES 1
#include <immintrin.h>
#define ZORBASE_BY_LANES __attribute__((target("avx2")))
#ifdef ZORBASE_COUNTS_LINES
#define ZORBASE_BY_LANES_INLINE __attribute__((target("avx2"))) inline
#else
#define ZORBASE_BY_LANES_INLINE __attribute__((target("avx2"), always_inline)) inline
#endif
#endif

namespace ZORBase {

/// Numbers that are moderate, or 0, have products whose error does not underflow, and which do not overflow.
inline constexpr double kSmallestModerate = 0x1p-300;
inline constexpr double kLargestModerate = 0x1p300;

/// Components of a pose.
inline constexpr std::size_t kPoseItems = 6;

#ifdef ZORBASE_HAS_EXTENDED_LANES

/// Whether this machine has the instructions. Before the library is initialised it says no, which costs time only.
inline const bool kHasExtendedLanes =
    kHasStoreX87 && __builtin_cpu_supports("avx2") != 0 && __builtin_cpu_supports("fma") != 0;

/// Result, whose exact value is Result - Excess, as extended precision rounds it. The excess is 0 or a normal number. One of 0 is
/// to be +0: then the sign of a result that is 0 stays.
ZORBASE_BY_LANES_INLINE __m256d RoundedTwice(__m256d Result, __m256d Excess) {
  constexpr long long kLastOfTen = 1LL << 42;
  const __m256i carried = _mm256_add_epi64(_mm256_castpd_si256(Excess), _mm256_set1_epi64x(kLastOfTen));
  return Result - _mm256_castsi256_pd(_mm256_and_si256(carried, _mm256_set1_epi64x(-2 * kLastOfTen)));
}

/// A * B of numbers that are moderate or 0.
ZORBASE_BY_LANES_INLINE __m256d Product(__m256d A, __m256d B) {
  const __m256d product = A * B;
  __m256d excess = product;
  __asm__("vfnmadd231pd %2, %1, %0" : "+x"(excess) : "x"(A), "xm"(B));  // product - A * B
  return RoundedTwice(product, excess);
}

ZORBASE_BY_LANES_INLINE __m256d Sum(__m256d A, __m256d B) {
  const __m256d sum = A + B;
  const __m256d partOfB = sum - A;
  return RoundedTwice(sum, ((sum - partOfB) - A) + (partOfB - B));
}

ZORBASE_BY_LANES_INLINE __m256d Difference(__m256d A, __m256d B) {
  const __m256d difference = A - B;
  const __m256d partOfB = difference - A;
  return RoundedTwice(difference, ((difference - partOfB) - A) + (partOfB + B));
}

/// \return in which lanes there is a moderate number or 0.
ZORBASE_BY_LANES_INLINE __m256d ModerateLanes(__m256d Values) {
  const __m256d size = _mm256_andnot_pd(_mm256_set1_pd(-0.0), Values);
  const __m256d isLarge = _mm256_cmp_pd(size, _mm256_set1_pd(kSmallestModerate), _CMP_GE_OQ);
  const __m256d isSmall = _mm256_cmp_pd(size, _mm256_set1_pd(kLargestModerate), _CMP_LE_OQ);
  return _mm256_and_pd(isSmall, _mm256_or_pd(isLarge, _mm256_cmp_pd(size, _mm256_setzero_pd(), _CMP_EQ_OQ)));
}

/// \return whether all of Count poses have moderate components, or 0.
ZORBASE_BY_LANES_INLINE bool AreModeratePoses(const double* Poses, std::size_t Count) {
  __m256d areModerate = _mm256_castsi256_pd(_mm256_set1_epi64x(-1));
  std::size_t i = 0;
  for (; i + 4 <= kPoseItems * Count; i += 4)
    areModerate = _mm256_and_pd(areModerate, ModerateLanes(_mm256_loadu_pd(Poses + i)));
  // Of an odd number of poses two components are left.
  if (i < kPoseItems * Count)
    areModerate = _mm256_and_pd(areModerate, ModerateLanes(_mm256_zextpd128_pd256(_mm_loadu_pd(Poses + i))));
  return _mm256_movemask_pd(areModerate) == 0b1111;
}

// The six components of a pose as two vectors: the head, its first four, and the tail, its last two beside two zeros. The
// tails of two poses share a vector.

ZORBASE_BY_LANES_INLINE __m256d LoadHead(const double* Pose) { return _mm256_loadu_pd(Pose); }
ZORBASE_BY_LANES_INLINE __m256d LoadTail(const double* Pose) { return _mm256_zextpd128_pd256(_mm_loadu_pd(Pose + 4)); }
ZORBASE_BY_LANES_INLINE __m256d LoadTails(const double* P, const double* Q) {
  return _mm256_insertf128_pd(_mm256_castpd128_pd256(_mm_loadu_pd(P + 4)), _mm_loadu_pd(Q + 4), 1);
}
ZORBASE_BY_LANES_INLINE void StoreHead(double* Pose, __m256d Head) { _mm256_storeu_pd(Pose, Head); }
ZORBASE_BY_LANES_INLINE void StoreTail(double* Pose, __m256d Tail) {
  _mm_storeu_pd(Pose + 4, _mm256_castpd256_pd128(Tail));
}
ZORBASE_BY_LANES_INLINE void StoreTails(double* P, double* Q, __m256d Tails) {
  StoreTail(P, Tails);
  _mm_storeu_pd(Q + 4, _mm256_extractf128_pd(Tails, 1));
}

#else

inline constexpr bool kHasExtendedLanes = false;

#endif

}  // namespace ZORBase
