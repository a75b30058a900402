#include <ZORBase/kernels/FilterSum.h>

#include <algorithm>
#include <cstddef>

namespace ZORBase {
namespace {

// The sum of at least kFilterLanes terms.
template <class TTerm>
ZORBASE_INLINE double LongSum(TTerm Term, const double* Values, int Count) {
  const int whole = Count - Count % kFilterLanes;
  double lanes[kFilterLanes];
  for (int j = 0; j < kFilterLanes; ++j) lanes[j] = 0.0 + Term(j, Values[j]);
  for (int k = kFilterLanes; k < whole; k += kFilterLanes) {
    for (int j = 0; j < kFilterLanes; ++j) lanes[j] += Term(k + j, Values[k + j]);
  }
  for (int j = 0; j < 8; ++j) lanes[j] += lanes[j + 8];
  for (int j = 0; j < 4; ++j) lanes[j] += lanes[j + 4];
  const double sum = (lanes[0] + lanes[2]) + (lanes[1] + lanes[3]);
  if (whole == Count) return sum;
  return sum + SumInOrder(Term.From(whole), Values + whole, Count - whole);
}

// Outputs that are worked on side by side; the partial sums of so many fit the first-level cache.
constexpr int kSumBlock = 64;

// A pass over a row of partial sums, one for each output, adds several terms at a time: memory is touched less often.
constexpr int kTermsOfAPass = 4;

// Adds the terms at 0, Stride, 2 Stride, ... (Terms - 1) Stride to every partial sum of the row, or starts the row with them.
template <int Terms, int Stride, bool Starts, class TTerm>
ZORBASE_INLINE void Pass(double* __restrict Row, int Outputs, TTerm Term, const double* __restrict Values) {
  for (int i = 0; i < Outputs; ++i) {
    double sum = Starts ? 0.0 : Row[i];
    for (int t = 0; t < Terms; ++t) sum += Term(t * Stride, Values[t * Stride + i]);
    Row[i] = sum;
  }
}

// Makes the row of the sums of Count >= 1 terms, Stride apart, one after the other.
template <int Stride, class TTerm>
ZORBASE_INLINE void SumRow(double* __restrict Row, int Outputs, TTerm Term, const double* __restrict Values,
                           int Count) {
  int t = (Count - 1) % kTermsOfAPass + 1;
  switch (t) {
    case 1: Pass<1, Stride, true>(Row, Outputs, Term, Values); break;
    case 2: Pass<2, Stride, true>(Row, Outputs, Term, Values); break;
    case 3: Pass<3, Stride, true>(Row, Outputs, Term, Values); break;
    default: Pass<kTermsOfAPass, Stride, true>(Row, Outputs, Term, Values); break;
  }
  for (; t < Count; t += kTermsOfAPass) {
    Pass<kTermsOfAPass, Stride, false>(Row, Outputs, Term.From(t * Stride), Values + std::ptrdiff_t{t} * Stride);
  }
}

ZORBASE_INLINE void AddRow(double* __restrict Row, const double* __restrict Other, int Outputs) {
  for (int i = 0; i < Outputs; ++i) Row[i] += Other[i];
}

// The sums of at most kSumBlock outputs.
template <class TTerm>
ZORBASE_INLINE void SumBlock(TTerm Term, const double* Values, int Count, double* Results, int Outputs) {
  const int rounds = Count / kFilterLanes;
  const int whole = rounds * kFilterLanes;
  if (whole < Count) SumRow<1>(Results, Outputs, Term.From(whole), Values + whole, Count - whole);
  if (rounds == 0) return;
  double lanes[kFilterLanes][kSumBlock];
  for (int j = 0; j < kFilterLanes; ++j) SumRow<kFilterLanes>(lanes[j], Outputs, Term.From(j), Values + j, rounds);
  for (int half = kFilterLanes / 2; half > 0; half /= 2) {
    for (int j = 0; j < half; ++j) AddRow(lanes[j], lanes[j + half], Outputs);
  }
  if (whole < Count) {
    AddRow(Results, lanes[0], Outputs);
  } else {
    std::copy_n(lanes[0], Outputs, Results);
  }
}

template <class TTerm>
ZORBASE_INLINE void SumAll(TTerm Term, const double* Values, int Count, std::span<double> Results) {
  for (std::size_t done = 0; done < Results.size(); done += kSumBlock) {
    const auto outputs = static_cast<int>(std::min<std::size_t>(kSumBlock, Results.size() - done));
    SumBlock(Term, Values + done, Count, Results.data() + done, outputs);
  }
}

// The clones have internal linkage (TargetClones.h); what the header declares are plain functions that go on to them.

ZORBASE_TARGET_CLONES double LongWeightedSumClones(const double* Weights, const double* Values, int Count) {
  return LongSum(TWeightedTerm{Weights}, Values, Count);
}

ZORBASE_TARGET_CLONES double LongPlainSumClones(const double* Values, int Count) {
  return LongSum(TPlainTerm{}, Values, Count);
}

ZORBASE_TARGET_CLONES void WeightedSumsClones(const double* Weights, const double* Values, int Count,
                                              std::span<double> Results) {
  SumAll(TWeightedTerm{Weights}, Values, Count, Results);
}

ZORBASE_TARGET_CLONES void PlainSumsClones(const double* Values, int Count, std::span<double> Results) {
  SumAll(TPlainTerm{}, Values, Count, Results);
}

}  // namespace

double LongWeightedSum(const double* Weights, const double* Values, int Count) {
  return LongWeightedSumClones(Weights, Values, Count);
}

double LongPlainSum(const double* Values, int Count) { return LongPlainSumClones(Values, Count); }

void WeightedSums(const double* Weights, const double* Values, int Count, std::span<double> Results) {
  WeightedSumsClones(Weights, Values, Count, Results);
}

void PlainSums(const double* Values, int Count, std::span<double> Results) { PlainSumsClones(Values, Count, Results); }

}  // namespace ZORBase
