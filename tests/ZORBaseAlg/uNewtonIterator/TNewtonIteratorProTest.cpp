#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>

#include "NewtonTestSupport.h"
#include "support/TestSupport.h"

#include <numbers>
#include <stdexcept>

namespace ZORBase {
namespace {

using Test::LoggerTo;
using Test::Nothing;
using Test::SquareIsTwo;
using Test::SumAndDifference;
using Test::TLog;
using testing::ElementsAre;

constexpr double kStep = 1e-7;

TEST(TNewtonIteratorPro, SolvesTwoLinesFromTheOrigin) {
  TNewtonIteratorPro iterator(2, 2, SumAndDifference);
  TDoubleList x = {0, 0};
  EXPECT_TRUE(iterator.CalcParam(&x));
  EXPECT_NEAR(x[0], 2, 1e-6);
  EXPECT_NEAR(x[1], 1, 1e-6);
}

TEST(TNewtonIteratorPro, HasTheSettingsOfANewtonIterator) {
  const TNewtonIteratorPro iterator(2, 3, Nothing);
  EXPECT_EQ(iterator.ParamNum(), 2);
  EXPECT_EQ(iterator.EquationNum(), 3);
  EXPECT_FALSE(iterator.ReadByRow());
  EXPECT_EQ(iterator.IterMaxNum(), 300);
  EXPECT_THAT(iterator.ConvergeTor(), ElementsAre(0.001, 0.001));
}

// x y, x + y^2, 3 y: the derivatives at (2, 5) by x are 5, 1, 0 and by y 2, 10, 3.
TEST(TNewtonIteratorPro, TheJacobianGoesUnknownAfterUnknown) {
  const TNewtonIteratorPro iterator(2, 3, [](const TDoubleList& X) {
    return TDoubleList{X[0] * X[1], X[0] + X[1] * X[1], 3 * X[1]};
  });
  const auto jacobian = iterator.JacobFunc()(TDoubleList{2, 5});
  ASSERT_TRUE(jacobian);
  ASSERT_EQ(jacobian->Count(), 6);
  const TDoubleList expected = {5, 1, 0, 2, 10, 3};
  for (int i = 0; i < 6; ++i) EXPECT_NEAR((*jacobian)[i], expected[i], 1e-6) << i;
}

// One evaluation for the residuals, then one at X and one beside it in each direction, in this order. Each place has what
// adding and taking away the step has left in the unknowns before, and so has X itself in the next step.
TEST(TNewtonIteratorPro, AnUnknownIsPutBackBySubtraction) {
  const double a = 0.5;  // (0.5 + 1e-7) - 1e-7 is not 0.5
  const double b = 2.0;
  const double aLeft = (a + kStep) - kStep;
  const double bLeft = (b + kStep) - kStep;
  ASSERT_NE(aLeft, a);
  ASSERT_NE(bLeft, b);
  std::vector<std::vector<double>> places;
  TNewtonIteratorPro iterator(2, 2, [&](const TDoubleList& X) {
    places.emplace_back(X.begin(), X.end());
    return TDoubleList{0, 0};
  });
  TDoubleList x = {a, b};
  EXPECT_TRUE(iterator.CalcParam(&x));  // all residuals are 0, so the step is 0
  EXPECT_THAT(places, ElementsAre(ElementsAre(a, b), ElementsAre(a, b), ElementsAre(a + kStep, b),
                                  ElementsAre(aLeft, b + kStep)));
  EXPECT_THAT(x, ElementsAre(aLeft, bLeft));
}

TEST(TNewtonIteratorPro, TheQuotientsAreThoseOfTheDifferencesBitForBit) {
  const auto f = [](double x) { return std::exp(x) - 3; };
  const TNewtonIteratorPro iterator(1, 1, [&](const TDoubleList& X) { return TDoubleList{f(X[0])}; });
  const double x = 0.3;
  EXPECT_EQ((*iterator.JacobFunc()(TDoubleList{x}))[0], (f(x + kStep) - f(x)) / kStep);
}

// Where does a circle meet a parabola: x^2 + y^2 = 4, y = x^2; y^2 + y - 4 = 0.
TEST(TNewtonIteratorPro, ACircleMeetsAParabola) {
  TNewtonIteratorPro iterator(2, 2, [](const TDoubleList& X) {
    return TDoubleList{X[0] * X[0] + X[1] * X[1] - 4, X[1] - X[0] * X[0]};
  });
  iterator.SetConvergeTor(1e-9);
  TDoubleList x = {1, 1};
  EXPECT_TRUE(iterator.CalcParam(&x));
  const double y = (std::sqrt(17.0) - 1) / 2;
  EXPECT_NEAR(x[0], std::sqrt(y), 1e-12);
  EXPECT_NEAR(x[1], y, 1e-12);
}

RC_GTEST_PROP(TNewtonIteratorPro, ReachesWhatTheAnalyticJacobianReaches, ()) {
  // x e^x = c has one solution for c > 0.
  const double c = *rc::gen::inRange(1, 2000) / 100.0;
  const TEquationFunc f = [c](const TDoubleList& X) { return TDoubleList{X[0] * std::exp(X[0]) - c}; };
  TNewtonIterator analytic(
      1, 1, f, [](const TDoubleList& X) { return TDoubleList{(1 + X[0]) * std::exp(X[0])}; }, true);
  TNewtonIteratorPro numeric(1, 1, f);
  for (TNewtonIterator* const iterator : {&analytic, static_cast<TNewtonIterator*>(&numeric)}) {
    iterator->SetConvergeTor(1e-10);
    TDoubleList x = {1};
    RC_ASSERT(iterator->CalcParam(&x));
    RC_ASSERT(std::fabs(x[0] * std::exp(x[0]) - c) < 1e-9 * (1 + c));
  }
}

TEST(TNewtonIteratorPro, AFunctionThatFailsBesideTheGuessFailsTheJacobian) {
  for (const TDoubleList& beside : {TDoubleList{}, TDoubleList{1}}) {
    int calls = 0;
    TNewtonIteratorPro iterator(1, 2, [&](const TDoubleList&) { return ++calls < 3 ? TDoubleList{1, 2} : beside; });
    TLog log;
    iterator.SetLogger(LoggerTo(log));
    TDoubleList x = {1};
    EXPECT_FALSE(iterator.CalcParam(&x));
    EXPECT_EQ(x[0], 1);
    EXPECT_THAT(log, ElementsAre("牛顿求解未知数个数，方程数分别为：1，2", "雅各比矩阵输入错误",
                                 "TNewtonIterator.CalcParam Fx or Jx Fail", "迭代次数为：0",
                                 Format("Fx %.5f  %.5f  ", 1.0, 2.0), "FxDivJx "));
  }
}

TEST(TNewtonIteratorPro, NoFunctionAtAllIsAFailure) {
  TNewtonIteratorPro iterator(1, 1, nullptr);
  TDoubleList x = {1};
  EXPECT_FALSE(iterator.CalcParam(&x));
  EXPECT_FALSE(iterator.JacobFunc()(x));
}

TEST(TNewtonIteratorPro, WhatTheFunctionRaisesBesideTheGuessPassesThrough) {
  TNewtonIteratorPro iterator(1, 1, [](const TDoubleList& X) {
    if (X[0] > 2) throw std::domain_error("outside");
    return TDoubleList{X[0]};
  });
  TDoubleList x = {2};
  EXPECT_THROW(iterator.CalcParam(&x), std::domain_error);
  EXPECT_EQ(x[0], 2);
}

TEST(TNewtonIteratorPro, MovesWithItsFunction) {
  TNewtonIteratorPro from(1, 1, SquareIsTwo);
  TNewtonIteratorPro to = std::move(from);
  TDoubleList x = {1};
  EXPECT_TRUE(to.CalcParam(&x));
  EXPECT_NEAR(x[0], std::numbers::sqrt2, 1e-5);
  EXPECT_NEAR((*to.JacobFunc()(TDoubleList{3}))[0], 6, 1e-6);
}

}  // namespace
}  // namespace ZORBase
