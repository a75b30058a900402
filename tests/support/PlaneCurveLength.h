// PlaneCurveLength: the length of a B-spline curve from its knots and control points, by nothing of the library.
//   PlaneCurveLength, SplineLength   of a plane curve, of one in any number of components
#pragma once

#include <ZORBase/common/Cadtypes/TPoint2D.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

namespace ZORBase::Test {

/// The integral of Function from From to To by Simpson's rule, halved until both halves together agree with the whole.
template <class TFunction>
long double AdaptiveSimpson(const TFunction& Function, long double From, long double To, long double Tolerance,
                            int Depth = 0) {
  constexpr int kDeepest = 60;
  const auto simpson = [&](long double A, long double B) {
    return (B - A) / 6 * (Function(A) + 4 * Function((A + B) / 2) + Function(B));
  };
  const long double middle = (From + To) / 2;
  const long double halves = simpson(From, middle) + simpson(middle, To);
  const long double error = halves - simpson(From, To);
  if (Depth == kDeepest || std::fabs(error) <= 15 * Tolerance) return halves + error / 15;
  return AdaptiveSimpson(Function, From, middle, Tolerance / 2, Depth + 1) +
         AdaptiveSimpson(Function, middle, To, Tolerance / 2, Depth + 1);
}

/// The length of the cubic curve in D components with the knots U and the control points P. Its derivative is the quadratic curve
/// with the control points 3 (P[i+1] - P[i]) / (U[i+4] - U[i+1]); de Boor's scheme evaluates it between two knots.
template <std::size_t D>
long double SplineLength(std::span<const double> U, std::span<const std::array<double, D>> P, long double Tolerance) {
  using TVector = std::array<long double, D>;
  std::vector<TVector> derivative(P.size() - 1);
  for (std::size_t i = 0; i + 1 < P.size(); ++i) {
    const long double factor = 3 / (static_cast<long double>(U[i + 4]) - U[i + 1]);
    for (std::size_t c = 0; c < D; ++c) {
      derivative[i][c] = factor * (static_cast<long double>(P[i + 1][c]) - P[i][c]);
    }
  }
  long double length = 0;
  for (std::size_t k = 3; k < P.size(); ++k) {
    const auto speed = [&](long double u) {
      std::array<TVector, 3> d = {derivative[k - 3], derivative[k - 2], derivative[k - 1]};
      for (std::size_t level = 1; level <= 2; ++level) {
        for (std::size_t i = 2; i >= level; --i) {
          const long double low = U[k - 2 + i];
          const long double high = U[k + 1 + i - level];
          const long double t = (u - low) / (high - low);
          for (std::size_t c = 0; c < D; ++c) d[i][c] = d[i - 1][c] + t * (d[i][c] - d[i - 1][c]);
        }
      }
      long double square = 0;
      for (const long double component : d[2]) square += component * component;
      return std::sqrt(square);
    };
    if (U[k] < U[k + 1]) length += AdaptiveSimpson(speed, U[k], U[k + 1], Tolerance);
  }
  return length;
}

/// That of a plane curve.
inline double PlaneCurveLength(std::span<const double> U, std::span<const TPoint2D> P, long double Tolerance) {
  std::vector<std::array<double, 2>> points;
  for (const TPoint2D& point : P) points.push_back({point.X, point.Y});
  return static_cast<double>(SplineLength<2>(U, points, Tolerance));
}

}  // namespace ZORBase::Test
