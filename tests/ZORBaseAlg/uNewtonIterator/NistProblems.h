// The problems of non-linear regression that NIST has certified: models, data, certified values (tests/data/nist/README.md).
#pragma once

#include "TDual.h"

#include <functional>
#include <span>
#include <string>
#include <vector>

namespace ZORBase::Test {

/// A file of tests/data/nist.
struct TNistData {
  std::vector<double> Start1;
  std::vector<double> Start2;
  std::vector<double> Certified;
  double ResidualSum = 0.0;               ///< the certified residual sum of squares
  std::vector<std::vector<double>> Rows;  ///< the response, then its predictors
};

TNistData ReadNistData(const std::string& Name);

/// A model y(b; x), for numbers and for numbers with derivatives.
struct TNistModel {
  std::function<double(std::span<const double>, std::span<const double>)> Value;
  std::function<TDual(std::span<const TDual>, std::span<const double>)> Dual;
  bool IsLogResponse = false;  ///< the model is of the logarithm of the response
};

TNistModel NistModel(const std::string& Name);

}  // namespace ZORBase::Test
