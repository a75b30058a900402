// CurvePathsXD: paths to lay curves through, and the curves.
//   TCollected                         a curve with the segments that it delivered
//   Waves, Arc, Collinear, Grid        seeded paths: smooth, round, straight, with corners and half turns
//   Closed, Repeated, Padded           the same path closed, with points twice, in more coordinates
#pragma once

#include <ZORBase/ZORGeometry/CADTypesXD/TTWoDerivCurveXD.h>

#include "PointXDSupport.h"

#include <array>
#include <cmath>
#include <vector>

namespace ZORBase::Test {

using TPath = TList<TPointXD>;
using TSegments = std::vector<TCubicBezXD>;

constexpr std::array kDimensions = {1, 2, 3, 6, 17, 44};

/// A curve whose segments are collected.
struct TCollected {
  explicit TCollected(const TPath& Path) {
    Curve.SetRenderPath([this](const TCubicBezXD& bez) { Segments.push_back(bez); });
    Done = Curve.CreateCorss(Path);
  }
  TCollected(const TCollected&) = delete;
  TCollected& operator=(const TCollected&) = delete;
  TTWoDerivCurveXD Curve;
  TSegments Segments;
  bool Done = false;
};

/// A smooth path: in each coordinate a wave of its own, about Count / 20 of them, and steps that grow and shrink.
inline TPath Waves(TRandom& Random, int Dimension, int Count) {
  const TPointXD phase = RandomPoint(Random, Dimension, 3);
  const TPointXD pace = RandomPoint(Random, Dimension, 0.15);
  TPath path;
  for (int k = 0; k < Count; ++k) {
    const double u = k + 0.3 * std::sin(0.2 * k);
    path.Add(PointBy(Dimension, [&](int i) {
      const auto index = static_cast<std::size_t>(i);
      return i == 0 ? u : 4 * std::sin(phase.Items[index] + u * (0.1 + pace.Items[index]));
    }));
  }
  return path;
}

inline TPath Arc(int Count, double Radius, double Step) {
  TPath path;
  for (int k = 0; k < Count; ++k) path.Add(PointOf({Radius * std::cos(k * Step), Radius * std::sin(k * Step)}));
  return path;
}

/// A line through all coordinates, with steps of every length.
inline TPath Collinear(TRandom& Random, int Dimension, int Count) {
  const TPointXD direction = RandomPoint(Random, Dimension, 1);
  TPath path;
  double place = 0;
  for (int k = 0; k < Count; ++k) path.Add(direction * (place += 1.1 + RandomNumber(Random, 1)));
  return path;
}

/// Steps along the axes of a grid, with sharp corners and half turns.
inline TPath Grid(TRandom& Random, int Dimension, int Count) {
  TPath path;
  TPointXD point = TPointXD::Create(Dimension);
  for (int k = 0; k < Count; ++k) {
    path.Add(point);
    point.Items[Random() % static_cast<unsigned>(Dimension)] += Random() % 2 == 0 ? 1 : -1;
  }
  return path;
}

inline TPath Closed(TPath Path) {
  Path.Add(TPointXD(Path.First()));
  return Path;
}

/// Each second point twice, so that no point equals both its neighbours.
inline TPath Repeated(const TPath& Path) {
  TPath repeated;
  for (int k = 0; k < Path.Count(); ++k) {
    repeated.Add(Path[k]);
    if (k % 2 == 1) repeated.Add(Path[k]);
  }
  return repeated;
}

/// The same path in more coordinates, which are all zero.
inline TPath Padded(const TPath& Path, int Dimension) {
  TPath padded;
  for (const TPointXD& point : Path) padded.Add(point + TPointXD::Create(Dimension));
  return padded;
}

}  // namespace ZORBase::Test
