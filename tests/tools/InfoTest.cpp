#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <array>
#include <nlohmann/json.hpp>

namespace ZORBase::Test {
namespace {

using nlohmann::json;
using testing::HasSubstr;
using testing::Not;

json InfoOf(const std::string& FileName) {
  const TRun run = Zor({"info", FileName, "--json"});
  EXPECT_THAT(run, IsDone());
  return json::parse(run.Out);
}

// The expected figures were computed from the decimal texts in 50-digit arithmetic (mpmath), apart from this library.

TEST(ZorInfo, GivesTheFiguresOfTheSweptPlane) {
  const json info = InfoOf(SampleFile("swept-plane.poses.txt"));
  EXPECT_EQ(info["poses"], 708);
  EXPECT_NEAR(info["chords"]["sum"].get<double>(), 10632.311257910581, 1e-8);
  EXPECT_NEAR(info["chords"]["mean"].get<double>(), 15.038629784880596, 1e-11);
  EXPECT_NEAR(info["chords"]["smallest"]["distance"].get<double>(), 0.092349393981627728, 1e-13);
  EXPECT_EQ(info["chords"]["smallest"]["lines"], json({10, 11}));
  EXPECT_NEAR(info["chords"]["largest"]["distance"].get<double>(), 184.32099702140207, 1e-11);
  EXPECT_EQ(info["chords"]["largest"]["lines"], json({1, 2}));
  EXPECT_NEAR(info["directions"]["shortest"]["length"].get<double>(), 0.99999999995211159, 1e-15);
  EXPECT_NEAR(info["directions"]["longest"]["length"].get<double>(), 1.0000000000378009, 1e-15);
  EXPECT_NEAR(info["turn"]["largest"]["degreesPerLength"].get<double>(), 50.0312402579866, 1e-10);
  EXPECT_NEAR(info["turn"]["largest"]["degrees"].get<double>(), 10.9677310878667, 1e-10);
  EXPECT_EQ(info["closeNeighbours"], json::array());
  EXPECT_EQ(info["warnings"], json::array());
}

TEST(ZorInfo, GivesAllSixSidesOfTheBox) {
  const json box = InfoOf(SampleFile("swept-plane.poses.txt"))["box"];
  const std::array<std::tuple<const char*, double, double>, 6> sides = {{{"X", -50.2030474253, 143.4574510854},
                                                                         {"Y", -25.1202845364, 80.3638450017},
                                                                         {"Z", 30.1685330038, 200.0},
                                                                         {"A", -0.5, 0.5},
                                                                         {"B", 0.2961981327, 0.3416249726},
                                                                         {"C", 0.8137976813, 0.9386068982}}};
  for (const auto& [name, min, max] : sides) {
    EXPECT_EQ(box[name]["min"].get<double>(), min) << name;
    EXPECT_EQ(box[name]["max"].get<double>(), max) << name;
    EXPECT_EQ(box[name]["size"].get<double>(), max - min) << name;
  }
}

TEST(ZorInfo, GivesTheFiguresOfTheWingProfile) {
  const json info = InfoOf(SampleFile("e387.100mm.poses.txt"));
  EXPECT_EQ(info["poses"], 61);
  EXPECT_NEAR(info["chords"]["sum"].get<double>(), 202.8456121009547, 1e-11);
  EXPECT_NEAR(info["chords"]["smallest"]["distance"].get<double>(), 0.32584965858505975, 1e-13);
  EXPECT_EQ(info["chords"]["smallest"]["lines"], json({1, 2}));
  EXPECT_NEAR(info["chords"]["largest"]["distance"].get<double>(), 5.5144095785496383, 1e-13);
  EXPECT_EQ(info["chords"]["largest"]["lines"], json({47, 48}));
  EXPECT_EQ(info["turn"]["largest"]["degrees"], 0.0);
}

// The same figures as those of the poses, with a chord of 1 instead of 100.
TEST(ZorInfo, OfAPlaneProfileHasABoxAndDistancesButNoDirections) {
  const TRun run = Zor({"info", SampleFile("e387.xy.txt"), "--2d", "--json"});
  ASSERT_THAT(run, IsDone());
  const json info = json::parse(run.Out);
  EXPECT_EQ(info["points"], 61);
  EXPECT_EQ(info["box"].size(), 2U);
  EXPECT_EQ(info["box"]["X"]["min"], 0.00044);
  EXPECT_EQ(info["box"]["X"]["max"], 1.0);
  EXPECT_NEAR(info["chords"]["sum"].get<double>(), 2.028456121009547, 1e-13);
  EXPECT_EQ(info["chords"]["smallest"]["lines"], json({1, 2}));
  EXPECT_EQ(info["chords"]["largest"]["lines"], json({47, 48}));
  EXPECT_FALSE(info.contains("directions"));
  EXPECT_FALSE(info.contains("turn"));
  EXPECT_EQ(info["closeNeighbours"], json::array());
}

TEST(ZorInfo, APointTwiceInAPlaneProfileIsListed) {
  const TScratchFolder folder;
  WriteFile(folder.File("xy.txt"), "0,0\n1,0\n1,0\n2,5\n");
  const TRun run = Zor({"info", folder.File("xy.txt"), "--2d"});
  ASSERT_THAT(run, IsDone());
  EXPECT_THAT(run.Out, HasSubstr("the same point: no fit\n"));
}

TEST(ZorInfo, AsTextSaysTheSame) {
  const TRun run = Zor({"info", SampleFile("e387.100mm.poses.txt")});
  ASSERT_THAT(run, IsDone());
  EXPECT_THAT(run.Out, HasSubstr("poses       61\n"));
  EXPECT_THAT(run.Out, HasSubstr("  X                 0.044000        100.000000         99.956000\n"));
  EXPECT_THAT(run.Out, HasSubstr("  smallest          0.325850         lines 1-2\n"));
  EXPECT_THAT(run.Out, HasSubstr("  sum             202.845612\n"));
  EXPECT_THAT(run.Out, HasSubstr("Near-duplicates: none\n"));
  EXPECT_THAT(run.Out, Not(HasSubstr("Warning")));
}

TEST(ZorInfo, NamesNearDuplicatesByTheirLines) {
  const TScratchFolder folder;
  WriteFile(
      folder.File("p.txt"),
      "0,0,0,0,0,1\r\n50,0,0,0,0,1\r\n50,0,0,0,0,1\r\n50.00005,0,0,0,0,1\r\n50.0002,0,0,0,0,1\r\n100,0,0,0,0,1\r\n");
  const TRun run = Zor({"info", folder.File("p.txt")});
  ASSERT_THAT(run, IsDone());
  EXPECT_THAT(run.Out, HasSubstr("Near-duplicates: 3\n"));
  EXPECT_THAT(run.Out, HasSubstr("lines 2-3                 0  the same pose: no fit\n"));
  EXPECT_THAT(run.Out, HasSubstr("lines 3-4             5e-05  too close: no fit by chord\n"));
  EXPECT_THAT(run.Out, HasSubstr("lines 4-5           0.00015  dangerously close\n"));
}

TEST(ZorInfo, WarnsOfStepsThatLookLikeMetres) {
  const TScratchFolder folder;
  std::string text;
  for (int i = 0; i < 10; ++i) text += "0.00" + std::to_string(i) + ",0,0,0,0,1\n";
  WriteFile(folder.File("p.txt"), text);
  const std::string warning =
      "the poses are 0.001 apart on average, closer than 0.03 where lengths along a path are tabulated; the length "
      "between "
      "two poses is then a straight line. If the file is in metres, multiply X,Y,Z by 1000.";
  EXPECT_EQ(InfoOf(folder.File("p.txt"))["warnings"], json::array({warning}));
  EXPECT_THAT(Zor({"info", folder.File("p.txt")}).Out, testing::EndsWith("\nWarning: " + warning + "\n"));
  EXPECT_THAT(Zor({"resample", folder.File("p.txt"), "--count", "3"}),
              EndsWith(0, "zor: warning: " + folder.File("p.txt") + ": " + warning + "\n"));
}

TEST(ZorInfo, WarnsOfDirectionsThatAreNone) {
  const TScratchFolder folder;
  WriteFile(folder.File("p.txt"), "0,0,0,0,0,1\n1,0,0,1.5,0,2\n");
  EXPECT_EQ(
      InfoOf(folder.File("p.txt"))["warnings"],
      json::array({"the direction of line 2 is 2.5 long and not 1. Do A, B, C stand in the last three columns?"}));
}

TEST(ZorInfo, ASinglePoseHasABoxAndNoDistances) {
  const TScratchFolder folder;
  WriteFile(folder.File("p.txt"), "1,2,3,0,0,1");
  const json info = InfoOf(folder.File("p.txt"));
  EXPECT_EQ(info["poses"], 1);
  EXPECT_EQ(info["box"]["Z"]["max"], 3.0);
  EXPECT_FALSE(info.contains("chords"));
}

TEST(ZorInfo, ReadsStandardInput) {
  const TRun run = Zor({"info", "-", "--json"}, {FileText(SampleFile("e387.100mm.poses.txt")), {}, false, {}});
  ASSERT_THAT(run, IsDone());
  EXPECT_EQ(json::parse(run.Out)["file"], "standard input");
  EXPECT_EQ(json::parse(run.Out)["poses"], 61);
}

TEST(ZorInfo, ADecimalCommaInTheLocaleChangesNothing) {
  const std::vector<std::string> args = {"info", SampleFile("swept-plane.poses.txt")};
  EXPECT_EQ(Zor(args, {"", {}, false, {"LC_ALL=de_DE.UTF-8"}}).Out, Zor(args).Out);
}

}  // namespace
}  // namespace ZORBase::Test
