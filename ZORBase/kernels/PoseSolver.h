// PoseSolver: the tridiagonal system of a fit, in vector lanes where the machine has them. Internal.
#pragma once

#include <cstddef>

namespace ZORBase {

/// Solves for the poses P[2..Last] of 6 numbers each, of the curve through Q[0..Last] with the knots U[0..Last+6]; P[1] and
/// P[Last+1] are given, Last >= 3. All bits are those of elimination by StoreEliminated.
/// \return false, with P[2..Last] not settled, where that is not sure: on a machine without lanes, for a Last below 3 or beyond
///         31 bits, for knots that fall or are closer than basis functions tell apart, for numbers that are not moderate and
///         pivots that are nearly zero.
///         Throws std::bad_alloc.
bool SolvePosesByLanes(std::size_t Last, const double* Q, const double* U, double* P);

}  // namespace ZORBase
