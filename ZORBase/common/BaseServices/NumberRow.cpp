#include <ZORBase/common/BaseServices/NumberRow.h>

#include <ZORBase/common/BaseServices/PlainDecimal.h>
#include <ZORBase/common/BaseServices/PlainRow.h>
#include <ZORBase/common/BaseServices/TDelimitedText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <array>

namespace ZORBase {
namespace {

// Reads into Values, or returns why the row does not fit. A wrong count weighs more than an item that is no number.
std::string ReadRow(std::string_view Text, std::span<double> Values, TNumberForm Form) {
  TDelimitedText items(Text);
  bool isThere = items.Next();
  std::size_t count = 0;
  std::string firstError;
  for (; isThere; isThere = items.Next(), ++count) {
    if (count >= Values.size() || !firstError.empty()) continue;
    const TNumberStatus status = TryStrToFloat(items.Item(), Form, Values[count]);
    if (status != TNumberStatus::Good) firstError = NumberErrorText(items.Item(), status);
  }
  if (count != Values.size()) return "Error Item Number: " + std::to_string(count);
  return firstError;
}

}  // namespace

void AppendNumberRow(std::string& Text, std::span<const double> Values, int Decimals, TNumberForm Form) {
  // Numbers of the common form gather here, as a text grows faster by several at once.
  constexpr std::size_t kItemRoom = 1 + PlainDecimal::kPlainRoom;
  std::array<char, 8 * kItemRoom> plain;
  char* end = plain.data();
  const auto flush = [&] {
    Text.append(plain.data(), static_cast<std::size_t>(end - plain.data()));
    end = plain.data();
  };
  const int decimals = std::max(Decimals, 0);
  for (std::size_t i = 0; i < Values.size(); ++i) {
    if (plain.data() + plain.size() - end < static_cast<std::ptrdiff_t>(kItemRoom)) flush();
    if (i > 0) *end++ = ',';
    if (char* const next = Form == nf1033 ? PlainDecimal::WritePlain(end, Values[i], decimals) : nullptr) {
      end = next;
    } else {
      flush();
      AppendFixed(Text, Values[i], Decimals, Form);
    }
  }
  flush();
}

void ParseNumberRow(std::string_view Text, std::span<double> Values, TNumberForm Form, std::string_view TypeName) {
  if (Form == nf1033 && PlainDecimal::TryReadPlainRow(Text.data(), Text.data() + Text.size(), Values)) return;
  std::string reason;
  try {
    reason = ReadRow(Text, Values, Form);
  } catch (const TGeneralError& Error) {
    reason = Error.what();
  }
  if (reason.empty()) return;
  RaiseGeneralError(std::string(TypeName) + " Parse from string Failed(" + Shortened(Text) + "). " + reason);
}

}  // namespace ZORBase
