#include <ZORBase/ZORBaseAlg/uHermiteInterpolater.h>

#include "support/TestSupport.h"

#include <cmath>
#include <numbers>
#include <utility>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;

using TSamples = std::vector<std::pair<double, double>>;

THermiteInterpolater Filled(const TSamples& Samples, bool IsLoop) {
  THermiteInterpolater curve;
  curve.BeginCurve(IsLoop);
  for (const auto& [x, y] : Samples) curve.AddPoint(x, y);
  return curve;
}

THermiteInterpolater Closed(const TSamples& Samples, bool IsLoop = false) {
  THermiteInterpolater curve = Filled(Samples, IsLoop);
  curve.EndCurve();
  return curve;
}

// ---------------------------------------------------------------------------------------------- slopes

TEST(THermiteInterpolater, TwoSamplesAreJoinedByAStraightLine) {
  const auto curve = Closed({{0, 0}, {2, 4}});
  EXPECT_THAT(curve.SrcDiff(), testing::ElementsAre(2, 2));
  EXPECT_EQ(curve.CalcY(1), 2);
  EXPECT_EQ(curve.CalcY(0.5), 1);
  EXPECT_EQ(curve.CalcY(1.75), 3.5);
}

TEST(THermiteInterpolater, SlopesAreDifferencesOfTheNeighbours) {
  const auto curve = Closed({{0, 1}, {1, 3}, {2, 2}});
  EXPECT_THAT(curve.SrcDiff(), testing::ElementsAre(2, 0.5, -1));
  EXPECT_EQ(curve.CalcY(0.5), 2.1875);
  // At 1.5: 3/2 + 2/2 + (0.5 - (-1)) / 8.
  EXPECT_EQ(curve.CalcY(1.5), 2.6875);
}

TEST(THermiteInterpolater, SlopesTakeTheirOwnStepsOnAnUnevenTable) {
  const auto curve = Closed({{0, 0}, {1, 4}, {4, 10}, {5, 0}});
  EXPECT_THAT(curve.SrcDiff(), testing::ElementsAre(4, 2.5, -1, -10));
}

// y0 = 2, x1 = 1, y1 = 5, y(n-2) = 3, and y(n-1) becomes 2: (5 - 3) / (((1 - 2) + 2) - 3) = -1.
TEST(THermiteInterpolater, TheSlopeAtTheSeamOfALoopMixesValuesAndAbscissae) {
  const auto curve = Closed({{0, 2}, {1, 5}, {2, 3}, {4, 99}}, true);
  EXPECT_TRUE(curve.IsLoop());
  EXPECT_THAT(curve.SrcY(), testing::ElementsAre(2, 5, 3, 2));
  EXPECT_THAT(curve.SrcDiff(), testing::ElementsAre(-1, 0.5, -1, -1));
}

// In this order (((0.1 - 1e17) + 1e17) - 3) is -3; with the two large values cancelled first it would be -2.9.
TEST(THermiteInterpolater, TheSeamOfALoopIsComputedInItsOrder) {
  const auto curve = Closed({{0, 1e17}, {0.1, 9}, {1, 3}, {2, 0}}, true);
  EXPECT_EQ(curve.SrcDiff()[0], -2.0);
}

TEST(THermiteInterpolater, ALoopOfTwoSamplesIsLevelAtItsEnds) {
  const auto curve = Closed({{0, 3}, {2, 4}}, true);
  // y1 becomes 3: (3 - 3) / (((2 - 3) + 3) - 3) = 0.
  EXPECT_THAT(curve.SrcY(), testing::ElementsAre(3, 3));
  EXPECT_THAT(curve.SrcDiff(), testing::ElementsAre(0, 0));
  EXPECT_EQ(curve.CalcY(1), 3);
}

TEST(THermiteInterpolater, TheLastValueAndSlopeOfALoopAreItsFirst) {
  TSamples samples;
  for (int i = 0; i <= 36; ++i) samples.emplace_back(i * 10.0, std::sin(i * std::numbers::pi / 18 + 0.3));
  samples.back().second = 123;
  const auto curve = Closed(samples, true);
  EXPECT_EQ(curve.SrcY().Last(), curve.SrcY().First());
  EXPECT_EQ(curve.SrcDiff().Last(), curve.SrcDiff().First());
  EXPECT_EQ(curve.CalcY(0), curve.CalcY(360));
}

TEST(THermiteInterpolater, ALoopDoesNotWrap) {
  const auto curve = Closed({{0, 2}, {1, 5}, {2, 3}, {4, 2}}, true);
  EXPECT_EQ(curve.CalcY(5), 2);
  EXPECT_EQ(curve.CalcY(-3), 2);
  EXPECT_EQ(curve.CalcY(1000), 2);
}

// ---------------------------------------------------------------------------------------------- looking up

TEST(THermiteInterpolater, OutsideTheTableTheFirstOrTheLastValueAnswers) {
  const auto curve = Closed({{0, 1}, {1, 3}, {2, 2}});
  EXPECT_EQ(curve.CalcY(-5), 1);
  EXPECT_EQ(curve.CalcY(7), 2);
  EXPECT_EQ(curve.CalcY(-kInfinity), 1);
  EXPECT_EQ(curve.CalcY(kInfinity), 2);
}

TEST(THermiteInterpolater, CloserThan1eMinus7ToASampleItsValueAnswers) {
  TSamples samples;
  for (int i = 0; i <= 20; ++i) samples.emplace_back(i, 10.0 * i * i - 7.0 * i);
  const auto curve = Closed(samples);
  for (const auto& [x, y] : samples) {
    EXPECT_EQ(curve.CalcY(x), y);
    EXPECT_EQ(curve.CalcY(x + 0.9e-7), y);
    EXPECT_EQ(curve.CalcY(x - 0.9e-7), y);
    if (x < 20) {
      EXPECT_NE(curve.CalcY(x + 1.1e-7), y);
    }
    if (x > 0) {
      EXPECT_NE(curve.CalcY(x - 1.1e-7), y);
    }
  }
}

TEST(THermiteInterpolater, SomethingThatIsNotANumberHasNoValue) {
  EXPECT_TRUE(std::isnan(Closed({{0, 1}, {1, 3}, {2, 2}}).CalcY(std::nan(""))));
}

// ---------------------------------------------------------------------------------------------- what is reproduced

TEST(THermiteInterpolater, AStraightLineIsReproducedWhateverTheSteps) {
  const bool holds = rc::check("samples of a line give the line", [] {
    const double slope = *rc::gen::inRange(-64, 65) / 8.0;
    const double offset = *rc::gen::inRange(-64, 65) / 8.0;
    const auto steps = *rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 100)));
    TSamples samples = {{0.0, offset}};
    for (const int step : steps) {
      const double x = samples.back().first + step / 16.0;
      samples.emplace_back(x, slope * x + offset);
    }
    const auto curve = Closed(samples);
    const double end = samples.back().first;
    for (int i = 0; i <= 100; ++i) {
      const double x = end * i / 100;
      RC_ASSERT(std::fabs(curve.CalcY(x) - (slope * x + offset)) <= 2e-6 + 1e-13 * end);
    }
  });
  EXPECT_TRUE(holds);
}

// At the inner samples of an even table the slope of a parabola is exact, so that all but the end intervals are.
TEST(THermiteInterpolater, AParabolaIsReproducedBetweenInnerSamples) {
  TSamples samples;
  for (int i = -8; i <= 8; ++i) samples.emplace_back(i, 3.0 * i * i - 2.0 * i + 1.0);
  const auto curve = Closed(samples);
  for (int k = -7 * 64; k <= 7 * 64; ++k) {
    const double x = k / 64.0;
    EXPECT_NEAR(curve.CalcY(x), 3.0 * x * x - 2.0 * x + 1.0, 1e-13) << x;
  }
  // The first slope is short by 3: at the middle of the first interval that is 3/8.
  EXPECT_NEAR(curve.CalcY(-7.5), 3.0 * 56.25 + 15.0 + 1.0 + 3.0 / 8.0, 1e-12);
}

TEST(THermiteInterpolater, TheCurveIsSmoothAtItsSamples) {
  const auto curve = Closed({{0, 1}, {1, 3}, {2.5, 2}, {3, 7}, {7, -4}});
  for (int i = 1; i < 4; ++i) {
    const double x = curve.SrcX()[i];
    const double y = curve.SrcY()[i];
    constexpr double h = 1e-5;
    EXPECT_NEAR((y - curve.CalcY(x - h)) / h, curve.SrcDiff()[i], 1e-3);
    EXPECT_NEAR((curve.CalcY(x + h) - y) / h, curve.SrcDiff()[i], 1e-3);
  }
}

TEST(THermiteInterpolater, HalvingTheStepOfASineDividesTheErrorByAboutEight) {
  const auto worst = [](int Count) {
    TSamples samples;
    for (int i = 0; i <= Count; ++i) samples.emplace_back(i * 2.0 / Count, std::sin(i * 2.0 / Count));
    const auto curve = Closed(samples);
    double error = 0;
    for (int i = 200; i <= 800; ++i) error = std::max(error, std::fabs(curve.CalcY(i * 0.002) - std::sin(i * 0.002)));
    return error;
  };
  EXPECT_GT(worst(20) / worst(40), 7.0);
  EXPECT_LT(worst(40), 1e-5);
}

// ---------------------------------------------------------------------------------------------- life of a table

TEST(THermiteInterpolater, BeginCurveStartsANewTable) {
  auto curve = Closed({{0, 1}, {1, 3}, {2, 2}}, true);
  curve.BeginCurve(false);
  EXPECT_EQ(curve.SrcX().Count(), 0);
  EXPECT_EQ(curve.SrcY().Count(), 0);
  EXPECT_EQ(curve.SrcDiff().Count(), 0);
  EXPECT_FALSE(curve.IsLoop());
  curve.AddPoint(0, 0);
  curve.AddPoint(2, 4);
  curve.EndCurve();
  EXPECT_EQ(curve.CalcY(1), 2);
}

TEST(THermiteInterpolater, ASecondEndCurveAppendsSlopesAndTheFirstOnesStayInUse) {
  auto curve = Closed({{0, 0}, {2, 4}});
  curve.AddPoint(4, 0);
  curve.EndCurve();
  EXPECT_THAT(curve.SrcDiff(), testing::ElementsAre(2, 2, 2, 0, -2));
  // Between the second and the third sample with the slopes 2 and 2: 4/2 + 0/2 + (2 - 2) 2/8.
  EXPECT_EQ(curve.CalcY(3), 2);
}

TEST(THermiteInterpolater, FewerThanTwoSamplesCannotBeClosed) {
  for (const bool isLoop : {false, true}) {
    THermiteInterpolater empty = Filled({}, isLoop);
    EXPECT_THAT(Calling([&] { empty.EndCurve(); }), RaisesGeneralError("List index out of bounds (1)"));
    THermiteInterpolater one = Filled({{0, 5}}, isLoop);
    EXPECT_THAT(Calling([&] { one.EndCurve(); }), RaisesGeneralError("List index out of bounds (1)"));
    EXPECT_EQ(one.SrcDiff().Count(), 0);
    EXPECT_EQ(one.CalcY(3), 5);
    EXPECT_EQ(one.CalcY(-3), 5);
  }
}

TEST(THermiteInterpolater, AnEmptyTableHasNoFirstSample) {
  EXPECT_THAT(Calling([] { THermiteInterpolater().CalcY(0); }), RaisesGeneralError("List index out of bounds (0)"));
}

TEST(THermiteInterpolater, AMissingSlopeRaises) {
  const THermiteInterpolater open = Filled({{0, 0}, {2, 4}}, false);
  EXPECT_THAT(Calling([&] { open.CalcY(1); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
  EXPECT_EQ(open.CalcY(2), 4);
  auto grown = Closed({{0, 0}, {2, 4}});
  grown.AddPoint(3, 5);
  EXPECT_EQ(grown.CalcY(1), 2);
  EXPECT_THAT(Calling([&] { grown.CalcY(2.5); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
  const THermiteInterpolater single = Filled({{0, 0}}, false);
  EXPECT_THAT(Calling([&] { single.CalcY(std::nan("")); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
}

// A search only ends between samples of equal x when the table does not rise.
TEST(THermiteInterpolater, AnIntervalOfZeroWidthRaises) {
  const auto curve = Closed({{0, 0}, {2, 1}, {2, 3}, {1, 1}, {5, 0}});
  EXPECT_EQ(curve.CalcY(2), 3);
  const auto folded = Closed({{0, 0}, {1, 1}, {1, 3}});
  EXPECT_EQ(folded.CalcY(1), 3);
  EXPECT_THAT(Calling([&] { folded.CalcY(std::nan("")); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
}

TEST(THermiteInterpolater, SamplesOfEqualXLeaveTheirNeighboursUsable) {
  const auto curve = Closed({{0, 0}, {1, 1}, {1, 3}, {2, 4}});
  EXPECT_EQ(curve.SrcDiff()[1], 3);
  // Between 0 and 1 with the slopes 1 and 3: 0/2 + 1/2 + (1 - 3) / 8.
  EXPECT_EQ(curve.CalcY(0.5), 0.25);
}

// The seam's denominator (((1 - 2) + 2) - 1) is 0: a division that is not guarded, and a slope that is infinite.
TEST(THermiteInterpolater, ASlopeThatIsNotFiniteIsFirstSeenInTheValues) {
  const auto infinite = Closed({{0, 2}, {1, 5}, {2, 1}, {3, 2}}, true);
  EXPECT_EQ(infinite.SrcDiff().First(), kInfinity);
  EXPECT_EQ(infinite.CalcY(0.5), kInfinity);
  EXPECT_TRUE(std::isfinite(infinite.CalcY(1.5)));
  const auto undefined = Closed({{0, 2}, {1, 1}, {2, 1}, {3, 2}}, true);
  EXPECT_TRUE(std::isnan(undefined.SrcDiff().First()));
  EXPECT_TRUE(std::isnan(undefined.CalcY(0.5)));
  EXPECT_TRUE(std::isfinite(undefined.CalcY(1.5)));
  EXPECT_TRUE(std::isnan(undefined.CalcY(2.5)));
  EXPECT_EQ(undefined.CalcY(3), 2);
}

}  // namespace
}  // namespace ZORBase
