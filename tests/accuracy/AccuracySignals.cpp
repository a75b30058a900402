#include <ZORBaseAlg/LowPassFilter/FilterReferences.h>

#include <algorithm>
#include <cmath>
#include <complex>
#include <memory>
#include <numbers>

#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

// ---------------------------------------------------------------------------------------------- spectra

using TExact = std::complex<long double>;

// The transform by halves in the extended format, 2048 times finer than what it measures. Its factors come from angles within an
// eighth of a turn, so that none of them loses digits.
TExact Factor(std::size_t P, std::size_t N) {
  constexpr long double turn = 2.0L * std::numbers::pi_v<long double>;
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

void MeasureSpectra(const TMeasurement& Measurement) {
  TErrorRow& noise = Measurement.Table.Row({"TFFT, spectrum of noise", "eps sqrt(log2 N)", "root mean square"}, 1.5);
  TErrorRow& tones =
      Measurement.Table.Row({"TFFT, spectrum of three tones", "eps sqrt(log2 N)", "root mean square"}, 1.5);
  TErrorRow& amplitude = Measurement.Table.Row({"TFFT, getAmp", "of the largest amplitude"}, 1e-14);
  TPortableRandom random(61);
  const unsigned powers = Measurement.Effort == TEffort::Full ? 20 : 12;
  for (unsigned power = 2; power <= powers; ++power) {
    const std::size_t n = std::size_t{1} << power;
    std::vector<double> three(n);
    for (std::size_t i = 0; i < n; ++i) {
      const auto t = static_cast<double>(i);
      three[i] = std::sin(0.3 * t) + 0.2 * std::cos(1.7 * t) + 0.001 * std::sin(2.9 * t);
    }
    const std::string where = "N = 2^" + std::to_string(power);
    const auto measure = [&](const std::vector<double>& Samples, TErrorRow& Row) {
      TFFT transform;
      transform.CalFFT(Samples, static_cast<int>(n), 0.001);
      const std::vector<TExact> exact = ExactTransform({Samples.begin(), Samples.end()});
      Row.Add(SpectrumError(transform, exact) / (kEpsilon * std::sqrt(power)), where);
      long double largest = 0.0L;
      for (std::size_t k = 0; k < n / 2; ++k) largest = std::max(largest, std::abs(exact[k]));
      for (int k = 0; k < transform.Count(); ++k) {
        const long double expected = std::abs(exact[static_cast<std::size_t>(k)]) / transform.Count();
        amplitude.Add(static_cast<double>(std::fabs(transform.getAmp(k) - expected) * transform.Count() / largest),
                      where);
      }
    };
    measure(random.Numbers(n, 1.0), noise);
    measure(three, tones);
  }
}

void MeasureComplex(const TMeasurement& Measurement) {
  TErrorRow& quotient = Measurement.Table.Row({"TComplex, A / B", "eps", "by the magnitude of the quotient"}, 4.0);
  TErrorRow& norm = Measurement.Table.Row({"TComplex, getNorm", "ulp"}, 2.0);
  TErrorRow& angle = Measurement.Table.Row({"TComplex, getAngle", "rad"}, 2e-15);
  TPortableRandom random(62);
  for (int i = 0; i < Measurement.Cases(1'000'000, 20'000); ++i) {
    const TPoint2D p = random.Point2D(3.0), q = random.Point2D(3.0);
    const TComplex a{p.X, p.Y}, b{q.X, q.Y};
    const TExact x(a.real, a.imag), y(b.real, b.imag);
    const auto where = [&] { return Format1033("(%.17f, %.17f)", a.real, a.imag); };
    const TComplex result = a / b;
    const long double square = std::norm(y);
    const TExact exact(((x.real() * y.real()) + (x.imag() * y.imag())) / square,
                       ((x.imag() * y.real()) - (x.real() * y.imag())) / square);
    quotient.Add(static_cast<double>(std::abs(TExact(result.real, result.imag) - exact) / std::abs(exact)) / kEpsilon,
                 where);
    const auto length = static_cast<double>(std::abs(x));
    norm.Add(static_cast<double>(std::fabs(a.getNorm() - std::abs(x))) / LastPlaceOf(length), where);
    long double argument = std::atan2(x.imag(), x.real());
    if (argument < 0.0L) argument += 2.0L * std::numbers::pi_v<long double>;
    angle.Add(static_cast<double>(std::fabs(a.getAngle() - argument)), where);
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

void MeasureFilters(const TMeasurement& Measurement) {
  TErrorRow& coefficients =
      Measurement.Table.Row({"Low-pass filters, coefficients", "of the largest coefficient"}, 1e-14);
  TErrorRow& response =
      Measurement.Table.Row({"Low-pass filters, CalcAttenByF", "absolute", "1 is no attenuation"}, 1e-12);
  TErrorRow& output = Measurement.Table.Row({"Low-pass filters, Filt", "of the sum of the magnitudes"}, 1e-14);
  TPortableRandom random(63);
  for (const TReferenceFilter& reference : kReferenceFilters) {
    const std::unique_ptr<TBaseLowPassFilter> filter = FilterOf(reference);
    filter->SetFsample(reference.fs);
    filter->SetFcenter(reference.fc);
    filter->Initialize(0.0);
    const std::string where = std::string(reference.Window) + ", N = " + std::to_string(reference.N);
    const double largest = *std::max_element(reference.FirstHalf.begin(), reference.FirstHalf.end());
    for (std::size_t i = 0; i < reference.FirstHalf.size(); ++i) {
      coefficients.Add(std::fabs(filter->Coeff()[i] - reference.FirstHalf[i]) / largest, where);
    }
    for (const TResponse& at : reference.Responses) {
      response.Add(std::fabs(filter->CalcAttenByF(at.Frequency) - at.Magnitude), where);
    }
    std::vector<double> samples = random.Numbers(filter->Coeff().size(), 1.0);
    double filtered = 0.0;
    long double sum = 0.0L;
    long double size = 0.0L;
    for (std::size_t i = 0; i < samples.size(); ++i) {
      filtered = filter->Filt(samples[i]);
      const long double product = static_cast<long double>(filter->Coeff()[i]) * samples[i];
      sum += product;
      size += std::fabs(product);
    }
    output.Add(static_cast<double>(std::fabs(filtered - sum) / size), where);
  }
}

}  // namespace

void MeasureSignals(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Spectra and filters");
  MeasureSpectra(Measurement);
  MeasureComplex(Measurement);
  MeasureFilters(Measurement);
}

}  // namespace ZORBase::Test
