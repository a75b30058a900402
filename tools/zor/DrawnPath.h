// DrawnPath: paths as the lines of a picture.
#pragma once

#include <zor/PointKind.h>
#include <zor/SplinePath.h>

#include <string>
#include <vector>

namespace ZORBase::Tool {

struct TCurvatureSample {
  double Length = 0.0;     ///< arc length from the start
  double Curvature = 0.0;  ///< 1 / (unit of the position)
};

/// A line of the picture.
struct TDrawnPath {
  std::string Name;
  TPoint6DList Points;  ///< only X, Y, Z are drawn
  std::vector<TCurvatureSample> Curvature;
};

/// A fitted path.
template <class TPoint>
TDrawnPath DrawnCurve(const std::string& Name, const TNurbsCurve<TPoint>& Curve);

/// A smooth curve; the first three coordinates are X, Y, Z, and its curvature is over all of them.
TDrawnPath DrawnSpline(const std::string& Name, const TSplinePath& Path);

/// The points of a file joined by straight lines; its curvature is that of the circles through three neighbours.
template <class TPoint>
TDrawnPath DrawnPolygon(const std::string& Name, const TList<TPoint>& Points);

/// \return points as they can be drawn.
template <class TPoint>
TPoint6DList DotsOf(const TList<TPoint>& Points) {
  TPoint6DList dots;
  dots.Reserve(Points.size());
  for (const TPoint& point : Points) dots.Add(static_cast<TPoint6D>(point));
  return dots;
}

}  // namespace ZORBase::Tool
