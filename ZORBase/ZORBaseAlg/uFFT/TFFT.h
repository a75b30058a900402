#pragma once

#include <ZORBase/ZORBaseAlg/uFFT/TComplex.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Export.h>

#include <cstddef>
#include <span>
#include <vector>

namespace ZORBase {

/// The single-sided spectrum of a real signal that is sampled at a fixed time step.
///
/// The signal is padded with zeros to N samples, the next power of two, and transformed forward without scaling,
/// X[f] = sum of x[n] e^(-2 pi i f n / N). The bins 0..Count-1 with Count = N / 2 are kept; the bins above mirror them.
/// The object holds the result of its last transform. An operation that raises leaves it as it was.
class ZORBASE_API TFFT {
 public:
  /// The longest signal, 2^30 samples.
  static constexpr int kMaxSamples = 1 << 30;

  /// Transforms the first ACount samples of AData, taken ADt apart in any unit of time; frequencies are in its inverse.
  /// \return the number of bins, half the padded length: 512 for 1000 samples, 0 for a single one.
  /// \throws the general error when ACount is not within 1..AData.size() or exceeds kMaxSamples, or when ADt is 0, not
  ///         finite, or so small that Count / ADt overflows.
  /// Cost: O(N log N). Work space is 16 N bytes during the call, and 8 N more where padding is needed. The factors of
  /// lengths up to 2^20 are computed once for all objects and kept; a longer signal needs its own, another 16 N bytes.
  int CalFFT(std::span<const double> AData, int ACount, double ADt);

  /// Transforms the first N samples of AData, N a power of two, with the time step that the object has from CalFFT.
  /// \throws the general error when N is no power of two or exceeds kMaxSamples or AData.size(), when there is no time
  ///         step yet, or when it is so small that Count / Dt overflows.
  void FFT(std::span<const double> AData, int N);

  /// The twiddle factor: with a = 2 pi P / N, W = (cos a, -sin a) when AForward is 1, otherwise (cos a, sin a).
  /// \throws the general error when N is 0.
  static void Wn_i(int N, int P, TComplex& W, int AForward);

  /// \return the magnitude of the bin divided by Count: a cosine of amplitude a at the frequency of a bin reads a
  ///         there, and the bin 0 reads twice the mean.
  /// \throws the general error when there is no such bin; so do getPhase and getFrq.
  double getAmp(int AIndex) const;
  /// \return the phase of the bin in degrees, in [0, 360).
  double getPhase(int AIndex) const;
  /// \return the frequency of the bin, AIndex / (N Dt), in cycles per unit of Dt.
  double getFrq(int AIndex) const;

  ///@{
  /// getAmp and getPhase of all bins.
  TDoubleList Amplitudes() const;
  TDoubleList Phases() const;
  ///@}

  /// The time step of the last CalFFT, 0 before it.
  double Dt() const { return FDt; }
  /// The number of bins.
  int Count() const { return static_cast<int>(FSpectrum.size()); }
  ///@{
  /// The coefficient and the frequency of each bin; the spans last until the next transform.
  std::span<const TComplex> Spectrum() const { return FSpectrum; }
  std::span<const double> Frq() const { return FFrq; }
  ///@}

 private:
  void Transform(std::span<const double> Samples, double ADt);
  std::size_t CheckedIndex(int AIndex) const;

  double FDt = 0.0;
  std::vector<TComplex> FSpectrum;
  std::vector<double> FFrq;  // as long as FSpectrum
};

}  // namespace ZORBase
