#include <zor/PoseMeasures.h>

#include "support/TestSupport.h"

#include <numbers>

namespace ZORBase::Tool {
namespace {

using Test::IsExactPose;
using Test::PosesFrom;

TEST(PoseMeasures, TheBoxHoldsTheSmallestAndLargestOfEachComponent) {
  const TBox box = BoxOf(PosesFrom({"1,5,-3,0,0,1", "-2,6,-4,0.5,-1,0", "0,0,0,0,0.5,-1"}));
  EXPECT_THAT(box.Min, IsExactPose(TPoint6D::Create(-2, 0, -4, 0, -1, -1)));
  EXPECT_THAT(box.Max, IsExactPose(TPoint6D::Create(1, 6, 0, 0.5, 0.5, 1)));
}

TEST(PoseMeasures, ChordsCountAllSixComponents) {
  const auto chords = ChordsOf(PosesFrom({"0,0,0,0,0,0", "3,0,0,0,4,0", "3,0,0,0,4,1", "3,0,0,0,4,8"}));
  ASSERT_TRUE(chords);
  EXPECT_THAT(chords->Chords, testing::ElementsAre(5.0, 1.0, 7.0));
  EXPECT_EQ(chords->Sum, 13.0);
  EXPECT_EQ(chords->Mean, 13.0 / 3.0);
  EXPECT_EQ(chords->Smallest.Value, 1.0);
  EXPECT_EQ(chords->Smallest.Pose, 1);
  EXPECT_EQ(chords->Largest.Value, 7.0);
  EXPECT_EQ(chords->Largest.Pose, 2);
}

TEST(PoseMeasures, PointsOfThePlaneHaveABoxAndChords) {
  const TList<TPoint2D> points = {{1, 5}, {4, 1}, {-2, 1}};
  EXPECT_THAT(BoxOf(points).Min, IsExactPose(TPoint6D::Create(-2, 1, 0, 0, 0, 0)));
  EXPECT_THAT(BoxOf(points).Max, IsExactPose(TPoint6D::Create(4, 5, 0, 0, 0, 0)));
  EXPECT_EQ(ExtentOf(BoxOf(points)), 6.0);
  EXPECT_THAT(ChordsOf(points)->Chords, testing::ElementsAre(5.0, 6.0));
}

TEST(PoseMeasures, ASinglePoseHasNoChords) { EXPECT_FALSE(ChordsOf(PosesFrom({"0,0,0,0,0,1"}))); }

TEST(PoseMeasures, TheFirstOfEqualExtremesIsNamed) {
  const auto chords = ChordsOf(PosesFrom({"0,0,0,0,0,1", "2,0,0,0,0,1", "4,0,0,0,0,1"}));
  EXPECT_EQ(chords->Smallest.Pose, 0);
  EXPECT_EQ(chords->Largest.Pose, 0);
}

TEST(PoseMeasures, DirectionsHaveTheLengthOfABC) {
  const TDirectionFigures directions = DirectionsOf(PosesFrom({"9,9,9,0,0,1", "9,9,9,0,3,4", "9,9,9,0.5,0,0"}));
  EXPECT_EQ(directions.Longest.Value, 5.0);
  EXPECT_EQ(directions.Longest.Pose, 1);
  EXPECT_EQ(directions.Shortest.Value, 0.5);
  EXPECT_EQ(directions.Shortest.Pose, 2);
}

// The path is about 1000 long, so its millionth part is 1e-3.
TEST(PoseMeasures, CloseNeighboursAreGradedByWhatAFitDoesWithThem) {
  const auto chords = ChordsOf(PosesFrom({"0,0,0,0,0,1", "500,0,0,0,0,1", "500.0000009,0,0,0,0,1", "500.0009,0,0,0,0,1",
                                          "500.0027,0,0,0,0,1", "500.005,0,0,0,0,1", "1000,0,0,0,0,1"}));
  const std::vector<TCloseNeighbours> close = CloseNeighbours(*chords);
  ASSERT_EQ(close.size(), 3U);
  EXPECT_EQ(close[0].Closeness, clSame);
  EXPECT_EQ(close[0].Chord.Pose, 1);
  EXPECT_EQ(close[1].Closeness, clTooClose);
  EXPECT_EQ(close[1].Chord.Pose, 2);
  EXPECT_EQ(close[2].Closeness, clDangerous);
  EXPECT_EQ(close[2].Chord.Pose, 3);
}

TEST(PoseMeasures, TheLargestTurnIsPerChordAndPassesOverTheSamePose) {
  // A right angle over a chord of sqrt(100 + 2), then half of one over a chord of about 0.77.
  const TPoint6DList poses =
      PosesFrom({"0,0,0,0,0,1", "10,0,0,0,1,0", "10,0,0,0,1,0", "10,0,0,0,0.70710678118654752,0.70710678118654752"});
  const TTurn turn = LargestTurn(poses, *ChordsOf(poses));
  EXPECT_EQ(turn.Pose, 2);
  EXPECT_NEAR(turn.Angle, std::numbers::pi / 4, 1e-15);
  // The chord of 45 degrees on the unit circle is 2 sin(22.5 degrees).
  EXPECT_NEAR(turn.PerLength, std::numbers::pi / 4 / (2 * std::sin(std::numbers::pi / 8)), 1e-14);
}

TEST(PoseMeasures, StepsBelowTheTableSpacingLookLikeMetres) {
  EXPECT_TRUE(LooksLikeMetres(*ChordsOf(PosesFrom({"0,0,0,0,0,1", "0.029,0,0,0,0,1"}))));
  EXPECT_FALSE(LooksLikeMetres(*ChordsOf(PosesFrom({"0,0,0,0,0,1", "0.031,0,0,0,0,1"}))));
}

}  // namespace
}  // namespace ZORBase::Tool
