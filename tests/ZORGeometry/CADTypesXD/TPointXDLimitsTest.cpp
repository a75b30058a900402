#include <ZORBase/ZORGeometry/CADTypesXD/TPointXD.h>

#include "PointXDSupport.h"
#include "support/TestSupport.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::IsExactPointXD;
using Test::IsExactPose;
using Test::PointBy;
using Test::PointOf;
using Test::RaisesGeneralError;
using Test::RandomNumber;
using Test::RandomPoint;
using Test::TRandom;

// ---------------------------------------------------------------------------------------------- not a number, infinite

TEST(TPointXD, NotANumberEqualsNothing) {
  const TPointXD point = PointOf({1, kNaN});
  EXPECT_FALSE(point == point);
  EXPECT_TRUE(point != point);
  EXPECT_TRUE(PointOf({kInfinity}) != PointOf({-kInfinity}));
  EXPECT_TRUE(PointOf({kInfinity}) != PointOf({1e300}));
}

TEST(TPointXD, NotANumberAndInfinityPassThroughArithmetic) {
  EXPECT_TRUE(std::isnan((PointOf({kNaN, 1}) + PointOf({1, 1})).X()));
  EXPECT_EQ((PointOf({kNaN, 1}) + PointOf({1, 1})).Y(), 2);
  EXPECT_TRUE(std::isnan(PointOf({kNaN, 1}).MagSqr()));
  EXPECT_EQ(PointOf({-kInfinity, 1}).Mag(), kInfinity);
  EXPECT_EQ((PointOf({kInfinity}) * -2).X(), -kInfinity);
}

TEST(TPointXD, AnAngleOfNotANumberRaises) {
  EXPECT_THAT(Calling([] { PointOf({kNaN, 1}).AngleBetween(PointOf({1, 1})); }), RaisesGeneralError(testing::Ne("")));
  EXPECT_THAT(Calling([] {
                PointOf({1, 1}).AngleBetween(PointOf({kInfinity, 1}));
              }),
              RaisesGeneralError(testing::Ne("")));
}

// ---------------------------------------------------------------------------------------------- dimensions out of range

// A point with numbers behind it that show up in any result which reads them.
struct TFenced {
  explicit TFenced(int Dimension) {
    Point = PointBy(44, [](int i) { return 1.0 + i; });
    Point.FDimension = Dimension;
    Fence.fill(1e100);
  }
  bool IsWhole() const {
    return std::all_of(Fence.begin(), Fence.end(), [](double Value) { return Value == 1e100; });
  }
  TPointXD Point;
  std::array<double, 128> Fence;
};

// All points that operations make of P and Q.
std::vector<TPointXD> AllResults(const TPointXD& P, const TPointXD& Q) {
  std::vector<TPointXD> results = {P + Q,      Q + P,       P - Q,       Q - P,       P * Q,
                                   Q * P,      P * 3,       3 * P,       P / 4,       TPointXD::Abs(P),
                                   P.Normal(), P.ExtMax(Q), Q.ExtMax(P), P.ExtMin(Q), Q.ExtMin(P)};
  results.push_back(P);
  results.back().Normalize();
  results.push_back(static_cast<TPoint2D>(P));
  results.push_back(static_cast<TPoint3D>(P));
  results.push_back(static_cast<TPoint6D>(P));
  return results;
}

std::vector<double> AllNumbers(const TPointXD& P, const TPointXD& Q) {
  return {P.Mag(),         P.MagSqr(),      P.DotMul(Q),       Q.DotMul(P),
          P.DistanceTo(Q), Q.DistanceTo(P), P.AngleBetween(Q), Q.AngleBetween(P)};
}

TEST(TPointXD, ADimensionBeyond44CountsAs44) {
  const TPointXD all = TFenced(44).Point;
  for (const int hostile : {45, 100, std::numeric_limits<int>::max()}) {
    const auto fenced = std::make_unique<TFenced>(hostile);
    for (const TPointXD& other : {PointOf({2, -1}), all}) {
      const std::vector<TPointXD> results = AllResults(fenced->Point, other);
      const std::vector<TPointXD> expected = AllResults(all, other);
      for (std::size_t i = 0; i < results.size(); ++i) {
        EXPECT_THAT(results[i].Coordinates(), testing::ElementsAreArray(expected[i].Coordinates())) << i;
      }
      EXPECT_EQ(AllNumbers(fenced->Point, other), AllNumbers(all, other));
    }
    EXPECT_EQ(fenced->Point.ToString(), all.ToString());
    EXPECT_EQ(fenced->Point.Coordinates().size(), 44u);
    EXPECT_TRUE(fenced->Point == fenced->Point);
    fenced->Point.Normalize();
    EXPECT_TRUE(fenced->IsWhole());
  }
}

TEST(TPointXD, ADimensionBelowZeroCountsAsNone) {
  for (const int hostile : {-1, -3, std::numeric_limits<int>::min()}) {
    const auto fenced = std::make_unique<TFenced>(hostile);
    const TPointXD& point = fenced->Point;
    const TPointXD other = PointOf({2, -1});
    EXPECT_EQ(point.Coordinates().size(), 0u);
    EXPECT_EQ(point.MagSqr(), 0);
    EXPECT_EQ(point.DotMul(other), 0);
    EXPECT_EQ(point.ToString(), "");
    EXPECT_EQ((point * other).Coordinates().size(), 0u);
    EXPECT_EQ((point + other).Coordinates().size(), 2u);
    EXPECT_THAT(point.ExtMax(other).Coordinates(), testing::ElementsAre(2, -1));
    EXPECT_THAT(static_cast<TPoint6D>(point), IsExactPose(TPoint6D()));
    for (const TPointXD& result : AllResults(point, other)) EXPECT_LE(result.Coordinates().size(), 6u);
    fenced->Point.Normalize();
    EXPECT_TRUE(fenced->IsWhole());
  }
}

TEST(TPointXD, APointThatWasNeverGivenADimensionHasNoCoordinates) {
  const TPointXD none;
  EXPECT_EQ(none.FDimension, 0);
  EXPECT_EQ(none.Mag(), 0);
  EXPECT_EQ(none.ToString(), "");
  EXPECT_TRUE(none == TPointXD());
  EXPECT_THAT(none + PointOf({1, 2}), IsExactPointXD(PointOf({1, 2})));
}

// ---------------------------------------------------------------------------------------------- laws

// Whole numbers, so that every sum and product is exact.
TPointXD WholePoint(TRandom& Random, int Dimension) {
  return PointBy(Dimension, [&](int) { return std::floor(RandomNumber(Random, 1000)); });
}

RC_GTEST_PROP(TPointXDLaws, OperationsAreTheFormulasCoordinateByCoordinate, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const TPointXD p = WholePoint(random, *rc::gen::inRange(1, 45));
  const TPointXD q = WholePoint(random, *rc::gen::inRange(1, 45));
  const int larger = std::max(p.FDimension, q.FDimension);
  const int smaller = std::min(p.FDimension, q.FDimension);
  const auto item = [](const TPointXD& P, int i) { return P.Items[static_cast<std::size_t>(i)]; };
  RC_ASSERT((p + q) == PointBy(larger, [&](int i) { return item(p, i) + item(q, i); }));
  RC_ASSERT((p - q) == PointBy(larger, [&](int i) { return item(p, i) - item(q, i); }));
  RC_ASSERT((p * q) == PointBy(smaller, [&](int i) { return item(p, i) * item(q, i); }));
  RC_ASSERT(TPointXD::Abs(p) == PointBy(p.FDimension, [&](int i) { return std::fabs(item(p, i)); }));
  double dot = 0;
  double square = 0;
  for (int i = 0; i < p.FDimension; ++i) dot += item(p, i) * item(q, i);
  for (int i = 0; i < p.FDimension; ++i) square += item(p, i) * item(p, i);
  RC_ASSERT(p.DotMul(q) == dot);
  RC_ASSERT(p.MagSqr() == square);
  RC_ASSERT(p.Mag() == std::sqrt(square));
}

RC_GTEST_PROP(TPointXDLaws, ADifferenceAndASumUndoEachOther, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const TPointXD p = WholePoint(random, *rc::gen::inRange(1, 45));
  const TPointXD q = WholePoint(random, p.FDimension);
  RC_ASSERT((p + q) - q == p);
  RC_ASSERT(p.ExtMax(q) + p.ExtMin(q) == p + q);
  RC_ASSERT((p + q) * (p - q) == p * p - q * q);
}

RC_GTEST_PROP(TPointXDLaws, NormalsAreUnitVectorsAndAnglesDoNotDependOnLengths, ()) {
  TRandom random(*rc::gen::arbitrary<std::uint64_t>());
  const int dimension = *rc::gen::inRange(2, 45);
  const TPointXD p = RandomPoint(random, dimension, 100);
  const TPointXD q = RandomPoint(random, dimension, 100);
  RC_PRE(p.Mag() > 1e-3);
  RC_PRE(q.Mag() > 1e-3);
  RC_ASSERT(std::fabs(p.Normal().Mag() - 1) < 1e-15);
  RC_ASSERT(std::fabs((p.Normal() * p.Mag()).DistanceTo(p)) < 1e-13 * p.Mag());
  // The cosine is exact to a few bits, so the angle is as good as its square root near 0 and pi.
  RC_ASSERT(std::fabs(p.AngleBetween(q) - (3 * p).AngleBetween(q * 0.25)) < 1e-7);
  RC_ASSERT(std::fabs(p.AngleBetween(q) + p.AngleBetween(q * -1) - kPi) < 1e-7);
  RC_ASSERT(p.DistanceTo(q) <= p.Mag() + q.Mag());
}

}  // namespace
}  // namespace ZORBase
