#pragma once

#include <stdexcept>

namespace ZORBase::Tool {

/// What the command ends with.
enum TExitStatus {
  esDone = 0,
  esInput = 1,  ///< a file or its contents: cannot be read, cannot be used, cannot be written
  esUsage = 2   ///< the command line asks for something that is not possible
};

/// Ends the command with esUsage. Problems with files and their contents are raised as the general error (esInput).
class TUsageError final : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace ZORBase::Tool
