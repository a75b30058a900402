#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

std::string OnePose(const TScratchFolder& Folder) {
  WriteFile(Folder.File("p.txt"), "1,2,3,1,0,0\n");
  return Folder.File("p.txt");
}

TRun Transformed(const std::string& FileName, const std::vector<std::string>& Options) {
  std::vector<std::string> args = {"transform", FileName, "--decimals", "3"};
  args.insert(args.end(), Options.begin(), Options.end());
  return Zor(args);
}

// A quarter turn about Z leads (1, 2, 3) to (-2, 1, 3) and +X to +Y.
TEST(ZorTransform, AQuarterTurnAboutZAndAShiftMovePositionsAndTurnDirections) {
  const TScratchFolder folder;
  const TRun run = Transformed(OnePose(folder), {"--zyx", "10,20,30,0,0,90", "--degrees"});
  ASSERT_THAT(run, IsDone());
  EXPECT_EQ(run.Out, "8.000,21.000,33.000,0.000,1.000,0.000\r\n");
}

// First about z, then about the fixed x: (1, 2, 3) -> (-2, 1, 3) -> (-2, -3, 1) with quarter turns.
TEST(ZorTransform, TheOrderOfTheTurnsIsThatOfItsName) {
  const TScratchFolder folder;
  const TRun xyz = Transformed(OnePose(folder), {"--xyz", "0,0,0,90,0,90", "--degrees"});
  EXPECT_EQ(xyz.Out, "-2.000,-3.000,1.000,0.000,0.000,1.000\r\n");
  // About x first: (1, -3, 2), then about z: (3, 1, 2); +X ends on +Y.
  const TRun zyx = Transformed(OnePose(folder), {"--zyx", "0,0,0,90,0,90", "--degrees"});
  EXPECT_EQ(zyx.Out, "3.000,1.000,2.000,0.000,1.000,0.000\r\n");
}

TEST(ZorTransform, AnglesAreRadiansUnlessDegreesAreAskedFor) {
  const TScratchFolder folder;
  const TRun run = Transformed(OnePose(folder), {"--zyx", "0,0,0,0,0,1.5707963267948966"});
  EXPECT_EQ(run.Out, "-2.000,1.000,3.000,0.000,1.000,0.000\r\n");
}

TEST(ZorTransform, AMatrixIsReadRowByRowWithTheShiftAtEachRowsEnd) {
  const TScratchFolder folder;
  const TRun run = Transformed(OnePose(folder), {"--matrix", "(0,-1,0,10, 1,0,0,20, 0,0,1,30)"});
  EXPECT_EQ(run.Out, "8.000,21.000,33.000,0.000,1.000,0.000\r\n");
}

TEST(ZorTransform, InvertLeadsBack) {
  const TScratchFolder folder;
  const std::vector<std::string> frame = {"--xyz", "100,-50,7,10,20,30", "--degrees", "--decimals", "9"};
  std::vector<std::string> there = {"transform", SampleFile("e387.100mm.poses.txt"), "-o", folder.File("there.txt")};
  there.insert(there.end(), frame.begin(), frame.end());
  ASSERT_THAT(Zor(there), IsDone());
  std::vector<std::string> back = {"transform", folder.File("there.txt"), "--invert", "-o", folder.File("back.txt")};
  back.insert(back.end(), frame.begin(), frame.end());
  ASSERT_THAT(Zor(back), IsDone());
  TPoint6DList before;
  TPoint6DList after;
  before.LoadFromFile(SampleFile("e387.100mm.poses.txt"));
  after.LoadFromFile(folder.File("back.txt"));
  ASSERT_EQ(after.Count(), before.Count());
  for (int i = 0; i < before.Count(); ++i) EXPECT_THAT(after[i], IsNearPose(before[i], 1e-8));
}

TEST(ZorTransform, StandardInputGoesToStandardOutput) {
  const TRun run = Shell("printf '1,2,3,0,0,1\\n' | zor transform - --matrix '1,0,0,5,0,1,0,0,0,0,1,0' --decimals 0");
  ASSERT_THAT(run, IsDone());
  EXPECT_EQ(run.Out, "6,2,3,0,0,1\r\n");
}

TEST(ZorTransform, ExactlyOneTransformIsAskedFor) {
  const TScratchFolder folder;
  EXPECT_THAT(Transformed(OnePose(folder), {}),
              RefusesUsage("zor transform", "give exactly one of --xyz, --zyx and --matrix"));
  EXPECT_THAT(Transformed(OnePose(folder), {"--xyz", "0,0,0,0,0,0", "--zyx", "0,0,0,0,0,0"}),
              RefusesUsage("zor transform", "give exactly one of --xyz, --zyx and --matrix"));
}

TEST(ZorTransform, NumbersThatAreNoTransformAreRefused) {
  const TScratchFolder folder;
  const auto is = [](const std::string& Text) { return EndsWith(2, HasSubstr(Text)); };
  EXPECT_THAT(Transformed(OnePose(folder), {"--xyz", "1,2,3"}), is("expected 6 numbers"));
  EXPECT_THAT(Transformed(OnePose(folder), {"--zyx", "1,2,3,4,5,nan"}), is("expected 6 numbers"));
  EXPECT_THAT(Transformed(OnePose(folder), {"--matrix", "2,0,0,0,0,1,0,0,0,0,1,0"}), is("is no rotation"));
  EXPECT_THAT(Transformed(OnePose(folder), {"--matrix", "1,0,0,0,0,1,0,0,0,0,1,0", "--degrees"}), is("has no angles"));
}

TEST(ZorTransform, ABadLineIsNamedAndNoFileIsLeft) {
  const TScratchFolder folder;
  WriteFile(folder.File("p.txt"), "1,2,3,1,0,0\n1,2,3,1,0\n");
  const TRun run = Transformed(folder.File("p.txt"), {"--xyz", "1,0,0,0,0,0", "-o", folder.File("out.txt")});
  EXPECT_THAT(run, EndsWith(1, HasSubstr("p.txt, line 2: found 5 items")));
  EXPECT_EQ(folder.Count(), 1U);
}

TEST(ZorTransform, HelpHasAnExample) {
  EXPECT_THAT(Zor({"transform", "--help"}).Out, HasSubstr("zor transform part.txt --zyx"));
}

}  // namespace
}  // namespace ZORBase::Test
