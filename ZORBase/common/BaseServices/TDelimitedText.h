#pragma once

#include <ZORBase/common/BaseServices/Characters.h>
#include <ZORBase/common/BaseServices/TextScan.h>
#include <ZORBase/common/Export.h>

#include <cstddef>
#include <string>
#include <string_view>

namespace ZORBase {

/// Walks over the items of a text that are parted by "," or by blanks (characters with codes 1 to 32).
///
/// Blanks before and after an item are passed over, so "1, 2" and "1 2" both hold two items. An item may stand in double
/// quotes, where commas and blanks belong to it and a doubled quote is one quote; a quote that is never closed runs to
/// the end. Two commas in a row hold an empty item between them, and so does a "," that is the last character.
class ZORBASE_API TDelimitedText {
 public:
  /// Begins before the first item of Text, which must outlive the walk.
  explicit TDelimitedText(std::string_view Text) : FText(Text) { SkipBlanks(); }

  /// Goes on to the next item. \return false behind the last one.
  /// \throws the general error for a byte 0, which no item can hold.
  bool Next() {
    if (FPlace == FText.size() || FText[FPlace] == kQuote || FText[FPlace] == '\0') return NextUnlessPlain();
    const char* const item = FText.data() + FPlace;
    const char* const end = FindFirst<TItemEnds>(FText.data(), item, FText.data() + FText.size());
    FItem = std::string_view(item, static_cast<std::size_t>(end - item));
    FPlace += FItem.size();
    if (FPlace + 1 < FText.size() && FText[FPlace] == kDelimiter && !IsBlank(FText[FPlace + 1])) {
      ++FPlace;  // the common case of what comes below
    } else {
      PassSeparator();
    }
    return true;
  }

  /// The current item; it stays readable until Next is called again, and while the text lives.
  std::string_view Item() const { return FItem; }

 private:
  static constexpr char kQuote = '"';
  static constexpr char kDelimiter = ',';

  bool NextUnlessPlain();
  void ReadQuotedItem();

  void SkipBlanks() {
    while (FPlace < FText.size() && IsBlank(FText[FPlace])) ++FPlace;
  }

  // With the blanks around it.
  void PassSeparator() {
    SkipBlanks();
    if (FPlace == FText.size() || FText[FPlace] != kDelimiter) return;
    ++FPlace;
    FEndsWithEmptyItem = FPlace == FText.size();
    SkipBlanks();
  }

  std::string_view FText;
  std::size_t FPlace = 0;
  bool FEndsWithEmptyItem = false;
  std::string_view FItem;
  std::string FUnquoted;
};

}  // namespace ZORBase
