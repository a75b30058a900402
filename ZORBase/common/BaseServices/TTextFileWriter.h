#pragma once

#include <ZORBase/common/BaseServices/FileHandle.h>
#include <ZORBase/common/Export.h>

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

namespace ZORBase {

/// Writes a text file so that its name never stands for half a file: the lines go into a file beside it, which takes
/// over the name in Commit. Without a Commit, or when something fails, the file is as it was before.
///
/// A symbolic link is followed, to where its target is or will be, and the permissions of an existing file are kept. What is not a
/// regular file (a device, a named pipe) is written straight into.
class ZORBASE_API TTextFileWriter {
 public:
  /// \throws the general error, with the system's reason, when nothing can be written there.
  explicit TTextFileWriter(const std::string& FileName);

  /// Writes to a stream that is open already and stays the caller's, such as stdout; Name stands for it in messages.
  TTextFileWriter(std::FILE* Stream, std::string Name);

  TTextFileWriter(const TTextFileWriter&) = delete;
  TTextFileWriter& operator=(const TTextFileWriter&) = delete;
  ~TTextFileWriter();

  /// Adds text as it stands. \throws the general error when the system does not take it.
  void Write(std::string_view Text);

  /// Adds a line, ended by CR LF.
  void WriteLine(std::string_view Line);

  /// Adds the line that AppendLine(std::string& Text) appends to a text: it is made where it goes out from. One that raises
  /// adds nothing.
  template <class TAppendLine>
  void WriteLineOf(TAppendLine&& AppendLine) {
    RequireOpen();
    const std::size_t start = FPending.size();
    try {
      AppendLine(FPending);
    } catch (...) {
      FPending.resize(start);
      throw;
    }
    EndLine();
  }

  /// Brings everything to the disk and gives the file its name; the file takes nothing more after that. A device, a pipe
  /// and a stream stay open. \throws the general error when that fails.
  void Commit();

 private:
  void OpenBeside();
  void EndLine();
  void Flush();
  void RequireOpen() const;
  [[noreturn]] void RaiseWriteError() const;

  std::string FName;    // as the caller gave it, for messages
  std::string FTarget;  // where the text ends up
  std::string FBeside;  // where it is until Commit; empty when it goes straight to the target
  TFileHandle FFile;
  std::string FPending;
};

}  // namespace ZORBase
