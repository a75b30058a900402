// CurveSamples: a row of samples in one knot interval, worked on side by side. Internal.
//   TSampleBlock         their parameters, basis values, points and distances
//   SampleBasis          the basis values
//   SamplePlane          points of the plane, and the distances of neighbours
//   SampleExtended       the same in six components
//   BlendExtendedAll     points in six components of any intervals
#pragma once

#include <cstddef>

namespace ZORBase {

/// Room for Count <= kSize samples of Components coordinates. Points[0] is the point before the first sample, Points[i + 1] that
/// of sample i.
template <std::size_t Components>
struct TSampleBlock {
  static constexpr std::size_t kSize = 64;
  std::size_t Count = 0;
  double u[kSize];
  double N[4][kSize];
  double Points[kSize + 1][Components];
  double Distances[kSize];  ///< from the point before
};

/// Gives in N[0..3][i] what BasisValues<true> gives at u[i]. U points to the knot of the interval; the interval is wide and the
/// knots around it rise. Lanes are samples.
void SampleBasis(const double* U, const double* u, std::size_t Count, double (*N)[TSampleBlock<6>::kSize]);

/// Gives the points and distances of a block from its basis values, its Points[0] and the four control points from P on: every
/// point is that of BlendPlane, the distance sqrt(dx dx + dy dy).
void SamplePlane(const double* P, TSampleBlock<2>& Block);

/// The same in six components. Every point is that of BlendExtended. The differences are formed in extended precision and
/// stored as doubles, their squares summed in extended precision, in order, and stored as a double, and its root taken.
/// Some samples go side by side, step by step: a single one would have to wait for each of its steps.
void SampleExtended(const double* P, TSampleBlock<6>& Block);

/// Gives BlendExtended of the control points from P[i] on with the weights N[0..3][i] in Sums[i], i < Count, some side by side.
void BlendExtendedAll(const double* const* P, const double (*N)[TSampleBlock<6>::kSize], std::size_t Count,
                      double* const* Sums);

}  // namespace ZORBase
