#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

TEST(ZorUsage, HelpOfEverySubcommandHasExamples) {
  EXPECT_THAT(Zor({"--help"}), IsDone());
  EXPECT_THAT(Zor({"--help"}).Out, HasSubstr("Examples:\n  zor info poses.txt\n"));
  for (const std::string command : {"info", "fit", "resample", "nearest", "spline"}) {
    const TRun run = Zor({command, "--help"});
    EXPECT_THAT(run, IsDone());
    EXPECT_THAT(run.Out, HasSubstr("Usage: zor " + command + " [OPTIONS] FILE"));
    EXPECT_THAT(run.Out, HasSubstr("Examples:\n  zor " + command + " "));
    EXPECT_EQ(Zor({command, "-h"}).Out, run.Out);
    EXPECT_THAT(Zor({"--help"}).Out, HasSubstr("\n  " + command + " "));
  }
}

TEST(ZorUsage, TheVersionIsOneLine) {
  const TRun run = Zor({"--version"});
  EXPECT_THAT(run, IsDone());
  EXPECT_THAT(run.Out, testing::MatchesRegex("zor [0-9]+\\.[0-9]+\\.[0-9]+\n"));
}

TEST(ZorUsage, WithoutASubcommandOneIsAskedFor) {
  EXPECT_THAT(Zor({}), RefusesUsage("zor", "name a subcommand, such as \"zor info poses.txt\""));
}

TEST(ZorUsage, WhatNobodyKnowsIsNamed) {
  EXPECT_THAT(Zor({"inform"}), RefusesUsage("zor", "The following argument was not expected: inform"));
  const std::string file = SampleFile("e387.100mm.poses.txt");
  EXPECT_THAT(Zor({"info", file, "--verbose"}),
              RefusesUsage("zor info", "The following argument was not expected: --verbose"));
  EXPECT_THAT(Zor({"fit", file, "b.txt"}), RefusesUsage("zor fit", "The following argument was not expected: b.txt"));
}

TEST(ZorUsage, AFileIsNeeded) { EXPECT_THAT(Zor({"info"}), RefusesUsage("zor info", "FILE is required")); }

}  // namespace
}  // namespace ZORBase::Test
