#include "FirstTransform.h"

#include <ZORBase/ZORBaseAlg/uFFT.h>
#include <benchmark/benchmark.h>

#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <random>
#include <string_view>
#include <vector>

#ifdef ZORBASE_BENCH_FFTW
#include <fftw3.h>
#endif

#include "OutputOf.h"

namespace ZORBase::Bench {
namespace {

constexpr const char* kFftwEstimate = "FFTW estimate";

void TransformOnce(const std::vector<double>& Samples) {
  TFFT fft;
  fft.CalFFT(Samples, static_cast<int>(Samples.size()), 1.0);
  benchmark::DoNotOptimize(fft.Spectrum().data());
}

#ifdef ZORBASE_BENCH_FFTW
// The quickest plan to make, and its first use.
void TransformOnceByFftw(const std::vector<double>& Samples) {
  fftw_complex* const in = fftw_alloc_complex(Samples.size());
  fftw_complex* const out = fftw_alloc_complex(Samples.size());
  const fftw_plan plan = fftw_plan_dft_1d(static_cast<int>(Samples.size()), in, out, FFTW_FORWARD, FFTW_ESTIMATE);
  for (std::size_t i = 0; i < Samples.size(); ++i) {
    in[i][0] = Samples[i];
    in[i][1] = 0.0;
  }
  fftw_execute(plan);
  benchmark::DoNotOptimize(out);
  fftw_destroy_plan(plan);
  fftw_free(in);
  fftw_free(out);
}
#endif

double ProcessorTime() {
  std::timespec time{};
  clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
  return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

// In a process of its own each time.
void FirstTransform(benchmark::State& State, const std::string& Who) {
  const std::string command = "'" + std::filesystem::read_symlink("/proc/self/exe").string() + "' " + kFirstTransform +
                              " '" + Who + "' " + std::to_string(State.range(0));
  for (auto _ : State) {
    const double seconds = std::atof(OutputOf(command).c_str());
    if (seconds <= 0.0) State.SkipWithError("the process of the first transform failed");
    State.SetIterationTime(seconds);
  }
  State.SetItemsProcessed(State.iterations() * State.range(0));
}

void Register(const std::string& Who) {
  benchmark::RegisterBenchmark(("CalFFT, first in a process/" + Who).c_str(),
                               [Who](benchmark::State& State) { FirstTransform(State, Who); })
      ->RangeMultiplier(4)
      ->Range(1 << 10, 1 << 16)
      ->Iterations(3)
      ->UseManualTime();
}

[[maybe_unused]] const bool kIsRegistered = [] {
  Register("library");
#ifdef ZORBASE_BENCH_FFTW
  Register(kFftwEstimate);
#endif
  return true;
}();

}  // namespace

int RunFirstTransform(const std::string& Who, int Size) {
  std::mt19937_64 random(1);
  std::vector<double> samples(static_cast<std::size_t>(Size));
  for (double& sample : samples) sample = std::uniform_real_distribution<double>(-1.0, 1.0)(random);
  auto transform = &TransformOnce;
#ifdef ZORBASE_BENCH_FFTW
  if (Who == kFftwEstimate) transform = &TransformOnceByFftw;
#endif
  const double start = ProcessorTime();
  transform(samples);
  std::printf("%.9f\n", ProcessorTime() - start);
  return 0;
}

}  // namespace ZORBase::Bench
