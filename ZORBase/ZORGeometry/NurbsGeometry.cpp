#include <ZORBase/ZORGeometry/NurbsGeometry.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::NurbsGeometry {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::NurbsGeometry
