// What the tests of the Newton iterators share: systems to solve, and a log to read.
#pragma once

#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>

#include <cmath>
#include <string>
#include <vector>

namespace ZORBase::Test {

using TLog = std::vector<std::string>;

inline TLogProc LoggerTo(TLog& Log) {
  return [&Log](const std::string& Line) { Log.push_back(Line); };
}

/// x^2 - 2 = 0 and its derivative.
inline std::optional<TDoubleList> SquareIsTwo(const TDoubleList& X) { return TDoubleList{X[0] * X[0] - 2}; }
inline std::optional<TDoubleList> SquareIsTwoJacobian(const TDoubleList& X) { return TDoubleList{2 * X[0]}; }

/// x + y = 3, x - y = 1, solved by (2, 1).
inline std::optional<TDoubleList> SumAndDifference(const TDoubleList& X) {
  return TDoubleList{X[0] + X[1] - 3, X[0] - X[1] - 1};
}
inline std::optional<TDoubleList> SumAndDifferenceJacobian(const TDoubleList&) { return TDoubleList{1, 1, 1, -1}; }

inline std::optional<TDoubleList> Nothing(const TDoubleList&) { return std::nullopt; }

}  // namespace ZORBase::Test
