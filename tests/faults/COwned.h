// COwned: objects of the C interface for the tests of faults.
#pragma once

#include <ZORBase/capi/zorbase.h>

#include "faults/Scenarios.h"

namespace ZORBase::Test {

/// \throws TStatusError for a call that did not go well.
inline void Ask(zorbase_status Status) {
  if (Status != ZORBASE_OK) throw TStatusError{Status};
}

/// An object of the interface, made by the run that needs it first.
template <class T, zorbase_status (*Create)(T**), void (*Destroy)(T*)>
class TOwned {
 public:
  TOwned() = default;
  ~TOwned() { Destroy(FObject); }
  TOwned(const TOwned&) = delete;
  TOwned& operator=(const TOwned&) = delete;
  T* Get() {
    if (!FObject) Ask(Create(&FObject));
    return FObject;
  }

 private:
  T* FObject = nullptr;
};
using TOwnedPoses = TOwned<zorbase_poses, &zorbase_poses_create, &zorbase_poses_destroy>;
using TOwnedCurve = TOwned<zorbase_curve, &zorbase_curve_create, &zorbase_curve_destroy>;
using TOwnedSurface = TOwned<zorbase_surface, &zorbase_surface_create, &zorbase_surface_destroy>;
using TOwnedSpectrum = TOwned<zorbase_spectrum, &zorbase_spectrum_create, &zorbase_spectrum_destroy>;

}  // namespace ZORBase::Test
