// Numbers: the constants that tests share.
#pragma once

#include <limits>
#include <numbers>

namespace ZORBase::Test {

inline constexpr double kPi = std::numbers::pi;
inline constexpr double kInfinity = std::numeric_limits<double>::infinity();
inline constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
inline constexpr double kEpsilon = std::numeric_limits<double>::epsilon();
inline constexpr int kLargestInt = std::numeric_limits<int>::max();
inline constexpr int kSmallestInt = std::numeric_limits<int>::min();

}  // namespace ZORBase::Test

namespace ZORBase {
using Test::kEpsilon, Test::kInfinity, Test::kLargestInt, Test::kNaN, Test::kPi, Test::kSmallestInt;
}
