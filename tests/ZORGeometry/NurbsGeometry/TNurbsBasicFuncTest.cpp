// Knots, the span search and the basis values.
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>

#include <limits>

#include "CurveTestSupport.h"

namespace ZORBase {
namespace {

using Test::AnyClampedKnots;
using Test::AnyParameter;
using Test::BasisOf;
using Test::Calling;
using Test::GeneralErrorOf;
using Test::kTwoSpans;
using Test::RaisesGeneralError;
using Test::RecursiveBasis;
using testing::_;
using testing::ElementsAre;
using testing::ElementsAreArray;

std::array<double, 4> ValuesOf(const TNurbsBasicFunc& Basis, int Span, double u) {
  std::array<double, 4> N{};
  EXPECT_TRUE(Basis.BasicFuns(Span, u, N));
  return N;
}

// ---------------------------------------------------------------------------------------------- knots

TEST(TNurbsBasicFunc, ANewOneHasNoKnots) {
  const TNurbsBasicFunc basis;
  EXPECT_EQ(basis.uCount(), 0);
  EXPECT_TRUE(basis.uArr().empty());
}

TEST(TNurbsBasicFunc, KnotsClampedAtBothEndsHoldWhatLiesBetweenTheirEnds) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  for (const double u : {0.0, 0.25, std::nextafter(0.5, 0), 0.5, 0.75, std::nextafter(1, 0)}) {
    ASSERT_TRUE(basis.IsInside(u)) << u;
    EXPECT_EQ(basis.SpanInside(u), u < 0.5 ? 3 : 4) << u;
  }
  for (const double u : {std::nextafter(0, -1), 1.0, 2.0, -1.0, kInfinity, -kInfinity, kNaN}) {
    EXPECT_FALSE(basis.IsInside(u)) << u;
  }
}

TEST(TNurbsBasicFunc, OtherKnotsHoldNothingThatIsSurelyInside) {
  using TKnots = std::vector<double>;
  for (const TKnots& knots : {TKnots{}, TKnots{0, 0, 0, 0, 1, 1, 1, 1}, TKnots{0, 0, 0, 0.1, 0.5, 1, 1, 1, 1},
                              TKnots{0, 0, 0, 0, 0.5, 0.9, 1, 1, 1}, TKnots{0, 0, 0, 0, 0.6, 0.3, 1, 1, 1, 1},
                              TKnots{0, 0, 0, 0, kNaN, 1, 1, 1, 1}, TKnots{0, 0, 0, 0, 0, 0, 0, 0, 0}}) {
    EXPECT_FALSE(BasisOf(knots).IsInside(0.25)) << testing::PrintToString(knots);
  }
}

TEST(TNurbsBasicFunc, CreateCrossTakesTheFirstKnotsOfAListOrAnArray) {
  TNurbsBasicFunc basis;
  basis.CreateCross(TDoubleList{1, 2, 3, 4}, 3);
  EXPECT_THAT(basis.uArr(), ElementsAre(1, 2, 3));
  EXPECT_EQ(basis.uCount(), 3);
  basis.CreateCross(std::array{5.0, 6.0, 7.0, 8.0, 9.0}, 4);
  EXPECT_THAT(basis.uArr(), ElementsAre(5, 6, 7, 8));
  basis.CreateCross(kTwoSpans, 0);
  EXPECT_EQ(basis.uCount(), 0);
}

TEST(TNurbsBasicFunc, ACountThatDoesNotFitRaisesAndKeepsTheKnots) {
  TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  const TDoubleList list{1, 2, 3};
  const std::array array{1.0, 2.0, 3.0};
  for (const int count : {-1, 4, kSmallestInt, kLargestInt}) {
    EXPECT_THAT(Calling([&] { basis.CreateCross(list, count); }), RaisesGeneralError(_)) << count;
    EXPECT_THAT(Calling([&] { basis.CreateCross(array, count); }), RaisesGeneralError(_)) << count;
  }
  EXPECT_THAT(basis.uArr(), ElementsAreArray(kTwoSpans));
}

TEST(TNurbsBasicFunc, CanTakeOverItsOwnKnots) {
  TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  basis.CreateCross(basis.uArr(), 9);
  EXPECT_THAT(basis.uArr(), ElementsAreArray(kTwoSpans));
  basis.CreateCross(basis.uArr().subspan(3), 3);
  EXPECT_THAT(basis.uArr(), ElementsAre(0, 0.5, 1));
}

TEST(TNurbsBasicFunc, ItemsGivesAKnotAndAssertsOutsideTheKnots) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  EXPECT_EQ(basis.Items(0), 0);
  EXPECT_EQ(basis.Items(4), 0.5);
  EXPECT_EQ(basis.GetItems(8), 1);
  for (const int idx : {-1, 9, kSmallestInt, kLargestInt}) {
    EXPECT_THAT(Calling([&] { basis.Items(idx); }),
                RaisesGeneralError("TNurbsBasicFunc: Idx Out Of Range (NurbsGeometry, line 366)"))
        << idx;
  }
  EXPECT_THAT(Calling([] { TNurbsBasicFunc().Items(0); }),
              RaisesGeneralError("TNurbsBasicFunc: Idx Out Of Range (NurbsGeometry, line 366)"));
}

TEST(TNurbsBasicFunc, ReverseMirrorsTheKnotsOnTheUnitInterval) {
  TNurbsBasicFunc basis = BasisOf(std::array{0.0, 0.0, 0.0, 0.0, 0.2, 1.0, 1.0, 1.0, 1.0});
  basis.Reverse();
  EXPECT_THAT(basis.uArr(), ElementsAre(0, 0, 0, 0, 0.8, 1, 1, 1, 1));
  basis = BasisOf(std::array{0.0, 0.0, 0.0, 0.0, 0.125, 0.25, 0.75, 1.0, 1.0, 1.0, 1.0});
  basis.Reverse();
  EXPECT_THAT(basis.uArr(), ElementsAre(0, 0, 0, 0, 0.25, 0.75, 0.875, 1, 1, 1, 1));
}

TEST(TNurbsBasicFunc, ReverseClampsKnotsOutsideTheUnitInterval) {
  TNurbsBasicFunc basis = BasisOf(std::array{-3.0, -0.5, 0.25, 1.5, 7.0});
  basis.Reverse();
  EXPECT_THAT(basis.uArr(), ElementsAre(0, 0, 0.75, 1, 1));
  TNurbsBasicFunc empty;
  empty.Reverse();
  EXPECT_EQ(empty.uCount(), 0);
}

TEST(TNurbsBasicFunc, AssignCopiesTheKnotsOfAnotherOne) {
  const TNurbsBasicFunc source = BasisOf(kTwoSpans);
  TNurbsBasicFunc basis = BasisOf(std::array{1.0, 2.0});
  basis.Assign(source);
  EXPECT_THAT(basis.uArr(), ElementsAreArray(kTwoSpans));
  basis.Assign(basis);
  EXPECT_THAT(basis.uArr(), ElementsAreArray(kTwoSpans));
  basis.Reverse();
  EXPECT_THAT(source.uArr(), ElementsAreArray(kTwoSpans));
  basis.Assign(TNurbsBasicFunc());
  EXPECT_EQ(basis.uCount(), 0);
}

TEST(TNurbsBasicFunc, AssignOfAnotherClassRaisesAndKeepsTheKnots) {
  TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  EXPECT_THAT(Calling([&] { basis.Assign(TNurbs6D()); }),
              RaisesGeneralError("Cannot assign a TNurbs6D to a TNurbsBasicFunc"));
  EXPECT_THAT(basis.uArr(), ElementsAreArray(kTwoSpans));
}

// ---------------------------------------------------------------------------------------------- FindSpan

TEST(TNurbsBasicFunc, FindSpanPutsAKnotIntoTheSpanThatStartsThere) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  EXPECT_EQ(basis.FindSpan(-0.1), 0);
  EXPECT_EQ(basis.FindSpan(0), 3);
  EXPECT_EQ(basis.FindSpan(0.25), 3);
  EXPECT_EQ(basis.FindSpan(std::nextafter(0.5, 0)), 3);
  EXPECT_EQ(basis.FindSpan(0.5), 4);
  EXPECT_EQ(basis.FindSpan(1.0), 4);
  EXPECT_EQ(basis.FindSpan(2.0), 4);
  EXPECT_EQ(basis.FindSpan(std::numeric_limits<double>::infinity()), 4);
  EXPECT_EQ(basis.FindSpan(-std::numeric_limits<double>::infinity()), 0);
}

TEST(TNurbsBasicFunc, FindSpanPassesOverEmptySpans) {
  const TNurbsBasicFunc basis = BasisOf(std::array{0.0, 0.0, 0.0, 0.0, 0.5, 0.5, 0.5, 0.75, 1.0, 1.0, 1.0, 1.0});
  EXPECT_EQ(basis.FindSpan(0.25), 3);
  EXPECT_EQ(basis.FindSpan(0.5), 6);
  EXPECT_EQ(basis.FindSpan(0.75), 7);
  EXPECT_EQ(basis.FindSpan(1), 7);
}

RC_GTEST_PROP(TNurbsBasicFunc, FindSpanFindsTheSpanThatHoldsTheParameter, ()) {
  const std::vector<double> knots = *AnyClampedKnots();
  const double u = *rc::gen::oneOf(AnyParameter(), rc::gen::elementOf(knots));
  const int span = BasisOf(knots).FindSpan(u);
  RC_ASSERT(span >= 3);
  RC_ASSERT(span <= static_cast<int>(knots.size()) - 5);
  const auto at = static_cast<std::size_t>(span);
  if (u < 1) {
    RC_ASSERT(knots[at] <= u);
    RC_ASSERT(u < knots[at + 1]);
  }
}

// The bisection compares; a parameter that is no number is neither below a knot nor at one, so the middle span it starts with
// stays.
TEST(TNurbsBasicFunc, FindSpanOfNoNumberIsAnInnerSpan) { EXPECT_EQ(BasisOf(kTwoSpans).FindSpan(std::nan("")), 4); }

TEST(TNurbsBasicFunc, FindSpanRaisesWithoutAKnotVectorOfACubicCurve) {
  EXPECT_THAT(Calling([] { TNurbsBasicFunc().FindSpan(0.5); }), RaisesGeneralError(_));
  const std::vector<double> knots = {0, 0, 0, 0.5, 1, 1, 1};
  for (const double u : {-1.0, 0.0, 0.25, 0.5, 1.0, 2.0}) {
    EXPECT_THAT(Calling([&] { BasisOf(knots).FindSpan(u); }), RaisesGeneralError(_)) << u;
  }
}

TEST(TNurbsBasicFunc, FindSpanRaisesWhereKnotsThatAreNotClampedHoldNoInnerSpan) {
  const TNurbsBasicFunc basis = BasisOf(std::array{0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0, 8.0, 9.0, 10.0});
  EXPECT_EQ(basis.FindSpan(3), 3);
  EXPECT_EQ(basis.FindSpan(6.5), 6);
  for (const double u : {0.0, 1.0, 2.9, 7.0, 8.5, 9.9}) {
    EXPECT_THAT(Calling([&] { basis.FindSpan(u); }), RaisesGeneralError(_)) << u;
  }
}

TEST(TNurbsBasicFunc, FindSpanOfFallingOrMissingKnotsEndsInsideTheKnotsOrRaises) {
  constexpr double none = std::numeric_limits<double>::quiet_NaN();
  const std::vector<std::vector<double>> vectors = {{0, 0, 0, 0, 0.9, 0.1, 0.5, 1, 1, 1, 1},
                                                    {1, 1, 1, 1, 0.5, 0.4, 0, 0, 0, 0},
                                                    {0, 0, 0, 0, none, 0.5, 1, 1, 1, 1},
                                                    {none, none, none, none, none, none, none, none},
                                                    {0, 0, 0, 0, 0.3, none, none, none, none}};
  for (const std::vector<double>& knots : vectors) {
    const TNurbsBasicFunc basis = BasisOf(knots);
    for (const double u : {-1.0, 0.0, 0.05, 0.1, 0.3, 0.45, 0.5, 0.7, 0.95, 1.0, 2.0, none}) {
      int span = -1;
      const bool raises = GeneralErrorOf([&] { span = basis.FindSpan(u); }).has_value();
      EXPECT_TRUE(raises || (span >= 0 && span <= basis.uCount() - 5)) << "span " << span << " at " << u;
    }
  }
}

// ---------------------------------------------------------------------------------------------- BasicFuns

TEST(TNurbsBasicFunc, TheFirstBasisFunctionIsAloneAtTheStartAndTheLastAtTheEnd) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  EXPECT_THAT(ValuesOf(basis, 3, 0), ElementsAre(1, 0, 0, 0));
  EXPECT_THAT(ValuesOf(basis, 4, 1), ElementsAre(0, 0, 0, 1));
}

// On a single span the basis is that of Bernstein: (1-u)^3, 3u(1-u)^2, 3u^2(1-u), u^3.
TEST(TNurbsBasicFunc, OneSpanHasTheBernsteinBasis) {
  const TNurbsBasicFunc basis = BasisOf(std::array{0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0});
  EXPECT_THAT(ValuesOf(basis, 3, 0.5), ElementsAre(0.125, 0.375, 0.375, 0.125));
  EXPECT_THAT(ValuesOf(basis, 3, 0.25), ElementsAre(27.0 / 64, 27.0 / 64, 9.0 / 64, 1.0 / 64));
}

// Uniform knots: 1/6, 4/6, 1/6 at a knot.
TEST(TNurbsBasicFunc, UniformKnotsHaveOneSixthFourSixthsOneSixthAtAKnot) {
  const TNurbsBasicFunc basis = BasisOf(std::array{0.0, 1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0});
  const std::array<double, 4> N = ValuesOf(basis, 3, 3);
  EXPECT_DOUBLE_EQ(N[0], 1.0 / 6);
  EXPECT_DOUBLE_EQ(N[1], 4.0 / 6);
  EXPECT_DOUBLE_EQ(N[2], 1.0 / 6);
  EXPECT_EQ(N[3], 0);
}

RC_GTEST_PROP(TNurbsBasicFunc, TheFourValuesArePositiveAndSumToOne, ()) {
  const std::vector<double> knots = *AnyClampedKnots();
  const TNurbsBasicFunc basis = BasisOf(knots);
  const double u = *rc::gen::oneOf(AnyParameter(), rc::gen::elementOf(knots));
  const std::array<double, 4> N = ValuesOf(basis, basis.FindSpan(u), u);
  for (const double value : N) RC_ASSERT(value >= 0);
  RC_ASSERT(std::fabs(N[0] + N[1] + N[2] + N[3] - 1) <= 4 * kEpsilon);
}

RC_GTEST_PROP(TNurbsBasicFunc, TheFourValuesAreThoseOfTheRecursion, ()) {
  const std::vector<double> knots = *AnyClampedKnots();
  const TNurbsBasicFunc basis = BasisOf(knots);
  const double u = *AnyParameter();
  const int span = basis.FindSpan(u);
  const std::array<double, 4> N = ValuesOf(basis, span, u);
  for (int j = 0; j < 4; ++j) {
    const auto expected = static_cast<double>(RecursiveBasis(knots, span, span - 3 + j, 3, 0, u));
    // u and the knots are exact; each of the three steps adds a few roundings.
    RC_ASSERT(std::fabs(N[static_cast<std::size_t>(j)] - expected) <= 4 * kEpsilon);
  }
}

TEST(TNurbsBasicFunc, ASpanOutside2ToTheKnotCountIsRefusedAndTouchesNothing) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  for (const int i : {1, 0, -1, 10, 11, kSmallestInt, kLargestInt}) {
    std::array<double, 4> N = {7, 8, 9, 10};
    EXPECT_FALSE(basis.BasicFuns(i, 0.25, N)) << i;
    EXPECT_THAT(N, ElementsAre(7, 8, 9, 10)) << i;
  }
  std::array<double, 4> N = {7, 8, 9, 10};
  EXPECT_FALSE(TNurbsBasicFunc().BasicFuns(2, 0.25, N));
  EXPECT_THAT(N, ElementsAre(7, 8, 9, 10));
}

TEST(TNurbsBasicFunc, SpansFrom2ToTheKnotCountAreAnsweredWithNumbers) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  for (int i = 2; i <= 9; ++i) {
    for (const double value : ValuesOf(basis, i, 0.25)) EXPECT_TRUE(std::isfinite(value)) << i;
  }
  // Knots behind the last one count as the last one: with no span there every quotient drops out.
  EXPECT_THAT(ValuesOf(basis, 9, 0.25), ElementsAre(0, 0, 0, 0));
  const TNurbsBasicFunc two = BasisOf(std::array{0.0, 1.0});
  for (const double value : ValuesOf(two, 2, 0.25)) EXPECT_TRUE(std::isfinite(value));
}

TEST(TNurbsBasicFunc, TooFewPlacesForTheValuesRaise) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  std::array<double, 3> N = {7, 8, 9};
  EXPECT_THAT(Calling([&] { basis.BasicFuns(3, 0.25, N); }), RaisesGeneralError(_));
  EXPECT_THAT(Calling([&] { basis.BasicFuns(3, 0.25, {}); }), RaisesGeneralError(_));
  EXPECT_THAT(N, ElementsAre(7, 8, 9));
}

TEST(TNurbsBasicFunc, OnlyTheFirstFourPlacesAreWritten) {
  std::array<double, 6> N = {7, 7, 7, 7, 7, 7};
  EXPECT_TRUE(BasisOf(kTwoSpans).BasicFuns(3, 0, N));
  EXPECT_THAT(N, ElementsAre(1, 0, 0, 0, 7, 7));
}

// A difference of exactly 1e-6 still divides, one just below drops out. The double 1e-6 lies below the threshold, which is
// 1e-6 in extended precision.
TEST(TNurbsBasicFunc, KnotDifferencesBelow1eMinus6DropOut) {
  const double above = std::nextafter(1e-6, 1);
  const auto sum = [](double Width) {
    const std::array<double, 8> knots = {0, 0, 0, 0, Width, Width, Width, Width};
    const std::array<double, 4> N = ValuesOf(BasisOf(knots), 3, 0);
    return N[0] + N[1] + N[2] + N[3];
  };
  ASSERT_LT(1e-6, 1e-6L);
  EXPECT_NEAR(sum(above), 1, 4 * kEpsilon);
  EXPECT_EQ(sum(1e-6), 0);
  EXPECT_EQ(sum(9.9e-7), 0);
}

}  // namespace
}  // namespace ZORBase
