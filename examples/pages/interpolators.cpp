// The snippets of the page about interpolators.
#include <ZORBase/ZORBase.h>

#include <iostream>

using namespace ZORBase;

int main() {
  //! [wcs]
  const TPoint6D upright = TPoint6D::Create(0, 0, 0, 0, 0, 1);
  const TPoint6D level = TPoint6D::Create(30, 0, 0, 1, 0, 0);
  const TWcsPtInterpolator move(upright, level, 3, 0);
  for (int i = 0; i <= move.Count(); ++i) std::cout << move.GetWcsPt(i).ToString1033(3) << "\n";
  //! [wcs]

  //! [count]
  std::cout << TWcsPtInterpolator(upright, level, 1.0, 10.0, 0).Count() << " steps of at most 1 and 10 degrees\n";
  //! [count]

  //! [hermite]
  THermiteInterpolater table;
  table.BeginCurve(false);
  for (const double x : {0.0, 1.0, 2.0, 4.0}) table.AddPoint(x, x * x);
  table.EndCurve();
  std::cout << Format1033("%.4f %.4f %.4f\n", table.CalcY(1.5), table.CalcY(4.0), table.CalcY(99.0));
  //! [hermite]

  //! [heights]
  // Four corners of height 1 around a middle of height 2: on a square of side 10, and of side 1.
  for (const double side : {10.0, 1.0}) {
    TV4Interpolator surface;
    for (const double x : {0.0, side}) {
      for (const double y : {0.0, side}) surface.AddPoint(x, y, 1.0);
    }
    surface.AddPoint(side / 2, side / 2, 2.0);
    surface.CalcWeights();
    std::cout << Format1033("side %.0f: %.3f in the middle, %.3f half way to a corner, %.3f amid an edge\n", side,
                            surface.CalcZ(side / 2, side / 2), surface.CalcZ(side / 4, side / 4),
                            surface.CalcZ(side / 2, 0.0));
  }
  //! [heights]

  //! [joint]
  const auto first = TBezierSegment2D::Create({0, 0}, {1, 0}, {2, 0}, {3, 0});
  const auto second = TBezierSegment2D::Create({3, 0}, {4, 0}, {5, 1}, {6, 1});
  std::cout << "tangent " << (TBezierSegmentHelper::IsG1Continue(first, second) ? "goes on" : "breaks")
            << ", curvature " << (TBezierSegmentHelper::IsG2Continue(first, second) ? "goes on" : "breaks") << "\n";
  //! [joint]
}
