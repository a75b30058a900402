#include "tools/ProcessRunner.h"

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <ostream>
#include <string_view>
#include <system_error>

namespace ZORBase::Test {
namespace {

using TFile = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

TFile Scratch(std::string_view Text = "") {
  TFile file(std::tmpfile(), std::fclose);
  std::fwrite(Text.data(), 1, Text.size(), file.get());
  std::rewind(file.get());
  return file;
}

std::string Contents(std::FILE* File) {
  std::rewind(File);
  std::string text;
  std::array<char, 4096> block{};
  while (const std::size_t got = std::fread(block.data(), 1, block.size(), File)) text.append(block.data(), got);
  return text;
}

int OpenOutput(const TRunManner& Manner, std::FILE* Captured) {
  if (Manner.OutputTo) return ::open(Manner.OutputTo->c_str(), O_WRONLY);
  if (!Manner.IsOutputClosed) return ::dup(::fileno(Captured));
  std::array<int, 2> ends{};
  if (::pipe(ends.data()) != 0) return -1;
  ::close(ends[0]);
  return ends[1];
}

// In the child: becomes the program.
[[noreturn]] void Become(const std::vector<std::string>& Command, const TRunManner& Manner, int Input, int Output,
                         int Errors) {
  ::dup2(Input, STDIN_FILENO);
  ::dup2(Output, STDOUT_FILENO);
  ::dup2(Errors, STDERR_FILENO);
  ::close(Output);
  for (const std::string& setting : Manner.Environment) {
    const std::size_t equals = setting.find('=');
    ::setenv(setting.substr(0, equals).c_str(), setting.substr(equals + 1).c_str(), 1);
  }
  std::vector<char*> args;
  for (const std::string& arg : Command) args.push_back(const_cast<char*>(arg.c_str()));
  args.push_back(nullptr);
  ::execv(args.front(), args.data());
  ::_exit(127);
}

TRun RunProcess(const std::vector<std::string>& Command, const TRunManner& Manner) {
  const TFile input = Scratch(Manner.Input);
  const TFile out = Scratch();
  const TFile err = Scratch();
  const int output = OpenOutput(Manner, out.get());
  const pid_t child = ::fork();
  if (child == 0) Become(Command, Manner, ::fileno(input.get()), output, ::fileno(err.get()));
  ::close(output);
  if (child < 0) throw std::system_error(errno, std::generic_category(), "fork");
  int status = 0;
  rusage usage{};
  ::wait4(child, &status, 0, &usage);
  const auto seconds = [](const timeval& Time) {
    return static_cast<double>(Time.tv_sec) + 1e-6 * static_cast<double>(Time.tv_usec);
  };
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, WIFSIGNALED(status) ? WTERMSIG(status) : 0, Contents(out.get()),
          Contents(err.get()), seconds(usage.ru_utime) + seconds(usage.ru_stime)};
}

}  // namespace

TRun Zor(const std::vector<std::string>& Args, const TRunManner& Manner) {
  std::vector<std::string> command = {ZOR_PROGRAM};
  command.insert(command.end(), Args.begin(), Args.end());
  return RunProcess(command, Manner);
}

TRun Shell(const std::string& Line) {
  return RunProcess({"/bin/sh", "-c", "zor() { \"" ZOR_PROGRAM "\" \"$@\"; }\n" + Line}, {});
}

void PrintTo(const TRun& Run, std::ostream* Stream) {
  *Stream << "status " << Run.Status << ", signal " << Run.Signal << ", standard error \"" << Run.Err
          << "\", standard output of " << Run.Out.size() << " bytes \"" << Run.Out.substr(0, 2000) << "\"";
}

testing::AssertionResult HasGnuplot() {
  if (Shell("command -v gnuplot").Status == 0) return testing::AssertionSuccess();
  return testing::AssertionFailure() << "gnuplot is not installed (Debian: gnuplot-nox)";
}

}  // namespace ZORBase::Test
