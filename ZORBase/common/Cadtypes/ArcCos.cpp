#include <ZORBase/common/Cadtypes/ArcCos.h>

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

namespace ZORBase {

void RaiseNoCosine(double Value) {
  RaiseGeneralError(Format1033("Arc cosine of a value outside [-1, 1]: %.17f", Value));
}

}  // namespace ZORBase
