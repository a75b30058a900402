#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Export.h>

#include <span>

namespace ZORBase {

/// A sample of a curve.
struct TSULine {
  double S = 0.0;  ///< arc length from the start of the curve
  double u = 0.0;  ///< parameter
  TPoint2D pos;    ///< the point of a plane curve; zero for a six-component one
  TPoint6D pos6d;  ///< the point of a six-component curve; zero for a plane one
};

/// The arc-length table of a curve: samples in rising order of S and of u, the first one at S = 0, u = 0. Between two rows
/// a cubic through them stands for the curve; a value within 1e-7 of a row is that row's, and one outside the table that
/// of the nearest end.
class ZORBASE_API TSUTable : public TList<TSULine> {
 public:
  using TList<TSULine>::TList;

  /// Remembers where the last look-up ended, so that the next one nearby is cheap. It serves one direction at a time.
  struct TCursor {
    int Row = 0;  ///< the row at which the next search begins
  };

  ///@{
  /// \return the arc length at the parameter u; with a cursor the very same number.
  /// \throws the general error "CalcuHermiteS: The dividend is 0" where neighbouring rows share their u, and that of an empty
  ///         list for an empty table.
  double GetSByU(double u) const;
  double GetSByU(double u, TCursor& Cursor) const;
  ///@}

  ///@{
  /// \return the parameter at the arc length S; with a cursor the very same number.
  /// \throws the general error "CalcuHermiteS: The dividend is 0" where neighbouring rows share their S, and that of an empty
  ///         list for an empty table.
  double GetUByS(double S) const;
  double GetUByS(double S, TCursor& Cursor) const;
  ///@}

  ///@{
  /// Gives GetUByS of every length, and GetSByU of every parameter, bit for bit; rising values are cheaper.
  /// \throws also the general error when the result has no place for every value; then nothing is written.
  void GetUByS(std::span<const double> S, std::span<double> u) const;
  void GetSByU(std::span<const double> u, std::span<double> S) const;
  ///@}
};

}  // namespace ZORBase
