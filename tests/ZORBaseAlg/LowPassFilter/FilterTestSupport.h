// FilterTestSupport: filters ready to use, and signals for them.
#pragma once

#include <ZORBase/ZORBaseAlg/LowPassFilter.h>

#include "support/TestSupport.h"

#include <bit>
#include <cstdint>
#include <random>
#include <type_traits>
#include <vector>

namespace ZORBase::Test {

/// A filter with both frequencies set, not designed yet.
template <class TFilter>
TFilter FilterOf(double fs, double fc, int Order = 0) {
  TFilter filter;
  filter.SetFsample(fs);
  filter.SetFcenter(fc);
  if constexpr (std::is_base_of_v<TLowPassWindowFilter, TFilter>) filter.SetFilterOrder(Order);
  return filter;
}

/// A filter ready to use. The moving average has no order; it gets the cut-off frequency of that length.
template <class TFilter>
TFilter DesignedFilter(double fs, double fc, int Order = 0, double InitValue = 0.0) {
  if constexpr (!std::is_base_of_v<TLowPassWindowFilter, TFilter>) {
    if (Order > 0) fc = fs / (2.0 * Order - 1.0);
  }
  TFilter filter = FilterOf<TFilter>(fs, fc, Order);
  filter.Initialize(InitValue);
  return filter;
}

inline std::vector<double> RandomSamples(std::mt19937_64& Random, std::size_t Count) {
  std::vector<double> samples(Count);
  for (double& sample : samples) sample = static_cast<double>(static_cast<std::int64_t>(Random())) * 0x1p-60;
  return samples;
}

inline bool IsSameBits(double A, double B) {
  return std::bit_cast<std::uint64_t>(A) == std::bit_cast<std::uint64_t>(B);
}

/// All that filtering changes.
struct TFilterState {
  explicit TFilterState(const TBaseLowPassFilter& Filter)
      : Signal(Filter.Signal().begin(), Filter.Signal().end()),
        Index(Filter.SignalIndex()),
        LastOut(Filter.lastOut()),
        Time(Filter.cutoffTime()),
        Value(Filter.cutoffValue()) {}
  bool operator==(const TFilterState&) const = default;

  std::vector<double> Signal;
  int Index;
  double LastOut;
  double Time;
  double Value;
};

}  // namespace ZORBase::Test
