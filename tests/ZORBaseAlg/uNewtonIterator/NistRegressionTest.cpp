// Non-linear regression as an over-determined system: the residuals are model minus observation. NIST certifies the parameters
// to 11 significant digits, and the residual sum of squares.
#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>

#include "NewtonTestSupport.h"
#include "NistProblems.h"
#include "support/TestSupport.h"

#include <algorithm>
#include <functional>

namespace ZORBase::Test {
namespace {

enum TStart { Start1, Start2, TwoDigits };

// Where undamped steps get through from: the second, nearer start, unless only the first one leads there, or neither does; then
// from the certified values rounded to two digits.
struct TNistCase {
  const char* Name;
  TStart From;
};

constexpr TNistCase kCases[] = {
    {"Bennett5", Start1}, {"BoxBOD", Start2},   {"Chwirut1", Start1},  {"Chwirut2", Start1}, {"DanWood", Start1},
    {"ENSO", Start1},     {"Eckerle4", Start2}, {"Gauss1", Start1},    {"Gauss2", Start1},   {"Gauss3", Start1},
    {"Hahn1", Start2},    {"Kirby2", Start1},   {"Lanczos1", Start1},  {"Lanczos2", Start1}, {"Lanczos3", Start1},
    {"MGH09", TwoDigits}, {"MGH10", Start2},    {"MGH17", Start2},     {"Misra1a", Start1},  {"Misra1b", Start1},
    {"Misra1c", Start1},  {"Misra1d", Start1},  {"Nelson", TwoDigits}, {"Rat42", Start2},    {"Rat43", Start2},
    {"Roszman1", Start1}, {"Thurber", Start2},
};

// One in the last of the Digits significant digits of Value.
double UnitOfDigit(double Value, int Digits) {
  return std::pow(10.0, std::floor(std::log10(std::fabs(Value))) + 1 - Digits);
}

std::vector<double> Rounded(const std::vector<double>& Values, int Digits) {
  std::vector<double> rounded;
  for (const double value : Values) {
    const double unit = UnitOfDigit(value, Digits);
    rounded.push_back(std::round(value / unit) * unit);
  }
  return rounded;
}

// The unknowns are the parameters in units of their start, so that all of them are of the order of 1. Without that, parameters
// between 1e-7 and 1e3 spoil the condition of the steps.
class TRegression {
 public:
  explicit TRegression(const TNistCase& Case) : FModel(NistModel(Case.Name)), FData(ReadNistData(Case.Name)) {
    FUnits = FData.Start1;
    if (Case.From == Start2) FUnits = FData.Start2;
    if (Case.From == TwoDigits) FUnits = Rounded(FData.Certified, 2);
  }

  const TNistData& Data() const { return FData; }
  int ParamNum() const { return static_cast<int>(FUnits.size()); }
  int EquationNum() const { return static_cast<int>(FData.Rows.size()); }

  TDoubleList Start() const { return TDoubleList(std::vector<double>(FUnits.size(), 1.0)); }

  std::vector<double> Params(const TDoubleList& X) const {
    std::vector<double> params = FUnits;
    std::transform(X.begin(), X.end(), params.begin(), params.begin(), std::multiplies<>());
    return params;
  }

  std::vector<double> ResidualsAt(const std::vector<double>& Params) const {
    std::vector<double> residuals;
    for (const auto& row : FData.Rows) {
      const double response = FModel.IsLogResponse ? std::log(row[0]) : row[0];
      residuals.push_back(FModel.Value(Params, std::span(row).subspan(1)) - response);
    }
    return residuals;
  }

  TDoubleList Residuals(const TDoubleList& X) const { return TDoubleList(ResidualsAt(Params(X))); }

  // Equation after equation.
  TDoubleList Jacobian(const TDoubleList& X) const {
    std::vector<TDual> params;
    for (const double param : Params(X)) params.push_back(TDual::Param(param, params.size()));
    TDoubleList jacobian;
    for (const auto& row : FData.Rows) {
      const TDual value = FModel.Dual(params, std::span(row).subspan(1));
      for (std::size_t i = 0; i < FUnits.size(); ++i) jacobian.Add(value.By[i] * FUnits[i]);
    }
    return jacobian;
  }

  // Every unknown is to settle within this part of itself.
  TDoubleList Tolerances(double Relative) const {
    TDoubleList tolerances;
    for (std::size_t i = 0; i < FUnits.size(); ++i)
      tolerances.Add(Relative * std::fabs(FData.Certified[i] / FUnits[i]));
    return tolerances;
  }

  // The number of significant digits that all parameters share with the certified ones.
  double MatchingDigits(const TDoubleList& X) const {
    const std::vector<double> params = Params(X);
    double worst = 1e-16;
    for (std::size_t i = 0; i < params.size(); ++i) {
      worst = std::max(worst, std::fabs(params[i] - FData.Certified[i]) / std::fabs(FData.Certified[i]));
    }
    return -std::log10(worst);
  }

 private:
  TNistModel FModel;
  TNistData FData;
  std::vector<double> FUnits;
};

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

INSTANTIATE_TEST_SUITE_P(Strd, NistRegression, testing::ValuesIn(kCases),
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

INSTANTIATE_TEST_SUITE_P(Strd, NistRegressionByDifferences, testing::ValuesIn(kCases),
                         [](const auto& Info) { return std::string(Info.param.Name); });

}  // namespace
}  // namespace ZORBase::Test
