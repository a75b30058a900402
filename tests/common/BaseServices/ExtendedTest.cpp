#include <ZORBase/common/BaseServices/Extended.h>

#include "support/TestSupport.h"

#include <cfloat>
#include <cmath>

namespace ZORBase {
namespace {

#if LDBL_MANT_DIG == 64  // where extended precision has 80 bits

// 1 + 2^-53 + 2^-70 needs more bits than either format has. Extended precision keeps 1 + 2^-53, and that tie between two
// doubles goes to the even one below. Formed as a double at once the sum would go up.
TEST(Extended, ASumRoundsToExtendedPrecisionBeforeItRoundsToADouble) {
  const double small = 0x1p-53 + 0x1p-70;
  EXPECT_EQ(1.0 + small, 1.0 + 0x1p-52);
  EXPECT_EQ(ExtendedSum(1.0, small), 1.0);
}

// About one product in two thousand lies so close to the middle of two doubles that rounding twice shows.
TEST(Extended, AProductRoundsToExtendedPrecisionBeforeItRoundsToADouble) {
  int differences = 0;
  double a = 1.0;
  for (int i = 0; i < 100000; ++i) {
    a = std::nextafter(a, 2.0) + 0x1p-30;
    const double b = 2.0 - a / 3.0;
    const double expected = static_cast<double>(static_cast<long double>(a) * static_cast<long double>(b));
    ASSERT_EQ(ExtendedProduct(a, b), expected);
    differences += expected != a * b ? 1 : 0;
  }
  EXPECT_GT(differences, 0) << "no example told the two roundings apart";
}

#endif

TEST(Extended, TheSmallestDoubleFromAThresholdAsksTheSameQuestion) {
  for (const Extended threshold : {1e-6L, 1e-7L, 1e-8L, 0.1L, 1.0L, 3.0L, 1e300L, 4.9406564584124654e-324L}) {
    const double first = SmallestDoubleFrom(threshold);
    EXPECT_GE(static_cast<Extended>(first), threshold);
    EXPECT_LT(static_cast<Extended>(std::nextafter(first, 0.0)), threshold);
  }
}

}  // namespace
}  // namespace ZORBase
