#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>

#include "support/SystemLimits.h"
#include "support/TestSupport.h"

#include <sys/resource.h>
#include <sys/stat.h>

#include <rapidcheck/gtest.h>
#include <algorithm>
#include <ctime>
#include <filesystem>
#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

namespace ZORBase {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;
using Test::Calling;
using Test::DecimalCommaLocale;
using Test::FileText;
using Test::GeneralErrorOf;
using Test::IsExactPose;
using Test::PosesFrom;
using Test::RaisesGeneralError;
using Test::SampleFile;
using Test::TFileSizeLimit;
using Test::TLocaleGuard;
using Test::TScratchFolder;
using Test::TUnprivileged;
using Test::WriteFile;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Lt;
using testing::Pointwise;
using testing::SizeIs;
using testing::StartsWith;

TPoint6D Pose(double X, double Y, double Z, double A, double B, double C) { return TPoint6D::Create(X, Y, Z, A, B, C); }

class TPoint6DListFile : public testing::Test {
 protected:
  // What loading the text reports.
  std::string FailureOf(std::string_view Text) {
    WriteFile(FFile, Text);
    return GeneralErrorOf([this] { FPoses.LoadFromFile(FFile); }).value_or("no failure");
  }

  std::string FailText(int Line) const {
    return "TPoint6DList LoadFromFile Fail: " + FFile + " Line " + std::to_string(Line) + ". \r\n";
  }

  TScratchFolder FFolder;
  std::string FFile = FFolder.File("poses.txt");
  TPoint6DList FPoses = PosesFrom({"9,9,9,9,9,9"});
};

// ---------------------------------------------------------------------------------------------- the list

TEST(TPoint6DList, AddTakesAPoseSixNumbersOrAPositionWithTheDirectionUp) {
  TPoint6DList poses;
  poses.Add(Pose(1, 2, 3, 4, 5, 6));
  poses.Add(7, 8, 9, 10, 11, 12);
  poses.Add(1, 2, 3);
  EXPECT_THAT(poses, ElementsAre(IsExactPose(Pose(1, 2, 3, 4, 5, 6)), IsExactPose(Pose(7, 8, 9, 10, 11, 12)),
                                 IsExactPose(Pose(1, 2, 3, 0, 0, 1))));
}

TEST(TPoint6DList, AddAndNormalMakesTheDirectionUnitAndKeepsThePosition) {
  TPoint6DList poses;
  poses.AddAndNormal(10, 20, 30, 3, 0, -4);
  poses.AddAndNormal(1, 2, 3, 0, 0, 0);
  EXPECT_THAT(poses, ElementsAre(IsExactPose(Pose(10, 20, 30, 0.6, 0, -0.8)), IsExactPose(Pose(1, 2, 3, 0, 0, 0))));
}

TEST(TPoint6DList, From3DListReplacesTheContentsAndTakesTheDirectionAsItIs) {
  TPoint6DList poses = PosesFrom({"9,9,9,9,9,9"});
  poses.From3DList({TPoint3D::Create(1, 2, 3), TPoint3D::Create(4, 5, 6)}, TPoint3D::Create(0, 0, 2));
  EXPECT_THAT(poses, ElementsAre(IsExactPose(Pose(1, 2, 3, 0, 0, 2)), IsExactPose(Pose(4, 5, 6, 0, 0, 2))));
  poses.From3DList({}, TPoint3D::Create(0, 0, 1));
  EXPECT_EQ(poses.Count(), 0);
}

TEST(TPoint6DList, CustomizeSortSortsByTheFunction) {
  TPoint6DList poses = PosesFrom({"3,0,0,0,0,1", "1,0,0,0,0,1", "2,0,0,0,0,1"});
  poses.CustomizeSort([](const TPoint6D& P, const TPoint6D& Q) { return P.X < Q.X ? -1 : (P.X > Q.X ? 1 : 0); });
  EXPECT_THAT(poses, ElementsAre(IsExactPose(Pose(1, 0, 0, 0, 0, 1)), IsExactPose(Pose(2, 0, 0, 0, 0, 1)),
                                 IsExactPose(Pose(3, 0, 0, 0, 0, 1))));
}

TEST(TPoint6DList, ASortFunctionThatThrowsLeavesTheList) {
  TPoint6DList poses = PosesFrom({"3,0,0,0,0,1", "1,0,0,0,0,1"});
  const auto fail = [](const TPoint6D&, const TPoint6D&) -> int { throw std::logic_error("no order"); };
  EXPECT_THROW(poses.CustomizeSort(fail), std::logic_error);
  EXPECT_EQ(poses.First().X, 3);
}

TEST(TPoint6DList, AnIndexOutsideIsTheGeneralError) {
  EXPECT_THAT(Calling([] { (void)TPoint6DList()[0]; }), RaisesGeneralError("List index out of bounds (0)"));
}

// ---------------------------------------------------------------------------------------------- saving

TEST_F(TPoint6DListFile, SavesOneCrLfLinePerPose) {
  PosesFrom({"10,0,-5.25,0,0,1", "1,2,3,4,5,6"}).SaveToFile(FFile, 3);
  EXPECT_EQ(FileText(FFile), "10.000,0.000,-5.250,0.000,0.000,1.000\r\n1.000,2.000,3.000,4.000,5.000,6.000\r\n");
}

TEST_F(TPoint6DListFile, ClampsTheDecimalsTo0To12) {
  PosesFrom({"1,2,3,0,0,1"}).SaveToFile(FFile, -4);
  EXPECT_EQ(FileText(FFile), "1,2,3,0,0,1\r\n");
  PosesFrom({"1,2,3,0,0,1"}).SaveToFile(FFile, 20);
  EXPECT_THAT(FileText(FFile), StartsWith("1.000000000000,2."));
}

TEST_F(TPoint6DListFile, AnEmptyListOverwritesWithAnEmptyFile) {
  WriteFile(FFile, "old");
  TPoint6DList().SaveToFile(FFile, 3);
  EXPECT_EQ(FileText(FFile), "");
  EXPECT_EQ(FFolder.Count(), 1U);
}

TEST_F(TPoint6DListFile, SavesAndLoadsWithPointsInEveryLocale) {
  const TLocaleGuard locale(DecimalCommaLocale());
  PosesFrom({"1234.5,0,0,0,0,1"}).SaveToFile(FFile, 1);
  EXPECT_EQ(FileText(FFile), "1234.5,0.0,0.0,0.0,0.0,1.0\r\n");
  EXPECT_TRUE(FPoses.LoadFromFile(FFile));
  EXPECT_EQ(FPoses[0].X, 1234.5);
}

TEST_F(TPoint6DListFile, AFullDiskLeavesTheOldFileAndNothingBesideIt) {
  WriteFile(FFile, "old");
  TPoint6DList poses;
  for (int i = 0; i < 20000; ++i) poses.Add(i, i, i);
  for (const rlim_t bytes : {rlim_t{0}, rlim_t{1000}, rlim_t{300'000}}) {
    const TFileSizeLimit limit(bytes);
    EXPECT_THAT(Calling([&] { poses.SaveToFile(FFile, 6); }),
                RaisesGeneralError("Cannot write file \"" + FFile + "\". File too large"));
    EXPECT_EQ(FileText(FFile), "old");
    EXPECT_EQ(FFolder.Count(), 1U);
  }
}

TEST_F(TPoint6DListFile, AFullDeviceIsAnError) {
  EXPECT_THAT(Calling([] { PosesFrom({"1,2,3,4,5,6"}).SaveToFile("/dev/full", 3); }),
              RaisesGeneralError("Cannot write file \"/dev/full\". No space left on device"));
}

RC_GTEST_FIXTURE_PROP(TPoint6DListFile, WhatIsSavedLoadsBackToTheWrittenDigits, ()) {
  const auto component = rc::gen::map(rc::gen::arbitrary<int>(), [](int Steps) { return Steps * 1e-4; });
  const auto rows =
      *rc::gen::container<std::vector<std::array<double, 6>>>(rc::gen::container<std::array<double, 6>>(component));
  const int decimals = *rc::gen::inRange(0, 13);
  TPoint6DList poses;
  for (const auto& row : rows) poses.Add(TPoint6D::FromArray(row));
  poses.SaveToFile(FFile, decimals);
  RC_ASSERT(FPoses.LoadFromFile(FFile));
  RC_ASSERT(FPoses.Count() == poses.Count());
  for (int i = 0; i < poses.Count(); ++i)
    RC_ASSERT(FPoses[i].ToString1033(decimals) == poses[i].ToString1033(decimals));
}

// ---------------------------------------------------------------------------------------------- loading

TEST_F(TPoint6DListFile, LoadingReplacesTheContents) {
  WriteFile(FFile, "1,2,3,0,0,1\r\n4 5 6 0 0 1");
  EXPECT_TRUE(FPoses.LoadFromFile(FFile));
  EXPECT_THAT(FPoses, ElementsAre(IsExactPose(Pose(1, 2, 3, 0, 0, 1)), IsExactPose(Pose(4, 5, 6, 0, 0, 1))));
}

TEST_F(TPoint6DListFile, AnEmptyFileGivesAnEmptyList) {
  WriteFile(FFile, "");
  EXPECT_TRUE(FPoses.LoadFromFile(FFile));
  EXPECT_EQ(FPoses.Count(), 0);
}

TEST_F(TPoint6DListFile, LoadsTheMeasuredSamples) {
  for (const std::string_view name : {"e387.100mm.poses.txt", "swept-plane.poses.txt"}) {
    const std::string text = FileText(SampleFile(name));
    ASSERT_FALSE(text.empty());
    EXPECT_TRUE(FPoses.LoadFromFile(SampleFile(name)));
    EXPECT_EQ(FPoses.Count(), std::count(text.begin(), text.end(), '\n'));
  }
}

TEST_F(TPoint6DListFile, AFiveNumberLineStopsTheLoadNamesLine3AndKeepsTheTwoPosesBeforeIt) {
  EXPECT_EQ(FailureOf("1,1,1,0,0,1\r\n2,2,2,0,0,1\r\n3,3,3,0,0\r\n4,4,4,0,0,1\r\n"),
            FailText(3) + "TPoint6D Parse from string Failed(3,3,3,0,0). Error Item Number: 5");
  EXPECT_THAT(FPoses, ElementsAre(IsExactPose(Pose(1, 1, 1, 0, 0, 1)), IsExactPose(Pose(2, 2, 2, 0, 0, 1))));
}

TEST_F(TPoint6DListFile, AFileThatCannotBeOpenedReportsLine1AndEmptiesTheList) {
  EXPECT_THAT(Calling([&] { FPoses.LoadFromFile(FFile); }),
              RaisesGeneralError(FailText(1) + "Cannot open file \"" + FFile + "\". No such file or directory"));
  EXPECT_EQ(FPoses.Count(), 0);
}

TEST_F(TPoint6DListFile, AFileThatMayNotBeReadReportsLine1) {
  WriteFile(FFile, "1,2,3,4,5,6\r\n");
  fs::permissions(FFolder.Path(), fs::perms(0755));
  fs::permissions(FFile, fs::perms::none);
  const TUnprivileged user;
  ASSERT_TRUE(user.IsOrdinary());
  EXPECT_THAT(Calling([&] { FPoses.LoadFromFile(FFile); }),
              RaisesGeneralError(FailText(1) + "Cannot open file \"" + FFile + "\". Permission denied"));
}

TEST_F(TPoint6DListFile, AFolderReportsLine1) {
  EXPECT_THAT(Calling([&] { FPoses.LoadFromFile(FFolder.Path().string()); }),
              RaisesGeneralError(
                  AllOf(StartsWith("TPoint6DList LoadFromFile Fail: " + FFolder.Path().string() + " Line 1. \r\n"),
                        EndsWith("Is a directory"))));
}

TEST_F(TPoint6DListFile, AnEmptyLineAnywhereFails) {
  const std::string reason = "TPoint6D Parse from string Failed(). Error Item Number: 0";
  EXPECT_EQ(FailureOf("\r\n1,2,3,4,5,6\r\n"), FailText(1) + reason);
  EXPECT_EQ(FailureOf("1,2,3,4,5,6\r\n\r\n1,2,3,4,5,6\r\n"), FailText(2) + reason);
  EXPECT_EQ(FailureOf("1,2,3,4,5,6\r\n\r\n"), FailText(2) + reason);
  EXPECT_EQ(FPoses.Count(), 1);
  EXPECT_THAT(FailureOf("1,2,3,4,5,6\n \t\n"), StartsWith(FailText(2)));
}

TEST_F(TPoint6DListFile, AByteOrderMarkOfUtf8IsPassedOver) {
  WriteFile(FFile,
            "\xEF\xBB\xBF"
            "1,2,3,4,5,6\r\n");
  EXPECT_TRUE(FPoses.LoadFromFile(FFile));
  EXPECT_THAT(FPoses, ElementsAre(IsExactPose(Pose(1, 2, 3, 4, 5, 6))));
}

// The text in UTF-16 with two bytes for each of its characters.
std::string Utf16(std::string_view Text, bool IsLittleEndian) {
  std::string bytes;
  for (const char character : Text) {
    bytes += IsLittleEndian ? character : '\0';
    bytes += IsLittleEndian ? '\0' : character;
  }
  return bytes;
}

TEST_F(TPoint6DListFile, Utf16ReportsLine1WithAndWithoutItsMark) {
  for (const bool isLittleEndian : {true, false}) {
    const std::string text = Utf16("1,2,3,4,5,6\r\n1,2,3,4,5,6\r\n", isLittleEndian);
    EXPECT_EQ(FailureOf((isLittleEndian ? "\xFF\xFE" : "\xFE\xFF") + text),
              FailText(1) + "\"" + FFile + "\" is UTF-16 text; save it as ASCII or UTF-8");
    EXPECT_THAT(FailureOf(text), AllOf(StartsWith(FailText(1)), HasSubstr("A byte 0 stands at column ")));
    EXPECT_EQ(FPoses.Count(), 0);
  }
}

TEST_F(TPoint6DListFile, EveryKindOfLineEndAndTheirMixtureIsRead) {
  for (const std::string_view text :
       {"1,2,3,4,5,6\r7,8,9,0,0,1\r2,2,2,2,2,2"sv, "1,2,3,4,5,6\n7,8,9,0,0,1\n2,2,2,2,2,2\n"sv,
        "1,2,3,4,5,6\r7,8,9,0,0,1\n2,2,2,2,2,2\r\n"sv, "1,2,3,4,5,6\r\n7,8,9,0,0,1\r2,2,2,2,2,2\n"sv}) {
    WriteFile(FFile, text);
    EXPECT_TRUE(FPoses.LoadFromFile(FFile));
    EXPECT_THAT(FPoses, ElementsAre(IsExactPose(Pose(1, 2, 3, 4, 5, 6)), IsExactPose(Pose(7, 8, 9, 0, 0, 1)),
                                    IsExactPose(Pose(2, 2, 2, 2, 2, 2))));
  }
}

TEST_F(TPoint6DListFile, NulBytesAreAnErrorInTheirLineAndStallNothing) {
  EXPECT_THAT(FailureOf("1,2,3,4,5,6\r\n1,2,\0,4,5,6\r\n"sv),
              AllOf(StartsWith(FailText(2)), HasSubstr("byte 0 stands at column 5")));
  EXPECT_THAT(FailureOf("1,2,3,4,5,6\0"sv), AllOf(StartsWith(FailText(1)), HasSubstr("byte 0 stands at column 12")));
  EXPECT_THAT(FailureOf("\"1\0\",2,3,4,5,6"sv), AllOf(StartsWith(FailText(1)), HasSubstr("byte 0 stands at column 3")));
  EXPECT_THAT(FailureOf(std::string(1'000'000, '\0')),
              AllOf(StartsWith(FailText(1)), HasSubstr("byte 0 stands at column 1")));
}

TEST_F(TPoint6DListFile, NumbersThatAreNoneFailInTheirLine) {
  for (const std::string item : {"1e400", "-1e400", "nan", "NAN", "-nan", "inf", "-Infinity", "0x10", "0x1.8p1",
                                 "\xE2\x88\x92"
                                 "5",
                                 "1.2.3", "--1", "1e", "five", "\xEF\xBC\x95"}) {
    const std::string failure = FailureOf("1,2,3,4,5,6\r\n1,2,3,4,5," + item + "\r\n");
    EXPECT_THAT(failure,
                AllOf(StartsWith(FailText(2)), HasSubstr("'" + item + "' is "), EndsWith(" floating point value")));
    EXPECT_EQ(FPoses.Count(), 1);
  }
}

TEST_F(TPoint6DListFile, NumbersTooSmallForADoubleAreTheNearestOnes) {
  WriteFile(FFile, "1e-400,-1e-400,4.9406564584124654e-324,2.2250738585072011e-308,1e-320,1\r\n");
  EXPECT_TRUE(FPoses.LoadFromFile(FFile));
  EXPECT_THAT(FPoses[0], IsExactPose(Pose(0.0, -0.0, 0x1p-1074, 0x0.fffffffffffffp-1022, 1e-320, 1)));
}

TEST_F(TPoint6DListFile, DecimalCommasFailByTheirCount) {
  EXPECT_THAT(FailureOf("1,5 2,5 3,5 0,0 0,0 1,0\r\n"),
              AllOf(StartsWith(FailText(1)), EndsWith("Error Item Number: 12")));
  EXPECT_THAT(FailureOf("1,5;2,5;3,5;0,0;0,0;1,0\r\n"),
              AllOf(StartsWith(FailText(1)), EndsWith("Error Item Number: 7")));
}

// A second of processor time is far more than ten megabytes need.
TEST_F(TPoint6DListFile, ATenMegabyteLineIsAnsweredWithinASecondByAShortMessage) {
  constexpr std::size_t size = 10'000'000;
  std::string items;
  for (std::size_t i = 0; i < size / 2; ++i) items += "1,";
  const std::string quotes(size, '"');
  for (const std::string& line :
       {std::string(size, '7'), std::string(size, 'x'), std::string(size, ' '), std::string(size, ','), items, quotes,
        "1,2,3,4,5," + std::string(size, '1'), "0." + std::string(size, '0') + "1,2"}) {
    const std::clock_t begin = std::clock();
    const std::string failure = FailureOf("1,2,3,4,5,6\r\n" + line + "\r\n");
    EXPECT_LT(static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC, 1.0) << line.substr(0, 20);
    EXPECT_THAT(failure, AllOf(StartsWith(FailText(2)), SizeIs(Lt(1000U)), HasSubstr("...")));
  }
}

long PeakMemoryInMegabytes() {
  rusage usage{};
  ::getrusage(RUSAGE_SELF, &usage);
  return usage.ru_maxrss / 1024;
}

TEST_F(TPoint6DListFile, EndlessInputEndsWithAnErrorAndBoundedMemory) {
  const long before = PeakMemoryInMegabytes();
  EXPECT_THAT(
      Calling([&] { FPoses.LoadFromFile("/dev/zero"); }),
      RaisesGeneralError("TPoint6DList LoadFromFile Fail: /dev/zero Line 1. \r\n\"/dev/zero\" has a line of more than "
                         "67108864 bytes; it is no text file of points"));
  EXPECT_LT(PeakMemoryInMegabytes() - before, 400);
  EXPECT_EQ(FPoses.Count(), 0);
}

TEST_F(TPoint6DListFile, ANamedPipeIsReadToItsEnd) {
  ASSERT_EQ(::mkfifo(FFile.c_str(), 0600), 0);
  std::thread writer([&] { WriteFile(FFile, "1,2,3,4,5,6\r\n7,8,9,0,0,1"); });
  EXPECT_TRUE(FPoses.LoadFromFile(FFile));
  writer.join();
  EXPECT_EQ(FPoses.Count(), 2);
}

TEST_F(TPoint6DListFile, APipeThatClosesWithinALineFailsInThatLine) {
  ASSERT_EQ(::mkfifo(FFile.c_str(), 0600), 0);
  std::thread writer([&] { WriteFile(FFile, "1,2,3,4,5,6\r\n7,8,9"); });
  EXPECT_THAT(Calling([&] { FPoses.LoadFromFile(FFile); }),
              RaisesGeneralError(FailText(2) + "TPoint6D Parse from string Failed(7,8,9). Error Item Number: 3"));
  writer.join();
}

}  // namespace
}  // namespace ZORBase
