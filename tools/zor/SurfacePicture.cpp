#include <zor/SurfacePicture.h>

#include <fmt/format.h>
#include <zor/Plot.h>

#include <iterator>

namespace ZORBase::Tool {
namespace {

constexpr TPlotSize kSize = {1100, 950};

// Dark is low, light is high, at an even pace for the eye and without red against green.
constexpr auto kColours =
    "set palette defined (0 '#26185f', 0.2 '#2d5aa0', 0.4 '#2f8f9d', 0.6 '#4fb783', 0.8 '#a8d65c', 1 '#fdee74')\n";

void AppendGrid(std::string& Script, const TSurfacePicture& Picture) {
  Script += "$map << EOD\n";
  auto height = Picture.Heights.begin();
  for (std::int64_t row = 0; row < Picture.Grid.Rows; ++row) {
    for (const TPoint2D& place : Picture.Grid.RowPlaces(row)) {
      fmt::format_to(std::back_inserter(Script), "{:.9g} {:.9g} {:.6g}\n", place.X, place.Y, *height++);
    }
    Script += '\n';  // gnuplot parts the rows of a grid by empty lines
  }
  Script += "EOD\n";
}

void AppendSamples(std::string& Script, const TList<TPoint3D>& Samples) {
  Script += "$samples << EOD\n";
  for (const TPoint3D& sample : Samples) {
    fmt::format_to(std::back_inserter(Script), "{:.9g} {:.9g} {:.6g}\n", sample.X, sample.Y, sample.Z);
  }
  Script += "EOD\n";
}

}  // namespace

void SaveSurfacePicture(const TSurfacePicture& Picture, const std::string& FileName) {
  std::string script;
  AppendGrid(script, Picture);
  AppendSamples(script, Picture.Samples);
  script +=
      fmt::format("set title {}\nset xlabel 'x'\nset ylabel 'y'\nset cblabel 'height'\n", PlotString(Picture.Title));
  script += kColours;
  script +=
      "set view map\nset size ratio -1\nset lmargin at screen 0.1\nset rmargin at screen 0.84\n"
      "set tmargin at screen 0.93\nset bmargin at screen 0.13\nset tics out nomirror\n"
      "set contour base\nset cntrparam levels auto 12\nset cntrlabel onecolor\n"
      "set autoscale xfix\nset autoscale yfix\nset autoscale cbfix\n"
      "set key at screen 0.47,0.03 center center horizontal maxrows 1 samplen 2\n"
      "splot $map with pm3d nocontour notitle, $map with lines nosurface lc rgb '#606060' lw 0.7 title 'contours', "
      "$samples with points nocontour pt 7 ps 0.6 lc rgb '#d0432b' title 'samples'\n";
  SavePlot(script, kSize, FileName);
}

}  // namespace ZORBase::Tool
