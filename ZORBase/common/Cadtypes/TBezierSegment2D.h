#pragma once

#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

/// A cubic Bezier segment of the plane with the control points P0 to P3, parametrised on [0, 1].
struct ZORBASE_API TBezierSegment2D {
  TPoint2D P0;  ///< start
  TPoint2D P1;  ///< pulls the start
  TPoint2D P2;  ///< pulls the end
  TPoint2D P3;  ///< end

  /// The segment with these control points.
  static constexpr TBezierSegment2D Create(const TPoint2D& P0, const TPoint2D& P1, const TPoint2D& P2,
                                           const TPoint2D& P3) {
    return {P0, P1, P2, P3};
  }

  ///@{
  /// Gives the point at T and the derivatives with respect to T there. T is not clamped. Allocates nothing, takes no lock.
  void EvalPoint(double T, TPoint2D& APoint, TPoint2D& ADer1, TPoint2D& ADer2) const;
  void EvalPoint(double T, TPoint2D& APoint, TPoint2D& ADer1, TPoint2D& ADer2, TPoint2D& ADer3) const;
  ///@}
};

}  // namespace ZORBase
