#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/PathFit.h>
#include <zor/PathMeasures.h>
#include <zor/PathPicture.h>
#include <zor/PointInput.h>
#include <zor/Progress.h>
#include <zor/Report.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(The path is the cubic curve through all poses that "zor fit" reports. Distances are over all six components: a tool that
stands close but is turned away is far. Of several places that are equally close the first one is given. With --2d the path
is a curve of the plane through points X,Y.

Examples:
  zor nearest poses.txt --to "40,10,0,0,0,1"           where the path comes closest to this pose
  zor nearest poses.txt --to "40,10,0,0,0,1" --json    for other programs
  zor nearest profile.txt --2d --to "0.3,0.05"         the same in the plane)";

struct TOptions {
  std::string File;
  bool IsPlane = false;
  std::string To;
  std::optional<TParalizeMethod> Method;
  bool IsJson = false;
  std::string Plot;
};

// The point of --to, which is held to what a file may hold.
template <class TPoint>
TPoint Target(const TOptions& Options) {
  const std::vector<double> numbers = NumbersFrom("--to", Options.To, TPointKind<TPoint>::kRow.Count);
  for (const double number : numbers) {
    if (std::fabs(number) <= kLargestNumber) continue;
    throw TUsageError(fmt::format("--to: found {}, expected numbers up to {}", number, kLargestNumber));
  }
  return TPointKind<TPoint>::FromRow(numbers);
}

template <class TPoint>
TClosestPoint<TPoint> ClosestOf(const TNurbsCurve<TPoint>& Path, const TPoint& To) {
  const TProgress progress("looking for the closest place");
  return Path.ClosestPoint(To);
}

// The lines of the points before and behind a place of the path.
template <class TPoint>
TLines LinesAround(const TNurbsCurve<TPoint>& Path, double Param) {
  const int piece = std::clamp(Path.BasicFun().FindSpan(Param) - TNurbsBasicFunc::kDegree, 0, PieceCount(Path) - 1);
  return {LineOf(piece), LineOf(piece + 1)};
}

template <class TPoint>
void ReportPoint(TReport& Report, const std::string& Key, const std::string& Title, const TPoint& Point) {
  Report.Section(Key, Title);
  for (std::size_t i = 0; const std::string_view component : TPointKind<TPoint>::kComponents) {
    const std::string name(component);
    Report.Fact(name, name, TPointKind<TPoint>::ToRow(Point)[i++]);
  }
}

template <class TPoint>
TReport NearestReport(const TPointFile<TPoint>& File, const TNurbsCurve<TPoint>& Path, TParalizeMethod Method,
                      const TClosestPoint<TPoint>& Closest) {
  TReport report;
  report.Section("", "");
  report.Fact("file", "file", File.Name);
  report.Fact("method", "method", std::string(MethodName(Method)));
  report.Fact("distance", "distance", Closest.Distance);
  report.Fact("length", "length from the start", Path.GetSByU(Closest.Param));
  report.Fact("parameter", "parameter of the curve", Closest.Param);
  report.Fact("lines", "between", LinesAround(Path, Closest.Param));
  ReportPoint(report, std::string(TPointKind<TPoint>::kRow.Noun), "Closest place", Closest.Point);
  if (const std::string warning = MetresWarning(File); !warning.empty()) report.Warning(warning);
  return report;
}

template <class TPoint>
void Draw(const TPointFile<TPoint>& File, const TNurbsCurve<TPoint>& Path, const TPoint& To,
          const TClosestPoint<TPoint>& Closest, const std::string& FileName) {
  TPathPicture picture = PictureOf<TPoint>();
  picture.Title = fmt::format("{}: the closest place, {:.6g} away", File.Name, Closest.Distance);
  picture.Paths = {DrawnCurve<TPoint>("path", Path),
                   DrawnPolygon<TPoint>("shortest way", TList<TPoint>{To, Closest.Point})};
  picture.DotsName = "its ends";
  picture.Dots = DotsOf(TList<TPoint>{To, Closest.Point});
  SavePathPicture(picture, FileName);
}

template <class TPoint>
void Run(const TOptions& Options) {
  const auto to = Target<TPoint>(Options);
  const TParalizeMethod method = Options.Method.value_or(kUsualMethod);
  const TPointFile<TPoint> file = ReadPoints<TPoint>(Options.File);
  const auto path = FitPath(file, method);
  const auto closest = ClosestOf<TPoint>(path, to);
  if (!Options.Plot.empty()) Draw<TPoint>(file, path, to, closest, Options.Plot);
  NearestReport<TPoint>(file, path, method, closest).Write(Options.IsJson);
}

}  // namespace

void AddNearestCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command = AddCommand(Program, "nearest", "Find where the path comes closest to a pose", kFooter,
                                 [options] { options->IsPlane ? Run<TPoint2D>(*options) : Run<TPoint6D>(*options); });
  AddPathFile(command, options->File, options->IsPlane);
  SetRequired(
      AddText(command, "--to", "NUMBERS", options->To, "The pose, six numbers; with --2d the point, two numbers"));
  AddMethod(command, options->Method, "How the curve parameter is spread over the poses (default: chord)");
  AddJson(command, options->IsJson);
  AddPlot(command, options->Plot);
}

}  // namespace ZORBase::Tool
