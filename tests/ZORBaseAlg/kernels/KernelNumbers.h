// KernelNumbers: what the kernels are given in tests, and what the curve's should make of it.
//   RandomNumbers, kNumberKinds            numbers of every kind
//   ExpectSameNumbers                      bit for bit; a NaN is as good as another one
//   RandomKnots, ParamsInside              eight knots, and parameters in the middle interval
//   PlainSamples                           poses blended from basis values, and their distances
#pragma once

#include <ZORGeometry/NurbsGeometry/PlainCurve.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <span>
#include <vector>

#include "KernelVariants.h"
#include "support/Numbers.h"
#include "support/TestSupport.h"

namespace ZORBase::Test {

enum class TNumberKind { Even, Graded, Anything };
inline constexpr std::array kNumberKinds = {TNumberKind::Even, TNumberKind::Graded, TNumberKind::Anything};

/// A number in [Low, High), the same on every machine.
inline double EvenNumber(std::mt19937_64& Random, double Low, double High) {
  return Low + (High - Low) * (static_cast<double>(Random() >> 11U) * 0x1p-53);
}

inline double RandomNumber(std::mt19937_64& Random, TNumberKind Kind) {
  constexpr std::array special = {0.0,   -0.0,  5e-324,    -5e-324,    1e-310, 1e-200, 1e200, 1e10,
                                  1e308, 1e308, kInfinity, -kInfinity, kNaN,   3.0,    -0.125};
  if (Kind == TNumberKind::Anything && Random() % 16 == 0) return special[Random() % special.size()];
  if (Kind == TNumberKind::Even) return EvenNumber(Random, -10, 10);
  return EvenNumber(Random, -1, 1) * std::pow(10.0, EvenNumber(Random, -12, 12));
}

inline TVector RandomNumbers(std::mt19937_64& Random, TNumberKind Kind, std::size_t Count) {
  TVector numbers(Count);
  for (double& number : numbers) number = RandomNumber(Random, Kind);
  return numbers;
}

inline void ExpectSameNumbers(const TVector& Found, const TVector& Expected) {
  ASSERT_EQ(Found.size(), Expected.size());
  for (std::size_t i = 0; i < Found.size(); ++i) {
    const bool isSame = std::bit_cast<std::uint64_t>(Found[i]) == std::bit_cast<std::uint64_t>(Expected[i]) ||
                        (std::isnan(Found[i]) && std::isnan(Expected[i]));
    ASSERT_TRUE(isSame) << "number " << i << " is " << Found[i] << ", not " << Expected[i];
  }
}

inline TDoubleList RandomKnots(std::mt19937_64& Random) {
  TDoubleList knots;
  double knot = EvenNumber(Random, 0, 0.1);
  for (int i = 0; i < 8; ++i) {
    knots.Add(knot);
    knot += std::pow(10.0, EvenNumber(Random, -5, -1));
  }
  return knots;
}

inline TVector ParamsInside(std::mt19937_64& Random, const TPlainBasis& Basis, std::size_t Count) {
  TVector params(Count);
  for (double& u : params) u = EvenNumber(Random, Basis.U[3], Basis.U[4]);
  return params;
}

inline TPlainPose PlainPose(TNumbers Numbers) {
  TPlainPose pose{};
  for (std::size_t i = 0; i < pose.size(); ++i) pose[i] = Numbers[i];
  return pose;
}

inline TPlainPose PlainBlend(TNumbers Points4, TNumbers Weights4) {
  TPlainPose sum{};
  for (std::size_t r = 0; r < 4; ++r) sum = PlainSum(sum, PlainProduct(Weights4[r], PlainPose(Points4.subspan(6 * r))));
  return sum;
}

inline TVector PlainSamples(TNumbers Points4, TNumbers Basis) {
  TVector numbers;
  TPlainPose before = PlainPose(Points4);
  for (std::size_t i = 0; i < Basis.size(); i += 4) {
    const TPlainPose pose = PlainBlend(Points4, Basis.subspan(i));
    numbers.insert(numbers.end(), pose.begin(), pose.end());
    numbers.push_back(PlainDistance(pose, before));
    before = pose;
  }
  return numbers;
}

}  // namespace ZORBase::Test
