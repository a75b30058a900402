#include <ZORBase/ZORBaseAlg/uFFT/TComplex.h>

#include <cmath>
#include <numbers>
#include <type_traits>

namespace ZORBase {
namespace {

constexpr double kPi = std::numbers::pi;
constexpr double kTwoPi = 2.0 * kPi;

static_assert(std::is_trivially_copyable_v<TComplex> && sizeof(TComplex) == 2 * sizeof(double));

}  // namespace

double TComplex::getNorm() const { return std::sqrt(real * real + imag * imag); }

double TComplex::getAngle() const {
  if (imag == 0.0) return real < 0.0 ? kPi : 0.0;
  if (real == 0.0) return imag < 0.0 ? 3.0 * kPi / 2.0 : kPi / 2.0;
  double angle = std::atan(imag / real);
  if (real < 0.0) {
    angle += kPi;
  } else if (angle < 0.0) {
    angle += kTwoPi;
    // A tiny negative angle is lost in the sum.
    if (angle >= kTwoPi) angle = 0.0;
  }
  // A quotient that underflows may have left a negative zero.
  return angle + 0.0;
}

TComplex TComplex::ComplexPower(int N) const {
  TComplex result{1.0, 0.0};
  for (int i = 0; i < N; ++i) result = result * *this;
  return result;
}

TComplex operator/(const TComplex& A, const TComplex& B) {
  const double n = B.getNorm();
  if (n == 0.0) return {};
  return {(A.real * B.real + A.imag * B.imag) / n / n, (A.imag * B.real - A.real * B.imag) / n / n};
}

}  // namespace ZORBase
