// uHermiteInterpolater: a function known at samples, and cubic pieces between them.
//   THermiteInterpolater   y(x) through a table of samples; open, or one period of a periodic function
#pragma once

#include <ZORBase/ZORBaseAlg/uHermiteInterpolater/THermiteInterpolater.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::uHermiteInterpolater {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::uHermiteInterpolater
