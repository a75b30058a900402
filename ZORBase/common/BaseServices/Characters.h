#pragma once

namespace ZORBase {

/// Blanks between numbers and items are the characters with codes 1 to 32, taken as unsigned: a byte of a UTF-8
/// character is none, and neither is a byte 0.
constexpr bool IsBlank(char Character) {
  const auto code = static_cast<unsigned char>(Character);
  return code >= 1 && code <= 32;
}

constexpr bool IsDigit(char Character) { return Character >= '0' && Character <= '9'; }

}  // namespace ZORBase
