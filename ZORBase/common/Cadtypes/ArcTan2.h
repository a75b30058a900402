#pragma once

#include <cmath>

namespace ZORBase {

/// \return the angle of the vector (X, Y) in (-pi, pi]. Adding 0 clears the sign of a zero Y, which would turn pi into -pi.
inline double ArcTan2(double Y, double X) { return std::atan2(Y + 0.0, X); }

}  // namespace ZORBase
