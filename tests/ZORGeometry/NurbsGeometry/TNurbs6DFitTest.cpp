// Fitting: the parametrisations, the control points, and what the curve through the poses does.
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>

#include <Eigen/Dense>

#include "CurveTestSupport.h"

namespace ZORBase {
namespace {

using Test::AnyMethod;
using Test::AnyPoses;
using Test::CurveThrough;
using Test::IsExactPose;
using Test::IsNearPose;
using Test::kAllMethods;
using Test::LargestCoordinate;
using Test::PosesFrom;
using Test::RecursiveBasis;
using Test::SampleFile;
using testing::Each;
using testing::ElementsAre;
using testing::Value;

/// Four poses on the X axis at 0, 1, 5 and 14: steps of 1, 4 and 9.
TPoint6DList SquareSteps() { return PosesFrom({"0,0,0,0,0,1", "1,0,0,0,0,1", "5,0,0,0,0,1", "14,0,0,0,0,1"}); }

/// Count poses on the circle of radius 100 from angle 0 to Angle, directions all +Z.
TPoint6DList Arc(int Count, double Angle) {
  TPoint6DList poses;
  for (int i = 0; i < Count; ++i) {
    const double phi = Angle * i / (Count - 1);
    poses.Add(100 * std::cos(phi), 100 * std::sin(phi), 0);
  }
  return poses;
}

double DistanceOf(const TPoint6D& P, const TPoint6D& Q) { return (P - Q).Mag(); }

double KnotOfPose(const TNurbs6D& Curve, int Pose) { return Curve.BasicFun().Items(Pose + 3); }

TPoint6D DerivativeAt(const TNurbs6D& Curve, double u) {
  std::array<TPoint6D, 4> CK;
  Curve.CurveDerivsAlg1(u, CK);
  return CK[1];
}

// ---------------------------------------------------------------------------------------------- parametrisation

TEST(TNurbs6D, EquallySpreadParametersIgnoreTheDistances) {
  std::array<double, 4> t{};
  double length = -1;
  EXPECT_TRUE(TNurbs6D::EquallyParalize(SquareSteps(), t, length));
  EXPECT_THAT(t, ElementsAre(0, 1.0 / 3, 2.0 / 3, 1));
  EXPECT_EQ(length, 14);
}

TEST(TNurbs6D, ChordParametersAreInProportionToTheDistances) {
  std::array<double, 4> t{};
  double length = -1;
  EXPECT_TRUE(TNurbs6D::ChordParalize(SquareSteps(), t, length));
  EXPECT_THAT(t, ElementsAre(0, 1.0 / 14, 1.0 / 14 + 4.0 / 14, 1));
  EXPECT_EQ(length, 14);
}

TEST(TNurbs6D, CentripetalParametersAreInProportionToTheRootsOfTheDistances) {
  std::array<double, 4> t{};
  double length = -1;
  EXPECT_TRUE(TNurbs6D::CentripetalParalize(SquareSteps(), t, length));
  EXPECT_THAT(t, ElementsAre(0, 1.0 / 6, 1.0 / 6 + 2.0 / 6, 1));
  EXPECT_EQ(length, 14);
}

TEST(TNurbs6D, DistancesCountAllSixComponents) {
  const TPoint6DList poses = PosesFrom({"0,0,0,0,0,0", "1,1,1,1,0,0", "1,1,1,1,3,4", "1,1,8,1,3,4"});
  std::array<double, 4> t{};
  double length = 0;
  EXPECT_TRUE(TNurbs6D::ChordParalize(poses, t, length));
  EXPECT_THAT(t, ElementsAre(0, 2.0 / 14, 2.0 / 14 + 5.0 / 14, 1));
  EXPECT_EQ(length, 14);
}

TEST(TNurbs6D, CurveParalizeDispatchesAndTakesAnyOtherMethodForCentripetal) {
  const auto secondOf = [](TParalizeMethod Method) {
    std::array<double, 4> t{};
    double length = 0;
    EXPECT_TRUE(TNurbs6D::CurveParalize(SquareSteps(), t, length, Method));
    EXPECT_EQ(length, 14);
    return t[1];
  };
  EXPECT_EQ(secondOf(mEqually), 1.0 / 3);
  EXPECT_EQ(secondOf(mChord), 1.0 / 14);
  EXPECT_EQ(secondOf(mCentripetal), 1.0 / 6);
  EXPECT_EQ(secondOf(static_cast<TParalizeMethod>(3)), 1.0 / 6);
}

TEST(TNurbs6D, TwoPointsHaveTheParameters0And1) {
  const TPoint6DList poses = PosesFrom({"0,0,0,0,0,1", "3,4,0,0,0,1"});
  for (const TParalizeMethod method : kAllMethods) {
    std::array<double, 3> t = {7, 7, 7};
    double length = 0;
    EXPECT_TRUE(TNurbs6D::CurveParalize(poses, t, length, method));
    EXPECT_THAT(t, ElementsAre(0, 1, 7));
    EXPECT_EQ(length, 5);
  }
}

TEST(TNurbs6D, NeighboursCloserThan1eMinus6HaveNoParameters) {
  const auto isSpread = [](double Step, TParalizeMethod Method) {
    TPoint6DList poses;
    for (const double x : {0.0, 1.0, 2.0, 3.0}) poses.Add(x, 0, 0);
    poses.Insert(0, TPoint6D::Create(-Step, 0, 0, 0, 0, 1));
    std::array<double, 5> t{};
    double length = 0;
    return TNurbs6D::CurveParalize(poses, t, length, Method);
  };
  for (const TParalizeMethod method : kAllMethods) {
    EXPECT_FALSE(isSpread(0, method));
    EXPECT_FALSE(isSpread(std::nextafter(1e-6, 0), method));
    EXPECT_TRUE(isSpread(1e-6, method));
  }
}

// ---------------------------------------------------------------------------------------------- fitting

TEST(TNurbs6D, FourPosesOnALineGiveSixControlPointsAndTheKnotsOfTheirChords) {
  const TPoint6DList poses = SquareSteps();
  const TNurbs6D curve = CurveThrough(poses, mChord);
  EXPECT_THAT(curve.BasicFun().uArr(), ElementsAre(0, 0, 0, 0, 1.0 / 14, 1.0 / 14 + 4.0 / 14, 1, 1, 1, 1));
  EXPECT_EQ(curve.pCount(), 6);
  EXPECT_EQ(curve.CrossPtNum(), 4);
  EXPECT_EQ(curve.PassByPtNum(), 4);
  EXPECT_THAT(curve.EvalPoint(0), IsExactPose(poses[0]));
  EXPECT_THAT(curve.EvalPoint(1), IsExactPose(poses[3]));
  EXPECT_THAT(curve.EvalPoint(1.0 / 14), IsNearPose(poses[1], 1e-14));
  EXPECT_THAT(curve.EvalPoint(5.0 / 14), IsNearPose(poses[2], 1e-14));
}

RC_GTEST_PROP(TNurbs6D, PassesThroughEveryPose, ()) {
  const TPoint6DList poses = *AnyPoses();
  const TNurbs6D curve = CurveThrough(poses, *AnyMethod());
  const double tolerance = 1e-13 * LargestCoordinate(poses);
  for (int i = 0; i < poses.Count(); ++i) {
    RC_ASSERT(Value(curve.EvalPoint(KnotOfPose(curve, i)), IsNearPose(poses[i], tolerance)));
  }
}

TEST(TNurbs6D, PassesThroughEveryMeasuredPose) {
  for (const std::string_view name : {"e387.100mm.poses.txt", "swept-plane.poses.txt"}) {
    TPoint6DList poses;
    poses.LoadFromFile(SampleFile(name));
    for (const TParalizeMethod method : kAllMethods) {
      const TNurbs6D curve = CurveThrough(poses, method);
      const double tolerance = 1e-13 * LargestCoordinate(poses);
      for (int i = 0; i < poses.Count(); ++i) {
        ASSERT_THAT(curve.EvalPoint(KnotOfPose(curve, i)), IsNearPose(poses[i], tolerance)) << name << ", pose " << i;
      }
    }
  }
}

RC_GTEST_PROP(TNurbs6D, TheKnotsOfAFitAreClampedAndRiseBetween, ()) {
  const TPoint6DList poses = *AnyPoses();
  const TNurbs6D curve = CurveThrough(poses, *AnyMethod());
  const std::span<const double> knots = curve.BasicFun().uArr();
  RC_ASSERT(curve.pCount() == poses.Count() + 2);
  RC_ASSERT(static_cast<int>(knots.size()) == poses.Count() + 6);
  RC_ASSERT(Value(knots.first(4), Each(0.0)));
  RC_ASSERT(Value(knots.last(4), Each(1.0)));
  const auto inner = knots.subspan(3, knots.size() - 6);
  RC_ASSERT(std::ranges::adjacent_find(inner, std::ranges::greater_equal()) == inner.end());
}

using TWideMatrix = Eigen::Matrix<long double, Eigen::Dynamic, Eigen::Dynamic>;

/// The inner control points from a dense solve in extended precision: every inner pose is a blend of four control points.
TWideMatrix DenseInnerPoints(const TPoint6DList& Q, const TNurbs6D& Curve) {
  const int n = Q.Count() - 1;
  const std::span<const double> knots = Curve.BasicFun().uArr();
  TWideMatrix blend(n - 1, n + 3);
  TWideMatrix points = TWideMatrix::Zero(n + 3, 6);
  TWideMatrix given(n - 1, 6);
  for (int k = 1; k < n; ++k) {
    for (int j = 0; j < n + 3; ++j) blend(k - 1, j) = RecursiveBasis(knots, k + 3, j, 3, 0, KnotOfPose(Curve, k));
    for (int c = 0; c < 6; ++c) given(k - 1, c) = Q[k].Items(c);
  }
  for (const int j : {0, 1, n + 1, n + 2}) {
    for (int c = 0; c < 6; ++c) points(j, c) = Curve.pointArr()[static_cast<std::size_t>(j)].Items(c);
  }
  const TWideMatrix inner = blend.middleCols(2, n - 1);
  return inner.fullPivLu().solve(given - blend * points);
}

RC_GTEST_PROP(TNurbs6D, TheInnerControlPointsAreThoseOfADenseSolve, ()) {
  const TPoint6DList poses = *AnyPoses();
  const TNurbs6D curve = CurveThrough(poses, *AnyMethod());
  const TWideMatrix expected = DenseInnerPoints(poses, curve);
  const double size = LargestCoordinate(curve.pointArr());
  for (int i = 2; i < poses.Count(); ++i) {
    for (int c = 0; c < 6; ++c) {
      const double value = curve.pointArr()[static_cast<std::size_t>(i)].Items(c);
      // The system may magnify a rounding by the ratio of its knot intervals, here up to a thousand.
      RC_ASSERT(std::fabs(value - static_cast<double>(expected(i - 2, c))) <= 1e-12 * size);
    }
  }
}

RC_GTEST_PROP(TNurbs6D, AnOpenCurveStartsAndEndsAlongItsOuterChordsWithTheSpeedOfTheChordLength, ()) {
  const TPoint6DList poses = *AnyPoses();
  const int n = poses.Count() - 1;
  RC_PRE(DistanceOf(poses[0], poses[n]) > 1e-3);
  const TParalizeMethod method = *AnyMethod();
  const TNurbs6D curve = CurveThrough(poses, method);
  double length = 0;
  for (int i = 1; i <= n; ++i) length += DistanceOf(poses[i], poses[i - 1]);
  const TPoint6D first = (poses[1] - poses[0]).Normal() * length;
  const TPoint6D last = (poses[n] - poses[n - 1]).Normal() * length;
  const double tolerance = 1e-9 * LargestCoordinate(curve.pointArr());
  RC_ASSERT(Value(DerivativeAt(curve, 0), IsNearPose(first, tolerance / curve.BasicFun().Items(4))));
  RC_ASSERT(Value(DerivativeAt(curve, 1), IsNearPose(last, tolerance / (1 - curve.BasicFun().Items(n + 2)))));
}

TEST(TNurbs6D, AClosedListGetsTheMeanOfItsTwoEndTangentsAtBothEnds) {
  TPoint6DList poses = PosesFrom({"0,0,0,0,0,1", "4,0,0,0,0,1", "4,3,0,0,0,1", "0,3,0,0,0,1"});
  poses.Add(poses[0]);
  for (const TParalizeMethod method : kAllMethods) {
    const TNurbs6D curve = CurveThrough(poses, method);
    const TPoint6D mean = TPoint6D::Create(7, -7, 0, 0, 0, 0);  // half of 14 along +X and 14 along -Y
    EXPECT_THAT(DerivativeAt(curve, 0), IsNearPose(mean, 1e-12));
    EXPECT_THAT(DerivativeAt(curve, 1), IsNearPose(mean, 1e-12));
    EXPECT_TRUE(curve.GetIsClosed());
  }
}

TEST(TNurbs6D, AGapOf1eMinus6OfTheLengthIsOpenAndASmallerOneIsClosed) {
  const auto startOf = [](double Gap) {
    const TPoint6DList poses = PosesFrom({"0,0,0,0,0,1", "4,0,0,0,0,1", "4,3,0,0,0,1", "0,3,0,0,0,1"});
    TPoint6DList loop = poses;
    loop.Add(0, Gap, 0);
    return DerivativeAt(CurveThrough(loop), 0);
  };
  EXPECT_THAT(startOf(14 * 0.99e-6), IsNearPose(TPoint6D::Create(7, -7, 0, 0, 0, 0), 1e-4));
  EXPECT_THAT(startOf(14 * 1.01e-6), IsNearPose(TPoint6D::Create(14, 0, 0, 0, 0, 0), 1e-4));
}

// A path of 10^6 units there and back along X that ends one unit before its start. The unit is a power of two, so every
// number here is exact.
TEST(TNurbs6D, AGapOfExactlyTheLimitIsOpen) {
  constexpr double unit = 0x1p-20;
  const auto startOf = [](double Start) {
    TPoint6DList poses;
    for (const double x : {Start, 250000 * unit, 500000.5 * unit, 0.0}) poses.Add(x, 0, 0);
    return DerivativeAt(CurveThrough(poses), 0).X;
  };
  ASSERT_EQ(1e-6 * (1e6 * unit), unit);
  EXPECT_NEAR(startOf(unit), 1e6 * unit, 1e-9);
  EXPECT_NEAR(startOf(std::nextafter(unit, 0)), 0, 1e-9);
}

// ---------------------------------------------------------------------------------------------- laws of the fit

RC_GTEST_PROP(TNurbs6D, AStraightLineWithChordParametersStaysStraightAndEven, ()) {
  const auto cuts =
      *rc::gen::container<std::vector<int>>(*rc::gen::inRange<std::size_t>(3, 30), rc::gen::inRange(1, 500));
  const TPoint6D start = TPoint6D::Create(3, -2, 5, 0, 0.6, 0.8);
  const TPoint6D heading = TPoint6D::Create(2, 1, -1, 0.5, -0.25, 0.125);
  TPoint6DList poses;
  poses.Add(start);
  int sum = 0;
  for (const int cut : cuts) poses.Add(start + heading * ((sum += cut) / 1000.0));
  const TNurbs6D curve = CurveThrough(poses, mChord);
  for (int i = 0; i <= 100; ++i) {
    const TPoint6D expected = start + (poses.Last() - start) * (i / 100.0);
    RC_ASSERT(Value(curve.EvalPoint(i / 100.0), IsNearPose(expected, 1e-13 * LargestCoordinate(poses))));
  }
}

TEST(TNurbs6D, AStraightLineStaysOnItsLineWithEveryMethod) {
  const TPoint6D heading = TPoint6D::Create(1, 2, 4, 8, 16, 32);
  TPoint6DList poses;
  for (const double at : {0.0, 1.0, 1.5, 3.0, 3.25, 7.0}) poses.Add(heading * at);
  for (const TParalizeMethod method : kAllMethods) {
    const TNurbs6D curve = CurveThrough(poses, method);
    for (int i = 0; i <= 100; ++i) {
      const TPoint6D point = curve.EvalPoint(i / 100.0);
      EXPECT_THAT(point, IsNearPose(heading * point.X, 1e-12));
    }
  }
}

RC_GTEST_PROP(TNurbs6D, MovingAllPosesMovesTheCurve, ()) {
  const TPoint6DList poses = *AnyPoses();
  const TParalizeMethod method = *AnyMethod();
  const TPoint6D shift = TPoint6D::Create(40, -30, 20, 10, -5, 15);
  TPoint6DList moved;
  for (const TPoint6D& pose : poses) moved.Add(pose + shift);
  const TNurbs6D curve = CurveThrough(poses, method);
  const TNurbs6D movedCurve = CurveThrough(moved, method);
  // Adding the shift rounds the differences of neighbours, relative to the smallest of them.
  const double tolerance = 1e-10 * (LargestCoordinate(curve.pointArr()) + 40);
  for (int i = 0; i <= 50; ++i) {
    RC_ASSERT(Value(movedCurve.EvalPoint(i / 50.0), IsNearPose(curve.EvalPoint(i / 50.0) + shift, tolerance)));
  }
  RC_ASSERT(std::fabs(movedCurve.CurveLength() - curve.CurveLength()) <= 1e-3 * curve.CurveLength());
}

// Doubling is exact in binary, so the parameters stay and every control point is doubled to the bit.
RC_GTEST_PROP(TNurbs6D, DoublingAllPosesDoublesEveryControlPointExactly, ()) {
  const TPoint6DList poses = *AnyPoses();
  TPoint6DList doubled;
  for (const TPoint6D& pose : poses) doubled.Add(pose * 2);
  for (const TParalizeMethod method : {mEqually, mChord}) {
    const TNurbs6D curve = CurveThrough(poses, method);
    const TNurbs6D doubledCurve = CurveThrough(doubled, method);
    for (std::size_t i = 0; i < curve.pointArr().size(); ++i) {
      RC_ASSERT(Value(doubledCurve.pointArr()[i], IsExactPose(curve.pointArr()[i] * 2)));
    }
  }
}

RC_GTEST_PROP(TNurbs6D, FittingTheReversedListGivesTheSameCurveTravelledBack, ()) {
  const TPoint6DList poses = *AnyPoses();
  const TParalizeMethod method = *AnyMethod();
  TPoint6DList reversed = poses;
  std::ranges::reverse(reversed);
  const TNurbs6D curve = CurveThrough(poses, method);
  const TNurbs6D back = CurveThrough(reversed, method);
  const double tolerance = 1e-10 * LargestCoordinate(curve.pointArr());
  for (int i = 0; i <= 50; ++i) {
    RC_ASSERT(Value(back.EvalPoint(1 - i / 50.0), IsNearPose(curve.EvalPoint(i / 50.0), tolerance)));
  }
}

// Nine poses on a quarter circle of radius 100, arc length 50 pi = 157.080: the fit is 157.049 long.
TEST(TNurbs6D, NinePosesOnAQuarterCircleMissItsLengthBy3Hundredths) {
  EXPECT_NEAR(CurveThrough(Arc(9, std::numbers::pi / 2)).CurveLength(), 157.049, 5e-4);
}

// The end tangents are those of the outer chords, off by half the angle of a step; the error that this leaves fades with the
// third power of the step.
TEST(TNurbs6D, DoublingThePosesOnAQuarterCircleDividesTheLengthErrorByEight) {
  const auto errorOf = [](int Steps) {
    return 50 * std::numbers::pi - CurveThrough(Arc(Steps + 1, std::numbers::pi / 2)).CurveLength();
  };
  for (const int steps : {4, 8, 16, 32}) {
    const double ratio = errorOf(steps) / errorOf(2 * steps);
    EXPECT_GT(ratio, 7.8) << steps << " steps";
    EXPECT_LT(ratio, 8.6) << steps << " steps";
  }
}

// ---------------------------------------------------------------------------------------------- the linear system

TEST(TNurbs6D, SolveTridiagonalFillsTheInnerControlPointsOnly) {
  const TPoint6DList poses = SquareSteps();
  const TNurbs6D curve = CurveThrough(poses);
  const auto points = curve.pointArr();
  std::vector<TPoint6D> P = {points[0], points[1], TPoint6D::FOnes, TPoint6D::FOnes,
                             points[4], points[5], TPoint6D::FOnes};
  TNurbs6D::SolveTridiagonal(3, poses, curve.BasicFun().uArr(), P);
  for (std::size_t i = 0; i < 6; ++i) EXPECT_THAT(P[i], IsExactPose(points[i]));
  EXPECT_THAT(P[6], IsExactPose(TPoint6D::FOnes));
}

}  // namespace
}  // namespace ZORBase
