// Smooth curves in many coordinates. Input: the number of coordinates, two parameters, then point after point.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORGeometry/CADTypesXD.h>

#include <algorithm>

namespace ZORBase::Test::FuzzCurveXD {
namespace {

constexpr int kMostPoints = 64;

TPointXD NextPoint(TFuzzInput& Input, int Dimension) {
  TPointXD point = TPointXD::Create(Dimension);
  for (double& coordinate : point.Coordinates()) coordinate = Input.Number();
  return point;
}

void UseSegment(const TCubicBezXD& Segment, double t0, double t1) {
  TPointXD d1;
  TPointXD d2;
  TPointXD d3;
  Segment.EvalPoint(t0);
  Segment.EvalPoint(t1, d1, d2, d3);
  Segment.EvalDeriv(t0);
  Segment.EvalDeriv2(t1);
  Segment.GaussLengthFunc(t1);
  Segment.ParamOfLength(t0);
  Segment.LengthOfParam(t0, t1);
  Attempt([&] { d1.AngleBetween(d2); });
  Attempt([&] { d1.Normal(); });
  Segment.FP3.ToString();
}

}  // namespace

ZORBASE_FUZZ_TARGET(CurveXD) {
  const int dimension = Input.Int();
  const double t0 = Input.Number();
  const double t1 = Input.Number();
  TList<TPointXD> points;
  while (points.Count() < kMostPoints && !Input.AtEnd()) points.Add(NextPoint(Input, dimension));
  int segments = 0;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD& Segment) {
    UseSegment(Segment, t0, t1);
    ++segments;
  });
  bool isMade = false;
  Attempt([&] { isMade = curve.CreateCorss(points); });
  Require(segments == (isMade ? points.Count() - 1 : 0), "a curve has a segment between neighbours");
  if (points.Count() >= 4) UseSegment(TCubicBezXD::Create(points[0], points[1], points[2], points[3]), t0, t1);
}

}  // namespace ZORBase::Test::FuzzCurveXD
