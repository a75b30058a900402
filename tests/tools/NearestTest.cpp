#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <cmath>
#include <nlohmann/json.hpp>

namespace ZORBase::Test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

json NearestOf(const std::string& FileName, const std::string& To, const std::vector<std::string>& Options = {}) {
  std::vector<std::string> args = {"nearest", FileName, "--to", To, "--json"};
  args.insert(args.end(), Options.begin(), Options.end());
  const TRun run = Zor(args);
  EXPECT_THAT(run, IsDone());
  return json::parse(run.Out);
}

// Four poses on the X axis.
std::string LineFile(const TScratchFolder& Folder) {
  WriteFile(Folder.File("line.txt"), "0,0,0,0,0,1\n1,0,0,0,0,1\n2,0,0,0,0,1\n3,0,0,0,0,1\n");
  return Folder.File("line.txt");
}

TEST(ZorNearest, OnAStraightPathIsTheFootOfThePerpendicular) {
  const TScratchFolder folder;
  const json nearest = NearestOf(LineFile(folder), "1.25, 2, 0, 0,0,1");
  EXPECT_NEAR(nearest["parameter"].get<double>(), 1.25 / 3, 1e-12);
  EXPECT_NEAR(nearest["length"].get<double>(), 1.25, 1e-9);
  EXPECT_NEAR(nearest["distance"].get<double>(), 2, 1e-12);
  EXPECT_EQ(nearest["lines"], json({2, 3}));
  EXPECT_EQ(nearest["method"], "chord");
  EXPECT_NEAR(nearest["pose"]["X"].get<double>(), 1.25, 1e-12);
  EXPECT_EQ(nearest["pose"]["Y"], 0.0);
  EXPECT_EQ(nearest["pose"]["C"], 1.0);
  EXPECT_EQ(nearest["pose"].size(), 6U);
}

// The direction turns about X on the way: the pose is where the tool is turned like the one given, not where X is nearest.
TEST(ZorNearest, TheDirectionCountsLikeThePosition) {
  const TScratchFolder folder;
  WriteFile(folder.File("p.txt"), "0,0,0,0,0,0\n0.001,0,0,0,0,1\n0.002,0,0,0,0,2\n0.003,0,0,0,0,3\n");
  const json nearest = NearestOf(folder.File("p.txt"), "0.003,0,0,0,0,1.5");
  EXPECT_NEAR(nearest["pose"]["C"].get<double>(), 1.5, 1e-5);
}

TEST(ZorNearest, AtTheEndsTheLinesAreTheFirstAndTheLastTwo) {
  const TScratchFolder folder;
  const std::string file = LineFile(folder);
  EXPECT_EQ(NearestOf(file, "-7,0,0,0,0,1")["lines"], json({1, 2}));
  EXPECT_EQ(NearestOf(file, "-7,0,0,0,0,1")["parameter"], 0.0);
  EXPECT_EQ(NearestOf(file, "7,0,0,0,0,1")["lines"], json({3, 4}));
  EXPECT_EQ(NearestOf(file, "7,0,0,0,0,1")["parameter"], 1.0);
  EXPECT_NEAR(NearestOf(file, "7,0,0,0,0,1")["length"].get<double>(), 3, 1e-12);
}

TEST(ZorNearest, APoseOfTheFileLiesOnThePathByEveryMethod) {
  for (const char* const method : {"equal", "chord", "centripetal"}) {
    const json nearest = NearestOf(SampleFile("swept-plane.poses.txt"),  // line 21
                                   "49.9492381437,-23.9327845364,30.1685330038,.1428571429,.3385121517,.9300544930",
                                   {"--method", method});
    EXPECT_EQ(nearest["method"], method);
    EXPECT_LT(nearest["distance"].get<double>(), 1e-9) << method;
    EXPECT_THAT(nearest["lines"].get<std::vector<int>>(), testing::Contains(21)) << method;
  }
}

// No point that resample gives is closer.
TEST(ZorNearest, NoPlaceOfThePathIsCloser) {
  const std::string file = SampleFile("e387.xy.txt");
  for (const auto& [x, y] : {std::pair{0.3, 0.05}, {0.02, 0.0}, {1.2, 0.01}, {0.5, -3.0}, {0.005, 0.001}}) {
    const json nearest = NearestOf(file, Format1033("%.3f,%.3f", x, y), {"--2d"});
    const double distance = nearest["distance"].get<double>();
    EXPECT_NEAR(std::hypot(nearest["point"]["X"].get<double>() - x, nearest["point"]["Y"].get<double>() - y), distance,
                1e-12);
    double sampled = 1e9;
    for (const auto& point : RowsOf(Zor({"resample", file, "--2d", "--count", "5000", "--decimals", "12"}).Out)) {
      sampled = std::min(sampled, std::hypot(point[0] - x, point[1] - y));
    }
    EXPECT_LE(distance, sampled + 1e-11) << x;
    EXPECT_NEAR(distance, sampled, 1e-4) << x;
  }
}

TEST(ZorNearest, AsTextSaysTheSame) {
  const TScratchFolder folder;
  const TRun run = Zor({"nearest", LineFile(folder), "--to", "(1.25,2,0,0,0,1)"});
  ASSERT_THAT(run, IsDone());
  EXPECT_THAT(run.Out, HasSubstr("distance                  2.000000\n"));
  EXPECT_THAT(run.Out, HasSubstr("length from the start     1.250000\n"));
  EXPECT_THAT(run.Out, HasSubstr("between                   lines 2-3\n"));
  EXPECT_THAT(run.Out, HasSubstr("\nClosest place\n  X                       1.250000\n"));
}

TEST(ZorNearest, ReadsStandardInput) {
  const std::string file = SampleFile("e387.xy.txt");
  const TRun piped = Shell("zor nearest - --2d --to 0.3,0.05 < '" + file + "'");
  ASSERT_THAT(piped, IsDone());
  EXPECT_THAT(piped.Out, HasSubstr("file                      standard input\n"));
}

TEST(ZorNearest, RefusesAPlaceThatIsNone) {
  const std::string file = SampleFile("e387.xy.txt");
  for (const std::string to : {"0.3", "1,2,3", "", "1,x", "1,nan", "inf,1", "1;2", "(1,2"}) {
    EXPECT_THAT(Zor({"nearest", file, "--2d", "--to", to}),
                RefusesUsage("zor nearest", "--to: found '" + to + "', expected 2 numbers, parted by commas"));
  }
  EXPECT_THAT(Zor({"nearest", file, "--2d", "--to", "0,1e200"}),
              RefusesUsage("zor nearest", "--to: found 1e+200, expected numbers up to 1e+150"));
  EXPECT_THAT(Zor({"nearest", "missing.txt", "--to", "1,2"}),
              RefusesUsage("zor nearest", "--to: found '1,2', expected 6 numbers, parted by commas"));
  EXPECT_THAT(Zor({"nearest", file, "--2d"}), RefusesUsage("zor nearest", "--to is required"));
}

TEST(ZorNearest, ThePictureShowsThePathAndTheWayToIt) {
  ASSERT_TRUE(HasGnuplot());
  const TScratchFolder folder;
  const std::string svg = folder.File("p.svg");
  EXPECT_THAT(Zor({"nearest", SampleFile("e387.xy.txt"), "--2d", "--to", "0.3,0.05", "--plot", svg}), IsDone());
  EXPECT_THAT(FileText(svg), testing::AllOf(HasSubstr("the closest place, 0.0310"), HasSubstr("shortest way")));
  EXPECT_THAT(Zor({"nearest", SampleFile("swept-plane.poses.txt"), "--to", "0,0,0,0,0,1", "--plot", svg}), IsDone());
}

}  // namespace
}  // namespace ZORBase::Test
