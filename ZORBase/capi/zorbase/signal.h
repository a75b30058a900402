/* signal.h: spectra and low-pass filters of sampled signals. Frequencies are in the inverse of the unit of time. */
#pragma once

#include <ZORBase/capi/zorbase/base.h>

/* NOLINTBEGIN(modernize-*) */
ZORBASE_BEGIN_C

/* ---------------------------------------------------------------------------------------------- spectra */

/** The single-sided spectrum of a signal. It has no bins before the first transform. */
typedef struct zorbase_spectrum zorbase_spectrum;

ZORBASE_API zorbase_status zorbase_spectrum_create(zorbase_spectrum** spectrum) ZORBASE_NOEXCEPT;
ZORBASE_API void zorbase_spectrum_destroy(zorbase_spectrum* spectrum) ZORBASE_NOEXCEPT;

/** Transforms a signal, padded with zeros to N samples, the next power of two, into N / 2 bins.
 *  \param time_step  between two samples.
 *  ZORBASE_ERROR for no samples, for more than 2^30, and for a time step that is 0 or not finite; the spectrum is then
 *  as it was. */
ZORBASE_API zorbase_status zorbase_spectrum_transform(zorbase_spectrum* spectrum, const double* samples, size_t count,
                                                      double time_step) ZORBASE_NOEXCEPT;

/** Give a number for each bin, or only the number of bins; see "Room" in zorbase.h. A cosine of amplitude a at the
 *  frequency of a bin reads a there, and bin 0 reads twice the mean. Phases are in degrees, 0 to 360. */
ZORBASE_API zorbase_status zorbase_spectrum_amplitudes(const zorbase_spectrum* spectrum, double* amplitudes,
                                                       size_t capacity, size_t* count) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_spectrum_phases(const zorbase_spectrum* spectrum, double* phases, size_t capacity,
                                                   size_t* count) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_spectrum_frequencies(const zorbase_spectrum* spectrum, double* frequencies,
                                                        size_t capacity, size_t* count) ZORBASE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------- low-pass filters */

/** A low-pass filter for a stream of samples: each output is a weighted sum of the last samples. */
typedef struct zorbase_filter zorbase_filter;

enum {
  ZORBASE_HAMMING = 0,
  ZORBASE_BLACKMAN = 1,
  ZORBASE_RECTANGLE = 2,
  ZORBASE_AVERAGE = 3 /**< the moving average, whose length the frequencies alone decide */
};

/** What a filter is designed from. */
typedef struct zorbase_filter_settings {
  size_t size;             /**< sizeof(zorbase_filter_settings) */
  int32_t kind;            /**< ZORBASE_HAMMING to ZORBASE_AVERAGE */
  int32_t order;           /**< samples that an output sums up, made odd; 0 leaves it to the frequencies */
  double sample_frequency; /**< above 0 */
  double cutoff_frequency; /**< above 0 */
  double initial_value;    /**< of the samples before the first one */
} zorbase_filter_settings;

/** Makes a filter. ZORBASE_BAD_ARGUMENT for another kind, ZORBASE_ERROR for frequencies or an order that cannot be
 *  designed. */
ZORBASE_API zorbase_status zorbase_filter_create(const zorbase_filter_settings* settings,
                                                 zorbase_filter** filter) ZORBASE_NOEXCEPT;
ZORBASE_API void zorbase_filter_destroy(zorbase_filter* filter) ZORBASE_NOEXCEPT;

/** Gives the output for the next sample. */
ZORBASE_API zorbase_status zorbase_filter_step(zorbase_filter* filter, double sample, double* output) ZORBASE_NOEXCEPT;

/** Gives the outputs for the next samples, the same ones to the bit. The outputs may be the samples themselves, but
 *  must not overlap them in another way: ZORBASE_ERROR, with nothing changed. */
ZORBASE_API zorbase_status zorbase_filter_batch(zorbase_filter* filter, const double* samples, size_t count,
                                                double* outputs) ZORBASE_NOEXCEPT;

/** Takes a sample that comes delta_time after the one before, and gives the outputs that are due at the sample
 *  frequency; see "Room" in zorbase.h. Here there is no asking for the count, for that would take the sample: outputs
 *  that do not fit, more than 2^20 of them, and a delta_time that is negative or not finite are ZORBASE_ERROR, with
 *  nothing changed. */
ZORBASE_API zorbase_status zorbase_filter_timed(zorbase_filter* filter, double sample, double delta_time,
                                                double* outputs, size_t capacity, size_t* count) ZORBASE_NOEXCEPT;

/** Starts anew with samples of this value, with the same design. */
ZORBASE_API zorbase_status zorbase_filter_clear(zorbase_filter* filter, double initial_value) ZORBASE_NOEXCEPT;

/** Gives the weights, the oldest sample's first, or only their count; see "Room" in zorbase.h. */
ZORBASE_API zorbase_status zorbase_filter_weights(const zorbase_filter* filter, double* weights, size_t capacity,
                                                  size_t* count) ZORBASE_NOEXCEPT;

/** Gives what a sine of this frequency is multiplied by. */
ZORBASE_API zorbase_status zorbase_filter_response(const zorbase_filter* filter, double frequency,
                                                   double* magnitude) ZORBASE_NOEXCEPT;

/** Gives the frequency at which the response falls to a magnitude, from the filter's table. */
ZORBASE_API zorbase_status zorbase_filter_frequency_of(const zorbase_filter* filter, double magnitude,
                                                       double* frequency) ZORBASE_NOEXCEPT;

ZORBASE_END_C
/* NOLINTEND(modernize-*) */
