// Surfaces through heights. Input: two places, then sample after sample.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>

#include <array>
#include <cmath>

namespace ZORBase::Test::FuzzSurface {
namespace {
constexpr int kMostSamples = 40;
}

ZORBASE_FUZZ_TARGET(Surface) {
  const std::array places = {Input.Point2D(), Input.Point2D()};
  TList<TPoint3D> samples;
  while (samples.Count() < kMostSamples && !Input.AtEnd()) samples.Add(Input.Point3D());
  TV4Interpolator surface;
  Attempt([&] { surface.CalcZ(0, 0); });
  bool isTaken = Attempt([&] { surface.AddPointList(samples); });
  Require(isTaken || surface.SrcPt().Count() == 0, "a refused list leaves nothing");
  if (!isTaken) {
    for (const TPoint3D& sample : samples) isTaken |= Attempt([&] { surface.AddPoint(sample); });
  }
  const bool isSolved = Attempt([&] { surface.CalcWeights(); });
  std::array<double, 2> heights{};
  if (!Attempt([&] { surface.CalcZ(places, heights); })) return;
  for (std::size_t i = 0; i < places.size(); ++i) {
    const double height = surface.CalcZ(places[i].X, places[i].Y);
    Require(SameBits({&height, 1}, {&heights[i], 1}) || std::isnan(height),
            "heights are the same one by one and together");
    Require(isSolved || height == 0.0, "without weights every height is 0");
  }
}

}  // namespace ZORBase::Test::FuzzSurface
