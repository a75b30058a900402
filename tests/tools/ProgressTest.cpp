#include <zor/Progress.h>

#include "support/TestSupport.h"

#include <cstdio>
#include <thread>

namespace ZORBase::Tool {
namespace {

using namespace std::chrono_literals;

// What appears on a stream while work goes on for a time.
std::string LinesOf(std::int64_t Total, std::int64_t Done, std::chrono::milliseconds Patience,
                    std::chrono::milliseconds Time, bool IsShown = true) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> file(std::tmpfile(), std::fclose);
  {
    TProgress progress("counting", Total, {file.get(), IsShown, Patience, 1ms});
    progress.Advance(Done);
    std::this_thread::sleep_for(Time);
  }
  std::string text(static_cast<std::size_t>(std::ftell(file.get())), ' ');
  std::rewind(file.get());
  EXPECT_EQ(std::fread(text.data(), 1, text.size(), file.get()), text.size());
  return text;
}

TEST(TProgress, TellsThePartThatIsDoneAndWipesItsLine) {
  const std::string text = LinesOf(200, 50, 1ms, 100ms);
  EXPECT_THAT(text, testing::HasSubstr("\r\x1b[Kzor: counting ... 25 %\r"));
  EXPECT_THAT(text, testing::EndsWith("\r\x1b[K"));
}

TEST(TProgress, TellsTheCountWhereNobodyKnowsTheTotal) {
  EXPECT_THAT(LinesOf(0, 77, 1ms, 100ms), testing::HasSubstr("zor: counting ... 77\r"));
}

TEST(TProgress, TellsTheTimeOfASingleLongCall) {
  EXPECT_THAT(LinesOf(0, 0, 1ms, 100ms), testing::HasSubstr("zor: counting ... 0 s\r"));
}

TEST(TProgress, WorkThatIsDoneSoonStaysSilentAndIsNotHeldUp) {
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(LinesOf(200, 50, 60s, 1ms), "");
  EXPECT_LT(std::chrono::steady_clock::now() - start, 30s);
}

TEST(TProgress, WithoutATerminalNothingIsShown) { EXPECT_EQ(LinesOf(200, 50, 1ms, 50ms, false), ""); }

}  // namespace
}  // namespace ZORBase::Tool
