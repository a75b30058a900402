// SvdBidiagonal (internal): the iteration that makes a bidiagonal matrix diagonal.
#pragma once

#include <ZORBase/ZORBaseAlg/uSVD/SvdDecomposition.h>
#include <ZORBase/kernels/SvdRotations.h>

#include <cmath>
#include <cstddef>
#include <span>

namespace ZORBase {

/// The bidiagonal matrix between U and V, and what becomes of it.
struct TBidiagonal {
  std::span<double> w;       ///< the diagonal; in the end the singular values
  std::span<double> e;       ///< e[i] stands above w[i]; e[0] is 0
  std::span<double> VSigns;  ///< -1 where a column of V is to change its sign in the end, otherwise 1
  double Norm = 0.0;         ///< the largest |w[i]| + |e[i]|; what does not change it when added counts as 0

  /// Takes w[i] and e[i] into the norm.
  void Measure(std::size_t i) {
    const double size = std::fabs(w[i]) + std::fabs(e[i]);
    if (size > Norm) Norm = size;
  }
};

/// QR iterations with implicit shift, from the last singular value to the first. Writes the rotations of the columns of U and
/// V into the logs and sees to it that all are applied.
/// \return Good, or NoConvergence as soon as one singular value takes more than 30 iterations.
TSvdStatus Diagonalise(TBidiagonal& Matrix, TRotationLog& U, TRotationLog& V);

}  // namespace ZORBase
