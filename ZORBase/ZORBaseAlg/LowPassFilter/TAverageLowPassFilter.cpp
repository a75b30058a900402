#include <ZORBase/ZORBaseAlg/LowPassFilter/TAverageLowPassFilter.h>

#include <ZORBase/kernels/FilterSum.h>

#include <algorithm>

namespace ZORBase {

void TAverageLowPassFilter::SetEff() { std::ranges::fill(FCoeff, 1.0 / DesignedCount()); }

double TAverageLowPassFilter::Filt(double value) {
  RequireDesign();
  FLastOut = PlainSum(Push(value), DesignedCount()) / DesignedCount();
  return FLastOut;
}

void TAverageLowPassFilter::Filt(std::span<const double> Values, std::span<double> Results) {
  FiltInBlocks(Values, Results, [this](const double* Window, std::span<double> Outputs) {
    PlainSums(Window, DesignedCount(), Outputs);
    for (double& output : Outputs) output /= DesignedCount();
  });
}

}  // namespace ZORBase
