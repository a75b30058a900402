#include <ZORBase/common/BaseServices/NumberRow.h>

#include <ZORBase/common/BaseServices/TDelimitedText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

namespace ZORBase {
namespace {

// Reads into Values, or returns why the row does not fit. A wrong count weighs more than an item that is no number.
std::string ReadRow(std::string_view Text, std::span<double> Values, TNumberForm Form) {
  std::string firstError;
  std::size_t count = 0;
  for (TDelimitedText items(Text); items.Next(); ++count) {
    if (count >= Values.size() || !firstError.empty()) continue;
    const TNumberStatus status = TryStrToFloat(items.Item(), Form, Values[count]);
    if (status != TNumberStatus::Good) firstError = NumberErrorText(items.Item(), status);
  }
  return count == Values.size() ? firstError : "Error Item Number: " + std::to_string(count);
}

}  // namespace

void AppendNumberRow(std::string& Text, std::span<const double> Values, int Decimals, TNumberForm Form) {
  bool isFirst = true;
  for (const double value : Values) {
    if (!isFirst) Text += ',';
    AppendFixed(Text, value, Decimals, Form);
    isFirst = false;
  }
}

void ParseNumberRow(std::string_view Text, std::span<double> Values, TNumberForm Form, std::string_view TypeName) {
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
