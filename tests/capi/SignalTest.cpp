#include "capi/CapiTestSupport.h"

#include <limits>
#include <memory>
#include <span>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

std::vector<double> Signal(int Count) {
  std::vector<double> samples;
  for (int i = 0; i < Count; ++i) samples.push_back(1.5 + std::sin(0.3 * i) + 0.5 * std::cos(1.1 * i));
  return samples;
}

template <class TCall, class TObject>
std::vector<double> AllOf(TCall&& Call, TObject* Object) {
  std::size_t count = 0;
  EXPECT_TRUE(Good(Call(Object, nullptr, 0, &count)));
  std::vector<double> numbers(count);
  EXPECT_TRUE(Good(Call(Object, numbers.data(), count, &count)));
  return numbers;
}

// -------------------------------------------------------------------------------------- spectra

TEST(ZorbaseSpectrum, IsThatOfTheClass) {
  const std::vector<double> samples = Signal(100);
  TFFT inside;
  inside.CalFFT(samples, 100, 0.01);
  const TSpectrumHandle spectrum;
  ASSERT_TRUE(Good(zorbase_spectrum_transform(spectrum, samples.data(), samples.size(), 0.01)));
  EXPECT_EQ(Bits(AllOf(zorbase_spectrum_amplitudes, spectrum.Get())), Bits(inside.Amplitudes()));
  EXPECT_EQ(Bits(AllOf(zorbase_spectrum_phases, spectrum.Get())), Bits(inside.Phases()));
  EXPECT_EQ(Bits(AllOf(zorbase_spectrum_frequencies, spectrum.Get())),
            Bits(std::vector(inside.Frq().begin(), inside.Frq().end())));
}

TEST(ZorbaseSpectrum, HasNoBinsBeforeATransformAndKeepsThemWhenOneFails) {
  const TSpectrumHandle spectrum;
  EXPECT_TRUE(AllOf(zorbase_spectrum_amplitudes, spectrum.Get()).empty());
  const std::vector<double> samples = Signal(8);
  ASSERT_TRUE(Good(zorbase_spectrum_transform(spectrum, samples.data(), 8, 1)));
  EXPECT_TRUE(Fails(zorbase_spectrum_transform(spectrum, nullptr, 0, 1), ZORBASE_ERROR, HasSubstr("0 of 0 samples")));
  EXPECT_TRUE(Fails(zorbase_spectrum_transform(spectrum, samples.data(), 8, 0), ZORBASE_ERROR, HasSubstr("time step")));
  EXPECT_EQ(AllOf(zorbase_spectrum_amplitudes, spectrum.Get()).size(), 4U);
}

// -------------------------------------------------------------------------------------- filters

zorbase_filter_settings Settings(int32_t Kind, int32_t Order) {
  zorbase_filter_settings settings = {};
  settings.size = sizeof settings;
  settings.kind = Kind;
  settings.order = Order;
  settings.sample_frequency = 148;
  settings.cutoff_frequency = 15;
  settings.initial_value = 0.5;
  return settings;
}

template <class TFilter>
std::unique_ptr<TBaseLowPassFilter> Designed(int Order) {
  auto filter = std::make_unique<TFilter>();
  if constexpr (std::is_base_of_v<TLowPassWindowFilter, TFilter>) filter->SetFilterOrder(Order);
  filter->SetFsample(148);
  filter->SetFcenter(15);
  filter->Initialize(0.5);
  return filter;
}

std::unique_ptr<TBaseLowPassFilter> Inside(int32_t Kind, int Order) {
  switch (Kind) {
    case ZORBASE_HAMMING: return Designed<THammingLowPassFilter>(Order);
    case ZORBASE_BLACKMAN: return Designed<TBlackmanLowPassFilter>(Order);
    case ZORBASE_RECTANGLE: return Designed<TRectangleLowPassFilter>(Order);
    default: return Designed<TAverageLowPassFilter>(Order);
  }
}

struct TDestroyFilter {
  void operator()(zorbase_filter* Filter) const { zorbase_filter_destroy(Filter); }
};
using TFilterHandle = std::unique_ptr<zorbase_filter, TDestroyFilter>;

TFilterHandle NewFilter(const zorbase_filter_settings& Settings) {
  zorbase_filter* filter = nullptr;
  EXPECT_TRUE(Good(zorbase_filter_create(&Settings, &filter)));
  return TFilterHandle(filter);
}

TEST(ZorbaseFilter, OfEveryKindFiltersAsItsClassSampleBySampleAndInRows) {
  const std::vector<double> samples = Signal(60);
  for (const int32_t kind : {ZORBASE_HAMMING, ZORBASE_BLACKMAN, ZORBASE_RECTANGLE, ZORBASE_AVERAGE}) {
    for (const int32_t order : {0, 8, 21}) {
      const TFilterHandle filter = NewFilter(Settings(kind, order));
      const auto inside = Inside(kind, order);
      EXPECT_EQ(Bits(AllOf(zorbase_filter_weights, filter.get())),
                Bits(std::vector(inside->Coeff().begin(), inside->Coeff().end())));
      double output = 0;
      for (const double sample : samples) {
        ASSERT_TRUE(Good(zorbase_filter_step(filter.get(), sample, &output)));
        ASSERT_EQ(Bits(output), Bits(inside->Filt(sample)));
      }
      std::vector<double> row = samples;
      std::vector<double> expected(samples.size());
      inside->Filt(samples, expected);
      ASSERT_TRUE(Good(zorbase_filter_batch(filter.get(), row.data(), row.size(), row.data())));
      EXPECT_EQ(Bits(row), Bits(expected));
    }
  }
}

TEST(ZorbaseFilter, TakesTimedSamplesAsItsClass) {
  const TFilterHandle filter = NewFilter(Settings(ZORBASE_HAMMING, 0));
  const auto inside = Inside(ZORBASE_HAMMING, 0);
  std::vector<double> outputs(16);
  std::vector<double> expected(16);
  std::size_t count = 0;
  for (const double time : {0.001, 0.02, 0.0, 0.05}) {
    ASSERT_TRUE(Good(zorbase_filter_timed(filter.get(), 3 * time, time, outputs.data(), outputs.size(), &count)));
    EXPECT_EQ(count, static_cast<std::size_t>(inside->RandomTimeFilt(3 * time, time, std::span(expected))));
    EXPECT_EQ(Bits(outputs), Bits(expected));
  }
  EXPECT_EQ(zorbase_filter_timed(filter.get(), 1, -1, outputs.data(), outputs.size(), &count), ZORBASE_ERROR);
  EXPECT_EQ(zorbase_filter_timed(filter.get(), 1, 1, outputs.data(), outputs.size(), &count), ZORBASE_ERROR);
  EXPECT_TRUE(Fails(zorbase_filter_timed(filter.get(), 1, 1, nullptr, 2, &count), ZORBASE_BAD_ARGUMENT,
                    HasSubstr("outputs is null")));
  EXPECT_TRUE(Fails(zorbase_filter_timed(filter.get(), 1, 1, outputs.data(), 16, nullptr), ZORBASE_BAD_ARGUMENT,
                    HasSubstr("count is null")));
}

TEST(ZorbaseFilter, TellsItsResponseAndStartsAnewAsItsClass) {
  const TFilterHandle filter = NewFilter(Settings(ZORBASE_BLACKMAN, 31));
  const auto inside = Inside(ZORBASE_BLACKMAN, 31);
  double number = 0;
  ASSERT_TRUE(Good(zorbase_filter_response(filter.get(), 12.5, &number)));
  EXPECT_EQ(Bits(number), Bits(inside->CalcAttenByF(12.5)));
  ASSERT_TRUE(Good(zorbase_filter_frequency_of(filter.get(), 0.7, &number)));
  EXPECT_EQ(Bits(number), Bits(inside->CalcRouphFByAtten(0.7)));
  ASSERT_TRUE(Good(zorbase_filter_clear(filter.get(), -4)));
  inside->Clear(-4);
  ASSERT_TRUE(Good(zorbase_filter_step(filter.get(), 2, &number)));
  EXPECT_EQ(Bits(number), Bits(inside->Filt(2)));

  EXPECT_TRUE(Fails(zorbase_filter_step(filter.get(), 2, nullptr), ZORBASE_BAD_ARGUMENT, HasSubstr("output is null")));
  EXPECT_TRUE(Fails(zorbase_filter_batch(filter.get(), nullptr, 1, &number), ZORBASE_BAD_ARGUMENT,
                    HasSubstr("samples is null")));
  EXPECT_TRUE(Fails(zorbase_filter_batch(filter.get(), &number, 1, nullptr), ZORBASE_BAD_ARGUMENT,
                    HasSubstr("outputs is null")));
  EXPECT_TRUE(
      Fails(zorbase_filter_response(filter.get(), 2, nullptr), ZORBASE_BAD_ARGUMENT, HasSubstr("magnitude is null")));
  EXPECT_TRUE(Fails(zorbase_filter_frequency_of(filter.get(), 2, nullptr), ZORBASE_BAD_ARGUMENT,
                    HasSubstr("frequency is null")));
}

TEST(ZorbaseFilter, ThatOverlapsItsResultsOtherwiseIsTheErrorOfItsClassAndNothingIsChanged) {
  const TFilterHandle filter = NewFilter(Settings(ZORBASE_HAMMING, 5));
  std::vector<double> samples = Signal(10);
  const auto before = Bits(samples);
  EXPECT_EQ(zorbase_filter_batch(filter.get(), samples.data(), 9, samples.data() + 1), ZORBASE_ERROR);
  EXPECT_EQ(Bits(samples), before);
}

TEST(ZorbaseFilter, ThatCannotBeDesignedIsNotMade) {
  const auto statusOf = [](const zorbase_filter_settings& Bad) {
    const TFilterHandle other = NewFilter(Settings(ZORBASE_HAMMING, 0));
    zorbase_filter* filter = other.get();
    const zorbase_status status = zorbase_filter_create(&Bad, &filter);
    EXPECT_EQ(filter, nullptr);
    return status;
  };
  EXPECT_TRUE(Fails(statusOf(Settings(4, 0)), ZORBASE_BAD_ARGUMENT,
                    "zorbase_filter_create: settings has the kind 4, which there is not"));
  EXPECT_EQ(statusOf(Settings(-1, 0)), ZORBASE_BAD_ARGUMENT);
  zorbase_filter_settings settings = Settings(ZORBASE_HAMMING, 0);
  settings.sample_frequency = 0;
  EXPECT_EQ(statusOf(settings), ZORBASE_ERROR);
  settings.sample_frequency = std::numeric_limits<double>::infinity();
  EXPECT_EQ(statusOf(settings), ZORBASE_ERROR);
  EXPECT_EQ(statusOf(Settings(ZORBASE_HAMMING, std::numeric_limits<int32_t>::max())), ZORBASE_ERROR);
}

TEST(ZorbaseFilter, SettingsOfALaterVersionAreTakenWhenTheirNewFieldsAreZero) {
  struct {
    zorbase_filter_settings Known;
    double New;
  } later = {Settings(ZORBASE_HAMMING, 0), 0};
  later.Known.size = sizeof later;
  EXPECT_EQ(AllOf(zorbase_filter_weights, NewFilter(later.Known).get()),
            AllOf(zorbase_filter_weights, NewFilter(Settings(ZORBASE_HAMMING, 0)).get()));

  later.New = 1;
  zorbase_filter* filter = nullptr;
  EXPECT_TRUE(Fails(zorbase_filter_create(&later.Known, &filter), ZORBASE_BAD_ARGUMENT,
                    "zorbase_filter_create: settings has fields set that this version of the library does not know"));
  for (const std::size_t size : {std::size_t{0}, sizeof later.Known - 8, std::size_t{4097}}) {
    later.Known.size = size;
    EXPECT_TRUE(Fails(zorbase_filter_create(&later.Known, &filter), ZORBASE_BAD_ARGUMENT,
                      HasSubstr("settings has the size " + std::to_string(size))));
  }
}

}  // namespace
}  // namespace ZORBase::Test
