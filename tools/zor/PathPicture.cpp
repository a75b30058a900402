#include <zor/PathPicture.h>

#include <fmt/format.h>
#include <zor/Plot.h>
#include <zor/PoseMeasures.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <iterator>
#include <span>
#include <string_view>

namespace ZORBase::Tool {
namespace {

constexpr int kDrawnDots = 1500;
constexpr int kDrawnTicks = 60;

// ------------------------------------------------------------------------------------------------ layout, in pixels

constexpr TPlotSize kSize = {1500, 1000};
constexpr double kLeft = 90.0;
constexpr double kRight = 40.0;
constexpr double kTitleTop = 34.0;
constexpr double kLegendTop = 66.0;
constexpr double kViewTop = 130.0;
constexpr double kViewSide = 380.0;  // a plane picture has one view of this height and the whole width
constexpr double kInnerWidth = kSize.Width - kLeft - kRight;
constexpr double kCurvatureTop = 620.0;
constexpr double kCurvatureBottom = 930.0;

struct TView {
  std::string_view Title;
  int Across;  ///< component of a pose: 0 is X
  int Upwards;
};

constexpr std::array<TView, 3> kSpaceViews = {
    {{"XY, seen from above", 0, 1}, {"XZ, seen from the front", 0, 2}, {"YZ, seen from the side", 1, 2}}};
constexpr std::array<TView, 1> kPlaneViews = {{{"XY", 0, 1}}};
constexpr std::array<std::string_view, 3> kAxes = {"X", "Y", "Z"};

// Later lines are thinner, so that those under them stay visible.
struct TPen {
  std::string_view Colour;
  double Width;
};
constexpr std::array<TPen, 3> kPathPens = {{{"#1f5fa8", 2.0}, {"#d0432b", 1.4}, {"#2a9d5c", 0.9}}};
constexpr TPen kTickPen = {"#eba63c", 1.2};
constexpr std::string_view kDotColour = "#404040";

std::span<const TView> ViewsOf(const TPathPicture& Picture) {
  return Picture.IsPlane ? std::span<const TView>(kPlaneViews) : kSpaceViews;
}

double ViewWidth(const TPathPicture& Picture) { return Picture.IsPlane ? kInnerWidth : kViewSide; }

double FromLeft(double Pixels) { return Pixels / kSize.Width; }
double FromTop(double Pixels) { return 1.0 - Pixels / kSize.Height; }

std::string Margins(double Left, double Right, double Top, double Bottom) {
  return fmt::format(
      "set lmargin at screen {:.5f}\nset rmargin at screen {:.5f}\n"
      "set tmargin at screen {:.5f}\nset bmargin at screen {:.5f}\n",
      FromLeft(Left), FromLeft(Right), FromTop(Top), FromTop(Bottom));
}

// ------------------------------------------------------------------------------------------------ data

// Every which one of Count things is shown so that there are about Wanted of them.
int Stride(int Count, int Wanted) { return std::max(1, (Count + Wanted - 1) / Wanted); }

// The indices 0, Step, 2 Step ... below Count, and the last one.
std::vector<int> Every(int Count, int Wanted) {
  std::vector<int> indices;
  for (int i = 0; i < Count; i += Stride(Count, Wanted)) indices.push_back(i);
  if (Count > 0 && indices.back() != Count - 1) indices.push_back(Count - 1);
  return indices;
}

void AppendPoints(std::string& Script, std::string_view Name, const TPoint6DList& Points,
                  const std::vector<int>& Indices) {
  Script += fmt::format("${} << EOD\n", Name);
  for (const int i : Indices) {
    fmt::format_to(std::back_inserter(Script), "{:.12g} {:.12g} {:.12g}\n", Points[i].X, Points[i].Y, Points[i].Z);
  }
  Script += "EOD\n";
}

void AppendTicks(std::string& Script, const TPoint6DList& Dots, double Length) {
  Script += "$ticks << EOD\n";
  for (const int i : Every(Dots.Count(), kDrawnTicks)) {
    const TPoint3D tick = Dots[i].GetVector().Normal() * Length;
    fmt::format_to(std::back_inserter(Script), "{:.12g} {:.12g} {:.12g} {:.12g} {:.12g} {:.12g}\n", Dots[i].X,
                   Dots[i].Y, Dots[i].Z, tick.X, tick.Y, tick.Z);
  }
  Script += "EOD\n";
}

// The samples of a path, the highest one of each column of pixels where there are more of them than columns.
void AppendCurvature(std::string& Script, std::string_view Name, const std::vector<TCurvatureSample>& Samples) {
  const double length = Samples.empty() ? 0.0 : Samples.back().Length;
  Script += fmt::format("${} << EOD\n", Name);
  for (std::size_t i = 0; i < Samples.size();) {
    TCurvatureSample highest = Samples[i];
    const double columnEnd = Samples[i].Length + length / kInnerWidth;
    for (; i < Samples.size() && Samples[i].Length <= columnEnd; ++i) {
      if (Samples[i].Curvature > highest.Curvature) highest = Samples[i];
    }
    fmt::format_to(std::back_inserter(Script), "{:.9g} {:.9g}\n", highest.Length, highest.Curvature);
  }
  Script += "EOD\n";
}

// What the views show.
struct TScene {
  TBox Box;
  double UnitsPerPixel = 1.0;  ///< the one scale of all axes
  double TickLength = 0.0;
};

TScene SceneOf(const TPathPicture& Picture) {
  TPoint6DList corners;
  const auto add = [&](const TPoint6DList& Points) {
    const TBox box = BoxOf<TPoint6D>(Points);
    corners.Add(box.Min);
    corners.Add(box.Max);
  };
  add(Picture.Dots);
  for (const TDrawnPath& path : Picture.Paths) add(path.Points);
  constexpr double kTickPart = 0.08;
  constexpr double kRoom = 1.24;  // times the box, so that its directions and a rim have room
  const TBox box = BoxOf<TPoint6D>(corners);
  const double extent = ExtentOf(box);
  double unitsPerPixel = extent / ViewWidth(Picture);
  if (Picture.IsPlane) unitsPerPixel = std::max(unitsPerPixel, (box.Max.Y - box.Min.Y) / kViewSide);
  return {box, kRoom * unitsPerPixel, kTickPart * extent};
}

// ------------------------------------------------------------------------------------------------ panels

std::string PathName(std::size_t Index) { return fmt::format("path{}", Index); }
std::string CurvatureName(std::size_t Index) { return fmt::format("curvature{}", Index); }

std::string PathStyle(const TPathPicture& Picture, std::size_t Index) {
  constexpr int kManyPoints = 1000;  // lines of a long path lie close together
  const double thinner = Picture.Paths[Index].Points.Count() > kManyPoints ? 0.6 : 1.0;
  return fmt::format("lines lw {} lc rgb '{}'", kPathPens[Index].Width * thinner, kPathPens[Index].Colour);
}

std::string TickStyle() { return fmt::format("vectors nohead lw {} lc rgb '{}'", kTickPen.Width, kTickPen.Colour); }

std::string DotStyle(double Size) { return fmt::format("points pt 7 ps {} lc rgb '{}'", Size, kDotColour); }

std::string StartStyle() { return fmt::format("points pt 6 ps 1.6 lw 2 lc rgb '{}'", kDotColour); }

// The title, and one legend for all panels: a panel without axes that plots nothing.
void AppendHead(std::string& Script, const TPathPicture& Picture) {
  Script += Margins(kLeft, kSize.Width - kRight, kTitleTop, kViewTop);
  Script += fmt::format(
      "unset border\nunset tics\nset xrange [0:1]\nset yrange [0:1]\n"
      "set label 1 {} at screen 0.5,{:.5f} center font ',17'\n"
      "set key at screen 0.5,{:.5f} center center horizontal maxrows 1 Left reverse samplen 2 font ',12'\n",
      PlotString(Picture.Title), FromTop(kTitleTop), FromTop(kLegendTop));
  Script += "plot ";
  if (Picture.HasDirections) {
    Script += fmt::format("NaN with lines lw {} lc rgb '{}' title 'tool direction', ", kTickPen.Width, kTickPen.Colour);
  }
  for (std::size_t i = 0; i < Picture.Paths.size(); ++i) {
    Script += fmt::format("NaN with {} title {}, ", PathStyle(Picture, i), PlotString(Picture.Paths[i].Name));
  }
  Script += fmt::format("NaN with {} title {}, NaN with {} title 'start'\n", DotStyle(0.6),
                        PlotString(Picture.DotsName), StartStyle());
  Script += "unset label 1\nunset key\n";
}

// The largest of 1, 2, 5, 10, ... (and their tenths) that parts Extent into Parts or more.
double NiceStep(double Extent, double Parts) {
  const double power = std::pow(10.0, std::floor(std::log10(Extent / Parts)));
  for (const double factor : {5.0, 2.0}) {
    if (factor * power * Parts <= Extent) return factor * power;
  }
  return power;
}

// An axis that is this many pixels long.
void AppendAxis(std::string& Script, std::string_view Axis, const TScene& Scene, int Component, double Pixels) {
  constexpr double kPixelsPerGridLine = 95.0;
  const double middle = (Scene.Box.Min.Items(Component) + Scene.Box.Max.Items(Component)) / 2.0;
  const double half = Scene.UnitsPerPixel * Pixels / 2.0;
  Script += fmt::format("set {0}range [{1:.17g}:{2:.17g}]\nset {0}tics {3:.6g} nomirror\n", Axis, middle - half,
                        middle + half, NiceStep(2.0 * half, Pixels / kPixelsPerGridLine));
}

// One view. All show the same lengths by as many pixels, across and upwards.
void AppendView(std::string& Script, const TPathPicture& Picture, const TScene& Scene, std::size_t Place) {
  const TView& view = ViewsOf(Picture)[Place];
  const double width = ViewWidth(Picture);
  const double gap = (kInnerWidth - 3.0 * kViewSide) / 2.0;
  const double left = kLeft + static_cast<double>(Place) * (width + gap);
  Script += Margins(left, left + width, kViewTop, kViewTop + kViewSide);
  Script += fmt::format("set title {} offset 0,-0.5\nset xlabel '{}' offset 0,0.3\nset ylabel '{}' offset 1,0\n",
                        PlotString(view.Title), kAxes[static_cast<std::size_t>(view.Across)],
                        kAxes[static_cast<std::size_t>(view.Upwards)]);
  AppendAxis(Script, "x", Scene, view.Across, width);
  AppendAxis(Script, "y", Scene, view.Upwards, kViewSide);
  const int x = view.Across + 1;
  const int y = view.Upwards + 1;
  Script += "plot ";
  if (Picture.HasDirections) {
    Script += fmt::format("$ticks using {}:{}:{}:{} with {}, ", x, y, x + 3, y + 3, TickStyle());
  }
  for (std::size_t i = 0; i < Picture.Paths.size(); ++i) {
    Script += fmt::format("${} using {}:{} with {}, ", PathName(i), x, y, PathStyle(Picture, i));
  }
  constexpr int kManyDots = 300;
  Script += fmt::format("$dots using {0}:{1} with {2}, $start using {0}:{1} with {3}\n", x, y,
                        DotStyle(Picture.Dots.Count() > kManyDots ? 0.2 : 0.5), StartStyle());
}

// The scale of the curvature: logarithmic where its peaks stand far above the rest. Values below the axis lie on it.
std::string CurvatureScale(const TPathPicture& Picture) {
  constexpr double kFarAbove = 50.0;
  constexpr double kShownRange = 1e9;  // what is straight but for rounding lies below
  std::vector<double> values = {0.0};
  for (const TDrawnPath& path : Picture.Paths) {
    for (const TCurvatureSample& sample : path.Curvature) values.push_back(sample.Curvature);
  }
  std::sort(values.begin(), values.end());
  const double largest = values.back();
  const double usual = values[values.size() / 2];
  if (largest == 0.0) return "low = 0\nset yrange [0:1]\n";
  if (largest <= kFarAbove * usual) return "low = 0\nset yrange [0:*]\n";
  const double low = std::max(values[values.size() / 50] / 2.0, largest / kShownRange);
  return fmt::format("low = {:.6g}\nset logscale y\nset yrange [low:*]\n", low);
}

void AppendCurvaturePanel(std::string& Script, const TPathPicture& Picture) {
  double length = 0.0;
  for (const TDrawnPath& path : Picture.Paths) {
    if (!path.Curvature.empty()) length = std::max(length, path.Curvature.back().Length);
  }
  Script += Margins(kLeft, kSize.Width - kRight, kCurvatureTop, kCurvatureBottom);
  Script += fmt::format("set xtics autofreq nomirror\nset ytics autofreq nomirror\nset xrange [0:{:.9g}]\n{}",
                        length > 0.0 ? length : 1.0, CurvatureScale(Picture));
  Script += fmt::format("set title {} offset 0,-0.5\nset xlabel {} offset 0,0.3\nunset ylabel\nset format y '%g'\n",
                        PlotString(Picture.CurvatureTitle), PlotString(Picture.LengthTitle));
  for (std::size_t i = 0; i < Picture.Paths.size(); ++i) {
    Script += fmt::format("{} ${} using 1:($2 < low ? low : $2) with {}", i == 0 ? "plot" : ",", CurvatureName(i),
                          PathStyle(Picture, i));
  }
  Script += "\n";
}

constexpr auto kAxesLook = R"(set border 3 lc rgb '#808080'
set tics nomirror textcolor rgb '#404040' font ',11'
set grid lc rgb '#e4e4e4' lw 1 lt 1
)";

// A picture without paths. In space the tool has a direction, too.
TPathPicture TitledPicture(bool IsPlane, std::string_view CurvatureTitle, std::string_view LengthTitle) {
  TPathPicture picture;
  picture.IsPlane = IsPlane;
  picture.HasDirections = !IsPlane;
  picture.CurvatureTitle = CurvatureTitle;
  picture.LengthTitle = LengthTitle;
  return picture;
}

}  // namespace

template <>
TPathPicture PictureOf<TPoint2D>() {
  return TitledPicture(true, "Curvature: 1 / radius", "length from the start");
}

template <>
TPathPicture PictureOf<TPoint6D>() {
  return TitledPicture(false, "Curvature of the path of X, Y, Z: 1 / radius",
                       "length from the start, over all six components");
}

void SavePathPicture(const TPathPicture& Picture, const std::string& FileName) {
  constexpr int kDrawnPoints = 30000;  // of a path
  const TScene scene = SceneOf(Picture);
  std::string script;
  for (std::size_t i = 0; i < Picture.Paths.size(); ++i) {
    const TDrawnPath& path = Picture.Paths[i];
    AppendPoints(script, PathName(i), path.Points, Every(path.Points.Count(), kDrawnPoints));
    AppendCurvature(script, CurvatureName(i), path.Curvature);
  }
  AppendPoints(script, "dots", Picture.Dots, Every(Picture.Dots.Count(), kDrawnDots));
  AppendPoints(script, "start", Picture.Paths.front().Points, {0});
  if (Picture.HasDirections) AppendTicks(script, Picture.Dots, scene.TickLength);
  script += "set multiplot\n";
  AppendHead(script, Picture);
  script += kAxesLook;
  for (std::size_t place = 0; place < ViewsOf(Picture).size(); ++place) AppendView(script, Picture, scene, place);
  AppendCurvaturePanel(script, Picture);
  script += "unset multiplot\n";
  SavePlot(script, kSize, FileName);
}

}  // namespace ZORBase::Tool
