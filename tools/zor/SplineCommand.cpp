#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/PathFit.h>
#include <zor/PathPicture.h>
#include <zor/PathPlaces.h>
#include <zor/Progress.h>
#include <zor/RowInput.h>
#include <zor/RowOutput.h>
#include <zor/SplinePath.h>
#include <zor/TextOutput.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <memory>
#include <optional>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(A row is a point of 1 to 44 numbers, such as the positions of all axes of a machine; all rows have the same count. The
curve passes through every point, its direction has no corner, and its curvature hardly jumps. Lengths are over all
numbers. The end of the curve is always the last row.

Examples:
  zor spline axes.txt -o smooth.txt                     16 points from each row to the next
  zor spline axes.txt --samples-per-segment 4           4 of them
  zor spline axes.txt --step 0.5 -o even.txt            a point every 0.5 of length
  zor spline axes.txt --plot curve.svg -o smooth.txt    and a picture of the first two or three numbers)";

constexpr std::int64_t kUsualSamples = 16;

// The curve needs about 2 kB for each of them.
constexpr TRowForm kSplineRow = {0, "", "point", 1'000'000};

struct TOptions {
  std::string File;
  std::optional<std::int64_t> Samples;
  std::optional<double> Step;
  std::string Output = std::string(kStandardStream);
  int Decimals = 6;
  std::string Plot;
};

// ------------------------------------------------------------------------------------------------ input

struct TSplineFile {
  std::string Name;
  TList<TPointXD> Points;
};

TSplineFile ReadSplinePoints(const std::string& FileName) {
  TSplineFile file{InputName(FileName), {}};
  ReadRows(FileName, kSplineRow, [&](std::span<const double> Row) {
    file.Points.Add(TPointXD::FromSpan(Row));
    const double distance = file.Points.Last().Mag();
    if (distance <= TTWoDerivCurveXD::kFarthest) return;
    RaiseGeneralError(
        fmt::format("{}, line {}: found a point {:.3g} away from the origin, expected at most {:.3g}. Look for a lost "
                    "decimal point or blank.",
                    file.Name, file.Points.Count(), distance, TTWoDerivCurveXD::kFarthest));
  });
  RequireEnough(file.Name, file.Points.Count(), 3, kSplineRow.Noun);
  return file;
}

// A point needs a neighbour that is another point: its direction comes from both chords.
void RequireDirections(const TSplineFile& File) {
  const std::optional<int> index = TTWoDerivCurveXD::PointWithoutDirection(File.Points);
  if (!index) return;
  RaiseGeneralError(
      fmt::format("{}, lines {} to {}: found the same point three times, expected neighbours that differ. Remove two "
                  "of the lines.",
                  File.Name, LineOf(*index - 1), LineOf(*index + 1)));
}

TSplinePath SplineThrough(const TSplineFile& File) {
  const TProgress progress("laying the curve");
  return TSplinePath(File.Points);
}

// ------------------------------------------------------------------------------------------------ output

// Calls Take with Samples points of each segment, and the end.
template <class TTake>
void TakeSamples(const TSplinePath& Path, std::int64_t Samples, TTake&& Take) {
  for (int i = 0; i < Path.SegmentCount(); ++i) {
    const TCubicBezXD segment = Path.Segment(i);
    for (std::int64_t k = 0; k < Samples; ++k) {
      Take(segment.EvalPoint(static_cast<double>(k) / static_cast<double>(Samples)));
    }
  }
  Take(Path.Segment(Path.SegmentCount() - 1).FP3);
}

// Calls Take with the point at each place.
template <class TTake>
void TakePlaces(const TSplinePath& Path, const TPathPlaces& Places, TTake&& Take) {
  TSplineWalk walk(Path);
  for (std::int64_t i = 0; i + 1 < Places.Count(); ++i) Take(walk(Places[i]));
  Take(Path.Segment(Path.SegmentCount() - 1).FP3);
}

std::int64_t CountSamples(const TSplinePath& Path, std::int64_t Samples) {
  const std::int64_t most = (kMaxPoses - 1) / Path.SegmentCount();
  if (Samples > most) {
    throw TUsageError(fmt::format(
        "--samples-per-segment: found {}, expected at most {}: there are {} segments, and at most {} points "
        "are given",
        Samples, most, Path.SegmentCount(), kMaxPoses));
  }
  return Samples * Path.SegmentCount() + 1;
}

// Takes the points into a file; Places is nothing where each segment gives as many.
void Write(const TOptions& Options, const TSplinePath& Path, const std::optional<TPathPlaces>& Places) {
  const std::int64_t samples = Options.Samples.value_or(kUsualSamples);
  TProgress progress("writing points", Places ? Places->Count() : CountSamples(Path, samples));
  TRowOutput output(Options.Output, Options.Decimals);
  std::int64_t count = 0;
  const auto take = [&](const TPointXD& Point) {
    output.Add(Point.Coordinates());
    progress.Advance(++count);
  };
  Places ? TakePlaces(Path, *Places, take) : TakeSamples(Path, samples, take);
  output.Commit();
}

void Draw(const TSplineFile& File, const TSplinePath& Path, const std::string& FileName) {
  constexpr int kDrawnCoordinates = 3;
  if (Path.Dimension() < 2) {
    throw TUsageError(
        fmt::format("--plot: found rows of one number in {}, expected two or more to be drawn", File.Name));
  }
  TPathPicture picture;
  picture.IsPlane = Path.Dimension() == 2;
  picture.Title = fmt::format("{}: smooth curve through {} points", File.Name, File.Points.Count());
  if (Path.Dimension() > kDrawnCoordinates) {
    picture.Title += fmt::format(", the first {} of {} coordinates", kDrawnCoordinates, Path.Dimension());
  }
  picture.CurvatureTitle = "Curvature over all coordinates: 1 / radius";
  picture.LengthTitle = "length from the start, over all coordinates";
  picture.Paths = {DrawnSpline("curve", Path)};
  picture.DotsName = "given points";
  for (const TPointXD& point : File.Points) picture.Dots.Add(static_cast<TPoint6D>(point));
  SavePathPicture(picture, FileName);
}

void Run(const TOptions& Options) {
  if (Options.Samples && Options.Step) throw TUsageError("give either --samples-per-segment or --step");
  const TSplineFile file = ReadSplinePoints(Options.File);
  RequireDirections(file);
  const TSplinePath path = SplineThrough(file);
  std::optional<TPathPlaces> places;
  if (Options.Step) {
    places.emplace(TSpacing{Options.Step, {}, {}}, path.Length(), "points");
  } else {
    CountSamples(path, Options.Samples.value_or(kUsualSamples));  // refuses too many before anything is drawn
  }
  if (!Options.Plot.empty()) Draw(file, path, Options.Plot);
  Write(Options, path, places);
}

}  // namespace

void AddSplineCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command = AddCommand(Program, "spline", "Lay a smooth curve through rows of up to 44 numbers", kFooter,
                                 [options] { Run(*options); });
  AddNumberFile(command, options->File);
  AddCount(command, "--samples-per-segment", options->Samples, 1, kMaxPoses,
           fmt::format("N points from each row to the next (default: {})", kUsualSamples));
  AddPositive(command, "--step", "S", options->Step, "A point every S of length; the last step may be shorter");
  AddOutput(command, options->Output);
  AddDecimals(command, options->Decimals);
  AddPlot(command, options->Plot);
}

}  // namespace ZORBase::Tool
