#include <ZORBase/ZORGeometry/CADTypes6D/TQuaternion.h>

#include "ZORGeometry/CADTypes6D/PoseTestSupport.h"

namespace ZORBase {
namespace {

using namespace Test;  // NOLINT(google-build-using-namespace)

constexpr TQuaternion kJ = TQuaternion::Create(0, 0, 1, 0);
constexpr TQuaternion kK = TQuaternion::Create(0, 0, 0, 1);

TQuaternion Exponential(const TPoint3D& v) {
  TQuaternion q;
  q.Exp(v);
  return q;
}

// ---------------------------------------------------------------------------------------------- making, taking apart

TEST(TQuaternion, ZeroIsAllZeroAndNotTheIdentity) {
  EXPECT_THAT(TQuaternion::ReturnQuaternionZero(), IsExactly(Quat(0, 0, 0, 0)));
  EXPECT_THAT(TQuaternion(), IsExactly(Quat(0, 0, 0, 0)));
  EXPECT_THAT(Calling([] { TQuaternion::ReturnQuaternionZero().Inverse(); }),
              RaisesGeneralError("Quaternion mag zero: 0.000000"));
}

TEST(TQuaternion, TheRealPartComesFirst) {
  TQuaternion q = TQuaternion::Create(1, 2, 3, 4);
  EXPECT_THAT(Numbers(q), testing::ElementsAre(1, 2, 3, 4));
  for (int i = 0; i < 4; ++i) EXPECT_EQ(q.Variable(i), i + 1);
  q.Variable(0) = 5;
  q.Variable(3) = 8;
  EXPECT_THAT(q, IsExactly(Quat(5, 2, 3, 8)));
}

TEST(TQuaternion, AVariableOutside0To3Raises) {
  TQuaternion q;
  EXPECT_THAT(Calling([&] { q.Variable(4) = 1; }), RaisesGeneralError("TQuaternion has the variables 0 to 3, not 4"));
  EXPECT_THAT(Calling([&] { static_cast<void>(std::as_const(q).Variable(-1)); }),
              RaisesGeneralError("TQuaternion has the variables 0 to 3, not -1"));
}

TEST(TQuaternion, ARealPartAndAVectorAreTakenAsTheyAre) {
  EXPECT_THAT(TQuaternion::Create(7, Pt(1, 2, 3)), IsExactly(Quat(7, 1, 2, 3)));
}

TEST(TQuaternion, AVectorIsAPureQuaternion) {
  const TQuaternion q = Pt(1, 2, 3);
  EXPECT_THAT(q, IsExactly(Quat(0, 1, 2, 3)));
  EXPECT_THAT(kI * Pt(0, 1, 0), IsExactly(kK));
}

TEST(TQuaternion, RealNumberAndImaginaryVectorAreReadAndSetApart) {
  TQuaternion q = Quat(1, 2, 3, 4);
  EXPECT_EQ(q.GetRealNumber(), 1);
  EXPECT_THAT(q.GetImgVector(), IsExactly(Pt(2, 3, 4)));
  q.SetRealNumber(5);
  EXPECT_THAT(q, IsExactly(Quat(5, 2, 3, 4)));
  q.SetImgVector(Pt(6, 7, 8));
  EXPECT_THAT(q, IsExactly(Quat(5, 6, 7, 8)));
}

// ---------------------------------------------------------------------------------------------- arithmetic

TEST(TQuaternion, SumsDifferencesAndMultiplesGoByComponent) {
  const TQuaternion p = Quat(1, 2, 3, 4);
  const TQuaternion q = Quat(10, 30, 50, 70);
  EXPECT_THAT(p + q, IsExactly(Quat(11, 32, 53, 74)));
  EXPECT_THAT(q - p, IsExactly(Quat(9, 28, 47, 66)));
  EXPECT_THAT(p * 2, IsExactly(Quat(2, 4, 6, 8)));
  EXPECT_THAT(2 * p, IsExactly(Quat(2, 4, 6, 8)));
  EXPECT_THAT(-p, IsExactly(Quat(-1, -2, -3, -4)));
  EXPECT_THAT(p.Conj(), IsExactly(Quat(1, -2, -3, -4)));
  EXPECT_EQ(p.DotMul(q), 10 + 60 + 150 + 280);
  EXPECT_EQ(p.NormMagSqr(), 30);
  EXPECT_EQ(Quat(1, 1, 1, -1).NormMag(), 2);
}

TEST(TQuaternion, TheUnitsMultiplyAsHamiltonHasThem) {
  EXPECT_EQ(kI * kJ, kK);
  EXPECT_EQ(kJ * kK, kI);
  EXPECT_EQ(kK * kI, kJ);
  EXPECT_EQ(kJ * kI, -kK);
  EXPECT_EQ(kK * kJ, -kI);
  EXPECT_EQ(kI * kK, -kJ);
  for (const TQuaternion& unit : {kI, kJ, kK}) EXPECT_EQ(unit * unit, -kOne);
}

TEST(TQuaternion, OneTimesAnythingIsThatThing) {
  const TQuaternion q = Quat(1, 2, 3, 4);
  EXPECT_EQ(kOne * q, q);
  EXPECT_EQ(q * kOne, q);
}

TEST(TQuaternion, AProductOfWholeNumbersIsExact) {
  const TQuaternion p = Quat(1, 2, 3, 4);
  const TQuaternion q = Quat(5, 6, 7, 8);
  EXPECT_THAT(p * q, IsExactly(Quat(-60, 12, 30, 24)));
  EXPECT_THAT(q * p, IsExactly(Quat(-60, 20, 14, 32)));
  EXPECT_THAT(p.QuaternionMul(q), IsExactly(p * q));
}

TEST(TQuaternion, AQuaternionMayBeMultipliedByItself) {
  TQuaternion q = Quat(1, 2, 3, 4);
  q = q * q;
  EXPECT_THAT(q, IsExactly(Quat(-28, 4, 6, 8)));
}

TEST(TQuaternion, ADivisionMultipliesByTheReciprocal) {
  EXPECT_THAT(Quat(49, 2, 4, 8) / 49, IsExactly(Quat(49 * (1.0 / 49), 2 * (1.0 / 49), 4 * (1.0 / 49), 8 * (1.0 / 49))));
}

TEST(TQuaternion, ADivisorBelow1eMinus6RaisesAnd1eMinus6DoesNot) {
  EXPECT_THAT(Calling([] { kOne / 1e-7; }), RaisesGeneralError("Divided by zero: 0.000000"));
  EXPECT_THAT(Calling([] { kOne / -9e-7; }), RaisesGeneralError("Divided by zero: -0.000001"));
  EXPECT_THAT((kOne / 1e-6), IsExactly(kOne * (1 / 1e-6)));
  EXPECT_THAT((kOne / -1e-6), IsExactly(kOne * (1 / -1e-6)));
}

TEST(TQuaternion, TheErrorTextsUseADecimalPointInEveryLocale) {
  const TLocaleGuard german(std::locale("de_DE.UTF-8"));
  EXPECT_THAT(Calling([] { kOne / 1e-7; }), RaisesGeneralError("Divided by zero: 0.000000"));
  EXPECT_THAT(Calling([] { Quat(9e-4, 0, 0, 0).Inverse(); }), RaisesGeneralError("Quaternion mag zero: 0.000001"));
}

TEST(TQuaternion, TheInverseUndoesAProduct) {
  const TQuaternion q = Quat(1, 2, -3, 4);
  EXPECT_THAT(q.Inverse(), IsNear(Quat(1, -2, 3, -4) * (1.0 / 30), 0));
  EXPECT_THAT(q * q.Inverse(), IsNear(kOne, 1e-15));
}

TEST(TQuaternion, ASquaredMagnitudeBelow1eMinus6HasNoInverseAnd1eMinus6Has) {
  EXPECT_THAT(Calling([] { Quat(0, 9e-4, 0, 0).Inverse(); }), RaisesGeneralError("Quaternion mag zero: 0.000001"));
  ASSERT_EQ(Quat(0.001, 0, 0, 0).NormMagSqr(), 1e-6);
  EXPECT_THAT(Quat(0.001, 0, 0, 0).Inverse(), IsNear(Quat(1000, 0, 0, 0), 1e-12));
}

TEST(TQuaternion, EqualityIsWithin1eMinus6InEveryComponent) {
  const TQuaternion q = Quat(1, 2, 3, 4);
  for (int i = 0; i < 4; ++i) {
    TQuaternion other = q;
    other.Variable(i) += 9e-7;
    EXPECT_TRUE(q == other && !(q != other)) << i;
    other.Variable(i) += 2e-7;
    EXPECT_TRUE(q != other && !(q == other)) << i;
    other.Variable(i) = kNaN;
    EXPECT_TRUE(other != other && !(other == other)) << i;
  }
  EXPECT_NE(kOne, -kOne);
}

RC_GTEST_PROP(TQuaternion, TheProductOfRotationsIsTheRotationOfTheProduct, ()) {
  const TQuaternion p = *AnyUnitQuaternion();
  const TQuaternion q = *AnyUnitQuaternion();
  // A factor that counts as the identity is dropped whole by the matrices.
  RC_ASSERT(testing::Value((p * q).ToMatrix4D(), IsNear(p.ToMatrix4D() * q.ToMatrix4D(), 2e-6)));
  RC_PRE(!p.ToMatrix4D().isIdent() && !q.ToMatrix4D().isIdent());
  RC_ASSERT(testing::Value((p * q).ToMatrix4D(), IsNear(p.ToMatrix4D() * q.ToMatrix4D(), 1e-14)));
}

RC_GTEST_PROP(TQuaternion, MultiplicationIsAssociativeWithinRounding, ()) {
  const TQuaternion p = *AnyUnitQuaternion();
  const TQuaternion q = *AnyUnitQuaternion();
  const TQuaternion r = *AnyUnitQuaternion();
  RC_ASSERT(testing::Value((p * q) * r, IsNear(p * (q * r), 1e-15)));
}

// ---------------------------------------------------------------------------------------------- to and from matrices

TEST(TQuaternion, TheIdentityMatrixIsOne) {
  EXPECT_THAT(QuaternionOf(TMatrix4D::ReturnIdentityMatrix()), IsExactly(kOne));
  EXPECT_THAT(kOne.ToMatrix4D(), IsNear(TMatrix4D::ReturnIdentityMatrix(), 0));
}

TEST(TQuaternion, HalfTurnsAboutTheAxesAreTheUnits) {
  EXPECT_THAT(QuaternionOf(TMatrix4D::Create(1, 0, 0, 0, -1, 0, 0, 0, -1)), IsExactly(kI));
  EXPECT_THAT(QuaternionOf(TMatrix4D::Create(-1, 0, 0, 0, 1, 0, 0, 0, -1)), IsExactly(kJ));
  EXPECT_THAT(QuaternionOf(TMatrix4D::Create(-1, 0, 0, 0, -1, 0, 0, 0, 1)), IsExactly(kK));
}

// Without off-diagonal entries only the component that was chosen is not 0.
TEST(TQuaternion, OnATieTheEarlierOfTheFourComponentsIsChosen) {
  const auto choice = [](double m11, double m22, double m33) {
    return QuaternionOf(TMatrix4D::Create(m11, 0, 0, 0, m22, 0, 0, 0, m33));
  };
  const double h = std::sqrt(2.0) / 2;
  EXPECT_THAT(choice(1, 0, 0), IsExactly(kOne * h)) << "a and b";
  EXPECT_THAT(choice(0, 1, 0), IsExactly(kOne * h)) << "a and c";
  EXPECT_THAT(choice(0, 0, 1), IsExactly(kOne * h)) << "a and d";
  EXPECT_THAT(choice(0.5, 0.5, -1), IsExactly(kI * h)) << "b and c";
  EXPECT_THAT(choice(0.5, -1, 0.5), IsExactly(kI * h)) << "b and d";
  EXPECT_THAT(choice(-1, 0.5, 0.5), IsExactly(kJ * h)) << "c and d";
  EXPECT_THAT(choice(0, 0, 0), IsExactly(kOne * 0.5)) << "all four";
}

TEST(TQuaternion, BeyondAHalfTurnTheRealPartIsNegativeUnlessItIsTheLargest) {
  for (const TPoint3D& axis : {Pt(1, 0, 0), Pt(0, 1, 0), Pt(0, 0, 1)}) {
    EXPECT_THAT(QuaternionOf(TMatrix4D::Create(axis, 200 * kPi / 180)), IsNear(Turn(axis, 200 * kPi / 180), 1e-15));
    EXPECT_THAT(QuaternionOf(TMatrix4D::Create(axis, 300 * kPi / 180)), IsNear(-Turn(axis, 300 * kPi / 180), 1e-15));
  }
}

TEST(TQuaternion, OnlyTheRotationOfAMatrixIsRead) {
  EXPECT_THAT(QuaternionOf(At(TurnX(1), Pt(1, 2, 3))), IsExactly(QuaternionOf(TurnX(1))));
  TQuaternion q = Quat(9, 9, 9, 9);
  q.CreateFromMatrix4D(TMatrix4D::ReturnIdentityMatrix());
  EXPECT_THAT(q, IsExactly(kOne));
}

TEST(TQuaternion, ToMatrixDoesNotNormalise) {
  EXPECT_THAT(Quat(5, 0, 0, 0).ToMatrix4D(), IsNear(TMatrix4D::ReturnIdentityMatrix(), 0));
  EXPECT_THAT(Quat(1, 2, 3, 4).ToMatrix4D(),
              IsExactly(TMatrix4D::Create(1 - 18 - 32, 12 - 8, 6 + 16, 12 + 8, 1 - 8 - 32, 24 - 4, 16 - 6, 4 + 24,
                                          1 - 8 - 18)));
}

TEST(TQuaternion, AnyMatrixIsAccepted) {
  EXPECT_NO_THROW(QuaternionOf(TMatrix4D()));
  EXPECT_NO_THROW(QuaternionOf(TMatrix4D::ReturnIdentityMatrix() * kNaN));
  EXPECT_NO_THROW(QuaternionOf(TMatrix4D::ReturnIdentityMatrix() * -1e300));
}

RC_GTEST_PROP(TQuaternion, MatrixToQuaternionToMatrixGivesTheMatrix, ()) {
  const TMatrix4D rotation = At(*AnyPose(), Pt(0, 0, 0));
  RC_ASSERT(testing::Value(QuaternionOf(rotation).ToMatrix4D(), IsNear(rotation, 4e-15)));
}

RC_GTEST_PROP(TQuaternion, QuaternionToMatrixToQuaternionGivesTheQuaternionOrItsNegative, ()) {
  const TQuaternion q = *AnyUnitQuaternion();
  const TQuaternion back = QuaternionOf(q.ToMatrix4D());
  RC_ASSERT(testing::Value(back.DotMul(q) < 0 ? -back : back, IsNear(q, 4e-15)));
}

// ---------------------------------------------------------------------------------------------- logarithm, exponential

TEST(TQuaternion, TheLogarithmIsTheAxisTimesHalfTheAngle) {
  EXPECT_THAT(Turn(Pt(0, 0, 1), 1.4).Log(), IsNear(Pt(0, 0, 0.7), 1e-15));
  EXPECT_THAT(kI.Log(), IsNear(Pt(kPi / 2, 0, 0), 1e-15));
  EXPECT_THAT((-Turn(Pt(0, 1, 0), 0.4)).Log(), IsNear(Pt(0, 0.2 - kPi, 0), 1e-14));
}

TEST(TQuaternion, TheLogarithmOfOneAndTheExponentialOfZero) {
  EXPECT_THAT(kOne.Log(), IsExactly(Pt(0, 0, 0)));
  EXPECT_THAT((-kOne).Log(), IsExactly(Pt(0, 0, 0)));
  EXPECT_THAT(Exponential(Pt(0, 0, 0)), IsExactly(kOne));
}

TEST(TQuaternion, TheLogarithmOfTwoIsZero) { EXPECT_THAT(Quat(2, 0, 0, 0).Log(), IsExactly(Pt(0, 0, 0))); }

// The magnitude is 1.3, its square 1.69.
TEST(TQuaternion, TheLogarithmDividesByTheSquaredMagnitude) {
  EXPECT_THAT(Quat(1.2, 0, 0.5, 0).Log(), IsNear(Pt(0, std::acos(1.2 / 1.69), 0), 1e-15));
}

TEST(TQuaternion, ASquaredMagnitudeWithin1eMinus6OfOneIsTakenForOne) {
  const TQuaternion q = Quat(0.6, 0.8, 0, 0) * (1 + 4e-7);
  EXPECT_NEAR(q.Log().X, std::acos(q.a), 1e-15);
  const TQuaternion further = Quat(0.6, 0.8, 0, 0) * (1 + 6e-7);
  EXPECT_NEAR(further.Log().X, std::acos(further.a / further.NormMagSqr()), 1e-15);
}

TEST(TQuaternion, AVectorPartUpTo1eMinus6HasTheLogarithmZero) {
  EXPECT_THAT(Quat(1, 1e-6, 0, 0).Log(), IsExactly(Pt(0, 0, 0)));
  EXPECT_GT(Quat(std::cos(1.1e-6), std::sin(1.1e-6), 0, 0).Log().X, 1e-6);
}

TEST(TQuaternion, TheLogarithmOfASquaredMagnitudeBelow1eMinus6Raises) {
  EXPECT_THAT(Calling([] { TQuaternion().Log(); }), RaisesGeneralError("Divided by zero: 0.000000"));
  EXPECT_THAT(Calling([] { Quat(0, 0, 9e-4, 0).Log(); }), RaisesGeneralError("Divided by zero: 0.000001"));
}

TEST(TQuaternion, TheLogarithmOneUnitInTheLastPlaceOutsideTheCosinesRaises) {
  const double above = std::nextafter(1.0, 2.0);
  EXPECT_THAT(Calling([&] { Quat(above, 2e-6, 0, 0).Log(); }),
              RaisesGeneralError(testing::StartsWith("Arc cosine of")));
  EXPECT_THAT(Calling([&] { Quat(-above, 2e-6, 0, 0).Log(); }),
              RaisesGeneralError(testing::StartsWith("Arc cosine of")));
  EXPECT_THAT(Quat(above, 1e-6, 0, 0).Log(), IsExactly(Pt(0, 0, 0)));
  EXPECT_THAT(Quat(1, 2e-6, 0, 0).Log(), IsExactly(Pt(0, 0, 0)));
}

// 0.9 divided by its squared magnitude 0.82 is more than 1.
TEST(TQuaternion, TheLogarithmOfAShortQuaternionMayRaise) {
  EXPECT_THAT(Calling([] { Quat(0.9, 0.1, 0, 0).Log(); }), RaisesGeneralError(testing::StartsWith("Arc cosine of")));
}

TEST(TQuaternion, TheExponentialIsCosineAndSine) {
  EXPECT_THAT(Exponential(Pt(0, 0, 0.7)), IsNear(Turn(Pt(0, 0, 1), 1.4), 1e-15));
  EXPECT_THAT(Exponential(Pt(2, -1, 2)),
              IsNear(TQuaternion::Create(std::cos(3.0), Pt(2, -1, 2) * (std::sin(3.0) / 3)), 1e-15));
}

TEST(TQuaternion, TheExponentialOfAVectorUpTo1eMinus6HasNoVectorPart) {
  EXPECT_THAT(Exponential(Pt(0, 1e-6, 0)).GetImgVector(), IsExactly(Pt(0, 0, 0)));
  EXPECT_NEAR(Exponential(Pt(0, 1.1e-6, 0)).c, 1.1e-6, 1e-18);
}

// Beside a vector part s, an error of one unit in the last place of the cosine is one of 1e-16 / s in the angle.
RC_GTEST_PROP(TQuaternion, TheExponentialUndoesTheLogarithm, ()) {
  const TQuaternion q = *AnyUnitQuaternion();
  const double s = q.GetImgVector().Mag();
  if (s > 1.001e-6) {
    RC_ASSERT(testing::Value(Exponential(q.Log()), IsNear(q, 1e-15 + 4e-16 / s)));
  } else {
    RC_ASSERT(testing::Value(Exponential(q.Log()), IsNear(q.a < 0 ? -q : q, 1.1e-6)));
  }
}

RC_GTEST_PROP(TQuaternion, TheLogarithmUndoesTheExponential, ()) {
  const TPoint3D v = *AnyPoint() / 1000.0;  // up to sqrt(3) long
  if (v.Mag() < 1e-5) return;
  RC_ASSERT(testing::Value(Exponential(v).Log(), IsNear(v, 1e-15 + 4e-16 / std::sin(v.Mag()))));
}

}  // namespace
}  // namespace ZORBase
