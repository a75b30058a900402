// TextOutput: where text goes.
#pragma once

#include <ZORBase/common/BaseServices/TTextFileWriter.h>

#include <string>
#include <string_view>

namespace ZORBase::Tool {

/// The file name that stands for standard input and standard output.
inline constexpr std::string_view kStandardStream = "-";

/// \return a writer to the file, which gets its name in Commit only; to standard output for "-".
/// \throws the general error when nothing can be written there.
TTextFileWriter OpenOutput(const std::string& FileName);

/// Writes Text as it stands. \throws the general error when standard output does not take it.
void WriteToStandardOutput(std::string_view Text);

/// Prints "zor: warning: Text" on standard error.
void Warn(std::string_view Text);

}  // namespace ZORBase::Tool
