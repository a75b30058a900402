#include <ZORBase/ZORBaseAlg/uBezierHelper.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::uBezierHelper {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::uBezierHelper
