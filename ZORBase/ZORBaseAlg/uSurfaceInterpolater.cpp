#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::uSurfaceInterpolater {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::uSurfaceInterpolater
