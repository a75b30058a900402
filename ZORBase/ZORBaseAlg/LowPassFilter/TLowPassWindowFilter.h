#pragma once

#include <ZORBase/ZORBaseAlg/LowPassFilter/TBaseLowPassFilter.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

/// A filter of the window method: the impulse response of the ideal low pass, cut to N samples and shaped by a window.
///
/// Source of the method: A. V. Oppenheim, R. W. Schafer, "Discrete-Time Signal Processing", design by windowing.
class ZORBASE_API TLowPassWindowFilter : public TBaseLowPassFilter {
 public:
  /// Sets the length of the next design: order below 1 leaves it to the cut-off frequency; an even order is raised by 1. N
  /// stays until CalN is called.
  void SetFilterOrder(int order) { FOrder = order; }
  int order() const { return FOrder; }  ///< the length asked for; below 1 where the cut-off frequency decides

  /// N from the order, or the base rule for an order below 1.
  /// \throws the general error when N would be above kMaxSampleCount; N stays as it was.
  void CalN() override;

  /// With d = i - (N-1) div 2, coefficient i is GetWindowEff(i) sin(2 d pi fc/fs) / (d pi), and GetWindowEff(i) 2 fc/fs where
  /// d = 0.
  void SetEff() override;

  /// As the base; the order becomes 0 as well, so that the next CalN goes by the cut-off frequency again: intended.
  void Clear(double initValue) override;

  double Filt(double value) override;
  void Filt(std::span<const double> Values, std::span<double> Results) override;

  /// \return the window at the place i = 0..N-1; while N is unknown, that of the design in force.
  virtual double GetWindowEff(int i) const = 0;

 protected:
  /// The length that the window is for.
  int WindowCount() const { return FN > 0 ? FN : DesignedCount(); }
  /// The distance of the place i from the middle.
  int FromMiddle(int i) const { return i - (WindowCount() - 1) / 2; }

 private:
  int FOrder = 0;
};

}  // namespace ZORBase
