#include <ZORBase/ZORGeometry/CADTypesEuler.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::CADTypesEuler {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::CADTypesEuler
