#include <ZORBase/ZORBaseAlg/uBezierHelper.h>

#include "support/TestSupport.h"

#include <numbers>
#include <random>
#include <utility>

namespace ZORBase {
namespace {

using TRandom = std::mt19937_64;

TPoint2D Direction(double Angle, double Length = 1) { return {Length * std::cos(Angle), Length * std::sin(Angle)}; }

void ExpectNear(const TPoint2D& P, const TPoint2D& Expected, double Tolerance) {
  EXPECT_NEAR(P.X, Expected.X, Tolerance);
  EXPECT_NEAR(P.Y, Expected.Y, Tolerance);
}

bool IsZero(const TPoint2D& P) { return P.X == 0 && P.Y == 0; }

double Dot(const TPoint2D& P, const TPoint2D& Q) { return P.X * Q.X + P.Y * Q.Y; }

TPoint2D RandomPoint(TRandom& Random, double Size) {
  std::uniform_real_distribution<double> number(-Size, Size);
  const double x = number(Random);
  return {x, number(Random)};
}

TBezierSegment2D Straight(const TPoint2D& From, const TPoint2D& To) {
  return TBezierSegment2D::Create(From, From + (To - From) / 3, To - (To - From) / 3, To);
}

TBezierSegment2D Moved(const TBezierSegment2D& Segment, const TPoint2D& By) {
  return TBezierSegment2D::Create(Segment.P0 + By, Segment.P1 + By, Segment.P2 + By, Segment.P3 + By);
}

// A segment of a length near 3 that bends but never comes near a standstill.
TBezierSegment2D GentleSegment(TRandom& Random) {
  const TPoint2D p0 = RandomPoint(Random, 0.2);
  const TPoint2D p1 = RandomPoint(Random, 0.2) + TPoint2D{1, 0};
  const TPoint2D p2 = RandomPoint(Random, 0.2) + TPoint2D{2, 0};
  return TBezierSegment2D::Create(p0, p1, p2, RandomPoint(Random, 0.2) + TPoint2D{3, 0});
}

// The two halves at t by de Casteljau's scheme.
std::pair<TBezierSegment2D, TBezierSegment2D> Split(const TBezierSegment2D& S, double t) {
  const auto between = [t](const TPoint2D& P, const TPoint2D& Q) { return P * (1 - t) + Q * t; };
  const TPoint2D p01 = between(S.P0, S.P1);
  const TPoint2D p12 = between(S.P1, S.P2);
  const TPoint2D p23 = between(S.P2, S.P3);
  const TPoint2D p012 = between(p01, p12);
  const TPoint2D p123 = between(p12, p23);
  const TPoint2D middle = between(p012, p123);
  return {TBezierSegment2D::Create(S.P0, p01, p012, middle), TBezierSegment2D::Create(middle, p123, p23, S.P3)};
}

bool IsG1(const TBezierSegment2D& A, const TBezierSegment2D& B) { return TBezierSegmentHelper::IsG1Continue(A, B); }
bool IsG2(const TBezierSegment2D& A, const TBezierSegment2D& B) { return TBezierSegmentHelper::IsG2Continue(A, B); }

// ---------------------------------------------------------------------------------------------- equal vectors

TEST(CheckSameVec, LengthsCountOnlyWhenAskedFor) {
  EXPECT_TRUE(CheckSameVec({1, 0}, {2, 0}, false));
  EXPECT_FALSE(CheckSameVec({1, 0}, {2, 0}, true));
  EXPECT_TRUE(CheckSameVec({1, 2}, {1, 2}, true));
  EXPECT_TRUE(CheckSameVec({1, 0}, {1 + 0.9e-6, 0}, true));
  EXPECT_FALSE(CheckSameVec({1, 0}, {1 + 1.1e-6, 0}, true));
  EXPECT_FALSE(CheckSameVec({1, 0}, {1 - 1.1e-6, 0}, true));
}

TEST(CheckSameVec, DirectionsAgreeWithinAMillionthOfARadian) {
  for (const double angle : {0.0, 0.7, 2.5, -1.3}) {
    for (const bool checkMag : {false, true}) {
      EXPECT_TRUE(CheckSameVec(Direction(angle), Direction(angle + 0.9e-6), checkMag));
      EXPECT_FALSE(CheckSameVec(Direction(angle), Direction(angle + 1.1e-6), checkMag));
      EXPECT_FALSE(CheckSameVec(Direction(angle), Direction(angle - 1.1e-6), checkMag));
      EXPECT_FALSE(CheckSameVec(Direction(angle), Direction(angle) * -1, checkMag));
    }
  }
}

TEST(CheckSameVec, AVectorWithoutLengthEqualsOnlyItsLike) {
  for (const bool checkMag : {false, true}) {
    EXPECT_TRUE(CheckSameVec({0, 0}, {0, 0}, checkMag));
    EXPECT_TRUE(CheckSameVec({0, 0}, {0, -1e-12}, checkMag));
    EXPECT_TRUE(CheckSameVec({5e-13, 0}, {-5e-13, 0}, checkMag));
    EXPECT_FALSE(CheckSameVec({0, 0}, {1, 0}, checkMag));
    EXPECT_FALSE(CheckSameVec({1, 0}, {0, 0}, checkMag));
    EXPECT_FALSE(CheckSameVec({0, 0}, {1.1e-12, 0}, checkMag));
    EXPECT_FALSE(CheckSameVec({1.1e-12, 0}, {0, 0}, checkMag));
    EXPECT_TRUE(CheckSameVec({1.1e-12, 0}, {1.1e-12, 0}, checkMag));
    EXPECT_FALSE(CheckSameVec({1.1e-12, 0}, {-1.1e-12, 0}, checkMag));
  }
}

TEST(CheckSameVec, NotANumberEqualsNothing) {
  EXPECT_FALSE(CheckSameVec({kNaN, 0}, {kNaN, 0}, false));
  EXPECT_FALSE(CheckSameVec({kNaN, 0}, {1, 0}, true));
  EXPECT_FALSE(CheckSameVec({0, 0}, {kNaN, 0}, true));
  EXPECT_FALSE(CheckSameVec({kInfinity, 0}, {1, 0}, true));
}

// ---------------------------------------------------------------------------------------------- derivatives by arc length

struct TByLength {
  TPoint2D S1;
  TPoint2D S2;
  TPoint2D S3;
};

TByLength ByLength(const TPoint2D& U1, const TPoint2D& U2, const TPoint2D& U3) {
  TByLength result{{9, 9}, {9, 9}, {9, 9}};
  TransferU1U2U3ToS1S2S3(U1, U2, U3, result.S1, result.S2, result.S3);
  return result;
}

TEST(TransferU1U2U3ToS1S2S3, ACircleHasItsRadius) {
  for (const double radius : {0.5, 1.0, 40.0}) {
    for (const double pace : {0.2, 1.0, 7.0}) {
      for (double angle = 0; angle < 6; angle += 0.7) {
        const TPoint2D out = Direction(angle);
        const TPoint2D along = Direction(angle + std::numbers::pi / 2);
        const TByLength byLength =
            ByLength(along * (radius * pace), out * (-radius * pace * pace), along * (-radius * pace * pace * pace));
        ExpectNear(byLength.S1, along, 1e-15);
        ExpectNear(byLength.S2, out * (-1 / radius), 1e-14);
        ExpectNear(byLength.S3, along * (-1 / (radius * radius)), 1e-13);
      }
    }
  }
}

// r' = v T, r'' = v^2 K + v' T and r''' = v^3 K' + 3 v v' K + v'' T, with the speed v and the curvature vector K.
TEST(TransferU1U2U3ToS1S2S3, AgreesWithTheChainRule) {
  TRandom random(1);
  for (int i = 0; i < 500; ++i) {
    const TPoint2D u1 = RandomPoint(random, 2) + TPoint2D{4, 0};
    const TPoint2D u2 = RandomPoint(random, 5);
    const TPoint2D u3 = RandomPoint(random, 5);
    const double v = std::hypot(u1.X, u1.Y);
    const double dv = Dot(u1, u2) / v;
    const double ddv = (Dot(u2, u2) + Dot(u1, u3) - dv * dv) / v;
    const TPoint2D tangent = u1 / v;
    const TPoint2D curvature = (u2 - tangent * dv) / (v * v);
    const TPoint2D change = (u3 - curvature * (3 * v * dv) - tangent * ddv) / (v * v * v);
    const TByLength byLength = ByLength(u1, u2, u3);
    ExpectNear(byLength.S1, tangent, 1e-15);
    ExpectNear(byLength.S2, curvature, 1e-14);
    ExpectNear(byLength.S3, change, 1e-13);
  }
}

TEST(TransferU1U2U3ToS1S2S3, WithoutSpeedTheSecondDerivativeGivesTheDirection) {
  const TByLength byLength = ByLength({0.99e-7, 0}, {3, 4}, {5, -2});
  ExpectNear(byLength.S1, {0.6, 0.8}, 1e-16);
  ExpectNear(byLength.S2, {0, 0}, 0);
  // ((x3 y - x y3) y, (y3 x - y x3) x) / m^5, with (x, y) in the place of both derivatives.
  ExpectNear(byLength.S3, {26 * 4 / 3125.0, -26 * 3 / 3125.0}, 1e-16);
}

TEST(TransferU1U2U3ToS1S2S3, SpeedCountsFromATenMillionthOn) {
  ExpectNear(ByLength({1.01e-7, 0}, {3, 4}, {0, 0}).S1, {1, 0}, 1e-15);
  ExpectNear(ByLength({1e-7, 0}, {3, 4}, {0, 0}).S1, {1, 0}, 1e-15);
  ExpectNear(ByLength({0.99e-7, 0}, {1e-7, 0}, {0, 0}).S1, {1, 0}, 1e-15);
}

TEST(TransferU1U2U3ToS1S2S3, WithoutSpeedAndSecondDerivativeAllIsZero) {
  const TByLength byLength = ByLength({0.99e-7, 0}, {0, -0.99e-7}, {5, -2});
  EXPECT_TRUE(IsZero(byLength.S1));
  EXPECT_TRUE(IsZero(byLength.S2));
  EXPECT_TRUE(IsZero(byLength.S3));
}

TEST(TransferU1U2U3ToS1S2S3, OutputsMayBeTheInputs) {
  const TPoint2D u1 = {1, 2};
  const TPoint2D u2 = {-3, 1};
  const TPoint2D u3 = {2, 5};
  const TByLength expected = ByLength(u1, u2, u3);
  TPoint2D a = u1;
  TPoint2D b = u2;
  TPoint2D c = u3;
  TransferU1U2U3ToS1S2S3(a, b, c, a, b, c);
  ExpectNear(a, expected.S1, 0);
  ExpectNear(b, expected.S2, 0);
  ExpectNear(c, expected.S3, 0);
}

// ---------------------------------------------------------------------------------------------- tangent and curvature

TEST(EvalDerVector, AParabolaHasItsTangentAndCurvatureVector) {
  // (t, t^2): the curvature vector is 2 (-2 t, 1) / (1 + 4 t^2)^2.
  const TBezierSegment2D parabola = TBezierSegment2D::Create({0, 0}, {1.0 / 3, 0}, {2.0 / 3, 1.0 / 3}, {1, 1});
  for (const double t : {0.0, 0.25, 0.5, 0.9, 1.0}) {
    const double square = 1 + 4 * t * t;
    TPoint2D tangent;
    TPoint2D curvature;
    TBezierSegmentHelper::EvalDerVector(parabola, t, tangent, curvature);
    ExpectNear(tangent, TPoint2D{1, 2 * t} / std::sqrt(square), 1e-15);
    ExpectNear(curvature, TPoint2D{-2 * t, 1} * (2 / (square * square)), 1e-14);
  }
}

TEST(EvalDerVector, AtACuspTheSecondDerivativeGivesTheDirection) {
  // The last two control points coincide: the second derivative there, 6 (P1 - P2), points back to where the segment came from.
  const TBezierSegment2D segment = TBezierSegment2D::Create({0, 1}, {0, 0}, {3, 4}, {3, 4});
  TPoint2D tangent;
  TPoint2D curvature;
  TBezierSegmentHelper::EvalDerVector(segment, 1, tangent, curvature);
  ExpectNear(tangent, {-0.6, -0.8}, 1e-15);
  EXPECT_TRUE(IsZero(curvature));
}

// ---------------------------------------------------------------------------------------------- joints

TEST(IsG1Continue, StraightSegmentsAlongOneDirectionAreSmooth) {
  const TBezierSegment2D first = Straight({0, 0}, {3, 4});
  EXPECT_TRUE(IsG1(first, Straight({3, 4}, {9, 12})));
  EXPECT_TRUE(IsG2(first, Straight({3, 4}, {9, 12})));
  EXPECT_FALSE(IsG1(first, Straight({3, 4}, {0, 0}))) << "the way back";
  EXPECT_FALSE(IsG2(first, Straight({3, 4}, {0, 0})));
}

TEST(IsG1Continue, ATangentThatDiffersByAHundredThousandthIsAnother) {
  const TBezierSegment2D first = Straight({0, 0}, {5, 0});
  const auto turned = [](double angle) { return Straight({5, 0}, TPoint2D{5, 0} + Direction(angle, 5)); };
  EXPECT_FALSE(IsG1(first, turned(1e-5)));
  EXPECT_FALSE(IsG2(first, turned(1e-5)));
  EXPECT_FALSE(IsG1(first, turned(-1e-5)));
  EXPECT_TRUE(IsG1(first, turned(1e-7)));
  EXPECT_TRUE(IsG2(first, turned(1e-7)));
}

TEST(IsG1Continue, AStandstillJoinsOnlyAStandstill) {
  const TBezierSegment2D ending = TBezierSegment2D::Create({0, 0}, {5, 0}, {5, 0}, {5, 0});
  const TBezierSegment2D beginning = TBezierSegment2D::Create({5, 0}, {5, 0}, {5, 0}, {9, 0});
  EXPECT_FALSE(IsG1(ending, Straight({5, 0}, {9, 0})));
  EXPECT_FALSE(IsG2(ending, Straight({5, 0}, {9, 0})));
  EXPECT_FALSE(IsG1(Straight({0, 0}, {5, 0}), beginning));
  EXPECT_TRUE(IsG1(ending, beginning));
  EXPECT_TRUE(IsG2(ending, beginning));
}

TEST(IsG2Continue, AnotherCurvatureBreaksTheSecondOnly) {
  const TBezierSegment2D whole = TBezierSegment2D::Create({0, 0}, {1, 2}, {3, 2}, {4, 0});
  const auto [first, second] = Split(whole, 0.5);
  ASSERT_TRUE(IsG2(first, second));
  // A handle twice as long divides the curvature by four.
  TBezierSegment2D other = second;
  other.P1 = second.P0 + (second.P1 - second.P0) * 2;
  EXPECT_TRUE(IsG1(first, other));
  EXPECT_FALSE(IsG2(first, other));
  // The mirror image bends the other way.
  const TBezierSegment2D mirrored = TBezierSegment2D::Create(second.P0, {second.P1.X, 2 * second.P0.Y - second.P1.Y},
                                                             {second.P2.X, 2 * second.P0.Y - second.P2.Y},
                                                             {second.P3.X, 2 * second.P0.Y - second.P3.Y});
  EXPECT_TRUE(IsG1(first, mirrored));
  EXPECT_FALSE(IsG2(first, mirrored));
  // A straight continuation has no curvature.
  EXPECT_TRUE(IsG1(first, Straight(second.P0, second.P0 + TPoint2D{3, 0})));
  EXPECT_FALSE(IsG2(first, Straight(second.P0, second.P0 + TPoint2D{3, 0})));
}

TEST(IsG2Continue, OnlyTheEndOfTheFirstAndTheStartOfTheSecondCount) {
  const TBezierSegment2D whole = TBezierSegment2D::Create({0, 0}, {1, 2}, {3, 2}, {4, 1});
  const auto [first, second] = Split(whole, 0.4);
  EXPECT_TRUE(IsG2(first, second));
  EXPECT_FALSE(IsG1(second, first));
  // Where the segments lie is not compared.
  EXPECT_TRUE(IsG2(first, Moved(second, {100, -7})));
}

TEST(IsG2Continue, NotANumberIsNotContinuous) {
  const TBezierSegment2D bad = TBezierSegment2D::Create({0, 0}, {1, 0}, {kNaN, 0}, {3, 0});
  EXPECT_FALSE(IsG1(bad, Straight({3, 0}, {5, 0})));
  EXPECT_FALSE(IsG2(Straight({-3, 0}, {0, 0}), bad));
}

RC_GTEST_PROP(IsG2ContinueLaws, TheHalvesOfASegmentAreSmoothAtTheCut, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const TBezierSegment2D whole = GentleSegment(random);
  const auto [first, second] = Split(whole, 0.05 + 0.9 * *rc::gen::inRange(0, 1001) / 1000.0);
  TPoint2D tangent;
  TPoint2D curvature;
  TBezierSegmentHelper::EvalDerVector(second, 0, tangent, curvature);
  RC_PRE(curvature.Mag() > 1e-4);  // a shorter one has a direction of rounding errors
  RC_ASSERT(IsG1(first, second));
  RC_ASSERT(IsG2(first, second));
}

}  // namespace
}  // namespace ZORBase
