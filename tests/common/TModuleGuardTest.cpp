#include <ZORBase/common/TModuleGuard.h>

#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <stdexcept>
#include <vector>

namespace ZORBase {
namespace {

// A module that counts its work.
struct TModule {
  TModuleGuard Guard;
  int Starts = 0;
  int Stops = 0;

  void StartUp() {
    Guard.StartUp([this] { ++Starts; });
  }
  void ShutDown() {
    Guard.ShutDown([this] { ++Stops; });
  }
};

TEST(TModuleGuard, TheFirstStartUpAndTheMatchingLastShutDownDoTheWork) {
  TModule module;
  module.StartUp();
  EXPECT_EQ(module.Starts, 1);
  module.StartUp();
  module.StartUp();
  EXPECT_EQ(module.Starts, 1);
  module.ShutDown();
  module.ShutDown();
  EXPECT_EQ(module.Stops, 0);
  module.ShutDown();
  EXPECT_EQ(module.Stops, 1);
}

TEST(TModuleGuard, AModuleCanBeStartedAgainAfterItsShutDown) {
  TModule module;
  for (int round = 1; round <= 3; ++round) {
    module.StartUp();
    module.ShutDown();
    EXPECT_EQ(module.Starts, round);
    EXPECT_EQ(module.Stops, round);
  }
}

// The counter goes above 0 then, and the next start-up only brings it back.
TEST(TModuleGuard, AShutDownBeforeAnyStartUpDoesNothingAndAnswersTheNextStartUp) {
  TModule module;
  module.ShutDown();
  module.StartUp();
  EXPECT_EQ(module.Starts, 0);
  EXPECT_EQ(module.Stops, 0);
  module.StartUp();
  EXPECT_EQ(module.Starts, 1);
}

TEST(TModuleGuard, AStartUpThatFailsPassesOnAndLeavesTheModuleNotStarted) {
  TModule module;
  EXPECT_THROW(module.Guard.StartUp([] { throw std::runtime_error("no"); }), std::runtime_error);
  module.StartUp();
  EXPECT_EQ(module.Starts, 1);
  module.ShutDown();
  EXPECT_EQ(module.Stops, 1);
}

TEST(TModuleGuard, WithoutWorkItCountsAllTheSame) {
  TModule module;
  module.Guard.StartUp();
  module.StartUp();
  EXPECT_EQ(module.Starts, 0);
  module.Guard.ShutDown();
  module.ShutDown();
  EXPECT_EQ(module.Stops, 1);
}

RC_GTEST_PROP(TModuleGuard, TheWorkFollowsTheCounter, ()) {
  const auto calls = *rc::gen::container<std::vector<bool>>(rc::gen::arbitrary<bool>());
  TModule module;
  int counter = 0;
  int starts = 0;
  int stops = 0;
  for (const bool isStart : calls) {
    if (isStart) {
      starts += counter-- == 0 ? 1 : 0;
      module.StartUp();
    } else {
      stops += ++counter == 0 ? 1 : 0;
      module.ShutDown();
    }
    RC_ASSERT(module.Starts == starts);
    RC_ASSERT(module.Stops == stops);
  }
}

}  // namespace
}  // namespace ZORBase
