// ExtendedStore: a sum or product that is formed in extended precision and stored as a double, from memory to memory. Internal.
//   StoreProduct   To = A * B
//   StoreSum       To = A + B
//   StoreSumOrZero To = A + B, but 0 instead of -0
//   StoreDifference To = A - B
//
// The bits are those of ExtendedProduct and ExtendedSum. Compilers take a result of the 80-bit unit through a register of the
// other unit before they store it, which doubles the instructions of a point's arithmetic; the three instructions that are
// needed start every cycle, but take twenty to finish, so independent operations should stand side by side.
#pragma once

#include <ZORBase/common/BaseServices/Extended.h>
#include <ZORBase/kernels/TargetClones.h>

#include <limits>

namespace ZORBase {

#if defined(__GNUC__) && defined(__x86_64__)
inline constexpr bool kHasStoreX87 = std::numeric_limits<long double>::digits == 64;
#else
inline constexpr bool kHasStoreX87 = false;
#endif

ZORBASE_INLINE void StoreProduct(double& To, const double& A, const double& B) {
#if defined(__GNUC__) && defined(__x86_64__)
  if constexpr (kHasStoreX87) {
    __asm__("fldl %1\n\tfmull %2\n\tfstpl %0" : "=m"(To) : "m"(A), "m"(B) : "st");
    return;
  }
#endif
  To = ExtendedProduct(A, B);
}

ZORBASE_INLINE void StoreSum(double& To, const double& A, const double& B) {
#if defined(__GNUC__) && defined(__x86_64__)
  if constexpr (kHasStoreX87) {
    __asm__("fldl %1\n\tfaddl %2\n\tfstpl %0" : "=m"(To) : "m"(A), "m"(B) : "st");
    return;
  }
#endif
  To = ExtendedSum(A, B);
}

ZORBASE_INLINE void StoreSumOrZero(double& To, const double& A, const double& B) {
#if defined(__GNUC__) && defined(__x86_64__)
  if constexpr (kHasStoreX87) {
    __asm__("fldl %1\n\tfaddl %2\n\tfldz\n\tfaddp\n\tfstpl %0" : "=m"(To) : "m"(A), "m"(B) : "st", "st(1)");
    return;
  }
#endif
  To = ExtendedSum(A, B) + 0.0;
}

ZORBASE_INLINE void StoreDifference(double& To, const double& A, const double& B) {
#if defined(__GNUC__) && defined(__x86_64__)
  if constexpr (kHasStoreX87) {
    __asm__("fldl %1\n\tfsubl %2\n\tfstpl %0" : "=m"(To) : "m"(A), "m"(B) : "st");
    return;
  }
#endif
  To = ExtendedSum(A, -B);
}

}  // namespace ZORBase
