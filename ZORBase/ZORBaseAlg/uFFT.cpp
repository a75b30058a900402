#include <ZORBase/ZORBaseAlg/uFFT.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::uFFT {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::uFFT
