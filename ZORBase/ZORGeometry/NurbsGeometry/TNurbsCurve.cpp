#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsCurve.h>

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <numeric>
#include <string>
#include <string_view>
#include <utility>

namespace ZORBase {
namespace {

// What the algorithms need to know of a type of points: the curve's name in messages, and the field of a table row.
template <class TPoint>
struct TCurveKind;

template <>
struct TCurveKind<TPoint6D> {
  static constexpr std::string_view kClassName = "TNurbs6D";
  static constexpr TPoint6D TSULine::*kRowPoint = &TSULine::pos6d;
};

template <class TPoint>
std::string MethodName(std::string_view Method) {
  return std::string(TCurveKind<TPoint>::kClassName) + "." + std::string(Method);
}

template <class TPoint>
double Distance(const TPoint& P, const TPoint& Q) {
  return (P - Q).Mag();
}

// ---------------------------------------------------------------------------------------------- evaluation

template <class TPoint>
void RequireControlPoints(std::span<const TPoint> Points) {
  if (Points.empty())
    RaiseGeneralError(std::string(TCurveKind<TPoint>::kClassName) + ": the curve has no control points yet");
}

// Sum of Weights[r] * P[Span - 3 + r] over the control points that exist.
template <class TPoint>
TPoint Blend(std::span<const TPoint> P, int Span, std::span<const double> Weights) {
  TPoint sum{};
  for (int r = 0; r <= TNurbsBasicFunc::kDegree; ++r) {
    const int idx = Span - TNurbsBasicFunc::kDegree + r;
    if (idx < 0 || static_cast<std::size_t>(idx) >= P.size()) continue;
    sum = sum + Weights[static_cast<std::size_t>(r)] * P[static_cast<std::size_t>(idx)];
  }
  return sum;
}

template <class TPoint>
TPoint PointInSpan(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, int Span, double u) {
  std::array<double, 4> N{};
  Basis.BasicFuns(Span, u, N);
  return Blend(P, Span, N);
}

// P(u), where u probably lies in the knot interval Guess: asking that is cheaper than searching.
template <class TPoint>
TPoint PointNear(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, int Guess, double u) {
  if (u >= 1.0) return P.back();
  if (!(u > 0.0)) return P.front();
  const std::span<const double> U = Basis.uArr();
  const auto guess = static_cast<std::size_t>(Guess);
  const bool isInner = Guess >= TNurbsBasicFunc::kDegree && Guess <= Basis.uCount() - 5;
  const bool isRight = isInner && U[guess] <= u && u < U[guess + 1];
  return PointInSpan(Basis, P, isRight ? Guess : Basis.FindSpan(u), u);
}

// ---------------------------------------------------------------------------------------------- parametrisation

template <class TPoint>
void RequirePlaces(std::span<const TPoint> Points, std::span<double> Params) {
  if (Params.size() < Points.size()) {
    RaiseGeneralError(MethodName<TPoint>("CurveParalize") + ": " + std::to_string(Points.size()) +
                      " points, but places for " + std::to_string(Params.size()) + " parameters");
  }
}

// Writes t[0] = 0, t[k] = t[k-1] + Steps[k-1] / Total and t[n] = 1.
void AccumulateParams(std::span<const double> Steps, double Total, std::span<double> Params) {
  Params[0] = 0.0;
  for (std::size_t k = 1; k < Steps.size(); ++k) Params[k] = Params[k - 1] + Steps[k - 1] / Total;
  Params[Steps.size()] = 1.0;
}

// The distances of neighbours; none when two of them are the same point, or when there are no neighbours.
template <class TPoint>
std::vector<double> Chords(std::span<const TPoint> Points) {
  std::vector<double> chords;
  chords.reserve(Points.size());
  for (std::size_t k = 1; k < Points.size(); ++k) {
    const double chord = Distance(Points[k], Points[k - 1]);
    if (chord < TNurbsCurve<TPoint>::kSmallestChord) return {};
    chords.push_back(chord);
  }
  return chords;
}

double Sum(std::span<const double> Values) { return std::accumulate(Values.begin(), Values.end(), 0.0); }

// ---------------------------------------------------------------------------------------------- fit

template <class TPoint>
void RequireMeasurable(std::span<const TPoint> Q) {
  for (std::size_t i = 0; i < Q.size(); ++i) {
    // Twice the point bounds every difference of points no longer than it.
    if (std::isfinite((Q[i] * 2.0).Mag())) continue;
    RaiseGeneralError(MethodName<TPoint>("CreateCross") + ": point " + std::to_string(i) +
                      " (counted from 0) is not finite, or too large for its length to be measured");
  }
}

template <class TPoint>
[[noreturn]] void RaiseTooClose(int First) {
  RaiseGeneralError("Error " + MethodName<TPoint>("CreateCross") + ": the points " + std::to_string(First) + " and " +
                    std::to_string(First + 1) +
                    " (counted from 0) are closer than 1e-6 of the path; drop one of them or divide the path");
}

// A span that is too narrow for the basis functions would leave a hole in the curve.
template <class TPoint>
void RequireWideSpans(std::span<const double> Params) {
  // Basis functions take knots closer than 1e-6 for one. Inside a span they see its width as a sum of two rounded parts, so
  // a little more is asked for.
  constexpr double kNarrowestSpan = 1.000000001e-6;
  for (std::size_t k = 0; k + 1 < Params.size(); ++k) {
    if (Params[k + 1] - Params[k] < kNarrowestSpan) RaiseTooClose<TPoint>(static_cast<int>(k));
  }
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

// ---------------------------------------------------------------------------------------------- table

// How many steps the table takes over each knot interval, and what comes of it in all.
struct TTablePlan {
  std::vector<double> Steps;
  double Rows = 1.0;
  double Length = 0.0;
};

double Sample(double From, double To, double Step, double Steps) { return From + (To - From) * Step / Steps; }

template <class TPoint>
TTablePlan PlanTable(const TNurbsBasicFunc& Basis, std::span<const TPoint> P) {
  const std::span<const double> U = Basis.uArr();
  TTablePlan plan;
  plan.Steps.reserve(U.size());
  TPoint prev = PointNear(Basis, P, 0, 0.0);
  for (std::size_t k = 0; k + 1 < U.size(); ++k) {
    const TPoint atEnd = PointNear(Basis, P, static_cast<int>(k) + 1, U[k + 1]);
    const double chord = Distance(atEnd, prev);
    const double steps = std::max(1.0, std::nearbyint(chord / TNurbsCurve<TPoint>::kSampleSpacing));
    plan.Steps.push_back(steps);
    plan.Rows += steps;
    plan.Length += chord;
    // The last sample of the interval may miss its end by a rounding.
    const double last = Sample(U[k], U[k + 1], steps, steps);
    prev = last == U[k + 1] ? atEnd : PointNear(Basis, P, static_cast<int>(k), last);
  }
  return plan;
}

template <class TPoint>
void RequireRoom(const TTablePlan& Plan) {
  using TCurve = TNurbsCurve<TPoint>;
  const std::string method = MethodName<TPoint>("InitLengthByUArray");
  if (!std::isfinite(Plan.Length)) RaiseGeneralError(method + ": the length of the curve is not finite");
  if (Plan.Rows <= static_cast<double>(TCurve::kMaxTableRows)) return;
  RaiseGeneralError(
      Format1033("%s: a path about %.6f long needs %.0f table rows at a spacing of %.2f; at most %d are possible. "
                 "Give the points in a larger length unit or divide the path",
                 method, Plan.Length, Plan.Rows, TCurve::kSampleSpacing, TCurve::kMaxTableRows));
}

}  // namespace

// ------------------------------------------------------------------------------------------------ evaluating

template <class TPoint>
TPoint TNurbsCurve<TPoint>::EvalPoint(double param) const {
  RequireControlPoints(pointArr());
  if (param >= 1.0) return FPoints.back();
  if (!(param > 0.0)) return FPoints.front();
  return PointInSpan(FBasicFun, pointArr(), FBasicFun.FindSpan(param), param);
}

template <class TPoint>
void TNurbsCurve<TPoint>::CurveDerivsAlg1(double u, std::span<TPoint> CK) const {
  RequireControlPoints(pointArr());
  if (CK.size() < 4) RaiseGeneralError(MethodName<TPoint>("CurveDerivsAlg1") + ": the result needs 4 places");
  const double param = u < 0.0 ? 0.0 : (u >= 1.0 ? 1.0 : u);
  const int span = FBasicFun.FindSpan(param);
  Double2DArray nders{};
  FBasicFun.DersBasciFuns(span, param, TNurbsBasicFunc::kDegree, 3, nders);
  for (std::size_t k = 0; k < 4; ++k) CK[k] = Blend(pointArr(), span, nders[k]);
}

template <class TPoint>
bool TNurbsCurve<TPoint>::GetIsClosed() const {
  RequireControlPoints(pointArr());
  return Distance(FPoints.front(), FPoints.back()) < kSmallestChord;
}

// ------------------------------------------------------------------------------------------------ arc length

template <class TPoint>
void TNurbsCurve<TPoint>::InitLengthByUArray() {
  FTable = Measure(FBasicFun, FPoints);
}

template <class TPoint>
TSUTable TNurbsCurve<TPoint>::Measure(const TNurbsBasicFunc& Basis, std::span<const TPoint> Points) {
  RequireControlPoints(Points);
  const TTablePlan plan = PlanTable(Basis, Points);
  RequireRoom<TPoint>(plan);
  TSUTable table;
  table.Reserve(static_cast<std::size_t>(plan.Rows));
  const std::span<const double> U = Basis.uArr();
  TSULine row;
  const auto addRow = [&](const TPoint& P) {
    row.*TCurveKind<TPoint>::kRowPoint = P;
    table.Add(row);
  };
  TPoint prev = PointNear(Basis, Points, 0, 0.0);
  addRow(prev);
  for (std::size_t k = 0; k + 1 < U.size(); ++k) {
    for (double step = 1.0; step <= plan.Steps[k]; ++step) {
      row.u = Sample(U[k], U[k + 1], step, plan.Steps[k]);
      const TPoint P = PointNear(Basis, Points, static_cast<int>(k), row.u);
      row.S += Distance(P, prev);
      addRow(P);
      prev = P;
    }
  }
  return table;
}

template <class TPoint>
TPoint TNurbsCurve<TPoint>::GetNearestPoint(const TPoint& point, double /*Tolerance*/, double& Param) const {
  constexpr double kFarthest = 1e8;
  const TSULine* nearest = nullptr;
  double best = kFarthest;
  for (const TSULine& row : FTable) {
    const double distance = Distance(point, TPoint(row.pos));
    if (!(distance < best)) continue;
    best = distance;
    nearest = &row;
  }
  Param = nearest ? nearest->u : 0.0;
  return nearest ? TPoint(nearest->pos) : TPoint{};
}

// ------------------------------------------------------------------------------------------------ bounds

template <class TPoint>
void TNurbsCurve<TPoint>::UpdatePointsVariables() {
  if (!FPointsChanged) return;
  FPointsChanged = true;  // stays set: the bounds are cheap, and so they are right at every call
  FMaxPos = FMinPos = FPoints.empty() ? TPoint{} : FPoints.front();
  for (const TPoint& P : FPoints) {
    FMaxPos.X = std::max(P.X, FMaxPos.X);
    FMaxPos.Y = std::max(P.Y, FMaxPos.Y);
    FMinPos.X = std::min(P.X, FMinPos.X);
    FMinPos.Y = std::min(P.Y, FMinPos.Y);
  }
}

template <class TPoint>
TPoint TNurbsCurve<TPoint>::GetMax() {
  UpdatePointsVariables();
  return FMaxPos;
}

template <class TPoint>
TPoint TNurbsCurve<TPoint>::GetMin() {
  UpdatePointsVariables();
  return FMinPos;
}

// ------------------------------------------------------------------------------------------------ changing

template <class TPoint>
void TNurbsCurve<TPoint>::RelativeToZero() {
  if (FPoints.empty()) return;
  const TPoint origin = FPoints.front();
  for (TPoint& P : FPoints) P = P - origin;
  FPoints.front() = TPoint{};
}

template <class TPoint>
void TNurbsCurve<TPoint>::Reverse() {
  RequireControlPoints(pointArr());
  FBasicFun.Reverse();
  // Up to the middle inclusive: with an even count the middle pair is swapped twice.
  const std::size_t count = FPoints.size();
  for (std::size_t i = 0; i <= count / 2; ++i) std::swap(FPoints[i], FPoints[count - 1 - i]);
  TSUTable reversed;
  reversed.Reserve(FTable.size());
  for (int k = FTable.Count() - 1; k >= 0; --k) {
    const TSULine& last = FTable.Last();
    reversed.Add({last.S - FTable[k].S, last.u - FTable[k].u, FTable[k].pos, {}});
  }
  FTable = std::move(reversed);
  FPointsChanged = true;
}

template <class TPoint>
void TNurbsCurve<TPoint>::AssignCurve(const TNurbsCurve& Source) {
  *this = TNurbsCurve(Source);
}

template <class TPoint>
bool TNurbsCurve<TPoint>::TakeControlPoints(std::span<const double> uVec, std::span<const TPoint> points,
                                            int pointCount) {
  if (uVec.size() != points.size() + 4) return false;
  if (pointCount < 0 || static_cast<std::size_t>(pointCount) > points.size()) {
    RaiseGeneralError(MethodName<TPoint>("CreateByCtlPoints") + ": " + std::to_string(pointCount) +
                      " points asked for, " + std::to_string(points.size()) + " given");
  }
  TNurbsBasicFunc basis;
  basis.CreateCross(uVec, pointCount + 4);
  FPoints = std::vector<TPoint>(points.begin(), points.begin() + pointCount);
  FBasicFun = std::move(basis);
  FPointsChanged = true;
  return true;
}

template <class TPoint>
bool TNurbsCurve<TPoint>::FitThrough(std::span<const TPoint> Q, TParalizeMethod Method) {
  if (Q.size() < kFewestFitPoints) return false;
  RequireMeasurable(Q);
  const std::size_t n = Q.size() - 1;
  std::vector<double> U(n + 7);
  std::vector<TPoint> P(n + 3);
  double length = 0.0;
  if (!Spread(Q, std::span(U).subspan(3), length, Method)) {
    RaiseGeneralError("Error " + MethodName<TPoint>("CreateCross") + " PtList distance is 0");
  }
  RequireWideSpans<TPoint>(std::span(U).subspan(3, n + 1));
  std::fill(U.end() - 4, U.end(), 1.0);
  SetOuterPoints(Q, U, length, std::span(P));
  SolveInnerPoints(static_cast<int>(n), Q, U, P);
  TNurbsBasicFunc basis;
  basis.CreateCross(U, static_cast<int>(U.size()));
  TSUTable table = Measure(basis, P);
  FBasicFun = std::move(basis);
  FPoints = std::move(P);
  FTable = std::move(table);
  FPointsChanged = true;
  return true;
}

// ------------------------------------------------------------------------------------------------ parametrising

template <class TPoint>
bool TNurbsCurve<TPoint>::SpreadEqually(std::span<const TPoint> Points, std::span<double> Params, double& Length) {
  RequirePlaces(Points, Params);
  const std::vector<double> chords = Chords(Points);
  if (chords.empty()) return false;
  Length = Sum(chords);
  const std::size_t n = chords.size();
  for (std::size_t k = 0; k < n; ++k) Params[k] = static_cast<double>(k) / static_cast<double>(n);
  Params[n] = 1.0;
  return true;
}

template <class TPoint>
bool TNurbsCurve<TPoint>::SpreadByChord(std::span<const TPoint> Points, std::span<double> Params, double& Length) {
  RequirePlaces(Points, Params);
  const std::vector<double> chords = Chords(Points);
  if (chords.empty()) return false;
  Length = Sum(chords);
  AccumulateParams(chords, Length, Params);
  return true;
}

template <class TPoint>
bool TNurbsCurve<TPoint>::SpreadCentripetally(std::span<const TPoint> Points, std::span<double> Params,
                                              double& Length) {
  RequirePlaces(Points, Params);
  std::vector<double> chords = Chords(Points);
  if (chords.empty()) return false;
  Length = Sum(chords);
  for (double& chord : chords) chord = std::sqrt(chord);
  AccumulateParams(chords, Sum(chords), Params);
  return true;
}

template <class TPoint>
bool TNurbsCurve<TPoint>::Spread(std::span<const TPoint> Points, std::span<double> Params, double& Length,
                                 TParalizeMethod Method) {
  switch (Method) {
    case mEqually: return SpreadEqually(Points, Params, Length);
    case mChord: return SpreadByChord(Points, Params, Length);
    default: return SpreadCentripetally(Points, Params, Length);
  }
}

// ------------------------------------------------------------------------------------------------ solving

template <class TPoint>
void TNurbsCurve<TPoint>::SolveInnerPoints(int n, std::span<const TPoint> Q, std::span<const double> U,
                                           std::span<TPoint> P) {
  const auto count = static_cast<std::size_t>(n);
  if (n < 3 || Q.size() < count + 1 || U.size() < count + 7 || P.size() < count + 3) {
    RaiseGeneralError(MethodName<TPoint>("SolveTridiagonal") +
                      ": n is below 3, or the points, knots or control points do not reach for it");
  }
  TNurbsBasicFunc basis;
  basis.CreateCross(U, n + 7);
  std::vector<double> dd(count + 1);
  std::array<double, 4> abc{};
  // Row i belongs to the point Q[i-1] at its parameter U[i+2]; its pivot vanishes when Q[i] follows too closely.
  double den = 0.0;
  const auto startRow = [&](std::size_t i, double Fill) {
    basis.BasicFuns(static_cast<int>(i) + 2, U[i + 2], abc);
    den = abc[1] - abc[0] * Fill;
    if (den == 0.0 || !std::isfinite(den)) RaiseTooClose<TPoint>(static_cast<int>(i) - 1);
  };
  startRow(2, 0.0);
  P[2] = (Q[1] - abc[0] * P[1]) / den;
  for (std::size_t i = 3; i < count; ++i) {
    dd[i] = abc[2] / den;
    startRow(i, dd[i]);
    P[i] = (Q[i - 1] - abc[0] * P[i - 1]) / den;
  }
  dd[count] = abc[2] / den;
  startRow(count, dd[count]);
  P[count] = (Q[count - 1] - abc[2] * P[count + 1] - abc[0] * P[count - 1]) / den;
  for (std::size_t i = count - 1; i >= 2; --i) P[i] = P[i] - dd[i + 1] * P[i + 1];
}

template class TNurbsCurve<TPoint6D>;

}  // namespace ZORBase
