// PlainCurve: the curve through poses, or points of the plane, in its plainest form, formula by formula: a span search and a basis
// evaluation for every sample, one bisection for every look-up, sums and products of components in extended precision. Slow on
// purpose; the library has to give the same bits.
//   TPlainBasis   knots: FindSpan, BasicFuns, DersBasciFuns
//   TPlainTable   samples of arc length and parameter: GetUByS, GetSByU
//   TPlainCurve   knots, control points and table: EvalPoint, CurveDerivsAlg1, InitLengthByUArray
//   PlainFit      the curve through a list of poses or points
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <type_traits>

namespace ZORBase::Test {

// ---------------------------------------------------------------------------------------------- points

/// Six components are worked on in extended precision and stored as doubles, two in double.
template <std::size_t Size>
using TPlainPoint = std::array<double, Size>;
using TPlainPose = TPlainPoint<6>;
template <std::size_t Size>
using TPlainNumber = std::conditional_t<Size == 6, long double, double>;

template <std::size_t Size>
TPlainPoint<Size> PlainSum(const TPlainPoint<Size>& P, const TPlainPoint<Size>& Q) {
  TPlainPoint<Size> sum{};
  for (std::size_t i = 0; i < Size; ++i) sum[i] = static_cast<double>(static_cast<TPlainNumber<Size>>(P[i]) + Q[i]);
  return sum;
}

template <std::size_t Size>
TPlainPoint<Size> PlainDifference(const TPlainPoint<Size>& P, const TPlainPoint<Size>& Q) {
  TPlainPoint<Size> difference{};
  for (std::size_t i = 0; i < Size; ++i) {
    difference[i] = static_cast<double>(static_cast<TPlainNumber<Size>>(P[i]) - Q[i]);
  }
  return difference;
}

template <std::size_t Size>
TPlainPoint<Size> PlainProduct(double S, const TPlainPoint<Size>& P) {
  TPlainPoint<Size> product{};
  for (std::size_t i = 0; i < Size; ++i) product[i] = static_cast<double>(static_cast<TPlainNumber<Size>>(P[i]) * S);
  return product;
}

/// The reciprocal is rounded first, then every component is multiplied.
inline TPlainPose PlainQuotient(const TPlainPose& P, double S) {
  const double reciprocal = 1.0 / S;
  return PlainProduct(reciprocal, P);
}

inline TPlainPoint<2> PlainQuotient(const TPlainPoint<2>& P, double S) { return {P[0] / S, P[1] / S}; }

template <std::size_t Size>
double PlainLength(const TPlainPoint<Size>& P) {
  TPlainNumber<Size> sum = 0;
  for (const double item : P) sum += static_cast<TPlainNumber<Size>>(item) * item;
  const auto squared = static_cast<double>(sum);
  return std::sqrt(squared);
}

template <std::size_t Size>
double PlainDistance(const TPlainPoint<Size>& P, const TPlainPoint<Size>& Q) {
  return PlainLength(PlainDifference(P, Q));
}

template <std::size_t Size>
TPlainPoint<Size> PlainNormal(TPlainPoint<Size> P) {
  const double length = PlainLength(P);
  if (length <= (Size == 6 ? 1e-8 : 0)) return {};
  for (double& item : P) item /= length;
  return P;
}

// ---------------------------------------------------------------------------------------------- basis

inline double PlainSafeQuotient(double Denominator, double Numerator) {
  return std::fabs(static_cast<long double>(Denominator)) >= 1e-6L ? Numerator / Denominator : 0.0;
}

struct TPlainBasis {
  TDoubleList U;

  /// \throws the general error where the bisection does not end, and where it leaves the knots.
  int FindSpan(double u) const {
    const int m = U.Count();
    if (u < U[0]) return 0;
    if (u >= U[m - 1]) return m - 5;
    int low = 3;
    int high = m - 4;
    int mid = (low + high) / 2;
    for (int steps = 0; u < U[mid] || u >= U[mid + 1]; ++steps) {
      if (steps == 100) RaiseGeneralError("the bisection does not end");
      if (u < U[mid]) {
        high = mid;
      } else {
        low = mid;
      }
      mid = (low + high) / 2;
    }
    return mid;
  }

  bool BasicFuns(int i, double u, double (&N)[4]) const {
    if (i < 2 || i > U.Count()) return false;
    double left[4] = {};
    double right[4] = {};
    N[0] = 1.0;
    for (int j = 1; j <= 3; ++j) {
      left[j] = u - U[i + 1 - j];
      right[j] = U[i + j] - u;
      double saved = 0;
      for (int r = 0; r <= j - 1; ++r) {
        const double temp = PlainSafeQuotient(right[r + 1] + left[j - r], N[r]);
        N[r] = saved + right[r + 1] * temp;
        saved = left[j - r] * temp;
      }
      N[j] = saved;
    }
    return true;
  }

  void DersBasciFuns(int idx, double u, int p, int n, double (&ders)[4][4]) const {
    double left[4] = {};
    double right[4] = {};
    double ndu[4][4] = {};
    double a[2][4] = {};
    ndu[0][0] = 1;
    for (int j = 1; j <= p; ++j) {
      left[j] = u - U[idx + 1 - j];
      right[j] = U[idx + j] - u;
      double saved = 0;
      for (int r = 0; r <= j - 1; ++r) {
        ndu[j][r] = right[r + 1] + left[j - r];
        const double temp = PlainSafeQuotient(ndu[j][r], ndu[r][j - 1]);
        ndu[r][j] = saved + right[r + 1] * temp;
        saved = left[j - r] * temp;
      }
      ndu[j][j] = saved;
    }
    for (int j = 0; j <= p; ++j) ders[0][j] = ndu[j][p];
    for (int r = 0; r <= p; ++r) {
      int s1 = 0;
      int s2 = 1;
      a[0][0] = 1;
      for (int k = 1; k <= n; ++k) {
        double d = 0;
        const int rk = r - k;
        const int pk = p - k;
        if (r >= k) {
          a[s2][0] = PlainSafeQuotient(ndu[pk + 1][rk], a[s1][0]);
          d = a[s2][0] * ndu[rk][pk];
        }
        const int j1 = rk < -1 ? -rk : 1;
        const int j2 = pk < r - 1 ? p - r : k - 1;
        for (int j = j1; j <= j2; ++j) {
          a[s2][j] = PlainSafeQuotient(ndu[pk + 1][rk + j], a[s1][j] - a[s1][j - 1]);
          d = d + a[s2][j] * ndu[rk + j][pk];
        }
        if (r <= pk) {
          a[s2][k] = -PlainSafeQuotient(ndu[pk + 1][r], a[s1][k - 1]);
          d = d + a[s2][k] * ndu[r][pk];
        }
        ders[k][r] = d;
        std::swap(s1, s2);
      }
    }
    double f = p;
    for (int k = 1; k <= n; ++k) {
      for (int j = 0; j <= p; ++j) ders[k][j] = ders[k][j] * f;
      f = f * (p - k);
    }
  }
};

// ---------------------------------------------------------------------------------------------- arc-length table

template <std::size_t Size>
struct TPlainRowOf {
  double S = 0;
  double u = 0;
  TPlainPoint<Size> P{};
};

template <std::size_t Size>
struct TPlainTableOf {
  using TPlainRow = TPlainRowOf<Size>;
  TList<TPlainRow> Rows;

  double GetUByS(double S) const { return LookUp(&TPlainRow::S, &TPlainRow::u, S); }
  double GetSByU(double u) const { return LookUp(&TPlainRow::u, &TPlainRow::S, u); }

 private:
  using TField = double TPlainRow::*;

  double LookUp(TField Key, TField Value, double X) const {
    int idx = 0;
    return BinaryFind(Key, X, idx) ? CalcuHermite(Key, Value, X, idx) : Rows[idx].*Value;
  }

  bool BinaryFind(TField Key, double X, int& idx) const {
    constexpr long double epsilon = 1e-7L;
    idx = 0;
    if (Rows.First().*Key + epsilon > X) return false;
    if (Rows.Last().*Key - epsilon < X) {
      idx = Rows.Count() - 1;
      return false;
    }
    int lo = 0;
    int hi = Rows.Count() - 1;
    while (hi - lo > 1) {
      const int mid = static_cast<int>(std::trunc((hi + lo) / 2.0));
      if (std::fabs(static_cast<long double>(Rows[mid].*Key) - X) < epsilon) {
        idx = mid;
        return false;
      }
      if (Rows[mid].*Key >= X) {
        hi = mid;
      } else {
        lo = mid;
      }
    }
    idx = lo;
    return true;
  }

  static double Divide(double Numerator, double Denominator) {
    if (Denominator == 0) RaiseGeneralError("CalcuHermiteS: The dividend is 0");
    return Numerator / Denominator;
  }

  double CalcuHermite(TField Key, TField Value, double X, int i) const {
    const auto x = [&](int Row) { return Rows[Row].*Key; };
    const auto y = [&](int Row) { return Rows[Row].*Value; };
    const double m0 = i == 0 ? Divide(y(1) - y(0), x(1) - x(0)) : Divide(y(i + 1) - y(i - 1), x(i + 1) - x(i - 1));
    const int j = i == Rows.Count() - 2 ? i + 1 : i + 2;
    const double m1 = Divide(y(j) - y(i), x(j) - x(i));
    const double h = x(i + 1) - x(i);
    const double d0 = X - x(i);
    const double d1 = X - x(i + 1);
    const double q0 = Divide(d0, h);
    const double q1 = Divide(d1, h);
    return (q1 * q1) * (2 * d0 / h + 1) * y(i) + (q0 * q0) * (1 - 2 * d1 / h) * y(i + 1) + (q1 * q1) * d0 * m0 +
           (q0 * q0) * d1 * m1;
  }
};

// ---------------------------------------------------------------------------------------------- curve

template <std::size_t Size>
struct TPlainCurveOf {
  using TPoint = TPlainPoint<Size>;
  TPlainBasis Basis;
  TList<TPoint> P;
  TPlainTableOf<Size> Table;

  TPoint EvalPoint(double param) const {
    if (param >= 1.0) return P.Last();
    if (!(param > 0)) return P.First();
    const int span = Basis.FindSpan(param);
    double N[4] = {};
    if (!Basis.BasicFuns(span, param, N)) RaiseGeneralError("no basis values");
    TPoint result{};
    for (int r = 0; r <= 3; ++r) {
      const int idx = span - 3 + r;
      if (0 <= idx && idx < P.Count()) result = PlainSum(result, PlainProduct(N[r], P[idx]));
    }
    return result;
  }

  std::array<TPoint, 4> CurveDerivsAlg1(double u) const {
    if (u < 0) u = 0;
    if (u >= 1) u = 1;
    const int span = Basis.FindSpan(u);
    double nders[4][4] = {};
    Basis.DersBasciFuns(span, u, 3, 3, nders);
    std::array<TPoint, 4> CK{};
    for (int k = 0; k <= 3; ++k) {
      TPoint& result = CK[static_cast<std::size_t>(k)];
      for (int j = 0; j <= 3; ++j) {
        const int idx = span - 3 + j;
        const TPoint point = 0 <= idx && idx < P.Count() ? P[idx] : TPoint{};
        result = PlainSum(result, PlainProduct(nders[k][j], point));
      }
    }
    return CK;
  }

  void InitLengthByUArray() {
    Table.Rows.Clear();
    TPoint prev = EvalPoint(0);
    Table.Rows.Add({0, 0, prev});
    for (int k = 0; k <= Basis.U.Count() - 2; ++k) {
      const double a = Basis.U[k];
      const double b = Basis.U[k + 1];
      const double c = PlainDistance(EvalPoint(b), prev);
      const int n = std::max(static_cast<int>(std::nearbyint(c / 0.03)), 1);
      for (int j = 1; j <= n; ++j) {
        const double u = a + (b - a) * j / n;
        const TPoint point = EvalPoint(u);
        const double d = PlainDistance(point, prev);
        Table.Rows.Add({Table.Rows.Last().S + d, u, point});
        prev = point;
      }
    }
  }
};

using TPlainRow = TPlainRowOf<6>;
using TPlainTable = TPlainTableOf<6>;
using TPlainCurve = TPlainCurveOf<6>;

// ---------------------------------------------------------------------------------------------- fit

/// The parameters t[0..n] of the points, no two neighbours of which are the same, and their chord length.
template <std::size_t Size>
TDoubleList PlainParameters(const TList<TPlainPoint<Size>>& Q, TParalizeMethod Method, double& L) {
  const int n = Q.Count() - 1;
  L = 0;
  double E = 0;
  for (int k = 1; k <= n; ++k) {
    L = L + PlainDistance(Q[k], Q[k - 1]);
    E = E + std::sqrt(PlainDistance(Q[k], Q[k - 1]));
  }
  TDoubleList t;
  t.Add(0);
  for (int k = 1; k <= n - 1; ++k) {
    const double d = PlainDistance(Q[k], Q[k - 1]);
    if (Method == mEqually) t.Add(static_cast<double>(k) / n);
    if (Method == mChord) t.Add(t[k - 1] + d / L);
    if (Method == mCentripetal) t.Add(t[k - 1] + std::sqrt(d) / E);
  }
  t.Add(1);
  return t;
}

template <std::size_t Size>
void PlainSolveTridiagonal(int n, const TList<TPlainPoint<Size>>& Q, const TPlainBasis& Basis,
                           TList<TPlainPoint<Size>>& P) {
  const TDoubleList& U = Basis.U;
  TList<TPlainPoint<Size>> R;
  TDoubleList dd;
  for (int i = 0; i <= n; ++i) {
    R.Add({});
    dd.Add(0);
  }
  double abc[4] = {};
  for (int i = 3; i <= n - 1; ++i) R[i] = Q[i - 1];
  Basis.BasicFuns(4, U[4], abc);
  double den = abc[1];
  P[2] = PlainQuotient(PlainDifference(Q[1], PlainProduct(abc[0], P[1])), den);
  for (int i = 3; i <= n - 1; ++i) {
    dd[i] = abc[2] / den;
    Basis.BasicFuns(i + 2, U[i + 2], abc);
    den = abc[1] - abc[0] * dd[i];
    P[i] = PlainQuotient(PlainDifference(R[i], PlainProduct(abc[0], P[i - 1])), den);
  }
  dd[n] = abc[2] / den;
  Basis.BasicFuns(n + 2, U[n + 2], abc);
  den = abc[1] - abc[0] * dd[n];
  const TPlainPoint<Size> right = PlainDifference(Q[n - 1], PlainProduct(abc[2], P[n + 1]));
  P[n] = PlainQuotient(PlainDifference(right, PlainProduct(abc[0], P[n - 1])), den);
  for (int i = n - 1; i >= 2; --i) P[i] = PlainDifference(P[i], PlainProduct(dd[i + 1], P[i + 1]));
}

/// The curve through at least four points, no two neighbours of which are the same, without its table.
template <std::size_t Size>
TPlainCurveOf<Size> PlainFitWithoutTable(const TList<TPlainPoint<Size>>& Q, TParalizeMethod Method) {
  const int n = Q.Count() - 1;
  TPlainCurveOf<Size> curve;
  double L = 0;
  TDoubleList& U = curve.Basis.U;
  for (int i = 0; i <= 2; ++i) U.Add(0);
  for (const double t : PlainParameters(Q, Method, L)) U.Add(t);
  for (int i = 0; i <= 2; ++i) U.Add(1);

  TPlainPoint<Size> D0 = PlainProduct(L, PlainNormal(PlainDifference(Q[1], Q[0])));
  TPlainPoint<Size> Dn = PlainProduct(L, PlainNormal(PlainDifference(Q[n], Q[n - 1])));
  if (PlainDistance(Q[0], Q[n]) < 1e-6 * L) D0 = Dn = PlainQuotient(PlainSum(D0, Dn), 2);

  TList<TPlainPoint<Size>>& P = curve.P;
  for (int i = 0; i <= n + 2; ++i) P.Add({});
  P[0] = Q[0];
  P[1] = PlainSum(Q[0], PlainProduct(U[4] / 3, D0));
  P[n + 2] = Q[n];
  P[n + 1] = PlainDifference(Q[n], PlainProduct((1 - U[n + 2]) / 3, Dn));
  PlainSolveTridiagonal(n, Q, curve.Basis, P);
  return curve;
}

inline TPlainCurve PlainFitWithoutTable(const TPoint6DList& Poses, TParalizeMethod Method) {
  TList<TPlainPose> Q;
  for (const TPoint6D& pose : Poses) Q.Add(pose.ToArray());
  return PlainFitWithoutTable(Q, Method);
}

inline TPlainCurve PlainFit(const TPoint6DList& Poses, TParalizeMethod Method) {
  TPlainCurve curve = PlainFitWithoutTable(Poses, Method);
  curve.InitLengthByUArray();
  return curve;
}

inline TPlainCurveOf<2> PlainFit(const TList<TPoint2D>& Points, TParalizeMethod Method) {
  TList<TPlainPoint<2>> Q;
  for (const TPoint2D& point : Points) Q.Add({point.X, point.Y});
  TPlainCurveOf<2> curve = PlainFitWithoutTable(Q, Method);
  curve.InitLengthByUArray();
  return curve;
}

}  // namespace ZORBase::Test
