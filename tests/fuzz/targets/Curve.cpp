// Curves through poses, and of given knots and control points. Input: what is made (0 to 2 a fit by that method, 3 control points),
// three places to ask for, then poses; for 3 the number of knots and the knots come before them.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORGeometry/NurbsGeometry.h>

#include <array>
#include <cmath>

namespace ZORBase::Test::FuzzCurve {
namespace {

constexpr int kMostPoses = 64;

// A table has a row per 0.03 of length, 64 million at most. Here it stays small, for the sake of speed; what is far too long is
// refused anyway.
constexpr double kLongest = 100.0;
constexpr double kFarTooLong = 1e20;

// The sum of what is finite: other parts are refused.
double RoughLength(std::span<const TPoint6D> Poses) {
  double sum = 0.0;
  for (std::size_t i = 1; i < Poses.size(); ++i) {
    for (const double part : (Poses[i] - Poses[i - 1]).ToArray()) sum += std::isfinite(part) ? std::fabs(part) : 0.0;
  }
  return sum;
}

bool TakesLong(std::span<const TPoint6D> Poses) {
  const double length = RoughLength(Poses);
  return length > kLongest && length < kFarTooLong;
}

template <class TCurve, class TPoint>
void AskForPlaces(const TCurve& Curve, std::span<const double> Places, const TPoint& Point) {
  std::array<TPoint, 4> derivatives;
  std::array<TPoint, 3> points;
  for (const double place : Places) {
    Attempt([&] { Curve.EvalPoint(place); });
    Attempt([&] { Curve.CurveDerivsAlg1(place, derivatives); });
    Attempt([&] { Curve.Curvature(place); });
    Attempt([&] { Curve.ParamOfLength(Curve.GetSByU(place)); });
    Attempt([&] { Curve.SpanBezier(AsInt(place)); });
  }
  Attempt([&] { Curve.EvalPoints(Places, points); });
  Attempt([&] { Curve.ClosestPoint(Point); });
  double param = 0.0;
  Attempt([&] { Curve.GetNearestPoint(Point, 1e-6, param); });
}

// All that a curve can do, whatever it is.
template <class TCurve, class TPoint>
void Use(TCurve& Curve, std::span<const double> Places, const TPoint& Point) {
  AskForPlaces(Curve, Places, Point);
  Attempt([&] { Curve.GetMax(); });
  Attempt([&] { Curve.GetMin(); });
  Attempt([&] { Curve.GetIsClosed(); });
  Attempt([&] { Curve.Reverse(); });
  AskForPlaces(Curve, Places, Point);
  Attempt([&] { Curve.RelativeToZero(); });
  TCurve copy;
  copy.Assign(Curve);
  Require(copy.pCount() == Curve.pCount(), "a copy has the control points");
}

void CheckFit(const TNurbs6D& Curve, const TPoint6DList& Poses, std::span<const double> Places) {
  Require(SameBits(Curve.EvalPoint(0).ToArray(), Poses.First().ToArray()), "a fit starts in its first pose");
  Require(SameBits(Curve.EvalPoint(1).ToArray(), Poses.Last().ToArray()), "a fit ends in its last pose");
  const double length = Curve.CurveLength();
  Require(std::isfinite(length) && length > 0.0, "a fit has a length");
  for (const double place : Places) {
    if (std::isnan(place)) continue;
    const double param = Curve.ParamOfLength(place);
    Require(param >= 0.0 && param <= 1.0, "the parameter at a length is one of the curve");
  }
}

void FitBoth(TFuzzInput& Input, TParalizeMethod Method, std::span<const double> Places) {
  const TPoint6DList poses = Input.Poses(kMostPoses);
  TPoint6DList flatPoses;
  TList<TPoint2D> points;
  for (const TPoint6D& pose : poses) {
    flatPoses.Add(TPoint6D::Create(pose.X, pose.Y, 0, 0, 0, 0));
    points.Add(TPoint2D::Create(pose.X, pose.Y));
  }
  if (TakesLong(poses) || TakesLong(flatPoses)) return;
  const TPoint6D somewhere = poses.size() == 0 ? TPoint6D() : poses.Last() * 0.5;
  TNurbs6D curve;
  bool isFitted = false;
  Attempt([&] { isFitted = curve.CreateCross(&poses, Method); });
  if (isFitted) CheckFit(curve, poses, Places);
  Use(curve, Places, somewhere);
  TNurbs2D planeCurve;
  Attempt([&] { planeCurve.CreateCross(points, Method); });
  Use(planeCurve, Places, TPoint2D::Create(somewhere.X, somewhere.Y));
}

void TakeControlPoints(TFuzzInput& Input, std::span<const double> Places) {
  const std::vector<double> knots = Input.Numbers(Input.Count(kMostPoses + 4));
  const int count = Input.Int();
  const TPoint6DList points = Input.Poses(kMostPoses);
  if (TakesLong(points)) return;
  TNurbs6D curve;
  Attempt([&] { curve.CreateByCtlPoints(knots, points, count); });
  Use(curve, Places, TPoint6D());
  Attempt([&] { curve.InitLengthByUArray(); });
  Use(curve, Places, TPoint6D());
}

}  // namespace

ZORBASE_FUZZ_TARGET(Curve) {
  const int what = Input.Choice(4);
  const std::array places = {Input.Number(), Input.Number(), Input.Number()};
  if (what == 3) {
    TakeControlPoints(Input, places);
  } else {
    FitBoth(Input, static_cast<TParalizeMethod>(what), places);
  }
}

}  // namespace ZORBase::Test::FuzzCurve
