// How long a filter takes for a sample: the library's two forms of Filt against a loop that adds term by term.
#include <ZORBase/ZORBaseAlg/LowPassFilter.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

#ifdef ZORBASE_BENCH_LIQUID
#include <liquid/liquid.h>
#include <complex>  // before it, so that it takes the complex numbers of C++
#endif

namespace {

constexpr double kSampleFrequency = 1000.0;
constexpr double kCutoffFrequency = 20.0;

std::vector<double> Samples() {
  std::vector<double> samples(4096);
  for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = std::sin(0.01 * static_cast<double>(i * i));
  return samples;
}

void Design(ZORBase::TLowPassWindowFilter& Filter, int Order) {
  Filter.SetFsample(kSampleFrequency);
  Filter.SetFcenter(kCutoffFrequency);
  Filter.SetFilterOrder(Order);
  Filter.Initialize(0.0);
}

void Design(ZORBase::TAverageLowPassFilter& Filter, int Order) {
  Filter.SetFsample(kSampleFrequency);
  Filter.SetFcenter(kSampleFrequency / (2.0 * Order));
  Filter.Initialize(0.0);
}

// The same filter with the sum as one writes it down.
class TPlainFilter : public ZORBase::THammingLowPassFilter {
 public:
  using THammingLowPassFilter::Filt;

  double Filt(double value) override {
    RequireDesign();
    const double* const window = Push(value);
    double sum = 0.0;
    for (int k = 0; k < DesignedCount(); ++k) sum += FCoeff[static_cast<std::size_t>(k)] * window[k];
    FLastOut = sum;
    return sum;
  }
};

template <class TWork>
void Run(benchmark::State& State, TWork&& Work) {
  const std::vector<double> samples = Samples();
  std::vector<double> results(samples.size());
  for (auto _ : State) {
    Work(samples, results);
    benchmark::ClobberMemory();
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(samples.size()));
}

template <class TFilter>
void OneByOne(benchmark::State& State, TFilter& Filter) {
  Run(State, [&](const std::vector<double>& Samples, std::vector<double>& Results) {
    for (std::size_t i = 0; i < Samples.size(); ++i) Results[i] = Filter.Filt(Samples[i]);
  });
}

// A product and a sum for each tap.
void CountOperations(benchmark::State& State) {
  const double operations = 2.0 * static_cast<double>(State.range(0)) * static_cast<double>(Samples().size());
  State.counters["flops"] =
      benchmark::Counter(operations * static_cast<double>(State.iterations()), benchmark::Counter::kIsRate);
}

template <class TFilter>
void FilterOneByOne(benchmark::State& State) {
  TFilter filter;
  Design(filter, static_cast<int>(State.range(0)));
  OneByOne(State, filter);
  CountOperations(State);
}

template <class TFilter>
void FilterSpan(benchmark::State& State) {
  TFilter filter;
  Design(filter, static_cast<int>(State.range(0)));
  Run(State, [&](const std::vector<double>& Samples, std::vector<double>& Results) { filter.Filt(Samples, Results); });
  CountOperations(State);
}

using ZORBase::TAverageLowPassFilter;
using ZORBase::THammingLowPassFilter;

BENCHMARK_TEMPLATE(FilterOneByOne, TPlainFilter)->Name("Filt, one sample, taps:/plain")->Arg(5)->Arg(51)->Arg(501);
BENCHMARK_TEMPLATE(FilterOneByOne, THammingLowPassFilter)
    ->Name("Filt, one sample, taps:/library")
    ->Arg(5)
    ->Arg(51)
    ->Arg(501);
BENCHMARK_TEMPLATE(FilterSpan, THammingLowPassFilter)->Name("Filt, a row, taps:/library")->Arg(5)->Arg(51)->Arg(501);
BENCHMARK_TEMPLATE(FilterOneByOne, TAverageLowPassFilter)
    ->Name("Filt, one sample, average of:/library")
    ->Arg(5)
    ->Arg(51)
    ->Arg(501);
BENCHMARK_TEMPLATE(FilterSpan, TAverageLowPassFilter)
    ->Name("Filt, a row, average of:/library")
    ->Arg(5)
    ->Arg(51)
    ->Arg(501);

#ifdef ZORBASE_BENCH_LIQUID
// Liquid filters in single precision.
void FilterLiquid(benchmark::State& State) {
  THammingLowPassFilter design;
  Design(design, static_cast<int>(State.range(0)));
  std::vector<float> coefficients(design.Coeff().begin(), design.Coeff().end());
  const std::vector<double> samples = Samples();
  const std::vector<float> inputs(samples.begin(), samples.end());
  std::vector<float> results(inputs.size());
  const firfilt_rrrf filter = firfilt_rrrf_create(coefficients.data(), static_cast<unsigned>(coefficients.size()));
  for (auto _ : State) {
    for (std::size_t i = 0; i < inputs.size(); ++i) {
      firfilt_rrrf_push(filter, inputs[i]);
      firfilt_rrrf_execute(filter, &results[i]);
    }
    benchmark::ClobberMemory();
  }
  firfilt_rrrf_destroy(filter);
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(inputs.size()));
}
BENCHMARK(FilterLiquid)->Name("Filt, one sample, taps:/liquid")->Arg(5)->Arg(51)->Arg(501);
#endif

}  // namespace
