#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/ClosestPoint.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/CurveFit.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/CurveTable.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TSUTable.h>
#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/BaseServices/TPersistent.h>
#include <ZORBase/common/Cadtypes/TMatrix2D.h>
#include <ZORBase/common/Export.h>

#include <array>
#include <cstdint>
#include <span>
#include <vector>

namespace ZORBase {

/// A cubic, non-rational B-spline curve on [0, 1] through points of type TPoint, its control points P[0..pCount-1], and its
/// arc-length table. Every component of a point counts alike in blending, distances and lengths.
///
/// Holds: the knot count is pCount + 4. A fitted curve is clamped: it starts in its first and ends in its last control point.
/// A curve without control points raises the general error wherever one is needed.
///
/// The fit is global cubic interpolation with end tangents: L. Piegl, W. Tiller, "The NURBS Book", 2nd edition, 9.2.3.
template <class TPoint>
class ZORBASE_API TNurbsCurve : public TPersistent {
 public:
  static constexpr double kSampleSpacing = kTableSpacing;  ///< the distance between two rows of the arc-length table
  static constexpr std::int64_t kMaxTableRows = ZORBase::kMaxTableRows;  ///< a table may have this many
  static constexpr int kFewestFitPoints = ZORBase::kFewestFitPoints;     ///< fewer points are not fitted
  /// Neighbours closer than this are the same point.
  static constexpr double kSmallestChord = ZORBase::kSmallestChord;

  // -------------------------------------------------------------------------------------- contents

  const TNurbsBasicFunc& BasicFun() const { return FBasicFun; }    ///< without knots until there are control points
  std::span<const TPoint> pointArr() const { return FPoints; }     ///< the control points
  int pCount() const { return static_cast<int>(FPoints.size()); }  ///< how many there are
  const TSUTable& SUTable() const { return FTable; }               ///< the arc-length table

  // -------------------------------------------------------------------------------------- evaluating

  /// \return the point at param; the last control point for param >= 1, the first one for param <= 0 or NaN.
  /// \throws the general error where the knots have no place for a param between 0 and 1; those of a fit always do.
  /// Allocates nothing, takes no lock.
  TPoint EvalPoint(double param) const;

  /// Gives the point and its first to third derivatives with respect to u, clamped to [0, 1], in CK[0..3].
  /// \throws the general error when CK has fewer than 4 places.
  /// Allocates nothing, takes no lock.
  void CurveDerivsAlg1(double u, std::span<TPoint> CK) const;

  /// Gives EvalPoint of every parameter, bit for bit, and cheaper than one by one.
  /// \throws the general error when Points has no place for every parameter.
  /// Allocates nothing, takes no lock.
  void EvalPoints(std::span<const double> Params, std::span<TPoint> Points) const;

  /// \return the curvature over all components at u, clamped to [0, 1]: |C'' less its part along C'| / |C'|^2; NaN where C' is 0.
  ///         Allocates nothing, takes no lock.
  double Curvature(double u) const;
  /// \return its reciprocal, infinite where the curve is straight.
  double CurvatureRadius(double u) const { return 1.0 / Curvature(u); }

  /// \return the place of the curve that is closest to point over all components, safe from local minima; of several that are
  ///         equally close, up to rounding, that with the smallest parameter. At a break, which four equal inner knots make, the
  ///         end before it is found at the double below the knot. Needs knots that are clamped on [0, 1], as every fit has them, and
  ///         distances of about 1e-150 to 1e150. Cost O(number of spans), also in memory that is allocated.
  /// \throws the general error for other knots, for a point that is not finite, and for a curve or a point too far away.
  TClosestPoint<TPoint> ClosestPoint(const TPoint& point) const;

  /// \return the control points of the Bezier segment that the curve is over the knot interval Span, from U[Span] to
  ///         U[Span+1]. Of a fitted curve, interval 3 + i lies between the points i and i+1.
  /// \throws the general error unless 3 <= Span < pCount and the interval is not empty. Allocates nothing, takes no lock.
  std::array<TPoint, 4> SpanBezier(int Span) const;

  /// \return whether the first and the last control point are closer than 1e-6.
  bool GetIsClosed() const;

  // -------------------------------------------------------------------------------------- arc length

  /// Builds the arc-length table. A fit does it by itself; after CreateByCtlPoints it is the caller's to do.
  /// \throws the general error when a knot is not finite or falls, when a chord is not finite, and when the table would need more
  ///         than kMaxTableRows rows; the table stays as it was.
  void InitLengthByUArray();

  /// \return the length of the curve: S of the table's last row. \throws the general error while there is no table.
  ///         Allocates nothing, takes no lock.
  double CurveLength() const { return FTable.Last().S; }
  double GetCurveLength() const { return CurveLength(); }  ///< another name of CurveLength

  /// Arc length from the start of the curve to the parameter, and back; see TSUTable. Allocates nothing, takes no lock.
  double GetSByU(double u) const { return FTable.GetSByU(u); }
  double GetUByS(double S) const { return FTable.GetUByS(S); }  ///< the reverse of GetSByU

  /// \return the arc length from one parameter to another; negative when paramTo lies before paramFrom.
  ///         Allocates nothing, takes no lock.
  double LengthOfParam(double paramFrom, double paramTo) const { return GetSByU(paramTo) - GetSByU(paramFrom); }

  /// \return the parameter at the arc length from the start. Allocates nothing, takes no lock.
  double ParamOfLength(double length) const { return GetUByS(length); }
  /// The same number; cheaper where it lies less than eight rows of the table, about 0.2, behind the place of the last look-up.
  double ParamOfLength(double length, TSUTable::TCursor& Cursor) const { return FTable.GetUByS(length, Cursor); }

  /// Gives ParamOfLength of every length, bit for bit; lengths that rise in small steps are cheaper.
  /// \throws the general error when params has no place for every length.
  /// Allocates nothing, takes no lock.
  void ParamOfLength(std::span<const double> lengths, std::span<double> params) const {
    FTable.GetUByS(lengths, params);
  }

  /// Scans the table for the row whose plane point pos is nearest to point; the first one of several. Param becomes its
  /// parameter, the result its pos; 0 and the zero point for an empty table. Tolerance is not used.
  /// The rows of a six-component curve hold no plane point, so there the first row is found: parameter 0, the zero point.
  /// Allocates nothing, takes no lock.
  TPoint GetNearestPoint(const TPoint& point, double Tolerance, double& Param) const;

  // -------------------------------------------------------------------------------------- bounds

  /// Largest and smallest X and Y over the control points; further components are those of the first control point. The zero
  /// point when there are none. Computed anew at every call.
  TPoint GetMax();
  TPoint GetMin();  ///< the smallest, as GetMax

  bool pointsChanged() const { return FPointsChanged; }  ///< whether the bounds are to be computed anew
  const TPoint& maxPos() const { return FMaxPos; }       ///< as the last GetMax or GetMin left it
  const TPoint& minPos() const { return FMinPos; }       ///< as maxPos

  // -------------------------------------------------------------------------------------- changing

  /// Moves the control points so that the first one is the zero point. Knots and table stay.
  void RelativeToZero();

  /// Reverses the travel; the knots are mirrored on [0, 1] and the table is rewritten without six-component points. With an even
  /// count of control points the middle pair keeps its order: A B C D gives D B C A.
  void Reverse();

 protected:
  TNurbsCurve() = default;

  /// Takes over knots and control points: the first pointCount + 4 and pointCount. The table stays.
  /// \return false, with the curve as it was, unless there are four more knots than points.
  /// \throws the general error when pointCount is negative or there are fewer points.
  bool TakeControlPoints(std::span<const double> uVec, std::span<const TPoint> points, int pointCount);

  /// Fits the curve through Q. \return false, with the curve as it was, for fewer than 4 points.
  /// \throws the general error, with the curve as it was, for neighbours closer than 1e-6, points that are not finite or too
  ///         large to measure, neighbours closer than 1e-6 of the path, and a table of too many rows.
  bool FitThrough(std::span<const TPoint> Q, TParalizeMethod Method);

  /// Replaces every control point by Transform of it. Knots and table stay.
  template <class TTransform>
  void TransformControlPoints(TTransform&& Transform) {
    for (TPoint& P : FPoints) P = Transform(P);
  }

  /// Takes over knots, control points, bounds and table.
  void AssignCurve(const TNurbsCurve& Source);

 private:
  void RequireControlPoints() const;
  void UpdatePointsVariables();

  TNurbsBasicFunc FBasicFun;
  std::vector<TPoint> FPoints;
  bool FAreForLanes = false;  // vector lanes can have the control points
  bool FPointsChanged = true;
  TPoint FMaxPos{};
  TPoint FMinPos{};
  TSUTable FTable;
};

}  // namespace ZORBase
