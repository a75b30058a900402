// The decomposition for AVX2.
#if defined(__x86_64__)
#define ZORBASE_SVD_TARGET __attribute__((target("avx2")))
#else
#define ZORBASE_SVD_TARGET
#endif
#define ZORBASE_SVD_NAMESPACE ZORBaseForAvx2
#include "SvdVariant.inc"

namespace ZORBase::Test {

#if defined(__x86_64__)
bool HasAvx2() { return __builtin_cpu_supports("avx2") != 0; }
#else
bool HasAvx2() { return false; }
#endif

TSvdResult Avx2Svd(std::span<const double> A, int M, int N) { return Decomposed(A, M, N); }

}  // namespace ZORBase::Test
