// Runs the benchmarks and closes with a table of ratios.
//
// A benchmark is named "subject/who", or "subject/who/arguments": who is "library" for this one, "plain" for the textbook
// version, or the name of another library. All of them run in one go on one machine, one thread, their repetitions interleaved
// at random, so the ratio of their medians means more than any of the times. Time is that of the processor, for an item where
// items are counted. --benchmark_out=FILE writes every repetition as JSON.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include "FirstTransform.h"

namespace {

// The order in which benchmarks are registered.
using TPlace = std::pair<std::int64_t, std::int64_t>;

struct TResult {
  TPlace Place;
  std::string Who;
  double Seconds;
};

struct TSubject {
  std::string Name;
  std::vector<TResult> Results;

  const TResult* Find(const std::string& Who) const {
    const auto found = std::find_if(Results.begin(), Results.end(), [&](const TResult& R) { return R.Who == Who; });
    return found == Results.end() ? nullptr : &*found;
  }
};

class TRatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& Runs) override {
    std::vector<Run> shown;
    for (const Run& run : Runs) {
      const bool counts = run.run_type == Run::RT_Iteration ? run.repetitions <= 1 : run.aggregate_name == "median";
      if (run.error_occurred || counts) shown.push_back(run);
      if (!run.error_occurred && counts) Take(run);
    }
    ConsoleReporter::ReportRuns(shown);
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    for (TSubject& subject : FSubjects) std::sort(subject.Results.begin(), subject.Results.end(), IsBefore);
    std::sort(FSubjects.begin(), FSubjects.end(),
              [](const TSubject& A, const TSubject& B) { return IsBefore(A.Results.front(), B.Results.front()); });
    std::printf("\n%-48s %12s   %s\n", "subject", "library", "others, in multiples of the library's time");
    for (const TSubject& subject : FSubjects) {
      const TResult* const library = subject.Find("library");
      if (!library) continue;
      std::printf("%-48s %12s  ", subject.Name.c_str(), TimeText(library->Seconds).c_str());
      for (const TResult& result : subject.Results) {
        if (&result != library) std::printf(" %s %.2f ", result.Who.c_str(), result.Seconds / library->Seconds);
      }
      std::printf("\n");
    }
  }

 private:
  static bool IsBefore(const TResult& A, const TResult& B) { return A.Place < B.Place; }

  void Take(const Run& Result) {
    const std::string& name = Result.run_name.function_name;
    const std::size_t slash = name.find('/');
    if (slash == std::string::npos) return;
    std::string subject = name.substr(0, slash);
    if (!Result.run_name.args.empty()) subject += " " + Result.run_name.args;
    auto place = std::find_if(FSubjects.begin(), FSubjects.end(), [&](const TSubject& S) { return S.Name == subject; });
    if (place == FSubjects.end()) place = FSubjects.insert(place, {subject, {}});
    place->Results.push_back(
        {{Result.family_index, Result.per_family_instance_index}, name.substr(slash + 1), SecondsOf(Result)});
  }

  // For an item where items are counted, otherwise for an iteration.
  static double SecondsOf(const Run& Result) {
    const auto rate = Result.counters.find("items_per_second");
    if (rate != Result.counters.end()) return 1.0 / rate->second;
    const bool isOwnClock = !Result.run_name.time_type.empty();
    const double time = isOwnClock ? Result.GetAdjustedRealTime() : Result.GetAdjustedCPUTime();
    return time / benchmark::GetTimeUnitMultiplier(Result.time_unit);
  }

  static std::string TimeText(double Seconds) {
    const char* unit = "ns";
    double number = Seconds * 1e9;
    for (const char* const larger : {"us", "ms", "s"}) {
      if (number < 1000.0) break;
      number /= 1000.0;
      unit = larger;
    }
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%.4g %s", number, unit);
    return text.data();
  }

  std::vector<TSubject> FSubjects;
};

}  // namespace

int main(int argc, char** argv) {
  if (argc == 4 && std::string(argv[1]) == ZORBase::Bench::kFirstTransform) {
    return ZORBase::Bench::RunFirstTransform(argv[2], std::atoi(argv[3]));
  }
  // What is given on the command line comes later and wins.
  std::array defaults = {
      std::string("--benchmark_repetitions=9"),
      std::string("--benchmark_enable_random_interleaving=true"),
      std::string("--benchmark_display_aggregates_only=true"),
      std::string("--benchmark_min_time=0.1"),
  };
  std::vector<char*> arguments(argv, argv + argc);
  for (std::string& flag : defaults) arguments.insert(arguments.begin() + 1, flag.data());
  int count = static_cast<int>(arguments.size());
  arguments.push_back(nullptr);
  benchmark::Initialize(&count, arguments.data());
  if (benchmark::ReportUnrecognizedArguments(count, arguments.data())) return 2;
#if defined(__clang__)
  benchmark::AddCustomContext("compiler", __VERSION__);
#elif defined(__GNUC__)
  benchmark::AddCustomContext("compiler", "g++ " __VERSION__);
#endif
  TRatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
}
