// SignalPicture: lines over time, or over frequency.
#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace ZORBase::Tool {

/// A line of the picture, thinned out as it grows: however many points are added, it holds at most kMostPoints, evenly spread
/// over what was added.
class TSignalLine {
 public:
  static constexpr std::size_t kMostPoints = 20'000;

  explicit TSignalLine(std::string Name) : FName(std::move(Name)) {}

  void Add(double X, double Y);

  const std::string& Name() const { return FName; }

  struct TPlace {
    double X = 0.0;
    double Y = 0.0;
  };
  std::span<const TPlace> Places() const { return FPlaces; }

 private:
  std::string FName;
  std::vector<TPlace> FPlaces;
  std::size_t FAdded = 0;
  std::size_t FStride = 1;  // every which place is kept
};

struct TSignalPicture {
  std::string Title;
  std::string XTitle;
  std::string YTitle;
  std::vector<TSignalLine> Lines;
};

/// \throws the general error that SavePlot raises.
void SaveSignalPicture(const TSignalPicture& Picture, const std::string& FileName);

}  // namespace ZORBase::Tool
