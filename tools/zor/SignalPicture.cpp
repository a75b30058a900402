#include <zor/SignalPicture.h>

#include <fmt/format.h>
#include <zor/Plot.h>

#include <array>
#include <iterator>
#include <string_view>

namespace ZORBase::Tool {
namespace {

constexpr TPlotSize kSize = {1400, 700};

// Later lines lie on top of the earlier ones.
struct TPen {
  std::string_view Colour;
  double Width;
};
constexpr std::array<TPen, 3> kPens = {{{"#9db8d6", 1.2}, {"#d0432b", 1.8}, {"#2a9d5c", 1.2}}};

void AppendData(std::string& Script, std::size_t Index, const TSignalLine& Line) {
  Script += fmt::format("$line{} << EOD\n", Index);
  for (const auto& place : Line.Places()) {
    fmt::format_to(std::back_inserter(Script), "{:.9g} {:.9g}\n", place.X, place.Y);
  }
  Script += "EOD\n";
}

}  // namespace

void TSignalLine::Add(double X, double Y) {
  if (FAdded++ % FStride != 0) return;
  FPlaces.push_back({X, Y});
  if (FPlaces.size() < kMostPoints) return;
  for (std::size_t i = 0; 2 * i < FPlaces.size(); ++i) FPlaces[i] = FPlaces[2 * i];
  FPlaces.resize((FPlaces.size() + 1) / 2);
  FStride *= 2;
}

void SaveSignalPicture(const TSignalPicture& Picture, const std::string& FileName) {
  std::string script;
  for (std::size_t i = 0; i < Picture.Lines.size(); ++i) AppendData(script, i, Picture.Lines[i]);
  script += fmt::format("set title {}\nset xlabel {}\nset ylabel {}\n", PlotString(Picture.Title),
                        PlotString(Picture.XTitle), PlotString(Picture.YTitle));
  script += "set grid lc rgb '#dddddd'\nset key top right\nset autoscale xfix\n";
  script += Picture.Lines.size() > 1 ? "set key\n" : "unset key\n";
  for (std::size_t i = 0; i < Picture.Lines.size(); ++i) {
    const TPen& pen = Picture.Lines.size() == 1 ? kPens[1] : kPens[i % kPens.size()];
    script += fmt::format("{} $line{} using 1:2 with lines lc rgb '{}' lw {} title {}", i == 0 ? "plot" : ",", i,
                          pen.Colour, pen.Width, PlotString(Picture.Lines[i].Name()));
  }
  SavePlot(script + "\n", kSize, FileName);
}

}  // namespace ZORBase::Tool
