// FFTKernel (internal): the fast transform behind TFFT.
#pragma once

#include <ZORBase/ZORBaseAlg/uFFT/TComplex.h>
#include <ZORBase/kernels/AlignedDoubles.h>

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace ZORBase::FFTKernel {

/// The twiddle factors of one stage: W = (Re[r], Im[r]) = (cos a, -sin a) with a = 2 pi r / 2^stage, r < 2^(stage - 1).
/// A transform of N has a = 2 pi P / N with P = r N / 2^stage: the same double, only powers of two come and go.
struct TTwiddles {
  TAlignedDoubles Values;
  const double* Re = nullptr;
  const double* Im = nullptr;
};

/// The forward transform of N = 2^M real samples, 0 <= M <= 30.
///
/// Contract: the result has the bits of this radix-2 decimation in time. X = the samples in bit-reversed order; then
/// for the stages s = 1..M, with H = 2^(s-1), for every r < H and k = r, r + 2H, r + 4H, ...: T = X[k + H] W,
/// X[k + H] = X[k] - T, X[k] = X[k] + T, where W is the factor r of the stage and the product is
/// (x.re w.re - x.im w.im, x.re w.im + x.im w.re). Every butterfly is done just so, and only a NaN may differ in its
/// payload; what differs is the order in memory and time:
///   - real and imaginary parts are split, so that vector lanes run across butterflies;
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
  void FinishBlock(double* Re, double* Im, std::size_t Size) const noexcept;
  void FinishSmallBlock(double* Re, double* Im, std::size_t Size) const noexcept;

  std::size_t FN;
  int FStages;  // M
  std::array<const TTwiddles*, kMaxStage + 1> FTwiddles{};
  std::vector<TTwiddles> FOwnTwiddles;
  TAlignedDoubles FWork;  // N real parts, then N imaginary parts
};

}  // namespace ZORBase::FFTKernel
