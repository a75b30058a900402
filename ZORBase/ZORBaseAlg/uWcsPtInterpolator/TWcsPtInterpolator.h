#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/common/Cadtypes/Angles.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Export.h>

#include <span>
#include <string>

namespace ZORBase {

/// The straight move between two poses, in Count equal steps: poses 0 to Count, the start pose first and the end pose
/// last.
///
/// The position moves along the straight line; the direction turns about one fixed axis at a constant rate, from the
/// start direction onto the end direction. Directions are unit vectors; one that is not keeps the length it has at the
/// start. Opposite directions turn about start x (0, 0, 1); where that is zero too, start and end along Z, no axis is
/// left and the direction stays as it was at the start. Directions that are opposite but for rounding leave the choice
/// of the axis to the rounding.
///
/// Only the count can change after construction.
class ZORBASE_API TWcsPtInterpolator {
 public:
  ///@{
  /// An automatic count makes steps of at most this length, in the unit of X, Y, Z, and of at most this turn, 0.1
  /// degree.
  static constexpr double kMaxDis = 0.2;
  static constexpr double kMaxRad = DegToRad(0.1);
  ///@}

  /// \param Cnt         see SetCount.
  /// \param InterpType  1 keeps the direction away from a lowest Z: a short turn whose Z falls at its start and rises
  ///                    at its end is replaced by the long one, the other way about the axis. Every other value takes
  ///                    the short turn.
  /// \throws the general error for poses, or an offset between them, that are not finite, for a direction longer than
  ///         1e75, and as SetCount does.
  TWcsPtInterpolator(const TPoint6D& BeginPt, const TPoint6D& EndPt, int Cnt, int InterpType);

  /// The move in as few steps as possible, none longer than MaxDis or turning further than MaxDeg degrees.
  /// \throws as above, and for limits that are not finite and above 0.
  TWcsPtInterpolator(const TPoint6D& BeginPt, const TPoint6D& EndPt, double MaxDis, double MaxDeg, int InterpType);

  // -------------------------------------------------------------------------------------- contents

  const TPoint6D& BeginPt() const { return FBeginPt; }    ///< start pose
  const TPoint6D& EndPt() const { return FEndPt; }        ///< end pose
  int InterpType() const { return FInterpType; }          ///< the kind of turn, as it was given
  const TPoint3D& OffsetPt() const { return FOffsetPt; }  ///< end position minus start position
  double OffSetAngle() const { return FOffSetAngle; }  ///< the whole turn in radians: 0 to pi, the long one below 2 pi
  double VecRad() const { return FOffSetAngle; }       ///< another name of OffSetAngle
  const TPoint3D& CrossVec() const { return FCrossVec; }  ///< the unit axis of the turn; zero where there is none

  ///@{
  /// The number of steps, 1 at least.
  int Count() const { return FCnt; }
  int Cnt() const { return FCnt; }
  ///@}

  /// Sets the number of steps; 0 becomes 1, and a negative Value asks for as few as kMaxDis and kMaxRad allow.
  /// \throws the general error, with the count as it was, when that number is above 2^31 - 1.
  void SetCount(int Value);

  // -------------------------------------------------------------------------------------- poses

  /// \return the pose Idx; the start pose for a negative number, the end pose for one above Count.
  ///         Allocates nothing, takes no lock.
  TPoint6D GetWcsPt(int Idx) const;
  /// \return the pose at Param, from 0 at the start to 1 at the end, clamped to that range.
  /// \throws the general error for a Param that is not a number. Allocates nothing, takes no lock.
  TPoint6D GetWcsPtbyParam(double Param) const;
  /// Gives the poses at many parameters, each bit for bit that of GetWcsPtbyParam.
  /// \throws the general error, with no pose written, when there are not as many WcsPts as Params or one is not a
  ///         number. Allocates nothing, takes no lock.
  void GetWcsPtsbyParams(std::span<const double> Params, std::span<TPoint6D> WcsPts) const;

  /// Writes the poses 0 to Count, one a line, ended by CR LF: TPoint6D::ToString1033 with 5 decimals. One pose at a
  /// time, so that a large count needs disk, not memory.
  /// \throws the general error when the file cannot be written; an existing file is then as it was.
  void SaveAllToFile(const std::string& AFileName) const;

 private:
  bool CheckVecZDer() const;

  TPoint6D FBeginPt;
  TPoint6D FEndPt;
  int FCnt = 1;
  int FInterpType = 0;
  TPoint3D FOffsetPt;
  double FOffSetAngle = 0.0;
  TPoint3D FCrossVec;
};

}  // namespace ZORBase
