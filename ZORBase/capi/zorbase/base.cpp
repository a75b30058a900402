#include <ZORBase/Package.h>
#include <ZORBase/Version.h>
#include <ZORBase/capi/Call.h>
#include <ZORBase/common/uZORCommon.h>

namespace capi = ZORBase::capi;

const char* zorbase_last_error() noexcept { return capi::CurrentError(); }

int32_t zorbase_interface_version() noexcept { return ZORBASE_INTERFACE_VERSION; }

const char* zorbase_version() noexcept { return ZORBase::LibraryVersion(); }

zorbase_status zorbase_start() noexcept { return capi::Call(__func__, ZORBase::Initialize); }

zorbase_status zorbase_stop() noexcept { return capi::Call(__func__, ZORBase::Finalize); }

zorbase_status zorbase_set_log_enabled(int32_t enabled) noexcept {
  return capi::Call(__func__, [&] { ZORBase::SetZORLogEnable(enabled != 0); });
}
