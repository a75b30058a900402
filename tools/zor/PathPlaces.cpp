#include <zor/PathPlaces.h>

#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>
#include <fmt/format.h>
#include <zor/ExitStatus.h>
#include <zor/RowInput.h>

#include <algorithm>
#include <cmath>
#include <utility>

namespace ZORBase::Tool {
namespace {

// Places closer than this are the same.
constexpr double kSamePlace = TNurbs6D::kSmallestChord;

}  // namespace

TPathPlaces::TPathPlaces(TSpacing Spacing, double Length, std::string_view Nouns)
    : FSpacing(std::move(Spacing)), FLength(Length) {
  if (FSpacing.Step) {
    CountSteps(Nouns);
  } else if (FSpacing.Count) {
    FBeforeEnd = *FSpacing.Count - 1;
  } else {
    CheckLengths();
  }
}

double TPathPlaces::operator[](std::int64_t Index) const {
  const auto index = static_cast<double>(Index);
  if (Index == FBeforeEnd) return FLength;
  if (FSpacing.Step) return index * *FSpacing.Step;
  if (FSpacing.Count) return FLength * (index / static_cast<double>(FBeforeEnd));
  return FSpacing.At[static_cast<std::size_t>(Index)];
}

// The steps before the end. One that meets it but for rounding is the end: two places there would be the same.
void TPathPlaces::CountSteps(std::string_view Nouns) {
  const double step = *FSpacing.Step;
  if (!(FLength / step < static_cast<double>(kMaxPoses))) {
    throw TUsageError(
        fmt::format("--step: found {}, expected at least {:.3g}: the path is {:.6f} long, and at most {} {} are given",
                    step, FLength / static_cast<double>(kMaxPoses - 1), FLength, kMaxPoses, Nouns));
  }
  const double tolerance = std::min(kSamePlace, step / 2.0);
  FBeforeEnd = static_cast<std::int64_t>(std::ceil((FLength - tolerance) / step));
}

void TPathPlaces::CheckLengths() {
  const double largest = *std::max_element(FSpacing.At.begin(), FSpacing.At.end());
  if (largest > FLength + kSamePlace) {
    throw TUsageError(
        fmt::format("--at: found {}, expected lengths from 0 to {:.6f}, where the path ends", largest, FLength));
  }
  FBeforeEnd = static_cast<std::int64_t>(FSpacing.At.size());
  if (FSpacing.At.back() >= FLength - kSamePlace) --FBeforeEnd;
}

}  // namespace ZORBase::Tool
