#include <ZORBase/ZORBaseAlg/uSVD.h>

#include "support/TestSupport.h"

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;
using testing::ElementsAre;
using testing::Pointwise;

TDoubleList Solved(const TDoubleList& A, const TDoubleList& b, int M, int N, bool RowMajor) {
  TDoubleList x = {9.0, 9.0, 9.0, 9.0};
  EXPECT_TRUE(MatrixDivUsingSvd(&A, &b, M, N, &x, RowMajor));
  return x;
}

auto IsNear(double Expected) {
  return testing::DoubleNear(Expected, 20 * kEpsilon * std::fmax(1.0, std::fabs(Expected)));
}

TEST(MatrixDivUsingSvd, SolvesADiagonalSystemInEitherOrder) {
  for (const bool rowMajor : {true, false}) {
    EXPECT_THAT(Solved({2, 0, 0, 4}, {2, 8}, 2, 2, rowMajor), ElementsAre(IsNear(1), IsNear(2)));
  }
}

TEST(MatrixDivUsingSvd, RowMajorReadsRowAfterRow) {
  // (1 2; 3 4) x = (5, 6)
  EXPECT_THAT(Solved({1, 2, 3, 4}, {5, 6}, 2, 2, true), ElementsAre(IsNear(-4), IsNear(4.5)));
}

TEST(MatrixDivUsingSvd, WithoutRowMajorReadsColumnAfterColumn) {
  // (1 3; 2 4) x = (5, 6)
  EXPECT_THAT(Solved({1, 2, 3, 4}, {5, 6}, 2, 2, false), ElementsAre(IsNear(-1), IsNear(2)));
}

TEST(MatrixDivUsingSvd, AnOverDeterminedSystemGivesTheLeastSquaresSolution) {
  // The line a + b t through (0, 1), (1, 2), (2, 4): a = 5/6, b = 3/2.
  EXPECT_THAT(Solved({1, 0, 1, 1, 1, 2}, {1, 2, 4}, 3, 2, true), ElementsAre(IsNear(5.0 / 6.0), IsNear(1.5)));
  EXPECT_THAT(Solved({1, 1, 1, 0, 1, 2}, {1, 2, 4}, 3, 2, false), ElementsAre(IsNear(5.0 / 6.0), IsNear(1.5)));
}

TEST(MatrixDivUsingSvd, MoreUnknownsThanEquationsGiveZerosAndTrue) {
  EXPECT_THAT(Solved({3, 4}, {5}, 1, 2, true), ElementsAre(0.0, 0.0));
  EXPECT_THAT(Solved({1, 2, 3, 4, 5, 6}, {7, 8}, 2, 3, false), ElementsAre(0.0, 0.0, 0.0));
}

TEST(MatrixDivUsingSvd, ASingularSystemGivesTheShortestSolution) {
  // 0 = 3 cannot be helped; 2 x = 6 says nothing of y, which stays 0.
  EXPECT_THAT(Solved({0, 0, 2, 0}, {3, 6}, 2, 2, true), ElementsAre(IsNear(3), IsNear(0)));
  EXPECT_THAT(Solved({0, 0, 0, 0}, {3, 6}, 2, 2, true), ElementsAre(0.0, 0.0));
}

TEST(MatrixDivUsingSvd, ASmallSingularValueDividesLikeAnyOther) {
  EXPECT_THAT(Solved({1, 0, 0, 1e-300}, {1, 1e-300}, 2, 2, true), ElementsAre(IsNear(1), IsNear(1)));
}

TEST(MatrixDivUsingSvd, OneEquationWithOneUnknown) {
  EXPECT_THAT(Solved({-4}, {2}, 1, 1, true), ElementsAre(IsNear(-0.5)));
  EXPECT_THAT(Solved({0}, {2}, 1, 1, true), ElementsAre(0.0));
}

TEST(MatrixDivUsingSvd, TheUnknownsMayReplaceTheMatrixOrTheRightSide) {
  const TDoubleList a = {2, 0, 0, 4};
  const TDoubleList b = {2, 8};
  TDoubleList list = a;
  EXPECT_TRUE(MatrixDivUsingSvd(&list, &b, 2, 2, &list, true));
  EXPECT_THAT(list, ElementsAre(IsNear(1), IsNear(2)));
  list = b;
  EXPECT_TRUE(MatrixDivUsingSvd(&a, &list, 2, 2, &list, true));
  EXPECT_THAT(list, ElementsAre(IsNear(1), IsNear(2)));
}

TEST(MatrixDivUsingSvd, AMissingListRaises) {
  const TDoubleList list = {1};
  TDoubleList x = {7};
  constexpr auto kText = "MatrixDivUsingSvd Err: InputList(AList or bList or Xlist) Is Uninitialized";
  EXPECT_THAT(Calling([&] { MatrixDivUsingSvd(nullptr, &list, 1, 1, &x, true); }), RaisesGeneralError(kText));
  EXPECT_THAT(Calling([&] { MatrixDivUsingSvd(&list, nullptr, 1, 1, &x, true); }), RaisesGeneralError(kText));
  EXPECT_THAT(Calling([&] { MatrixDivUsingSvd(&list, &list, 1, 1, nullptr, true); }), RaisesGeneralError(kText));
  EXPECT_THAT(x, ElementsAre(7.0));
}

TEST(MatrixDivUsingSvd, CountsThatDoNotFitRaiseAndNameAllFourNumbersAndLeaveTheUnknowns) {
  const TDoubleList five = {1, 2, 3, 4, 5};
  const TDoubleList two = {1, 2};
  const TDoubleList none;
  TDoubleList x = {7};
  const auto solve = [&x](const TDoubleList& A, const TDoubleList& b, int M, int N) {
    return [&x, &A, &b, M, N] { MatrixDivUsingSvd(&A, &b, M, N, &x, true); };
  };
  EXPECT_THAT(solve(five, two, 2, 3), RaisesGeneralError("MatrixDivUsingSvd Err: Input Invalid MatA.Count = 5, "
                                                         "VecB.Count = 2, M = 2, N = 3"));
  EXPECT_THAT(solve(five, two, 1, 5), RaisesGeneralError("MatrixDivUsingSvd Err: Input Invalid MatA.Count = 5, "
                                                         "VecB.Count = 2, M = 1, N = 5"));
  EXPECT_THAT(solve(none, none, 0, 3), RaisesGeneralError("MatrixDivUsingSvd Err: Input Invalid MatA.Count = 0, "
                                                          "VecB.Count = 0, M = 0, N = 3"));
  EXPECT_THAT(solve(none, two, 2, 0), RaisesGeneralError("MatrixDivUsingSvd Err: Input Invalid MatA.Count = 0, "
                                                         "VecB.Count = 2, M = 2, N = 0"));
  EXPECT_THAT(solve(two, two, -2, -1), RaisesGeneralError("MatrixDivUsingSvd Err: Input Invalid MatA.Count = 2, "
                                                          "VecB.Count = 2, M = -2, N = -1"));
  EXPECT_THAT(solve(none, none, 65536, 65536),
              RaisesGeneralError("MatrixDivUsingSvd Err: Input Invalid MatA.Count = 0, VecB.Count = 0, M = 65536, "
                                 "N = 65536"));
  EXPECT_THAT(x, ElementsAre(7.0));
}

TEST(MatrixDivUsingSvd, EntriesThatAreNotFiniteEndWithTrue) {
  for (const double value : {kNaN, kInfinity}) {
    for (int place = 0; place < 12; ++place) {
      TDoubleList a = {1, 2, 3, 4, 5, 6, 7, 8, 10, 9, 11, 13};
      a[place] = value;
      EXPECT_EQ(Solved(a, {1, 2, 3, 4}, 4, 3, true).Count(), 3);
      EXPECT_EQ(Solved(a, {1, 2, 3, 4, 5, 6}, 6, 2, false).Count(), 2);
    }
  }
}

}  // namespace
}  // namespace ZORBase
