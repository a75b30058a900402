#include <ZORBase/common/Cadtypes/TBezierSegment2D.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <array>
#include <cmath>
#include <type_traits>

namespace ZORBase {
namespace {

static_assert(std::is_trivially_copyable_v<TBezierSegment2D> && sizeof(TBezierSegment2D) == 8 * sizeof(double));

struct TEval {
  TPoint2D Point;
  TPoint2D Der1;
  TPoint2D Der2;
  TPoint2D Der3;
};

TEval Eval(const TBezierSegment2D& Segment, double T) {
  TEval result;
  Segment.EvalPoint(T, result.Point, result.Der1, result.Der2, result.Der3);
  return result;
}

double Distance(const TPoint2D& P, const TPoint2D& Q) { return (P - Q).Mag(); }

rc::Gen<TBezierSegment2D> AnySegment() {
  const auto component = rc::gen::map(rc::gen::inRange(-10000, 10000), [](int Steps) { return Steps * 0.01; });
  return rc::gen::map(rc::gen::container<std::array<double, 8>>(component), [](const std::array<double, 8>& V) {
    return TBezierSegment2D::Create({V[0], V[1]}, {V[2], V[3]}, {V[4], V[5]}, {V[6], V[7]});
  });
}

TPoint2D Between(const TPoint2D& P, const TPoint2D& Q, double T) { return P * (1 - T) + Q * T; }

// De Casteljau's construction; its lower levels give the derivatives.
TEval ByDeCasteljau(const TBezierSegment2D& S, double T) {
  const TPoint2D p01 = Between(S.P0, S.P1, T);
  const TPoint2D p12 = Between(S.P1, S.P2, T);
  const TPoint2D p23 = Between(S.P2, S.P3, T);
  const TPoint2D p012 = Between(p01, p12, T);
  const TPoint2D p123 = Between(p12, p23, T);
  return {Between(p012, p123, T), 3 * (p123 - p012), 6 * (p23 - p12 - (p12 - p01)),
          6 * (S.P3 - S.P2 - (S.P2 - S.P1) - (S.P2 - S.P1 - (S.P1 - S.P0)))};
}

TEST(TBezierSegment2D, IsAllZeroByDefault) {
  const TEval at = Eval(TBezierSegment2D(), 0.3);
  EXPECT_EQ(at.Point.Mag() + at.Der1.Mag() + at.Der2.Mag() + at.Der3.Mag(), 0);
}

// (t, t^3) has the control points (0, 0), (1/3, 0), (2/3, 0), (1, 1).
TEST(TBezierSegment2D, ReproducesACubicAndItsDerivatives) {
  const TBezierSegment2D cubic = TBezierSegment2D::Create({0, 0}, {1.0 / 3, 0}, {2.0 / 3, 0}, {1, 1});
  for (const double t : {-0.5, 0.0, 0.25, 0.5, 1.0, 2.0}) {
    const TEval at = Eval(cubic, t);
    EXPECT_NEAR(at.Point.X, t, 1e-14);
    EXPECT_NEAR(at.Point.Y, t * t * t, 1e-14);
    EXPECT_NEAR(at.Der1.X, 1, 1e-14);
    EXPECT_NEAR(at.Der1.Y, 3 * t * t, 1e-14);
    EXPECT_NEAR(at.Der2.X, 0, 1e-14);
    EXPECT_NEAR(at.Der2.Y, 6 * t, 1e-14);
    EXPECT_NEAR(at.Der3.X, 0, 1e-14);
    EXPECT_NEAR(at.Der3.Y, 6, 1e-14);
  }
}

RC_GTEST_PROP(TBezierSegment2D, ItsEndsAreItsOuterControlPointsExactly, ()) {
  const TBezierSegment2D segment = *AnySegment();
  RC_ASSERT(Distance(Eval(segment, 0).Point, segment.P0) == 0);
  RC_ASSERT(Distance(Eval(segment, 1).Point, segment.P3) == 0);
  RC_ASSERT(Distance(Eval(segment, 0).Der1, 3 * (segment.P1 - segment.P0)) == 0);
  RC_ASSERT(Distance(Eval(segment, 1).Der1, 3 * (segment.P3 - segment.P2)) == 0);
}

RC_GTEST_PROP(TBezierSegment2D, AgreesWithDeCasteljau, ()) {
  const TBezierSegment2D segment = *AnySegment();
  const double t = *rc::gen::inRange(-1000, 2000) * 1e-3;
  const TEval at = Eval(segment, t);
  const TEval expected = ByDeCasteljau(segment, t);
  RC_ASSERT(Distance(at.Point, expected.Point) <= 1e-11);
  RC_ASSERT(Distance(at.Der1, expected.Der1) <= 1e-11);
  RC_ASSERT(Distance(at.Der2, expected.Der2) <= 1e-11);
  RC_ASSERT(Distance(at.Der3, expected.Der3) <= 1e-11);
}

RC_GTEST_PROP(TBezierSegment2D, TheShorterFormGivesTheSameNumbers, ()) {
  const TBezierSegment2D segment = *AnySegment();
  const double t = *rc::gen::inRange(0, 1000) * 1e-3;
  const TEval at = Eval(segment, t);
  TPoint2D point, der1, der2;
  segment.EvalPoint(t, point, der1, der2);
  RC_ASSERT(Distance(point, at.Point) + Distance(der1, at.Der1) + Distance(der2, at.Der2) == 0);
}

TEST(TBezierSegment2D, AResultMayOverwriteAControlPoint) {
  const TBezierSegment2D before = TBezierSegment2D::Create({0, 1}, {2, 5}, {4, -3}, {7, 8});
  TBezierSegment2D segment = before;
  segment.EvalPoint(0.4, segment.P0, segment.P1, segment.P2, segment.P3);
  const TEval expected = Eval(before, 0.4);
  EXPECT_EQ(Distance(segment.P0, expected.Point) + Distance(segment.P1, expected.Der1), 0);
  EXPECT_EQ(Distance(segment.P2, expected.Der2) + Distance(segment.P3, expected.Der3), 0);
}

}  // namespace
}  // namespace ZORBase
