#include <ZORBase/common/BaseServices/TDelimitedText.h>

#include <ZORBase/common/BaseServices/Characters.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <utility>

namespace ZORBase {
namespace {

constexpr char kDelimiter = ',';
constexpr char kQuote = '"';

[[noreturn]] void RaiseByteZero(std::size_t Place) {
  RaiseGeneralError("A byte 0 stands at column " + std::to_string(Place + 1) +
                    "; the text must be plain ASCII or UTF-8");
}

}  // namespace

TDelimitedText::TDelimitedText(std::string_view Text) : FText(Text) { SkipBlanks(); }

bool TDelimitedText::Next() {
  if (FPlace == FText.size()) {
    FItem = {};
    return std::exchange(FEndsWithEmptyItem, false);
  }
  if (FText[FPlace] == '\0') RaiseByteZero(FPlace);
  if (FText[FPlace] == kQuote) {
    ReadQuotedItem();
  } else {
    ReadPlainItem();
  }
  SkipBlanks();
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

void TDelimitedText::ReadPlainItem() {
  const std::size_t begin = FPlace;
  const auto isPartOfItem = [](char Character) {
    return static_cast<unsigned char>(Character) > 32 && Character != kDelimiter;
  };
  while (FPlace < FText.size() && isPartOfItem(FText[FPlace])) ++FPlace;
  FItem = FText.substr(begin, FPlace - begin);
}

void TDelimitedText::SkipBlanks() {
  while (FPlace < FText.size() && IsBlank(FText[FPlace])) ++FPlace;
}

void TDelimitedText::PassSeparator() {
  if (FPlace == FText.size() || FText[FPlace] != kDelimiter) return;
  ++FPlace;
  FEndsWithEmptyItem = FPlace == FText.size();
  SkipBlanks();
}

}  // namespace ZORBase
