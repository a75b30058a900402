#include "faults/FaultSupport.h"

#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/time.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <new>
#include <system_error>
#include <utility>

namespace ZORBase::Test {
namespace {

// What the signal's handler, which may do next to nothing, prints.
constinit std::string_view WordsOfLimit;

extern "C" void EndLateProcess(int /*Signal*/) {
  const ssize_t written = ::write(STDERR_FILENO, WordsOfLimit.data(), WordsOfLimit.size());
  static_cast<void>(written);  // it ends either way
  std::abort();
}

void SetTimer(std::chrono::milliseconds Time) {
  itimerval timer{};
  timer.it_value.tv_sec = Time.count() / 1000;
  timer.it_value.tv_usec = Time.count() % 1000 * 1000;
  ::setitimer(ITIMER_REAL, &timer, nullptr);
}

}  // namespace

bool IsThorough() {
  const char* const wish = std::getenv("ZORBASE_FAULTS");
  return wish && std::string_view(wish) == "thorough";
}

bool TellsOfMemory(std::string_view Text) { return Text.find("std::bad_alloc") != std::string_view::npos; }

void ReportRow(std::string_view Subject, std::int64_t Faults, std::string_view Outcome) {
  const char* const name = std::getenv("ZORBASE_FAULT_REPORT");
  if (name) std::ofstream(name, std::ios::app) << "| " << Subject << " | " << Faults << " | " << Outcome << " |\n";
}

TOutcome Outcome(const std::function<void()>& Action) {
  try {
    Action();
    return TOutcome::Done;
  } catch (const std::bad_alloc&) {
    return TOutcome::NoMemory;
  } catch (const TGeneralError& Error) {
    return TellsOfMemory(Error.what()) ? TOutcome::NoMemory : TOutcome::Refused;
  } catch (...) {
    return TOutcome::Other;
  }
}

TTimeLimit::TTimeLimit(std::string Case, std::chrono::milliseconds Time)
    : FWords("took too long: " + std::move(Case) + "\n") {
  WordsOfLimit = FWords;
  std::signal(SIGALRM, EndLateProcess);
  SetTimer(Time);
}

TTimeLimit::~TTimeLimit() {
  SetTimer({});
  std::signal(SIGALRM, SIG_DFL);
}

TChild::TChild(const std::function<int()>& Action) : FProcess(::fork()) {
  if (FProcess < 0) throw std::system_error(errno, std::generic_category(), "fork");
  if (FProcess > 0) return;
  const rlimit none{0, 0};
  ::setrlimit(RLIMIT_CORE, &none);
  const int nowhere = ::open("/dev/null", O_WRONLY);
  ::dup2(nowhere, STDOUT_FILENO);
  ::dup2(nowhere, STDERR_FILENO);
  int status = 1;
  try {
    status = Action();
  } catch (...) {
    status = 1;
  }
  ::_exit(status);
}

TChild::~TChild() {
  if (FProcess == 0) return;
  Kill();
  Wait();
}

void TChild::Kill() const { ::kill(FProcess, SIGKILL); }

int TChild::Wait() {
  int status = 0;
  ::waitpid(FProcess, &status, 0);
  FProcess = 0;
  return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

}  // namespace ZORBase::Test
