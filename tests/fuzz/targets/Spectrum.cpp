// Spectra. Input: a count, a time step, an index, then the samples.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORBaseAlg/uFFT.h>

#include <algorithm>
#include <bit>

namespace ZORBase::Test::FuzzSpectrum {
namespace {
constexpr int kMostSamples = 2048;
}

ZORBASE_FUZZ_TARGET(Spectrum) {
  const int count = Input.Int();
  const double step = Input.Number();
  const int index = Input.Int();
  const std::vector<double> samples = Input.Numbers(kMostSamples);
  TFFT fft;
  Attempt([&] { fft.FFT(samples, count); });
  int bins = 0;
  const bool isDone = Attempt([&] { bins = fft.CalFFT(samples, count, step); });
  const int expected = isDone ? static_cast<int>(std::bit_ceil(static_cast<unsigned>(count)) / 2) : 0;
  Require(bins == expected && fft.Count() == expected, "there are half as many bins as padded samples");
  const bool isThere = index >= 0 && index < fft.Count();
  Require(Attempt([&] { fft.getAmp(index); }) == isThere, "an amplitude is there where the bin is");
  Require(Attempt([&] { fft.getFrq(index); }) == isThere, "a frequency is there where the bin is");
  Attempt([&] { fft.getPhase(index); });
  Attempt([&] { fft.FFT(samples, index); });
  for (const double phase : fft.Phases()) Require(!(phase < 0.0) && !(phase >= 360.0), "a phase is below 360");
  TComplex w;
  Attempt([&] { TFFT::Wn_i(count, index, w, 1); });
}

}  // namespace ZORBase::Test::FuzzSpectrum
