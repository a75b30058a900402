// CubicBasis: the basis functions of a cubic B-spline in straight lines, every operation as the algorithms have it. Internal.
//   TKnotDistances     the distances of a parameter from the six knots around it
//   BasisValues        the four basis values
//   BasisDerivatives   them and their derivatives, for degrees up to 3
// Source: L. Piegl, W. Tiller, "The NURBS Book", 2nd edition, algorithms A2.2 and A2.3.
#pragma once

#include <ZORBase/common/BaseServices/Extended.h>
#include <ZORBase/kernels/TargetClones.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <utility>

namespace ZORBase {

/// Knots closer than this coincide.
inline constexpr double kSmallestKnotDistance = SmallestDoubleFrom(1e-6L);

// Coincident knots give 0/0 in the recursion. The term vanishes in the limit, so 0 is its value here, not a guard.
inline double SafeQuotient(double Denominator, double Numerator) {
  return std::fabs(Denominator) >= kSmallestKnotDistance ? Numerator / Denominator : 0.0;
}

/// Left[j] = u - U[i+1-j] and Right[j] = U[i+j] - u, j = 1..3, for the knot interval i.
struct TKnotDistances {
  std::array<double, 4> Left;
  std::array<double, 4> Right;

  /// U points to the knot i; the knots i-2 to i+3 exist.
  ZORBASE_INLINE TKnotDistances(const double* U, double u)
      : Left{0.0, u - U[0], u - U[-1], u - U[-2]}, Right{0.0, U[1] - u, U[2] - u, U[3] - u} {}
  constexpr TKnotDistances(const std::array<double, 4>& ALeft, const std::array<double, 4>& ARight)
      : Left(ALeft), Right(ARight) {}

  /// With knots that rise and u inside the interval no distance is negative, so that Right[1] + Left[1] is the smallest
  /// denominator of the recursion. When it is large enough, all are.
  bool IsWide() const { return Right[1] + Left[1] >= kSmallestKnotDistance; }
};

/// A quotient of the recursion. In a wide interval the denominator needs no test.
template <bool IsWide>
ZORBASE_INLINE double KnotQuotient(double Denominator, double Numerator) {
  return IsWide ? Numerator / Denominator : SafeQuotient(Denominator, Numerator);
}

/// Gives the basis values with the indices i-3 to i in N[0..3].
/// IsWide: D.IsWide(), the knots rise and u is inside the interval; the values are the same either way.
template <bool IsWide>
ZORBASE_INLINE void BasisValues(const TKnotDistances& D, double* N) {
  const auto& [left, right] = D;
  N[0] = 1.0;
  const auto raise = [&](std::size_t j) {
    double saved = 0.0;
    for (std::size_t r = 0; r < j; ++r) {
      const double temp = KnotQuotient<IsWide>(right[r + 1] + left[j - r], N[r]);
      // What is added to 0 in a wide interval is never -0, and so stays as it is.
      N[r] = IsWide && r == 0 ? right[r + 1] * temp : saved + right[r + 1] * temp;
      saved = left[j - r] * temp;
    }
    N[j] = saved;
  };
  raise(1);
  raise(2);
  raise(3);
}

/// Gives the derivatives 0 to n of the basis functions of degree p, n <= p <= 3, in Ders[k][j], k = 0..n, j = 0..p: the two-table
/// scheme. ndu holds the basis functions in its upper triangle and the knot differences in its lower one. With constant p
/// and n it unrolls to straight lines.
template <bool IsWide>
ZORBASE_INLINE void BasisDerivatives(const TKnotDistances& D, int p, int n, std::array<std::array<double, 4>, 4>& Ders) {
  const auto& [left, right] = D;
  double ndu[4][4] = {};
  ndu[0][0] = 1.0;
  ZORBASE_UNROLL
  for (int j = 1; j <= p; ++j) {
    double saved = 0.0;
    ZORBASE_UNROLL
    for (int r = 0; r < j; ++r) {
      ndu[j][r] = right[static_cast<std::size_t>(r + 1)] + left[static_cast<std::size_t>(j - r)];
      const double temp = KnotQuotient<IsWide>(ndu[j][r], ndu[r][j - 1]);
      ndu[r][j] = saved + right[static_cast<std::size_t>(r + 1)] * temp;
      saved = left[static_cast<std::size_t>(j - r)] * temp;
    }
    ndu[j][j] = saved;
  }
  ZORBASE_UNROLL
  for (int j = 0; j <= p; ++j) Ders[0][static_cast<std::size_t>(j)] = ndu[j][p];
  ZORBASE_UNROLL
  for (int r = 0; r <= p; ++r) {
    double a[2][4] = {{1.0}};
    double factor = p;  // p! / (p - k)!
    ZORBASE_UNROLL
    for (int k = 1; k <= n; ++k) {
      const int s1 = (k - 1) % 2;
      const int s2 = k % 2;
      const int rk = r - k;
      const int pk = p - k;
      double d = 0.0;
      if (r >= k) {
        a[s2][0] = KnotQuotient<IsWide>(ndu[pk + 1][rk], a[s1][0]);
        d = a[s2][0] * ndu[rk][pk];
      }
      const int j1 = rk < -1 ? -rk : 1;
      const int j2 = pk < r - 1 ? p - r : k - 1;
      ZORBASE_UNROLL
      for (int j = j1; j <= j2; ++j) {
        a[s2][j] = KnotQuotient<IsWide>(ndu[pk + 1][rk + j], a[s1][j] - a[s1][j - 1]);
        d += a[s2][j] * ndu[rk + j][pk];
      }
      if (r <= pk) {
        a[s2][k] = -KnotQuotient<IsWide>(ndu[pk + 1][r], a[s1][k - 1]);
        d += a[s2][k] * ndu[r][pk];
      }
      Ders[static_cast<std::size_t>(k)][static_cast<std::size_t>(r)] = d * factor;
      factor *= pk;
    }
  }
}

}  // namespace ZORBase
