// CurveFit: the steps of fitting a cubic curve through points. Internal: TNurbsCurve is the face of it.
//   SpreadParams      parameters of the points on [0, 1]
//   SolveInnerPoints  the inner control points, from a tridiagonal system
//   FitCurve          all of it
// Source: L. Piegl, W. Tiller, "The NURBS Book", 2nd edition, 9.2.3, global cubic interpolation with end tangents.
#pragma once

#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>

#include <span>
#include <vector>

namespace ZORBase {

/// Fewer points are not fitted.
inline constexpr int kFewestFitPoints = 4;
/// Neighbours closer than this are the same point.
inline constexpr double kSmallestChord = 1e-6;

/// Knots and control points of a curve.
template <class TPoint>
struct TFittedCurve {
  std::vector<double> U;
  std::vector<TPoint> P;
};

/// Writes the parameters t[0..n] of the points and the sum of their distances; any method but mEqually and mChord is
/// mCentripetal.
/// \return false, with Params and Length not settled, when two neighbours are the same point or there are fewer than two.
/// \throws the general error when Params has no place for every point.
template <class TPoint>
bool SpreadParams(std::span<const TPoint> Points, std::span<double> Params, double& Length, TParalizeMethod Method);

/// Solves for P[2..n] of the curve through Q[0..n] with the knots U[0..n+6]; P[0], P[1], P[n+1] and P[n+2] are given.
/// \throws the general error, with P as it was, when n < 3, when an array is too short, and when a pivot is zero or not finite,
///         naming the two points that are too close.
template <class TPoint>
void SolveInnerPoints(int n, std::span<const TPoint> Q, std::span<const double> U, std::span<TPoint> P);

/// Fits the clamped curve through at least kFewestFitPoints points.
/// \throws the general error "Error CLASS.CreateCross PtList distance is 0" when two neighbours are the same point; also for
///         points that are not finite or too large to measure, and for neighbours closer than 1e-6 of the path.
template <class TPoint>
TFittedCurve<TPoint> FitCurve(std::span<const TPoint> Q, TParalizeMethod Method);

}  // namespace ZORBase
