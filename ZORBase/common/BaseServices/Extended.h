#pragma once

#include <bit>
#include <cstdint>

namespace ZORBase {

/// Extended precision: 80 bits with a 64-bit mantissa on x86. Sums and products that are formed in it and then stored
/// as a double round twice; where an operation says so, that is part of its result.
using Extended = long double;

/// \return A + B, formed in extended precision and stored as a double.
constexpr double ExtendedSum(double A, double B) {
  return static_cast<double>(static_cast<Extended>(A) + static_cast<Extended>(B));
}

/// \return A * B, formed in extended precision and stored as a double.
constexpr double ExtendedProduct(double A, double B) {
  return static_cast<double>(static_cast<Extended>(A) * static_cast<Extended>(B));
}

/// \return the smallest double that is not below Threshold > 0: comparing a double with it asks the same as comparing with
///         the extended-precision threshold itself, without leaving double arithmetic.
constexpr double SmallestDoubleFrom(Extended Threshold) {
  const auto nearest = static_cast<double>(Threshold);
  return nearest >= Threshold ? nearest : std::bit_cast<double>(std::bit_cast<std::uint64_t>(nearest) + 1);
}

}  // namespace ZORBase
