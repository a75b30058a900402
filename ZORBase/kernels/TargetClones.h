// TargetClones: how a kernel asks for vector lanes.
//   ZORBASE_TARGET_CLONES   before a function: compiled for the baseline and for AVX2, chosen when the program starts. It
//                           stands in an unnamed namespace: g++ exports what else is cloned, whatever its visibility
//   ZORBASE_INLINE          before a helper: always inlined, so that it is compiled for whatever its caller is
//   ZORBASE_INLINE_LAMBDA   between the parameters and the body of a lambda: the same
//   ZORBASE_NOINLINE        before a function: kept out of the way of its caller's straight path
//   ZORBASE_INDEPENDENT     before a loop: no turn writes what another one reads
//   ZORBASE_UNROLL          before a loop of at most 8 turns: written out turn by turn
//   ZORBASE_LANES           before a short loop over lanes inside another loop: its turns become the lanes of vectors. Unrolled
//                           first, as a compiler likes to do, they would become vectors along the outer loop
//   ZORBASE_PREFETCH(P)     asks for the cache line at P ahead of its use
// No variant may enable fused multiply-add, or results would depend on the machine: AVX2 by itself does not, AVX-512
// always does. The choice is made before a sanitizer has set itself up, so under one there is the baseline only; so it is
// with Clang before 18, which gives the chosen function a name that no other file finds. To compare the variants, the build option
// ZORBASE_TARGET makes all of them one: ZORBASE_TARGET_BASELINE or ZORBASE_TARGET_AVX2 is defined then. To count which lines run,
// ZORBASE_COUNTS_LINES leaves the baseline only and calls the helpers: a line that is inlined would count at every place on its own.
#pragma once

#include <cstddef>  // also tells which C library there is

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define ZORBASE_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer) || __has_feature(memory_sanitizer)
#define ZORBASE_SANITIZED 1
#endif
#endif

#if defined(ZORBASE_TARGET_BASELINE) || defined(ZORBASE_COUNTS_LINES)
#define ZORBASE_TARGET_CLONES
#elif defined(ZORBASE_TARGET_AVX2)
#define ZORBASE_TARGET_CLONES __attribute__((target("avx2")))
#elif defined(__x86_64__) && defined(__ELF__) && defined(__GLIBC__) && !defined(ZORBASE_SANITIZED) && \
    ((defined(__clang__) && __clang_major__ >= 18) || (!defined(__clang__) && defined(__GNUC__) && __GNUC__ >= 9))
#define ZORBASE_TARGET_CLONES __attribute__((target_clones("default", "avx2")))
#else
#define ZORBASE_TARGET_CLONES
#endif

#if defined(ZORBASE_COUNTS_LINES)
#define ZORBASE_INLINE inline
#define ZORBASE_INLINE_LAMBDA
#define ZORBASE_NOINLINE
#elif defined(__GNUC__)
#define ZORBASE_INLINE [[gnu::always_inline]] inline
#define ZORBASE_INLINE_LAMBDA __attribute__((always_inline))
#define ZORBASE_NOINLINE [[gnu::noinline]]
#elif defined(_MSC_VER)
#define ZORBASE_INLINE __forceinline
#define ZORBASE_INLINE_LAMBDA
#define ZORBASE_NOINLINE __declspec(noinline)
#else
#define ZORBASE_INLINE inline
#define ZORBASE_INLINE_LAMBDA
#define ZORBASE_NOINLINE
#endif

#if defined(__clang__)
#define ZORBASE_INDEPENDENT _Pragma("clang loop vectorize(assume_safety)")
#define ZORBASE_LANES _Pragma("clang loop vectorize(assume_safety)")
#elif defined(__GNUC__)
#define ZORBASE_INDEPENDENT _Pragma("GCC ivdep")
#define ZORBASE_LANES _Pragma("GCC unroll 1")
#elif defined(_MSC_VER)
#define ZORBASE_INDEPENDENT __pragma(loop(ivdep))
#define ZORBASE_LANES
#else
#define ZORBASE_INDEPENDENT
#define ZORBASE_LANES
#endif

#if defined(__GNUC__)
#define ZORBASE_PREFETCH(P) __builtin_prefetch(P)
#else
#define ZORBASE_PREFETCH(P) static_cast<void>(P)
#endif

#if defined(__GNUC__) && !defined(__clang__)  // Clang does it unasked
#define ZORBASE_UNROLL _Pragma("GCC unroll 8")
#else
#define ZORBASE_UNROLL
#endif
