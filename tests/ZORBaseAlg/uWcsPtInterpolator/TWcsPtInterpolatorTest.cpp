#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>

#include "support/SystemLimits.h"
#include "support/TestSupport.h"

#include <limits>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::FileText;
using Test::IsExactPose;
using Test::IsNearPose;
using Test::RaisesGeneralError;
using Test::TFileSizeLimit;
using Test::TLocaleGuard;
using Test::TScratchFolder;
using Test::WriteFile;
using testing::HasSubstr;
using testing::StartsWith;

const double kHalf = std::sqrt(0.5);

constexpr int kShortTurn = 0;
constexpr int kAvoidLowestZ = 1;

TPoint6D ToolAt(double X, double Y, double Z) { return TPoint6D::Create(X, Y, Z, 0, 0, 1); }
TPoint6D Towards(double A, double B, double C) { return TPoint6D::Create(0, 0, 0, A, B, C); }

// A unit direction in the plane of X and Z, turned by Degrees from Z towards X.
TPoint6D Tilted(double Degrees) {
  const double angle = Degrees * kPi / 180;
  return Towards(std::sin(angle), 0, std::cos(angle));
}

TWcsPtInterpolator Automatic(const TPoint6D& BeginPt, const TPoint6D& EndPt, int InterpType = kShortTurn) {
  return {BeginPt, EndPt, -1, InterpType};
}

double ZAt(const TWcsPtInterpolator& Move, double Param) { return Move.GetWcsPtbyParam(Param).C; }

// ---------------------------------------------------------------------------------------------- steps of the caller's size

TEST(TWcsPtInterpolator, TakesAsFewStepsAsTheLongestOneAllows) {
  const auto steps = [](double MaxDis, double MaxDeg) {
    return TWcsPtInterpolator(ToolAt(0, 0, 0), TPoint6D::Create(3, 4, 0, 1, 0, 0), MaxDis, MaxDeg, kShortTurn).Count();
  };
  EXPECT_EQ(steps(5.0, 180.0), 1);
  EXPECT_EQ(steps(4.999, 180.0), 2);
  EXPECT_EQ(steps(0.5, 180.0), 10);
  EXPECT_EQ(steps(100.0, 30.0), 3);  // a turn of 90 degrees
  EXPECT_EQ(steps(100.0, 29.9), 4);
  EXPECT_EQ(steps(0.5, 1.0), 90);
}

TEST(TWcsPtInterpolator, CountsTheStepsOfTheLongTurnWhereItIsTaken) {
  // From 45 degrees before the lowest Z to 45 degrees behind it: 90 degrees one way, 270 the other.
  const TPoint6D begin = Towards(-kHalf, 0, -kHalf);
  const TPoint6D end = Towards(kHalf, 0, -kHalf);
  EXPECT_EQ(TWcsPtInterpolator(begin, end, 1.0, 20.0, kShortTurn).Count(), 5);
  EXPECT_EQ(TWcsPtInterpolator(begin, end, 1.0, 20.0, kAvoidLowestZ).Count(), 14);
}

TEST(TWcsPtInterpolator, ALimitThatIsNotFiniteAndAbove0Raises) {
  const TPoint6D begin = ToolAt(0, 0, 0);
  const TPoint6D end = ToolAt(1, 0, 0);
  for (const double bad : {0.0, -0.0, -1.0, kNaN, kInfinity, -kInfinity}) {
    EXPECT_THAT(Calling([&] { TWcsPtInterpolator(begin, end, bad, 1.0, kShortTurn); }),
                RaisesGeneralError(StartsWith("TWcsPtInterpolator: MaxDis must be finite and above 0, not ")));
    EXPECT_THAT(Calling([&] { TWcsPtInterpolator(begin, end, 1.0, bad, kShortTurn); }),
                RaisesGeneralError(StartsWith("TWcsPtInterpolator: MaxDeg must be finite and above 0, not ")));
  }
  EXPECT_THAT(
      Calling([&] { TWcsPtInterpolator(begin, end, std::numeric_limits<double>::denorm_min(), 1.0, kShortTurn); }),
      RaisesGeneralError(HasSubstr("needs inf steps")));
}

// ---------------------------------------------------------------------------------------------- count

TEST(TWcsPtInterpolator, ACountOf0Becomes1) {
  TWcsPtInterpolator move(ToolAt(0, 0, 0), ToolAt(3, 0, 0), 0, kShortTurn);
  EXPECT_EQ(move.Count(), 1);
  EXPECT_THAT(move.GetWcsPt(0), IsExactPose(ToolAt(0, 0, 0)));
  EXPECT_THAT(move.GetWcsPt(1), IsExactPose(ToolAt(3, 0, 0)));
  move.SetCount(7);
  EXPECT_EQ(move.Count(), 7);
  EXPECT_EQ(move.Cnt(), 7);
  move.SetCount(0);
  EXPECT_EQ(move.Count(), 1);
}

TEST(TWcsPtInterpolator, AnAutomaticCountKeepsPositionStepsWithin0Point2) {
  TPoint6D end = Tilted(0.05);
  end.SetPoint(TPoint3D::Create(0, 1.1, 0));
  EXPECT_EQ(Automatic(Tilted(0), end).Count(), 6);
  EXPECT_EQ(Automatic(ToolAt(0, 0, 0), ToolAt(0.19, 0, 0)).Count(), 1);
  EXPECT_EQ(Automatic(ToolAt(0, 0, 0), ToolAt(0.21, 0, 0)).Count(), 2);
}

TEST(TWcsPtInterpolator, AnAutomaticCountKeepsTurnsWithinATenthOfADegree) {
  EXPECT_EQ(Automatic(Tilted(0), Tilted(1.05)).Count(), 11);
  EXPECT_EQ(Automatic(Tilted(0), Tilted(0.09)).Count(), 1);
}

TEST(TWcsPtInterpolator, EqualPosesAreOneStep) { EXPECT_EQ(Automatic(ToolAt(1, 2, 3), ToolAt(1, 2, 3)).Count(), 1); }

TEST(TWcsPtInterpolator, EveryNegativeCountIsAutomatic) {
  TWcsPtInterpolator move(ToolAt(0, 0, 0), ToolAt(1.1, 0, 0), -1000, kShortTurn);
  EXPECT_EQ(move.Count(), 6);
  move.SetCount(2);
  move.SetCount(std::numeric_limits<int>::min());
  EXPECT_EQ(move.Count(), 6);
}

TEST(TWcsPtInterpolator, AnAutomaticCountIsWorkedOutOnTheLongTurn) {
  const TPoint6D begin = Tilted(180 - 44.975);
  const TPoint6D end = Tilted(180 + 44.975);
  EXPECT_EQ(Automatic(begin, end, kShortTurn).Count(), 900);      // 89.95 degrees
  EXPECT_EQ(Automatic(begin, end, kAvoidLowestZ).Count(), 2701);  // 270.05 degrees
}

TEST(TWcsPtInterpolator, TheLargestCountFitsAndOneMoreRaises) {
  const double longest = 0.2 * kLargestInt;
  EXPECT_EQ(Automatic(ToolAt(0, 0, 0), ToolAt(longest, 0, 0)).Count(), kLargestInt);
  EXPECT_THAT(Calling([&] { Automatic(ToolAt(0, 0, 0), ToolAt(longest + 0.1, 0, 0)); }),
              RaisesGeneralError(HasSubstr("needs 2147483648 steps")));
}

TEST(TWcsPtInterpolator, AnAutomaticCountThatDoesNotFitNamesTheNumbers) {
  EXPECT_THAT(Calling([] { Automatic(ToolAt(0, 0, 0), ToolAt(0, 1e12, 0)); }),
              RaisesGeneralError("TWcsPtInterpolator: a move of 1000000000000.000000 with a turn of 0.000000 rad needs "
                                 "5000000000000 steps of at most 0.200000 and 0.001745 rad; at most 2147483647 are "
                                 "possible"));
  EXPECT_THAT(Calling([] { Automatic(ToolAt(0, 0, 0), ToolAt(0, 1e300, 0)); }),
              RaisesGeneralError(HasSubstr("needs inf steps")));
}

TEST(TWcsPtInterpolator, ACountThatDoesNotFitLeavesTheOldOne) {
  TWcsPtInterpolator move(ToolAt(0, 0, 0), ToolAt(1e12, 0, 0), 4, kShortTurn);
  EXPECT_THAT(Calling([&] { move.SetCount(-1); }), RaisesGeneralError(StartsWith("TWcsPtInterpolator: a move of")));
  EXPECT_EQ(move.Count(), 4);
  EXPECT_THAT(move.GetWcsPt(1), IsExactPose(ToolAt(0.25e12, 0, 0)));
}

// ---------------------------------------------------------------------------------------------- contents

TEST(TWcsPtInterpolator, ShowsWhatItWasMadeOf) {
  const TPoint6D begin = TPoint6D::Create(1, 2, 3, 1, 0, 0);
  const TPoint6D end = TPoint6D::Create(5, 7, 9, 0, 1, 0);
  const TWcsPtInterpolator move(begin, end, 10, 3);
  EXPECT_THAT(move.BeginPt(), IsExactPose(begin));
  EXPECT_THAT(move.EndPt(), IsExactPose(end));
  EXPECT_EQ(move.InterpType(), 3);
  EXPECT_THAT(TPoint6D::Create(move.OffsetPt(), move.CrossVec()), IsExactPose(TPoint6D::Create(4, 5, 6, 0, 0, 1)));
  EXPECT_EQ(move.VecRad(), kPi / 2);
  EXPECT_EQ(move.OffSetAngle(), kPi / 2);
}

// ---------------------------------------------------------------------------------------------- poses

TEST(TWcsPtInterpolator, ThePositionMovesEvenlyAlongTheLine) {
  const TWcsPtInterpolator move(ToolAt(1, 2, 3), ToolAt(5, -2, 3.5), 4, kShortTurn);
  EXPECT_THAT(move.GetWcsPt(1), IsExactPose(ToolAt(2, 1, 3.125)));
  EXPECT_THAT(move.GetWcsPt(2), IsExactPose(ToolAt(3, 0, 3.25)));
  EXPECT_THAT(move.GetWcsPtbyParam(0.875), IsExactPose(ToolAt(4.5, -1.5, 3.4375)));
}

TEST(TWcsPtInterpolator, FromXToYTheDirectionTurnsAboutZ) {
  const TWcsPtInterpolator move(Towards(1, 0, 0), Towards(0, 1, 0), 2, kShortTurn);
  EXPECT_THAT(TPoint6D::Create(TPoint3D::FZero, move.CrossVec()), IsExactPose(Towards(0, 0, 1)));
  EXPECT_EQ(move.VecRad(), kPi / 2);
  EXPECT_THAT(move.GetWcsPtbyParam(0.5), IsNearPose(Towards(kHalf, kHalf, 0), 1e-15));
  EXPECT_THAT(move.GetWcsPt(1), IsNearPose(Towards(kHalf, kHalf, 0), 1e-15));
}

TEST(TWcsPtInterpolator, ParallelDirectionsDoNotTurn) {
  for (const int mode : {kShortTurn, kAvoidLowestZ}) {
    const TWcsPtInterpolator move(Towards(1, 0, 0), Towards(1, 0, 0), 5, mode);
    EXPECT_THAT(TPoint6D::Create(TPoint3D::FZero, move.CrossVec()), IsNearPose(Towards(0, -1, 0), 0));
    EXPECT_EQ(move.VecRad(), 0);
    for (int i = 0; i <= 5; ++i) EXPECT_THAT(move.GetWcsPt(i), IsNearPose(Towards(1, 0, 0), 0));
  }
}

// The axis is (1, 0, 0) x (0, 0, 1) = (0, -1, 0), about which X turns towards Z.
TEST(TWcsPtInterpolator, OppositeDirectionsTurnOverTheTop) {
  for (const int mode : {kShortTurn, kAvoidLowestZ}) {
    const TWcsPtInterpolator move(Towards(1, 0, 0), Towards(-1, 0, 0), 2, mode);
    EXPECT_EQ(move.VecRad(), kPi);
    EXPECT_THAT(move.GetWcsPt(1), IsNearPose(Towards(0, 0, 1), 1e-15));
    EXPECT_THAT(move.GetWcsPt(2), IsNearPose(Towards(-1, 0, 0), 1e-15));
  }
}

TEST(TWcsPtInterpolator, OppositeDirectionsAlongZHaveNoAxisAndStayAsAtTheStart) {
  const TWcsPtInterpolator move(Towards(0, 0, 1), Towards(0, 0, -1), -1, kShortTurn);
  EXPECT_TRUE(move.CrossVec().IsZeroLength(0));
  EXPECT_EQ(move.VecRad(), kPi);
  for (const double param : {0.0, 0.3, 1.0}) EXPECT_THAT(move.GetWcsPtbyParam(param), IsExactPose(Towards(0, 0, 1)));
}

TEST(TWcsPtInterpolator, NumbersOutsideGiveTheEndPoses) {
  const TWcsPtInterpolator move(Towards(1, 0, 0), TPoint6D::Create(6, 0, 0, 0, 1, 0), 3, kShortTurn);
  for (const int below : {0, -3, std::numeric_limits<int>::min()}) {
    EXPECT_THAT(move.GetWcsPt(below), IsNearPose(Towards(1, 0, 0), 0));
  }
  for (const int above : {3, 3 + 7, kLargestInt}) {
    EXPECT_THAT(move.GetWcsPt(above), IsNearPose(TPoint6D::Create(6, 0, 0, 0, 1, 0), 1e-15));
  }
}

TEST(TWcsPtInterpolator, ParametersOutsideGiveTheEndPosesAndNoNumberRaises) {
  const TWcsPtInterpolator move(ToolAt(0, 0, 0), ToolAt(1, 0, 0), 3, kShortTurn);
  EXPECT_THAT(move.GetWcsPtbyParam(-0.5), IsExactPose(ToolAt(0, 0, 0)));
  EXPECT_THAT(move.GetWcsPtbyParam(-kInfinity), IsExactPose(ToolAt(0, 0, 0)));
  EXPECT_THAT(move.GetWcsPtbyParam(1.5), IsExactPose(ToolAt(1, 0, 0)));
  EXPECT_THAT(move.GetWcsPtbyParam(kInfinity), IsExactPose(ToolAt(1, 0, 0)));
  EXPECT_THAT(Calling([&] { move.GetWcsPtbyParam(std::nan("")); }),
              RaisesGeneralError("TWcsPtInterpolator: the parameter is not a number"));
}

TEST(TWcsPtInterpolator, ADirectionThatIsNoUnitVectorKeepsTheLengthOfTheStart) {
  const TWcsPtInterpolator move(Towards(3, 0, 0), Towards(0, 0.1, 0), 1, kShortTurn);
  EXPECT_THAT(move.GetWcsPt(1), IsNearPose(Towards(0, 3, 0), 1e-15));
}

// ---------------------------------------------------------------------------------------------- the way round

TEST(TWcsPtInterpolator, TheShortTurnMayPassThroughTheLowestZ) {
  const TWcsPtInterpolator move(Towards(kHalf, 0, -kHalf), Towards(-kHalf, 0, -kHalf), 4, kShortTurn);
  EXPECT_THAT(TPoint6D::Create(TPoint3D::FZero, move.CrossVec()), IsNearPose(Towards(0, 1, 0), 0));
  EXPECT_DOUBLE_EQ(move.VecRad(), kPi / 2);
  EXPECT_THAT(move.GetWcsPtbyParam(0.5), IsNearPose(Towards(0, 0, -1), 1e-15));
}

TEST(TWcsPtInterpolator, Mode1TakesTheOtherWayRoundALowestZ) {
  const TWcsPtInterpolator move(Towards(kHalf, 0, -kHalf), Towards(-kHalf, 0, -kHalf), 4, kAvoidLowestZ);
  EXPECT_THAT(TPoint6D::Create(TPoint3D::FZero, move.CrossVec()), IsNearPose(Towards(0, -1, 0), 0));
  EXPECT_DOUBLE_EQ(move.VecRad(), 3 * kPi / 2);
  EXPECT_THAT(move.GetWcsPtbyParam(0.5), IsNearPose(Towards(0, 0, 1), 1e-15));
  EXPECT_THAT(move.GetWcsPt(4), IsNearPose(Towards(-kHalf, 0, -kHalf), 1e-15));
}

TEST(TWcsPtInterpolator, OnlyMode1TakesTheLongTurn) {
  for (const int mode : {-1, 0, 2, kLargestInt}) {
    EXPECT_DOUBLE_EQ(TWcsPtInterpolator(Towards(kHalf, 0, -kHalf), Towards(-kHalf, 0, -kHalf), 4, mode).VecRad(),
                     kPi / 2);
  }
}

TEST(TWcsPtInterpolator, Mode1KeepsAShortTurnThatOnlyRisesOrOnlyFalls) {
  for (const auto& [from, to] :
       {std::pair{100.0, 170.0}, {170.0, 100.0}, {-60.0, 60.0}, {120.0, 180.0}, {180.0, 120.0}}) {
    const TWcsPtInterpolator move(Tilted(from), Tilted(to), 4, kAvoidLowestZ);
    EXPECT_NEAR(move.VecRad(), std::fabs(to - from) * kPi / 180, 1e-15) << from << " to " << to;
  }
}

// A turn of 1e-16 through the very bottom: the other way round is the whole circle in rounding.
TEST(TWcsPtInterpolator, ATurnThatRoundsToTheWholeCircleIsNone) {
  const TWcsPtInterpolator move(Towards(5e-17, 0, -1), Towards(-5e-17, 0, -1), -1, kAvoidLowestZ);
  EXPECT_EQ(move.CrossVec().Y, -1);
  EXPECT_EQ(move.VecRad(), 0);
  EXPECT_EQ(move.Count(), 1);
}

// ---------------------------------------------------------------------------------------------- laws

TPoint3D AnyDirection() {
  for (;;) {
    const auto component = [] { return *rc::gen::inRange(-1000, 1001) / 1000.0; };
    const double x = component();
    const double y = component();
    const TPoint3D direction = TPoint3D::Create(x, y, component());
    if (direction.Mag() > 1e-6) return direction.Normal();
  }
}

TPoint6D AnyPose() {
  const auto coordinate = [] { return *rc::gen::inRange(-100000, 100001) / 100.0; };
  const double x = coordinate();
  const double y = coordinate();
  const double z = coordinate();
  return TPoint6D::Create(TPoint3D::Create(x, y, z), AnyDirection());
}

// Leaves out the directions between which the axis is not defined.
bool AreFarFromOpposite(const TPoint6D& P, const TPoint6D& Q) { return (P.GetVector() + Q.GetVector()).Mag() > 1e-3; }

RC_GTEST_PROP(TWcsPtInterpolator, AMoveMeetsItsEnds, (int Mode)) {
  const TPoint6D begin = AnyPose();
  const TPoint6D end = AnyPose();
  RC_PRE(AreFarFromOpposite(begin, end));
  const TWcsPtInterpolator move(begin, end, *rc::gen::inRange(1, 1000), Mode % 2);
  RC_ASSERT((move.GetWcsPt(0) - begin).Mag() == 0.0);
  RC_ASSERT((move.GetWcsPt(move.Count()) - end).Mag() <= 1e-12);
}

RC_GTEST_PROP(TWcsPtInterpolator, TheDirectionKeepsItsLengthAndTurnsEvenly, (int Mode)) {
  const TPoint6D begin = AnyPose();
  const TPoint6D end = AnyPose();
  RC_PRE(AreFarFromOpposite(begin, end));
  const TWcsPtInterpolator move(begin, end, 1, Mode % 2);
  for (int i = 0; i <= 16; ++i) {
    const double param = i / 16.0;
    const TPoint3D direction = move.GetWcsPtbyParam(param).GetVector();
    RC_ASSERT(std::fabs(direction.Mag() - 1.0) <= 1e-14);
    const double turned = param * move.VecRad();
    const double shortTurned = std::min(turned, 2 * kPi - turned);
    RC_ASSERT(std::fabs(direction.AngleBetween(begin.GetVector()) - shortTurned) <= 1e-12);
  }
}

RC_GTEST_PROP(TWcsPtInterpolator, MovingBothEndsMovesEveryPoseAlike, ()) {
  const TPoint6D begin = AnyPose();
  const TPoint6D end = AnyPose();
  const TPoint6D shift = TPoint6D::Create(AnyPose().GetPoint(), TPoint3D::FZero);
  const TWcsPtInterpolator move(begin, end, 1, kShortTurn);
  const TWcsPtInterpolator moved(begin + shift, end + shift, 1, kShortTurn);
  for (const double param : {0.125, 0.5, 0.9}) {
    RC_ASSERT((moved.GetWcsPtbyParam(param) - move.GetWcsPtbyParam(param) - shift).Mag() <= 1e-11);
  }
}

RC_GTEST_PROP(TWcsPtInterpolator, InMode1ZNeverDipsBelowBothEnds, ()) {
  const TPoint6D begin = AnyPose();
  const TPoint6D end = AnyPose();
  RC_PRE(AreFarFromOpposite(begin, end));
  const TWcsPtInterpolator move(begin, end, 1, kAvoidLowestZ);
  for (int i = 0; i <= 64; ++i) RC_ASSERT(ZAt(move, i / 64.0) >= std::min(begin.C, end.C) - 1e-12);
}

RC_GTEST_PROP(TWcsPtInterpolator, StepsOfAnAutomaticCountStayWithinTheirLimits, ()) {
  const TPoint6D begin = AnyPose();
  const TPoint6D end = AnyPose();
  const TWcsPtInterpolator move = Automatic(begin, end);
  const double step = (move.GetWcsPt(1) - move.GetWcsPt(0)).GetPoint().Mag();
  const double turn = move.VecRad() / move.Count();
  RC_ASSERT(step <= 0.2 + 1e-9);
  RC_ASSERT(turn <= 0.1 * kPi / 180 + 1e-12);
  const double fewer = move.Count() - 1;
  RC_ASSERT(fewer < 1 || (end - begin).GetPoint().Mag() / fewer > 0.2 || move.VecRad() / fewer > 0.1 * kPi / 180);
}

// ---------------------------------------------------------------------------------------------- many at once

TEST(TWcsPtInterpolator, ManyPosesAtOnceAreThePosesOneByOneToTheBit) {
  const TWcsPtInterpolator move(TPoint6D::Create(1, 2, 3, 0.6, 0, 0.8), TPoint6D::Create(-7, 0.1, 1e3, 0, 0.8, -0.6), 1,
                                kAvoidLowestZ);
  std::vector<double> params = {-1, 2, kInfinity};
  for (int i = 0; i <= 1000; ++i) params.push_back(i / 1000.0);
  std::vector<TPoint6D> poses(params.size());
  move.GetWcsPtsbyParams(params, poses);
  for (std::size_t i = 0; i < params.size(); ++i) {
    ASSERT_THAT(poses[i], IsExactPose(move.GetWcsPtbyParam(params[i]))) << params[i];
  }
  move.GetWcsPtsbyParams({}, {});
}

TEST(TWcsPtInterpolator, ManyPosesAtOnceNeedAPlaceForEachAndNumbers) {
  const TWcsPtInterpolator move(ToolAt(0, 0, 0), ToolAt(1, 0, 0), 1, kShortTurn);
  std::vector<TPoint6D> poses(2, TPoint6D::FOnes);
  EXPECT_THAT(Calling([&] {
                move.GetWcsPtsbyParams(std::array{0.0, 0.5, 1.0}, poses);
              }),
              RaisesGeneralError("TWcsPtInterpolator: 3 parameters, but places for 2 poses"));
  EXPECT_THAT(Calling([&] {
                move.GetWcsPtsbyParams(std::array{0.0, std::nan("")}, poses);
              }),
              RaisesGeneralError("TWcsPtInterpolator: the parameter is not a number"));
  for (const TPoint6D& pose : poses) EXPECT_THAT(pose, IsExactPose(TPoint6D::FOnes));
}

// ---------------------------------------------------------------------------------------------- bad poses

TEST(TWcsPtInterpolator, PosesThatAreNotFiniteRaise) {
  for (const double bad : {std::nan(""), kInfinity, -kInfinity}) {
    for (int i = 0; i < 6; ++i) {
      TPoint6D pose = ToolAt(0, 0, 0);
      pose.Items(i) = bad;
      EXPECT_THAT(Calling([&] { TWcsPtInterpolator(pose, ToolAt(0, 0, 0), 3, kShortTurn); }),
                  RaisesGeneralError(StartsWith("TWcsPtInterpolator: BeginPt is not finite: ")));
      EXPECT_THAT(Calling([&] { TWcsPtInterpolator(ToolAt(0, 0, 0), pose, 3, kShortTurn); }),
                  RaisesGeneralError(StartsWith("TWcsPtInterpolator: EndPt is not finite: ")));
    }
  }
  EXPECT_THAT(Calling([] { TWcsPtInterpolator(ToolAt(1, std::nan(""), 3), ToolAt(0, 0, 0), 3, kShortTurn); }),
              RaisesGeneralError("TWcsPtInterpolator: BeginPt is not finite: "
                                 "1.000000,nan,3.000000,0.000000,0.000000,1.000000"));
}

TEST(TWcsPtInterpolator, AnOffsetThatOverflowsRaises) {
  EXPECT_THAT(Calling([] { TWcsPtInterpolator(ToolAt(-1e308, 0, 0), ToolAt(1e308, 0, 0), 3, kShortTurn); }),
              RaisesGeneralError("TWcsPtInterpolator: EndPt - BeginPt is not finite: inf,0.000000,0.000000"));
}

TEST(TWcsPtInterpolator, ADirectionTooLongToMeasureAnAngleRaises) {
  EXPECT_THAT(Calling([] { TWcsPtInterpolator(Towards(0, 0, 1), Towards(2e75, 0, 0), 3, kShortTurn); }),
              RaisesGeneralError("TWcsPtInterpolator: EndPt has a direction longer than 1e75; "
                                 "it should be a unit vector"));
  EXPECT_THAT(Calling([] { TWcsPtInterpolator(Towards(1e200, 0, 1), Towards(1, 0, 0), 3, kShortTurn); }),
              RaisesGeneralError(StartsWith("TWcsPtInterpolator: BeginPt has a direction")));
  EXPECT_EQ(TWcsPtInterpolator(Towards(0, 0, 1e75), Towards(1e75, 0, 0), 3, kShortTurn).VecRad(), kPi / 2);
}

// ---------------------------------------------------------------------------------------------- file

TEST(TWcsPtInterpolator, AFileHoldsEveryPoseWith5DecimalsAndAPointInEveryLocale) {
  const TScratchFolder folder;
  const std::string file = folder.File("steps.txt");
  const TWcsPtInterpolator move(Towards(1, 0, 0), TPoint6D::Create(1, -2, 0.00003, 0, 1, 0), 2, kShortTurn);
  for (const char* const locale : {"C", "de_DE.UTF-8"}) {
    const TLocaleGuard guard{std::locale(locale)};
    move.SaveAllToFile(file);
    EXPECT_EQ(FileText(file),
              "0.00000,0.00000,0.00000,1.00000,0.00000,0.00000\r\n"
              "0.50000,-1.00000,0.00002,0.70711,0.70711,0.00000\r\n"  // 1.5e-5 lies above the tie in binary
              "1.00000,-2.00000,0.00003,0.00000,1.00000,0.00000\r\n")
        << locale;
  }
}

TEST(TWcsPtInterpolator, TheFileReadsBackAsAListOfPoses) {
  const TScratchFolder folder;
  const std::string file = folder.File("steps.txt");
  const TWcsPtInterpolator move(Towards(0, 0, 1), TPoint6D::Create(10, 20, 30, 0.6, 0, 0.8), 50, kShortTurn);
  move.SaveAllToFile(file);
  TPoint6DList poses;
  poses.LoadFromFile(file);
  ASSERT_EQ(poses.Count(), 51);
  for (int i = 0; i <= 50; ++i) EXPECT_THAT(poses[i], IsNearPose(move.GetWcsPt(i), 0.5e-5 + 1e-12));
}

// The largest count stops at the first block that does not fit; nothing is collected before.
TEST(TWcsPtInterpolator, AFullDiskLeavesTheOldFileWholeAndNothingBesideItEvenForTheLargestCount) {
  const TScratchFolder folder;
  const std::string file = folder.File("steps.txt");
  WriteFile(file, "the old file");
  for (const int count : {100, kLargestInt}) {
    const TWcsPtInterpolator move(ToolAt(0, 0, 0), ToolAt(1, 0, 0), count, kShortTurn);
    const TFileSizeLimit limit(1000);
    EXPECT_THAT(Calling([&] { move.SaveAllToFile(file); }),
                RaisesGeneralError(StartsWith("Cannot write file \"" + file)));
  }
  EXPECT_EQ(FileText(file), "the old file");
  EXPECT_EQ(folder.Count(), 1);
}

TEST(TWcsPtInterpolator, SavingIntoAFolderThatIsNotThereRaises) {
  const TScratchFolder folder;
  const std::string file = folder.File("missing/steps.txt");
  EXPECT_THAT(Calling([&] { TWcsPtInterpolator(ToolAt(0, 0, 0), ToolAt(1, 0, 0), 1, 0).SaveAllToFile(file); }),
              RaisesGeneralError(StartsWith("Cannot write file \"" + file)));
}

}  // namespace
}  // namespace ZORBase
