// Numbers: the constants that tests share, and how often they try.
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

// A build that checks itself takes some ten times longer.
#if defined(NDEBUG) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
inline constexpr bool kIsSlowBuild = false;
#else
inline constexpr bool kIsSlowBuild = true;
#endif

// How many of so many seeded cases to try. What a slow build looks for besides shows in a tenth of them.
constexpr int CasesOf(int Count) { return kIsSlowBuild ? Count / 10 : Count; }

}  // namespace ZORBase::Test

namespace ZORBase {
using Test::CasesOf, Test::kEpsilon, Test::kInfinity, Test::kIsSlowBuild, Test::kLargestInt, Test::kNaN, Test::kPi,
    Test::kSmallestInt;
}
