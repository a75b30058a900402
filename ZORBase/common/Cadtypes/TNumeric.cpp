#include <ZORBase/common/Cadtypes/TNumeric.h>

#include <ZORBase/common/BaseServices/Extended.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <array>
#include <atomic>
#include <cmath>
#include <mutex>
#include <numbers>
#include <string>
#include <vector>

namespace ZORBase {
namespace {

using TGaussRule = std::vector<TGaussNode>;

// The Legendre polynomial of degree N and its derivative at X, by Bonnet's recursion.
struct TLegendre {
  Extended Value;
  Extended Slope;
};

TLegendre Legendre(int N, Extended X) {
  Extended before = 1.0L;
  Extended value = X;
  for (int k = 2; k <= N; ++k) {
    const Extended next = ((2 * k - 1) * X * value - (k - 1) * before) / k;
    before = value;
    value = next;
  }
  return {value, N * (before - X * value) / ((1.0L - X) * (1.0L + X))};
}

// The node Index of those below the middle, by Newton's iteration from Tricomi's estimate of the root.
TGaussNode NegativeNode(int N, int Index) {
  constexpr int kRounds = 6;  // more than the largest rule needs
  Extended place = -std::cos(std::numbers::pi_v<Extended> * (Index + 0.75L) / (N + 0.5L));
  for (int round = 0; round < kRounds; ++round) {
    const TLegendre at = Legendre(N, place);
    place -= at.Value / at.Slope;
  }
  // Next to 1 even extended precision leaves few digits of 1 - place^2. The rest of the way to the root is known better
  // than place can hold it: the places are rounded once with it, and (1 - x^2) P'(x)^2, whose derivative at a root is
  // 2 x P'(x)^2, is carried over to the root.
  const TLegendre at = Legendre(N, place);
  const Extended rest = -at.Value / at.Slope;
  const Extended weight = 2.0L / (((1.0L - place) * (1.0L + place) + 2.0L * place * rest) * at.Slope * at.Slope);
  const auto node = static_cast<double>(place);
  return {node + static_cast<double>((place - node) + rest), static_cast<double>(weight)};
}

TGaussRule ComputeRule(int N) {
  TGaussRule rule(static_cast<std::size_t>(N));
  for (int i = 0; i < (N + 1) / 2; ++i) {
    const TGaussNode node = NegativeNode(N, i);
    rule[static_cast<std::size_t>(i)] = node;
    rule[static_cast<std::size_t>(N - 1 - i)] = {-node.Place, node.Weight};
  }
  if (N % 2 == 1) rule[static_cast<std::size_t>(N / 2)].Place = 0.0;
  return rule;
}

}  // namespace

std::span<const TGaussNode> TNumeric::GaussLegendreRule(int N) {
  if (N < 1 || N > kGaussPointLimit) {
    RaiseGeneralError("Gauss quadrature with " + std::to_string(N) + " points; 1 to " +
                      std::to_string(kGaussPointLimit) + " are possible");
  }
  struct TKeptRule {
    std::once_flag Once;
    std::atomic<bool> IsThere = false;  // tells faster than Once
    TGaussRule Rule;
  };
  static constinit std::array<TKeptRule, kGaussPointLimit + 1> keptRules;
  TKeptRule& kept = keptRules[static_cast<std::size_t>(N)];
  if (!kept.IsThere.load(std::memory_order_acquire)) {
    std::call_once(kept.Once, [&] { kept.Rule = ComputeRule(N); });
    kept.IsThere.store(true, std::memory_order_release);
  }
  return kept.Rule;
}

}  // namespace ZORBase
