#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::uWcsPtInterpolator {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::uWcsPtInterpolator
