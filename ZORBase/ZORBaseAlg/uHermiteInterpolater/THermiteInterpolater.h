#pragma once

#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

/// A function y(x) through samples with ascending x: between two neighbours the cubic with their values and with slopes
/// estimated by finite differences.
///
/// To be called in this order: BeginCurve, AddPoint for every sample, EndCurve, then CalcY as often as wanted. A table of a
/// loop is one period of a periodic function; that changes the slopes at its two ends, but x is not wrapped into the period.
class ZORBASE_API THermiteInterpolater {
 public:
  THermiteInterpolater() = default;
  ~THermiteInterpolater() = default;
  ///@{
  /// The table moves along; the one moved from is empty.
  THermiteInterpolater(THermiteInterpolater&&) = default;
  THermiteInterpolater& operator=(THermiteInterpolater&&) = default;
  ///@}
  THermiteInterpolater(const THermiteInterpolater&) = delete;
  THermiteInterpolater& operator=(const THermiteInterpolater&) = delete;

  /// Forgets the samples and the slopes and starts a new table.
  void BeginCurve(bool IsLoop);

  /// Appends a sample. The order of X is the caller's care: in a table that does not rise, some interval answers.
  void AddPoint(double X, double Y);

  /// Closes the table: a loop's last sample takes the first one's value, then the slope of every sample is appended to SrcDiff.
  /// The divisions are plain, so that samples of equal X leave slopes that are infinite or not a number.
  /// \throws the general error "List index out of bounds (N)" for fewer than two samples; the table stays as it was.
  void EndCurve();

  /// \return y at X: the value of a sample closer than 1e-7, the first or last value outside the table, the cubic between two
  ///         samples otherwise. A slope or value that is not a number gives one. Allocates nothing, takes no lock.
  /// \throws the general error "CalcuHermiteS: The dividend is 0" between samples of equal X and where EndCurve has not given a
  ///         slope, and "List index out of bounds (0)" for an empty table.
  double CalcY(double X) const;

  const TDoubleList& SrcX() const { return FSrcX; }        ///< the places of the samples
  const TDoubleList& SrcY() const { return FSrcY; }        ///< their values
  const TDoubleList& SrcDiff() const { return FSrcDiff; }  ///< their slopes, from EndCurve on
  bool IsLoop() const { return FIsLoop; }                  ///< whether the table is one period

 private:
  void UpdataDiff();
  double CalcHermiteY(double x, int idx) const;

  TDoubleList FSrcX;
  TDoubleList FSrcY;
  TDoubleList FSrcDiff;
  bool FIsLoop = false;
};

}  // namespace ZORBase
