// The fits against references of 50 digits, and on measured data.
#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <ZORBase/common/uZORCommon.h>

#include "FitReferences.h"
#include "support/TestSupport.h"

#include <algorithm>

namespace ZORBase {
namespace {

using namespace Test;

// How far a normal and an offset may be off: the rounding of the centred coordinates, by the gap between the smallest
// singular value and the next one.
template <std::size_t N>
double NormalTolerance(const TReferenceFit<N>& Reference) {
  double size = 0.0;
  for (const double value : Reference.Points) size = std::fmax(size, std::fabs(value));
  const double rounding = kEpsilon * size * static_cast<double>(Reference.Points.size());
  return 2 * rounding / (Reference.SingularValues[1] - Reference.SingularValues[0]) + 4 * kEpsilon;
}

template <std::size_t N>
void ExpectNear(const TReferenceFit<N>& Reference, std::array<double, N> Normal, double Offset) {
  SCOPED_TRACE(Reference.Name);
  double cosine = 0.0;
  for (std::size_t j = 0; j < N; ++j) cosine += Normal[j] * Reference.Normal[j];
  const double sign = cosine < 0.0 ? -1.0 : 1.0;
  const double tolerance = NormalTolerance(Reference);
  ASSERT_LT(tolerance, 1e-6);
  double farthest = 0.0;
  for (std::size_t j = 0; j < N; ++j) EXPECT_NEAR(sign * Normal[j], Reference.Normal[j], tolerance);
  for (const double value : Reference.Points) farthest = std::fmax(farthest, std::fabs(value));
  EXPECT_NEAR(sign * Offset, Reference.Offset, 2 * tolerance * farthest);
}

TEST(FitPlaneUsingSvd, AgreesWithReferencesOfFiftyDigits) {
  for (const TReferenceFit<3>& reference : kReferencePlanes) {
    const TDoubleList points{std::span<const double>(reference.Points)};
    double a = 0, b = 0, c = 0, d = 0, ratio = 0;
    ASSERT_TRUE(FitPlaneUsingSvd(&points, a, b, c, d, ratio));
    ExpectNear(reference, {a, b, c}, d);
    const double smallest = reference.SingularValues[0];
    const double rounding = NormalTolerance(reference) * reference.SingularValues[1] / std::fmax(smallest, 1e-7);
    const double expected = SafeDiv(reference.SingularValues[1], smallest, 1e-7);
    EXPECT_NEAR(ratio / expected, 1.0, rounding + 1e-14) << reference.Name;
  }
}

TEST(FitLineUsingSvd, AgreesWithReferencesOfFiftyDigits) {
  for (const TReferenceFit<2>& reference : kReferenceLines) {
    const TDoubleList points{std::span<const double>(reference.Points)};
    double a = 0, b = 0, c = 0;
    ASSERT_TRUE(FitLineUsingSvd(&points, a, b, c));
    ExpectNear(reference, {a, b}, c);
  }
}

TEST(FitLineUsingSvd, TheChordLineOfAWingProfile) {
  TPoint6DList poses;
  ASSERT_TRUE(poses.LoadFromFile(SampleFile("e387.100mm.poses.txt")));
  TDoubleList points;
  for (const TPoint6D& pose : poses) {
    points.Add(pose.X);
    points.Add(pose.Y);
  }
  double a = 0, b = 0, c = 0;
  ASSERT_TRUE(FitLineUsingSvd(&points, a, b, c));
  // For a chord of 1, computed with 50 digits; here it is 100 mm.
  const double sign = b < 0 ? -1.0 : 1.0;
  EXPECT_NEAR(sign * a, 0.010382744522808491, 1e-12);
  EXPECT_NEAR(sign * b, 0.99994609785536645, 1e-12);
  EXPECT_NEAR(sign * c / 100.0, -0.025123740453718078, 1e-12);
}

RC_GTEST_PROP(FitLaws, AShiftOfThePointsMovesTheOffsetAndLeavesTheNormal, ()) {
  const int count = *rc::gen::inRange(4, 40);
  const auto coordinates =
      *rc::gen::container<std::vector<int>>(static_cast<std::size_t>(3 * count), rc::gen::inRange(-99, 100));
  TDoubleList points;
  TDoubleList shifted;
  for (int i = 0; i < 3 * count; ++i) {
    // Eight times as far in x, four times in y: one normal stands out.
    const double value = coordinates[static_cast<std::size_t>(i)] * (i % 3 == 0   ? 8.0
                                                                     : i % 3 == 1 ? 4.0
                                                                                  : 0.125) +
                         i % 3 * i;
    points.Add(value);
    shifted.Add(value + (i % 3 == 0 ? 16.0 : i % 3 == 1 ? -8.0 : 4.0));
  }
  double a = 0, b = 0, c = 0, d = 0, ratio = 0;
  RC_ASSERT(FitPlaneUsingSvd(&points, a, b, c, d, ratio));
  RC_PRE(ratio > 2.0 && ratio < 1e6);
  double a2 = 0, b2 = 0, c2 = 0, d2 = 0;
  RC_ASSERT(FitPlaneUsingSvd(&shifted, a2, b2, c2, d2));
  const double sign = a * a2 + b * b2 + c * c2 < 0 ? -1.0 : 1.0;
  RC_ASSERT(std::fabs(a * a + b * b + c * c - 1.0) < 1e-14);
  RC_ASSERT(std::fabs(a - sign * a2) + std::fabs(b - sign * b2) + std::fabs(c - sign * c2) < 1e-11);
  RC_ASSERT(std::fabs(sign * d2 - (d - 16.0 * a + 8.0 * b - 4.0 * c)) < 1e-8);
}

}  // namespace
}  // namespace ZORBase
