#include <ZORBase/ZORBaseAlg/LowPassFilter/TWindowFilters.h>

#include <cmath>
#include <numbers>

namespace ZORBase {

using std::numbers::pi;

double THammingLowPassFilter::GetWindowEff(int i) const {
  const int d = FromMiddle(i);
  if (d == 0) return 1.0;
  return 0.54 + 0.46 * std::cos(2.0 * pi * d / (WindowCount() - 1));
}

double TRectangleLowPassFilter::GetWindowEff(int) const { return 1.0; }

double TBlackmanLowPassFilter::GetWindowEff(int i) const {
  const int d = FromMiddle(i);
  if (d == 0) return 1.0;
  const int n = WindowCount();
  return 0.42 + 0.5 * std::cos(2.0 * pi * d / (n - 1)) + 0.08 * std::cos(4.0 * pi * d / n);
}

}  // namespace ZORBase
