#include <zor/SplinePath.h>

#include "support/TestSupport.h"

#include <cmath>
#include <numbers>

namespace ZORBase::Tool {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;

TPointXD PointOf(std::initializer_list<double> Coordinates) {
  return TPointXD::FromSpan(std::vector<double>(Coordinates));
}

// (t, t^2): its length up to x is x sqrt(1 + 4 x^2) / 2 + asinh(2 x) / 4.
const TCubicBezXD kUnitParabola =
    TCubicBezXD::Create(PointOf({0, 0}), PointOf({1.0 / 3, 0}), PointOf({2.0 / 3, 1.0 / 3}), PointOf({1, 1}));
// t^3: it starts without speed.
const TCubicBezXD kFromRest = TCubicBezXD::Create(PointOf({0}), PointOf({0}), PointOf({0}), PointOf({1}));

TList<TPointXD> Helix(int Count) {
  TList<TPointXD> points;
  for (int k = 0; k < Count; ++k) {
    const double angle = 0.1 * k + 0.03 * std::sin(2.0 * k);
    points.Add(PointOf({10 * std::cos(angle), 10 * std::sin(angle), 3 * angle, -angle}));
  }
  return points;
}

TEST(ParamAtLength, OfAParabolaIsThePlaceOfItsFormula) {
  for (double x = 0.05; x < 1; x += 0.05) {
    EXPECT_NEAR(ParamAtLength(kUnitParabola, x * std::sqrt(1 + 4 * x * x) / 2 + std::asinh(2 * x) / 4), x, 1e-13);
  }
}

TEST(ParamAtLength, StartsFromRest) {
  for (const double length : {1e-12, 1e-6, 0.001, 0.5, 0.999}) {
    EXPECT_NEAR(ParamAtLength(kFromRest, length), std::cbrt(length), 1e-9) << length;
  }
}

TEST(ParamAtLength, OutsideTheSegmentIsAnEnd) {
  EXPECT_EQ(ParamAtLength(kUnitParabola, 0), 0);
  EXPECT_EQ(ParamAtLength(kUnitParabola, -1), 0);
  EXPECT_EQ(ParamAtLength(kUnitParabola, std::nan("")), 0);
  EXPECT_EQ(ParamAtLength(kUnitParabola, kUnitParabola.FLength), 1);
  EXPECT_EQ(ParamAtLength(kUnitParabola, 9), 1);
}

TEST(CurvatureAt, OfAParabolaIsThatOfItsFormula) {
  for (double t = 0; t <= 1; t += 0.125)
    EXPECT_NEAR(CurvatureAt(kUnitParabola, t), 2 / std::pow(1 + 4 * t * t, 1.5), 1e-13);
  EXPECT_EQ(CurvatureAt(kFromRest, 0), 0);
  EXPECT_NEAR(CurvatureAt(kFromRest, 0.5), 0, 1e-15);
}

TEST(TSplinePath, KeepsTheSegmentsThatAreDelivered) {
  const TList<TPointXD> points = Helix(20);
  const TSplinePath path(points);
  std::vector<TCubicBezXD> delivered;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD& Segment) { delivered.push_back(Segment); });
  ASSERT_TRUE(curve.CreateCorss(points));
  ASSERT_EQ(path.SegmentCount(), 19);
  EXPECT_EQ(path.Dimension(), 4);
  double length = 0;
  for (int i = 0; i < 19; ++i) {
    const TCubicBezXD& expected = delivered[static_cast<std::size_t>(i)];
    const TCubicBezXD segment = path.Segment(i);
    EXPECT_EQ(segment.FP0.Items, expected.FP0.Items);
    EXPECT_EQ(segment.FP1.Items, expected.FP1.Items);
    EXPECT_EQ(segment.FP2.Items, expected.FP2.Items);
    EXPECT_EQ(segment.FP3.Items, expected.FP3.Items);
    EXPECT_EQ(segment.FP3.FDimension, 4);
    EXPECT_EQ(segment.FLength, expected.FLength);
    EXPECT_EQ(path.LengthBefore(i), length);
    length += expected.FLength;
  }
  EXPECT_EQ(path.Length(), length);
}

TEST(TSplinePath, FewerThanThreePointsRaise) {
  EXPECT_THAT(Calling([] {
                TSplinePath path({PointOf({1}), PointOf({2})});
              }),
              RaisesGeneralError(testing::HasSubstr("3 points")));
}

TEST(TSplineWalk, GivesThePointAtALengthInAnyOrder) {
  const TSplinePath path(Helix(20));
  TSplineWalk walk(path);
  for (const double share : {0.0, 0.1, 0.7, 0.3, 1.0, 0.02, 1.0, 0.99}) {
    const double length = share * path.Length();
    const TPointXD point = walk(length);
    // The length up to there, by many short lines.
    double measured = 0;
    double nearest = 1e9;
    double atNearest = 0;
    TPointXD before = path.Segment(0).FP0;
    for (int i = 0; i < path.SegmentCount(); ++i) {
      const TCubicBezXD segment = path.Segment(i);
      for (int k = 1; k <= 500; ++k) {
        const TPointXD here = segment.EvalPoint(k / 500.0);
        measured += here.DistanceTo(before);
        before = here;
        if (const double distance = here.DistanceTo(point); distance < nearest) {
          nearest = distance;
          atNearest = measured;
        }
      }
    }
    EXPECT_NEAR(atNearest, length, 3e-3) << share;  // the lines are 0.002 long
  }
}

TEST(TSplineWalk, AtAJointIsItsPoint) {
  const TList<TPointXD> points = Helix(9);
  const TSplinePath path(points);
  TSplineWalk walk(path);
  for (int i = 0; i < path.SegmentCount(); ++i) EXPECT_EQ(walk(path.LengthBefore(i)).Items, points[i].Items) << i;
  EXPECT_EQ(walk(path.Length()).Items, points.Last().Items);
}

}  // namespace
}  // namespace ZORBase::Tool
