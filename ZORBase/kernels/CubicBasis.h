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
#include <type_traits>

namespace ZORBase {

/// Knots closer than this coincide.
inline constexpr double kSmallestKnotDistance = SmallestDoubleFrom(1e-6L);
/// Inside an interval that is at least so long they never do: its length is seen as a sum of two rounded parts.
inline constexpr double kSurelyWide = 1.000000001 * kSmallestKnotDistance;

// Coincident knots give 0/0 in the recursion. The term vanishes in the limit, so 0 is its value here, not a guard.
inline double SafeQuotient(double Denominator, double Numerator) {
  return std::fabs(Denominator) >= kSmallestKnotDistance ? Numerator / Denominator : 0.0;
}

/// Left[j] = u - U[i+1-j] and Right[j] = U[i+j] - u, j = 1..3, for the knot interval i.
struct TKnotDistances {
  double Left[4];
  double Right[4];

  /// U points to the knot i; the knots i-2 to i+3 exist.
  ZORBASE_INLINE static TKnotDistances Create(const double* U, double u) {
    return {{0.0, u - U[0], u - U[-1], u - U[-2]}, {0.0, U[1] - u, U[2] - u, U[3] - u}};
  }

  /// With knots that rise and u inside the interval no distance is negative, so that Right[1] + Left[1] is the smallest
  /// denominator of the recursion. When it is large enough, all are.
  bool IsWide() const { return Right[1] + Left[1] >= kSmallestKnotDistance; }
};

/// A quotient of the recursion. In a wide interval the denominator needs no test.
template <bool IsWide>
ZORBASE_INLINE double KnotQuotient(double Denominator, double Numerator) {
  return IsWide ? Numerator / Denominator : SafeQuotient(Denominator, Numerator);
}

/// Step(From), ..., Step(To), each with its number as a constant.
template <int From, int To, class TStep>
ZORBASE_INLINE void ForEach(TStep Step) {
  if constexpr (From <= To) {
    Step(std::integral_constant<int, From>());
    ForEach<From + 1, To>(Step);
  }
}

/// Gives the basis values with the indices i-3 to i in N[0..3].
/// IsWide: D.IsWide(), the knots rise and u is inside the interval; the values are the same either way.
template <bool IsWide>
ZORBASE_INLINE void BasisValues(const TKnotDistances& D, double* N) {
  N[0] = 1.0;
  ForEach<1, 3>([&](auto j) ZORBASE_INLINE_LAMBDA {
    double saved = 0.0;
    ForEach<0, j - 1>([&](auto r) ZORBASE_INLINE_LAMBDA {
      const double temp = KnotQuotient<IsWide>(D.Right[r + 1] + D.Left[j - r], N[r]);
      // What is added to 0 in a wide interval is never -0, and so stays as it is.
      N[r] = IsWide && r == 0 ? D.Right[r + 1] * temp : saved + D.Right[r + 1] * temp;
      saved = D.Left[j - r] * temp;
    });
    N[j] = saved;
  });
}

/// Gives the derivatives 0 to n of the basis functions of degree p, n <= p <= 3, in Ders[k][j], k = 0..n, j = 0..p: the two-table
/// scheme. ndu holds the basis functions in its upper triangle and the knot differences in its lower one.
template <bool IsWide, int p, int n>
ZORBASE_INLINE void BasisDerivatives(const TKnotDistances& D, std::array<std::array<double, 4>, 4>& Ders) {
  double ndu[4][4];
  ndu[0][0] = 1.0;
  ForEach<1, p>([&](auto j) ZORBASE_INLINE_LAMBDA {
    double saved = 0.0;
    ForEach<0, j - 1>([&](auto r) ZORBASE_INLINE_LAMBDA {
      ndu[j][r] = D.Right[r + 1] + D.Left[j - r];
      const double temp = KnotQuotient<IsWide>(ndu[j][r], ndu[r][j - 1]);
      ndu[r][j] = saved + D.Right[r + 1] * temp;
      saved = D.Left[j - r] * temp;
    });
    ndu[j][j] = saved;
  });
  ForEach<0, p>([&](auto j) ZORBASE_INLINE_LAMBDA { Ders[0][j] = ndu[j][p]; });
  ForEach<0, p>([&](auto r) ZORBASE_INLINE_LAMBDA {
    double a[2][4] = {{1.0}};
    double factor = p;  // p! / (p - k)!
    ForEach<1, n>([&](auto k) ZORBASE_INLINE_LAMBDA {
      constexpr int s1 = (k - 1) % 2;
      constexpr int s2 = k % 2;
      constexpr int rk = r - k;
      constexpr int pk = p - k;
      double d = 0.0;
      if constexpr (r >= k) {
        a[s2][0] = KnotQuotient<IsWide>(ndu[pk + 1][rk], a[s1][0]);
        d = a[s2][0] * ndu[rk][pk];
      }
      constexpr int j1 = rk < -1 ? -rk : 1;
      constexpr int j2 = pk < r - 1 ? p - r : k - 1;
      ForEach<j1, j2>([&](auto j) ZORBASE_INLINE_LAMBDA {
        a[s2][j] = KnotQuotient<IsWide>(ndu[pk + 1][rk + j], a[s1][j] - a[s1][j - 1]);
        d += a[s2][j] * ndu[rk + j][pk];
      });
      if constexpr (r <= pk) {
        a[s2][k] = -KnotQuotient<IsWide>(ndu[pk + 1][r], a[s1][k - 1]);
        d += a[s2][k] * ndu[r][pk];
      }
      Ders[k][r] = d * factor;
      factor *= pk;
    });
  });
}

}  // namespace ZORBase
