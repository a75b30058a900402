#include <ZORBase/common/Cadtypes/TPoint3D.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <algorithm>
#include <cmath>
#include <type_traits>

namespace ZORBase {
namespace {

static_assert(std::is_trivially_copyable_v<TPoint3D> && sizeof(TPoint3D) == 3 * sizeof(double));

void ExpectPoint(const TPoint3D& P, double X, double Y, double Z) {
  EXPECT_EQ(P.X, X);
  EXPECT_EQ(P.Y, Y);
  EXPECT_EQ(P.Z, Z);
}

TPoint3D Vector(double X, double Y, double Z) { return TPoint3D::Create(X, Y, Z); }

// Vectors with components up to 1000 in steps of 0.001.
rc::Gen<TPoint3D> AnyVector() {
  const auto component = rc::gen::map(rc::gen::inRange(-1'000'000, 1'000'000), [](int Steps) { return Steps * 1e-3; });
  return rc::gen::map(rc::gen::tuple(component, component, component),
                      [](const auto& Parts) { return std::apply(Vector, Parts); });
}

TEST(TPoint3D, IsZeroByDefaultAndAsFZero) {
  ExpectPoint(TPoint3D(), 0, 0, 0);
  ExpectPoint(TPoint3D::FZero, 0, 0, 0);
}

TEST(TPoint3D, APlanePointBecomesOneAtHeightZero) {
  const TPoint3D point = TPoint2D::Create(1, 2);
  ExpectPoint(point, 1, 2, 0);
}

TEST(TPoint3D, CalculatesByComponent) {
  constexpr TPoint3D p = TPoint3D::Create(1, -2, 8);
  constexpr TPoint3D q = TPoint3D::Create(0.5, 4, -1);
  ExpectPoint(p + q, 1.5, 2, 7);
  ExpectPoint(p - q, 0.5, -6, 9);
  ExpectPoint(-p, -1, 2, -8);
  ExpectPoint(p * 3, 3, -6, 24);
  ExpectPoint(3 * p, 3, -6, 24);
  ExpectPoint(p / 4, 0.25, -0.5, 2);
}

TEST(TPoint3D, MagAndMagSqrAreTheLengthAndItsSquare) {
  EXPECT_EQ(Vector(2, -3, 6).Mag(), 7);
  EXPECT_EQ(Vector(2, -3, 6).MagSqr(), 49);
  EXPECT_EQ(TPoint3D().Mag(), 0);
}

TEST(TPoint3D, NormalIsTheUnitVectorAndZeroForZero) {
  ExpectPoint(Vector(0, 3, -4).Normal(), 0, 0.6, -0.8);
  ExpectPoint(Vector(0, 0, -1e-9).Normal(), 0, 0, -1);
  ExpectPoint(TPoint3D().Normal(), 0, 0, 0);
}

TEST(TPoint3D, CrossMulIsRightHanded) {
  const TPoint3D x = Vector(1, 0, 0);
  const TPoint3D y = Vector(0, 1, 0);
  const TPoint3D z = Vector(0, 0, 1);
  ExpectPoint(x.CrossMul(y), 0, 0, 1);
  ExpectPoint(y.CrossMul(z), 1, 0, 0);
  ExpectPoint(z.CrossMul(x), 0, 1, 0);
  ExpectPoint(Vector(1, 2, 3).CrossMul(Vector(4, 5, 6)), -3, 6, -3);
}

TEST(TPoint3D, DotMulIsTheSumOfTheProducts) { EXPECT_EQ(Vector(1, 2, 3).DotMul(Vector(4, -5, 6)), 12); }

TEST(TPoint3D, AngleBetweenIsUnsignedFrom0ToPi) {
  const TPoint3D x = Vector(2, 0, 0);
  EXPECT_EQ(x.AngleBetween(Vector(5, 0, 0)), 0);
  EXPECT_DOUBLE_EQ(x.AngleBetween(Vector(0, -7, 0)), kPi / 2);
  EXPECT_DOUBLE_EQ(x.AngleBetween(Vector(1, 1, 0)), kPi / 4);
  EXPECT_DOUBLE_EQ(Vector(1, 1, 0).AngleBetween(Vector(0, 1, 1)), kPi / 3);
  EXPECT_EQ(x.AngleBetween(Vector(-3, 0, 0)), kPi);
}

// An arc cosine gives 0 for every angle below 1e-8.
TEST(TPoint3D, AngleBetweenResolvesAnglesNear0AndPi) {
  EXPECT_DOUBLE_EQ(Vector(1, 0, 0).AngleBetween(Vector(1, 0, 1e-12)), 1e-12);
  EXPECT_NEAR(Vector(1, 0, 0).AngleBetween(Vector(-1, 1e-9, 0)), kPi - 1e-9, 1e-15);
}

TEST(TPoint3D, AngleBetweenIsZeroWhereEitherVectorIsZero) {
  EXPECT_EQ(TPoint3D().AngleBetween(Vector(-1, 0, 0)), 0);
  EXPECT_EQ(Vector(-1, 0, 0).AngleBetween(TPoint3D()), 0);
  EXPECT_EQ(Vector(-1, 0, 0).AngleBetween(Vector(-0.0, 0, 0)), 0);
  EXPECT_EQ(TPoint3D().AngleBetween(TPoint3D()), 0);
}

TEST(TPoint3D, DistanceXYIgnoresTheHeight) {
  EXPECT_EQ(Vector(1, 1, 100).DistanceXY(Vector(4, 5, -100)), 5);
  EXPECT_EQ(Vector(1, 1, 100).DistanceXY(Vector(1, 1, 0)), 0);
}

TEST(TPoint3D, ALengthOfExactlyTheToleranceIsZeroLength) {
  EXPECT_TRUE(Vector(0, 0, 1e-6).IsZeroLength(1e-6));
  EXPECT_TRUE(Vector(0, -0.3, 0.4).IsZeroLength(0.5));
  EXPECT_FALSE(Vector(0, std::nextafter(0.5, 1.0), 0).IsZeroLength(0.5));
  EXPECT_TRUE(TPoint3D().IsZeroLength(0));
  EXPECT_FALSE(Vector(1, 0, 0).IsZeroLength(1e-6));
  EXPECT_FALSE(Vector(std::nan(""), 0, 0).IsZeroLength(1e300));
}

RC_GTEST_PROP(TPoint3D, TheCrossProductStandsOnBothFactors, ()) {
  const TPoint3D p = *AnyVector();
  const TPoint3D q = *AnyVector();
  const TPoint3D cross = p.CrossMul(q);
  const double scale = p.MagSqr() * q.Mag() + q.MagSqr() * p.Mag();
  RC_ASSERT(std::fabs(cross.DotMul(p)) <= 1e-15 * scale);
  RC_ASSERT(std::fabs(cross.DotMul(q)) <= 1e-15 * scale);
  RC_ASSERT((cross + q.CrossMul(p)).Mag() == 0);
}

RC_GTEST_PROP(TPoint3D, ANormalHasLength1AndTheSameDirection, ()) {
  const TPoint3D p = *AnyVector();
  RC_PRE(p.Mag() > 0);
  const TPoint3D normal = p.Normal();
  RC_ASSERT(std::fabs(normal.Mag() - 1) <= 4e-16);
  RC_ASSERT((normal * p.Mag() - p).Mag() <= 4e-16 * p.Mag());
}

RC_GTEST_PROP(TPoint3D, AnglesAreSymmetricAndAddUpToPiWithTheReversedVector, ()) {
  const TPoint3D p = *AnyVector();
  const TPoint3D q = *AnyVector();
  RC_PRE(p.Mag() > 0 && q.Mag() > 0);
  RC_ASSERT(p.AngleBetween(q) == q.AngleBetween(p));
  RC_ASSERT(std::fabs(p.AngleBetween(q) + p.AngleBetween(-q) - kPi) <= 1e-15);
  RC_ASSERT(std::fabs(std::cos(p.AngleBetween(q)) - p.DotMul(q) / p.Mag() / q.Mag()) <= 1e-15);
}

}  // namespace
}  // namespace ZORBase
