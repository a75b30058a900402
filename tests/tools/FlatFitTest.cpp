#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <fmt/format.h>
#include <cmath>
#include <nlohmann/json.hpp>
#include <string>

namespace ZORBase::Test {
namespace {

// The report of "zor plane" or "zor line" about a text.
nlohmann::json FlatReportOf(const std::string& Command, const std::string& Text) {
  TRunManner manner;
  manner.Input = Text;
  const TRun run = Zor({Command, "-", "--json"}, manner);
  EXPECT_THAT(run, IsDone());
  return nlohmann::json::parse(run.Out, nullptr, false);
}

// A tilted plane: every point has the height 2 + x / 2 - y / 4 and, beside the four of a cross, something at right angles.
TEST(ZorPlane, FindsAPlaneThatAllPointsLieOn) {
  std::string text;
  for (int x = -3; x <= 3; ++x) {
    for (int y = -3; y <= 3; ++y) text += fmt::format("{},{},{}\n", x, y, 2 + x / 2.0 - y / 4.0);
  }
  const auto report = FlatReportOf("plane", text);
  EXPECT_EQ(report["points"].get<int>(), 49);
  const double length = std::sqrt(0.25 + 0.0625 + 1);
  const double sign = report["normal"]["z"].get<double>() < 0 ? -1 : 1;
  EXPECT_NEAR(sign * report["normal"]["x"].get<double>(), -0.5 / length, 1e-14);
  EXPECT_NEAR(sign * report["normal"]["y"].get<double>(), 0.25 / length, 1e-14);
  EXPECT_NEAR(sign * report["normal"]["z"].get<double>(), 1 / length, 1e-14);
  EXPECT_NEAR(sign * report["offset"].get<double>(), -2 / length, 1e-14);
  EXPECT_NEAR(report["distances"]["rms"].get<double>(), 0, 1e-14);
  EXPECT_NEAR(report["distances"]["largest"]["distance"].get<double>(), 0, 1e-13);
  EXPECT_GT(report["ratio"].get<double>(), 1e6);
  EXPECT_TRUE(report["warnings"].empty());
}

// The corners of a square of side 2 at the height 0, and its middle above and below: three directions of squares 4, 4 and 2 h^2.
TEST(ZorPlane, TellsTheDistancesAndWhereTheLargestIs) {
  const auto report = FlatReportOf("plane", "1,1,0\n-1,1,0\n0,0,0.25\n-1,-1,0\n1,-1,0\n0,0,-0.25\n");
  EXPECT_NEAR(std::fabs(report["normal"]["z"].get<double>()), 1, 1e-15);
  EXPECT_NEAR(report["offset"].get<double>(), 0, 1e-15);
  EXPECT_NEAR(report["distances"]["rms"].get<double>(), std::sqrt(2 * 0.0625 / 6), 1e-15);
  EXPECT_NEAR(report["distances"]["largest"]["distance"].get<double>(), 0.25, 1e-15);
  EXPECT_EQ(report["distances"]["largest"]["line"].get<int>(), 3);
  EXPECT_NEAR(report["ratio"].get<double>(), 2 / std::sqrt(0.125), 1e-12);
}

// Far from the origin the distances keep their digits.
TEST(ZorPlane, LargeCoordinatesDoNotDrownTheDistances) {
  const auto report =
      FlatReportOf("plane", "1000001,1,0\n999999,1,0\n1000000,0,0.25\n999999,-1,0\n1000001,-1,0\n1000000,0,-0.25\n");
  EXPECT_NEAR(report["distances"]["largest"]["distance"].get<double>(), 0.25, 1e-12);
}

TEST(ZorPlane, PointsOnALineAreWarnedOf) {
  const auto report = FlatReportOf("plane", "0,0,0\n1,1,1\n2,2,2\n");
  ASSERT_EQ(report["warnings"].size(), 1U);
  EXPECT_THAT(report["warnings"][0].get<std::string>(), testing::StartsWith("no plane stands out: "));
}

TEST(ZorPlane, SaysItInWordsToo) {
  TRunManner manner;
  manner.Input = "1,1,0\n-1,1,0\n0,0,0.25\n-1,-1,0\n1,-1,0\n0,0,-0.25\n";
  const TRun run = Zor({"plane", "-"}, manner);
  ASSERT_THAT(run, IsDone());
  EXPECT_THAT(run.Out, testing::ContainsRegex("largest +0.250000 +line 3\n"));
  EXPECT_THAT(run.Out, testing::ContainsRegex("ratio +5.656854\n"));
}

TEST(ZorLine, FindsALineThatAllPointsLieOn) {
  const auto report = FlatReportOf("line", "0,1\n4,4\n8,7\n");  // 3 x - 4 y + 4 = 0
  const double sign = report["normal"]["x"].get<double>() < 0 ? -1 : 1;
  EXPECT_NEAR(sign * report["normal"]["x"].get<double>(), 0.6, 1e-15);
  EXPECT_NEAR(sign * report["normal"]["y"].get<double>(), -0.8, 1e-15);
  EXPECT_NEAR(sign * report["offset"].get<double>(), 0.8, 1e-14);
  EXPECT_NEAR(report["distances"]["rms"].get<double>(), 0, 1e-14);
}

// A cross: 3 to either side along x, 1 along y. The squares are 18 along and 2 across.
TEST(ZorLine, TheRatioIsThatOfTheSpreadAlongAndAcross) {
  const auto report = FlatReportOf("line", "3,0\n-3,0\n0,-1\n0,1\n");
  EXPECT_NEAR(report["ratio"].get<double>(), 3, 1e-14);
  EXPECT_NEAR(report["distances"]["rms"].get<double>(), std::sqrt(0.5), 1e-15);
  EXPECT_EQ(report["distances"]["largest"]["line"].get<int>(), 3);
}

// The line of the profile of chord 1, computed with 50 digits: this file has the chord 100.
TEST(ZorLine, IsExactOnTheWingProfile) {
  std::string text;
  TPoint6DList profile;
  profile.LoadFromFile(SampleFile("e387.100mm.poses.txt"));
  for (const TPoint6D& point : profile) text += fmt::format("{},{}\n", point.X, point.Y);
  const auto report = FlatReportOf("line", text);
  EXPECT_EQ(report["points"].get<int>(), 61);
  const double sign = report["normal"]["y"].get<double>() < 0 ? -1 : 1;
  EXPECT_NEAR(sign * report["normal"]["x"].get<double>(), 0.010382744522808491, 1e-12);
  EXPECT_NEAR(sign * report["normal"]["y"].get<double>(), 0.99994609785536645, 1e-12);
  EXPECT_NEAR(sign * report["offset"].get<double>(), -2.5123740453718078, 1e-10);
}

TEST(ZorLine, PointsThatAreAllTheSameAreWarnedOf) {
  EXPECT_EQ(FlatReportOf("line", "2,3\n2,3\n")["warnings"].size(), 1U);
}

TEST(FlatFits, TooFewPointsAreRefused) {
  TRunManner manner;
  manner.Input = "1,2,3\n4,5,6\n";
  EXPECT_THAT(Zor({"plane", "-"}, manner),
              RefusesInput("zor plane: standard input: found 2 points, expected at least 3 for a plane."));
  manner.Input = "1,2\n";
  EXPECT_THAT(Zor({"line", "-"}, manner),
              RefusesInput("zor line: standard input: found 1 point, expected at least 2 for a line."));
  manner.Input = "";
  EXPECT_THAT(
      Zor({"line", "-"}, manner),
      RefusesInput("zor line: standard input: found no points, expected one per line: (x,y). Name another file."));
}

TEST(FlatFits, ABadLineIsNamed) {
  TRunManner manner;
  manner.Input = "1,2,3\n4,5\n";
  EXPECT_THAT(Zor({"plane", "-"}, manner),
              RefusesInput("zor plane: standard input, line 2: found 2 items in \"4,5\", expected 3 numbers (x,y,z). "
                           "Complete the line or remove it."));
  EXPECT_THAT(Zor({"plane", "/nowhere/x"}), EndsWith(1, testing::StartsWith("zor plane: ")));
  EXPECT_THAT(Zor({"plane"}), EndsWith(2, testing::HasSubstr("FILE")));
}

}  // namespace
}  // namespace ZORBase::Test
