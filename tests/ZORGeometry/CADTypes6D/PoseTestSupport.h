// PoseTestSupport: the words of the tests of transforms and orientations.
//   IsNear, IsExactly   points, quaternions and matrices number by number, within a tolerance or to the bit
//   ArcBetween          the arc between two quaternions, exact to rounding at every angle
//   AnyAngle, AnyPose   RapidCheck generators that like corners: locks, half turns, tiny angles
//   TRandomPoses        seeded random points, rotations and poses
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D.h>

#include "support/TestSupport.h"

#include <rapidcheck.h>
#include <rapidcheck/gtest.h>
#include <bit>
#include <cmath>
#include <cstdint>
#include <ostream>
#include <random>
#include <vector>

namespace ZORBase::Test {

inline constexpr TMatrix4D kIdentity = TMatrix4D::ReturnIdentityMatrix();
inline constexpr TQuaternion kOne = TQuaternion::Create(1, 0, 0, 0);
inline constexpr TQuaternion kI = TQuaternion::Create(0, 1, 0, 0);

// ---------------------------------------------------------------------------------------------- matchers

inline std::vector<double> Numbers(const TPoint3D& P) { return {P.X, P.Y, P.Z}; }
inline std::vector<double> Numbers(const TQuaternion& q) { return {q.a, q.b, q.c, q.d}; }
inline std::vector<double> Numbers(const TMatrix4D& M) {
  std::vector<double> numbers;
  for (const auto& row : M.fm) numbers.insert(numbers.end(), row.begin(), row.end());
  return numbers;
}

/// Matches a value whose numbers are all within Tolerance of those of Expected.
MATCHER_P2(IsNear, Expected, Tolerance, "is within " + testing::PrintToString(Tolerance) + " of the expected value") {
  const std::vector<double> actual = Numbers(arg);
  const std::vector<double> expected = Numbers(Expected);
  for (std::size_t i = 0; i < actual.size(); ++i) {
    const double miss = std::fabs(actual[i] - expected[i]);
    if (miss <= Tolerance) continue;
    *result_listener << "number " << i << " is " << actual[i] << " and not " << expected[i] << ", off by " << miss;
    return false;
  }
  return true;
}

/// Matches a value whose numbers are those of Expected bit for bit.
MATCHER_P(IsExactly, Expected, "is the expected value to the bit") {
  const std::vector<double> actual = Numbers(arg);
  const std::vector<double> expected = Numbers(Expected);
  for (std::size_t i = 0; i < actual.size(); ++i) {
    if (std::bit_cast<std::uint64_t>(actual[i]) == std::bit_cast<std::uint64_t>(expected[i])) continue;
    *result_listener << "number " << i << " is " << actual[i] << " and not " << expected[i];
    return false;
  }
  return true;
}

/// Whether the numbers of two values are the same bit for bit, for laws.
template <class T>
bool SameBits(const T& A, const T& B) {
  return testing::Value(A, IsExactly(B));
}

// ---------------------------------------------------------------------------------------------- making

inline TPoint3D Pt(double X, double Y, double Z) { return TPoint3D::Create(X, Y, Z); }
inline TQuaternion Quat(double a, double b, double c, double d) { return TQuaternion::Create(a, b, c, d); }

inline TMatrix4D TurnX(double Angle) { return TMatrix4D::Create(Pt(1, 0, 0), Angle); }
inline TMatrix4D TurnY(double Angle) { return TMatrix4D::Create(Pt(0, 1, 0), Angle); }
inline TMatrix4D TurnZ(double Angle) { return TMatrix4D::Create(Pt(0, 0, 1), Angle); }

inline TMatrix4D At(TMatrix4D M, const TPoint3D& Origin) {
  M.SetTranslationPt(Origin);
  return M;
}

/// The unit quaternion of the rotation by Angle about a unit Axis.
inline TQuaternion Turn(const TPoint3D& Axis, double Angle) {
  return TQuaternion::Create(std::cos(Angle / 2), Axis * std::sin(Angle / 2));
}

inline TQuaternion QuaternionOf(const TMatrix4D& M) {
  TQuaternion q;
  q.CreateFromMatrix4D(M);
  return q;
}

/// The arc between two unit quaternions, 0 to pi.
inline double ArcBetween(const TQuaternion& p, const TQuaternion& q) {
  return 2 * std::atan2((p - q).NormMag(), (p + q).NormMag());
}

/// Multiples of 15 degrees (locks and half turns among them), any other angle, and angles next to 0, pi/2 and pi.
inline rc::Gen<double> AnyAngle() {
  const auto grid = rc::gen::map(rc::gen::inRange(-12, 13), [](int i) { return i * kPi / 12; });
  const auto any = rc::gen::map(rc::gen::inRange(-3141592, 3141593), [](int i) { return i * 1e-6; });
  const auto next =
      rc::gen::map(rc::gen::tuple(rc::gen::inRange(-2, 3), rc::gen::inRange(-9, 10)),
                   [](const auto& Pair) { return std::get<0>(Pair) * kPi / 2 + std::get<1>(Pair) * 1e-9; });
  return rc::gen::oneOf(grid, any, next);
}

inline rc::Gen<TPoint3D> AnyPoint() {
  const auto coordinate = rc::gen::map(rc::gen::inRange(-1000000, 1000001), [](int i) { return i * 1e-3; });
  return rc::gen::map(rc::gen::tuple(coordinate, coordinate, coordinate),
                      [](const auto& P) { return Pt(std::get<0>(P), std::get<1>(P), std::get<2>(P)); });
}

inline rc::Gen<TMatrix4D> AnyPose() {
  return rc::gen::map(rc::gen::tuple(AnyAngle(), AnyAngle(), AnyAngle(), AnyPoint()), [](const auto& P) {
    const TPoint3D angles = Pt(std::get<0>(P), std::get<1>(P), std::get<2>(P));
    TMatrix4D pose;
    pose.CreateFromEulerAngleXYZ(TPoint6D::Create(std::get<3>(P), angles));
    return pose;
  });
}

/// Unit quaternions of either sign.
inline rc::Gen<TQuaternion> AnyUnitQuaternion() {
  return rc::gen::map(rc::gen::tuple(AnyPose(), rc::gen::arbitrary<bool>()), [](const auto& Pair) {
    const TQuaternion q = QuaternionOf(std::get<0>(Pair));
    return std::get<1>(Pair) ? -q : q;
  });
}

class TRandomPoses {
 public:
  explicit TRandomPoses(std::uint64_t Seed) : FEngine(Seed) {}

  double Number(double Min, double Max) { return std::uniform_real_distribution<double>(Min, Max)(FEngine); }
  int Choice(int Count) { return std::uniform_int_distribution<int>(0, Count - 1)(FEngine); }
  TPoint3D Point(double Size) { return Pt(Number(-Size, Size), Number(-Size, Size), Number(-Size, Size)); }

  /// Even over the sphere.
  TPoint3D UnitVector() {
    std::normal_distribution<double> normal;
    return Pt(normal(FEngine), normal(FEngine), normal(FEngine)).Normal();
  }
  TQuaternion UnitQuaternion() {
    std::normal_distribution<double> normal;
    const TQuaternion q = Quat(normal(FEngine), normal(FEngine), normal(FEngine), normal(FEngine));
    return q / q.NormMag();
  }
  TMatrix4D Pose(double Size) { return At(UnitQuaternion().ToMatrix4D(), Point(Size)); }

 private:
  std::mt19937_64 FEngine;
};

}  // namespace ZORBase::Test

namespace ZORBase {

/// How GoogleTest and RapidCheck print the types.
inline std::ostream& operator<<(std::ostream& Stream, const TPoint3D& P) {
  return Stream << "(" << FloatToStr(P.X) << ", " << FloatToStr(P.Y) << ", " << FloatToStr(P.Z) << ")";
}
inline std::ostream& operator<<(std::ostream& Stream, const TQuaternion& q) {
  return Stream << FloatToStr(q.a) << " + " << q.GetImgVector();
}
inline std::ostream& operator<<(std::ostream& Stream, const TMatrix4D& M) { return Stream << M.ToString(); }

}  // namespace ZORBase
