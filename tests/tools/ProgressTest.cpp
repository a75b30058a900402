#include <zor/Progress.h>

#include "support/TestSupport.h"

#include <pty.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <memory>
#include <optional>
#include <regex>
#include <string>
#include <thread>
#include <vector>

namespace ZORBase::Tool {
namespace {

using namespace std::chrono_literals;

std::string TextIn(std::FILE* File) {
  std::string text(10'000, ' ');
  const ssize_t size = ::pread(::fileno(File), text.data(), text.size(), 0);
  text.resize(static_cast<std::size_t>(std::max<ssize_t>(size, 0)));
  return text;
}

// What appears on a stream while work goes on for so many milliseconds, or until the words are there.
std::string LinesOf(std::int64_t Total, std::int64_t Done, std::chrono::milliseconds Patience, int Milliseconds,
                    bool IsShown = true, const std::string& Words = "no words") {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
  {
    TProgress progress("counting", Total, {file.get(), IsShown, Patience, 1ms});
    progress.Advance(Done);
    for (int i = 0; i < Milliseconds && TextIn(file.get()).find(Words) == std::string::npos; ++i)
      std::this_thread::sleep_for(1ms);
  }
  return TextIn(file.get());
}

std::string LinesUntil(const std::string& Words, std::int64_t Total, std::int64_t Done) {
  constexpr int kLongest = 60'000;
  return LinesOf(Total, Done, 1ms, kLongest, true, Words);
}

TEST(TProgress, TellsThePartThatIsDoneAndWipesItsLine) {
  const std::string line = "\r\x1b[Kzor: counting ... 25 %\r";
  const std::string text = LinesUntil(line, 200, 50);
  EXPECT_THAT(text, testing::HasSubstr(line));
  EXPECT_THAT(text, testing::EndsWith("\r\x1b[K"));
}

TEST(TProgress, TellsTheCountWhereNobodyKnowsTheTotal) {
  const std::string line = "zor: counting ... 77\r";
  EXPECT_THAT(LinesUntil(line, 0, 77), testing::HasSubstr(line));
}

TEST(TProgress, TellsTheTimeOfASingleLongCall) {
  EXPECT_THAT(LinesUntil(" s\r", 0, 0), testing::ContainsRegex("zor: counting \\.\\.\\. [0-9]+ s\r"));
}

TEST(TProgress, WorkThatIsDoneSoonStaysSilentAndIsNotHeldUp) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(LinesOf(200, 50, 60s, 1), "");
  EXPECT_LT(std::chrono::steady_clock::now() - start, 30s);
}

TEST(TProgress, WithoutATerminalNothingIsShown) { EXPECT_EQ(LinesOf(200, 50, 1ms, 50, false), ""); }

// What zor prints on a terminal, until there is what is looked for or it ends; nothing where the system has no terminals.
std::optional<std::string> TextOnTerminal(std::vector<std::string> Args, const std::regex& LookedFor) {
  Args.insert(Args.begin(), ZOR_PROGRAM);
  std::vector<char*> places;
  for (std::string& arg : Args) places.push_back(arg.data());
  places.push_back(nullptr);
  int terminal = -1;
  const pid_t process = ::forkpty(&terminal, nullptr, nullptr, nullptr);
  if (process < 0) return std::nullopt;
  if (process == 0) {
    ::execv(places.front(), places.data());
    ::_exit(127);
  }
  std::string text;
  std::array<char, 256> block{};
  while (!std::regex_search(text, LookedFor)) {
    const ssize_t size = ::read(terminal, block.data(), block.size());
    if (size <= 0) break;
    text.append(block.data(), static_cast<std::size_t>(size));
  }
  ::kill(process, SIGKILL);
  ::waitpid(process, nullptr, 0);
  ::close(terminal);
  return text;
}

// The first line comes after a second, and more of them after that: the work takes several seconds, of which the test sees the first.
TEST(ZorProgress, TheResponseOfALongFilterTellsHowFarItIs) {
  const std::string line = "zor: computing the response \\.\\.\\. [1-9][0-9]* %";
  const std::optional<std::string> text = TextOnTerminal(
      {"filter", "--fs", "1", "--fc", "0.1", "--order", "999999", "--response", "-o", "/dev/null"}, std::regex(line));
  if (!text) GTEST_SKIP() << "this system has no terminals";
  EXPECT_THAT(*text, testing::ContainsRegex(line));
}

}  // namespace
}  // namespace ZORBase::Tool
