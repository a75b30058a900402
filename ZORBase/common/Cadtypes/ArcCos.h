#pragma once

#include <ZORBase/common/Export.h>

#include <cmath>

namespace ZORBase {

/// \throws the general error that ArcCos raises for Value.
[[noreturn]] ZORBASE_API void RaiseNoCosine(double Value);

/// \return the angle in radians, 0 to pi, whose cosine is Value.
/// \throws the general error for a Value outside [-1, 1] (one unit in the last place is enough) or not a number.
inline double ArcCos(double Value) {
  const bool isCosine = Value >= -1.0 && Value <= 1.0;
  if (!isCosine) RaiseNoCosine(Value);
  return std::acos(Value);
}

}  // namespace ZORBase
