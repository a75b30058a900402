// Plot: pictures by gnuplot.
#pragma once

#include <string>
#include <string_view>

namespace ZORBase::Tool {

/// \return whether a picture can have this file name: it ends in .svg or .png.
bool IsPictureName(std::string_view FileName);

/// The size of a picture.
struct TPlotSize {
  int Width = 0;  ///< in pixels
  int Height = 0;
};

/// Lets gnuplot run Script, which plots to the current terminal (its data stands inside, as data blocks), and saves the picture.
/// The file gets its name only when the picture is whole.
/// \throws the general error when gnuplot is missing or fails, and when the file cannot be written.
void SavePlot(const std::string& Script, const TPlotSize& Size, const std::string& FileName);

/// \return Text as a string constant of gnuplot in which nothing is replaced.
std::string PlotString(std::string_view Text);

}  // namespace ZORBase::Tool
