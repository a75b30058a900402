#pragma once

#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

/// Solves A x = b for M equations and N unknowns: the x of least |A x - b|, and of those the shortest one where singular
/// values of A are exactly 0. No singular value is cut off for being small, so the conditioning is the caller's affair.
/// \param AList     the M N entries of A, row by row where RowMajor, otherwise column by column
/// \param bList     M numbers
/// \param XList     is cleared and receives the N unknowns; it may be the same list as AList or bList.
/// \return true. Also where there are more unknowns than equations, and then all of them are 0; and where the
///         decomposition does not converge, which takes entries that are not finite.
/// \throws the general error "MatrixDivUsingSvd Err: InputList(AList or bList or Xlist) Is Uninitialized" for a null list,
///         and "MatrixDivUsingSvd Err: Input Invalid MatA.Count = %d, VecB.Count = %d, M = %d, N = %d" where the counts do
///         not fit or M or N is below 1, before anything is changed.
/// Cost: that of SvdDecompose.
ZORBASE_API bool MatrixDivUsingSvd(const TDoubleList* AList, const TDoubleList* bList, int M, int N, TDoubleList* XList,
                                   bool RowMajor);

}  // namespace ZORBase
