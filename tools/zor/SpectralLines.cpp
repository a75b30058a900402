#include <zor/SpectralLines.h>

#include <algorithm>
#include <cmath>
#include <numbers>

namespace ZORBase::Tool {
namespace {

// A side lobe is at most this much above its envelope: several lines add theirs up.
constexpr double kLobeMargin = 1.5;

// Peaks from the strongest to the weakest; of the same height, the lower frequency first.
std::vector<int> Peaks(const TFFT& Spectrum) {
  std::vector<int> peaks;
  for (int i = 1; i + 1 < Spectrum.Count(); ++i) {
    const double amplitude = Spectrum.getAmp(i);
    if (amplitude > Spectrum.getAmp(i - 1) && amplitude >= Spectrum.getAmp(i + 1)) peaks.push_back(i);
  }
  std::stable_sort(peaks.begin(), peaks.end(), [&](int A, int B) { return Spectrum.getAmp(A) > Spectrum.getAmp(B); });
  return peaks;
}

// The height of the side lobes of a line at a distance of so many bins of the padded transform, as a part of the line.
double LobeEnvelope(double Bins, double PaddedLength, double Samples) {
  const double angle = std::numbers::pi * Bins / PaddedLength;
  return 1.0 / (Samples * std::sin(angle));
}

}  // namespace

double AmplitudeScale(const TFFT& Spectrum, std::size_t Samples) {
  return 2.0 * static_cast<double>(Spectrum.Count()) / static_cast<double>(Samples);
}

std::vector<TSpectralLine> StrongestLines(const TFFT& Spectrum, std::size_t Samples, std::size_t Most) {
  const double paddedLength = 2.0 * Spectrum.Count();
  const auto isLobeOf = [&](int Peak, int Line) {
    const double envelope = LobeEnvelope(std::abs(Peak - Line), paddedLength, static_cast<double>(Samples));
    return Spectrum.getAmp(Peak) <= kLobeMargin * envelope * Spectrum.getAmp(Line);
  };
  std::vector<int> chosen;
  for (const int peak : Peaks(Spectrum)) {
    if (chosen.size() == Most) break;
    const bool isLobe = std::any_of(chosen.begin(), chosen.end(), [&](int Line) { return isLobeOf(peak, Line); });
    if (!isLobe) chosen.push_back(peak);
  }
  const double scale = AmplitudeScale(Spectrum, Samples);
  std::vector<TSpectralLine> lines;
  lines.reserve(chosen.size());
  for (const int bin : chosen) {
    lines.push_back({Spectrum.getFrq(bin), scale * Spectrum.getAmp(bin), Spectrum.getPhase(bin)});
  }
  return lines;
}

}  // namespace ZORBase::Tool
