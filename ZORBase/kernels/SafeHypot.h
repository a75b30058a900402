#pragma once

#include <cmath>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace ZORBase {

/// \return A > B ? A : B and A < B ? A : B, as the machine has it: an instruction each. Compilers see two questions that are
/// one and make it a branch, which is as good as random here and costs more than a division.
#if defined(__SSE2__)
inline double Larger(double A, double B) { return _mm_cvtsd_f64(_mm_max_sd(_mm_set_sd(A), _mm_set_sd(B))); }
inline double Smaller(double A, double B) { return _mm_cvtsd_f64(_mm_min_sd(_mm_set_sd(A), _mm_set_sd(B))); }
#else
inline double Larger(double A, double B) { return A > B ? A : B; }
inline double Smaller(double A, double B) { return A < B ? A : B; }
#endif

/// sqrt(A A + B B) as the larger magnitude times sqrt(1 + ratio^2), so that no square overflows or underflows; 0 when both
/// are 0, NaN when one is NaN or both are infinite.
inline double SafeHypot(double A, double B) {
  const double a = std::fabs(A);
  const double b = std::fabs(B);
  const double larger = Larger(a, b);
  const double smaller = Smaller(b, a);
  if (larger == 0.0) return smaller;  // 0, or NaN
  const double ratio = smaller / larger;
  return larger * std::sqrt(1.0 + ratio * ratio);
}

}  // namespace ZORBase
