#pragma once

#include <ZORBase/common/Export.h>

#include <span>

namespace ZORBase {

/// How a decomposition ended.
enum class TSvdStatus : int {
  Good = 0,
  NoConvergence = -1,       ///< a singular value took more than 30 iterations, as with entries that are not finite
  MoreColumnsThanRows = -3  ///< nothing was done
};

/// The singular value decomposition A = U diag(W) V' by Householder reflections to bidiagonal form and QR iteration with
/// implicit shift on that (Golub and Reinsch, Numerische Mathematik 14, 1970).
/// \param A  M x N numbers, row by row, M >= N; replaced by U, whose columns are orthonormal, also those of
///           singular values that are 0.
/// \param W  receives the N singular values: not negative and not sorted.
/// \param V  receives N x N numbers, row by row: the right singular vectors are its columns.
/// \return the status. With MoreColumnsThanRows all three are as they were; with NoConvergence they hold the state that the
///         iteration was left in, where W may be negative.
/// \throws the general error when M or N is below 1 or when a span has another length, before anything is changed.
/// Cost: about 4 M N^2 + 8 N^3 operations; work space of about 2 M N + 2 N^2 numbers.
ZORBASE_API TSvdStatus SvdDecompose(std::span<double> A, int M, int N, std::span<double> W, std::span<double> V);

/// X = V diag(1 / W) U' B, where 1 / W counts as 0 for each W that is not positive. For a Good decomposition this is the
/// x of least |A x - B|, and the shortest of them where singular values are exactly 0. There is no other cut-off: a tiny
/// singular value divides like any other.
/// \param U, W, V  a decomposition by SvdDecompose
/// \param B        M numbers
/// \param X        receives N numbers; it may overlap B.
/// \throws the general error when M or N is below 1 or when a span has another length, before anything is changed.
ZORBASE_API void SvdBackSubstitute(std::span<const double> U, std::span<const double> W, std::span<const double> V,
                                   int M, int N, std::span<const double> B, std::span<double> X);

}  // namespace ZORBase
