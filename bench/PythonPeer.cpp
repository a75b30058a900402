#include "PythonPeer.h"

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace ZORBase::Bench {

#ifdef ZORBASE_BENCH_PYTHON
namespace {

std::string OutputOf(const std::string& Command) {
  std::string output;
  FILE* const pipe = popen(Command.c_str(), "r");
  if (pipe == nullptr) return output;
  std::array<char, 4096> block{};
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), pipe)) output.append(block.data(), count);
  pclose(pipe);
  return output;
}

void Run(benchmark::State& State, const std::string& Command) {
  std::int64_t items = 0;
  for (auto _ : State) {
    const nlohmann::json result = nlohmann::json::parse(OutputOf(Command), nullptr, false);
    if (!result.is_object()) {
      State.SkipWithError("peers.py failed");
      return;
    }
    State.SetIterationTime(result.at("seconds").get<double>());
    items += result.at("items").get<std::int64_t>();
  }
  State.SetItemsProcessed(items);
}

}  // namespace

void RegisterPythonPeer(const std::string& Name, const std::string& Kernel, std::int64_t Size) {
  const std::string command =
      ZORBASE_BENCH_PYTHON " " ZORBASE_BENCH_FOLDER "/peers.py " + Kernel + " " + std::to_string(Size);
  benchmark::RegisterBenchmark(Name.c_str(), [command](benchmark::State& State) { Run(State, command); })
      ->Iterations(1)
      ->UseManualTime();
}
#else
void RegisterPythonPeer(const std::string&, const std::string&, std::int64_t) {}
#endif

}  // namespace ZORBase::Bench
