// Lanes: four numbers side by side, for kernels whose registers are laid out by hand. Where a plain loop will do, the compiler
// finds the lanes by itself.
//   Load, Store, Splat   from memory at any address, to it, and one number four times
//   + - * /              lane by lane, each rounded on its own
//   Transpose            rows and columns of 4 x 4 numbers
//   StoreInterleaved     to memory, the lanes of two in turns
// To be included by kernel sources only: everything is inlined into the clone of a function that uses it, so no vector is
// ever passed in a call, whose form would depend on the instruction set.
#pragma once

#include <ZORBase/kernels/TargetClones.h>

#include <cstddef>

#if defined(__GNUC__)
#pragma GCC diagnostic ignored "-Wpsabi"  // of calls that are not there
#endif

namespace ZORBase {

inline constexpr std::size_t kLanes = 4;

#if defined(__GNUC__)

using TLanes = double __attribute__((vector_size(kLanes * sizeof(double))));

#if defined(__clang__)  // takes no vector type as less aligned than its size
ZORBASE_INLINE TLanes Load(const double* From) {
  TLanes lanes;
  __builtin_memcpy(&lanes, From, sizeof lanes);
  return lanes;
}
ZORBASE_INLINE void Store(double* To, const TLanes& X) { __builtin_memcpy(To, &X, sizeof X); }
#else
using TLanesInMemory = double __attribute__((vector_size(kLanes * sizeof(double)), aligned(sizeof(double)), may_alias));

ZORBASE_INLINE TLanes Load(const double* From) { return *reinterpret_cast<const TLanesInMemory*>(From); }
ZORBASE_INLINE void Store(double* To, const TLanes& X) { *reinterpret_cast<TLanesInMemory*>(To) = X; }
#endif

// A shuffle stays whole until it is inlined into a clone; an initialiser of four would by then have become two of two.
ZORBASE_INLINE TLanes Splat(double X) {
  const TLanes first{X};
  return __builtin_shufflevector(first, first, 0, 0, 0, 0);
}

ZORBASE_INLINE void Transpose(TLanes& A, TLanes& B, TLanes& C, TLanes& D) {
  const TLanes evenAB = __builtin_shufflevector(A, B, 0, 4, 2, 6);
  const TLanes oddAB = __builtin_shufflevector(A, B, 1, 5, 3, 7);
  const TLanes evenCD = __builtin_shufflevector(C, D, 0, 4, 2, 6);
  const TLanes oddCD = __builtin_shufflevector(C, D, 1, 5, 3, 7);
  A = __builtin_shufflevector(evenAB, evenCD, 0, 1, 4, 5);
  B = __builtin_shufflevector(oddAB, oddCD, 0, 1, 4, 5);
  C = __builtin_shufflevector(evenAB, evenCD, 2, 3, 6, 7);
  D = __builtin_shufflevector(oddAB, oddCD, 2, 3, 6, 7);
}

ZORBASE_INLINE void StoreInterleaved(double* To, const TLanes& A, const TLanes& B) {
  Store(To, __builtin_shufflevector(A, B, 0, 4, 1, 5));
  Store(To + kLanes, __builtin_shufflevector(A, B, 2, 6, 3, 7));
}

#else

struct TLanes {
  double Items[kLanes];
};

template <class TOperation>
ZORBASE_INLINE TLanes EachLane(const TLanes& A, const TLanes& B, TOperation Operation) {
  TLanes result;
  for (std::size_t i = 0; i < kLanes; ++i) result.Items[i] = Operation(A.Items[i], B.Items[i]);
  return result;
}
ZORBASE_INLINE TLanes operator+(const TLanes& A, const TLanes& B) {
  return EachLane(A, B, [](double X, double Y) { return X + Y; });
}
ZORBASE_INLINE TLanes operator-(const TLanes& A, const TLanes& B) {
  return EachLane(A, B, [](double X, double Y) { return X - Y; });
}
ZORBASE_INLINE TLanes operator*(const TLanes& A, const TLanes& B) {
  return EachLane(A, B, [](double X, double Y) { return X * Y; });
}
ZORBASE_INLINE TLanes operator/(const TLanes& A, const TLanes& B) {
  return EachLane(A, B, [](double X, double Y) { return X / Y; });
}

ZORBASE_INLINE TLanes Load(const double* From) { return {{From[0], From[1], From[2], From[3]}}; }
ZORBASE_INLINE void Store(double* To, const TLanes& X) {
  for (std::size_t i = 0; i < kLanes; ++i) To[i] = X.Items[i];
}

ZORBASE_INLINE TLanes Splat(double X) { return {{X, X, X, X}}; }

ZORBASE_INLINE void Transpose(TLanes& A, TLanes& B, TLanes& C, TLanes& D) {
  TLanes* const rows[kLanes] = {&A, &B, &C, &D};
  for (std::size_t i = 0; i < kLanes; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      const double item = rows[i]->Items[j];
      rows[i]->Items[j] = rows[j]->Items[i];
      rows[j]->Items[i] = item;
    }
  }
}

ZORBASE_INLINE void StoreInterleaved(double* To, const TLanes& A, const TLanes& B) {
  for (std::size_t i = 0; i < kLanes; ++i) {
    To[2 * i] = A.Items[i];
    To[2 * i + 1] = B.Items[i];
  }
}

#endif

}  // namespace ZORBase
