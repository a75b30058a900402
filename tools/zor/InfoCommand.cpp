#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/PathFit.h>
#include <zor/PathPicture.h>
#include <zor/PointInput.h>
#include <zor/PoseMeasures.h>
#include <zor/Report.h>

#include <cmath>
#include <memory>
#include <numbers>
#include <type_traits>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter = R"(Distances are over all components; X, Y, Z have the unit of the file.

Examples:
  zor info poses.txt                       what is in the file
  zor info poses.txt --plot poses.svg      and a picture of it
  zor info - --json < poses.txt            for other programs
  zor info profile.txt --2d                the points of a plane profile)";

struct TOptions {
  std::string File;
  bool IsPlane = false;
  bool IsJson = false;
  std::string Plot;
};

TLines LinesFrom(int Pose) { return {LineOf(Pose), LineOf(Pose + 1)}; }

template <class TPoint>
void ReportBox(TReport& Report, const TList<TPoint>& Points) {
  const TBox box = BoxOf(Points);
  Report.Section("box", "Box", {{"min", "smallest"}, {"max", "largest"}, {"size", "size"}});
  for (int i = 0; const std::string_view component : TPointKind<TPoint>::kComponents) {
    const std::string name(component);
    const double from = box.Min.Items(i);
    const double to = box.Max.Items(i);
    Report.Row(name, name, {from, to, to - from});
    ++i;
  }
}

void ReportChords(TReport& Report, const TChordFigures& Chords, const std::string& Title) {
  Report.Section("chords", Title, {{"distance", "distance"}, {"lines", "between"}});
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

std::string Verdict(TCloseness Closeness, std::string_view Noun) {
  switch (Closeness) {
    case clSame: return fmt::format("the same {}: no fit", Noun);
    case clTooClose: return "too close: no fit by chord";
    default: return "dangerously close";
  }
}

void ReportCloseNeighbours(TReport& Report, const TChordFigures& Chords, std::string_view Noun) {
  const std::vector<TCloseNeighbours> close = CloseNeighbours(Chords);
  Report.Section("closeNeighbours",
                 fmt::format("Near-duplicates: {}", close.empty() ? "none" : fmt::format("{}", close.size())),
                 {{"lines", ""}, {"distance", ""}, {"verdict", ""}}, TReport::rnList);
  for (const TCloseNeighbours& pair : close) {
    Report.Row("", "", {LinesFrom(pair.Chord.Pose), pair.Chord.Value, Verdict(pair.Closeness, Noun)});
  }
}

template <class TPoint>
TReport InfoReport(const TPointFile<TPoint>& File) {
  using TKind = TPointKind<TPoint>;
  constexpr bool kIsPose = std::is_same_v<TPoint, TPoint6D>;
  const std::string nouns(TKind::kNouns);
  TReport report;
  report.Section("", "");
  report.Fact("file", "file", File.Name);
  report.Fact(nouns, nouns, std::int64_t{File.Points.Count()});
  ReportBox<TPoint>(report, File.Points);
  const auto chords = ChordsOf(File.Points);
  if (chords)
    ReportChords(report, *chords, kIsPose ? "Distances of neighbours, over all six" : "Distances of neighbours");
  if constexpr (kIsPose) ReportDirections(report, File.Points, chords);
  if (chords) ReportCloseNeighbours(report, *chords, TKind::kRow.Noun);
  if (const std::string warning = MetresWarning(File); !warning.empty()) report.Warning(warning);
  return report;
}

template <class TPoint>
void Run(const TOptions& Options) {
  const TPointFile<TPoint> file = ReadPoints<TPoint>(Options.File);
  const TReport report = InfoReport(file);
  if (!Options.Plot.empty()) {
    TPathPicture picture = PictureOf<TPoint>();
    const std::string_view nouns = TPointKind<TPoint>::kNouns;
    picture.Title = fmt::format("{}: {} {}", file.Name, file.Points.Count(), nouns);
    picture.Paths = {DrawnPolygon<TPoint>("straight lines", file.Points)};
    picture.DotsName = nouns;
    picture.Dots = DotsOf<TPoint>(file.Points);
    SavePathPicture(picture, Options.Plot);
  }
  report.Write(Options.IsJson);
}

}  // namespace

void AddInfoCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command = AddCommand(Program, "info", "Tell what a file of poses holds, and what is odd about it", kFooter,
                                 [options] { options->IsPlane ? Run<TPoint2D>(*options) : Run<TPoint6D>(*options); });
  AddPathFile(command, options->File, options->IsPlane);
  AddJson(command, options->IsJson);
  AddPlot(command, options->Plot);
}

}  // namespace ZORBase::Tool
