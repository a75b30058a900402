#include <ZORBase/common/Cadtypes/ArcCos.h>

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <cmath>

namespace ZORBase {

double ArcCos(double Value) {
  const bool isCosine = Value >= -1.0 && Value <= 1.0;
  if (!isCosine) RaiseGeneralError(Format1033("Arc cosine of a value outside [-1, 1]: %.17f", Value));
  return std::acos(Value);
}

}  // namespace ZORBase
