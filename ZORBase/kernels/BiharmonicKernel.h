// BiharmonicKernel (internal): sums of the Green function phi(d) = d^2 (ln d - 1) over places of the plane, behind TV4Interpolator.
#pragma once

#include <ZORBase/common/Cadtypes/TPoint2D.h>

#include <span>

namespace ZORBase {

/// Places of the plane, coordinate by coordinate, for vector lanes; both spans have the same length.
struct TPlaces {
  std::span<const double> X;
  std::span<const double> Y;
};

/// What was found wrong with places.
enum class TPlacesFault { None, Same, TooFar };

/// Gives in Matrix, of Count rows of Count numbers, phi of the distance of the places i and j in the row i and column j, and 0 for
/// i = j. The distance is sqrt(dx^2 + dy^2), phi is d * d * (Ln(d) - 1) from left to right. Half of the matrix is copied: a distance
/// has the same bits either way.
/// \return Same when a distance is at most SamePlace, TooFar when none is but some phi is not finite.
TPlacesFault FillBiharmonicMatrix(const TPlaces& Places, double SamePlace, std::span<double> Matrix);

/// \return the sum of Weights[i] * (d * d) * (Ln(d) - 1) in the order of the places, from 0; d is the distance of (X, Y) from the
///         place i, and terms of d at most SamePlace are left out. There are as many places as weights, or more.
double BiharmonicHeight(const TPlaces& Places, std::span<const double> Weights, double SamePlace, double X, double Y);

/// Gives BiharmonicHeight at every point of At in Heights, bit for bit; a NaN may differ in its payload.
void BiharmonicHeights(const TPlaces& Places, std::span<const double> Weights, double SamePlace,
                       std::span<const TPoint2D> At, std::span<double> Heights);

}  // namespace ZORBase
