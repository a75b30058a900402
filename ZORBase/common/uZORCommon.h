// uZORCommon: the library's logger and the guarded division.
//   ZORLog, SetZORLogEnable, TCodeSiteLogger   diagnostics, for the host
//   SafeDiv                                    a division that saturates instead of dividing by next to nothing
//   DebuggerAttached                           whether the process runs under a debugger
#pragma once

#include <ZORBase/common/Export.h>
#include <ZORBase/common/uZORCommon/DebuggerAttached.h>
#include <ZORBase/common/uZORCommon/TCodeSiteLogger.h>

namespace ZORBase {

/// \return the one logger of the library, from the start-up of uZORCommon to its shut-down; a null pointer outside of
///         that. It stays the library's. Safe from any thread.
ZORBASE_API TCodeSiteLogger* ZORLog();

/// Switches the logger on or off. \throws the general error while the library is not started.
ZORBASE_API void SetZORLogEnable(bool Value);

/// A division that never divides by a denominator smaller than the tolerance. With e the larger of Tolerance and 1e-7:
///   |Denominator| >= e                     Numerator / Denominator
///   |Denominator| < e, |Numerator| < e     0: next to nothing over next to nothing counts as zero
///   otherwise                              1 / e with the sign of the true quotient, of Numerator where Denominator is 0
/// \return a finite number for finite arguments of moderate size; NaN where an argument that decides is NaN.
ZORBASE_API double SafeDiv(double Numerator, double Denominator, double Tolerance);

namespace uZORCommon {
/// Creates the logger: category "ZORLog", switched on exactly when a debugger is attached.
ZORBASE_API void initialization();
/// Frees the logger.
ZORBASE_API void Finalization();
}  // namespace uZORCommon

}  // namespace ZORBase
