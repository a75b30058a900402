// The spectrum of a real signal: the library's transform beside the plain one, in the same run.
#include <ZORBase/ZORBaseAlg/uFFT.h>
#include <benchmark/benchmark.h>

#include <cstdint>
#include <random>
#include <vector>

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

// The same object again and again: factors and result arrays are there already.
void CalFFT(benchmark::State& State) {
  const std::vector<double> samples = Noise(State.range(0));
  TFFT fft;
  for (auto _ : State) {
    fft.CalFFT(samples, static_cast<int>(samples.size()), 1.0);
    benchmark::DoNotOptimize(fft.Spectrum().data());
  }
  CountSamples(State);
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

}  // namespace
