// The length of a plane curve: that of its table, held against a quadrature of the curve that knows nothing of the library.
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs2D.h>

#include <cmath>
#include <numbers>

#include "support/PlaneCurveLength.h"
#include "support/TestSupport.h"

namespace ZORBase {
namespace {

using Test::PlaneCurveLength;
using Test::RowsOf;

constexpr std::array kPlaneMethods = {mEqually, mChord, mCentripetal};

// The wing profile, 61 points around it, with a chord of this length.
TList<TPoint2D> WingProfile(double Chord) {
  TList<TPoint2D> points;
  for (const auto& row : RowsOf(Test::FileText(Test::SampleFile("e387.xy.txt")))) {
    points.Add(TPoint2D::Create(row[0] * Chord, row[1] * Chord));
  }
  return points;
}

TNurbs2D ProfileCurve(double Chord, TParalizeMethod Method) {
  TNurbs2D curve;
  EXPECT_TRUE(curve.CreateCross(WingProfile(Chord), Method));
  return curve;
}

double IntegralOf(const TNurbs2D& Curve) { return PlaneCurveLength(Curve.BasicFun().uArr(), Curve.pointArr(), 1e-12L); }

// (t, t^2) for t from 0 to 1: sqrt(5) / 2 + asinh(2) / 4.
TEST(PlaneCurveLength, OfAParabolaIsThatOfItsFormula) {
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1};
  const std::vector<TPoint2D> points = {{0, 0}, {1.0 / 3, 0}, {2.0 / 3, 1.0 / 3}, {1, 1}};
  EXPECT_NEAR(PlaneCurveLength(knots, points, 1e-12L), std::sqrt(5.0) / 2 + std::asinh(2.0) / 4, 1e-13);
}

TEST(TNurbs2DLength, OfAWingProfileOf100MillimetresAndMoreIsTheIntegralOfItsSpeed) {
  for (const double chord : {100.0, 250.0, 1000.0}) {
    for (const TParalizeMethod method : kPlaneMethods) {
      const TNurbs2D curve = ProfileCurve(chord, method);
      const double length = IntegralOf(curve);
      EXPECT_NEAR(curve.CurveLength(), length, 1e-5 * length) << chord << ", method " << method;
      EXPECT_LT(curve.CurveLength(), length) << "chords are shorter";
    }
  }
}

// The table has a row per 0.03 of the unit, whatever that is: with a chord of 1 that is one or two between neighbours, and its
// length is that of a polygon.
TEST(TNurbs2DLength, OfAWingProfileWithAChordOfOneIsThatOfAPolygonOfFewRows) {
  const TNurbs2D curve = ProfileCurve(1.0, mChord);
  EXPECT_EQ(curve.SUTable().Count(), 86);
  double polygon = 0;
  TPoint2D before = curve.EvalPoint(0);
  for (const TSULine& row : curve.SUTable()) {
    const TPoint2D here = curve.EvalPoint(row.u);
    polygon += std::hypot(here.X - before.X, here.Y - before.Y);
    before = here;
  }
  EXPECT_NEAR(curve.CurveLength(), polygon, 1e-14);
  const double length = IntegralOf(curve);
  EXPECT_LT(curve.CurveLength(), length * (1 - 2e-4));
  EXPECT_GT(curve.CurveLength(), length * (1 - 3e-4));
}

TEST(TNurbs2DLength, OfACircleComesCloserWithTheSquareOfTheSpacing) {
  const auto missing = [](double Radius) {
    TList<TPoint2D> points;
    for (int i = 0; i <= 40; ++i) {
      const double angle = 2 * std::numbers::pi * i / 40;
      points.Add(TPoint2D::Create(Radius * std::cos(angle), Radius * std::sin(angle)));
    }
    TNurbs2D curve;
    EXPECT_TRUE(curve.CreateCross(points, mChord));
    const double length = IntegralOf(curve);
    return (length - curve.CurveLength()) / length;
  };
  // A chord c of a circle is c^3 / (24 R^2) shorter than its arc, so the part that is missing is (c / R)^2 / 24.
  for (const double radius : {10.0, 20.0, 40.0}) {
    EXPECT_NEAR(missing(radius) / (0.03 * 0.03 / (24 * radius * radius)), 1.0, 0.05) << radius;
  }
}

}  // namespace
}  // namespace ZORBase
