#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/PathFit.h>
#include <zor/PathMeasures.h>
#include <zor/PathPicture.h>
#include <zor/PoseInput.h>
#include <zor/Progress.h>
#include <zor/Report.h>
#include <CLI/CLI.hpp>

#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <memory>
#include <optional>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(The path is a cubic curve through all poses. Lengths and distances are over all six components. Overshoot is how far
the path swings out from the straight line between two poses. The smallest radius of curvature is that of the path of
X, Y, Z alone, in their unit.

Examples:
  zor fit poses.txt                                 the three methods side by side
  zor fit poses.txt --method chord --json           one of them, for other programs
  zor fit poses.txt --method chord --plot path.png  and a picture of it)";

struct TOptions {
  std::string File;
  std::optional<TParalizeMethod> Method;
  bool IsJson = false;
  std::string Plot;
};

// One method and what came of it.
struct TFit {
  TParalizeMethod Method = kUsualMethod;
  std::optional<TNurbs6D> Path;  ///< nothing where the poses allow no fit by this method
  std::string Refusal;           ///< why
  double Miss = 0.0;
  TPathPlace Overshoot;
  std::optional<TPathPlace> Bend;
};

void Measure(TFit& Fit, const TPoint6DList& Poses) {
  const std::string name(MethodName(Fit.Method));
  Fit.Miss = LargestMiss(*Fit.Path, Poses);
  {
    TProgress progress("measuring distances (method " + name + ")", PieceCount(*Fit.Path));
    Fit.Overshoot = LargestDistanceFromPolygon(*Fit.Path, [&](int Done) { progress.Advance(Done); });
  }
  TProgress progress("measuring curvature (method " + name + ")", PieceCount(*Fit.Path));
  Fit.Bend = SharpestBend(*Fit.Path, [&](int Done) { progress.Advance(Done); });
}

TFit FitBy(const TPoseFile& File, TParalizeMethod Method) {
  TFit fit;
  fit.Method = Method;
  fit.Path = FitPath(File, Method);
  Measure(fit, File.Poses);
  return fit;
}

// All three methods. One that the poses do not allow keeps its reason; the first reason is raised when that is all of them.
std::vector<TFit> FitByAll(const TPoseFile& File) {
  std::vector<TFit> fits;
  bool isAnyFitted = false;
  for (const TParalizeMethod method : {mEqually, mChord, mCentripetal}) {
    try {
      fits.push_back(FitBy(File, method));
      isAnyFitted = true;
    } catch (const TGeneralError& Error) {
      TFit& refused = fits.emplace_back();
      refused.Method = method;
      refused.Refusal = Error.what();
    }
  }
  if (!isAnyFitted) RaiseGeneralError(fits.front().Refusal);
  return fits;
}

// ------------------------------------------------------------------------------------------------ report

// A row of the report: what Value says about each fit.
template <class TValue>
void AddRow(TReport& Report, const std::vector<TFit>& Fits, const std::string& Key, const std::string& Title,
            TValue&& Value) {
  std::vector<TReportValue> values;
  for (const TFit& fit : Fits) values.push_back(fit.Path ? TReportValue(Value(fit)) : TReportValue());
  Report.Row(Key, Title, std::move(values));
}

TReportValue LinesOf(const TPathPlace& Place) { return TLines{LineOf(Place.Piece), LineOf(Place.Piece + 1)}; }

TReportValue LengthAt(const TFit& Fit, const TPathPlace& Place) { return Fit.Path->GetSByU(Place.Param); }

template <class TValue>
void AddBendRow(TReport& Report, const std::vector<TFit>& Fits, const std::string& Key, const std::string& Title,
                TValue&& Value) {
  AddRow(Report, Fits, Key, Title,
         [&](const TFit& Fit) { return Fit.Bend ? TReportValue(Value(Fit)) : TReportValue(); });
}

void AddFitRows(TReport& Report, const std::vector<TFit>& Fits) {
  const auto count = [](auto Value) { return TReportValue(static_cast<std::int64_t>(Value)); };
  AddRow(Report, Fits, "length", "length", [](const TFit& Fit) { return Fit.Path->CurveLength(); });
  AddRow(Report, Fits, "controlPoints", "control points", [&](const TFit& Fit) { return count(Fit.Path->pCount()); });
  AddRow(Report, Fits, "tableRows", "rows of the length table",
         [&](const TFit& Fit) { return count(Fit.Path->SUTable().Count()); });
  AddRow(Report, Fits, "distanceFromPoses", "largest miss of a pose", [](const TFit& Fit) { return Fit.Miss; });
  AddRow(Report, Fits, "distanceFromPolygon", "largest overshoot", [](const TFit& Fit) { return Fit.Overshoot.Value; });
  AddRow(Report, Fits, "distanceFromPolygonLines", "  between", [](const TFit& Fit) { return LinesOf(Fit.Overshoot); });
  AddRow(Report, Fits, "distanceFromPolygonAt", "  at length",
         [](const TFit& Fit) { return LengthAt(Fit, Fit.Overshoot); });
  AddBendRow(Report, Fits, "smallestRadius", "smallest radius of X,Y,Z",
             [](const TFit& Fit) { return 1.0 / Fit.Bend->Value; });
  AddBendRow(Report, Fits, "smallestRadiusLines", "  between", [](const TFit& Fit) { return LinesOf(*Fit.Bend); });
  AddBendRow(Report, Fits, "smallestRadiusAt", "  at length", [](const TFit& Fit) { return LengthAt(Fit, *Fit.Bend); });
}

TReport FitReport(const TPoseFile& File, const std::vector<TFit>& Fits) {
  TReport report;
  report.Section("", "");
  report.Fact("file", "file", File.Name);
  report.Fact("poses", "poses", std::int64_t{File.Poses.Count()});
  std::vector<TReport::TColumn> columns;
  for (const TFit& fit : Fits)
    columns.push_back({std::string(MethodName(fit.Method)), std::string(MethodName(fit.Method))});
  report.Section("methods", "Path by method", std::move(columns), TReport::rnByColumn);
  AddFitRows(report, Fits);
  for (const TFit& fit : Fits) {
    if (!fit.Path) report.Warning(fit.Refusal);
  }
  if (const std::string warning = MetresWarning(File.Poses); !warning.empty()) report.Warning(warning);
  return report;
}

void Draw(const TPoseFile& File, const std::vector<TFit>& Fits, const std::string& FileName) {
  TPathPicture picture;
  picture.Title = fmt::format("{}: cubic path through {} poses", File.Name, File.Poses.Count());
  for (const TFit& fit : Fits) {
    if (fit.Path) picture.Paths.push_back(DrawnCurve(fmt::format("method {}", MethodName(fit.Method)), *fit.Path));
  }
  picture.PosesName = "given poses";
  picture.Poses = File.Poses;
  SavePathPicture(picture, FileName);
}

void Run(const TOptions& Options) {
  const TPoseFile file = ReadPoses(Options.File);
  const std::vector<TFit> fits = Options.Method ? std::vector{FitBy(file, *Options.Method)} : FitByAll(file);
  if (!Options.Plot.empty()) Draw(file, fits, Options.Plot);
  FitReport(file, fits).Write(Options.IsJson);
}

}  // namespace

void AddFitCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App* const command =
      Program.add_subcommand("fit", "Fit a smooth path through the poses and tell how good it is");
  command->footer(kFooter);
  AddPoseFile(*command, options->File);
  AddMethod(*command, options->Method,
            "How the curve parameter is spread over the poses (default: all three are compared)");
  AddJson(*command, options->IsJson);
  AddPlot(*command, options->Plot);
  command->callback([options] { Run(*options); });
}

}  // namespace ZORBase::Tool
