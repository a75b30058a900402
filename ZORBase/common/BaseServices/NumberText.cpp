#include <ZORBase/common/BaseServices/NumberText.h>

#include <ZORBase/common/BaseServices/Characters.h>
#include <ZORBase/common/BaseServices/PlainDecimal.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <charconv>
#include <clocale>
#include <cmath>
#include <limits>
#include <locale>
#include <system_error>

namespace ZORBase {
namespace {

// A text of this many bytes is quoted whole in a message.
constexpr std::size_t kQuotedTextLimit = 256;

constexpr int kDefaultDecimals = 6;
constexpr int kGeneralDigits = 15;

// Room for the longest integer part of a double (309 digits), a sign and a point.
constexpr std::size_t kIntegerPartRoom = 312;

std::string_view WithoutBlanks(std::string_view Text) {
  while (!Text.empty() && IsBlank(Text.front())) Text.remove_prefix(1);
  while (!Text.empty() && IsBlank(Text.back())) Text.remove_suffix(1);
  return Text;
}

// Whether a number that from_chars found out of range is too large, as against too small: by the decimal exponent of
// its first digit that is not 0. Doubles end near 1e308 and 1e-324, so the sign of that exponent decides.
bool IsTooLarge(std::string_view Digits) {
  const std::size_t exponentMark = Digits.find_first_of("eE");
  const std::string_view mantissa = Digits.substr(0, exponentMark);
  const auto pointPlace = static_cast<long long>(std::min(mantissa.find('.'), mantissa.size()));
  const auto firstDigit = static_cast<long long>(mantissa.find_first_of("123456789"));
  long long exponent = 0;
  if (exponentMark != std::string_view::npos) {
    std::string_view text = Digits.substr(exponentMark + 1);
    if (text.front() == '+') text.remove_prefix(1);
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), exponent);
    if (parsed.ec != std::errc()) return text.front() != '-';
  }
  return exponent > firstDigit - pointPlace;
}

TNumberStatus TryUnsigned(std::string_view Text, double& Value) {
  const bool startsLikeANumber =
      !Text.empty() && (IsDigit(Text.front()) || (Text.size() > 1 && Text.front() == '.' && IsDigit(Text[1])));
  if (!startsLikeANumber) return TNumberStatus::NotANumber;
  const auto parsed = std::from_chars(Text.data(), Text.data() + Text.size(), Value);
  if (parsed.ptr != Text.data() + Text.size()) return TNumberStatus::NotANumber;
  if (parsed.ec == std::errc::result_out_of_range) {
    if (IsTooLarge(Text)) return TNumberStatus::TooLarge;
    Value = 0.0;
  }
  return TNumberStatus::Good;
}

TNumberStatus Try1033(std::string_view Text, double& Value) {
  PlainDecimal::TQuotient quotient;
  if (PlainDecimal::TryReadPlain(Text.data(), Text.data() + Text.size(), quotient)) {
    Value = quotient.Numerator / quotient.Divisor;
    return TNumberStatus::Good;
  }
  Text = WithoutBlanks(Text);
  const bool isNegative = !Text.empty() && Text.front() == '-';
  if (isNegative || (!Text.empty() && Text.front() == '+')) Text.remove_prefix(1);
  double magnitude = 0.0;
  const TNumberStatus status = TryUnsigned(Text, magnitude);
  if (status == TNumberStatus::Good) Value = isNegative ? -magnitude : magnitude;
  return status;
}

TNumberStatus TryLocale(std::string_view Text, double& Value) {
  const std::string point = LocaleDecimalPoint();
  if (point == ".") return Try1033(Text, Value);
  if (Text.find('.') != std::string_view::npos) return TNumberStatus::NotANumber;
  std::string text(Text);
  if (const std::size_t place = text.find(point); place != std::string::npos) text.replace(place, point.size(), ".");
  return Try1033(text, Value);
}

double ToNumber(std::string_view Text, TNumberForm Form) {
  double value = 0.0;
  const TNumberStatus status = TryStrToFloat(Text, Form, value);
  if (status != TNumberStatus::Good) RaiseGeneralError(NumberErrorText(Text, status));
  return value;
}

// ---------------------------------------------------------------------------------------------- patterns

// One item of a pattern: "%s", "%d", "%f" or "%.Nf".
struct TFormatItem {
  char Kind = 0;
  int Decimals = kDefaultDecimals;
};

[[noreturn]] void RaisePatternError(std::string_view Pattern, std::string_view Reason) {
  RaiseGeneralError("Format '" + Shortened(Pattern) + "' " + std::string(Reason));
}

// Reads the item whose "%" stands at Place and moves Place behind it.
TFormatItem ReadItem(std::string_view Pattern, std::size_t& Place) {
  TFormatItem item;
  ++Place;
  if (Place < Pattern.size() && Pattern[Place] == '.') {
    const char* begin = Pattern.data() + Place + 1;
    const auto parsed = std::from_chars(begin, Pattern.data() + Pattern.size(), item.Decimals);
    if (parsed.ec != std::errc() || item.Decimals < 0)
      RaisePatternError(Pattern, "has no number of digits behind '%.'");
    Place += static_cast<std::size_t>(parsed.ptr - begin) + 1;
    if (Place >= Pattern.size() || Pattern[Place] != 'f') RaisePatternError(Pattern, "needs an 'f' behind '%.N'");
  }
  if (Place >= Pattern.size()) RaisePatternError(Pattern, "ends within an item");
  item.Kind = Pattern[Place++];
  return item;
}

void AppendItem(std::string& Text, std::string_view Pattern, const TFormatItem& Item, const TFormatArg& Arg,
                TNumberForm Form) {
  const auto& value = Arg.Value();
  const auto* asText = std::get_if<std::string_view>(&value);
  const auto* asReal = std::get_if<double>(&value);
  const auto* asInteger = std::get_if<long long>(&value);
  const auto* asUnsigned = std::get_if<unsigned long long>(&value);
  if (Item.Kind == 's' && asText) {
    Text += *asText;
  } else if (Item.Kind == 'd' && asInteger) {
    Text += std::to_string(*asInteger);
  } else if (Item.Kind == 'd' && asUnsigned) {
    Text += std::to_string(*asUnsigned);
  } else if (Item.Kind == 'f' && asReal) {
    AppendFixed(Text, *asReal, Item.Decimals, Form);
  } else if (Item.Kind == 'f' && asInteger) {
    AppendFixed(Text, static_cast<double>(*asInteger), Item.Decimals, Form);
  } else if (Item.Kind == 'f' && asUnsigned) {
    AppendFixed(Text, static_cast<double>(*asUnsigned), Item.Decimals, Form);
  } else {
    RaisePatternError(Pattern, std::string("has an item '") + Item.Kind + "' that its argument does not fit");
  }
}

void ReplacePoint(std::string& Text, std::size_t From) {
  if (const std::size_t place = Text.find('.', From); place != std::string::npos) {
    Text.replace(place, 1, LocaleDecimalPoint());
  }
}

}  // namespace

double StrToFloat1033(std::string_view Text) { return ToNumber(Text, nf1033); }

double StrToFloat(std::string_view Text) { return ToNumber(Text, nfLocale); }

TNumberStatus TryStrToFloat(std::string_view Text, TNumberForm Form, double& Value) {
  return Form == nf1033 ? Try1033(Text, Value) : TryLocale(Text, Value);
}

std::string NumberErrorText(std::string_view Text, TNumberStatus Status) {
  return "'" + Shortened(Text) +
         (Status == TNumberStatus::TooLarge ? "' is too large for a floating point value"
                                            : "' is not a valid floating point value");
}

void AppendFixed(std::string& Text, double Value, int Decimals, TNumberForm Form) {
  if (Decimals > kMostDecimals)
    RaiseGeneralError("A number is written with at most " + std::to_string(kMostDecimals) + " decimals, not " +
                      std::to_string(Decimals));
  const int decimals = std::max(Decimals, 0);
  const std::size_t start = Text.size();
  std::array<char, PlainDecimal::kPlainRoom> plain;
  if (const char* const end = PlainDecimal::WritePlain(plain.data(), Value, decimals)) {
    Text.append(plain.data(), static_cast<std::size_t>(end - plain.data()));
    if (Form == nfLocale) ReplacePoint(Text, start);
    return;
  }
  if (std::isnan(Value)) {
    Text += "nan";
    return;
  }
  Text.resize(start + kIntegerPartRoom + static_cast<std::size_t>(decimals));
  const auto printed =
      std::to_chars(Text.data() + start, Text.data() + Text.size(), Value, std::chars_format::fixed, decimals);
  Text.resize(static_cast<std::size_t>(printed.ptr - Text.data()));
  if (Form == nfLocale) ReplacePoint(Text, start);
}

std::string FloatToStr(double Value) {
  if (std::isnan(Value)) return "nan";
  std::array<char, 64> buffer{};
  const auto printed =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), Value, std::chars_format::general, kGeneralDigits);
  std::string text(buffer.data(), printed.ptr);
  ReplacePoint(text, 0);
  return text;
}

std::string FormatArgs(std::string_view Pattern, std::span<const TFormatArg> Args, TNumberForm Form) {
  std::string text;
  std::size_t used = 0;
  for (std::size_t place = 0; place < Pattern.size();) {
    if (Pattern[place] != '%') {
      text += Pattern[place++];
    } else if (place + 1 < Pattern.size() && Pattern[place + 1] == '%') {
      text += '%';
      place += 2;
    } else {
      const TFormatItem item = ReadItem(Pattern, place);
      if (used == Args.size()) RaisePatternError(Pattern, "has more items than there are arguments");
      AppendItem(text, Pattern, item, Args[used++], Form);
    }
  }
  if (used != Args.size()) RaisePatternError(Pattern, "has fewer items than there are arguments");
  return text;
}

std::string LocaleDecimalPoint() {
  const std::locale locale;
  const char point = std::use_facet<std::numpunct<char>>(locale).decimal_point();
  // A facet of char holds no more than the first byte of a point that has several, as in ps_AF; the C locale has it whole.
  const bool isWhole = static_cast<unsigned char>(point) < 128;
  if (isWhole && locale != std::locale::classic()) return std::string(1, point);
  return std::localeconv()->decimal_point;
}

std::string Shortened(std::string_view Text) {
  std::size_t length = std::min(Text.size(), kQuotedTextLimit);
  const auto isContinuation = [&](std::size_t Place) {
    return (static_cast<unsigned char>(Text[Place]) & 0xC0U) == 0x80U;
  };
  while (length > 0 && length < Text.size() && isContinuation(length)) --length;
  std::string text;
  for (const char character : Text.substr(0, length))
    text += character == '\0' ? "\\0" : std::string_view(&character, 1);
  return length < Text.size() ? text + "..." : text;
}

}  // namespace ZORBase
