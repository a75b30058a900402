#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace ZORBase::Tool {

/// How a path is divided: by one of these.
struct TSpacing {
  std::optional<double> Step;         ///< above 0; the last step may be shorter
  std::optional<std::int64_t> Count;  ///< places from the start to the end, 2 or more
  std::vector<double> At;             ///< lengths from the start, and then the end
};

/// Lengths along a path, the last of them its end.
class TPathPlaces {
 public:
  /// \param Nouns  what is given at the places, for messages.
  /// \throws TUsageError for more than kMaxPoses places, and for a length that is not on the path.
  TPathPlaces(TSpacing Spacing, double Length, std::string_view Nouns);

  std::int64_t Count() const { return FBeforeEnd + 1; }
  double operator[](std::int64_t Index) const;

 private:
  void CountSteps(std::string_view Nouns);
  void CheckLengths();

  TSpacing FSpacing;
  double FLength;
  std::int64_t FBeforeEnd = 0;
};

}  // namespace ZORBase::Tool
