#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/Progress.h>
#include <zor/RowInput.h>
#include <zor/RowOutput.h>
#include <zor/SurfaceGrid.h>
#include <zor/SurfacePicture.h>
#include <zor/TextOutput.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(SAMPLES are rows of x,y,z: a height z over the place x,y. A smooth surface is laid through all of them, and its heights come out
as rows of x,y,z: at the places x,y of --at, or on a grid over the box of the samples, row by row from the lowest y, each
from the smallest x. The work grows with the third power of the number of samples: a thousand take about a second. Outside of the
samples the surface means little.

Examples:
  zor surface topo.xyz.txt --grid 40,40 -o map.txt
  zor surface topo.xyz.txt --at places.xy.txt
  zor surface topo.xyz.txt --grid 100,100 -o map.txt --plot map.png)";

constexpr TRowForm kPlaceRow = {2, "(x,y)", "place"};

// As many samples as the matrix may have rows.
constexpr std::int64_t MostSamples() {
  std::int64_t count = 1;
  while ((count + 1) * (count + 1) * std::int64_t{sizeof(double)} <=
         std::int64_t{TV4Interpolator::kMatrixMemoryLimit}) {
    ++count;
  }
  return count;
}
constexpr TRowForm kSampleRow = {3, "(x,y,z)", "sample", MostSamples()};

struct TOptions {
  std::string Samples;
  std::string At;
  std::optional<std::vector<double>> Grid;
  std::string Output = std::string(kStandardStream);
  int Decimals = 6;
  std::string Plot;
};

// ------------------------------------------------------------------------------------------------ samples

TList<TPoint3D> ReadSamples(const std::string& FileName) {
  TList<TPoint3D> samples;
  ReadRows(FileName, kSampleRow,
           [&](std::span<const double> Row) { samples.Add(TPoint3D::Create(Row[0], Row[1], Row[2])); });
  RequireRows(FileName, kSampleRow, samples.Count());
  return samples;
}

// Names the first two samples that have the same place, if any.
void RefuseSamePlaces(const std::string& FileName, const TList<TPoint3D>& Samples) {
  for (int j = 1; j < Samples.Count(); ++j) {
    for (int i = 0; i < j; ++i) {
      if (Samples[i].DistanceXY(Samples[j]) > TV4Interpolator::kSamePlace) continue;
      RaiseGeneralError(
          fmt::format("{}, line {}: found a second sample at the place {:g},{:g} of line {}, expected another place. "
                      "Remove one of them.",
                      InputName(FileName), LineOf(j), Samples[j].X, Samples[j].Y, LineOf(i)));
    }
  }
}

TV4Interpolator SurfaceThrough(const std::string& FileName, const TList<TPoint3D>& Samples) {
  TV4Interpolator surface;
  surface.AddPointList(Samples);
  const TProgress progress("laying the surface");
  try {
    surface.CalcWeights();
  } catch (const TGeneralError& Error) {
    RefuseSamePlaces(FileName, Samples);
    RaiseGeneralError(InputName(FileName) + ": " + Error.what());
  }
  return surface;
}

// The surface meets its samples, unless the system of equations is too near to a singular one: that of a single sample is, and so
// is that of two samples 2.718 apart.
void WarnOfMisses(const std::string& FileName, const TV4Interpolator& Surface) {
  constexpr double kVisible = 1e-6;  // of the largest height
  const TList<TPoint3D>& samples = Surface.SrcPt();
  std::vector<TPoint2D> places;
  for (const TPoint3D& sample : samples) places.push_back(TPoint2D::Create(sample.X, sample.Y));
  std::vector<double> heights(places.size());
  Surface.CalcZ(places, heights);
  double largestHeight = 0.0;
  double largestMiss = 0.0;
  int missed = 0;
  for (int i = 0; i < samples.Count(); ++i) {
    largestHeight = std::max(largestHeight, std::fabs(samples[i].Z));
    const double miss = std::fabs(heights[static_cast<std::size_t>(i)] - samples[i].Z);
    if (miss <= largestMiss) continue;
    largestMiss = miss;
    missed = i;
  }
  if (largestMiss <= kVisible * largestHeight) return;
  Warn(fmt::format(
      "{}, line {}: the surface misses this sample by {:.3g}; with more samples, or with x and y in another unit, "
      "it may not",
      InputName(FileName), LineOf(missed), largestMiss));
}

// ------------------------------------------------------------------------------------------------ heights

// Writes x,y,z for places that come one by one; many of them are computed at a time.
class THeightOutput {
 public:
  THeightOutput(const TV4Interpolator& Surface, const TOptions& Options)
      : FSurface(Surface), FOutput(Options.Output, Options.Decimals) {}

  void Add(const TPoint2D& Place) {
    FPlaces.push_back(Place);
    if (FPlaces.size() == kBlock) Flush();
  }

  void Commit() {
    Flush();
    FOutput.Commit();
  }

 private:
  static constexpr std::size_t kBlock = 4096;

  void Flush() {
    FHeights.resize(FPlaces.size());
    FSurface.CalcZ(FPlaces, FHeights);
    for (std::size_t i = 0; i < FPlaces.size(); ++i) FOutput.Add(std::array{FPlaces[i].X, FPlaces[i].Y, FHeights[i]});
    FPlaces.clear();
  }

  const TV4Interpolator& FSurface;
  TRowOutput FOutput;
  std::vector<TPoint2D> FPlaces;
  std::vector<double> FHeights;
};

void WriteAtPlaces(const TV4Interpolator& Surface, const TOptions& Options) {
  THeightOutput output(Surface, Options);
  std::int64_t count = 0;
  ReadRows(Options.At, AnyNumberOf(kPlaceRow), [&](std::span<const double> Row) {
    output.Add(TPoint2D::Create(Row[0], Row[1]));
    ++count;
  });
  RequireRows(Options.At, kPlaceRow, count);
  output.Commit();
}

void WriteOnGrid(const TV4Interpolator& Surface, const TSurfaceGrid& Grid, const TOptions& Options) {
  TProgress progress("computing heights", Grid.Rows);
  THeightOutput output(Surface, Options);
  for (std::int64_t row = 0; row < Grid.Rows; ++row) {
    for (const TPoint2D& place : Grid.RowPlaces(row)) output.Add(place);
    progress.Advance(row);
  }
  output.Commit();
}

void Draw(const TV4Interpolator& Surface, const TOptions& Options) {
  constexpr std::int64_t kDrawn = 150;  // places in each direction
  constexpr double kRim = 0.03;         // of the longer side
  TSurfacePicture picture;
  picture.Title = fmt::format("{}: a surface through {} samples", InputName(Options.Samples), Surface.SrcPt().Count());
  picture.Grid = TSurfaceGrid::Over(Surface.SrcPt(), kDrawn, kDrawn).Widened(kRim);
  picture.Samples = Surface.SrcPt();
  TProgress progress("drawing", kDrawn);
  for (std::int64_t row = 0; row < kDrawn; ++row) {
    std::vector<double> heights(static_cast<std::size_t>(kDrawn));
    Surface.CalcZ(picture.Grid.RowPlaces(row), heights);
    picture.Heights.insert(picture.Heights.end(), heights.begin(), heights.end());
    progress.Advance(row);
  }
  SaveSurfacePicture(picture, Options.Plot);
}

// ------------------------------------------------------------------------------------------------ options

void CheckGrid(const std::vector<double>& Grid) {
  const auto isCount = [](double Value) {
    return Value >= 2.0 && Value <= static_cast<double>(kMaxPoses) && Value == std::floor(Value);
  };
  if (isCount(Grid[0]) && isCount(Grid[1]) && Grid[0] * Grid[1] <= static_cast<double>(kMaxPoses)) return;
  throw TUsageError(
      fmt::format("--grid: found '{:g},{:g}', expected two whole numbers from 2 upwards, together at most {} places",
                  Grid[0], Grid[1], kMaxPoses));
}

void CheckUsage(const TOptions& Options) {
  if (Options.At.empty() == !Options.Grid) throw TUsageError("give either --at or --grid");
  if (Options.Grid) CheckGrid(*Options.Grid);
  if (Options.Samples == kStandardStream && Options.At == kStandardStream) {
    throw TUsageError("only one of SAMPLES and --at can be standard input");
  }
}

void Run(const TOptions& Options) {
  CheckUsage(Options);
  const TV4Interpolator surface = SurfaceThrough(Options.Samples, ReadSamples(Options.Samples));
  WarnOfMisses(Options.Samples, surface);
  if (!Options.Plot.empty()) Draw(surface, Options);
  if (!Options.Grid) return WriteAtPlaces(surface, Options);
  const auto columns = static_cast<std::int64_t>((*Options.Grid)[0]);
  const auto rows = static_cast<std::int64_t>((*Options.Grid)[1]);
  WriteOnGrid(surface, TSurfaceGrid::Over(surface.SrcPt(), columns, rows), Options);
}

}  // namespace

void AddSurfaceCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command = AddCommand(Program, "surface", "Lay a smooth surface through scattered heights", kFooter,
                                 [options] { Run(*options); });
  AddFile(command, "SAMPLES", options->Samples, "The heights, one x,y,z per line; - is standard input");
  AddText(command, "--at", "FILE", options->At, "The places, one x,y per line; - is standard input");
  AddNumbers(command, "--grid", "NX,NY", 2, options->Grid, "NX by NY places over the box of the samples");
  AddOutput(command, options->Output);
  AddDecimals(command, options->Decimals);
  AddPlot(command, options->Plot);
}

}  // namespace ZORBase::Tool
