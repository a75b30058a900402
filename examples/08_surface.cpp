// Lays a smooth surface through the heights that a probe found at scattered places of a plate, and asks it for others.
#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>
#include <ZORBase/common/BaseServices.h>

#include <array>
#include <iostream>

using namespace ZORBase;

int main() {
  TV4Interpolator plate;
  plate.AddPointList({TPoint3D::Create(0, 0, 0.02), TPoint3D::Create(100, 0, -0.01), TPoint3D::Create(0, 60, 0.05),
                      TPoint3D::Create(100, 60, 0.01), TPoint3D::Create(50, 30, 0.11), TPoint3D::Create(20, 45, 0.08),
                      TPoint3D::Create(75, 20, 0.06)});
  plate.CalcWeights();

  std::cout << "At a sample:  " << Format1033("%.4f", plate.CalcZ(50, 30)) << "\n";
  std::cout << "Beside it:    " << Format1033("%.4f", plate.CalcZ(55, 30)) << "\n";

  // Many places at once are faster.
  std::array<TPoint2D, 6> places;
  for (std::size_t i = 0; i < places.size(); ++i) places[i] = TPoint2D::Create(20.0 * static_cast<double>(i), 30);
  std::array<double, places.size()> heights{};
  plate.CalcZ(places, heights);
  std::cout << "Along y = 30:\n";
  for (std::size_t i = 0; i < places.size(); ++i) {
    std::cout << Format1033("  x %.0f  z %.4f\n", places[i].X, heights[i]);
  }

  try {
    plate.AddPoint(10, 10, 0);
  } catch (const TGeneralError& Error) {
    std::cout << Error.what() << "\n";  // a finished surface takes no more samples
  }
}
