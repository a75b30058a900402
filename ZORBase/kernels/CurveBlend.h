// CurveBlend: the weighted sum of four neighbouring control points. Internal.
//   BlendPlane      points of the plane, in double
//   BlendExtended   six components, in extended precision
#pragma once

#include <ZORBase/kernels/ExtendedStore.h>
#include <ZORBase/kernels/TargetClones.h>

namespace ZORBase {

/// Sum[c] = 0 + N[0] * P[0][c] + ... + N[3] * P[3][c], c = 0..1, from left to right; P[r] begins at P + 2 r.
ZORBASE_INLINE void BlendPlane(const double* P, const double* N, double* Sum) {
  for (int c = 0; c < 2; ++c) {
    double sum = 0.0 + N[0] * P[c];
    for (int r = 1; r < 4; ++r) sum += N[r] * P[2 * r + c];
    Sum[c] = sum;
  }
}

/// The same for c = 0..5 with P[r] at P + 6 r, every product and sum formed in extended precision and stored as a double.
///
/// The operations go component by component within a step, so that none waits for the one before it. The sum begins with the
/// first product instead of 0: that is the same unless every product is -0, and then adding 0 at the end mends it.
ZORBASE_INLINE void BlendExtended(const double* P, const double* N, double* Sum) {
  constexpr int kComponents = 6;
  double terms[4][kComponents];
  ZORBASE_UNROLL
  for (int r = 0; r < 4; ++r) {
    ZORBASE_UNROLL
    for (int c = 0; c < kComponents; ++c) StoreProduct(terms[r][c], N[r], P[kComponents * r + c]);
  }
  ZORBASE_UNROLL
  for (int r = 1; r < 4; ++r) {
    ZORBASE_UNROLL
    for (int c = 0; c < kComponents; ++c) StoreSum(terms[r][c], terms[r - 1][c], terms[r][c]);
  }
  ZORBASE_UNROLL
  for (int c = 0; c < kComponents; ++c) Sum[c] = terms[3][c] + 0.0;
}

}  // namespace ZORBase
