#include <ZORBase/kernels/Logarithm.h>

#include "LogarithmReferences.h"
#include "support/TestSupport.h"

#include <limits>
#include <numbers>

namespace ZORBase {
namespace {

using Test::kReferenceLogarithms;
using Test::TReferenceLogarithm;

// One in the last place of Value.
double LastPlace(double Value) {
  const double size = std::fabs(Value);
  return std::nextafter(size, kInfinity) - size;
}

TEST(Logarithm, IsWithinItsBoundOfFiftyDigits) {
  double worst = 0;
  for (const TReferenceLogarithm& reference : kReferenceLogarithms) {
    // The difference of two doubles so close together is exact.
    const double error = std::fabs((Ln(reference.X) - reference.Ln) - reference.Rest);
    const double units =
        reference.Ln == 0.0 ? (Ln(reference.X) == 0.0 ? 0.0 : kInfinity) : error / LastPlace(reference.Ln);
    EXPECT_LE(units, kLnErrorBound) << reference.X;
    worst = std::max(worst, units);
  }
  // A bound that nothing comes near to would say little.
  EXPECT_GT(worst, 0.5 * kLnErrorBound);
}

// The extended logarithm is good to a two-thousandth of a last place.
RC_GTEST_PROP(Logarithm, IsWithinItsBoundOfTheExtendedOneForEveryPositiveDouble, ()) {
  for (int i = 0; i < 1000; ++i) {
    const double x = std::bit_cast<double>(*rc::gen::arbitrary<std::uint64_t>() % 0x7ff0000000000000U);
    if (x == 0.0) continue;
    const long double exact = std::log(static_cast<long double>(x));
    const auto units = static_cast<double>(std::fabs(Ln(x) - exact)) / LastPlace(static_cast<double>(exact));
    RC_ASSERT(units <= kLnErrorBound);
  }
}

TEST(Logarithm, IsWithinItsBoundAroundOneAndAroundTheChangeOfTheExponent) {
  for (int i = 1; i < 200'000; ++i) {
    for (const double x : {0.5 + i * 1e-5, 1.0 + i * 1e-9, 1.0 - i * 1e-9, std::sqrt(0.5) + i * 1e-15}) {
      const long double exact = std::log(static_cast<long double>(x));
      if (exact == 0.0L) continue;
      const auto units = static_cast<double>(std::fabs(Ln(x) - exact)) / LastPlace(static_cast<double>(exact));
      ASSERT_LE(units, kLnErrorBound) << x;
    }
  }
}

TEST(Logarithm, OfOneIsZeroAndOfTheEndsWhatTheyHave) {
  EXPECT_EQ(std::bit_cast<std::uint64_t>(Ln(1.0)), 0U);
  EXPECT_EQ(Ln(0.0), -kInfinity);
  EXPECT_EQ(Ln(-0.0), -kInfinity);
  EXPECT_EQ(Ln(kInfinity), kInfinity);
  EXPECT_TRUE(std::isnan(Ln(std::nan(""))));
  EXPECT_TRUE(std::isnan(Ln(-1.0)));
  EXPECT_TRUE(std::isnan(Ln(-kInfinity)));
  EXPECT_TRUE(std::isnan(Ln(-std::numeric_limits<double>::denorm_min())));
}

TEST(Logarithm, OfAPowerOfTwoIsThatMultipleOfTheLogarithmOfTwo) {
  for (int k = -1074; k <= 1023; ++k) {
    const double expected = k * std::numbers::ln2;
    EXPECT_NEAR(Ln(std::ldexp(1.0, k)), expected, LastPlace(expected)) << k;
  }
}

TEST(Logarithm, RisesWithItsArgument) {
  for (double x = 0.6; x < 0.8; x += 1e-6) EXPECT_LT(Ln(x), Ln(x + 1e-6));
}

TEST(Logarithm, OfANormalNumberNeedsNoLookAtAnythingElse) {
  for (const TReferenceLogarithm& reference : kReferenceLogarithms) {
    if (reference.X < std::numeric_limits<double>::min()) continue;
    EXPECT_EQ(std::bit_cast<std::uint64_t>(LnNormal(reference.X)), std::bit_cast<std::uint64_t>(Ln(reference.X)));
  }
  for (const double any : {0.0, -1.0, kInfinity, std::nan("")}) EXPECT_TRUE(std::isfinite(LnNormal(any)));
}

}  // namespace
}  // namespace ZORBase
