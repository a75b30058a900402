// PathMeasures: what a fitted path is judged by.
//   TPathPiece                     the curve between two neighbouring poses, as a Bezier segment
//   LargestMiss                    how far the curve misses the poses it should pass through
//   LargestDistanceFromPolygon     how far it swings out between them
//   SharpestBend                   where it is bent most
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>

#include <array>
#include <functional>
#include <optional>

namespace ZORBase::Tool {

/// The curve from one pose to the next as a cubic Bezier segment: P(t) = sum of B(i,3)(t) Points[i], t from 0 to 1, with the
/// curve parameter From + (To - From) t.
struct TPathPiece {
  std::array<TPoint6D, 4> Points;
  double From = 0.0;
  double To = 0.0;

  double ParamAt(double t) const { return From + (To - From) * t; }
  TPoint6D PointAt(double t) const;

  /// \return the curvature of the path of X, Y, Z at t, in 1 / (their unit): |c' x c''| / |c'|^3; 0 where it stands still.
  double CurvatureAt(double t) const;
};

/// A place on a fitted path, and what is remarkable about it.
struct TPathPlace {
  double Value = 0.0;
  int Piece = 0;       ///< between the poses Piece and Piece + 1, counted from 0
  double Param = 0.0;  ///< of the curve
};

/// Called with the number of pieces that are done.
using TPiecesDone = std::function<void(int)>;

/// \return the number of pieces of a curve that CreateCross fitted: one less than its poses.
int PieceCount(const TNurbs6D& Curve);

/// \return the piece Index of a fitted curve, 0 to PieceCount - 1.
TPathPiece PieceOf(const TNurbs6D& Curve, int Index);

/// \return the largest distance over all six components of a pose from the point of the fitted curve that belongs to it.
double LargestMiss(const TNurbs6D& Curve, const TPoint6DList& Poses);

/// \return the largest distance, over all six components, of a piece from the straight line between its two poses. It is
///         within kDistanceTolerance of the true one, relatively, wherever it occurs: no place can be overlooked.
TPathPlace LargestDistanceFromPolygon(const TNurbs6D& Curve, const TPiecesDone& OnPiece = {});
inline constexpr double kDistanceTolerance = 1e-6;

/// \return the place of the largest curvature of the path of X, Y, Z: the best of kBendSamples places per piece and of those
///         where it is slowest, refined; nothing for a path that is straight, or stands still.
std::optional<TPathPlace> SharpestBend(const TNurbs6D& Curve, const TPiecesDone& OnPiece = {});
inline constexpr int kBendSamples = 32;

}  // namespace ZORBase::Tool
