// TestAllocator: operator new and delete of a test program, in all their forms, which count and can be made to fail.
//   TAllocationCount      what was allocated and freed in a scope
//   TFailingAllocations   from the k-th on, allocations fail
// Both look at their own thread only. Whoever links test_allocator has them; objects of one kind may be nested.
#pragma once

#include <cstdint>
#include <limits>

namespace ZORBase::Test {

/// Counts what this thread allocates and frees by operator new and delete while the object lives.
class TAllocationCount {
 public:
  TAllocationCount();
  ~TAllocationCount();
  TAllocationCount(const TAllocationCount&) = delete;
  TAllocationCount& operator=(const TAllocationCount&) = delete;

  /// \return how many allocations were asked for, those that failed among them.
  std::int64_t Made() const;
  /// \return how many blocks are allocated and not freed yet; less than 0 where older ones were freed.
  std::int64_t Left() const;
  /// \return the most bytes that were held at one time, beyond those held at the start.
  std::int64_t PeakBytes() const;

 private:
  std::int64_t FMade;
  std::int64_t FLeft;
  std::int64_t FBytes;
  std::int64_t FOuterPeakBytes;
};

/// Lets allocations of this thread fail while the object lives: those that throw raise std::bad_alloc, the others give null.
/// Nothing is to be expected from GoogleTest meanwhile, because its own allocations fail as well.
class TFailingAllocations {
 public:
  static constexpr std::int64_t kAll = std::numeric_limits<std::int64_t>::max();

  /// \param First  the number of the first that fails, from 1 on.
  /// \param Many   how many fail from there on.
  explicit TFailingAllocations(std::int64_t First = 1, std::int64_t Many = kAll);
  ~TFailingAllocations();
  TFailingAllocations(const TFailingAllocations&) = delete;
  TFailingAllocations& operator=(const TFailingAllocations&) = delete;

  /// \return whether an allocation has failed yet.
  bool HasFailed() const;

 private:
  std::int64_t FOuterBefore;
  std::int64_t FOuterMany;
  std::int64_t FMany;
};

}  // namespace ZORBase::Test
