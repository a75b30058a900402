#include <cmath>
#include <limits>
#include <numeric>

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
using testing::StartsWith;

template <class TFilter>
class TEveryFilter : public testing::Test {};
using TFilters =
    testing::Types<THammingLowPassFilter, TRectangleLowPassFilter, TBlackmanLowPassFilter, TAverageLowPassFilter>;
TYPED_TEST_SUITE(TEveryFilter, TFilters);

// ---------------------------------------------------------------------------------------------- length

TYPED_TEST(TEveryFilter, HasALengthOfAboutHalfAPeriodOfTheCutOffFrequency) {
  EXPECT_EQ(FilterOf<TypeParam>(1000, 100).SampleCount(), 5);
  EXPECT_EQ(FilterOf<TypeParam>(1000, 300).SampleCount(), 3);
  EXPECT_EQ(FilterOf<TypeParam>(1000, 1000).SampleCount(), 3);
  EXPECT_EQ(FilterOf<TypeParam>(1000, 70).SampleCount(), 9);   // ceil(7.14) = 8
  EXPECT_EQ(FilterOf<TypeParam>(1000, 10).SampleCount(), 51);  // 50
  EXPECT_EQ(FilterOf<TypeParam>(48000, 1000).SampleCount(), 25);
}

TYPED_TEST(TEveryFilter, HasLength3WithoutAPositiveCutOffFrequency) {
  EXPECT_EQ(FilterOf<TypeParam>(1000, 0).SampleCount(), 3);
  EXPECT_EQ(FilterOf<TypeParam>(1000, -20).SampleCount(), 3);
  EXPECT_EQ(TypeParam().SampleCount(), 3);
}

TYPED_TEST(TEveryFilter, OnlyKnowsItsLengthWhenAsked) {
  TypeParam filter;
  EXPECT_EQ(filter.N(), -1);
  filter.SetFsample(1000);
  filter.SetFcenter(100);
  EXPECT_EQ(filter.N(), -1);
  EXPECT_EQ(filter.GetSampleCount(), 5);
  EXPECT_EQ(filter.N(), 5);
  filter.SetFsample(2000);
  EXPECT_EQ(filter.N(), -1);
  EXPECT_EQ(filter.SampleCount(), 11);
  filter.SetFcenter(200);
  EXPECT_EQ(filter.N(), -1);
}

TEST(TLowPassWindowFilter, AnOrderDecidesTheLengthAndIsMadeOdd) {
  EXPECT_EQ(FilterOf<THammingLowPassFilter>(1000, 100, 6).SampleCount(), 7);
  EXPECT_EQ(FilterOf<THammingLowPassFilter>(1000, 100, 7).SampleCount(), 7);
  EXPECT_EQ(FilterOf<THammingLowPassFilter>(1000, 100, 1).SampleCount(), 1);
  EXPECT_EQ(FilterOf<THammingLowPassFilter>(1000, 100, 0).SampleCount(), 5);
  EXPECT_EQ(FilterOf<THammingLowPassFilter>(1000, 100, -7).SampleCount(), 5);
}

TEST(TLowPassWindowFilter, AnOrderChangesTheLengthOnlyWithTheNextDesign) {
  THammingLowPassFilter filter = DesignedFilter<THammingLowPassFilter>(1000, 100);
  filter.SetFilterOrder(21);
  EXPECT_EQ(filter.order(), 21);
  EXPECT_EQ(filter.SampleCount(), 5);
  filter.Initialize(0);
  EXPECT_EQ(filter.SampleCount(), 21);
}

TEST(TLowPassWindowFilter, ClearResetsTheOrderSoThatTheNextDesignGoesByTheFrequency) {
  THammingLowPassFilter filter = DesignedFilter<THammingLowPassFilter>(1000, 100, 7);
  filter.Clear(0);
  EXPECT_EQ(filter.order(), 0);
  EXPECT_EQ(filter.SampleCount(), 7);
  EXPECT_EQ(filter.Coeff().size(), 7u);
  filter.Initialize(0);
  EXPECT_EQ(filter.SampleCount(), 5);
}

TEST(TLowPassWindowFilter, WithoutACutOffFrequencyTheLengthOfTheLastDesignStays) {
  THammingLowPassFilter filter = FilterOf<THammingLowPassFilter>(1000, 0, 7);
  filter.Initialize(0);
  filter.Clear(0);
  filter.Initialize(0);
  EXPECT_EQ(filter.SampleCount(), 7);
}

// ---------------------------------------------------------------------------------------------- design

TYPED_TEST(TEveryFilter, InitializeFillsTheRingTwiceAndClearsTheLastOutput) {
  const TypeParam filter = DesignedFilter<TypeParam>(1000, 100, 0, 5);
  EXPECT_EQ(filter.LastOutput(), 0);
  EXPECT_THAT(filter.Signal(), testing::ElementsAreArray(std::vector<double>(10, 5.0)));
  EXPECT_EQ(filter.SignalIndex(), 0);
  EXPECT_EQ(filter.Coeff().size(), 5u);
  EXPECT_EQ(filter.Tc(), 0.001);
  EXPECT_EQ(filter.SampleTime(), 1000);
  EXPECT_EQ(filter.Frequency(), 100);
}

TYPED_TEST(TEveryFilter, HasCoefficientsOfSum1) {
  for (const double fc : {10.0, 37.5, 100.0, 333.0, 480.0}) {
    const TypeParam filter = DesignedFilter<TypeParam>(1000, fc);
    EXPECT_NEAR(std::accumulate(filter.Coeff().begin(), filter.Coeff().end(), 0.0), 1.0, 1e-14) << "fc " << fc;
  }
}

TYPED_TEST(TEveryFilter, ANewFrequencyLeavesTheOldDesignAtWork) {
  TypeParam filter = DesignedFilter<TypeParam>(1000, 10, 0, 1.0);
  TypeParam twin = DesignedFilter<TypeParam>(1000, 10, 0, 1.0);
  filter.SetFcenter(200);
  std::mt19937_64 random(7);
  for (const double sample : RandomSamples(random, 300)) ASSERT_EQ(filter.Filt(sample), twin.Filt(sample));
  EXPECT_EQ(filter.SampleCount(), 3);
  for (const double sample : RandomSamples(random, 300)) ASSERT_EQ(filter.Filt(sample), twin.Filt(sample));
  filter.SetFsample(500);
  filter.Clear(-2.5);
  twin.Clear(-2.5);
  EXPECT_EQ(filter.Signal().size(), 102u);
  EXPECT_EQ(TFilterState(filter), TFilterState(twin));
  EXPECT_EQ(filter.attList().Count(), twin.attList().Count());
  filter.Initialize(0);
  EXPECT_EQ(filter.Signal().size(), 6u);
}

TYPED_TEST(TEveryFilter, ClearRefillsTheRingAndKeepsTheCoefficients) {
  TypeParam filter = DesignedFilter<TypeParam>(1000, 100);
  const std::vector<double> coeff(filter.Coeff().begin(), filter.Coeff().end());
  double elapsed = 0;
  filter.RandomTimeFilt(9, 0.0025, elapsed);
  filter.Clear(5);
  EXPECT_EQ(filter.LastOutput(), 5);
  EXPECT_EQ(filter.cutoffTime(), 0);
  EXPECT_EQ(filter.cutoffValue(), 0);
  EXPECT_EQ(filter.SignalIndex(), 0);
  EXPECT_THAT(filter.Signal(), testing::Each(5.0));
  EXPECT_THAT(filter.Coeff(), testing::ElementsAreArray(coeff));
}

TYPED_TEST(TEveryFilter, ClearBeforeInitializeOnlySetsTheLastOutput) {
  TypeParam filter;
  filter.Clear(5);
  EXPECT_EQ(filter.LastOutput(), 5);
  EXPECT_EQ(filter.Signal().size(), 0u);
}

TYPED_TEST(TEveryFilter, CanBeMovedWhileItFilters) {
  TypeParam filter = DesignedFilter<TypeParam>(1000, 10);
  TypeParam twin = DesignedFilter<TypeParam>(1000, 10);
  for (int i = 0; i < 20; ++i) ASSERT_EQ(filter.Filt(i), twin.Filt(i));
  TypeParam moved = std::move(filter);
  for (int i = 0; i < 80; ++i) ASSERT_EQ(moved.Filt(i * i), twin.Filt(i * i));
  // NOLINTNEXTLINE(bugprone-use-after-move): what is left behind is a filter that is not designed
  EXPECT_THAT(Calling([&] { filter.Filt(1); }), RaisesGeneralError(HasSubstr("call Initialize first")));
}

// ---------------------------------------------------------------------------------------------- what cannot be designed

TYPED_TEST(TEveryFilter, AFrequencyThatIsNotFiniteIsRefusedAndChangesNothing) {
  TypeParam filter = FilterOf<TypeParam>(1000, 100);
  ASSERT_EQ(filter.SampleCount(), 5);
  for (const double frequency : {kInfinity, -kInfinity, kNaN}) {
    EXPECT_THAT(Calling([&] { filter.SetFsample(frequency); }), RaisesGeneralError(HasSubstr("is not finite")));
    EXPECT_THAT(Calling([&] { filter.SetFcenter(frequency); }), RaisesGeneralError(HasSubstr("is not finite")));
  }
  EXPECT_EQ(filter.fs(), 1000);
  EXPECT_EQ(filter.Tc(), 0.001);
  EXPECT_EQ(filter.fc(), 100);
  EXPECT_EQ(filter.N(), 5);
}

TYPED_TEST(TEveryFilter, WithoutAPositiveSampleFrequencyThereIsNoDesign) {
  TypeParam filter;
  EXPECT_THAT(Calling([&] { filter.Initialize(0); }), RaisesGeneralError(HasSubstr("sample frequency is 0")));
  filter.SetFsample(-1000);
  filter.SetFcenter(100);
  EXPECT_EQ(filter.SampleCount(), 3);
  EXPECT_THAT(Calling([&] { filter.Initialize(0); }), RaisesGeneralError(HasSubstr("must be positive")));
  EXPECT_EQ(filter.Coeff().size(), 0u);
}

TYPED_TEST(TEveryFilter, AFilterThatWouldBeTooLongIsRefusedAndTheOldOneGoesOn) {
  TypeParam filter = DesignedFilter<TypeParam>(1000, 100, 0, 3);
  const TFilterState before(filter);
  for (const double fc : {1000.0 / (2 * 1'000'002), 1e-9, 1e-308, std::numeric_limits<double>::denorm_min()}) {
    filter.SetFcenter(fc);
    EXPECT_THAT(Calling([&] { filter.SampleCount(); }), RaisesGeneralError(HasSubstr("more than 1000001 samples")));
    EXPECT_THAT(Calling([&] { filter.Initialize(0); }), RaisesGeneralError(HasSubstr("more than 1000001 samples")));
    EXPECT_EQ(filter.N(), -1);
    EXPECT_EQ(TFilterState(filter), before);
  }
  filter.Filt(1);
  EXPECT_EQ(filter.Coeff().size(), 5u);
}

TYPED_TEST(TEveryFilter, ALongFilterStaysPossible) { EXPECT_EQ(FilterOf<TypeParam>(2e6, 1).SampleCount(), 1'000'001); }

TEST(TLowPassWindowFilter, AnOrderAboveTheLimitIsRefused) {
  EXPECT_EQ(FilterOf<THammingLowPassFilter>(1000, 100, 1'000'000).SampleCount(), 1'000'001);
  EXPECT_EQ(FilterOf<THammingLowPassFilter>(1000, 100, 1'000'001).SampleCount(), 1'000'001);
  for (const int order : {1'000'002, std::numeric_limits<int>::max() - 1, std::numeric_limits<int>::max()}) {
    THammingLowPassFilter filter = DesignedFilter<THammingLowPassFilter>(1000, 100);
    filter.SetFilterOrder(order);
    EXPECT_THAT(Calling([&] { filter.Initialize(0); }), RaisesGeneralError(HasSubstr("is above 1000001")));
    EXPECT_EQ(filter.N(), 5);
    EXPECT_EQ(filter.Coeff().size(), 5u);
  }
}

TYPED_TEST(TEveryFilter, FrequenciesWhoseRatioOverflowsAreRefused) {
  TypeParam filter = FilterOf<TypeParam>(1e-300, 1e10);
  EXPECT_THAT(Calling([&] { filter.Initialize(0); }),
              RaisesGeneralError(HasSubstr("too large for the sample frequency")));
  filter.SetFsample(1);
  filter.SetFcenter(-1e308);
  EXPECT_THAT(Calling([&] { filter.Initialize(0); }),
              RaisesGeneralError(HasSubstr("too large for the sample frequency")));
  EXPECT_EQ(filter.Coeff().size(), 0u);
}

// A filter of somebody else's, with a length of its own choice.
class TOddFilter : public TAverageLowPassFilter {
 public:
  explicit TOddFilter(int Count) : FCount(Count) { SetFsample(1); }
  void CalN() override { FN = FCount; }

 private:
  int FCount;
};

TEST(TBaseLowPassFilter, ALengthThatADerivedFilterAsksForIsCheckedToo) {
  for (const int count : {-5, 0, 1'000'002, std::numeric_limits<int>::max()}) {
    TOddFilter filter(count);
    EXPECT_THAT(Calling([&] { filter.Initialize(0); }), RaisesGeneralError(HasSubstr("1 to 1000001 are possible")));
    EXPECT_EQ(filter.Coeff().size(), 0u);
  }
  TOddFilter even(4);
  even.Initialize(8);
  EXPECT_EQ(even.Filt(16), 10);
}

// ---------------------------------------------------------------------------------------------- attenuation

TYPED_TEST(TEveryFilter, HasATableInTwentyStepsUpToTheCutOffFrequency) {
  const TypeParam filter = DesignedFilter<TypeParam>(1000, 100);
  ASSERT_GE(filter.attList().Count(), 20);
  for (int i = 0; i < 20; ++i) {
    const double expected = i < 10 ? 3.0 * (i + 1) : 30.0 + 7.0 * (i - 9);
    EXPECT_NEAR(filter.attList()[i].frq, expected, 1e-12);
  }
  for (const TAttenuationAndF& row : filter.attList()) EXPECT_EQ(row.atten, filter.CalcAttenByF(row.frq));
}

// Three almost equal taps: (1 + 2 cos w) / 3 falls to 0.707 at w = 0.9758, which is 3106 of 20000.
TEST(TRectangleLowPassFilter, TheTableGoesOnInStepsOf5UntilTheResponseIsBelow0707) {
  const auto filter = DesignedFilter<TRectangleLowPassFilter>(20000, 10, 3);
  ASSERT_EQ(filter.attList().Count(), 20 + 620);
  EXPECT_NEAR(filter.attList()[20].frq, 15, 1e-12);
  EXPECT_NEAR(filter.attList().Last().frq, 3110, 1e-9);
  EXPECT_LT(filter.attList().Last().atten, 0.707);
  EXPECT_GT(filter.attList()[638].atten, 0.707);
}

// Its end taps are so small that the response stays above 0.72 throughout.
TEST(THammingLowPassFilter, TheTableEndsAtAThirdOfTheSampleFrequency) {
  const auto filter = DesignedFilter<THammingLowPassFilter>(1000, 10, 3);
  EXPECT_GT(filter.attList().Last().atten, 0.707);
  EXPECT_NEAR(filter.attList().Last().frq, 335, 1e-9);
  EXPECT_EQ(filter.attList().Count(), 20 + 65);
}

TEST(TBaseLowPassFilter, TheTableIsBoundedHoweverHighTheSampleFrequency) {
  const auto shortOne = DesignedFilter<TAverageLowPassFilter>(1e9, 0);
  EXPECT_EQ(shortOne.attList().Count(), 20 + TBaseLowPassFilter::kMaxAttenRows);
  const auto longOne = DesignedFilter<TRectangleLowPassFilter>(1e9, 100, 2001);
  EXPECT_EQ(longOne.attList().Count(), 20 + TBaseLowPassFilter::kMaxAttenTerms / 2001);
}

// A step of 5 is lost in the cut-off frequency here.
TEST(TBaseLowPassFilter, ATableWhoseFrequencyCannotRiseEnds) {
  const auto filter = DesignedFilter<THammingLowPassFilter>(1e20, 1e17, 3);
  EXPECT_EQ(filter.attList().Count(), 20 + TBaseLowPassFilter::kMaxAttenRows);
}

// Three equal taps at a sixth of the sample frequency: (1 + 2 cos 60 deg) / 3 = 2/3. The table is twenty rows (1, 0) and the
// row (2/3, 5), so that 0.8 is reached at 5 (1 - 0.8) / (1 - 2/3) = 3.
TEST(TBaseLowPassFilter, TheFrequencyOfAnAttenuationIsInterpolatedBetweenTwoRows) {
  const auto filter = DesignedFilter<TAverageLowPassFilter>(30, 0);
  ASSERT_EQ(filter.attList().Count(), 21);
  EXPECT_NEAR(filter.attList().Last().atten, 2.0 / 3.0, 1e-15);
  EXPECT_NEAR(filter.CalcRouphFByAtten(0.8), 3.0, 1e-13);
  EXPECT_NEAR(filter.CalcRouphFByAtten(2.0 / 3.0), 5.0, 1e-13);
  EXPECT_NEAR(filter.CalcRouphFByAtten(0.6), 6.0, 1e-13);
}

TEST(TBaseLowPassFilter, WhereTheTableIsLevelTheLowerRowAnswers) {
  // All coefficients are 0, and so is every attenuation.
  const auto filter = DesignedFilter<TRectangleLowPassFilter>(1000, 0);
  EXPECT_THAT(filter.Coeff(), testing::Each(0.0));
  EXPECT_EQ(filter.CalcRouphFByAtten(0.5), 0);
  EXPECT_EQ(filter.CalcRouphFByAtten(0), 0);
  EXPECT_EQ(filter.CalcRouphFByAtten(kNaN), 0);
}

TYPED_TEST(TEveryFilter, FindsTheFrequencyOfEveryRowOfItsTable) {
  const TypeParam filter = DesignedFilter<TypeParam>(1000, 20);
  for (const TAttenuationAndF& row : filter.attList()) {
    EXPECT_NEAR(filter.CalcRouphFByAtten(row.atten), row.frq, 1e-9 * row.frq);
  }
}

TYPED_TEST(TEveryFilter, HasNoAttenuationBeforeInitialize) {
  const TypeParam filter;
  EXPECT_EQ(filter.CalcAttenByF(10), 0);
  EXPECT_THAT(Calling([&] { filter.CalcRouphFByAtten(0.5); }), RaisesGeneralError(HasSubstr("call Initialize first")));
}

// ---------------------------------------------------------------------------------------------- product with a signal

TYPED_TEST(TEveryFilter, MultipliesASignalWithItsCoefficients) {
  const TypeParam filter = DesignedFilter<TypeParam>(1000, 10);
  std::mt19937_64 random(11);
  const std::vector<double> signal = RandomSamples(random, 60);
  for (int count = -2; count <= 51; ++count) {
    long double expected = 0;
    for (std::size_t k = 0; static_cast<int>(k) < count; ++k)
      expected += static_cast<long double>(signal[k]) * filter.Coeff()[k];
    EXPECT_NEAR(filter.CalcSimuSignalMutiply(signal, count), static_cast<double>(expected), 1e-14) << count;
  }
}

TYPED_TEST(TEveryFilter, RefusesMoreProductsThanThereAreValuesOrCoefficients) {
  const TypeParam filter = DesignedFilter<TypeParam>(1000, 100);
  const std::vector<double> signal(9, 1.0);
  EXPECT_THAT(Calling([&] { filter.CalcSimuSignalMutiply(signal, 10); }),
              RaisesGeneralError("Error TBaseLowPassFilter.CalcSimuSignalMutiply"));
  EXPECT_THAT(Calling([&] { filter.CalcSimuSignalMutiply({}, 1); }),
              RaisesGeneralError("Error TBaseLowPassFilter.CalcSimuSignalMutiply"));
  EXPECT_THAT(Calling([&] { filter.CalcSimuSignalMutiply(signal, 6); }),
              RaisesGeneralError(StartsWith("Error TBaseLowPassFilter.CalcSimuSignalMutiply")));
  EXPECT_EQ(filter.CalcSimuSignalMutiply({}, 0), 0);
  EXPECT_EQ(TypeParam().CalcSimuSignalMutiply(signal, 0), 0);
}

}  // namespace
}  // namespace ZORBase
