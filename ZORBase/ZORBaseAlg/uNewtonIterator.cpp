#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::uNewtonIterator {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::uNewtonIterator
