// SysInit: the package's own start-up, before that of every other module. It has no work of its own to do then.
#pragma once

#include <ZORBase/common/Export.h>

namespace ZORBase::SysInit {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::SysInit
