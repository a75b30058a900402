// TDual: a number with its derivatives by the parameters of a model; arithmetic carries them along exactly.
#pragma once

#include <array>
#include <cmath>
#include <cstddef>

namespace ZORBase::Test {

struct TDual {
  static constexpr std::size_t kMostParams = 9;

  double Value = 0.0;
  std::array<double, kMostParams> By{};

  TDual() = default;
  TDual(double Number) : Value(Number) {}  // NOLINT(google-explicit-constructor): constants take part in formulas

  /// The parameter Index itself.
  static TDual Param(double Number, std::size_t Index) {
    TDual dual(Number);
    dual.By[Index] = 1.0;
    return dual;
  }
};

/// A result with this value whose derivatives are FactorA A' + FactorB B'.
inline TDual Chain(double Value, const TDual& A, double FactorA, const TDual& B = {}, double FactorB = 0.0) {
  TDual result(Value);
  for (std::size_t i = 0; i < TDual::kMostParams; ++i) result.By[i] = FactorA * A.By[i] + FactorB * B.By[i];
  return result;
}

inline TDual operator+(const TDual& A, const TDual& B) { return Chain(A.Value + B.Value, A, 1.0, B, 1.0); }
inline TDual operator-(const TDual& A, const TDual& B) { return Chain(A.Value - B.Value, A, 1.0, B, -1.0); }
inline TDual operator-(const TDual& A) { return Chain(-A.Value, A, -1.0); }
inline TDual operator*(const TDual& A, const TDual& B) { return Chain(A.Value * B.Value, A, B.Value, B, A.Value); }
inline TDual operator/(const TDual& A, const TDual& B) {
  const double quotient = A.Value / B.Value;
  return Chain(quotient, A, 1.0 / B.Value, B, -quotient / B.Value);
}
inline TDual exp(const TDual& A) {
  const double value = std::exp(A.Value);
  return Chain(value, A, value);
}
inline TDual cos(const TDual& A) { return Chain(std::cos(A.Value), A, -std::sin(A.Value)); }
inline TDual sin(const TDual& A) { return Chain(std::sin(A.Value), A, std::cos(A.Value)); }
inline TDual atan(const TDual& A) { return Chain(std::atan(A.Value), A, 1.0 / (1.0 + A.Value * A.Value)); }
/// For a positive base.
inline TDual pow(const TDual& A, const TDual& B) {
  const double value = std::pow(A.Value, B.Value);
  return Chain(value, A, B.Value * value / A.Value, B, value * std::log(A.Value));
}

}  // namespace ZORBase::Test
