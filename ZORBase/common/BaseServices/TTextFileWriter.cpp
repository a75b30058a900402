#include <ZORBase/common/BaseServices/TTextFileWriter.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <filesystem>
#include <random>
#include <system_error>
#include <utility>

#if __has_include(<unistd.h>)
#include <unistd.h>
#endif

namespace ZORBase {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t kPendingLimit = std::size_t{256} << 10U;
constexpr int kNameAttempts = 16;
constexpr int kLinkLimit = 40;  // as many as Linux follows

// A save must outlive a loss of power: without this the new name could stand for an empty file afterwards.
bool BringToDisk([[maybe_unused]] std::FILE* File) {
#if __has_include(<unistd.h>)
  return ::fsync(::fileno(File)) == 0;
#else
  return true;
#endif
}

// The file that a chain of symbolic links ends at, there or not yet. A loop gives one of its links.
fs::path EndOfLinks(fs::path Path) {
  std::error_code ignored;
  for (int i = 0; i < kLinkLimit && fs::is_symlink(Path, ignored); ++i) {
    Path = Path.parent_path() / fs::read_symlink(Path, ignored);
  }
  return Path;
}

std::string WithRandomSuffix(const std::string& FileName) {
  std::array<char, 8> digits{};
  const auto printed = std::to_chars(digits.data(), digits.data() + digits.size(), std::random_device{}(), 16);
  return FileName + "." + std::string(digits.data(), printed.ptr) + ".tmp";
}

}  // namespace

// The other constructor is done when this one begins, so that the destructor runs, and removes the file beside, whatever is raised.
TTextFileWriter::TTextFileWriter(const std::string& FileName) : TTextFileWriter(nullptr, FileName) {
  FTarget = EndOfLinks(FileName).string();
  std::error_code error;
  const fs::file_status status = fs::status(FTarget, error);
  if (!fs::status_known(status)) {
    errno = error.value();
    RaiseWriteError();
  }
  if (!fs::exists(status) || fs::is_regular_file(status)) {
    OpenBeside();
    if (fs::exists(status)) fs::permissions(FBeside, status.permissions(), error);
  } else {
    errno = 0;
    FFile = OwnedFile(std::fopen(FTarget.c_str(), "wb"));
    if (!FFile) RaiseWriteError();
  }
}

TTextFileWriter::TTextFileWriter(std::FILE* Stream, std::string Name)
    : FName(std::move(Name)), FFile(BorrowedFile(Stream)) {}

TTextFileWriter::~TTextFileWriter() {
  FFile.reset();
  if (!FBeside.empty()) std::remove(FBeside.c_str());
}

void TTextFileWriter::OpenBeside() {
  for (int attempt = 0; !FFile && attempt < kNameAttempts; ++attempt) {
    FBeside = WithRandomSuffix(FTarget);
    errno = 0;
    FFile = OwnedFile(std::fopen(FBeside.c_str(), "wbx"));
    if (!FFile && errno != EEXIST) break;
  }
  if (FFile) return;
  FBeside.clear();
  RaiseWriteError();
}

void TTextFileWriter::Write(std::string_view Text) {
  RequireOpen();
  FPending += Text;
  if (FPending.size() >= kPendingLimit) Flush();
}

void TTextFileWriter::WriteLine(std::string_view Line) {
  RequireOpen();
  FPending += Line;
  EndLine();
}

void TTextFileWriter::EndLine() {
  FPending += "\r\n";
  if (FPending.size() >= kPendingLimit) Flush();
}

void TTextFileWriter::Commit() {
  RequireOpen();
  Flush();
  errno = 0;
  if (std::fflush(FFile.get()) != 0) RaiseWriteError();
  if (FBeside.empty()) return;
  const bool isOnDisk = BringToDisk(FFile.get());
  const bool isClosed = std::fclose(FFile.release()) == 0;
  if (!isOnDisk || !isClosed) RaiseWriteError();
  std::error_code error;
  fs::rename(FBeside, FTarget, error);
  if (error) {
    errno = error.value();
    RaiseWriteError();
  }
  FBeside.clear();
}

void TTextFileWriter::Flush() {
  errno = 0;
  const std::size_t written = std::fwrite(FPending.data(), 1, FPending.size(), FFile.get());
  if (written != FPending.size()) RaiseWriteError();
  FPending.clear();
}

void TTextFileWriter::RequireOpen() const {
  if (!FFile) RaiseGeneralError("\"" + FName + "\" takes nothing more after its Commit");
}

void TTextFileWriter::RaiseWriteError() const {
  RaiseGeneralError("Cannot write file \"" + FName + "\". " + LastFileError());
}

}  // namespace ZORBase
