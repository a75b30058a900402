// Curves through poses, and of given knots and control points. Input: what is made (0 to 2 a fit by that method, 3 control points),
// three places to ask for, then poses; for 3 the number of knots, the knots and the number of points come before them. The places
// are also the entries of a plane transform. A plane curve of X and Y is made besides.
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

// The law of a cursor: the same with it as without.
template <class TOne, class TWithCursor>
void CheckCursor(std::string_view Law, std::span<const double> Places, TOne&& One, TWithCursor&& WithCursor) {
  TSUTable::TCursor cursor;
  for (const double place : Places) {
    double without = 0.0;
    double with = 0.0;
    const bool isGood = Attempt([&] { without = One(place); });
    Require(Attempt([&] { with = WithCursor(place, cursor); }) == isGood, Law);
    if (isGood) Require(SameStruct(with, without), Law);
  }
}

void CheckLookUps(const TSUTable& Table, std::span<const double> Places) {
  const auto lengthAt = [&](double u) { return Table.GetSByU(u); };
  const auto paramAt = [&](double S) { return Table.GetUByS(S); };
  CheckManyAgainstOne<double>(
      "lengths are looked up together as one by one", Places.size(),
      [&](std::span<double> S) { return Attempt([&] { Table.GetSByU(Places, S); }); },
      [&](std::size_t i, double& S) { return Attempt([&] { S = lengthAt(Places[i]); }); });
  CheckManyAgainstOne<double>(
      "parameters are looked up together as one by one", Places.size(),
      [&](std::span<double> u) { return Attempt([&] { Table.GetUByS(Places, u); }); },
      [&](std::size_t i, double& u) { return Attempt([&] { u = paramAt(Places[i]); }); });
  CheckCursor("a length with a cursor is that without", Places, lengthAt,
              [&](double u, TSUTable::TCursor& Cursor) { return Table.GetSByU(u, Cursor); });
  CheckCursor("a parameter with a cursor is that without", Places, paramAt,
              [&](double S, TSUTable::TCursor& Cursor) { return Table.GetUByS(S, Cursor); });
}

// Also without the index, and at places around the ends and the rows of the table.
void CheckTable(const TSUTable& Table, std::span<const double> Places) {
  std::vector<double> places(Places.begin(), Places.end());
  const int count = Table.Count();
  for (const int row : {0, 1, count / 2, count - 2, count - 1}) {
    if (row < 0 || row >= count) continue;
    for (const double offset : {0.0, 5e-8, -5e-8, 2e-7, -2e-7}) {
      places.push_back(Table[row].S + offset);
      places.push_back(Table[row].u + offset);
    }
  }
  CheckLookUps(Table, places);
  TSUTable plain = Table;
  static_cast<void>(plain.data());  // a row might be changed through it: it drops the index
  CheckLookUps(plain, places);
  for (const double place : places) {
    double indexed = 0.0;
    double bisected = 0.0;
    const bool isGood = Attempt([&] { indexed = Table.GetUByS(place); });
    Require(Attempt([&] { bisected = plain.GetUByS(place); }) == isGood, "a table gives the same without its index");
    Require(SameStruct(indexed, bisected), "a table gives the same without its index");
  }
}

template <class TCurve, class TPoint>
void AskForPlaces(const TCurve& Curve, std::span<const double> Places, const TPoint& Point) {
  std::array<TPoint, 4> derivatives;
  for (const double place : Places) {
    Attempt([&] { Curve.EvalPoint(place); });
    Attempt([&] { Curve.CurveDerivsAlg1(place, derivatives); });
    Attempt([&] { Curve.Curvature(place); });
    Attempt([&] { Curve.ParamOfLength(Curve.GetSByU(place)); });
    Attempt([&] { Curve.SpanBezier(AsInt(place)); });
  }
  CheckManyAgainstOne<TPoint>(
      "points are evaluated together as one by one", Places.size(),
      [&](std::span<TPoint> Points) { return Attempt([&] { Curve.EvalPoints(Places, Points); }); },
      [&](std::size_t i, TPoint& Place) { return Attempt([&] { Place = Curve.EvalPoint(Places[i]); }); });
  CheckTable(Curve.SUTable(), Places);
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

void Transform(TNurbs2D& Curve, const TMatrix2D& M) {
  const std::vector<TPoint2D> before(Curve.pointArr().begin(), Curve.pointArr().end());
  Curve.TransformBy(M);
  for (std::size_t i = 0; i < before.size(); ++i)
    Require(SameStruct(Curve.pointArr()[i], M.Transform(before[i])), "every control point is transformed");
}

// Before there is a table, with one, and after a transform with one that is brought up to date.
void UseGivenPlaneCurve(std::span<const double> Knots, const TPoint6DList& Poses, int Count,
                        std::span<const double> Places) {
  std::vector<TPoint2D> points;
  for (const TPoint6D& pose : Poses) points.push_back(TPoint2D::Create(pose.X, pose.Y));
  TNurbs2D curve;
  Attempt([&] { curve.CreateByCtlPoints(Knots, points, Count); });
  Use(curve, Places, TPoint2D());
  Attempt([&] { curve.InitLengthByUArray(); });
  Use(curve, Places, TPoint2D());
  Transform(curve, TMatrix2D::Create(0.5, Places[0], Places[1], -0.5, Places[2], 1.0));
  TPoint6DList moved;
  for (const TPoint2D& point : curve.pointArr()) moved.Add(TPoint6D::Create(point.X, point.Y, 0, 0, 0, 0));
  if (TakesLong(moved)) return;
  Attempt([&] { curve.InitLengthByUArray(); });
  Use(curve, Places, TPoint2D());
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
  UseGivenPlaneCurve(knots, points, count, Places);
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
