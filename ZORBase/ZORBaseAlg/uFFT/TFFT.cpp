#include <ZORBase/ZORBaseAlg/uFFT/TFFT.h>
#include <ZORBase/kernels/FFTKernel.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <numbers>
#include <string>

namespace ZORBase {
namespace {

// The samples padded with zeros to the next power of two.
std::vector<double> Padded(std::span<const double> Samples) {
  std::vector<double> padded(std::bit_ceil(Samples.size()));
  std::copy(Samples.begin(), Samples.end(), padded.begin());
  return padded;
}

// The frequencies are formed as multiples of 1 / ADt before they are divided by the length. An infinite 1 / ADt fails
// for every length: 0 times infinity is no number either.
void CheckTimeStep(double ADt, std::size_t N) {
  const std::size_t bins = N / 2;
  if (!std::isfinite(ADt) || !std::isfinite(1.0 / ADt * static_cast<double>(bins))) {
    RaiseGeneralError("TFFT: the time step must be finite, not 0, and not so small that the frequencies overflow");
  }
}

void CheckLength(int Length, std::size_t Available) {
  if (Length < 1 || Length > TFFT::kMaxSamples || static_cast<std::size_t>(Length) > Available) {
    RaiseGeneralError("TFFT: cannot transform " + std::to_string(Length) + " of " + std::to_string(Available) +
                      " samples, the number must be 1 to " + std::to_string(TFFT::kMaxSamples) +
                      " and not exceed the samples");
  }
}

// (1 / Dt) i / 2 / Count, where Count is a power of two, so that its reciprocal is exact.
void FillFrequencies(double ADt, std::span<double> Frequencies) {
  const double rate = 1.0 / ADt;
  const double inverseCount = 1.0 / static_cast<double>(Frequencies.size());
  for (int i = 0; i < static_cast<int>(Frequencies.size()); ++i) {
    Frequencies[static_cast<std::size_t>(i)] = rate * i / 2.0 * inverseCount;
  }
}

}  // namespace

int TFFT::CalFFT(std::span<const double> AData, int ACount, double ADt) {
  CheckLength(ACount, AData.size());
  const auto samples = AData.first(static_cast<std::size_t>(ACount));
  CheckTimeStep(ADt, std::bit_ceil(samples.size()));
  if (std::has_single_bit(samples.size())) {
    Transform(samples, ADt);
  } else {
    Transform(Padded(samples), ADt);
  }
  return Count();
}

void TFFT::FFT(std::span<const double> AData, int N) {
  CheckLength(N, AData.size());
  const auto samples = AData.first(static_cast<std::size_t>(N));
  if (!std::has_single_bit(samples.size())) {
    RaiseGeneralError("TFFT: the length " + std::to_string(N) + " is not a power of two");
  }
  CheckTimeStep(FDt, samples.size());
  Transform(samples, FDt);
}

// Everything that can fail for want of memory comes before the first change. The samples may lie in FFrq: its memory is
// replaced only when it is too short to hold them, and written after they are read.
void TFFT::Transform(std::span<const double> Samples, double ADt) {
  const std::size_t count = Samples.size() / 2;
  FSpectrum.reserve(count);
  FFrq.reserve(count);
  FFTKernel::TPlan plan(Samples.size());
  FSpectrum.resize(count);
  plan.TransformReal(Samples, FSpectrum);
  if (ADt != FDt || count != FFrq.size()) {
    FFrq.resize(count);
    FillFrequencies(ADt, FFrq);
    FDt = ADt;
  }
}

void TFFT::Wn_i(int N, int P, TComplex& W, int AForward) {
  if (N == 0) RaiseGeneralError("TFFT: a twiddle factor needs a length other than 0");
  const double a = 2.0 * std::numbers::pi * P / N;
  W = {std::cos(a), AForward == 1 ? -std::sin(a) : std::sin(a)};
}

double TFFT::getAmp(int AIndex) const { return FSpectrum[CheckedIndex(AIndex)].getNorm() / Count(); }

double TFFT::getPhase(int AIndex) const {
  return FSpectrum[CheckedIndex(AIndex)].getAngle() / std::numbers::pi * 180.0;
}

double TFFT::getFrq(int AIndex) const { return FFrq[CheckedIndex(AIndex)]; }

TDoubleList TFFT::Amplitudes() const {
  TDoubleList list;
  list.Reserve(FSpectrum.size());
  for (int i = 0; i < Count(); ++i) list.Add(getAmp(i));
  return list;
}

TDoubleList TFFT::Phases() const {
  TDoubleList list;
  list.Reserve(FSpectrum.size());
  for (int i = 0; i < Count(); ++i) list.Add(getPhase(i));
  return list;
}

std::size_t TFFT::CheckedIndex(int AIndex) const {
  if (AIndex < 0 || AIndex >= Count()) {
    RaiseGeneralError("TFFT has " + std::to_string(Count()) + " bins, no bin " + std::to_string(AIndex));
  }
  return static_cast<std::size_t>(AIndex);
}

}  // namespace ZORBase
