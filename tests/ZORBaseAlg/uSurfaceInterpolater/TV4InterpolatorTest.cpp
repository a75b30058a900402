#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>
#include <ZORBase/kernels/Logarithm.h>

#include "PlainV4.h"
#include "support/TestSupport.h"

#include <algorithm>
#include <limits>
#include <numbers>
#include <random>
#include <utility>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::PlainMatrix;
using Test::PlainZ;
using Test::RaisesGeneralError;

TList<TPoint3D> SamplesOf(std::initializer_list<std::array<double, 3>> Rows) {
  TList<TPoint3D> samples;
  for (const auto& row : Rows) samples.Add(TPoint3D::Create(row[0], row[1], row[2]));
  return samples;
}

TV4Interpolator Added(const TList<TPoint3D>& Samples) {
  TV4Interpolator surface;
  surface.AddPointList(Samples);
  return surface;
}

TV4Interpolator Finished(const TList<TPoint3D>& Samples) {
  TV4Interpolator surface = Added(Samples);
  surface.CalcWeights();
  return surface;
}

const TList<TPoint3D> kTriangle = SamplesOf({{0, 0, 1}, {1, 0, 1}, {0, 1, 1}});

// Samples of a hilly surface at random places of a square of this side.
TList<TPoint3D> Hills(int Count, double Side, unsigned Seed = 7) {
  std::mt19937 random(Seed);
  const auto unit = [&] { return static_cast<double>(random()) / 4294967296.0; };  // the same numbers everywhere
  TList<TPoint3D> samples;
  for (int i = 0; i < Count; ++i) {
    const double x = unit();
    const double y = unit();
    samples.Add(TPoint3D::Create(Side * x, Side * y, std::sin(7 * x) * std::cos(5 * y) + 3 * x * y));
  }
  return samples;
}

// ---------------------------------------------------------------------------------------------- states

TEST(TV4Interpolator, GoesFromIdleOverAddingToFinished) {
  TV4Interpolator surface;
  EXPECT_EQ(surface.State(), TV4Interpolator::cbsIdle);
  surface.AddPoint(0, 0, 1);
  EXPECT_EQ(surface.State(), TV4Interpolator::cbsAddPoint);
  surface.AddPoint(TPoint3D::Create(1, 0, 1));
  surface.AddPointList(SamplesOf({{0, 1, 1}}));
  EXPECT_EQ(surface.State(), TV4Interpolator::cbsAddPoint);
  EXPECT_EQ(surface.SrcPt().Count(), 3);
  surface.CalcWeights();
  EXPECT_EQ(surface.State(), TV4Interpolator::cbsFinish);
  EXPECT_EQ(surface.Weights().Count(), 3);
  surface.CalcZ(0.5, 0.5);
  EXPECT_EQ(surface.State(), TV4Interpolator::cbsFinish);
}

TEST(TV4Interpolator, TheStatesAreNumberedInOrder) {
  EXPECT_EQ(int{TV4Interpolator::cbsIdle}, 0);
  EXPECT_EQ(int{TV4Interpolator::cbsAddPoint}, 1);
  EXPECT_EQ(int{TV4Interpolator::cbsFinish}, 2);
}

TEST(TV4Interpolator, WithoutSamplesThereAreNoWeights) {
  TV4Interpolator surface;
  EXPECT_THAT(Calling([&] { surface.CalcWeights(); }),
              RaisesGeneralError("TV4Interpolator Wrong State 0 Suppose State 1"));
  EXPECT_EQ(surface.State(), TV4Interpolator::cbsIdle);
}

TEST(TV4Interpolator, WeightsAreComputedOnce) {
  TV4Interpolator surface = Finished(kTriangle);
  EXPECT_THAT(Calling([&] { surface.CalcWeights(); }),
              RaisesGeneralError("TV4Interpolator Wrong State 2 Suppose State 1"));
}

TEST(TV4Interpolator, AFinishedSurfaceTakesNoMoreSamples) {
  TV4Interpolator surface = Finished(kTriangle);
  const auto error = RaisesGeneralError("TV4Interpolator Wrong State 2 Suppose State 0 or 1");
  EXPECT_THAT(Calling([&] { surface.AddPoint(5, 5, 5); }), error);
  EXPECT_THAT(Calling([&] { surface.AddPoint(TPoint3D::Create(5, 5, 5)); }), error);
  EXPECT_THAT(Calling([&] { surface.AddPointList(kTriangle); }), error);
  EXPECT_THAT(Calling([&] { surface.AddPoint(kNaN, 5, 5); }), error);
  EXPECT_EQ(surface.SrcPt().Count(), 3);
}

TEST(TV4Interpolator, BeforeTheWeightsThereAreNoHeights) {
  TV4Interpolator surface;
  EXPECT_THAT(Calling([&] { surface.CalcZ(0, 0); }),
              RaisesGeneralError("TV4Interpolator Wrong State 0 Suppose State 2"));
  surface.AddPoint(0, 0, 1);
  EXPECT_THAT(Calling([&] { surface.CalcZ(0, 0); }),
              RaisesGeneralError("TV4Interpolator Wrong State 1 Suppose State 2"));
  EXPECT_THAT(Calling([&] { surface.CalcZ({}, {}); }),
              RaisesGeneralError("TV4Interpolator Wrong State 1 Suppose State 2"));
}

TEST(TV4Interpolator, AnEmptyListOfSamplesCountsAsAdding) {
  TV4Interpolator surface = Added({});
  EXPECT_EQ(surface.State(), TV4Interpolator::cbsAddPoint);
  EXPECT_THAT(Calling([&] { surface.CalcWeights(); }),
              RaisesGeneralError(testing::HasSubstr("MatA.Count = 0, VecB.Count = 0")));
  EXPECT_EQ(surface.CalcZ(3, 4), 0);
}

TEST(TV4Interpolator, ASurfaceCanAddItsOwnSamplesAgain) {
  TV4Interpolator surface = Added(kTriangle);
  surface.AddPointList(surface.SrcPt());
  ASSERT_EQ(surface.SrcPt().Count(), 6);
  EXPECT_EQ(surface.SrcPt()[4].X, 1);
}

// ---------------------------------------------------------------------------------------------- bad input

TEST(TV4Interpolator, TwoSamplesAtOnePlaceAreRefused) {
  for (const double x : {0.0, 1e-12, -1e-12, 0.5e-12}) {
    TV4Interpolator surface = Added(SamplesOf({{0, 0, 0}, {3, 3, 3}, {x, 0, 5}}));
    EXPECT_THAT(Calling([&] { surface.CalcWeights(); }), RaisesGeneralError("TV4Interpolator Fail For Duplicate data"))
        << x;
  }
  TV4Interpolator apart = Added(SamplesOf({{0, 0, 0}, {3, 3, 3}, {1.1e-12, 0, 5}}));
  EXPECT_NO_THROW(apart.CalcWeights());
}

TEST(TV4Interpolator, AfterAFailureEveryHeightIsZero) {
  TV4Interpolator surface = Added(SamplesOf({{0, 0, 0}, {0, 0, 5}}));
  EXPECT_THAT(Calling([&] { surface.CalcWeights(); }), RaisesGeneralError("TV4Interpolator Fail For Duplicate data"));
  EXPECT_EQ(surface.State(), TV4Interpolator::cbsFinish);
  EXPECT_EQ(surface.CalcZ(0, 0), 0);
  EXPECT_EQ(surface.CalcZ(7, -3), 0);
  const TPoint2D place = TPoint2D::Create(1, 2);
  double z = 99;
  surface.CalcZ({&place, 1}, {&z, 1});
  EXPECT_EQ(z, 0);
}

TEST(TV4Interpolator, SamplesThatAreNotFiniteAreRefusedAndNothingChanges) {
  for (const double bad : {kNaN, kInfinity, -kInfinity}) {
    TV4Interpolator surface;
    const auto error = RaisesGeneralError(testing::StartsWith("TV4Interpolator: the sample 0 is not finite: "));
    EXPECT_THAT(Calling([&] { surface.AddPoint(bad, 0, 0); }), error);
    EXPECT_THAT(Calling([&] { surface.AddPoint(0, bad, 0); }), error);
    EXPECT_THAT(Calling([&] { surface.AddPoint(0, 0, bad); }), error);
    EXPECT_EQ(surface.State(), TV4Interpolator::cbsIdle);
    EXPECT_THAT(Calling([&] {
                  surface.AddPointList(SamplesOf({{0, 0, 0}, {1, bad, 0}}));
                }),
                RaisesGeneralError(testing::StartsWith("TV4Interpolator: the sample 1 is not finite: ")));
    EXPECT_EQ(surface.State(), TV4Interpolator::cbsIdle);
    EXPECT_EQ(surface.SrcPt().Count(), 0);
  }
}

TEST(TV4Interpolator, TooManySamplesAreRefusedBeforeTheMatrixIsAllocated) {
  TList<TPoint3D> samples;
  constexpr int count = 11586;  // 8 * 11585^2 is below 2^30, 8 * 11586^2 is not
  for (int i = 0; i < count; ++i) samples.Add(TPoint3D::Create(i, 0, 0));
  TV4Interpolator surface = Added(samples);
  EXPECT_THAT(Calling([&] { surface.CalcWeights(); }),
              RaisesGeneralError(
                  "TV4Interpolator: the matrix of 11586 samples takes 1073883168 bytes, the limit is 1073741824"));
}

TEST(TV4Interpolator, SamplesWhoseDistanceHasNoSquareAreRefused) {
  TV4Interpolator surface = Added(SamplesOf({{0, 0, 0}, {1, 0, 0}, {1e200, 0, 0}}));
  EXPECT_THAT(Calling([&] { surface.CalcWeights(); }),
              RaisesGeneralError("TV4Interpolator: samples are too far apart for the square of their distance"));
}

TEST(TV4Interpolator, AsManyHeightsAsPlacesAreAskedFor) {
  const TV4Interpolator surface = Finished(kTriangle);
  std::vector<TPoint2D> places(3);
  std::vector<double> z(2, 99.0);
  EXPECT_THAT(Calling([&] { surface.CalcZ(places, z); }),
              RaisesGeneralError("TV4Interpolator: 3 places and 2 heights"));
  EXPECT_THAT(z, testing::Each(99.0));
}

// ---------------------------------------------------------------------------------------------- heights

TEST(TV4Interpolator, ThreeSamplesOfHeightOneAreMet) {
  const TV4Interpolator surface = Finished(kTriangle);
  for (const TPoint3D& sample : kTriangle) EXPECT_NEAR(surface.CalcZ(sample.X, sample.Y), 1, 1e-14);
}

// The matrix of two samples is [[0, p], [p, 0]] with p = phi(d): the weights are z1 / p and z0 / p.
TEST(TV4Interpolator, TwoSamplesCanBeSolvedByHand) {
  const TV4Interpolator surface = Finished(SamplesOf({{0, 0, 3}, {4, 3, -2}}));
  const auto phi = [](double d) { return d * d * (std::log(d) - 1); };
  EXPECT_NEAR(surface.Weights()[0], -2 / phi(5), 1e-15);
  EXPECT_NEAR(surface.Weights()[1], 3 / phi(5), 1e-15);
  // At (4, 0): 4 from the first one, 3 from the second one.
  EXPECT_NEAR(surface.CalcZ(4, 0), (-2 * phi(4) + 3 * phi(3)) / phi(5), 1e-14);
}

TEST(TV4Interpolator, ASingleSampleGivesZeroEverywhere) {
  const TV4Interpolator surface = Finished(SamplesOf({{1, 2, 3}}));
  EXPECT_THAT(surface.Weights(), testing::ElementsAre(0));
  EXPECT_EQ(surface.CalcZ(1, 2), 0);
  EXPECT_EQ(surface.CalcZ(-100, 50), 0);
}

TEST(TV4Interpolator, HeightsHaveNoPolynomialTerms) {
  const TV4Interpolator surface = Finished(SamplesOf({{0, 0, 1}, {2, 0, 1}}));
  // A surface with a constant term would be 1 everywhere.
  const auto phi = [](double d) { return d * d * (std::log(d) - 1); };
  EXPECT_NEAR(surface.CalcZ(1, 0), 2 * phi(1) / phi(2), 1e-14);
}

TEST(TV4Interpolator, TheHeightOfASampleDoesNotPlaceIt) {
  const TV4Interpolator low = Finished(SamplesOf({{0, 0, 0}, {1, 0, 1}, {0, 1, 2}}));
  const TV4Interpolator high = Finished(SamplesOf({{0, 0, 0}, {1, 0, 1000}, {0, 1, 2000}}));
  EXPECT_NEAR(high.CalcZ(0.3, 0.4), 1000 * low.CalcZ(0.3, 0.4), 1e-10);
}

TEST(TV4Interpolator, AtItsSamplesTheSurfaceIsWithin1eMinus10OfTheRangeOfHeights) {
  for (const int count : {2, 3, 10, 50, 150, 300}) {
    for (const double side : {1.0, 300.0}) {
      const TList<TPoint3D> samples = Hills(count, side);
      const TV4Interpolator surface = Finished(samples);
      const auto [lowest, highest] =
          std::minmax_element(samples.begin(), samples.end(), [](const auto& A, const auto& B) { return A.Z < B.Z; });
      double worst = 0;
      for (const TPoint3D& sample : samples) {
        worst = std::max(worst, std::fabs(surface.CalcZ(sample.X, sample.Y) - sample.Z));
      }
      EXPECT_LE(worst, 1e-10 * (highest->Z - lowest->Z)) << count << " samples, side " << side;
    }
  }
}

TEST(TV4Interpolator, ASmoothSurfaceIsFollowedBetweenItsSamples) {
  TList<TPoint3D> samples;
  const auto height = [](double x, double y) { return std::sin(3 * x) * std::cos(2 * y); };
  for (int i = 0; i <= 14; ++i) {
    for (int j = 0; j <= 14; ++j) samples.Add(TPoint3D::Create(i / 14.0, j / 14.0, height(i / 14.0, j / 14.0)));
  }
  const TV4Interpolator surface = Finished(samples);
  for (double x = 0.2; x < 0.8; x += 0.07) {
    for (double y = 0.2; y < 0.8; y += 0.07) EXPECT_NEAR(surface.CalcZ(x, y), height(x, y), 2e-4) << x << ", " << y;
  }
}

RC_GTEST_PROP(TV4Interpolator, MovingAllSamplesMovesTheSurface, ()) {
  const int count = *rc::gen::inRange(2, 25);
  const double shift = *rc::gen::inRange(-64, 65);
  const TList<TPoint3D> samples = Hills(count, 8.0, *rc::gen::arbitrary<unsigned>());
  TList<TPoint3D> moved;
  for (const TPoint3D& sample : samples) moved.Add(sample + TPoint3D::Create(shift, -shift, 0));
  const double x = *rc::gen::inRange(0, 800) / 100.0;
  const double y = *rc::gen::inRange(0, 800) / 100.0;
  const TV4Interpolator here = Finished(samples);
  double size = 1.0;  // of the sum: neighbours with large weights of opposite sign cancel
  for (const double weight : here.Weights()) size += 200.0 * std::fabs(weight);
  RC_ASSERT(std::fabs(Finished(moved).CalcZ(x + shift, y - shift) - here.CalcZ(x, y)) < 1e-9 * size);
}

// ---------------------------------------------------------------------------------------------- the same bits

TEST(TV4Interpolator, ManyPlacesGiveTheBitsOfOneByOne) {
  for (const int count : {1, 2, 3, 4, 5, 7, 8, 9, 31, 64, 101}) {
    const TList<TPoint3D> samples = Hills(count, 10.0);
    const TV4Interpolator surface = Finished(samples);
    for (const int places : {0, 1, 2, 3, 4, 5, 8, 13, 33}) {
      std::vector<TPoint2D> at;
      for (const TPoint3D& place : Hills(places, 12.0, 11)) at.push_back(TPoint2D::Create(place.X, place.Y));
      if (places > 2) at[1] = TPoint2D::Create(samples[0].X, samples[0].Y);  // on a sample
      std::vector<double> z(at.size(), kNaN);
      surface.CalcZ(at, z);
      for (std::size_t i = 0; i < at.size(); ++i) {
        EXPECT_EQ(std::bit_cast<std::uint64_t>(z[i]), std::bit_cast<std::uint64_t>(surface.CalcZ(at[i].X, at[i].Y)))
            << count << " samples, place " << i << " of " << places;
      }
    }
  }
}

// Written down as it is defined, with the library's own logarithm.
TEST(TV4Interpolator, HeightsHaveTheBitsOfThePlainSum) {
  for (const int count : {1, 2, 15, 16, 17, 33, 100}) {
    for (const double side : {1e-5, 2.0, 5e4}) {
      const TList<TPoint3D> samples = Hills(count, side);
      const TV4Interpolator surface = Finished(samples);
      for (const TPoint3D& place : Hills(20, 1.5 * side, 3)) {
        const double expected = PlainZ(samples, surface.Weights(), place.X, place.Y, [](double d) { return Ln(d); });
        EXPECT_EQ(surface.CalcZ(place.X, place.Y), expected) << count << " samples, side " << side;
      }
      EXPECT_EQ(surface.CalcZ(samples[0].X, samples[0].Y),
                PlainZ(samples, surface.Weights(), samples[0].X, samples[0].Y, [](double d) { return Ln(d); }));
    }
  }
}

TEST(TV4Interpolator, WeightsHaveTheBitsOfThePlainMatrix) {
  for (const int count : {1, 2, 15, 16, 17, 18, 33, 34, 70}) {
    const TList<TPoint3D> samples = Hills(count, 4.0);
    const TDoubleList matrix = PlainMatrix(samples, [](double d) { return Ln(d); });
    TDoubleList heights;
    for (const TPoint3D& sample : samples) heights.Add(sample.Z);
    TDoubleList weights;
    ASSERT_TRUE(MatrixDivUsingSvd(&matrix, &heights, count, count, &weights, true));
    EXPECT_THAT(Finished(samples).Weights(), testing::ElementsAreArray(weights.begin(), weights.end())) << count;
  }
}

TEST(TV4Interpolator, TwoSamplesAtOnePlaceAreFoundWhereverTheyStand) {
  for (int at = 1; at < 40; ++at) {
    TList<TPoint3D> samples = Hills(40, 4.0);
    samples[at] = samples[at / 2];
    TV4Interpolator surface = Added(samples);
    EXPECT_THAT(Calling([&] { surface.CalcWeights(); }), RaisesGeneralError("TV4Interpolator Fail For Duplicate data"))
        << at;
  }
}

TEST(TV4Interpolator, PlacesThatAreNotFiniteHaveNoFiniteHeight) {
  const TV4Interpolator surface = Finished(kTriangle);
  EXPECT_TRUE(std::isnan(surface.CalcZ(kNaN, 0)));
  EXPECT_TRUE(std::isnan(surface.CalcZ(0, kNaN)));
  EXPECT_FALSE(std::isfinite(surface.CalcZ(kInfinity, 0)));
  EXPECT_FALSE(std::isfinite(surface.CalcZ(0, -kInfinity)));
}

}  // namespace
}  // namespace ZORBase
