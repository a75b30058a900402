#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerAng.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Export.h>

#include <array>
#include <string>
#include <string_view>

namespace ZORBase {

/// A tool pose: position (X, Y, Z) in the caller's length unit and rotation angles (Rx, Ry, Rz) in radians, as
/// TEulerAng has them.
struct ZORBASE_API TEulerPoint {
  ///@{
  /// A coordinate of the position.
  double X = 0.0;
  double Y = 0.0;
  double Z = 0.0;
  ///@}

  ///@{
  /// An angle, as in TEulerAng.
  double Rx = 0.0;
  double Ry = 0.0;
  double Rz = 0.0;
  ///@}

  static const TEulerPoint& FZero;  ///< all six 0, from load time on

  // -------------------------------------------------------------------------------------- making and taking apart

  /// The pose with these components.
  static constexpr TEulerPoint Create(double X, double Y, double Z, double Rx, double Ry, double Rz) {
    return FromArray({X, Y, Z, Rx, Ry, Rz});
  }
  /// The pose at this position with these angles.
  static constexpr TEulerPoint Create(const TPoint3D& APoint, const TEulerAng& AEuler) {
    return FromArray({APoint.X, APoint.Y, APoint.Z, AEuler.Rx, AEuler.Ry, AEuler.Rz});
  }
  /// X, Y, Z, Rx, Ry, Rz in this order, from an array and into one.
  static constexpr TEulerPoint FromArray(const std::array<double, 6>& Values) {
    TEulerPoint point;
    point.X = Values[0];
    point.Y = Values[1];
    point.Z = Values[2];
    point.Rx = Values[3];
    point.Ry = Values[4];
    point.Rz = Values[5];
    return point;
  }
  constexpr std::array<double, 6> ToArray() const { return {X, Y, Z, Rx, Ry, Rz}; }  ///< the reverse of FromArray

  ///@{
  /// The component Index in the order X, Y, Z, Rx, Ry, Rz. \throws the general error for an index outside 0..5.
  double& Items(int Index);
  double Items(int Index) const;
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

  constexpr TPoint2D GetPointXY() const { return TPoint2D::Create(X, Y); }  ///< the position seen along Z
  ///@{
  /// The angles.
  constexpr TEulerAng GetEuler() const { return TEulerAng::Create(Rx, Ry, Rz); }
  constexpr void SetEuler(const TEulerAng& Value) {
    Rx = Value.Rx;
    Ry = Value.Ry;
    Rz = Value.Rz;
  }
  ///@}

  // -------------------------------------------------------------------------------------- converting

  /// \return the unit direction of the tool (TEulerAng::ToVector).
  TPoint3D GetVector() const;
  /// \return the position with that direction. The turn about the tool's own axis is lost.
  ///         Allocates nothing, takes no lock.
  TPoint6D ToPoint6D() const;

  // -------------------------------------------------------------------------------------- text

  ///@{
  /// "X,Y,Z,Rx,Ry,Rz" with Decimal decimals each, clamped to 0..12, angles in radians. ToString follows the current
  /// locale; with a decimal comma its text does not parse, because items are parted by "," too.
  std::string ToString(int Decimal) const;
  std::string ToString1033(int Decimal) const;
  ///@}

  ///@{
  /// Appends ToString or ToString1033 to a text.
  void AppendString(std::string& Text, int Decimal) const;
  void AppendString1033(std::string& Text, int Decimal) const;
  ///@}

  ///@{
  /// Reads six numbers, parted by "," or blanks. Parse follows the current locale; a number with a decimal comma must
  /// stand in double quotes.
  /// \throws the general error "TEulerPoint Parse from string Failed(S). Reason"; Reason is "Error Item Number: N" for
  ///         N instead of 6 items.
  static TEulerPoint Parse(std::string_view S);
  static TEulerPoint Parse1033(std::string_view S);
  ///@}

  /// Fills FZero; the start-up of CADTypesEuler does it.
  static void FillConstants();
};

}  // namespace ZORBase
