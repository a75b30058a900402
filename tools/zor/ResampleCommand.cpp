#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/PathFit.h>
#include <zor/PathPicture.h>
#include <zor/PathPlaces.h>
#include <zor/PointInput.h>
#include <zor/Progress.h>
#include <zor/RowInput.h>
#include <zor/RowOutput.h>
#include <zor/TextOutput.h>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(The path is a cubic curve through all poses; lengths along it are over all six components. The end of the path is
always the last pose, also behind a shorter last step and behind the lengths of --at. With --2d the path is a curve of the
plane through points X,Y.

Examples:
  zor resample poses.txt --step 0.5 -o even.txt      a pose every 0.5 of length
  zor resample poses.txt --count 200 -o even.txt     200 poses, evenly spaced from the start to the end
  zor resample poses.txt --at 0,12.5,40              the poses at these lengths, and the end
  zor resample - --step 1 < poses.txt | zor info -   in a pipeline
  zor resample profile.txt --2d --count 200          200 points of a plane profile)";

struct TOptions {
  std::string File;
  bool IsPlane = false;
  TSpacing Spacing;
  std::optional<TParalizeMethod> Method;
  std::string Output = std::string(kStandardStream);
  int Decimals = 6;
  std::string Plot;
};

void RequireOne(const TSpacing& Spacing) {
  const int given = (Spacing.Step ? 1 : 0) + (Spacing.Count ? 1 : 0) + (Spacing.At.empty() ? 0 : 1);
  if (given != 1) throw TUsageError("give exactly one of --step, --count and --at");
}

// Calls Take with the point at each place. The search for a length a little farther on starts where the last one ended.
template <class TPoint, class TTake>
void Walk(const TNurbsCurve<TPoint>& Path, const TPathPlaces& Places, TTake&& Take) {
  TSUTable::TCursor cursor;
  const std::int64_t last = Places.Count() - 1;
  for (std::int64_t i = 0; i < last; ++i) Take(i, Path.EvalPoint(Path.ParamOfLength(Places[i], cursor)));
  Take(last, Path.EvalPoint(1.0));
}

template <class TPoint>
void Draw(const TOptions& Options, const std::string& FileName, const TNurbsCurve<TPoint>& Path,
          const TPathPlaces& Places) {
  constexpr std::int64_t kDrawn = 3000;
  const std::int64_t stride = std::max<std::int64_t>(1, Places.Count() / kDrawn);
  const std::string_view nouns = TPointKind<TPoint>::kNouns;
  TPathPicture picture = PictureOf<TPoint>();
  picture.Title =
      fmt::format("{}: {} {} along a path of length {:.6g}", FileName, Places.Count(), nouns, Path.CurveLength());
  picture.Paths = {
      DrawnCurve<TPoint>(fmt::format("path by method {}", MethodName(Options.Method.value_or(kUsualMethod))), Path)};
  picture.DotsName = fmt::format("resampled {}", nouns);
  Walk(Path, Places, [&](std::int64_t Index, const TPoint& Point) {
    if (Index % stride == 0 || Index == Places.Count() - 1) picture.Dots.Add(Point);
  });
  SavePathPicture(picture, Options.Plot);
}

template <class TPoint>
void Write(const TOptions& Options, const TNurbsCurve<TPoint>& Path, const TPathPlaces& Places) {
  TProgress progress(fmt::format("writing {}", TPointKind<TPoint>::kNouns), Places.Count());
  TRowOutput output(Options.Output, Options.Decimals);
  Walk(Path, Places, [&](std::int64_t Index, const TPoint& Point) {
    output.Add(TPointKind<TPoint>::ToRow(Point));
    progress.Advance(Index + 1);
  });
  output.Commit();
}

template <class TPoint>
void Run(const TOptions& Options) {
  RequireOne(Options.Spacing);
  const TPointFile<TPoint> file = ReadPoints<TPoint>(Options.File);
  const auto path = FitPath(file, Options.Method.value_or(kUsualMethod));
  const TPathPlaces places(Options.Spacing, path.CurveLength(), TPointKind<TPoint>::kNouns);
  if (const std::string warning = MetresWarning(file); !warning.empty()) Warn(file.Name + ": " + warning);
  if (!Options.Plot.empty()) Draw<TPoint>(Options, file.Name, path, places);
  Write<TPoint>(Options, path, places);
}

}  // namespace

void AddResampleCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command = AddCommand(Program, "resample", "Give poses along the path by arc length", kFooter,
                                 [options] { options->IsPlane ? Run<TPoint2D>(*options) : Run<TPoint6D>(*options); });
  AddPathFile(command, options->File, options->IsPlane);
  AddPositive(command, "--step", "S", options->Spacing.Step, "A pose every S of length; the last step may be shorter");
  AddCount(command, "--count", options->Spacing.Count, 2, kMaxPoses,
           "N poses, evenly spaced from the start to the end");
  AddLengths(command, "--at", "S1,S2,...", options->Spacing.At, "The poses at these lengths from the start");
  AddMethod(command, options->Method, "How the curve parameter is spread over the poses (default: chord)");
  AddOutput(command, options->Output);
  AddDecimals(command, options->Decimals);
  AddPlot(command, options->Plot);
}

}  // namespace ZORBase::Tool
