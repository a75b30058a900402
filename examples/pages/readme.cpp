// The first piece of code in README.md, and the first in the documentation.
#include <ZORBase/ZORBase.h>

#include <cmath>
#include <iostream>
#include <numbers>

using namespace ZORBase;
using std::numbers::pi;

int main() {
  const TPackageSession session;
  std::cout.precision(6);
  //! [readme]
  TPoint6DList poses;  // nine poses on a quarter circle of radius 100
  for (int i = 0; i <= 8; ++i) poses.Add(100 * std::cos(i * pi / 16), 100 * std::sin(i * pi / 16), 0);

  TNurbs6D curve;
  if (curve.CreateCross(&poses, mChord)) {
    std::cout << curve.CurveLength() << "\n" << curve.EvalPoint(0.5).ToString1033(3) << "\n";
  }
  //! [readme]
}
