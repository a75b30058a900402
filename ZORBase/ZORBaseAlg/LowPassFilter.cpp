#include <ZORBase/ZORBaseAlg/LowPassFilter.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::LowPassFilter {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::LowPassFilter
