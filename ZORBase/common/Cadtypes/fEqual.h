#pragma once

namespace ZORBase {

/// Tolerant equality with an absolute tolerance.
/// \return |A - B| <= Eps; false when either is no number.
constexpr bool fEqual(double A, double B, double Eps) {
  const double difference = A - B;
  return (difference < 0.0 ? -difference : difference) <= Eps;
}

}  // namespace ZORBase
