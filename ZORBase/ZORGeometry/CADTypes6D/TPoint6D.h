#pragma once

#include <ZORBase/common/BaseServices/Extended.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Export.h>

#include <array>
#include <string>
#include <string_view>

namespace ZORBase {

/// A tool pose: position (X, Y, Z) in the caller's length unit and direction (A, B, C). The direction stays as given:
/// VecNormalize makes it unit, Normalize scales all six numbers, on purpose.
///
/// Operations over the components run over X, Y, Z, A, B, C in this order. Component-wise sums and products are formed in
/// extended precision and stored as doubles.
struct ZORBASE_API TPoint6D {
  ///@{
  /// A coordinate of the position.
  double X = 0.0;
  double Y = 0.0;
  double Z = 0.0;
  ///@}

  ///@{
  /// A component of the direction.
  double A = 0.0;
  double B = 0.0;
  double C = 0.0;
  ///@}

  static const TPoint6D& FZero;  ///< all six 0, from load time on
  static const TPoint6D& FOnes;  ///< all six 1, from load time on

  /// Poses closer than this in each component are equal. Absolute, the same for a length and a direction cosine.
  static constexpr double kEqualTolerance = 1e-6;

  // -------------------------------------------------------------------------------------- making and taking apart

  constexpr TPoint6D() = default;
  /// X and Y of the plane point, everything else 0.
  constexpr TPoint6D(const TPoint2D& P) : X(P.X), Y(P.Y) {}  // NOLINT(google-explicit-constructor): every caller's wish

  /// The pose with these components.
  static constexpr TPoint6D Create(double X, double Y, double Z, double A, double B, double C) {
    return FromArray({X, Y, Z, A, B, C});
  }
  /// The pose at this position with this direction.
  static constexpr TPoint6D Create(const TPoint3D& APoint, const TPoint3D& AVector) {
    return FromArray({APoint.X, APoint.Y, APoint.Z, AVector.X, AVector.Y, AVector.Z});
  }
  /// X, Y, Z, A, B, C in this order, from an array and into one.
  static constexpr TPoint6D FromArray(const std::array<double, 6>& Values) {
    TPoint6D point;
    point.X = Values[0];
    point.Y = Values[1];
    point.Z = Values[2];
    point.A = Values[3];
    point.B = Values[4];
    point.C = Values[5];
    return point;
  }
  constexpr std::array<double, 6> ToArray() const { return {X, Y, Z, A, B, C}; }  ///< the reverse of FromArray

  ///@{
  /// The component Index in the order X, Y, Z, A, B, C. \throws the general error for an index outside 0..5.
  double& Items(int Index);
  double Items(int Index) const;
  ///@}

  ///@{
  /// Another name of Items.
  double& Axis(int Index) { return Items(Index); }
  double Axis(int Index) const { return Items(Index); }
  ///@}

  ///@{
  /// The position.
  constexpr TPoint3D GetPoint() const { return TPoint3D::Create(X, Y, Z); }
  constexpr void SetPoint(const TPoint3D& Value) {
    X = Value.X;
    Y = Value.Y;
    Z = Value.Z;
  }
  ///@}

  ///@{
  /// The direction, as it is and not normalised.
  constexpr TPoint3D GetVector() const { return TPoint3D::Create(A, B, C); }
  constexpr void SetVector(const TPoint3D& Value) {
    A = Value.X;
    B = Value.Y;
    C = Value.Z;
  }
  ///@}

  // -------------------------------------------------------------------------------------- arithmetic

  static TPoint6D Abs(const TPoint6D& P);                 ///< the magnitude of each component
  constexpr TPoint6D DotVecMul(const TPoint6D& Q) const;  ///< component-wise product
  /// Component-wise quotient; a zero divides as floating point does.
  TPoint6D DotVecDiv(const TPoint6D& Q) const;

  /// The dot product over all six components, in one extended-precision sum.
  constexpr double DotMul(const TPoint6D& Q) const {
    Extended sum = static_cast<Extended>(X) * Q.X;
    sum += static_cast<Extended>(Y) * Q.Y;
    sum += static_cast<Extended>(Z) * Q.Z;
    sum += static_cast<Extended>(A) * Q.A;
    sum += static_cast<Extended>(B) * Q.B;
    sum += static_cast<Extended>(C) * Q.C;
    return static_cast<double>(sum);
  }
  constexpr double MagSqr() const { return DotMul(*this); }  ///< the square of Mag
  /// The length over all six components.
  double Mag() const;
  /// \return the smallest component.
  double GetMinItem() const;

  // -------------------------------------------------------------------------------------- normalising and clamping

  ///@{
  /// Divides all six components by their common length; a length of at most 1e-8 gives FZero.
  void Normalize();
  TPoint6D Normal() const;
  ///@}

  ///@{
  /// Makes the direction (A, B, C) a unit vector; a zero direction stays zero. X, Y, Z stay.
  void VecNormalize();
  TPoint6D VecNormal() const;
  ///@}

  /// \return the signed length of the projection of all six components onto AVec; the own length where AVec is not longer
  ///         than 1e-8.
  double ShadowLengthOnVec(const TPoint6D& AVec) const;
  /// Clamps every component into [AMin, AMax]; where AMin is above AMax, it becomes that of AMax.
  void RestrainRange(const TPoint6D& AMin, const TPoint6D& AMax);

  // -------------------------------------------------------------------------------------- text

  ///@{
  /// "X,Y,Z,A,B,C" with Digits decimals each, clamped to 0..12. ToString follows the current locale.
  std::string ToString(int Digits) const;
  std::string ToString1033(int Digits) const;
  ///@}

  /// Appends ToString1033 to a text.
  void AppendString1033(std::string& Text, int Digits) const;

  ///@{
  /// Reads six numbers, parted by "," or blanks. Parse follows the current locale.
  /// \throws the general error "TPoint6D Parse from string Failed(S). Reason"; Reason is "Error Item Number: N" for N
  ///         instead of 6 items.
  static TPoint6D Parse(std::string_view S);
  static TPoint6D Parse1033(std::string_view S);
  ///@}

  // -------------------------------------------------------------------------------------- operators

  ///@{
  /// Component by component.
  friend constexpr TPoint6D operator+(const TPoint6D& P, const TPoint6D& Q) {
    return Create(ExtendedSum(P.X, Q.X), ExtendedSum(P.Y, Q.Y), ExtendedSum(P.Z, Q.Z),  //
                  ExtendedSum(P.A, Q.A), ExtendedSum(P.B, Q.B), ExtendedSum(P.C, Q.C));
  }
  friend constexpr TPoint6D operator-(const TPoint6D& P) { return Create(-P.X, -P.Y, -P.Z, -P.A, -P.B, -P.C); }
  friend constexpr TPoint6D operator-(const TPoint6D& P, const TPoint6D& Q) { return P + (-Q); }
  friend constexpr TPoint6D operator*(const TPoint6D& P, double S) {
    return Create(ExtendedProduct(P.X, S), ExtendedProduct(P.Y, S), ExtendedProduct(P.Z, S),  //
                  ExtendedProduct(P.A, S), ExtendedProduct(P.B, S), ExtendedProduct(P.C, S));
  }
  friend constexpr TPoint6D operator*(double S, const TPoint6D& P) { return P * S; }
  ///@}

  /// P times 1 / S; the reciprocal is rounded to a double first. A zero S divides as floating point does.
  friend TPoint6D operator/(const TPoint6D& P, double S) { return P * (1.0 / S); }

  /// Equal when every component is within kEqualTolerance; a component that is no number equals nothing.
  friend bool operator==(const TPoint6D& P, const TPoint6D& Q) { return P.IsEqual(Q); }

  /// Fills FZero and FOnes; the start-up of CADTypes6D does it.
  static void FillConstants();

 private:
  bool IsEqual(const TPoint6D& Q) const;
};

constexpr TPoint6D TPoint6D::DotVecMul(const TPoint6D& Q) const {
  return Create(ExtendedProduct(X, Q.X), ExtendedProduct(Y, Q.Y), ExtendedProduct(Z, Q.Z),  //
                ExtendedProduct(A, Q.A), ExtendedProduct(B, Q.B), ExtendedProduct(C, Q.C));
}

}  // namespace ZORBase
