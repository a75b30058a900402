#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs2D.h>

#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>

#include "support/TestSupport.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::IsExactPose;
using Test::RaisesGeneralError;

constexpr std::array kMethods = {mEqually, mChord, mCentripetal};

TNurbs2D CurveThrough(const TList<TPoint2D>& Points, TParalizeMethod Method = mChord) {
  TNurbs2D curve;
  EXPECT_TRUE(curve.CreateCross(Points, Method));
  return curve;
}

// Points on a circle of radius 100, with steps that grow.
TList<TPoint2D> UnevenArc(int Count) {
  TList<TPoint2D> points;
  for (int i = 0; i < Count; ++i) {
    const double angle = 2.0 * std::pow(static_cast<double>(i) / Count, 1.3);
    points.Add(TPoint2D::Create(100 * std::cos(angle), 100 * std::sin(angle)));
  }
  return points;
}

const TList<TPoint2D> kStraight = {{0, 0}, {1, 0}, {2, 0}, {3, 0}};
const TList<TPoint2D> kSquare = {{0, 0}, {10, 0}, {10, 10}, {0, 10}, {0, 0}};

TEST(TNurbs2D, FourPointsOnALineGiveThirdsAsKnotsAndTheStraightSegment) {
  const TNurbs2D curve = CurveThrough(kStraight);
  const std::vector<double> expected = {0, 0, 0, 0, 1.0 / 3, 1.0 / 3 + 1.0 / 3, 1, 1, 1, 1};
  EXPECT_THAT(curve.BasicFun().uArr(), testing::ElementsAreArray(expected));
  EXPECT_EQ(curve.pCount(), 6);
  for (double u = 0; u <= 1; u += 0.01) {
    const TPoint2D point = curve.EvalPoint(u);
    EXPECT_NEAR(point.X, 3 * u, 1e-14);
    EXPECT_EQ(point.Y, 0);
  }
  EXPECT_NEAR(curve.CurveLength(), 3, 1e-13);
}

TEST(TNurbs2D, ASquareTracedBackToItsStartHasEqualEndTangents) {
  for (const TParalizeMethod method : kMethods) {
    const TNurbs2D curve = CurveThrough(kSquare, method);
    std::array<TPoint2D, 4> start{};
    std::array<TPoint2D, 4> end{};
    curve.CurveDerivsAlg1(0, start);
    curve.CurveDerivsAlg1(1, end);
    EXPECT_NEAR(start[1].X, end[1].X, 1e-12);
    EXPECT_NEAR(start[1].Y, end[1].Y, 1e-12);
    // The mean of the tangents along +X and -Y, each as long as the path: 40 / 2.
    EXPECT_NEAR(start[1].X, 20, 1e-12);
    EXPECT_NEAR(start[1].Y, -20, 1e-12);
    EXPECT_TRUE(curve.GetIsClosed());
  }
}

TEST(TNurbs2D, ATransformMovesTheCurveButNotItsTable) {
  TNurbs2D curve = CurveThrough(UnevenArc(12));
  const TPoint2D before = curve.EvalPoint(0.5);
  const double length = curve.CurveLength();
  double paramBefore = 0;
  const TPoint2D nearest = curve.GetNearestPoint(before, 1e-6, paramBefore);
  EXPECT_TRUE(curve.TransformBy(TMatrix2D::Create(1, 0, 0, 1, 5, 0)));
  EXPECT_NEAR(curve.EvalPoint(0.5).X, before.X + 5, 1e-12);
  EXPECT_NEAR(curve.EvalPoint(0.5).Y, before.Y, 1e-12);
  EXPECT_EQ(curve.CurveLength(), length);
  double param = 0;
  const TPoint2D stillNearest = curve.GetNearestPoint(before, 1e-6, param);
  EXPECT_EQ(param, paramBefore);
  EXPECT_EQ(stillNearest.X, nearest.X);
  EXPECT_EQ(stillNearest.Y, nearest.Y);
}

TEST(TNurbs2D, MeasuringAgainAfterAScalingDoublesTheLength) {
  TNurbs2D curve = CurveThrough(UnevenArc(12));
  const double length = curve.CurveLength();
  curve.TransformBy(TMatrix2D::Create(2, 0, 0, 2, 0, 0));
  curve.InitLengthByUArray();
  EXPECT_NEAR(curve.CurveLength(), 2 * length, 1e-5);
  EXPECT_EQ(curve.GetCurveLength(), curve.CurveLength());
}

TEST(TNurbs2D, TheNearestTableRowIsWithinHalfARowOfAPointOnTheCurve) {
  const TNurbs2D curve = CurveThrough(UnevenArc(12));
  for (double u = 0.003; u < 1; u += 0.0117) {
    const TPoint2D point = curve.EvalPoint(u);
    double param = -1;
    const TPoint2D nearest = curve.GetNearestPoint(point, 0, param);
    EXPECT_LT((nearest - point).Mag(), 0.02);
    EXPECT_NEAR(curve.GetSByU(param), curve.GetSByU(u), 0.02);
  }
}

TEST(TNurbs2D, TheNearestPointOfAnEmptyTableIsTheZeroPointAtParameterZero) {
  const TNurbs2D curve;
  double param = 7;
  const TPoint2D nearest = curve.GetNearestPoint({3, 4}, 0, param);
  EXPECT_EQ(param, 0);
  EXPECT_EQ(nearest.X, 0);
  EXPECT_EQ(nearest.Y, 0);
}

TEST(TNurbs2D, PassesThroughEveryPointWithEveryParametrisation) {
  const TList<TPoint2D> points = UnevenArc(40);
  for (const TParalizeMethod method : kMethods) {
    const TNurbs2D curve = CurveThrough(points, method);
    for (int i = 0; i < points.Count(); ++i) {
      const TPoint2D point = curve.EvalPoint(curve.BasicFun().Items(i + 3));
      EXPECT_NEAR(point.X, points[i].X, 1e-11);
      EXPECT_NEAR(point.Y, points[i].Y, 1e-11);
    }
  }
}

// In the plane z = 0 with a direction of zero both curves are the same, and only extended precision tells them apart.
TEST(TNurbs2D, IsTheSixComponentCurveInItsPlane) {
  const TList<TPoint2D> points = UnevenArc(30);
  TPoint6DList poses;
  for (const TPoint2D& point : points) poses.Add(point);
  for (const TParalizeMethod method : kMethods) {
    const TNurbs2D plane = CurveThrough(points, method);
    TNurbs6D space;
    ASSERT_TRUE(space.CreateCross(&poses, method));
    EXPECT_NEAR(plane.CurveLength(), space.CurveLength(), 1e-11);
    for (double u = 0; u <= 1; u += 0.013) {
      EXPECT_NEAR(plane.EvalPoint(u).X, space.EvalPoint(u).X, 1e-12);
      EXPECT_NEAR(plane.EvalPoint(u).Y, space.EvalPoint(u).Y, 1e-12);
    }
  }
}

TEST(TNurbs2D, RowsOfTheTableCarryThePlanePoint) {
  const TNurbs2D curve = CurveThrough(UnevenArc(8));
  for (const TSULine& row : curve.SUTable()) {
    EXPECT_EQ(row.pos.X, curve.EvalPoint(row.u).X);
    EXPECT_EQ(row.pos.Y, curve.EvalPoint(row.u).Y);
    EXPECT_THAT(row.pos6d, IsExactPose(TPoint6D()));
  }
}

TEST(TNurbs2D, ReverseKeepsThePlanePointsOfTheTable) {
  TNurbs2D curve = CurveThrough(UnevenArc(9));
  const TNurbs2D before = curve;
  curve.Reverse();
  const TSUTable& table = curve.SUTable();
  ASSERT_EQ(table.Count(), before.SUTable().Count());
  for (int k = 0; k < table.Count(); ++k) {
    const TSULine& old = before.SUTable()[table.Count() - 1 - k];
    EXPECT_EQ(table[k].S, before.CurveLength() - old.S);
    EXPECT_EQ(table[k].u, 1 - old.u);
    EXPECT_EQ(table[k].pos.X, old.pos.X);
    EXPECT_EQ(table[k].pos.Y, old.pos.Y);
  }
}

TEST(TNurbs2D, FewerThanFourPointsAreNotFitted) {
  TNurbs2D curve = CurveThrough(kStraight);
  EXPECT_FALSE(curve.CreateCross({{0, 0}, {1, 0}, {2, 5}}, mChord));
  EXPECT_EQ(curve.pCount(), 6);
}

TEST(TNurbs2D, EqualNeighboursRaiseForEveryParametrisationAndLeaveTheCurve) {
  for (const TParalizeMethod method : {mEqually, mChord, mCentripetal, static_cast<TParalizeMethod>(9)}) {
    TNurbs2D curve = CurveThrough(kStraight);
    const TList<TPoint2D> points = {{0, 0}, {1, 0}, {1, 0.9e-6}, {2, 5}};
    EXPECT_THAT(Calling([&] { curve.CreateCross(points, method); }),
                RaisesGeneralError("Error TNurbs2D.CreateCross PtList distance is 0"));
    EXPECT_NEAR(curve.CurveLength(), 3, 1e-13);
  }
}

TEST(TNurbs2D, PointsThatCannotBeMeasuredRaise) {
  for (const double bad : {std::nan(""), std::numeric_limits<double>::infinity(), 1e155}) {
    TNurbs2D curve;
    EXPECT_THAT(Calling([&] {
                  curve.CreateCross({{0, 0}, {1, 0}, {2, bad}, {3, 0}}, mChord);
                }),
                RaisesGeneralError(testing::HasSubstr("point 2 (counted from 0) is not finite")));
  }
}

TEST(TNurbs2D, ControlPointsNeedFourMoreKnots) {
  TNurbs2D curve;
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
  const std::vector<TPoint2D> points = {{0, 0}, {1, 2}, {3, 2}, {4, 0}};
  EXPECT_FALSE(curve.CreateByCtlPoints(std::span(knots).first(7), points, 4));
  EXPECT_TRUE(curve.CreateByCtlPoints(knots, points, 4));
  // One cubic Bezier segment: its middle is (P0 + 3 P1 + 3 P2 + P3) / 8.
  EXPECT_EQ(curve.EvalPoint(0.5).X, 2);
  EXPECT_EQ(curve.EvalPoint(0.5).Y, 1.5);
  EXPECT_EQ(curve.SUTable().Count(), 0);
}

TEST(TNurbs2D, AssignTakesOverAnotherPlaneCurveAndNothingElse) {
  const TNurbs2D source = CurveThrough(UnevenArc(9));
  TNurbs2D curve;
  curve.Assign(source);
  EXPECT_EQ(curve.CurveLength(), source.CurveLength());
  EXPECT_EQ(curve.EvalPoint(0.3).X, source.EvalPoint(0.3).X);
  EXPECT_THAT(Calling([&] { curve.Assign(TNurbs6D()); }), RaisesGeneralError("Cannot assign a TNurbs6D to a TNurbs2D"));
  EXPECT_EQ(curve.CurveLength(), source.CurveLength());
}

TEST(TNurbs2D, BoundsAreThoseOfTheControlPoints) {
  TNurbs2D curve;
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
  const std::vector<TPoint2D> points = {{0, 0}, {1, -2}, {3, 2}, {-4, 1}};
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, 4));
  EXPECT_EQ(curve.GetMax().X, 3);
  EXPECT_EQ(curve.GetMax().Y, 2);
  EXPECT_EQ(curve.GetMin().X, -4);
  EXPECT_EQ(curve.GetMin().Y, -2);
  // What was asked for last stays readable.
  EXPECT_EQ(curve.maxPos().X, 3);
  EXPECT_EQ(curve.maxPos().Y, 2);
  EXPECT_EQ(curve.minPos().X, -4);
  EXPECT_EQ(curve.minPos().Y, -2);
  curve.RelativeToZero();
  curve.TransformBy(TMatrix2D::Create(2, 0, 0, 1, 0, 0));
  EXPECT_EQ(curve.GetMax().X, 6);
}

// A figure of eight, which crosses itself at right angles in its middle: a point of one branch is not taken for one of the
// other, however close they come.
TEST(TNurbs2D, AFigureOfEightFindsEachOfItsPointsOnItsOwnBranch) {
  TList<TPoint2D> points;
  for (int i = 0; i <= 40; ++i) {
    const double angle = 2 * std::numbers::pi * i / 40 - 0.4;
    points.Add(TPoint2D::Create(10 * std::sin(angle), 5 * std::sin(2 * angle)));
  }
  for (const TParalizeMethod method : kMethods) {
    const TNurbs2D curve = CurveThrough(points, method);
    for (int i = 1; i < 1000; ++i) {
      const double u = i / 1000.0;
      const auto found = curve.ClosestPoint(curve.EvalPoint(u));
      EXPECT_NEAR(found.Distance, 0, 1e-13) << u;
      EXPECT_NEAR(found.Param, u, 1e-11) << u;
    }
  }
}

}  // namespace
}  // namespace ZORBase
