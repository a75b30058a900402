#include <ZORBase/ZORBaseAlg/LowPassFilter/TLowPassWindowFilter.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/kernels/FilterSum.h>

#include <cmath>
#include <numbers>
#include <string>

namespace ZORBase {

void TLowPassWindowFilter::CalN() {
  if (FOrder < 1) return TBaseLowPassFilter::CalN();
  if (FOrder > kMaxSampleCount) {
    RaiseGeneralError("Error TLowPassWindowFilter.CalN: the order " + std::to_string(FOrder) + " is above " +
                      std::to_string(kMaxSampleCount));
  }
  FN = FOrder % 2 == 1 ? FOrder : FOrder + 1;
}

void TLowPassWindowFilter::SetEff() {
  using std::numbers::pi;
  for (int i = 0; i < DesignedCount(); ++i) {
    const int d = FromMiddle(i);
    const double ideal = d == 0 ? 2.0 * FFc / FFs : std::sin(2.0 * d * pi * FFc / FFs) / (d * pi);
    FCoeff[static_cast<std::size_t>(i)] = GetWindowEff(i) * ideal;
  }
}

void TLowPassWindowFilter::Clear(double initValue) {
  TBaseLowPassFilter::Clear(initValue);
  SetFilterOrder(0);
}

double TLowPassWindowFilter::Filt(double value) {
  RequireDesign();
  FLastOut = WeightedSum(FCoeff.data(), Push(value), DesignedCount());
  return FLastOut;
}

void TLowPassWindowFilter::Filt(std::span<const double> Values, std::span<double> Results) {
  FiltInBlocks(Values, Results, [this](const double* Window, std::span<double> Outputs) {
    WeightedSums(FCoeff.data(), Window, DesignedCount(), Outputs);
  });
}

}  // namespace ZORBase
