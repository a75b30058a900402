// OutputOf: what another process prints.
#pragma once

#include <array>
#include <cstddef>
#include <cstdio>
#include <string>

namespace ZORBase::Bench {

/// \return what Command prints, run by the shell; nothing when it cannot be run.
inline std::string OutputOf(const std::string& Command) {
  std::string output;
  FILE* const pipe = popen(Command.c_str(), "r");
  if (pipe == nullptr) return output;
  std::array<char, 4096> block{};
  while (const std::size_t count = std::fread(block.data(), 1, block.size(), pipe)) output.append(block.data(), count);
  pclose(pipe);
  return output;
}

}  // namespace ZORBase::Bench
