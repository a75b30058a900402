// The closest point of curves that break: where four inner knots are the same, and where five are at an end.
#include <ZORBase/ZORGeometry/NurbsGeometry.h>

#include "support/TestSupport.h"

#include <cmath>
#include <random>
#include <vector>

namespace ZORBase {
namespace {

// A quadruple knot at 0.5: y = 0 up to (3, 0), just below the knot, and y = 8 on from (6, 8), at the knot.
TNurbs2D BrokenLine(double EndOfTheFirst = 3) {
  TNurbs2D curve;
  const double step = EndOfTheFirst / 3;
  const std::vector<double> knots = {0, 0, 0, 0, 0.5, 0.5, 0.5, 0.5, 1, 1, 1, 1};
  const std::vector<TPoint2D> points = {{0, 0}, {step, 0}, {2 * step, 0}, {3 * step, 0},
                                        {6, 8}, {7, 8},    {8, 8},        {9, 8}};
  EXPECT_TRUE(curve.CreateByCtlPoints(knots, points, 8));
  return curve;
}

TEST(ClosestPoint, ThePieceBeforeABreakIsSeenToItsEnd) {
  const TNurbs2D curve = BrokenLine();
  for (const TPoint2D& point : {TPoint2D{3.5, 0}, TPoint2D{3, -1}, TPoint2D{4, 1}, TPoint2D{100, -400}}) {
    const auto found = curve.ClosestPoint(point);
    EXPECT_EQ(found.Param, std::nextafter(0.5, 0));
    EXPECT_NEAR(found.Distance, (TPoint2D{3, 0} - point).Mag(), 1e-12);
    EXPECT_EQ(found.Distance, (curve.EvalPoint(found.Param) - point).Mag());
  }
}

TEST(ClosestPoint, ThePieceBehindABreakBeginsAtTheKnot) {
  const TNurbs2D curve = BrokenLine();
  for (const TPoint2D& point : {TPoint2D{5, 8}, TPoint2D{6, 9}, TPoint2D{-100, 400}}) {
    const auto found = curve.ClosestPoint(point);
    EXPECT_EQ(found.Param, 0.5);
    EXPECT_EQ(found.Distance, (TPoint2D{6, 8} - point).Mag());
  }
}

// The place just below the break is not a place of the curve at the break, however close the parameters are.
TEST(ClosestPoint, OfTwoEquallyCloseSidesOfABreakTheFirstIsGiven) {
  const TNurbs2D curve = BrokenLine(6);
  for (const double y : {std::nextafter(4, 0), 4.0, std::nextafter(4, 8)}) {
    const auto found = curve.ClosestPoint({6, y});
    EXPECT_EQ(found.Param, std::nextafter(0.5, 0));
    EXPECT_NEAR(found.Distance, 4, 1e-14);
  }
}

// The end before a break counts as reached. A search that never evaluates it leaves out whatever lies between its distance and that
// of the other side.
TEST(ClosestPoint, NoSampleOfABrokenCurveIsCloser) {
  std::mt19937_64 random(15);
  for (int round = 0; round < 100; ++round) {
    const std::vector<double> knots = {0, 0, 0, 0, 0.25, 0.25, 0.25, 0.25, 0.75, 0.75, 0.75, 0.75, 1, 1, 1, 1};
    std::vector<TPoint2D> points;
    const auto within = [&random](int Size) {
      return 0.01 * static_cast<double>(random() % (100U * static_cast<unsigned>(Size)));
    };
    for (int i = 0; i < 12; ++i) points.push_back({within(100), within(100)});
    TNurbs2D curve;
    ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, 12));
    // Near the end of the first piece or of the second.
    const std::size_t end = 3 + 4 * (random() % 2);
    const TPoint2D point = points[end] + TPoint2D{within(60) - 30, within(60) - 30};
    const auto found = curve.ClosestPoint(point);
    for (int i = 0; i <= 1000; ++i) EXPECT_LE(found.Distance, (curve.EvalPoint(0.001 * i) - point).Mag());
    EXPECT_LE(found.Distance, (points[end] - point).Mag() + 1e-12);
    EXPECT_EQ(found.Distance, (curve.EvalPoint(found.Param) - point).Mag());
  }
}

// Five equal knots at an end part its control point from the rest.
TEST(ClosestPoint, AnEndThatStandsAloneIsSeen) {
  const std::vector<double> knots = {0, 0, 0, 0, 0, 1, 1, 1, 1, 1};
  const std::vector<TPoint2D> points = {{0, 9}, {0, 0}, {1, 0}, {2, 0}, {3, 0}, {3, 9}};
  TNurbs2D curve;
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, 6));
  EXPECT_EQ(curve.ClosestPoint({-1, 9}).Param, 0);
  EXPECT_EQ(curve.ClosestPoint({-1, 9}).Distance, 1);
  EXPECT_EQ(curve.ClosestPoint({4, 9}).Param, 1);
  EXPECT_EQ(curve.ClosestPoint({4, 9}).Distance, 1);
  EXPECT_NEAR(curve.ClosestPoint({-1, 0}).Distance, 1, 1e-12);
  EXPECT_EQ(curve.ClosestPoint({-1, 0}).Param, std::nextafter(0, 1));
  EXPECT_NEAR(curve.ClosestPoint({4, 0}).Distance, 1, 1e-12);
  EXPECT_EQ(curve.ClosestPoint({4, 0}).Param, std::nextafter(1, 0));
  EXPECT_EQ(curve.ClosestPoint({-1, std::nextafter(4.5, 0)}).Param, 0);
  EXPECT_EQ(curve.ClosestPoint({3, std::nextafter(4.5, 9)}).Param, std::nextafter(1, 0));
}

}  // namespace
}  // namespace ZORBase
