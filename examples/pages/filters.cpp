// The snippets of the page about low-pass filters.
#include <ZORBase/ZORBase.h>

#include <array>
#include <iostream>

using namespace ZORBase;

int main() {
  //! [design]
  THammingLowPassFilter filter;
  filter.SetFsample(1000);  // Hz
  filter.SetFcenter(50);
  filter.Initialize(0);
  std::cout << Format1033("%d coefficients, delay %d samples\n", filter.SampleCount(), (filter.SampleCount() - 1) / 2);
  for (const double f : {0.0, 25.0, 50.0, 100.0, 200.0}) {
    std::cout << Format1033("%.0f Hz: %.4f\n", f, filter.CalcAttenByF(f));
  }
  //! [design]

  //! [step]
  double output = 0.0;
  for (int i = 0; i < filter.SampleCount(); ++i) output = filter.Filt(1.0);
  std::cout << Format1033("a step is through after %d samples: %.6f\n", filter.SampleCount(), output);
  //! [step]

  //! [times]
  filter.Clear(0.0);
  std::array<double, 8> outputs{};
  const int count = filter.RandomTimeFilt(1.0, 0.0035, outputs);  // 3.5 ms after the last sample
  std::cout << Format1033("%d outputs are due, %.1f ms are left\n", count, 1000 * filter.cutoffTime());
  //! [times]
}
