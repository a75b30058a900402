// PlaneCurveLength: the length of a plane B-spline curve from its knots and control points, by nothing of the library.
#pragma once

#include <ZORBase/common/Cadtypes/TPoint2D.h>

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

/// The length of the cubic curve with the knots U and the control points P. Its derivative is the quadratic curve with the
/// control points 3 (P[i+1] - P[i]) / (U[i+4] - U[i+1]); de Boor's scheme evaluates it between two knots.
inline double PlaneCurveLength(std::span<const double> U, std::span<const TPoint2D> P, long double Tolerance) {
  struct TVector {
    long double X;
    long double Y;
  };
  std::vector<TVector> derivative;
  for (std::size_t i = 0; i + 1 < P.size(); ++i) {
    const long double factor = 3 / (static_cast<long double>(U[i + 4]) - U[i + 1]);
    derivative.push_back({factor * (static_cast<long double>(P[i + 1].X) - P[i].X),
                          factor * (static_cast<long double>(P[i + 1].Y) - P[i].Y)});
  }
  long double length = 0;
  for (std::size_t k = 3; k < P.size(); ++k) {
    const auto speed = [&](long double u) {
      std::vector<TVector> d(derivative.begin() + static_cast<std::ptrdiff_t>(k) - 3,
                             derivative.begin() + static_cast<std::ptrdiff_t>(k));
      for (std::size_t level = 1; level <= 2; ++level) {
        for (std::size_t i = 2; i >= level; --i) {
          const long double low = U[k - 2 + i];
          const long double high = U[k + 1 + i - level];
          const long double t = (u - low) / (high - low);
          d[i] = {d[i - 1].X + t * (d[i].X - d[i - 1].X), d[i - 1].Y + t * (d[i].Y - d[i - 1].Y)};
        }
      }
      return std::sqrt(d[2].X * d[2].X + d[2].Y * d[2].Y);
    };
    if (U[k] < U[k + 1]) length += AdaptiveSimpson(speed, U[k], U[k + 1], Tolerance);
  }
  return static_cast<double>(length);
}

}  // namespace ZORBase::Test
