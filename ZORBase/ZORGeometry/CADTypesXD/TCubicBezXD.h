#pragma once

#include <ZORBase/ZORGeometry/CADTypesXD/TPointXD.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

/// A cubic Bezier segment in up to 44 coordinates, B(t) = s^3 P0 + 3 s^2 t P1 + 3 s t^2 P2 + t^3 P3 with s = 1 - t, for t in
/// [0, 1]. Its length runs over the coordinates of FP0; the control points are expected to share one dimension.
struct ZORBASE_API TCubicBezXD {
  TPointXD FP0;          ///< start point
  TPointXD FP1;          ///< pulls the start
  TPointXD FP2;          ///< pulls the end
  TPointXD FP3;          ///< end point
  double FLength = 0.0;  ///< arc length of the whole segment

  /// \return the segment, with its length measured.
  static TCubicBezXD Create(const TPointXD& P0, const TPointXD& P1, const TPointXD& P2, const TPointXD& P3);

  /// \return the point at t; FP0 itself for t <= 0 or NaN, FP3 itself for t >= 1. Allocates nothing, takes no lock.
  TPointXD EvalPoint(double t) const;
  /// As the formulas give them at t, clamped to [0, 1], also at the ends.
  /// \return the point; D1 to D3 become the derivatives with respect to t.
  TPointXD EvalPoint(double t, TPointXD& D1, TPointXD& D2, TPointXD& D3) const;
  ///@{
  /// \return the first and the second derivative with respect to t, clamped to [0, 1].
  TPointXD EvalDeriv(double t) const;
  TPointXD EvalDeriv2(double t) const;
  ///@}

  /// \return the speed |B'(t)|; t is not clamped.
  double GaussLengthFunc(double t) const;
  /// \return the arc length between two parameters in [0, 1], by 14-point Gauss-Legendre quadrature; 0 for t0 >= t1,
  ///         NaN where one of them is NaN. Allocates nothing, takes no lock, but for the first use in the process.
  double LengthOfParam(double t0, double t1) const;
  /// \return the parameter at the arc length Len from the start, found by halving steps: its length is within 1e-4 of Len, or
  ///         the last step was 2^-19. 1 for a Len at or above the whole length. Costs up to 20 quadratures.
  ///         Allocates nothing, takes no lock, but for the first use in the process.
  double ParamOfLength(double Len) const;
  double CurveLength() const { return FLength; }  ///< the arc length of the whole segment
};

}  // namespace ZORBase
