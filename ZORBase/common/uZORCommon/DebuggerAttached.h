#pragma once

#include <ZORBase/common/Export.h>

namespace ZORBase {

/// \return whether a debugger is attached to the process at this moment: asked of the kernel on Linux and macOS and of
///         IsDebuggerPresent on Windows; false elsewhere.
ZORBASE_API bool DebuggerAttached();

}  // namespace ZORBase
