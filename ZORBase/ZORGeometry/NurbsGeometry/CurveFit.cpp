#include <ZORBase/ZORGeometry/NurbsGeometry/CurveFit.h>

#include <ZORBase/ZORGeometry/NurbsGeometry/CurvePoint.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/kernels/CubicBasis.h>
#include <ZORBase/kernels/CurveBlend.h>
#include <ZORBase/kernels/PoseSolver.h>

#include <algorithm>
#include <cmath>
#include <numeric>
#include <string>

namespace ZORBase {
namespace {

// ---------------------------------------------------------------------------------------------- parametrisation

// The distances of neighbours; none when two of them are the same point, or when there are no neighbours.
template <class TPoint>
std::vector<double> Chords(std::span<const TPoint> Points) {
  std::vector<double> chords;
  chords.reserve(Points.size());
  for (std::size_t k = 1; k < Points.size(); ++k) {
    const double chord = Distance(Points[k], Points[k - 1]);
    if (chord < kSmallestChord) return {};
    chords.push_back(chord);
  }
  return chords;
}

double Sum(std::span<const double> Values) { return std::accumulate(Values.begin(), Values.end(), 0.0); }

// t[0] = 0, t[k] = k / n, t[n] = 1.
void SpreadEqually(std::size_t n, std::span<double> Params) {
  for (std::size_t k = 0; k < n; ++k) Params[k] = static_cast<double>(k) / static_cast<double>(n);
  Params[n] = 1.0;
}

// t[0] = 0, t[k] = t[k-1] + Steps[k-1] / Total, t[n] = 1.
void SpreadBySteps(std::span<const double> Steps, double Total, std::span<double> Params) {
  const std::size_t n = Steps.size();
  Params[0] = 0.0;
  for (std::size_t k = 1; k < n; ++k) Params[k] = Params[k - 1] + Steps[k - 1] / Total;
  Params[n] = 1.0;
}

// ---------------------------------------------------------------------------------------------- refusals

// Whether no component is so large, nor missing, that the length has to be formed to tell.
template <class TPoint>
bool IsSurelyMeasurable(const TPoint& P) {
  constexpr double kLargest = 1e100;
  bool isSmall = true;
  for (std::size_t c = 0; c < sizeof(TPoint) / sizeof(double); ++c) isSmall &= std::fabs((&P.X)[c]) <= kLargest;
  return isSmall;
}

template <class TPoint>
void RequireMeasurable(std::span<const TPoint> Q) {
  for (std::size_t i = 0; i < Q.size(); ++i) {
    // Twice its length bounds the distance from any point that is not longer.
    if (IsSurelyMeasurable(Q[i]) || std::isfinite((Q[i] * 2.0).Mag())) continue;
    RaiseGeneralError(CurveOperation<TPoint>("CreateCross") + ": point " + std::to_string(i) +
                      " (counted from 0) is not finite, or too large for its length to be measured");
  }
}

template <class TPoint>
[[noreturn]] void RaiseTooClose(std::size_t First) {
  RaiseGeneralError("Error " + CurveOperation<TPoint>("CreateCross") + ": the points " + std::to_string(First) +
                    " and " + std::to_string(First + 1) +
                    " (counted from 0) are closer than 1e-6 of the path; drop one of them or divide the path");
}

// A span that is too narrow for the basis functions would leave a hole in the curve.
template <class TPoint>
void RequireWideSpans(std::span<const double> Params) {
  for (std::size_t k = 0; k + 1 < Params.size(); ++k) {
    if (Params[k + 1] - Params[k] < kSurelyWide) RaiseTooClose<TPoint>(k);
  }
}

// To = (P - A Q) / Pivot and To = P - A Q, by the arithmetic of the points.
void Eliminate(const TPoint2D& P, double A, const TPoint2D& Q, double Pivot, TPoint2D& To) { To = (P - A * Q) / Pivot; }
void Eliminate(const TPoint2D& P, double A, const TPoint2D& Q, TPoint2D& To) { To = P - A * Q; }
void Eliminate(const TPoint6D& P, double A, const TPoint6D& Q, double Pivot, TPoint6D& To) {
  StoreEliminated(&P.X, A, &Q.X, 1.0 / Pivot, &To.X);
}
void Eliminate(const TPoint6D& P, double A, const TPoint6D& Q, TPoint6D& To) { StoreEliminated(&P.X, A, &Q.X, &To.X); }

// The quick way, for poses that give it no trouble.
bool SolveByLanes(std::size_t /*Last*/, std::span<const TPoint2D> /*Q*/, std::span<const double> /*U*/,
                  std::span<TPoint2D> /*P*/) {
  return false;
}
bool SolveByLanes(std::size_t Last, std::span<const TPoint6D> Q, std::span<const double> U, std::span<TPoint6D> P) {
  return SolvePosesByLanes(Last, &Q.data()->X, U.data(), &P.data()->X);
}

// The two outer control points at either end: the end point itself, and a third of the end tangent from it.
template <class TPoint>
void SetOuterPoints(std::span<const TPoint> Q, std::span<const double> U, double Length, std::span<TPoint> P) {
  const std::size_t n = Q.size() - 1;
  TPoint d0 = (Q[1] - Q[0]).Normal() * Length;
  TPoint dn = (Q[n] - Q[n - 1]).Normal() * Length;
  constexpr double kClosedRatio = 1e-6;  // ends closer than this part of the path make the curve a closed one
  if (Distance(Q[0], Q[n]) < kClosedRatio * Length) d0 = dn = (d0 + dn) / 2.0;
  P[0] = Q[0];
  P[1] = Q[0] + (U[4] / 3.0) * d0;
  P[n + 2] = Q[n];
  P[n + 1] = Q[n] - ((1.0 - U[n + 2]) / 3.0) * dn;
}

}  // namespace

template <class TPoint>
bool SpreadParams(std::span<const TPoint> Points, std::span<double> Params, double& Length, TParalizeMethod Method) {
  if (Params.size() < Points.size()) {
    RaiseGeneralError(CurveOperation<TPoint>("CurveParalize") + ": " + std::to_string(Points.size()) +
                      " points, but places for " + std::to_string(Params.size()) + " parameters");
  }
  std::vector<double> steps = Chords(Points);
  if (steps.empty()) return false;
  Length = Sum(steps);
  switch (Method) {
    case mEqually: SpreadEqually(steps.size(), Params); break;
    case mChord: SpreadBySteps(steps, Length, Params); break;
    default:
      for (double& step : steps) step = std::sqrt(step);
      SpreadBySteps(steps, Sum(steps), Params);
  }
  return true;
}

template <class TPoint>
void SolveInnerPoints(int n, std::span<const TPoint> Q, std::span<const double> U, std::span<TPoint> P) {
  const auto last = static_cast<std::size_t>(n);
  if (n < 3 || Q.size() < last + 1 || U.size() < last + 7 || P.size() < last + 3) {
    RaiseGeneralError(CurveOperation<TPoint>("SolveTridiagonal") +
                      ": n is below 3, or the points, knots or control points do not reach for it");
  }
  if (SolveByLanes(last, Q, U, P)) return;
  std::vector<double> dd(last + 1);
  std::vector<TPoint> reduced(last + 1);  // right sides; P is written once every pivot has proved good
  double abc[4];
  double den = 0.0;
  // Row i belongs to the point Q[i-1] at its parameter U[i+2]; its pivot vanishes when Q[i] follows too closely.
  const auto startRow = [&](std::size_t i) {
    BasisValues<false>(TKnotDistances::Create(&U[i + 2], U[i + 2]), abc);
    den = abc[1] - abc[0] * dd[i];
    if (den == 0.0 || !std::isfinite(den)) RaiseTooClose<TPoint>(i - 1);
  };
  startRow(2);
  Eliminate(Q[1], abc[0], P[1], den, reduced[2]);
  for (std::size_t i = 3; i <= last; ++i) {
    dd[i] = abc[2] / den;
    startRow(i);
    TPoint right = Q[i - 1];
    if (i == last) Eliminate(Q[i - 1], abc[2], P[i + 1], right);
    Eliminate(right, abc[0], reduced[i - 1], den, reduced[i]);
  }
  P[last] = reduced[last];
  for (std::size_t i = last - 1; i >= 2; --i) Eliminate(reduced[i], dd[i + 1], P[i + 1], P[i]);
}

template <class TPoint>
TFittedCurve<TPoint> FitCurve(std::span<const TPoint> Q, TParalizeMethod Method) {
  RequireMeasurable(Q);
  const std::size_t n = Q.size() - 1;
  TFittedCurve<TPoint> curve{std::vector<double>(n + 7), std::vector<TPoint>(n + 3)};
  const std::span<double> params = std::span(curve.U).subspan(3, n + 1);
  double length = 0.0;
  if (!SpreadParams(Q, params, length, Method)) {
    RaiseGeneralError("Error " + CurveOperation<TPoint>("CreateCross") + " PtList distance is 0");
  }
  RequireWideSpans<TPoint>(params);
  std::fill(curve.U.end() - 4, curve.U.end(), 1.0);
  SetOuterPoints<TPoint>(Q, curve.U, length, curve.P);
  SolveInnerPoints<TPoint>(static_cast<int>(n), Q, curve.U, curve.P);
  return curve;
}

// ------------------------------------------------------------------------------------------------ for both types of points

template bool SpreadParams(std::span<const TPoint2D>, std::span<double>, double&, TParalizeMethod);
template bool SpreadParams(std::span<const TPoint6D>, std::span<double>, double&, TParalizeMethod);
template void SolveInnerPoints(int, std::span<const TPoint2D>, std::span<const double>, std::span<TPoint2D>);
template void SolveInnerPoints(int, std::span<const TPoint6D>, std::span<const double>, std::span<TPoint6D>);
template TFittedCurve<TPoint2D> FitCurve(std::span<const TPoint2D>, TParalizeMethod);
template TFittedCurve<TPoint6D> FitCurve(std::span<const TPoint6D>, TParalizeMethod);

}  // namespace ZORBase
