#include <zor/SplinePath.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <cmath>
#include <limits>
#include <span>

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

// Newton's iteration for the zero of the length less the one asked for, which rises with the parameter; a step that leaves
// the bracket halves it.
double ParamAtLength(const TCubicBezXD& Segment, double Length) {
  constexpr int kRounds = 100;
  if (!(Length > 0.0)) return 0.0;
  if (Length >= Segment.FLength) return 1.0;
  double from = 0.0;
  double to = 1.0;
  double t = Length / Segment.FLength;
  for (int round = 0; round < kRounds; ++round) {
    const double miss = Segment.LengthOfParam(0.0, t) - Length;
    if (miss == 0.0) return t;
    (miss < 0.0 ? from : to) = t;
    const double newton = t - miss / Segment.GaussLengthFunc(t);
    const double next = newton > from && newton < to ? newton : 0.5 * (from + to);
    if (std::fabs(next - t) <= std::numeric_limits<double>::epsilon() * t) return next;
    t = next;
  }
  return t;
}

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
