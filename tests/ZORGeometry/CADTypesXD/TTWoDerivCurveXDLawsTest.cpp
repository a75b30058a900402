#include <ZORBase/ZORGeometry/CADTypesXD/TTWoDerivCurveXD.h>

#include "CurvePathsXD.h"
#include "PlainCurveXD.h"
#include "support/TestSupport.h"

#include <functional>
#include <string>
#include <vector>

namespace ZORBase {
namespace {

using Test::Arc;
using Test::Bits;
using Test::Closed;
using Test::Collinear;
using Test::Grid;
using Test::IsExactPointXD;
using Test::kDimensions;
using Test::Padded;
using Test::PointBy;
using Test::PointOf;
using Test::RandomNumber;
using Test::RandomPoint;
using Test::RandomPoints;
using Test::Repeated;
using Test::TCollected;
using Test::TPath;
using Test::TPlainBezXD;
using Test::TPlainCurveXD;
using Test::TRandom;
using Test::TSegments;
using Test::Waves;
using Test::WithTail;

// ---------------------------------------------------------------------------------------------- joints, independently

// The curvature of a cubic Bezier segment where it leaves P0 for P1: 2 / 3 of the height of P2 over that side, over the
// side's length squared.
double CurvatureLeaving(const TPointXD& P0, const TPointXD& P1, const TPointXD& P2) {
  const TPointXD side = P1 - P0;
  const TPointXD direction = side * (1 / side.Mag());
  const TPointXD diagonal = P2 - P0;
  return (diagonal - direction * direction.DotMul(diagonal)).Mag() / side.MagSqr() * 2 / 3;
}

// The relative jump of the curvature, summed over all joints of segments with the points A, B, C and D.
template <class TSegment>
double SumOfJumps(const std::vector<TSegment>& Segments, TPointXD TSegment::*A, TPointXD TSegment::*B,
                  TPointXD TSegment::*C, TPointXD TSegment::*D) {
  double sum = 0;
  for (std::size_t i = 0; i + 1 < Segments.size(); ++i) {
    const double before = CurvatureLeaving(Segments[i].*D, Segments[i].*C, Segments[i].*B);
    const double after = CurvatureLeaving(Segments[i + 1].*A, Segments[i + 1].*B, Segments[i + 1].*C);
    sum += std::fabs(before - after) / std::max({before, after, 1e-9});
  }
  return sum;
}

double SumOfJumps(const TSegments& Segments) {
  return SumOfJumps(Segments, &TCubicBezXD::FP0, &TCubicBezXD::FP1, &TCubicBezXD::FP2, &TCubicBezXD::FP3);
}

double SumOfJumps(const std::vector<TPlainBezXD>& Segments) {
  return SumOfJumps(Segments, &TPlainBezXD::P0, &TPlainBezXD::P1, &TPlainBezXD::P2, &TPlainBezXD::P3);
}

// ---------------------------------------------------------------------------------------------- to the bit

void ExpectPlain(const TPath& Path, const std::string& What) {
  const TCollected curve(Path);
  TPlainCurveXD plain(Path);
  const std::vector<TPlainBezXD> segments = plain.Segments();
  ASSERT_EQ(curve.Segments.size(), segments.size()) << What;
  for (std::size_t i = 0; i < segments.size(); ++i) {
    ASSERT_THAT(curve.Segments[i].FP0, IsExactPointXD(segments[i].P0)) << What << ", segment " << i;
    ASSERT_THAT(curve.Segments[i].FP1, IsExactPointXD(segments[i].P1)) << What << ", segment " << i;
    ASSERT_THAT(curve.Segments[i].FP2, IsExactPointXD(segments[i].P2)) << What << ", segment " << i;
    ASSERT_THAT(curve.Segments[i].FP3, IsExactPointXD(segments[i].P3)) << What << ", segment " << i;
    ASSERT_EQ(Bits(curve.Segments[i].FLength), Bits(segments[i].Length)) << What << ", segment " << i;
  }
  for (std::size_t j = 0; j < plain.Weights().size(); ++j) {
    ASSERT_EQ(Bits(curve.Curve.BezWeightList()[static_cast<int>(j)]), Bits(plain.Weights()[j]))
        << What << ", weight " << j;
  }
  for (std::size_t j = 0; j < plain.Tangents().size(); ++j) {
    ASSERT_THAT(curve.Curve.BezDerivList()[static_cast<int>(j)], IsExactPointXD(plain.Tangents()[j]))
        << What << ", " << j;
  }
}

class TTWoDerivCurveXDToTheBit : public testing::TestWithParam<int> {};

TEST_P(TTWoDerivCurveXDToTheBit, IsThePlainCurve) {
  const int dimension = GetParam();
  TRandom random(static_cast<std::uint64_t>(dimension));
  for (const int count : {3, 4, 5, 8, 21, 60}) {
    const std::string size = ", " + std::to_string(count) + " points";
    ExpectPlain(Waves(random, dimension, count), "waves" + size);
    ExpectPlain(Collinear(random, dimension, count), "collinear" + size);
    ExpectPlain(Closed(Waves(random, dimension, count)), "closed" + size);
    ExpectPlain(Repeated(Waves(random, dimension, count)), "repeated waves" + size);
    ExpectPlain(Repeated(RandomPoints(random, dimension, count, 10)), "repeated points" + size);
    ExpectPlain(Grid(random, dimension, count), "grid" + size);
    for (const double scale : {1e-13, 1e-7, 1.0, 1e3, 1e40}) {
      ExpectPlain(RandomPoints(random, dimension, count, scale), "random to " + std::to_string(scale) + size);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(EachDimension, TTWoDerivCurveXDToTheBit, testing::ValuesIn(kDimensions));

RC_GTEST_PROP(TTWoDerivCurveXDLaws, AnyPathIsThePlainCurve, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const int dimension = *rc::gen::inRange(1, 45);
  const TPath path = RandomPoints(random, dimension, *rc::gen::inRange(3, 61), *rc::gen::element(0.01, 1.0, 1000.0));
  ExpectPlain(path, "random path");
  RC_ASSERT(!testing::Test::HasFatalFailure());
}

TEST(TTWoDerivCurveXD, MixedDimensionsAndStoredTailsAreThoseOfThePlainCurve) {
  TRandom random(5);
  for (int i = 0; i < 100; ++i) {
    TPath path;
    for (int k = 0; k < 12; ++k) {
      const TPointXD point = RandomPoint(random, 1 + static_cast<int>(random() % 44), 10);
      path.Add(random() % 2 == 0 ? point : WithTail(point, RandomNumber(random, 10)));
    }
    ExpectPlain(path, "mixed path " + std::to_string(i));
  }
}

// ---------------------------------------------------------------------------------------------- laws

bool IsContinuous(const TSegments& Segments, double Tolerance) {
  for (std::size_t i = 0; i + 1 < Segments.size(); ++i) {
    const TPointXD before = Segments[i].EvalDeriv(1);
    const TPointXD after = Segments[i + 1].EvalDeriv(0);
    if (!((before * (1 / before.Mag()) - after * (1 / after.Mag())).Mag() <= Tolerance)) return false;
  }
  return true;
}

// Where the weight next to an end of the path is at its limit, the tangent there is the first or last chord itself; that leaves
// nothing for the tangent at the end to lean away from it, so it has no length.
bool HasNoTangent(const TTWoDerivCurveXD& Curve, int Point) {
  if (Point == 0) return Curve.BezWeightList().First() == 1;
  return Point == Curve.CtrlPtList().Count() - 1 && Curve.BezWeightList().Last() == 0;
}

RC_GTEST_PROP(TTWoDerivCurveXDLaws, ASmoothPathHasContinuousTangents, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const TCollected curve(Waves(random, *rc::gen::inRange(1, 45), *rc::gen::inRange(3, 41)));
  RC_ASSERT(IsContinuous(curve.Segments, 1e-12));
  for (int i = 0; i < curve.Curve.CtrlPtList().Count(); ++i) {
    const TPointXD& tangent = curve.Curve.BezDerivList()[i];
    RC_ASSERT(std::fabs(tangent.Mag() - (HasNoTangent(curve.Curve, i) ? 0 : 1)) < 1e-15);
  }
  for (std::size_t i = 0; i < curve.Segments.size(); ++i) {
    const TPointXD& tangent = curve.Curve.BezDerivList()[static_cast<int>(i)];
    if (tangent.Mag() == 0.0) continue;
    RC_ASSERT((curve.Segments[i].EvalDeriv(0).Normal() - tangent).Mag() < 1e-12);
  }
}

// The curvature jump of a path, before and after the correction.
std::array<double, 2> Jumps(const TPath& Path) {
  return {SumOfJumps(TPlainCurveXD(Path).Segments(0)), SumOfJumps(TCollected(Path).Segments)};
}

// Curves whose curvature changes along them, in steps that are even and uneven. On a circle or a helix in even steps there
// is next to no jump to be corrected.
TEST(TTWoDerivCurveXDLaws, OnSmoothCurvesTheCorrectionMakesTheCurvatureJumpSmaller) {
  using TCurve = std::function<TPointXD(double)>;
  const std::vector<TCurve> curves = {
      [](double u) {
        return PointOf({100 * std::cos(6 * u), 40 * std::sin(6 * u)});
      },
      [](double u) {
        return PointOf({std::exp(3 * u) * std::cos(9 * u), std::exp(3 * u) * std::sin(9 * u)});
      },
      [](double u) {
        return PointOf({9 * u, std::sin(9 * u), std::cos(5 * u)});
      },
      [](double u) {
        return PointOf({2 * u, 4 * u * u, 8 * u * u * u, std::sin(2 * u), std::cos(2 * u), std::exp(2 * u)});
      },
      [](double u) {
        return PointBy(17, [u](int i) { return std::cos((1 + i / 2) * 2 * u + (i % 2) * 1.5) / (1 + i / 2); });
      },
      [](double u) { return PointBy(44, [u](int i) { return std::exp(3 * u) * std::sin(i + (6 + 0.1 * i) * u); }); }};
  for (std::size_t k = 0; k < curves.size(); ++k) {
    for (const int count : {30, 60}) {
      for (const double unevenness : {0.0, 0.2, 0.35}) {
        TPath path;
        for (int i = 0; i < count; ++i) path.Add(curves[k]((i + unevenness * std::sin(2.0 * i)) / count));
        const auto [before, after] = Jumps(path);
        EXPECT_LT(after, 0.5 * before) << "curve " << k << ", " << count << " points, unevenness " << unevenness;
      }
    }
  }
}

TEST(TTWoDerivCurveXDLaws, OnWavesTheCorrectionTakesAwayMostOfTheCurvatureJump) {
  for (const int dimension : {2, 3, 6, 17, 44}) {
    double sumBefore = 0;
    double sumAfter = 0;
    for (int seed = 0; seed < 20; ++seed) {
      TRandom random(static_cast<std::uint64_t>(seed));
      const auto [before, after] = Jumps(Waves(random, dimension, 40));
      sumBefore += before;
      sumAfter += after;
    }
    EXPECT_LT(sumAfter, 0.4 * sumBefore) << "dimension " << dimension;
  }
}

RC_GTEST_PROP(TTWoDerivCurveXDLaws, WeightsNeverLeaveZeroToOne, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const int dimension = *rc::gen::inRange(1, 8);
  const int count = *rc::gen::inRange(3, 61);
  const TPath path = *rc::gen::arbitrary<bool>() ? RandomPoints(random, dimension, count, 10)
                                                 : Repeated(Grid(random, dimension, count));
  const TCollected curve(path);
  for (const double weight : curve.Curve.BezWeightList()) {
    RC_ASSERT(weight >= 0);
    RC_ASSERT(weight <= 1);
  }
}

RC_GTEST_PROP(TTWoDerivCurveXDLaws, CoordinatesThatAreAlwaysZeroChangeNothing, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const int dimension = *rc::gen::inRange(1, 44);
  const TPath path = RandomPoints(random, dimension, 12, 10);
  const TCollected narrow(path);
  const TCollected wide(Padded(path, *rc::gen::inRange(dimension + 1, 45)));
  for (std::size_t i = 0; i < narrow.Segments.size(); ++i) {
    RC_ASSERT(narrow.Segments[i].FP1.Items == wide.Segments[i].FP1.Items);
    RC_ASSERT(narrow.Segments[i].FP2.Items == wide.Segments[i].FP2.Items);
    RC_ASSERT(narrow.Segments[i].FLength == wide.Segments[i].FLength);
  }
}

RC_GTEST_PROP(TTWoDerivCurveXDLaws, AMirroredPathGivesTheMirroredCurveExactly, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const int dimension = *rc::gen::inRange(1, 45);
  const TPath path = Waves(random, dimension, 12);
  const TPointXD mirror = PointBy(dimension, [&](int) { return random() % 2 == 0 ? 1.0 : -1.0; });
  TPath mirrored;
  for (const TPointXD& point : path) mirrored.Add(point * mirror);
  const TCollected first(path);
  const TCollected second(mirrored);
  for (std::size_t i = 0; i < first.Segments.size(); ++i) {
    RC_ASSERT(second.Segments[i].FP1.Items == (first.Segments[i].FP1 * mirror).Items);
    RC_ASSERT(second.Segments[i].FP2.Items == (first.Segments[i].FP2 * mirror).Items);
    RC_ASSERT(second.Segments[i].FLength == first.Segments[i].FLength);
  }
}

TEST(TTWoDerivCurveXD, AnArcIsFollowedCloselyAwayFromItsEnds) {
  const TCollected arc(Arc(21, 100, 0.1));
  for (std::size_t i = 2; i + 2 < arc.Segments.size(); ++i) {
    for (double t = 0; t <= 1; t += 0.125) EXPECT_NEAR(arc.Segments[i].EvalPoint(t).Mag(), 100, 1e-3);
    EXPECT_NEAR(arc.Segments[i].CurveLength(), 10, 1e-3);
  }
}

TEST(TTWoDerivCurveXD, ALongPathInAllCoordinatesIsDeliveredInOrder) {
  TRandom random(6);
  const int count = 3000;
  const TPath path = Waves(random, 44, count);
  int calls = 0;
  bool inOrder = true;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD& bez) {
    inOrder = inOrder && bez.FP0.Items == path[calls].Items && bez.FP3.Items == path[calls + 1].Items;
    ++calls;
  });
  EXPECT_TRUE(curve.CreateCorss(path));
  EXPECT_EQ(calls, count - 1);
  EXPECT_TRUE(inOrder);
  EXPECT_EQ(curve.BezWeightList().Count(), count - 2);
}

}  // namespace
}  // namespace ZORBase
