#include <ZORBase/kernels/CubicBasis.h>
#include <ZORBase/kernels/CurveBlend.h>
#include <ZORBase/kernels/CurveLanes.h>
#include <ZORBase/kernels/ExtendedLanes.h>

#include <cmath>

namespace ZORBase {

#ifdef ZORBASE_HAS_EXTENDED_LANES

namespace {

// ---------------------------------------------------------------------------------------------- sums of control points

/// Sums[v] = 0 + W[0][v] * P[0][v] + ... + W[3][v] * P[3][v], as BlendExtended has it: step by step, so that no vector waits
/// for itself alone. Adding 0 last instead of first turns -0 into 0, too.
template <std::size_t Vectors>
ZORBASE_BY_LANES_INLINE void Blend(const __m256d (&W)[4][Vectors], const __m256d (&P)[4][Vectors],
                                   __m256d (&Sums)[Vectors]) {
  ZORBASE_UNROLL
  for (std::size_t v = 0; v < Vectors; ++v) Sums[v] = Product(W[0][v], P[0][v]);
  ZORBASE_UNROLL
  for (std::size_t r = 1; r < 4; ++r) {
    __m256d terms[Vectors];
    ZORBASE_UNROLL
    for (std::size_t v = 0; v < Vectors; ++v) terms[v] = Product(W[r][v], P[r][v]);
    ZORBASE_UNROLL
    for (std::size_t v = 0; v < Vectors; ++v) Sums[v] = Sum(Sums[v], terms[v]);
  }
  ZORBASE_UNROLL
  for (std::size_t v = 0; v < Vectors; ++v) Sums[v] += _mm256_setzero_pd();
}

/// Sum = the blend of the points from P on with the weights N0 to N3.
ZORBASE_BY_LANES_INLINE void BlendOne(double N0, double N1, double N2, double N3, const double* P, double* Sum) {
  const __m256d weights[4][2] = {{_mm256_set1_pd(N0), _mm256_set1_pd(N0)},
                                 {_mm256_set1_pd(N1), _mm256_set1_pd(N1)},
                                 {_mm256_set1_pd(N2), _mm256_set1_pd(N2)},
                                 {_mm256_set1_pd(N3), _mm256_set1_pd(N3)}};
  __m256d items[4][2];
  ZORBASE_UNROLL
  for (std::size_t r = 0; r < 4; ++r) {
    items[r][0] = LoadHead(P + r * kPoseItems);
    items[r][1] = LoadTail(P + r * kPoseItems);
  }
  __m256d sums[2];
  Blend(weights, items, sums);
  StoreHead(Sum, sums[0]);
  StoreTail(Sum, sums[1]);
}

/// The same for two sums, whose tails share a vector, with the weights N[0], N[Stride], ... and M[0], M[Stride], ...
ZORBASE_BY_LANES_INLINE void BlendTwo(const double* N, const double* M, std::size_t Stride,  //
                                      const double* P, const double* Q, double* SumOfP, double* SumOfQ) {
  __m256d weights[4][3];
  __m256d items[4][3];
  ZORBASE_UNROLL
  for (std::size_t r = 0; r < 4; ++r) {
    weights[r][0] = _mm256_broadcast_sd(N + r * Stride);
    weights[r][1] = _mm256_broadcast_sd(M + r * Stride);
    weights[r][2] = _mm256_blend_pd(weights[r][0], weights[r][1], 0b1100);
    items[r][0] = LoadHead(P + r * kPoseItems);
    items[r][1] = LoadHead(Q + r * kPoseItems);
    items[r][2] = LoadTails(P + r * kPoseItems, Q + r * kPoseItems);
  }
  __m256d sums[3];
  Blend(weights, items, sums);
  StoreHead(SumOfP, sums[0]);
  StoreHead(SumOfQ, sums[1]);
  StoreTails(SumOfP, SumOfQ, sums[2]);
}

constexpr std::size_t kBlockSize = TSampleBlock<6>::kSize;

/// Whether the lanes can form products with a weight, which is not below 0. A parameter close to 0 has very small ones.
ZORBASE_BY_LANES_INLINE bool IsModerateWeight(double Weight) { return (Weight >= kSmallestModerate) | (Weight == 0.0); }

/// The same of the first Count weights in each row of N.
ZORBASE_BY_LANES_INLINE bool AreModerateWeights(const double (*N)[kBlockSize], std::size_t Count) {
  __m256d areModerate = _mm256_castsi256_pd(_mm256_set1_epi64x(-1));
  bool isRestModerate = true;
  for (std::size_t r = 0; r < 4; ++r) {
    std::size_t i = 0;
    for (; i + 4 <= Count; i += 4) areModerate = _mm256_and_pd(areModerate, ModerateLanes(_mm256_loadu_pd(N[r] + i)));
    for (; i < Count; ++i) isRestModerate &= IsModerateWeight(N[r][i]);
  }
  return isRestModerate && _mm256_movemask_pd(areModerate) == 0b1111;
}

/// Sums Count blends, P(i) to Sum(i), with the weights in the columns of N.
template <class TFrom, class TTo>
ZORBASE_BY_LANES_INLINE void BlendAllByWeights(TFrom P, const double (*N)[kBlockSize], std::size_t Count, TTo Sum) {
  std::size_t i = 0;
  for (; i + 2 <= Count; i += 2) BlendTwo(&N[0][i], &N[0][i + 1], kBlockSize, P(i), P(i + 1), Sum(i), Sum(i + 1));
  if (i < Count) BlendOne(N[0][i], N[1][i], N[2][i], N[3][i], P(i), Sum(i));
}

// ---------------------------------------------------------------------------------------------- basis functions

ZORBASE_BY_LANES_INLINE bool AreModerateLanes(__m256d Values) {
  const __m256d size = _mm256_andnot_pd(_mm256_set1_pd(-0.0), Values);
  return _mm256_movemask_pd(_mm256_cmp_pd(size, _mm256_set1_pd(kSmallestModerate), _CMP_GE_OQ)) == 0b1111;
}

/// The first three lanes of X, moved up by one; the first one becomes 0.
ZORBASE_BY_LANES_INLINE __m256d MovedUp(__m256d X) {
  return _mm256_blend_pd(_mm256_permute4x64_pd(X, 0b10'01'00'00), _mm256_setzero_pd(), 0b0001);
}

/// BasisDerivatives<true, 3, 3> in the rows of Ders. Lanes are basis functions: what the scheme divides by the knot differences
/// of degree 3, 2 and 1, for the functions 0 to 3 in turn, is a vector of numerators over one number, or over one vector.
/// \return false where a derivative is not moderate; zeros, whose sign would be open, are not.
ZORBASE_BY_LANES_INLINE bool BasisDerivativesByLanes(const double* U, double u, const TKnotDistances& D,
                                                     double (&Ders)[4][4]) {
  const double* const left = D.Left;
  const double* const right = D.Right;
  const double ofDegree1 = right[1] + left[1];
  const double ofDegree2[2] = {right[1] + left[2], right[2] + left[1]};
  // The basis functions of degree 1 and 2.
  const double part = 1.0 / ofDegree1;
  const double n1[2] = {right[1] * part, left[1] * part};
  const double parts[2] = {n1[0] / ofDegree2[0], n1[1] / ofDegree2[1]};
  const __m256d n2 =
      _mm256_set_pd(0.0, left[1] * parts[1], left[2] * parts[0] + right[2] * parts[1], right[1] * parts[0]);
  // Those of degree 3, from the distances 3, 2, 1 to the left and 1, 2, 3 to the right.
  const __m256d lefts = _mm256_set1_pd(u) - _mm256_loadu_pd(U - 2);
  const __m256d rights = _mm256_loadu_pd(U + 1) - _mm256_set1_pd(u);
  const __m256d ofDegree3 = _mm256_blend_pd(rights + lefts, _mm256_set1_pd(1.0), 0b1000);
  const __m256d parts3 = n2 / ofDegree3;
  const __m256d n3 = MovedUp(lefts * parts3) + rights * parts3;
  // The first derivatives: what a function takes over from the one below it, and what it hands on.
  const __m256d handed = _mm256_blend_pd(_mm256_set1_pd(1.0) / ofDegree3, _mm256_setzero_pd(), 0b1000);
  const __m256d taken = MovedUp(handed);
  const __m256d minusHanded = _mm256_xor_pd(handed, _mm256_set1_pd(-0.0));
  const __m256d d1 = taken * MovedUp(n2) + minusHanded * n2;
  // The second and third ones.
  const __m256d change = minusHanded - taken;
  const __m256d numerators0 = _mm256_blend_pd(_mm256_blend_pd(handed, change, 0b0010), taken, 0b0100);
  const __m256d numerators1 = _mm256_blend_pd(_mm256_blend_pd(taken, handed, 0b0010), change, 0b0100);
  const __m256d second0 = numerators0 / _mm256_set1_pd(ofDegree2[0]);
  const __m256d second1 = numerators1 / _mm256_set1_pd(ofDegree2[1]);
  const __m256d d2 = second0 * _mm256_set1_pd(n1[0]) + second1 * _mm256_set1_pd(n1[1]);
  const __m256d d3 = (second1 - second0) / _mm256_set1_pd(ofDegree1);
  const __m256d rows[4] = {n3, d1 * _mm256_set1_pd(3.0), d2 * _mm256_set1_pd(6.0), d3 * _mm256_set1_pd(6.0)};
  bool areModerate = true;
  for (std::size_t k = 0; k < 4; ++k) {
    areModerate &= AreModerateLanes(rows[k]);
    _mm256_storeu_pd(Ders[k], rows[k]);
  }
  return areModerate;
}

// ---------------------------------------------------------------------------------------------- poses

ZORBASE_BY_LANES bool PoseFused(const double* U, double u, const double* P, double* Pose) {
  const TKnotDistances distances = TKnotDistances::Create(U, u);
  if (!distances.IsWide()) return false;
  double N[4];
  BasisValues<true>(distances, N);
  bool areModerate = true;
  for (const double weight : N) areModerate &= IsModerateWeight(weight);
  if (!areModerate) return false;
  BlendOne(N[0], N[1], N[2], N[3], P, Pose);
  return true;
}

ZORBASE_BY_LANES bool DerivativesFused(const double* U, double u, const double* P, double* Poses) {
  const TKnotDistances distances = TKnotDistances::Create(U, u);
  if (!distances.IsWide()) return false;
  double N[4][4];
  if (!BasisDerivativesByLanes(U, u, distances, N)) return false;
  // The values of the basis functions are ready last.
  BlendTwo(N[2], N[3], 1, P, P, Poses + 2 * kPoseItems, Poses + 3 * kPoseItems);
  BlendTwo(N[0], N[1], 1, P, P, Poses, Poses + kPoseItems);
  return true;
}

ZORBASE_BY_LANES bool SampleFused(const double* P, TSampleBlock<6>& Block) {
  if (!AreModerateWeights(Block.N, Block.Count)) return false;
  BlendAllByWeights([P](std::size_t) ZORBASE_INLINE_LAMBDA { return P; }, Block.N, Block.Count,
                    [&Block](std::size_t i) ZORBASE_INLINE_LAMBDA { return Block.Points[i + 1]; });
  for (std::size_t i = 0; i < Block.Count; ++i) {
    alignas(32) double d[8];
    _mm256_store_pd(d, Difference(LoadHead(Block.Points[i + 1]), LoadHead(Block.Points[i])));
    _mm256_store_pd(d + 4, Difference(LoadTail(Block.Points[i + 1]), LoadTail(Block.Points[i])));
    StoreSquaredLength(d, Block.Distances[i]);
  }
  for (std::size_t i = 0; i < Block.Count; ++i) Block.Distances[i] = std::sqrt(Block.Distances[i]);
  return true;
}

ZORBASE_BY_LANES bool BlendAllFused(const double* const* P, const double (*N)[kBlockSize], std::size_t Count,
                                    double* const* Sums) {
  if (!AreModerateWeights(N, Count)) return false;
  BlendAllByWeights([P](std::size_t i) ZORBASE_INLINE_LAMBDA { return P[i]; }, N, Count,
                    [Sums](std::size_t i) ZORBASE_INLINE_LAMBDA { return Sums[i]; });
  return true;
}

ZORBASE_BY_LANES bool AreModerateFused(const double* Poses, std::size_t Count) {
  return AreModeratePoses(Poses, Count);
}

}  // namespace

bool AreForLanes(const double* Poses, std::size_t Count) { return kHasExtendedLanes && AreModerateFused(Poses, Count); }

bool PoseByLanes(const double* U, double u, const double* P, double* Pose) { return PoseFused(U, u, P, Pose); }

bool DerivativesByLanes(const double* U, double u, const double* P, double* Poses) {
  return DerivativesFused(U, u, P, Poses);
}

bool SampleByLanes(const double* P, TSampleBlock<6>& Block) { return SampleFused(P, Block); }

bool BlendAllByLanes(const double* const* P, const double (*N)[TSampleBlock<6>::kSize], std::size_t Count,
                     double* const* Sums) {
  return BlendAllFused(P, N, Count, Sums);
}

#else

bool AreForLanes(const double* /*Poses*/, std::size_t /*Count*/) { return false; }
bool SampleByLanes(const double* /*P*/, TSampleBlock<6>& /*Block*/) { return false; }
bool BlendAllByLanes(const double* const* /*P*/, const double (*)[TSampleBlock<6>::kSize], std::size_t /*Count*/,
                     double* const* /*Sums*/) {
  return false;
}
bool PoseByLanes(const double* /*U*/, double /*u*/, const double* /*P*/, double* /*Pose*/) { return false; }
bool DerivativesByLanes(const double* /*U*/, double /*u*/, const double* /*P*/, double* /*Poses*/) { return false; }

#endif

}  // namespace ZORBase
