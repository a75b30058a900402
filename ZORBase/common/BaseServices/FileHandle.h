#pragma once

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string>
#include <system_error>

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

/// \return the system's words for the last error of a file operation.
inline std::string LastFileError() { return std::generic_category().message(errno); }

}  // namespace ZORBase
