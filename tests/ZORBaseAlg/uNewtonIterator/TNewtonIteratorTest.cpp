#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>

#include "NewtonTestSupport.h"
#include "support/TestSupport.h"

#include <cmath>
#include <limits>
#include <numbers>
#include <utility>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::LoggerTo;
using Test::Nothing;
using Test::RaisesGeneralError;
using Test::SquareIsTwo;
using Test::SquareIsTwoJacobian;
using Test::SumAndDifference;
using Test::SumAndDifferenceJacobian;
using Test::TLog;
using testing::ElementsAre;

constexpr auto kCreateError = "TNewtonIterator Input Err (ZORBaseAlg\\uNewtonIterator, line 230)";
constexpr auto kToleranceError = "TNewtonIterator.SetConvergeTor Err (ZORBaseAlg\\uNewtonIterator, line 252)";

// x^2 + 1 = 0 has no real solution: Newton steps wander about for ever.
std::optional<TDoubleList> SquareIsMinusOne(const TDoubleList& X) { return TDoubleList{X[0] * X[0] + 1}; }

// ---------------------------------------------------------------------------------------------- construction

TEST(TNewtonIterator, KeepsWhatItIsCreatedWith) {
  const TNewtonIterator iterator(2, 3, Nothing, Nothing, true);
  EXPECT_EQ(iterator.ParamNum(), 2);
  EXPECT_EQ(iterator.EquationNum(), 3);
  EXPECT_TRUE(iterator.ReadByRow());
  EXPECT_THAT(iterator.ConvergeTor(), ElementsAre(0.001, 0.001));
  EXPECT_EQ(iterator.IterMaxNum(), 300);
  EXPECT_FALSE(iterator.Logger());
  EXPECT_FALSE(TNewtonIterator(1, 1, Nothing, Nothing, false).ReadByRow());
}

TEST(TNewtonIterator, MoreUnknownsThanEquationsAreRefused) {
  EXPECT_THAT(Calling([] { TNewtonIterator(3, 2, Nothing, Nothing, true); }), RaisesGeneralError(kCreateError));
  EXPECT_THAT(Calling([] { TNewtonIteratorPro(3, 2, Nothing); }), RaisesGeneralError(kCreateError));
}

TEST(TNewtonIterator, FewerThanOneUnknownOrEquationIsRefused) {
  for (const auto& [unknowns, equations] : {std::pair{0, 1}, {0, 0}, {1, 0}, {-1, 2}, {-3, -2}}) {
    const int p = unknowns;
    const int e = equations;
    EXPECT_THAT(Calling([=] { TNewtonIterator(p, e, Nothing, Nothing, true); }), RaisesGeneralError(kCreateError))
        << p << ", " << e;
  }
}

TEST(TNewtonIterator, MoreDerivativesThanAListHoldsAreRefusedBeforeAnythingIsAllocated) {
  constexpr int most = std::numeric_limits<int>::max();
  EXPECT_THAT(Calling([] { TNewtonIterator(most, most, Nothing, Nothing, true); }),
              RaisesGeneralError("TNewtonIterator: 2147483647 unknowns and 2147483647 equations have more derivatives "
                                 "than a list holds"));
  EXPECT_THAT(Calling([] { TNewtonIterator(2, most / 2 + 1, Nothing, Nothing, true); }),
              RaisesGeneralError(testing::HasSubstr("2 unknowns and 1073741824 equations")));
  EXPECT_NO_THROW(TNewtonIterator(2, most / 2, Nothing, Nothing, true));
}

// ---------------------------------------------------------------------------------------------- settings

TEST(TNewtonIterator, OneToleranceIsThatOfEveryUnknown) {
  TNewtonIterator iterator(3, 3, Nothing, Nothing, true);
  iterator.SetConvergeTor(0.25);
  EXPECT_THAT(iterator.ConvergeTor(), ElementsAre(0.25, 0.25, 0.25));
}

TEST(TNewtonIterator, AListOfTolerancesIsTakenInOrder) {
  TNewtonIterator iterator(3, 3, Nothing, Nothing, true);
  iterator.SetConvergeTor(TDoubleList{0.1, 0.2, 0.3});
  EXPECT_THAT(iterator.ConvergeTor(), ElementsAre(0.1, 0.2, 0.3));
}

TEST(TNewtonIterator, NoListOfTolerancesOrOneOfTheWrongLengthIsRefusedAndChangesNothing) {
  TNewtonIterator iterator(2, 2, Nothing, Nothing, true);
  EXPECT_THAT(Calling([&] { iterator.SetConvergeTor(std::nullopt); }), RaisesGeneralError(kToleranceError));
  EXPECT_THAT(Calling([&] { iterator.SetConvergeTor(TDoubleList{1}); }), RaisesGeneralError(kToleranceError));
  EXPECT_THAT(Calling([&] { iterator.SetConvergeTor(TDoubleList{1, 2, 3}); }), RaisesGeneralError(kToleranceError));
  EXPECT_THAT(iterator.ConvergeTor(), ElementsAre(0.001, 0.001));
}

TEST(TNewtonIterator, AnEmptyLoggerLeavesTheOneThereIs) {
  TNewtonIterator iterator(1, 1, SquareIsTwo, SquareIsTwoJacobian, true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  iterator.SetLogger(nullptr);
  TDoubleList x = {1};
  iterator.CalcParam(&x);
  EXPECT_FALSE(log.empty());
}

TEST(TNewtonIterator, AnotherLoggerReplacesTheFirst) {
  TNewtonIterator iterator(1, 1, SquareIsTwo, SquareIsTwoJacobian, true);
  TLog first;
  TLog second;
  iterator.SetLogger(LoggerTo(first));
  iterator.SetLogger(LoggerTo(second));
  iterator.CalcParam(nullptr);
  EXPECT_TRUE(first.empty());
  EXPECT_EQ(second.size(), 1U);
}

TEST(TNewtonIterator, MovesWithItsSettings) {
  TLog log;
  TNewtonIterator from(1, 1, SquareIsTwo, SquareIsTwoJacobian, true);
  from.SetLogger(LoggerTo(log));
  from.SetConvergeTor(1e-14);
  TNewtonIterator to = std::move(from);
  TDoubleList x = {1};
  EXPECT_TRUE(to.CalcParam(&x));
  EXPECT_NEAR(x[0], std::numbers::sqrt2, 1e-14);
  EXPECT_FALSE(log.empty());
}

TEST(TNewtonIterator, TakesOverAnotherOneWithItsSettings) {
  TLog log;
  TNewtonIterator from(1, 1, SquareIsTwo, SquareIsTwoJacobian, true);
  from.SetLogger(LoggerTo(log));
  from.SetConvergeTor(1e-14);
  TNewtonIterator to(2, 3, Nothing, Nothing, false);
  to = std::move(from);
  EXPECT_EQ(to.ParamNum(), 1);
  EXPECT_EQ(to.EquationNum(), 1);
  EXPECT_TRUE(to.ReadByRow());
  TDoubleList x = {1};
  EXPECT_TRUE(to.CalcParam(&x));
  EXPECT_NEAR(x[0], std::numbers::sqrt2, 1e-14);
  EXPECT_FALSE(log.empty());
}

// ---------------------------------------------------------------------------------------------- solutions

TEST(TNewtonIterator, FindsTheRootOfTwoFromOne) {
  TNewtonIterator iterator(1, 1, SquareIsTwo, SquareIsTwoJacobian, true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x = {1};
  EXPECT_TRUE(iterator.CalcParam(&x));
  // The steps of Newton from 1: -1/2, 1/12, 1/408, 1/470832. The third is above 0.001, the fourth below; the residual before
  // it is (1/408)^2.
  EXPECT_NEAR(x[0], std::numbers::sqrt2, 1e-11);
  EXPECT_THAT(
      log, ElementsAre("牛顿求解未知数个数，方程数分别为：1，1", "迭代次数为：4",
                       "Fx " + Format("%.5f", 1 / 166464.0) + "  ", "FxDivJx " + Format("%.5f", 1 / 470832.0) + "  "));
}

TEST(TNewtonIterator, ALinearSystemTakesTwoSteps) {
  for (const bool byRow : {true, false}) {  // this Jacobian is symmetric
    TNewtonIterator iterator(2, 2, SumAndDifference, SumAndDifferenceJacobian, byRow);
    TLog log;
    iterator.SetLogger(LoggerTo(log));
    TDoubleList x = {100, -70};
    EXPECT_TRUE(iterator.CalcParam(&x));
    EXPECT_NEAR(x[0], 2, 1e-12);
    EXPECT_NEAR(x[1], 1, 1e-12);
    ASSERT_EQ(log.size(), 4U);
    EXPECT_EQ(log[1], "迭代次数为：2");
  }
}

// 2 x + y = 4, 6 x - y = 4: (1, 2), and its Jacobian is not symmetric.
TEST(TNewtonIterator, TheJacobianIsReadByRowOrByColumnAsAsked) {
  const TEquationFunc f = [](const TDoubleList& X) { return TDoubleList{2 * X[0] + X[1] - 4, 6 * X[0] - X[1] - 4}; };
  const auto solved = [&](const TDoubleList& Jacobian, bool ByRow) {
    TNewtonIterator iterator(
        2, 2, f, [&](const TDoubleList&) { return Jacobian; }, ByRow);
    TDoubleList x = {0, 0};
    EXPECT_TRUE(iterator.CalcParam(&x));
    return x;
  };
  for (const TDoubleList& x : {solved({2, 1, 6, -1}, true), solved({2, 6, 1, -1}, false)}) {
    EXPECT_NEAR(x[0], 1, 1e-12);
    EXPECT_NEAR(x[1], 2, 1e-12);
  }
}

// x = 1, x = 2, x = 6 have the mean as their least-squares solution.
TEST(TNewtonIterator, MoreEquationsThanUnknownsAreSolvedInTheLeastSquaresSense) {
  TNewtonIterator iterator(
      1, 3,
      [](const TDoubleList& X) {
        return TDoubleList{X[0] - 1, X[0] - 2, X[0] - 6};
      },
      [](const TDoubleList&) {
        return TDoubleList{1, 1, 1};
      },
      true);
  TDoubleList x = {0};
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_NEAR(x[0], 3, 1e-14);
}

RC_GTEST_PROP(TNewtonIterator, EveryLinearSystemIsSolvedInTwoSteps, ()) {
  const int n = *rc::gen::inRange(1, 6);
  const auto number = [] { return *rc::gen::inRange(-1000, 1001) / 100.0; };
  TDoubleList matrix;
  for (int i = 0; i < n * n; ++i)
    matrix.Add(number() + (i % (n + 1) == 0 ? 60.0 : 0.0));  // the diagonal outweighs its row
  TDoubleList solution;
  for (int i = 0; i < n; ++i) solution.Add(number());
  const TEquationFunc f = [&](const TDoubleList& X) {
    TDoubleList residuals;
    for (int i = 0; i < n; ++i) {
      double sum = 0;
      for (int j = 0; j < n; ++j) sum += matrix[i * n + j] * (X[j] - solution[j]);
      residuals.Add(sum);
    }
    return residuals;
  };
  TNewtonIterator iterator(
      n, n, f, [&](const TDoubleList&) { return matrix; }, true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x;
  for (int i = 0; i < n; ++i) x.Add(solution[i] + 1.0 + number());
  const bool isFarOff = std::fabs(x[0] - solution[0]) > 0.01;
  RC_ASSERT(iterator.CalcParam(&x));
  for (int i = 0; i < n; ++i) RC_ASSERT(std::fabs(x[i] - solution[i]) < 1e-11);
  RC_PRE(isFarOff);
  RC_ASSERT(log[1] == "迭代次数为：2");
}

// ---------------------------------------------------------------------------------------------- convergence

// F(x) = x with J = 2 halves x with every step: the step from x is x / 2.
TNewtonIterator Halving(int ParamNum) {
  return {ParamNum, ParamNum, [](const TDoubleList& X) { return X; },
          [ParamNum](const TDoubleList&) {
            TDoubleList jacobian;
            for (int i = 0; i < ParamNum * ParamNum; ++i) jacobian.Add(i % (ParamNum + 1) == 0 ? 2.0 : 0.0);
            return jacobian;
          },
          true};
}

TEST(TNewtonIterator, AStepOfExactlyTheToleranceIsNotYetSmallEnough) {
  TNewtonIterator iterator = Halving(1);
  iterator.SetConvergeTor(0.25);
  TDoubleList x = {1};  // steps 0.5, 0.25, 0.125
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_EQ(x[0], 0.125);
}

TEST(TNewtonIterator, EveryUnknownIsHeldAgainstItsOwnTolerance) {
  TNewtonIterator iterator = Halving(2);
  iterator.SetConvergeTor(TDoubleList{100, 0.1});
  TDoubleList x = {1, 1};  // the steps of the second one: 0.5, 0.25, 0.125, 0.0625
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_EQ(x[1], 0.0625);
  iterator.SetConvergeTor(TDoubleList{0.1, 100});
  x = {1, 1};
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_EQ(x[0], 0.0625);
}

// The residual is far from 0, the step is not.
TEST(TNewtonIterator, TheStepDecidesAndNotTheResidual) {
  TNewtonIterator iterator(
      1, 1, [](const TDoubleList&) { return TDoubleList{1000}; }, [](const TDoubleList&) { return TDoubleList{1e9}; },
      true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x = {5};
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_EQ(log[1], "迭代次数为：1");
}

TEST(TNewtonIterator, AfterThreeHundredStepsItStopsSaysSoAndCountsAsSolved) {
  int calls = 0;
  TNewtonIterator iterator(
      1, 1,
      [&](const TDoubleList&) {
        ++calls;
        return TDoubleList{1};
      },
      [](const TDoubleList&) { return TDoubleList{1}; }, true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x = {0};
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_EQ(calls, 300);
  EXPECT_EQ(x[0], -300);  // each step is 1
  EXPECT_THAT(log,
              ElementsAre("牛顿求解未知数个数，方程数分别为：1，1", "CheckErr Exceed Max IterNum", "迭代次数为：300",
                          "Fx " + Format("%.5f", 1.0) + "  ", "FxDivJx " + Format("%.5f", 1.0) + "  "));
}

TEST(TNewtonIterator, ASystemWithoutASolutionRunsIntoTheLimit) {
  TNewtonIterator iterator(1, 1, SquareIsMinusOne, SquareIsTwoJacobian, true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x = {0.3};
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_THAT(log, testing::Contains("CheckErr Exceed Max IterNum"));
}

// A step that converges just at the limit is no exceedance: halving 2^300 goes below 2 with the step number 300.
TEST(TNewtonIterator, ConvergingWithTheLastStepIsNotExceedingTheLimit) {
  TNewtonIterator iterator = Halving(1);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  iterator.SetConvergeTor(2.0);
  TDoubleList x = {std::ldexp(1.0, 300)};
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_EQ(log[1], "迭代次数为：300");
  x = {std::ldexp(1.0, 301)};
  log.clear();
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_EQ(log[1], "CheckErr Exceed Max IterNum");
}

TEST(TNewtonIterator, NumbersThatAreNoneEndInTheLimitAndInTheLog) {
  const double nan = std::nan("");
  TNewtonIterator iterator(
      1, 1, [&](const TDoubleList&) { return TDoubleList{nan}; }, [](const TDoubleList&) { return TDoubleList{1}; },
      true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x = {0};
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_TRUE(std::isnan(x[0]));
  EXPECT_THAT(log, testing::IsSupersetOf({"CheckErr Exceed Max IterNum", "Fx nan  ", "FxDivJx nan  "}));
}

}  // namespace
}  // namespace ZORBase
