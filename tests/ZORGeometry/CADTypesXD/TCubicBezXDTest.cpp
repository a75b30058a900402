#include <ZORBase/ZORGeometry/CADTypesXD/TCubicBezXD.h>

#include "PlainCurveXD.h"
#include "PointXDSupport.h"
#include "support/TestSupport.h"

#include <limits>
#include <memory>
#include <numeric>
#include <type_traits>

namespace ZORBase {
namespace {

using Test::Bits;
using Test::IsExactPointXD;
using Test::PointBy;
using Test::PointOf;
using Test::RandomNumber;
using Test::RandomPoint;
using Test::TPlainBezXD;
using Test::TRandom;
using Test::WithTail;

static_assert(std::is_trivially_copyable_v<TCubicBezXD>);

const TCubicBezXD kStraight = TCubicBezXD::Create(PointOf({0}), PointOf({1}), PointOf({2}), PointOf({3}));
// (t, t^2): its length is sqrt(5) / 2 + asinh(2) / 4.
const TCubicBezXD kParabola =
    TCubicBezXD::Create(PointOf({0, 0}), PointOf({1.0 / 3, 0}), PointOf({2.0 / 3, 1.0 / 3}), PointOf({1, 1}));
const TCubicBezXD kOnePoint = TCubicBezXD::Create(PointOf({2, 5}), PointOf({2, 5}), PointOf({2, 5}), PointOf({2, 5}));

TCubicBezXD RandomSegment(TRandom& Random, int Dimension, double Size) {
  const auto point = [&] { return RandomPoint(Random, Dimension, Size); };
  const TPointXD p0 = point();
  const TPointXD p1 = point();
  const TPointXD p2 = point();
  return TCubicBezXD::Create(p0, p1, p2, point());
}

// A segment that bends but never comes near a standstill: a straight run along its first axis, and noise on all axes.
TCubicBezXD GentleSegment(TRandom& Random, int Dimension, double Size = 1) {
  const auto point = [&](double Place) { return (RandomPoint(Random, Dimension, 0.2) + PointOf({Place})) * Size; };
  const TPointXD p0 = point(0);
  const TPointXD p1 = point(1);
  const TPointXD p2 = point(2);
  return TCubicBezXD::Create(p0, p1, p2, point(3));
}

TPlainBezXD Plain(const TCubicBezXD& Segment) {
  return TPlainBezXD::Create(Segment.FP0, Segment.FP1, Segment.FP2, Segment.FP3);
}

// ---------------------------------------------------------------------------------------------- points and derivatives

TEST(TCubicBezXD, CreateKeepsItsPointsAndMeasures) {
  const TCubicBezXD segment =
      TCubicBezXD::Create(WithTail(PointOf({1, 2}), 8), PointOf({3, 4}), PointOf({5, 6}), PointOf({7, 8}));
  EXPECT_THAT(segment.FP0, IsExactPointXD(WithTail(PointOf({1, 2}), 8)));
  EXPECT_THAT(segment.FP1, IsExactPointXD(PointOf({3, 4})));
  EXPECT_THAT(segment.FP2, IsExactPointXD(PointOf({5, 6})));
  EXPECT_THAT(segment.FP3, IsExactPointXD(PointOf({7, 8})));
  EXPECT_NEAR(segment.FLength, std::sqrt(72), 1e-14);
  EXPECT_EQ(segment.CurveLength(), segment.FLength);
}

TEST(TCubicBezXD, OutsideItsRangeAPointIsTheEndPointItself) {
  TCubicBezXD segment = kParabola;
  // What an end point stores behind its coordinates comes along with a copy, and with nothing else.
  segment.FP0 = WithTail(PointOf({0.1, 0.2}), 7);
  segment.FP3 = WithTail(PointOf({0.3, 0.7}), 8);
  for (const double t : {-0.5, -0.0, 0.0, -kInfinity, kNaN}) {
    EXPECT_THAT(segment.EvalPoint(t), IsExactPointXD(segment.FP0)) << t;
  }
  for (const double t : {1.0, 1.5, kInfinity}) EXPECT_THAT(segment.EvalPoint(t), IsExactPointXD(segment.FP3)) << t;
}

TEST(TCubicBezXD, OutsideItsRangeADerivativeIsThatOfTheEnd) {
  TRandom random(1);
  const TCubicBezXD segment = RandomSegment(random, 5, 10);
  EXPECT_THAT(segment.EvalDeriv(2), IsExactPointXD(segment.EvalDeriv(1)));
  EXPECT_THAT(segment.EvalDeriv(1), IsExactPointXD(3 * (segment.FP3 - segment.FP2)));
  EXPECT_THAT(segment.EvalDeriv(-2), IsExactPointXD(3 * (segment.FP1 - segment.FP0)));
  EXPECT_THAT(segment.EvalDeriv2(7), IsExactPointXD(segment.EvalDeriv2(1)));
  EXPECT_THAT(segment.EvalDeriv2(-7), IsExactPointXD(segment.EvalDeriv2(0)));
}

TEST(TCubicBezXD, WithDerivativesTheEndsAreFormulasAndNotCopies) {
  TCubicBezXD segment = kParabola;
  segment.FP0 = WithTail(PointOf({0.25, 0.5}), 7);
  TPointXD d1;
  TPointXD d2;
  TPointXD d3;
  EXPECT_THAT(segment.EvalPoint(-3, d1, d2, d3), IsExactPointXD(PointOf({0.25, 0.5})));
  EXPECT_THAT(d1, IsExactPointXD(segment.EvalDeriv(0)));
  EXPECT_THAT(d2, IsExactPointXD(segment.EvalDeriv2(0)));
  EXPECT_THAT(segment.EvalPoint(3, d1, d2, d3), IsExactPointXD(PointOf({1, 1})));
  EXPECT_THAT(d1, IsExactPointXD(segment.EvalDeriv(1)));
  EXPECT_THAT(d2, IsExactPointXD(segment.EvalDeriv2(1)));
}

TEST(TCubicBezXD, AStraightRunHasOneDerivativeEverywhere) {
  for (const double t : {-1.0, 0.0, 0.25, 0.5, 0.875, 1.0, 2.0}) {
    TPointXD d1;
    TPointXD d2;
    TPointXD d3;
    kStraight.EvalPoint(t, d1, d2, d3);
    EXPECT_TRUE(d1 == PointOf({3}));
    EXPECT_TRUE(d2 == PointOf({0}));
    EXPECT_TRUE(d3 == PointOf({0}));
  }
}

// Coefficients are whole numbers and parameters 64ths, so that both forms of the polynomial are exact.
TEST(TCubicBezXD, PointAndDerivativesAreThoseOfThePolynomialExactly) {
  TRandom random(2);
  for (const int dimension : {1, 2, 3, 6, 17, 44}) {
    const auto whole = [&] { return PointBy(dimension, [&](int) { return std::floor(RandomNumber(random, 1000)); }); };
    const TPointXD p0 = whole();
    const TPointXD p1 = whole();
    const TPointXD p2 = whole();
    const TPointXD p3 = whole();
    const TCubicBezXD segment = TCubicBezXD::Create(p0, p1, p2, p3);
    for (int k = 1; k < 64; ++k) {
      const double t = k / 64.0;
      TPointXD d1;
      TPointXD d2;
      TPointXD d3;
      const TPointXD point = segment.EvalPoint(t, d1, d2, d3);
      for (std::size_t i = 0; i < point.Coordinates().size(); ++i) {
        const double c0 = p0.Items[i];
        const double c1 = 3 * (p1.Items[i] - p0.Items[i]);
        const double c2 = 3 * (p0.Items[i] - 2 * p1.Items[i] + p2.Items[i]);
        const double c3 = p3.Items[i] - 3 * p2.Items[i] + 3 * p1.Items[i] - p0.Items[i];
        ASSERT_EQ(point.Items[i], c0 + t * (c1 + t * (c2 + t * c3)));
        ASSERT_EQ(d1.Items[i], c1 + t * (2 * c2 + t * (3 * c3)));
        ASSERT_EQ(d2.Items[i], 2 * c2 + t * (6 * c3));
        ASSERT_EQ(d3.Items[i], 6 * c3);
      }
      EXPECT_THAT(segment.EvalPoint(t), IsExactPointXD(point));
      EXPECT_THAT(segment.EvalDeriv(t), IsExactPointXD(d1));
      EXPECT_THAT(segment.EvalDeriv2(t), IsExactPointXD(d2));
    }
  }
}

TEST(TCubicBezXD, OutputsMayBeItsOwnPoints) {
  TCubicBezXD segment = kParabola;
  TPointXD d1;
  TPointXD d2;
  TPointXD d3;
  const TPointXD point = kParabola.EvalPoint(0.25, d1, d2, d3);
  EXPECT_THAT(segment.EvalPoint(0.25, segment.FP0, segment.FP1, segment.FP2), IsExactPointXD(point));
  EXPECT_THAT(segment.FP0, IsExactPointXD(d1));
  EXPECT_THAT(segment.FP1, IsExactPointXD(d2));
  EXPECT_THAT(segment.FP2, IsExactPointXD(d3));
}

// ---------------------------------------------------------------------------------------------- length

TEST(TCubicBezXD, SpeedIsNotClamped) {
  const TCubicBezXD square = TCubicBezXD::Create(PointOf({0}), PointOf({0}), PointOf({1}), PointOf({3}));  // 3 t^2
  EXPECT_EQ(square.GaussLengthFunc(0.5), 3);
  EXPECT_EQ(square.GaussLengthFunc(2), 12);
  EXPECT_EQ(square.GaussLengthFunc(-1), 6);
  for (const double t : {-2.0, 0.0, 0.3, 1.0, 5.0}) EXPECT_NEAR(kStraight.GaussLengthFunc(t), 3, 1e-14);
}

TEST(TCubicBezXD, LengthsOfKnownCurves) {
  EXPECT_NEAR(kStraight.CurveLength(), 3, 1e-14);
  EXPECT_NEAR(kParabola.CurveLength(), std::sqrt(5) / 2 + std::asinh(2) / 4, 1e-13);
  const auto upTo = [](double x) { return x * std::sqrt(1 + 4 * x * x) / 2 + std::asinh(2 * x) / 4; };
  EXPECT_NEAR(kParabola.LengthOfParam(0.2, 0.7), upTo(0.7) - upTo(0.2), 1e-14);
}

TEST(TCubicBezXD, LengthIsMeasuredInsideTheSegmentOnly) {
  EXPECT_EQ(kParabola.LengthOfParam(0.7, 0.3), 0);
  EXPECT_EQ(kParabola.LengthOfParam(0.3, 0.3), 0);
  EXPECT_EQ(kParabola.LengthOfParam(1.5, 2), 0);
  EXPECT_EQ(kParabola.LengthOfParam(-2, -1), 0);
  EXPECT_EQ(Bits(kParabola.LengthOfParam(-1, 2)), Bits(kParabola.CurveLength()));
  EXPECT_EQ(Bits(kParabola.LengthOfParam(-kInfinity, 0.5)), Bits(kParabola.LengthOfParam(0, 0.5)));
}

TEST(TCubicBezXD, LengthRunsOverTheDimensionOfTheStartPoint) {
  const TPointXD p0 = PointOf({0});
  const TCubicBezXD segment = TCubicBezXD::Create(p0, PointOf({1, 50}), PointOf({2, -50, 9}), PointOf({3, 0, 1}));
  EXPECT_NEAR(segment.CurveLength(), 3, 1e-14);
  EXPECT_EQ(segment.EvalPoint(0.5).FDimension, 3);
  EXPECT_EQ(segment.EvalPoint(0).FDimension, 1);
  const TCubicBezXD padded = TCubicBezXD::Create(PointOf({0, 0}), PointOf({1}), PointOf({2}), PointOf({3}));
  EXPECT_NEAR(padded.CurveLength(), 3, 1e-14);
}

// ---------------------------------------------------------------------------------------------- length to parameter

TEST(TCubicBezXD, HalfTheLengthOfAStraightRunIsFoundAtTheFirstHalving) { EXPECT_EQ(kStraight.ParamOfLength(1.5), 0.5); }

TEST(TCubicBezXD, AtOrAboveItsLengthTheParameterIsOne) {
  EXPECT_EQ(kParabola.ParamOfLength(kParabola.CurveLength()), 1);
  EXPECT_EQ(kParabola.ParamOfLength(100), 1);
  EXPECT_EQ(kParabola.ParamOfLength(kInfinity), 1);
}

TEST(TCubicBezXD, LengthZeroIsFoundAtTheFirstHalvingWithinTheTolerance) {
  EXPECT_EQ(kStraight.ParamOfLength(0), std::ldexp(1, -15));  // 3 * 2^-15 is below 1e-4, 3 * 2^-14 is not
  EXPECT_EQ(kStraight.ParamOfLength(-1), std::ldexp(1, -19));
  EXPECT_EQ(kStraight.ParamOfLength(-kInfinity), std::ldexp(1, -19));
}

TEST(TCubicBezXD, OnOnePointEveryLengthFromZeroOnIsAtParameterOne) {
  EXPECT_EQ(kOnePoint.CurveLength(), 0);
  EXPECT_EQ(kOnePoint.ParamOfLength(0), 1);
  EXPECT_EQ(kOnePoint.ParamOfLength(0.5), 1);
  EXPECT_EQ(kOnePoint.ParamOfLength(-1), std::ldexp(1, -19));
}

TEST(TCubicBezXD, TheStoredLengthHasNoSayInTheSearch) {
  TCubicBezXD segment = kParabola;
  segment.FLength = 0.1;
  EXPECT_EQ(Bits(segment.ParamOfLength(0.7)), Bits(kParabola.ParamOfLength(0.7)));
  EXPECT_EQ(segment.CurveLength(), 0.1);
}

TEST(TCubicBezXD, OnALongSegmentTheSearchStopsAfter19Halvings) {
  const double size = 3e6;
  const TCubicBezXD segment =
      TCubicBezXD::Create(PointOf({0}), PointOf({size / 3}), PointOf({size * 2 / 3}), PointOf({size}));
  for (const double length : {1.0, 12345.678, 1e6, 2999999.0}) {
    const double t = segment.ParamOfLength(length);
    EXPECT_NEAR(t, length / size, std::ldexp(1, -19));
    EXPECT_EQ(std::fmod(std::ldexp(t, 19), 2), 1) << "an odd multiple of the last step";
  }
}

// ---------------------------------------------------------------------------------------------- not a number, infinite

TEST(TCubicBezXD, TheLengthBetweenParametersThatAreNoNumbersIsNone) {
  EXPECT_TRUE(std::isnan(kParabola.LengthOfParam(kNaN, 1)));
  EXPECT_TRUE(std::isnan(kParabola.LengthOfParam(0, kNaN)));
}

TEST(TCubicBezXD, TheSearchEndsForLengthsThatAreNoNumbers) {
  EXPECT_EQ(kParabola.ParamOfLength(kNaN), 1);
  for (const double bad : {kNaN, kInfinity, 1e300}) {
    const TCubicBezXD segment = TCubicBezXD::Create(PointOf({0}), PointOf({1}), PointOf({bad}), PointOf({3}));
    EXPECT_FALSE(std::isfinite(segment.CurveLength()));
    const double t = segment.ParamOfLength(1);
    EXPECT_GE(t, 0);
    EXPECT_LE(t, 1);
  }
}

TEST(TCubicBezXD, ACoordinateThatIsNoNumberStaysInItsPlace) {
  const TCubicBezXD segment =
      TCubicBezXD::Create(PointOf({0, kNaN}), PointOf({1, 1}), PointOf({2, 2}), PointOf({3, 3}));
  EXPECT_DOUBLE_EQ(segment.EvalPoint(0.5).X(), 1.5);
  EXPECT_TRUE(std::isnan(segment.EvalPoint(0.5).Y()));
}

// ---------------------------------------------------------------------------------------------- dimensions out of range

// Four points, with numbers behind the last one that show up in any result which reads them.
struct TFencedSegment {
  TCubicBezXD Segment;
  std::array<double, 64> Fence;
};

TEST(TCubicBezXD, ADimensionOutOfRangeStaysInsideTheRecords) {
  TRandom random(3);
  const TCubicBezXD good = RandomSegment(random, 44, 10);
  for (const int hostile : {45, 100, 1 << 30}) {
    const auto fenced = std::make_unique<TFencedSegment>();
    fenced->Fence.fill(1e200);
    fenced->Segment = good;
    for (TPointXD* const point :
         {&fenced->Segment.FP0, &fenced->Segment.FP1, &fenced->Segment.FP2, &fenced->Segment.FP3}) {
      point->FDimension = hostile;
    }
    const TCubicBezXD& segment = fenced->Segment;
    EXPECT_EQ(Bits(segment.GaussLengthFunc(0.3)), Bits(good.GaussLengthFunc(0.3)));
    EXPECT_EQ(Bits(segment.LengthOfParam(0, 1)), Bits(good.CurveLength()));
    EXPECT_EQ(Bits(segment.ParamOfLength(3)), Bits(good.ParamOfLength(3)));
    TPointXD d1;
    TPointXD d2;
    TPointXD d3;
    EXPECT_EQ(segment.EvalPoint(0.3, d1, d2, d3).Items, good.EvalPoint(0.3).Items);
    EXPECT_EQ(d1.Items, good.EvalDeriv(0.3).Items);
    EXPECT_EQ(d2.Items, good.EvalDeriv2(0.3).Items);
    EXPECT_EQ(TCubicBezXD::Create(segment.FP0, segment.FP1, segment.FP2, segment.FP3).FLength, good.FLength);
  }
  for (const int hostile : {0, -3, std::numeric_limits<int>::min()}) {
    TPointXD none = good.FP0;
    none.FDimension = hostile;
    const TCubicBezXD segment = TCubicBezXD::Create(none, none, none, none);
    EXPECT_EQ(segment.CurveLength(), 0);
    EXPECT_EQ(segment.EvalPoint(0.5).Coordinates().size(), 0u);
    EXPECT_EQ(segment.EvalDeriv(0.5).Coordinates().size(), 0u);
    EXPECT_EQ(TCubicBezXD::Create(none, good.FP1, good.FP2, good.FP3).CurveLength(), 0);
  }
}

// ---------------------------------------------------------------------------------------------- to the bit

void ExpectPlain(const TCubicBezXD& Segment, TRandom& Random) {
  const TPlainBezXD plain = Plain(Segment);
  ASSERT_EQ(Bits(Segment.FLength), Bits(plain.Length));
  for (int k = 0; k < 8; ++k) {
    const double t = RandomNumber(Random, 0.6) + 0.5;
    TPointXD d1, d2, d3, e1, e2, e3;
    ASSERT_THAT(Segment.EvalPoint(t), IsExactPointXD(plain.EvalPoint(t)));
    ASSERT_THAT(Segment.EvalDeriv(t), IsExactPointXD(plain.EvalDeriv(t)));
    ASSERT_THAT(Segment.EvalDeriv2(t), IsExactPointXD(plain.EvalDeriv2(t)));
    ASSERT_THAT(Segment.EvalPoint(t, d1, d2, d3), IsExactPointXD(plain.EvalPoint(t, e1, e2, e3)));
    ASSERT_THAT(d1, IsExactPointXD(e1));
    ASSERT_THAT(d2, IsExactPointXD(e2));
    ASSERT_THAT(d3, IsExactPointXD(e3));
    ASSERT_EQ(Bits(Segment.GaussLengthFunc(t)), Bits(plain.GaussLengthFunc(t)));
    const double other = RandomNumber(Random, 0.6) + 0.5;
    ASSERT_EQ(Bits(Segment.LengthOfParam(t, other)), Bits(plain.LengthOfParam(t, other)));
    const double length = t * plain.Length;
    ASSERT_EQ(Bits(Segment.ParamOfLength(length)), Bits(plain.ParamOfLength(length)));
  }
}

TEST(TCubicBezXD, IsThePlainSegmentToTheLastBit) {
  TRandom random(4);
  for (int dimension = 1; dimension <= 44; ++dimension) {
    for (const double size : {1e-3, 1.0, 100.0, 1e7}) {
      ExpectPlain(RandomSegment(random, dimension, size), random);
      if (HasFatalFailure()) FAIL() << "dimension " << dimension << ", size " << size;
    }
  }
  ExpectPlain(kStraight, random);
  ExpectPlain(kParabola, random);
  ExpectPlain(kOnePoint, random);
}

TEST(TCubicBezXD, MixedDimensionsAndStoredTailsAreThoseOfThePlainSegment) {
  TRandom random(5);
  for (int i = 0; i < 200; ++i) {
    const auto point = [&] {
      const TPointXD inUse = RandomPoint(random, 1 + static_cast<int>(random() % 44), 10);
      return random() % 2 == 0 ? inUse : WithTail(inUse, RandomNumber(random, 10));
    };
    const TPointXD p0 = point();
    const TPointXD p1 = point();
    const TPointXD p2 = point();
    ExpectPlain(TCubicBezXD::Create(p0, p1, p2, point()), random);
    if (HasFatalFailure()) FAIL() << "segment " << i;
  }
}

// ---------------------------------------------------------------------------------------------- laws

RC_GTEST_PROP(TCubicBezXDLaws, DerivativesAreTheLimitsOfDividedDifferences, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const TCubicBezXD segment = RandomSegment(random, *rc::gen::inRange(1, 45), 10);
  const double t = RandomNumber(random, 0.4) + 0.5;
  const double h = 1e-3;
  TPointXD d1;
  TPointXD d2;
  TPointXD d3;
  const TPointXD point = segment.EvalPoint(t, d1, d2, d3);
  const TPointXD before = segment.EvalPoint(t - h);
  const TPointXD after = segment.EvalPoint(t + h);
  // On a cubic the central differences are exact up to the third derivative: f' + h^2 f''' / 6, and f''.
  const TPointXD slope = (after - before) * (0.5 / h) - d3 * (h * h / 6);
  const TPointXD bend = (after - 2 * point + before) * (1 / (h * h));
  for (std::size_t i = 0; i < point.Coordinates().size(); ++i) {
    RC_ASSERT(std::fabs(slope.Items[i] - d1.Items[i]) < 1e-10);
    RC_ASSERT(std::fabs(bend.Items[i] - d2.Items[i]) < 1e-7);
    const double third = (segment.EvalDeriv2(t + h).Items[i] - segment.EvalDeriv2(t - h).Items[i]) / (2 * h);
    RC_ASSERT(std::fabs(third - d3.Items[i]) < 1e-9);
  }
}

RC_GTEST_PROP(TCubicBezXDLaws, LengthsAddUp, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const TCubicBezXD segment = GentleSegment(random, *rc::gen::inRange(1, 45));
  const double middle = RandomNumber(random, 0.5) + 0.5;
  const double parts = segment.LengthOfParam(0, middle) + segment.LengthOfParam(middle, 1);
  RC_ASSERT(std::fabs(parts - segment.CurveLength()) < 1e-8);
  double pieces = 0;
  for (int k = 0; k < 32; ++k) pieces += segment.LengthOfParam(k / 32.0, (k + 1) / 32.0);
  RC_ASSERT(std::fabs(pieces - segment.CurveLength()) < 1e-8);
  RC_ASSERT(segment.CurveLength() >= segment.FP0.DistanceTo(segment.FP3) - 1e-12);
}

RC_GTEST_PROP(TCubicBezXDLaws, TheParameterFoundHasTheLengthAskedOrTheLastStepWasTaken, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const TCubicBezXD segment = GentleSegment(random, *rc::gen::inRange(1, 45), *rc::gen::element(0.01, 1.0, 30.0, 1e4));
  const double length = (RandomNumber(random, 0.5) + 0.5) * segment.CurveLength();
  const double t = segment.ParamOfLength(length);
  RC_ASSERT(t > 0);
  RC_ASSERT(t <= 1);
  const double miss = std::fabs(segment.LengthOfParam(0, t) - length);
  if (miss >= 1e-4) {
    RC_ASSERT(std::fmod(std::ldexp(t, 19), 2) == 1);
    // The speed is nowhere above three times the longest side of the control polygon.
    const double fastest = 3 * std::max({segment.FP0.DistanceTo(segment.FP1), segment.FP1.DistanceTo(segment.FP2),
                                         segment.FP2.DistanceTo(segment.FP3)});
    RC_ASSERT(miss <= std::ldexp(fastest, -19) * 1.01 + 1e-8 * segment.CurveLength());
  }
}

RC_GTEST_PROP(TCubicBezXDLaws, PointsLieInTheBoxOfTheControlPoints, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const TCubicBezXD segment = RandomSegment(random, *rc::gen::inRange(1, 45), 10);
  const TPointXD top = segment.FP0.ExtMax(segment.FP1).ExtMax(segment.FP2).ExtMax(segment.FP3);
  const TPointXD bottom = segment.FP0.ExtMin(segment.FP1).ExtMin(segment.FP2).ExtMin(segment.FP3);
  const TPointXD point = segment.EvalPoint(RandomNumber(random, 0.5) + 0.5);
  for (std::size_t i = 0; i < point.Coordinates().size(); ++i) {
    RC_ASSERT(point.Items[i] <= top.Items[i] + 1e-14);
    RC_ASSERT(point.Items[i] >= bottom.Items[i] - 1e-14);
  }
}

RC_GTEST_PROP(TCubicBezXDLaws, TravelledBackwardsItIsTheSameCurve, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const TCubicBezXD segment = GentleSegment(random, *rc::gen::inRange(1, 45));
  const TCubicBezXD back = TCubicBezXD::Create(segment.FP3, segment.FP2, segment.FP1, segment.FP0);
  const double t = RandomNumber(random, 0.5) + 0.5;
  RC_ASSERT(std::fabs(back.CurveLength() - segment.CurveLength()) < 1e-12);
  RC_ASSERT(back.EvalPoint(1 - t).DistanceTo(segment.EvalPoint(t)) < 1e-13);
  RC_ASSERT((back.EvalDeriv(1 - t) + segment.EvalDeriv(t)).Mag() < 1e-12);
  RC_ASSERT((back.EvalDeriv2(1 - t) - segment.EvalDeriv2(t)).Mag() < 1e-11);
}

}  // namespace
}  // namespace ZORBase
