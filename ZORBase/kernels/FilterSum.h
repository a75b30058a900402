// FilterSum: the sum of a filter, in one order that is the same everywhere. Internal.
//   WeightedSum, PlainSum     one output
//   WeightedSums, PlainSums   the outputs of a row of samples, many side by side, with the same bits
#pragma once

#include <ZORBase/kernels/TargetClones.h>

#include <span>

namespace ZORBase {

/// The order of the sum of the terms t[0..n-1]. With m = n rounded down to a multiple of kFilterLanes = 16, and every chain of
/// additions starting from 0:
///   - the partial sum p[j] takes t[j], t[j+16], t[j+32], ... below m, one after the other;
///   - the partial sums are added by halves: p[j] and p[j+8], of these j and j+4, then j and j+2, then j and j+1;
///   - the terms from t[m] on, at most 15, are summed one after the other;
///   - the result is the first sum plus the second one, or the only one there is.
/// So the sum of fewer than 16 terms is the plain loop's. The sixteen chains are independent of each other, which suits vector
/// registers and hides the latency of an addition.
inline constexpr int kFilterLanes = 16;

/// How a term is made of the value at the place k; From(k) counts the places from k on.
struct TWeightedTerm {
  const double* Weights;
  ZORBASE_INLINE double operator()(int k, double Value) const { return Weights[k] * Value; }
  ZORBASE_INLINE TWeightedTerm From(int k) const { return {Weights + k}; }
};

struct TPlainTerm {
  ZORBASE_INLINE double operator()(int, double Value) const { return Value; }
  ZORBASE_INLINE TPlainTerm From(int) const { return {}; }
};

/// The sum of the terms, one after the other.
template <class TTerm>
ZORBASE_INLINE double SumInOrder(TTerm Term, const double* Values, int Count) {
  double sum = 0.0;
  for (int k = 0; k < Count; ++k) sum += Term(k, Values[k]);
  return sum;
}

double LongWeightedSum(const double* Weights, const double* Values, int Count);
double LongPlainSum(const double* Values, int Count);

/// \return the sum of Weights[k] * Values[k], k = 0..Count-1.
inline double WeightedSum(const double* Weights, const double* Values, int Count) {
  if (Count >= kFilterLanes) return LongWeightedSum(Weights, Values, Count);
  return SumInOrder(TWeightedTerm{Weights}, Values, Count);
}

/// \return the sum of Values[k], k = 0..Count-1.
inline double PlainSum(const double* Values, int Count) {
  if (Count >= kFilterLanes) return LongPlainSum(Values, Count);
  return SumInOrder(TPlainTerm{}, Values, Count);
}

/// Gives WeightedSum(Weights, Values + i, Count) in Results[i], bit for bit, for Count >= 1. Values holds Count - 1 more numbers
/// than Results, and the two do not overlap.
void WeightedSums(const double* Weights, const double* Values, int Count, std::span<double> Results);

/// Gives PlainSum(Values + i, Count) in Results[i] in the same way.
void PlainSums(const double* Values, int Count, std::span<double> Results);

}  // namespace ZORBase
