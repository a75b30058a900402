// PathMeasures: what a fitted path is judged by, through poses or through points of a plane profile.
//   TPathPiece                     the curve between two neighbouring points, as a Bezier segment
//   IntegratedLength               the length of the curve itself, not that of its table
//   LargestMiss                    how far the curve misses the points it should pass through
//   LargestDistanceFromPolygon     how far it swings out between them
//   SharpestBend                   where it is bent most
#pragma once

#include <zor/PointKind.h>

#include <array>
#include <functional>
#include <optional>

namespace ZORBase::Tool {

/// The curve from one point to the next as a cubic Bezier segment: P(t) = sum of B(i,3)(t) Points[i], t from 0 to 1, with the
/// curve parameter From + (To - From) t.
template <class TPoint>
struct TPathPiece {
  std::array<TPoint, 4> Points;
  double From = 0.0;
  double To = 0.0;

  double ParamAt(double t) const { return From + (To - From) * t; }
  TPoint PointAt(double t) const;

  /// \return the curvature of the path of the position at t, in 1 / (its unit): |c' x c''| / |c'|^3; 0 where it stands still.
  double CurvatureAt(double t) const;
};

/// A place on a fitted path, and what is remarkable about it.
struct TPathPlace {
  double Value = 0.0;
  int Piece = 0;       ///< between the points Piece and Piece + 1, counted from 0
  double Param = 0.0;  ///< of the curve
};

/// Called with the number of pieces that are done.
using TPiecesDone = std::function<void(int)>;

/// \return the number of pieces of a curve that CreateCross fitted: one less than its points.
template <class TPoint>
int PieceCount(const TNurbsCurve<TPoint>& Curve) {
  return Curve.pCount() - TNurbsBasicFunc::kDegree;
}

/// \return the piece Index of a fitted curve, 0 to PieceCount - 1.
template <class TPoint>
TPathPiece<TPoint> PieceOf(const TNurbsCurve<TPoint>& Curve, int Index);

/// \return the length of the curve: the integral of its speed, relatively good to about 1e-12. The table of a curve adds up
///         chords of 0.03 and is shorter.
template <class TPoint>
double IntegratedLength(const TNurbsCurve<TPoint>& Curve, const TPiecesDone& OnPiece = {});

/// \return the largest distance of a point from the point of the fitted curve that belongs to it.
template <class TPoint>
double LargestMiss(const TNurbsCurve<TPoint>& Curve, const TList<TPoint>& Points);

/// \return the largest distance of a piece from the straight line between its two points. It is within kDistanceTolerance of
///         the true one, relatively, wherever it occurs: no place can be overlooked.
template <class TPoint>
TPathPlace LargestDistanceFromPolygon(const TNurbsCurve<TPoint>& Curve, const TPiecesDone& OnPiece = {});
inline constexpr double kDistanceTolerance = 1e-6;

/// \return the place of the largest curvature of the path of the position: the best of kBendSamples places per piece and of
///         those where it is slowest, refined; nothing for a path that is straight, or stands still.
template <class TPoint>
std::optional<TPathPlace> SharpestBend(const TNurbsCurve<TPoint>& Curve, const TPiecesDone& OnPiece = {});
inline constexpr int kBendSamples = 32;

}  // namespace ZORBase::Tool
