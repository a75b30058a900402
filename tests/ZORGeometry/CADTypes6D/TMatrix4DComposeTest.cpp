// Composing, inverting and applying transforms.
#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4D.h>

#include <ZORBase/common/Cadtypes/SMatrixSigular.h>

#include "ZORGeometry/CADTypes6D/PoseTestSupport.h"

namespace ZORBase {
namespace {

using namespace Test;  // NOLINT(google-build-using-namespace)

// A quarter turn about Z with a shift: (x, y, z) goes to (1 - y, 2 + x, 3 + z).
constexpr TMatrix4D kQuarter = TMatrix4D::Create(0, -1, 0, 1, 0, 0, 0, 0, 1, 1, 2, 3);

// A shear with whole numbers in it and in its inverse.
constexpr TMatrix4D kSheared = TMatrix4D::Create(2, 1, 1, 1, 3, 2, 1, 0, 0, 1, 2, 3);

// ---------------------------------------------------------------------------------------------- Multiply

TEST(TMatrix4D, TheRightFactorIsAppliedFirst) {
  const TMatrix4D scaling = TMatrix4D::Create(2, 0, 0, 0, 3, 0, 0, 0, 4, 10, 20, 30);
  EXPECT_THAT(kQuarter * scaling, IsExactly(TMatrix4D::Create(0, -3, 0, 2, 0, 0, 0, 0, 4, -19, 12, 33)));
  EXPECT_THAT(scaling * kQuarter, IsExactly(TMatrix4D::Create(0, -2, 0, 3, 0, 0, 0, 0, 4, 12, 26, 42)));
}

TEST(TMatrix4D, MultiplyPutsTheOtherMatrixOnTheSideItIsToldTo) {
  const TMatrix4D other = TurnX(0.5);
  TMatrix4D matrix = kQuarter;
  matrix.Multiply(other, true);
  EXPECT_THAT(matrix, IsExactly(kQuarter * other));
  matrix = kQuarter;
  matrix.Multiply(other, false);
  EXPECT_THAT(matrix, IsExactly(other * kQuarter));
}

TEST(TMatrix4D, AMatrixMayBeMultipliedByItself) {
  const TMatrix4D copy = kSheared;
  const TMatrix4D square = kSheared * copy;
  TMatrix4D matrix = kSheared;
  matrix.Multiply(matrix, true);
  EXPECT_THAT(matrix, IsExactly(square));
  matrix = kSheared;
  matrix.Multiply(matrix, false);
  EXPECT_THAT(matrix, IsExactly(square));
  matrix = kSheared;
  matrix = matrix * matrix;
  EXPECT_THAT(matrix, IsExactly(square));
  EXPECT_THAT(square, IsExactly(TMatrix4D::Create(6, 5, 4, 7, 10, 7, 2, 1, 1, 8, 15, 4)));
}

TEST(TMatrix4D, AFactorWithin1eMinus6OfTheIdentityChangesNothing) {
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 4; ++j) {
      TMatrix4D almost = kIdentity;
      almost.fm[i][j] += 5e-7;
      EXPECT_THAT(kQuarter * almost, IsExactly(kQuarter)) << i << j;
      EXPECT_THAT(almost * kQuarter, IsExactly(kQuarter)) << i << j;
    }
  }
}

TEST(TMatrix4D, BetweenTwoAlmostIdentitiesTheOneThatIsMultipliedStays) {
  const TMatrix4D one = At(kIdentity, Pt(5e-7, 0, 0));
  const TMatrix4D other = At(kIdentity, Pt(0, 5e-7, 0));
  TMatrix4D matrix = one;
  matrix.Multiply(other, false);
  EXPECT_THAT(matrix, IsExactly(one));
  EXPECT_THAT(one * other, IsExactly(one));
}

// 1 + 2^-60 - 1 is 2^-60 with the 64 bits of extended precision and 0 with the 53 of a double.
TEST(TMatrix4D, RotationEntriesAreSummedInExtendedPrecisionAndTranslationsInDouble) {
  const TMatrix4D left = TMatrix4D::Create(1, 0x1p-60, -1, 0, 1, 0, 0, 0, 1);
  const TMatrix4D ones = TMatrix4D::Create(1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1);
  const TMatrix4D product = left * ones;
  EXPECT_THAT(product.GetRowVector(0), IsExactly(Pt(0x1p-60, 0x1p-60, 0x1p-60)));
  EXPECT_EQ(product.fm[0][3], 0.0);
}

// (1 + 2^-30)^2 is 1 + 2^-29 + 2^-60; a double has no room for the last of these.
TEST(TMatrix4D, RotationEntriesAreMultipliedInExtendedPrecision) {
  for (std::size_t k = 0; k < 3; ++k) {
    TMatrix4D left;
    TMatrix4D right;
    left.fm[0][k] = right.fm[k][0] = 1 + 0x1p-30;
    left.fm[0][(k + 1) % 3] = -1;
    right.fm[(k + 1) % 3][0] = 1 + 0x1p-29;
    EXPECT_EQ((left * right).fm[0][0], 0x1p-60) << k;
  }
}

// Adding R times a zero vector would turn the negative zero into a positive one.
TEST(TMatrix4D, ARightFactorWithoutTranslationKeepsThatOfTheLeftToTheBit) {
  const TPoint3D shift = Pt(-0.0, 0.1, 1e-320);
  EXPECT_THAT((At(TurnX(1), shift) * TurnY(2)).GetTranslationPt(), IsExactly(shift));
  EXPECT_THAT((At(TurnX(1), shift) * At(TurnY(2), Pt(-0.0, 0, 0))).GetTranslationPt(), IsExactly(shift));
}

TEST(TMatrix4D, ARightFactorsTinyTranslationCounts) {
  const TMatrix4D product = TurnZ(kPi / 2) * At(TurnZ(1), Pt(1e-9, 0, 0));
  EXPECT_THAT(product.GetTranslationPt(), IsNear(Pt(0, 1e-9, 0), 1e-24));
}

RC_GTEST_PROP(TMatrix4D, CompositionIsAssociativeWithinRounding, ()) {
  const TMatrix4D a = *AnyPose();
  const TMatrix4D b = *AnyPose();
  const TMatrix4D c = *AnyPose();
  // A factor that counts as the identity is dropped whole.
  for (const TMatrix4D& m : {a, b, c, a * b, b * c}) RC_PRE(!m.isIdent());
  RC_ASSERT(testing::Value((a * b) * c, IsNear(a * (b * c), 1e-11)));
}

RC_GTEST_PROP(TMatrix4D, AppliesTheFactorsOneAfterTheOther, ()) {
  const TMatrix4D a = *AnyPose();
  const TMatrix4D b = *AnyPose();
  const TPoint3D p = *AnyPoint();
  RC_ASSERT(testing::Value((a * b) * p, IsNear(a * (b * p), 1e-11)));
}

// ---------------------------------------------------------------------------------------------- Invert

TEST(TMatrix4D, TheInverseOfAShiftIsTheShiftBack) {
  TMatrix4D matrix = At(kIdentity, Pt(1, 2, 3));
  matrix.Invert();
  EXPECT_THAT(matrix, IsExactly(At(kIdentity, Pt(-1, -2, -3))));
}

TEST(TMatrix4D, AShiftAlongAnyOneAxisIsTurnedWithTheRest) {
  const auto shiftedQuarter = [](double X, double Y, double Z) {
    return TMatrix4D::Create(0, -1, 0, 1, 0, 0, 0, 0, 1, X, Y, Z);
  };
  const TMatrix4D turn = shiftedQuarter(0, 0, 0);
  EXPECT_THAT((turn * shiftedQuarter(5, 0, 0)).GetTranslationPt(), IsExactly(TPoint3D::Create(0, 5, 0)));
  EXPECT_THAT((turn * shiftedQuarter(0, 5, 0)).GetTranslationPt(), IsExactly(TPoint3D::Create(-5, 0, 0)));
  EXPECT_THAT((turn * shiftedQuarter(0, 0, 5)).GetTranslationPt(), IsExactly(TPoint3D::Create(0, 0, 5)));
  const auto inverseShift = [&](double X, double Y, double Z) {
    TMatrix4D matrix = shiftedQuarter(X, Y, Z);
    matrix.Invert();
    return matrix.GetTranslationPt();
  };
  EXPECT_EQ(inverseShift(5, 0, 0).Y, 5);
  EXPECT_EQ(inverseShift(0, 5, 0).X, -5);
  EXPECT_EQ(inverseShift(0, 0, 5).Z, -5);
}

TEST(TMatrix4D, InvertLeavesATranslationUpTo1eMinus6AsItIs) {
  for (const TPoint3D& shift : {Pt(1e-7, 0, 0), Pt(1e-6, -1e-6, 1e-6)}) {
    for (const TMatrix4D& rotation : {kIdentity, TurnZ(1), TMatrix4D::Create(2, 0, 0, 0, 2, 0, 0, 0, 2)}) {
      TMatrix4D matrix = At(rotation, shift);
      matrix.Invert();
      EXPECT_THAT(matrix.GetTranslationPt(), IsExactly(shift));
    }
  }
}

TEST(TMatrix4D, InvertLeavesAnAlmostIdentityAsItIs) {
  TMatrix4D almost = kIdentity;
  almost.fm[0][1] = 9e-7;
  TMatrix4D matrix = almost;
  matrix.Invert();
  EXPECT_THAT(matrix, IsExactly(almost));
}

TEST(TMatrix4D, TheInverseOfARotationIsItsTransposeToTheBit) {
  const TMatrix4D rotation = TurnX(1) * TurnZ(2);
  TMatrix4D matrix = rotation;
  matrix.Invert();
  for (std::uint8_t i = 0; i < 3; ++i) EXPECT_THAT(matrix.GetRowVector(i), IsExactly(rotation.GetColVector(i)));
}

// The rows of one times the columns of the other make the identity, as is seen by hand.
TEST(TMatrix4D, TheInverseOfAShearIsExactInWholeNumbers) {
  EXPECT_EQ(kSheared.Determinant(), -1);
  TMatrix4D matrix = kSheared;
  matrix.Invert();
  EXPECT_THAT(matrix, IsNear(TMatrix4D::Create(0, 0, 1, -2, 1, 3, 3, -1, -5, -3, -9, 14), 0));
}

TEST(TMatrix4D, TheInverseOfAScalingDividesByTheDeterminant) {
  TMatrix4D matrix = TMatrix4D::Create(2, 0, 0, 0, 4, 0, 0, 0, 8, 2, 4, 8);
  EXPECT_EQ(matrix.Determinant(), 64);
  matrix.Invert();
  EXPECT_THAT(matrix, IsNear(TMatrix4D::Create(0.5, 0, 0, 0, 0.25, 0, 0, 0, 0.125, -1, -1, -1), 0));
}

TEST(TMatrix4D, ASingularMatrixRaisesAndStaysAsItWas) {
  for (const double determinant : {1e-7, -1e-7, 1e-6, 0.0}) {
    const TMatrix4D singular = TMatrix4D::Create(1, 0, 0, 0, 1, 0, 0, 0, determinant, 4, 5, 6);
    TMatrix4D matrix = singular;
    EXPECT_THAT(Calling([&] { matrix.Invert(); }), RaisesGeneralError(std::string(SMatrixSigular))) << determinant;
    EXPECT_THAT(matrix, IsExactly(singular));
  }
}

TEST(TMatrix4D, ADeterminantJustAbove1eMinus6CanBeInverted) {
  TMatrix4D matrix = TMatrix4D::Create(1, 0, 0, 0, 1, 0, 0, 0, 1.1e-6);
  matrix.Invert();
  EXPECT_NEAR(matrix.fm[2][2], 1 / 1.1e-6, 1e-9);
}

TEST(TMatrix4D, ATranslationBeyond1e10OnlyChangesItsSign) {
  TMatrix4D matrix = At(TurnZ(kPi / 2), Pt(2e10, 1, 0));
  matrix.Invert();
  EXPECT_THAT(matrix.GetTranslationPt(), IsExactly(Pt(-2e10, -1, -0.0)));
}

RC_GTEST_PROP(TMatrix4D, TimesItsInverseIsTheIdentity, ()) {
  const TMatrix4D pose = *AnyPose();
  TMatrix4D inverse = pose;
  inverse.Invert();
  RC_ASSERT(testing::Value(pose * inverse, IsNear(kIdentity, 2e-6)));
  RC_PRE(!pose.isIdent());
  RC_ASSERT(testing::Value(pose * inverse, IsNear(kIdentity, 1e-11)));
  RC_ASSERT(testing::Value(inverse * pose, IsNear(kIdentity, 1e-11)));
}

RC_GTEST_PROP(TMatrix4D, TransposingTwiceGivesTheMatrixBackAndKeepsTheTranslation, ()) {
  const TMatrix4D pose = *AnyPose();
  TMatrix4D matrix = pose;
  matrix.RotTransposition();
  for (std::uint8_t i = 0; i < 3; ++i) RC_ASSERT(SameBits(matrix.GetRowVector(i), pose.GetColVector(i)));
  RC_ASSERT(SameBits(matrix.GetTranslationPt(), pose.GetTranslationPt()));
  matrix.RotTransposition();
  RC_ASSERT(SameBits(matrix, pose));
}

// ---------------------------------------------------------------------------------------------- applying

TEST(TMatrix4D, APointIsTurnedAndShiftedAVectorOnlyTurned) {
  EXPECT_THAT(kQuarter.TransformPt(Pt(10, 20, 30)), IsExactly(Pt(-19, 12, 33)));
  EXPECT_THAT(kQuarter * Pt(10, 20, 30), IsExactly(Pt(-19, 12, 33)));
  EXPECT_THAT(kQuarter.TransformVec(Pt(10, 20, 30)), IsExactly(Pt(-20, 10, 30)));
}

TEST(TMatrix4D, APoseIsAPointAndAVector) {
  EXPECT_THAT(kQuarter.TransformPose(TPoint6D::Create(10, 20, 30, 1, 2, 3)),
              IsExactPose(TPoint6D::Create(-19, 12, 33, -2, 1, 3)));
}

TEST(TMatrix4D, ACoordinateAbove1e10LetsAPointPassUntouched) {
  for (const TMatrix4D& matrix : {kQuarter, kSheared, TMatrix4D()}) {
    for (const TPoint3D& far : {Pt(2e10, 0, 0), Pt(0, 2e10, 0), Pt(1, 2, 2e10)}) {
      EXPECT_THAT(matrix.TransformPt(far), IsExactly(far));
      EXPECT_THAT(matrix.TransformVec(far), IsExactly(far));
    }
  }
}

TEST(TMatrix4D, ACoordinateOf1e10OrBelowMinus1e10IsTransformed) {
  EXPECT_THAT(kQuarter.TransformPt(Pt(1e10, 0, 0)), IsExactly(Pt(1, 1e10 + 2, 3)));
  EXPECT_THAT(kQuarter.TransformPt(Pt(-2e10, 0, 0)), IsExactly(Pt(1, -2e10 + 2, 3)));
  EXPECT_THAT(kQuarter.TransformVec(Pt(0, -2e10, 1e10)), IsExactly(Pt(2e10, 0, 1e10)));
}

TEST(TMatrix4D, APoseWithAFarPositionStillTurnsItsDirection) {
  EXPECT_THAT(kQuarter.TransformPose(TPoint6D::Create(2e10, 1, 1, 1, 0, 0)),
              IsExactPose(TPoint6D::Create(2e10, 1, 1, 0, 1, 0)));
}

TEST(TMatrix4D, AnAlmostIdentityLetsPointsPassButMovesLines) {
  const TMatrix4D almost = At(kIdentity, Pt(5e-7, 0, 0));
  EXPECT_THAT(almost.TransformPt(Pt(1, 2, 3)), IsExactly(Pt(1, 2, 3)));
  EXPECT_THAT(almost.TransformVec(Pt(1, 2, 3)), IsExactly(Pt(1, 2, 3)));
  EXPECT_THAT(almost.TransformLine({Pt(0, 2, 3), Pt(1, 2, 3)}).StartPt, IsExactly(Pt(5e-7, 2, 3)));
}

TEST(TMatrix4D, BothEndsOfALineAreTransformedHoweverFarTheyAre) {
  const TLine3D line = kQuarter.TransformLine({Pt(10, 20, 30), Pt(2e10, 0, 0)});
  EXPECT_THAT(line.StartPt, IsExactly(Pt(-19, 12, 33)));
  EXPECT_THAT(line.EndPt, IsExactly(Pt(1, 2e10 + 2, 3)));
}

TEST(TMatrix4D, ARowVectorTimesTheMatrixIsTurnedByTheTransposeWithoutAnyGuard) {
  EXPECT_THAT(Pt(10, 20, 30) * kQuarter, IsExactly(Pt(20, -10, 30)));
  EXPECT_THAT(Pt(2e10, 0, 0) * kQuarter, IsExactly(Pt(0, -2e10, 0)));
  EXPECT_THAT(Pt(1, 2, 3) * kSheared, IsExactly(Pt(7, 7, 5)));
}

// ---------------------------------------------------------------------------------------------- applying to many

std::vector<TPoint3D> SomePoints() {
  TRandomPoses random(11);
  std::vector<TPoint3D> points;
  for (int i = 0; i < 500; ++i) points.push_back(random.Point(i % 7 == 0 ? 3e10 : 100));
  return points;
}

std::vector<TMatrix4D> SomeMatrices() {
  return {kQuarter, kSheared, TRandomPoses(12).Pose(100), kIdentity, At(kIdentity, Pt(5e-7, 0, 0)), TMatrix4D()};
}

TEST(TMatrix4D, ManyPointsAndVectorsComeOutAsOneByOneToTheBit) {
  const std::vector<TPoint3D> points = SomePoints();
  for (const TMatrix4D& matrix : SomeMatrices()) {
    std::vector<TPoint3D> moved(points.size());
    std::vector<TPoint3D> turned(points.size());
    matrix.TransformPts(points, moved);
    matrix.TransformVecs(points, turned);
    for (std::size_t i = 0; i < points.size(); ++i) {
      ASSERT_THAT(moved[i], IsExactly(matrix.TransformPt(points[i])));
      ASSERT_THAT(turned[i], IsExactly(matrix.TransformVec(points[i])));
    }
  }
}

TEST(TMatrix4D, ManyPosesComeOutAsOneByOneToTheBit) {
  const std::vector<TPoint3D> points = SomePoints();
  TPoint6DList poses;
  for (std::size_t i = 1; i < points.size(); ++i) poses.Add(TPoint6D::Create(points[i], points[i - 1]));
  for (const TMatrix4D& matrix : SomeMatrices()) {
    TPoint6DList results = poses;
    matrix.TransformPoses(poses, results);
    for (int i = 0; i < poses.Count(); ++i) ASSERT_THAT(results[i], IsExactPose(matrix.TransformPose(poses[i])));
  }
}

TEST(TMatrix4D, ManyPointsMayBeTransformedWhereTheyAre) {
  const std::vector<TPoint3D> points = SomePoints();
  for (const TMatrix4D& matrix : SomeMatrices()) {
    std::vector<TPoint3D> inPlace = points;
    matrix.TransformPts(inPlace, inPlace);
    for (std::size_t i = 0; i < points.size(); ++i) ASSERT_THAT(inPlace[i], IsExactly(matrix.TransformPt(points[i])));
  }
}

TEST(TMatrix4D, ResultsBeyondTheItemsStay) {
  const std::vector<TPoint3D> points = {Pt(1, 2, 3)};
  for (const TMatrix4D& matrix : SomeMatrices()) {
    std::vector<TPoint3D> results(2, Pt(7, 7, 7));
    matrix.TransformPts(points, results);
    EXPECT_THAT(results[1], IsExactly(Pt(7, 7, 7)));
    matrix.TransformPts({}, results);
    matrix.TransformPts({}, {});
    EXPECT_THAT(results[0], IsExactly(matrix.TransformPt(points[0])));
  }
}

TEST(TMatrix4D, TooFewResultsRaiseBeforeAnythingIsWritten) {
  const std::vector<TPoint3D> points(3, Pt(1, 2, 3));
  const std::vector<TPoint6D> poses(3);
  for (const TMatrix4D& matrix : {kQuarter, kIdentity}) {
    std::vector<TPoint3D> results(2, Pt(7, 7, 7));
    std::vector<TPoint6D> poseResults(2, TPoint6D::FOnes);
    EXPECT_THAT(Calling([&] { matrix.TransformPts(points, results); }),
                RaisesGeneralError("TMatrix4D.TransformPts: 3 items do not fit into 2 results"));
    EXPECT_THAT(Calling([&] { matrix.TransformVecs(points, results); }),
                RaisesGeneralError("TMatrix4D.TransformVecs: 3 items do not fit into 2 results"));
    EXPECT_THAT(Calling([&] { matrix.TransformPoses(poses, poseResults); }),
                RaisesGeneralError("TMatrix4D.TransformPoses: 3 items do not fit into 2 results"));
    for (const TPoint3D& result : results) EXPECT_THAT(result, IsExactly(Pt(7, 7, 7)));
    for (const TPoint6D& result : poseResults) EXPECT_THAT(result, IsExactPose(TPoint6D::FOnes));
  }
}

}  // namespace
}  // namespace ZORBase
