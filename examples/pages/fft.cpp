// The snippets of the page about the Fourier transform.
#include <ZORBase/ZORBase.h>

#include <cmath>
#include <iostream>
#include <numbers>
#include <vector>

using namespace ZORBase;

int main() {
  //! [spectrum]
  constexpr double dt = 1.0 / 64;  // 64 samples a second
  std::vector<double> signal;
  for (int i = 0; i < 64; ++i) signal.push_back(2.0 + 3.0 * std::cos(2 * std::numbers::pi * 5 * i * dt + DegToRad(90)));

  TFFT fft;
  const int bins = fft.CalFFT(signal, 64, dt);
  std::cout << bins << " bins\n";
  for (const int bin : {0, 5}) {
    std::cout << Format1033("%.0f Hz: amplitude %.3f\n", fft.getFrq(bin), fft.getAmp(bin));
  }
  std::cout << Format1033("phase at 5 Hz: %.1f degrees\n", fft.getPhase(5));
  //! [spectrum]
}
