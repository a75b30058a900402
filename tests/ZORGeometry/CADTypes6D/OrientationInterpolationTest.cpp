#include <ZORBase/ZORGeometry/CADTypes6D/OrientationInterpolation.h>

#include <ZORBase/common/Cadtypes/ArcCos.h>
#include <ZORBase/common/Cadtypes/SMatrixSigular.h>

#include "ZORGeometry/CADTypes6D/PoseTestSupport.h"

namespace ZORBase {
namespace {

using namespace Test;  // NOLINT(google-build-using-namespace)

const TMatrix4D kIdentity = TMatrix4D::ReturnIdentityMatrix();

rc::Gen<double> AnyParameter() {
  return rc::gen::map(rc::gen::inRange(0, 1025), [](int i) { return i / 1024.0; });
}

// q or -q, whichever lies on the side of Reference.
TQuaternion OnTheSideOf(const TQuaternion& Reference, const TQuaternion& q) { return Reference.DotMul(q) < 0 ? -q : q; }

// ---------------------------------------------------------------------------------------------- angles

TEST(QuaternionAngle, IsTheArcBetweenTheShorterWayRound) {
  EXPECT_EQ(QuaternionAngle(kOne, kOne), 0);
  EXPECT_EQ(QuaternionAngle(kOne, -kOne), 0);
  EXPECT_NEAR(QuaternionAngle(kOne, kI), kPi / 2, 1e-15);
  EXPECT_NEAR(QuaternionAngle(kOne, Turn(Pt(0, 0, 1), 0.8)), 0.4, 1e-15);
  EXPECT_NEAR(QuaternionAngle(kOne, Turn(Pt(0, 0, 1), 2 * kPi - 0.8)), 0.4, 1e-15);
}

TEST(QuaternionAngle, ClampsTheDotProductOfLongQuaternions) {
  EXPECT_EQ(QuaternionAngle(Quat(2, 0, 0, 0), Quat(1, 1, 0, 0)), 0);
  EXPECT_EQ(QuaternionAngle(Quat(2, 0, 0, 0), Quat(-1, 1, 0, 0)), 0);
}

TEST(QuaternionAngle, ACosineThatIsNoNumberRaisesWithTheValuesBehindTheErrorText) {
  const std::optional<std::string> cause = GeneralErrorOf([] { ArcCos(kNaN); });
  ASSERT_TRUE(cause);
  EXPECT_THAT(Calling([] { QuaternionAngle(kOne, Quat(0.5, kNaN, 0.25, -0.125)); }),
              RaisesGeneralError(*cause + "0.500000 nan 0.250000 -0.125000 nan 0"));
  const TLocaleGuard german(std::locale("de_DE.UTF-8"));
  EXPECT_THAT(Calling([] { QuaternionAngle(kOne, Quat(0.5, kNaN, 0.25, -0.125)); }),
              RaisesGeneralError(*cause + "0.500000 nan 0.250000 -0.125000 nan 0"));
}

TEST(MatrixAngle, OfAMatrixWithItselfIsZero) {
  EXPECT_EQ(MatrixAngle(kIdentity, kIdentity), 0);
  const TMatrix4D quarter = At(TMatrix4D::Create(0, -1, 0, 1, 0, 0, 0, 0, 1), Pt(1, 2, 3));
  EXPECT_EQ(MatrixAngle(quarter, quarter), 0);
}

TEST(MatrixAngle, IsNeverMoreThanHalfATurn) {
  EXPECT_NEAR(MatrixAngle(kIdentity, TurnZ(3 * kPi / 2)), kPi / 2, 1e-15);
  EXPECT_NEAR(MatrixAngle(kIdentity, TurnX(200 * kPi / 180)), 160 * kPi / 180, 1e-14);
  EXPECT_NEAR(MatrixAngle(TurnY(-1), TurnY(2)), 3, 1e-14);
}

TEST(MatrixAngle, TranslationsDoNotCount) {
  EXPECT_NEAR(MatrixAngle(At(TurnX(1), Pt(1, 2, 3)), At(TurnX(1.5), Pt(-40, 5, 6))), 0.5, 1e-15);
  EXPECT_EQ(MatrixAngle(At(kIdentity, Pt(1, 2, 3)), At(kIdentity, Pt(4, 5, 6))), 0);
}

TEST(MatrixAngle, OfAMatrixWithoutAnInverseRaises) {
  EXPECT_THAT(Calling([] { MatrixAngle(TMatrix4D(), kIdentity); }), RaisesGeneralError(std::string(SMatrixSigular)));
}

TEST(MatrixAngle, OfNoNumbersRaisesTheErrorOfTheArcCosine) {
  EXPECT_THAT(Calling([] { MatrixAngle(TurnX(1), kIdentity * kNaN); }),
              RaisesGeneralError(testing::StartsWith("Arc cosine of")));
}

// Rounding may push entries past 1 in any way; the normalised real part never leaves [-1, 1].
TEST(MatrixAngle, OfFiniteMatricesNeverMeetsTheErrorOfTheArcCosine) {
  TRandomPoses random(31);
  for (int i = 0; i < 20000; ++i) {
    TMatrix4D matrix = TMatrix4D::Create(random.UnitVector(), random.Number(0, 1e-7));
    for (auto& row : matrix.fm) {
      for (double& entry : row) entry += random.Number(-1e-15, 1e-15);
    }
    ASSERT_NO_THROW(MatrixAngle(TurnX(0.1) * matrix, TurnX(0.1)));
    ASSERT_NO_THROW(MatrixAngle(random.Pose(1), matrix * random.Number(-3, 3)));
  }
}

TEST(SwapNumber, ExchangesTheTwo) {
  double a = 1;
  double b = 2;
  SwapNumber(a, b);
  EXPECT_EQ(a, 2);
  EXPECT_EQ(b, 1);
  SwapNumber(a, a);
  EXPECT_EQ(a, 2);
}

// ---------------------------------------------------------------------------------------------- NLerp

TEST(NLerpQuaternion, MeetsItsEndsNormalisedAndTheShortWayRound) {
  const TQuaternion q1 = Quat(0, 2, 0, 0);
  const TQuaternion q2 = Quat(0, -3, 0, -4);
  EXPECT_THAT(NLerpQuaternion(0, q1, q2), IsNear(Quat(0, 1, 0, 0), 0));
  EXPECT_THAT(NLerpQuaternion(1, q1, q2), IsNear(Quat(0, 0.6, 0, 0.8), 1e-15));
}

TEST(NLerpQuaternion, ParametersOutsideGiveTheEnds) {
  const TQuaternion q1 = Turn(Pt(1, 0, 0), 0.5);
  const TQuaternion q2 = Turn(Pt(0, 1, 0), 1.5);
  EXPECT_THAT(NLerpQuaternion(-3, q1, q2), IsExactly(NLerpQuaternion(0, q1, q2)));
  EXPECT_THAT(NLerpQuaternion(7, q1, q2), IsExactly(NLerpQuaternion(1, q1, q2)));
}

// (4, 0) (1 - 1/4) + (0, 12) 1/4 = (3, 3)
TEST(NLerpQuaternion, FollowsTheChordOfQuaternionsOfAnyLength) {
  const double h = std::sqrt(0.5);
  EXPECT_THAT(NLerpQuaternion(0.25, Quat(4, 0, 0, 0), Quat(0, 0, 12, 0)), IsNear(Quat(h, 0, h, 0), 1e-15));
}

TEST(NLerpQuaternion, ADotProductOfZeroLeavesTheSecondAsItIs) {
  EXPECT_THAT(NLerpQuaternion(1, kOne, -kI), IsNear(-kI, 0));
}

TEST(NLerpQuaternion, ABlendOfAlmostNothingRaises) {
  EXPECT_THAT(Calling([] { NLerpQuaternion(0.5, TQuaternion(), TQuaternion()); }),
              RaisesGeneralError("Divided by zero: 0.000000"));
  EXPECT_THAT(Calling([] { NLerpQuaternion(0, Quat(0, 0, 9e-7, 0), kOne); }),
              RaisesGeneralError("Divided by zero: 0.000001"));
  EXPECT_THAT(NLerpQuaternion(0, Quat(0, 0, 1e-6, 0), kI), IsNear(Quat(0, 0, 1, 0), 1e-15));
}

// ---------------------------------------------------------------------------------------------- SLerp

TEST(SLerpQuaternion, HalfWayToAQuarterTurnIsAnEighth) {
  const TQuaternion quarter = Quat(std::cos(kPi / 4), 0, 0, std::sin(kPi / 4));
  EXPECT_THAT(SLerpQuaternion(0.5, kOne, quarter), IsNear(Quat(std::cos(kPi / 8), 0, 0, std::sin(kPi / 8)), 1e-15));
}

TEST(SLerpQuaternion, OfEqualQuaternionsIsThatQuaternionNormalised) {
  EXPECT_THAT(SLerpQuaternion(0.3, Quat(0, 1.5, 0, 2), Quat(0, 1.5, 0, 2)), IsNear(Quat(0, 0.6, 0, 0.8), 1e-15));
}

// Lengths 2 and 1/2 give the cosine of the arc; only the chord makes the result a unit quaternion.
TEST(SLerpQuaternion, FollowsTheChordForArcsUpTo1eMinus6Only) {
  const auto start = [](double arc) {
    return SLerpQuaternion(0, Quat(2, 0, 0, 0), Quat(std::cos(arc), std::sin(arc), 0, 0) * 0.5);
  };
  EXPECT_THAT(start(0.9e-6), IsNear(kOne, 1e-15));
  EXPECT_THAT(start(1.1e-6), IsNear(kOne * 2, 1e-9));
}

TEST(SLerpQuaternion, IsNotNormalised) {
  EXPECT_THAT(SLerpQuaternion(0.5, Quat(2, 0, 0, 0), Quat(0, 2, 0, 0)), IsNear((kOne + kI) * std::sqrt(2.0), 1e-15));
}

TEST(SLerpQuaternion, ParametersOutsideGiveTheEnds) {
  const TQuaternion q1 = Turn(Pt(1, 0, 0), 0.5);
  const TQuaternion q2 = Turn(Pt(0, 1, 0), 1.5);
  EXPECT_THAT(SLerpQuaternion(-3, q1, q2), IsExactly(SLerpQuaternion(0, q1, q2)));
  EXPECT_THAT(SLerpQuaternion(7, q1, q2), IsExactly(SLerpQuaternion(1, q1, q2)));
}

TEST(Lerp, BetweenAQuaternionAndItsNegativeThereIsNothingToTurn) {
  TRandomPoses random(32);
  for (int i = 0; i < 100; ++i) {
    const TQuaternion q = random.UnitQuaternion();
    const double t = random.Number(0, 1);
    EXPECT_THAT(NLerpQuaternion(t, q, -q), IsNear(q, 1e-15));
    EXPECT_THAT(SLerpQuaternion(t, q, -q), IsNear(q, 1e-15));
  }
}

RC_GTEST_PROP(Lerp, BothBlendsMeetTheirEnds, ()) {
  const TQuaternion q1 = *AnyUnitQuaternion();
  const TQuaternion q2 = *AnyUnitQuaternion();
  const TQuaternion end = OnTheSideOf(q1, q2);
  for (const auto& blend : {NLerpQuaternion, SLerpQuaternion}) {
    RC_ASSERT(testing::Value(blend(0, q1, q2), IsNear(q1, 1e-15)));
    RC_ASSERT(testing::Value(blend(1, q1, q2), IsNear(end, 1e-15)));
  }
}

// The arc cosine of a small arc is only good to half the digits; the result hardly depends on it.
RC_GTEST_PROP(Lerp, TheArcFromTheStartGrowsLinearlyForSLerp, ()) {
  const TQuaternion q1 = *AnyUnitQuaternion();
  const TQuaternion q2 = OnTheSideOf(q1, *AnyUnitQuaternion());
  const double t = *AnyParameter();
  const TQuaternion q = SLerpQuaternion(t, q1, q2);
  RC_ASSERT(std::fabs(ArcBetween(q1, q) - t * ArcBetween(q1, q2)) < 1e-14);
  RC_ASSERT(std::fabs(ArcBetween(q, q2) - (1 - t) * ArcBetween(q1, q2)) < 1e-14);
}

RC_GTEST_PROP(Lerp, ADirectionTurnedByABlendKeepsItsLength, ()) {
  const TQuaternion q1 = *AnyUnitQuaternion();
  const TQuaternion q2 = *AnyUnitQuaternion();
  const double t = *AnyParameter();
  for (const auto& blend : {NLerpQuaternion, SLerpQuaternion}) {
    RC_ASSERT(std::fabs(blend(t, q1, q2).ToMatrix4D().TransformVec(Pt(0, 0, 1)).Mag() - 1) < 1e-14);
  }
}

RC_GTEST_PROP(Lerp, TurningBothEndsTurnsTheBlendAlike, ()) {
  const TQuaternion q1 = *AnyUnitQuaternion();
  const TQuaternion q2 = *AnyUnitQuaternion();
  const TQuaternion turn = *AnyUnitQuaternion();
  const double t = *AnyParameter();
  RC_PRE(std::fabs(q1.DotMul(q2)) > 1e-9);  // at right angles either way round is the short one
  RC_ASSERT(testing::Value(SLerpQuaternion(t, turn * q1, turn * q2), IsNear(turn * SLerpQuaternion(t, q1, q2), 1e-14)));
}

// ---------------------------------------------------------------------------------------------- many parameters

const std::vector<double> kParameters = {0, 1, -3, 7, 0.5, 1e-9, 0.123456789, 1.0 / 3, 0.999999};

template <class TValue, class TSingle, class TMany>
void ExpectTheSameBits(const TValue& From, const TValue& To, TSingle&& Single, TMany&& Many) {
  std::vector<TValue> results(kParameters.size() + 1, From);
  Many(kParameters, From, To, std::span<TValue>(results));
  for (std::size_t i = 0; i < kParameters.size(); ++i) {
    EXPECT_THAT(results[i], IsExactly(Single(kParameters[i], From, To))) << kParameters[i];
  }
  EXPECT_THAT(results.back(), IsExactly(From)) << "beyond the parameters";
}

TEST(Lerp, BlendsAtManyParametersComeOutAsOneByOneToTheBit) {
  TRandomPoses random(33);
  for (int i = 0; i < 50; ++i) {
    const TMatrix4D m1 = random.Pose(100);
    const TMatrix4D m2 = i % 5 == 0 ? At(m1, Pt(1, 2, 3)) : random.Pose(100);
    const TQuaternion q1 = QuaternionOf(m1) * random.Number(0.5, 2);
    const TQuaternion q2 = QuaternionOf(m2) * random.Number(-1, 1);
    ExpectTheSameBits(q1, q2, NLerpQuaternion, NLerpQuaternions);
    ExpectTheSameBits(q1, q2, SLerpQuaternion, SLerpQuaternions);
    ExpectTheSameBits(q1, q1 * 1e-5, NLerpQuaternion, NLerpQuaternions);
    ExpectTheSameBits(m1, m2, NLerp4DMatrix, NLerp4DMatrices);
    ExpectTheSameBits(m1, m2, SLerp4DMatrix, SLerp4DMatrices);
  }
}

TEST(Lerp, TheEndsMayStandAmongTheResults) {
  const TQuaternion q1 = Turn(Pt(1, 0, 0), 0.5);
  const TQuaternion q2 = Turn(Pt(0, 1, 0), 1.5);
  std::vector<TQuaternion> results(kParameters.size(), q1);
  results[1] = q2;
  SLerpQuaternions(kParameters, results[0], results[1], results);
  for (std::size_t i = 0; i < results.size(); ++i) {
    EXPECT_THAT(results[i], IsExactly(SLerpQuaternion(kParameters[i], q1, q2)));
  }
}

TEST(Lerp, TooFewResultsRaiseBeforeAnythingIsWritten) {
  const std::vector<double> t = {0, 0.5, 1};
  std::vector<TQuaternion> quaternions(2, kI);
  std::vector<TMatrix4D> matrices(2, kIdentity);
  EXPECT_THAT(Calling([&] { NLerpQuaternions(t, kOne, kOne, quaternions); }),
              RaisesGeneralError("NLerpQuaternions: 3 parameters do not fit into 2 results"));
  EXPECT_THAT(Calling([&] { SLerpQuaternions(t, kOne, kOne, quaternions); }),
              RaisesGeneralError("SLerpQuaternions: 3 parameters do not fit into 2 results"));
  EXPECT_THAT(Calling([&] { NLerp4DMatrices(t, TurnX(1), TurnX(2), matrices); }),
              RaisesGeneralError("NLerp4DMatrices: 3 parameters do not fit into 2 results"));
  EXPECT_THAT(Calling([&] { SLerp4DMatrices(t, TurnX(1), TurnX(2), matrices); }),
              RaisesGeneralError("SLerp4DMatrices: 3 parameters do not fit into 2 results"));
  for (const TQuaternion& q : quaternions) EXPECT_THAT(q, IsExactly(kI));
  for (const TMatrix4D& m : matrices) EXPECT_THAT(m, IsExactly(kIdentity));
}

TEST(Lerp, ABlendThatFailsAtOneOfManyParametersWritesNone) {
  const std::vector<double> t = {1, 0.5, 0};
  std::vector<TQuaternion> results(3, kI);
  EXPECT_THAT(Calling([&] { NLerpQuaternions(t, TQuaternion(), kOne, results); }),
              RaisesGeneralError("Divided by zero: 0.000000"));
  // The cosine 1e-7 * 1e7 is 1, so that the arc is followed along its chord.
  EXPECT_THAT(Calling([&] { SLerpQuaternions(t, kOne * 1e-7, kOne * 1e7, results); }),
              RaisesGeneralError("Divided by zero: 0.000000"));
  EXPECT_THAT(Calling([&] { SLerpQuaternions(t, kOne * kNaN, kOne, results); }),
              RaisesGeneralError(testing::StartsWith("Arc cosine of")));
  for (const TQuaternion& q : results) EXPECT_THAT(q, IsExactly(kI));
}

// ---------------------------------------------------------------------------------------------- blends of poses

TEST(Lerp4DMatrix, HalfWayTheTranslationIsInTheMiddle) {
  const TMatrix4D m1 = TurnX(0.2);
  const TMatrix4D m2 = At(TurnX(0.6), Pt(10, 0, 0));
  EXPECT_THAT(NLerp4DMatrix(0.5, m1, m2), IsNear(At(TurnX(0.4), Pt(5, 0, 0)), 1e-15));
  EXPECT_THAT(SLerp4DMatrix(0.5, m1, m2), IsNear(At(TurnX(0.4), Pt(5, 0, 0)), 1e-15));
  EXPECT_THAT(SLerp4DMatrix(0.25, m1, m2), IsNear(At(TurnX(0.3), Pt(2.5, 0, 0)), 1e-15));
}

// tan of half the angle is linear along the chord of two quaternions that are symmetric about 1.
TEST(Lerp4DMatrix, NLerpTurnsFasterInTheMiddleThanSLerp) {
  const double angle = 2 * std::atan(0.5 * std::tan(0.5));
  EXPECT_THAT(NLerp4DMatrix(0.75, TurnZ(-1), TurnZ(1)), IsNear(TurnZ(angle), 1e-15));
}

RC_GTEST_PROP(Lerp4DMatrix, BothBlendsMeetTheirEnds, ()) {
  const TMatrix4D m1 = *AnyPose();
  const TMatrix4D m2 = *AnyPose();
  for (const auto& blend : {NLerp4DMatrix, SLerp4DMatrix}) {
    RC_ASSERT(testing::Value(blend(0, m1, m2), IsNear(m1, 4e-15)));
    RC_ASSERT(testing::Value(blend(1, m1, m2), IsNear(m2, 4e-15)));
    RC_ASSERT(SameBits(blend(-3, m1, m2), blend(0, m1, m2)));
    RC_ASSERT(SameBits(blend(7, m1, m2), blend(1, m1, m2)));
  }
}

RC_GTEST_PROP(Lerp4DMatrix, TheRotationAngleFromTheStartGrowsLinearlyForSLerp, ()) {
  const TMatrix4D m1 = *AnyPose();
  const TMatrix4D m2 = *AnyPose();
  const double t = *AnyParameter();
  const double angle = MatrixAngle(m1, m2);
  RC_PRE(angle > 1e-3);  // an arc cosine near 1 is inaccurate
  RC_ASSERT(std::fabs(MatrixAngle(m1, SLerp4DMatrix(t, m1, m2)) - t * angle) < 3e-6);
}

}  // namespace
}  // namespace ZORBase
