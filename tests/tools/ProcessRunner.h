// ProcessRunner: the built command, run as a person would run it.
//   Zor             runs it with arguments and gives its status and what it printed
//   Shell           runs a line of the shell in which "zor" is the command
//   EndsWith...     what tests expect of a run
#pragma once

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <iosfwd>
#include <optional>
#include <string>
#include <vector>

namespace ZORBase::Test {

/// What became of a process.
struct TRun {
  int Status = -1;  ///< exit status; -1 when a signal ended it
  int Signal = 0;   ///< that signal
  std::string Out;
  std::string Err;
  double Seconds = 0.0;  ///< of processor time: what else the machine does is not counted
};

struct TRunManner {
  std::string Input;                     ///< on standard input
  std::optional<std::string> OutputTo;   ///< a file, such as /dev/full, in the place of the captured standard output
  bool IsOutputClosed = false;           ///< standard output is a pipe that nobody reads any more
  std::vector<std::string> Environment;  ///< "NAME=value", added to the own environment
};

TRun Zor(const std::vector<std::string>& Args, const TRunManner& Manner = {});
TRun Shell(const std::string& Line);

void PrintTo(const TRun& Run, std::ostream* Stream);

/// The run ended with this status; what it printed on standard error is Err, or matches it.
MATCHER_P2(EndsWith, Status, Err, "") {
  return testing::ExplainMatchResult(testing::Field("Status", &TRun::Status, Status), arg, result_listener) &&
         testing::ExplainMatchResult(testing::Field("Err", &TRun::Err, testing::Matcher<std::string>(Err)), arg,
                                     result_listener);
}

/// The run succeeded without a word on standard error.
inline auto IsDone() { return EndsWith(0, ""); }

/// The run refused its input, or its command line, with this single line of standard error, and printed no result.
inline auto RefusesInput(const std::string& Line) {
  return testing::AllOf(EndsWith(1, Line + "\n"), testing::Field("Out", &TRun::Out, ""));
}
inline auto RefusesUsage(const std::string& Command, const std::string& Message) {
  return testing::AllOf(
      EndsWith(2, Command + ": " + Message + "\nRun \"" + Command + " --help\" for the options and examples.\n"),
      testing::Field("Out", &TRun::Out, ""));
}

/// Whether gnuplot can be run here; a test that needs it fails without.
testing::AssertionResult HasGnuplot();

}  // namespace ZORBase::Test
