// BezierSpeed (internal): the speed of a cubic Bezier segment.
//   TBezierTerms   what it is made of, formed once for a segment
//   BezierSpeed    at one parameter
//   BezierSpeeds   at many, side by side, with the same bits
#pragma once

#include <ZORBase/kernels/TargetClones.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <span>

namespace ZORBase {

/// The derivative of a coordinate with the control values a, b, c, d is t (t Cubic + 6a - 12b + 6c) - 3a + 3b, where Cubic is
/// -3a + 9b - 9c + 3d. Every operation rounds once, from left to right as written; the products have no t in them.
struct TBezierTerms {
  static constexpr std::size_t kMaxCoordinates = 44;
  using TRow = std::array<double, kMaxCoordinates>;

  TRow Cubic, A6, B12, C6, A3, B3;
  std::size_t Count;  ///< coordinates

  /// The terms of the first Coordinates values of the four rows.
  TBezierTerms(const TRow& a, const TRow& b, const TRow& c, const TRow& d, std::size_t Coordinates)
      : Count(Coordinates) {
    for (std::size_t i = 0; i < Count; ++i) {
      Cubic[i] = -3.0 * a[i] + 9.0 * b[i] - 9.0 * c[i] + 3.0 * d[i];
      A6[i] = 6.0 * a[i];
      B12[i] = 12.0 * b[i];
      C6[i] = 6.0 * c[i];
      A3[i] = 3.0 * a[i];
      B3[i] = 3.0 * b[i];
    }
  }

  /// The square of the derivative of the coordinate i.
  ZORBASE_INLINE double SquareAt(double t, std::size_t i) const {
    const double derivative = t * (t * Cubic[i] + A6[i] - B12[i] + C6[i]) - A3[i] + B3[i];
    return derivative * derivative;
  }
};

/// \return the root of the sum of the squares, in the order of the coordinates.
inline double BezierSpeed(const TBezierTerms& Terms, double t) {
  double sum = 0.0;
  for (std::size_t i = 0; i < Terms.Count; ++i) sum += Terms.SquareAt(t, i);
  return std::sqrt(sum);
}

/// So many speeds are worked out side by side.
inline constexpr std::size_t kSpeedLanes = 16;

using TSpeedLanes = std::array<double, kSpeedLanes>;

/// Gives BezierSpeed(Terms, Params[k]) in Speeds[k], bit for bit.
void BezierSpeeds(const TBezierTerms& Terms, const TSpeedLanes& Params, TSpeedLanes& Speeds);

}  // namespace ZORBase
