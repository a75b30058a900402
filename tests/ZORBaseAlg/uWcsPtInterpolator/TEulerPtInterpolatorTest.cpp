#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>
#include <ZORBase/ZORGeometry/CADTypesEuler.h>

#include "support/SystemLimits.h"
#include "support/TestSupport.h"

#include <limits>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::FileText;
using Test::RaisesGeneralError;
using Test::TFileSizeLimit;
using Test::TLocaleGuard;
using Test::TScratchFolder;
using Test::WriteFile;
using testing::DoubleNear;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Pointwise;
using testing::StartsWith;

TEulerPoint At(double X, double Y, double Z) { return TEulerPoint::Create(X, Y, Z, 0, 0, 0); }

TEulerPoint TurnedByDegrees(double Rx, double Ry, double Rz) {
  return TEulerPoint::Create(TPoint3D::FZero, TEulerAng::CreatebyDegree(Rx, Ry, Rz));
}

std::array<std::uint64_t, 6> BitsOf(const TEulerPoint& P) { return std::bit_cast<std::array<std::uint64_t, 6>>(P); }

// ---------------------------------------------------------------------------------------------- count

TEST(TEulerPtInterpolator, ACountOf0Becomes1) {
  TEulerPtInterpolator move(At(0, 0, 0), At(3, 0, 0), 0);
  EXPECT_EQ(move.Count(), 1);
  EXPECT_THAT(move.GetWcsPt(0).ToArray(), ElementsAre(0, 0, 0, 0, 0, 0));
  EXPECT_THAT(move.GetWcsPt(1).ToArray(), ElementsAre(3, 0, 0, 0, 0, 0));
  move.SetCount(7);
  EXPECT_EQ(move.Count(), 7);
  EXPECT_EQ(move.Cnt(), 7);
}

TEST(TEulerPtInterpolator, AnAutomaticCountKeepsStepsWithin0Point2AndATenthOfADegree) {
  EXPECT_EQ(TEulerPtInterpolator(At(0, 0, 0), At(0, 0, 1.1), -1).Count(), 6);
  EXPECT_EQ(TEulerPtInterpolator(At(0, 0, 0), TurnedByDegrees(0, 1.05, 0), -1).Count(), 11);
  EXPECT_EQ(TEulerPtInterpolator(At(1, 2, 3), At(1, 2, 3), -1).Count(), 1);
}

// The vector (0.3, 0.4, 1.2) degrees is 1.3 degrees long; 13 steps of 0.1 meet the limit but for rounding, so take 0.125.
TEST(TEulerPtInterpolator, TheAngleOfAnAutomaticCountIsTheLengthOfTheThreeDifferences) {
  const TEulerPtInterpolator move(At(0, 0, 0), TurnedByDegrees(0.3, 0.4, -1.2), 1.0, 0.125);
  EXPECT_EQ(move.Count(), 11);
}

TEST(TEulerPtInterpolator, TheCallersLimitsAreALengthAndDegrees) {
  const TEulerPtInterpolator byLength(At(0, 0, 0), At(30, 40, 0), 7.0, 1.0);
  EXPECT_EQ(byLength.Count(), 8);
  EXPECT_EQ(byLength.MaxDis(), 7.0);
  EXPECT_EQ(byLength.MaxRad(), kPi / 180);
  EXPECT_EQ(TEulerPtInterpolator(At(0, 0, 0), TurnedByDegrees(0, 0, 90), 7.0, 20.0).Count(), 5);
}

TEST(TEulerPtInterpolator, TheCallersLimitsHoldForLaterAutomaticCounts) {
  TEulerPtInterpolator move(At(0, 0, 0), At(30, 40, 0), 7.0, 1.0);
  move.SetCount(3);
  EXPECT_EQ(move.Count(), 3);
  move.SetCount(-5);
  EXPECT_EQ(move.Count(), 8);
}

TEST(TEulerPtInterpolator, TheLargestCountFitsAndOneMoreRaises) {
  EXPECT_EQ(TEulerPtInterpolator(At(0, 0, 0), At(kLargestInt, 0, 0), 1.0, 1.0).Count(), kLargestInt);
  EXPECT_THAT(Calling([] { TEulerPtInterpolator(At(0, 0, 0), At(kLargestInt + 0.5, 0, 0), 1.0, 1.0); }),
              RaisesGeneralError(HasSubstr("needs 2147483648 steps")));
}

TEST(TEulerPtInterpolator, AnAutomaticCountThatDoesNotFitNamesTheNumbersAndLeavesTheOldOne) {
  TEulerPtInterpolator move(At(0, 0, 0), At(1e12, 0, 0), 4);
  EXPECT_THAT(
      Calling([&] { move.SetCount(-1); }),
      RaisesGeneralError("TEulerPtInterpolator: a move of 1000000000000.000000 with a turn of 0.000000 rad needs "
                         "5000000000000 steps of at most 0.200000 and 0.001745 rad; at most 2147483647 are "
                         "possible"));
  EXPECT_EQ(move.Count(), 4);
  EXPECT_EQ(move.GetWcsPt(1).X, 0.25e12);
  EXPECT_THAT(Calling([] { TEulerPtInterpolator(At(0, 0, 0), TEulerPoint::Create(0, 0, 0, 0, 1e200, 0), -1); }),
              RaisesGeneralError(HasSubstr("needs inf steps")));
}

TEST(TEulerPtInterpolator, ALimitThatIsNotFiniteAndAbove0Raises) {
  const auto begin = At(0, 0, 0);
  for (const double bad : {0.0, -0.0, -1.0, std::nan(""), kInfinity, -kInfinity}) {
    EXPECT_THAT(Calling([&] { TEulerPtInterpolator(begin, At(1, 0, 0), bad, 1.0); }),
                RaisesGeneralError(StartsWith("TEulerPtInterpolator: MaxDis must be finite and above 0, not ")));
    EXPECT_THAT(Calling([&] { TEulerPtInterpolator(begin, begin, 1.0, bad); }),
                RaisesGeneralError(StartsWith("TEulerPtInterpolator: MaxDeg must be finite and above 0, not ")));
  }
  EXPECT_THAT(Calling([&] { TEulerPtInterpolator(begin, begin, 0.0, 1.0); }),
              RaisesGeneralError("TEulerPtInterpolator: MaxDis must be finite and above 0, not 0.000000"));
  EXPECT_THAT(Calling([&] { TEulerPtInterpolator(begin, begin, 1.0, std::numeric_limits<double>::denorm_min()); }),
              RaisesGeneralError(StartsWith("TEulerPtInterpolator: MaxDeg must be")));
  EXPECT_THAT(
      Calling([&] { TEulerPtInterpolator(begin, At(1, 0, 0), std::numeric_limits<double>::denorm_min(), 1.0); }),
      RaisesGeneralError(HasSubstr("needs inf steps")));
}

// ---------------------------------------------------------------------------------------------- poses

TEST(TEulerPtInterpolator, ShowsWhatItWasMadeOf) {
  const auto begin = TEulerPoint::Create(1, 2, 3, 0.5, 0, -1);
  const auto end = TEulerPoint::Create(5, 7, 9, 1, -2, 4);
  const TEulerPtInterpolator move(begin, end, 10);
  EXPECT_EQ(BitsOf(move.BeginPt()), BitsOf(begin));
  EXPECT_EQ(BitsOf(move.EndPt()), BitsOf(end));
  EXPECT_THAT(TEulerPoint::Create(move.OffsetPt(), move.OffOrient()).ToArray(), ElementsAre(4, 5, 6, 0.5, -2, 5));
  EXPECT_EQ(move.MaxDis(), 0.2);
  EXPECT_DOUBLE_EQ(move.MaxRad(), 0.1 * kPi / 180);
}

TEST(TEulerPtInterpolator, PositionAndEachAngleChangeLinearly) {
  const TEulerPtInterpolator move(TEulerPoint::Create(0, 2, 3, 0, 1, -1), TEulerPoint::Create(4, -2, 3, 2, 1, 3), 4);
  EXPECT_THAT(move.GetWcsPt(1).ToArray(), ElementsAre(1, 1, 3, 0.5, 1, 0));
  EXPECT_THAT(move.GetWcsPtbyParam(0.5).ToArray(), ElementsAre(2, 0, 3, 1, 1, 1));
  EXPECT_THAT(move.GetWcsPtbyParam(0.875).ToArray(), ElementsAre(3.5, -1.5, 3, 1.75, 1, 2.5));
}

TEST(TEulerPtInterpolator, From170ToMinus170DegreesAnAngleGoesTheLongWayThrough0) {
  const TEulerPtInterpolator move(TurnedByDegrees(0, 0, 170), TurnedByDegrees(0, 0, -170), 1.0, 0.9);
  EXPECT_EQ(move.Count(), 378);  // 340 / 0.9 = 377.8
  EXPECT_NEAR(move.GetWcsPtbyParam(0.25).Rz, 85 * kPi / 180, 1e-15);
  EXPECT_NEAR(move.GetWcsPtbyParam(0.5).Rz, 0, 1e-15);
}

TEST(TEulerPtInterpolator, NumbersOutsideGiveTheEndPoses) {
  const TEulerPtInterpolator move(At(0, 0, 0), TEulerPoint::Create(6, 0, 0, 0, 3, 0), 3);
  for (const int below : {0, -3, std::numeric_limits<int>::min()}) EXPECT_EQ(move.GetWcsPt(below).X, 0);
  for (const int above : {3, 3 + 7, kLargestInt}) {
    EXPECT_THAT(move.GetWcsPt(above).ToArray(), ElementsAre(6, 0, 0, 0, 3, 0));
  }
}

TEST(TEulerPtInterpolator, ParametersOutsideGiveTheEndPosesAndNoNumberRaises) {
  const TEulerPtInterpolator move(At(0, 0, 0), At(1, 0, 0), 3);
  EXPECT_EQ(move.GetWcsPtbyParam(-0.5).X, 0);
  EXPECT_EQ(move.GetWcsPtbyParam(-kInfinity).X, 0);
  EXPECT_EQ(move.GetWcsPtbyParam(1.5).X, 1);
  EXPECT_EQ(move.GetWcsPtbyParam(kInfinity).X, 1);
  EXPECT_THAT(Calling([&] { move.GetWcsPtbyParam(std::nan("")); }),
              RaisesGeneralError("TEulerPtInterpolator: the parameter is not a number"));
}

TEST(TEulerPtInterpolator, PosesThatAreNotFiniteRaise) {
  for (const double bad : {std::nan(""), kInfinity, -kInfinity}) {
    for (int i = 0; i < 6; ++i) {
      TEulerPoint pose;
      pose.Items(i) = bad;
      EXPECT_THAT(Calling([&] { TEulerPtInterpolator(pose, At(0, 0, 0), 3); }),
                  RaisesGeneralError(StartsWith("TEulerPtInterpolator: BeginPt is not finite: ")));
      EXPECT_THAT(Calling([&] { TEulerPtInterpolator(At(0, 0, 0), pose, 1.0, 1.0); }),
                  RaisesGeneralError(StartsWith("TEulerPtInterpolator: EndPt is not finite: ")));
    }
  }
}

TEST(TEulerPtInterpolator, AnOffsetThatOverflowsRaises) {
  const auto far = [](double Rz) { return TEulerPoint::Create(0, 0, 0, 0, 0, Rz); };
  EXPECT_THAT(Calling([&] { TEulerPtInterpolator(far(1e308), far(-1e308), 3); }),
              RaisesGeneralError("TEulerPtInterpolator: EndPt - BeginPt is not finite: "
                                 "0.000000,0.000000,0.000000,0.000000,0.000000,-inf"));
}

RC_GTEST_PROP(TEulerPtInterpolator, AMoveMeetsItsEndsAndGrowsLinearly, ()) {
  TEulerPoint begin;
  TEulerPoint end;
  for (int i = 0; i < 6; ++i) begin.Items(i) = *rc::gen::inRange(-100000, 100001) / 1000.0;
  for (int i = 0; i < 6; ++i) end.Items(i) = *rc::gen::inRange(-100000, 100001) / 1000.0;
  const TEulerPtInterpolator move(begin, end, *rc::gen::inRange(1, 1000));
  RC_ASSERT(move.GetWcsPt(0).ToArray() == begin.ToArray());
  for (int i = 0; i < 6; ++i) RC_ASSERT(std::fabs(move.GetWcsPt(move.Count()).Items(i) - end.Items(i)) <= 1e-13);
  const double param = *rc::gen::inRange(0, 1001) / 1000.0;
  const TEulerPoint pose = move.GetWcsPtbyParam(param);
  for (int i = 0; i < 6; ++i) {
    RC_ASSERT(std::fabs(pose.Items(i) - (begin.Items(i) * (1 - param) + end.Items(i) * param)) <= 1e-12);
  }
}

// ---------------------------------------------------------------------------------------------- many at once

TEST(TEulerPtInterpolator, ASingleStepGivesNoList) {
  EXPECT_EQ(TEulerPtInterpolator(At(0, 0, 0), At(1, 0, 0), 1).GetWcsList(), std::nullopt);
  EXPECT_EQ(TEulerPtInterpolator(At(0, 0, 0), At(1, 0, 0), 0).GetWcsList(), std::nullopt);
}

TEST(TEulerPtInterpolator, TwoStepsGiveAListOf3Poses) {
  const auto poses = TEulerPtInterpolator(At(0, 0, 0), At(1, 0, 2), 2).GetWcsList();
  ASSERT_TRUE(poses.has_value());
  ASSERT_EQ(poses->Count(), 3);
  EXPECT_THAT((*poses)[0].ToArray(), ElementsAre(0, 0, 0, 0, 0, 0));
  EXPECT_THAT((*poses)[1].ToArray(), ElementsAre(0.5, 0, 1, 0, 0, 0));
  EXPECT_THAT((*poses)[2].ToArray(), ElementsAre(1, 0, 2, 0, 0, 0));
}

TEST(TEulerPtInterpolator, AListHoldsThePosesOneByOneToTheBit) {
  const TEulerPtInterpolator move(TEulerPoint::Create(1, 2, 3, 0.1, 0.2, 0.3), TEulerPoint::Create(-7, 1, 0, 3, 2, 1),
                                  333);
  const auto poses = move.GetWcsList();
  ASSERT_TRUE(poses.has_value());
  ASSERT_EQ(poses->Count(), 334);
  for (int i = 0; i <= 333; ++i) ASSERT_EQ(BitsOf((*poses)[i]), BitsOf(move.GetWcsPt(i))) << i;
}

TEST(TEulerPtInterpolator, AListOfTooManyPosesRaisesWithTheNumbers) {
  TEulerPtInterpolator move(At(0, 0, 0), At(1, 0, 0), kLargestInt);
  EXPECT_THAT(Calling([&] { (void)move.GetWcsList(); }),
              RaisesGeneralError("TEulerPtInterpolator.GetWcsList: 2147483647 steps make more than the 10000000 poses "
                                 "that a list holds; use SaveAllToFile or GetWcsPt"));
  move.SetCount(TEulerPtInterpolator::kMaxListPoses);
  EXPECT_THAT(Calling([&] { (void)move.GetWcsList(); }),
              RaisesGeneralError(HasSubstr("10000000 steps make more than")));
}

TEST(TEulerPtInterpolator, ManyPosesAtOnceAreThePosesOneByOneToTheBit) {
  const TEulerPtInterpolator move(TEulerPoint::Create(1, 2, 3, 0.1, 0.2, 0.3), TEulerPoint::Create(-7, 1, 0, 3, 2, 1),
                                  1);
  std::vector<double> params = {-1, 2, kInfinity};
  for (int i = 0; i <= 1000; ++i) params.push_back(i / 1000.0);
  std::vector<TEulerPoint> poses(params.size());
  move.GetWcsPtsbyParams(params, poses);
  for (std::size_t i = 0; i < params.size(); ++i) ASSERT_EQ(BitsOf(poses[i]), BitsOf(move.GetWcsPtbyParam(params[i])));
  move.GetWcsPtsbyParams({}, {});
}

TEST(TEulerPtInterpolator, ManyPosesAtOnceNeedAPlaceForEachAndNumbers) {
  const TEulerPtInterpolator move(At(0, 0, 0), At(1, 0, 0), 1);
  const auto untouched = TEulerPoint::Create(1, 1, 1, 1, 1, 1);
  std::vector<TEulerPoint> poses(2, untouched);
  EXPECT_THAT(Calling([&] {
                move.GetWcsPtsbyParams(std::array{0.0, 0.5, 1.0}, poses);
              }),
              RaisesGeneralError("TEulerPtInterpolator: 3 parameters, but places for 2 poses"));
  EXPECT_THAT(Calling([&] {
                move.GetWcsPtsbyParams(std::array{0.0, std::nan("")}, poses);
              }),
              RaisesGeneralError("TEulerPtInterpolator: the parameter is not a number"));
  for (const TEulerPoint& pose : poses) EXPECT_EQ(BitsOf(pose), BitsOf(untouched));
}

// ---------------------------------------------------------------------------------------------- file

TEST(TEulerPtInterpolator, AFileHoldsEveryPoseWith5DecimalsInTheFormOfTheLocale) {
  const TScratchFolder folder;
  const std::string file = folder.File("steps.txt");
  const TEulerPtInterpolator move(At(0, 0, 0), TEulerPoint::Create(1, -2, 0, 0.5, 0, 3), 2);
  {
    const TLocaleGuard guard(std::locale::classic());
    move.SaveAllToFile(file);
    EXPECT_EQ(FileText(file),
              "0.00000,0.00000,0.00000,0.00000,0.00000,0.00000\r\n"
              "0.50000,-1.00000,0.00000,0.25000,0.00000,1.50000\r\n"
              "1.00000,-2.00000,0.00000,0.50000,0.00000,3.00000\r\n");
  }
  const TLocaleGuard guard(std::locale("de_DE.UTF-8"));
  move.SaveAllToFile(file);
  EXPECT_EQ(FileText(file),
            "0,00000,0,00000,0,00000,0,00000,0,00000,0,00000\r\n"
            "0,50000,-1,00000,0,00000,0,25000,0,00000,1,50000\r\n"
            "1,00000,-2,00000,0,00000,0,50000,0,00000,3,00000\r\n");
}

TEST(TEulerPtInterpolator, WithADecimalPointTheFileReadsBackAsAList) {
  const TLocaleGuard guard(std::locale::classic());
  const TScratchFolder folder;
  const std::string file = folder.File("steps.txt");
  const TEulerPtInterpolator move(At(0, 0, 0), TEulerPoint::Create(10, 20, 30, 1, 2, 3), 50);
  move.SaveAllToFile(file);
  TEulerPointList poses;
  poses.LoadFromFile(file);
  ASSERT_EQ(poses.Count(), 51);
  for (int i = 0; i <= 50; ++i) {
    EXPECT_THAT(poses[i].ToArray(), Pointwise(DoubleNear(0.5e-5 + 1e-12), move.GetWcsPt(i).ToArray()));
  }
}

// The largest count stops at the first block that does not fit; nothing is collected before.
TEST(TEulerPtInterpolator, AFullDiskLeavesTheOldFileWholeAndNothingBesideItEvenForTheLargestCount) {
  const TScratchFolder folder;
  const std::string file = folder.File("steps.txt");
  WriteFile(file, "the old file");
  for (const int count : {100, kLargestInt}) {
    const TEulerPtInterpolator move(At(0, 0, 0), At(1, 0, 0), count);
    const TFileSizeLimit limit(1000);
    EXPECT_THAT(Calling([&] { move.SaveAllToFile(file); }),
                RaisesGeneralError(StartsWith("Cannot write file \"" + file)));
  }
  EXPECT_EQ(FileText(file), "the old file");
  EXPECT_EQ(folder.Count(), 1);
}

TEST(TEulerPtInterpolator, SavingIntoAFolderThatIsNotThereRaises) {
  const TScratchFolder folder;
  const std::string file = folder.File("missing/steps.txt");
  EXPECT_THAT(Calling([&] { TEulerPtInterpolator(At(0, 0, 0), At(1, 0, 0), 1).SaveAllToFile(file); }),
              RaisesGeneralError(StartsWith("Cannot write file \"" + file)));
}

}  // namespace
}  // namespace ZORBase
