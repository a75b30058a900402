// Fits a curve through poses on a quarter circle of radius 100 and measures it. Twice as many steps from pose to pose leave an
// eighth of the error in length.
#include <ZORBase/ZORBase.h>

#include <cmath>
#include <iostream>
#include <numbers>

using namespace ZORBase;

namespace {

constexpr double kRadius = 100.0;
constexpr double kArcLength = kRadius * std::numbers::pi / 2;

TPoint6DList QuarterCircle(int Steps) {
  TPoint6DList poses;
  for (int i = 0; i <= Steps; ++i) {
    const double angle = i * std::numbers::pi / (2 * Steps);
    poses.Add(kRadius * std::cos(angle), kRadius * std::sin(angle), 0);  // the direction is +Z
  }
  return poses;
}

}  // namespace

int main() {
  const TPackageSession session;

  const TPoint6DList poses = QuarterCircle(8);
  TNurbs6D curve;
  if (!curve.CreateCross(&poses, mChord)) return 1;  // fewer than four poses
  std::cout << "start     " << curve.EvalPoint(0.0).ToString1033(3) << "\n"
            << "half way  " << curve.EvalPoint(0.5).ToString1033(3) << "\n"
            << "end       " << curve.EvalPoint(1.0).ToString1033(3) << "\n";

  for (const int steps : {8, 16, 32, 64}) {
    const TPoint6DList finer = QuarterCircle(steps);
    curve.CreateCross(&finer, mChord);
    const double missing = kArcLength - curve.CurveLength();
    std::cout << Format1033("%d poses: %.4f long, %.5f too short\n", finer.Count(), curve.CurveLength(), missing);
  }
}
