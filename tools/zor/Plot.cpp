#include <zor/Plot.h>

#include <ZORBase/common/BaseServices/FileHandle.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <fcntl.h>
#include <fmt/format.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>
#include <zor/TextOutput.h>

#include <array>
#include <cerrno>
#include <cstdio>

extern "C" char** environ;  // NOLINT(readability-redundant-declaration): not every system declares it

namespace ZORBase::Tool {
namespace {

constexpr std::string_view kSvg = ".svg";
constexpr std::string_view kPng = ".png";
constexpr auto kMissing =
    "--plot needs gnuplot, which was not found. Install it (Debian: apt install gnuplot-nox), or leave --plot away.";

[[noreturn]] void RaiseSystemError(const std::string& What) { RaiseGeneralError(What + ". " + LastFileError()); }

// A file without a name that holds Text, to be read from its start.
TFileHandle Unnamed(std::string_view Text = {}) {
  errno = 0;
  TFileHandle file = OwnedFile(std::tmpfile());
  if (!file || std::fwrite(Text.data(), 1, Text.size(), file.get()) != Text.size() || std::fflush(file.get()) != 0) {
    RaiseSystemError("Cannot make a temporary file");
  }
  std::rewind(file.get());
  return file;
}

// What is left in a file or a pipe.
std::string Contents(std::FILE* File) {
  std::string text;
  std::array<char, 1 << 16U> block{};
  while (const std::size_t got = std::fread(block.data(), 1, block.size(), File)) text.append(block.data(), got);
  return text;
}

// The last line of a text that holds something: gnuplot ends with what is wrong.
std::string LastWords(std::string_view Text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t last = Text.find_last_not_of(kBlanks);
  if (last == std::string_view::npos) return "nothing";
  Text = Text.substr(0, last + 1);
  Text.remove_prefix(Text.find_last_of('\n') + 1);  // npos + 1 is 0
  Text.remove_prefix(Text.find_first_not_of(kBlanks));
  return std::string(Text);
}

// A running gnuplot that reads its script from one file and complains into another. It draws into a pipe: of a file it would not
// notice that the disk is full, and be content with half a picture.
class TGnuplot {
 public:
  TGnuplot(std::FILE* Script, std::FILE* Errors) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) RaiseSystemError("Cannot make a pipe from gnuplot");
    for (const int end : ends) ::fcntl(end, F_SETFD, FD_CLOEXEC);
    const int status = Spawn(::fileno(Script), ends[1], ::fileno(Errors));
    ::close(ends[1]);
    FPicture = OwnedFile(::fdopen(ends[0], "r"));
    if (status == ENOENT) RaiseGeneralError(kMissing);
    errno = status;
    if (status != 0) RaiseSystemError("Cannot start gnuplot");
  }

  // \return whether gnuplot was content; Picture becomes what it drew.
  bool Run(std::string& Picture) {
    Picture = Contents(FPicture.get());
    int status = 0;
    while (::waitpid(FProcess, &status, 0) < 0 && errno == EINTR) {
    }
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  }

 private:
  int Spawn(int Input, int Output, int Errors) {
    posix_spawn_file_actions_t files{};
    ::posix_spawn_file_actions_init(&files);
    ::posix_spawn_file_actions_adddup2(&files, Input, STDIN_FILENO);
    ::posix_spawn_file_actions_adddup2(&files, Output, STDOUT_FILENO);
    ::posix_spawn_file_actions_adddup2(&files, Errors, STDERR_FILENO);
    std::string program = "gnuplot";
    std::string option = "--default-settings";  // nobody's own settings
    std::array<char*, 3> args = {program.data(), option.data(), nullptr};
    const int status = ::posix_spawnp(&FProcess, program.c_str(), &files, nullptr, args.data(), environ);
    ::posix_spawn_file_actions_destroy(&files);
    return status;
  }

  TFileHandle FPicture = OwnedFile(nullptr);
  pid_t FProcess = 0;
};

std::string Terminal(std::string_view FileName, const TPlotSize& Size) {
  constexpr auto kFont = "font 'DejaVu Sans,13'";
  if (FileName.ends_with(kSvg)) {
    return fmt::format("set terminal svg size {},{} {} background rgb 'white' noenhanced\n", Size.Width, Size.Height,
                       kFont);
  }
  return fmt::format("set terminal pngcairo size {},{} {} noenhanced\n", Size.Width, Size.Height, kFont);
}

}  // namespace

bool IsPictureName(std::string_view FileName) { return FileName.ends_with(kSvg) || FileName.ends_with(kPng); }

void SavePlot(const std::string& Script, const TPlotSize& Size, const std::string& FileName) {
  const TFileHandle script = Unnamed("set encoding utf8\n" + Terminal(FileName, Size) + Script);
  const TFileHandle errors = Unnamed();
  std::string picture;
  if (!TGnuplot(script.get(), errors.get()).Run(picture)) {
    std::rewind(errors.get());
    RaiseGeneralError("gnuplot could not draw " + FileName + ". It says: " + LastWords(Contents(errors.get())));
  }
  TTextFileWriter file = OpenOutput(FileName);
  file.Write(picture);
  file.Commit();
}

std::string PlotString(std::string_view Text) {
  std::string text = "'";
  for (const char character : Text) {
    const bool isControl = static_cast<unsigned char>(character) < 32;
    text += isControl ? ' ' : character;
    if (character == '\'') text += '\'';
  }
  return text + "'";
}

}  // namespace ZORBase::Tool
