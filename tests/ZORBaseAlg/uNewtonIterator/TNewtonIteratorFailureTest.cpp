#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>

#include "NewtonTestSupport.h"
#include "support/TestSupport.h"

#include <stdexcept>
#include <utility>

namespace ZORBase {
namespace {

using Test::DecimalCommaLocale;
using Test::LoggerTo;
using Test::Nothing;
using Test::SquareIsTwo;
using Test::SquareIsTwoJacobian;
using Test::TLocaleGuard;
using Test::TLog;
using testing::ElementsAre;

// ---------------------------------------------------------------------------------------------- bad input

TEST(TNewtonIterator, NoListOrOneOfTheWrongLengthIsOneLineAndFalse) {
  TNewtonIterator iterator(1, 1, SquareIsTwo, SquareIsTwoJacobian, true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList longer = {1, 7};
  TDoubleList empty;
  EXPECT_FALSE(iterator.CalcParam(&longer));
  EXPECT_FALSE(iterator.CalcParam(&empty));
  EXPECT_FALSE(iterator.CalcParam(nullptr));
  const auto line = "TNewtonIterator.CalcParam Input Param Err";
  EXPECT_THAT(log, ElementsAre(line, line, line));
  EXPECT_THAT(longer, ElementsAre(1, 7));
}

TLog FailureLog(TEquationFunc F, TEquationFunc J) {
  TNewtonIterator iterator(2, 3, std::move(F), std::move(J), true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x = {4, 5};
  EXPECT_FALSE(iterator.CalcParam(&x));
  EXPECT_THAT(x, ElementsAre(4, 5));
  return log;
}

TEST(TNewtonIterator, ResidualsOfTheWrongLengthStopBeforeTheFirstStepAndLeaveTheirLineBare) {
  bool isJacobianCalled = false;
  const TEquationFunc jacobian = [&](const TDoubleList&) {
    isJacobianCalled = true;
    return TDoubleList{1, 2, 3, 4, 5, 6};
  };
  const auto expected = ElementsAre("牛顿求解未知数个数，方程数分别为：2，3", "求解方程输入错误",
                                    "TNewtonIterator.CalcParam Fx or Jx Fail", "迭代次数为：0", "Fx ", "FxDivJx ");
  EXPECT_THAT(FailureLog([](const TDoubleList&) { return TDoubleList{1, 2}; }, jacobian), expected);
  EXPECT_THAT(FailureLog([](const TDoubleList&) { return TDoubleList{1, 2, 3, 4}; }, jacobian), expected);
  EXPECT_THAT(FailureLog(Nothing, jacobian), expected);
  EXPECT_THAT(FailureLog(nullptr, jacobian), expected);
  EXPECT_FALSE(isJacobianCalled);
}

TEST(TNewtonIterator, AJacobianOfTheWrongLengthStopsAndTheResidualsAreStillTold) {
  const TEquationFunc f = [](const TDoubleList&) { return TDoubleList{1, -2, 0.5}; };
  const auto expected = ElementsAre("牛顿求解未知数个数，方程数分别为：2，3", "雅各比矩阵输入错误",
                                    "TNewtonIterator.CalcParam Fx or Jx Fail", "迭代次数为：0",
                                    Format("Fx %.5f  %.5f  %.5f  ", 1.0, -2.0, 0.5), "FxDivJx ");
  EXPECT_THAT(FailureLog(f, [](const TDoubleList&) { return TDoubleList{1, 2, 3, 4, 5}; }), expected);
  EXPECT_THAT(FailureLog(f, [](const TDoubleList&) { return TDoubleList{1, 2, 3, 4, 5, 6, 7}; }), expected);
  EXPECT_THAT(FailureLog(f, Nothing), expected);
  EXPECT_THAT(FailureLog(f, nullptr), expected);
}

// After one good step: the count is 1, the last step is told, and residuals that did not come are not those of before.
TEST(TNewtonIterator, AFailureInTheSecondStepTellsTheFirstOne) {
  int calls = 0;
  TNewtonIterator iterator(
      1, 1, [&](const TDoubleList& X) { return ++calls == 1 ? SquareIsTwo(X) : std::nullopt; }, SquareIsTwoJacobian,
      true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x = {1};
  EXPECT_FALSE(iterator.CalcParam(&x));
  EXPECT_EQ(x[0], 1);
  EXPECT_THAT(log, ElementsAre("牛顿求解未知数个数，方程数分别为：1，1", "求解方程输入错误",
                               "TNewtonIterator.CalcParam Fx or Jx Fail", "迭代次数为：1", "Fx ",
                               "FxDivJx " + Format("%.5f", -0.5) + "  "));
}

TEST(TNewtonIterator, WithoutALoggerAFailureIsJustFalse) {
  TNewtonIterator iterator(1, 1, Nothing, Nothing, true);
  TDoubleList x = {1};
  EXPECT_FALSE(iterator.CalcParam(&x));
}

// ---------------------------------------------------------------------------------------------- the log

TEST(TNewtonIterator, TheLogFollowsTheLocale) {
  const TLocaleGuard guard(DecimalCommaLocale());
  TNewtonIterator iterator(
      2, 2,
      [](const TDoubleList&) {
        return TDoubleList{1234567.25, -0.000001};
      },
      Nothing, true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x = {0, 0};
  iterator.CalcParam(&x);
  EXPECT_THAT(log, testing::Contains("Fx 1234567,25000  -0,00000  "));
}

// ---------------------------------------------------------------------------------------------- exceptions

// Counts the copies of itself that are alive.
class TWitness {
 public:
  explicit TWitness(int& Alive) : FAlive(&Alive) { ++*FAlive; }
  TWitness(const TWitness& Other) : FAlive(Other.FAlive) { ++*FAlive; }
  TWitness& operator=(const TWitness&) = delete;
  ~TWitness() { --*FAlive; }

 private:
  int* FAlive;
};

TEST(TNewtonIterator, WhatAFunctionRaisesPassesThroughAndTheListStays) {
  const auto raises = [](const TDoubleList&) -> std::optional<TDoubleList> { throw std::domain_error("outside"); };
  int calls = 0;
  const auto raisesLater = [&calls](const TDoubleList& X) -> std::optional<TDoubleList> {
    if (++calls == 3) throw std::domain_error("outside");
    return SquareIsTwo(X);
  };
  for (const auto& [f, j] : {std::pair<TEquationFunc, TEquationFunc>{raises, SquareIsTwoJacobian},
                             {SquareIsTwo, raises},
                             {raisesLater, SquareIsTwoJacobian}}) {
    TNewtonIterator iterator(1, 1, f, j, true);
    TDoubleList x = {1};
    EXPECT_THROW(iterator.CalcParam(&x), std::domain_error);
    EXPECT_EQ(x[0], 1);
  }
}

TEST(TNewtonIterator, TheFunctionsAreReleasedWithTheIterator) {
  int alive = 0;
  {
    const TWitness witness(alive);
    TNewtonIterator iterator(
        1, 1, [witness](const TDoubleList&) -> std::optional<TDoubleList> { throw std::domain_error(""); },
        [witness](const TDoubleList& X) { return X; }, true);
    iterator.SetLogger([witness](const std::string&) {});
    TDoubleList x = {1};
    EXPECT_THROW(iterator.CalcParam(&x), std::domain_error);
    EXPECT_GE(alive, 4);
  }
  EXPECT_EQ(alive, 0);
}

TEST(TNewtonIterator, NothingOfOneRunIsCarriedIntoTheNext) {
  TNewtonIterator iterator(1, 1, SquareIsTwo, SquareIsTwoJacobian, true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  TDoubleList x = {1};
  iterator.CalcParam(&x);
  const TLog first = std::exchange(log, {});
  TDoubleList again = {1};
  iterator.CalcParam(&again);
  EXPECT_EQ(log, first);
  EXPECT_EQ(x[0], again[0]);
}

}  // namespace
}  // namespace ZORBase
