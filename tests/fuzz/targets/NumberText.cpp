// Numbers from text and back, and patterns. Input: a line for the pattern, and lines that are read as numbers.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TDelimitedText.h>

#include <cmath>

namespace ZORBase::Test::FuzzNumberText {
namespace {

void ReadAndWrite(std::string_view Text) {
  double value = 0.0;
  const bool isRead = Attempt([&] { value = StrToFloat1033(Text); });
  double tried = 0.0;
  Require((TryStrToFloat(Text, nf1033, tried) == TNumberStatus::Good) == isRead, "both ways of reading agree");
  if (!isRead) return;
  Require(std::isfinite(value) && SameBits({&value, 1}, {&tried, 1}), "a number that is read is finite");
  for (const int decimals : {0, 3, 6, 12, 400}) {
    std::string text;
    AppendFixed(text, value, decimals);
    std::string again;
    AppendFixed(again, StrToFloat1033(text), decimals);
    Require(again == text, "what is written is read and written alike");
  }
  const double read = StrToFloat(FloatToStr(value));
  Require(std::fabs(read - value) <= 1e-14 * std::fabs(value) || std::fabs(value) < 1e-300,
          "FloatToStr keeps the value");
}

}  // namespace

ZORBASE_FUZZ_TARGET(NumberText) {
  const std::string_view pattern = Input.Line();
  Attempt([&] { Format1033(pattern, Input.Number(), Input.Int(), pattern); });
  Attempt([&] { Format(pattern); });
  while (!Input.Rest().empty()) {
    const std::string_view line = Input.Line();
    ReadAndWrite(line);
    int count = 0;
    Attempt([&] {
      for (TDelimitedText items(line); items.Next();) ++count;
    });
    Require(count <= static_cast<int>(line.size()) + 1, "a splitter comes to its end");
  }
}

}  // namespace ZORBase::Test::FuzzNumberText
