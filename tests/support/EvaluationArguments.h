// EvaluationArguments: what the calls of a control loop are tried on.
#pragma once

#include <ZORBase/ZORBase.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <span>

namespace ZORBase::Test {

inline constexpr std::size_t kEvaluations = 40;
using TArguments = std::array<double, kEvaluations>;

/// From From to To, neither rising nor falling.
inline TArguments Spread(double From, double To) {
  TArguments values{};
  for (std::size_t i = 0; i < kEvaluations; ++i) {
    values[i] = From + (To - From) * static_cast<double>(i * 17 % kEvaluations) / (kEvaluations - 1.0);
  }
  return values;
}

/// Parameters, the ends and some beyond them among them.
inline const TArguments kParameters = Spread(-0.05, 1.05);

/// Count poses on a rising spiral whose direction swings.
inline TPoint6DList SpiralPoses(int Count) {
  TPoint6DList poses;
  for (int i = 0; i < Count; ++i) {
    poses.AddAndNormal(50 * std::cos(0.4 * i), 40 * std::sin(0.5 * i), 1.5 * i, std::sin(0.3 * i), 0.25, 1.0);
  }
  return poses;
}

/// The frame with the angles 0.3 Turn, -0.7, 1.9 - 0.2 Turn.
inline TMatrix4D FrameOf(double Turn) {
  TMatrix4D frame;
  frame.CreateFromEulerAngleZYX(TPoint6D::Create(10 * Turn, -20, 30, 0.3 * Turn, -0.7, 1.9 - 0.2 * Turn));
  return frame;
}

/// The rotation of that frame.
inline TQuaternion RotationOf(double Turn) {
  TQuaternion rotation;
  rotation.CreateFromMatrix4D(FrameOf(Turn));
  return rotation;
}

/// Scattered samples of a bowl.
inline TList<TPoint3D> BowlSamples() {
  TList<TPoint3D> samples;
  for (int i = 0; i < 40; ++i) {
    const double x = 10 * std::cos(2.4 * i) * std::sqrt(i);
    const double y = 10 * std::sin(2.4 * i) * std::sqrt(i);
    samples.Add(TPoint3D::Create(x, y, 0.01 * (x * x + y * y)));
  }
  return samples;
}

}  // namespace ZORBase::Test
