#pragma once

#include <ZORBase/ZORBaseAlg/LowPassFilter/TBaseLowPassFilter.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

/// The moving average over the last N samples: their sum divided by N. The coefficients, all 1/N, only serve the attenuation.
class ZORBASE_API TAverageLowPassFilter : public TBaseLowPassFilter {
 public:
  /// N as it stands, -1 while it is unknown.
  int GetN() const { return FN; }

  void SetEff() override;
  double Filt(double value) override;
  void Filt(std::span<const double> Values, std::span<double> Results) override;
};

}  // namespace ZORBase
