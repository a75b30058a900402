#include <ZORBase/ZORGeometry/CADTypes6D.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::CADTypes6D {
namespace {
constinit TModuleGuard Guard;
}

void initialization() { Guard.StartUp(&TPoint6D::FillConstants); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::CADTypes6D
