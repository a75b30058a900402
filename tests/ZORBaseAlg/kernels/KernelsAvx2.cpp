// The kernels for AVX2, where the library has clones for it: Clang before 18 inlines no vectors into them. And those that have no
// other form.
#if defined(__x86_64__) && !(defined(__clang__) && __clang_major__ < 18) && !defined(ZORBASE_COUNTS_LINES)
#define ZORBASE_TEST_AVX2 1
#define ZORBASE_KERNEL_TARGET __attribute__((target("avx2")))
#else
#define ZORBASE_KERNEL_TARGET
#endif
#define ZORBASE_KERNEL_NAMESPACE ZORBaseKernelsForAvx2
#include "KernelVariant.inc"

namespace {

#ifdef ZORBASE_HAS_EXTENDED_LANES

using TOperation = void (*)(const double*, const double*, double*);

ZORBASE_BY_LANES void SumFour(const double* A, const double* B, double* To) {
  Variant::StoreHead(To, Variant::Sum(Variant::LoadHead(A), Variant::LoadHead(B)));
}
ZORBASE_BY_LANES void SubtractFour(const double* A, const double* B, double* To) {
  Variant::StoreHead(To, Variant::Difference(Variant::LoadHead(A), Variant::LoadHead(B)));
}
ZORBASE_BY_LANES void MultiplyFour(const double* A, const double* B, double* To) {
  Variant::StoreHead(To, Variant::Product(Variant::LoadHead(A), Variant::LoadHead(B)));
}

template <TOperation Operation>
TVector EachFour(TNumbers A, TNumbers B) {
  TVector results(A.size());
  for (std::size_t i = 0; i + 4 <= A.size(); i += 4) Operation(&A[i], &B[i], &results[i]);
  return results;
}

constexpr auto kSums = EachFour<SumFour>;
constexpr auto kDifferences = EachFour<SubtractFour>;
constexpr auto kProducts = EachFour<MultiplyFour>;

#else

TVector Nothing(TNumbers /*A*/, TNumbers /*B*/) { return {}; }
constexpr auto kSums = Nothing;
constexpr auto kDifferences = Nothing;
constexpr auto kProducts = Nothing;

#endif

bool AreForLanesOf(TNumbers Poses) { return Variant::AreForLanes(Poses.data(), Poses.size() / 6); }

TVector PoseOf(const double* U, double u, TNumbers Points) {
  TVector pose(6);
  return Variant::PoseByLanes(U, u, Points.data(), pose.data()) ? pose : TVector();
}

TVector DerivativesOf(const double* U, double u, TNumbers Points) {
  TVector poses(24);
  return Variant::DerivativesByLanes(U, u, Points.data(), poses.data()) ? poses : TVector();
}

TVector SampleByLanesOf(TNumbers Points, TNumbers Basis) {
  return SamplePosesOf(Points, Basis, [](const double* P, auto& Block) { Variant::SampleByLanes(P, Block); });
}

TVector SolvePosesOf(TNumbers Q, TNumbers U, TNumbers P) {
  TVector solution(P.begin(), P.end());
  return Variant::SolvePosesByLanes(Q.size() / 6 - 1, Q.data(), U.data(), solution.data()) ? solution : TVector();
}

bool SolveWithoutNumbers(std::size_t Last) { return Variant::SolvePosesByLanes(Last, nullptr, nullptr, nullptr); }

}  // namespace

namespace ZORBase::Test {

const TKernels* Avx2Kernels() {
#ifdef ZORBASE_TEST_AVX2
  static constexpr TKernels kernels = KernelsCalled("AVX2");
  return __builtin_cpu_supports("avx2") != 0 ? &kernels : nullptr;
#else
  return nullptr;
#endif
}

const TLaneKernels& LaneKernels() {
  static const TLaneKernels kernels = {Variant::kHasExtendedLanes,
                                       kSums,
                                       kDifferences,
                                       kProducts,
                                       AreForLanesOf,
                                       PoseOf,
                                       DerivativesOf,
                                       SampleByLanesOf,
                                       SolvePosesOf,
                                       SolveWithoutNumbers};
  return kernels;
}

}  // namespace ZORBase::Test
