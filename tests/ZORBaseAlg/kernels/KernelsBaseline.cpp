// The kernels for the instruction set that every machine has.
#define ZORBASE_KERNEL_TARGET
#define ZORBASE_KERNEL_NAMESPACE ZORBaseKernelsForTheBaseline
#include "KernelVariant.inc"

namespace ZORBase::Test {

const TKernels& BaselineKernels() {
  static constexpr TKernels kernels = KernelsCalled("baseline");
  return kernels;
}

}  // namespace ZORBase::Test
