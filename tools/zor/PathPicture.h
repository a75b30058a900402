// PathPicture: a path in three views, with the directions as ticks, or in the plane, and its curvature over its length.
#pragma once

#include <zor/DrawnPath.h>

#include <string>
#include <vector>

namespace ZORBase::Tool {

struct TPathPicture {
  std::string Title;
  bool IsPlane = false;           ///< one view instead of three
  bool HasDirections = false;     ///< A, B, C of some dots are drawn as ticks
  std::string CurvatureTitle;     ///< of the lower panel
  std::string LengthTitle;        ///< of its axis
  std::vector<TDrawnPath> Paths;  ///< one to three
  std::string DotsName;
  TPoint6DList Dots;  ///< at least one
};

/// \return an empty picture of paths through this type of points.
template <class TPoint>
TPathPicture PictureOf();

/// \throws the general error that SavePlot raises.
void SavePathPicture(const TPathPicture& Picture, const std::string& FileName);

}  // namespace ZORBase::Tool
