#include <ZORBase/common/BaseServices/FileHandle.h>

#include <cerrno>
#include <clocale>
#include <cstring>

namespace ZORBase {

std::string LastFileError() {
  const int code = errno;
#if defined(__linux__)
  // Here strerror speaks the language of the locale.
  static const locale_t english = ::newlocale(LC_ALL_MASK, "C", locale_t{});
  return ::strerror_l(code, english);
#else
  return std::strerror(code);
#endif
}

}  // namespace ZORBase
