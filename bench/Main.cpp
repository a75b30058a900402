// Runs the benchmarks and closes with a table of ratios. A benchmark is named "subject/plain" for the textbook version and
// "subject/anything else" for the library's; both run in one go on one machine, so their ratio means more than either time.
#include <benchmark/benchmark.h>

#include <cstdio>
#include <map>
#include <string>
#include <vector>

namespace {

class TRatioReporter : public benchmark::ConsoleReporter {
 public:
  void ReportRuns(const std::vector<Run>& Runs) override {
    ConsoleReporter::ReportRuns(Runs);
    for (const Run& run : Runs) {
      const bool counts = run.run_type == Run::RT_Iteration ? run.repetitions <= 1 : run.aggregate_name == "median";
      if (!run.error_occurred && counts) FNanoseconds[run.run_name.function_name] = NanosecondsOf(run);
    }
  }

  void Finalize() override {
    ConsoleReporter::Finalize();
    std::printf("\n%-40s %12s\n", "time of the plain version / time of", "ratio");
    for (const auto& [name, time] : FNanoseconds) {
      const auto plain = FNanoseconds.find(name.substr(0, name.find('/')) + "/plain");
      if (plain == FNanoseconds.end() || plain->first == name) continue;
      std::printf("%-40s %12.2f\n", name.c_str(), plain->second / time);
    }
  }

 private:
  static double NanosecondsOf(const Run& Run) {
    return Run.GetAdjustedCPUTime() / benchmark::GetTimeUnitMultiplier(Run.time_unit) * 1e9;
  }

  std::map<std::string, double> FNanoseconds;
};

}  // namespace

int main(int argc, char** argv) {
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  TRatioReporter reporter;
  benchmark::RunSpecifiedBenchmarks(&reporter);
}
