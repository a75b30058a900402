#include <ZORBase/common/Cadtypes/TMatrix3D.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <cmath>
#include <type_traits>

namespace ZORBase {
namespace {

constexpr TPoint3D kX = TPoint3D::Create(1, 0, 0);
constexpr TPoint3D kY = TPoint3D::Create(0, 1, 0);
constexpr TPoint3D kZ = TPoint3D::Create(0, 0, 1);

static_assert(std::is_trivially_copyable_v<TMatrix3D>);

TMatrix3D Turn(double Angle, const TPoint3D& Axis) {
  TMatrix3D matrix = TMatrix3D::CreateIdent();
  matrix.RotateBy(Angle, Axis);
  return matrix;
}

double Distance(const TPoint3D& P, const TPoint3D& Q) { return (P - Q).Mag(); }

rc::Gen<TPoint3D> AnyAxis() {
  const auto component = rc::gen::map(rc::gen::inRange(-1000, 1000), [](int Steps) { return Steps * 0.01; });
  return rc::gen::map(
      rc::gen::tuple(component, component, component),
      [](const std::tuple<double, double, double>& Parts) { return std::apply(&TPoint3D::Create, Parts); });
}

rc::Gen<double> AnyAngle() {
  return rc::gen::map(rc::gen::inRange(-10000, 10000), [](int Steps) { return Steps * 1e-3; });
}

TEST(TMatrix3D, IsAllZeroByDefault) { EXPECT_EQ(TMatrix3D().Transform(TPoint3D::Create(1, 2, 3)).Mag(), 0); }

TEST(TMatrix3D, TheIdentityMovesNothing) {
  const TPoint3D p = TPoint3D::Create(1, -2, 3);
  EXPECT_EQ(Distance(TMatrix3D::CreateIdent().Transform(p), p), 0);
}

TEST(TMatrix3D, APositiveQuarterTurnIsRightHanded) {
  EXPECT_LT(Distance(Turn(kPi / 2, kZ).Transform(kX), kY), 1e-15);
  EXPECT_LT(Distance(Turn(kPi / 2, kX).Transform(kY), kZ), 1e-15);
  EXPECT_LT(Distance(Turn(kPi / 2, kY).Transform(kZ), kX), 1e-15);
  EXPECT_LT(Distance(Turn(-kPi / 2, kZ).Transform(kX), -kY), 1e-15);
}

// About the diagonal of space a third of a turn moves each axis on to the next.
TEST(TMatrix3D, AThirdOfATurnAboutTheDiagonalMovesTheAxesRound) {
  const TMatrix3D matrix = Turn(2 * kPi / 3, TPoint3D::Create(1, 1, 1));
  EXPECT_LT(Distance(matrix.Transform(kX), kY), 1e-15);
  EXPECT_LT(Distance(matrix.Transform(kY), kZ), 1e-15);
  EXPECT_LT(Distance(matrix.Transform(kZ), kX), 1e-15);
}

TEST(TMatrix3D, ALaterTurnComesAfterTheEarlierOne) {
  TMatrix3D matrix = TMatrix3D::CreateIdent();
  matrix.RotateBy(kPi / 2, kZ);  // X to Y
  matrix.RotateBy(kPi / 2, kX);  // Y to Z
  EXPECT_LT(Distance(matrix.Transform(kX), kZ), 1e-15);
}

TEST(TMatrix3D, AboutTheZeroVectorNothingTurns) {
  TMatrix3D matrix = Turn(0.7, kY);
  const TMatrix3D before = matrix;
  matrix.RotateBy(1.0, TPoint3D());
  EXPECT_EQ(matrix.fm, before.fm);
}

TEST(TMatrix3D, TheLengthOfTheAxisDoesNotMatter) {
  const TPoint3D axis = TPoint3D::Create(1, 2, -2);
  const TPoint3D p = TPoint3D::Create(4, 5, 6);
  for (const double length : {1e-9, 1.0 / 3.0, 1e6}) {
    EXPECT_LT(Distance(Turn(1.2, axis).Transform(p), Turn(1.2, axis * length).Transform(p)), 1e-14);
  }
}

RC_GTEST_PROP(TMatrix3D, ATurnKeepsLengthsAnglesAndItsAxis, ()) {
  const TPoint3D axis = *AnyAxis();
  RC_PRE(axis.Mag() > 0);
  const TMatrix3D matrix = Turn(*AnyAngle(), axis);
  const TPoint3D p = *AnyAxis();
  const TPoint3D q = *AnyAxis();
  const double scale = 1e-14 * (1 + p.MagSqr() + q.MagSqr());
  RC_ASSERT(std::fabs(matrix.Transform(p).DotMul(matrix.Transform(q)) - p.DotMul(q)) <= scale);
  RC_ASSERT(Distance(matrix.Transform(p).CrossMul(matrix.Transform(q)), matrix.Transform(p.CrossMul(q))) <= scale);
  RC_ASSERT(Distance(matrix.Transform(axis), axis) <= 1e-14 * axis.Mag());
}

RC_GTEST_PROP(TMatrix3D, TurnsAboutOneAxisAddAndTheReversedAxisTurnsBack, ()) {
  const TPoint3D axis = *AnyAxis();
  RC_PRE(axis.Mag() > 0);
  const double a = *AnyAngle();
  const double b = *AnyAngle();
  const TPoint3D p = *AnyAxis();
  TMatrix3D both = Turn(a, axis);
  both.RotateBy(b, axis);
  RC_ASSERT(Distance(both.Transform(p), Turn(a + b, axis).Transform(p)) <= 1e-13 * (1 + p.Mag()));
  both.RotateBy(a + b, -axis);
  RC_ASSERT(Distance(both.Transform(p), p) <= 1e-13 * (1 + p.Mag()));
}

// A vector across the axis turns by the angle itself.
RC_GTEST_PROP(TMatrix3D, AVectorAcrossTheAxisTurnsByTheAngle, ()) {
  const TPoint3D axis = *AnyAxis();
  const TPoint3D other = *AnyAxis();
  const TPoint3D across = axis.CrossMul(other);
  RC_PRE(across.Mag() > 0);
  const double angle = *AnyAngle();
  const TPoint3D image = Turn(angle, axis).Transform(across);
  const TPoint3D expected = across * std::cos(angle) + axis.Normal().CrossMul(across) * std::sin(angle);
  RC_ASSERT(Distance(image, expected) <= 1e-14 * axis.Mag() * other.Mag());
}

}  // namespace
}  // namespace ZORBase
