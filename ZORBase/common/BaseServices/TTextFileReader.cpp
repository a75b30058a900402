#include <ZORBase/common/BaseServices/TTextFileReader.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/BaseServices/TextScan.h>

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

namespace ZORBase {
namespace {

constexpr std::size_t kBlockSize = std::size_t{128} << 10U;
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::string_view kUtf16LittleEndianMark = "\xFF\xFE";
constexpr std::string_view kUtf16BigEndianMark = "\xFE\xFF";

std::FILE* OpenForReading(const std::string& FileName) {
  errno = 0;
  std::FILE* file = std::fopen(FileName.c_str(), "rb");
  if (!file) RaiseGeneralError("Cannot open file \"" + FileName + "\". " + LastFileError());
  return file;
}

std::uintmax_t FileSizeOf(const std::string& FileName) {
  std::error_code error;
  const std::uintmax_t size = std::filesystem::file_size(FileName, error);
  return error ? 0 : size;
}

}  // namespace

TTextFileReader::TTextFileReader(const std::string& FileName)
    : FFile(OwnedFile(OpenForReading(FileName))), FName(FileName), FFileSize(FileSizeOf(FileName)) {}

TTextFileReader::TTextFileReader(std::FILE* Stream, std::string Name)
    : FFile(BorrowedFile(Stream)), FName(std::move(Name)) {}

bool TTextFileReader::Next() {
  std::size_t scanned = 0;
  for (;;) {
    if (FAfterCarriageReturn && FBegin < FEnd) {
      if (FBuffer[FBegin] == '\n') ++FBegin;
      FAfterCarriageReturn = false;
    }
    const char* const begin = FBuffer.data() + FBegin;
    const char* const end = FBuffer.data() + FEnd;
    const char* const lineEnd = FindFirst<TLineEnds>(begin, begin + scanned, end);
    if (lineEnd != end || (FAtFileEnd && begin != end)) {
      FLine = std::string_view(begin, static_cast<std::size_t>(lineEnd - begin));
      FAfterCarriageReturn = lineEnd != end && *lineEnd == '\r';
      FBegin += FLine.size() + (lineEnd != end ? 1 : 0);
      return true;
    }
    if (FAtFileEnd) return false;
    scanned = FEnd - FBegin;
    FetchMore();
  }
}

double TTextFileReader::ShareRead() const {
  const std::uintmax_t taken = FBytesRead - (FEnd - FBegin);
  return taken < FFileSize ? static_cast<double>(taken) / static_cast<double>(FFileSize) : 1.0;
}

// Moves what is left to the front of the buffer, grows it where a line fills it, up to the limit and a line end, and reads
// what has room.
void TTextFileReader::FetchMore() {
  std::copy(FBuffer.begin() + static_cast<std::ptrdiff_t>(FBegin), FBuffer.begin() + static_cast<std::ptrdiff_t>(FEnd),
            FBuffer.begin());
  FEnd -= FBegin;
  FBegin = 0;
  if (FEnd > kLineLimit) {
    RaiseGeneralError("\"" + FName + "\" has a line of more than " + std::to_string(kLineLimit) +
                      " bytes; it is no text file of points");
  }
  if (FEnd == FBuffer.size()) FBuffer.resize(std::min(std::max(kBlockSize, 2 * FBuffer.size()), kLineLimit + 1));
  errno = 0;
  const std::size_t wanted = FBuffer.size() - FEnd;
  const std::size_t got = std::fread(FBuffer.data() + FEnd, 1, wanted, FFile.get());
  if (got < wanted && std::ferror(FFile.get())) RaiseGeneralError("Cannot read \"" + FName + "\". " + LastFileError());
  FAtFileEnd = got < wanted;
  FEnd += got;
  FBytesRead += got;
  if (std::exchange(FAtFileStart, false)) PassByteOrderMark();
}

void TTextFileReader::PassByteOrderMark() {
  const std::string_view start(FBuffer.data(), FEnd);
  if (start.starts_with(kUtf8Mark)) FBegin = kUtf8Mark.size();
  if (start.starts_with(kUtf16LittleEndianMark) || start.starts_with(kUtf16BigEndianMark)) {
    RaiseGeneralError("\"" + FName + "\" is UTF-16 text; save it as ASCII or UTF-8");
  }
}

}  // namespace ZORBase
