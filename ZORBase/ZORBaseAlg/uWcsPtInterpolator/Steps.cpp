#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator/Steps.h>

#include <ZORBase/common/BaseServices/NumberRow.h>

#include <algorithm>
#include <cmath>
#include <limits>

namespace ZORBase {
namespace {

constexpr int kMessageDecimals = 6;

}

void RequireFinite(std::span<const double> Values, std::string_view Place) {
  if (std::all_of(Values.begin(), Values.end(), [](double Value) { return std::isfinite(Value); })) return;
  std::string row;
  AppendNumberRow(row, Values, kMessageDecimals, nf1033);
  RaiseGeneralError(std::string(Place) + " is not finite: " + Shortened(row));
}

void RequireLimit(std::string_view Name, double Value, double Used, std::string_view Place) {
  if (std::isfinite(Value) && Used > 0.0) return;
  RaiseGeneralError(Format1033("%s: %s must be finite and above 0, not %.6f", Place, Name, Value));
}

int StepCount(double Distance, double MaxDis, double Angle, double MaxRad, std::string_view Place) {
  constexpr int kMaxCount = std::numeric_limits<int>::max();
  const double steps = std::max(std::ceil(std::max(Distance / MaxDis, Angle / MaxRad)), 1.0);
  if (steps <= kMaxCount) return static_cast<int>(steps);
  RaiseGeneralError(
      Format1033("%s: a move of %.6f with a turn of %.6f rad needs %.0f steps of at most %.6f and %.6f rad; at "
                 "most %d are possible",
                 Place, Distance, Angle, steps, MaxDis, MaxRad, kMaxCount));
}

double ClampedParam(double Param, std::string_view Place) {
  if (std::isnan(Param)) RaiseGeneralError(std::string(Place) + ": the parameter is not a number");
  return std::clamp(Param, 0.0, 1.0);
}

}  // namespace ZORBase
