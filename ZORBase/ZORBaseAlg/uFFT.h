// uFFT: start-up and shut-down of the module, which has no work of its own to do then.
#pragma once

#include <ZORBase/common/Export.h>

namespace ZORBase::uFFT {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::uFFT
