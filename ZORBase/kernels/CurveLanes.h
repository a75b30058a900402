// CurveLanes: poses of a curve with their components side by side in vector lanes, where the machine has them. Internal.
//   AreForLanes          whether they can have these control points, which is to be asked before the others
//   PoseByLanes          the pose at a parameter
//   DerivativesByLanes   and its derivatives
//   SampleByLanes        a row of poses in one knot interval, and their distances
//   BlendAllByLanes      poses in any intervals
// All give the bits of BlendExtended.
#pragma once

#include <ZORBase/kernels/CurveSamples.h>

#include <cstddef>

namespace ZORBase {

/// \return whether the machine has the lanes, and all components of Count poses are 0 or moderate, see ExtendedLanes.h.
bool AreForLanes(const double* Poses, std::size_t Count);

// The others are for control points that these lanes can have.

/// Gives the pose at u, which is inside the knot interval at U of rising knots, from the four control points from P on. Two knots
/// before U[0] and four behind it exist.
/// \return false, with Pose not settled, where the lanes cannot vouch for it, or the interval is not wide.
bool PoseByLanes(const double* U, double u, const double* P, double* Pose);

/// Gives the pose and its first three derivatives, 4 times 6 numbers, under the same conditions.
bool DerivativesByLanes(const double* U, double u, const double* P, double* Poses);

/// SampleExtended. \return false, with nothing done, where the lanes cannot vouch for it.
bool SampleByLanes(const double* P, TSampleBlock<6>& Block);

/// BlendExtendedAll. \return false, with nothing done, where the lanes cannot vouch for it.
bool BlendAllByLanes(const double* const* P, const double (*N)[TSampleBlock<6>::kSize], std::size_t Count,
                     double* const* Sums);

}  // namespace ZORBase
