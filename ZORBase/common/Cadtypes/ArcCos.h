#pragma once

#include <ZORBase/common/Export.h>

namespace ZORBase {

/// \return the angle in radians, 0 to pi, whose cosine is Value.
/// \throws the general error for a Value outside [-1, 1] (one unit in the last place is enough) or not a number.
ZORBASE_API double ArcCos(double Value);

}  // namespace ZORBase
