#include <ZORBase/kernels/CubicBasis.h>
#include <ZORBase/kernels/CurveBlend.h>
#include <ZORBase/kernels/CurveSamples.h>
#include <ZORBase/kernels/TargetClones.h>

#include <cmath>

namespace ZORBase {
namespace {

constexpr std::size_t kSize = TSampleBlock<6>::kSize;

// A single blend would have to wait for each of its steps; more of them than this find no room side by side.
constexpr std::size_t kSideBySide = 4;

template <class TFrom, class TTo>
ZORBASE_INLINE void BlendAll(TFrom P, const double (*N)[kSize], std::size_t Count, TTo Sum) {
  std::size_t i = 0;
  for (; i + kSideBySide <= Count; i += kSideBySide) {
    BlendExtended<kSideBySide>([&](std::size_t j) { return P(i + j); }, &N[0][i], kSize,
                               [&](std::size_t j) { return Sum(i + j); });
  }
  for (; i < Count; ++i) {
    BlendExtended<1>([&](std::size_t) { return P(i); }, &N[0][i], kSize, [&](std::size_t) { return Sum(i); });
  }
}

ZORBASE_INLINE void TakeRoots(double* Values, std::size_t Count) {
  for (std::size_t i = 0; i < Count; ++i) Values[i] = std::sqrt(Values[i]);
}

ZORBASE_TARGET_CLONES void SampleBasisClones(const double* __restrict U, const double* __restrict u, std::size_t Count,
                                             double (*__restrict N)[kSize]) {
  ZORBASE_INDEPENDENT
  for (std::size_t i = 0; i < Count; ++i) {
    double values[4];
    BasisValues<true>(TKnotDistances::Create(U, u[i]), values);
    N[0][i] = values[0];
    N[1][i] = values[1];
    N[2][i] = values[2];
    N[3][i] = values[3];
  }
}

}  // namespace

void SamplePlane(const double* P, TSampleBlock<2>& Block) {
  for (std::size_t i = 0; i < Block.Count; ++i) {
    const double N[4] = {Block.N[0][i], Block.N[1][i], Block.N[2][i], Block.N[3][i]};
    BlendPlane(P, N, Block.Points[i + 1]);
  }
  for (std::size_t i = 0; i < Block.Count; ++i) {
    const double dx = Block.Points[i + 1][0] - Block.Points[i][0];
    const double dy = Block.Points[i + 1][1] - Block.Points[i][1];
    Block.Distances[i] = dx * dx + dy * dy;
  }
  TakeRoots(Block.Distances, Block.Count);
}

void SampleExtended(const double* P, TSampleBlock<6>& Block) {
  BlendAll([P](std::size_t) { return P; }, Block.N, Block.Count,
           [&Block](std::size_t i) { return Block.Points[i + 1]; });
  for (std::size_t i = 0; i < Block.Count; ++i)
    StoreSquaredDistance(Block.Points[i + 1], Block.Points[i], Block.Distances[i]);
  TakeRoots(Block.Distances, Block.Count);
}

void BlendExtendedAll(const double* const* P, const double (*N)[kSize], std::size_t Count, double* const* Sums) {
  BlendAll([P](std::size_t i) { return P[i]; }, N, Count, [Sums](std::size_t i) { return Sums[i]; });
}

void SampleBasis(const double* __restrict U, const double* __restrict u, std::size_t Count,
                 double (*__restrict N)[kSize]) {
  SampleBasisClones(U, u, Count, N);
}

}  // namespace ZORBase
