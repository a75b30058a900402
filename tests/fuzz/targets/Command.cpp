// The command zor, run in this process. Input: the arguments on the first line, then the file in.txt. Other files are in the
// scratch folder, too: names with a slash are left out, and so are pictures, which another program draws. What goes to standard
// output and standard error has to be thrown away by whoever runs this.
#include "fuzz/FuzzTarget.h"

#include <sys/resource.h>
#include <zor/Program.h>

#include <csignal>
#include <cstdio>
#include <filesystem>

namespace ZORBase::Test::FuzzCommand {
namespace {

// No file that is written grows larger; a write beyond fails. Not every step of 1e-6 is to be waited for.
constexpr rlim_t kLargestFile = 1 << 20;

void LimitFiles() {
  std::signal(SIGXFSZ, SIG_IGN);
  const rlimit limit{kLargestFile, kLargestFile};
  ::setrlimit(RLIMIT_FSIZE, &limit);
}

// Words as a shell takes them apart, with double quotes.
std::vector<std::string> ArgumentsOf(std::string_view Line) {
  std::vector<std::string> args = {"zor"};
  std::string word;
  bool isQuoted = false;
  const auto finish = [&] {
    const bool isLeftOut = word.empty() || word.find('/') != std::string::npos ||
                           word.find("..") != std::string::npos || word.find("plot") != std::string::npos ||
                           word.find('\0') != std::string::npos;
    if (!isLeftOut) args.push_back(word);
    word.clear();
  };
  for (const char character : Line) {
    if (character == '"') {
      isQuoted = !isQuoted;
    } else if (character == ' ' && !isQuoted) {
      finish();
    } else {
      word += character;
    }
  }
  finish();
  return args;
}

void Prepare() {
  static const bool isPrepared = [] {
    LimitFiles();
    return std::freopen("/dev/null", "r", stdin) != nullptr;
  }();
  Require(isPrepared, "there is a /dev/null");
}

}  // namespace

ZORBASE_FUZZ_TARGET(Command) {
  namespace fs = std::filesystem;
  Prepare();
  const TFuzzFolder folder;
  std::vector<std::string> args = ArgumentsOf(Input.Line());
  TFuzzFolder::Write("in.txt", Input.Rest());
  const fs::path before = fs::current_path();
  fs::current_path(TFuzzFolder::File(""));
  std::vector<char*> places;
  for (std::string& arg : args) places.push_back(arg.data());
  places.push_back(nullptr);
  const int status = Tool::RunProgram(static_cast<int>(args.size()), places.data());
  Require(status >= 0 && status <= 2, "the exit status is 0, 1 or 2");
  for (const fs::directory_entry& entry : fs::directory_iterator(".")) {
    Require(!entry.path().string().ends_with(".tmp"), "no temporary file stays");
  }
  fs::current_path(before);
}

}  // namespace ZORBase::Test::FuzzCommand
