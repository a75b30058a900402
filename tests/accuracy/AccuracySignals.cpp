#include <ZORBaseAlg/LowPassFilter/FilterReferences.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <memory>
#include <numbers>
#include <numeric>

#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

// ---------------------------------------------------------------------------------------------- spectra

using TExact = std::complex<long double>;

constexpr long double kExactPi = std::numbers::pi_v<long double>;

// The transform by halves in the extended format, 2048 times finer than what it measures. Its factors come from angles within an
// eighth of a turn, so that none of them loses digits.
TExact Factor(std::size_t P, std::size_t N) {
  constexpr long double turn = 2.0L * kExactPi;
  const auto angle = [&](std::size_t Part) {
    return turn * static_cast<long double>(Part) / static_cast<long double>(N);
  };
  if (8 * P <= N) return {std::cos(angle(P)), -std::sin(angle(P))};
  if (4 * P <= N) return {std::sin(angle(N / 4 - P)), -std::cos(angle(N / 4 - P))};
  const TExact quarter = Factor(P - N / 4, N);
  return {quarter.imag(), -quarter.real()};
}

std::vector<TExact> ExactTransform(const std::vector<TExact>& Samples) {
  const std::size_t n = Samples.size();
  if (n == 1) return Samples;
  std::vector<TExact> even, odd;
  for (std::size_t i = 0; i < n; i += 2) {
    even.push_back(Samples[i]);
    odd.push_back(Samples[i + 1]);
  }
  even = ExactTransform(even);
  odd = ExactTransform(odd);
  std::vector<TExact> result(n);
  for (std::size_t k = 0; k < n / 2; ++k) {
    const TExact w = n >= 8 ? Factor(k, n) : TExact(n == 4 && k == 1 ? 0.0L : 1.0L, n == 4 && k == 1 ? -1.0L : 0.0L);
    const TExact turned = w * odd[k];
    result[k] = even[k] + turned;
    result[k + n / 2] = even[k] - turned;
  }
  return result;
}

// The length of the error of the first half, by the length of the half itself.
double SpectrumError(const TFFT& Transform, const std::vector<TExact>& Exact) {
  long double error = 0.0L;
  long double size = 0.0L;
  for (std::size_t k = 0; k < Transform.Spectrum().size(); ++k) {
    const TComplex bin = Transform.Spectrum()[k];
    error += std::norm(TExact(bin.real, bin.imag) - Exact[k]);
    size += std::norm(Exact[k]);
  }
  return static_cast<double>(std::sqrt(error / size));
}

// In [0, 2 pi).
long double ExactArgument(const TExact& Value) {
  const long double argument = std::arg(Value);
  return argument < 0.0L ? argument + 2.0L * kExactPi : argument;
}

std::string BinOf(const std::string& Where, int Bin) { return Where + ", bin " + std::to_string(Bin); }

void MeasureBins(const TFFT& Transform, const std::string& Where, TErrorRow& Phases, TErrorRow& Frequencies) {
  const long double count = 2.0L * Transform.Count();
  for (int k = 0; k < Transform.Count(); ++k) {
    const TComplex bin = Transform.Spectrum()[static_cast<std::size_t>(k)];
    const long double phase = ExactArgument({bin.real, bin.imag}) * (180.0L / kExactPi);
    const auto where = [&] { return BinOf(Where, k); };
    Phases.Add(static_cast<double>(std::fabs(Transform.getPhase(k) - phase)), where);
    Frequencies.Add(LastPlacesOff(Transform.getFrq(k), k / (count * Transform.Dt())), where);
  }
}

void MeasureTwiddles(const TMeasurement& Measurement) {
  TErrorRow& row = Measurement.Table.Row({"TFFT, Wn_i", "eps", "angles up to a whole turn, rounded"}, 8.0);
  TPortableRandom random(64);
  for (int i = 0; i < Measurement.Cases(100'000, 2'000); ++i) {
    const int n = 1 + random.Below(4096), p = random.Below(n);
    const long double angle = 2.0L * kExactPi * p / n;
    TComplex w;
    TFFT::Wn_i(n, p, w, 1);
    const long double error = Worse(std::fabs(w.real - std::cos(angle)), std::fabs(w.imag + std::sin(angle)));
    row.Add(static_cast<double>(error) / kEpsilon, [&] { return Format1033("N = %d, P = %d", n, p); });
  }
}

void MeasureSpectra(const TMeasurement& Measurement) {
  const TBound goal = AsGoal(1.5);
  TErrorRow& noise = Measurement.Table.Row({"TFFT, spectrum of noise", "eps sqrt(log2 N)", "root mean square"}, goal);
  TErrorRow& tones =
      Measurement.Table.Row({"TFFT, spectrum of three tones", "eps sqrt(log2 N)", "root mean square"}, goal);
  TErrorRow& amplitude = Measurement.Table.Row({"TFFT, getAmp", "of the largest amplitude"}, 1.5e-15);
  TErrorRow& phase = Measurement.Table.Row({"TFFT, getPhase", "degrees", "of the bin as it was computed"}, 2e-13);
  TErrorRow& frequency = Measurement.Table.Row({"TFFT, getFrq", "ulp"}, 0.6);
  constexpr int seed = 61;
  TPortableRandom random(seed);
  const unsigned powers = Measurement.Effort == TEffort::Full ? 20 : 12;
  for (unsigned power = 2; power <= powers; ++power) {
    const std::size_t n = std::size_t{1} << power;
    std::vector<double> three(n);
    for (std::size_t i = 0; i < n; ++i) {
      const auto t = static_cast<double>(i);
      three[i] = std::sin(0.3 * t) + 0.2 * std::cos(1.7 * t) + 0.001 * std::sin(2.9 * t);
    }
    const std::string size = "N = 2^" + std::to_string(power);
    const auto measure = [&](const std::vector<double>& Samples, const std::string& where, TErrorRow& Row) {
      TFFT transform;
      transform.CalFFT(Samples, static_cast<int>(n), 0.001);
      const std::vector<TExact> exact = ExactTransform({Samples.begin(), Samples.end()});
      Row.Add(SpectrumError(transform, exact) / (kEpsilon * std::sqrt(power)), where);
      MeasureBins(transform, where, phase, frequency);
      long double largest = 0.0L;
      for (std::size_t k = 0; k < n / 2; ++k) largest = std::max(largest, std::abs(exact[k]));
      for (int k = 0; k < transform.Count(); ++k) {
        const long double expected = std::abs(exact[static_cast<std::size_t>(k)]) / transform.Count();
        amplitude.Add(static_cast<double>(std::fabs(transform.getAmp(k) - expected) * transform.Count() / largest),
                      [&] { return BinOf(where, k); });
      }
    };
    measure(random.Numbers(n, 1.0), size + " of seed " + std::to_string(seed), noise);
    measure(three, size + ", tones", tones);
  }
}

// The error in eps of the exact magnitude.
double MagnitudesOff(const TComplex& Value, const TExact& Exact) {
  return static_cast<double>(std::abs(TExact(Value.real, Value.imag) - Exact) / std::abs(Exact)) / kEpsilon;
}

std::string Pair(const TComplex& Value) { return "(" + Listed(Components(Value)) + ")"; }

TExact Multiplied(const TExact& A, const TExact& B) {
  return {A.real() * B.real() - A.imag() * B.imag(), A.real() * B.imag() + A.imag() * B.real()};
}

void MeasureComplex(const TMeasurement& Measurement) {
  TErrorRow& quotient = Measurement.Table.Row({"TComplex, A / B", "eps", "by the magnitude of the quotient"}, 4.0);
  TErrorRow& product = Measurement.Table.Row({"TComplex, A * B", "eps", "by the magnitude of the product"}, 2.0);
  TErrorRow& power = Measurement.Table.Row(
      {"TComplex, ComplexPower", "eps", "by N times the magnitude of the power, N up to 40"}, 2.0);
  TErrorRow& norm = Measurement.Table.Row({"TComplex, getNorm", "ulp"}, 2.0);
  TErrorRow& angle = Measurement.Table.Row({"TComplex, getAngle", "rad"}, 2e-15);
  TPortableRandom random(62);
  for (int i = 0; i < Measurement.Cases(1'000'000, 20'000); ++i) {
    const TPoint2D p = random.Point2D(3.0), q = random.Point2D(3.0);
    const TComplex a{p.X, p.Y}, b{q.X, q.Y};
    const TExact x(a.real, a.imag), y(b.real, b.imag);
    const auto one = [&] { return Pair(a); };
    const auto both = [&] { return Pair(a) + ", " + Pair(b); };
    const long double square = std::norm(y);
    const TExact exact(((x.real() * y.real()) + (x.imag() * y.imag())) / square,
                       ((x.imag() * y.real()) - (x.real() * y.imag())) / square);
    quotient.Add(MagnitudesOff(a / b, exact), both);
    product.Add(MagnitudesOff(a * b, Multiplied(x, y)), both);
    norm.Add(LastPlacesOff(a.getNorm(), std::abs(x)), one);
    angle.Add(static_cast<double>(std::fabs(a.getAngle() - ExactArgument(x))), one);
    if (i % 10 != 0) continue;
    const int exponent = 1 + random.Below(40);
    TExact raised = x;
    for (int k = 1; k < exponent; ++k) raised = Multiplied(raised, x);
    power.Add(MagnitudesOff(a.ComplexPower(exponent), raised) / exponent,
              [&] { return Pair(a) + "^" + std::to_string(exponent); });
  }
}

// ---------------------------------------------------------------------------------------------- filters

std::unique_ptr<TBaseLowPassFilter> FilterOf(const TReferenceFilter& Reference) {
  const std::string window = Reference.Window;
  if (window == "Average") return std::make_unique<TAverageLowPassFilter>();
  std::unique_ptr<TLowPassWindowFilter> filter;
  if (window == "Hamming") filter = std::make_unique<THammingLowPassFilter>();
  if (window == "Rectangle") filter = std::make_unique<TRectangleLowPassFilter>();
  if (window == "Blackman") filter = std::make_unique<TBlackmanLowPassFilter>();
  filter->SetFilterOrder(Reference.Order);
  return filter;
}

// Where the table of the response falls through a value, and nowhere else, the frequency lies on the line between two rows.
void MeasureReverseLookUp(const TBaseLowPassFilter& Filter, TPortableRandom& Random, const std::string& Where,
                          TErrorRow& Row) {
  const TAttenuationAndFList& table = Filter.attList();
  for (int i = 0; i + 1 < table.Count(); ++i) {
    const TAttenuationAndF &before = table[i], &behind = table[i + 1];
    const double atten = Random.Within(behind.atten, before.atten);
    const auto isAbove = [atten](const TAttenuationAndF& At) { return At.atten > atten; };
    const bool fallsOnce =
        std::is_partitioned(table.begin(), table.end(), isAbove) && isAbove(before) && !isAbove(behind);
    if (!fallsOnce || before.atten - behind.atten < 1e-3) continue;
    const long double share =
        (static_cast<long double>(before.atten) - atten) / (static_cast<long double>(before.atten) - behind.atten);
    const long double frequency = before.frq + share * (static_cast<long double>(behind.frq) - before.frq);
    Row.Add(static_cast<double>(std::fabs(Filter.CalcRouphFByAtten(atten) - frequency) / frequency),
            [&] { return Where + ", attenuation " + Listed({atten}); });
  }
}

// Ten steps up to 0.3 of the cut-off frequency, ten up to the whole of it.
void MeasureTableFrequencies(const TBaseLowPassFilter& Filter, const std::string& Where, TErrorRow& Row) {
  const long double cutoff = Filter.fc();
  for (int i = 0; i < 20; ++i) {
    const int fine = std::min(i + 1, 10), coarse = i + 1 - fine;
    const long double exact = cutoff * (3 * fine + 7 * coarse) / 100.0L;
    Row.Add(LastPlacesOff(Filter.attList()[i].frq, exact), [&] { return Where + ", row " + std::to_string(i); });
  }
}

// The output for the last of as many samples as there are coefficients, and their sum without the ring.
void MeasureSums(TBaseLowPassFilter& Filter, const std::vector<double>& Samples, const std::string& Where,
                 TErrorRow& Output, TErrorRow& Weighted) {
  double filtered = 0.0;
  long double sum = 0.0L;
  long double size = 0.0L;
  for (std::size_t i = 0; i < Samples.size(); ++i) {
    filtered = Filter.Filt(Samples[i]);
    const long double product = static_cast<long double>(Filter.Coeff()[i]) * Samples[i];
    sum += product;
    size += std::fabs(product);
  }
  Output.Add(static_cast<double>(std::fabs(filtered - sum) / size), Where);
  const double weighted = Filter.CalcSimuSignalMutiply(Samples, static_cast<int>(Samples.size()));
  Weighted.Add(static_cast<double>(std::fabs(weighted - sum) / size), Where);
}

void MeasureFilters(const TMeasurement& Measurement) {
  TErrorRow& coefficients =
      Measurement.Table.Row({"Low-pass filters, coefficients", "of the largest coefficient"}, 1e-15);
  TErrorRow& response =
      Measurement.Table.Row({"Low-pass filters, CalcAttenByF", "absolute", "1 is no attenuation"}, AsGoal(1e-12));
  TErrorRow& output = Measurement.Table.Row({"Low-pass filters, Filt", "of the sum of the magnitudes"}, 4e-16);
  TErrorRow& weighted =
      Measurement.Table.Row({"Low-pass filters, CalcSimuSignalMutiply", "of the sum of the magnitudes"}, 4e-16);
  TErrorRow& time = Measurement.Table.Row({"Low-pass filters, Tc", "ulp"}, kRoundedOnce);
  TErrorRow& frequency = Measurement.Table.Row({"Low-pass filters, CalcRouphFByAtten", "relative",
                                                "of the line between two rows, which lie some 1e-3 apart or more"},
                                               6e-16);
  TErrorRow& rises =
      Measurement.Table.Row({"Low-pass filters, attList, frequencies", "ulp", "added up step by step"}, 8.0);
  constexpr int seed = 63;
  TPortableRandom random(seed);
  for (const TReferenceFilter& reference : kReferenceFilters) {
    const std::unique_ptr<TBaseLowPassFilter> filter = FilterOf(reference);
    filter->SetFsample(reference.fs);
    filter->SetFcenter(reference.fc);
    filter->Initialize(0.0);
    const std::string where = std::string(reference.Window) + ", N = " + std::to_string(reference.N);
    const double largest = *std::max_element(reference.FirstHalf.begin(), reference.FirstHalf.end());
    for (std::size_t i = 0; i < reference.FirstHalf.size(); ++i) {
      coefficients.Add(std::fabs(filter->Coeff()[i] - reference.FirstHalf[i]) / largest,
                       [&] { return where + ", coefficient " + std::to_string(i); });
    }
    for (const TResponse& at : reference.Responses) {
      response.Add(std::fabs(filter->CalcAttenByF(at.Frequency) - at.Magnitude),
                   [&] { return where + ", frequency " + Listed({at.Frequency}); });
    }
    MeasureSums(*filter, random.Numbers(filter->Coeff().size(), 1.0),
                where + ", samples of seed " + std::to_string(seed), output, weighted);
    time.Add(LastPlacesOff(filter->Tc(), 1.0L / reference.fs), where);
    MeasureTableFrequencies(*filter, where, rises);
    MeasureReverseLookUp(*filter, random, where, frequency);
  }
}

// The windows at the distance D from the middle of N samples.
long double HammingWindow(int D, int N) { return 0.54L + 0.46L * std::cos(2.0L * kExactPi * D / (N - 1)); }
long double BlackmanWindow(int D, int N) {
  return 0.42L + 0.5L * std::cos(2.0L * kExactPi * D / (N - 1)) + 0.08L * std::cos(4.0L * kExactPi * D / N);
}

void MeasureWindow(const std::string& Name, TLowPassWindowFilter& Filter, long double (*Window)(int D, int N),
                   TErrorRow& Row) {
  for (const int n : {3, 5, 17, 101, 501}) {
    Filter.SetFilterOrder(n);
    Filter.CalN();
    for (int i = 0; i < n; ++i) {
      const long double error = std::fabs(Filter.GetWindowEff(i) - Window(i - (n - 1) / 2, n));
      Row.Add(static_cast<double>(error) / kEpsilon, [&] { return Format1033("%s, i = %d of %d", Name, i, n); });
    }
  }
}

void MeasureWindows(const TMeasurement& Measurement) {
  TErrorRow& row = Measurement.Table.Row({"Low-pass filters, GetWindowEff", "eps"}, 4.0);
  THammingLowPassFilter hamming;
  TBlackmanLowPassFilter blackman;
  MeasureWindow("Hamming", hamming, HammingWindow, row);
  MeasureWindow("Blackman", blackman, BlackmanWindow, row);
}

// The samples of an irregularly timed signal, in the extended format: between two of them it is a straight line.
class TExactResampling {
 public:
  explicit TExactResampling(const TBaseLowPassFilter& Filter) : FFilter(Filter), FRing(Filter.Coeff().size(), 0.0L) {}

  /// Takes a sample. \return the outputs that are due.
  std::vector<long double> Take(double Value, double Step) {
    std::vector<long double> outputs;
    FTime += Step;
    for (; FTime >= FFilter.Tc(); FTime -= FFilter.Tc()) {
      FRing.push_back(FRing.back() + (Value - FRing.back()) * FFilter.Tc() / FTime);
      FRing.erase(FRing.begin());
      outputs.push_back(std::inner_product(FRing.begin(), FRing.end(), FFilter.Coeff().begin(), 0.0L));
    }
    return outputs;
  }

 private:
  const TBaseLowPassFilter& FFilter;
  std::vector<long double> FRing;
  long double FTime = 0.0L;
};

void MeasureResampling(const TMeasurement& Measurement) {
  TErrorRow& row = Measurement.Table.Row({"Low-pass filters, RandomTimeFilt", "of the largest sample",
                                          "with the rounding of the times, added up over 500 samples"},
                                         8e-14);
  TErrorRow& elapsed = Measurement.Table.Row({"Low-pass filters, RandomTimeFilt, elapsed", "ulp"}, 1.5);
  constexpr int seed = 65;
  TPortableRandom random(seed);
  for (int i = 0; i < Measurement.Cases(20, 2); ++i) {
    THammingLowPassFilter filter, timed;
    for (THammingLowPassFilter* const one : {&filter, &timed}) {
      one->SetFsample(1000.0 + i);
      one->SetFcenter(90.0);
      one->Initialize(0.0);
    }
    TExactResampling exact(filter);
    for (int k = 0; k < 500; ++k) {
      const double value = random.Signed(1.0), step = random.Within(0.0, 4.0) * filter.Tc();
      const auto outputs = exact.Take(value, step);
      std::vector<double> results(8);
      const int due = filter.RandomTimeFilt(value, step, results);
      const auto where = [&] { return Drawn("signal", i, seed) + ", sample " + std::to_string(k); };
      if (static_cast<std::size_t>(due) != outputs.size()) row.Add(kInfinity, where);
      for (std::size_t n = 0; n < std::min(outputs.size(), results.size()); ++n) {
        row.Add(static_cast<double>(std::fabs(results[n] - outputs[n])), where);
      }
      double time = 0.0;
      timed.RandomTimeFilt(value, step, time);
      if (due > 0) elapsed.Add(LastPlacesOff(time, static_cast<long double>(timed.Tc()) * due), where);
    }
  }
}

}  // namespace

void MeasureSignals(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Spectra and filters");
  MeasureSpectra(Measurement);
  MeasureTwiddles(Measurement);
  MeasureComplex(Measurement);
  MeasureFilters(Measurement);
  MeasureWindows(Measurement);
  MeasureResampling(Measurement);
}

}  // namespace ZORBase::Test
