// PathPicture: a path in three views, with the directions as ticks, or in the plane, and its curvature over its length.
#pragma once

#include <zor/PointKind.h>

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

/// The points of a file joined by straight lines; its curvature is that of the circles through three neighbours.
template <class TPoint>
TDrawnPath DrawnPolygon(const std::string& Name, const TList<TPoint>& Points);

struct TPathPicture {
  std::string Title;
  bool IsPlane = false;           ///< one view instead of three
  bool HasDirections = false;     ///< A, B, C of some dots are drawn as ticks
  std::string CurvatureTitle;     ///< of the lower panel
  std::string LengthTitle;        ///< of its axis
  std::vector<TDrawnPath> Paths;  ///< one to three
  std::string DotsName;
  TPoint6DList Dots;  ///< at least one; the first one is marked as the start
};

/// \return an empty picture of paths through this type of points.
template <class TPoint>
TPathPicture PictureOf();

/// \return points as they can be drawn.
template <class TPoint>
TPoint6DList DotsOf(const TList<TPoint>& Points) {
  TPoint6DList dots;
  dots.Reserve(Points.size());
  for (const TPoint& point : Points) dots.Add(TPoint6D(point));
  return dots;
}

/// \throws the general error that SavePlot raises.
void SavePathPicture(const TPathPicture& Picture, const std::string& FileName);

}  // namespace ZORBase::Tool
