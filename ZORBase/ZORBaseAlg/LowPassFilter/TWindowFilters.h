#pragma once

#include <ZORBase/ZORBaseAlg/LowPassFilter/TLowPassWindowFilter.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

// In all windows d = i - (N-1) div 2. The middle of a window is 1 for every N, also for N = 1.

/// 0.54 + 0.46 cos(2 pi d / (N-1)).
class ZORBASE_API THammingLowPassFilter : public TLowPassWindowFilter {
 public:
  double GetWindowEff(int i) const override;
};

/// 1 throughout.
class ZORBASE_API TRectangleLowPassFilter : public TLowPassWindowFilter {
 public:
  double GetWindowEff(int i) const override;
};

/// 0.42 + 0.5 cos(2 pi d / (N-1)) + 0.08 cos(4 pi d / N). The second cosine is divided by N and not by N-1, on purpose: the
/// ends of the window are a little below 0.
class ZORBASE_API TBlackmanLowPassFilter : public TLowPassWindowFilter {
 public:
  double GetWindowEff(int i) const override;
};

}  // namespace ZORBase
