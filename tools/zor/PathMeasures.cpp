#include <zor/PathMeasures.h>

#include <algorithm>
#include <cmath>
#include <span>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr int kDegree = TNurbsBasicFunc::kDegree;

TPoint6D Between(const TPoint6D& P, const TPoint6D& Q, double t) { return P + (Q - P) * t; }

// ------------------------------------------------------------------------------------------------ pieces

// The blossom of the polynomial of knot span s at three parameters: de Boor's algorithm with an argument of its own in each
// of its rounds. All differences below span the piece, so none of them is small.
TPoint6D Blossom(std::span<const double> U, std::span<const TPoint6D> P, std::size_t s,
                 const std::array<double, 3>& Args) {
  std::array<TPoint6D, 4> d = {P[s - 3], P[s - 2], P[s - 1], P[s]};
  for (std::size_t r = 1; r <= 3; ++r) {
    for (std::size_t j = 3; j >= r; --j) {
      const double from = U[s - 3 + j];
      const double to = U[s + 1 + j - r];
      d[j] = Between(d[j - 1], d[j], (Args[r - 1] - from) / (to - from));
    }
  }
  return d[3];
}

// ------------------------------------------------------------------------------------------------ distance

// The distance of P from the straight line between two poses.
double DistanceFromSegment(const TPoint6D& P, const TPoint6D& From, const TPoint6D& To) {
  const TPoint6D along = To - From;
  const TPoint6D toP = P - From;
  const double t = std::clamp(toP.DotMul(along) / along.MagSqr(), 0.0, 1.0);
  return (toP - along * t).Mag();
}

// Looks for the largest distance of a piece from its straight line. A distance from a segment is a convex function of the
// place: over a Bezier segment it is nowhere above its largest value at the control points. Halves that cannot beat
// what is found already are left out.
class TDistanceSearch {
 public:
  explicit TDistanceSearch(TPathPlace& Best) : FBest(Best) {}

  void Search(const TPathPiece& Piece, int Index) {
    FPiece = Index;
    FFrom = Piece.Points[0];
    FTo = Piece.Points[3];
    Halve(Piece, 0);
  }

 private:
  double DistanceOf(const TPoint6D& P) const { return DistanceFromSegment(P, FFrom, FTo); }

  void Halve(const TPathPiece& Part, int Depth) {
    constexpr int kDeepest = 40;
    double bound = 0.0;
    for (const TPoint6D& P : Part.Points) bound = std::max(bound, DistanceOf(P));
    if (Depth == kDeepest || !(bound > FBest.Value * (1.0 + kDistanceTolerance))) return;
    const auto& [p0, p1, p2, p3] = Part.Points;
    const TPoint6D p01 = Between(p0, p1, 0.5);
    const TPoint6D p12 = Between(p1, p2, 0.5);
    const TPoint6D p23 = Between(p2, p3, 0.5);
    const TPoint6D p012 = Between(p01, p12, 0.5);
    const TPoint6D p123 = Between(p12, p23, 0.5);
    const TPoint6D middle = Between(p012, p123, 0.5);
    const double middleParam = Part.ParamAt(0.5);
    if (const double distance = DistanceOf(middle); distance > FBest.Value) FBest = {distance, FPiece, middleParam};
    Halve({{p0, p01, p012, middle}, Part.From, middleParam}, Depth + 1);
    Halve({{middle, p123, p23, p3}, middleParam, Part.To}, Depth + 1);
  }

  TPathPlace& FBest;
  int FPiece = 0;
  TPoint6D FFrom;
  TPoint6D FTo;
};

// ------------------------------------------------------------------------------------------------ curvature

// The place of the largest value of Function between From and To, where it rises and then falls: golden section.
template <class TFunction>
double HighestPlace(TFunction&& Function, double From, double To) {
  constexpr double kGolden = 0.6180339887498949;  // (sqrt(5) - 1) / 2
  constexpr int kRounds = 60;                     // narrows the interval by 3e-13
  for (int round = 0; round < kRounds; ++round) {
    const double left = To - kGolden * (To - From);
    const double right = From + kGolden * (To - From);
    if (Function(left) < Function(right)) {
      From = left;
    } else {
      To = right;
    }
  }
  return From + (To - From) / 2.0;
}

struct TBendSample {
  double Curvature = 0.0;
  double t = 0.0;
};

TBendSample SharpestSample(const TPathPiece& Piece) {
  TBendSample sharpest;
  for (int i = 0; i <= kBendSamples; ++i) {
    const double t = static_cast<double>(i) / kBendSamples;
    if (const double curvature = Piece.CurvatureAt(t); curvature > sharpest.Curvature) sharpest = {curvature, t};
  }
  return sharpest;
}

TBendSample Refined(const TPathPiece& Piece, const TBendSample& Sample) {
  constexpr double kStep = 1.0 / kBendSamples;
  const double t = HighestPlace([&](double Place) { return Piece.CurvatureAt(Place); }, std::max(0.0, Sample.t - kStep),
                                std::min(1.0, Sample.t + kStep));
  const double curvature = Piece.CurvatureAt(t);
  return curvature > Sample.Curvature ? TBendSample{curvature, t} : Sample;
}

}  // namespace

TPoint6D TPathPiece::PointAt(double t) const {
  const auto& [p0, p1, p2, p3] = Points;
  const double r = 1.0 - t;
  return p0 * (r * r * r) + p1 * (3.0 * r * r * t) + p2 * (3.0 * r * t * t) + p3 * (t * t * t);
}

double TPathPiece::CurvatureAt(double t) const {
  const TPoint3D e0 = Points[1].GetPoint() - Points[0].GetPoint();
  const TPoint3D e1 = Points[2].GetPoint() - Points[1].GetPoint();
  const TPoint3D e2 = Points[3].GetPoint() - Points[2].GetPoint();
  // Movements that are mere rounding of the coordinates have no direction.
  constexpr double kRounding = 1e-12;
  const double size = std::max(Points[0].GetPoint().Mag(), Points[3].GetPoint().Mag());
  if (std::max({e0.Mag(), e1.Mag(), e2.Mag()}) <= kRounding * size) return 0.0;
  const double r = 1.0 - t;
  const TPoint3D first = 3.0 * (r * r * e0 + 2.0 * r * t * e1 + t * t * e2);
  const TPoint3D second = 6.0 * (r * (e1 - e0) + t * (e2 - e1));
  const double speed = first.Mag();
  return speed > 0.0 ? first.CrossMul(second).Mag() / (speed * speed * speed) : 0.0;
}

int PieceCount(const TNurbs6D& Curve) { return Curve.pCount() - kDegree; }

TPathPiece PieceOf(const TNurbs6D& Curve, int Index) {
  const std::span<const double> U = Curve.BasicFun().uArr();
  const std::span<const TPoint6D> P = Curve.pointArr();
  const auto s = static_cast<std::size_t>(Index + kDegree);
  const double a = U[s];
  const double b = U[s + 1];
  return {{Blossom(U, P, s, {a, a, a}), Blossom(U, P, s, {a, a, b}), Blossom(U, P, s, {a, b, b}),
           Blossom(U, P, s, {b, b, b})},
          a,
          b};
}

double LargestMiss(const TNurbs6D& Curve, const TPoint6DList& Poses) {
  double largest = 0.0;
  for (int i = 0; i < Poses.Count(); ++i) {
    const TPoint6D onCurve = Curve.EvalPoint(Curve.BasicFun().Items(i + kDegree));
    largest = std::max(largest, (onCurve - Poses[i]).Mag());
  }
  return largest;
}

TPathPlace LargestDistanceFromPolygon(const TNurbs6D& Curve, const TPiecesDone& OnPiece) {
  TPathPlace best;
  TDistanceSearch search(best);
  for (int i = 0; i < PieceCount(Curve); ++i) {
    search.Search(PieceOf(Curve, i), i);
    if (OnPiece) OnPiece(i + 1);
  }
  return best;
}

std::optional<TPathPlace> SharpestBend(const TNurbs6D& Curve, const TPiecesDone& OnPiece) {
  // A peak stands higher than the samples beside it: every piece whose samples come this close to the best is refined.
  constexpr double kWorthRefining = 0.5;
  TPathPlace best;
  for (int i = 0; i < PieceCount(Curve); ++i) {
    const TPathPiece piece = PieceOf(Curve, i);
    TBendSample sample = SharpestSample(piece);
    if (sample.Curvature > kWorthRefining * best.Value) sample = Refined(piece, sample);
    if (sample.Curvature > best.Value) best = {sample.Curvature, i, piece.ParamAt(sample.t)};
    if (OnPiece) OnPiece(i + 1);
  }
  return best.Value > 0.0 ? std::optional(best) : std::nullopt;
}

}  // namespace ZORBase::Tool
