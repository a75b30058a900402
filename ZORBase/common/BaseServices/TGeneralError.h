#pragma once

#include <ZORBase/common/Export.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace ZORBase {

/// The general error: the one exception type of the library. It carries a message text, no code and no subclass.
/// A caller that adds context catches it and raises a new one whose message embeds the caught one's.
class ZORBASE_API TGeneralError final : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Raises the general error with this message.
[[noreturn]] ZORBASE_API void RaiseGeneralError(const std::string& Message);

/// Raises the general error of a failed assertion: "Message (Source, line Line)".
[[noreturn]] ZORBASE_API void RaiseAssertion(std::string_view Message, std::string_view Source, int Line);

}  // namespace ZORBase
