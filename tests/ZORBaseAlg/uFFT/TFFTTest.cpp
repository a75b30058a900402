#include <ZORBase/ZORBaseAlg/uFFT.h>

#include "PlainFFT.h"
#include "support/TestSupport.h"

#include <algorithm>
#include <complex>
#include <limits>
#include <numbers>
#include <random>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;
using testing::HasSubstr;

// N samples of amplitude times cos(2 pi bin i / N + phase).
std::vector<double> Wave(int N, double Bin, double Amplitude, double Phase) {
  std::vector<double> samples;
  for (int i = 0; i < N; ++i) samples.push_back(Amplitude * std::cos(2 * kPi * Bin * i / N + Phase));
  return samples;
}

std::vector<double> Noise(std::size_t Count, unsigned Seed) {
  std::mt19937_64 random(Seed);
  std::vector<double> samples(Count);
  for (double& sample : samples) sample = static_cast<double>(random() >> 11U) * 0x1p-52 - 1.0;
  return samples;
}

std::vector<TComplex> SpectrumOf(const std::vector<double>& Samples) {
  TFFT fft;
  fft.CalFFT(Samples, static_cast<int>(Samples.size()), 1.0);
  return {fft.Spectrum().begin(), fft.Spectrum().end()};
}

// How far two angles in degrees are apart on the circle.
double DegreesApart(double A, double B) { return std::fabs(std::remainder(A - B, 360.0)); }

TEST(TFFT, AThousandSamplesArePaddedTo1024) {
  TFFT fft;
  EXPECT_EQ(fft.CalFFT(Noise(1000, 1), 1000, 0.25), 512);
  EXPECT_EQ(fft.Count(), 512);
  EXPECT_EQ(fft.Dt(), 0.25);
  EXPECT_EQ(fft.getFrq(1), 1 / (1024 * 0.25));
  EXPECT_EQ(fft.getFrq(511), 511 / (1024 * 0.25));
  EXPECT_EQ(fft.getFrq(0), 0);
}

TEST(TFFT, PaddingIsTheSameAsZerosInTheSignal) {
  std::vector<double> samples = Noise(1000, 2);
  const std::vector<TComplex> padded = SpectrumOf(samples);
  samples.resize(1024);
  EXPECT_EQ(padded, SpectrumOf(samples));
}

TEST(TFFT, OnlyTheFirstACountSamplesCount) {
  const std::vector<double> samples = Noise(100, 3);
  TFFT fft;
  EXPECT_EQ(fft.CalFFT(samples, 32, 1.0), 16);
  EXPECT_EQ(std::vector<TComplex>(fft.Spectrum().begin(), fft.Spectrum().end()),
            SpectrumOf({samples.begin(), samples.begin() + 32}));
}

TEST(TFFT, AConstantIsAllInBinZeroWhichReadsTwiceTheMean) {
  const std::vector<double> ones(8, 1.0);
  TFFT fft;
  ASSERT_EQ(fft.CalFFT(ones, 8, 1.0), 4);
  EXPECT_EQ(fft.Spectrum()[0], (TComplex{8, 0}));
  EXPECT_EQ(fft.getAmp(0), 2);
  for (int bin = 1; bin < 4; ++bin) {
    EXPECT_EQ(fft.Spectrum()[static_cast<std::size_t>(bin)], (TComplex{0, 0})) << bin;
    EXPECT_EQ(fft.getAmp(bin), 0) << bin;
  }
}

TEST(TFFT, ACosineAtABinReadsItsAmplitudeAndPhaseZero) {
  TFFT fft;
  fft.CalFFT(Wave(64, 4, 3, 0), 64, 1.0);
  EXPECT_NEAR(fft.getAmp(4), 3, 1e-14);
  // A hair below the axis reads just under 360.
  EXPECT_LT(DegreesApart(fft.getPhase(4), 0), 1e-12);
  for (int bin = 0; bin < 32; ++bin) {
    if (bin != 4) {
      EXPECT_LT(fft.getAmp(bin), 1e-14) << bin;
    }
  }
}

TEST(TFFT, TheSineAtThatBinReads270Degrees) {
  TFFT fft;
  fft.CalFFT(Wave(64, 4, 3, -kPi / 2), 64, 1.0);
  EXPECT_NEAR(fft.getAmp(4), 3, 1e-14);
  EXPECT_NEAR(fft.getPhase(4), 270, 1e-12);
}

TEST(TFFT, ACosineAheadByAnAngleReadsThatPhase) {
  TFFT fft;
  for (const double degrees : {30.0, 100.0, 200.0, 359.0}) {
    fft.CalFFT(Wave(128, 9, 1, degrees / 180 * kPi), 128, 1.0);
    EXPECT_NEAR(fft.getPhase(9), degrees, 1e-11);
  }
}

// A real coefficient with an imaginary part that drives the angle to the last double below 2 pi.
TEST(TFFT, APhaseStaysBelow360) {
  TFFT fft;
  const std::vector<double> samples = {1, 5e-16, 0, 0};
  fft.CalFFT(samples, 4, 1.0);
  ASSERT_LT(fft.Spectrum()[1].imag, 0);
  ASSERT_EQ(fft.Spectrum()[1].getAngle(), std::nextafter(2 * kPi, 0.0));
  EXPECT_LT(fft.getPhase(1), 360);
  EXPECT_GT(fft.getPhase(1), 359.999);
}

TEST(TFFT, AFrequencyIsTheBinOverTheLengthInTime) {
  TFFT fft;
  fft.CalFFT(Noise(4096, 4), 4096, 0.001);
  for (int bin = 0; bin < 2048; ++bin) {
    EXPECT_DOUBLE_EQ(fft.getFrq(bin), bin / (4096 * 0.001));
    EXPECT_EQ(fft.getFrq(bin), (1 / 0.001) * bin / 2 / 2048);
  }
}

TEST(TFFT, ANewTimeStepChangesTheFrequenciesOfTheSameSignal) {
  TFFT fft;
  fft.CalFFT(Noise(16, 4), 16, 1.0);
  fft.CalFFT(Noise(16, 4), 16, 0.5);
  EXPECT_EQ(fft.getFrq(4), 0.5);
  EXPECT_EQ(fft.Dt(), 0.5);
  fft.CalFFT(Noise(32, 4), 32, 0.5);
  EXPECT_EQ(fft.getFrq(4), 0.25);
}

TEST(TFFT, ANegativeTimeStepGivesNegativeFrequencies) {
  TFFT fft;
  fft.CalFFT(Noise(8, 4), 8, -0.5);
  EXPECT_EQ(fft.getFrq(1), -0.25);
}

TEST(TFFT, OneSampleHasNoBins) {
  TFFT fft;
  const std::vector<double> one = {5};
  EXPECT_EQ(fft.CalFFT(one, 1, 1.0), 0);
  EXPECT_TRUE(fft.Spectrum().empty());
  EXPECT_TRUE(fft.Frq().empty());
}

TEST(TFFT, TwoSamplesHaveTheirSum) {
  TFFT fft;
  const std::vector<double> two = {5, 2};
  EXPECT_EQ(fft.CalFFT(two, 2, 1.0), 1);
  EXPECT_EQ(fft.Spectrum()[0], (TComplex{7, 0}));
  EXPECT_EQ(fft.getAmp(0), 7);
}

TEST(TFFT, TheNextTransformReplacesTheResult) {
  TFFT fft;
  fft.CalFFT(Noise(1024, 5), 1024, 1.0);
  const std::vector<double> small = {1, 2, 3, 4};
  EXPECT_EQ(fft.CalFFT(small, 4, 2.0), 2);
  EXPECT_EQ(fft.Frq().size(), 2U);
  EXPECT_EQ(fft.Spectrum()[0], (TComplex{10, 0}));
  EXPECT_THAT(Calling([&] { fft.getAmp(2); }), RaisesGeneralError("TFFT has 2 bins, no bin 2"));
}

TEST(TFFT, FFTTransformsExactlyNSamplesWithTheTimeStepOfBefore) {
  const std::vector<double> samples = Noise(64, 6);
  TFFT fft;
  fft.CalFFT(samples, 10, 0.125);
  fft.FFT(samples, 64);
  EXPECT_EQ(std::vector<TComplex>(fft.Spectrum().begin(), fft.Spectrum().end()), SpectrumOf(samples));
  EXPECT_EQ(fft.getFrq(1), 1 / (64 * 0.125));
}

TEST(TFFT, AllAmplitudesAndPhasesAreThoseOfTheSingleBins) {
  TFFT fft;
  fft.CalFFT(Noise(300, 7), 300, 1.0);
  const TDoubleList amplitudes = fft.Amplitudes();
  const TDoubleList phases = fft.Phases();
  ASSERT_EQ(amplitudes.Count(), 256);
  ASSERT_EQ(phases.Count(), 256);
  for (int bin = 0; bin < 256; ++bin) {
    EXPECT_EQ(amplitudes[bin], fft.getAmp(bin));
    EXPECT_EQ(phases[bin], fft.getPhase(bin));
    EXPECT_EQ(fft.Frq()[static_cast<std::size_t>(bin)], fft.getFrq(bin));
  }
  EXPECT_EQ(TFFT().Amplitudes().Count(), 0);
}

TEST(TFFT, ATransformOfItsOwnFrequenciesReadsThemFirst) {
  for (const int n : {2, 4, 8, 64, 128, 1024}) {
    TFFT fft;
    fft.CalFFT(Noise(static_cast<std::size_t>(n), 8), n, 1.0);
    const std::vector<double> frequencies(fft.Frq().begin(), fft.Frq().end());
    fft.CalFFT(fft.Frq(), n / 2, 3.0);
    EXPECT_EQ(std::vector<TComplex>(fft.Spectrum().begin(), fft.Spectrum().end()), SpectrumOf(frequencies));
  }
}

TEST(TFFT, TheTwiddleFactorTurnsBackwardsWhenForward) {
  TComplex w;
  TFFT::Wn_i(8, 1, w, 1);
  EXPECT_EQ(w, (TComplex{std::cos(kPi / 4), -std::sin(kPi / 4)}));
  TFFT::Wn_i(8, 1, w, 0);
  EXPECT_EQ(w, (TComplex{std::cos(kPi / 4), std::sin(kPi / 4)}));
  TFFT::Wn_i(12, 5, w, 1);
  EXPECT_EQ(w, (TComplex{std::cos(2 * kPi * 5 / 12), -std::sin(2 * kPi * 5 / 12)}));
  TFFT::Wn_i(12, 5, w, 2);
  EXPECT_EQ(w, (TComplex{std::cos(2 * kPi * 5 / 12), std::sin(2 * kPi * 5 / 12)}));
}

TEST(TFFT, TheTwiddleFactorZeroIsOneWithANegativeZero) {
  TComplex w;
  TFFT::Wn_i(8, 0, w, 1);
  EXPECT_EQ(w, (TComplex{1, 0}));
  EXPECT_TRUE(std::signbit(w.imag));
}

TEST(TFFT, ATwiddleFactorOfLengthZeroRaises) {
  TComplex w{3, 4};
  EXPECT_THAT(Calling([&] { TFFT::Wn_i(0, 1, w, 1); }), RaisesGeneralError(HasSubstr("length other than 0")));
  EXPECT_EQ(w, (TComplex{3, 4}));
}

// ---------------------------------------------------------------------------------------------- bad input

// An object with a result, and a check that it still has that one.
class TFFTBadInput : public testing::Test {
 protected:
  TFFTBadInput() { FFft.CalFFT(kFour, 4, 0.5); }

  void ExpectRaisesAndNothingChanges(const ZORBase::Test::TAction& Action, const std::string& Text) {
    EXPECT_THAT(Action, RaisesGeneralError(HasSubstr(Text)));
    EXPECT_EQ(FFft.Dt(), 0.5);
    EXPECT_THAT(FFft.Spectrum(), testing::ElementsAre(TComplex{10, 0}, FBinOne));
    EXPECT_THAT(FFft.Frq(), testing::ElementsAre(0, 0.5));
  }

  const std::vector<double> kFour = {1, 2, 3, 4};
  const TComplex FBinOne = SpectrumOf(kFour)[1];
  TFFT FFft;
};

TEST_F(TFFTBadInput, ACountBelowOneRaises) {
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(kFour, 0, 1.0); }, "cannot transform 0 of 4 samples");
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(kFour, -7, 1.0); }, "cannot transform -7 of 4 samples");
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT({}, 0, 1.0); }, "cannot transform 0 of 0 samples");
}

TEST_F(TFFTBadInput, ACountBeyondTheDataRaises) {
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(kFour, 5, 1.0); }, "cannot transform 5 of 4 samples");
}

// The span only claims to be that long; the check must come before its first access.
TEST_F(TFFTBadInput, ACountBeyondTwoToThe30Raises) {
  const std::span<const double> claimed(kFour.data(), std::size_t{1} << 31);
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(claimed, TFFT::kMaxSamples + 1, 1.0); }, "must be 1 to 1073741824");
  ExpectRaisesAndNothingChanges([&] { FFft.FFT(claimed, std::numeric_limits<int>::max()); }, "must be 1 to 1073741824");
}

TEST_F(TFFTBadInput, ATimeStepOfZeroRaises) {
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(kFour, 4, 0.0); }, "the time step");
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(kFour, 4, -0.0); }, "the time step");
}

TEST_F(TFFTBadInput, ATimeStepThatIsNotFiniteRaises) {
  for (const double dt : {kNaN, kInfinity, -kInfinity}) {
    ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(kFour, 4, dt); }, "the time step");
  }
}

TEST_F(TFFTBadInput, ATimeStepWhoseFrequenciesOverflowRaises) {
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(kFour, 4, 1e-310); }, "the time step");
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(kFour, 4, 1e-308); }, "the time step");
  ExpectRaisesAndNothingChanges([&] { FFft.CalFFT(std::span(kFour).first(1), 1, 1e-310); }, "the time step");
  FFft.CalFFT(kFour, 4, 1.2e-308);
  EXPECT_DOUBLE_EQ(FFft.getFrq(1), 1 / 4.8e-308);
}

TEST_F(TFFTBadInput, ALengthThatIsNoPowerOfTwoRaises) {
  ExpectRaisesAndNothingChanges([&] { FFft.FFT(kFour, 3); }, "the length 3 is not a power of two");
  ExpectRaisesAndNothingChanges([&] { FFft.FFT(kFour, 0); }, "cannot transform 0 of 4 samples");
  ExpectRaisesAndNothingChanges([&] { FFft.FFT(kFour, 8); }, "cannot transform 8 of 4 samples");
}

TEST_F(TFFTBadInput, FFTBeforeAnyTimeStepIsKnownRaises) {
  TFFT fresh;
  EXPECT_THAT(Calling([&] { fresh.FFT(kFour, 4); }), RaisesGeneralError(HasSubstr("the time step")));
  EXPECT_EQ(fresh.Count(), 0);
}

TEST_F(TFFTBadInput, ABinThatIsNotThereRaises) {
  for (const int bin : {-1, 2, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    const std::string text = "TFFT has 2 bins, no bin " + std::to_string(bin);
    ExpectRaisesAndNothingChanges([&] { FFft.getAmp(bin); }, text);
    ExpectRaisesAndNothingChanges([&] { FFft.getPhase(bin); }, text);
    ExpectRaisesAndNothingChanges([&] { FFft.getFrq(bin); }, text);
  }
  EXPECT_THAT(Calling([] { TFFT().getAmp(0); }), RaisesGeneralError("TFFT has 0 bins, no bin 0"));
}

TEST_F(TFFTBadInput, AnObjectThatWasMovedFromHasNoBins) {
  const TFFT taken = std::move(FFft);
  EXPECT_EQ(taken.Count(), 2);
  EXPECT_THAT(Calling([&] { FFft.getAmp(0); }), RaisesGeneralError("TFFT has 0 bins, no bin 0"));
}

// ---------------------------------------------------------------------------------------------- laws

double Largest(const std::vector<TComplex>& Spectrum) {
  double largest = 0;
  for (const TComplex& bin : Spectrum) largest = std::max(largest, bin.getNorm());
  return largest;
}

// The greatest distance between two spectra, relative to the greatest bin of the second one.
double WorstMiss(const std::vector<TComplex>& Spectrum, const std::vector<TComplex>& Expected) {
  double worst = 0;
  for (std::size_t i = 0; i < Expected.size(); ++i) worst = std::max(worst, (Spectrum[i] - Expected[i]).getNorm());
  return worst / Largest(Expected);
}

const std::vector<int> kLawLengths = {4, 16, 32, 64, 128, 1024, 4096};

TEST(TFFTLaws, AnImpulseHasAllBinsOne) {
  for (const int n : kLawLengths) {
    std::vector<double> impulse(static_cast<std::size_t>(n));
    impulse[0] = 1;
    for (const TComplex& bin : SpectrumOf(impulse)) ASSERT_EQ(bin, (TComplex{1, 0})) << n;
  }
}

TEST(TFFTLaws, AnImpulseAtPlaceDTurnsByDPerBin) {
  for (const int n : kLawLengths) {
    for (const int d : {1, 2, 3, n / 2, n - 1}) {
      std::vector<double> impulse(static_cast<std::size_t>(n));
      impulse[static_cast<std::size_t>(d)] = 1;
      const std::vector<TComplex> spectrum = SpectrumOf(impulse);
      for (int f = 0; f < n / 2; ++f) {
        const double a = -2 * kPi * (f * d % n) / n;
        ASSERT_LT((spectrum[static_cast<std::size_t>(f)] - TComplex{std::cos(a), std::sin(a)}).getNorm(), 4e-15);
      }
    }
  }
}

TEST(TFFTLaws, TheSpectrumOfASumIsTheSumOfTheSpectra) {
  for (const int n : kLawLengths) {
    const std::vector<double> a = Noise(static_cast<std::size_t>(n), 11);
    const std::vector<double> b = Noise(static_cast<std::size_t>(n), 12);
    std::vector<double> mixed;
    for (std::size_t i = 0; i < a.size(); ++i) mixed.push_back(3 * a[i] - 2 * b[i]);
    const std::vector<TComplex> ofA = SpectrumOf(a);
    const std::vector<TComplex> ofB = SpectrumOf(b);
    std::vector<TComplex> expected;
    for (std::size_t i = 0; i < ofA.size(); ++i) expected.push_back(3.0 * ofA[i] - 2.0 * ofB[i]);
    EXPECT_LT(WorstMiss(SpectrumOf(mixed), expected), 2e-15) << n;
  }
}

// Doubling is exact at every step, so it commutes with the transform to the bit.
TEST(TFFTLaws, TwiceTheSignalHasExactlyTwiceTheSpectrum) {
  std::vector<double> samples = Noise(1024, 13);
  const std::vector<TComplex> single = SpectrumOf(samples);
  for (double& sample : samples) sample *= 2;
  const std::vector<TComplex> twice = SpectrumOf(samples);
  for (std::size_t i = 0; i < single.size(); ++i) ASSERT_EQ(twice[i], 2.0 * single[i]);
}

TEST(TFFTLaws, ACyclicShiftTurnsEveryBin) {
  for (const int n : kLawLengths) {
    const std::vector<double> samples = Noise(static_cast<std::size_t>(n), 14);
    std::vector<double> shifted = samples;
    const int by = n / 4 + 1;
    std::rotate(shifted.begin(), shifted.end() - by, shifted.end());
    std::vector<TComplex> expected = SpectrumOf(samples);
    for (int f = 0; f < n / 2; ++f) {
      const double a = -2 * kPi * (f * by % n) / n;
      TComplex& bin = expected[static_cast<std::size_t>(f)];
      bin = bin * TComplex{std::cos(a), std::sin(a)};
    }
    EXPECT_LT(WorstMiss(SpectrumOf(shifted), expected), 2e-15) << n;
  }
}

// Of the N bins, 1..N/2-1 have mirrors of equal magnitude; 0 and N/2 stand alone. The latter is the alternating sum.
TEST(TFFTLaws, TheBinsHoldTheEnergyOfTheSignal) {
  for (const int n : kLawLengths) {
    const std::vector<double> samples = Noise(static_cast<std::size_t>(n), 15);
    const std::vector<TComplex> spectrum = SpectrumOf(samples);
    double energy = 0;
    double alternating = 0;
    for (std::size_t i = 0; i < samples.size(); ++i) {
      energy += samples[i] * samples[i];
      alternating += i % 2 == 0 ? samples[i] : -samples[i];
    }
    double ofBins = spectrum[0].real * spectrum[0].real + alternating * alternating;
    for (std::size_t f = 1; f < spectrum.size(); ++f) ofBins += 2 * spectrum[f].getNorm() * spectrum[f].getNorm();
    EXPECT_NEAR(ofBins / n / energy, 1, 1e-13) << n;
  }
}

RC_GTEST_PROP(TFFTLaws, EveryBinIsTheSumOverTheSamples, ()) {
  const auto count = *rc::gen::inRange<std::size_t>(2, 200);
  const std::vector<double> samples = Noise(count, *rc::gen::arbitrary<unsigned>());
  const std::vector<TComplex> spectrum = SpectrumOf(samples);
  const std::size_t n = 2 * spectrum.size();
  const auto f = *rc::gen::inRange<std::size_t>(0, spectrum.size());
  std::complex<long double> sum;
  for (std::size_t i = 0; i < count; ++i) {
    const long double a =
        -2 * std::numbers::pi_v<long double> * static_cast<long double>(f * i % n) / static_cast<long double>(n);
    sum += static_cast<long double>(samples[i]) * std::polar(1.0L, a);
  }
  RC_ASSERT(std::fabs(spectrum[f].real - static_cast<double>(sum.real())) < 1e-13);
  RC_ASSERT(std::fabs(spectrum[f].imag - static_cast<double>(sum.imag())) < 1e-13);
}

}  // namespace
}  // namespace ZORBase
