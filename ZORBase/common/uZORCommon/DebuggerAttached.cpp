#include <ZORBase/common/uZORCommon/DebuggerAttached.h>

#if defined(_WIN32)

#include <windows.h>

namespace ZORBase {
bool DebuggerAttached() { return IsDebuggerPresent() != 0; }
}  // namespace ZORBase

#elif defined(__APPLE__)

#include <sys/sysctl.h>
#include <sys/types.h>
#include <unistd.h>

namespace ZORBase {

bool DebuggerAttached() {
  int query[] = {CTL_KERN, KERN_PROC, KERN_PROC_PID, getpid()};
  kinfo_proc process{};
  size_t size = sizeof process;
  if (sysctl(query, 4, &process, &size, nullptr, 0) != 0) return false;
  return (process.kp_proc.p_flag & P_TRACED) != 0;
}

}  // namespace ZORBase

#elif defined(__linux__)

#include <fstream>
#include <string>

namespace ZORBase {

bool DebuggerAttached() {
  // The kernel names the process that traces this one, 0 for none.
  std::ifstream status("/proc/self/status");
  for (std::string key; status >> key;) {
    if (key == "TracerPid:") {
      int tracer = 0;
      return status >> tracer && tracer != 0;
    }
  }
  return false;
}

}  // namespace ZORBase

#else

namespace ZORBase {
bool DebuggerAttached() { return false; }
}  // namespace ZORBase

#endif
