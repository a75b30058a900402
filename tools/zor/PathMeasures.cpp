#include <zor/PathMeasures.h>

#include <ZORBase/common/Cadtypes/TNumeric.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <span>
#include <utility>

namespace ZORBase::Tool {
namespace {

constexpr int kDegree = TNurbsBasicFunc::kDegree;

template <class TPoint>
TPoint Between(const TPoint& P, const TPoint& Q, double t) {
  return P + (Q - P) * t;
}

// ------------------------------------------------------------------------------------------------ length

// The length of a piece by quadrature of its speed, halved where both halves together say something else than the whole.
template <class TPoint>
class TLengthOfPiece {
 public:
  explicit TLengthOfPiece(const TPathPiece<TPoint>& Piece) {
    for (std::size_t i = 0; i < FEdges.size(); ++i) {
      FEdges[i] = (Piece.Points[i + 1] - Piece.Points[i]) * 3.0;
      FNoMatter += kAgreement * FEdges[i].Mag() / 3.0;
    }
  }

  double Length() const { return Halved(0.0, 1.0, Between(0.0, 1.0), 0); }

 private:
  double Speed(double t) const {
    const double r = 1.0 - t;
    return (FEdges[0] * (r * r) + FEdges[1] * (2.0 * r * t) + FEdges[2] * (t * t)).Mag();
  }

  double Between(double From, double To) const {
    constexpr int kPoints = 10;
    return TNumeric::GaussQuadrature([this](double t) { return Speed(t); }, TGeInterval::Create(From, To, 0.0),
                                     kPoints);
  }

  double Halved(double From, double To, double Whole, int Depth) const {
    constexpr int kDeepest = 40;
    const double middle = 0.5 * (From + To);
    const double first = Between(From, middle);
    const double second = Between(middle, To);
    if (Depth == kDeepest || !(std::fabs(first + second - Whole) > FNoMatter)) return first + second;
    return Halved(From, middle, first, Depth + 1) + Halved(middle, To, second, Depth + 1);
  }

  static constexpr double kAgreement = 1e-13;  // of the length of the control polygon
  std::array<TPoint, 3> FEdges;
  double FNoMatter = 0.0;
};

// ------------------------------------------------------------------------------------------------ distance

// The distance of P from the straight line between two points.
template <class TPoint>
double DistanceFromSegment(const TPoint& P, const TPoint& From, const TPoint& To) {
  const TPoint along = To - From;
  const TPoint toP = P - From;
  const double t = std::clamp(toP.DotMul(along) / along.MagSqr(), 0.0, 1.0);
  return (toP - along * t).Mag();
}

// Looks for the largest distance of a piece from its straight line. A distance from a segment is a convex function of the
// place: over a Bezier segment it is nowhere above its largest value at the control points. Halves that cannot beat
// what is found already are left out.
template <class TPoint>
class TDistanceSearch {
 public:
  explicit TDistanceSearch(TPathPlace& Best) : FBest(Best) {}

  void Search(const TPathPiece<TPoint>& Piece, int Index) {
    FPiece = Index;
    FFrom = Piece.Points[0];
    FTo = Piece.Points[3];
    Halve(Piece, 0);
  }

 private:
  double DistanceOf(const TPoint& P) const { return DistanceFromSegment(P, FFrom, FTo); }

  void Halve(const TPathPiece<TPoint>& Part, int Depth) {
    constexpr int kDeepest = 40;
    double bound = 0.0;
    for (const TPoint& P : Part.Points) bound = std::max(bound, DistanceOf(P));
    if (Depth == kDeepest || !(bound > FBest.Value * (1.0 + kDistanceTolerance))) return;
    const auto& [p0, p1, p2, p3] = Part.Points;
    const TPoint p01 = Between(p0, p1, 0.5);
    const TPoint p12 = Between(p1, p2, 0.5);
    const TPoint p23 = Between(p2, p3, 0.5);
    const TPoint p012 = Between(p01, p12, 0.5);
    const TPoint p123 = Between(p12, p23, 0.5);
    const TPoint middle = Between(p012, p123, 0.5);
    const double middleParam = Part.ParamAt(0.5);
    if (const double distance = DistanceOf(middle); distance > FBest.Value) FBest = {distance, FPiece, middleParam};
    Halve({{p0, p01, p012, middle}, Part.From, middleParam}, Depth + 1);
    Halve({{middle, p123, p23, p3}, middleParam, Part.To}, Depth + 1);
  }

  TPathPlace& FBest;
  int FPiece = 0;
  TPoint FFrom;
  TPoint FTo;
};

// ------------------------------------------------------------------------------------------------ curvature

// The place of the smallest value of Function between From and To, where it falls and then rises: golden section.
template <class TFunction>
double LowestPlace(TFunction&& Function, double From, double To) {
  constexpr double kGolden = 0.6180339887498949;  // (sqrt(5) - 1) / 2
  constexpr int kRounds = 60;                     // narrows the interval by 3e-13
  double left = To - kGolden * (To - From);
  double right = From + kGolden * (To - From);
  double atLeft = Function(left);
  double atRight = Function(right);
  for (int round = 0; round < kRounds; ++round) {
    if (atLeft > atRight) {
      From = std::exchange(left, right);
      right = From + kGolden * (To - From);
      atLeft = std::exchange(atRight, Function(right));
    } else {
      To = std::exchange(right, left);
      left = To - kGolden * (To - From);
      atRight = std::exchange(atLeft, Function(left));
    }
  }
  return From + (To - From) / 2.0;
}

// The movement of the position over a piece, by t.
class TMotion {
 public:
  template <class TPoint>
  explicit TMotion(const TPathPiece<TPoint>& Piece) {
    std::array<TPoint3D, 4> places;
    std::transform(Piece.Points.begin(), Piece.Points.end(), places.begin(), TPointKind<TPoint>::PositionOf);
    for (std::size_t i = 0; i < 3; ++i) FEdges[i] = places[i + 1] - places[i];
    // Movements that are mere rounding of the coordinates have no direction.
    constexpr double kRounding = 1e-12;
    const double size = std::max(places.front().Mag(), places.back().Mag());
    if (std::max({FEdges[0].Mag(), FEdges[1].Mag(), FEdges[2].Mag()}) <= kRounding * size) FEdges = {};
  }

  TPoint3D Velocity(double t) const {
    const double r = 1.0 - t;
    return 3.0 * (r * r * FEdges[0] + 2.0 * r * t * FEdges[1] + t * t * FEdges[2]);
  }
  TPoint3D Acceleration(double t) const {
    return 6.0 * ((1.0 - t) * (FEdges[1] - FEdges[0]) + t * (FEdges[2] - FEdges[1]));
  }
  double Curvature(double t) const {
    const TPoint3D velocity = Velocity(t);
    const double speed = velocity.Mag();
    return speed > 0.0 ? velocity.CrossMul(Acceleration(t)).Mag() / (speed * speed * speed) : 0.0;
  }

 private:
  std::array<TPoint3D, 3> FEdges;
};

struct TBendSample {
  double Curvature = 0.0;
  double t = 0.0;
  double Reach = 0.0;  // the top of the peak is no farther from t than this
};

// The sharpest of even samples and of the places where the path is slowest between them. At such a place it may turn round
// within a stretch that even samples miss: with the velocity v across the acceleration a the peak is about |v| / |a| wide.
TBendSample SharpestSample(const TMotion& Motion) {
  constexpr double kStep = 1.0 / kBendSamples;
  constexpr double kNone = std::numeric_limits<double>::infinity();
  const auto speedSqr = [&](double t) { return Motion.Velocity(t).MagSqr(); };
  TBendSample sharpest;
  const auto look = [&](double t, double Reach) {
    if (const double curvature = Motion.Curvature(t); curvature > sharpest.Curvature) sharpest = {curvature, t, Reach};
  };
  double before = kNone;
  double here = speedSqr(0.0);
  for (int i = 0; i <= kBendSamples; ++i) {
    const double t = i * kStep;
    look(t, kStep);
    const double after = i < kBendSamples ? speedSqr(t + kStep) : kNone;
    if (here < before && here <= after) {
      const double slowest = LowestPlace(speedSqr, std::max(0.0, t - kStep), std::min(1.0, t + kStep));
      look(slowest, std::min(kStep, 2.0 * Motion.Velocity(slowest).Mag() / Motion.Acceleration(slowest).Mag()));
    }
    before = std::exchange(here, after);
  }
  return sharpest;
}

TBendSample Refined(const TMotion& Motion, const TBendSample& Sample) {
  const double t = LowestPlace([&](double Place) { return -Motion.Curvature(Place); },
                               std::max(0.0, Sample.t - Sample.Reach), std::min(1.0, Sample.t + Sample.Reach));
  const double curvature = Motion.Curvature(t);
  return curvature > Sample.Curvature ? TBendSample{curvature, t, 0.0} : Sample;
}

}  // namespace

template <class TPoint>
TPoint TPathPiece<TPoint>::PointAt(double t) const {
  const auto& [p0, p1, p2, p3] = Points;
  const double r = 1.0 - t;
  return p0 * (r * r * r) + p1 * (3.0 * r * r * t) + p2 * (3.0 * r * t * t) + p3 * (t * t * t);
}

template <class TPoint>
double TPathPiece<TPoint>::CurvatureAt(double t) const {
  return TMotion(*this).Curvature(t);
}

template <class TPoint>
TPathPiece<TPoint> PieceOf(const TNurbsCurve<TPoint>& Curve, int Index) {
  const int span = Index + kDegree;
  return {Curve.SpanBezier(span), Curve.BasicFun().Items(span), Curve.BasicFun().Items(span + 1)};
}

template <class TPoint>
double IntegratedLength(const TNurbsCurve<TPoint>& Curve, const TPiecesDone& OnPiece) {
  double length = 0.0;
  for (int i = 0; i < PieceCount(Curve); ++i) {
    length += TLengthOfPiece<TPoint>(PieceOf(Curve, i)).Length();
    if (OnPiece) OnPiece(i + 1);
  }
  return length;
}

template <class TPoint>
double LargestMiss(const TNurbsCurve<TPoint>& Curve, const TList<TPoint>& Points) {
  double largest = 0.0;
  for (int i = 0; i < Points.Count(); ++i) {
    const TPoint onCurve = Curve.EvalPoint(Curve.BasicFun().Items(i + kDegree));
    largest = std::max(largest, (onCurve - Points[i]).Mag());
  }
  return largest;
}

template <class TPoint>
TPathPlace LargestDistanceFromPolygon(const TNurbsCurve<TPoint>& Curve, const TPiecesDone& OnPiece) {
  TPathPlace best;
  TDistanceSearch<TPoint> search(best);
  for (int i = 0; i < PieceCount(Curve); ++i) {
    search.Search(PieceOf(Curve, i), i);
    if (OnPiece) OnPiece(i + 1);
  }
  return best;
}

template <class TPoint>
std::optional<TPathPlace> SharpestBend(const TNurbsCurve<TPoint>& Curve, const TPiecesDone& OnPiece) {
  // A peak stands higher than the samples beside it: every piece whose samples come this close to the best is refined.
  constexpr double kWorthRefining = 0.5;
  TPathPlace best;
  for (int i = 0; i < PieceCount(Curve); ++i) {
    const TPathPiece<TPoint> piece = PieceOf(Curve, i);
    const TMotion motion(piece);
    TBendSample sample = SharpestSample(motion);
    if (sample.Curvature > kWorthRefining * best.Value) sample = Refined(motion, sample);
    if (sample.Curvature > best.Value) best = {sample.Curvature, i, piece.ParamAt(sample.t)};
    if (OnPiece) OnPiece(i + 1);
  }
  return best.Value > 0.0 ? std::optional(best) : std::nullopt;
}

// ------------------------------------------------------------------------------------------------ for both types of points

template struct TPathPiece<TPoint2D>;
template struct TPathPiece<TPoint6D>;
template TPathPiece<TPoint2D> PieceOf(const TNurbsCurve<TPoint2D>&, int);
template TPathPiece<TPoint6D> PieceOf(const TNurbsCurve<TPoint6D>&, int);
template double IntegratedLength(const TNurbsCurve<TPoint2D>&, const TPiecesDone&);
template double IntegratedLength(const TNurbsCurve<TPoint6D>&, const TPiecesDone&);
template double LargestMiss(const TNurbsCurve<TPoint2D>&, const TList<TPoint2D>&);
template double LargestMiss(const TNurbsCurve<TPoint6D>&, const TList<TPoint6D>&);
template TPathPlace LargestDistanceFromPolygon(const TNurbsCurve<TPoint2D>&, const TPiecesDone&);
template TPathPlace LargestDistanceFromPolygon(const TNurbsCurve<TPoint6D>&, const TPiecesDone&);
template std::optional<TPathPlace> SharpestBend(const TNurbsCurve<TPoint2D>&, const TPiecesDone&);
template std::optional<TPathPlace> SharpestBend(const TNurbsCurve<TPoint6D>&, const TPiecesDone&);

}  // namespace ZORBase::Tool
