#include <zor/DrawnPath.h>

#include <zor/PathMeasures.h>
#include <zor/PoseMeasures.h>

#include <algorithm>
#include <cmath>

namespace ZORBase::Tool {
namespace {

constexpr double kVisible = 1e-3;  // of the picture

// Into how many straight lines a cubic Bezier segment is drawn so that none of them leaves it by more than Tolerance: over a
// step h of t the gap is at most h^2 / 8 times the second derivative, which is largest at an end.
template <class TPoint>
int DrawnSteps(const TPoint& P0, const TPoint& P1, const TPoint& P2, const TPoint& P3, double Tolerance) {
  constexpr double kMostSteps = 64.0;
  const double second = 6.0 * std::max((P0 - P1 * 2.0 + P2).Mag(), (P1 - P2 * 2.0 + P3).Mag());
  return static_cast<int>(std::clamp(std::ceil(std::sqrt(second / (8.0 * Tolerance))), 1.0, kMostSteps));
}

// A piece of a fitted curve, as it is drawn.
template <class TPoint>
struct TDrawnPiece {
  TPathPiece<TPoint> Piece;
  const TSUTable& Table;
  TSUTable::TCursor& Cursor;

  int Steps(double Tolerance) const {
    const auto& [p0, p1, p2, p3] = Piece.Points;
    return DrawnSteps(p0, p1, p2, p3, Tolerance);
  }
  TPoint6D PointAt(double t) const { return Piece.PointAt(t); }
  TCurvatureSample SampleAt(double t) const { return {Table.GetSByU(Piece.ParamAt(t), Cursor), Piece.CurvatureAt(t)}; }
};

// A segment of a smooth curve, as it is drawn.
struct TDrawnSegment {
  TCubicBezXD Segment;
  double LengthBefore;

  int Steps(double Tolerance) const {
    return DrawnSteps(Segment.FP0, Segment.FP1, Segment.FP2, Segment.FP3, Tolerance);
  }
  TPoint6D PointAt(double t) const { return static_cast<TPoint6D>(Segment.EvalPoint(t)); }
  TCurvatureSample SampleAt(double t) const {
    return {LengthBefore + Segment.LengthOfParam(0.0, t), CurvatureAt(Segment, t)};
  }
};

// The path of the pieces PieceOf(0) to PieceOf(Count - 1), its lines not farther from it than Tolerance.
template <class TPieceOf>
TDrawnPath DrawnPieces(const std::string& Name, int Count, double Tolerance, TPieceOf&& PieceOf) {
  constexpr int kCurvatureSamples = 200'000;
  TDrawnPath path;
  path.Name = Name;
  const int samples = std::clamp(kCurvatureSamples / Count, 2, 16);
  for (int i = 0; i < Count; ++i) {
    const auto piece = PieceOf(i);
    const int isLast = i == Count - 1 ? 1 : 0;  // which gives its end, too
    const int steps = piece.Steps(Tolerance);
    for (int k = 0; k < samples + isLast; ++k) {
      path.Curvature.push_back(piece.SampleAt(static_cast<double>(k) / samples));
    }
    for (int k = 0; k < steps + isLast; ++k) path.Points.Add(piece.PointAt(static_cast<double>(k) / steps));
  }
  return path;
}

}  // namespace

template <class TPoint>
TDrawnPath DrawnCurve(const std::string& Name, const TNurbsCurve<TPoint>& Curve) {
  const double tolerance = kVisible * ExtentOf(BoxOf(TList<TPoint>(Curve.pointArr())));
  TSUTable::TCursor cursor;
  return DrawnPieces(Name, PieceCount(Curve), tolerance, [&](int Index) {
    return TDrawnPiece<TPoint>{PieceOf(Curve, Index), Curve.SUTable(), cursor};
  });
}

TDrawnPath DrawnSpline(const std::string& Name, const TSplinePath& Path) {
  TPoint6DList ends;
  for (int i = 0; i < Path.SegmentCount(); ++i) ends.Add(static_cast<TPoint6D>(Path.Segment(i).FP0));
  const double tolerance = kVisible * ExtentOf(BoxOf<TPoint6D>(ends));
  return DrawnPieces(Name, Path.SegmentCount(), tolerance, [&](int Index) {
    return TDrawnSegment{Path.Segment(Index), Path.LengthBefore(Index)};
  });
}

template <class TPoint>
TDrawnPath DrawnPolygon(const std::string& Name, const TList<TPoint>& Points) {
  TDrawnPath path;
  path.Name = Name;
  path.Points = DotsOf(Points);
  double length = 0.0;
  const auto place = [&](int Index) { return TPointKind<TPoint>::PositionOf(Points[Index]); };
  for (int i = 1; i + 1 < Points.Count(); ++i) {
    length += (Points[i] - Points[i - 1]).Mag();
    const TPoint3D a = place(i) - place(i - 1);
    const TPoint3D b = place(i + 1) - place(i);
    // The circle through a triangle with the sides a, b, c has the curvature 4 area / (a b c).
    const double sides = a.Mag() * b.Mag() * (a + b).Mag();
    path.Curvature.push_back({length, sides > 0.0 ? 2.0 * a.CrossMul(b).Mag() / sides : 0.0});
  }
  return path;
}

template TDrawnPath DrawnCurve(const std::string&, const TNurbsCurve<TPoint2D>&);
template TDrawnPath DrawnCurve(const std::string&, const TNurbsCurve<TPoint6D>&);
template TDrawnPath DrawnPolygon(const std::string&, const TList<TPoint2D>&);
template TDrawnPath DrawnPolygon(const std::string&, const TList<TPoint6D>&);

}  // namespace ZORBase::Tool
