// CurvePoint: evaluating a cubic B-spline curve given by its basis and its control points, for any type of points.
// Internal: TNurbsCurve is the face of it.
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TSUTable.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/kernels/CubicBasis.h>
#include <ZORBase/kernels/CurveBlend.h>
#include <ZORBase/kernels/CurveLanes.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>

namespace ZORBase {

/// What differs between the types of points: the name of their curve, and the field of a table row that holds them.
template <class TPoint>
struct TCurveKind;

template <>
struct TCurveKind<TPoint2D> {
  static constexpr std::string_view kClassName = "TNurbs2D";
  static constexpr TPoint2D TSULine::*kRowPoint = &TSULine::pos;
};

template <>
struct TCurveKind<TPoint6D> {
  static constexpr std::string_view kClassName = "TNurbs6D";
  static constexpr TPoint6D TSULine::*kRowPoint = &TSULine::pos6d;
};

/// \return the name of an operation of the curve, as messages give it: "TNurbs6D.Operation".
template <class TPoint>
std::string CurveOperation(std::string_view Operation) {
  return std::string(TCurveKind<TPoint>::kClassName) + "." + std::string(Operation);
}

/// (P - Q).Mag()
inline double Distance(const TPoint2D& P, const TPoint2D& Q) { return (P - Q).Mag(); }
inline double Distance(const TPoint6D& P, const TPoint6D& Q) {
  double squared = 0.0;
  StoreSquaredDistance(&P.X, &Q.X, squared);
  return std::sqrt(squared);
}

/// \return the sum of Weights[r] * P[Span - 3 + r], r = 0..3. Span is an inner one, or the last: its control points exist.
template <class TPoint>
TPoint BlendPoints(std::span<const TPoint> P, int Span, std::span<const double, 4> Weights) {
  const TPoint* const points = P.data() + (Span - TNurbsBasicFunc::kDegree);
  TPoint sum{};
  for (std::size_t r = 0; r < Weights.size(); ++r) sum = sum + Weights[r] * points[r];
  return sum;
}

/// Gives the same of the four points from P on, which all exist. The sum is written where it is wanted: to copy what the
/// extended unit has just stored is slow.
ZORBASE_INLINE void BlendFour(const TPoint2D* P, const double* N, TPoint2D& Sum) { BlendPlane(&P->X, N, &Sum.X); }
ZORBASE_INLINE void BlendFour(const TPoint6D* P, const double* N, TPoint6D& Sum) { BlendExtended(&P->X, N, &Sum.X); }

template <class TPoint>
[[noreturn]] void RaiseBeforeFirstKnot(double u) {
  RaiseGeneralError(CurveOperation<TPoint>("EvalPoint") + ": the parameter " + Format1033("%.17f", u) +
                    " lies before the first knot");
}

/// \return the point at u, which lies in the knot interval Span = FindSpan(u).
/// \throws the general error for a u before the first knot.
template <class TPoint>
TPoint PointInAnySpan(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, int Span, double u) {
  std::array<double, 4> N{};
  if (!Basis.BasicFuns(Span, u, N)) RaiseBeforeFirstKnot<TPoint>(u);
  return BlendPoints<TPoint>(P, Span, N);
}

/// Whether the points have the six components that the vector lanes of CurveLanes.h are for.
template <class TPoint>
inline constexpr bool kHasPoses = std::is_same_v<TPoint, TPoint6D>;

/// Whether the lanes can have these control points.
inline bool AreForLanes(std::span<const TPoint2D> /*P*/) { return false; }
inline bool AreForLanes(std::span<const TPoint6D> P) { return !P.empty() && AreForLanes(&P.data()->X, P.size()); }

/// PointInAnySpan where Basis.IsInside(u). ForLanes: AreForLanes(P).
template <class TPoint>
ZORBASE_INLINE TPoint PointInside(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, int Span, double u,
                                  bool ForLanes = false) {
  const TPoint* const points = P.data() + (Span - TNurbsBasicFunc::kDegree);
  if constexpr (kHasPoses<TPoint>) {
    if (ForLanes) [[likely]] {
      TPoint pose;
      if (PoseByLanes(Basis.uArr().data() + Span, u, &points->X, &pose.X)) [[likely]]
        return pose;
    }
  }
  const TKnotDistances distances = TKnotDistances::Create(Basis.uArr().data() + Span, u);
  if (!distances.IsWide()) [[unlikely]]
    return PointInAnySpan(Basis, P, Span, u);
  double N[4];
  BasisValues<true>(distances, N);
  TPoint sum;
  BlendFour(points, N, sum);
  return sum;
}

/// \return FindSpan(u), for knots that do not fall. Guess is the knot interval where u is likely to lie: asking that is cheaper
///         than searching.
inline int SpanNear(const TNurbsBasicFunc& Basis, int Guess, double u) {
  const std::span<const double> U = Basis.uArr();
  const auto guess = static_cast<std::size_t>(Guess);
  const bool isInner = Guess >= TNurbsBasicFunc::kDegree && Guess <= Basis.uCount() - 5;
  return isInner && U[guess] <= u && u < U[guess + 1] ? Guess : Basis.FindSpan(u);
}

/// \return the point at u: the last control point for u >= 1, the first one for u <= 0 or NaN. Guess, the knot interval where
///         u is likely to lie, becomes the one where it lies. ForLanes: AreForLanes(P).
template <class TPoint>
TPoint CurvePoint(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, int& Guess, double u,
                  bool ForLanes = false) {
  if (u >= 1.0) return P.back();
  if (!(u > 0.0)) return P.front();
  Guess = SpanNear(Basis, Guess, u);
  return Basis.IsInside(u) ? PointInside(Basis, P, Guess, u, ForLanes) : PointInAnySpan(Basis, P, Guess, u);
}

template <class TPoint>
ZORBASE_NOINLINE TPoint CurvePointAnywhere(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, double u) {
  int anywhere = 0;
  return CurvePoint(Basis, P, anywhere, u);
}

/// As above, without a guess.
template <class TPoint>
ZORBASE_INLINE TPoint CurvePoint(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, double u) {
  if (u > 0.0 && u < 1.0 && Basis.IsInside(u)) [[likely]]
    return PointInside(Basis, P, Basis.SpanInside(u), u);
  return CurvePointAnywhere(Basis, P, u);
}

/// Gives the point and its first to third derivatives with respect to u, clamped to [0, 1], in CK[0..3].
template <class TPoint>
void CurveDerivs(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, double u, std::span<TPoint, 4> CK) {
  const double param = u < 0.0 ? 0.0 : (u >= 1.0 ? 1.0 : u);
  const int span = Basis.FindSpan(param);
  Double2DArray nders;
  if (Basis.IsInside(param)) {
    const TKnotDistances distances = TKnotDistances::Create(Basis.uArr().data() + span, param);
    if (distances.IsWide()) {
      BasisDerivatives<true, TNurbsBasicFunc::kDegree, 3>(distances, nders);
    } else {
      BasisDerivatives<false, TNurbsBasicFunc::kDegree, 3>(distances, nders);
    }
    const TPoint* const points = P.data() + (span - TNurbsBasicFunc::kDegree);
    for (std::size_t k = 0; k < CK.size(); ++k) BlendFour(points, nders[k].data(), CK[k]);
  } else {
    Basis.DersBasciFuns(span, param, TNurbsBasicFunc::kDegree, 3, nders);
    for (std::size_t k = 0; k < CK.size(); ++k) CK[k] = BlendPoints<TPoint>(P, span, nders[k]);
  }
}

/// \return the Bezier points of the curve over the knot interval Span, 3 to pCount - 1, which is not empty: its control points
///         blossomed, that is de Boor's scheme with an argument of its own, an end of the interval, at each level.
template <class TPoint>
std::array<TPoint, 4> BezierPoints(std::span<const double> U, std::span<const TPoint> P, std::size_t Span) {
  const double from = U[Span];
  const double to = U[Span + 1];
  std::array<TPoint, 4> bezier;
  for (std::size_t point = 0; point < 4; ++point) {
    std::array<TPoint, 4> d = {P[Span - 3], P[Span - 2], P[Span - 1], P[Span]};
    for (std::size_t level = 1; level <= 3; ++level) {
      const double argument = level <= point ? to : from;
      for (std::size_t i = 3; i >= level; --i) {
        const double low = U[Span - 3 + i];
        const double high = U[Span + 1 + i - level];
        d[i] = d[i - 1] + (d[i] - d[i - 1]) * ((argument - low) / (high - low));
      }
    }
    bezier[point] = d[3];
  }
  return bezier;
}

}  // namespace ZORBase
