// Filters. Input: the kind, the order, the frequencies of sampling and of cut-off, the first value, a time step, then samples.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORBaseAlg/LowPassFilter.h>

#include <cmath>
#include <memory>

namespace ZORBase::Test::FuzzFilter {
namespace {

constexpr int kMostSamples = 300;

// A design may take 2^24 sines, and RandomTimeFilt a million results at once. Here both stay fewer, for speed, but for sample
// frequencies that nobody has.
constexpr double kMostSines = 1e5;
constexpr double kImpossible = 1e100;

// The attenuation table has a row at least every 5 up to a third of the sample frequency.
bool TakesLong(const TBaseLowPassFilter& Filter) {
  return Filter.N() * (Filter.fs() / 15.0 + 20.0) > kMostSines && Filter.fs() < kImpossible;
}

std::unique_ptr<TBaseLowPassFilter> MakeFilter(int Kind, int Order) {
  if (Kind == 3) return std::make_unique<TAverageLowPassFilter>();
  std::unique_ptr<TLowPassWindowFilter> filter;
  if (Kind == 0) filter = std::make_unique<THammingLowPassFilter>();
  if (Kind == 1) filter = std::make_unique<TRectangleLowPassFilter>();
  if (Kind == 2) filter = std::make_unique<TBlackmanLowPassFilter>();
  filter->SetFilterOrder(Order);
  return filter;
}

bool IsDesigned(TBaseLowPassFilter& Filter, double Fs, double Fc, double First) {
  return Attempt([&] {
    Filter.SetFsample(Fs);
    Filter.SetFcenter(Fc);
    Filter.CalN();
    if (TakesLong(Filter)) RaiseGeneralError("too long for this");
    Filter.Initialize(First);
  });
}

void ApplyAtTimes(TBaseLowPassFilter& Filter, std::span<const double> Samples, double Step) {
  // The step of a few thousand results at most.
  const double step = std::fabs(Step) > 1000.0 * Filter.Tc() ? Filter.Tc() : Step;
  std::vector<double> results(1100);
  double elapsed = 0.0;
  for (const double sample : Samples.first(std::min<std::size_t>(Samples.size(), 10))) {
    Attempt([&] { Filter.RandomTimeFilt(sample, step, elapsed); });
    Attempt([&] { Filter.RandomTimeFilt(sample, step, results); });
  }
}

}  // namespace

ZORBASE_FUZZ_TARGET(Filter) {
  const int kind = Input.Choice(4);
  const int order = Input.Int();
  const double fs = Input.Number();
  const double fc = Input.Number();
  const double first = Input.Number();
  const double step = Input.Number();
  const std::vector<double> samples = Input.Numbers(kMostSamples);
  const auto one = MakeFilter(kind, order);
  const auto other = MakeFilter(kind, order);
  Attempt([&] { one->Filt(1.0); });
  const bool isDesigned = IsDesigned(*one, fs, fc, first);
  Require(IsDesigned(*other, fs, fc, first) == isDesigned, "a filter is designed alike every time");
  if (!isDesigned) return;
  std::vector<double> together(samples.size());
  std::vector<double> single;
  one->Filt(samples, together);
  for (const double sample : samples) single.push_back(other->Filt(sample));
  for (std::size_t i = 0; i < samples.size(); ++i) {
    Require(SameBits({&together[i], 1}, {&single[i], 1}) || std::isnan(single[i]),
            "results are the same one by one and together");
  }
  ApplyAtTimes(*one, samples, step);
  one->CalcAttenByF(step);
  Attempt([&] { one->CalcRouphFByAtten(step); });
  Attempt([&] { one->CalcSimuSignalMutiply(samples, order); });
  one->Clear(first);
  Require(!isDesigned || one->Coeff().size() == other->Coeff().size(), "clearing keeps the design");
}

}  // namespace ZORBase::Test::FuzzFilter
