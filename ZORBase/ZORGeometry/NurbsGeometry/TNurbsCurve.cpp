#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsCurve.h>

#include <ZORBase/ZORGeometry/NurbsGeometry/CurvePoint.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/kernels/CubicBasis.h>
#include <ZORBase/kernels/CurveLanes.h>
#include <ZORBase/kernels/CurveSamples.h>

#include <algorithm>
#include <array>
#include <limits>
#include <string>
#include <utility>

namespace ZORBase {

template <class TPoint>
void TNurbsCurve<TPoint>::RequireControlPoints() const {
  if (!FPoints.empty()) return;
  RaiseGeneralError(std::string(TCurveKind<TPoint>::kClassName) + ": the curve has no control points yet");
}

// ------------------------------------------------------------------------------------------------ evaluating

namespace {

void BlendAll(const TPoint2D* const* P, const double (*N)[TSampleBlock<6>::kSize], std::size_t Count,
              TPoint2D* const* Sums, bool /*AreForLanes*/) {
  for (std::size_t i = 0; i < Count; ++i) {
    const double weights[4] = {N[0][i], N[1][i], N[2][i], N[3][i]};
    BlendFour(P[i], weights, *Sums[i]);
  }
}

void BlendAll(const TPoint6D* const* P, const double (*N)[TSampleBlock<6>::kSize], std::size_t Count,
              TPoint6D* const* Sums, bool AreForLanes) {
  const double* from[TSampleBlock<6>::kSize];
  double* to[TSampleBlock<6>::kSize];
  for (std::size_t i = 0; i < Count; ++i) {
    from[i] = &P[i]->X;
    to[i] = &Sums[i]->X;
  }
  if (!AreForLanes || !BlendAllByLanes(from, N, Count, to)) BlendExtendedAll(from, N, Count, to);
}

// Points that wait to be blended side by side.
template <class TPoint>
class TBlendQueue {
 public:
  explicit TBlendQueue(bool AreForLanes) : FAreForLanes(AreForLanes) {}

  /// Sum is to be the point with these distances from its knots and the control points from P on.
  void Add(const TKnotDistances& Distances, const TPoint* P, TPoint& Sum) {
    double weights[4];
    BasisValues<true>(Distances, weights);
    for (std::size_t r = 0; r < 4; ++r) FN[r][FCount] = weights[r];
    FFrom[FCount] = P;
    FTo[FCount] = &Sum;
    if (++FCount == kSize) Flush();
  }

  void Flush() {
    BlendAll(FFrom, FN, FCount, FTo, FAreForLanes);
    FCount = 0;
  }

 private:
  static constexpr std::size_t kSize = TSampleBlock<6>::kSize;
  bool FAreForLanes;
  std::size_t FCount = 0;
  double FN[4][kSize];
  const TPoint* FFrom[kSize];
  TPoint* FTo[kSize];
};

}  // namespace

template <class TPoint>
TPoint TNurbsCurve<TPoint>::EvalPoint(double param) const {
  // Knots that hold a parameter have control points.
  if (param > 0.0 && param < 1.0 && FBasicFun.IsInside(param)) [[likely]] {
    return PointInside(FBasicFun, pointArr(), FBasicFun.SpanInside(param), param, FAreForLanes);
  }
  RequireControlPoints();
  return CurvePointAnywhere(FBasicFun, pointArr(), param);
}

template <class TPoint>
void TNurbsCurve<TPoint>::EvalPoints(std::span<const double> Params, std::span<TPoint> Points) const {
  RequireControlPoints();
  if (Points.size() < Params.size()) {
    RaiseGeneralError(CurveOperation<TPoint>("EvalPoints") + ": " + std::to_string(Params.size()) +
                      " parameters, but places for " + std::to_string(Points.size()) + " points");
  }
  TBlendQueue<TPoint> queue(FAreForLanes);
  for (std::size_t i = 0; i < Params.size(); ++i) {
    const double u = Params[i];
    if (u > 0.0 && u < 1.0 && FBasicFun.IsInside(u)) {
      const int span = FBasicFun.SpanInside(u);
      const TKnotDistances distances = TKnotDistances::Create(FBasicFun.uArr().data() + span, u);
      if (distances.IsWide()) {
        queue.Add(distances, FPoints.data() + (span - TNurbsBasicFunc::kDegree), Points[i]);
        continue;
      }
    }
    Points[i] = CurvePointAnywhere(FBasicFun, pointArr(), u);
  }
  queue.Flush();
}

template <class TPoint>
void TNurbsCurve<TPoint>::CurveDerivsAlg1(double u, std::span<TPoint> CK) const {
  if constexpr (kHasPoses<TPoint>) {
    if (FAreForLanes && CK.size() >= 4 && u > 0.0 && u < 1.0 && FBasicFun.IsInside(u)) [[likely]] {
      const int span = FBasicFun.SpanInside(u);
      const TPoint* const points = FPoints.data() + (span - TNurbsBasicFunc::kDegree);
      if (DerivativesByLanes(FBasicFun.uArr().data() + span, u, &points->X, &CK[0].X)) return;
    }
  }
  RequireControlPoints();
  if (CK.size() < 4) RaiseGeneralError(CurveOperation<TPoint>("CurveDerivsAlg1") + ": the result needs 4 places");
  CurveDerivs<TPoint>(FBasicFun, FPoints, u, CK.template first<4>());
}

template <class TPoint>
double TNurbsCurve<TPoint>::Curvature(double u) const {
  std::array<TPoint, 4> CK{};
  CurveDerivsAlg1(u, CK);
  const double speed = CK[1].Mag();
  if (speed == 0.0) return std::numeric_limits<double>::quiet_NaN();
  const TPoint tangent = CK[1] / speed;
  const TPoint bend = CK[2] - tangent * CK[2].DotMul(tangent);
  return bend.Mag() / (speed * speed);
}

template <class TPoint>
TClosestPoint<TPoint> TNurbsCurve<TPoint>::ClosestPoint(const TPoint& point) const {
  RequireControlPoints();
  return FindClosestPoint(FBasicFun, pointArr(), point);
}

template <class TPoint>
std::array<TPoint, 4> TNurbsCurve<TPoint>::SpanBezier(int Span) const {
  const std::span<const double> U = FBasicFun.uArr();
  const auto span = static_cast<std::size_t>(Span);
  if (Span < TNurbsBasicFunc::kDegree || Span >= pCount() || !(U[span] < U[span + 1])) {
    RaiseGeneralError(CurveOperation<TPoint>("SpanBezier") + ": the knot interval " + std::to_string(Span) +
                      " is empty, or does not exist");
  }
  return BezierPoints(U, pointArr(), span);
}

template <class TPoint>
bool TNurbsCurve<TPoint>::GetIsClosed() const {
  RequireControlPoints();
  return Distance(FPoints.front(), FPoints.back()) < kSmallestChord;
}

// ------------------------------------------------------------------------------------------------ arc length

template <class TPoint>
void TNurbsCurve<TPoint>::InitLengthByUArray() {
  RequireControlPoints();
  MeasureCurve(FBasicFun, pointArr(), FTable);
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
  FAreForLanes = AreForLanes(FPoints);
}

template <class TPoint>
void TNurbsCurve<TPoint>::Reverse() {
  RequireControlPoints();
  // First what needs memory, so that a lack of it finds the curve unchanged.
  const TSUTable& table = FTable;
  TSUTable reversed;
  reversed.ReserveRows(table.size());
  for (int k = table.Count() - 1; k >= 0; --k) {
    const TSULine& last = table.Last();
    reversed.AddRow({last.S - table[k].S, last.u - table[k].u, table[k].pos, {}});
  }
  reversed.IndexRows();
  FTable = std::move(reversed);
  FBasicFun.Reverse();
  // Up to the middle inclusive: with an even count the middle pair is swapped twice.
  const std::size_t count = FPoints.size();
  for (std::size_t i = 0; i <= count / 2; ++i) std::swap(FPoints[i], FPoints[count - 1 - i]);
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
    RaiseGeneralError(CurveOperation<TPoint>("CreateByCtlPoints") + ": " + std::to_string(pointCount) +
                      " points asked for, " + std::to_string(points.size()) + " given");
  }
  TNurbsBasicFunc basis;
  basis.CreateCross(uVec, pointCount + 4);
  FPoints = std::vector<TPoint>(points.begin(), points.begin() + pointCount);
  FAreForLanes = AreForLanes(FPoints);
  FBasicFun = std::move(basis);
  FPointsChanged = true;
  return true;
}

template <class TPoint>
bool TNurbsCurve<TPoint>::FitThrough(std::span<const TPoint> Q, TParalizeMethod Method) {
  if (Q.size() < static_cast<std::size_t>(kFewestFitPoints)) return false;
  TFittedCurve<TPoint> fitted = FitCurve(Q, Method);
  TNurbsBasicFunc basis;
  basis.CreateCross(fitted.U, static_cast<int>(fitted.U.size()));
  MeasureCurve<TPoint>(basis, fitted.P, FTable);
  FBasicFun = std::move(basis);
  FPoints = std::move(fitted.P);
  FAreForLanes = AreForLanes(FPoints);
  FPointsChanged = true;
  return true;
}

template class TNurbsCurve<TPoint2D>;
template class TNurbsCurve<TPoint6D>;

}  // namespace ZORBase
