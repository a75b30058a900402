#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4D.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Export.h>

#include <array>
#include <cmath>
#include <cstddef>

namespace ZORBase {

/// A quaternion a + b i + c j + d k, the real part first everywhere. A unit one stands for the rotation by 2 acos(a)
/// about (b, c, d); q and -q are the same rotation.
///
/// Nothing keeps it a unit quaternion. ToMatrix4D takes it as one, and Log brings it near to one in its own way.
struct ZORBASE_API TQuaternion {
  double a = 0.0;  ///< real part
  ///@{
  /// A component of the vector part.
  double b = 0.0;
  double c = 0.0;
  double d = 0.0;
  ///@}

  /// Quaternions closer than this in each component are equal, a divisor below it counts as zero, and Log and Exp take
  /// a vector of at most this length for the zero vector. Absolute.
  static constexpr double kTolerance = 1e-6;

  // -------------------------------------------------------------------------------------- making and taking apart

  constexpr TQuaternion() = default;
  /// The pure quaternion with this vector and the real part 0.
  constexpr TQuaternion(const TPoint3D& Vec) : b(Vec.X), c(Vec.Y), d(Vec.Z) {}  // NOLINT(google-explicit-constructor)

  /// The quaternion with these components.
  static constexpr TQuaternion Create(double a, double b, double c, double d) {
    TQuaternion q;
    q.a = a;
    q.b = b;
    q.c = c;
    q.d = d;
    return q;
  }
  /// These very numbers: not an angle and an axis.
  static constexpr TQuaternion Create(double real, const TPoint3D& vec) { return Create(real, vec.X, vec.Y, vec.Z); }

  /// \return (0, 0, 0, 0), which is no rotation. The identity rotation is (1, 0, 0, 0).
  static constexpr TQuaternion ReturnQuaternionZero() { return {}; }

  ///@{
  /// The component Index in the order a, b, c, d. \throws the general error for an index outside 0..3.
  double& Variable(int Index);
  double Variable(int Index) const;
  ///@}

  ///@{
  /// The real part a.
  constexpr double GetRealNumber() const { return a; }
  constexpr void SetRealNumber(double value) { a = value; }
  ///@}

  ///@{
  /// The vector part (b, c, d).
  constexpr TPoint3D GetImgVector() const { return TPoint3D::Create(b, c, d); }
  constexpr void SetImgVector(const TPoint3D& vec) { *this = Create(a, vec); }
  ///@}

  // -------------------------------------------------------------------------------------- arithmetic

  /// (a, -b, -c, -d)
  constexpr TQuaternion Conj() const { return Create(a, -b, -c, -d); }
  constexpr double NormMagSqr() const { return a * a + b * b + c * c + d * d; }  ///< the square of the magnitude
  double NormMag() const { return std::sqrt(NormMagSqr()); }                     ///< the magnitude
  /// The sum of the four products.
  constexpr double DotMul(const TQuaternion& q) const { return a * q.a + b * q.b + c * q.c + d * q.d; }

  /// \return Self * q
  constexpr TQuaternion QuaternionMul(const TQuaternion& q) const { return *this * q; }

  /// \return Conj / NormMagSqr. \throws the general error "Quaternion mag zero: N" when NormMagSqr N is below 1e-6,
  ///         that is, already for a magnitude below 0.001.
  TQuaternion Inverse() const;

  // -------------------------------------------------------------------------------------- rotations

  /// Becomes the quaternion of the rotation of m, by the largest of its four squared components; on a tie by the
  /// earlier one. The result is not normalised, and its real part may be negative: its sign is not adjusted.
  void CreateFromMatrix4D(const TMatrix4D& m);

  /// \return the rotation of this quaternion, taken as a unit one: another magnitude gives no orthogonal matrix.
  constexpr TMatrix4D ToMatrix4D() const;

  /// \return the axis of rotation times half the angle, in radians; the zero vector when the vector part is at most
  ///         1e-6 long, beside a real part of -1 too.
  ///
  /// A squared magnitude n more than 1e-6 away from 1 is brought nearer to 1 by dividing by n, not by its root, on
  /// purpose: such a quaternion does not become a unit one. The real part then goes to ArcCos as it is: beside a vector
  /// part above 1e-6, one unit in the last place outside [-1, 1] is enough for the error of ArcCos.
  /// \throws the general error "Divided by zero: n" for n below 1e-6, and that of ArcCos. Allocates nothing, takes no lock.
  TPoint3D Log() const;

  /// Becomes (cos |v|, sin |v| v / |v|): the rotation about v by twice its length. A v at most 1e-6 long gives the
  /// vector part 0. Undoes Log of a unit quaternion. Allocates nothing, takes no lock.
  void Exp(const TPoint3D& v);

  // -------------------------------------------------------------------------------------- operators

  ///@{
  /// Component by component.
  friend constexpr TQuaternion operator+(const TQuaternion& p, const TQuaternion& q) {
    return Create(p.a + q.a, p.b + q.b, p.c + q.c, p.d + q.d);
  }
  friend constexpr TQuaternion operator-(const TQuaternion& p, const TQuaternion& q) {
    return Create(p.a - q.a, p.b - q.b, p.c - q.c, p.d - q.d);
  }
  friend constexpr TQuaternion operator-(const TQuaternion& q) { return Create(-q.a, -q.b, -q.c, -q.d); }
  ///@}

  /// The Hamilton product: the rotation q, then p.
  friend constexpr TQuaternion operator*(const TQuaternion& p, const TQuaternion& q) {
    return Create(p.a * q.a - p.b * q.b - p.c * q.c - p.d * q.d,  //
                  p.b * q.a + p.a * q.b - p.d * q.c + p.c * q.d,  //
                  p.c * q.a + p.d * q.b + p.a * q.c - p.b * q.d,  //
                  p.d * q.a - p.c * q.b + p.b * q.c + p.a * q.d);
  }
  ///@{
  /// Every component times s.
  friend constexpr TQuaternion operator*(const TQuaternion& q, double s) {
    return Create(q.a * s, q.b * s, q.c * s, q.d * s);
  }
  friend constexpr TQuaternion operator*(double s, const TQuaternion& q) { return q * s; }
  ///@}

  /// q times 1 / s. \throws the general error "Divided by zero: s" when s is below 1e-6 in magnitude.
  friend TQuaternion operator/(const TQuaternion& q, double s) { return q.DividedBy(s); }

  /// Equal when every component is within kTolerance; one that is no number equals nothing. Signs count, although q and
  /// -q are the same rotation.
  friend bool operator==(const TQuaternion& p, const TQuaternion& q) { return p.IsEqual(q); }

 private:
  TQuaternion DividedBy(double s) const;
  bool IsEqual(const TQuaternion& q) const;
};

// The four candidates are 4 a^2, 4 b^2, 4 c^2 and 4 d^2 of a unit quaternion. They sum to 4, so that the largest is at
// least 1 and its root a safe divisor: the products of it with the others stand in the sums and differences of entries.
inline void TQuaternion::CreateFromMatrix4D(const TMatrix4D& m) {
  const auto& r = m.fm;
  const std::array<double, 4> candidates = {r[0][0] + r[1][1] + r[2][2] + 1.0, r[0][0] - r[1][1] - r[2][2] + 1.0,
                                            r[1][1] - r[0][0] - r[2][2] + 1.0, r[2][2] - r[0][0] - r[1][1] + 1.0};
  std::size_t index = 0;
  for (std::size_t i = 1; i < 4; ++i) {
    if (candidates[i] > candidates[index]) index = i;
  }
  const double h = std::sqrt(candidates[index]) / 2.0;
  const double f = 0.25 / h;
  switch (index) {
    case 0: *this = Create(h, (r[2][1] - r[1][2]) * f, (r[0][2] - r[2][0]) * f, (r[1][0] - r[0][1]) * f); break;
    case 1: *this = Create((r[2][1] - r[1][2]) * f, h, (r[1][0] + r[0][1]) * f, (r[0][2] + r[2][0]) * f); break;
    case 2: *this = Create((r[0][2] - r[2][0]) * f, (r[1][0] + r[0][1]) * f, h, (r[2][1] + r[1][2]) * f); break;
    default: *this = Create((r[1][0] - r[0][1]) * f, (r[0][2] + r[2][0]) * f, (r[2][1] + r[1][2]) * f, h); break;
  }
}

constexpr TMatrix4D TQuaternion::ToMatrix4D() const {
  return TMatrix4D::Create(1.0 - 2.0 * c * c - 2.0 * d * d, 2.0 * b * c - 2.0 * a * d, 2.0 * a * c + 2.0 * b * d,  //
                           2.0 * b * c + 2.0 * a * d, 1.0 - 2.0 * b * b - 2.0 * d * d, 2.0 * c * d - 2.0 * a * b,  //
                           2.0 * b * d - 2.0 * a * c, 2.0 * a * b + 2.0 * c * d, 1.0 - 2.0 * b * b - 2.0 * c * c);
}

}  // namespace ZORBase
