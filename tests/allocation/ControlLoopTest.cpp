#include <ZORBase/ZORBase.h>

#include <memory>
#include <mutex>
#include <shared_mutex>
#include <vector>

#include "support/Evaluations.h"
#include "support/TestAllocator.h"
#include "support/TestLocks.h"
#include "support/TestSupport.h"

namespace ZORBase::Test {
namespace {

/// Matches a call that, when it is run, allocates nothing, frees nothing and takes no lock.
MATCHER(AllocatesNothingAndTakesNoLock, "") {
  const auto results = std::make_unique<TResults>();
  const TAllocationCount allocations;
  const TLockCount locks;
  arg(*results);
  const std::int64_t made = allocations.Made();
  const std::int64_t left = allocations.Left();
  const std::int64_t taken = locks.Taken();
  *result_listener << "which allocates " << made << " times, keeps " << left << " blocks and takes " << taken
                   << " locks";
  return made == 0 && left == 0 && taken == 0;
}

class ControlLoop : public testing::Test {
 protected:
  /// The first use of a quadrature rule computes it.
  static void SetUpTestSuite() { TNumeric::GaussLegendreRule(14); }
};

TEST_F(ControlLoop, EvaluationsOfBuiltObjectsAllocateNothingAndTakeNoLock) {
  const std::vector<TEvaluation> calls = Evaluations();
  RecordProperty("evaluations", static_cast<int>(calls.size()));
  for (const TEvaluation& call : calls) EXPECT_THAT(call.Run, AllocatesNothingAndTakesNoLock()) << call.Name;
}

TEST_F(ControlLoop, SamplesOfDesignedFiltersAllocateNothingAndTakeNoLock) {
  const std::vector<TEvaluation> calls = SampleCalls();
  RecordProperty("samples", static_cast<int>(calls.size()));
  for (const TEvaluation& call : calls) EXPECT_THAT(call.Run, AllocatesNothingAndTakesNoLock()) << call.Name;
}

TEST_F(ControlLoop, FiltersTakeMoreSamplesThanTheirBlocksWithoutAnAllocation) {
  THammingLowPassFilter filter;
  filter.SetFsample(1000);
  filter.SetFcenter(1);
  filter.Initialize(0);
  std::vector<double> samples(10'000, 1.0);
  EXPECT_THAT([&](TResults&) { filter.Filt(samples, samples); }, AllocatesNothingAndTakesNoLock());
  EXPECT_NEAR(samples.back(), 1.0, 1e-12);
}

// ---------------------------------------------------------------------------------------------- that the counts count

TEST(LockCount, CountsMutexesReadWriteLocksAndWhatIsDoneOnce) {
  std::mutex mutex;
  std::shared_mutex shared;
  std::once_flag once;
  const TLockCount locks;
  { const std::lock_guard lock(mutex); }
  EXPECT_EQ(locks.Taken(), 1);
  if (mutex.try_lock()) mutex.unlock();
  EXPECT_EQ(locks.Taken(), 2);
  { const std::shared_lock lock(shared); }
  EXPECT_EQ(locks.Taken(), 3);
  { const std::unique_lock lock(shared); }
  EXPECT_EQ(locks.Taken(), 4);
  std::call_once(once, [] {});
  EXPECT_EQ(locks.Taken(), 5);
}

double ComputedOnce() {
  static const double value = StrToFloat1033("3.25");
  return value;
}

TEST(LockCount, CountsTheMakingOfAStaticObjectAndNotItsUse) {
  const TLockCount locks;
  ComputedOnce();
  EXPECT_EQ(locks.Taken(), 1);
  ComputedOnce();
  EXPECT_EQ(locks.Taken(), 1);
}

TEST(LockCount, SeesTheLocksThatTheLibraryTakes) {
  constexpr int kRuleOfItsOwn = 97;
  const TLockCount locks;
  TNumeric::GaussLegendreRule(kRuleOfItsOwn);
  const std::int64_t first = locks.Taken();
  TNumeric::GaussLegendreRule(kRuleOfItsOwn);
  EXPECT_GE(first, 1);
  EXPECT_EQ(locks.Taken(), first);
}

TEST(ControlLoopMatcher, TellsCallsThatAllocateAndCallsThatLock) {
  std::mutex mutex;
  const std::vector<double> samples(16, 1.0);
  const auto allocating = [&](TResults& Results) {
    TFFT fft;
    Results.Add(static_cast<double>(fft.CalFFT(samples, 16, 1.0)));
  };
  const auto locking = [&](TResults&) { const std::lock_guard lock(mutex); };
  EXPECT_THAT(allocating, testing::Not(AllocatesNothingAndTakesNoLock()));
  EXPECT_THAT(locking, testing::Not(AllocatesNothingAndTakesNoLock()));
  EXPECT_THAT([](TResults&) {}, AllocatesNothingAndTakesNoLock());
}

}  // namespace
}  // namespace ZORBase::Test
