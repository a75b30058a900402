// The library's transform against the plain one bit for bit, and against one of wider precision.
#include <ZORBase/ZORBaseAlg/uFFT.h>

#include "PlainFFT.h"
#include "support/TestSupport.h"

#include <algorithm>
#include <bit>
#include <complex>
#include <limits>
#include <numbers>
#include <random>
#include <thread>
#include <vector>

namespace ZORBase {
namespace {

// Blocks within blocks come from 2^14 on.
constexpr int kLongest = 1 << (kIsSlowBuild ? 15 : 20);

using Test::PlainFFT;
using TSignal = std::vector<double>;

TSignal Noise(int N, unsigned Seed = 20240611) {
  std::mt19937_64 random(Seed);
  TSignal samples(static_cast<std::size_t>(N));
  for (double& sample : samples) sample = static_cast<double>(random() >> 11U) * 0x1p-52 - 1.0;
  return samples;
}

TSignal ScaledNoise(int N, double Scale) {
  TSignal samples = Noise(N);
  for (double& sample : samples) sample *= Scale;
  return samples;
}

// Any bits: every magnitude, denormal numbers, infinities and NaNs among them.
TSignal AnyBits(int N) {
  std::mt19937_64 random(7);
  TSignal samples(static_cast<std::size_t>(N));
  for (double& sample : samples) sample = std::bit_cast<double>(random());
  return samples;
}

TSignal OneValueAt(int N, int Place, double Value, TSignal Samples) {
  Samples[static_cast<std::size_t>(Place % N)] = Value;
  return Samples;
}

// Equal bits; a NaN is as good as another one.
bool IsSame(double A, double B) {
  return std::bit_cast<std::uint64_t>(A) == std::bit_cast<std::uint64_t>(B) || (std::isnan(A) && std::isnan(B));
}

void ExpectSameBits(std::span<const TComplex> Spectrum, const std::vector<TComplex>& Expected) {
  ASSERT_EQ(Spectrum.size(), Expected.size());
  for (std::size_t i = 0; i < Expected.size(); ++i) {
    ASSERT_TRUE(IsSame(Spectrum[i].real, Expected[i].real)) << "real part of bin " << i;
    ASSERT_TRUE(IsSame(Spectrum[i].imag, Expected[i].imag)) << "imaginary part of bin " << i;
  }
}

void ExpectAsPlain(const TSignal& Samples) {
  SCOPED_TRACE(testing::Message() << Samples.size() << " samples");
  TFFT fft;
  fft.CalFFT(Samples, static_cast<int>(Samples.size()), 1.0);
  ExpectSameBits(fft.Spectrum(), PlainFFT(Samples));
}

// Signals of every length up to a limit. Only noise is taken to the greatest lengths.
template <class TSignalOfLength>
void ExpectAsPlainUpTo(int Longest, TSignalOfLength&& SignalOfLength) {
  for (int n = 1; n <= std::min(Longest, kLongest); n *= 2) ExpectAsPlain(SignalOfLength(n));
}

TEST(TFFTAgainstPlain, NoiseOfEveryLength) {
  ExpectAsPlainUpTo(1 << 18, [](int N) { return Noise(N); });
}

// Beyond the kept factors and the caches, save in a slow build.
TEST(TFFTAgainstPlain, NoiseOfTheGreatestLengths) {
  ExpectAsPlain(Noise(kLongest));
  ExpectAsPlain(Noise(2 * kLongest));
}

TEST(TFFTAgainstPlain, AnImpulseAtAnyPlace) {
  for (const int place : {0, 1, 5, 1023}) {
    ExpectAsPlainUpTo(1 << 12, [&](int N) { return OneValueAt(N, place, -0.7, TSignal(static_cast<std::size_t>(N))); });
  }
}

TEST(TFFTAgainstPlain, ZerosOfBothSigns) {
  ExpectAsPlainUpTo(1 << 12, [](int N) { return TSignal(static_cast<std::size_t>(N), -0.0); });
  ExpectAsPlainUpTo(1 << 12, [](int N) {
    TSignal samples = Noise(N);
    for (double& sample : samples) sample = sample < 0 ? -0.0 : 0.0;
    return samples;
  });
}

TEST(TFFTAgainstPlain, DenormalNoise) {
  ExpectAsPlainUpTo(1 << 11, [](int N) { return ScaledNoise(N, 0x1p-1060); });
}

TEST(TFFTAgainstPlain, NoiseThatOverflows) {
  ExpectAsPlainUpTo(1 << 12, [](int N) { return ScaledNoise(N, std::numeric_limits<double>::max()); });
}

TEST(TFFTAgainstPlain, NoiseWithANaNOrAnInfinity) {
  for (const double value : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
    for (const int place : {0, 1, 2, 4, 77, 511}) {
      ExpectAsPlainUpTo(1 << 11, [&](int N) { return OneValueAt(N, place, value, Noise(N)); });
    }
  }
}

TEST(TFFTAgainstPlain, AnyBits) { ExpectAsPlainUpTo(1 << 9, AnyBits); }

// Without noise around it an infinity reaches only some bins with a finite other part.
TEST(TFFTAgainstPlain, AnInfinityAmongZeros) {
  for (const int place : {0, 1, 2, 3, 4, 8, 16, 33}) {
    ExpectAsPlainUpTo(1 << 9, [&](int N) {
      return OneValueAt(N, place, std::numeric_limits<double>::infinity(), TSignal(static_cast<std::size_t>(N)));
    });
  }
}

TEST(TFFTAgainstPlain, SamplesThatAreNotAligned) {
  const TSignal samples = Noise(1025);
  TFFT fft;
  fft.CalFFT(std::span(samples).subspan(1), 1024, 1.0);
  ExpectSameBits(fft.Spectrum(), PlainFFT(std::span(samples).subspan(1)));
}

// The first transforms of a process race for the factors.
TEST(TFFTAgainstPlain, SeveralThreadsAtOnce) {
  constexpr int kN = std::min(kLongest, 1 << 14);
  const TSignal samples = Noise(kN);
  std::vector<TFFT> ffts(4);
  std::vector<std::thread> threads;
  for (std::size_t i = 0; i < ffts.size(); ++i) {
    threads.emplace_back([&, i] {
      for (int n = i % 2 == 0 ? 1 : kN; n >= 1 && n <= kN; n = i % 2 == 0 ? 2 * n : n / 2)
        ffts[i].CalFFT(samples, n, 1.0);
      ffts[i].CalFFT(samples, kN, 1.0);
    });
  }
  for (std::thread& thread : threads) thread.join();
  const std::vector<TComplex> expected = PlainFFT(samples);
  for (const TFFT& fft : ffts) ExpectSameBits(fft.Spectrum(), expected);
}

// ---------------------------------------------------------------------------------------------- accuracy

using TWide = long double;
using TWideSpectrum = std::vector<std::complex<TWide>>;

// The transform in wider precision by recursion, not by reordering: even and odd samples each, then joined.
// Factors: e^(-2 pi i k / N) of the whole length N, of which this level takes every Stride-th.
void WideFFT(const double* Samples, std::size_t N, std::size_t Stride, const TWideSpectrum& Factors,
             std::complex<TWide>* Out) {
  if (N == 1) {
    *Out = *Samples;
    return;
  }
  WideFFT(Samples, N / 2, 2 * Stride, Factors, Out);
  WideFFT(Samples + Stride, N / 2, 2 * Stride, Factors, Out + N / 2);
  for (std::size_t k = 0; k < N / 2; ++k) {
    const std::complex<TWide> w = Factors[k * Stride];
    const std::complex<TWide> even = Out[k];
    const std::complex<TWide> odd = Out[k + N / 2];
    const std::complex<TWide> turned{w.real() * odd.real() - w.imag() * odd.imag(),
                                     w.real() * odd.imag() + w.imag() * odd.real()};
    Out[k] = even + turned;
    Out[k + N / 2] = even - turned;
  }
}

TWideSpectrum WideFFT(const TSignal& Samples) {
  const std::size_t n = Samples.size();
  TWideSpectrum factors(n / 2);
  for (std::size_t k = 0; k < n / 2; ++k) {
    factors[k] = std::polar(TWide{1}, -2 * std::numbers::pi_v<TWide> * static_cast<TWide>(k) / static_cast<TWide>(n));
  }
  TWideSpectrum spectrum(n);
  WideFFT(Samples.data(), n, 1, factors, spectrum.data());
  return spectrum;
}

TEST(TFFTAccuracy, TheErrorGrowsAsTheRootOfTheNumberOfStages) {
  for (int n = 2; n <= kLongest; n *= 2) {
    const TSignal samples = Noise(n, static_cast<unsigned>(n));
    TFFT fft;
    fft.CalFFT(samples, n, 1.0);
    const TWideSpectrum exact = WideFFT(samples);
    TWide missSqr = 0;
    TWide sumSqr = 0;
    for (std::size_t i = 0; i < fft.Spectrum().size(); ++i) {
      const TComplex& bin = fft.Spectrum()[i];
      missSqr += std::norm(std::complex<TWide>(bin.real, bin.imag) - exact[i]);
      sumSqr += std::norm(exact[i]);
    }
    const auto error = static_cast<double>(std::sqrt(missSqr / sumSqr));
    EXPECT_LT(error, 1.5 * std::numeric_limits<double>::epsilon() * std::sqrt(std::log2(n))) << n << " samples";
  }
}

}  // namespace
}  // namespace ZORBase
