// uSVD: the singular value decomposition A = U diag(w) V' and what is solved with it.
//   MatrixDivUsingSvd                  the least-squares solution of A x = b
//   FitPlaneUsingSvd, FitLineUsingSvd  the plane and the line closest to points, measured at right angles
//   SvdDecompose, SvdBackSubstitute    the decomposition itself, and the solution of A x = b from it
// All of them keep no state and may be called from many threads at once.
#pragma once

#include <ZORBase/ZORBaseAlg/uSVD/FitUsingSvd.h>
#include <ZORBase/ZORBaseAlg/uSVD/MatrixDivUsingSvd.h>
#include <ZORBase/ZORBaseAlg/uSVD/SvdDecomposition.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::uSVD {
/// Start-up and shut-down of the module, which has no work of its own to do then.
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::uSVD
