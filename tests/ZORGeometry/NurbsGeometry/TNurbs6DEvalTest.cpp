// Evaluating: points, derivatives, and curves of given control points.
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>

#include <thread>

#include "CurveTestSupport.h"

namespace ZORBase {
namespace {

using Test::AnyMethod;
using Test::AnyPoses;
using Test::ClampedKnots;
using Test::CurveOf;
using Test::CurveThrough;
using Test::HasState;
using Test::IsExactPose;
using Test::IsNearPose;
using Test::IsSamePose;
using Test::IsSameRow;
using Test::LargestCoordinate;
using Test::NumberedPoints;
using Test::RandomPoses;
using Test::StateOf;
using Test::TPathKind;
using testing::ElementsAre;
using testing::ElementsAreArray;

const TNurbs6D& TwelvePoseCurve() {
  static const TNurbs6D curve = [] {
    std::mt19937_64 random(20240618);
    return CurveThrough(RandomPoses(random, TPathKind::Walk, 12));
  }();
  return curve;
}

using TWidePoint = std::array<long double, 6>;

/// A spline of any degree in extended precision, evaluated by the corner cutting of de Boor.
struct TWideSpline {
  int Degree = 3;
  std::vector<long double> U;
  std::vector<TWidePoint> P;

  static TWideSpline Of(const TNurbs6D& Curve) {
    TWideSpline spline;
    spline.U.assign(Curve.BasicFun().uArr().begin(), Curve.BasicFun().uArr().end());
    for (const TPoint6D& point : Curve.pointArr()) {
      TWidePoint wide{};
      for (int c = 0; c < 6; ++c) wide[static_cast<std::size_t>(c)] = point.Items(c);
      spline.P.push_back(wide);
    }
    return spline;
  }

  /// The derivative is the spline one degree lower through p (P[i+1] - P[i]) / (U[i+p+1] - U[i+1]).
  TWideSpline Derivative() const {
    const auto p = static_cast<std::size_t>(Degree);
    TWideSpline result{Degree - 1, {U.begin() + 1, U.end() - 1}, {}};
    for (std::size_t i = 0; i + 1 < P.size(); ++i) {
      TWidePoint point{};
      for (std::size_t c = 0; c < 6; ++c) point[c] = Degree * (P[i + 1][c] - P[i][c]) / (U[i + p + 1] - U[i + 1]);
      result.P.push_back(point);
    }
    return result;
  }

  TWidePoint At(long double u) const {
    const auto p = static_cast<std::size_t>(Degree);
    std::size_t span = p;
    while (span + 1 < P.size() && U[span + 1] <= u) ++span;
    std::vector<TWidePoint> corner(P.begin() + static_cast<std::ptrdiff_t>(span - p),
                                   P.begin() + static_cast<std::ptrdiff_t>(span + 1));
    for (std::size_t r = 1; r <= p; ++r) {
      for (std::size_t j = p; j >= r; --j) {
        const long double low = U[span - p + j];
        const long double weight = (u - low) / (U[span + 1 + j - r] - low);
        for (std::size_t c = 0; c < 6; ++c) corner[j][c] = (1 - weight) * corner[j - 1][c] + weight * corner[j][c];
      }
    }
    return corner[p];
  }

  long double Size() const {
    long double size = 0;
    for (const TWidePoint& point : P) {
      for (const long double item : point) size = std::max(size, std::fabs(item));
    }
    return size;
  }
};

long double SmallestSpan(const std::vector<long double>& U) {
  long double smallest = 1;
  for (std::size_t i = 1; i < U.size(); ++i) {
    if (U[i] > U[i - 1]) smallest = std::min(smallest, U[i] - U[i - 1]);
  }
  return smallest;
}

bool IsNear(const TPoint6D& Point, const TWidePoint& Expected, long double Tolerance) {
  for (int c = 0; c < 6; ++c) {
    if (!(std::fabs(Point.Items(c) - Expected[static_cast<std::size_t>(c)]) <= Tolerance)) return false;
  }
  return true;
}

// ---------------------------------------------------------------------------------------------- points

TEST(TNurbs6D, ParametersOutside0To1GiveTheOuterControlPointsExactly) {
  const TNurbs6D& curve = TwelvePoseCurve();
  for (const double u : {1.0, 1.5, 1e300, kInfinity})
    EXPECT_THAT(curve.EvalPoint(u), IsExactPose(curve.pointArr().back()));
  for (const double u : {0.0, -0.0, -1.0, -1e300, -kInfinity, std::nan("")}) {
    EXPECT_THAT(curve.EvalPoint(u), IsExactPose(curve.pointArr().front()));
  }
}

RC_GTEST_PROP(TNurbs6D, PointsAreThoseOfCornerCuttingInExtendedPrecision, ()) {
  const TNurbs6D curve = CurveThrough(*AnyPoses(), *AnyMethod());
  const TWideSpline wide = TWideSpline::Of(curve);
  for (int i = 0; i <= 100; ++i) {
    const double u = i / 100.0;
    RC_ASSERT(IsNear(curve.EvalPoint(u), wide.At(u), 8 * kEpsilon * wide.Size()));
  }
}

// One span with the control points 1, 2, 3, 4 is the straight line 1 + 3u.
TEST(TNurbs6D, OneSpanIsABezierCurve) {
  const TNurbs6D curve = CurveOf(NumberedPoints(4));
  EXPECT_THAT(curve.EvalPoint(0.5), IsExactPose(TPoint6D::Create(2.5, 0, 0, 0, 0, 1)));
  EXPECT_THAT(curve.EvalPoint(0.25), IsExactPose(TPoint6D::Create(1.75, 0, 0, 0, 0, 1)));
}

TEST(TNurbs6D, ManyThreadsReadOneCurveAlike) {
  const TNurbs6D& curve = TwelvePoseCurve();
  const auto sumOf = [&curve] {
    double sum = 0;
    for (int i = 0; i <= 1000; ++i)
      sum += curve.EvalPoint(i / 1000.0).X + curve.GetUByS(i / 100.0) + curve.GetSByU(i / 1000.0);
    return sum;
  };
  const double expected = sumOf();
  std::array<double, 4> sums{};
  std::vector<std::thread> threads;
  for (double& sum : sums) threads.emplace_back([&sum, &sumOf] { sum = sumOf(); });
  for (std::thread& thread : threads) thread.join();
  EXPECT_THAT(sums, testing::Each(expected));
}

// ---------------------------------------------------------------------------------------------- derivatives

RC_GTEST_PROP(TNurbs6D, DerivativesAreThoseOfTheSplinesOfLowerDegree, ()) {
  const TNurbs6D curve = CurveThrough(*AnyPoses(), *AnyMethod());
  std::array<TWideSpline, 4> splines = {TWideSpline::Of(curve)};
  for (std::size_t k = 1; k < 4; ++k) splines[k] = splines[k - 1].Derivative();
  for (int i = 0; i <= 40; ++i) {
    const double u = i / 40.0;
    std::array<TPoint6D, 4> CK;
    curve.CurveDerivsAlg1(u, CK);
    // A difference of control points loses what they have in common: the size counts from the level below.
    long double size = splines[0].Size();
    for (std::size_t k = 0; k < 4; ++k) {
      RC_ASSERT(IsNear(CK[k], splines[k].At(u), 64 * kEpsilon * size));
      size = std::max(size * 6 / SmallestSpan(splines[0].U), splines[k].Size());
    }
  }
}

// One span is a Bezier curve: its components here are u^3, 3 u^2 and 3 u.
TEST(TNurbs6D, TheDerivativesOfTheCubicTheSquareAndTheLine) {
  const TNurbs6D curve = CurveOf(std::array{TPoint6D::Create(0, 0, 0, 0, 0, 1), TPoint6D::Create(0, 0, 1, 0, 0, 1),
                                            TPoint6D::Create(0, 1, 2, 0, 0, 1), TPoint6D::Create(1, 3, 3, 0, 0, 1)});
  std::array<TPoint6D, 4> CK;
  curve.CurveDerivsAlg1(0.5, CK);
  EXPECT_THAT(CK[0], IsExactPose(TPoint6D::Create(0.125, 0.75, 1.5, 0, 0, 1)));
  EXPECT_THAT(CK[1], IsExactPose(TPoint6D::Create(0.75, 3, 3, 0, 0, 0)));
  EXPECT_THAT(CK[2], IsExactPose(TPoint6D::Create(3, 6, 0, 0, 0, 0)));
  EXPECT_THAT(CK[3], IsExactPose(TPoint6D::Create(6, 0, 0, 0, 0, 0)));
}

TEST(TNurbs6D, DerivativesOutside0To1AreThoseAtTheNearestEnd) {
  const auto derivativesAt = [](double u) {
    std::array<TPoint6D, 4> CK;
    TwelvePoseCurve().CurveDerivsAlg1(u, CK);
    return CK;
  };
  for (const double u : {-1e-300, -0.5, -kInfinity}) {
    for (std::size_t k = 0; k < 4; ++k) EXPECT_THAT(derivativesAt(u)[k], IsExactPose(derivativesAt(0)[k])) << u;
  }
  for (const double u : {1.0 + kEpsilon, 1.5, kInfinity}) {
    for (std::size_t k = 0; k < 4; ++k) EXPECT_THAT(derivativesAt(u)[k], IsExactPose(derivativesAt(1)[k])) << u;
  }
  EXPECT_THAT(derivativesAt(1)[0], IsNearPose(TwelvePoseCurve().EvalPoint(1), 1e-14));
}

TEST(TNurbs6D, ExactlyFourDerivativesAreWritten) {
  std::array<TPoint6D, 6> CK;
  CK.fill(TPoint6D::FOnes);
  TwelvePoseCurve().CurveDerivsAlg1(0.5, CK);
  EXPECT_THAT(CK[0], IsNearPose(TwelvePoseCurve().EvalPoint(0.5), 1e-13));
  EXPECT_THAT(CK[4], IsExactPose(TPoint6D::FOnes));
  EXPECT_THAT(CK[5], IsExactPose(TPoint6D::FOnes));
}

TEST(TNurbs6D, TheSecondDerivativeIsContinuousAndTheThirdIsConstantInEachSpan) {
  const TNurbs6D& curve = TwelvePoseCurve();
  const auto derivativesAt = [&](double u) {
    std::array<TPoint6D, 4> CK;
    curve.CurveDerivsAlg1(u, CK);
    return CK;
  };
  for (int i = 4; i + 4 < curve.BasicFun().uCount(); ++i) {
    const double knot = curve.BasicFun().Items(i);
    const double next = curve.BasicFun().Items(i + 1);
    const auto before = derivativesAt(std::nextafter(knot, 0));
    const auto after = derivativesAt(knot);
    for (std::size_t k = 0; k < 3; ++k) {
      EXPECT_THAT(after[k], IsNearPose(before[k], 1e-10 * LargestCoordinate(after))) << "derivative " << k;
    }
    EXPECT_THAT(derivativesAt((knot + next) / 2)[3], IsNearPose(after[3], 1e-12 * LargestCoordinate(after)));
  }
}

// ---------------------------------------------------------------------------------------------- given control points

TEST(TNurbs6D, CreateByCtlPointsTakesKnotsAndPointsFromListsOrArrays) {
  const std::vector<TPoint6D> points = NumberedPoints(5);
  const std::vector<double> knots = ClampedKnots(5);
  const TDoubleList knotList{std::span<const double>(knots)};
  const TList<TPoint6D> pointList{std::span<const TPoint6D>(points)};
  TNurbs6D fromArrays;
  TNurbs6D fromLists;
  EXPECT_TRUE(fromArrays.CreateByCtlPoints(knots, points, 5));
  EXPECT_TRUE(fromLists.CreateByCtlPoints(&knotList, &pointList, 5));
  for (const TNurbs6D* curve : {&fromArrays, &fromLists}) {
    EXPECT_EQ(curve->pCount(), 5);
    EXPECT_THAT(curve->BasicFun().uArr(), ElementsAreArray(knots));
    EXPECT_THAT(curve->pointArr(), ElementsAreArray(points));
    EXPECT_TRUE(curve->pointsChanged());
    EXPECT_EQ(curve->SUTable().Count(), 0);
  }
}

TEST(TNurbs6D, CreateByCtlPointsTakesTheFirstPointCountPointsAndFourMoreKnots) {
  const std::vector<TPoint6D> points = NumberedPoints(6);
  const std::vector<double> knots = {0, 0, 0, 0, 1, 1, 1, 1, 2, 3};
  TNurbs6D curve;
  EXPECT_TRUE(curve.CreateByCtlPoints(knots, points, 4));
  EXPECT_EQ(curve.pCount(), 4);
  EXPECT_THAT(curve.BasicFun().uArr(), ElementsAre(0, 0, 0, 0, 1, 1, 1, 1));
  EXPECT_EQ(curve.EvalPoint(0.5).X, 2.5);
  const TDoubleList knotList{std::span<const double>(knots)};
  const TList<TPoint6D> pointList{std::span<const TPoint6D>(points)};
  TNurbs6D fromLists;
  EXPECT_TRUE(fromLists.CreateByCtlPoints(&knotList, &pointList, 4));
  EXPECT_THAT(fromLists, HasState(StateOf(curve)));
}

TEST(TNurbs6D, CreateByCtlPointsLeavesTheTableOfTheCurveBefore) {
  TNurbs6D curve = TwelvePoseCurve();
  const std::vector<TSULine> before = StateOf(curve).Rows;
  EXPECT_TRUE(curve.CreateByCtlPoints(ClampedKnots(5), NumberedPoints(5), 5));
  EXPECT_TRUE(std::ranges::equal(curve.SUTable(), before, IsSameRow));
  curve.InitLengthByUArray();
  EXPECT_NEAR(curve.CurveLength(), 4, 1e-14);
}

TEST(TNurbs6D, ACurveCanTakeOverItsOwnControlPoints) {
  TNurbs6D curve = TwelvePoseCurve();
  EXPECT_TRUE(curve.CreateByCtlPoints(curve.BasicFun().uArr(), curve.pointArr(), curve.pCount()));
  EXPECT_THAT(curve, HasState(StateOf(TwelvePoseCurve())));
  const std::vector<TPoint6D> tail(curve.pointArr().begin() + 3, curve.pointArr().end());
  EXPECT_TRUE(
      curve.CreateByCtlPoints(curve.BasicFun().uArr().subspan(3), curve.pointArr().subspan(3), curve.pCount() - 3));
  EXPECT_TRUE(std::ranges::equal(curve.pointArr(), tail, IsSamePose));
}

TEST(TNurbs6D, IsClosedWhenTheOuterControlPointsAreCloserThan1eMinus6) {
  const auto isClosed = [](double Gap) {
    std::vector<TPoint6D> points = NumberedPoints(5);
    points[4] = points[0] + TPoint6D::Create(0, 0, 0, 0, Gap, 0);
    return CurveOf(points).GetIsClosed();
  };
  EXPECT_TRUE(isClosed(0));
  EXPECT_TRUE(isClosed(std::nextafter(1e-6, 0)));
  EXPECT_FALSE(isClosed(1e-6));
  EXPECT_FALSE(isClosed(1));
}

}  // namespace
}  // namespace ZORBase
