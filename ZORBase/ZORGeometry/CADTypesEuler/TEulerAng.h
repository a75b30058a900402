#pragma once

#include <ZORBase/common/Cadtypes/Angles.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Export.h>

#include <array>
#include <string>

namespace ZORBase {

/// Rotation angles about x, y and z in radians: R = Rz(Rz) Ry(Ry) Rx(Rx), first about x, then about the fixed y, then
/// about the fixed z (the same as about z, y', x'' of the moving axes). The tool points along the third column of R.
///
/// The angles stay as given: nothing wraps them into a range, and arithmetic runs over the components Rx, Ry, Rz one by
/// one, so that a sum of triples is no product of rotations.
struct ZORBASE_API TEulerAng {
  double Rx = 0.0;  ///< turn about x
  double Ry = 0.0;  ///< turn about y
  double Rz = 0.0;  ///< turn about z

  static const TEulerAng& FZero;  ///< all three 0, from load time on

  // -------------------------------------------------------------------------------------- making and taking apart

  /// The triple of these angles in radians.
  static constexpr TEulerAng Create(double Rx, double Ry, double Rz) { return FromArray({Rx, Ry, Rz}); }
  /// The triple of these angles in degrees.
  static constexpr TEulerAng CreatebyDegree(double Rx, double Ry, double Rz) {
    return Create(DegToRad(Rx), DegToRad(Ry), DegToRad(Rz));
  }

  /// \return the angles of the frame whose x and y axes have the directions XVec and YVec, which need not be unit
  ///         vectors. Rx and Rz are in (-pi, pi], Ry within +-pi/2. Where Ry is within 1e-6 of +-pi/2, Rx and Rz turn
  ///         about one axis and Rx is taken as 0.
  /// \throws the general error "CalcEulerAngZYXByVec ErrInput" unless the axes are perpendicular within 0.01 degree;
  ///         also for a zero vector and one that is not finite.
  static TEulerAng CreatebyXYVec(const TPoint3D& XVec, const TPoint3D& YVec);

  /// Rx, Ry, Rz in this order, from an array and into one.
  static constexpr TEulerAng FromArray(const std::array<double, 3>& Values) {
    TEulerAng angles;
    angles.Rx = Values[0];
    angles.Ry = Values[1];
    angles.Rz = Values[2];
    return angles;
  }
  constexpr std::array<double, 3> ToArray() const { return {Rx, Ry, Rz}; }  ///< the reverse of FromArray

  ///@{
  /// The angle Index in the order Rx, Ry, Rz. \throws the general error for an index outside 0..2.
  double& Items(int Index);
  double Items(int Index) const;
  ///@}

  // -------------------------------------------------------------------------------------- measuring

  /// \return the length of the vector of the three angle differences; no angle of rotation.
  double DistanceTo(const TEulerAng& Other) const;
  /// The length of the vector (Rx, Ry, Rz).
  double Mag() const;
  constexpr double MagSqr() const { return Rx * Rx + Ry * Ry + Rz * Rz; }  ///< the square of Mag

  /// \return the unit direction of the tool, the third column of R.
  TPoint3D ToVector() const;

  // -------------------------------------------------------------------------------------- text

  /// "Rx,Ry,Rz" in radians with Decimal decimals, clamped to 0..9, in the current locale's form.
  std::string ToString(int Decimal) const;
  /// The same in degrees, each angle followed by the degree sign (UTF-8) and a blank: "0.0° ,90.0° ,-45.0° ".
  std::string ToStringDeg(int Decimal) const;

  // -------------------------------------------------------------------------------------- operators

  ///@{
  /// Angle by angle; a sum of triples is no product of rotations.
  friend constexpr TEulerAng operator+(const TEulerAng& P, const TEulerAng& Q) {
    return Create(P.Rx + Q.Rx, P.Ry + Q.Ry, P.Rz + Q.Rz);
  }
  friend constexpr TEulerAng operator-(const TEulerAng& P, const TEulerAng& Q) {
    return Create(P.Rx - Q.Rx, P.Ry - Q.Ry, P.Rz - Q.Rz);
  }
  friend constexpr TEulerAng operator-(const TEulerAng& P) { return Create(-P.Rx, -P.Ry, -P.Rz); }
  friend constexpr TEulerAng operator*(const TEulerAng& P, double S) { return Create(P.Rx * S, P.Ry * S, P.Rz * S); }
  friend constexpr TEulerAng operator*(double S, const TEulerAng& P) { return P * S; }
  ///@}

  /// P times 1 / S; the reciprocal is rounded first. A zero S divides as floating point does.
  friend TEulerAng operator/(const TEulerAng& P, double S) { return P * (1.0 / S); }

  /// Fills FZero; the start-up of CADTypesEuler does it.
  static void FillConstants();
};

}  // namespace ZORBase
