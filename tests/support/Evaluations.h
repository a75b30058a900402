// Evaluations: the calls that a control loop makes on objects that are built, each over a row of arguments.
//   Evaluations     calls that leave their objects as they are, so that many threads may make them at once
//   SampleCalls     calls that take the next sample, on filters of their own
//   TResults        where they leave what they give
#pragma once

#include <array>
#include <cstddef>
#include <cstring>
#include <functional>
#include <span>
#include <stdexcept>
#include <string>
#include <type_traits>
#include <vector>

namespace ZORBase::Test {

/// Room for the numbers that a call gives, without an allocation.
class TResults {
 public:
  /// Takes the next number, or the numbers that a record consists of.
  template <class T>
  void Add(const T& Value) {
    static_assert(std::is_trivially_copyable_v<T> && sizeof(T) % sizeof(double) == 0);
    AddBytes(&Value, sizeof(T) / sizeof(double));
  }
  template <class T>
  void AddAll(std::span<T> Values) {
    for (const T& value : Values) Add(value);
  }
  std::span<const double> Values() const { return std::span(FValues).first(FCount); }

 private:
  void AddBytes(const void* Bytes, std::size_t Count) {
    if (FCount + Count > FValues.size()) throw std::length_error("more results than there is room for");
    std::memcpy(FValues.data() + FCount, Bytes, Count * sizeof(double));
    FCount += Count;
  }

  std::array<double, 4096> FValues{};
  std::size_t FCount = 0;
};

struct TEvaluation {
  std::string Name;
  std::function<void(TResults& Results)> Run;
};

/// \return the calls on objects that all of them share. Each gives the same numbers whenever it runs.
std::vector<TEvaluation> Evaluations();

/// \return the calls on new filters. What they give depends on the samples that the filter has seen.
std::vector<TEvaluation> SampleCalls();

/// \return those of the C interface; Evaluations and SampleCalls have them among theirs.
std::vector<TEvaluation> CEvaluations();
std::vector<TEvaluation> CSampleCalls();

}  // namespace ZORBase::Test
