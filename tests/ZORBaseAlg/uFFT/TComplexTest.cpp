#include <ZORBase/ZORBaseAlg/uFFT/TComplex.h>

#include "PlainFFT.h"
#include "support/TestSupport.h"

#include <limits>

namespace ZORBase {
namespace {

constexpr double kTiny = std::numeric_limits<double>::denorm_min();

double Angle(double Real, double Imag) { return TComplex{Real, Imag}.getAngle(); }

TEST(TComplex, IsZeroToBeginWith) { EXPECT_EQ(TComplex(), (TComplex{0, 0})); }

TEST(TComplex, SumAndDifferenceAreTakenPartByPart) {
  EXPECT_EQ((TComplex{1, 2} + TComplex{10, 20}), (TComplex{11, 22}));
  EXPECT_EQ((TComplex{1, 2} - TComplex{10, 30}), (TComplex{-9, -28}));
}

TEST(TComplex, TheSquareOfIIsMinusOne) { EXPECT_EQ((TComplex{0, 1} * TComplex{0, 1}), (TComplex{-1, 0})); }

TEST(TComplex, AProductMixesBothParts) { EXPECT_EQ((TComplex{1, 2} * TComplex{3, 5}), (TComplex{-7, 11})); }

TEST(TComplex, AScaledNumberHasBothPartsScaled) { EXPECT_EQ((-2.0 * TComplex{3, -5}), (TComplex{-6, 10})); }

TEST(TComplex, AQuotientUndoesAProduct) {
  EXPECT_EQ((TComplex{50, 25} / TComplex{3, 4}), (TComplex{10, -5}));
  EXPECT_EQ((TComplex{1, 0} / TComplex{0, 2}), (TComplex{0, -0.5}));
}

TEST(TComplex, AnythingDividedByZeroIsZero) {
  EXPECT_EQ((TComplex{1, 1} / TComplex{0, 0}), (TComplex{0, 0}));
  EXPECT_EQ((TComplex{kInfinity, 1} / TComplex{0, -0.0}), (TComplex{0, 0}));
}

TEST(TComplex, ADivisorWhoseSquareUnderflowsCountsAsZero) {
  EXPECT_EQ((TComplex{1, 1} / TComplex{1e-170, 0}), (TComplex{0, 0}));
}

TEST(TComplex, TheMagnitudeOfThreeAndFourIsFive) {
  EXPECT_EQ((TComplex{3, -4}.getNorm()), 5);
  EXPECT_EQ(TComplex().getNorm(), 0);
}

TEST(TComplex, ThePowerMultipliesNTimes) {
  EXPECT_EQ((TComplex{0, 1}.ComplexPower(3)), (TComplex{0, -1}));
  EXPECT_EQ((TComplex{2, 0}.ComplexPower(10)), (TComplex{1024, 0}));
  const TComplex z{0.3, 0.7};
  EXPECT_EQ(z.ComplexPower(3), ((TComplex{1, 0} * z) * z) * z);
}

TEST(TComplex, ThePowerZeroAndNegativePowersAreOne) {
  EXPECT_EQ((TComplex{5, 7}.ComplexPower(0)), (TComplex{1, 0}));
  EXPECT_EQ((TComplex{5, 7}.ComplexPower(-3)), (TComplex{1, 0}));
  EXPECT_EQ(TComplex().ComplexPower(0), (TComplex{1, 0}));
}

TEST(TComplex, TheAngleRunsFromZeroThroughAllQuadrants) {
  EXPECT_EQ(Angle(1, 1), std::atan(1.0));
  EXPECT_EQ(Angle(-1, 1), std::atan(-1.0) + kPi);
  EXPECT_EQ(Angle(-1, -1), std::atan(1.0) + kPi);
  EXPECT_EQ(Angle(1, -1), std::atan(-1.0) + 2 * kPi);
}

TEST(TComplex, TheAngleOnTheAxesIsExact) {
  EXPECT_EQ(Angle(2, 0), 0);
  EXPECT_EQ(Angle(0, 2), kPi / 2);
  EXPECT_EQ(Angle(-2, 0), kPi);
  EXPECT_EQ(Angle(0, -2), 3 * kPi / 2);
  EXPECT_EQ(Angle(0, 0), 0);
  EXPECT_EQ(Angle(-2, -0.0), kPi);
  EXPECT_EQ(Angle(-0.0, -0.0), 0);
}

// A coefficient a hair below the positive real axis: -1e-20 + 2 pi is 2 pi in double, which is no longer in the range.
TEST(TComplex, AnAngleThatRoundsToAFullTurnIsZero) {
  EXPECT_EQ(Angle(1, -1e-20), 0);
  EXPECT_EQ(Angle(1, -4e-16), 0);
  EXPECT_EQ(Angle(1, -5e-16), std::nextafter(2 * kPi, 0.0));
}

TEST(TComplex, AnAngleIsNeverANegativeZero) {
  EXPECT_FALSE(std::signbit(Angle(1e300, -kTiny)));
  EXPECT_FALSE(std::signbit(Angle(1, -1e-20)));
  EXPECT_FALSE(std::signbit(Angle(1, -0.0)));
}

TEST(TComplex, AnInfinitePartDecidesTheAngle) {
  EXPECT_EQ(Angle(kInfinity, -1), 0);
  EXPECT_EQ(Angle(1, kInfinity), kPi / 2);
  EXPECT_EQ(Angle(-kInfinity, 1), kPi);
  EXPECT_TRUE(std::isnan(Angle(kInfinity, kInfinity)));
}

RC_GTEST_PROP(TComplex, TheAngleIsThatOfTheTwoArgumentArcTangentInZeroToTwoPi, ()) {
  const double real = *rc::gen::arbitrary<double>();
  const double imag = *rc::gen::arbitrary<double>();
  const double angle = Angle(real, imag);
  RC_ASSERT(angle >= 0.0 && angle < 2 * kPi);
  const double miss = std::remainder(angle - std::atan2(imag, real), 2 * kPi);
  RC_ASSERT(std::fabs(miss) < 2e-15);
}

TComplex AnyNumber() {
  const auto part = rc::gen::map(rc::gen::inRange(-1000000, 1000000), [](int N) { return N / 1001.0; });
  return {*part, *part};
}

RC_GTEST_PROP(TComplex, AProductHasTheProductOfTheMagnitudes, ()) {
  const TComplex a = AnyNumber();
  const TComplex b = AnyNumber();
  const double expected = a.getNorm() * b.getNorm();
  RC_ASSERT(std::fabs((a * b).getNorm() - expected) <= 1e-15 * expected);
}

// Not by the square of the magnitude, which differs in the last bit every now and then.
RC_GTEST_PROP(TComplex, AQuotientIsDividedByTheMagnitudeTwice, ()) {
  const TComplex a = AnyNumber();
  const TComplex b = AnyNumber();
  RC_PRE(b != TComplex());
  const double n = std::sqrt(b.real * b.real + b.imag * b.imag);
  RC_ASSERT((a / b).real == (a.real * b.real + a.imag * b.imag) / n / n);
  RC_ASSERT((a / b).imag == (a.imag * b.real - a.real * b.imag) / n / n);
}

}  // namespace
}  // namespace ZORBase
