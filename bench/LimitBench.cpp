// What the machine can do at most: the other times are read against these.
#include <ZORBase/kernels/TargetClones.h>
#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <vector>

namespace ZORBase::Bench {
namespace {

constexpr std::size_t kBlock = 64;

// Sums in independent lanes, so that the memory is the limit and not the chain of additions.
ZORBASE_TARGET_CLONES double SumOf(const double* Values, std::size_t Count) {
  std::array<double, kBlock> sums{};
  for (std::size_t i = 0; i + kBlock <= Count; i += kBlock) {
    for (std::size_t lane = 0; lane < kBlock; ++lane) sums[lane] += Values[i + lane];
  }
  double sum = 0.0;
  for (const double lane : sums) sum += lane;
  return sum;
}

// Products and sums in registers, each rounded by itself.
ZORBASE_TARGET_CLONES void MultiplyAndAdd(double* Values, double Factor, double Summand, int Turns) {
  for (int turn = 0; turn < Turns; ++turn) {
    for (std::size_t lane = 0; lane < kBlock; ++lane) Values[lane] = Values[lane] * Factor + Summand;
  }
}

void ReadMemory(benchmark::State& State) {
  const std::vector<double> values(static_cast<std::size_t>(State.range(0)) / sizeof(double), 1.0);
  for (auto _ : State) benchmark::DoNotOptimize(SumOf(values.data(), values.size()));
  State.SetBytesProcessed(State.iterations() * State.range(0));
}

// Bytes are counted once, although each is read and written.
void CopyMemory(benchmark::State& State) {
  const auto size = static_cast<std::size_t>(State.range(0));
  const std::vector<char> from(size, 'x');
  std::vector<char> to(size);
  for (auto _ : State) {
    std::memcpy(to.data(), from.data(), size);
    benchmark::ClobberMemory();
  }
  State.SetBytesProcessed(State.iterations() * State.range(0));
}

void Arithmetic(benchmark::State& State) {
  constexpr int kTurns = 1000;
  std::array<double, kBlock> values{};
  for (auto _ : State) {
    MultiplyAndAdd(values.data(), 0.5, 1.0, kTurns);
    benchmark::DoNotOptimize(values);
  }
  constexpr double kOperations = 2.0 * kTurns * kBlock;
  State.counters["flops"] =
      benchmark::Counter(kOperations * static_cast<double>(State.iterations()), benchmark::Counter::kIsRate);
}

constexpr std::int64_t kInCache = 256 << 10;
constexpr std::int64_t kInMemory = 256 << 20;

BENCHMARK(ReadMemory)->Name("memory read/limit")->Arg(kInCache)->Arg(kInMemory);
BENCHMARK(CopyMemory)->Name("memory copy/limit")->Arg(kInCache)->Arg(kInMemory);
BENCHMARK(Arithmetic)->Name("multiply and add/limit");

}  // namespace
}  // namespace ZORBase::Bench
