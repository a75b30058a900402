// The snippets of the page about curves in many dimensions.
#include <ZORBase/ZORBase.h>

#include <iostream>
#include <vector>

using namespace ZORBase;

int main() {
  //! [segment]
  const TCubicBezXD arch = TCubicBezXD::Create(TPoint2D::Create(0, 0), TPoint2D::Create(0, 4), TPoint2D::Create(6, 4),
                                               TPoint2D::Create(6, 0));
  const double middle = arch.ParamOfLength(arch.CurveLength() / 2);
  std::cout << Format1033("%.4f long, half of it at t = %.2f, top at y = %.2f\n", arch.CurveLength(), middle,
                          arch.EvalPoint(middle).Y());
  //! [segment]

  //! [curve]
  TList<TPointXD> points;
  points.Add(TPoint2D::Create(0, 0));
  points.Add(TPoint2D::Create(10, 0));
  points.Add(TPoint2D::Create(10, 10));
  points.Add(TPoint2D::Create(20, 10));

  std::vector<TCubicBezXD> segments;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD& Segment) { segments.push_back(Segment); });
  if (!curve.CreateCorss(points)) return 1;  // fewer than three points
  double length = 0.0;
  for (const TCubicBezXD& segment : segments) length += segment.CurveLength();
  const TPointXD& tangent = curve.BezDerivList()[1];
  std::cout << Format1033("%d segments, %.3f long; through (10, 0) along (%.3f, %.3f)\n", segments.size(), length,
                          tangent.X(), tangent.Y());
  //! [curve]
}
