#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

TRun Converted(const std::string& Text, const std::vector<std::string>& Options = {}) {
  std::vector<std::string> args = {"convert", "-", "--from", "euler", "--to", "poses", "--decimals", "3"};
  args.insert(args.end(), Options.begin(), Options.end());
  TRunManner manner;
  manner.Input = Text;
  return Zor(args, manner);
}

// Rx(90 degrees) turns +Z onto -Y, Ry(90 degrees) onto +X.
TEST(ZorConvert, TheDirectionIsTheTurnedZAxis) {
  const TRun run = Converted("1,2,3,0,0,0\n1,2,3,90,0,0\n1,2,3,0,90,0\n1,2,3,0,90,90\n", {"--degrees"});
  ASSERT_THAT(run, IsDone());
  EXPECT_EQ(run.Out,
            "1.000,2.000,3.000,0.000,0.000,1.000\r\n1.000,2.000,3.000,0.000,-1.000,0.000\r\n"
            "1.000,2.000,3.000,1.000,0.000,0.000\r\n1.000,2.000,3.000,0.000,1.000,0.000\r\n");
}

TEST(ZorConvert, AnglesAreRadiansUnlessDegreesAreAskedFor) {
  EXPECT_EQ(Converted("0,0,0,0,1.5707963267948966,0\n").Out, "0.000,0.000,0.000,1.000,0.000,0.000\r\n");
}

TEST(ZorConvert, FormsThatItDoesNotKnowAreRefused) {
  EXPECT_THAT(Zor({"convert", "p.txt", "--from", "quaternions", "--to", "poses"}), EndsWith(2, HasSubstr("--from")));
  EXPECT_THAT(Zor({"convert", "p.txt", "--from", "euler"}), EndsWith(2, HasSubstr("--to")));
}

TEST(ZorConvert, ABadLineIsNamed) {
  EXPECT_THAT(
      Converted("0,0,0,0,0,0\n0,0,0,0,x,0\n"),
      EndsWith(1, HasSubstr("standard input, line 2: found \"x\" as number 5, expected 6 numbers X,Y,Z,Rx,Ry,Rz")));
}

TEST(ZorConvert, HelpHasAnExample) {
  EXPECT_THAT(Zor({"convert", "--help"}).Out, HasSubstr("zor convert poses.euler.txt"));
}

}  // namespace
}  // namespace ZORBase::Test
