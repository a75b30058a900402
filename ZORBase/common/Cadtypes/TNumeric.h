#pragma once

#include <ZORBase/common/Export.h>

#include <array>
#include <cstddef>
#include <span>

namespace ZORBase {

/// A parameter interval from A to B; B may lie before A.
struct TGeInterval {
  double A = 0.0;    ///< where it begins
  double B = 0.0;    ///< where it ends
  double Tol = 0.0;  ///< kept for the callers; quadrature with a fixed number of points has no use for it

  /// The interval from A to B.
  static constexpr TGeInterval Create(double A, double B, double Tol) { return {A, B, Tol}; }
};

/// A node of a quadrature rule on [-1, 1] and its weight.
struct TGaussNode {
  double Place = 0.0;   ///< on [-1, 1]
  double Weight = 0.0;  ///< the weights of a rule sum to 2
};

/// Numerical integration.
struct ZORBASE_API TNumeric {
  /// The largest number of points of a Gauss-Legendre rule.
  static constexpr int kGaussPointLimit = 256;

  /// \return the integral of F over the interval with the N-point Gauss-Legendre rule, which is exact for polynomials of
  ///         degree 2N - 1; the sum runs over the nodes from A to B.
  /// \throws the general error for N outside 1..kGaussPointLimit.
  template <class TFunc>
  static double GaussQuadrature(TFunc&& F, const TGeInterval& Interval, int N) {
    const auto onEachPlace = [&F](std::span<const double> Places, std::span<double> Values) {
      for (std::size_t i = 0; i < Places.size(); ++i) Values[i] = F(Places[i]);
    };
    return GaussQuadratureOfSpan(onEachPlace, Interval, N);
  }

  /// The same integral, bit for bit, where F(Places, Values) fills in the values at all places of the interval at once.
  template <class TSpanFunc>
  static double GaussQuadratureOfSpan(TSpanFunc&& F, const TGeInterval& Interval, int N) {
    const std::span<const TGaussNode> rule = GaussLegendreRule(N);
    const auto count = static_cast<std::size_t>(N);  // that of the rule; where N is a constant, it is one, too
    const double half = (Interval.B - Interval.A) / 2.0;
    const double middle = (Interval.A + Interval.B) / 2.0;
    std::array<double, kGaussPointLimit> places;
    std::array<double, kGaussPointLimit> values;
    for (std::size_t i = 0; i < count; ++i) places[i] = middle + half * rule[i].Place;
    F(std::span<const double>(places.data(), count), std::span<double>(values.data(), count));
    double sum = 0.0;
    for (std::size_t i = 0; i < count; ++i) sum += rule[i].Weight * values[i];
    return half * sum;
  }

  /// \return the N nodes in rising order, their places exact to the last bit and their weights to a few; with 14 points the
  ///         weights are exact, too. A rule is computed at its first use and kept; from then
  ///         on the call allocates nothing and takes no lock.
  /// \throws the general error for N outside 1..kGaussPointLimit.
  static std::span<const TGaussNode> GaussLegendreRule(int N);
};

}  // namespace ZORBase
