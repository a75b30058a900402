// FaultSupport: what the tests of faults share.
//   IsThorough, Pick     few rounds in the ordinary tests; with ZORBASE_FAULTS=thorough in the environment, as many as there can be
//   ReportRow            a row of the table that evidence.sh prints, into the file that ZORBASE_FAULT_REPORT names
//   TChild               a process of its own for what may end it
//   kOldText             what stands in a file before
//   TOutcome, Outcome    what became of a call
//   TTimeLimit           ends the process when a call does not come back
#pragma once

#include <sys/types.h>

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace ZORBase::Test {

bool IsThorough();

/// \return Thorough where the run is thorough, otherwise Quick.
inline int Pick(int Quick, int Thorough) { return IsThorough() ? Thorough : Quick; }

/// Adds a row: what failed, how many times it was made to, and what was seen each time.
void ReportRow(std::string_view Subject, std::int64_t Faults, std::string_view Outcome);

/// What stands in a file before it is saved anew.
inline constexpr std::string_view kOldText = "old\r\n";

/// What became of a call: nothing was raised; std::bad_alloc, or a general error that passes it on, as that of a file's line does;
/// another general error; or anything else.
enum class TOutcome { Done, NoMemory, Refused, Other };

bool TellsOfMemory(std::string_view Text);

TOutcome Outcome(const std::function<void()>& Action);

/// A watchdog: a case that has not come back after Time, which no call comes near, hangs and ends the process, which tells its name.
/// It measures no speed. One at a time.
class TTimeLimit {
 public:
  explicit TTimeLimit(std::string Case, std::chrono::milliseconds Time = std::chrono::seconds(10));
  ~TTimeLimit();
  TTimeLimit(const TTimeLimit&) = delete;
  TTimeLimit& operator=(const TTimeLimit&) = delete;

 private:
  std::string FWords;
};

/// A child process that prints nothing and leaves no core. It does Action and ends with the status that Action returns.
class TChild {
 public:
  /// \throws std::system_error where the system has no process left.
  explicit TChild(const std::function<int()>& Action);
  ~TChild();
  TChild(const TChild&) = delete;
  TChild& operator=(const TChild&) = delete;

  void Kill() const;
  /// Waits for its end. \return its exit status; minus the signal that ended it.
  int Wait();

 private:
  pid_t FProcess;
};

}  // namespace ZORBase::Test
