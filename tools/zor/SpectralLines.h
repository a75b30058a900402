// SpectralLines: the lines of a spectrum, as against the side lobes that a finite record gives each of them.
#pragma once

#include <ZORBase/ZORBaseAlg/uFFT/TFFT.h>

#include <cstddef>
#include <vector>

namespace ZORBase::Tool {

struct TSpectralLine {
  double Frequency = 0.0;
  double Amplitude = 0.0;  ///< of the cosine over the whole record
  double Phase = 0.0;      ///< in degrees, at the first sample
};

/// \return what an amplitude of the padded transform is to be multiplied with to be that of a cosine over Samples samples.
double AmplitudeScale(const TFFT& Spectrum, std::size_t Samples);

/// \return at most Most peaks of the spectrum of Samples samples, the strongest first. A peak counts when it stands above the
///         side lobes of every stronger line: those of a record of M samples fall off as 1 / (M sin(pi d / M)) at a distance of d
///         steps of 1 / (M Dt).
std::vector<TSpectralLine> StrongestLines(const TFFT& Spectrum, std::size_t Samples, std::size_t Most);

}  // namespace ZORBase::Tool
