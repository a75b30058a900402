#include <cmath>
#include <limits>

#include "FilterTestSupport.h"

namespace ZORBase {
namespace {

using Test::Calling;
using Test::DesignedFilter;
using Test::FilterOf;
using Test::RaisesGeneralError;
using Test::RandomSamples;
using Test::TFilterState;
using testing::HasSubstr;

// Gives the newest sample, so that what is resampled can be seen.
class TPassingFilter : public TAverageLowPassFilter {
 public:
  using TAverageLowPassFilter::Filt;
  double Filt(double value) override { return FLastOut = *(Push(value) + DesignedCount() - 1); }
};

TEST(RandomTimeFilt, TwoAndAHalfSampleTimesGiveTwoOutputsAndKeepTheHalf) {
  auto filter = DesignedFilter<TPassingFilter>(64, 8);
  std::vector<double> results(4, 77.0);
  EXPECT_EQ(filter.RandomTimeFilt(10, 2.5 / 64, results), 2);
  EXPECT_EQ(filter.cutoffTime(), 0.5 / 64);
  EXPECT_EQ(filter.cutoffValue(), 10);
  // From 0 at time 0 to 10 at 2.5: 4 at 1; then from 4 at 1 to 10 at 2.5: 8 at 2.
  EXPECT_DOUBLE_EQ(results[0], 4);
  EXPECT_DOUBLE_EQ(results[1], 8);
  EXPECT_EQ(results[2], 77);
  EXPECT_EQ(filter.RandomTimeFilt(20, 0.5 / 64, results), 1);
  EXPECT_EQ(results[0], 20);
  EXPECT_EQ(filter.cutoffTime(), 0);
  EXPECT_EQ(filter.LastOutput(), 20);
}

TEST(RandomTimeFilt, ElapsedIsTheTimeFilteredAndTheLastOutputIsReturned) {
  auto filter = DesignedFilter<TPassingFilter>(64, 8);
  double elapsed = 99;
  EXPECT_DOUBLE_EQ(filter.RandomTimeFilt(10, 2.5 / 64, elapsed), 8);
  EXPECT_EQ(elapsed, 2.0 / 64);
  EXPECT_DOUBLE_EQ(filter.RandomTimeFilt(1000, 0.25 / 64, elapsed), 8);
  EXPECT_EQ(elapsed, 0);
  EXPECT_EQ(filter.cutoffTime(), 0.75 / 64);
  EXPECT_EQ(filter.cutoffValue(), 1000);
}

TEST(RandomTimeFilt, NothingIsDueWithinASampleTime) {
  auto filter = DesignedFilter<THammingLowPassFilter>(64, 8, 0, 3);
  EXPECT_EQ(filter.RandomTimeFilt(10, 0.9 / 64, std::span<double>()), 0);
  EXPECT_EQ(filter.LastOutput(), 0);
  std::vector<double> results(1);
  EXPECT_EQ(filter.RandomTimeFilt(10, 0, results), 0);
}

TEST(RandomTimeFilt, ClearForgetsTheTimeGathered) {
  auto filter = DesignedFilter<TPassingFilter>(64, 8);
  std::vector<double> results(1);
  filter.RandomTimeFilt(10, 0.75 / 64, results);
  filter.Clear(0);
  EXPECT_EQ(filter.RandomTimeFilt(10, 0.75 / 64, results), 0);
}

TEST(RandomTimeFilt, EveryOutputIsWhatFiltGivesForTheResampledSignal) {
  auto filter = DesignedFilter<THammingLowPassFilter>(64, 4);
  auto passing = DesignedFilter<TPassingFilter>(64, 4);
  auto twin = DesignedFilter<THammingLowPassFilter>(64, 4);
  std::mt19937_64 random(21);
  std::vector<double> results(16);
  std::vector<double> resampled(16);
  for (const double value : RandomSamples(random, 500)) {
    const double deltaT = static_cast<double>(random() % 8192) / (64.0 * 1024.0);
    const int count = filter.RandomTimeFilt(value, deltaT, results);
    ASSERT_EQ(passing.RandomTimeFilt(value, deltaT, resampled), count);
    for (std::size_t i = 0; static_cast<int>(i) < count; ++i) ASSERT_EQ(results[i], twin.Filt(resampled[i]));
  }
}

// Whatever the times, samples of a straight line through the origin are resampled to points of that line.
TEST(RandomTimeFilt, AStraightLineStaysOne) {
  const bool holds = rc::check("the k-th output is the line at k Tc", [] {
    const double slope = *rc::gen::inRange(-100, 101) / 8.0;
    const auto steps = *rc::gen::container<std::vector<int>>(50, rc::gen::inRange(0, 5000));
    auto filter = DesignedFilter<TPassingFilter>(1024, 100);
    std::vector<double> results(8);
    double time = 0;
    int outputs = 0;
    for (const int step : steps) {
      const double deltaT = step * 0x1p-20;
      time += deltaT;
      const int count = filter.RandomTimeFilt(slope * time, deltaT, results);
      for (std::size_t i = 0; static_cast<int>(i) < count; ++i) {
        ++outputs;
        RC_ASSERT(std::fabs(results[i] - slope * outputs / 1024.0) < 1e-12);
      }
    }
  });
  EXPECT_TRUE(holds);
}

// Times in steps of 2^-20 with a sample time of 2^-10 are exact in doubles, and whole numbers say how many outputs are due.
TEST(RandomTimeFilt, TheNumberOfOutputsIsExactOverAMillionIrregularSteps) {
  auto filter = DesignedFilter<TAverageLowPassFilter>(1024, 400);
  auto timed = DesignedFilter<TAverageLowPassFilter>(1024, 400);
  std::mt19937_64 random(2024);
  std::vector<double> results(16);
  std::uint64_t ticks = 0;
  std::int64_t total = 0;
  double elapsedInAll = 0;
  for (int i = 0; i < 1'000'000; ++i) {
    const std::uint64_t step = random() % (i % 3 == 0 ? 200 : 5000);
    ticks += step;
    const auto due = static_cast<int>(ticks / 1024);
    ticks %= 1024;
    const double deltaT = static_cast<double>(step) * 0x1p-20;
    ASSERT_EQ(filter.RandomTimeFilt(1.0, deltaT, results), due) << "step " << i;
    ASSERT_EQ(filter.cutoffTime(), static_cast<double>(ticks) * 0x1p-20) << "step " << i;
    double elapsed = 0;
    timed.RandomTimeFilt(1.0, deltaT, elapsed);
    ASSERT_EQ(elapsed, due / 1024.0);
    elapsedInAll += elapsed;
    total += due;
  }
  EXPECT_EQ(elapsedInAll * 1024, static_cast<double>(total));
  EXPECT_GT(total, 1'000'000);
}

// 0.001 is not exact in a double: what is consumed may miss the sum of the steps by their roundings only.
TEST(RandomTimeFilt, NoTimeIsLostWithASampleTimeThatIsNotExact) {
  auto filter = DesignedFilter<TAverageLowPassFilter>(1000, 400);
  std::mt19937_64 random(99);
  std::vector<double> results(16);
  long double time = 0;
  std::int64_t total = 0;
  for (int i = 0; i < 1'000'000; ++i) {
    const double deltaT = static_cast<double>(random() % 5'000'000) * 1e-9;
    time += deltaT;
    total += filter.RandomTimeFilt(1.0, deltaT, results);
  }
  EXPECT_NEAR(static_cast<double>(time - static_cast<long double>(total) * 0.001L), filter.cutoffTime(), 1e-11);
  EXPECT_LT(filter.cutoffTime(), 0.001);
}

TEST(RandomTimeFilt, ANewSampleFrequencyCountsAtOnce) {
  auto filter = DesignedFilter<TPassingFilter>(64, 8);
  std::vector<double> results(8);
  EXPECT_EQ(filter.RandomTimeFilt(1, 0.75 / 64, results), 0);
  filter.SetFsample(256);
  EXPECT_EQ(filter.RandomTimeFilt(1, 0, results), 3);
  EXPECT_EQ(filter.cutoffTime(), 0);
}

// ---------------------------------------------------------------------------------------------- what is refused

class RandomTimeFiltRefuses : public testing::Test {
 protected:
  void ExpectRefusal(double deltaT, std::size_t Places, const std::string& Text) {
    const TFilterState before(FFilter);
    std::vector<double> results(Places, 77.0);
    double elapsed = 77;
    EXPECT_THAT(Calling([&] { FFilter.RandomTimeFilt(5, deltaT, results); }), RaisesGeneralError(HasSubstr(Text)));
    EXPECT_THAT(results, testing::Each(77.0));
    if (Places >= TBaseLowPassFilter::kMaxResampled) {
      EXPECT_THAT(Calling([&] { FFilter.RandomTimeFilt(5, deltaT, elapsed); }), RaisesGeneralError(HasSubstr(Text)));
    }
    EXPECT_EQ(elapsed, 77);
    EXPECT_EQ(TFilterState(FFilter), before);
  }

  static constexpr std::size_t kEnough = TBaseLowPassFilter::kMaxResampled;
  THammingLowPassFilter FFilter = DesignedFilter<THammingLowPassFilter>(64, 8, 0, 2);
};

TEST_F(RandomTimeFiltRefuses, TimeStepsThatAreNegativeOrNotFinite) {
  for (const double deltaT : {-1e-300, -0.5, kInfinity, -kInfinity, std::numeric_limits<double>::quiet_NaN()}) {
    ExpectRefusal(deltaT, kEnough, "is negative or not finite");
  }
}

TEST_F(RandomTimeFiltRefuses, MoreOutputsThanPlaces) {
  ExpectRefusal(3.0 / 64, 2, "more than 2 outputs are due");
  ExpectRefusal(1.0 / 64, 0, "more than 0 outputs are due");
  std::vector<double> results(3);
  EXPECT_EQ(FFilter.RandomTimeFilt(5, 3.0 / 64, results), 3);
}

TEST_F(RandomTimeFiltRefuses, MoreOutputsThanTheLimit) {
  const double most = TBaseLowPassFilter::kMaxResampled / 64.0;
  ExpectRefusal(most + 1.0 / 64, kEnough + 5, "more than 1048576 outputs are due");
  ExpectRefusal(1e300, kEnough, "is lost in the time");
  double elapsed = 0;
  FFilter.RandomTimeFilt(5, most, elapsed);
  EXPECT_EQ(elapsed, most);
}

TEST_F(RandomTimeFiltRefuses, ASampleTimeThatIsLostInTheTimeGathered) {
  FFilter.SetFsample(1e300);
  ExpectRefusal(1.0, kEnough, "is lost in the time");
}

TEST_F(RandomTimeFiltRefuses, ASampleTimeThatIsNotPositiveAndFinite) {
  FFilter.SetFsample(0);
  ExpectRefusal(1.0, kEnough, "is not positive and finite");
  FFilter.SetFsample(-64);
  ExpectRefusal(1.0, kEnough, "is not positive and finite");
}

TEST_F(RandomTimeFiltRefuses, TimesWhoseSumOverflows) {
  FFilter.SetFsample(1e-308);
  std::vector<double> results(2);
  EXPECT_EQ(FFilter.RandomTimeFilt(1, 1.7e308, results), 1);
  EXPECT_EQ(FFilter.RandomTimeFilt(1, 0.2e308, results), 0);
  ExpectRefusal(1.7e308, kEnough, "is lost in the time");
}

TEST_F(RandomTimeFiltRefuses, AnythingBeforeInitialize) {
  FFilter = FilterOf<THammingLowPassFilter>(64, 8);
  ExpectRefusal(1.0, kEnough, "call Initialize first");
  ExpectRefusal(0.0, kEnough, "call Initialize first");
}

}  // namespace
}  // namespace ZORBase
