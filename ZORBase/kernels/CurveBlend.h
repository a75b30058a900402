// CurveBlend: the arithmetic of control points. Internal.
//   BlendPlane, BlendExtended   the weighted sum of four neighbours, in the plane in double and over six components in
//                               extended precision
//   StoreSquaredLength, StoreSquaredDistance   over six components
//   StoreEliminated             P - A Q, or a multiple of it, over six components
#pragma once

#include <ZORBase/kernels/ExtendedStore.h>
#include <ZORBase/kernels/TargetClones.h>

#include <cstddef>

namespace ZORBase {

/// Sum[c] = 0 + N[0] * P[0][c] + ... + N[3] * P[3][c], c = 0..1, from left to right; P[r] begins at P + 2 r.
ZORBASE_INLINE void BlendPlane(const double* P, const double* N, double* Sum) {
  for (int c = 0; c < 2; ++c) {
    double sum = 0.0 + N[0] * P[c];
    for (int r = 1; r < 4; ++r) sum += N[r] * P[2 * r + c];
    Sum[c] = sum;
  }
}

/// The same for c = 0..5 with P[r] at P + 6 r, every product and sum formed in extended precision and stored as a double; for
/// Count sums side by side: sum i is of the points from P(i) on with the weights N[i], N[Stride + i], ..., and goes to Sum(i).
///
/// The operations go component by component within a step, so that none waits for the one before it. A sum begins with its
/// first product instead of 0, which is the same unless every product is -0; the last step mends that.
template <std::size_t Count, class TFrom, class TTo>
ZORBASE_INLINE void BlendExtended(TFrom P, const double* N, std::size_t Stride, TTo Sum) {
  constexpr std::size_t kComponents = 6;
  double terms[4][Count][kComponents];
  const auto forEach = [](auto Step) ZORBASE_INLINE_LAMBDA {
    ZORBASE_UNROLL
    for (std::size_t i = 0; i < Count; ++i) {
      ZORBASE_UNROLL
      for (std::size_t c = 0; c < kComponents; ++c) Step(i, c);
    }
  };
  ZORBASE_UNROLL
  for (std::size_t r = 0; r < 4; ++r) {
    forEach([&](std::size_t i, std::size_t c)
                ZORBASE_INLINE_LAMBDA { StoreProduct(terms[r][i][c], N[r * Stride + i], P(i)[kComponents * r + c]); });
  }
  ZORBASE_UNROLL
  for (std::size_t r = 1; r < 3; ++r) {
    forEach([&](std::size_t i, std::size_t c)
                ZORBASE_INLINE_LAMBDA { StoreSum(terms[r][i][c], terms[r - 1][i][c], terms[r][i][c]); });
  }
  forEach([&](std::size_t i, std::size_t c)
              ZORBASE_INLINE_LAMBDA { StoreSumOrZero(Sum(i)[c], terms[2][i][c], terms[3][i][c]); });
}

ZORBASE_INLINE void BlendExtended(const double* P, const double* N, double* Sum) {
  BlendExtended<1>([P](std::size_t) { return P; }, N, 1, [Sum](std::size_t) { return Sum; });
}

/// The squares of d[0..5] are summed in extended precision, in order, and stored as a double.
ZORBASE_INLINE void StoreSquaredLength(const double* d, double& To) {
  Extended sum = static_cast<Extended>(d[0]) * d[0];
  ZORBASE_UNROLL
  for (int c = 1; c < 6; ++c) sum += static_cast<Extended>(d[c]) * d[c];
  To = static_cast<double>(sum);
}

/// That of the differences of P and Q, which are formed in extended precision and stored as doubles.
ZORBASE_INLINE void StoreSquaredDistance(const double* P, const double* Q, double& To) {
  double d[6];
  ZORBASE_UNROLL
  for (int c = 0; c < 6; ++c) StoreDifference(d[c], P[c], Q[c]);
  StoreSquaredLength(d, To);
}

/// To = (P - A * Q) * Factor, every step formed in extended precision and stored as a double.
ZORBASE_INLINE void StoreEliminated(const double* P, double A, const double* Q, double Factor, double* To) {
  double terms[6];
  ZORBASE_UNROLL
  for (int c = 0; c < 6; ++c) StoreProduct(terms[c], Q[c], A);
  ZORBASE_UNROLL
  for (int c = 0; c < 6; ++c) StoreDifference(terms[c], P[c], terms[c]);
  ZORBASE_UNROLL
  for (int c = 0; c < 6; ++c) StoreProduct(To[c], terms[c], Factor);
}

/// To = P - A * Q in the same way.
ZORBASE_INLINE void StoreEliminated(const double* P, double A, const double* Q, double* To) {
  double terms[6];
  ZORBASE_UNROLL
  for (int c = 0; c < 6; ++c) StoreProduct(terms[c], Q[c], A);
  ZORBASE_UNROLL
  for (int c = 0; c < 6; ++c) StoreDifference(To[c], P[c], terms[c]);
}

}  // namespace ZORBase
