#include <ZORBase/common/BaseServices/TGeneralError.h>

namespace ZORBase {

void RaiseGeneralError(const std::string& Message) { throw TGeneralError(Message); }

void RaiseAssertion(std::string_view Message, std::string_view Source, int Line) {
  throw TGeneralError(std::string(Message) + " (" + std::string(Source) + ", line " + std::to_string(Line) + ")");
}

}  // namespace ZORBase
