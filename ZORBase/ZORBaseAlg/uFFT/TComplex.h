#pragma once

#include <ZORBase/common/Export.h>

namespace ZORBase {

/// A complex number. All operations are plain double arithmetic in the order that is written at them.
struct ZORBASE_API TComplex {
  double real = 0.0;  ///< real part
  double imag = 0.0;  ///< imaginary part

  /// \return the magnitude, the square root of real^2 + imag^2; the squares may overflow or underflow.
  double getNorm() const;

  /// \return the argument in [0, 2 pi), never negative: this range and not (-pi, pi]. That of 0 is 0, and so is one
  ///         just below the positive real axis that would round to 2 pi. NaN where both parts are infinite.
  double getAngle() const;

  /// \return (1, 0) multiplied N times by this number; (1, 0) for N <= 0. Cost: N products.
  TComplex ComplexPower(int N) const;

  /// Part by part.
  friend constexpr TComplex operator+(const TComplex& A, const TComplex& B) {
    return {A.real + B.real, A.imag + B.imag};
  }
  /// Part by part.
  friend constexpr TComplex operator-(const TComplex& A, const TComplex& B) {
    return {A.real - B.real, A.imag - B.imag};
  }
  /// (A.real B.real - A.imag B.imag, A.real B.imag + A.imag B.real)
  friend constexpr TComplex operator*(const TComplex& A, const TComplex& B) {
    return {A.real * B.real - A.imag * B.imag, A.real * B.imag + A.imag * B.real};
  }
  /// Both parts times S.
  friend constexpr TComplex operator*(double S, const TComplex& A) { return {S * A.real, S * A.imag}; }
  /// With n the magnitude of B: (A.real B.real + A.imag B.imag, A.imag B.real - A.real B.imag) / n / n; (0, 0) where n
  /// is exactly 0.
  friend ZORBASE_API TComplex operator/(const TComplex& A, const TComplex& B);

  /// Equal when both parts are, without any tolerance.
  friend constexpr bool operator==(const TComplex& A, const TComplex& B) = default;
};

}  // namespace ZORBase
