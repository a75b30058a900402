#pragma once

#include <ZORBase/ZORGeometry/CADTypesXD/TTWoDerivCurveXD.h>

#include <vector>

namespace ZORBase::Tool {

/// A smooth curve through points of up to 44 coordinates, as TTWoDerivCurveXD lays it: one cubic Bezier segment between
/// neighbours, all of them kept.
class TSplinePath {
 public:
  /// \param Points  of one dimension.
  /// \throws the general error that TTWoDerivCurveXD raises, and one for fewer than 3 points.
  explicit TSplinePath(const TList<TPointXD>& Points);

  int SegmentCount() const { return static_cast<int>(FEnds.size()); }
  /// \return the segment Index, 0 to SegmentCount - 1.
  TCubicBezXD Segment(int Index) const;

  int Dimension() const { return static_cast<int>(FDimension); }
  double Length() const { return FEnds.back(); }
  /// \return the arc length from the start of the curve to the start of a segment.
  double LengthBefore(int Index) const { return Index == 0 ? 0.0 : FEnds[static_cast<std::size_t>(Index) - 1]; }

 private:
  TPointXD PointAt(std::size_t Place) const;

  std::size_t FDimension = 0;
  std::vector<double>
      FNumbers;  // three control points of each segment, its end being the start of the next, and the last one
  std::vector<double> FLengths;  // of each segment
  std::vector<double> FEnds;     // arc length from the start of the curve to the end of each segment
};

/// \return the parameter at the arc length Length from the start of a segment, as good as LengthOfParam can measure it.
double ParamAtLength(const TCubicBezXD& Segment, double Length);

/// \return the curvature over all coordinates at t, in 1 / (their unit); 0 where the segment stands still.
double CurvatureAt(const TCubicBezXD& Segment, double t);

/// Gives points of a curve by arc length. Rising lengths are cheap: the search for a segment starts where the last one ended.
class TSplineWalk {
 public:
  explicit TSplineWalk(const TSplinePath& Path) : FPath(Path), FSegment(Path.Segment(0)) {}

  TPointXD operator()(double Length);

 private:
  const TSplinePath& FPath;
  int FIndex = 0;
  TCubicBezXD FSegment;
};

}  // namespace ZORBase::Tool
