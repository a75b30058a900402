#pragma once

#include <ZORBase/common/Export.h>

#include <cstdio>
#include <memory>
#include <string>

namespace ZORBase {

using TFileHandle = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

/// A handle that closes the file.
inline TFileHandle OwnedFile(std::FILE* File) {
  return {File, [](std::FILE* Handle) { return std::fclose(Handle); }};
}

/// A handle on a stream that stays the caller's.
inline TFileHandle BorrowedFile(std::FILE* File) {
  return {File, [](std::FILE*) { return 0; }};
}

/// \return the system's English words for the last error of a file operation, whatever the locale.
ZORBASE_API std::string LastFileError();

}  // namespace ZORBase
