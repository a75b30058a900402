// FirstTransform: the first spectrum of a process, when no factors and no plan are there yet.
#pragma once

#include <string>

namespace ZORBase::Bench {

/// The argument of this program behind which stand who transforms ("library" or "FFTW estimate") and how many samples.
inline constexpr const char* kFirstTransform = "--first-transform";

/// Transforms noise once, from the samples to their spectrum, and prints the seconds of processor time. \return the status to
/// exit with.
int RunFirstTransform(const std::string& Who, int Size);

}  // namespace ZORBase::Bench
