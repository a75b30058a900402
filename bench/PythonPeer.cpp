#include "PythonPeer.h"

#include <benchmark/benchmark.h>

#include <nlohmann/json.hpp>

#include "OutputOf.h"

namespace ZORBase::Bench {

#ifdef ZORBASE_BENCH_PYTHON
namespace {

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
