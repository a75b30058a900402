// PortableRandom: random input that is the same with every compiler, library and language.
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace ZORBase::Test {

/// The generator splitmix64 (G. Steele, D. Lea, C. Flood, "Fast splittable pseudorandom number generators", 2014). The mappings to
/// other types are part of its contract: std::uniform_real_distribution and its like are each library's own affair. Arguments of a
/// call are evaluated in any order, so one call takes at most one number.
class TPortableRandom {
 public:
  explicit TPortableRandom(std::uint64_t Seed) : FState(Seed) {}

  std::uint64_t Bits() {
    FState += 0x9e3779b97f4a7c15U;
    std::uint64_t z = FState;
    z = (z ^ (z >> 30U)) * 0xbf58476d1ce4e5b9U;
    z = (z ^ (z >> 27U)) * 0x94d049bb133111ebU;
    return z ^ (z >> 31U);
  }

  /// The upper 53 bits times 2^-53, in [0, 1).
  double Unit() { return static_cast<double>(Bits() >> 11U) * 0x1p-53; }
  double Within(double Low, double High) { return Low + (High - Low) * Unit(); }
  /// Within -Size and Size.
  double Signed(double Size) { return Within(-Size, Size); }
  /// A whole number from 0 to Count - 1.
  int Below(int Count) { return static_cast<int>(Unit() * Count); }

  std::vector<double> Numbers(std::size_t Count, double Size) {
    std::vector<double> numbers(Count);
    for (double& number : numbers) number = Signed(Size);
    return numbers;
  }

  TPoint2D Point2D(double Size) {
    const double x = Signed(Size);
    return TPoint2D::Create(x, Signed(Size));
  }

  TPoint3D Point3D(double Size) {
    const double x = Signed(Size);
    const double y = Signed(Size);
    return TPoint3D::Create(x, y, Signed(Size));
  }

  /// A pose whose six numbers are all within -Size and Size.
  TPoint6D Point6D(double Size) {
    std::array<double, 6> items;
    for (double& item : items) item = Signed(Size);
    return TPoint6D::FromArray(items);
  }

  /// A unit quaternion, every orientation as likely as any other.
  TQuaternion Orientation() {
    for (;;) {
      std::array<double, 4> part;
      for (double& item : part) item = Signed(1.0);
      const TQuaternion q = TQuaternion::Create(part[0], part[1], part[2], part[3]);
      const double square = q.NormMagSqr();
      if (square > 1.0 || square < 0.01) continue;
      const double length = std::sqrt(square);
      return TQuaternion::Create(q.a / length, q.b / length, q.c / length, q.d / length);
    }
  }

  /// A unit vector.
  TPoint3D Direction() {
    for (;;) {
      const TPoint3D p = Point3D(1.0);
      if (p.MagSqr() > 0.01 && p.MagSqr() <= 1.0) return p.Normal();
    }
  }

  /// A rotation and a translation within -Size and Size.
  TMatrix4D Placement(double Size) {
    TMatrix4D matrix = Orientation().ToMatrix4D();
    matrix.SetTranslationPt(Point3D(Size));
    return matrix;
  }

 private:
  std::uint64_t FState;
};

}  // namespace ZORBase::Test
