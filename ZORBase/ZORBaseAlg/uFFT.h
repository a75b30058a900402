// uFFT: the spectrum of a sampled signal.
//   TComplex   complex numbers, with the argument in [0, 2 pi)
//   TFFT       single-sided spectrum of a real signal: CalFFT, then getAmp, getPhase, getFrq for each bin
#pragma once

#include <ZORBase/ZORBaseAlg/uFFT/TComplex.h>
#include <ZORBase/ZORBaseAlg/uFFT/TFFT.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::uFFT {
/// Start-up and shut-down of the module, which has no work of its own to do then.
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::uFFT
