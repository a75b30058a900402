// PathPicture: a path in three views, with the directions as ticks, and its curvature over its length.
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>

#include <string>
#include <vector>

namespace ZORBase::Tool {

struct TCurvatureSample {
  double Length = 0.0;     ///< arc length from the start
  double Curvature = 0.0;  ///< 1 / (unit of X, Y, Z)
};

/// A line of the picture.
struct TDrawnPath {
  std::string Name;
  TPoint6DList Points;
  std::vector<TCurvatureSample> Curvature;
};

/// A fitted path.
TDrawnPath DrawnCurve(const std::string& Name, const TNurbs6D& Curve);

/// The poses of a file joined by straight lines; its curvature is that of the circles through three neighbours.
TDrawnPath DrawnPolygon(const std::string& Name, const TPoint6DList& Poses);

struct TPathPicture {
  std::string Title;
  std::vector<TDrawnPath> Paths;  ///< at least one
  std::string PosesName;
  TPoint6DList Poses;  ///< shown as dots, some of them with their direction
};

/// \throws the general error that SavePlot raises.
void SavePathPicture(const TPathPicture& Picture, const std::string& FileName);

}  // namespace ZORBase::Tool
