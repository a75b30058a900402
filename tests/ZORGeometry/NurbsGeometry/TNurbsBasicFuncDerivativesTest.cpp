// The derivatives of the basis functions.
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>

#include "CurveTestSupport.h"

namespace ZORBase {
namespace {

using Test::AnyClampedKnots;
using Test::AnyParameter;
using Test::BasisOf;
using Test::Calling;
using Test::kTwoSpans;
using Test::RaisesGeneralError;
using Test::RecursiveBasis;
using testing::_;
using testing::ElementsAre;

RC_GTEST_PROP(TNurbsBasicFunc, DerivativesOfEveryDegreeAreThoseOfTheRecursion, ()) {
  const std::vector<double> knots = *AnyClampedKnots();
  const TNurbsBasicFunc basis = BasisOf(knots);
  const double u = *AnyParameter();
  const int span = basis.FindSpan(u);
  const int p = *rc::gen::inRange(0, 4);
  Double2DArray ders{};
  basis.DersBasciFuns(span, u, p, p, ders);
  for (int k = 0; k <= p; ++k) {
    std::array<long double, 4> expected{};
    long double largest = 0;
    for (int j = 0; j <= p; ++j) {
      const long double value = RecursiveBasis(knots, span, span - p + j, p, k, u);
      expected[static_cast<std::size_t>(j)] = value;
      largest = std::max(largest, std::fabs(value));
    }
    for (int j = 0; j <= p; ++j) {
      const auto at = static_cast<std::size_t>(j);
      const long double miss = std::fabs(ders[static_cast<std::size_t>(k)][at] - expected[at]);
      RC_ASSERT(miss <= 64 * kEpsilon * std::max(largest, 1.0L));
    }
  }
}

RC_GTEST_PROP(TNurbsBasicFunc, DerivativesSumToZero, ()) {
  const std::vector<double> knots = *AnyClampedKnots();
  const TNurbsBasicFunc basis = BasisOf(knots);
  const double u = *AnyParameter();
  Double2DArray ders{};
  basis.DersBasciFuns(basis.FindSpan(u), u, 3, 3, ders);
  for (std::size_t k = 1; k <= 3; ++k) {
    double sum = 0;
    double size = 0;
    for (const double value : ders[k]) {
      sum += value;
      size += std::fabs(value);
    }
    RC_ASSERT(std::fabs(sum) <= 64 * kEpsilon * size);
  }
}

// Bernstein at 1/2: values 1/8 3/8 3/8 1/8, derivatives -3/4 -3/4 3/4 3/4, 3 -3 -3 3, -6 18 -18 6.
TEST(TNurbsBasicFunc, TheDerivativesOfTheBernsteinBasis) {
  const TNurbsBasicFunc basis = BasisOf(std::array{0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0});
  Double2DArray ders{};
  basis.DersBasciFuns(3, 0.5, 3, 3, ders);
  EXPECT_THAT(ders[0], ElementsAre(0.125, 0.375, 0.375, 0.125));
  EXPECT_THAT(ders[1], ElementsAre(-0.75, -0.75, 0.75, 0.75));
  EXPECT_THAT(ders[2], ElementsAre(3, -3, -3, 3));
  EXPECT_THAT(ders[3], ElementsAre(-6, 18, -18, 6));
}

TEST(TNurbsBasicFunc, RowsBeyondTheHighestDerivativeAndColumnsBeyondTheDegreeStay) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  Double2DArray ders{};
  for (auto& row : ders) row.fill(7);
  basis.DersBasciFuns(3, 0.25, 3, 1, ders);
  EXPECT_NE(ders[1][3], 7);
  EXPECT_THAT(ders[2], ElementsAre(7, 7, 7, 7));
  EXPECT_THAT(ders[3], ElementsAre(7, 7, 7, 7));
  for (auto& row : ders) row.fill(7);
  basis.DersBasciFuns(3, 0.25, 1, 1, ders);
  EXPECT_THAT(ders[0], ElementsAre(0.5, 0.5, 7, 7));
  EXPECT_THAT(ders[1], ElementsAre(-2, 2, 7, 7));
  EXPECT_THAT(ders[2], ElementsAre(7, 7, 7, 7));
}

TEST(TNurbsBasicFunc, FewerDerivativesAreTheFirstOfAllThatADegreeHas) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  for (int p = 0; p <= 3; ++p) {
    Double2DArray all{};
    for (auto& row : all) row.fill(7);
    basis.DersBasciFuns(3, 0.25, p, p, all);
    for (int n = 0; n < p; ++n) {
      Double2DArray some{};
      for (auto& row : some) row.fill(7);
      basis.DersBasciFuns(3, 0.25, p, n, some);
      for (int k = 0; k <= 3; ++k) {
        const auto at = static_cast<std::size_t>(k);
        EXPECT_THAT(some[at], testing::ElementsAreArray(k <= n ? all[at] : std::array{7.0, 7.0, 7.0, 7.0}))
            << "degree " << p << ", up to derivative " << n << ", row " << k;
      }
    }
  }
}

TEST(TNurbsBasicFunc, DerivativesOutsideTheTablesRaiseAndTouchNothing) {
  struct TRequest {
    int Span, Degree, Order;
  };
  const std::vector<TRequest> requests = {{1, 3, 3},
                                          {-1, 3, 3},
                                          {6, 3, 3},
                                          {9, 3, 3},
                                          {8, 1, 1},
                                          {0, 2, 2},
                                          {3, 4, 3},
                                          {3, 4, 4},
                                          {3, 3, 4},
                                          {3, 2, 3},
                                          {3, 0, 1},
                                          {3, -1, 0},
                                          {3, 3, -1},
                                          {3, -1, -1},
                                          {kSmallestInt, 3, 3},
                                          {kLargestInt, 3, 3},
                                          {3, kLargestInt, kLargestInt},
                                          {3, kSmallestInt, 0}};
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  for (const auto& [span, degree, order] : requests) {
    Double2DArray ders{};
    for (auto& row : ders) row.fill(7);
    const auto derive = [&basis, &ders, i = span, p = degree, n = order] { basis.DersBasciFuns(i, 0.25, p, n, ders); };
    EXPECT_THAT(Calling(derive), RaisesGeneralError(_))
        << "span " << span << ", degree " << degree << ", order " << order;
    for (const auto& row : ders) EXPECT_THAT(row, ElementsAre(7, 7, 7, 7));
  }
  Double2DArray ders{};
  EXPECT_THAT(Calling([&] { TNurbsBasicFunc().DersBasciFuns(3, 0.5, 3, 3, ders); }), RaisesGeneralError(_));
}

TEST(TNurbsBasicFunc, TheOutermostSpansWithEnoughKnotsHaveDerivatives) {
  const TNurbsBasicFunc basis = BasisOf(kTwoSpans);
  for (const int span : {2, 5}) {
    Double2DArray ders{};
    basis.DersBasciFuns(span, 0.25, 3, 3, ders);
    for (const auto& row : ders) {
      for (const double value : row) EXPECT_TRUE(std::isfinite(value)) << span;
    }
  }
}

}  // namespace
}  // namespace ZORBase
