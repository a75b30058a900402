#pragma once

#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

/// A point or vector of space. Lengths come from plain sums of squares, so they hold from about 1e-150 to 1e150.
struct ZORBASE_API TPoint3D {
  ///@{
  /// A coordinate.
  double X = 0.0;
  double Y = 0.0;
  double Z = 0.0;
  ///@}

  static const TPoint3D FZero;  ///< (0, 0, 0)

  constexpr TPoint3D() = default;
  /// A point of the plane lies at height 0.
  constexpr TPoint3D(const TPoint2D& P) : X(P.X), Y(P.Y) {}  // NOLINT(google-explicit-constructor): every caller's wish

  /// The point with these coordinates.
  static constexpr TPoint3D Create(double X, double Y, double Z) {
    TPoint3D point;
    point.X = X;
    point.Y = Y;
    point.Z = Z;
    return point;
  }

  /// The length of the vector.
  double Mag() const;
  /// The square of the length.
  constexpr double MagSqr() const { return X * X + Y * Y + Z * Z; }

  /// \return the unit vector of the same direction; the zero vector for the zero vector.
  TPoint3D Normal() const;

  /// The scalar product.
  constexpr double DotMul(const TPoint3D& Q) const { return X * Q.X + Y * Q.Y + Z * Q.Z; }

  /// \return the right-handed cross product Self x Q.
  constexpr TPoint3D CrossMul(const TPoint3D& Q) const {
    return Create(Y * Q.Z - Z * Q.Y, Z * Q.X - X * Q.Z, X * Q.Y - Y * Q.X);
  }

  /// \return the unsigned angle between the two directions in radians, 0 to pi: atan2(|Self x Q|, Self . Q), good to some
  ///         1e-16 at every angle, 0 and pi included; 0 when either vector is zero.
  double AngleBetween(const TPoint3D& Q) const;

  /// \return the distance of the two points seen along Z.
  double DistanceXY(const TPoint3D& Q) const;

  /// \return whether the vector's length is at most Eps.
  bool IsZeroLength(double Eps) const;

  ///@{
  /// Coordinate by coordinate; a zero S divides as floating point does.
  friend constexpr TPoint3D operator+(const TPoint3D& P, const TPoint3D& Q) {
    return Create(P.X + Q.X, P.Y + Q.Y, P.Z + Q.Z);
  }
  friend constexpr TPoint3D operator-(const TPoint3D& P, const TPoint3D& Q) {
    return Create(P.X - Q.X, P.Y - Q.Y, P.Z - Q.Z);
  }
  friend constexpr TPoint3D operator-(const TPoint3D& P) { return Create(-P.X, -P.Y, -P.Z); }
  friend constexpr TPoint3D operator*(const TPoint3D& P, double S) { return Create(P.X * S, P.Y * S, P.Z * S); }
  friend constexpr TPoint3D operator*(double S, const TPoint3D& P) { return P * S; }
  friend constexpr TPoint3D operator/(const TPoint3D& P, double S) { return Create(P.X / S, P.Y / S, P.Z / S); }
  ///@}
};

}  // namespace ZORBase
