#pragma once

#include <numbers>

namespace ZORBase {

/// Degrees to radians. One rounded factor and one product: 90, 180 and 360 degrees give the doubles nearest to pi / 2,
/// pi and 2 pi, and back.
constexpr double DegToRad(double Degrees) { return Degrees * (std::numbers::pi / 180.0); }

/// Radians to degrees.
constexpr double RadToDeg(double Radians) { return Radians * (180.0 / std::numbers::pi); }

}  // namespace ZORBase
