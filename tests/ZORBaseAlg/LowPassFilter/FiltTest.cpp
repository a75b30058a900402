#include <array>
#include <cmath>
#include <limits>

#include "FilterTestSupport.h"

namespace ZORBase {
namespace {

using Test::Calling;
using Test::DesignedFilter;
using Test::FilterOf;
using Test::IsSameBits;
using Test::RaisesGeneralError;
using Test::RandomSamples;
using Test::TFilterState;
using testing::HasSubstr;

template <class TFilter>
class TFilt : public testing::Test {};
using TFilters =
    testing::Types<THammingLowPassFilter, TRectangleLowPassFilter, TBlackmanLowPassFilter, TAverageLowPassFilter>;
TYPED_TEST_SUITE(TFilt, TFilters);

// The documented order of a filter's sum, written down plainly.
double SumInTheFixedOrder(const std::vector<double>& Terms) {
  const std::size_t whole = Terms.size() / 16 * 16;
  std::array<double, 16> lanes{};
  for (std::size_t k = 0; k < whole; ++k) lanes[k % 16] += Terms[k];
  for (std::size_t half = 8; half > 0; half /= 2) {
    for (std::size_t j = 0; j < half; ++j) lanes[j] += lanes[j + half];
  }
  double rest = 0.0;
  for (std::size_t k = whole; k < Terms.size(); ++k) rest += Terms[k];
  return whole == 0 ? rest : lanes[0] + rest;
}

// ---------------------------------------------------------------------------------------------- sample by sample

TYPED_TEST(TFilt, AConstantPassesUnchanged) {
  for (const int n : {3, 5, 15, 17, 31, 51, 501}) {
    TypeParam filter = DesignedFilter<TypeParam>(1000, 40, n, 5);
    EXPECT_NEAR(filter.Filt(5), 5, 1e-14) << n;
    for (int i = 0; i < 2 * n; ++i) filter.Filt(-0.3);
    EXPECT_NEAR(filter.Filt(-0.3), -0.3, 1e-15) << n;
    EXPECT_EQ(filter.LastOutput(), filter.Filt(-0.3));
  }
}

TYPED_TEST(TFilt, AnImpulseWalksThroughTheCoefficientsFromTheLastToTheFirst) {
  TypeParam filter = DesignedFilter<TypeParam>(1000, 40, 21);
  const std::vector<double> coeff(filter.Coeff().begin(), filter.Coeff().end());
  for (std::size_t i = 0; i < 21; ++i) EXPECT_NEAR(filter.Filt(i == 0 ? 1.0 : 0.0), coeff[20 - i], 1e-16) << i;
  EXPECT_EQ(filter.Filt(0), 0);
}

// Rising coefficients tell the two directions apart, which the symmetric ones of the windows do not.
class TRampFilter : public TRectangleLowPassFilter {
 public:
  void SetEff() override {
    for (std::size_t i = 0; i < FCoeff.size(); ++i) FCoeff[i] = static_cast<double>(i + 1);
  }
};

TEST(TLowPassWindowFilter, TheOldestSampleMeetsTheFirstCoefficient) {
  auto filter = DesignedFilter<TRampFilter>(1, 0.25, 3);  // coefficients 1/6, 2/6, 3/6
  EXPECT_DOUBLE_EQ(filter.Filt(6), 3);
  EXPECT_DOUBLE_EQ(filter.Filt(0), 2);
  EXPECT_DOUBLE_EQ(filter.Filt(0), 1);
  EXPECT_DOUBLE_EQ(filter.Filt(0), 0);
}

TEST(TAverageLowPassFilter, AveragesTheLastSamplesWhateverTheCoefficientsAre) {
  auto filter = DesignedFilter<TAverageLowPassFilter>(1000, 100);
  EXPECT_EQ(filter.Filt(5), 1);
  EXPECT_EQ(filter.Filt(10), 3);
  EXPECT_EQ(filter.Filt(-5), 2);
  EXPECT_EQ(filter.Filt(0), 2);
  EXPECT_EQ(filter.Filt(0), 2);
  EXPECT_EQ(filter.Filt(0), 1);
}

TYPED_TEST(TFilt, TheSumIsInTheFixedOrderToTheBit) {
  std::mt19937_64 random(3);
  for (int n = 3; n <= 101; n += 2) {
    TypeParam filter = DesignedFilter<TypeParam>(1000, 40, n);
    const auto count = static_cast<std::size_t>(n);
    std::vector<double> line(count - 1, 0.0);
    for (const double sample : RandomSamples(random, 250)) {
      line.push_back(sample);
      std::vector<double> terms(line.end() - n, line.end());
      const bool isAverage = std::is_same_v<TypeParam, TAverageLowPassFilter>;
      for (std::size_t k = 0; k < count && !isAverage; ++k) terms[k] *= filter.Coeff()[k];
      const double expected = isAverage ? SumInTheFixedOrder(terms) / n : SumInTheFixedOrder(terms);
      ASSERT_TRUE(IsSameBits(filter.Filt(sample), expected)) << n << " samples, output " << line.size();
    }
  }
}

TYPED_TEST(TFilt, BeforeInitializeThereIsNothingToFilterWith) {
  TypeParam filter = FilterOf<TypeParam>(1000, 100);
  std::vector<double> samples(9);
  EXPECT_THAT(Calling([&] { filter.Filt(1); }), RaisesGeneralError(HasSubstr("call Initialize first")));
  EXPECT_THAT(Calling([&] { filter.Filt(samples, samples); }), RaisesGeneralError(HasSubstr("call Initialize first")));
  ASSERT_EQ(filter.SampleCount(), 5);
  EXPECT_THAT(Calling([&] { filter.Filt(1); }), RaisesGeneralError(HasSubstr("call Initialize first")));
}

TYPED_TEST(TFilt, ASampleThatIsNotANumberIsForgottenAfterNMore) {
  TypeParam filter = DesignedFilter<TypeParam>(1000, 10);
  filter.Filt(std::numeric_limits<double>::quiet_NaN());
  for (int i = 0; i < 50; ++i) ASSERT_TRUE(std::isnan(filter.Filt(1))) << i;
  EXPECT_NEAR(filter.Filt(1), 1, 1e-14);
}

// ---------------------------------------------------------------------------------------------- laws

template <class TFilter>
std::vector<double> Filtered(const std::vector<double>& Samples, int N) {
  TFilter filter = DesignedFilter<TFilter>(1000, 40, N);
  std::vector<double> results;
  for (const double sample : Samples) results.push_back(filter.Filt(sample));
  return results;
}

std::vector<double> AnySamples(std::size_t Count) {
  const auto ints = *rc::gen::container<std::vector<int>>(Count, rc::gen::inRange(-1'000'000, 1'000'001));
  std::vector<double> samples;
  for (const int value : ints) samples.push_back(value * 0x1p-20);
  return samples;
}

TYPED_TEST(TFilt, IsLinear) {
  const bool holds = rc::check("a sum of signals gives the sum of the outputs", [] {
    const int n = 2 * *rc::gen::inRange(1, 40) + 1;
    const auto count = static_cast<std::size_t>(*rc::gen::inRange(1, 120));
    const double a = *rc::gen::inRange(-99, 100) / 16.0;
    const double b = *rc::gen::inRange(-99, 100) / 16.0;
    const std::vector<double> x = AnySamples(count);
    const std::vector<double> y = AnySamples(count);
    std::vector<double> mix(count);
    for (std::size_t i = 0; i < count; ++i) mix[i] = a * x[i] + b * y[i];
    const std::vector<double> fx = Filtered<TypeParam>(x, n);
    const std::vector<double> fy = Filtered<TypeParam>(y, n);
    const std::vector<double> fmix = Filtered<TypeParam>(mix, n);
    for (std::size_t i = 0; i < count; ++i) RC_ASSERT(std::fabs(fmix[i] - (a * fx[i] + b * fy[i])) < 1e-12);
  });
  EXPECT_TRUE(holds);
}

TYPED_TEST(TFilt, APowerOfTwoGoesThroughExactly) {
  const bool holds = rc::check("scaling by a power of two commutes to the bit", [] {
    const int n = 2 * *rc::gen::inRange(1, 40) + 1;
    const int power = *rc::gen::inRange(-40, 41);
    std::vector<double> samples = AnySamples(100);
    const std::vector<double> plain = Filtered<TypeParam>(samples, n);
    for (double& sample : samples) sample = std::ldexp(sample, power);
    const std::vector<double> scaled = Filtered<TypeParam>(samples, n);
    for (std::size_t i = 0; i < samples.size(); ++i) RC_ASSERT(scaled[i] == std::ldexp(plain[i], power));
  });
  EXPECT_TRUE(holds);
}

TYPED_TEST(TFilt, ADelayOfTheSignalDelaysTheOutputs) {
  const bool holds = rc::check("outputs depend on the last N samples only", [] {
    const int n = 2 * *rc::gen::inRange(1, 40) + 1;
    const auto delay = static_cast<std::size_t>(*rc::gen::inRange(0, 100));
    const std::vector<double> samples = AnySamples(90);
    std::vector<double> delayed(delay, 0.0);
    delayed.insert(delayed.end(), samples.begin(), samples.end());
    const std::vector<double> early = Filtered<TypeParam>(samples, n);
    const std::vector<double> late = Filtered<TypeParam>(delayed, n);
    for (std::size_t i = 0; i < early.size(); ++i) RC_ASSERT(late[i + delay] == early[i]);
  });
  EXPECT_TRUE(holds);
}

// ---------------------------------------------------------------------------------------------- samples in a row

// Both filters keep their state from span to span, so that every length starts at another place of the ring.
template <class TFilter>
void ExpectTheSpanFormToAgree(int N, const std::vector<std::size_t>& Lengths) {
  TFilter one = DesignedFilter<TFilter>(1000, 40, N, 0.5);
  TFilter row = DesignedFilter<TFilter>(1000, 40, N, 0.5);
  ASSERT_EQ(row.Coeff().size(), static_cast<std::size_t>(N));
  std::mt19937_64 random(static_cast<std::uint64_t>(N));
  for (const std::size_t length : Lengths) {
    std::vector<double> samples = RandomSamples(random, length);
    std::vector<double> results(length);
    row.Filt(samples, results);
    for (std::size_t i = 0; i < length; ++i) {
      ASSERT_TRUE(IsSameBits(one.Filt(samples[i]), results[i])) << "N " << N << ", output " << i << " of " << length;
    }
    ASSERT_EQ(TFilterState(row), TFilterState(one)) << "N " << N << ", length " << length;
  }
}

TYPED_TEST(TFilt, ASpanGivesTheOutputsOfTheSingleFormToTheBit) {
  std::vector<std::size_t> lengths;
  for (std::size_t length = 1; length <= 200; ++length) lengths.push_back(length);
  for (int n = 3; n <= 501; n += n < 101 ? 2 : 20) ExpectTheSpanFormToAgree<TypeParam>(n, lengths);
  ExpectTheSpanFormToAgree<TypeParam>(501, lengths);
}

TYPED_TEST(TFilt, ALongSpanGivesTheOutputsOfTheSingleFormToTheBit) {
  for (const int n : {3, 5, 51, 1023, 1025, 3001})
    ExpectTheSpanFormToAgree<TypeParam>(n, {5000, 1, 1024, 1025, 3, 2048});
}

TEST(TLowPassWindowFilter, ASpanOfAFilterOfOneSampleIsPassedOn) {
  auto filter = DesignedFilter<THammingLowPassFilter>(1000, 40, 1);
  const std::vector<double> samples = {1, -2, 3.5, 4, 5, 6, 7};
  std::vector<double> results(7);
  filter.Filt(samples, results);
  EXPECT_EQ(results, samples);
}

TEST(TBaseLowPassFilter, AnEvenLengthOfADerivedFilterIsSummedInTheSameOrder) {
  class TEvenFilter : public TAverageLowPassFilter {
   public:
    explicit TEvenFilter(int Count) : FCount(Count) { SetFsample(1); }
    void CalN() override { FN = FCount; }

   private:
    int FCount;
  };
  std::mt19937_64 random(5);
  for (int n = 2; n <= 96; n += 2) {
    TEvenFilter one(n);
    TEvenFilter row(n);
    one.Initialize(0);
    row.Initialize(0);
    const std::vector<double> samples = RandomSamples(random, 150);
    std::vector<double> results(150);
    row.Filt(samples, results);
    for (std::size_t i = 0; i < 150; ++i) ASSERT_TRUE(IsSameBits(one.Filt(samples[i]), results[i])) << n << " " << i;
  }
}

TYPED_TEST(TFilt, ASpanMayBeFilteredInPlace) {
  std::mt19937_64 random(9);
  const std::vector<double> samples = RandomSamples(random, 3000);
  TypeParam one = DesignedFilter<TypeParam>(1000, 10);
  TypeParam row = DesignedFilter<TypeParam>(1000, 10);
  std::vector<double> results = samples;
  row.Filt(results, results);
  for (std::size_t i = 0; i < samples.size(); ++i) ASSERT_TRUE(IsSameBits(one.Filt(samples[i]), results[i])) << i;
}

TYPED_TEST(TFilt, FurtherPlacesForResultsStayAsTheyAre) {
  TypeParam filter = DesignedFilter<TypeParam>(1000, 100, 0, 1);
  const std::vector<double> samples(8, 1.0);
  std::vector<double> results(10, 77.0);
  filter.Filt(samples, results);
  EXPECT_NEAR(results[7], 1, 1e-15);
  EXPECT_EQ(results[8], 77);
  EXPECT_EQ(results[9], 77);
}

TYPED_TEST(TFilt, AnEmptySpanChangesNothing) {
  TypeParam filter = DesignedFilter<TypeParam>(1000, 100, 0, 1);
  filter.Filt(3);
  const TFilterState before(filter);
  filter.Filt(std::span<const double>(), std::span<double>());
  EXPECT_EQ(TFilterState(filter), before);
}

TYPED_TEST(TFilt, ResultsThatAreTooShortOrOverlapAreRefusedAndNothingChanges) {
  TypeParam filter = DesignedFilter<TypeParam>(1000, 100, 0, 1);
  filter.Filt(3);
  const TFilterState before(filter);
  for (const std::size_t count : {std::size_t{2}, std::size_t{40}}) {
    std::vector<double> line(3 * count, 2.0);
    const std::vector<double> lineBefore = line;
    const std::span<double> all(line);
    const std::span<double> samples = all.subspan(count, count);
    EXPECT_THAT(Calling([&] { filter.Filt(samples, all.first(count - 1)); }), RaisesGeneralError(HasSubstr("results")));
    EXPECT_THAT(Calling([&] { filter.Filt(samples, all.subspan(count + 1, count)); }),
                RaisesGeneralError(HasSubstr("overlap")));
    EXPECT_THAT(Calling([&] { filter.Filt(samples, all.subspan(count - 1, count)); }),
                RaisesGeneralError(HasSubstr("overlap")));
    EXPECT_EQ(line, lineBefore);
    EXPECT_EQ(TFilterState(filter), before);
    filter.Filt(samples, all.first(count));  // side by side is no overlap
    filter.Filt(samples, all.last(count));
    filter.Initialize(1);
    filter.Filt(3);
  }
}

// A filter of somebody else's has only the single form.
TEST(TBaseLowPassFilter, ADerivedFilterGetsTheSpanFormFromItsSingleOne) {
  class TDoubler : public TBaseLowPassFilter {
   public:
    using TBaseLowPassFilter::Filt;
    void SetEff() override {}
    double Filt(double value) override { return FLastOut = *(Push(value) + DesignedCount() - 1) * 2; }
  };
  TDoubler filter;
  filter.SetFsample(1);
  filter.Initialize(0);
  const std::vector<double> samples = {1, 2, 3, 4, 5};
  std::vector<double> results(5);
  filter.Filt(samples, results);
  EXPECT_THAT(results, testing::ElementsAre(2, 4, 6, 8, 10));
  EXPECT_THAT(Calling([&] { TDoubler().Filt(samples, results); }),
              RaisesGeneralError(HasSubstr("call Initialize first")));
}

}  // namespace
}  // namespace ZORBase
