#include <ZORBase/ZORGeometry/CADTypesEuler.h>

#include "support/SystemLimits.h"
#include "support/TestSupport.h"

#include <numbers>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::FileText;
using Test::IsNearPose;
using Test::RaisesGeneralError;
using Test::TFileSizeLimit;
using Test::TLocaleGuard;
using Test::TScratchFolder;
using Test::WriteFile;
using testing::ElementsAre;
using testing::StartsWith;

TEulerPointList TwoPoses() {
  TEulerPointList poses;
  poses.Add(1, 2, 3, 0.1, 0.2, 0.3);
  poses.Add(-10.5, 0, 0.00004, 3.14159265, -0.5, 0);
  return poses;
}

constexpr std::string_view kTwoLines =
    "1.0000,2.0000,3.0000,0.1000,0.2000,0.3000\r\n"
    "-10.5000,0.0000,0.0000,3.1416,-0.5000,0.0000\r\n";

TEST(TEulerPointList, AddTakesAPoseSixNumbersOrAPositionWithoutAngles) {
  TEulerPointList poses;
  poses.Add(1, 2, 3);
  poses.Add(1, 2, 3, 4, 5, 6);
  poses.Add(TEulerPoint::Create(6, 5, 4, 3, 2, 1));
  ASSERT_EQ(poses.Count(), 3);
  EXPECT_THAT(poses[0].ToArray(), ElementsAre(1, 2, 3, 0, 0, 0));
  EXPECT_THAT(poses[1].ToArray(), ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_THAT(poses[2].ToArray(), ElementsAre(6, 5, 4, 3, 2, 1));
}

TEST(TEulerPointList, SixComponentPosesComeInTheSameOrder) {
  TEulerPointList poses;
  EXPECT_EQ(poses.ToPoint6DList().Count(), 0);
  poses.Add(1, 2, 3);
  poses.Add(4, 5, 6, std::numbers::pi / 2, 0, 0);
  const TPoint6DList converted = poses.ToPoint6DList();
  ASSERT_EQ(converted.Count(), 2);
  EXPECT_THAT(converted[0], IsNearPose(TPoint6D::Create(1, 2, 3, 0, 0, 1), 0));
  EXPECT_THAT(converted[1], IsNearPose(TPoint6D::Create(4, 5, 6, 0, -1, 0), 1e-16));
}

// ---------------------------------------------------------------------------------------------- saving

TEST(TEulerPointList, AFileHas4DecimalsWhateverIsAskedForInEveryLocale) {
  const TScratchFolder folder;
  const std::string file = folder.File("poses.txt");
  for (const char* const locale : {"C", "de_DE.UTF-8"}) {
    const TLocaleGuard guard{std::locale(locale)};
    for (const int decimal : {8, 4, 0, -1}) {
      TwoPoses().SaveToFile(file, decimal);
      EXPECT_EQ(FileText(file), kTwoLines) << locale << " " << decimal;
    }
  }
}

TEST(TEulerPointList, AnEmptyListMakesAnEmptyFile) {
  const TScratchFolder folder;
  const std::string file = folder.File("poses.txt");
  WriteFile(file, "something else");
  TEulerPointList().SaveToFile(file, 4);
  EXPECT_EQ(FileText(file), "");
}

TEST(TEulerPointList, AFullDiskLeavesTheOldFileWholeAndNothingBesideIt) {
  const TScratchFolder folder;
  const std::string file = folder.File("poses.txt");
  TwoPoses().SaveToFile(file, 4);
  TEulerPointList many;
  for (int i = 0; i < 100; ++i) many.Add(i, i, i);
  {
    const TFileSizeLimit limit(1000);
    EXPECT_THAT(Calling([&] { many.SaveToFile(file, 4); }),
                RaisesGeneralError(StartsWith("Cannot write file \"" + file)));
  }
  EXPECT_EQ(FileText(file), kTwoLines);
  EXPECT_EQ(folder.Count(), 1);
}

TEST(TEulerPointList, SavingIntoAFolderThatIsNotThereRaises) {
  const TScratchFolder folder;
  const std::string file = folder.File("missing/poses.txt");
  EXPECT_THAT(Calling([&] { TwoPoses().SaveToFile(file, 4); }),
              RaisesGeneralError(StartsWith("Cannot write file \"" + file)));
}

// ---------------------------------------------------------------------------------------------- loading

TEST(TEulerPointList, AFileIsReadWithAnyNumberOfDecimalsInEveryLocale) {
  const TScratchFolder folder;
  const std::string file = folder.File("poses.txt");
  WriteFile(file, "1,2,3,4,5,6\r\n.5, -0.25 ,1e2 0 0 0.123456789\n\"7\",8,9,10,11,12");
  for (const char* const locale : {"C", "de_DE.UTF-8"}) {
    const TLocaleGuard guard{std::locale(locale)};
    TEulerPointList poses = TwoPoses();
    EXPECT_TRUE(poses.LoadFromFile(file));
    ASSERT_EQ(poses.Count(), 3);
    EXPECT_THAT(poses[0].ToArray(), ElementsAre(1, 2, 3, 4, 5, 6));
    EXPECT_THAT(poses[1].ToArray(), ElementsAre(0.5, -0.25, 100, 0, 0, 0.123456789));
    EXPECT_THAT(poses[2].ToArray(), ElementsAre(7, 8, 9, 10, 11, 12));
  }
}

TEST(TEulerPointList, WhatIsSavedLoadsWithinHalfAUnitOfTheFourthDecimal) {
  const TScratchFolder folder;
  const std::string file = folder.File("poses.txt");
  const TEulerPointList poses = TwoPoses();
  poses.SaveToFile(file, 4);
  TEulerPointList back;
  EXPECT_TRUE(back.LoadFromFile(file));
  ASSERT_EQ(back.Count(), 2);
  for (int i = 0; i < 2; ++i) {
    for (int j = 0; j < 6; ++j) EXPECT_NEAR(back[i].Items(j), poses[i].Items(j), 0.5e-4 + 1e-15);
  }
}

TEST(TEulerPointList, AnEmptyFileEmptiesTheList) {
  const TScratchFolder folder;
  const std::string file = folder.File("poses.txt");
  WriteFile(file, "");
  TEulerPointList poses = TwoPoses();
  EXPECT_TRUE(poses.LoadFromFile(file));
  EXPECT_EQ(poses.Count(), 0);
}

TEST(TEulerPointList, AFiveNumberLineStopsTheLoadNamesLine3AndKeepsTheTwoPosesBeforeIt) {
  const TScratchFolder folder;
  const std::string file = folder.File("poses.txt");
  WriteFile(file, "1,2,3,4,5,6\r\n2,2,3,4,5,6\r\n1,2,3,4,5\r\n4,2,3,4,5,6\r\n");
  TEulerPointList poses;
  poses.Add(9, 9, 9);
  EXPECT_THAT(Calling([&] { poses.LoadFromFile(file); }),
              RaisesGeneralError("TPointSphereList LoadFromFile Fail: " + file +
                                 " Line 3. \r\nTEulerPoint Parse from string Failed(1,2,3,4,5). Error Item Number: 5"));
  ASSERT_EQ(poses.Count(), 2);
  EXPECT_EQ(poses[0].X, 1);
  EXPECT_EQ(poses[1].X, 2);
}

TEST(TEulerPointList, AnEmptyLineStopsTheLoad) {
  const TScratchFolder folder;
  const std::string file = folder.File("poses.txt");
  WriteFile(file, "1,2,3,4,5,6\r\n\r\n");
  TEulerPointList poses;
  EXPECT_THAT(Calling([&] { poses.LoadFromFile(file); }),
              RaisesGeneralError("TPointSphereList LoadFromFile Fail: " + file +
                                 " Line 2. \r\nTEulerPoint Parse from string Failed(). Error Item Number: 0"));
  EXPECT_EQ(poses.Count(), 1);
}

TEST(TEulerPointList, AMissingFileIsReportedAtLine1AndTheListIsEmpty) {
  const TScratchFolder folder;
  const std::string file = folder.File("missing.txt");
  TEulerPointList poses = TwoPoses();
  EXPECT_THAT(Calling([&] { poses.LoadFromFile(file); }),
              RaisesGeneralError(StartsWith("TPointSphereList LoadFromFile Fail: " + file + " Line 1. \r\n")));
  EXPECT_EQ(poses.Count(), 0);
}

}  // namespace
}  // namespace ZORBase
