// LowPassFilter: smoothing a stream of samples with filters of finite impulse response.
//   TBaseLowPassFilter      frequencies, design, ring of samples, attenuation; resampling of irregularly timed samples
//   TLowPassWindowFilter    the ideal low pass cut to N samples by a window; its base class
//   THammingLowPassFilter, TRectangleLowPassFilter, TBlackmanLowPassFilter   the windows
//   TAverageLowPassFilter   the moving average
//   TAttenuationAndF        a row of the attenuation table
//
//   THammingLowPassFilter filter;
//   filter.SetFsample(1000);      // samples per second
//   filter.SetFcenter(50);        // cut-off frequency in the same unit
//   filter.Initialize(0);         // designs it
//   y = filter.Filt(x);           // for every sample
#pragma once

#include <ZORBase/ZORBaseAlg/LowPassFilter/TAttenuationAndF.h>
#include <ZORBase/ZORBaseAlg/LowPassFilter/TAverageLowPassFilter.h>
#include <ZORBase/ZORBaseAlg/LowPassFilter/TBaseLowPassFilter.h>
#include <ZORBase/ZORBaseAlg/LowPassFilter/TLowPassWindowFilter.h>
#include <ZORBase/ZORBaseAlg/LowPassFilter/TWindowFilters.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::LowPassFilter {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::LowPassFilter
