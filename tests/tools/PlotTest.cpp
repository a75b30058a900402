#include <zor/Plot.h>

#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <filesystem>

namespace ZORBase::Tool {
namespace {

using Test::EndsWith;
using Test::FileText;
using Test::HasGnuplot;
using Test::IsDone;
using Test::RefusesInput;
using Test::RefusesUsage;
using Test::SampleFile;
using Test::Shell;
using Test::TRun;
using Test::TRunManner;
using Test::TScratchFolder;
using Test::WriteFile;
using Test::Zor;
using testing::HasSubstr;

constexpr const char* kSample = "e387.100mm.poses.txt";

// A folder with a "gnuplot" that is this script of the shell.
void MakeGnuplot(const TScratchFolder& Folder, const std::string& Script) {
  std::filesystem::create_directory(Folder.Path() / "bin");
  WriteFile(Folder.File("bin/gnuplot"), "#!/bin/sh\n" + Script);
  std::filesystem::permissions(Folder.File("bin/gnuplot"), std::filesystem::perms::owner_all);
}

TRun PlotWith(const TScratchFolder& Folder, const std::vector<std::string>& Command, const std::string& OutName) {
  std::vector<std::string> args = Command;
  args.insert(args.end(), {"--plot", Folder.File(OutName)});
  return Zor(args, {"", {}, false, {"PATH=" + Folder.File("bin") + ":/usr/bin:/bin"}});
}

TEST(Plot, PicturesEndInSvgOrPng) {
  EXPECT_TRUE(IsPictureName("a.svg"));
  EXPECT_TRUE(IsPictureName("folder/a b.png"));
  EXPECT_FALSE(IsPictureName("a.pdf"));
  EXPECT_FALSE(IsPictureName("svg"));
  EXPECT_FALSE(IsPictureName("-"));
  EXPECT_FALSE(IsPictureName(""));
}

TEST(Plot, AStringOfGnuplotReplacesNothing) {
  EXPECT_EQ(PlotString("it's `date` \"$x\"\n@y"), "'it''s `date` \"$x\" @y'");
}

TEST(ZorPlot, OtherEndingsAreRefusedBeforeTheFileIsRead) {
  for (const std::string name : {"a.pdf", "a", "-", "a.SVG.txt"}) {
    EXPECT_THAT(
        Zor({"info", "missing.txt", "--plot", name}),
        RefusesUsage("zor info", "--plot: found '" + name + "', expected a file name that ends in .svg or .png"));
  }
}

// What a picture is made of: the script that gnuplot is given, as a gnuplot that draws its own script shows it.
TEST(ZorPlot, TheScriptHasThreeViewsOfOneScaleAndTheCurvature) {
  const TScratchFolder folder;
  MakeGnuplot(folder, "cat\n");
  EXPECT_THAT(PlotWith(folder, {"fit", SampleFile(kSample)}, "p.svg"), EndsWith(0, ""));
  const std::string script = FileText(folder.File("p.svg"));
  EXPECT_THAT(script, HasSubstr("set terminal svg size 1500,1000"));
  for (const char* const title : {"XY, seen from above", "XZ, seen from the front", "YZ, seen from the side",
                                  "Curvature of the path of X, Y, Z: 1 / radius"}) {
    EXPECT_THAT(script, HasSubstr(std::string("set title '") + title + "'"));
  }
  for (const char* const name : {"'method equal'", "'method chord'", "'method centripetal'", "'given poses'"}) {
    EXPECT_THAT(script, HasSubstr(name));
  }
  EXPECT_THAT(script, HasSubstr("\n$dots << EOD\n100 0 0\n99.677 0.043 0\n"));
}

TEST(ZorPlot, APlaneProfileHasOneViewAndNoDirections) {
  const TScratchFolder folder;
  MakeGnuplot(folder, "cat\n");
  const std::vector<std::vector<std::string>> commands = {
      {"fit", SampleFile("e387.xy.txt"), "--2d"},
      {"info", SampleFile("e387.xy.txt"), "--2d"},
      {"spline", SampleFile("e387.xy.txt"), "-o", folder.File("o")}};
  for (const std::vector<std::string>& command : commands) {
    EXPECT_THAT(PlotWith(folder, command, "p.svg"), EndsWith(0, ""));
    const std::string script = FileText(folder.File("p.svg"));
    EXPECT_THAT(script, HasSubstr("\nset title 'XY' ")) << command[0];
    EXPECT_THAT(script, HasSubstr("\nset title 'Curvature")) << command[0];
    EXPECT_THAT(script, testing::Not(HasSubstr("seen from"))) << command[0];
    EXPECT_THAT(script, testing::Not(HasSubstr("tool direction"))) << command[0];
    EXPECT_THAT(script, testing::Not(HasSubstr("$ticks"))) << command[0];
    EXPECT_THAT(script, HasSubstr("\n$start << EOD\n1 0 0\nEOD\n")) << command[0];
  }
}

TEST(ZorPlot, ACurveOfManyCoordinatesShowsTheFirstThree) {
  const TScratchFolder folder;
  MakeGnuplot(folder, "cat\n");
  EXPECT_THAT(PlotWith(folder, {"spline", SampleFile(kSample), "-o", folder.File("o")}, "p.svg"), EndsWith(0, ""));
  const std::string script = FileText(folder.File("p.svg"));
  EXPECT_THAT(script, HasSubstr("smooth curve through 61 points, the first 3 of 6 coordinates'"));
  EXPECT_THAT(script, HasSubstr("set title 'YZ, seen from the side'"));
  EXPECT_THAT(script, HasSubstr("set title 'Curvature over all coordinates: 1 / radius'"));
  EXPECT_THAT(script, testing::Not(HasSubstr("tool direction")));
  WriteFile(folder.File("one.txt"), "1\n2\n4\n");
  EXPECT_THAT(PlotWith(folder, {"spline", folder.File("one.txt"), "-o", folder.File("o")}, "q.svg"),
              RefusesUsage("zor spline", "--plot: found rows of one number in " + folder.File("one.txt") +
                                             ", expected two or more to be drawn"));
}

TEST(ZorPlot, AMissingGnuplotIsNamedAndNothingIsWritten) {
  const TScratchFolder folder;
  std::filesystem::create_directory(folder.Path() / "bin");
  const std::string words =
      "--plot needs gnuplot, which was not found. Install it (Debian: apt install gnuplot-nox), or leave "
      "--plot away.";
  const TRunManner noPrograms{"", {}, false, {"PATH=" + folder.File("bin")}};
  EXPECT_THAT(Zor({"info", SampleFile(kSample), "--plot", folder.File("p.png")}, noPrograms),
              RefusesInput("zor info: " + words));
  EXPECT_THAT(
      Zor({"resample", SampleFile(kSample), "--step", "1", "-o", folder.File("o.txt"), "--plot", folder.File("p.png")},
          noPrograms),
      RefusesInput("zor resample: " + words));
  EXPECT_EQ(folder.Count(), 1U);
}

TEST(ZorPlot, AFailingGnuplotIsQuotedAndTheOldPictureStays) {
  const TScratchFolder folder;
  MakeGnuplot(folder,
              "cat > /dev/null\necho half a picture\nprintf 'set terminal x\\n   line 7: no such terminal\\n\\n' "
              ">&2\nexit 1\n");
  WriteFile(folder.File("p.png"), "old");
  EXPECT_THAT(
      PlotWith(folder, {"fit", SampleFile(kSample)}, "p.png"),
      RefusesInput("zor fit: gnuplot could not draw " + folder.File("p.png") + ". It says: line 7: no such terminal"));
  EXPECT_EQ(FileText(folder.File("p.png")), "old");
}

TEST(ZorPlot, AGnuplotThatEndsAtOnceIsAnErrorToo) {
  const TScratchFolder folder;
  MakeGnuplot(folder, "exit 3\n");
  const TRun run = PlotWith(folder, {"fit", SampleFile("swept-plane.poses.txt")}, "p.png");
  EXPECT_THAT(run, EndsWith(1, HasSubstr("gnuplot could not draw")));
  EXPECT_FALSE(std::filesystem::exists(folder.File("p.png")));
}

// gnuplot does not look whether what it prints arrives.
TEST(ZorPlot, AFullDiskMakesAnErrorAndNotHalfAPicture) {
  const TScratchFolder folder;
  MakeGnuplot(folder, "cat > /dev/null\nhead -c 300000 /dev/zero 2> /dev/null\nexit 0\n");
  const std::string picture = folder.File("p.svg");
  const TRun run = Shell("trap '' XFSZ; ulimit -f 128; PATH='" + folder.File("bin") + "':$PATH; zor info '" +
                         SampleFile(kSample) + "' --plot '" + picture + "'");
  EXPECT_THAT(run, EndsWith(1, "zor info: Cannot write file \"" + picture + "\". File too large\n"));
  EXPECT_EQ(folder.Count(), 1U);
}

TEST(ZorPlot, DrawsAllThreeReports) {
  ASSERT_TRUE(HasGnuplot());
  const TScratchFolder folder;
  const std::string png = folder.File("p.png");
  const std::string svg = folder.File("p.svg");
  EXPECT_THAT(Zor({"info", SampleFile(kSample), "--plot", png}), IsDone());
  EXPECT_THAT(FileText(png), testing::StartsWith("\x89PNG\r\n"));
  EXPECT_THAT(Zor({"fit", SampleFile("swept-plane.poses.txt"), "--plot", svg}), IsDone());
  EXPECT_THAT(FileText(svg), testing::AllOf(testing::StartsWith("<?xml"), HasSubstr("</svg>")));
  EXPECT_THAT(Zor({"resample", SampleFile(kSample), "--step", "2", "--plot", svg}), IsDone());
  EXPECT_THAT(FileText(svg), HasSubstr("103 poses along a path of length 202.894"));
  EXPECT_EQ(folder.Count(), 2U);
}

TEST(ZorPlot, DrawsPosesThatAllowNoPathAndASingleOne) {
  ASSERT_TRUE(HasGnuplot());
  const TScratchFolder folder;
  for (const char* const text :
       {"1,2,3,0,0,1\n", "1,2,3,0,0,1\n1,2,3,0,0,1\n1,2,3,0,0,0\n", "0,0,0,0,0,1\n1,0,0,0,0,1\n",
        "1e6,0,0,0,0,1\n1000000.0000000001,0,0,0,0,1\n", "1e150,0,0,0,0,1\n-1e150,0,0,0,0,1\n1e-150,0,0,0,0,1\n"}) {
    WriteFile(folder.File("it's \"$a\".txt"), text);
    EXPECT_THAT(Zor({"info", folder.File("it's \"$a\".txt"), "--plot", folder.File("p.svg")}), IsDone()) << text;
    EXPECT_THAT(FileText(folder.File("p.svg")), HasSubstr("</svg>"));
  }
}

}  // namespace
}  // namespace ZORBase::Tool
