#include <ZORBase/ZORBaseAlg/LowPassFilter.h>
#include <ZORBase/ZORBaseAlg/uFFT.h>
#include <ZORBase/capi/Call.h>

#include <memory>

// C functions stand outside of every namespace. NOLINTBEGIN(google-build-using-namespace)
using namespace ZORBase;
using namespace ZORBase::capi;
// NOLINTEND(google-build-using-namespace)

struct zorbase_spectrum {
  TFFT Value;
};

struct zorbase_filter {
  std::unique_ptr<TBaseLowPassFilter> Value;
};

namespace {

const TFFT& SpectrumOf(const zorbase_spectrum* Spectrum) { return Given(Spectrum, "spectrum").Value; }

TBaseLowPassFilter& FilterOf(zorbase_filter* Filter) { return *Given(Filter, "filter").Value; }
const TBaseLowPassFilter& FilterOf(const zorbase_filter* Filter) { return *Given(Filter, "filter").Value; }

template <class TWindowFilter>
std::unique_ptr<TBaseLowPassFilter> NewWindowFilter(int Order) {
  auto filter = std::make_unique<TWindowFilter>();
  filter->SetFilterOrder(Order);
  return filter;
}

std::unique_ptr<TBaseLowPassFilter> NewFilter(const zorbase_filter_settings& Settings) {
  switch (Settings.kind) {
    case ZORBASE_HAMMING: return NewWindowFilter<THammingLowPassFilter>(Settings.order);
    case ZORBASE_BLACKMAN: return NewWindowFilter<TBlackmanLowPassFilter>(Settings.order);
    case ZORBASE_RECTANGLE: return NewWindowFilter<TRectangleLowPassFilter>(Settings.order);
    case ZORBASE_AVERAGE: return std::make_unique<TAverageLowPassFilter>();
    default: break;
  }
  RefuseArgument("settings", "has the kind " + std::to_string(Settings.kind) + ", which there is not");
}

}  // namespace

// ---------------------------------------------------------------------------------------------- spectra

zorbase_status zorbase_spectrum_create(zorbase_spectrum** spectrum) noexcept {
  return Call(__func__, [&] { CreateHandle(spectrum, "spectrum"); });
}

void zorbase_spectrum_destroy(zorbase_spectrum* spectrum) noexcept { delete spectrum; }

zorbase_status zorbase_spectrum_transform(zorbase_spectrum* spectrum, const double* samples, size_t count,
                                          double time_step) noexcept {
  return Call(__func__, [&] {
    TFFT& place = Given(spectrum, "spectrum").Value;
    place.CalFFT(Items(samples, count, "samples"), static_cast<int>(count), time_step);
  });
}

zorbase_status zorbase_spectrum_amplitudes(const zorbase_spectrum* spectrum, double* amplitudes, size_t capacity,
                                           size_t* count) noexcept {
  return Call(__func__,
              [&] { GiveItems<double>(SpectrumOf(spectrum).Amplitudes(), amplitudes, capacity, count, "amplitudes"); });
}

zorbase_status zorbase_spectrum_phases(const zorbase_spectrum* spectrum, double* phases, size_t capacity,
                                       size_t* count) noexcept {
  return Call(__func__, [&] { GiveItems<double>(SpectrumOf(spectrum).Phases(), phases, capacity, count, "phases"); });
}

zorbase_status zorbase_spectrum_frequencies(const zorbase_spectrum* spectrum, double* frequencies, size_t capacity,
                                            size_t* count) noexcept {
  return Call(__func__, [&] { GiveItems(SpectrumOf(spectrum).Frq(), frequencies, capacity, count, "frequencies"); });
}

// ---------------------------------------------------------------------------------------------- low-pass filters

zorbase_status zorbase_filter_create(const zorbase_filter_settings* settings, zorbase_filter** filter) noexcept {
  return Call(__func__, [&] {
    Given(filter, "filter") = nullptr;
    const zorbase_filter_settings taken = TakeGrowing(settings, "settings");
    std::unique_ptr<TBaseLowPassFilter> made = NewFilter(taken);
    made->SetFsample(taken.sample_frequency);
    made->SetFcenter(taken.cutoff_frequency);
    made->Initialize(taken.initial_value);
    CreateHandle(filter, "filter", std::move(made));
  });
}

void zorbase_filter_destroy(zorbase_filter* filter) noexcept { delete filter; }

zorbase_status zorbase_filter_step(zorbase_filter* filter, double sample, double* output) noexcept {
  return Call(__func__, [&] {
    double& place = Given(output, "output");
    place = FilterOf(filter).Filt(sample);
  });
}

zorbase_status zorbase_filter_batch(zorbase_filter* filter, const double* samples, size_t count,
                                    double* outputs) noexcept {
  return Call(__func__,
              [&] { FilterOf(filter).Filt(Items(samples, count, "samples"), Items(outputs, count, "outputs")); });
}

zorbase_status zorbase_filter_timed(zorbase_filter* filter, double sample, double delta_time, double* outputs,
                                    size_t capacity, size_t* count) noexcept {
  return Call(__func__, [&] {
    size_t& place = Given(count, "count");
    const int given = FilterOf(filter).RandomTimeFilt(sample, delta_time, Items(outputs, capacity, "outputs"));
    place = static_cast<size_t>(given);
  });
}

zorbase_status zorbase_filter_clear(zorbase_filter* filter, double initial_value) noexcept {
  return Call(__func__, [&] { FilterOf(filter).Clear(initial_value); });
}

zorbase_status zorbase_filter_weights(const zorbase_filter* filter, double* weights, size_t capacity,
                                      size_t* count) noexcept {
  return Call(__func__, [&] { GiveItems(FilterOf(filter).Coeff(), weights, capacity, count, "weights"); });
}

zorbase_status zorbase_filter_response(const zorbase_filter* filter, double frequency, double* magnitude) noexcept {
  return Call(__func__, [&] {
    double& place = Given(magnitude, "magnitude");
    place = FilterOf(filter).CalcAttenByF(frequency);
  });
}

zorbase_status zorbase_filter_frequency_of(const zorbase_filter* filter, double magnitude, double* frequency) noexcept {
  return Call(__func__, [&] {
    double& place = Given(frequency, "frequency");
    place = FilterOf(filter).CalcRouphFByAtten(magnitude);
  });
}
