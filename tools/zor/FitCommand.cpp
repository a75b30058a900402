#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/PathFit.h>
#include <zor/PathMeasures.h>
#include <zor/PathPicture.h>
#include <zor/PointInput.h>
#include <zor/Progress.h>
#include <zor/Report.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <type_traits>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(The path is a cubic curve through all poses. Lengths and distances are over all six components. Overshoot is how far
the path swings out from the straight line between two poses. The smallest radius of curvature is that of the path of
X, Y, Z alone, in their unit. Lengths along the path come from a table of chords, the length by quadrature from the curve
itself. With --2d the path is a curve of the plane through points X,Y.

Examples:
  zor fit poses.txt                                 the three methods side by side
  zor fit poses.txt --method chord --json           one of them, for other programs
  zor fit poses.txt --method chord --plot path.png  and a picture of it
  zor fit profile.txt --2d                          a plane profile)";

struct TOptions {
  std::string File;
  bool IsPlane = false;
  std::optional<TParalizeMethod> Method;
  bool IsJson = false;
  std::string Plot;
};

// One method and what came of it.
template <class TPoint>
struct TFit {
  TParalizeMethod Method = kUsualMethod;
  std::optional<typename TPointKind<TPoint>::TCurve> Path;  ///< nothing where the points allow no fit by this method
  std::string Refusal;                                      ///< why
  double Length = 0.0;  ///< of the path itself, while lengths along it come from its table
  double Miss = 0.0;
  TPathPlace Overshoot;
  std::optional<TPathPlace> Bend;
};

template <class TPoint>
using TFits = std::vector<TFit<TPoint>>;

template <class TPoint>
void Measure(TFit<TPoint>& Fit, const TPointFile<TPoint>& File) {
  const auto watched = [&](const std::string& Work, auto&& Measurement) {
    TProgress progress(fmt::format("measuring {} (method {})", Work, MethodName(Fit.Method)), PieceCount(*Fit.Path));
    return Measurement(*Fit.Path, [&](int Done) { progress.Advance(Done); });
  };
  Fit.Miss = LargestMiss<TPoint>(*Fit.Path, File.Points);
  Fit.Length = watched("the length", IntegratedLength<TPoint>);
  Fit.Overshoot = watched("distances", LargestDistanceFromPolygon<TPoint>);
  Fit.Bend = watched("curvature", SharpestBend<TPoint>);
}

template <class TPoint>
TFit<TPoint> FitBy(const TPointFile<TPoint>& File, TParalizeMethod Method) {
  TFit<TPoint> fit;
  fit.Method = Method;
  fit.Path = FitPath(File, Method);
  Measure(fit, File);
  return fit;
}

// All three methods. One that the points do not allow keeps its reason; the first reason is raised when that is all of them.
template <class TPoint>
TFits<TPoint> FitByAll(const TPointFile<TPoint>& File) {
  TFits<TPoint> fits;
  bool isAnyFitted = false;
  for (const TParalizeMethod method : {mEqually, mChord, mCentripetal}) {
    try {
      fits.push_back(FitBy(File, method));
      isAnyFitted = true;
    } catch (const TGeneralError& Error) {
      TFit<TPoint>& refused = fits.emplace_back();
      refused.Method = method;
      refused.Refusal = Error.what();
    }
  }
  if (!isAnyFitted) RaiseGeneralError(fits.front().Refusal);
  return fits;
}

// ------------------------------------------------------------------------------------------------ report

// A row of the report: what Value says about each fit.
template <class TPoint, class TValue>
void AddRow(TReport& Report, const TFits<TPoint>& Fits, const std::string& Key, const std::string& Title,
            TValue&& Value) {
  std::vector<TReportValue> values;
  for (const auto& fit : Fits) {
    TReportValue& value = values.emplace_back();
    if (fit.Path) value = Value(fit);
  }
  Report.Row(Key, Title, std::move(values));
}

TReportValue LinesOf(const TPathPlace& Place) { return TLines{LineOf(Place.Piece), LineOf(Place.Piece + 1)}; }

template <class TPoint>
TReportValue LengthAt(const TFit<TPoint>& Fit, const TPathPlace& Place) {
  return Fit.Path->GetSByU(Place.Param);
}

template <class TPoint, class TValue>
void AddBendRow(TReport& Report, const TFits<TPoint>& Fits, const std::string& Key, const std::string& Title,
                TValue&& Value) {
  AddRow(Report, Fits, Key, Title,
         [&](const auto& Fit) { return Fit.Bend ? TReportValue(Value(Fit)) : TReportValue(); });
}

template <class TPoint>
void AddFitRows(TReport& Report, const TFits<TPoint>& Fits) {
  using TKind = TPointKind<TPoint>;
  constexpr bool kIsPose = std::is_same_v<TPoint, TPoint6D>;
  const auto count = [](auto Value) { return TReportValue(static_cast<std::int64_t>(Value)); };
  AddRow(Report, Fits, "length", "length", [](const auto& Fit) { return Fit.Path->CurveLength(); });
  AddRow(Report, Fits, "integratedLength", "  by quadrature", [](const auto& Fit) { return Fit.Length; });
  AddRow(Report, Fits, "controlPoints", "control points", [&](const auto& Fit) { return count(Fit.Path->pCount()); });
  AddRow(Report, Fits, "tableRows", "rows of the length table",
         [&](const auto& Fit) { return count(Fit.Path->SUTable().Count()); });
  AddRow(Report, Fits, fmt::format("distanceFrom{}", kIsPose ? "Poses" : "Points"),
         fmt::format("largest miss of a {}", TKind::kRow.Noun), [](const auto& Fit) { return Fit.Miss; });
  AddRow(Report, Fits, "distanceFromPolygon", "largest overshoot", [](const auto& Fit) { return Fit.Overshoot.Value; });
  AddRow(Report, Fits, "distanceFromPolygonLines", "  between", [](const auto& Fit) { return LinesOf(Fit.Overshoot); });
  AddRow(Report, Fits, "distanceFromPolygonAt", "  at length",
         [](const auto& Fit) { return LengthAt(Fit, Fit.Overshoot); });
  AddBendRow(Report, Fits, "smallestRadius", fmt::format("smallest radius of {}", TKind::kPosition),
             [](const auto& Fit) { return 1.0 / Fit.Bend->Value; });
  AddBendRow(Report, Fits, "smallestRadiusLines", "  between", [](const auto& Fit) { return LinesOf(*Fit.Bend); });
  AddBendRow(Report, Fits, "smallestRadiusAt", "  at length", [](const auto& Fit) { return LengthAt(Fit, *Fit.Bend); });
}

// How much of the path the table of its lengths leaves out, by the method where that is least.
template <class TPoint>
std::string TableWarning(const TFits<TPoint>& Fits) {
  constexpr double kNoticeable = 1e-4;
  double missing = 1.0;
  for (const auto& fit : Fits) {
    if (fit.Path) missing = std::min(missing, 1.0 - fit.Path->CurveLength() / fit.Length);
  }
  if (missing < kNoticeable) return "";
  return fmt::format(
      "lengths along the path are {:.2g} % short, as they are tabulated by chords of {} in the unit of the file. "
      "If "
      "that matters, multiply {} by 10 or more.",
      100.0 * missing, TPointKind<TPoint>::TCurve::kSampleSpacing, TPointKind<TPoint>::kPosition);
}

template <class TPoint>
TReport FitReport(const TPointFile<TPoint>& File, const TFits<TPoint>& Fits) {
  const std::string nouns(TPointKind<TPoint>::kNouns);
  TReport report;
  report.Section("", "");
  report.Fact("file", "file", File.Name);
  report.Fact(nouns, nouns, std::int64_t{File.Points.Count()});
  std::vector<TReport::TColumn> columns;
  for (const auto& fit : Fits)
    columns.push_back({std::string(MethodName(fit.Method)), std::string(MethodName(fit.Method))});
  report.Section("methods", "Path by method", std::move(columns), TReport::rnByColumn);
  AddFitRows(report, Fits);
  for (const auto& fit : Fits) {
    if (!fit.Path) report.Warning(fit.Refusal);
  }
  for (const std::string& warning : {MetresWarning(File), TableWarning(Fits)}) {
    if (!warning.empty()) report.Warning(warning);
  }
  return report;
}

template <class TPoint>
void Draw(const TPointFile<TPoint>& File, const TFits<TPoint>& Fits, const std::string& FileName) {
  const std::string_view nouns = TPointKind<TPoint>::kNouns;
  TPathPicture picture = PictureOf<TPoint>();
  picture.Title = fmt::format("{}: cubic path through {} {}", File.Name, File.Points.Count(), nouns);
  for (const auto& fit : Fits) {
    if (fit.Path) {
      picture.Paths.push_back(DrawnCurve<TPoint>(fmt::format("method {}", MethodName(fit.Method)), *fit.Path));
    }
  }
  picture.DotsName = fmt::format("given {}", nouns);
  picture.Dots = DotsOf<TPoint>(File.Points);
  SavePathPicture(picture, FileName);
}

template <class TPoint>
void Run(const TOptions& Options) {
  const TPointFile<TPoint> file = ReadPoints<TPoint>(Options.File);
  const TFits<TPoint> fits = Options.Method ? TFits<TPoint>{FitBy(file, *Options.Method)} : FitByAll(file);
  if (!Options.Plot.empty()) Draw(file, fits, Options.Plot);
  FitReport(file, fits).Write(Options.IsJson);
}

}  // namespace

void AddFitCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command = AddCommand(Program, "fit", "Fit a smooth path through the poses and tell how good it is", kFooter,
                                 [options] { options->IsPlane ? Run<TPoint2D>(*options) : Run<TPoint6D>(*options); });
  AddPathFile(command, options->File, options->IsPlane);
  AddMethod(command, options->Method,
            "How the curve parameter is spread over the poses (default: all three are compared)");
  AddJson(command, options->IsJson);
  AddPlot(command, options->Plot);
}

}  // namespace ZORBase::Tool
