#pragma once

#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsCurve.h>
#include <ZORBase/common/Cadtypes/TMatrix2D.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

extern template class TNurbsCurve<TPoint2D>;

/// The cubic B-spline curve through points of the plane. Lengths are in the unit of X and Y.
class ZORBASE_API TNurbs2D : public TNurbsCurve<TPoint2D> {
 public:
  // -------------------------------------------------------------------------------------- making

  /// Fits the curve through n+1 measured points, n >= 3, and builds its arc-length table.
  /// \return false for fewer than 4 points; true once fitted.
  /// \throws the general error "Error TNurbs2D.CreateCross PtList distance is 0" when two neighbours are closer than 1e-6; also
  ///         for points that are not finite or too large to measure, for neighbours closer than 1e-6 of the path, and when the
  ///         table would need more than kMaxTableRows rows. The curve is then as it was.
  bool CreateCross(const TList<TPoint2D>& Points, TParalizeMethod Method);

  /// Takes over the first pointCount + 4 knots and pointCount control points. The arc-length table is not rebuilt.
  /// \return false, with the curve as it was, unless there are four more knots than points.
  /// \throws the general error when pointCount is negative or there are fewer points.
  bool CreateByCtlPoints(std::span<const double> uVec, std::span<const TPoint2D> points, int pointCount);

  // -------------------------------------------------------------------------------------- the steps of a fit

  ///@{
  /// Each spreads the parameters of the points over [0, 1] and sums up their chord length.
  /// \return false, with nothing settled about Params and Length, when two neighbours are closer than 1e-6.
  /// \throws the general error when Params has no place for every point.
  static bool EquallyParalize(const TList<TPoint2D>& Points, std::span<double> Params, double& Length);
  static bool ChordParalize(const TList<TPoint2D>& Points, std::span<double> Params, double& Length);
  static bool CentripetalParalize(const TList<TPoint2D>& Points, std::span<double> Params, double& Length);
  ///@}

  /// Solves for the control points P[2..n] of the curve through Q[0..n] with the knots U[0..n+6]; P[0], P[1], P[n+1] and P[n+2]
  /// are given.
  /// \throws the general error when n < 3, when an array is too short, and when two points are too close, naming them.
  static void SolveTridiagonal(int n, const TList<TPoint2D>& Q, std::span<const double> U, std::span<TPoint2D> P);

  // -------------------------------------------------------------------------------------- changing

  /// Transforms every control point. Knots and arc-length table stay, so lengths and GetNearestPoint still speak of the curve
  /// before; InitLengthByUArray brings them up to date.
  /// \return true.
  bool TransformBy(const TMatrix2D& M);

  /// Takes over another TNurbs2D.
  void Assign(const TPersistent& Source) override;
  std::string_view ClassName() const override;
};

}  // namespace ZORBase
