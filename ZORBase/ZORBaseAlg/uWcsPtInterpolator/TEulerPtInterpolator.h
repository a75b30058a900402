#pragma once

#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerPoint.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Export.h>

#include <optional>
#include <span>
#include <string>

namespace ZORBase {

/// The straight move between two poses with Euler angles, in Count equal steps: poses 0 to Count, the start pose first
/// and the end pose last.
///
/// The position and each of the three angles change linearly. Nothing is unwrapped: from 170 to -170 degrees an angle
/// goes the long way, 340 degrees through 0. TWcsPtInterpolator, with the directions of the poses, takes the short
/// turn.
///
/// Only the count can change after construction.
class ZORBASE_API TEulerPtInterpolator {
 public:
  /// GetWcsList gives at most this many poses (48 bytes each).
  static constexpr int kMaxListPoses = 10'000'000;

  /// \param Cnt  see SetCount; the limits of an automatic count are 0.2, in the unit of X, Y, Z, and 0.1 degree.
  /// \throws the general error for poses, or an offset between them, that are not finite, and as SetCount does.
  TEulerPtInterpolator(const TEulerPoint& BeginPt, const TEulerPoint& EndPt, int Cnt);

  /// With an automatic count.
  /// \param MaxDis  the longest step, in the unit of X, Y, Z.
  /// \param MaxDeg  the largest step of the angles, in degrees: the length of the vector of the three differences.
  /// \throws the general error for a limit that is not finite and above 0, and as the other constructor does.
  TEulerPtInterpolator(const TEulerPoint& BeginPt, const TEulerPoint& EndPt, double MaxDis, double MaxDeg);

  // -------------------------------------------------------------------------------------- contents

  const TEulerPoint& BeginPt() const { return FBeginPt; }    ///< start pose
  const TEulerPoint& EndPt() const { return FEndPt; }        ///< end pose
  const TPoint3D& OffsetPt() const { return FOffsetPt; }     ///< end position minus start position
  const TEulerAng& OffOrient() const { return FOffOrient; }  ///< end angles minus start angles, not wrapped
  double MaxDis() const { return FMaxDis; }                  ///< the longest step of an automatic count
  double MaxRad() const { return FMaxRad; }                  ///< its largest step of the angles, in radians

  ///@{
  /// The number of steps, 1 at least.
  int Count() const { return FCnt; }
  int Cnt() const { return FCnt; }
  ///@}

  /// Sets the number of steps; 0 becomes 1, and a negative Value asks for as few as MaxDis and MaxRad allow.
  /// \throws the general error, with the count as it was, when that number is above 2^31 - 1.
  void SetCount(int Value);

  // -------------------------------------------------------------------------------------- poses

  /// \return the pose Idx; the start pose for a negative number, the end pose for one above Count.
  ///         Allocates nothing, takes no lock.
  TEulerPoint GetWcsPt(int Idx) const;
  /// \return the pose at Param, from 0 at the start to 1 at the end, clamped to that range.
  /// \throws the general error for a Param that is not a number. Allocates nothing, takes no lock.
  TEulerPoint GetWcsPtbyParam(double Param) const;
  /// Gives the poses at many parameters, each bit for bit that of GetWcsPtbyParam.
  /// \throws the general error, with no pose written, when there are not as many WcsPts as Params or one is not a
  ///         number. Allocates nothing, takes no lock.
  void GetWcsPtsbyParams(std::span<const double> Params, std::span<TEulerPoint> WcsPts) const;

  /// \return the poses 0 to Count; no list at all for a single step.
  /// \throws the general error, before anything is allocated, for more than kMaxListPoses poses.
  std::optional<TList<TEulerPoint>> GetWcsList() const;

  /// Writes the poses 0 to Count, one a line, ended by CR LF: TEulerPoint::ToString with 5 decimals, in the form of the
  /// current locale. Only a locale with a decimal point makes a file that TEulerPointList reads. One pose at a time, so
  /// that a large count needs disk, not memory.
  /// \throws the general error when the file cannot be written; an existing file is then as it was.
  void SaveAllToFile(const std::string& AFileName) const;

 private:
  void TakeOffsets();

  TEulerPoint FBeginPt;
  TEulerPoint FEndPt;
  int FCnt = 1;
  TPoint3D FOffsetPt;
  TEulerAng FOffOrient;
  double FMaxDis;
  double FMaxRad;
};

}  // namespace ZORBase
