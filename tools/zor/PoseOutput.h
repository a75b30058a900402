#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/common/BaseServices/TTextFileWriter.h>

#include <string>

namespace ZORBase::Tool {

/// Writes poses as the text file of a TPoint6DList, one by one, so that a long result needs no memory. The file gets its name
/// in Commit, when it is whole; on "-", standard output, the poses are on their way earlier.
class TPoseOutput {
 public:
  /// \throws the general error when nothing can be written there.
  TPoseOutput(const std::string& FileName, int Decimals);

  /// \throws the general error when the system does not take it.
  void Add(const TPoint6D& Pose);
  void Commit() { FFile.Commit(); }

 private:
  TTextFileWriter FFile;
  int FDecimals;
  std::string FLine;
};

}  // namespace ZORBase::Tool
