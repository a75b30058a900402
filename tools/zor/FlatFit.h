// FlatFit: a plane in space, or a line in the plane, at right angles as close to points as it can be.
#pragma once

#include <zor/Report.h>
#include <zor/RowInput.h>

#include <string>
#include <vector>

namespace ZORBase::Tool {

/// Normal . point + Offset = 0, with a unit normal whose sign is free.
struct TFlatFit {
  std::vector<double> Normal;
  double Offset = 0.0;
  double Ratio = 0.0;          ///< how much wider the points spread along it than across it: the flatter, the larger
  double Rms = 0.0;            ///< of the distances from the points
  double Largest = 0.0;        ///< distance
  std::size_t LargestRow = 0;  ///< of that point
};

/// Fits a plane to rows of three numbers, a line to rows of two.
TFlatFit FitFlat(const TRowFile& Points);

/// Reads the points, fits and reports.
/// \param Name  what is fitted, "plane" or "line"; Form says how many numbers a point has, at least as many points are asked for.
/// \throws the general error that ReadRows raises, and one for too few points.
TReport FlatReport(const std::string& FileName, const TRowForm& Form, const std::string& Name);

}  // namespace ZORBase::Tool
