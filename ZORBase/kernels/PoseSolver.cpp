#include <ZORBase/kernels/AlignedDoubles.h>
#include <ZORBase/kernels/CubicBasis.h>
#include <ZORBase/kernels/ExtendedLanes.h>
#include <ZORBase/kernels/PoseSolver.h>

#include <algorithm>
#include <limits>

namespace ZORBase {

#ifdef ZORBASE_HAS_EXTENDED_LANES

namespace {

constexpr std::size_t kRows = 64;
// Basis values of wide intervals in so small a domain are moderate, and so is what is divided by larger pivots.
constexpr double kLargestDomain = 0x1p20;
constexpr double kSmallestPivot = 0x1p-60;

bool AreFitKnots(const double* U, std::size_t Last) {
  bool areFit = U[Last + 5] - U[2] <= kLargestDomain;
  for (std::size_t i = 2; i < Last + 5; ++i) areFit &= U[i] <= U[i + 1];
  for (std::size_t i = 4; i <= Last + 2; ++i) areFit &= U[i + 1] - U[i] >= kSurelyWide;
  return areFit;
}

/// (P - A * Q) * Factor, or P - A * Q, by doubles; Wrong receives bits where extended precision gives something else. A step of the
/// elimination waits for the one before it, so it goes on with these while they are looked at. They hardly ever are wrong.
template <bool HasFactor>
ZORBASE_BY_LANES_INLINE __m256d EliminatedByDoubles(__m256d P, __m256d A, __m256d Q, __m256d Factor, __m256d& Wrong) {
  const __m256d product = A * Q;
  const __m256d difference = P - product;
  Wrong = _mm256_or_pd(
      Wrong, _mm256_or_pd(_mm256_xor_pd(product, Product(A, Q)), _mm256_xor_pd(difference, Difference(P, product))));
  if constexpr (!HasFactor) return difference;
  const __m256d result = difference * Factor;
  Wrong = _mm256_or_pd(Wrong, _mm256_xor_pd(result, Product(difference, Factor)));
  return result;
}

template <bool HasFactor>
ZORBASE_BY_LANES_INLINE __m256d EliminatedExactly(__m256d P, __m256d A, __m256d Q, __m256d Factor) {
  const __m256d difference = Difference(P, Product(A, Q));
  if constexpr (!HasFactor) return difference;
  return Product(difference, Factor);
}

struct TPoseLanes {
  __m256d Head;
  __m256d Tail;
};

ZORBASE_BY_LANES_INLINE TPoseLanes LoadPose(const double* P) { return {LoadHead(P), LoadTail(P)}; }

ZORBASE_BY_LANES_INLINE void StorePose(double* P, const TPoseLanes& Pose) {
  StoreHead(P, Pose.Head);
  StoreTail(P, Pose.Tail);
}

template <bool HasFactor>
ZORBASE_BY_LANES_INLINE TPoseLanes Eliminated(const TPoseLanes& P, double A, const TPoseLanes& Q, double Factor) {
  const __m256d a = _mm256_set1_pd(A);
  const __m256d factor = _mm256_set1_pd(Factor);
  __m256d wrong = _mm256_setzero_pd();
  const TPoseLanes result = {EliminatedByDoubles<HasFactor>(P.Head, a, Q.Head, factor, wrong),
                             EliminatedByDoubles<HasFactor>(P.Tail, a, Q.Tail, factor, wrong)};
  if (_mm256_testz_si256(_mm256_castpd_si256(wrong), _mm256_castpd_si256(wrong))) [[likely]]
    return result;
  return {EliminatedExactly<HasFactor>(P.Head, a, Q.Head, factor),
          EliminatedExactly<HasFactor>(P.Tail, a, Q.Tail, factor)};
}

/// The basis values with the first three indices at the knots themselves, where the fourth one is 0. Lanes are knots.
ZORBASE_BY_LANES_INLINE void BasisAtKnots(const double* U, std::size_t Count, double (&N)[3][kRows]) {
  ZORBASE_INDEPENDENT
  for (std::size_t i = 0; i < Count; ++i) {
    double values[4];
    BasisValues<true>(TKnotDistances::Create(U + i, U[i]), values);
    N[0][i] = values[0];
    N[1][i] = values[1];
    N[2][i] = values[2];
  }
}

/// Gives the reduced right sides and the factors of the rows 2 to Last.
ZORBASE_BY_LANES bool EliminateFused(std::size_t Last, const double* Q, const double* U, const double* P,
                                     double* Reduced, double* Factors) {
  double N[3][kRows];
  TPoseLanes before = LoadPose(P + kPoseItems);
  double pivot = 1.0;
  double above = 0.0;
  for (std::size_t first = 2; first <= Last; first += kRows) {
    const std::size_t count = std::min(kRows, Last + 1 - first);
    BasisAtKnots(U + first + 2, count, N);
    for (std::size_t j = 0; j < count; ++j) {
      const std::size_t i = first + j;
      Factors[i] = above / pivot;
      pivot = N[1][j] - N[0][j] * Factors[i];
      above = N[2][j];
      if (!(pivot >= kSmallestPivot)) [[unlikely]]
        return false;
      TPoseLanes right = LoadPose(Q + (i - 1) * kPoseItems);
      if (i == Last) [[unlikely]]
        right = Eliminated<false>(right, above, LoadPose(P + (i + 1) * kPoseItems), 1.0);
      before = Eliminated<true>(right, N[0][j], before, 1.0 / pivot);
      StorePose(Reduced + i * kPoseItems, before);
    }
    if (!AreModeratePoses(Reduced + first * kPoseItems, count)) return false;
  }
  return true;
}

ZORBASE_BY_LANES bool SubstituteFused(std::size_t Last, const double* Reduced, const double* Factors, double* P) {
  TPoseLanes behind = LoadPose(Reduced + Last * kPoseItems);
  StorePose(P + Last * kPoseItems, behind);
  for (std::size_t i = Last - 1; i >= 2; --i) {
    behind = Eliminated<false>(LoadPose(Reduced + i * kPoseItems), Factors[i + 1], behind, 1.0);
    StorePose(P + i * kPoseItems, behind);
  }
  return AreModeratePoses(P + 2 * kPoseItems, Last - 1);
}

/// Whether the lanes can begin with these points and outer control points.
ZORBASE_BY_LANES bool AreFitPoses(std::size_t Last, const double* Q, const double* P) {
  return AreModeratePoses(Q, Last + 1) && AreModeratePoses(P + kPoseItems, 1) &&
         AreModeratePoses(P + (Last + 1) * kPoseItems, 1);
}

}  // namespace

bool SolvePosesByLanes(std::size_t Last, const double* Q, const double* U, double* P) {
  constexpr std::size_t kMostPoses = std::numeric_limits<int>::max();
  if (!kHasExtendedLanes || Last < 3 || Last > kMostPoses) return false;
  if (!AreFitKnots(U, Last) || !AreFitPoses(Last, Q, P)) return false;
  const TAlignedDoubles reduced = AllocateDoubles((Last + 1) * kPoseItems);
  const TAlignedDoubles factors = AllocateDoubles(Last + 1);
  return EliminateFused(Last, Q, U, P, reduced.get(), factors.get()) &&
         SubstituteFused(Last, reduced.get(), factors.get(), P);
}

#else

bool SolvePosesByLanes(std::size_t /*Last*/, const double* /*Q*/, const double* /*U*/, double* /*P*/) { return false; }

#endif

}  // namespace ZORBase
