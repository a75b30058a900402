#include <ZORBase/ZORBaseAlg/uHermiteInterpolater.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::uHermiteInterpolater {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::uHermiteInterpolater
