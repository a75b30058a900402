#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsCurve.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

extern template class TNurbsCurve<TPoint6D>;

/// The cubic B-spline curve through six-component poses: position and direction are blended alike, and all six components
/// count in every distance and length. Lengths are in the unit of X, Y, Z with the direction's components beside them.
class ZORBASE_API TNurbs6D : public TNurbsCurve<TPoint6D> {
 public:
  // -------------------------------------------------------------------------------------- making

  /// Fits the curve through measured poses and builds its arc-length table.
  /// \param passByPoints    n+1 poses, n >= 3; a null list gives false.
  /// \param paralizeMethod  how the parameters are spread; mChord suits unevenly spaced poses.
  /// \return false for fewer than 4 poses (CrossPtNum is set all the same); true once fitted.
  /// \throws the general error "Error TNurbs6D.CreateCross PtList distance is 0" when two neighbours are closer than 1e-6; also
  ///         for poses that are not finite or too large to measure, for neighbours closer than 1e-6 of the path, and when the
  ///         table would need more than kMaxTableRows rows. The curve is then as it was.
  /// After: n+3 control points, n+7 knots on [0, 1]; EvalPoint(0) and EvalPoint(1) are the end poses exactly. Cost O(n), and a
  /// table row per 0.03 of length.
  bool CreateCross(const TPoint6DList* passByPoints, TParalizeMethod paralizeMethod);

  ///@{
  /// Takes over the first pointCount + 4 knots and pointCount control points. The arc-length table is not rebuilt.
  /// \return false, with the curve as it was, for a null list or unless there are four more knots than points.
  /// \throws the general error when pointCount is negative or there are fewer points.
  bool CreateByCtlPoints(const TDoubleList* uVec, const TList<TPoint6D>* points, int pointCount);
  bool CreateByCtlPoints(std::span<const double> uVec, std::span<const TPoint6D> points, int pointCount);
  ///@}

  ///@{
  /// The number of poses that CreateCross was last given; 0 before.
  int CrossPtNum() const { return FPassByPtNum; }
  int PassByPtNum() const { return FPassByPtNum; }
  ///@}

  // -------------------------------------------------------------------------------------- the steps of a fit

  /// Spreads the parameters of the points over [0, 1] and sums up their chord length; any method but mEqually and mChord is
  /// mCentripetal.
  /// \return false, with nothing settled about Params and Length, when two neighbours are closer than 1e-6.
  /// \throws the general error when Params has no place for every point.
  static bool CurveParalize(const TPoint6DList& Points, std::span<double> Params, double& Length,
                            TParalizeMethod Method);
  ///@{
  /// CurveParalize by one of the methods.
  static bool EquallyParalize(const TPoint6DList& Points, std::span<double> Params, double& Length);
  static bool ChordParalize(const TPoint6DList& Points, std::span<double> Params, double& Length);
  static bool CentripetalParalize(const TPoint6DList& Points, std::span<double> Params, double& Length);
  ///@}

  /// Solves for the control points P[2..n] of the curve through Q[0..n] with the knots U[0..n+6]; P[0], P[1], P[n+1] and P[n+2]
  /// are given.
  /// \throws the general error when n < 3, when an array is too short, and when two points are too close, naming them.
  static void SolveTridiagonal(int n, const TPoint6DList& Q, std::span<const double> U, std::span<TPoint6D> P);

  // -------------------------------------------------------------------------------------- changing

  /// A plane transform leaves a six-component curve as it is. \return true.
  bool TransformBy(const TMatrix2D& M);

  /// Takes over another TNurbs6D, but for CrossPtNum.
  void Assign(const TPersistent& Source) override;
  std::string_view ClassName() const override;

 private:
  int FPassByPtNum = 0;
};

}  // namespace ZORBase
