#pragma once

#include <cmath>

namespace ZORBase {

/// \return the sign of A / B for numbers that are not 0: 1 or -1, also where the quotient itself would overflow or
///         underflow; NaN when one is NaN.
inline double SignOfQuotient(double A, double B) {
  if (std::isnan(A) || std::isnan(B)) return A + B;
  return std::signbit(A) == std::signbit(B) ? 1.0 : -1.0;
}

/// \return 1 or -1, the sign of a number that is not 0; NaN of NaN.
inline double SignOf(double A) { return SignOfQuotient(A, 1.0); }

/// \return |A| with the sign of B, where a zero of either sign counts as positive.
inline double SignOf(double A, double B) { return B >= 0.0 ? std::fabs(A) : -std::fabs(A); }

}  // namespace ZORBase
