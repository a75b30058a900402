#include <ZORBase/ZORGeometry/CADTypesXD/TTWoDerivCurveXD.h>

#include "CurvePathsXD.h"
#include "PlainCurveXD.h"
#include "support/TestSupport.h"

#include <limits>
#include <numbers>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace ZORBase {
namespace {

using Test::Arc;
using Test::Bits;
using Test::Calling;
using Test::GeneralErrorOf;
using Test::IsExactPointXD;
using Test::IsNearPointXD;
using Test::kDimensions;
using Test::PointOf;
using Test::RaisesGeneralError;
using Test::RandomPoints;
using Test::TCollected;
using Test::TPath;
using Test::TPlainCurveXD;
using Test::TRandom;
using Test::TSegments;
using Test::WithTail;
using testing::ContainsRegex;
using testing::Each;
using testing::ElementsAre;

static_assert(std::is_move_constructible_v<TTWoDerivCurveXD>);
static_assert(!std::is_polymorphic_v<TTWoDerivCurveXD>);
// ---------------------------------------------------------------------------------------------- what comes out

TEST(TTWoDerivCurveXD, EquallySpacedPointsOnALineGiveTheLine) {
  const TCollected line(TPath{PointOf({0, 0}), PointOf({3, 4}), PointOf({6, 8})});
  const TPointXD along = PointOf({0.6, 0.8});
  EXPECT_TRUE(line.Done);
  EXPECT_THAT(line.Curve.BezWeightList(), ElementsAre(0.5));
  EXPECT_THAT(line.Curve.BezDerivList(), Each(IsNearPointXD(along, 1e-15)));
  ASSERT_EQ(line.Segments.size(), 2u);
  for (const TCubicBezXD& segment : line.Segments) {
    EXPECT_THAT(segment.FP1, IsNearPointXD(segment.FP0 + along * (5 * 0.3336), 1e-14));
    EXPECT_THAT(segment.FP2, IsNearPointXD(segment.FP3 - along * (5 * 0.3336), 1e-14));
    EXPECT_NEAR(segment.CurveLength(), 5, 1e-14);
    for (double t = 0; t <= 1; t += 0.1) {
      const TPointXD point = segment.EvalPoint(t);
      EXPECT_NEAR(point.Y() * 3, point.X() * 4, 1e-13);
    }
  }
}

// Tangent and chord are opposite there: rounding makes the cosine between them a little less than -1 for some directions.
TEST(TTWoDerivCurveXD, APathThatTurnsRightBackIsBuiltInEveryDirection) {
  constexpr int kDirections = 200;
  for (int i = 0; i < kDirections; ++i) {
    const TPointXD there = PointOf({std::cos(0.1 * i), std::sin(0.1 * i), 0.01 * i});
    const TCollected spike(TPath{PointOf({0, 0, 0}), there, there * 0.25});
    EXPECT_TRUE(spike.Done) << i;
    ASSERT_EQ(spike.Segments.size(), 2u) << i;
    EXPECT_THAT(spike.Segments[0].FP3, IsExactPointXD(there)) << i;
    EXPECT_THAT(spike.Segments[1].FP0, IsExactPointXD(there)) << i;
  }
}

TEST(TTWoDerivCurveXD, FewerThanThreePointsGiveNothing) {
  int calls = 0;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD&) { ++calls; });
  for (const TPath& path : {TPath{}, TPath{PointOf({1})}, TPath{PointOf({1}), PointOf({2})}}) {
    EXPECT_FALSE(curve.CreateCorss(path));
    EXPECT_EQ(curve.CtrlPtList().Count(), 0);
    EXPECT_EQ(curve.PtLenList().Count(), 0);
    EXPECT_EQ(curve.BezWeightList().Count(), 0);
    EXPECT_EQ(curve.BezDerivList().Count(), 0);
  }
  EXPECT_EQ(calls, 0);
  EXPECT_TRUE(curve.CreateCorss({PointOf({1}), PointOf({2}), PointOf({3})})) << "nothing was changed";
  EXPECT_EQ(calls, 2);
}

TEST(TTWoDerivCurveXD, NPointsGiveNMinusOneSegmentsFromPointToPoint) {
  TRandom random(1);
  for (const int dimension : kDimensions) {
    for (const int count : {3, 4, 17, 60}) {
      const TPath path = RandomPoints(random, dimension, count, 10);
      const TCollected collected(path);
      EXPECT_TRUE(collected.Done);
      ASSERT_EQ(collected.Segments.size(), path.size() - 1);
      for (int i = 0; i + 1 < count; ++i) {
        const TCubicBezXD& segment = collected.Segments[static_cast<std::size_t>(i)];
        EXPECT_THAT(segment.FP0, IsExactPointXD(path[i]));
        EXPECT_THAT(segment.FP3, IsExactPointXD(path[i + 1]));
        EXPECT_EQ(Bits(segment.FLength), Bits(segment.LengthOfParam(0, 1)));
      }
    }
  }
}

TEST(TTWoDerivCurveXD, AWeightBeginsAsTheShareOfTheOutgoingChord) {
  // Along one axis there is no curvature and so nothing to correct.
  const TCollected line(TPath{PointOf({0}), PointOf({1}), PointOf({4}), PointOf({5}), PointOf({5.5})});
  EXPECT_THAT(line.Curve.BezWeightList(), ElementsAre(3.0 / 4, 1.0 / 4, 0.5 / 1.5));
  // Round a corner it is corrected, from the same beginning.
  TPlainCurveXD plain(TPath{PointOf({0, 0}), PointOf({1, 0}), PointOf({1, 3})});
  plain.Segments(0);
  EXPECT_THAT(plain.Weights(), ElementsAre(0.75));
}

TEST(TTWoDerivCurveXD, TheChordsAreKeptWithTheirDirections) {
  const TCollected corner(TPath{PointOf({0, 0}), PointOf({1, 0}), PointOf({1, 3})});
  const TList<TPTPInfo>& chords = corner.Curve.PtLenList();
  ASSERT_EQ(chords.Count(), 2);
  EXPECT_EQ(chords[0].len, 1);
  EXPECT_EQ(chords[1].len, 3);
  EXPECT_THAT(chords[0].vec, IsExactPointXD(PointOf({1, 0})));
  EXPECT_THAT(chords[1].vec, IsExactPointXD(PointOf({0, 1})));
  EXPECT_EQ(corner.Curve.CtrlPtList().Count(), 3);
  EXPECT_THAT(corner.Curve.CtrlPtList()[2], IsExactPointXD(PointOf({1, 3})));
}

// Both sides are mirror images: the weight stays at one half, the middle tangent is level, and the end tangents are those of
// the chord less half the middle one.
TEST(TTWoDerivCurveXD, ASymmetricRoofIsAsComputedByHand) {
  const TCollected roof(TPath{PointOf({-1, 0}), PointOf({0, 1}), PointOf({1, 0})});
  ASSERT_EQ(roof.Segments.size(), 2u);
  EXPECT_NEAR(roof.Curve.BezWeightList()[0], 0.5, 1e-13);
  const double half = std::numbers::sqrt2 / 2;
  const double angle = std::atan2(half, half - 0.5);
  const double own = angle - std::numbers::pi / 4;
  const double other = std::numbers::pi / 4;
  const auto handle = [](double a, double b) {
    const double z = a - 0.3 * std::sin(2 * b - 0.4 * std::sin(2 * b));
    return 0.417 * std::fabs(std::cos(z) - 0.2 * std::cos(3 * z)) * std::numbers::sqrt2;
  };
  const TPointXD start = PointOf({std::cos(angle), std::sin(angle)}) * handle(own, other);
  EXPECT_THAT(roof.Segments[0].FP1, IsNearPointXD(PointOf({-1, 0}) + start, 1e-12));
  EXPECT_THAT(roof.Segments[0].FP2, IsNearPointXD(PointOf({-handle(other, own), 1}), 1e-12));
  EXPECT_THAT(roof.Segments[1].FP1, IsNearPointXD(PointOf({handle(other, own), 1}), 1e-12));
  EXPECT_THAT(roof.Segments[1].FP2, IsNearPointXD(PointOf({1 - start.X(), start.Y()}), 1e-12));
}

// The tangent at an end is the chord less a share of the tangent next to it. Round these corners the correction drives the weight
// to its limit: the whole chord is taken from itself.
TEST(TTWoDerivCurveXD, WhereTheWeightIsAtItsLimitTheEndNextToItHasNoTangentAndNoHandle) {
  const TPointXD none = PointOf({0, 0});
  const TCollected start(TPath{PointOf({0, 0}), PointOf({1, 0}), PointOf({1, 4})});
  EXPECT_THAT(start.Curve.BezWeightList(), ElementsAre(1));
  EXPECT_THAT(start.Curve.BezDerivList()[0], IsExactPointXD(none));
  EXPECT_THAT(start.Curve.BezDerivList()[1], IsExactPointXD(PointOf({1, 0})));
  EXPECT_THAT(start.Segments[0].FP1, IsExactPointXD(start.Segments[0].FP0));

  const TCollected end(TPath{PointOf({0, 0}), PointOf({2, 0}), PointOf({-1, -4})});
  EXPECT_THAT(end.Curve.BezWeightList(), ElementsAre(0));
  EXPECT_THAT(end.Curve.BezDerivList()[1], IsNearPointXD(PointOf({-0.6, -0.8}), 1e-15));
  EXPECT_THAT(end.Curve.BezDerivList()[2], IsExactPointXD(none));
  EXPECT_THAT(end.Segments[1].FP2, IsExactPointXD(end.Segments[1].FP3));
}

// ---------------------------------------------------------------------------------------------- the callback

TEST(TTWoDerivCurveXD, WithoutACallbackTheCurveIsComputedAllTheSame) {
  const TPath path = Arc(9, 10, 0.3);
  TTWoDerivCurveXD curve;
  EXPECT_TRUE(curve.CreateCorss(path));
  EXPECT_FALSE(curve.RenderPath());
  TTWoDerivCurveXD emptied;
  emptied.SetRenderPath([](const TCubicBezXD&) { FAIL() << "called after it was taken away"; });
  emptied.SetRenderPath({});
  EXPECT_TRUE(emptied.CreateCorss(path));
  const TCollected collected(path);
  for (int i = 0; i < path.Count(); ++i) {
    EXPECT_THAT(curve.BezDerivList()[i], IsExactPointXD(collected.Curve.BezDerivList()[i]));
  }
}

TEST(TTWoDerivCurveXD, WhatTheCallbackThrowsPassesThrough) {
  int calls = 0;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD&) {
    if (++calls == 3) throw std::out_of_range("enough");
  });
  EXPECT_THROW(curve.CreateCorss(Arc(9, 10, 0.3)), std::out_of_range);
  EXPECT_EQ(calls, 3);
  EXPECT_EQ(curve.BezDerivList().Count(), 9) << "the curve itself is complete";
}

TEST(TTWoDerivCurveXD, ACallbackMayReplaceItself) {
  int calls = 0;
  TTWoDerivCurveXD curve;
  // The text is too long to be kept in place, so that a callback destroyed during its call reads freed memory.
  curve.SetRenderPath([&calls, &curve, text = std::string(1000, 'x')](const TCubicBezXD&) {
    curve.SetRenderPath({});
    for (const char letter : text) calls += letter == 'x' ? 1 : 1000000;
  });
  EXPECT_TRUE(curve.CreateCorss(Arc(9, 10, 0.3)));
  EXPECT_EQ(calls % 1000, 0);
  EXPECT_GE(calls, 1000);
  EXPECT_LE(calls, 8000);
  EXPECT_FALSE(curve.RenderPath());
}

TEST(TTWoDerivCurveXD, ACallbackMayNotBuildASecondCurve) {
  const TPath path = Arc(5, 10, 0.3);
  int calls = 0;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD&) {
    ++calls;
    EXPECT_THAT(Calling([&] { curve.CreateCorss(path); }), RaisesGeneralError(testing::Ne("")));
  });
  EXPECT_TRUE(curve.CreateCorss(path));
  EXPECT_EQ(calls, 4);
}

TEST(TTWoDerivCurveXD, MovesWithItsCallback) {
  int calls = 0;
  TTWoDerivCurveXD source;
  source.SetRenderPath([&](const TCubicBezXD&) { ++calls; });
  TTWoDerivCurveXD curve = std::move(source);
  EXPECT_TRUE(curve.CreateCorss(Arc(5, 10, 0.3)));
  EXPECT_EQ(calls, 4);
  const TTWoDerivCurveXD moved = std::move(curve);
  EXPECT_EQ(moved.BezDerivList().Count(), 5);
}

// ---------------------------------------------------------------------------------------------- input that raises

// A path that must raise: nothing is delivered, nothing changed, and the object still serves for a good path.
void ExpectRaises(const TPath& Path, const testing::Matcher<std::string>& Text) {
  int calls = 0;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD&) { ++calls; });
  EXPECT_THAT(Calling([&] { curve.CreateCorss(Path); }), RaisesGeneralError(Text));
  EXPECT_EQ(calls, 0);
  EXPECT_EQ(curve.CtrlPtList().Count(), 0);
  EXPECT_EQ(curve.PtLenList().Count(), 0);
  EXPECT_EQ(curve.BezWeightList().Count(), 0);
  EXPECT_EQ(curve.BezDerivList().Count(), 0);
  EXPECT_TRUE(curve.CreateCorss(Arc(5, 10, 0.3)));
  EXPECT_EQ(calls, 4);
}

TEST(TTWoDerivCurveXD, APointEqualToBothItsNeighboursIsNamed) {
  for (const int dimension : {1, 2, 44}) {
    for (const int middle : {1, 3, 7}) {
      TRandom random(2);
      TPath path = RandomPoints(random, dimension, 9, 10);
      path[middle - 1] = path[middle];
      path[middle + 1] = path[middle];
      ExpectRaises(path, ContainsRegex("(^|[^0-9])" + std::to_string(middle) + "($|[^0-9])"));
    }
  }
  ExpectRaises({PointOf({1, 2}), PointOf({1, 2}), PointOf({1, 2})}, ContainsRegex("(^|[^0-9])1($|[^0-9])"));
}

TEST(TTWoDerivCurveXD, PointsTooCloseToHaveADistanceAreEqual) {
  // The squares of these distances are below the smallest double.
  ExpectRaises({PointOf({0, 9}), PointOf({0, 0}), PointOf({1e-170, 0}), PointOf({0, 1e-170}), PointOf({5, 5})},
               ContainsRegex("(^|[^0-9])2($|[^0-9])"));
}

TEST(TTWoDerivCurveXD, PointsThatAreNotFiniteAreNamed) {
  for (const double bad : {std::nan(""), kInfinity, -kInfinity}) {
    for (const int index : {0, 4, 8}) {
      TRandom random(3);
      TPath path = RandomPoints(random, 17, 9, 10);
      path[index].Items[16] = bad;
      ExpectRaises(path, ContainsRegex("(^|[^0-9])" + std::to_string(index) + "($|[^0-9])"));
    }
  }
}

TEST(TTWoDerivCurveXD, ThePointThatNothingGivesADirectionIsTheFirstOneEqualToBothItsNeighbours) {
  const TPointXD a = PointOf({0, 0});
  const TPointXD b = PointOf({1, 0});
  using TIndex = std::optional<int>;
  EXPECT_EQ(TTWoDerivCurveXD::PointWithoutDirection({a, b, b, b, a, a, a}), TIndex(2));
  EXPECT_EQ(TTWoDerivCurveXD::PointWithoutDirection({a, a, a}), TIndex(1));
  EXPECT_EQ(TTWoDerivCurveXD::PointWithoutDirection({a, a, b, b}), TIndex());
  EXPECT_EQ(TTWoDerivCurveXD::PointWithoutDirection({a, a}), TIndex());
  EXPECT_EQ(TTWoDerivCurveXD::PointWithoutDirection({}), TIndex());
}

// Finite points, but a length, a square of one or the sixth power in a curvature is not.
TEST(TTWoDerivCurveXD, PointsTooFarAwayToBeMeasuredAreNamed) {
  for (const double far : {1e104, 1e130, 1e153, 1e155, 1e200, 1.7e308}) {
    ExpectRaises({PointOf({0, 0}), PointOf({far, 0}), PointOf({0, far})}, ContainsRegex("(^|[^0-9])1($|[^0-9])"));
    ExpectRaises({PointOf({0, 0}), PointOf({1, 0}), PointOf({2, 1}), PointOf({far, -far})},
                 ContainsRegex("(^|[^0-9])3($|[^0-9])"));
    ExpectRaises({PointOf({-far, 0}), PointOf({far, far}), PointOf({-far, 1})}, ContainsRegex("(^|[^0-9])0($|[^0-9])"));
  }
}

TEST(TTWoDerivCurveXD, PointsFarAwayGiveFiniteSegments) {
  TRandom random(7);
  for (const double far : {1e30, 1e80, 1e98}) {
    const TCollected curve(RandomPoints(random, 44, 6, far));
    ASSERT_EQ(curve.Segments.size(), 5u);
    for (const TCubicBezXD& segment : curve.Segments) {
      EXPECT_TRUE(std::isfinite(segment.FLength));
      EXPECT_TRUE(std::isfinite(segment.EvalPoint(0.5).Mag()));
    }
  }
}

// What a shorter point stores behind its coordinates is read where it meets a longer one, and nowhere else.
TEST(TTWoDerivCurveXD, AStoredTailMustBeFiniteWhereItIsRead) {
  for (const double bad : {std::nan(""), kInfinity, 1e200}) {
    ExpectRaises({PointOf({0, 0, 1}), WithTail(PointOf({1, 2}), bad), PointOf({3, 4}), PointOf({4, 4})},
                 ContainsRegex("(^|[^0-9])1($|[^0-9])"));
    ExpectRaises({PointOf({0, 0}), WithTail(PointOf({1, 2}), bad), PointOf({3, 4}), PointOf({4, 4, 5})},
                 ContainsRegex("(^|[^0-9])1($|[^0-9])"));
    const TCollected curve(TPath{PointOf({0, 0}), WithTail(PointOf({1, 2}), bad), PointOf({3, 4})});
    ASSERT_EQ(curve.Segments.size(), 2u);
    EXPECT_TRUE(std::isfinite(curve.Segments[0].FLength));
    EXPECT_TRUE(curve.Segments[0].FP1 ==
                TCollected(TPath{PointOf({0, 0}), PointOf({1, 2}), PointOf({3, 4})}).Segments[0].FP1);
  }
}

TEST(TTWoDerivCurveXD, ASecondCurveRaisesAndLeavesTheFirst) {
  TCollected first(Arc(9, 10, 0.3));
  const TList<TPointXD> tangents = first.Curve.BezDerivList();
  const TDoubleList weights = first.Curve.BezWeightList();
  for (const TPath& path : {Arc(5, 20, 0.2), Arc(9, 10, 0.3)}) {
    EXPECT_THAT(Calling([&] { first.Curve.CreateCorss(path); }), RaisesGeneralError(testing::Ne("")));
    EXPECT_EQ(first.Segments.size(), 8u);
    EXPECT_EQ(first.Curve.CtrlPtList().Count(), 9);
    EXPECT_EQ(first.Curve.PtLenList().Count(), 8);
    EXPECT_THAT(first.Curve.BezWeightList(), testing::ElementsAreArray(weights));
    ASSERT_EQ(first.Curve.BezDerivList().Count(), 9);
    for (int i = 0; i < 9; ++i) EXPECT_THAT(first.Curve.BezDerivList()[i], IsExactPointXD(tangents[i]));
  }
  EXPECT_THAT(Calling([&] { first.Curve.CreateCorss(first.Curve.CtrlPtList()); }), RaisesGeneralError(testing::Ne("")));
}

TEST(TTWoDerivCurveXD, DimensionsOutOfRangeStayInsideTheRecords) {
  TRandom random(4);
  const TPath good = RandomPoints(random, 44, 6, 10);
  const TCollected expected(good);
  TPath larger = good;
  for (TPointXD& point : larger) point.FDimension = 100;
  TSegments delivered;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD& bez) { delivered.push_back(bez); });
  if (!GeneralErrorOf([&] { curve.CreateCorss(larger); })) {
    ASSERT_EQ(delivered.size(), 5u);
    for (std::size_t i = 0; i < 5; ++i) {
      EXPECT_EQ(delivered[i].FP1.Items, expected.Segments[i].FP1.Items);
      EXPECT_EQ(delivered[i].FP2.Items, expected.Segments[i].FP2.Items);
      EXPECT_EQ(delivered[i].FLength, expected.Segments[i].FLength);
    }
  }
  for (const int hostile : {0, -3, std::numeric_limits<int>::min()}) {
    TPath none = good;
    for (TPointXD& point : none) point.FDimension = hostile;
    ExpectRaises(none, testing::Ne(""));  // all points are equal
    TPath mixed = good;
    mixed[2].FDimension = hostile;
    const TCollected collected(mixed);
    EXPECT_EQ(collected.Segments.size(), 5u);
  }
}

}  // namespace
}  // namespace ZORBase
