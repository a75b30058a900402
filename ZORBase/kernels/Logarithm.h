// Logarithm: the natural logarithm with the same bits on every machine, in scalar code and in vector lanes. Internal.
//   Ln         every double
//   LnNormal   the same number for a normal positive double, without a look at anything else
// The mathematics library chooses a variant by processor, some with fused multiply-add, and has none that loops can take lanes of.
#pragma once

#include <ZORBase/kernels/TargetClones.h>

#include <bit>
#include <cstdint>
#include <limits>

namespace ZORBase {

/// How far Ln may be off, in units of the last place of the result; 0.86 is the worst of seventy million that were tried.
inline constexpr double kLnErrorBound = 1.0;

/// \return ln(x / 2^Lift) for a normal positive x and a whole Lift; some finite number for any other one, infinities and NaN included.
///
/// x = 2^k m with m from sqrt(1/2) to sqrt(2) and f = m - 1, which is exact. With s = f / (2 + f), ln m = 2 artanh s = 2 s + s R(s^2),
/// where R(z) = 2/3 z + 2/5 z^2 + ... is cut off after z^8, its coefficients balanced so that at most 2^-64 is missing. As
/// 2 s = f - f^2 / 2 + s f^2 / 2, the largest part is f itself, which has no error. ln 2 comes in two parts, the first one of 33
/// bits, so that its product with k is exact.
ZORBASE_INLINE double LnNormal(double x, double Lift = 0.0) {
  constexpr auto rootOfHalf = std::uint64_t{0x3fe6a09e667f3bcd};  // the bits of sqrt(1/2)
  constexpr auto one = std::uint64_t{0x3ff0000000000000};
  constexpr auto fraction = std::uint64_t{0x000fffffffffffff};
  constexpr auto unitsOf2To52 = std::uint64_t{0x4330000000000000};  // 2^52, whose last bit counts ones
  constexpr double bias = 4503599627370496.0 + 1023.0;

  const std::uint64_t shifted = std::bit_cast<std::uint64_t>(x) + (one - rootOfHalf);
  const double k = std::bit_cast<double>((shifted >> 52U) | unitsOf2To52) - (bias + Lift);
  const double m = std::bit_cast<double>((shifted & fraction) + rootOfHalf);

  const double f = m - 1.0;
  const double s = f / (2.0 + f);
  const double z = s * s;
  const double z2 = z * z;
  const double low =
      (0x1.5555555555555p-1 + 0x1.9999999999a39p-2 * z) + z2 * (0x1.2492492476902p-2 + 0x1.c71c7201ba589p-3 * z);
  const double high =
      (0x1.745cf8df6184bp-3 + 0x1.3b1c3ca5856a8p-3 * z) + z2 * (0x1.0fbde03d1b470p-3 + 0x1.0c0a8cab20d58p-3 * z);
  const double R = z * (low + (z2 * z2) * high);
  const double halfSquare = 0.5 * f * f;
  return k * 0x1.62e42fefp-1 - ((halfSquare - (s * (halfSquare + R) + k * 0x1.473de6af278edp-34)) - f);
}

/// \return ln x within kLnErrorBound units of the last place; infinity for infinity, minus infinity for either zero, NaN for a
///         negative x and for NaN. Exactly 0 at 1.
ZORBASE_INLINE double Ln(double x) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  constexpr double smallestNormal = std::numeric_limits<double>::min();
  if (x >= smallestNormal && x < infinity) return LnNormal(x);
  if (x > 0.0 && x < smallestNormal) return LnNormal(x * 0x1p54, 54.0);
  if (x == 0.0) return -infinity;
  return x > 0.0 ? x : std::numeric_limits<double>::quiet_NaN();
}

}  // namespace ZORBase
