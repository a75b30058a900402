#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Export.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace ZORBase {

/// The coordinates of a TPointXD.
using TDoubleXD = std::array<double, 44>;

/// \return A / B where |B| >= Eps; otherwise 0 where |A| < Eps, and else 1e12 with the sign of the quotient (of A where B is 0).
///         Unlike SafeDiv, Eps has no floor.
ZORBASE_API double SafeDivXD(double A, double B, double Eps);

/// A point or vector with 1 to 44 coordinates, held by value: positions, directions and further axes side by side.
///
/// Coordinates from FDimension on are not part of the value; every operation that makes a point writes zeros there. Points of
/// different dimension can be combined, each operation in its own way: a sum has the larger dimension, a product the smaller
/// one, and a dot product that of its left side.
struct ZORBASE_API TPointXD {
  static constexpr int kMaxDimension = 44;  ///< the largest number of coordinates
  /// Coordinates closer than this are equal, and a length below it is none.
  static constexpr double kTolerance = 1e-12;

  std::int32_t FDimension = 0;  ///< number of coordinates in use
  TDoubleXD Items{};            ///< the coordinates

  constexpr TPointXD() = default;
  ///@{
  /// The coordinates of the point, in their order.
  constexpr TPointXD(const TPoint2D& P) : FDimension(2), Items{P.X, P.Y} {}       // NOLINT(google-explicit-constructor)
  constexpr TPointXD(const TPoint3D& P) : FDimension(3), Items{P.X, P.Y, P.Z} {}  // NOLINT(google-explicit-constructor)
  constexpr TPointXD(const TPoint6D& P)                                           // NOLINT(google-explicit-constructor)
      : FDimension(6), Items{P.X, P.Y, P.Z, P.A, P.B, P.C} {}
  ///@}

  /// \return the zero point of a dimension, clamped to 1..44.
  static constexpr TPointXD Create(int Dimension) {
    TPointXD point;
    point.FDimension = std::clamp(Dimension, 1, kMaxDimension);
    return point;
  }
  /// \return the point with these coordinates. \throws the general error unless there are 1 to 44.
  static TPointXD FromSpan(std::span<const double> Coordinates);

  ///@{
  /// The coordinates in use.
  std::span<const double> Coordinates() const { return std::span(Items).first(InUse()); }
  std::span<double> Coordinates() { return std::span(Items).first(InUse()); }
  ///@}

  /// The first min(2, dimension) coordinates; those that are missing are 0.
  explicit operator TPoint2D() const;
  /// X and Y only: Z is always 0, whatever the dimension.
  explicit operator TPoint3D() const;
  /// The first min(6, dimension) coordinates; those that are missing are 0.
  explicit operator TPoint6D() const;

  ///@{
  /// A coordinate by its name; where the point has none of that name, what is stored in its place, as a rule 0.
  double& X() { return Items[0]; }
  double& Y() { return Items[1]; }
  double& Z() { return Items[2]; }
  double& A() { return Items[3]; }
  double& B() { return Items[4]; }
  double& C() { return Items[5]; }
  double X() const { return Items[0]; }
  double Y() const { return Items[1]; }
  double Z() const { return Items[2]; }
  double A() const { return Items[3]; }
  double B() const { return Items[4]; }
  double C() const { return Items[5]; }
  ///@}

  /// The magnitude of each coordinate.
  static TPointXD Abs(const TPointXD& P);
  /// The length over all coordinates in use.
  double Mag() const;
  /// The sum of the squares, in extended precision.
  double MagSqr() const;
  /// The sum of products over Self's dimension only: not symmetric when the dimensions differ.
  double DotMul(const TPointXD& P) const;
  /// The length of the difference.
  double DistanceTo(const TPointXD& P) const;
  /// \return the angle in radians, 0 to pi; pi / 2 when either vector is zero. \throws the general error for NaN.
  double AngleBetween(const TPointXD& P) const;
  /// \return the vector divided by its length through SafeDivXD: the zero vector where that is below 1e-12.
  TPointXD Normal() const;
  void Normalize() { *this = Normal(); }  ///< becomes Normal()
  ///@{
  /// The larger, or smaller, of each pair of coordinates; further ones are those of the point that has them.
  TPointXD ExtMax(const TPointXD& P) const;
  TPointXD ExtMin(const TPointXD& P) const;
  ///@}

  /// \return ", " and the coordinate in up to 15 digits of the current locale, for every coordinate: the text begins with
  ///         ", ".
  std::string ToString() const;

  ///@{
  /// Coordinate by coordinate; one that is missing counts as 0.
  friend ZORBASE_API TPointXD operator+(const TPointXD& P, const TPointXD& Q);
  friend ZORBASE_API TPointXD operator-(const TPointXD& P, const TPointXD& Q);
  ///@}

  /// Coordinate by coordinate, over those that both have.
  friend ZORBASE_API TPointXD operator*(const TPointXD& P, const TPointXD& Q);
  ///@{
  /// Every coordinate times S.
  friend ZORBASE_API TPointXD operator*(const TPointXD& P, double S);
  friend TPointXD operator*(double S, const TPointXD& P) { return P * S; }
  ///@}

  /// Each coordinate through SafeDivXD with 1e-12.
  friend ZORBASE_API TPointXD operator/(const TPointXD& P, double S);
  /// Equal when the dimensions are the same and every coordinate is within 1e-12.
  friend ZORBASE_API bool operator==(const TPointXD& P, const TPointXD& Q);

 private:
  // The field is the caller's to write; what it says never reaches beyond the coordinates.
  constexpr std::size_t InUse() const { return static_cast<std::size_t>(std::clamp(FDimension, 0, kMaxDimension)); }

  template <class TFunction>
  static TPointXD Combine(std::size_t Count, const TPointXD& P, const TPointXD& Q, TFunction&& Function);
  template <class TChoose>
  static TPointXD Extreme(const TPointXD& P, const TPointXD& Q, TChoose&& Choose);
};

}  // namespace ZORBase
