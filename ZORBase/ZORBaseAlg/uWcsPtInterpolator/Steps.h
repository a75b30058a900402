// Steps: what the interpolators of this folder share. Internal.
#pragma once

#include <ZORBase/common/BaseServices/PointListFile.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <span>
#include <string>
#include <string_view>

namespace ZORBase {

/// A file of poses has this many decimals.
inline constexpr int kStepFileDecimals = 5;

/// \throws the general error "Place is not finite: Values" unless all of them are finite.
void RequireFinite(std::span<const double> Values, std::string_view Place);

/// \throws the general error unless the limit Value is finite and Used, the same in the unit of the steps, is above 0: an angle
///         so small that it has no radians is no limit either.
void RequireLimit(std::string_view Name, double Value, double Used, std::string_view Place);

/// \return the smallest number of steps, 1 at least, none of which is longer than MaxDis or turns further than MaxRad.
/// \throws the general error, naming Place and the numbers, when it does not fit a 32-bit count. Limits are positive.
int StepCount(double Distance, double MaxDis, double Angle, double MaxRad, std::string_view Place);

/// \return Param clamped to [0, 1]. \throws the general error when it is not a number.
double ClampedParam(double Param, std::string_view Place);

/// Gives every parameter's pose as At(Param) makes it.
/// \throws the general error, with no pose written, when there are not as many Poses as Params or one is not a number.
template <class TPose, class TAt>
void FillPoses(std::span<const double> Params, std::span<TPose> Poses, std::string_view Place, TAt&& At) {
  if (Params.size() != Poses.size()) {
    RaiseGeneralError(std::string(Place) + ": " + std::to_string(Params.size()) + " parameters, but places for " +
                      std::to_string(Poses.size()) + " poses");
  }
  for (const double param : Params) ClampedParam(param, Place);
  for (std::size_t i = 0; i < Params.size(); ++i) Poses[i] = At(Params[i]);
}

/// The pose numbers 0 to Count as a range; nothing is stored, so that a file of 2^31 poses needs no memory.
class TStepRange {
 public:
  class TIterator {
   public:
    explicit TIterator(std::int64_t Index) : FIndex(Index) {}
    int operator*() const { return static_cast<int>(FIndex); }
    TIterator& operator++() {
      ++FIndex;
      return *this;
    }
    bool operator!=(const TIterator& Other) const { return FIndex != Other.FIndex; }

   private:
    std::int64_t FIndex;
  };

  explicit TStepRange(int Count) : FCount(Count) {}
  TIterator begin() const { return TIterator(0); }
  TIterator end() const { return TIterator(std::int64_t{FCount} + 1); }

 private:
  int FCount;
};

}  // namespace ZORBase
