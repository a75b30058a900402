#include <ZORBase/ZORBaseAlg/LowPassFilter/TBaseLowPassFilter.h>

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/kernels/FilterSum.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string>
#include <string_view>

namespace ZORBase {
namespace {

// So many samples in a row are filtered at a time, or as many as the filter is long.
constexpr std::size_t kLineBlock = 1024;

[[noreturn]] void RaiseFilterError(std::string_view Method, const std::string& Reason) {
  RaiseGeneralError("Error TBaseLowPassFilter." + std::string(Method) + ": " + Reason);
}

}  // namespace

// ---------------------------------------------------------------------------------------------- setting up

void TBaseLowPassFilter::SetFsample(double fs) {
  if (!std::isfinite(fs)) RaiseFilterError("SetFsample", "the sample frequency " + FloatToStr(fs) + " is not finite");
  FFs = fs;
  FTc = 1.0 / fs;
  FN = -1;
}

void TBaseLowPassFilter::SetFcenter(double fc) {
  if (!std::isfinite(fc)) RaiseFilterError("SetFcenter", "the cut-off frequency " + FloatToStr(fc) + " is not finite");
  FFc = fc;
  FN = -1;
}

int TBaseLowPassFilter::GetSampleCount() {
  if (FN < 0) CalN();
  return FN;
}

void TBaseLowPassFilter::CalN() {
  if (FFc > 0.0) {
    const double samples = std::ceil((FFs / 2.0) / FFc);
    if (samples > kMaxSampleCount) {
      RaiseFilterError("CalN", "the cut-off frequency " + FloatToStr(FFc) + " needs a filter of more than " +
                                   std::to_string(kMaxSampleCount) + " samples");
    }
    // A negative sample frequency, which cannot be designed, ends at the shortest filter.
    FN = 2 * (static_cast<int>(std::max(samples, 0.0)) / 2) + 1;
  }
  FN = std::max(FN, 3);
}

void TBaseLowPassFilter::Initialize(double initValue) {
  if (!(FFs > 0.0)) {
    RaiseFilterError("Initialize", "the sample frequency is " + FloatToStr(FFs) + " and must be positive");
  }
  CalN();
  RequireDesignable();
  const auto count = static_cast<std::size_t>(FN);
  TDoubleArray signal(2 * count, initValue);
  TDoubleArray coeff(count);
  TDoubleArray line(count - 1 + std::max(count, kLineBlock));
  FSignal.swap(signal);
  FCoeff.swap(coeff);
  FLine.swap(line);
  FSignalIndex = 0;
  FCutoffTime = 0.0;
  FCutoffValue = 0.0;
  FLastOut = 0.0;
  SetEff();
  ScaleCoefficients();
  InitAttList();
}

// The largest argument of a sine or cosine in the design is 2 pi N fc/fs; it is formed in this order.
void TBaseLowPassFilter::RequireDesignable() const {
  if (FN < 1 || FN > kMaxSampleCount) {
    RaiseFilterError("Initialize", "a filter of " + std::to_string(FN) + " samples; 1 to " +
                                       std::to_string(kMaxSampleCount) + " are possible");
  }
  if (!std::isfinite(2.0 * FN * std::numbers::pi * FFc / FFs)) {
    RaiseFilterError("Initialize", "the cut-off frequency " + FloatToStr(FFc) +
                                       " is too large for the sample frequency " + FloatToStr(FFs));
  }
}

void TBaseLowPassFilter::ScaleCoefficients() {
  double sum = 0.0;
  for (const double coefficient : FCoeff) sum += coefficient;
  if (!(sum > 1e-4)) return;
  for (double& coefficient : FCoeff) coefficient /= sum;
}

void TBaseLowPassFilter::InitAttList() {
  FAttList.Clear();
  double f = 0.0;
  const auto step = [&](double Step) {
    f += Step;
    FAttList.Add({CalcAttenByF(f), f});
  };
  for (int i = 0; i < 10; ++i) step(0.3 * FFc / 10.0);
  for (int i = 0; i < 10; ++i) step(0.7 * FFc / 10.0);
  const int rowsLeft = std::min(kMaxAttenRows, kMaxAttenTerms / DesignedCount());
  for (int i = 0; i < rowsLeft && FFs / 3.0 > f && FAttList.Last().atten > 0.707; ++i) step(5.0);
}

void TBaseLowPassFilter::Clear(double initValue) {
  FSignalIndex = 0;
  std::ranges::fill(FSignal, initValue);
  FCutoffTime = 0.0;
  FCutoffValue = 0.0;
  FLastOut = initValue;
}

void TBaseLowPassFilter::RaiseNotInitialized() {
  RaiseGeneralError("Error TBaseLowPassFilter: the filter is not designed yet; call Initialize first");
}

// ---------------------------------------------------------------------------------------------- samples in a row

void TBaseLowPassFilter::RequireResults(std::span<const double> Values, std::span<double> Results) const {
  RequireDesign();
  if (Results.size() < Values.size()) {
    RaiseFilterError("Filt", std::to_string(Values.size()) + " samples, but places for " +
                                 std::to_string(Results.size()) + " results");
  }
  const std::less<> isBefore;
  const double* const first = Values.data();
  const double* const place = Results.data();
  if (first != place && isBefore(place, first + Values.size()) && isBefore(first, place + Values.size())) {
    RaiseFilterError("Filt", "the results overlap the samples without being the same span");
  }
}

void TBaseLowPassFilter::Filt(std::span<const double> Values, std::span<double> Results) {
  RequireResults(Values, Results);
  for (std::size_t i = 0; i < Values.size(); ++i) Results[i] = Filt(Values[i]);
}

void TBaseLowPassFilter::FiltInBlocks(std::span<const double> Values, std::span<double> Results,
                                      const TFilterSums& Sums) {
  // Fewer samples are not worth gathering the ones before them.
  constexpr std::size_t kFewSamples = 4;
  if (Values.size() < kFewSamples) return TBaseLowPassFilter::Filt(Values, Results);
  RequireResults(Values, Results);

  const std::size_t count = FCoeff.size();
  const std::size_t blockSize = FLine.size() - (count - 1);
  double* const line = FLine.data();
  std::copy_n(FSignal.data() + FSignalIndex + 1, count - 1, line);
  while (!Values.empty()) {
    const std::span<const double> block = Values.first(std::min(blockSize, Values.size()));
    std::ranges::copy(block, line + count - 1);
    Sums(line, Results.first(block.size()));
    FLastOut = Results[block.size() - 1];

    const std::size_t lost = block.size() - std::min(block.size(), count);
    FSignalIndex = static_cast<int>((static_cast<std::size_t>(FSignalIndex) + lost) % count);
    for (const double value : std::span(line, count - 1 + block.size()).subspan(count - 1 + lost)) Push(value);
    std::copy_n(line + block.size(), count - 1, line);
    Values = Values.subspan(block.size());
    Results = Results.subspan(block.size());
  }
}

// ---------------------------------------------------------------------------------------------- irregular times

// How many outputs are due: what RandomTimeFilt subtracts is subtracted here first, so that the two agree to the last rounding.
int TBaseLowPassFilter::CountResampled(double deltaT, std::size_t Places) const {
  RequireDesign();
  if (!std::isfinite(deltaT) || deltaT < 0.0) {
    RaiseFilterError("RandomTimeFilt", "the time step " + FloatToStr(deltaT) + " is negative or not finite");
  }
  if (!std::isfinite(FTc) || FTc <= 0.0) {
    RaiseFilterError("RandomTimeFilt", "the sample time " + FloatToStr(FTc) + " is not positive and finite");
  }
  const std::size_t limit = std::min<std::size_t>(Places, kMaxResampled);
  std::size_t due = 0;
  for (double time = FCutoffTime + deltaT; time >= FTc; ++due) {
    const double left = time - FTc;
    if (!(left < time)) {
      RaiseFilterError("RandomTimeFilt", "the sample time " + FloatToStr(FTc) + " is lost in the time " +
                                             FloatToStr(time) + " to be consumed");
    }
    if (due == limit) {
      RaiseFilterError("RandomTimeFilt", "more than " + std::to_string(limit) + " outputs are due");
    }
    time = left;
  }
  return static_cast<int>(due);
}

// Filters the sample at time Tc on the line from the newest sample, at time 0, to cutoffValue, at time cutoffTime.
void TBaseLowPassFilter::FiltResampled() {
  const double newest = FSignal[FCoeff.size() - 1 + static_cast<std::size_t>(FSignalIndex)];
  const double time = FCutoffTime;
  FLastOut = Filt((FTc * FCutoffValue + (time - FTc) * newest) / time);
  FCutoffTime -= FTc;
}

double TBaseLowPassFilter::RandomTimeFilt(double value, double deltaT, double& elapsed) {
  const int due = CountResampled(deltaT, kMaxResampled);
  FCutoffTime += deltaT;
  FCutoffValue = value;
  elapsed = 0.0;
  for (int i = 0; i < due; ++i) {
    FiltResampled();
    elapsed += FTc;
  }
  return FLastOut;
}

int TBaseLowPassFilter::RandomTimeFilt(double value, double deltaT, std::span<double> Results) {
  const int due = CountResampled(deltaT, Results.size());
  FCutoffTime += deltaT;
  FCutoffValue = value;
  for (double& result : Results.first(static_cast<std::size_t>(due))) {
    FiltResampled();
    result = FLastOut;
  }
  return due;
}

// ---------------------------------------------------------------------------------------------- what the filter does

double TBaseLowPassFilter::CalcAttenByF(double f) const {
  const double w = 2.0 * std::numbers::pi * f / FFs;
  double re = 0.0;
  double im = 0.0;
  for (int k = 0; k < DesignedCount(); ++k) {
    const double coefficient = FCoeff[static_cast<std::size_t>(k)];
    re += coefficient * std::cos(-k * w);
    im += coefficient * std::sin(-k * w);
  }
  return std::sqrt(re * re + im * im);
}

double TBaseLowPassFilter::CalcRouphFByAtten(double atten) const {
  RequireDesign();
  int low = 0;
  int high = FAttList.Count() - 1;
  while (high - low >= 2) {
    const int middle = (low + high) / 2;
    (FAttList[middle].atten < atten ? high : low) = middle;
  }
  const TAttenuationAndF& before = FAttList[low];
  const TAttenuationAndF& behind = FAttList[high];
  const double d1 = atten - before.atten;
  const double d2 = behind.atten - atten;
  if (!(std::fabs(d1 + d2) > 1e-5)) return before.frq;
  return (before.frq * d2 + behind.frq * d1) / (d1 + d2);
}

double TBaseLowPassFilter::CalcSimuSignalMutiply(std::span<const double> signal, int count) const {
  if (count <= 0) return 0.0;
  if (static_cast<std::size_t>(count) > signal.size()) {
    RaiseGeneralError("Error TBaseLowPassFilter.CalcSimuSignalMutiply");
  }
  if (count > DesignedCount()) {
    RaiseFilterError("CalcSimuSignalMutiply",
                     std::to_string(count) + " values, but " + std::to_string(DesignedCount()) + " coefficients");
  }
  return WeightedSum(FCoeff.data(), signal.data(), count);
}

}  // namespace ZORBase
