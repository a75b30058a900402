// PlainFFT: the radix-2 transform written down just as it is defined, to hold the library's transform against;
// and how GoogleTest prints a complex number.
#pragma once

#include <ZORBase/ZORBaseAlg/uFFT/TComplex.h>

#include <cmath>
#include <cstddef>
#include <numbers>
#include <ostream>
#include <span>
#include <utility>
#include <vector>

namespace ZORBase::Test {

/// The twiddle factor (cos a, -sin a) with a = 2 pi P / N.
inline TComplex PlainTwiddle(int N, int P) {
  const double a = 2.0 * std::numbers::pi * P / N;
  return {std::cos(a), -std::sin(a)};
}

/// Puts X[i] where the bits of i are reversed.
inline void PlainReorder(std::vector<TComplex>& X) {
  const std::size_t n = X.size();
  std::size_t j = n / 2;
  for (std::size_t i = 1; i + 2 <= n; ++i) {
    if (i < j) std::swap(X[i], X[j]);
    std::size_t k = n / 2;
    while (k != 0 && j >= k) {
      j -= k;
      k /= 2;
    }
    j += k;
  }
}

/// \return the lower half of the forward transform of the samples, whose number is a power of two.
inline std::vector<TComplex> PlainFFT(std::span<const double> Samples) {
  const int n = static_cast<int>(Samples.size());
  std::vector<TComplex> x;
  for (const double sample : Samples) x.push_back({sample, 0.0});
  PlainReorder(x);
  for (int b = 2; b <= n; b *= 2) {
    const int h = b / 2;
    for (int r = 1; r <= h; ++r) {
      const TComplex w = PlainTwiddle(n, (r - 1) * (n / b));
      for (int k = r - 1; k < n - 1; k += b) {
        TComplex& lower = x[static_cast<std::size_t>(k)];
        TComplex& upper = x[static_cast<std::size_t>(k + h)];
        const TComplex t = upper * w;
        upper = lower - t;
        lower = lower + t;
      }
    }
  }
  x.resize(static_cast<std::size_t>(n / 2));
  return x;
}

}  // namespace ZORBase::Test

namespace ZORBase {
inline void PrintTo(const TComplex& A, std::ostream* Stream) { *Stream << "(" << A.real << ", " << A.imag << ")"; }
}  // namespace ZORBase
