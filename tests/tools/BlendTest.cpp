#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <algorithm>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

TRun Blended(const std::string& Begin, const std::string& End, const std::vector<std::string>& Options) {
  std::vector<std::string> args = {"blend", Begin, End, "--decimals", "4"};
  args.insert(args.end(), Options.begin(), Options.end());
  return Zor(args);
}

std::ptrdiff_t LinesOf(const TRun& Run) { return std::count(Run.Out.begin(), Run.Out.end(), '\n'); }

// Half way between +Z and +X lies the direction of 45 degrees.
TEST(ZorBlend, StepsAreEqualAndTheEndsBelongToThem) {
  const TRun run = Blended("0,0,0,0,0,1", "10,0,0,1,0,0", {"--count", "2"});
  ASSERT_THAT(run, IsDone());
  EXPECT_EQ(run.Out,
            "0.0000,0.0000,0.0000,0.0000,0.0000,1.0000\r\n5.0000,0.0000,0.0000,0.7071,0.0000,0.7071\r\n"
            "10.0000,0.0000,0.0000,1.0000,0.0000,0.0000\r\n");
}

// 90 degrees in turns of at most 20 are 5 steps, 10 long in steps of at most 3 are 4: the larger number counts.
TEST(ZorBlend, TheStricterLimitGivesTheNumberOfSteps) {
  EXPECT_EQ(LinesOf(Blended("0,0,0,0,0,1", "10,0,0,1,0,0", {"--max-step", "3", "--max-angle", "20"})), 6);
  EXPECT_EQ(LinesOf(Blended("0,0,0,0,0,1", "10,0,0,1,0,0", {"--max-step", "1", "--max-angle", "20"})), 11);
}

// From 45 degrees below the horizon on one side to the other the short way leads through straight down.
TEST(ZorBlend, TheUpwardModeAvoidsTheLowestDirection) {
  const std::string begin = "0,0,0,1,0,-1";
  const std::string end = "0,0,0,-1,0,-1";
  EXPECT_THAT(Blended(begin, end, {"--count", "2"}).Out,
              testing::ContainsRegex("\n0.0000,0.0000,0.0000,-?0.0000,-?0.0000,-1.0000\r"));
  const TRun up = Blended(begin, end, {"--count", "2", "--mode", "wcs-up"});
  EXPECT_THAT(up.Out, testing::ContainsRegex("\n0.0000,0.0000,0.0000,-?0.0000,-?0.0000,1.0000\r"));
}

TEST(ZorBlend, EulerAnglesGoStraightFromTheirFirstToTheirLastValue) {
  const TRun longWay = Blended("0,0,0,0,0,170", "10,0,0,0,0,-170", {"--mode", "euler", "--degrees", "--count", "2"});
  EXPECT_THAT(longWay.Out, HasSubstr("\n5.0000,0.0000,0.0000,0.0000,0.0000,0.0000\r"));
  const TRun shortWay = Blended("0,0,0,0,0,170", "10,0,0,0,0,190", {"--mode", "euler", "--degrees", "--count", "2"});
  EXPECT_THAT(shortWay.Out, HasSubstr("\n5.0000,0.0000,0.0000,0.0000,0.0000,180.0000\r"));
}

TEST(ZorBlend, HelpWarnsOfTheLongWayRoundAndSaysWhatToUseInstead) {
  const std::string help = Zor({"blend", "--help"}).Out;
  EXPECT_THAT(help, HasSubstr("From 170 to -170 degrees that is the long way round"));
  EXPECT_THAT(help, HasSubstr("blend the directions with --mode wcs"));
  EXPECT_THAT(help, HasSubstr("zor blend \"0,0,0,0,0,1\""));
}

TEST(ZorBlend, NegativeNumbersMayComeFirst) {
  EXPECT_EQ(LinesOf(Blended("-1,0,0,0,0,1", "-10,0,0,1,0,0", {"--count", "3"})), 4);
}

TEST(ZorBlend, HalfASpacingIsRefused) {
  const std::string message = "give either --count, or --max-step and --max-angle together";
  EXPECT_THAT(Blended("0,0,0,0,0,1", "1,0,0,0,0,1", {}), RefusesUsage("zor blend", message));
  EXPECT_THAT(Blended("0,0,0,0,0,1", "1,0,0,0,0,1", {"--max-step", "1"}), RefusesUsage("zor blend", message));
  EXPECT_THAT(Blended("0,0,0,0,0,1", "1,0,0,0,0,1", {"--count", "3", "--max-step", "1"}),
              RefusesUsage("zor blend", message));
}

TEST(ZorBlend, CountsAndPosesThatCannotBeAreRefusedBeforeAnyOutput) {
  for (const std::string count : {"0", "-3", "1.5", "99999999999"}) {
    EXPECT_THAT(Blended("0,0,0,0,0,1", "1,0,0,0,0,1", {"--count", count}), EndsWith(2, HasSubstr("--count"))) << count;
  }
  EXPECT_THAT(Blended("0,0,0,0,0,0", "1,0,0,0,0,1", {"--count", "2"}), EndsWith(2, HasSubstr("found no direction")));
  EXPECT_THAT(Blended("0,0,0", "1,0,0,0,0,1", {"--count", "2"}), EndsWith(2, HasSubstr("expected 6 numbers")));
  EXPECT_THAT(Blended("0,0,0,0,0,1", "1e12,0,0,0,0,1", {"--max-step", "1e-3", "--max-angle", "1"}),
              testing::AllOf(EndsWith(1, HasSubstr("are possible")), testing::Field("Out", &TRun::Out, "")));
}

}  // namespace
}  // namespace ZORBase::Test
