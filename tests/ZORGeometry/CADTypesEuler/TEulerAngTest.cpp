#include <ZORBase/ZORGeometry/CADTypesEuler.h>

#include "support/TestSupport.h"

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;
using Test::TLocaleGuard;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::Pointwise;

// ---------------------------------------------------------------------------------------------- rotations, independently

using TRows = std::array<std::array<double, 3>, 3>;

TRows Product(const TRows& A, const TRows& B) {
  TRows product{};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) {
      for (std::size_t k = 0; k < 3; ++k) product[i][j] += A[i][k] * B[k][j];
    }
  }
  return product;
}

TRows RotationOf(const TEulerAng& Angles) {
  const auto [cx, sx] = std::array{std::cos(Angles.Rx), std::sin(Angles.Rx)};
  const auto [cy, sy] = std::array{std::cos(Angles.Ry), std::sin(Angles.Ry)};
  const auto [cz, sz] = std::array{std::cos(Angles.Rz), std::sin(Angles.Rz)};
  const TRows aboutX = {{{1, 0, 0}, {0, cx, -sx}, {0, sx, cx}}};
  const TRows aboutY = {{{cy, 0, sy}, {0, 1, 0}, {-sy, 0, cy}}};
  const TRows aboutZ = {{{cz, -sz, 0}, {sz, cz, 0}, {0, 0, 1}}};
  return Product(aboutZ, Product(aboutY, aboutX));
}

TPoint3D Column(const TRows& Rotation, std::size_t Index) {
  return TPoint3D::Create(Rotation[0][Index], Rotation[1][Index], Rotation[2][Index]);
}

double LargestMiss(const TRows& A, const TRows& B) {
  double miss = 0.0;
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 3; ++j) miss = std::max(miss, std::fabs(A[i][j] - B[i][j]));
  }
  return miss;
}

// What comes back when the first two columns of a rotation are turned into angles and these into a rotation.
double MissOfReturn(const TEulerAng& Angles) {
  const TRows rotation = RotationOf(Angles);
  return LargestMiss(rotation, RotationOf(TEulerAng::CreatebyXYVec(Column(rotation, 0), Column(rotation, 1))));
}

std::array<double, 3> Coordinates(const TPoint3D& P) { return {P.X, P.Y, P.Z}; }

TEulerAng AnglesBetween(double Low, double High) {
  const auto angle = [&] { return Low + (High - Low) * (*rc::gen::inRange(0, 1000001) / 1e6); };
  const double rx = angle();
  const double ry = angle();
  return TEulerAng::Create(rx, ry, angle());
}

// ---------------------------------------------------------------------------------------------- making and taking apart

TEST(TEulerAng, IsZeroByDefaultAndFZeroIsZeroBeforeAndAfterStartUp) {
  EXPECT_THAT(TEulerAng().ToArray(), ElementsAre(0, 0, 0));
  EXPECT_THAT(TEulerAng::FZero.ToArray(), ElementsAre(0, 0, 0));
  CADTypesEuler::initialization();
  EXPECT_THAT(TEulerAng::FZero.ToArray(), ElementsAre(0, 0, 0));
  CADTypesEuler::Finalization();
}

TEST(TEulerAng, CreateTakesRadiansInTheOrderRxRyRz) {
  const auto angles = TEulerAng::Create(1, 2, 3);
  EXPECT_EQ(angles.Rx, 1);
  EXPECT_EQ(angles.Ry, 2);
  EXPECT_EQ(angles.Rz, 3);
}

TEST(TEulerAng, CreatebyDegreeTakesDegrees) {
  EXPECT_THAT(TEulerAng::CreatebyDegree(180, -90, 45).ToArray(), ElementsAre(kPi, -kPi / 2, kPi / 4));
}

TEST(TEulerAng, ItemsAreTheAnglesThemselves) {
  TEulerAng angles;
  for (int i = 0; i < 3; ++i) angles.Items(i) = i + 1;
  EXPECT_THAT(angles.ToArray(), ElementsAre(1, 2, 3));
  const TEulerAng& constant = angles;
  EXPECT_EQ(constant.Items(2), 3);
  EXPECT_THAT(Calling([&] { angles.Items(3); }), RaisesGeneralError("TEulerAng has the items 0 to 2, not 3"));
  EXPECT_THAT(Calling([&] { constant.Items(-1); }), RaisesGeneralError("TEulerAng has the items 0 to 2, not -1"));
}

// ---------------------------------------------------------------------------------------------- angles of a frame

TEST(TEulerAng, TheFrameOfTheAxesHasNoAngles) {
  EXPECT_THAT(TEulerAng::CreatebyXYVec(TPoint3D::Create(1, 0, 0), TPoint3D::Create(0, 1, 0)).ToArray(),
              ElementsAre(0, 0, 0));
}

TEST(TEulerAng, AFrameTurnedAboutZHasOnlyRz) {
  const auto angles = TEulerAng::CreatebyXYVec(TPoint3D::Create(0, 1, 0), TPoint3D::Create(-1, 0, 0));
  EXPECT_THAT(angles.ToArray(), ElementsAre(0, 0, kPi / 2));
}

TEST(TEulerAng, AxesNeedNotBeUnitVectors) {
  const auto angles = TEulerAng::CreatebyXYVec(TPoint3D::Create(0, 250, 0), TPoint3D::Create(-0.004, 0, 0));
  EXPECT_THAT(angles.ToArray(), ElementsAre(0, 0, kPi / 2));
}

TEST(TEulerAng, AxesThatAreNotPerpendicularRaise) {
  EXPECT_THAT(Calling([] { TEulerAng::CreatebyXYVec(TPoint3D::Create(1, 0, 0), TPoint3D::Create(1, 1, 0)); }),
              RaisesGeneralError("CalcEulerAngZYXByVec ErrInput"));
}

TEST(TEulerAng, AxesMayBeAHundredthOfADegreeOffPerpendicular) {
  const auto make = [](double Degrees) {
    const double angle = DegToRad(Degrees);
    return [angle] {
      return TEulerAng::CreatebyXYVec(TPoint3D::Create(1, 0, 0), TPoint3D::Create(std::cos(angle), std::sin(angle), 0));
    };
  };
  for (const double off : {0.005, 0.0099}) {
    EXPECT_THAT(make(90 - off)().ToArray(), Pointwise(DoubleNear(2e-4), {0.0, 0.0, 0.0}));
    EXPECT_THAT(make(90 + off)().ToArray(), Pointwise(DoubleNear(2e-4), {0.0, 0.0, 0.0}));
  }
  for (const double off : {0.0101, 0.02, 45.0, 90.0}) {
    EXPECT_THAT(make(90 - off), RaisesGeneralError("CalcEulerAngZYXByVec ErrInput"));
    EXPECT_THAT(make(90 + off), RaisesGeneralError("CalcEulerAngZYXByVec ErrInput"));
  }
}

TEST(TEulerAng, AxesThatAreZeroOrNotFiniteRaise) {
  const TPoint3D good = TPoint3D::Create(1, 0, 0);
  for (const double bad : {0.0, std::nan(""), kInfinity}) {
    const TPoint3D axis = TPoint3D::Create(0, bad, 0);
    EXPECT_THAT(Calling([&] { TEulerAng::CreatebyXYVec(good, axis); }),
                RaisesGeneralError("CalcEulerAngZYXByVec ErrInput"));
    EXPECT_THAT(Calling([&] { TEulerAng::CreatebyXYVec(axis, good); }),
                RaisesGeneralError("CalcEulerAngZYXByVec ErrInput"));
  }
}

TEST(TEulerAng, HalfATurnIsPlusPiWhateverTheSignOfTheZeros) {
  const auto aboutX = TEulerAng::CreatebyXYVec(TPoint3D::Create(1, 0, 0), TPoint3D::Create(-0.0, -1, -0.0));
  EXPECT_THAT(aboutX.ToArray(), Pointwise(DoubleNear(1e-15), {kPi, 0.0, 0.0}));
  const auto aboutZ = TEulerAng::CreatebyXYVec(TPoint3D::Create(-1, -0.0, -0.0), TPoint3D::Create(-0.0, -1, -0.0));
  EXPECT_THAT(aboutZ.ToArray(), Pointwise(DoubleNear(1e-15), {0.0, 0.0, kPi}));
}

// At Ry = +-pi/2 only the sum or the difference of Rx and Rz is left; Rx is taken as 0.
TEST(TEulerAng, AtTheLockRxIsZeroAndTheRotationComesBack) {
  for (const double ry : {kPi / 2, -kPi / 2}) {
    for (const double rx : {0.0, 0.3, -2.0}) {
      const TRows rotation = RotationOf(TEulerAng::Create(rx, ry, 0.7));
      const auto angles = TEulerAng::CreatebyXYVec(Column(rotation, 0), Column(rotation, 1));
      EXPECT_EQ(angles.Rx, 0);
      EXPECT_NEAR(angles.Ry, ry, 1e-15);
      EXPECT_LE(LargestMiss(rotation, RotationOf(angles)), 1e-15);
    }
  }
}

TEST(TEulerAng, TheLockBeginsWithin1eMinus6) {
  const auto rxNearLock = [](double Distance) {
    const TRows rotation = RotationOf(TEulerAng::Create(kPi / 4, kPi / 2 - Distance, 0.0));
    return TEulerAng::CreatebyXYVec(Column(rotation, 0), Column(rotation, 1)).Rx;
  };
  EXPECT_EQ(rxNearLock(1.40e-6), 0);  // both entries are Distance times sqrt(1/2), 0.99e-6
  EXPECT_NEAR(rxNearLock(1.43e-6), kPi / 4, 1e-9);
}

RC_GTEST_PROP(TEulerAng, TheFirstTwoColumnsOfARotationGiveItBack, ()) {
  TEulerAng angles = AnglesBetween(-7, 7);
  if (std::fabs(std::cos(angles.Ry)) < 1e-3) angles.Ry = 1.0;
  RC_ASSERT(MissOfReturn(angles) <= 1e-12);
}

RC_GTEST_PROP(TEulerAng, AnglesInTheirRangesComeBackThemselves, ()) {
  TEulerAng angles = AnglesBetween(-3.14, 3.14);
  angles.Ry /= 2.01;
  const TRows rotation = RotationOf(angles);
  const auto back = TEulerAng::CreatebyXYVec(Column(rotation, 0), Column(rotation, 1));
  RC_ASSERT(back.DistanceTo(angles) <= 1e-11);
}

// ---------------------------------------------------------------------------------------------- tool direction

TEST(TEulerAng, TheToolPointsAlongZWithoutAngles) {
  EXPECT_THAT(Coordinates(TEulerAng::FZero.ToVector()), ElementsAre(0, 0, 1));
}

TEST(TEulerAng, AQuarterTurnAboutXPointsTheToolAlongMinusY) {
  EXPECT_THAT(Coordinates(TEulerAng::Create(kPi / 2, 0, 0).ToVector()), Pointwise(DoubleNear(1e-16), {0.0, -1.0, 0.0}));
}

TEST(TEulerAng, AQuarterTurnAboutYPointsTheToolAlongXAndRzTurnsItOn) {
  EXPECT_THAT(Coordinates(TEulerAng::Create(0, kPi / 2, 0).ToVector()), Pointwise(DoubleNear(1e-16), {1.0, 0.0, 0.0}));
  EXPECT_THAT(Coordinates(TEulerAng::Create(0, kPi / 2, kPi / 2).ToVector()),
              Pointwise(DoubleNear(1e-16), {0.0, 1.0, 0.0}));
}

RC_GTEST_PROP(TEulerAng, TheToolDirectionIsTheThirdColumnOfTheRotation, ()) {
  const TEulerAng angles = AnglesBetween(-10, 10);
  const TPoint3D direction = angles.ToVector();
  RC_ASSERT((direction - Column(RotationOf(angles), 2)).Mag() <= 1e-15);
  RC_ASSERT(std::fabs(direction.Mag() - 1.0) <= 1e-15);
}

// ---------------------------------------------------------------------------------------------- arithmetic

TEST(TEulerAng, ArithmeticRunsOverTheComponents) {
  const auto p = TEulerAng::Create(1, 2, 3);
  const auto q = TEulerAng::Create(10, -20, 0.5);
  EXPECT_THAT((p + q).ToArray(), ElementsAre(11, -18, 3.5));
  EXPECT_THAT((p - q).ToArray(), ElementsAre(-9, 22, 2.5));
  EXPECT_THAT((-q).ToArray(), ElementsAre(-10, 20, -0.5));
  EXPECT_THAT((p * 2.0).ToArray(), ElementsAre(2, 4, 6));
  EXPECT_THAT((2.0 * p).ToArray(), ElementsAre(2, 4, 6));
  EXPECT_THAT((q / 4.0).ToArray(), ElementsAre(2.5, -5, 0.125));
}

TEST(TEulerAng, DivisionRoundsTheReciprocalFirst) {
  const double quotient = (TEulerAng::Create(5, 0, 0) / 3.0).Rx;
  EXPECT_EQ(quotient, 5.0 * (1.0 / 3.0));
  EXPECT_NE(quotient, 5.0 / 3.0);
}

TEST(TEulerAng, DivisionByZeroFollowsFloatingPoint) {
  const TEulerAng quotient = TEulerAng::Create(1, -1, 0) / 0.0;
  EXPECT_EQ(quotient.Rx, kInfinity);
  EXPECT_EQ(quotient.Ry, -kInfinity);
  EXPECT_TRUE(std::isnan(quotient.Rz));
}

TEST(TEulerAng, LengthAndDistanceAreThoseOfTheVectorOfAngles) {
  const auto angles = TEulerAng::Create(3, 4, 12);
  EXPECT_EQ(angles.MagSqr(), 169);
  EXPECT_EQ(angles.Mag(), 13);
  EXPECT_EQ(TEulerAng::Create(1, 1, 1).DistanceTo(TEulerAng::Create(4, 5, 13)), 13);
}

// ---------------------------------------------------------------------------------------------- text

TEST(TEulerAng, TextIsInRadiansWithTheLocalesDecimalPoint) {
  const auto angles = TEulerAng::CreatebyDegree(0, 90, -45);
  {
    const TLocaleGuard guard(std::locale::classic());
    EXPECT_EQ(angles.ToString(3), "0.000,1.571,-0.785");
  }
  const TLocaleGuard guard(std::locale("de_DE.UTF-8"));
  EXPECT_EQ(angles.ToString(3), "0,000,1,571,-0,785");
}

TEST(TEulerAng, TextInDegreesHasTheDegreeSignAndABlankBehindEachAngle) {
  const auto angles = TEulerAng::CreatebyDegree(0, 90, -45);
  {
    const TLocaleGuard guard(std::locale::classic());
    EXPECT_EQ(angles.ToStringDeg(1), "0.0\xC2\xB0 ,90.0\xC2\xB0 ,-45.0\xC2\xB0 ");
  }
  const TLocaleGuard guard(std::locale("de_DE.UTF-8"));
  EXPECT_EQ(angles.ToStringDeg(1), "0,0\xC2\xB0 ,90,0\xC2\xB0 ,-45,0\xC2\xB0 ");
}

TEST(TEulerAng, DecimalsAreClampedInto0To9) {
  const TLocaleGuard guard(std::locale::classic());
  const auto angles = TEulerAng::Create(0.25, 0, -1);
  EXPECT_EQ(angles.ToString(15), "0.250000000,0.000000000,-1.000000000");
  EXPECT_EQ(angles.ToString(9), angles.ToString(15));
  EXPECT_EQ(angles.ToString(-3), "0,0,-1");
  const auto right = TEulerAng::Create(0, 0, kPi / 2);
  EXPECT_EQ(right.ToStringDeg(15), "0.000000000\xC2\xB0 ,0.000000000\xC2\xB0 ,90.000000000\xC2\xB0 ");
  EXPECT_EQ(right.ToStringDeg(-3), "0\xC2\xB0 ,0\xC2\xB0 ,90\xC2\xB0 ");
}

}  // namespace
}  // namespace ZORBase
