#include "support/TestAllocator.h"

#include <malloc.h>

#include <algorithm>
#include <cstdlib>
#include <new>

namespace ZORBase::Test {
namespace {

// Of one thread. No constructor runs, because the first allocations of a program are older than its first constructor.
struct TLedger {
  std::int64_t Made;
  std::int64_t Left;       // blocks
  std::int64_t Bytes;      // in these blocks
  std::int64_t PeakBytes;  // the largest value of Bytes
  std::int64_t Before;     // allocations that still succeed before those that fail
  std::int64_t Failing;    // allocations that fail then
};

constinit thread_local TLedger Ledger{};

bool IsToFail() {
  ++Ledger.Made;
  if (Ledger.Failing == 0) return false;
  if (Ledger.Before > 0) {
    --Ledger.Before;
    return false;
  }
  --Ledger.Failing;
  return true;
}

void* Allocate(std::size_t Size, std::size_t Alignment) noexcept {
  if (IsToFail()) return nullptr;
  const std::size_t size = std::max<std::size_t>(Size, 1);
  void* block = nullptr;
  if (Alignment <= __STDCPP_DEFAULT_NEW_ALIGNMENT__) {
    block = std::malloc(size);
  } else if (::posix_memalign(&block, Alignment, size) != 0) {
    block = nullptr;
  }
  if (!block) return nullptr;
  ++Ledger.Left;
  Ledger.Bytes += static_cast<std::int64_t>(::malloc_usable_size(block));
  Ledger.PeakBytes = std::max(Ledger.PeakBytes, Ledger.Bytes);
  return block;
}

void* AllocateOrThrow(std::size_t Size, std::size_t Alignment) {
  if (void* const block = Allocate(Size, Alignment)) return block;
  throw std::bad_alloc();
}

void Free(void* Block) noexcept {
  if (!Block) return;
  --Ledger.Left;
  Ledger.Bytes -= static_cast<std::int64_t>(::malloc_usable_size(Block));
  std::free(Block);
}

constexpr std::size_t kDefault = __STDCPP_DEFAULT_NEW_ALIGNMENT__;
constexpr std::size_t Wide(std::align_val_t Alignment) { return static_cast<std::size_t>(Alignment); }

}  // namespace

TAllocationCount::TAllocationCount()
    : FMade(Ledger.Made), FLeft(Ledger.Left), FBytes(Ledger.Bytes), FOuterPeakBytes(Ledger.PeakBytes) {
  Ledger.PeakBytes = Ledger.Bytes;
}

TAllocationCount::~TAllocationCount() { Ledger.PeakBytes = std::max(Ledger.PeakBytes, FOuterPeakBytes); }

std::int64_t TAllocationCount::Made() const { return Ledger.Made - FMade; }
std::int64_t TAllocationCount::Left() const { return Ledger.Left - FLeft; }
std::int64_t TAllocationCount::PeakBytes() const { return Ledger.PeakBytes - FBytes; }

TFailingAllocations::TFailingAllocations(std::int64_t First, std::int64_t Many)
    : FOuterBefore(Ledger.Before), FOuterMany(Ledger.Failing), FMany(Many) {
  Ledger.Before = First - 1;
  Ledger.Failing = Many;
}

TFailingAllocations::~TFailingAllocations() {
  Ledger.Before = FOuterBefore;
  Ledger.Failing = FOuterMany;
}

bool TFailingAllocations::HasFailed() const { return Ledger.Failing < FMany; }

}  // namespace ZORBase::Test

// Not inlined: GCC takes malloc and operator delete for a mismatched pair otherwise.
#define ZORBASE_TEST_OPERATOR [[gnu::noinline]]

using std::align_val_t, std::nothrow_t, std::size_t;
using ZORBase::Test::Allocate, ZORBase::Test::AllocateOrThrow, ZORBase::Test::Free, ZORBase::Test::kDefault,
    ZORBase::Test::Wide;

ZORBASE_TEST_OPERATOR void* operator new(size_t Size) { return AllocateOrThrow(Size, kDefault); }
ZORBASE_TEST_OPERATOR void* operator new[](size_t Size) { return AllocateOrThrow(Size, kDefault); }
ZORBASE_TEST_OPERATOR void* operator new(size_t Size, align_val_t A) { return AllocateOrThrow(Size, Wide(A)); }
ZORBASE_TEST_OPERATOR void* operator new[](size_t Size, align_val_t A) { return AllocateOrThrow(Size, Wide(A)); }
ZORBASE_TEST_OPERATOR void* operator new(size_t Size, const nothrow_t&) noexcept { return Allocate(Size, kDefault); }
ZORBASE_TEST_OPERATOR void* operator new[](size_t Size, const nothrow_t&) noexcept { return Allocate(Size, kDefault); }
ZORBASE_TEST_OPERATOR void* operator new(size_t Size, align_val_t A, const nothrow_t&) noexcept {
  return Allocate(Size, Wide(A));
}
ZORBASE_TEST_OPERATOR void* operator new[](size_t Size, align_val_t A, const nothrow_t&) noexcept {
  return Allocate(Size, Wide(A));
}

ZORBASE_TEST_OPERATOR void operator delete(void* Block) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete[](void* Block) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete(void* Block, size_t) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete[](void* Block, size_t) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete(void* Block, align_val_t) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete[](void* Block, align_val_t) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete(void* Block, size_t, align_val_t) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete[](void* Block, size_t, align_val_t) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete(void* Block, const nothrow_t&) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete[](void* Block, const nothrow_t&) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete(void* Block, align_val_t, const nothrow_t&) noexcept { Free(Block); }
ZORBASE_TEST_OPERATOR void operator delete[](void* Block, align_val_t, const nothrow_t&) noexcept { Free(Block); }
