#pragma once

#include <ZORBase/common/Export.h>

namespace ZORBase {

/// A point or vector of the plane. Lengths come from plain sums of squares, so they hold from about 1e-150 to 1e150.
struct ZORBASE_API TPoint2D {
  ///@{
  /// A coordinate.
  double X = 0.0;
  double Y = 0.0;
  ///@}

  static const TPoint2D FZero;  ///< (0, 0)

  /// The point with these coordinates.
  static constexpr TPoint2D Create(double X, double Y) { return {X, Y}; }

  /// The length of the vector.
  double Mag() const;
  /// The square of the length.
  constexpr double MagSqr() const { return DotMul(*this); }
  /// The dot product.
  constexpr double DotMul(const TPoint2D& Q) const { return X * Q.X + Y * Q.Y; }

  /// \return the unit vector of the same direction; the zero vector for the zero vector.
  TPoint2D Normal() const;

  /// \return the unsigned angle between the two directions in radians, 0 to pi; 0 when either vector is zero.
  double AngleBetween(const TPoint2D& Q) const;

  ///@{
  /// Coordinate by coordinate; a zero S divides as floating point does.
  friend constexpr TPoint2D operator+(const TPoint2D& P, const TPoint2D& Q) { return {P.X + Q.X, P.Y + Q.Y}; }
  friend constexpr TPoint2D operator-(const TPoint2D& P, const TPoint2D& Q) { return {P.X - Q.X, P.Y - Q.Y}; }
  friend constexpr TPoint2D operator-(const TPoint2D& P) { return {-P.X, -P.Y}; }
  friend constexpr TPoint2D operator*(const TPoint2D& P, double S) { return {P.X * S, P.Y * S}; }
  friend constexpr TPoint2D operator*(double S, const TPoint2D& P) { return P * S; }
  friend constexpr TPoint2D operator/(const TPoint2D& P, double S) { return {P.X / S, P.Y / S}; }
  ///@}
};

}  // namespace ZORBase
