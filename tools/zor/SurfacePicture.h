// SurfacePicture: heights over the plane as a map in colours with contour lines.
#pragma once

#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <zor/SurfaceGrid.h>

#include <string>
#include <vector>

namespace ZORBase::Tool {

struct TSurfacePicture {
  std::string Title;
  TSurfaceGrid Grid;
  std::vector<double> Heights;  ///< at the places of the grid, in their order
  TList<TPoint3D> Samples;      ///< shown as dots
};

/// \throws the general error that SavePlot raises.
void SaveSurfacePicture(const TSurfacePicture& Picture, const std::string& FileName);

}  // namespace ZORBase::Tool
