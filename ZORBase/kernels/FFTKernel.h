// FFTKernel (internal): the fast transform behind TFFT.
#pragma once

#include <ZORBase/ZORBaseAlg/uFFT/TComplex.h>
#include <ZORBase/kernels/AlignedDoubles.h>

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace ZORBase::FFTKernel {

/// Complex numbers in groups of four: their real parts, then their imaginary parts, a cache line in all. A pass that reads from
/// places a power of two apart meets few enough lines of the same set of the cache in this way.
class TGroups {
 public:
  static constexpr std::size_t kGroup = 4;

  TGroups() = default;
  /// Room for Count numbers, uninitialised. Throws std::bad_alloc.
  explicit TGroups(std::size_t Count) : FParts(AllocateDoubles(2 * kGroup * ((Count + kGroup - 1) / kGroup))) {}

  /// The number Index, and where the parts of it stand: PlaceOf(Index) = 2 Index for the first one of a group.
  static constexpr std::size_t PlaceOf(std::size_t Index) { return 2 * Index - Index % kGroup; }
  TComplex Get(std::size_t Index) const { return {Parts(Index)[0], Parts(Index)[kGroup]}; }
  void Set(std::size_t Index, const TComplex& Value) const {
    Parts(Index)[0] = Value.real;
    Parts(Index)[kGroup] = Value.imag;
  }

  /// From the number Index on.
  double* Parts(std::size_t Index = 0) const { return FParts.get() + PlaceOf(Index); }

 private:
  TAlignedDoubles FParts;
};

/// The twiddle factors of one stage: number r is (cos a, -sin a) with a = 2 pi r / 2^stage, r < 2^(stage - 1).
/// A transform of N has a = 2 pi P / N with P = r N / 2^stage: the same double, only powers of two come and go.
using TTwiddles = TGroups;

/// The forward transform of N = 2^M real samples, 0 <= M <= 30.
///
/// Contract: the result has the bits of this radix-2 decimation in time. X = the samples in bit-reversed order; then
/// for the stages s = 1..M, with H = 2^(s-1), for every r < H and k = r, r + 2H, r + 4H, ...: T = X[k + H] W,
/// X[k + H] = X[k] - T, X[k] = X[k] + T, where W is the factor r of the stage and the product is
/// (x.re w.re - x.im w.im, x.re w.im + x.im w.re). Every butterfly is done just so, and only a NaN may differ in its
/// payload; what differs is the order in memory and time:
///   - real and imaginary parts stand apart, four by four, so that vector lanes run across butterflies;
///   - the reordering is merged with the stages 1 to 3, eight columns at a time, whole cache lines in and out;
///   - later stages go two at a time over a block, depth first, so that a block is finished while it is in cache;
///   - the last two stages form the lower half only.
class TPlan {
 public:
  /// Allocates all that a transform needs; throws std::bad_alloc. The factors of the stages up to 20 are computed once
  /// for all plans, by the first that needs them on any thread, and kept: 16 MB. Those of later stages are the plan's.
  explicit TPlan(std::size_t N);

  /// \param Samples   N samples
  /// \param Spectrum  receives the lower half of the transform, N / 2 bins; it is written after all samples are read.
  void TransformReal(std::span<const double> Samples, std::span<TComplex> Spectrum) noexcept;

 private:
  static constexpr int kMaxStage = 30;

  void TransformShort(std::span<const double> Samples, std::span<TComplex> Spectrum) const noexcept;
  void FinishBlock(double* Block, std::size_t Size) const noexcept;
  void FinishSmallBlock(double* Block, std::size_t Size) const noexcept;

  std::size_t FN;
  int FStages;  // M
  std::array<const TTwiddles*, kMaxStage + 1> FTwiddles{};
  std::vector<TTwiddles> FOwnTwiddles;
  TGroups FWork;
};

}  // namespace ZORBase::FFTKernel
