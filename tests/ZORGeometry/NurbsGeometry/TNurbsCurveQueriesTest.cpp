// What the curves answer beyond evaluation: the closest point, the curvature, and many parameters or lengths at once.
#include <ZORBase/ZORGeometry/NurbsGeometry.h>

#include "support/TestSupport.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::IsExactPose;
using Test::PosesFrom;
using Test::RaisesGeneralError;

double Uniform(std::mt19937_64& Random, double From, double To) {
  return From + (To - From) * static_cast<double>(Random() >> 11U) * 0x1p-53;
}

// A path that wanders through a box of 100, crossing itself.
TNurbs2D WanderingCurve(std::mt19937_64& Random, int Count) {
  TList<TPoint2D> points;
  for (int i = 0; i < Count; ++i) points.Add({Uniform(Random, 0, 100), Uniform(Random, 0, 100)});
  TNurbs2D curve;
  EXPECT_TRUE(curve.CreateCross(points, mChord));
  return curve;
}

TNurbs6D WanderingPath(std::mt19937_64& Random, int Count) {
  TPoint6DList poses;
  for (int i = 0; i < Count; ++i) {
    poses.AddAndNormal(Uniform(Random, 0, 100), Uniform(Random, 0, 100), Uniform(Random, 0, 100),
                       Uniform(Random, -1, 1), Uniform(Random, -1, 1), Uniform(Random, 0.1, 1));
  }
  TNurbs6D curve;
  EXPECT_TRUE(curve.CreateCross(&poses, mChord));
  return curve;
}

TNurbs2D QuarterCircle(double Radius, int Steps) {
  TList<TPoint2D> points;
  for (int i = 0; i <= Steps; ++i) {
    const double angle = kPi / 2 * i / Steps;
    points.Add({Radius * std::cos(angle), Radius * std::sin(angle)});
  }
  TNurbs2D curve;
  EXPECT_TRUE(curve.CreateCross(points, mChord));
  return curve;
}

// ---------------------------------------------------------------------------------------------- closest point

// The distance by brute force: no sample may be closer than what the search found.
template <class TCurve, class TPoint>
double SampledDistance(const TCurve& Curve, const TPoint& Point, int Samples) {
  double best = std::numeric_limits<double>::infinity();
  for (int i = 0; i <= Samples; ++i) {
    best = std::min(best, (Curve.EvalPoint(static_cast<double>(i) / Samples) - Point).Mag());
  }
  return best;
}

TEST(ClosestPoint, APointOfTheCurveIsFoundAtItsOwnParameter) {
  std::mt19937_64 random(7);
  for (int round = 0; round < 20; ++round) {
    const TNurbs2D curve = WanderingCurve(random, 12);
    for (int i = 0; i < 50; ++i) {
      const double u = Uniform(random, 0, 1);
      const auto found = curve.ClosestPoint(curve.EvalPoint(u));
      EXPECT_NEAR(found.Distance, 0, 1e-12);
      EXPECT_NEAR(found.Param, u, 1e-12);
    }
  }
}

TEST(ClosestPoint, APoseOfThePathIsFoundAtItsOwnParameter) {
  std::mt19937_64 random(8);
  for (int round = 0; round < 10; ++round) {
    const TNurbs6D curve = WanderingPath(random, 20);
    for (int i = 0; i < 30; ++i) {
      const double u = Uniform(random, 0, 1);
      const auto found = curve.ClosestPoint(curve.EvalPoint(u));
      EXPECT_NEAR(found.Distance, 0, 1e-12);
      EXPECT_NEAR(found.Param, u, 1e-12);
    }
  }
}

TEST(ClosestPoint, NoSampleOfTheCurveIsCloser) {
  std::mt19937_64 random(9);
  for (int round = 0; round < 20; ++round) {
    const TNurbs2D curve = WanderingCurve(random, 15);
    for (int i = 0; i < 20; ++i) {
      const TPoint2D point{Uniform(random, -50, 150), Uniform(random, -50, 150)};
      const auto found = curve.ClosestPoint(point);
      EXPECT_LE(found.Distance, SampledDistance(curve, point, 2000));
      EXPECT_EQ(found.Distance, (curve.EvalPoint(found.Param) - point).Mag());
      EXPECT_EQ(found.Point.X, curve.EvalPoint(found.Param).X);
    }
  }
}

TEST(ClosestPoint, NoSampleOfAPathIsCloser) {
  std::mt19937_64 random(10);
  const TNurbs6D curve = WanderingPath(random, 40);
  for (int i = 0; i < 100; ++i) {
    TPoint6D point;
    for (int k = 0; k < 6; ++k) point.Items(k) = Uniform(random, -20, 120);
    EXPECT_LE(curve.ClosestPoint(point).Distance, SampledDistance(curve, point, 2000));
  }
}

TEST(ClosestPoint, TheLineToItStandsAtRightAnglesToTheCurve) {
  std::mt19937_64 random(11);
  const TNurbs2D curve = WanderingCurve(random, 15);
  for (int i = 0; i < 200; ++i) {
    const TPoint2D point{Uniform(random, 0, 100), Uniform(random, 0, 100)};
    const auto found = curve.ClosestPoint(point);
    if (found.Param == 0 || found.Param == 1) continue;
    std::array<TPoint2D, 4> derivs{};
    curve.CurveDerivsAlg1(found.Param, derivs);
    const TPoint2D away = (point - found.Point).Normal();
    const TPoint2D along = derivs[1].Normal();
    EXPECT_NEAR(away.X * along.X + away.Y * along.Y, 0, 1e-9);
  }
}

TEST(ClosestPoint, BeyondAnEndTheEndIsClosest) {
  const TNurbs2D curve = QuarterCircle(10, 8);
  EXPECT_EQ(curve.ClosestPoint({20, -1}).Param, 0);
  EXPECT_EQ(curve.ClosestPoint({-1, 20}).Param, 1);
  EXPECT_EQ(curve.ClosestPoint({20, 0}).Distance, 10);
}

// Both halves of the path are mirror images, so the point on the axis is equally far from either.
TEST(ClosestPoint, OfTwoEquallyClosePlacesTheOneWithTheSmallerParameterIsGiven) {
  TNurbs2D curve;
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
  const std::vector<TPoint2D> valley = {{-4, 8}, {-4, -8}, {4, -8}, {4, 8}};
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, valley, 4));
  const auto found = curve.ClosestPoint({0, 2});
  EXPECT_LT(found.Param, 0.5);
  EXPECT_GT(found.Param, 0);
  EXPECT_LE(found.Distance, SampledDistance(curve, TPoint2D{0, 2}, 4000) + 1e-14);
}

// Mirror images again, of many shapes: the last bit of the two distances is anything.
TEST(ClosestPoint, RoundingDoesNotChooseBetweenEquallyClosePlaces) {
  std::mt19937_64 random(12);
  int besideTheAxis = 0;
  for (int round = 0; round < 500; ++round) {
    TList<TPoint2D> points;
    for (int i = 0; i < 4; ++i) points.Add({2.0 * i - 7.0, Uniform(random, -10, 10)});
    for (int i = 3; i >= 0; --i) points.Add({-points[i].X, points[i].Y});
    TNurbs2D curve;
    ASSERT_TRUE(curve.CreateCross(points, mChord));
    const TPoint2D onAxis{0, Uniform(random, -20, 20)};
    const auto found = curve.ClosestPoint(onAxis);
    EXPECT_LE(found.Distance, SampledDistance(curve, onAxis, 500) + 1e-13);
    if (std::fabs(found.Point.X) < 1e-3) continue;  // on the axis there is but one place
    EXPECT_LT(found.Param, 0.5) << "round " << round;
    ++besideTheAxis;
  }
  EXPECT_GT(besideTheAxis, 100);
}

// x = w (a (3/2 + 2 w^2) - 6 c (1/4 - w^2)) and y = 3 d (1/4 - w^2) with w = u - 1/2: with a = 1 and c = 3 the curve crosses itself
// at w^2 = 0.15, on the axis at 0.3 d.
TEST(ClosestPoint, WhereTheCurveCrossesItselfTheFirstPassageIsGiven) {
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
  for (int i = 1; i <= 100; ++i) {
    const double d = 0.37 * i;
    TNurbs2D curve;
    ASSERT_TRUE(curve.CreateByCtlPoints(knots, std::vector<TPoint2D>{{-1, 0}, {3, d}, {-3, d}, {1, 0}}, 4));
    const auto found = curve.ClosestPoint({0, 0.3 * d});
    EXPECT_NEAR(found.Param, 0.5 - std::sqrt(0.15), 1e-14) << d;
    EXPECT_NEAR(found.Distance, 0, 1e-14) << d;
  }
}

TEST(ClosestPoint, TheCentreOfAnArcEndsTheSearchToo) {
  const TNurbs2D curve = QuarterCircle(100, 64);
  // The end tangents are those of the outer chords: between the first two points the curve stays inside the circle.
  const auto found = curve.ClosestPoint({0, 0});
  EXPECT_NEAR(found.Distance, 100, 0.01);
  EXPECT_LE(found.Distance, SampledDistance(curve, TPoint2D{0, 0}, 4000));
}

// Where the slope of the distance turns, the distance is not bent at all: to halve down to pieces that are would take millions of
// them, a tenth of a second or more for a point in five here.
TEST(ClosestPoint, AnInflectionOfTheDistanceEndsTheSearchToo) {
  constexpr int kPoints = 10'000;
  TNurbs2D curve;
  ASSERT_TRUE(curve.CreateCross({{0, 0}, {4, 0}, {1, 0}, {3, 1}, {4, 0}}, mChord));
  for (int i = 0; i < kPoints; ++i) {
    const TPoint2D point{1 + 0.2 * i / kPoints, 1};
    ASSERT_LE(curve.ClosestPoint(point).Distance, SampledDistance(curve, point, 20));
  }
}

// The curve runs to and fro on the x axis: x = 33 (0.3 v - v^3) with v = u - 0.3. Seen from far ahead, the distance falls from
// v = -0.3 on with a point of inflection at v = 0 up to the turning point v = sqrt(0.1), where x = 6.6 v. Near the inflection rounding
// decides the signs of second differences: a search that relies on them does not end before the test's time is over.
TEST(ClosestPoint, APointOfInflectionOfTheDistanceDoesNotHoldUpTheSearch) {
  TNurbs2D curve;
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
  const std::vector<TPoint2D> points = {{-2.079, 0}, {-1.749, 0}, {8.481, 0}, {-4.389, 0}};
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, 4));
  const double v = std::sqrt(0.1);
  for (int i = 0; i < 10'000; ++i) {
    const double x = 50.0 + 0.005 * i;
    const double y = x / 7;
    const auto found = curve.ClosestPoint({x, y});
    ASSERT_NEAR(found.Param, 0.3 + v, 1e-12) << x;
    ASSERT_NEAR(found.Distance, std::hypot(x - 6.6 * v, y), 1e-12) << x;
  }
}

TEST(ClosestPoint, ALineIsAsFarAsGeometrySays) {
  TNurbs2D curve;
  ASSERT_TRUE(curve.CreateCross({{0, 0}, {1, 0}, {2, 0}, {3, 0}}, mChord));
  const auto found = curve.ClosestPoint({1.25, 2});
  EXPECT_NEAR(found.Param, 1.25 / 3, 1e-14);
  EXPECT_NEAR(found.Distance, 2, 1e-15);
}

TEST(ClosestPoint, ACuspInsideTheCurveIsFound) {
  // A triple knot at 0.5 lets two straight lines meet in a corner at (5, 5).
  TNurbs2D curve;
  const std::vector<double> knots = {0, 0, 0, 0, 0.5, 0.5, 0.5, 1, 1, 1, 1};
  const std::vector<TPoint2D> corner = {{0, 0}, {1, 1}, {2, 2}, {5, 5}, {6, 4}, {7, 3}, {10, 0}};
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, corner, 7));
  const auto found = curve.ClosestPoint({5, 9});
  EXPECT_NEAR(found.Param, 0.5, 1e-12);
  EXPECT_NEAR(found.Distance, 4, 1e-12);
  EXPECT_NEAR(curve.ClosestPoint({4, 4}).Distance, 0, 1e-12);
}

TEST(ClosestPoint, ACurveThatStaysInOnePlaceIsAsFarAsThatPlace) {
  TNurbs2D curve;
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, std::vector<TPoint2D>(4, TPoint2D{1, 2}), 4));
  const auto found = curve.ClosestPoint({4, 6});
  EXPECT_EQ(found.Param, 0);
  EXPECT_EQ(found.Distance, 5);
}

// Between 0.5 and the next double the curve crosses from (3, 0) to (3, 8). No place lies within: seen from above, the end is closest.
TEST(ClosestPoint, AnIntervalAsNarrowAsARoundingHasItsEndsOnly) {
  TNurbs2D curve;
  const double behind = std::nextafter(0.5, 1);
  const std::vector<double> knots = {0, 0, 0, 0, 0.5, 0.5, 0.5, behind, 1, 1, 1, 1};
  const std::vector<TPoint2D> points = {{0, 0}, {1, 0}, {2, 0}, {3, 0}, {3, 8}, {4, 8}, {5, 8}, {6, 8}};
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, 8));
  for (const double y : {4.5, 5.5, 6.25, 7.0}) {
    const TPoint2D point{3, y};
    const auto found = curve.ClosestPoint(point);
    EXPECT_EQ(found.Distance, (curve.EvalPoint(found.Param) - point).Mag());
    EXPECT_EQ(found.Distance, 8 - y);
    EXPECT_EQ(found.Param, behind);
  }
}

TEST(ClosestPoint, KnotsThatAreNotClampedRaise) {
  for (const std::vector<double>& knots : std::vector<std::vector<double>>{{0, 0.1, 0.2, 0.3, 0.7, 0.8, 0.9, 1},
                                                                           {-1, 0, 0, 0, 1, 1, 1, 1},
                                                                           {0, 0, 0, 0, 1, 1, 1, 2},
                                                                           {0, 0, 0, 0, 0.7, 0.3, 1, 1, 1, 1},
                                                                           {0, 0, 0, 0, 1, 1, 1}}) {
    const int count = static_cast<int>(knots.size()) - 4;
    TNurbs2D curve;
    ASSERT_TRUE(curve.CreateByCtlPoints(knots, std::vector<TPoint2D>(knots.size() - 4, TPoint2D{1, 2}), count));
    EXPECT_THAT(Calling([&] {
                  (void)curve.ClosestPoint({0, 0});
                }),
                RaisesGeneralError(testing::HasSubstr("four zeros to four ones")))
        << count << " points";
  }
}

TEST(ClosestPoint, PointsThatAreNotFiniteOrTooFarAndCurvesWithoutPointsRaise) {
  EXPECT_THAT(Calling([&] {
                (void)QuarterCircle(1, 4).ClosestPoint({std::nan(""), 0});
              }),
              RaisesGeneralError(testing::HasSubstr("not finite")));
  TNurbs2D curve;
  const std::vector<double> clamped = {0, 0, 0, 0, 1, 1, 1, 1};
  ASSERT_TRUE(curve.CreateByCtlPoints(clamped, std::vector<TPoint2D>{{0, 0}, {1, 0}, {1e160, 1}, {3, 0}}, 4));
  EXPECT_THAT(Calling([&] {
                (void)curve.ClosestPoint({0, 0});
              }),
              RaisesGeneralError(testing::HasSubstr("too far away for its distance to be measured")));
  EXPECT_THAT(Calling([] {
                (void)TNurbs2D().ClosestPoint({0, 0});
              }),
              RaisesGeneralError(testing::HasSubstr("no control points")));
}

// ---------------------------------------------------------------------------------------------- Bezier segments

TEST(SpanBezier, IsTheCurveBetweenTwoOfItsPoints) {
  std::mt19937_64 random(14);
  const TNurbs2D curve = WanderingCurve(random, 9);
  for (int span = 3; span < curve.pCount(); ++span) {
    const auto b = curve.SpanBezier(span);
    const double from = curve.BasicFun().Items(span);
    const double to = curve.BasicFun().Items(span + 1);
    for (const double t : {0.0, 0.25, 0.5, 0.875, 1.0}) {
      const double r = 1 - t;
      const TPoint2D point = b[0] * (r * r * r) + b[1] * (3 * r * r * t) + b[2] * (3 * r * t * t) + b[3] * (t * t * t);
      const TPoint2D expected = curve.EvalPoint(from + (to - from) * t);
      EXPECT_NEAR(point.X, expected.X, 1e-11);
      EXPECT_NEAR(point.Y, expected.Y, 1e-11);
    }
  }
}

TEST(SpanBezier, IntervalsThatAreEmptyOrMissingRaise) {
  const TNurbs2D curve = QuarterCircle(10, 4);
  for (const int span : {-1, 0, 2, curve.pCount(), 1000000}) {
    EXPECT_THAT(Calling([&] { (void)curve.SpanBezier(span); }),
                RaisesGeneralError(testing::HasSubstr("is empty, or does not exist")));
  }
  EXPECT_THAT(Calling([] { (void)TNurbs2D().SpanBezier(3); }), RaisesGeneralError(testing::_));
}

// ---------------------------------------------------------------------------------------------- curvature

TEST(Curvature, AnArcHasTheReciprocalOfItsRadius) {
  const TNurbs2D curve = QuarterCircle(50, 64);
  // The end tangents are those of the outer chords, which bends the curve a little near its ends.
  for (double u = 0.2; u < 0.85; u += 0.05) EXPECT_NEAR(curve.CurvatureRadius(u), 50, 0.03);
}

TEST(Curvature, AStraightLineHasNone) {
  TNurbs6D curve;
  const TPoint6DList poses = PosesFrom({"0,0,0,0,0,1", "1,0,0,0,0,1", "2,0,0,0,0,1", "4,0,0,0,0,1"});
  ASSERT_TRUE(curve.CreateCross(&poses, mChord));
  EXPECT_NEAR(curve.Curvature(0.4), 0, 1e-12);
}

// The parabola (u, u^2) as a Bezier segment; its curvature is 2 / (1 + 4 u^2)^(3/2).
TEST(Curvature, AParabolaHasTheOneOfItsFormula) {
  TNurbs2D curve;
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
  const std::vector<TPoint2D> points = {{0, 0}, {1.0 / 3, 0}, {2.0 / 3, 1.0 / 3}, {1, 1}};
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, 4));
  for (double u = 0; u <= 1; u += 0.125) EXPECT_NEAR(curve.Curvature(u), 2 / std::pow(1 + 4 * u * u, 1.5), 1e-13);
}

TEST(Curvature, WhereTheCurveStandsStillItIsNoNumber) {
  TNurbs2D curve;
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
  const std::vector<TPoint2D> points = {{1, 1}, {1, 1}, {1, 1}, {1, 1}};
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, 4));
  EXPECT_TRUE(std::isnan(curve.Curvature(0.5)));
}

// ---------------------------------------------------------------------------------------------- many at once

TEST(ManyAtOnce, PointsAtRisingFallingAndRandomParametersAreThoseOfTheSingleForm) {
  std::mt19937_64 random(12);
  const TNurbs6D curve = WanderingPath(random, 50);
  std::vector<double> params = {-1, 2, 0, 1, std::nan("")};
  for (int i = 0; i < 1000; ++i) params.push_back(Uniform(random, -0.1, 1.1));
  for (int i = 0; i < 1000; ++i) params.push_back(i / 999.0);
  for (const double knot : curve.BasicFun().uArr()) {
    params.insert(params.end(), {knot, std::nextafter(knot, 2), std::nextafter(knot, -2)});
  }
  std::vector<TPoint6D> points(params.size());
  curve.EvalPoints(params, points);
  for (std::size_t i = 0; i < params.size(); ++i) {
    ASSERT_THAT(points[i], IsExactPose(curve.EvalPoint(params[i]))) << params[i];
  }
}

TEST(ManyAtOnce, ParametersOfManyLengthsAreThoseOfTheSingleForm) {
  std::mt19937_64 random(13);
  const TNurbs6D curve = WanderingPath(random, 10);
  std::vector<double> lengths;
  for (int i = 0; i < 2000; ++i) lengths.push_back(Uniform(random, -1, curve.CurveLength() + 1));
  std::sort(lengths.begin(), lengths.begin() + 1000);
  std::vector<double> params(lengths.size());
  curve.ParamOfLength(lengths, params);
  for (std::size_t i = 0; i < lengths.size(); ++i) ASSERT_EQ(params[i], curve.ParamOfLength(lengths[i]));
  std::vector<double> back(lengths.size());
  curve.SUTable().GetSByU(params, back);
  for (std::size_t i = 0; i < lengths.size(); ++i) ASSERT_EQ(back[i], curve.GetSByU(params[i]));
}

TEST(ManyAtOnce, AResultThatIsTooShortRaisesAndIsNotTouched) {
  const TNurbs2D curve = QuarterCircle(10, 8);
  const std::vector<double> asked = {0.1, 0.2, 0.3};
  std::vector<TPoint2D> points(2, TPoint2D{7, 7});
  EXPECT_THAT(Calling([&] { curve.EvalPoints(asked, points); }),
              RaisesGeneralError(testing::HasSubstr("places for 2 points")));
  EXPECT_EQ(points[0].X, 7);
  std::vector<double> params(2, 7);
  EXPECT_THAT(Calling([&] { curve.ParamOfLength(asked, params); }),
              RaisesGeneralError(testing::HasSubstr("places for 2 results")));
  EXPECT_EQ(params[0], 7);
}

}  // namespace
}  // namespace ZORBase
