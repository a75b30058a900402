// The spline through orientations.
#include <ZORBase/ZORGeometry/CADTypes6D/OrientationInterpolation.h>

#include "ZORGeometry/CADTypes6D/PoseTestSupport.h"

namespace ZORBase {
namespace {

using namespace Test;  // NOLINT(google-build-using-namespace)

// Four orientations less than a right angle from one to the next, so that no sign has to change.
std::array<TQuaternion, 4> SmoothRow(TRandomPoses& Random) {
  std::array<TQuaternion, 4> row;
  row[0] = Random.UnitQuaternion();
  for (std::size_t i = 1; i < 4; ++i) row[i] = row[i - 1] * Turn(Random.UnitVector(), Random.Number(0.2, 1.5));
  return row;
}

// The vector part of q'(0) / q(0) from one side, that is half the angular velocity, by differences of the fourth order.
template <class TCurve>
TPoint3D HalfVelocity(TCurve&& Curve, double t, double h) {
  const TQuaternion derivative =
      (Curve(t) * -25 + Curve(t + h) * 48 + Curve(t + 2 * h) * -36 + Curve(t + 3 * h) * 16 + Curve(t + 4 * h) * -3) *
      (1 / (12 * h));
  return (Curve(t).Conj() * derivative).GetImgVector();
}

TEST(SquadQuaternion, MeetsItsEnds) {
  TRandomPoses random(41);
  for (int i = 0; i < 1000; ++i) {
    const auto [q0, q1, q2, q3] = SmoothRow(random);
    ASSERT_THAT(SquadQuaternion(0, q0, q1, q2, q3), IsNear(q1, 1e-15));
    ASSERT_THAT(SquadQuaternion(1, q0, q1, q2, q3), IsNear(q2, 1e-15));
  }
}

TEST(SquadQuaternion, TheSignsFollowTheFirst) {
  TRandomPoses random(42);
  const auto [q0, q1, q2, q3] = SmoothRow(random);
  for (const double t : {0.0, 0.3, 1.0}) {
    const TQuaternion expected = SquadQuaternion(t, q0, q1, q2, q3);
    EXPECT_THAT(SquadQuaternion(t, q0, -q1, q2, -q3), IsExactly(expected));
    EXPECT_THAT(SquadQuaternion(t, q0, q1, -q2, q3), IsExactly(expected));
    EXPECT_THAT(SquadQuaternion(t, -q0, q1, q2, q3), IsNear(-expected, 0));
  }
  EXPECT_THAT(SquadQuaternion(0, -q0, q1, q2, q3), IsNear(-q1, 1e-15));
}

TEST(SquadQuaternion, OutsideTheParametersItStaysAtTheEnds) {
  TRandomPoses random(43);
  const auto [q0, q1, q2, q3] = SmoothRow(random);
  EXPECT_THAT(SquadQuaternion(-0.5, q0, q1, q2, q3), IsNear(q1, 1e-15));
  EXPECT_THAT(SquadQuaternion(1.5, q0, q1, q2, q3), IsNear(q2, 1e-15));
}

// With the same step every time the control orientations fall on the ends and nothing bends.
TEST(SquadQuaternion, AlongOneAxisWithEvenStepsItIsTheSLerp) {
  const TPoint3D axis = Pt(2, -1, 2) / 3;
  for (const double t : {0.1, 0.5, 0.8}) {
    EXPECT_THAT(SquadQuaternion(t, Turn(axis, 0.2), Turn(axis, 0.9), Turn(axis, 1.6), Turn(axis, 2.3)),
                IsNear(Turn(axis, 0.9 + 0.7 * t), 1e-15));
  }
}

// About one axis the angles are blended as numbers. For the angles 0, 0.4, 1, 1.2 the control angles are
// 0.4 + (0.4 - 0.6) / 4 = 0.35 and 1 + (0.6 - 0.2) / 4 = 1.1; half way the ends give 0.7, they give 0.725, and half of
// each is 0.7125.
TEST(SquadQuaternion, TheControlOrientationsBendByAQuarterOfTheChangeOfStep) {
  const TPoint3D axis = Pt(0, 0, 1);
  EXPECT_THAT(SquadQuaternion(0.5, Turn(axis, 0), Turn(axis, 0.4), Turn(axis, 1), Turn(axis, 1.2)),
              IsNear(Turn(axis, 0.7125), 1e-15));
}

// A turn by 3 radians and then one by -3 is almost the same as going on by 2 pi - 3, which bends less. In halves: the
// ends 1.5 and 0 have the controls 1.5 + (1.5 - (pi - 1.5)) / 4 and 0 - 1.5 / 4, the latter on the other side of the
// sphere.
TEST(SquadQuaternion, AStepAlmostHalfWayRoundIsTakenInTheDirectionThatBendsLess) {
  const TPoint3D axis = Pt(0, 0, 1);
  const double ends = (1.5 + 0) / 2;
  const double controls = (1.5 + (3 - kPi) / 4 + kPi - 1.5 / 4) / 2;
  EXPECT_THAT(SquadQuaternion(0.5, Turn(axis, 0), Turn(axis, 3), Turn(axis, 0), Turn(axis, 0)),
              IsNear(Turn(axis, ends + controls), 1e-14));
}

TEST(SquadQuaternion, TheAngularVelocityIsContinuousFromSpanToSpan) {
  TRandomPoses random(44);
  for (int i = 0; i < 200; ++i) {
    const auto [q0, q1, q2, q3] = SmoothRow(random);
    const TQuaternion q4 = q3 * Turn(random.UnitVector(), random.Number(0.2, 1.5));
    const auto before = [&, a = q0, b = q1, c = q2, d = q3](double t) { return SquadQuaternion(t, a, b, c, d); };
    const auto after = [&, a = q1, b = q2, c = q3](double t) { return SquadQuaternion(t, a, b, c, q4); };
    ASSERT_THAT(HalfVelocity(before, 1, -1e-3), IsNear(HalfVelocity(after, 0, 1e-3), 1e-7));
  }
}

TEST(SquadQuaternion, StaysAUnitQuaternion) {
  TRandomPoses random(45);
  for (int i = 0; i < 1000; ++i) {
    const auto [q0, q1, q2, q3] = SmoothRow(random);
    ASSERT_NEAR(SquadQuaternion(random.Number(0, 1), q0, q1, q2, q3).NormMag(), 1, 1e-14);
  }
}

TEST(SquadQuaternion, ANeighbourOfNoLengthRaises) {
  const TQuaternion one = Quat(1, 0, 0, 0);
  EXPECT_THAT(Calling([&] { SquadQuaternion(0.5, TQuaternion(), one, one, one); }),
              RaisesGeneralError("Divided by zero: 0.000000"));
  EXPECT_THAT(Calling([&] { SquadQuaternion(0.5, one, one, one, TQuaternion()); }),
              RaisesGeneralError("Divided by zero: 0.000000"));
}

TEST(Squad4DMatrix, TheRotationFollowsTheSplineAndTheTranslationTheStraightLine) {
  TRandomPoses random(46);
  const TMatrix4D m0 = random.Pose(100);
  const TMatrix4D m1 = At(random.Pose(0), Pt(0, 0, 0));
  const TMatrix4D m2 = At(random.Pose(0), Pt(10, 20, -40));
  const TMatrix4D m3 = random.Pose(100);
  for (const double t : {0.0, 0.25, 0.5, 1.0}) {
    const TQuaternion q = SquadQuaternion(t, QuaternionOf(m0), QuaternionOf(m1), QuaternionOf(m2), QuaternionOf(m3));
    EXPECT_THAT(Squad4DMatrix(t, m0, m1, m2, m3), IsNear(At(q.ToMatrix4D(), Pt(10, 20, -40) * t), 1e-15));
  }
}

TEST(Squad4DMatrix, OutsideTheParametersItStaysAtTheEnds) {
  TRandomPoses random(47);
  const TMatrix4D m0 = random.Pose(100);
  const TMatrix4D m1 = random.Pose(100);
  const TMatrix4D m2 = random.Pose(100);
  const TMatrix4D m3 = random.Pose(100);
  EXPECT_THAT(Squad4DMatrix(-2, m0, m1, m2, m3), IsNear(m1, 4e-15));
  EXPECT_THAT(Squad4DMatrix(3, m0, m1, m2, m3), IsNear(m2, 4e-15));
}

}  // namespace
}  // namespace ZORBase
