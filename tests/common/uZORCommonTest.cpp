#include <ZORBase/common/uZORCommon.h>

#include "support/TestSupport.h"

#include <sys/ptrace.h>
#include <sys/wait.h>
#include <unistd.h>

#include <rapidcheck/gtest.h>
#include <cmath>
#include <stdexcept>
#include <thread>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;
using testing::ElementsAre;
using testing::IsEmpty;

// ---------------------------------------------------------------------------------------------- SafeDiv

TEST(SafeDiv, AZeroDenominatorSaturatesWithTheSignOfTheNumerator) {
  EXPECT_EQ(SafeDiv(1, 0, 0), 1e7);
  EXPECT_EQ(SafeDiv(-1, 0, 0), -1e7);
  EXPECT_EQ(SafeDiv(1, -0.0, 0), 1e7);
  EXPECT_EQ(SafeDiv(0, 0, 0), 0);
}

TEST(SafeDiv, ATinyDenominatorSaturatesWithTheSignOfTheTrueQuotient) {
  EXPECT_EQ(SafeDiv(1, 1e-8, 1e-3), 1000);
  EXPECT_EQ(SafeDiv(-2, 1e-8, 1e-3), -1000);
  EXPECT_EQ(SafeDiv(2, -1e-8, 1e-3), -1000);
  EXPECT_EQ(SafeDiv(-2, -1e-8, 1e-3), 1000);
}

// The product of the two underflows to zero, which has no sign to take.
TEST(SafeDiv, TheSignIsRightWhereTheProductUnderflows) {
  EXPECT_EQ(SafeDiv(1e-3, -4.9e-324, 1e-3), -1000);
  EXPECT_EQ(SafeDiv(-1e-3, 4.9e-324, 1e-3), -1000);
  EXPECT_EQ(SafeDiv(-1e-3, -4.9e-324, 1e-3), 1000);
}

TEST(SafeDiv, TwoArgumentsBelowTheToleranceCountAsZero) {
  EXPECT_EQ(SafeDiv(1e-4, 1e-4, 1e-3), 0);
  EXPECT_EQ(SafeDiv(-9e-8, 1e-9, 0), 0);
}

TEST(SafeDiv, FromTheToleranceOnItDivides) {
  EXPECT_EQ(SafeDiv(6, 3, 0), 2);
  EXPECT_EQ(SafeDiv(6, 1e-7, 0), 6e7);
  EXPECT_EQ(SafeDiv(6, -1e-7, 0), -6e7);
  EXPECT_EQ(SafeDiv(6, 1e-3, 1e-3), 6000);
  EXPECT_EQ(SafeDiv(6, std::nextafter(1e-3, 0.0), 1e-3), 1000);
}

TEST(SafeDiv, ANumeratorOfExactlyTheToleranceSaturates) {
  EXPECT_EQ(SafeDiv(1e-3, 1e-4, 1e-3), 1000);
  EXPECT_EQ(SafeDiv(1e-7, 0, 0), 1e7);
  EXPECT_EQ(SafeDiv(std::nextafter(1e-3, 0.0), 1e-4, 1e-3), 0);
}

TEST(SafeDiv, AToleranceBelow1eMinus7ActsAs1eMinus7) {
  for (const double tolerance : {-5.0, 0.0, 1e-9, 1e-300, -kInfinity}) {
    EXPECT_EQ(SafeDiv(1, 0, tolerance), 1e7);
    EXPECT_EQ(SafeDiv(1, 1e-8, tolerance), 1e7);
    EXPECT_EQ(SafeDiv(1, 2e-7, tolerance), 5e6);
  }
}

TEST(SafeDiv, ANanThatDecidesGivesANan) {
  EXPECT_TRUE(std::isnan(SafeDiv(kNaN, 1, 0)));
  EXPECT_TRUE(std::isnan(SafeDiv(kNaN, 0, 0)));
  EXPECT_TRUE(std::isnan(SafeDiv(kNaN, 1e-9, 0)));
  EXPECT_TRUE(std::isnan(SafeDiv(1, kNaN, 0)));
}

RC_GTEST_PROP(SafeDiv, IsTheQuotientOrStaysWithinTheSaturation, ()) {
  const double numerator = *rc::gen::inRange(-1000, 1000) * 1e-4;
  const double denominator = *rc::gen::inRange(-1000, 1000) * 1e-4;
  const double tolerance = *rc::gen::inRange(0, 100) * 1e-3;
  const double result = SafeDiv(numerator, denominator, tolerance);
  const double e = std::max(tolerance, 1e-7);
  if (std::fabs(denominator) >= e) {
    RC_ASSERT(std::fabs(result * denominator - numerator) <= 1e-15 * (1 + std::fabs(numerator)));
  } else if (std::fabs(numerator) < e) {
    RC_ASSERT(result == 0);
  } else {
    RC_ASSERT(std::fabs(std::fabs(result) * e - 1) <= 1e-15);
    RC_ASSERT((result > 0) == (denominator == 0 ? numerator > 0 : (numerator > 0) == (denominator > 0)));
  }
}

// ---------------------------------------------------------------------------------------------- the logger

class ZORLogTest : public testing::Test {
 protected:
  ZORLogTest() { uZORCommon::initialization(); }
  ~ZORLogTest() override { uZORCommon::Finalization(); }
};

TEST(ZORLogOutside, ThereIsNoLoggerBeforeTheStartUpAndAfterTheShutDown) {
  EXPECT_EQ(ZORLog(), nullptr);
  uZORCommon::initialization();
  EXPECT_NE(ZORLog(), nullptr);
  uZORCommon::Finalization();
  EXPECT_EQ(ZORLog(), nullptr);
}

TEST(ZORLogOutside, TheSwitchNeedsAStartedLibrary) {
  EXPECT_THAT(Calling([] { SetZORLogEnable(true); }),
              RaisesGeneralError("SetZORLogEnable: the library is not started; call Initialize first"));
}

TEST(ZORLogOutside, StartedTwiceAndShutDownOnceItLivesOn) {
  uZORCommon::initialization();
  TCodeSiteLogger* const logger = ZORLog();
  uZORCommon::initialization();
  EXPECT_EQ(ZORLog(), logger);
  uZORCommon::Finalization();
  EXPECT_EQ(ZORLog(), logger);
  EXPECT_EQ(logger->Category(), "ZORLog");
  uZORCommon::Finalization();
  EXPECT_EQ(ZORLog(), nullptr);
}

TEST(ZORLogOutside, ANewStartUpGivesAFreshLogger) {
  uZORCommon::initialization();
  ZORLog()->SetCategory("changed");
  SetZORLogEnable(!DebuggerAttached());
  uZORCommon::Finalization();
  uZORCommon::initialization();
  EXPECT_EQ(ZORLog()->Category(), "ZORLog");
  EXPECT_EQ(ZORLog()->Enabled(), DebuggerAttached());
  uZORCommon::Finalization();
}

TEST_F(ZORLogTest, IsTheSameObjectOnEveryCallWithItsCategoryAndColour) {
  TCodeSiteLogger* const logger = ZORLog();
  ASSERT_NE(logger, nullptr);
  EXPECT_EQ(ZORLog(), logger);
  EXPECT_EQ(logger->Category(), "ZORLog");
  EXPECT_EQ(logger->CategoryColor(), 0x0097FFFFU);
}

TEST_F(ZORLogTest, IsOffWithoutADebuggerUntilItIsSwitchedOn) {
  EXPECT_EQ(ZORLog()->Enabled(), DebuggerAttached());
  SetZORLogEnable(true);
  EXPECT_TRUE(ZORLog()->Enabled());
  SetZORLogEnable(false);
  EXPECT_FALSE(ZORLog()->Enabled());
}

TEST_F(ZORLogTest, IsThereForEveryThreadWhileOthersStartAndShutDownOnceMore) {
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([] {
      for (int round = 0; round < 2000; ++round) {
        uZORCommon::initialization();
        EXPECT_NE(ZORLog(), nullptr);
        uZORCommon::Finalization();
      }
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_NE(ZORLog(), nullptr);
}

constexpr int kCannotBeTraced = 77;

// A traced child stands for a process under a debugger. Its exit status tells what it found.
int StatusOfTracedChild(int (*Question)()) {
  const pid_t child = ::fork();
  if (child == 0) {
    if (::ptrace(PTRACE_TRACEME, 0, nullptr, nullptr) != 0) ::_exit(kCannotBeTraced);
    ::_exit(Question());
  }
  int status = 0;
  if (::waitpid(child, &status, 0) != child || !WIFEXITED(status)) return -1;
  return WEXITSTATUS(status);
}

TEST(DebuggerAttached, IsTrueInATracedProcessWhichStartsWithItsLoggerOn) {
  const int attached = StatusOfTracedChild([] { return DebuggerAttached() ? 1 : 0; });
  if (attached == kCannotBeTraced) GTEST_SKIP() << "this system does not let a process be traced";
  EXPECT_EQ(attached, 1);
  const int enabled = StatusOfTracedChild([] {
    uZORCommon::initialization();
    return ZORLog()->Enabled() ? 1 : 0;
  });
  EXPECT_EQ(enabled, 1);
}

// ---------------------------------------------------------------------------------------------- TCodeSiteLogger

// A logger whose messages are kept.
struct TKeptLog {
  TCodeSiteLogger Logger;
  std::vector<std::string> Messages;

  TKeptLog() {
    Logger.SetCategory("Test");
    Logger.SetSink([this](std::string_view Category, std::string_view Message) {
      Messages.push_back(std::string(Category) + "|" + std::string(Message));
    });
  }
};

TEST(TCodeSiteLogger, StartsOffWithoutCategoryAndColour) {
  const TCodeSiteLogger logger;
  EXPECT_FALSE(logger.Enabled());
  EXPECT_EQ(logger.Category(), "");
  EXPECT_EQ(logger.CategoryColor(), 0U);
}

TEST(TCodeSiteLogger, SendsOnlyWhileItIsOn) {
  TKeptLog log;
  log.Logger.Send("lost");
  log.Logger.SetEnabled(true);
  log.Logger.Send("点 kept");
  log.Logger.SetCategory("Other");
  log.Logger.Send("");
  log.Logger.SetEnabled(false);
  log.Logger.Send("lost");
  EXPECT_THAT(log.Messages, ElementsAre("Test|点 kept", "Other|"));
}

TEST(TCodeSiteLogger, WritesALineToTheStandardErrorStreamByDefaultAndAfterAnEmptySink) {
  TKeptLog log;
  TCodeSiteLogger plain;
  plain.SetCategory("Plain");
  plain.SetEnabled(true);
  log.Logger.SetEnabled(true);
  log.Logger.SetSink({});
  testing::internal::CaptureStderr();
  plain.Send("one");
  log.Logger.Send("two");
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "Plain: one\nTest: two\n");
  EXPECT_THAT(log.Messages, IsEmpty());
}

TEST(TCodeSiteLogger, WhatTheSinkRaisesPassesThroughAndTheLoggerGoesOn) {
  TCodeSiteLogger logger;
  logger.SetEnabled(true);
  logger.SetSink([](std::string_view, std::string_view) { throw std::logic_error("full"); });
  EXPECT_THROW(logger.Send("x"), std::logic_error);
  int count = 0;
  logger.SetSink([&](std::string_view, std::string_view) { ++count; });
  logger.Send("x");
  EXPECT_EQ(count, 1);
}

TEST(TCodeSiteLogger, MessagesOfManyThreadsReachTheSinkOneAtATime) {
  TCodeSiteLogger logger;
  logger.SetEnabled(true);
  int inside = 0;
  int most = 0;
  int count = 0;
  logger.SetSink([&](std::string_view, std::string_view) {
    most = std::max(most, ++inside);
    ++count;
    if (count % 64 == 0) std::this_thread::yield();
    --inside;
  });
  std::vector<std::thread> threads;
  for (int i = 0; i < 4; ++i) {
    threads.emplace_back([&] {
      for (int round = 0; round < 5000; ++round) logger.Send("x");
    });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(count, 20000);
  EXPECT_EQ(most, 1);
}

}  // namespace
}  // namespace ZORBase
