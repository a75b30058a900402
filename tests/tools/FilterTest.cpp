#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <fmt/format.h>
#include <cmath>
#include <numbers>
#include <vector>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

TRun Filtered(const std::string& Text, std::vector<std::string> Options) {
  Options.insert(Options.begin(), {"filter", "-", "--decimals", "9"});
  TRunManner manner;
  manner.Input = Text;
  return Zor(Options, manner);
}

std::string Cosine(double Frequency, double Fs, int Samples) {
  std::string text;
  for (int i = 0; i < Samples; ++i) {
    text += fmt::format("{:.12f}\n", std::cos(2 * std::numbers::pi * Frequency * i / Fs));
  }
  return text;
}

double LargestOf(const std::vector<std::vector<double>>& Rows, std::size_t From) {
  double largest = 0;
  for (std::size_t i = From; i < Rows.size(); ++i) largest = std::max(largest, std::fabs(Rows[i].back()));
  return largest;
}

TEST(ZorFilter, AConstantPassesFromItsFirstSampleOn) {
  for (const std::string window : {"hamming", "blackman", "rectangle", "average"}) {
    const TRun run = Filtered("5\n5\n5\n5\n5\n5\n", {"--fs", "100", "--fc", "10", "--window", window});
    ASSERT_THAT(run, IsDone()) << window;
    const auto rows = RowsOf(run.Out);
    ASSERT_EQ(rows.size(), 6U) << window;
    for (const auto& row : rows) EXPECT_NEAR(row[0], 5, 1e-9) << window;
  }
}

TEST(ZorFilter, LowFrequenciesPassAndHighOnesDoNot) {
  const std::vector<std::string> design = {"--fs", "1000", "--fc", "50", "--order", "101"};
  EXPECT_GT(LargestOf(RowsOf(Filtered(Cosine(10, 1000, 1000), design).Out), 200), 0.97);
  EXPECT_LT(LargestOf(RowsOf(Filtered(Cosine(200, 1000, 1000), design).Out), 200), 0.01);
}

// fs / 2 / fc = 5 makes 5 coefficients; each output is the mean of the last five samples, the first one counting backwards.
TEST(ZorFilter, TheAverageIsThatOfTheLastSamples) {
  const auto rows =
      RowsOf(Filtered("0\n0\n5\n10\n0\n0\n0\n", {"--fs", "100", "--fc", "10", "--window", "average"}).Out);
  const std::vector<double> expected = {0, 0, 1, 3, 3, 3, 3};
  ASSERT_EQ(rows.size(), expected.size());
  for (std::size_t i = 0; i < expected.size(); ++i) EXPECT_NEAR(rows[i][0], expected[i], 1e-9);
}

// One sample time, then three more of them: four outputs in all, whose times follow on each other.
TEST(ZorFilter, IrregularTimesAreResampledToTheSampleTime) {
  const TRun run = Filtered("7,2\n7.25,2\n8,2\n", {"--fs", "4", "--fc", "1", "--times"});
  ASSERT_THAT(run, IsDone());
  const auto rows = RowsOf(run.Out);
  ASSERT_EQ(rows.size(), 4U);
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_NEAR(rows[i][0], 7.25 + 0.25 * static_cast<double>(i), 1e-9);
    EXPECT_NEAR(rows[i][1], 2, 1e-9);
  }
}

TEST(ZorFilter, TimesThatFallAreNamed) {
  EXPECT_THAT(Filtered("0,1\n1,1\n0.5,1\n", {"--fs", "4", "--fc", "1", "--times"}),
              EndsWith(1, HasSubstr("standard input, line 3: found the time 0.5 behind 1")));
}

TEST(ZorFilter, TheResponseIsOneAtRestAndFallsOffBehindTheCutOff) {
  const TRun run = Zor({"filter", "--fs", "1000", "--fc", "50", "--order", "101", "--response"});
  ASSERT_THAT(run, IsDone());
  const auto rows = RowsOf(run.Out);
  ASSERT_EQ(rows.size(), 501U);
  EXPECT_EQ(rows[0][0], 0);
  EXPECT_NEAR(rows[0][1], 1, 1e-6);
  EXPECT_EQ(rows[50][0], 50);
  EXPECT_NEAR(rows[50][1], 0.5, 0.05);  // a windowed ideal low pass halves the amplitude at its cut-off
  EXPECT_LT(rows[100][1], 0.01);
}

TEST(ZorFilter, WhatDoesNotGoTogetherIsRefused) {
  EXPECT_THAT(Zor({"filter", "--fs", "10", "--fc", "1"}), RefusesUsage("zor filter", "name a FILE"));
  EXPECT_THAT(Zor({"filter", "x.txt", "--fs", "10", "--fc", "1", "--response"}),
              EndsWith(2, HasSubstr("needs no FILE")));
  EXPECT_THAT(Zor({"filter", "x.txt", "--fs", "10", "--fc", "1", "--window", "average", "--order", "5"}),
              EndsWith(2, HasSubstr("--order goes with the windows")));
  EXPECT_THAT(Zor({"filter", "x.txt", "--fs", "10"}), EndsWith(2, HasSubstr("--fc")));
  EXPECT_THAT(Zor({"filter", "x.txt", "--fs", "10", "--fc", "1", "--window", "kaiser"}),
              EndsWith(2, HasSubstr("--window")));
  EXPECT_THAT(Zor({"filter", "x.txt", "--fs", "1e9", "--fc", "1e-9"}), EndsWith(2, HasSubstr("zor filter: ")));
}

TEST(ZorFilter, ABadLineLeavesNoFile) {
  const TScratchFolder folder;
  EXPECT_THAT(Filtered("1\n2\nx\n", {"--fs", "10", "--fc", "1", "-o", folder.File("out.txt")}),
              EndsWith(1, HasSubstr("line 3: found \"x\" as number 1")));
  EXPECT_EQ(folder.Count(), 0U);
}

TEST(ZorFilter, APictureOfBothSignalsIsDrawn) {
  ASSERT_TRUE(HasGnuplot());
  const TScratchFolder folder;
  const TRun run = Filtered(Cosine(10, 1000, 300), {"--fs", "1000", "--fc", "50", "--plot", folder.File("f.svg")});
  ASSERT_THAT(run, IsDone());
  EXPECT_THAT(FileText(folder.File("f.svg")), HasSubstr("as measured"));
}

}  // namespace
}  // namespace ZORBase::Test
