#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <ZORBase/ZORGeometry/CADTypesXD.h>

#include <cmath>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

using TRows = std::vector<std::vector<double>>;

// Runs the command on rows of numbers.
TRun SplineOf(const std::string& Text, const std::vector<std::string>& Options = {}) {
  std::vector<std::string> args = {"spline", "-"};
  args.insert(args.end(), Options.begin(), Options.end());
  TRunManner manner;
  manner.Input = Text;
  return Zor(args, manner);
}

// Points of many coordinates on a curve, in uneven steps.
std::string Winding(int Dimension, int Count) {
  std::string text;
  for (int k = 0; k < Count; ++k) {
    const double place = k + 0.3 * std::sin(2.0 * k);
    for (int i = 0; i < Dimension; ++i) {
      text += Format1033("%s%.12f", i == 0 ? "" : ",", 10.0 * std::sin(i + (0.1 + 0.01 * i) * place));
    }
    text += "\n";
  }
  return text;
}

const std::string kLine = "0,0\n3,4\n6,8\n";

// ------------------------------------------------------------------------------------------------ what comes out

TEST(ZorSpline, ThroughPointsOnALineIsTheLine) {
  EXPECT_EQ(SplineOf(kLine, {"--samples-per-segment", "1", "--decimals", "3"}).Out,
            "0.000,0.000\r\n3.000,4.000\r\n6.000,8.000\r\n");
  EXPECT_EQ(SplineOf(kLine, {"--samples-per-segment", "2", "--decimals", "3"}).Out,
            "0.000,0.000\r\n1.500,2.000\r\n3.000,4.000\r\n4.500,6.000\r\n6.000,8.000\r\n");
  EXPECT_EQ(SplineOf(kLine, {"--step", "4", "--decimals", "3"}).Out,
            "0.000,0.000\r\n2.400,3.200\r\n4.800,6.400\r\n6.000,8.000\r\n");
}

TEST(ZorSpline, AStepThatDividesTheLengthGivesTheEndOnce) {
  EXPECT_EQ(RowsOf(SplineOf(kLine, {"--step", "2.5"}).Out).size(), 5U);
  EXPECT_EQ(RowsOf(SplineOf(kLine, {"--step", "0.1"}).Out).size(), 101U);
  EXPECT_EQ(RowsOf(SplineOf(kLine, {"--step", "1e9"}).Out).size(), 2U);
}

// The segments as the library delivers them, evaluated here.
TEST(ZorSpline, GivesPointsOfTheSegmentsOfTheCurve) {
  for (const int dimension : {1, 2, 3, 6, 44}) {
    const std::string text = Winding(dimension, 12);
    TList<TPointXD> points;
    for (const std::vector<double>& row : RowsOf(text)) points.Add(TPointXD::FromSpan(row));
    std::vector<TPointXD> expected;
    TTWoDerivCurveXD curve;
    curve.SetRenderPath([&](const TCubicBezXD& Segment) {
      for (int k = 0; k < 5; ++k) expected.push_back(Segment.EvalPoint(k / 5.0));
    });
    ASSERT_TRUE(curve.CreateCorss(points));
    expected.push_back(points.Last());
    const TRun run = SplineOf(text, {"--samples-per-segment", "5", "--decimals", "12"});
    ASSERT_THAT(run, IsDone());
    const TRows rows = RowsOf(run.Out);
    ASSERT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < rows.size(); ++i) {
      ASSERT_EQ(rows[i].size(), static_cast<std::size_t>(dimension));
      for (std::size_t k = 0; k < rows[i].size(); ++k) EXPECT_NEAR(rows[i][k], expected[i].Items[k], 1e-12);
    }
  }
}

TEST(ZorSpline, EverySixteenthPointIsARowOfTheFile) {
  const TRows given = RowsOf(Winding(6, 9));
  const TRows rows = RowsOf(SplineOf(Winding(6, 9), {"--decimals", "12"}).Out);
  ASSERT_EQ(rows.size(), 8U * 16U + 1U);
  for (std::size_t i = 0; i < given.size(); ++i) EXPECT_EQ(rows[16 * i], given[i]) << i;
}

// Points on a circle of radius 100: the chord of a step s is 200 sin(s / 200), and the curve leaves the circle by less than
// 1e-3 away from its ends.
TEST(ZorSpline, ByStepPointsAreEvenlySpaced) {
  std::string text;
  for (int k = 0; k <= 30; ++k) {
    const double angle = 0.1 * k + 0.02 * std::sin(3.0 * k);
    text += Format1033("%.12f,%.12f\n", 100 * std::cos(angle), 100 * std::sin(angle));
  }
  const TRows rows = RowsOf(SplineOf(text, {"--step", "0.5", "--decimals", "12"}).Out);
  ASSERT_GT(rows.size(), 590U);
  for (std::size_t i = 1; i + 1 < rows.size(); ++i) {
    const double chord = std::hypot(rows[i][0] - rows[i - 1][0], rows[i][1] - rows[i - 1][1]);
    EXPECT_LE(chord, 0.5 + 1e-9) << i;
    EXPECT_GT(chord, 0.5 - 1e-5) << i;
  }
  const double last = std::hypot(rows.back()[0] - rows[rows.size() - 2][0], rows.back()[1] - rows[rows.size() - 2][1]);
  EXPECT_LE(last, 0.5 + 1e-9);
  EXPECT_NEAR(rows.back()[0], 100 * std::cos(3.0 + 0.02 * std::sin(90.0)), 1e-11);
}

TEST(ZorSpline, APointTwiceInARowIsPassedTwice) {
  const TRows rows = RowsOf(SplineOf("0,0\n1,0\n1,0\n3,1\n", {"--samples-per-segment", "4"}).Out);
  ASSERT_EQ(rows.size(), 13U);
  for (std::size_t i = 4; i <= 8; ++i) EXPECT_EQ(rows[i], (std::vector<double>{1, 0})) << i;
  EXPECT_THAT(SplineOf("0,0\n1,0\n1,0\n3,1\n", {"--step", "0.1"}), IsDone());
}

TEST(ZorSpline, ToAFileGivesTheSamePointsAndPrintsNothing) {
  const TScratchFolder folder;
  const std::string file = SampleFile("swept-plane.poses.txt");
  const TRun run = Zor({"spline", file, "--step", "5", "-o", folder.File("out.txt")});
  EXPECT_THAT(run, IsDone());
  EXPECT_EQ(run.Out, "");
  EXPECT_EQ(FileText(folder.File("out.txt")), Zor({"spline", file, "--step", "5"}).Out);
  EXPECT_EQ(folder.Count(), 1U);
}

// ------------------------------------------------------------------------------------------------ refusals

TEST(ZorSpline, ARowWithAnotherCountIsNamed) {
  EXPECT_THAT(
      SplineOf("1,2,3\n4,5,6\n7,8\n"),
      RefusesInput("zor spline: standard input, line 3: found 2 items in \"7,8\", expected 3 numbers as on line "
                   "1. Complete the line or remove it."));
}

TEST(ZorSpline, PointsThatAllowNoCurveAreRefused) {
  EXPECT_THAT(
      SplineOf("1,2\n3,4\n"),
      RefusesInput("zor spline: standard input: found 2 points, expected 3 or more to fit a path through. Measure "
                   "more points."));
  EXPECT_THAT(SplineOf(""), RefusesInput("zor spline: standard input: found 0 points, expected 3 or more to fit a path "
                                         "through. Measure more points."));
  EXPECT_THAT(SplineOf("1,2\n3,4\n3,4\n3,4\n5,6\n"),
              RefusesInput("zor spline: standard input, lines 2 to 4: found the same point three times, expected "
                           "neighbours that differ. Remove two of the lines."));
  EXPECT_THAT(SplineOf("1,2\n3,1e120\n5,6\n"),
              RefusesInput("zor spline: standard input, line 2: found a point 1e+120 away from the origin, expected at "
                           "most 1e+100. Look for a lost decimal point or blank."));
}

TEST(ZorSpline, RefusesStepsAndCountsThatAreNone) {
  const TScratchFolder folder;
  const std::string out = folder.File("out.txt");
  for (const std::string step : {"0", "-1", "nan", "inf", "x", ""}) {
    EXPECT_THAT(SplineOf(kLine, {"--step", step, "-o", out}),
                RefusesUsage("zor spline", "--step: found '" + step + "', expected a number above 0"));
  }
  for (const std::string count : {"0", "-1", "1.5", "nan", "", "50000001"}) {
    EXPECT_THAT(SplineOf(kLine, {"--samples-per-segment", count, "-o", out}),
                RefusesUsage("zor spline", "--samples-per-segment: found '" + count +
                                               "', expected a whole number from 1 to 50000000"));
  }
  EXPECT_THAT(SplineOf(kLine, {"--step", "1", "--samples-per-segment", "3", "-o", out}),
              RefusesUsage("zor spline", "give either --samples-per-segment or --step"));
  EXPECT_EQ(folder.Count(), 0U);
}

TEST(ZorSpline, RefusesMorePointsThanItsLimit) {
  const TScratchFolder folder;
  const std::string out = folder.File("out.txt");
  EXPECT_THAT(
      SplineOf(kLine, {"--samples-per-segment", "25000000", "-o", out}),
      RefusesUsage("zor spline",
                   "--samples-per-segment: found 25000000, expected at most 24999999: there are 2 segments, and "
                   "at most 50000000 points are given"));
  EXPECT_THAT(SplineOf(kLine, {"--step", "1e-9", "-o", out}),
              RefusesUsage("zor spline",
                           "--step: found 1e-09, expected at least 2e-07: the path is 10.000000 long, and at most "
                           "50000000 points are given"));
  EXPECT_EQ(folder.Count(), 0U);
}

TEST(ZorSpline, AFailureLeavesTheOldFileWhole) {
  const TScratchFolder folder;
  WriteFile(folder.File("out.txt"), "old");
  EXPECT_THAT(SplineOf("1,2\n3,4\nx,5\n", {"-o", folder.File("out.txt")}),
              EndsWith(1, HasSubstr(", line 3: found \"x\"")));
  EXPECT_EQ(FileText(folder.File("out.txt")), "old");
}

}  // namespace
}  // namespace ZORBase::Test
