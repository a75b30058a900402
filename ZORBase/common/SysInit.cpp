#include <ZORBase/common/SysInit.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::SysInit {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::SysInit
