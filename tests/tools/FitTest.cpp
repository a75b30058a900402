#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <ZORBase/ZORGeometry/NurbsGeometry.h>
#include <ZORBase/common/Cadtypes.h>

#include <cmath>
#include <nlohmann/json.hpp>
#include <numbers>

namespace ZORBase::Test {
namespace {

using nlohmann::json;
using testing::HasSubstr;

json FitOf(const std::string& FileName, const std::vector<std::string>& Options = {}) {
  std::vector<std::string> args = {"fit", FileName, "--json"};
  args.insert(args.end(), Options.begin(), Options.end());
  const TRun run = Zor(args);
  EXPECT_THAT(run, IsDone());
  return json::parse(run.Out);
}

// Four poses on a line: the path is that line, of length 3, by every method. The table has a row per 0.03 of each of the three
// inner spans (33 of them), one for each of the six empty spans at the ends, and the first one.
TEST(ZorFit, OfAStraightLineIsTheLine) {
  const TScratchFolder folder;
  WriteFile(folder.File("p.txt"), "0,0,0,0,0,1\n1,0,0,0,0,1\n2,0,0,0,0,1\n3,0,0,0,0,1\n");
  const json methods = FitOf(folder.File("p.txt"))["methods"];
  ASSERT_EQ(methods.size(), 3U);
  for (const char* const name : {"equal", "chord", "centripetal"}) {
    const json& fit = methods[name];
    EXPECT_NEAR(fit["length"].get<double>(), 3.0, 1e-12) << name;
    EXPECT_EQ(fit["controlPoints"], 6) << name;
    EXPECT_EQ(fit["tableRows"], 1 + 6 + 3 * 33) << name;
    EXPECT_LT(fit["distanceFromPoses"].get<double>(), 1e-14) << name;
    EXPECT_LT(fit["distanceFromPolygon"].get<double>(), 1e-14) << name;
  }
}

// Poses on a quarter circle of radius 100: its length is 50 pi, the arc stands 100 (1 - cos(pi / 32)) above a chord.
TEST(ZorFit, OfAnArcComesCloseToTheArc) {
  const TScratchFolder folder;
  TPoint6DList poses;
  for (int i = 0; i <= 8; ++i) {
    const double angle = i * std::numbers::pi / 16;
    poses.Add(100 * std::cos(angle), 100 * std::sin(angle), 0);
  }
  poses.SaveToFile(folder.File("p.txt"), 12);
  const json fit = FitOf(folder.File("p.txt"), {"--method", "chord"})["methods"]["chord"];
  EXPECT_NEAR(fit["length"].get<double>(), 50 * std::numbers::pi, 0.05);
  EXPECT_EQ(fit["controlPoints"], 11);
  EXPECT_NEAR(fit["distanceFromPolygon"].get<double>(), 100 * (1 - std::cos(std::numbers::pi / 32)), 0.1);
  EXPECT_LT(fit["smallestRadius"].get<double>(), 100);
  EXPECT_GT(fit["smallestRadius"].get<double>(), 60);
}

TEST(ZorFit, WithAMethodGivesThatOneOnly) {
  const json methods = FitOf(SampleFile("swept-plane.poses.txt"), {"--method", "centripetal"})["methods"];
  EXPECT_EQ(methods.size(), 1U);
  EXPECT_TRUE(methods.contains("centripetal"));
}

// The length by quadrature of the speed, which knows nothing of the table; the row's chords are a little shorter.
TEST(ZorFit, TheLengthIsTheIntegralOfTheSpeed) {
  TPoint6DList poses;
  poses.LoadFromFile(SampleFile("swept-plane.poses.txt"));
  TNurbs6D curve;
  curve.CreateCross(&poses, mChord);
  const auto speed = [&](double u) {
    std::array<TPoint6D, 4> ders;
    curve.CurveDerivsAlg1(u, ders);
    return ders[1].Mag();
  };
  double length = 0.0;
  for (int k = 3; k + 4 < curve.BasicFun().uCount(); ++k) {
    const double from = curve.BasicFun().Items(k);
    const double to = curve.BasicFun().Items(k + 1);
    const double middle = (from + to) / 2;
    length += TNumeric::GaussQuadrature(speed, TGeInterval::Create(from, middle, 0), 24);
    length += TNumeric::GaussQuadrature(speed, TGeInterval::Create(middle, to, 0), 24);
  }
  const json fit = FitOf(SampleFile("swept-plane.poses.txt"))["methods"]["chord"];
  EXPECT_NEAR(fit["length"].get<double>(), length, 1e-6 * length);
  EXPECT_LT(fit["length"].get<double>(), length);
  EXPECT_NEAR(fit["integratedLength"].get<double>(), length, 1e-9 * length);
}

// ------------------------------------------------------------------------------------------------ in the plane

TEST(ZorFit, APlaneProfileIsThePathThroughItsPosesAtHeightZero) {
  const TScratchFolder folder;
  TPoint6DList poses;
  poses.LoadFromFile(SampleFile("e387.100mm.poses.txt"));
  WriteProfile(folder.File("xy.txt"), poses);
  const json plane = FitOf(folder.File("xy.txt"), {"--2d"});
  const json space = FitOf(SampleFile("e387.100mm.poses.txt"));
  EXPECT_EQ(plane["points"], 61);
  for (const char* const name : {"equal", "chord", "centripetal"}) {
    const json& fit = plane["methods"][name];
    const json& expected = space["methods"][name];
    for (const char* const key : {"length", "integratedLength", "distanceFromPolygon", "distanceFromPolygonAt"}) {
      EXPECT_NEAR(fit[key].get<double>(), expected[key].get<double>(), 1e-8) << name << " " << key;
    }
    EXPECT_NEAR(fit["smallestRadius"].get<double>() / expected["smallestRadius"].get<double>(), 1, 1e-6) << name;
    for (const char* const key : {"controlPoints", "tableRows", "distanceFromPolygonLines", "smallestRadiusLines"}) {
      EXPECT_EQ(fit[key], expected[key]) << name << " " << key;
    }
    EXPECT_LT(fit["distanceFromPoints"].get<double>(), 1e-12) << name;
  }
}

// With a chord of 1 the table has a row or two between neighbours, and its lengths are those of a polygon: the report says so.
TEST(ZorFit, ATableTooCoarseForTheLengthIsReported) {
  const json fit = FitOf(SampleFile("e387.xy.txt"), {"--2d", "--method", "chord"});
  const double table = fit["methods"]["chord"]["length"].get<double>();
  const double integrated = fit["methods"]["chord"]["integratedLength"].get<double>();
  EXPECT_GT(integrated, table * 1.0002);
  EXPECT_LT(integrated, table * 1.0003);
  EXPECT_EQ(
      fit["warnings"],
      json::array({"lengths along the path are 0.024 % short, as they are tabulated by chords of 0.03 in the unit "
                   "of the file. If that matters, multiply X,Y by 10 or more."}));
}

TEST(ZorFit, InThePlaneMessagesSpeakOfPoints) {
  const TScratchFolder folder;
  const std::string file = folder.File("xy.txt");
  const auto fit = [&](const std::string& Text) {
    WriteFile(file, Text);
    return Zor({"fit", file, "--2d"});
  };
  EXPECT_THAT(fit("0,0\n1,0\n1,0\n2,5\n"),
              RefusesInput("zor fit: " + file +
                           ", lines 2 and 3: found the same point twice (their distance is 0), expected neighbours at "
                           "least 1e-06 apart. Remove one of the two lines; \"zor info\" lists all such pairs."));
  EXPECT_THAT(fit("0,0\n1,0\n2,5\n"),
              RefusesInput("zor fit: " + file +
                           ": found 3 points, expected 4 or more to fit a path through. Measure more points."));
  EXPECT_THAT(
      fit("0,0\n1,0,3\n"),
      RefusesInput("zor fit: " + file +
                   ", line 2: found 3 items in \"1,0,3\", expected 2 numbers X,Y. Numbers have a decimal point, "
                   "not a decimal comma, and one row stands on each line."));
  EXPECT_THAT(fit(""),
              RefusesInput("zor fit: " + file + ": found no points, expected one per line: X,Y. Name another file."));
  EXPECT_THAT(fit("0,0\n500,0\n500.0005,0\n1000,0\n"), IsDone());
  EXPECT_THAT(
      Zor({"fit", file, "--2d", "--method", "chord"}),
      EndsWith(1, HasSubstr(", lines 2 and 3: found neighbours that are 5e-07 of the path apart (method chord)")));
  EXPECT_THAT(Zor({"fit", SampleFile("e387.xy.txt"), "--2d"}).Out,
              testing::AllOf(HasSubstr("  smallest radius of X,Y "), HasSubstr("  largest miss of a point ")));
}

// ------------------------------------------------------------------------------------------------ places and refusals

// The approach to the plane is a long chord at an angle to the next one: the path swings out there, and says so.
TEST(ZorFit, NamesThePlaceOfTheLargestOvershoot) {
  const json fit = FitOf(SampleFile("swept-plane.poses.txt"))["methods"]["chord"];
  EXPECT_EQ(fit["distanceFromPolygonLines"], json({1, 2}));
  EXPECT_GT(fit["distanceFromPolygonAt"].get<double>(), 0);
  EXPECT_LT(fit["distanceFromPolygonAt"].get<double>(), 200);
}

TEST(ZorFit, AsTextIsATableOfTheMethods) {
  const TRun run = Zor({"fit", SampleFile("e387.100mm.poses.txt")});
  ASSERT_THAT(run, IsDone());
  EXPECT_THAT(run.Out, HasSubstr("Path by method                         equal             chord       centripetal\n"));
  EXPECT_THAT(run.Out, HasSubstr("  control points                          63                63                63\n"));
  EXPECT_THAT(run.Out, HasSubstr("  smallest radius of X,Y,Z "));
}

TEST(ZorFit, AMethodThatThePosesDoNotAllowIsReportedBesideTheOthers) {
  const TScratchFolder folder;
  WriteFile(folder.File("p.txt"), "0,0,0,0,0,1\n500,0,0,0,0,1\n500.0005,0,0,0,0,1\n1000,0,0,0,0,1\n");
  const std::string file = folder.File("p.txt");
  const json report = FitOf(file);
  EXPECT_TRUE(report["methods"]["chord"]["length"].is_null());
  EXPECT_NEAR(report["methods"]["centripetal"]["length"].get<double>(), 1000, 1e-2);
  const std::string refusal =
      file +
      ", lines 2 and 3: found neighbours that are 5e-07 of the path apart (method chord), expected "
      "more than 1e-06. Remove one of the two lines, divide the file, or use another --method.";
  EXPECT_EQ(report["warnings"], json::array({refusal}));
  EXPECT_THAT(Zor({"fit", file, "--method", "chord"}), RefusesInput("zor fit: " + refusal));
  WriteFile(file, "0,0,0,0,0,1\n500,0,0,0,0,1\n500.0005,0,0,0,0,1\n500.001,0,0,0,0,1\n1000,0,0,0,0,1\n");
  EXPECT_THAT(Zor({"fit", file, "--method", "chord"}), EndsWith(1, HasSubstr(" 1 more pair is like that.\n")));
}

TEST(ZorFit, CoincidentNeighboursAreNamedByTheirLines) {
  const TScratchFolder folder;
  const std::string file = folder.File("p.txt");
  WriteFile(file, "0,0,0,0,0,1\n1,0,0,0,0,1\n2,0,0,0,0,1\n2,0,0,0,0,1\n3,0,0,0,0,1\n");
  const std::string words =
      ", lines 3 and 4: found the same pose twice (their distance is 0), expected neighbours at least "
      "1e-06 apart. Remove one of the two lines; \"zor info\" lists all such pairs.";
  EXPECT_THAT(Zor({"fit", file}), RefusesInput("zor fit: " + file + words));
  EXPECT_THAT(Zor({"resample", file, "--step", "1"}), RefusesInput("zor resample: " + file + words));
  WriteFile(file, "0,0,0,0,0,1\n0,0,0,0,0,1\n2,0,0,0,0,1\n2,0,0,0,0,1\n3,0,0,0,0,1\n");
  EXPECT_THAT(Zor({"fit", file}), EndsWith(1, HasSubstr("lines 1 and 2:")));
  EXPECT_THAT(Zor({"fit", file}), EndsWith(1, HasSubstr(" 1 more pair is like that.\n")));
}

TEST(ZorFit, FewerThanFourPosesAreTooFew) {
  const TScratchFolder folder;
  const std::string file = folder.File("p.txt");
  WriteFile(file, "0,0,0,0,0,1\n1,0,0,0,0,1\n2,0,0,0,0,1\n");
  EXPECT_THAT(Zor({"fit", file}),
              RefusesInput("zor fit: " + file +
                           ": found 3 poses, expected 4 or more to fit a path through. Measure more poses."));
  WriteFile(file, "0,0,0,0,0,1\n");
  EXPECT_THAT(Zor({"resample", file, "--count", "9"}),
              RefusesInput("zor resample: " + file +
                           ": found 1 pose, expected 4 or more to fit a path through. Measure more poses."));
}

// 4e6 of length at a spacing of 0.03 are 133 million rows.
TEST(ZorFit, APathTooLongForTheTableIsRefusedAtOnce) {
  const TScratchFolder folder;
  const std::string file = folder.File("p.txt");
  WriteFile(file, "0,0,0,0,0,1\n1e6,0,0,0,0,1\n2e6,0,0,0,0,1\n4e6,0,0,0,0,1\n");
  const TRun run = Zor({"fit", file});
  EXPECT_THAT(run, EndsWith(1, HasSubstr("zor fit: " + file + ": ")));
  EXPECT_THAT(run, EndsWith(1, HasSubstr("table rows at a spacing of 0.03; at most 64000000 are possible")));
  EXPECT_EQ(run.Out, "");
}

}  // namespace
}  // namespace ZORBase::Test
