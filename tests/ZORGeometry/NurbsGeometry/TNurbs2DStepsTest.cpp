// The steps of a fit in the plane, one by one, and what the plane curve refuses.
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs2D.h>

#include <limits>

#include "CurveTestSupport.h"
#include "support/TestSupport.h"

namespace ZORBase {
namespace {

using Test::Calling;
using Test::ClampedKnots;
using Test::RaisesGeneralError;

// Steps of the lengths 5, 13 and 2, whose square roots are no longer in proportion.
const TList<TPoint2D> kUnevenPath = {{0, 0}, {3, 4}, {8, 16}, {8, 18}};
constexpr double kUnevenLength = 5 + 13 + 2;

const TList<TPoint2D> kTwiceTheSame = {{0, 0}, {1, 0}, {1, 5e-7}, {2, 0}};

using TSpread = bool (*)(const TList<TPoint2D>&, std::span<double>, double&);
constexpr std::array<TSpread, 3> kPlaneSpreads = {TNurbs2D::EquallyParalize, TNurbs2D::ChordParalize,
                                                  TNurbs2D::CentripetalParalize};

std::array<double, 4> SpreadOf(TSpread Spread) {
  std::array<double, 4> params{-1, -1, -1, -1};
  double length = 0;
  EXPECT_TRUE(Spread(kUnevenPath, params, length));
  EXPECT_DOUBLE_EQ(length, kUnevenLength);
  return params;
}

TNurbs2D PlaneCurve() {
  TNurbs2D curve;
  EXPECT_TRUE(curve.CreateCross(kUnevenPath, mChord));
  return curve;
}

bool IsSamePlace(const TPoint2D& P, const TPoint2D& Q) { return P.X == Q.X && P.Y == Q.Y; }

// ---------------------------------------------------------------------------------------------- the steps

TEST(TNurbs2DSteps, ParametersAreSpreadEquallyByTheChordsOrByTheirRoots) {
  const double roots = std::sqrt(5.0) + std::sqrt(13.0) + std::sqrt(2.0);
  const auto isNear = [](double Expected) { return testing::DoubleNear(Expected, 1e-15); };
  EXPECT_THAT(SpreadOf(TNurbs2D::EquallyParalize), testing::ElementsAre(0, isNear(1.0 / 3), isNear(2.0 / 3), 1));
  EXPECT_THAT(SpreadOf(TNurbs2D::ChordParalize), testing::ElementsAre(0, isNear(0.25), isNear(0.9), 1));
  EXPECT_THAT(SpreadOf(TNurbs2D::CentripetalParalize),
              testing::ElementsAre(0, isNear(std::sqrt(5.0) / roots), isNear(1 - std::sqrt(2.0) / roots), 1));
}

TEST(TNurbs2DSteps, NeighboursThatAreTheSameHaveNoParameters) {
  for (const TSpread spread : kPlaneSpreads) {
    std::array<double, 4> params{};
    double length = 0;
    EXPECT_FALSE(spread(kTwiceTheSame, params, length));
  }
}

TEST(TNurbs2DSteps, ParametersWithoutAPlaceForEveryPointRaise) {
  for (const TSpread spread : kPlaneSpreads) {
    std::array<double, 3> params{7, 7, 7};
    double length = 7;
    EXPECT_THAT(Calling([&] { spread(kUnevenPath, params, length); }),
                RaisesGeneralError("TNurbs2D.CurveParalize: 4 points, but places for 3 parameters"));
    EXPECT_THAT(params, testing::Each(7));
    EXPECT_EQ(length, 7);
  }
}

TEST(TNurbs2DSteps, SolvingForTheControlPointsGivesThoseOfTheFit) {
  const TNurbs2D curve = PlaneCurve();
  const std::span<const TPoint2D> fitted = curve.pointArr();
  std::vector<TPoint2D> P(fitted.begin(), fitted.end());
  P[2] = P[3] = {7, 7};
  TNurbs2D::SolveTridiagonal(3, kUnevenPath, curve.BasicFun().uArr(), P);
  EXPECT_TRUE(std::ranges::equal(P, fitted, IsSamePlace));
}

TEST(TNurbs2DSteps, SolvingRaisesForArraysThatAreTooShortAndTouchesNothing) {
  const TNurbs2D curve = PlaneCurve();
  const std::span<const double> U = curve.BasicFun().uArr();
  std::vector<TPoint2D> P(6, TPoint2D{7, 7});
  const auto tooShort = RaisesGeneralError(
      "TNurbs2D.SolveTridiagonal: n is below 3, or the points, knots or control points do not reach for it");
  EXPECT_THAT(Calling([&] { TNurbs2D::SolveTridiagonal(2, kUnevenPath, U, P); }), tooShort);
  EXPECT_THAT(Calling([&] { TNurbs2D::SolveTridiagonal(4, kUnevenPath, U, P); }), tooShort);
  EXPECT_THAT(Calling([&] { TNurbs2D::SolveTridiagonal(3, kUnevenPath, U.first(9), P); }), tooShort);
  EXPECT_THAT(Calling([&] { TNurbs2D::SolveTridiagonal(3, kUnevenPath, U, std::span(P).first(5)); }), tooShort);
  for (const TPoint2D& point : P) EXPECT_TRUE(IsSamePlace(point, {7, 7}));
}

TEST(TNurbs2DSteps, SolvingNamesPointsWhoseKnotsAreTooClose) {
  const std::vector<double> U = {0, 0, 0, 0, 0.5, 0.5 + 5e-7, 1, 1, 1, 1};
  std::vector<TPoint2D> P(6, TPoint2D{7, 7});
  EXPECT_THAT(
      Calling([&] { TNurbs2D::SolveTridiagonal(3, kUnevenPath, U, P); }),
      RaisesGeneralError("Error TNurbs2D.CreateCross: the points 1 and 2 (counted from 0) are closer than 1e-6 of "
                         "the path; drop one of them or divide the path"));
  for (const TPoint2D& point : P) EXPECT_TRUE(IsSamePlace(point, {7, 7}));
}

TEST(TNurbs2DSteps, SolvingRaisesForKnotsThatAreNoNumbers) {
  for (const double bad : {kNaN, kInfinity}) {
    const std::vector<double> U = {0, 0, 0, 0, 0.5, bad, 1, 1, 1, 1};
    std::vector<TPoint2D> P(6, TPoint2D{7, 7});
    EXPECT_THAT(Calling([&] { TNurbs2D::SolveTridiagonal(3, kUnevenPath, U, P); }),
                RaisesGeneralError(testing::HasSubstr("closer than 1e-6 of the path")));
    for (const TPoint2D& point : P) EXPECT_TRUE(IsSamePlace(point, {7, 7}));
  }
}

// ---------------------------------------------------------------------------------------------- what is refused

TEST(TNurbs2DRefuses, NeighboursCloserThanAMillionthOfThePath) {
  TNurbs2D curve;
  EXPECT_THAT(
      Calling([&] {
        curve.CreateCross({{0, 0}, {1e4, 0}, {1e4 + 0.005, 0}, {2e4, 0}}, mChord);
      }),
      RaisesGeneralError("Error TNurbs2D.CreateCross: the points 1 and 2 (counted from 0) are closer than 1e-6 of "
                         "the path; drop one of them or divide the path"));
  EXPECT_EQ(curve.pCount(), 0);
}

TEST(TNurbs2DRefuses, MorePointsThanAreGiven) {
  TNurbs2D curve = PlaneCurve();
  const std::vector<TPoint2D> points(4);
  EXPECT_THAT(Calling([&] { curve.CreateByCtlPoints(ClampedKnots(4), points, 5); }),
              RaisesGeneralError("TNurbs2D.CreateByCtlPoints: 5 points asked for, 4 given"));
  EXPECT_THAT(Calling([&] { curve.CreateByCtlPoints(ClampedKnots(4), points, -1); }),
              RaisesGeneralError("TNurbs2D.CreateByCtlPoints: -1 points asked for, 4 given"));
  EXPECT_EQ(curve.pCount(), 6);
}

TEST(TNurbs2DRefuses, ResultsWithoutRoom) {
  const TNurbs2D curve = PlaneCurve();
  std::array<TPoint2D, 3> room;
  room.fill({7, 7});
  EXPECT_THAT(Calling([&] { curve.CurveDerivsAlg1(0.5, room); }),
              RaisesGeneralError("TNurbs2D.CurveDerivsAlg1: the result needs 4 places"));
  EXPECT_THAT(Calling([&] {
                curve.EvalPoints(std::array{0.1, 0.2, 0.3, 0.4}, room);
              }),
              RaisesGeneralError("TNurbs2D.EvalPoints: 4 parameters, but places for 3 points"));
  for (const TPoint2D& point : room) EXPECT_TRUE(IsSamePlace(point, {7, 7}));
}

TEST(TNurbs2DRefuses, KnotIntervalsThatAreEmptyOrNotThere) {
  const TNurbs2D curve = PlaneCurve();
  for (const int span : {-1, 2, 6, kLargestInt, kSmallestInt}) {
    EXPECT_THAT(Calling([&] { curve.SpanBezier(span); }),
                RaisesGeneralError("TNurbs2D.SpanBezier: the knot interval " + std::to_string(span) +
                                   " is empty, or does not exist"));
  }
  TNurbs2D doubled;
  const std::vector<TPoint2D> points = {{0, 0}, {1, 0}, {2, 1}, {3, 0}, {4, 0}, {5, 1}};
  ASSERT_TRUE(doubled.CreateByCtlPoints(std::array{0.0, 0.0, 0.0, 0.0, 0.5, 0.5, 1.0, 1.0, 1.0, 1.0}, points, 6));
  EXPECT_THAT(Calling([&] { doubled.SpanBezier(4); }), RaisesGeneralError(testing::HasSubstr("interval 4 is empty")));
  EXPECT_NO_THROW(doubled.SpanBezier(5));
}

TEST(TNurbs2DRefuses, AParameterBeforeTheFirstKnot) {
  TNurbs2D curve;
  const std::vector<TPoint2D> points = {{0, 0}, {1, 0}, {2, 1}, {3, 0}};
  ASSERT_TRUE(curve.CreateByCtlPoints(std::array{0.25, 0.25, 0.25, 0.25, 1.0, 1.0, 1.0, 1.0}, points, 4));
  EXPECT_THAT(Calling([&] { curve.EvalPoint(0.125); }),
              RaisesGeneralError("TNurbs2D.EvalPoint: the parameter 0.12500000000000000 lies before the first knot"));
}

TEST(TNurbs2DRefuses, WhateverNeedsControlPointsWithoutThem) {
  TNurbs2D curve;
  const auto none = RaisesGeneralError("TNurbs2D: the curve has no control points yet");
  std::array<TPoint2D, 4> CK;
  EXPECT_THAT(Calling([&] { curve.EvalPoint(0.5); }), none);
  EXPECT_THAT(Calling([&] { curve.EvalPoints({}, CK); }), none);
  EXPECT_THAT(Calling([&] { curve.CurveDerivsAlg1(0.5, CK); }), none);
  EXPECT_THAT(Calling([&] { curve.ClosestPoint({}); }), none);
  EXPECT_THAT(Calling([&] { curve.GetIsClosed(); }), none);
  EXPECT_THAT(Calling([&] { curve.Reverse(); }), none);
  EXPECT_THAT(Calling([&] { curve.InitLengthByUArray(); }), none);
}

// ---------------------------------------------------------------------------------------------- knots that are no fit's

// The basis functions of degree 3 over 0, 0, 0, 0, 1, 1, 1, 1 are those of Bernstein, whether an index finds the span or not.
TEST(TNurbs2D, OverOneIntervalIsTheBezierSegmentOfItsControlPoints) {
  TNurbs2D curve;
  const std::vector<TPoint2D> P = {{0, 0}, {1, 3}, {5, -2}, {8, 1}};
  ASSERT_TRUE(curve.CreateByCtlPoints(ClampedKnots(4), P, 4));
  for (const double u : {0.125, 0.25, 0.5, 0.875}) {
    const double s = 1 - u;
    const TPoint2D expected = P[0] * (s * s * s) + P[1] * (3 * s * s * u) + P[2] * (3 * s * u * u) + P[3] * (u * u * u);
    const TPoint2D slope = (P[1] - P[0]) * (3 * s * s) + (P[2] - P[1]) * (6 * s * u) + (P[3] - P[2]) * (3 * u * u);
    std::array<TPoint2D, 4> CK;
    curve.CurveDerivsAlg1(u, CK);
    EXPECT_NEAR((curve.EvalPoint(u) - expected).Mag(), 0, 1e-14);
    EXPECT_NEAR((CK[0] - expected).Mag(), 0, 1e-14);
    EXPECT_NEAR((CK[1] - slope).Mag(), 0, 1e-13);
  }
}

// Evenly spaced control points make the even motion (3 u, 0); (1.2, 1) is right above u = 0.4.
TEST(TNurbs2D, OverOneIntervalHasAClosestPlace) {
  TNurbs2D curve;
  ASSERT_TRUE(curve.CreateByCtlPoints(ClampedKnots(4), std::array<TPoint2D, 4>{{{0, 0}, {1, 0}, {2, 0}, {3, 0}}}, 4));
  const auto closest = curve.ClosestPoint({1.2, 1});
  EXPECT_NEAR(closest.Param, 0.4, 1e-12);
  EXPECT_NEAR(closest.Distance, 1, 1e-12);
  EXPECT_EQ(curve.ClosestPoint({-5, 0}).Param, 0);
  EXPECT_EQ(curve.ClosestPoint({5, 1}).Param, 1);
}

}  // namespace
}  // namespace ZORBase
