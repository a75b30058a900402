// PointTransform (internal): affine transforms of points and vectors of space.
//   Moved, Turned           one point, one vector
//   MovedUnlessFar, ...     the same, but passed through when a coordinate is above a limit
//   MoveAll, TurnAll        many of them, four side by side, with the same bits
#pragma once

#include <ZORBase/common/Cadtypes/TPoint3D.h>

#include <array>
#include <span>

namespace ZORBase {

/// Row i is (R[i][0], R[i][1], R[i][2], t[i]).
using TAffineRows = std::array<std::array<double, 4>, 3>;

/// \return R V, each coordinate the sum of three products in their order.
inline TPoint3D Turned(const TAffineRows& M, const TPoint3D& V) {
  const auto row = [&](std::size_t i) { return M[i][0] * V.X + M[i][1] * V.Y + M[i][2] * V.Z; };
  return TPoint3D::Create(row(0), row(1), row(2));
}

/// \return R P + t
inline TPoint3D Moved(const TAffineRows& M, const TPoint3D& P) {
  return Turned(M, P) + TPoint3D::Create(M[0][3], M[1][3], M[2][3]);
}

inline bool IsFar(const TPoint3D& P, double Far) { return P.X > Far || P.Y > Far || P.Z > Far; }

inline TPoint3D MovedUnlessFar(const TAffineRows& M, const TPoint3D& P, double Far) {
  return IsFar(P, Far) ? P : Moved(M, P);
}
inline TPoint3D TurnedUnlessFar(const TAffineRows& M, const TPoint3D& V, double Far) {
  return IsFar(V, Far) ? V : Turned(M, V);
}

/// Gives MovedUnlessFar, or TurnedUnlessFar, of Points[i] in Results[i]. Results has room for all, and is Points itself or
/// does not overlap it.
void MoveAll(const TAffineRows& M, std::span<const TPoint3D> Points, TPoint3D* Results, double Far);
void TurnAll(const TAffineRows& M, std::span<const TPoint3D> Points, TPoint3D* Results, double Far);

}  // namespace ZORBase
