// ClosestPoint: the place on a curve that is closest to a point, safe from local minima. Internal: TNurbsCurve is the face
// of it.
#pragma once

#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>

#include <span>

namespace ZORBase {

/// A place on a curve and its distance from a given point.
template <class TPoint>
struct TClosestPoint {
  double Param = 0.0;     ///< parameter on the curve
  TPoint Point{};         ///< the curve there
  double Distance = 0.0;  ///< over all components
};

/// \return the closest place of the curve with these knots and control points; of several that are equally close, up to
///         rounding, that with the smallest parameter. The squares of distances have to be numbers: about 1e-150 to 1e150.
///         At four equal inner knots, where a curve breaks, its end just before them is found at the double below the knot.
/// \throws the general error unless the knots are clamped on [0, 1], for a point that is not finite, and for a distance whose
///         square is too large for a double.
///
/// On a span the squared distance is a polynomial of degree 6. Its smallest Bernstein coefficient is a lower bound, so spans,
/// and halves of them, whose bound lies above what is reached already are left out; where it is convex, the zero of
/// (C - P) . C' is the one minimum, and where it is concave or monotone, one of the ends. See G. Farin, "Curves and Surfaces
/// for CAGD", for blossoms and the Bernstein form.
template <class TPoint>
TClosestPoint<TPoint> FindClosestPoint(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, const TPoint& Point);

}  // namespace ZORBase
