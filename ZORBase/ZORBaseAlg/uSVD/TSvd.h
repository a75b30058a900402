// TSvd (internal): the singular value decomposition behind the module's services.
#pragma once

#include <ZORBase/ZORBaseAlg/uSVD/SvdBidiagonal.h>
#include <ZORBase/ZORBaseAlg/uSVD/SvdByColumns.h>
#include <ZORBase/ZORBaseAlg/uSVD/SvdByRows.h>
#include <ZORBase/ZORBaseAlg/uSVD/SvdDecomposition.h>
#include <ZORBase/kernels/AlignedDoubles.h>
#include <ZORBase/kernels/SvdRotations.h>

#include <cstddef>
#include <optional>

namespace ZORBase {

/// The decomposition A = U diag(w) V' of M x N numbers, M >= N >= 1, and its work space. Whatever the shape and the machine,
/// the result has the bits of the algorithm written down plainly: reflections with sums from the first index on, then
/// rotations one after the other. Only a NaN may differ in its sign and payload.
class TSvd {
 public:
  enum class TUse {
    Everything,
    VOnly  ///< U is not formed.
  };

  /// Allocates all that the decomposition needs; throws std::bad_alloc.
  TSvd(std::size_t M, std::size_t N, TUse Use);
  TSvd(const TSvd&) = delete;
  TSvd& operator=(const TSvd&) = delete;

  /// Takes A: the entry (i, j) is From[i RowStride + j ColumnStride], less Offsets[j] where Offsets are given.
  void Load(const double* From, std::size_t RowStride, std::size_t ColumnStride, const double* Offsets = nullptr);

  TSvdStatus Decompose();

  double W(std::size_t j) const { return FMatrix.w[j]; }
  double U(std::size_t i, std::size_t j) const { return *FU.At(i, j); }
  double V(std::size_t i, std::size_t j) const { return *FV.At(i, j); }

  /// X = V diag(1 / w) U' B, where 1 / w counts as 0 for each w that is not positive. To be called last, once.
  void Solve(const double* B, double* X);

 private:
  void NegateColumnsOfV();

  std::size_t FRows;
  std::size_t FColumns;
  TUse FUse;
  bool FIsByRows;
  TAlignedDoubles FWork;
  TBidiagonal FMatrix;
  TColumns FU;
  TColumns FV;
  TRotation* FRotations = nullptr;  // memory for those of U, then for those of V
  std::optional<TSvdByRows> FByRows;
  std::optional<TSvdByColumns> FByColumns;
};

}  // namespace ZORBase
