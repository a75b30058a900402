// Changing: reversal, bounds, moving to zero, assigning, copying.
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>

#include <utility>

#include "CurveTestSupport.h"

namespace ZORBase {
namespace {

using Test::AnyMethod;
using Test::AnyPoses;
using Test::Calling;
using Test::ClampedKnots;
using Test::CurveOf;
using Test::CurveThrough;
using Test::HasState;
using Test::IsExactPose;
using Test::IsNearPose;
using Test::LargestCoordinate;
using Test::NumberedPoints;
using Test::RaisesGeneralError;
using Test::RandomPoses;
using Test::StateOf;
using Test::TCurveState;
using Test::TPathKind;
using testing::ElementsAre;
using testing::Value;

TNurbs6D SomeCurve(int Count = 9) {
  std::mt19937_64 random(20240620);
  return CurveThrough(RandomPoses(random, TPathKind::Walk, Count));
}

std::vector<double> XOf(std::span<const TPoint6D> Points) {
  std::vector<double> x;
  for (const TPoint6D& point : Points) x.push_back(point.X);
  return x;
}

std::vector<double> XAfterReverse(int Count) {
  TNurbs6D curve = CurveOf(NumberedPoints(Count));
  curve.Reverse();
  return XOf(curve.pointArr());
}

// ---------------------------------------------------------------------------------------------- Reverse

TEST(TNurbs6D, ReversingControlPointsABCDGivesDBCA) { EXPECT_THAT(XAfterReverse(4), ElementsAre(4, 2, 3, 1)); }

TEST(TNurbs6D, ReversingControlPointsABCDEGivesEDCBA) { EXPECT_THAT(XAfterReverse(5), ElementsAre(5, 4, 3, 2, 1)); }

TEST(TNurbs6D, ReversingControlPointsABCDEFGivesFECDBA) {
  EXPECT_THAT(XAfterReverse(6), ElementsAre(6, 5, 3, 4, 2, 1));
}

TEST(TNurbs6D, ReversingControlPointsAToGGivesGToA) { EXPECT_THAT(XAfterReverse(7), ElementsAre(7, 6, 5, 4, 3, 2, 1)); }

TEST(TNurbs6D, ReversingMirrorsTheKnots) {
  TNurbs6D curve;
  ASSERT_TRUE(curve.CreateByCtlPoints(std::array{0.0, 0.0, 0.0, 0.0, 0.125, 1.0, 1.0, 1.0, 1.0}, NumberedPoints(5), 5));
  curve.Reverse();
  EXPECT_THAT(curve.BasicFun().uArr(), ElementsAre(0, 0, 0, 0, 0.875, 1, 1, 1, 1));
}

RC_GTEST_PROP(TNurbs6D, AReversedCurveOfAnOddCountOfControlPointsIsTravelledBack, ()) {
  const TPoint6DList poses = *rc::gen::suchThat(AnyPoses(), [](const TPoint6DList& P) { return P.Count() % 2 == 1; });
  const TNurbs6D curve = CurveThrough(poses, *AnyMethod());
  TNurbs6D reversed = curve;
  reversed.Reverse();
  // The mirrored knots are rounded to the spacing of doubles near 1, which moves points by that part of a knot interval.
  const double tolerance = 1e-11 * LargestCoordinate(curve.pointArr());
  for (int i = 0; i <= 50; ++i) {
    RC_ASSERT(Value(reversed.EvalPoint(i / 50.0), IsNearPose(curve.EvalPoint(1 - i / 50.0), tolerance)));
  }
}

TEST(TNurbs6D, ReversingMirrorsTheTableAndDropsItsPoses) {
  const TNurbs6D curve = SomeCurve();
  TNurbs6D reversed = curve;
  reversed.Reverse();
  const TSUTable& before = curve.SUTable();
  const TSUTable& after = reversed.SUTable();
  ASSERT_EQ(after.Count(), before.Count());
  for (int i = 0; i < after.Count(); ++i) {
    const TSULine& old = before[before.Count() - 1 - i];
    ASSERT_EQ(after[i].S, before.Last().S - old.S);
    ASSERT_EQ(after[i].u, before.Last().u - old.u);
    ASSERT_THAT(after[i].pos6d, IsExactPose(TPoint6D()));
    ASSERT_EQ(after[i].pos.X, 0);
    ASSERT_EQ(after[i].pos.Y, 0);
  }
  EXPECT_EQ(after.First().S, 0);
  EXPECT_EQ(after.First().u, 0);
  EXPECT_EQ(reversed.CurveLength(), curve.CurveLength());
  EXPECT_TRUE(reversed.pointsChanged());
  EXPECT_EQ(reversed.CrossPtNum(), curve.CrossPtNum());
}

TEST(TNurbs6D, LengthsOfAReversedCurveCountFromItsNewStart) {
  const TNurbs6D curve = SomeCurve();
  TNurbs6D reversed = curve;
  reversed.Reverse();
  for (int i = 0; i <= 20; ++i) {
    const double u = i / 20.0;
    EXPECT_NEAR(reversed.GetSByU(u), curve.CurveLength() - curve.GetSByU(1 - u), 1e-9);
  }
}

TEST(TNurbs6D, ReversingWithoutATableLeavesItEmpty) {
  TNurbs6D curve = CurveOf(NumberedPoints(5));
  curve.Reverse();
  EXPECT_EQ(curve.SUTable().Count(), 0);
}

TEST(TNurbs6D, ReversingAnOddCountTwiceGivesTheControlPointsBack) {
  TNurbs6D curve = CurveOf(NumberedPoints(7));
  curve.Reverse();
  curve.Reverse();
  EXPECT_THAT(curve, HasState(StateOf(CurveOf(NumberedPoints(7)))));
}

// ---------------------------------------------------------------------------------------------- bounds

TEST(TNurbs6D, TheBoundsAreThoseOfXAndYWithTheRestOfTheFirstControlPoint) {
  const std::array points = {TPoint6D::Create(1, 5, 30, 40, 50, 60), TPoint6D::Create(-2, 8, 99, 99, 99, 99),
                             TPoint6D::Create(7, 3, -99, -99, -99, -99), TPoint6D::Create(0, 6, 0, 0, 0, 0)};
  TNurbs6D curve = CurveOf(points);
  EXPECT_THAT(curve.GetMax(), IsExactPose(TPoint6D::Create(7, 8, 30, 40, 50, 60)));
  EXPECT_THAT(curve.GetMin(), IsExactPose(TPoint6D::Create(-2, 3, 30, 40, 50, 60)));
  EXPECT_THAT(curve.maxPos(), IsExactPose(TPoint6D::Create(7, 8, 30, 40, 50, 60)));
  EXPECT_THAT(curve.minPos(), IsExactPose(TPoint6D::Create(-2, 3, 30, 40, 50, 60)));
}

TEST(TNurbs6D, TheBoundsOfTheLastControlPointCount) {
  TNurbs6D curve = CurveOf(NumberedPoints(6));
  EXPECT_EQ(curve.GetMax().X, 6);
  EXPECT_EQ(curve.GetMin().X, 1);
}

TEST(TNurbs6D, TheBoundsFollowEveryChange) {
  TNurbs6D curve = CurveOf(NumberedPoints(6));
  EXPECT_EQ(curve.GetMax().X, 6);
  EXPECT_TRUE(curve.pointsChanged());
  curve.RelativeToZero();
  EXPECT_THAT(curve.GetMax(), IsExactPose(TPoint6D::Create(5, 0, 0, 0, 0, 0)));
  curve.Reverse();
  EXPECT_THAT(curve.GetMin(), IsExactPose(TPoint6D::Create(0, 0, 0, 0, 0, 0)));
  curve.CreateByCtlPoints(ClampedKnots(4), NumberedPoints(4), 4);
  EXPECT_THAT(curve.GetMax(), IsExactPose(TPoint6D::Create(4, 0, 0, 0, 0, 1)));
  EXPECT_THAT(curve.GetMin(), IsExactPose(TPoint6D::Create(1, 0, 0, 0, 0, 1)));
}

TEST(TNurbs6D, WithoutControlPointsTheBoundsAreZero) {
  TNurbs6D curve;
  EXPECT_TRUE(curve.pointsChanged());
  EXPECT_THAT(curve.GetMax(), IsExactPose(TPoint6D()));
  EXPECT_THAT(curve.GetMin(), IsExactPose(TPoint6D()));
  TNurbs6D emptied = CurveOf(NumberedPoints(5));
  emptied.GetMax();
  emptied.Assign(TNurbs6D());
  EXPECT_THAT(emptied.GetMax(), IsExactPose(TPoint6D()));
}

// ---------------------------------------------------------------------------------------------- moving

TEST(TNurbs6D, RelativeToZeroMovesAllControlPointsByTheFirstAndNothingElse) {
  const TNurbs6D curve = SomeCurve();
  TNurbs6D moved = curve;
  moved.RelativeToZero();
  TCurveState expected = StateOf(curve);
  for (std::size_t i = 1; i < expected.Points.size(); ++i) expected.Points[i] = expected.Points[i] - expected.Points[0];
  expected.Points[0] = TPoint6D();
  EXPECT_THAT(moved, HasState(expected));
}

TEST(TNurbs6D, WithoutControlPointsThereIsNothingToMove) {
  TNurbs6D curve;
  curve.RelativeToZero();
  EXPECT_THAT(curve, HasState(StateOf(TNurbs6D())));
}

TEST(TNurbs6D, APlaneTransformLeavesTheCurveAsItIs) {
  TNurbs6D curve = SomeCurve();
  const TCurveState before = StateOf(curve);
  EXPECT_TRUE(curve.TransformBy(TMatrix2D::Create(0, 1, -1, 0, 5, 6)));
  EXPECT_THAT(curve, HasState(before));
  EXPECT_TRUE(TNurbs6D().TransformBy(TMatrix2D::CreateIdent()));
}

// ---------------------------------------------------------------------------------------------- nearest point

// No row of a six-component table has a plane point, so every row is as far away as the origin and the first one is found.
TEST(TNurbs6D, TheNearestPointIsThatOfTheFirstRow) {
  const TNurbs6D curve = SomeCurve();
  for (const TPoint6D& point : {TPoint6D(), curve.EvalPoint(0.5), TPoint6D::Create(1e9, 0, 0, 0, 0, 0),
                                TPoint6D::Create(std::nan(""), 0, 0, 0, 0, 0)}) {
    double param = 7;
    EXPECT_THAT(curve.GetNearestPoint(point, 1e-6, param), IsExactPose(TPoint6D()));
    EXPECT_EQ(param, 0);
  }
}

TEST(TNurbs6D, WithoutATableTheNearestPointIsZero) {
  double param = 7;
  EXPECT_THAT(TNurbs6D().GetNearestPoint(TPoint6D::FOnes, 1e-6, param), IsExactPose(TPoint6D()));
  EXPECT_EQ(param, 0);
}

// ---------------------------------------------------------------------------------------------- assigning and copying

TEST(TNurbs6D, AssignTakesOverEverythingButCrossPtNum) {
  TNurbs6D source = SomeCurve(9);
  source.GetMax();
  TNurbs6D curve = SomeCurve(5);
  curve.Assign(source);
  TCurveState expected = StateOf(source);
  expected.CrossPtNum = 5;
  EXPECT_THAT(curve, HasState(expected));
  EXPECT_EQ(source.CrossPtNum(), 9);
  TNurbs6D fresh;
  fresh.Assign(source);
  expected.CrossPtNum = 0;
  EXPECT_THAT(fresh, HasState(expected));
}

TEST(TNurbs6D, AnAssignedCurveIsItsOwn) {
  TNurbs6D source = SomeCurve();
  TNurbs6D curve;
  curve.Assign(source);
  const TCurveState before = StateOf(curve);
  source.Reverse();
  source.RelativeToZero();
  EXPECT_THAT(curve, HasState(before));
}

TEST(TNurbs6D, ACurveAssignedToItselfStays) {
  TNurbs6D curve = SomeCurve();
  curve.GetMax();
  const TCurveState before = StateOf(curve);
  curve.Assign(curve);
  EXPECT_THAT(curve, HasState(before));
  const TNurbs6D& itself = curve;
  curve = itself;
  EXPECT_THAT(curve, HasState(before));
}

TEST(TNurbs6D, AssignOfAnotherClassRaisesAndKeepsTheCurve) {
  TNurbs6D curve = SomeCurve();
  const TCurveState before = StateOf(curve);
  EXPECT_THAT(Calling([&] { curve.Assign(TNurbsBasicFunc()); }),
              RaisesGeneralError("Cannot assign a TNurbsBasicFunc to a TNurbs6D"));
  EXPECT_THAT(curve, HasState(before));
}

TEST(TNurbs6D, ACopyHoldsTheSameAndIsItsOwn) {
  TNurbs6D curve = SomeCurve();
  curve.GetMax();
  const TCurveState before = StateOf(curve);
  TNurbs6D copy = curve;
  EXPECT_THAT(copy, HasState(before));
  curve.Reverse();
  EXPECT_THAT(copy, HasState(before));
  copy.RelativeToZero();
  copy = curve;
  EXPECT_THAT(copy, HasState(StateOf(curve)));
}

TEST(TNurbs6D, AMovedCurveHoldsTheSameAndTheOldOneCanBeFittedAgain) {
  TNurbs6D curve = SomeCurve();
  const TCurveState before = StateOf(curve);
  TNurbs6D moved = std::move(curve);
  EXPECT_THAT(moved, HasState(before));
  // NOLINTNEXTLINE(bugprone-use-after-move): what is left behind has to be usable
  curve = SomeCurve(5);
  EXPECT_THAT(curve, HasState(StateOf(SomeCurve(5))));
  curve = std::move(moved);
  EXPECT_THAT(curve, HasState(before));
}

TEST(TNurbs6D, RefittingReplacesEverything) {
  TNurbs6D curve = SomeCurve(20);
  std::mt19937_64 random(20240621);
  const TPoint6DList poses = RandomPoses(random, TPathKind::Zigzag, 6);
  ASSERT_TRUE(curve.CreateCross(&poses, mCentripetal));
  EXPECT_THAT(curve, HasState(StateOf(CurveThrough(poses, mCentripetal))));
}

}  // namespace
}  // namespace ZORBase
