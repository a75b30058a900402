// The spectrum of a real signal: the library's transform beside the plain one, in the same run.
#include <ZORBase/ZORBaseAlg/uFFT.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <vector>

#ifdef ZORBASE_BENCH_FFTW
#include <fftw3.h>
#endif
#ifdef ZORBASE_BENCH_GSL
#include <gsl/gsl_fft_real.h>
#endif
#ifdef ZORBASE_BENCH_KISSFFT
#include <kissfft/kiss_fftr.h>
#endif

#include "../tests/ZORBaseAlg/uFFT/PlainFFT.h"

namespace {

using namespace ZORBase;

std::vector<double> Noise(std::int64_t N) {
  std::mt19937_64 random(1);
  std::vector<double> samples(static_cast<std::size_t>(N));
  for (double& sample : samples) sample = static_cast<double>(random() >> 11U) * 0x1p-52 - 1.0;
  return samples;
}

void CountSamples(benchmark::State& State) { State.SetItemsProcessed(State.iterations() * State.range(0)); }

// Ten for each of N / 2 butterflies in each of log2 N stages.
void CountOperations(benchmark::State& State) {
  const auto count = static_cast<double>(State.range(0));
  State.counters["flops"] = benchmark::Counter(5.0 * count * std::log2(count) * static_cast<double>(State.iterations()),
                                               benchmark::Counter::kIsRate);
}

// The same object again and again: factors and result arrays are there already.
void CalFFT(benchmark::State& State) {
  const std::vector<double> samples = Noise(State.range(0));
  TFFT fft;
  for (auto _ : State) {
    fft.CalFFT(samples, static_cast<int>(samples.size()), 1.0);
    benchmark::DoNotOptimize(fft.Spectrum().data());
  }
  CountSamples(State);
  CountOperations(State);
}

// A length that has to be padded.
void CalFFTPadded(benchmark::State& State) {
  const std::vector<double> samples = Noise(State.range(0) - 1);
  TFFT fft;
  for (auto _ : State) {
    fft.CalFFT(samples, static_cast<int>(samples.size()), 1.0);
    benchmark::DoNotOptimize(fft.Spectrum().data());
  }
  CountSamples(State);
}

void PlainFFT(benchmark::State& State) {
  const std::vector<double> samples = Noise(State.range(0));
  for (auto _ : State) benchmark::DoNotOptimize(Test::PlainFFT(samples));
  CountSamples(State);
}

void AmplitudesAndPhases(benchmark::State& State) {
  const std::vector<double> samples = Noise(State.range(0));
  TFFT fft;
  fft.CalFFT(samples, static_cast<int>(samples.size()), 1.0);
  for (auto _ : State) {
    benchmark::DoNotOptimize(fft.Amplitudes());
    benchmark::DoNotOptimize(fft.Phases());
  }
  CountSamples(State);
}

BENCHMARK(CalFFT)->Name("CalFFT/library")->RangeMultiplier(4)->Range(1 << 6, 1 << 20);
BENCHMARK(CalFFTPadded)->Name("CalFFT, padded/library")->Arg(1 << 10)->Arg(1 << 16);
BENCHMARK(PlainFFT)->Name("CalFFT/plain")->RangeMultiplier(4)->Range(1 << 6, 1 << 20);
BENCHMARK(AmplitudesAndPhases)->Name("Amplitudes and phases/library")->Arg(1 << 10);

// ---------------------------------------------------------------------------------------------- other libraries

#ifdef ZORBASE_BENCH_FFTW
// Runs a plan, which was measured before the clock starts, and frees it with its arrays. Load brings the samples into the input,
// which measuring overwrites.
template <class TLoad>
void RunFftw(benchmark::State& State, fftw_plan Plan, void* In, fftw_complex* Out, TLoad&& Load) {
  Load(Noise(State.range(0)));
  for (auto _ : State) {
    fftw_execute(Plan);
    benchmark::ClobberMemory();
  }
  fftw_destroy_plan(Plan);
  fftw_free(In);
  fftw_free(Out);
  CountSamples(State);
}

void FftwReal(benchmark::State& State) {
  const auto count = static_cast<std::size_t>(State.range(0));
  double* const in = fftw_alloc_real(count);
  fftw_complex* const out = fftw_alloc_complex(count / 2 + 1);
  RunFftw(State, fftw_plan_dft_r2c_1d(static_cast<int>(count), in, out, FFTW_MEASURE), in, out,
          [in](const std::vector<double>& Samples) { std::ranges::copy(Samples, in); });
}

// This one does the work that the library does, which has no use for the symmetry of a real signal either.
void FftwComplex(benchmark::State& State) {
  const auto count = static_cast<std::size_t>(State.range(0));
  fftw_complex* const in = fftw_alloc_complex(count);
  fftw_complex* const out = fftw_alloc_complex(count);
  RunFftw(State, fftw_plan_dft_1d(static_cast<int>(count), in, out, FFTW_FORWARD, FFTW_MEASURE), in, out,
          [in](const std::vector<double>& Samples) {
            for (std::size_t i = 0; i < Samples.size(); ++i) {
              in[i][0] = Samples[i];
              in[i][1] = 0.0;
            }
          });
}

BENCHMARK(FftwComplex)->Name("CalFFT/FFTW complex")->RangeMultiplier(4)->Range(1 << 10, 1 << 20);
BENCHMARK(FftwReal)->Name("CalFFT/FFTW real")->RangeMultiplier(4)->Range(1 << 10, 1 << 20);
#endif

#ifdef ZORBASE_BENCH_GSL
// In place; the copy of the samples is part of it, as it overwrites them.
void GslReal(benchmark::State& State) {
  const std::vector<double> samples = Noise(State.range(0));
  std::vector<double> data(samples.size());
  for (auto _ : State) {
    std::ranges::copy(samples, data.begin());
    gsl_fft_real_radix2_transform(data.data(), 1, data.size());
    benchmark::ClobberMemory();
  }
  CountSamples(State);
}
BENCHMARK(GslReal)->Name("CalFFT/GSL")->RangeMultiplier(4)->Range(1 << 10, 1 << 20);
#endif

#ifdef ZORBASE_BENCH_KISSFFT
// In single precision.
void KissReal(benchmark::State& State) {
  const std::vector<double> samples = Noise(State.range(0));
  const std::vector<float> in(samples.begin(), samples.end());
  std::vector<kiss_fft_cpx> out(in.size() / 2 + 1);
  const kiss_fftr_cfg plan = kiss_fftr_alloc(static_cast<int>(in.size()), 0, nullptr, nullptr);
  for (auto _ : State) {
    kiss_fftr(plan, in.data(), out.data());
    benchmark::ClobberMemory();
  }
  kiss_fftr_free(plan);
  CountSamples(State);
}
BENCHMARK(KissReal)->Name("CalFFT/kissfft")->RangeMultiplier(4)->Range(1 << 10, 1 << 20);
#endif

}  // namespace
