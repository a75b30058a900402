// RisingZero: the place where a rising function crosses zero.
#pragma once

#include <cmath>
#include <limits>

namespace ZORBase {

/// Newton's iteration for the zero, between From and To, of a function that rises there; a step that leaves the bracket of what is
/// known halves it instead.
/// \param Start            the first place that is looked at, between From and To.
/// \param ValueAndSlopeAt  gives the value and the slope of the function at a place, as a pair or the like.
/// \return the zero, to about the distance of two doubles: the first place of value 0, or the one that the last step, which hardly
///         moved, leads to. Ends after 100 steps, whatever the function gives.
template <class TValueAndSlopeAt>
double ZeroOfRising(double From, double To, double Start, TValueAndSlopeAt&& ValueAndSlopeAt) {
  constexpr int kRounds = 100;
  double u = Start;
  for (int round = 0; round < kRounds; ++round) {
    const auto [value, slope] = ValueAndSlopeAt(u);
    if (value == 0.0) return u;
    (value < 0.0 ? From : To) = u;
    const double newton = u - value / slope;
    const double next = newton > From && newton < To ? newton : 0.5 * (From + To);
    if (std::fabs(next - u) <= std::numeric_limits<double>::epsilon() * std::fabs(u)) return next;
    u = next;
  }
  return u;
}

}  // namespace ZORBase
