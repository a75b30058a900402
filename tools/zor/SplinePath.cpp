#include <zor/SplinePath.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/RisingZero.h>

#include <span>
#include <utility>

namespace ZORBase::Tool {

TSplinePath::TSplinePath(const TList<TPointXD>& Points) {
  TTWoDerivCurveXD curve;
  FNumbers.reserve(Points.size() == 0 ? 0 : (3 * Points.size() - 2) * Points.First().Coordinates().size());
  FLengths.reserve(Points.size());
  const auto keep = [this](const TPointXD& Point) {
    const std::span<const double> numbers = std::span(Point.Items).first(FDimension);
    FNumbers.insert(FNumbers.end(), numbers.begin(), numbers.end());
  };
  curve.SetRenderPath([&](const TCubicBezXD& Segment) {
    FDimension = Points.First().Coordinates().size();
    for (const TPointXD* const point : {&Segment.FP0, &Segment.FP1, &Segment.FP2}) keep(*point);
    FLengths.push_back(Segment.FLength);
  });
  if (!curve.CreateCorss(Points)) RaiseGeneralError("a smooth curve needs 3 points or more");
  keep(Points.Last());
  FEnds.reserve(FLengths.size());
  for (const double length : FLengths) FEnds.push_back(length + (FEnds.empty() ? 0.0 : FEnds.back()));
}

TPointXD TSplinePath::PointAt(std::size_t Place) const {
  return TPointXD::FromSpan(std::span(FNumbers).subspan(Place * FDimension, FDimension));
}

TCubicBezXD TSplinePath::Segment(int Index) const {
  const auto index = static_cast<std::size_t>(Index);
  const std::size_t first = 3 * index;
  return {PointAt(first), PointAt(first + 1), PointAt(first + 2), PointAt(first + 3), FLengths[index]};
}

double ParamAtLength(const TCubicBezXD& Segment, double Length) {
  if (!(Length > 0.0)) return 0.0;
  if (Length >= Segment.FLength) return 1.0;
  return ZeroOfRising(0.0, 1.0, Length / Segment.FLength, [&](double t) {
    return std::pair(Segment.LengthOfParam(0.0, t) - Length, Segment.GaussLengthFunc(t));
  });
}

// As TNurbsCurve::Curvature, but without a unit tangent: a TPointXD divided by a speed below 1e-12 is 0.
double CurvatureAt(const TCubicBezXD& Segment, double t) {
  const TPointXD velocity = Segment.EvalDeriv(t);
  const TPointXD acceleration = Segment.EvalDeriv2(t);
  const double speedSqr = velocity.MagSqr();
  if (speedSqr == 0.0) return 0.0;
  return (acceleration - velocity * (velocity.DotMul(acceleration) / speedSqr)).Mag() / speedSqr;
}

TPointXD TSplineWalk::operator()(double Length) {
  int index = Length < FPath.LengthBefore(FIndex) ? 0 : FIndex;
  while (index + 1 < FPath.SegmentCount() && FPath.LengthBefore(index + 1) <= Length) ++index;
  if (index != FIndex) {
    FIndex = index;
    FSegment = FPath.Segment(index);
  }
  return FSegment.EvalPoint(ParamAtLength(FSegment, Length - FPath.LengthBefore(index)));
}

}  // namespace ZORBase::Tool
