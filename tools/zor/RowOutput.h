#pragma once

#include <ZORBase/common/BaseServices/TTextFileWriter.h>

#include <span>
#include <string>

namespace ZORBase::Tool {

/// Writes rows of numbers, one a line, as the lists of points write and read them. They go out one by one, so that a long
/// result needs no memory. The file gets its name in Commit, when it is whole; on "-", standard output, the rows are on their
/// way earlier.
class TRowOutput {
 public:
  /// \throws the general error when nothing can be written there.
  TRowOutput(const std::string& FileName, int Decimals);

  /// \throws the general error when the system does not take it.
  void Add(std::span<const double> Row);
  void Commit() { FFile.Commit(); }

 private:
  TTextFileWriter FFile;
  int FDecimals;
  std::string FLine;
};

}  // namespace ZORBase::Tool
