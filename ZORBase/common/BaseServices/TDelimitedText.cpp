#include <ZORBase/common/BaseServices/TDelimitedText.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <utility>

namespace ZORBase {
namespace {

[[noreturn]] void RaiseByteZero(std::size_t Place) {
  RaiseGeneralError("A byte 0 stands at column " + std::to_string(Place + 1) +
                    "; the text must be plain ASCII or UTF-8");
}

}  // namespace

// Behind the last item, at a quoted one, or at a byte 0.
bool TDelimitedText::NextUnlessPlain() {
  if (FPlace == FText.size()) {
    FItem = {};
    return std::exchange(FEndsWithEmptyItem, false);
  }
  if (FText[FPlace] == '\0') RaiseByteZero(FPlace);
  ReadQuotedItem();
  PassSeparator();
  return true;
}

void TDelimitedText::ReadQuotedItem() {
  const std::size_t begin = ++FPlace;
  FUnquoted.clear();
  std::size_t copied = begin;  // the text from here on is not in FUnquoted yet
  for (;; ++FPlace) {
    FPlace = std::min(FText.find_first_of(std::string_view("\"\0", 2), FPlace), FText.size());
    if (FPlace == FText.size()) break;
    if (FText[FPlace] == '\0') RaiseByteZero(FPlace);
    const bool isDoubled = FPlace + 1 < FText.size() && FText[FPlace + 1] == kQuote;
    if (!isDoubled) break;
    FUnquoted += FText.substr(copied, FPlace + 1 - copied);
    copied = ++FPlace + 1;
  }
  const std::string_view rest = FText.substr(copied, FPlace - copied);
  FItem = copied == begin ? rest : std::string_view(FUnquoted += rest);
  if (FPlace < FText.size()) ++FPlace;
}

}  // namespace ZORBase
