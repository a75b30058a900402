#include <ZORBase/ZORGeometry/CADTypesEuler.h>

#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase::CADTypesEuler {
namespace {

constinit TModuleGuard Guard;

void FillConstants() {
  TEulerAng::FillConstants();
  TEulerPoint::FillConstants();
}

}  // namespace

void initialization() { Guard.StartUp(&FillConstants); }
void Finalization() { Guard.ShutDown(); }

}  // namespace ZORBase::CADTypesEuler
