#include <zor/FlatFit.h>

#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <ZORBase/common/uZORCommon.h>
#include <fmt/format.h>
#include <zor/Progress.h>

#include <array>
#include <cmath>
#include <string_view>

namespace ZORBase::Tool {
namespace {

constexpr std::array<std::string_view, 3> kAxes = {"x", "y", "z"};

std::vector<double> Centroid(const TRowFile& Points) {
  std::vector<double> centroid(Points.Columns);
  for (std::size_t i = 0; i < Points.Count(); ++i) {
    for (std::size_t j = 0; j < Points.Columns; ++j) centroid[j] += Points[i][j];
  }
  for (double& coordinate : centroid) coordinate /= static_cast<double>(Points.Count());
  return centroid;
}

// The distances from the points, and the sums of squares across and along. The centroid lies on what is fitted: taken from there,
// a distance does not drown in large coordinates.
struct TSquares {
  double Across = 0.0;
  double All = 0.0;
};

TSquares MeasureDistances(const TRowFile& Points, TFlatFit& Fit) {
  const std::vector<double> centroid = Centroid(Points);
  TSquares squares;
  for (std::size_t i = 0; i < Points.Count(); ++i) {
    double distance = 0.0;
    for (std::size_t j = 0; j < Points.Columns; ++j) {
      const double fromCentroid = Points[i][j] - centroid[j];
      distance += Fit.Normal[j] * fromCentroid;
      squares.All += fromCentroid * fromCentroid;
    }
    squares.Across += distance * distance;
    if (std::fabs(distance) <= Fit.Largest) continue;
    Fit.Largest = std::fabs(distance);
    Fit.LargestRow = i;
  }
  Fit.Rms = std::sqrt(squares.Across / static_cast<double>(Points.Count()));
  return squares;
}

}  // namespace

TFlatFit FitFlat(const TRowFile& Points) {
  const TDoubleList list{std::span<const double>(Points.Numbers)};
  TFlatFit fit;
  fit.Normal.resize(Points.Columns);
  if (Points.Columns == kAxes.size()) {
    FitPlaneUsingSvd(&list, fit.Normal[0], fit.Normal[1], fit.Normal[2], fit.Offset, fit.Ratio);
    MeasureDistances(Points, fit);
  } else {
    FitLineUsingSvd(&list, fit.Normal[0], fit.Normal[1], fit.Offset);
    const TSquares squares = MeasureDistances(Points, fit);
    constexpr double kUsualFloor = 0.0;
    fit.Ratio =
        SafeDiv(std::sqrt(std::fmax(squares.All - squares.Across, 0.0)), std::sqrt(squares.Across), kUsualFloor);
  }
  return fit;
}

TReport FlatReport(const std::string& FileName, const TRowForm& Form, const std::string& Name) {
  const TRowFile points = ReadRowFile(FileName, Form);
  if (points.Count() < Form.Count) {
    RaiseGeneralError(fmt::format("{}: found {} point{}, expected at least {} for a {}.", points.Name, points.Count(),
                                  points.Count() == 1 ? "" : "s", Form.Count, Name));
  }
  TFlatFit fit;
  {
    const TProgress progress("fitting the " + Name);
    fit = FitFlat(points);
  }
  TReport report;
  report.Section("", "");
  report.Fact("file", "file", points.Name);
  report.Fact("points", "points", static_cast<std::int64_t>(points.Count()));
  report.Section("normal", "Normal");
  for (std::size_t i = 0; i < fit.Normal.size(); ++i) {
    report.Fact(std::string(kAxes[i]), std::string(kAxes[i]), fit.Normal[i]);
  }
  report.Section("", "Normal . point + offset = 0");
  report.Fact("offset", "offset", fit.Offset);
  report.Fact("ratio", "ratio", fit.Ratio);
  report.Section("distances", "Distances from the points", {{"distance", "distance"}, {"line", "at"}});
  report.Fact("rms", "root mean square", fit.Rms);
  const int line = LineOf(static_cast<int>(fit.LargestRow));
  report.Row("largest", "largest", {fit.Largest, TLines{line, line}});
  constexpr double kHardlyFlat = 2.0;
  if (fit.Ratio < kHardlyFlat) {
    report.Warning(
        fmt::format("no {} stands out: the points spread {:.3g} times as far along it as across it. Are they "
                    "in the same unit in all columns?",
                    Name, fit.Ratio));
  }
  return report;
}

}  // namespace ZORBase::Tool
