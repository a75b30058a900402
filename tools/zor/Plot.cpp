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
#include <csignal>
#include <cstdio>

extern "C" char** environ;  // NOLINT(readability-redundant-declaration): not every system declares it

namespace ZORBase::Tool {
namespace {

constexpr std::string_view kSvg = ".svg";
constexpr std::string_view kPng = ".png";
constexpr auto kMissing =
    "--plot needs gnuplot, which was not found. Install it (Debian: apt install gnuplot-nox), or leave --plot away.";

// A program that ends early must not end this one by SIGPIPE.
class TSigPipeIgnored {
 public:
  TSigPipeIgnored() : FBefore(std::signal(SIGPIPE, SIG_IGN)) {}
  ~TSigPipeIgnored() { std::signal(SIGPIPE, FBefore); }
  TSigPipeIgnored(const TSigPipeIgnored&) = delete;
  TSigPipeIgnored& operator=(const TSigPipeIgnored&) = delete;

 private:
  void (*FBefore)(int);
};

[[noreturn]] void RaiseSystemError(const std::string& What) { RaiseGeneralError(What + ". " + LastFileError()); }

// A file without a name, for what the other program prints.
TFileHandle Unnamed() {
  TFileHandle file = OwnedFile(std::tmpfile());
  if (!file) RaiseSystemError("Cannot make a temporary file");
  return file;
}

std::string Contents(std::FILE* File) {
  std::string text;
  std::array<char, 1 << 16U> block{};
  std::rewind(File);
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

// A running gnuplot that reads its script from a pipe and prints into two files.
class TGnuplot {
 public:
  TGnuplot(std::FILE* Output, std::FILE* Errors) {
    std::array<int, 2> ends{};
    if (::pipe(ends.data()) != 0) RaiseSystemError("Cannot make a pipe to gnuplot");
    for (const int end : ends) ::fcntl(end, F_SETFD, FD_CLOEXEC);
    const int status = Spawn(ends[0], ::fileno(Output), ::fileno(Errors));
    ::close(ends[0]);
    FScript = OwnedFile(::fdopen(ends[1], "w"));
    if (status == ENOENT) RaiseGeneralError(kMissing);
    errno = status;
    if (status != 0) RaiseSystemError("Cannot start gnuplot");
  }

  // \return whether gnuplot was content.
  bool Run(const std::string& Script) {
    std::fwrite(Script.data(), 1, Script.size(), FScript.get());
    FScript.reset();
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

  TFileHandle FScript = OwnedFile(nullptr);
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
  const TSigPipeIgnored ignored;
  const TFileHandle picture = Unnamed();
  const TFileHandle errors = Unnamed();
  TGnuplot gnuplot(picture.get(), errors.get());
  if (!gnuplot.Run("set encoding utf8\n" + Terminal(FileName, Size) + Script)) {
    RaiseGeneralError("gnuplot could not draw " + FileName + ". It says: " + LastWords(Contents(errors.get())));
  }
  TTextFileWriter file = OpenOutput(FileName);
  file.Write(Contents(picture.get()));
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
