// Transforms from and to Euler angles, and turns about given axes.
#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4D.h>

#include "ZORGeometry/CADTypes6D/PoseTestSupport.h"

#include <limits>

namespace ZORBase {
namespace {

using namespace Test;  // NOLINT(google-build-using-namespace)

TPoint6D Euler(double A, double B, double C) { return TPoint6D::Create(1, 2, 3, A, B, C); }

TMatrix4D FromXYZ(const TPoint6D& P) {
  TMatrix4D matrix;
  matrix.CreateFromEulerAngleXYZ(P);
  return matrix;
}

TMatrix4D FromZYX(const TPoint6D& P) {
  TMatrix4D matrix;
  matrix.CreateFromEulerAngleZYX(P);
  return matrix;
}

// ---------------------------------------------------------------------------------------------- about an axis

TEST(TMatrix4DAngles, ATurnAboutAnAxisIsRightHanded) {
  EXPECT_THAT(TurnX(kPi / 2), IsNear(TMatrix4D::Create(1, 0, 0, 0, 0, -1, 0, 1, 0), 1e-16));
  EXPECT_THAT(TurnY(kPi / 2), IsNear(TMatrix4D::Create(0, 0, 1, 0, 1, 0, -1, 0, 0), 1e-16));
  EXPECT_THAT(TurnZ(kPi / 2), IsNear(TMatrix4D::Create(0, -1, 0, 1, 0, 0, 0, 0, 1), 1e-16));
}

TEST(TMatrix4DAngles, AThirdOfATurnAboutTheDiagonalMovesEachAxisToTheNext) {
  EXPECT_THAT(TMatrix4D::Create(Pt(5, 5, 5), 2 * kPi / 3), IsNear(TMatrix4D::Create(0, 0, 1, 1, 0, 0, 0, 1, 0), 1e-15));
}

TEST(TMatrix4DAngles, AboutTheZeroVectorItIsTheIdentityTimesTheCosine) {
  EXPECT_THAT(TMatrix4D::Create(Pt(0, 0, 0), 1), IsNear(kIdentity * std::cos(1.0), 0));
}

// ---------------------------------------------------------------------------------------------- vector to vector

TEST(TMatrix4DAngles, FromXToYIsAQuarterTurnAboutZ) {
  EXPECT_THAT(TMatrix4D::Create(Pt(1, 0, 0), Pt(0, 1, 0)), IsNear(TurnZ(kPi / 2), 1e-16));
}

TEST(TMatrix4DAngles, VectorsOfDifferentLengthsRaise) {
  TMatrix4D matrix = TurnX(1);
  EXPECT_THAT(Calling([&] { matrix = TMatrix4D::Create(Pt(1, 0, 0), Pt(0, 2, 0)); }),
              RaisesGeneralError("two vectors mag not equal!!!"));
  EXPECT_THAT(Calling([&] { matrix = TMatrix4D::Create(Pt(1, 0, 0), Pt(0, 0, 0)); }),
              RaisesGeneralError("two vectors mag not equal!!!"));
  EXPECT_THAT(Calling([&] { matrix = TMatrix4D::Create(Pt(1, 0, 0), Pt(0, std::sqrt(1 + 1.1e-4), 0)); }),
              RaisesGeneralError("two vectors mag not equal!!!"));
  EXPECT_THAT(matrix, IsExactly(TurnX(1)));
}

TEST(TMatrix4DAngles, SquaredLengthsMayDifferByUpTo1eMinus4) {
  EXPECT_THAT(TMatrix4D::Create(Pt(1, 0, 0), Pt(0, std::sqrt(1 + 0.9e-4), 0)), IsNear(TurnZ(kPi / 2), 1e-15));
}

TEST(TMatrix4DAngles, VectorsWithSquaredLengthsBelow1eMinus4Raise) {
  EXPECT_THAT(Calling([&] { TMatrix4D::Create(Pt(0.0099, 0, 0), Pt(0, 0.0099, 0)); }),
              RaisesGeneralError("vec mag too small!!!"));
  EXPECT_THAT(Calling([&] { TMatrix4D::Create(Pt(0.0101, 0, 0), Pt(0, 0.0099, 0)); }),
              RaisesGeneralError("vec mag too small!!!"));
  EXPECT_THAT(Calling([&] { TMatrix4D::Create(Pt(0, 0, 0), Pt(0, 0, 0)); }),
              RaisesGeneralError("vec mag too small!!!"));
  EXPECT_THAT(TMatrix4D::Create(Pt(0.0101, 0, 0), Pt(0, 0.0101, 0)), IsNear(TurnZ(kPi / 2), 1e-15));
}

TEST(TMatrix4DAngles, AVectorOntoItselfIsTheIdentityAndOntoItsOppositeAPointReflection) {
  EXPECT_THAT(TMatrix4D::Create(Pt(0, 3, 4), Pt(0, 3, 4)), IsNear(kIdentity, 0));
  EXPECT_THAT(TMatrix4D::Create(Pt(0, 3, 4), Pt(0, -3, -4)), IsNear(kIdentity * -1, 0));
}

TEST(TMatrix4DAngles, TurnsOneVectorOntoTheOther) {
  TRandomPoses random(21);
  for (int i = 0; i < 1000; ++i) {
    const TPoint3D from = random.UnitVector() * 3;
    const TPoint3D to = random.UnitVector() * 3;
    const TMatrix4D turn = TMatrix4D::Create(from, to);
    ASSERT_THAT(turn.TransformVec(from), IsNear(to, 1e-14));
    ASSERT_TRUE(turn.isOrthogonal());
    // The shortest way: what is at right angles to both stays.
    ASSERT_THAT(turn.TransformVec(from.CrossMul(to)), IsNear(from.CrossMul(to), 1e-13));
  }
}

// ---------------------------------------------------------------------------------------------- Euler angles

TEST(TMatrix4DAngles, XYZTurnsAboutZFirstAndZYXAboutXFirst) {
  TRandomPoses random(22);
  for (int i = 0; i < 1000; ++i) {
    const TPoint6D p = TPoint6D::Create(random.Point(10), random.Point(kPi));
    const TMatrix4D xyz = TurnX(p.A) * TurnY(p.B) * TurnZ(p.C);
    const TMatrix4D zyx = TurnZ(p.C) * TurnY(p.B) * TurnX(p.A);
    ASSERT_THAT(FromXYZ(p), IsNear(At(xyz, p.GetPoint()), 1e-15));
    ASSERT_THAT(FromZYX(p), IsNear(At(zyx, p.GetPoint()), 1e-15));
  }
}

TEST(TMatrix4DAngles, EulerAnglesComeBack) {
  const TPoint6D angles = Euler(0.3, -0.4, 2.5);
  EXPECT_THAT(FromXYZ(angles).Matrix4DToEulerAngleXYZ(), IsNearPose(angles, 1e-15));
  EXPECT_THAT(FromZYX(angles).Matrix4DToEulerAngleZYX(), IsNearPose(angles, 1e-15));
}

TEST(TMatrix4DAngles, AtTheLockOfXYZTheFirstAngleIsZero) {
  const TMatrix4D up = FromXYZ(TPoint6D::Create(0, 0, 0, 0, kPi / 2, 0.3));
  const TPoint6D angles = up.Matrix4DToEulerAngleXYZ();
  EXPECT_EQ(angles.A, 0);
  EXPECT_THAT(angles, IsNearPose(TPoint6D::Create(0, 0, 0, 0, kPi / 2, 0.3), 1e-15));
  // At +pi/2 the two turns add up, at -pi/2 they subtract.
  EXPECT_THAT(FromXYZ(Euler(0.5, kPi / 2, 0.3)).Matrix4DToEulerAngleXYZ(), IsNearPose(Euler(0, kPi / 2, 0.8), 1e-15));
  EXPECT_THAT(FromXYZ(Euler(0.5, -kPi / 2, 0.3)).Matrix4DToEulerAngleXYZ(),
              IsNearPose(Euler(0, -kPi / 2, -0.2), 1e-15));
}

TEST(TMatrix4DAngles, AtTheLockOfZYXTheFirstAngleIsZero) {
  const TPoint6D up = FromZYX(Euler(0.5, kPi / 2, 0.3)).Matrix4DToEulerAngleZYX();
  EXPECT_EQ(up.A, 0);
  EXPECT_THAT(up, IsNearPose(Euler(0, kPi / 2, -0.2), 1e-15));
  EXPECT_THAT(FromZYX(Euler(0.5, -kPi / 2, 0.3)).Matrix4DToEulerAngleZYX(), IsNearPose(Euler(0, -kPi / 2, 0.8), 1e-15));
}

TEST(TMatrix4DAngles, TheLockReachesOverACosineOf1eMinus6) {
  EXPECT_EQ(FromXYZ(Euler(0.5, kPi / 2 - 0.9e-6, 0.3)).Matrix4DToEulerAngleXYZ().A, 0);
  EXPECT_NEAR(FromXYZ(Euler(0.5, kPi / 2 - 2e-6, 0.3)).Matrix4DToEulerAngleXYZ().A, 0.5, 1e-9);
  EXPECT_EQ(FromZYX(Euler(0.5, kPi / 2 - 0.9e-6, 0.3)).Matrix4DToEulerAngleZYX().A, 0);
  EXPECT_NEAR(FromZYX(Euler(0.5, kPi / 2 - 2e-6, 0.3)).Matrix4DToEulerAngleZYX().A, 0.5, 1e-9);
}

// The entries under the arc tangents are zeros of either sign here.
TEST(TMatrix4DAngles, AHalfTurnIsPlusPiAndNeverMinusPi) {
  for (const double zero : {0.0, -0.0}) {
    const TMatrix4D aboutX = TMatrix4D::Create(1, zero, zero, zero, -1, zero, zero, zero, -1);
    const TMatrix4D aboutZ = TMatrix4D::Create(-1, zero, zero, zero, -1, zero, zero, zero, 1);
    EXPECT_THAT(aboutX.Matrix4DToEulerAngleXYZ(), IsNearPose(TPoint6D::Create(0, 0, 0, kPi, 0, 0), 1e-15));
    EXPECT_THAT(aboutX.Matrix4DToEulerAngleZYX(), IsNearPose(TPoint6D::Create(0, 0, 0, kPi, 0, 0), 1e-15));
    EXPECT_THAT(aboutZ.Matrix4DToEulerAngleXYZ(), IsNearPose(TPoint6D::Create(0, 0, 0, 0, 0, kPi), 1e-15));
    EXPECT_THAT(aboutZ.Matrix4DToEulerAngleZYX(), IsNearPose(TPoint6D::Create(0, 0, 0, 0, 0, kPi), 1e-15));
  }
}

RC_GTEST_PROP(TMatrix4DAngles, MatrixToEulerToMatrixGivesTheMatrixForBothOrders, ()) {
  const TMatrix4D pose = *AnyPose();
  // Within the lock, a cosine of up to 1e-6 is left out.
  RC_ASSERT(testing::Value(FromXYZ(pose.Matrix4DToEulerAngleXYZ()), IsNear(pose, 2e-6)));
  RC_ASSERT(testing::Value(FromZYX(pose.Matrix4DToEulerAngleZYX()), IsNear(pose, 2e-6)));
  const bool isLockedXYZ = std::hypot(pose.fm[1][2], pose.fm[2][2]) < 2e-6;
  const bool isLockedZYX = std::hypot(pose.fm[2][1], pose.fm[2][2]) < 2e-6;
  if (!isLockedXYZ) RC_ASSERT(testing::Value(FromXYZ(pose.Matrix4DToEulerAngleXYZ()), IsNear(pose, 1e-14)));
  if (!isLockedZYX) RC_ASSERT(testing::Value(FromZYX(pose.Matrix4DToEulerAngleZYX()), IsNear(pose, 1e-14)));
}

// ---------------------------------------------------------------------------------------------- angle about an axis

TEST(TMatrix4DAngles, TheAngleAboutTheRightAxisIsFound) {
  double angle = 0;
  EXPECT_TRUE(At(TMatrix4D::Create(Pt(1, 2, 3), 0.7), Pt(4, 5, 6)).Matrix4DToVecAng(Pt(1, 2, 3), angle));
  EXPECT_NEAR(angle, 0.7, 1e-15);
  EXPECT_TRUE(TMatrix4D::Create(Pt(3, -2, 1), -0.7).Matrix4DToVecAng(Pt(6, -4, 2), angle));
  EXPECT_NEAR(angle, -0.7, 1e-15);
  EXPECT_TRUE(kIdentity.Matrix4DToVecAng(Pt(0, 0, 1), angle));
  EXPECT_EQ(angle, 0);
  EXPECT_TRUE(TurnY(kPi).Matrix4DToVecAng(Pt(0, 1, 0), angle));
  EXPECT_NEAR(angle, kPi, 1e-15);
}

TEST(TMatrix4DAngles, AboutAWrongAxisTheAngleIsWrittenAllTheSame) {
  double angle = -1;
  EXPECT_FALSE(TurnX(0.7).Matrix4DToVecAng(Pt(0, 0, 1), angle));
  EXPECT_EQ(angle, 0);
}

TEST(TMatrix4DAngles, TheComponentDividedByIsTheLargestByValueNotByMagnitude) {
  double angle = 0;
  EXPECT_FALSE(TurnX(-0.7).Matrix4DToVecAng(Pt(-1, 0, 0), angle));
  EXPECT_TRUE(std::isnan(angle));
  EXPECT_FALSE(TurnX(0.7).Matrix4DToVecAng(Pt(-1, 0, -1), angle));
  EXPECT_TRUE(std::isnan(angle));
  EXPECT_FALSE(TurnX(0.7).Matrix4DToVecAng(Pt(-1, -1, 0), angle));
  EXPECT_TRUE(std::isnan(angle));
  EXPECT_TRUE(TurnX(-0.7).Matrix4DToVecAng(Pt(1, 0, 0), angle));
  EXPECT_NEAR(angle, -0.7, 1e-15);
  EXPECT_TRUE(TMatrix4D::Create(Pt(-3, -2, -1), 0.7).Matrix4DToVecAng(Pt(-3, -2, -1), angle));
  EXPECT_NEAR(angle, 0.7, 1e-14);
}

TEST(TMatrix4DAngles, AnAxisShorterThanAThousandthRaisesAndLeavesTheAngle) {
  double angle = 42;
  EXPECT_THAT(Calling([&] { kIdentity.Matrix4DToVecAng(Pt(0.00099, 0, 0), angle); }),
              RaisesGeneralError("vecN mag equals 0!"));
  EXPECT_THAT(Calling([&] { kIdentity.Matrix4DToVecAng(Pt(0, 0, 0), angle); }),
              RaisesGeneralError("vecN mag equals 0!"));
  EXPECT_EQ(angle, 42);
  EXPECT_TRUE(TurnX(0.5).Matrix4DToVecAng(Pt(0.001, 0, 0), angle));
  EXPECT_NEAR(angle, 0.5, 1e-15);
}

// ---------------------------------------------------------------------------------------------- turns about two axes

TEST(TMatrix4DAngles, ATurnAboutOneAxisFollowedByOneAboutAnotherIsTakenApart) {
  double angle1 = 0;
  double angle2 = 0;
  EXPECT_TRUE(At(TurnZ(0.3) * TurnX(0.8), Pt(1, 2, 3)).Matrix4DToVecAng(Pt(5, 0, 0), Pt(0, 0, 2), angle1, angle2));
  EXPECT_NEAR(angle1, 0.8, 1e-15);
  EXPECT_NEAR(angle2, 0.3, 1e-15);
}

TEST(TMatrix4DAngles, ATurnThatTheTwoAxesCannotMakeGivesFalse) {
  double angle1 = 0;
  double angle2 = 0;
  EXPECT_FALSE(TurnY(0.5).Matrix4DToVecAng(Pt(1, 0, 0), Pt(0, 0, 1), angle1, angle2));
}

TEST(TMatrix4DAngles, AxesNextToParallelGiveFalseAndNoAngles) {
  for (const TPoint3D& other : {Pt(1, 0, 0), Pt(-1, 0, 0), Pt(1, 0.0009, 0), Pt(0, 0, 0)}) {
    double angle1 = 42;
    double angle2 = 42;
    EXPECT_FALSE(TurnX(0.5).Matrix4DToVecAng(Pt(1, 0, 0), other, angle1, angle2));
    EXPECT_EQ(angle1, 0);
    EXPECT_EQ(angle2, 0);
  }
}

// With a sine of 0.001 the frame of the axes has the determinant 1e-6, which Invert refuses.
TEST(TMatrix4DAngles, AxesJustAtTheLimitGiveFalseInsteadOfASingularFrame) {
  double angle1 = 42;
  double angle2 = 42;
  for (double sine = 0.000999995; sine < 0.001000005; sine += 1e-10) {
    const TPoint3D axis = Pt(std::sqrt(1 - sine * sine), sine, 0);
    EXPECT_NO_THROW(TurnZ(0.5).Matrix4DToVecAng(axis, Pt(1, 0, 0), angle1, angle2)) << sine;
  }
  EXPECT_FALSE(TurnX(0.5).Matrix4DToVecAng(Pt(std::sqrt(1 - 1e-6), 0.001, 0), Pt(1, 0, 0), angle1, angle2));
  EXPECT_EQ(angle1, 0);
  EXPECT_EQ(angle2, 0);
}

TEST(TMatrix4DAngles, WhatTwoTurnsMakeIsAlwaysTakenApartIntoTurnsThatMakeIt) {
  TRandomPoses random(23);
  for (int i = 0; i < 2000; ++i) {
    const TPoint3D a = random.UnitVector();
    const TPoint3D b = random.UnitVector();
    if (a.CrossMul(b).Mag() < 0.1) continue;
    const TMatrix4D pose = TMatrix4D::Create(b, random.Number(-3, 3)) * TMatrix4D::Create(a, random.Number(-3, 3));
    double angle1 = 0;
    double angle2 = 0;
    ASSERT_TRUE(pose.Matrix4DToVecAng(a, b, angle1, angle2));
    ASSERT_THAT(TMatrix4D::Create(b, angle2) * TMatrix4D::Create(a, angle1), IsNear(pose, 1e-13));
  }
}

}  // namespace
}  // namespace ZORBase
