#include "support/TestAllocator.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <functional>
#include <new>
#include <string>
#include <thread>
#include <vector>

namespace ZORBase::Test {
namespace {

// Larger than what malloc aligns by itself.
constexpr std::align_val_t kWide{64};

// An allocation in one form, and the delete that belongs to it.
struct TForm {
  const char* Name;
  std::function<void*()> New;
  std::function<void(void*)> Delete;
};

std::vector<TForm> ThrowingForms() {
  return {
    {"new", [] { return ::operator new(3); }, [](void* Block) { ::operator delete(Block); }},
        {"new[]", [] { return ::operator new[](3); }, [](void* Block) { ::operator delete[](Block); }},
        {"aligned new", [] { return ::operator new(3, kWide); }, [](void* Block) { ::operator delete(Block, kWide); }},
        {"aligned new[]", [] { return ::operator new[](3, kWide); },
         [](void* Block) { ::operator delete[](Block, kWide); }},
#if defined(__cpp_sized_deallocation)
        {"new, sized", [] { return ::operator new(3); }, [](void* Block) { ::operator delete(Block, 3); }},
        {"new[], sized", [] { return ::operator new[](3); }, [](void* Block) { ::operator delete[](Block, 3); }},
        {"aligned new, sized", [] { return ::operator new(3, kWide); },
         [](void* Block) { ::operator delete(Block, 3, kWide); }},
        {"aligned new[], sized", [] { return ::operator new[](3, kWide); },
         [](void* Block) { ::operator delete[](Block, 3, kWide); }},
#endif
  };
}

std::vector<TForm> NothrowForms() {
  return {
      {"nothrow new", [] { return ::operator new(3, std::nothrow); },
       [](void* Block) { ::operator delete(Block, std::nothrow); }},
      {"nothrow new[]", [] { return ::operator new[](3, std::nothrow); },
       [](void* Block) { ::operator delete[](Block, std::nothrow); }},
      {"aligned nothrow new", [] { return ::operator new(3, kWide, std::nothrow); },
       [](void* Block) { ::operator delete(Block, kWide, std::nothrow); }},
      {"aligned nothrow new[]", [] { return ::operator new[](3, kWide, std::nothrow); },
       [](void* Block) { ::operator delete[](Block, kWide, std::nothrow); }},
  };
}

std::vector<TForm> AllForms() {
  std::vector<TForm> forms = ThrowingForms();
  const std::vector<TForm> others = NothrowForms();
  forms.insert(forms.end(), others.begin(), others.end());
  return forms;
}

TEST(TAllocationCount, EveryFormOfNewAndDeleteCounts) {
  for (const TForm& form : AllForms()) {
    const TAllocationCount count;
    void* const block = form.New();
    const std::int64_t made = count.Made();
    const std::int64_t left = count.Left();
    form.Delete(block);
    const std::int64_t leftBehindDelete = count.Left();
    EXPECT_EQ(made, 1) << form.Name;
    EXPECT_EQ(left, 1) << form.Name;
    EXPECT_EQ(leftBehindDelete, 0) << form.Name;
  }
}

TEST(TAllocationCount, WhatIsAlignedIsAligned) {
  for (int i = 0; i < 10; ++i) {
    void* const block = ::operator new(3, kWide);
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % static_cast<std::size_t>(kWide), 0U);
    ::operator delete(block, kWide);
  }
}

TEST(TAllocationCount, ThePeakIsTheMostThatWasHeldAtATimeAlsoAroundAnInnerCount) {
  const TAllocationCount outer;
  ::operator delete(::operator new(1'000'000));
  std::int64_t innerPeak = 0;
  {
    const TAllocationCount inner;
    ::operator delete(::operator new(1'000));
    ::operator delete(::operator new(1'000));
    innerPeak = inner.PeakBytes();
  }
  const std::int64_t outerPeak = outer.PeakBytes();
  EXPECT_GE(innerPeak, 1'000);
  EXPECT_LT(innerPeak, 2'000);
  EXPECT_GE(outerPeak, 1'000'000);
  EXPECT_LT(outerPeak, 1'100'000);
}

TEST(TAllocationCount, ASortOfNumbersMakesNone) {
  std::vector<int> numbers = {3, 1, 2};
  const TAllocationCount count;
  std::sort(numbers.begin(), numbers.end());
  const std::int64_t made = count.Made();
  EXPECT_EQ(made, 0);
}

TEST(TFailingAllocations, AFormThatThrowsRaisesBadAllocAndTheOthersGiveNull) {
  for (const TForm& form : ThrowingForms()) {
    bool hasThrown = false;
    {
      const TFailingAllocations failing;
      try {
        form.New();
      } catch (const std::bad_alloc&) {
        hasThrown = true;
      }
    }
    EXPECT_TRUE(hasThrown) << form.Name;
  }
  for (const TForm& form : NothrowForms()) {
    void* block = &block;
    {
      const TFailingAllocations failing;
      block = form.New();
    }
    EXPECT_EQ(block, nullptr) << form.Name;
  }
}

TEST(TFailingAllocations, AsManyAsAreAskedForFailFromTheFirstOn) {
  std::string course;
  bool hadFailed = true;
  bool hasFailed = false;
  {
    course.reserve(10);
    const TFailingAllocations failing(3, 2);
    for (int i = 1; i <= 6; ++i) {
      if (i == 3) hadFailed = failing.HasFailed();
      void* const block = ::operator new(1, std::nothrow);
      course += block ? 'y' : 'n';
      ::operator delete(block);
    }
    hasFailed = failing.HasFailed();
  }
  EXPECT_EQ(course, "yynnyy");
  EXPECT_FALSE(hadFailed);
  EXPECT_TRUE(hasFailed);
}

TEST(TFailingAllocations, AnotherThreadHasItsOwn) {
  std::int64_t made = 0;
  bool hasFailed = true;
  std::atomic<bool> isFailing = false;
  std::thread other([&] {
    while (!isFailing) std::this_thread::yield();
    const TAllocationCount count;
    void* const block = ::operator new(1, std::nothrow);
    hasFailed = !block;
    ::operator delete(block);
    made = count.Made();
  });
  {
    const TFailingAllocations failing;
    isFailing = true;
    other.join();
  }
  EXPECT_FALSE(hasFailed);
  EXPECT_EQ(made, 1);
}

}  // namespace
}  // namespace ZORBase::Test
