#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/PathFit.h>
#include <zor/PathPicture.h>
#include <zor/PoseInput.h>
#include <zor/PoseMeasures.h>
#include <zor/Report.h>
#include <CLI/CLI.hpp>

#include <array>
#include <cmath>
#include <memory>
#include <numbers>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter = R"(Distances are over all six components; X, Y, Z have the unit of the file.

Examples:
  zor info poses.txt                       what is in the file
  zor info poses.txt --plot poses.svg      and a picture of it
  zor info - --json < poses.txt            for other programs)";

struct TOptions {
  std::string File;
  bool IsJson = false;
  std::string Plot;
};

TLines LinesFrom(int Pose) { return {LineOf(Pose), LineOf(Pose + 1)}; }

void ReportBox(TReport& Report, const TPoint6DList& Poses) {
  constexpr std::array<std::string_view, 6> names = {"X", "Y", "Z", "A", "B", "C"};
  const TBox box = BoxOf(Poses);
  Report.Section("box", "Box", {{"min", "smallest"}, {"max", "largest"}, {"size", "size"}});
  for (int i = 0; i < 6; ++i) {
    const std::string name(names[static_cast<std::size_t>(i)]);
    const double from = box.Min.Items(i);
    const double to = box.Max.Items(i);
    Report.Row(name, name, {from, to, to - from});
  }
}

void ReportChords(TReport& Report, const TChordFigures& Chords) {
  Report.Section("chords", "Distances of neighbours, over all six", {{"distance", "distance"}, {"lines", "between"}});
  Report.Row("smallest", "smallest", {Chords.Smallest.Value, LinesFrom(Chords.Smallest.Pose)});
  Report.Row("largest", "largest", {Chords.Largest.Value, LinesFrom(Chords.Largest.Pose)});
  Report.Fact("mean", "mean", Chords.Mean);
  Report.Fact("sum", "sum", Chords.Sum);
}

void ReportDirections(TReport& Report, const TPoint6DList& Poses, const std::optional<TChordFigures>& Chords) {
  constexpr double kUnitTolerance = 1e-3;
  const TDirectionFigures directions = DirectionsOf(Poses);
  const auto row = [&](const std::string& Name, const TPoseFact& Fact) {
    Report.Row(Name, Name, {Fact.Value, TLines{LineOf(Fact.Pose), LineOf(Fact.Pose)}});
  };
  Report.Section("directions", "Lengths of the directions A,B,C", {{"length", "length"}, {"line", "at"}});
  row("shortest", directions.Shortest);
  row("longest", directions.Longest);
  for (const TPoseFact& fact : {directions.Shortest, directions.Longest}) {
    if (std::fabs(fact.Value - 1.0) <= kUnitTolerance) continue;
    Report.Warning(
        fmt::format("the direction of line {} is {:.6g} long and not 1. Do A, B, C stand in the last three columns?",
                    LineOf(fact.Pose), fact.Value));
    break;
  }
  if (!Chords) return;
  constexpr double kDegrees = 180.0 / std::numbers::pi;
  const TTurn turn = LargestTurn(Poses, *Chords);
  Report.Section("turn", "Largest turn of the direction",
                 {{"degreesPerLength", "deg per length"}, {"degrees", "deg"}, {"lines", "between"}});
  Report.Row("largest", "largest", {turn.PerLength * kDegrees, turn.Angle * kDegrees, LinesFrom(turn.Pose)});
}

std::string Verdict(TCloseness Closeness) {
  switch (Closeness) {
    case clSame: return "the same pose: no fit";
    case clTooClose: return "too close: no fit by chord";
    default: return "dangerously close";
  }
}

void ReportCloseNeighbours(TReport& Report, const TChordFigures& Chords) {
  const std::vector<TCloseNeighbours> close = CloseNeighbours(Chords);
  Report.Section("closeNeighbours",
                 fmt::format("Near-duplicates: {}", close.empty() ? "none" : fmt::format("{}", close.size())),
                 {{"lines", ""}, {"distance", ""}, {"verdict", ""}}, TReport::rnList);
  for (const TCloseNeighbours& pair : close) {
    Report.Row("", "", {LinesFrom(pair.Chord.Pose), pair.Chord.Value, Verdict(pair.Closeness)});
  }
}

TReport InfoReport(const TPoseFile& File) {
  TReport report;
  report.Section("", "");
  report.Fact("file", "file", File.Name);
  report.Fact("poses", "poses", std::int64_t{File.Poses.Count()});
  ReportBox(report, File.Poses);
  const auto chords = ChordsOf(File.Poses);
  if (chords) ReportChords(report, *chords);
  ReportDirections(report, File.Poses, chords);
  if (chords) ReportCloseNeighbours(report, *chords);
  if (const std::string warning = MetresWarning(File.Poses); !warning.empty()) report.Warning(warning);
  return report;
}

void Run(const TOptions& Options) {
  const TPoseFile file = ReadPoses(Options.File);
  const TReport report = InfoReport(file);
  if (!Options.Plot.empty()) {
    SavePathPicture({fmt::format("{}: {} poses", file.Name, file.Poses.Count()),
                     {DrawnPolygon("straight lines", file.Poses)},
                     "poses",
                     file.Poses},
                    Options.Plot);
  }
  report.Write(Options.IsJson);
}

}  // namespace

void AddInfoCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App* const command = Program.add_subcommand("info", "Tell what a file of poses holds, and what is odd about it");
  command->footer(kFooter);
  AddPoseFile(*command, options->File);
  AddJson(*command, options->IsJson);
  AddPlot(*command, options->Plot);
  command->callback([options] { Run(*options); });
}

}  // namespace ZORBase::Tool
