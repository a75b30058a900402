// BucketIndex: where a value stands among rising keys, in a time that hardly depends on their number. Internal.
#pragma once

#include <ZORBase/kernels/TargetClones.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <utility>
#include <vector>

namespace ZORBase {

/// Divides the range of the keys into equal buckets and remembers for each the last key before it, so that a search begins at
/// the right place and ends a key or two later. Keys that crowd in a bucket are searched by growing steps and halving.
///
/// The place of a value is unique, so it is that of any other search. The keys stay where they are: every call is given
/// Key(i), which must answer as it did when the index was built.
class TBucketIndex {
 public:
  /// Indexes Key(0) <= ... <= Key(Count - 1). Fewer than 3 keys, keys that fall or are not finite, and keys that are all the same
  /// leave the index empty. Takes 4 bytes a bucket, those of the index before where they suffice. Cost O(Count).
  template <class TKey>
  void Build(std::size_t Count, TKey Key, double BucketsPerKey = 2.0) {
    Clear();
    if (Count < 3 || Count >= std::numeric_limits<std::uint32_t>::max() || !IsRising(Count, Key)) return;
    const double width = Key(Count - 1) - Key(0);
    const double buckets = BucketsPerKey * static_cast<double>(Count);
    if (!std::isfinite(width) || !(buckets / width < kSteepest)) return;
    FLast = Count - 1;
    FScale = buckets / width;
    FTo = FFrom = Key(0);
    Fill(Places(Count, BucketsPerKey), Key);
    FTo = Key(FLast);
  }

  void Clear() {
    FLast = 0;
    FTo = FFrom;
  }

  ///@{
  /// Makes room for the buckets of Count keys, so that Build does not allocate; and whether there is room.
  void Reserve(std::size_t Count, double BucketsPerKey) { FFirst.reserve(Places(Count, BucketsPerKey)); }
  bool HasRoomFor(std::size_t Count, double BucketsPerKey) const {
    return Places(Count, BucketsPerKey) <= FFirst.capacity();
  }
  ///@}

  TBucketIndex() = default;
  TBucketIndex(const TBucketIndex&) = default;
  TBucketIndex& operator=(const TBucketIndex&) = default;
  /// What is moved from is empty, as the keys that are moved with it are.
  TBucketIndex(TBucketIndex&& Other) noexcept
      : FFirst(std::move(Other.FFirst)),
        FLast(std::exchange(Other.FLast, 0)),
        FFrom(Other.FFrom),
        FTo(std::exchange(Other.FTo, Other.FFrom)),
        FScale(Other.FScale) {}
  TBucketIndex& operator=(TBucketIndex&& Other) noexcept {
    TBucketIndex taken(std::move(Other));
    std::swap(FFirst, taken.FFirst);
    FLast = taken.FLast;
    FFrom = taken.FFrom;
    FTo = taken.FTo;
    FScale = taken.FScale;
    return *this;
  }

  /// \return whether Find has a place for X: Key(0) <= X < Key(Count - 1). Nothing is covered by an empty index, nor is NaN.
  bool Covers(double X) const { return X >= FFrom && X < FTo; }

  /// \return the one place i with Key(i) <= X < Key(i + 1), for an X that is covered.
  template <class TKey>
  ZORBASE_INLINE std::size_t Find(TKey Key, double X) const {
    const std::size_t first = FFirst[Bucket(X)];
    // Both comparisons at once: a branch on either would be guessed wrong half the time.
    const std::size_t place = first + static_cast<std::size_t>(Key(first + 1) <= X) +  //
                              static_cast<std::size_t>(Key(first + 2) <= X);
    if (Key(place + 1) <= X) [[unlikely]]
      return FindFrom(place + 1, Key, X);
    return place;
  }

  /// The same by a guess, for buckets of many keys that stand at almost equal distances: between the first ones of two buckets
  /// the place is interpolated.
  template <class TKey>
  ZORBASE_INLINE std::size_t FindByGuess(TKey Key, double X) const {
    if (FLast < kGuessed) [[unlikely]]
      return FindFrom(0, Key, X);
    const double place = (X - FFrom) * FScale;
    const auto bucket = static_cast<std::size_t>(static_cast<std::int64_t>(place));
    const double keys = static_cast<double>(FFirst[bucket + 1] - FFirst[bucket]);
    const auto step = static_cast<std::size_t>(
        static_cast<std::int64_t>((place - static_cast<double>(static_cast<std::int64_t>(bucket))) * keys));
    // All comparisons at once, from one place before the guess to two behind it.
    const std::size_t guess = FFirst[bucket] + step;
    const std::size_t first = std::min(guess - static_cast<std::size_t>(guess > 0), FLast - kGuessed);
    const std::size_t found = first + static_cast<std::size_t>(Key(first + 1) <= X) +  //
                              static_cast<std::size_t>(Key(first + 2) <= X) +          //
                              static_cast<std::size_t>(Key(first + 3) <= X);
    if (!(Key(first) <= X)) [[unlikely]]
      return FindFrom(FFirst[bucket], Key, X);
    if (Key(found + 1) <= X) [[unlikely]]
      return FindFrom(found + 1, Key, X);
    return found;
  }

 private:
  static constexpr std::size_t kGuessed = 4;  // a guess looks at as many keys behind the first one

  // The buckets, the end of the last one, and one more in case of a rounding.
  static std::size_t Places(std::size_t Count, double BucketsPerKey) {
    return static_cast<std::size_t>(BucketsPerKey * static_cast<double>(Count)) + 3;
  }

  // Keys over so small a range are not worth their overflows.
  static constexpr double kSteepest = 1e300;

  template <class TKey>
  static bool IsRising(std::size_t Count, TKey& Key) {
    if (!std::isfinite(Key(0)) || !std::isfinite(Key(Count - 1)) || !(Key(0) < Key(Count - 1))) return false;
    bool isRising = true;
    for (std::size_t i = 0; i + 1 < Count; ++i) isRising &= Key(i) <= Key(i + 1);
    return isRising;
  }

  // Does not fall when X rises, which is all that the search relies on.
  std::size_t Bucket(double X) const {
    return static_cast<std::size_t>(static_cast<std::int64_t>((X - FFrom) * FScale));
  }

  // First[b] becomes the last key that lies in a bucket before b, or an earlier one: two keys after it exist. Of several keys in
  // a bucket the last one stays.
  template <class TKey>
  void Fill(std::size_t Size, TKey& Key) {
    FFirst.assign(Size, 0);
    for (std::size_t i = 0; i + 2 <= FLast; ++i) FFirst[Bucket(Key(i)) + 1] = static_cast<std::uint32_t>(i);
    for (std::size_t b = 1; b < FFirst.size(); ++b) FFirst[b] = std::max(FFirst[b], FFirst[b - 1]);
  }

  // As Find, where Key(Low) <= X.
  template <class TKey>
  ZORBASE_NOINLINE std::size_t FindFrom(std::size_t Low, TKey& Key, double X) const {
    std::size_t step = 1;
    while (FLast - Low > step && Key(Low + step) <= X) {
      Low += step;
      step *= 2;
    }
    std::size_t high = std::min(Low + step, FLast);
    while (high - Low > 1) {
      const std::size_t middle = Low + (high - Low) / 2;
      (Key(middle) <= X ? Low : high) = middle;
    }
    return Low;
  }

  std::vector<std::uint32_t> FFirst;
  std::size_t FLast = 0;
  double FFrom = 0.0;
  double FTo = 0.0;
  double FScale = 0.0;
};

}  // namespace ZORBase
