#include <ZORBase/ZORBaseAlg/uSVD.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::uSVD {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::uSVD
