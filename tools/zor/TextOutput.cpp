#include <zor/TextOutput.h>

#include <fmt/format.h>

#include <cstdio>

namespace ZORBase::Tool {

TTextFileWriter OpenOutput(const std::string& FileName) {
  return FileName == kStandardStream ? TTextFileWriter(stdout, "standard output") : TTextFileWriter(FileName);
}

void WriteToStandardOutput(std::string_view Text) {
  TTextFileWriter output = OpenOutput(std::string(kStandardStream));
  output.Write(Text);
  output.Commit();
}

void Warn(std::string_view Text) { fmt::print(stderr, "zor: warning: {}\n", Text); }

}  // namespace ZORBase::Tool
