#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>
#include <ZORBase/common/BaseServices.h>

#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <fmt/format.h>
#include <sstream>
#include <string>
#include <vector>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

const std::string kSixHeights = "0,0,1\n2,0,3\n0,1,-1\n2,1,0.5\n1,0.4,2\n0.7,0.8,0\n";

TRun SurfaceOf(const std::string& Samples, std::vector<std::string> Options) {
  Options.insert(Options.begin(), {"surface", "-", "--decimals", "9"});
  TRunManner manner;
  manner.Input = Samples;
  return Zor(Options, manner);
}

std::vector<std::array<double, 3>> SurfaceRows(const std::string& Text) {
  std::vector<std::array<double, 3>> rows;
  std::istringstream lines(Text);
  for (std::string line; std::getline(lines, line);) {
    rows.emplace_back();
    ParseNumberRow(line.substr(0, line.find('\r')), rows.back(), nf1033, "row");
  }
  return rows;
}

TV4Interpolator LibrarySurface(const std::string& Samples) {
  TV4Interpolator surface;
  for (const auto& row : SurfaceRows(Samples)) surface.AddPoint(row[0], row[1], row[2]);
  surface.CalcWeights();
  return surface;
}

TEST(ZorSurface, AGridRunsOverTheBoxOfTheSamplesRowByRow) {
  const TRun run = SurfaceOf(kSixHeights, {"--grid", "5,3"});
  ASSERT_THAT(run, IsDone());
  const auto rows = SurfaceRows(run.Out);
  ASSERT_EQ(rows.size(), 15U);
  const TV4Interpolator surface = LibrarySurface(kSixHeights);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_EQ(rows[i][0], 0.5 * static_cast<double>(i % 5)) << i;
    EXPECT_EQ(rows[i][1], 0.5 * static_cast<double>(i / 5)) << i;
    EXPECT_NEAR(rows[i][2], surface.CalcZ(rows[i][0], rows[i][1]), 1e-9) << i;
  }
  EXPECT_NEAR(rows[0][2], 1, 1e-9);  // the corners are samples
  EXPECT_NEAR(rows[14][2], 0.5, 1e-9);
}

TEST(ZorSurface, PlacesAreAnsweredInTheirOrder) {
  const TScratchFolder folder;
  WriteFile(folder.File("at.txt"), "2,0\n0.7 0.8\n5,5\n");
  const TRun run = SurfaceOf(kSixHeights, {"--at", folder.File("at.txt")});
  ASSERT_THAT(run, IsDone());
  const auto rows = SurfaceRows(run.Out);
  ASSERT_EQ(rows.size(), 3U);
  EXPECT_NEAR(rows[0][2], 3, 1e-9);
  EXPECT_NEAR(rows[1][2], 0, 1e-9);
  EXPECT_EQ(rows[2][0], 5);
  EXPECT_NEAR(rows[2][2], LibrarySurface(kSixHeights).CalcZ(5, 5), 1e-8);
}

TEST(ZorSurface, PlacesComeFromStandardInputWhenTheSamplesDoNot) {
  const TScratchFolder folder;
  WriteFile(folder.File("s.txt"), kSixHeights);
  TRunManner manner;
  manner.Input = "0,1\n";
  const TRun run = Zor({"surface", folder.File("s.txt"), "--at", "-", "--decimals", "3"}, manner);
  EXPECT_THAT(run, IsDone());
  EXPECT_EQ(run.Out, "0.000,1.000,-1.000\r\n");
}

// More than one block of places.
TEST(ZorSurface, ManyPlacesAreAllAnswered) {
  const auto rows = SurfaceRows(SurfaceOf(kSixHeights, {"--grid", "101,99"}).Out);
  ASSERT_EQ(rows.size(), 9999U);
  const TV4Interpolator surface = LibrarySurface(kSixHeights);
  for (std::size_t i = 0; i < rows.size(); i += 101)
    EXPECT_NEAR(rows[i][2], surface.CalcZ(rows[i][0], rows[i][1]), 1e-7);
}

TEST(ZorSurface, TheResultCanGoToAFile) {
  const TScratchFolder folder;
  const TRun run = SurfaceOf(kSixHeights, {"--grid", "2,2", "-o", folder.File("map.txt")});
  EXPECT_THAT(run, IsDone());
  EXPECT_EQ(run.Out, "");
  EXPECT_EQ(SurfaceRows(FileText(folder.File("map.txt"))).size(), 4U);
}

TEST(ZorSurface, TwoSamplesAtOnePlaceAreNamed) {
  EXPECT_THAT(
      SurfaceOf("0,0,1\n1,1,2\n0,0,3\n", {"--grid", "2,2"}),
      RefusesInput("zor surface: standard input, line 3: found a second sample at the place 0,0 of line 1, expected "
                   "another place. Remove one of them."));
}

TEST(ZorSurface, ASurfaceThatMissesItsSamplesIsWarnedOf) {
  const TRun run = SurfaceOf("3,4,5\n", {"--grid", "2,2"});
  EXPECT_THAT(
      run,
      EndsWith(0, testing::StartsWith("zor: warning: standard input, line 1: the surface misses this sample by 5;")));
  EXPECT_EQ(SurfaceRows(run.Out).size(), 4U);
  // Entries near the end of the range of a double have no decomposition.
  EXPECT_THAT(SurfaceOf("0,0,1\n1e149,0,2\n-1e149,0,2\n", {"--grid", "2,2"}),
              EndsWith(0, HasSubstr("misses this sample")));
}

TEST(ZorSurface, SamplesThatAreNoRowsAreNamed) {
  EXPECT_THAT(SurfaceOf("0,0,1\n1,1\n", {"--grid", "2,2"}),
              EndsWith(1, HasSubstr("standard input, line 2: found 2 items in \"1,1\", expected 3 numbers (x,y,z)")));
  EXPECT_THAT(SurfaceOf("", {"--grid", "2,2"}),
              EndsWith(1, HasSubstr("found no samples, expected one per line: (x,y,z)")));
}

TEST(ZorSurface, MoreSamplesThanTheMatrixHoldsAreRefused) {
  std::string text;
  for (int i = 0; i < 11586; ++i) text += fmt::format("{},0,0\n", i);
  EXPECT_THAT(SurfaceOf(text, {"--grid", "2,2"}),
              EndsWith(1, HasSubstr("standard input, line 11586: found more than 11585 samples")));
}

TEST(ZorSurface, ABadPlaceIsNamedAndLeavesNoFile) {
  const TScratchFolder folder;
  const std::string places = folder.File("at.txt");
  WriteFile(places, "1,1\nx,1\n");
  EXPECT_THAT(SurfaceOf(kSixHeights, {"--at", places, "-o", folder.File("out.txt")}),
              EndsWith(1, HasSubstr(places + ", line 2: found \"x\" as number 1, expected 2 numbers (x,y)")));
  EXPECT_EQ(folder.Count(), 1U);
  WriteFile(places, "");
  EXPECT_THAT(SurfaceOf(kSixHeights, {"--at", places}), EndsWith(1, HasSubstr("found no places")));
}

TEST(ZorSurface, WhatDoesNotGoTogetherIsRefused) {
  const auto refuses = [](const std::vector<std::string>& Args, const std::string& Message) {
    EXPECT_THAT(Zor(Args), RefusesUsage("zor surface", Message));
  };
  refuses({"surface", "s.txt"}, "give either --at or --grid");
  refuses({"surface", "s.txt", "--at", "a.txt", "--grid", "2,2"}, "give either --at or --grid");
  refuses({"surface", "-", "--at", "-"}, "only one of SAMPLES and --at can be standard input");
  const auto badGrid = [](const std::string& Found) {
    return "--grid: found '" + Found + "', expected two whole numbers from 2 upwards, together at most 50000000 places";
  };
  refuses({"surface", "s.txt", "--grid", "1,5"}, badGrid("1,5"));
  refuses({"surface", "s.txt", "--grid", "5,2.5"}, badGrid("5,2.5"));
  refuses({"surface", "s.txt", "--grid", "10000,10000"}, badGrid("10000,10000"));
  EXPECT_THAT(Zor({"surface", "s.txt", "--grid", "5"}),
              EndsWith(2, HasSubstr("--grid: found '5', expected 2 numbers")));
}

TEST(ZorSurface, AMapIsDrawn) {
  ASSERT_TRUE(HasGnuplot());
  const TScratchFolder folder;
  for (const std::string& samples : {kSixHeights, std::string("0,0,1\n0,1,2\n0,2,1\n"), std::string("3,4,0\n")}) {
    const std::string map = folder.File("map.svg");
    const TRun run = SurfaceOf(samples, {"--grid", "2,2", "--plot", map});
    ASSERT_THAT(run, IsDone()) << samples;
    EXPECT_THAT(FileText(map), HasSubstr("samples"));
    EXPECT_THAT(FileText(map), HasSubstr("height"));
  }
}

}  // namespace
}  // namespace ZORBase::Test
