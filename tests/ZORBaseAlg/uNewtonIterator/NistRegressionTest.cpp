// Non-linear regression as an over-determined system: the residuals are model minus observation. NIST certifies the parameters
// to 11 significant digits, and the residual sum of squares.
#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>

#include "NewtonTestSupport.h"
#include "NistRegression.h"
#include "support/TestSupport.h"

namespace ZORBase::Test {
namespace {

class NistRegression : public testing::TestWithParam<TNistCase> {};

// Independent of the iterator: model, data and certified values belong together.
TEST_P(NistRegression, TheCertifiedValuesGiveTheCertifiedResidualSum) {
  const TRegression regression(GetParam());
  const double certified = regression.Data().ResidualSum;
  double sum = 0;
  for (const double residual : regression.ResidualsAt(regression.Data().Certified)) sum += residual * residual;
  // The sum of Lanczos1 is that of rounding 14 digits; parameters of 11 digits cannot show it.
  const double tolerance = GetParam().Name == std::string("Lanczos1") ? 1e-19 : 2e-10 * certified;
  EXPECT_NEAR(sum, certified, tolerance);
}

TEST_P(NistRegression, EveryCertifiedDigitIsFound) {
  const TRegression regression(GetParam());
  TNewtonIterator iterator(
      regression.ParamNum(), regression.EquationNum(), [&](const TDoubleList& X) { return regression.Residuals(X); },
      [&](const TDoubleList& X) { return regression.Jacobian(X); }, true);
  TLog log;
  iterator.SetLogger(LoggerTo(log));
  iterator.SetConvergeTor(regression.Tolerances(1e-12));
  TDoubleList x = regression.Start();
  ASSERT_TRUE(iterator.CalcParam(&x));
  EXPECT_THAT(log, testing::Not(testing::Contains("CheckErr Exceed Max IterNum")));
  RecordProperty("MatchingDigits", Format1033("%.1f", regression.MatchingDigits(x)));
  const std::vector<double> params = regression.Params(x);
  for (std::size_t i = 0; i < params.size(); ++i) {
    const double certified = regression.Data().Certified[i];
    EXPECT_NEAR(params[i], certified, UnitOfDigit(certified, 11)) << "b" << i + 1;
  }
}

INSTANTIATE_TEST_SUITE_P(Strd, NistRegression, testing::ValuesIn(kNistCases),
                         [](const auto& Info) { return std::string(Info.param.Name); });

// By differences: the step of 1e-7 leaves a relative error of about 1e-7 in the derivatives, and the condition of the problem
// takes its part of the digits.
class NistRegressionByDifferences : public testing::TestWithParam<TNistCase> {};

TEST_P(NistRegressionByDifferences, FourCertifiedDigitsAreFound) {
  const TRegression regression(GetParam());
  TNewtonIteratorPro iterator(regression.ParamNum(), regression.EquationNum(),
                              [&](const TDoubleList& X) { return regression.Residuals(X); });
  iterator.SetConvergeTor(regression.Tolerances(1e-7));
  TDoubleList x = regression.Start();
  ASSERT_TRUE(iterator.CalcParam(&x));
  RecordProperty("MatchingDigits", Format1033("%.1f", regression.MatchingDigits(x)));
  EXPECT_GE(regression.MatchingDigits(x), 4);
}

INSTANTIATE_TEST_SUITE_P(Strd, NistRegressionByDifferences, testing::ValuesIn(kNistCases),
                         [](const auto& Info) { return std::string(Info.param.Name); });

}  // namespace
}  // namespace ZORBase::Test
