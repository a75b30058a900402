// From measured poses to evenly spaced ones, 1 mm apart along the curve through them. examples/c and examples/pascal hold
// the same program in C and in Pascal; all three print the same.
#include <ZORBase/ZORBase.h>

#include <iostream>
#include <vector>

using namespace ZORBase;

namespace {

constexpr double kStep = 1.0;          // mm
constexpr std::size_t kShown = 1'000;  // every so many steps one is printed

void Run() {
  TPoint6DList measured;
  measured.LoadFromFile("data/swept-plane.poses.txt");
  TNurbs6D curve;
  if (!curve.CreateCross(&measured, mCentripetal)) RaiseGeneralError("A curve needs at least four poses");
  std::cout << Format1033("%d poses, a curve of %.6f mm\n", measured.Count(), curve.CurveLength());

  std::vector<double> lengths(static_cast<std::size_t>(curve.CurveLength() / kStep) + 1);
  for (std::size_t i = 0; i < lengths.size(); ++i) lengths[i] = static_cast<double>(i) * kStep;
  std::vector<double> params(lengths.size());
  curve.ParamOfLength(lengths, params);
  std::vector<TPoint6D> poses(lengths.size());
  curve.EvalPoints(params, poses);

  for (std::size_t i = 0; i < poses.size(); i += kShown) {
    std::cout << Format1033("at %d mm  %s\n", i, poses[i].ToString1033(6));
  }
  const TPoint6D probe = TPoint6D::Create(0, 0, 0, 0, 0, 1);
  const auto closest = curve.ClosestPoint(probe);
  std::cout << Format1033("closest to the origin: %.6f away, at %.6f mm\n", closest.Distance,
                          curve.LengthOfParam(0, closest.Param));
}

}  // namespace

int main() {
  const TPackageSession session;
  try {
    Run();
  } catch (const TGeneralError& Error) {
    std::cerr << Error.what() << "\n";
    return 1;
  }
}
