// The snippets of the page about NURBS curves.
#include <ZORBase/ZORBase.h>

#include <iostream>

using namespace ZORBase;

int main() {
  //! [fit]
  TList<TPoint2D> points{{0, 0}, {1, 2}, {4, 2}, {5, 0}, {9, 0}};
  TNurbs2D curve;
  for (const TParalizeMethod method : {mEqually, mChord, mCentripetal}) {
    if (!curve.CreateCross(points, method)) return 1;  // fewer than four points
    const auto knots = curve.BasicFun().uArr();
    std::cout << Format1033("%d control points, inner knots %.3f %.3f %.3f, length %.3f\n", curve.pCount(), knots[4],
                            knots[5], knots[6], curve.CurveLength());
  }
  //! [fit]

  //! [length]
  const double u = curve.ParamOfLength(5.0);
  std::cout << Format1033("5 along the path: u = %.4f, back again %.4f\n", u, curve.GetSByU(u));
  //! [length]

  //! [ends]
  const TPoint2D before = curve.EvalPoint(-3.0);
  const TPoint2D behind = curve.EvalPoint(1e9);
  std::cout << Format1033("(%.0f, %.0f) and (%.0f, %.0f)\n", before.X, before.Y, behind.X, behind.Y);
  //! [ends]

  //! [closest]
  const auto closest = curve.ClosestPoint(TPoint2D::Create(2.5, 1.0));
  std::cout << Format1033("closest at u = %.4f, %.4f away\n", closest.Param, closest.Distance);
  //! [closest]
}
