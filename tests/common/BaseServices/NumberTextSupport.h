// NumberTextSupport: what the tests of numbers as text share. The reference is decimal arithmetic by hand.
//   TExactDecimal, ExactFixed   all digits of a double, and those that are printed
//   AnyFinite, Coordinate       numbers to try
#pragma once

#include <ZORBase/common/BaseServices/NumberText.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <string>
#include <string_view>
#include <tuple>

namespace ZORBase::Test {

inline constexpr double kMax = std::numeric_limits<double>::max();
inline constexpr double kTiny = std::numeric_limits<double>::denorm_min();

inline std::uint64_t Bits(double Value) { return std::bit_cast<std::uint64_t>(Value); }

inline std::string Fixed(double Value, int Decimals, TNumberForm Form = nf1033) {
  std::string text;
  AppendFixed(text, Value, Decimals, Form);
  return text;
}

inline std::string NotANumberText(std::string_view Text) {
  std::string text = "'";
  text += Text;
  return text += "' is not a valid floating point value";
}

inline std::string WithZeros(std::string_view Before, std::size_t Count, std::string_view After = "") {
  std::string text(Before);
  text.append(Count, '0');
  return text += After;
}

// The decimal digits of Mantissa * 2^Exponent, all of them: with 2^-e = 5^e / 10^e a negative power of two is a product
// by fives and a shift of the point.
struct TExactDecimal {
  std::string Digits;      // without a point
  std::size_t Places = 0;  // of them behind the point

  TExactDecimal(std::uint64_t Mantissa, int Exponent) : Digits(std::to_string(Mantissa)) {
    for (int i = 0; i < std::abs(Exponent); ++i) MultiplyBy(Exponent > 0 ? 2 : 5);
    if (Exponent < 0) Places = static_cast<std::size_t>(-Exponent);
    while (Digits.size() <= Places) Digits.insert(Digits.begin(), '0');
  }

  std::string Text() const {
    std::string text = Digits;
    text.insert(text.end() - static_cast<std::ptrdiff_t>(Places), '.');
    return text;
  }

  // Rounded to a number of decimals, ties to the even digit.
  std::string Text(std::size_t Decimals) const {
    TExactDecimal rounded = *this;
    std::string rest;  // the digits that are not kept, without the zeros at their end
    for (; rounded.Places > Decimals; --rounded.Places) {
      if (!rest.empty() || rounded.Digits.back() != '0') rest.insert(rest.begin(), rounded.Digits.back());
      rounded.Digits.pop_back();
    }
    for (; rounded.Places < Decimals; ++rounded.Places) rounded.Digits.push_back('0');
    if (rest > "5" || (rest == "5" && (rounded.Digits.back() - '0') % 2 == 1)) rounded.AddOne();
    return Decimals == 0 ? rounded.Digits : rounded.Text();
  }

 private:
  void MultiplyBy(int Factor) {
    int carry = 0;
    for (auto digit = Digits.rbegin(); digit != Digits.rend(); ++digit) {
      const int product = (*digit - '0') * Factor + carry;
      *digit = static_cast<char>('0' + product % 10);
      carry = product / 10;
    }
    if (carry > 0) Digits.insert(0, 1, static_cast<char>('0' + carry));
  }

  void AddOne() {
    auto digit = Digits.rbegin();
    for (; digit != Digits.rend() && *digit == '9'; ++digit) *digit = '0';
    if (digit == Digits.rend()) {
      Digits.insert(0, 1, '1');
    } else {
      ++*digit;
    }
  }
};

// A finite magnitude as mantissa and exponent of two.
struct TParts {
  std::uint64_t Mantissa;
  int Exponent;
};

inline TParts PartsOf(double Value) {
  const std::uint64_t bits = Bits(std::fabs(Value));
  const std::uint64_t fraction = bits & ((std::uint64_t{1} << 52U) - 1);
  const int exponent = static_cast<int>(bits >> 52U);
  if (exponent == 0) return {fraction, -1074};
  return {fraction | (std::uint64_t{1} << 52U), exponent - 1075};
}

inline std::string ExactFixed(double Value, int Decimals) {
  const TParts parts = PartsOf(Value);
  const std::string text = TExactDecimal(parts.Mantissa, parts.Exponent).Text(static_cast<std::size_t>(Decimals));
  return (std::signbit(Value) ? "-" : "") + text;
}

// Every finite double, each binary exponent as often as the others.
inline rc::Gen<double> AnyFinite() {
  const auto make = [](const std::tuple<std::uint64_t, std::uint64_t, bool>& Parts) {
    const auto& [exponent, fraction, isNegative] = Parts;
    return std::bit_cast<double>((std::uint64_t{isNegative} << 63U) | (exponent << 52U) | (fraction >> 12U));
  };
  return rc::gen::resize(
      100, rc::gen::map(rc::gen::tuple(rc::gen::inRange<std::uint64_t>(0, 2047), rc::gen::arbitrary<std::uint64_t>(),
                                       rc::gen::arbitrary<bool>()),
                        make));
}

// Coordinates of a machine: up to some metres in steps of its resolution, and the sums that leave them off the grid.
inline rc::Gen<double> Coordinate() {
  return rc::gen::map(rc::gen::inRange<std::int64_t>(-4'000'000'000, 4'000'000'000),
                      [](std::int64_t Steps) { return static_cast<double>(Steps) * 1e-6; });
}

}  // namespace ZORBase::Test
