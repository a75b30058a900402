#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <ZORBase/ZORGeometry/NurbsGeometry.h>
#include <ZORBase/common/Cadtypes.h>

#include <algorithm>
#include <cmath>
#include <fstream>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

// The poses that a run printed, which must be in the text form of the list.
TPoint6DList PosesOf(const TRun& Run) {
  const TScratchFolder folder;
  WriteFile(folder.File("out.txt"), Run.Out);
  TPoint6DList poses;
  poses.LoadFromFile(folder.File("out.txt"));
  return poses;
}

TPoint6DList Resampled(const std::string& FileName, const std::vector<std::string>& Options) {
  std::vector<std::string> args = {"resample", FileName, "--decimals", "12"};
  args.insert(args.end(), Options.begin(), Options.end());
  const TRun run = Zor(args);
  EXPECT_THAT(run, IsDone());
  return PosesOf(run);
}

std::string StraightFile(const TScratchFolder& Folder) {
  WriteFile(Folder.File("p.txt"), "0,0,0,0,0,1\n1,0,0,0,0,1\n2,0,0,0,0,1\n3,0,0,0,0,1\n");
  return Folder.File("p.txt");
}

// ------------------------------------------------------------------------------------------------ which places

TEST(ZorResample, ByStepGivesTheWholeStepsAndThenTheEnd) {
  const TScratchFolder folder;
  const TRun run = Zor({"resample", StraightFile(folder), "--step", "0.8", "--decimals", "3"});
  ASSERT_THAT(run, IsDone());
  EXPECT_EQ(run.Out,
            "0.000,0.000,0.000,0.000,0.000,1.000\r\n0.800,0.000,0.000,0.000,0.000,1.000\r\n"
            "1.600,0.000,0.000,0.000,0.000,1.000\r\n2.400,0.000,0.000,0.000,0.000,1.000\r\n"
            "3.000,0.000,0.000,0.000,0.000,1.000\r\n");
}

TEST(ZorResample, AStepThatDividesTheLengthGivesTheEndOnce) {
  const TScratchFolder folder;
  EXPECT_EQ(Resampled(StraightFile(folder), {"--step", "0.5"}).Count(), 7);
  EXPECT_EQ(Resampled(StraightFile(folder), {"--step", "0.1"}).Count(), 31);
  EXPECT_EQ(Resampled(StraightFile(folder), {"--step", "1"}).Count(), 4);
}

TEST(ZorResample, AStepLongerThanThePathGivesItsEnds) {
  const TScratchFolder folder;
  const TPoint6DList poses = Resampled(StraightFile(folder), {"--step", "1e9"});
  ASSERT_EQ(poses.Count(), 2);
  EXPECT_EQ(poses.First().X, 0.0);
  EXPECT_EQ(poses.Last().X, 3.0);
}

TEST(ZorResample, ByCountGivesThatManyFromTheStartToTheEnd) {
  const TScratchFolder folder;
  const TPoint6DList poses = Resampled(StraightFile(folder), {"--count", "5"});
  ASSERT_EQ(poses.Count(), 5);
  for (int i = 0; i < 5; ++i) EXPECT_NEAR(poses[i].X, 0.75 * i, 1e-9) << i;
  EXPECT_EQ(Resampled(StraightFile(folder), {"--count", "2"}).Count(), 2);
}

TEST(ZorResample, AtGivesTheLengthsInTheirOrderAndThenTheEnd) {
  const TScratchFolder folder;
  const TPoint6DList poses = Resampled(StraightFile(folder), {"--at", "2.5, 0.25 1"});
  ASSERT_EQ(poses.Count(), 4);
  EXPECT_NEAR(poses[0].X, 2.5, 1e-9);
  EXPECT_NEAR(poses[1].X, 0.25, 1e-9);
  EXPECT_NEAR(poses[2].X, 1.0, 1e-9);
  EXPECT_EQ(poses[3].X, 3.0);
  EXPECT_EQ(Resampled(StraightFile(folder), {"--at", "0,3"}).Count(), 2);
}

TEST(ZorResample, TheLastPoseIsTheLastOfTheFile) {
  for (const char* const name : {"swept-plane.poses.txt", "e387.100mm.poses.txt"}) {
    TPoint6DList given;
    given.LoadFromFile(SampleFile(name));
    for (const auto& options : {std::vector<std::string>{"--step", "7"}, {"--count", "3"}, {"--at", "1"}}) {
      EXPECT_THAT(Resampled(SampleFile(name), options).Last(), IsNearPose(given.Last(), 1e-12)) << name;
    }
  }
}

TEST(ZorResample, SixDecimalsAreUsual) {
  const TScratchFolder folder;
  EXPECT_THAT(Zor({"resample", StraightFile(folder), "--count", "2"}).Out, HasSubstr("3.000000,0.000000,"));
  EXPECT_EQ(Zor({"resample", StraightFile(folder), "--count", "2", "--decimals", "0"}).Out,
            "0,0,0,0,0,1\r\n3,0,0,0,0,1\r\n");
}

// ------------------------------------------------------------------------------------------------ how good they are

/// The fitted path of a sample file, with lengths by quadrature of its speed: nothing of it comes from the table.
class TMeasuredPath {
 public:
  TMeasuredPath(const std::string& FileName, TParalizeMethod Method) {
    TPoint6DList given;
    given.LoadFromFile(FileName);
    FCurve.CreateCross(&given, Method);
  }

  const TNurbs6D& Curve() const { return FCurve; }

  // The parameter of the point of the path nearest to Pose, which lies on it near Guess.
  double ParamOf(const TPoint6D& Pose, double Guess) const {
    double u = Guess;
    for (int round = 0; round < 5; ++round) {
      std::array<TPoint6D, 4> ders;
      FCurve.CurveDerivsAlg1(u, ders);
      u -= (ders[0] - Pose).DotMul(ders[1]) / ders[1].MagSqr();
    }
    EXPECT_THAT(FCurve.EvalPoint(u), IsNearPose(Pose, 1e-11));
    return u;
  }

  double LengthBetween(double From, double To) const {
    const std::span<const double> knots = FCurve.BasicFun().uArr();
    std::vector<double> cuts = {From};
    std::copy_if(knots.begin(), knots.end(), std::back_inserter(cuts), [&](double U) { return U > From && U < To; });
    cuts.push_back(To);
    double length = 0.0;
    for (std::size_t i = 0; i + 1 < cuts.size(); ++i) length += SmoothLength(cuts[i], cuts[i + 1]);
    return length;
  }

 private:
  double SmoothLength(double From, double To) const {
    constexpr int kParts = 4;
    double length = 0.0;
    for (int k = 0; k < kParts; ++k) {
      const auto at = [&](int Part) { return From + (To - From) * Part / kParts; };
      length += TNumeric::GaussQuadrature(
          [&](double u) {
            std::array<TPoint6D, 4> ders;
            FCurve.CurveDerivsAlg1(u, ders);
            return ders[1].Mag();
          },
          TGeInterval::Create(at(k), at(k + 1), 0.0), 12);
    }
    return length;
  }

  TNurbs6D FCurve;
};

struct TEvenCase {
  const char* File;
  const char* MethodName;
  TParalizeMethod Method;
  double Step;
};

class ZorResampleEvenly : public testing::TestWithParam<TEvenCase> {};

TEST_P(ZorResampleEvenly, StepsAreEqualWithinAThousandth) {
  const auto& [file, methodName, method, step] = GetParam();
  const TMeasuredPath path(SampleFile(file), method);
  const TPoint6DList poses = Resampled(SampleFile(file), {"--step", Format1033("%.2f", step), "--method", methodName});
  ASSERT_GT(poses.Count(), 30);
  double param = 0.0;
  TSUTable::TCursor cursor;
  for (int i = 1; i + 1 < poses.Count(); ++i) {
    const double next = path.ParamOf(poses[i], path.Curve().ParamOfLength(i * step, cursor));
    ASSERT_NEAR(path.LengthBetween(param, next), step, 1e-3 * step) << "step " << i;
    param = next;
  }
  const double rest = path.LengthBetween(param, 1.0);
  EXPECT_GT(rest, 0.0);
  EXPECT_LT(rest, step * 1.001);
}

INSTANTIATE_TEST_SUITE_P(OnTheSamples, ZorResampleEvenly,
                         testing::Values(TEvenCase{"swept-plane.poses.txt", "chord", mChord, 2.0},
                                         TEvenCase{"swept-plane.poses.txt", "centripetal", mCentripetal, 5.0},
                                         TEvenCase{"e387.100mm.poses.txt", "chord", mChord, 0.5},
                                         TEvenCase{"e387.100mm.poses.txt", "equal", mEqually, 1.0}));

double DistanceFromLine(const TPoint6D& P, const TPoint6D& From, const TPoint6D& To) {
  const double along = std::clamp((P - From).DotMul(To - From) / (To - From).MagSqr(), 0.0, 1.0);
  return (P - From - (To - From) * along).Mag();
}

// Between two poses a distance h apart a bend of the radius r is left by h^2 / (8 r). The turns of the sweep have radii above
// 1, the nose of the wing one of 0.45.
TEST(ZorResample, ThePathPassesThroughEveryGivenPose) {
  for (const auto& [name, step, radius] :
       {std::tuple("swept-plane.poses.txt", 0.2, 1.0), {"e387.100mm.poses.txt", 0.05, 0.45}}) {
    const double tolerance = 1.1 * step * step / (8.0 * radius);
    TPoint6DList given;
    given.LoadFromFile(SampleFile(name));
    const TPoint6DList poses = Resampled(SampleFile(name), {"--step", Format1033("%.2f", step)});
    int k = 0;
    for (int i = 0; i < given.Count(); ++i) {
      // The search goes on from the last hit: the poses come in the order of the path.
      while (k + 2 < poses.Count() && DistanceFromLine(given[i], poses[k], poses[k + 1]) > tolerance) ++k;
      ASSERT_LE(DistanceFromLine(given[i], poses[k], poses[k + 1]), tolerance) << name << " line " << i + 1;
    }
  }
}

// ------------------------------------------------------------------------------------------------ where they go

TEST(ZorResample, IntoAFileGivesTheSamePosesAndPrintsNothing) {
  const TScratchFolder folder;
  const TRun run = Zor({"resample", SampleFile("e387.100mm.poses.txt"), "--step", "1", "-o", folder.File("out.txt")});
  EXPECT_THAT(run, IsDone());
  EXPECT_EQ(run.Out, "");
  EXPECT_EQ(FileText(folder.File("out.txt")), Zor({"resample", SampleFile("e387.100mm.poses.txt"), "--step", "1"}).Out);
  EXPECT_EQ(folder.Count(), 1U);
}

TEST(ZorResample, AFailureLeavesTheOldFileWholeAndNothingBesideIt) {
  const TScratchFolder folder;
  WriteFile(folder.File("in.txt"), "0,0,0,0,0,1\nrubbish\n");
  WriteFile(folder.File("out.txt"), "old");
  EXPECT_EQ(Zor({"resample", folder.File("in.txt"), "--step", "1", "-o", folder.File("out.txt")}).Status, 1);
  EXPECT_EQ(
      Zor({"resample", SampleFile("e387.100mm.poses.txt"), "--step", "1e-9", "-o", folder.File("out.txt")}).Status, 2);
  EXPECT_EQ(FileText(folder.File("out.txt")), "old");
  EXPECT_EQ(folder.Count(), 2U);
}

TEST(ZorResample, TheInputFileCanBeTheOutputFile) {
  const TScratchFolder folder;
  const std::string file = StraightFile(folder);
  EXPECT_THAT(Zor({"resample", file, "--count", "2", "--decimals", "0", "-o", file}), IsDone());
  EXPECT_EQ(FileText(file), "0,0,0,0,0,1\r\n3,0,0,0,0,1\r\n");
}

TEST(ZorResample, WorksInAPipeline) {
  const std::string file = SampleFile("e387.100mm.poses.txt");
  const TRun piped = Shell("cat '" + file + "' | zor resample - --step 1 | zor info - --json");
  ASSERT_THAT(piped, IsDone());
  EXPECT_THAT(piped.Out, HasSubstr("\"poses\": 204,"));
  EXPECT_EQ(Shell("cat '" + file + "' | zor resample - --step 1 -o -").Out, Zor({"resample", file, "--step", "1"}).Out);
}

// ------------------------------------------------------------------------------------------------ in the plane

TEST(ZorResample, APlaneProfileGivesPointsOfThePlane) {
  const TScratchFolder folder;
  WriteFile(folder.File("xy.txt"), "0,0\n3,4\n6,8\n9,12\n");
  const auto resampled = [&](const std::vector<std::string>& Options) {
    std::vector<std::string> args = {"resample", folder.File("xy.txt"), "--2d", "--decimals", "3"};
    args.insert(args.end(), Options.begin(), Options.end());
    return Zor(args);
  };
  EXPECT_EQ(resampled({"--step", "10"}).Out, "0.000,0.000\r\n6.000,8.000\r\n9.000,12.000\r\n");
  EXPECT_EQ(resampled({"--count", "3"}).Out, "0.000,0.000\r\n4.500,6.000\r\n9.000,12.000\r\n");
  EXPECT_EQ(resampled({"--at", "5"}).Out, "3.000,4.000\r\n9.000,12.000\r\n");
  EXPECT_THAT(resampled({"--step", "1e-12"}), EndsWith(2, HasSubstr("at most 50000000 points are given")));
}

TEST(ZorResample, APlaneProfileIsWalkedLikeItsPosesAtHeightZero) {
  const TScratchFolder folder;
  TPoint6DList poses;
  poses.LoadFromFile(SampleFile("e387.100mm.poses.txt"));
  WriteProfile(folder.File("xy.txt"), poses);
  const TPoint6DList expected = Resampled(SampleFile("e387.100mm.poses.txt"), {"--step", "0.7"});
  const TRun run = Zor({"resample", folder.File("xy.txt"), "--2d", "--step", "0.7", "--decimals", "12"});
  ASSERT_THAT(run, IsDone());
  const auto rows = RowsOf(run.Out);
  ASSERT_EQ(rows.size(), expected.size());
  for (std::size_t i = 0; i < rows.size(); ++i) {
    EXPECT_NEAR(rows[i][0], expected[static_cast<int>(i)].X, 1e-10) << i;
    EXPECT_NEAR(rows[i][1], expected[static_cast<int>(i)].Y, 1e-10) << i;
  }
}

// ------------------------------------------------------------------------------------------------ refusals

TEST(ZorResample, RefusesAStepThatIsNoNumberAboveZero) {
  const TScratchFolder folder;
  const std::string out = folder.File("out.txt");
  for (const char* const step : {"0", "-0", "-1", "nan", "inf", "1e400", "1e-400", "0x1p3", "1,5", "", "abc", "1 2"}) {
    const TRun run = Zor({"resample", SampleFile("e387.100mm.poses.txt"), "--step", step, "-o", out});
    EXPECT_THAT(run,
                RefusesUsage("zor resample", std::string("--step: found '") + step + "', expected a number above 0"));
  }
  EXPECT_EQ(folder.Count(), 0U);
}

TEST(ZorResample, RefusesMorePosesThanItsLimit) {
  const std::string file = SampleFile("e387.100mm.poses.txt");
  EXPECT_THAT(Zor({"resample", file, "--step", "1e-6"}),
              RefusesUsage("zor resample",
                           "--step: found 1e-06, expected at least 4.06e-06: the path is 202.894105 long, and at "
                           "most 50000000 poses are given"));
  EXPECT_THAT(Zor({"resample", file, "--step", "1e-300"}),
              EndsWith(2, HasSubstr("--step: found 1e-300, expected at least")));
  for (const char* const count : {"50000001", "1", "0", "-5", "2.5", "99999999999999999999", "many", ""}) {
    EXPECT_THAT(Zor({"resample", file, "--count", count}),
                RefusesUsage("zor resample", std::string("--count: found '") + count +
                                                 "', expected a whole number from 2 to 50000000"));
  }
}

TEST(ZorResample, RefusesLengthsThatAreNotOnThePath) {
  const std::string file = SampleFile("e387.100mm.poses.txt");
  EXPECT_THAT(
      Zor({"resample", file, "--at", "5,202.9"}),
      RefusesUsage("zor resample", "--at: found 202.9, expected lengths from 0 to 202.894105, where the path ends"));
  EXPECT_THAT(Zor({"resample", file, "--at", "1,-1"}),
              RefusesUsage("zor resample", "--at: found '-1', expected numbers from 0 upwards, parted by commas"));
  for (const char* const at : {"1,nan", "1,,2", "1,2,", "", "x"}) {
    EXPECT_THAT(Zor({"resample", file, "--at", at}), EndsWith(2, HasSubstr("expected numbers from 0 upwards"))) << at;
  }
}

TEST(ZorResample, NeedsExactlyOneSpacing) {
  const std::string file = SampleFile("e387.100mm.poses.txt");
  const auto refuses = RefusesUsage("zor resample", "give exactly one of --step, --count and --at");
  EXPECT_THAT(Zor({"resample", file}), refuses);
  EXPECT_THAT(Zor({"resample", file, "--step", "1", "--count", "3"}), refuses);
  EXPECT_THAT(Zor({"resample", file, "--step", "1", "--at", "3"}), refuses);
}

TEST(ZorResample, RefusesOtherDecimalsAndMethods) {
  const std::string file = SampleFile("e387.100mm.poses.txt");
  for (const char* const decimals : {"-1", "13", "1.5", "x"}) {
    EXPECT_THAT(Zor({"resample", file, "--step", "1", "--decimals", decimals}),
                RefusesUsage("zor resample", std::string("--decimals: found '") + decimals +
                                                 "', expected a whole number from 0 to 12"));
  }
  EXPECT_THAT(Zor({"resample", file, "--step", "1", "--method", "spline"}),
              RefusesUsage("zor resample", "--method: found 'spline', expected equal, chord or centripetal"));
}

}  // namespace
}  // namespace ZORBase::Test
