// Measures how far the library's results are off, and whether every operation keeps its limit.
//   zorbase_accuracy FOLDER           everything, against the reference sets of FOLDER; prints tables in Markdown
//   zorbase_accuracy FOLDER --quick   fewer random cases, in seconds; prints only what misses its limit
// Ends with 1 when a limit is missed, and, against everything, when a goal is.
#include <cstdio>
#include <cstring>
#include <exception>

#include "Subjects.h"

namespace ZORBase::Test {
namespace {

void MeasureAll(const TMeasurement& Measurement) {
  MeasureNumbers(Measurement);
  MeasurePoints(Measurement);
  MeasureComponents(Measurement);
  MeasureTransforms(Measurement);
  MeasureOrientations(Measurement);
  MeasureRoundTrips(Measurement);
  MeasureCurves(Measurement);
  MeasureCurveParts(Measurement);
  MeasureLengths(Measurement);
  MeasureSegments(Measurement);
  MeasureDecompositions(Measurement);
  MeasureFits(Measurement);
  MeasureNewton(Measurement);
  MeasureInterpolators(Measurement);
  MeasureSignals(Measurement);
}

int Run(const char* Folder, TEffort Effort) {
  const TReferenceSets references(Folder);
  TErrorTable table;
  MeasureAll({table, references, Effort});
  if (Effort == TEffort::Quick) return table.PrintMissedLimits() ? 0 : 1;
  table.Print();
  std::printf("\n## Shortfalls\n\n");
  const bool reachesGoals = table.PrintShortfalls();
  if (reachesGoals) std::printf("None: every operation reaches its goal.\n");
  std::printf("\n## Missed limits\n\n");
  const bool isGood = table.PrintMissedLimits();
  if (isGood) std::printf("None: no error is above what the tests hold the operation to.\n");
  return isGood && reachesGoals ? 0 : 1;
}

}  // namespace
}  // namespace ZORBase::Test

int main(int Count, char** Words) {
  using namespace ZORBase::Test;
  const bool isQuick = Count == 3 && std::strcmp(Words[2], "--quick") == 0;
  if (Count != 2 && !isQuick) {
    std::fprintf(stderr, "usage: zorbase_accuracy FOLDER [--quick]\n");
    return 2;
  }
  try {
    return Run(Words[1], isQuick ? TEffort::Quick : TEffort::Full);
  } catch (const std::exception& Error) {
    std::fprintf(stderr, "zorbase_accuracy: %s\n", Error.what());
    return 2;
  }
}
