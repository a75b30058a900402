#include "support/TestLocks.h"

#include <pthread.h>

#include "support/HiddenFunction.h"

namespace ZORBase::Test {
namespace {

constinit thread_local std::int64_t Taken = 0;

constinit std::atomic<int (*)(pthread_mutex_t*)> MutexLock{};
constinit std::atomic<int (*)(pthread_mutex_t*)> MutexTryLock{};
constinit std::atomic<int (*)(pthread_rwlock_t*)> ReadLock{};
constinit std::atomic<int (*)(pthread_rwlock_t*)> WriteLock{};
constinit std::atomic<int (*)(pthread_once_t*, void (*)())> Once{};
constinit std::atomic<int (*)(void*)> GuardAcquire{};

/// Counts, and does what it would have been done.
template <class TFunction, class... TArgs>
int Counted(std::atomic<TFunction*>& Known, const char* Name, TArgs... Args) {
  ++Taken;
  return Hidden(Known, Name)(Args...);
}

}  // namespace

TLockCount::TLockCount() : FTaken(Test::Taken) {}

std::int64_t TLockCount::Taken() const { return Test::Taken - FTaken; }

}  // namespace ZORBase::Test

namespace Locks = ZORBase::Test;

extern "C" {

int pthread_mutex_lock(pthread_mutex_t* Mutex) noexcept { return Locks::Counted(Locks::MutexLock, __func__, Mutex); }
int pthread_mutex_trylock(pthread_mutex_t* Mutex) noexcept {
  return Locks::Counted(Locks::MutexTryLock, __func__, Mutex);
}
int pthread_rwlock_rdlock(pthread_rwlock_t* Lock) noexcept { return Locks::Counted(Locks::ReadLock, __func__, Lock); }
int pthread_rwlock_wrlock(pthread_rwlock_t* Lock) noexcept { return Locks::Counted(Locks::WriteLock, __func__, Lock); }
int pthread_once(pthread_once_t* Control, void (*Routine)()) {
  return Locks::Counted(Locks::Once, __func__, Control, Routine);
}

// Of the C++ run-time library: guards the making of a function's static object.
int __cxa_guard_acquire(void* Guard) { return Locks::Counted(Locks::GuardAcquire, __func__, Guard); }  // NOLINT
}
