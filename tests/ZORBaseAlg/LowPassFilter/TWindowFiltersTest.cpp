#include <cmath>
#include <memory>
#include <numbers>
#include <string_view>

#include "FilterReferences.h"
#include "FilterTestSupport.h"

namespace ZORBase {
namespace {

using Test::DesignedFilter;
using Test::FilterOf;
using Test::kReferenceFilters;
using Test::TReferenceFilter;

std::unique_ptr<TBaseLowPassFilter> Designed(const TReferenceFilter& Reference) {
  const auto make = [&]<class TFilter>() {
    return std::make_unique<TFilter>(DesignedFilter<TFilter>(Reference.fs, Reference.fc, Reference.Order));
  };
  const std::string_view window = Reference.Window;
  if (window == "Hamming") return make.operator()<THammingLowPassFilter>();
  if (window == "Rectangle") return make.operator()<TRectangleLowPassFilter>();
  if (window == "Blackman") return make.operator()<TBlackmanLowPassFilter>();
  return make.operator()<TAverageLowPassFilter>();
}

// A window, a sine and a quotient of a few roundings each.
TEST(LowPassFilter, CoefficientsAreThoseOfFiftyDigits) {
  for (const TReferenceFilter& reference : kReferenceFilters) {
    const auto filter = Designed(reference);
    ASSERT_EQ(filter->SampleCount(), reference.N);
    const std::size_t last = filter->Coeff().size() - 1;
    for (std::size_t i = 0; i < reference.FirstHalf.size(); ++i) {
      ASSERT_NEAR(filter->Coeff()[i], reference.FirstHalf[i], 4e-16)
          << reference.Window << " " << reference.N << " coefficient " << i;
      ASSERT_NEAR(filter->Coeff()[last - i], reference.FirstHalf[i], 4e-16) << reference.Window << " " << reference.N;
    }
  }
}

// The angle k w carries a rounding of k w, up to N pi.
TEST(LowPassFilter, TheFrequencyResponseIsThatOfFiftyDigits) {
  for (const TReferenceFilter& reference : kReferenceFilters) {
    const auto filter = Designed(reference);
    for (const auto& response : reference.Responses) {
      EXPECT_NEAR(filter->CalcAttenByF(response.Frequency), response.Magnitude, 2e-16 * (reference.N + 10))
          << reference.Window << " " << reference.N << " at " << response.Frequency;
    }
  }
}

TEST(LowPassFilter, WindowsAndCoefficientsAreSymmetric) {
  const auto check = [](const TLowPassWindowFilter& Filter, int N) {
    for (int i = 0; i < N; ++i) {
      ASSERT_EQ(Filter.GetWindowEff(i), Filter.GetWindowEff(N - 1 - i)) << i << " of " << N;
      ASSERT_EQ(Filter.Coeff()[static_cast<std::size_t>(i)], Filter.Coeff()[static_cast<std::size_t>(N - 1 - i)]);
    }
  };
  for (int n = 3; n <= 101; n += 2) {
    check(DesignedFilter<THammingLowPassFilter>(1000, 77, n), n);
    check(DesignedFilter<TRectangleLowPassFilter>(1000, 77, n), n);
    check(DesignedFilter<TBlackmanLowPassFilter>(1000, 77, n), n);
  }
}

TEST(THammingLowPassFilter, TheWindowFallsFrom1To008) {
  const auto filter = DesignedFilter<THammingLowPassFilter>(1000, 100, 9);
  EXPECT_EQ(filter.GetWindowEff(4), 1.0);
  EXPECT_NEAR(filter.GetWindowEff(0), 0.08, 1e-16);
  EXPECT_NEAR(filter.GetWindowEff(2), 0.54, 1e-16);
  EXPECT_NEAR(filter.GetWindowEff(8), 0.08, 1e-16);
}

TEST(TRectangleLowPassFilter, TheWindowIs1Throughout) {
  const auto filter = DesignedFilter<TRectangleLowPassFilter>(1000, 100, 9);
  for (int i = 0; i < 9; ++i) EXPECT_EQ(filter.GetWindowEff(i), 1.0);
}

// With the second cosine over N the ends are -0.08 (1 - cos(2 pi / N)); over N-1 they would be 0.
TEST(TBlackmanLowPassFilter, TheEndsOfTheWindowAreBelow0BecauseOfTheTwoDivisors) {
  for (const int n : {3, 5, 9, 31, 101}) {
    const auto filter = DesignedFilter<TBlackmanLowPassFilter>(1000, 100, n);
    const double end = -0.08 * (1.0 - std::cos(2.0 * std::numbers::pi / n));
    EXPECT_NEAR(filter.GetWindowEff(0), end, 1e-16) << n;
    EXPECT_NEAR(filter.GetWindowEff(n - 1), end, 1e-16) << n;
    EXPECT_EQ(filter.GetWindowEff(n / 2), 1.0) << n;
  }
}

// Of a window of one sample nothing is left but its middle, where the formulas have 0/0.
TEST(LowPassFilter, AFilterOfOneSamplePassesItOn) {
  const auto check = [](TLowPassWindowFilter&& Filter) {
    EXPECT_EQ(Filter.SampleCount(), 1);
    EXPECT_EQ(Filter.GetWindowEff(0), 1.0);
    EXPECT_THAT(Filter.Coeff(), testing::ElementsAre(1.0));
    EXPECT_EQ(Filter.Filt(4.25), 4.25);
    EXPECT_EQ(Filter.Filt(-3), -3);
  };
  check(DesignedFilter<THammingLowPassFilter>(1000, 100, 1));
  check(DesignedFilter<TRectangleLowPassFilter>(1000, 100, 1));
  check(DesignedFilter<TBlackmanLowPassFilter>(1000, 100, 1));
}

TEST(LowPassFilter, TheWindowFollowsTheLengthThatIsKnownAndElseTheDesign) {
  auto filter = DesignedFilter<THammingLowPassFilter>(1000, 100, 9);
  filter.SetFcenter(200);
  EXPECT_NEAR(filter.GetWindowEff(8), 0.08, 1e-16);
  THammingLowPassFilter next = FilterOf<THammingLowPassFilter>(1000, 100, 5);
  ASSERT_EQ(next.SampleCount(), 5);
  EXPECT_NEAR(next.GetWindowEff(4), 0.08, 1e-16);
}

// A negative cut-off frequency turns the signs; their sum is not above 1e-4 then and the coefficients stay as they are.
TEST(TRectangleLowPassFilter, CoefficientsOfANegativeSumStayUnscaled) {
  const auto filter = DesignedFilter<TRectangleLowPassFilter>(1000, -100, 3);
  const double side = std::sin(-0.2 * std::numbers::pi) / std::numbers::pi;
  EXPECT_THAT(filter.Coeff(),
              testing::ElementsAre(testing::DoubleNear(side, 1e-16), -0.2, testing::DoubleNear(side, 1e-16)));
}

// The raw sum of three equal taps is 6 fc/fs: on either side of 1e-4.
TEST(TRectangleLowPassFilter, ARawSumOfAtMost1eMinus4StaysUnscaled) {
  const auto below = DesignedFilter<TRectangleLowPassFilter>(1e6, 16.6, 3);
  EXPECT_NEAR(below.Coeff()[1], 3.32e-5, 1e-19);
  const auto above = DesignedFilter<TRectangleLowPassFilter>(1e6, 16.7, 3);
  EXPECT_NEAR(above.Coeff()[1], 1.0 / 3.0, 1e-8);
}

TEST(TAverageLowPassFilter, AllCoefficientsAre1OverN) {
  const auto filter = DesignedFilter<TAverageLowPassFilter>(1000, 100);
  EXPECT_EQ(filter.GetN(), 5);
  for (const double coefficient : filter.Coeff()) EXPECT_NEAR(coefficient, 0.2, 1e-16);
}

}  // namespace
}  // namespace ZORBase
