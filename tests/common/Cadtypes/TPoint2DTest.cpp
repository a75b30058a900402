#include <ZORBase/common/Cadtypes/TPoint2D.h>

#include "support/TestSupport.h"

#include <cmath>
#include <type_traits>

namespace ZORBase {
namespace {

static_assert(std::is_trivially_copyable_v<TPoint2D> && sizeof(TPoint2D) == 2 * sizeof(double));

void ExpectPoint(const TPoint2D& P, double X, double Y) {
  EXPECT_EQ(P.X, X);
  EXPECT_EQ(P.Y, Y);
}

TEST(TPoint2D, IsZeroByDefaultAndAsFZero) {
  ExpectPoint(TPoint2D(), 0, 0);
  ExpectPoint(TPoint2D::FZero, 0, 0);
}

TEST(TPoint2D, CalculatesByComponent) {
  constexpr TPoint2D p = TPoint2D::Create(1, -2);
  constexpr TPoint2D q = TPoint2D::Create(0.5, 4);
  ExpectPoint(p + q, 1.5, 2);
  ExpectPoint(p - q, 0.5, -6);
  ExpectPoint(-p, -1, 2);
  ExpectPoint(p * 3, 3, -6);
  ExpectPoint(3 * p, 3, -6);
  ExpectPoint(p / 4, 0.25, -0.5);
}

TEST(TPoint2D, DotMulIsTheSumOfTheProductsAndMagSqrThatOfTheSquares) {
  constexpr TPoint2D p = TPoint2D::Create(3, -4);
  static_assert(p.DotMul({2, 0.5}) == 4);
  EXPECT_EQ(p.DotMul({4, 3}), 0);
  EXPECT_EQ(p.MagSqr(), 25);
  EXPECT_EQ(TPoint2D().MagSqr(), 0);
}

TEST(TPoint2D, MagIsTheLength) {
  EXPECT_EQ(TPoint2D::Create(3, -4).Mag(), 5);
  EXPECT_EQ(TPoint2D().Mag(), 0);
}

TEST(TPoint2D, NormalIsTheUnitVectorAndZeroForZero) {
  ExpectPoint(TPoint2D::Create(3, -4).Normal(), 0.6, -0.8);
  ExpectPoint(TPoint2D().Normal(), 0, 0);
}

TEST(TPoint2D, AngleBetweenIsUnsignedFrom0ToPi) {
  const TPoint2D x = TPoint2D::Create(2, 0);
  EXPECT_EQ(x.AngleBetween(TPoint2D::Create(5, 0)), 0);
  EXPECT_DOUBLE_EQ(x.AngleBetween(TPoint2D::Create(0, 7)), kPi / 2);
  EXPECT_DOUBLE_EQ(x.AngleBetween(TPoint2D::Create(0, -7)), kPi / 2);
  EXPECT_DOUBLE_EQ(x.AngleBetween(TPoint2D::Create(-1, -1)), 3 * kPi / 4);
  EXPECT_EQ(x.AngleBetween(TPoint2D::Create(-3, 0)), kPi);
}

TEST(TPoint2D, AngleBetweenResolvesTinyAngles) {
  EXPECT_DOUBLE_EQ(TPoint2D::Create(1, 0).AngleBetween(TPoint2D::Create(1, 1e-12)), 1e-12);
  EXPECT_DOUBLE_EQ(kPi - TPoint2D::Create(1, 0).AngleBetween(TPoint2D::Create(-1, 0.5)), std::atan(0.5));
}

TEST(TPoint2D, AngleBetweenIsZeroWhereEitherVectorIsZero) {
  EXPECT_EQ(TPoint2D().AngleBetween(TPoint2D::Create(-1, 0)), 0);
  EXPECT_EQ(TPoint2D::Create(-1, 0).AngleBetween(TPoint2D()), 0);
  EXPECT_EQ(TPoint2D::Create(-1, 0).AngleBetween(TPoint2D::Create(-0.0, 0.0)), 0);
}

}  // namespace
}  // namespace ZORBase
