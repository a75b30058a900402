// NistRegression: the certified problems as systems for the Newton iterators. The residuals are model minus observation.
#pragma once

#include <ZORBase/common/BaseServices.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <span>
#include <vector>

#include "NistProblems.h"

namespace ZORBase::Test {

/// One of the two published starting points, or the certified values rounded to two digits.
enum TNistStart { Start1, Start2, TwoDigits };

/// Where undamped steps get through from: the second, nearer start, unless only the first one leads there, or neither does; then
/// from the certified values rounded to two digits.
struct TNistCase {
  const char* Name;
  TNistStart From;
};

inline constexpr TNistCase kNistCases[] = {
    {"Bennett5", Start1}, {"BoxBOD", Start2},   {"Chwirut1", Start1},  {"Chwirut2", Start1}, {"DanWood", Start1},
    {"ENSO", Start1},     {"Eckerle4", Start2}, {"Gauss1", Start1},    {"Gauss2", Start1},   {"Gauss3", Start1},
    {"Hahn1", Start2},    {"Kirby2", Start1},   {"Lanczos1", Start1},  {"Lanczos2", Start1}, {"Lanczos3", Start1},
    {"MGH09", TwoDigits}, {"MGH10", Start2},    {"MGH17", Start2},     {"Misra1a", Start1},  {"Misra1b", Start1},
    {"Misra1c", Start1},  {"Misra1d", Start1},  {"Nelson", TwoDigits}, {"Rat42", Start2},    {"Rat43", Start2},
    {"Roszman1", Start1}, {"Thurber", Start2},
};

/// One in the last of the Digits significant digits of Value.
inline double UnitOfDigit(double Value, int Digits) {
  return std::pow(10.0, std::floor(std::log10(std::fabs(Value))) + 1 - Digits);
}

inline std::vector<double> Rounded(const std::vector<double>& Values, int Digits) {
  std::vector<double> rounded;
  for (const double value : Values) {
    const double unit = UnitOfDigit(value, Digits);
    rounded.push_back(std::round(value / unit) * unit);
  }
  return rounded;
}

/// The unknowns are the parameters in units of their start, so that all of them are of the order of 1. Without that, parameters
/// between 1e-7 and 1e3 spoil the condition of the steps.
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

  /// Equation after equation.
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

  /// Every unknown is to settle within this part of itself.
  TDoubleList Tolerances(double Relative) const {
    TDoubleList tolerances;
    for (std::size_t i = 0; i < FUnits.size(); ++i)
      tolerances.Add(Relative * std::fabs(FData.Certified[i] / FUnits[i]));
    return tolerances;
  }

  /// The number of significant digits that all parameters share with the certified ones.
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

}  // namespace ZORBase::Test
