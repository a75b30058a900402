// TestLocks: the lock functions of a test program, which count. Whoever links test_locks has them; the thread sanitizer has its
// own and does not get along with these.
#pragma once

#include <cstdint>

namespace ZORBase::Test {

/// Counts what this thread locks while the object lives: mutexes, read-write locks, and what is to be done once, for which
/// others would have to wait.
class TLockCount {
 public:
  TLockCount();
  std::int64_t Taken() const;

 private:
  std::int64_t FTaken;
};

}  // namespace ZORBase::Test
