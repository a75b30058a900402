// NumberText: numbers as text and back.
//   StrToFloat1033, Format1033, AppendFixed   en-US: always ".", never grouped, whatever the locale
//   StrToFloat, Format, FloatToStr            the current locale's decimal point, never grouped
// The digits printed are those of the exact binary value, ties to even, with no limit on their number. The sign of a
// negative that rounds to zero stays ("-0.000").
#pragma once

#include <ZORBase/common/Export.h>

#include <array>
#include <concepts>
#include <span>
#include <string>
#include <string_view>
#include <type_traits>
#include <variant>

namespace ZORBase {

/// Which conventions a text of numbers follows.
enum TNumberForm : int {
  nfLocale,  ///< the decimal point of the current locale
  nf1033     ///< en-US
};

// ---------------------------------------------------------------------------------------------- text to number

/// \return the double nearest to the number in Text: an optional sign, digits with an optional "." on either side, an
///         optional exponent; blanks around it are ignored. A number too small for a double gives the nearest one.
/// \throws the general error for anything else (hexadecimal, "nan", "inf" and grouping included), and for a number too
///         large for a double.
ZORBASE_API double StrToFloat1033(std::string_view Text);

/// As StrToFloat1033, with the decimal point of the current locale instead of ".".
ZORBASE_API double StrToFloat(std::string_view Text);

/// What became of a conversion that does not raise.
enum class TNumberStatus { Good, NotANumber, TooLarge };

/// As StrToFloat1033 or StrToFloat; tells instead of raising, and leaves Value as it was when the status is not Good.
ZORBASE_API TNumberStatus TryStrToFloat(std::string_view Text, TNumberForm Form, double& Value);

/// \return the sentence that says why Text is no number, for a Status that is not Good.
ZORBASE_API std::string NumberErrorText(std::string_view Text, TNumberStatus Status);

// ---------------------------------------------------------------------------------------------- number to text

/// More digits after the decimal point are not written. A double has at most 1074 that are not 0.
inline constexpr int kMostDecimals = 1'000'000;

/// Appends Value with exactly Decimals digits after the decimal point (a negative count is 0); nan and infinities read
/// "nan", "inf" and "-inf".
/// \throws the general error for more than kMostDecimals digits.
ZORBASE_API void AppendFixed(std::string& Text, double Value, int Decimals, TNumberForm Form = nf1033);

/// \return Value with up to 15 significant digits and the decimal point of the current locale: in fixed form from 0.0001
///         up to 15 digits before the point ("0.1", "100000"), in exponent form outside of that ("1e+20"). Nan and
///         infinities as AppendFixed writes them.
ZORBASE_API std::string FloatToStr(double Value);

/// One argument of Format: an integer, a real number or a text.
class TFormatArg {
 public:
  ///@{
  /// An argument of this type; a text must live until Format is done.
  template <std::integral TInteger>
  TFormatArg(TInteger Value) {  // NOLINT(google-explicit-constructor): arguments are written as they are
    if constexpr (std::is_unsigned_v<TInteger>) {
      FValue = static_cast<unsigned long long>(Value);
    } else {
      FValue = static_cast<long long>(Value);
    }
  }
  template <std::floating_point TReal>
  TFormatArg(TReal Value) : FValue(static_cast<double>(Value)) {}            // NOLINT(google-explicit-constructor)
  TFormatArg(std::string_view Value) : FValue(Value) {}                      // NOLINT(google-explicit-constructor)
  TFormatArg(const std::string& Value) : FValue(std::string_view(Value)) {}  // NOLINT(google-explicit-constructor)
  TFormatArg(const char* Value) : FValue(std::string_view(Value)) {}         // NOLINT(google-explicit-constructor)
  ///@}

  using TValue = std::variant<long long, unsigned long long, double, std::string_view>;  ///< what an argument can be
  const TValue& Value() const { return FValue; }                                         ///< the argument

 private:
  TValue FValue;
};

/// Format1033 and Format over arguments that are already collected.
ZORBASE_API std::string FormatArgs(std::string_view Pattern, std::span<const TFormatArg> Args, TNumberForm Form);

/// Fills the items of Pattern in order: "%s" takes a text, "%d" an integer, "%.Nf" and "%f" (6 decimals) a real number
/// or an integer, "%%" is a percent sign. En-US conventions.
/// \throws the general error when an item and its argument do not fit, when their counts differ, or for N above kMostDecimals.
template <class... TArgs>
std::string Format1033(std::string_view Pattern, const TArgs&... Args) {
  return FormatArgs(Pattern, std::array<TFormatArg, sizeof...(TArgs)>{TFormatArg(Args)...}, nf1033);
}

/// As Format1033 in the conventions of the current locale.
template <class... TArgs>
std::string Format(std::string_view Pattern, const TArgs&... Args) {
  return FormatArgs(Pattern, std::array<TFormatArg, sizeof...(TArgs)>{TFormatArg(Args)...}, nfLocale);
}

/// \return the decimal point of the current locale: that of the C++ global locale, and where that one is classic, that of
///         the C locale.
ZORBASE_API std::string LocaleDecimalPoint();

/// \return Text as a message quotes it: only its beginning and "..." where it is too long, never with half a UTF-8
///         character, and with "\0" for a byte 0, which would end the message.
ZORBASE_API std::string Shortened(std::string_view Text);

}  // namespace ZORBase
