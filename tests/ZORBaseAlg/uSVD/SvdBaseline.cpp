// The decomposition for the instruction set that every machine has.
#define ZORBASE_SVD_TARGET
#define ZORBASE_SVD_NAMESPACE ZORBaseForTheBaseline
#include "SvdVariant.inc"

namespace ZORBase::Test {

TSvdResult BaselineSvd(std::span<const double> A, int M, int N) { return Decomposed(A, M, N, TSvd::TUse::Everything); }

TSvdResult BaselineSvdWithoutU(std::span<const double> A, int M, int N) {
  return Decomposed(A, M, N, TSvd::TUse::VOnly);
}

}  // namespace ZORBase::Test
