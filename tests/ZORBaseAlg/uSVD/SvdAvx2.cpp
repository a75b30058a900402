// The decomposition for AVX2, where the library has clones for it: Clang before 18 inlines no vectors into them.
#if defined(__x86_64__) && !(defined(__clang__) && __clang_major__ < 18) && !defined(ZORBASE_COUNTS_LINES)
#define ZORBASE_TEST_AVX2 1
#endif

#ifdef ZORBASE_TEST_AVX2
#define ZORBASE_SVD_TARGET __attribute__((target("avx2")))
#else
#define ZORBASE_SVD_TARGET
#endif
#define ZORBASE_SVD_NAMESPACE ZORBaseForAvx2
#include "SvdVariant.inc"

namespace ZORBase::Test {

#ifdef ZORBASE_TEST_AVX2
bool HasAvx2() { return __builtin_cpu_supports("avx2") != 0; }
#else
bool HasAvx2() { return false; }
#endif

TSvdResult Avx2Svd(std::span<const double> A, int M, int N) { return Decomposed(A, M, N, TSvd::TUse::Everything); }

}  // namespace ZORBase::Test
