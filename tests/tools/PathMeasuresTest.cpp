#include <zor/PathMeasures.h>

#include "support/PlaneCurveLength.h"
#include "support/TestSupport.h"

#include <cmath>
#include <numbers>

namespace ZORBase::Tool {
namespace {

using Test::FileText;
using Test::IsExactPose;
using Test::IsNearPose;
using Test::PlaneCurveLength;
using Test::PosesFrom;
using Test::RowsOf;
using Test::SampleFile;

TPoint6DList LoadSample(std::string_view Name) {
  TPoint6DList poses;
  poses.LoadFromFile(Test::SampleFile(Name));
  return poses;
}

TNurbs6D CurveThrough(const TPoint6DList& Poses, TParalizeMethod Method = mChord) {
  TNurbs6D curve;
  curve.CreateCross(&Poses, Method);
  return curve;
}

// A curve of the one Bezier segment with these control points.
TNurbs6D SegmentOf(const std::array<TPoint6D, 4>& Points) {
  constexpr std::array knots = {0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0};
  TNurbs6D curve;
  curve.CreateByCtlPoints(knots, Points, 4);
  return curve;
}

TPoint6D At(double X, double Y, double Z = 0.0) { return TPoint6D::Create(X, Y, Z, 0.0, 0.0, 1.0); }

// ------------------------------------------------------------------------------------------------ pieces

TEST(TPathPiece, IsTheCurveBetweenTwoNeighbouringPoses) {
  const TPoint6DList poses = LoadSample("swept-plane.poses.txt");
  const TNurbs6D curve = CurveThrough(poses);
  ASSERT_EQ(PieceCount(curve), poses.Count() - 1);
  for (int i = 0; i < PieceCount(curve); ++i) {
    const TPathPiece piece = PieceOf(curve, i);
    ASSERT_THAT(piece.Points.front(), IsNearPose(poses[i], 1e-11)) << "piece " << i;
    ASSERT_THAT(piece.Points.back(), IsNearPose(poses[i + 1], 1e-11)) << "piece " << i;
    for (const double t : {0.0, 0.1, 0.5, 0.93, 1.0}) {
      ASSERT_THAT(piece.PointAt(t), IsNearPose(curve.EvalPoint(piece.ParamAt(t)), 1e-11))
          << "piece " << i << " at " << t;
    }
  }
}

TEST(TPathPiece, TheFirstOneStartsAtTheFirstPoseAndTheLastOneEndsAtTheLast) {
  const TPoint6DList poses = LoadSample("e387.100mm.poses.txt");
  const TNurbs6D curve = CurveThrough(poses);
  EXPECT_EQ(PieceOf(curve, 0).From, 0.0);
  EXPECT_EQ(PieceOf(curve, PieceCount(curve) - 1).To, 1.0);
  EXPECT_THAT(PieceOf(curve, 0).Points.front(), IsExactPose(poses.First()));
  EXPECT_THAT(PieceOf(curve, PieceCount(curve) - 1).Points.back(), IsExactPose(poses.Last()));
}

// y = x^2 from x = -1 to 1 as a cubic segment; its curvature at x = 2t - 1 is 2 / (1 + 4 x^2)^1.5.
const std::array<TPoint6D, 4> kParabola = {At(-1, 1), At(-1.0 / 3, -1.0 / 3), At(1.0 / 3, -1.0 / 3), At(1, 1)};

TEST(TPathPiece, HasTheCurvatureOfTheParabola) {
  const TPathPiece<TPoint6D> piece{kParabola, 0.0, 1.0};
  for (const double t : {0.0, 0.2, 0.5, 0.77, 1.0}) {
    const double x = 2.0 * t - 1.0;
    EXPECT_NEAR(piece.CurvatureAt(t), 2.0 / std::pow(1.0 + 4.0 * x * x, 1.5), 1e-13) << t;
  }
}

TEST(TPathPiece, CurvatureIsThatOfThePositionAndDoesNotSeeTheDirection) {
  TPathPiece<TPoint6D> piece{kParabola, 0.0, 1.0};
  const double before = piece.CurvatureAt(0.3);
  piece.Points[1].A = 7.0;
  piece.Points[2].B = -7.0;
  EXPECT_EQ(piece.CurvatureAt(0.3), before);
}

TEST(TPathPiece, ATurnOnTheSpotHasNoCurvature) {
  TPathPiece<TPoint6D> piece{{At(100, 1), At(100, 1), At(100, 1), At(100, 1)}, 0.0, 1.0};
  piece.Points[2].A = 1.0;
  piece.Points[1].X += 1e-13;  // rounding
  EXPECT_EQ(piece.CurvatureAt(0.0), 0.0);
  EXPECT_EQ(piece.CurvatureAt(0.4), 0.0);
}

// In the plane the measures are those of the poses at height zero with no direction.
TEST(PathMeasures, OfAPlaneCurveAreThoseOfItsPoses) {
  TList<TPoint2D> points;
  TPoint6DList poses;
  for (int i = 0; i < 15; ++i) {
    points.Add(TPoint2D::Create(3.0 * i + std::sin(2.0 * i), 10.0 * std::cos(1.3 * i)));
    poses.Add(points.Last());
  }
  TNurbs2D plane;
  plane.CreateCross(points, mChord);
  const TNurbs6D space = CurveThrough(poses);
  ASSERT_EQ(PieceCount(plane), PieceCount(space));
  EXPECT_NEAR(PieceOf(plane, 3).CurvatureAt(0.3), PieceOf(space, 3).CurvatureAt(0.3), 1e-12);
  EXPECT_NEAR(PieceOf(plane, 3).PointAt(0.3).Y, PieceOf(space, 3).PointAt(0.3).Y, 1e-12);
  EXPECT_NEAR(IntegratedLength(plane), IntegratedLength(space), 1e-10);
  EXPECT_LT(LargestMiss(plane, points), 1e-12);
  const TPathPlace overshoot = LargestDistanceFromPolygon(plane);
  EXPECT_NEAR(overshoot.Value, LargestDistanceFromPolygon(space).Value, 1e-9);
  EXPECT_EQ(overshoot.Piece, LargestDistanceFromPolygon(space).Piece);
  const auto bend = SharpestBend(plane);
  const auto expected = SharpestBend(space);
  ASSERT_TRUE(bend && expected);
  EXPECT_NEAR(bend->Value, expected->Value, 1e-9);
  EXPECT_EQ(bend->Piece, expected->Piece);
}

// ------------------------------------------------------------------------------------------------ length

// y = x^2 from x = -1 to 1: sqrt(5) + asinh(2) / 2.
TEST(IntegratedLength, OfAParabolaIsThatOfItsFormula) {
  EXPECT_NEAR(IntegratedLength(SegmentOf(kParabola)), std::sqrt(5.0) + std::asinh(2.0) / 2.0, 1e-13);
}

// (t^2, t^3) from t = -1 to 1, with a cusp in the middle. Its control points are the blossom at (-1,-1,-1) to (1,1,1).
TEST(IntegratedLength, FindsItsWayThroughACusp) {
  const double length = 2.0 * (std::pow(13.0, 1.5) - 8.0) / 27.0;
  EXPECT_NEAR(IntegratedLength(SegmentOf({At(1, -1), At(-1.0 / 3, 1), At(-1.0 / 3, -1), At(1, 1)})), length, 1e-11);
}

// x = 3000 t - 9000 t^2 + 6001 t^3 turns round twice; where it does, its speed is mere rounding.
TEST(IntegratedLength, OfALineThereAndBackIsTheWayOnIt) {
  const auto place = [](double t) { return t * (3000.0 + t * (-9000.0 + t * 6001.0)); };
  const double root = std::sqrt(9000.0 * 9000.0 - 3.0 * 6001.0 * 3000.0);
  const double first = place((9000.0 - root) / (3.0 * 6001.0));
  const double second = place((9000.0 + root) / (3.0 * 6001.0));
  const double length = first + (first - second) + (1.0 - second);
  EXPECT_NEAR(IntegratedLength(SegmentOf({At(0, 0), At(1000, 0), At(-1000, 0), At(1, 0)})), length, 1e-8);
}

// The wing profile with a chord of 1, where the table of the curve is off by 5e-4.
TEST(IntegratedLength, OfAWingProfileIsThatOfAnIndependentQuadrature) {
  TList<TPoint2D> points;
  for (const auto& row : RowsOf(FileText(SampleFile("e387.xy.txt")))) points.Add({row[0], row[1]});
  for (const TParalizeMethod method : {mEqually, mChord, mCentripetal}) {
    TNurbs2D curve;
    ASSERT_TRUE(curve.CreateCross(points, method));
    const double length = PlaneCurveLength(curve.BasicFun().uArr(), curve.pointArr(), 1e-13L);
    EXPECT_NEAR(IntegratedLength(curve), length, 1e-10) << method;
  }
}

TEST(IntegratedLength, CountsAllSixComponentsAndIsNothingForAStandstill) {
  std::array<TPoint6D, 4> points = {At(0, 0), At(1, 0), At(2, 0), At(3, 0)};
  for (std::size_t i = 0; i < 4; ++i) points[i].A = 4.0 / 3.0 * static_cast<double>(i);
  EXPECT_NEAR(IntegratedLength(SegmentOf(points)), 5.0, 1e-14);
  EXPECT_EQ(IntegratedLength(SegmentOf({At(5, 5), At(5, 5), At(5, 5), At(5, 5)})), 0.0);
}

// ------------------------------------------------------------------------------------------------ misses

TEST(LargestMiss, IsRoundingForTheFittedPosesAndExactForMovedOnes) {
  TPoint6DList poses = LoadSample("e387.100mm.poses.txt");
  const TNurbs6D curve = CurveThrough(poses);
  EXPECT_LT(LargestMiss(curve, poses), 1e-12);
  poses[7].Z += 0.3;
  poses[7].A += 0.4;
  poses[30].Y -= 0.2;
  EXPECT_NEAR(LargestMiss(curve, poses), 0.5, 1e-12);
}

// ------------------------------------------------------------------------------------------------ polygon

// y(t) = 3 h t (1 - t) for an arch of height h: 3/4 h in the middle.
TEST(LargestDistanceFromPolygon, IsThreeQuartersOfTheHeightOfAnArch) {
  const TPathPlace place = LargestDistanceFromPolygon(SegmentOf({At(0, 0), At(0, 2), At(1, 2), At(1, 0)}));
  EXPECT_NEAR(place.Value, 1.5, 1e-15);
  EXPECT_EQ(place.Param, 0.5);
  EXPECT_EQ(place.Piece, 0);
}

// y(t) = 3 t (1 - t)^2 is largest at t = 1/3: 4/9.
TEST(LargestDistanceFromPolygon, FindsAPlaceThatNoHalvingMeets) {
  const TPathPlace place = LargestDistanceFromPolygon(SegmentOf({At(0, 0), At(1, 1), At(2, 0), At(3, 0)}));
  EXPECT_NEAR(place.Value, 4.0 / 9.0, 4.0 / 9.0 * kDistanceTolerance);
  EXPECT_NEAR(place.Param, 1.0 / 3.0, 1e-2);
}

// The curve runs on beyond its end and comes back: x(t) = 3 (1 - t) t^2 2 + t^3 = 6 t^2 - 5 t^3, at most 32/25 at t = 4/5.
TEST(LargestDistanceFromPolygon, CountsAnOvershootBeyondTheEndOfTheLine) {
  const TPathPlace place = LargestDistanceFromPolygon(SegmentOf({At(0, 0), At(0, 0), At(2, 0), At(1, 0)}));
  EXPECT_NEAR(place.Value, 7.0 / 25.0, 7.0 / 25.0 * kDistanceTolerance);
  EXPECT_NEAR(place.Param, 0.8, 1e-2);
}

TEST(LargestDistanceFromPolygon, CountsTheDirectionToo) {
  std::array<TPoint6D, 4> points = {At(0, 0), At(1, 0), At(2, 0), At(3, 0)};
  points[1].A = points[2].A = 2.0;
  EXPECT_NEAR(LargestDistanceFromPolygon(SegmentOf(points)).Value, 1.5, 1e-15);
}

TEST(LargestDistanceFromPolygon, IsNothingForAStraightPath) {
  const TNurbs6D curve = CurveThrough(PosesFrom({"0,0,0,0,0,1", "1,0,0,0,0,1", "2,0,0,0,0,1", "5,0,0,0,0,1"}));
  EXPECT_LT(LargestDistanceFromPolygon(curve).Value, 1e-14);
}

double DistanceFromLine(const TPoint6D& P, const TPoint6D& From, const TPoint6D& To) {
  const double along = (P - From).DotMul(To - From) / (To - From).MagSqr();
  return (P - From - (To - From) * std::min(1.0, std::max(0.0, along))).Mag();
}

TEST(LargestDistanceFromPolygon, NoSampleOfTheCurveLiesFartherAway) {
  for (const TParalizeMethod method : {mEqually, mChord, mCentripetal}) {
    const TPoint6DList poses = LoadSample("swept-plane.poses.txt");
    const TNurbs6D curve = CurveThrough(poses, method);
    const TPathPlace place = LargestDistanceFromPolygon(curve);
    double sampled = 0.0;
    for (int i = 0; i < PieceCount(curve); ++i) {
      const TPathPiece piece = PieceOf(curve, i);
      for (int k = 1; k < 200; ++k) {
        sampled =
            std::max(sampled, DistanceFromLine(curve.EvalPoint(piece.ParamAt(k / 200.0)), poses[i], poses[i + 1]));
      }
    }
    EXPECT_GE(place.Value * (1.0 + kDistanceTolerance), sampled);
    EXPECT_NEAR(place.Value, sampled, 1e-3 * sampled);  // that many samples are not that far off
    EXPECT_NEAR(DistanceFromLine(curve.EvalPoint(place.Param), poses[place.Piece], poses[place.Piece + 1]), place.Value,
                1e-9);
  }
}

// ------------------------------------------------------------------------------------------------ bends

TEST(SharpestBend, OfAParabolaIsItsVertex) {
  const auto place = SharpestBend(SegmentOf(kParabola));
  ASSERT_TRUE(place);
  EXPECT_NEAR(place->Value, 2.0, 1e-12);
  EXPECT_NEAR(place->Param, 0.5, 1e-7);
}

// The parabola from x = -1 to 2: the vertex is at t = 1/3, between the samples.
TEST(SharpestBend, IsRefinedBetweenTheSamples) {
  const auto place = SharpestBend(SegmentOf({At(-1, 1), At(0, -1), At(1, 0), At(2, 4)}));
  ASSERT_TRUE(place);
  EXPECT_NEAR(place->Value, 2.0, 1e-12);
  EXPECT_NEAR(place->Param, 1.0 / 3.0, 1e-7);
}

// A parabola so slender that its vertex falls between the samples; the radius there is e^2 / 2.
TEST(SharpestBend, IsFoundInANeedlesPoint) {
  constexpr double kSlender = 1e-4;
  constexpr double kVertex = 0.417;
  // With s = t - kVertex: x = s^2 and y = e s, by the blossom of the monomials at (0,0,0), (0,0,1), (0,1,1), (1,1,1).
  const auto control = [&](double t1, double t2, double t3) {
    const double sum = (t1 + t2 + t3) / 3.0;
    const double product = (t1 * t2 + t2 * t3 + t3 * t1) / 3.0;
    return At(product - 2.0 * kVertex * sum + kVertex * kVertex, kSlender * (sum - kVertex));
  };
  const auto place = SharpestBend(SegmentOf({control(0, 0, 0), control(0, 0, 1), control(0, 1, 1), control(1, 1, 1)}));
  ASSERT_TRUE(place);
  EXPECT_NEAR(place->Value * kSlender * kSlender / 2.0, 1.0, 1e-6);
  EXPECT_NEAR(place->Param, kVertex, 1e-9);
}

TEST(SharpestBend, AStraightPathAndATurnOnTheSpotHaveNone) {
  EXPECT_FALSE(SharpestBend(SegmentOf({At(0, 0), At(1, 0), At(2, 0), At(3, 0)})));
  std::array<TPoint6D, 4> turn = {At(5, 5), At(5, 5), At(5, 5), At(5, 5)};
  turn[2].A = 1.0;
  EXPECT_FALSE(SharpestBend(SegmentOf(turn)));
}

TEST(SharpestBend, OfACircleIsItsRadius) {
  TPoint6DList poses;
  constexpr int kCount = 200;
  for (int i = 0; i <= kCount; ++i) {
    const double angle = 2.0 * std::numbers::pi * i / kCount;
    poses.Add(At(50 * std::cos(angle), 50 * std::sin(angle)));
  }
  const TNurbs6D curve = CurveThrough(poses);
  // The ends have straight tangents; away from them the curve is the circle.
  for (int i = kCount / 4; i < kCount / 2; ++i) EXPECT_NEAR(PieceOf(curve, i).CurvatureAt(0.5), 1.0 / 50.0, 1e-6) << i;
}

TEST(SharpestBend, NoSampleOfTheCurveIsBentMore) {
  for (const TParalizeMethod method : {mEqually, mChord, mCentripetal}) {
    const TNurbs6D curve = CurveThrough(LoadSample("swept-plane.poses.txt"), method);
    const auto place = SharpestBend(curve);
    ASSERT_TRUE(place);
    for (int i = 0; i < PieceCount(curve); ++i) {
      const TPathPiece piece = PieceOf(curve, i);
      for (int k = 0; k <= 300; ++k) ASSERT_LE(piece.CurvatureAt(k / 300.0), place->Value * (1.0 + 1e-9)) << i;
    }
  }
}

TEST(PathMeasures, TellHowManyPiecesAreDone) {
  const TNurbs6D curve = CurveThrough(LoadSample("e387.100mm.poses.txt"));
  std::vector<int> done;
  LargestDistanceFromPolygon(curve, [&](int Done) { done.push_back(Done); });
  EXPECT_EQ(done.size(), 60U);
  EXPECT_EQ(done.back(), 60);
  SharpestBend(curve, [&](int Done) { done.push_back(Done); });
  EXPECT_EQ(done.size(), 120U);
  EXPECT_EQ(done.back(), 60);
  IntegratedLength(curve, [&](int Done) { done.push_back(Done); });
  EXPECT_EQ(done.size(), 180U);
  EXPECT_EQ(done.back(), 60);
}

}  // namespace
}  // namespace ZORBase::Tool
