#pragma once

#include <ZORBase/common/BaseServices/FileHandle.h>
#include <ZORBase/common/Export.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace ZORBase {

/// Reads a text file line by line. The file is read once, in blocks, and its lines are not copied.
///
/// CR LF, LF and a lone CR each end a line; the last line needs no end. A UTF-8 byte order mark at the start is passed
/// over. Memory stays within one block, or within the longest line.
class ZORBASE_API TTextFileReader {
 public:
  /// A line may have this many bytes.
  static constexpr std::size_t kLineLimit = std::size_t{64} << 20U;

  /// Opens a file. \throws the general error, with the system's reason, when it cannot be opened.
  explicit TTextFileReader(const std::string& FileName);

  /// Reads from a stream that is open already and stays the caller's, such as stdin; Name stands for it in messages.
  TTextFileReader(std::FILE* Stream, std::string Name);

  /// Goes on to the next line. \return false behind the last one.
  /// \throws the general error when the file cannot be read, is UTF-16, or has a line longer than kLineLimit.
  bool Next();

  /// The current line without its end; it stays readable until Next is called again.
  std::string_view Line() const { return FLine; }

  /// \return the share of the file that the lines so far are, from 0 to 1; 1 where the size of the file is not known.
  double ShareRead() const;

 private:
  void FetchMore();
  void PassByteOrderMark();

  TFileHandle FFile;
  std::string FName;
  std::uintmax_t FFileSize = 0;   // in bytes; 0 where it is not known
  std::uintmax_t FBytesRead = 0;  // into the buffer
  std::vector<char> FBuffer;
  std::size_t FBegin = 0;  // of the bytes in FBuffer that no line has taken yet
  std::size_t FEnd = 0;
  bool FAtFileStart = true;
  bool FAtFileEnd = false;
  bool FAfterCarriageReturn = false;
  std::string_view FLine;
};

}  // namespace ZORBase
