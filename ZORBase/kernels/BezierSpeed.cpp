#include <ZORBase/kernels/BezierSpeed.h>

namespace ZORBase {
namespace {

// As many parameters as have their sums in registers at once.
constexpr std::size_t kGroup = 8;

ZORBASE_INLINE void GroupOfSpeeds(const TBezierTerms& Terms, const double* Params, double* Speeds) {
  double sums[kGroup] = {};
  for (std::size_t i = 0; i < Terms.Count; ++i) {
    ZORBASE_LANES
    for (std::size_t k = 0; k < kGroup; ++k) sums[k] += Terms.SquareAt(Params[k], i);
  }
  for (std::size_t k = 0; k < kGroup; ++k) Speeds[k] = std::sqrt(sums[k]);
}

ZORBASE_TARGET_CLONES void BezierSpeedsClones(const TBezierTerms& Terms, const TSpeedLanes& Params,
                                              TSpeedLanes& Speeds) {
  for (std::size_t i = 0; i < kSpeedLanes; i += kGroup) GroupOfSpeeds(Terms, Params.data() + i, Speeds.data() + i);
}

}  // namespace

void BezierSpeeds(const TBezierTerms& Terms, const TSpeedLanes& Params, TSpeedLanes& Speeds) {
  BezierSpeedsClones(Terms, Params, Speeds);
}

}  // namespace ZORBase
