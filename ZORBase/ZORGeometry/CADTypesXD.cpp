#include <ZORBase/ZORGeometry/CADTypesXD.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::CADTypesXD {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::CADTypesXD
