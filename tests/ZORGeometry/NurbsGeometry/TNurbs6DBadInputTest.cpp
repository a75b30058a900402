// Bad input: what is refused, with which words, and that the curve is as it was.
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>

#include <limits>

#include "CurveTestSupport.h"

namespace ZORBase {
namespace {

using Test::Calling;
using Test::ClampedKnots;
using Test::CurveThrough;
using Test::GeneralErrorOf;
using Test::HasState;
using Test::IsExactPose;
using Test::IsNearPose;
using Test::IsSamePose;
using Test::kAllMethods;
using Test::NumberedPoints;
using Test::RaisesGeneralError;
using Test::StateOf;
using Test::TCurveState;
using testing::_;
using testing::ContainsRegex;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

const double kNoNumber = std::nan("");
constexpr std::string_view kCoincident = "Error TNurbs6D.CreateCross PtList distance is 0";

/// Count poses on a bent path.
TPoint6DList SomePoses(int Count) {
  TPoint6DList poses;
  for (int i = 0; i < Count; ++i) poses.Add(i, std::sin(i), 0.1 * i * i);
  return poses;
}

/// A curve with something in every field.
TNurbs6D UsedCurve() {
  TNurbs6D curve = CurveThrough(SomePoses(7));
  curve.GetMax();
  return curve;
}

/// Fitting Poses raises a message like Text and leaves a used and a new curve as they were.
template <class TText>
void ExpectFitRaises(const TPoint6DList& Poses, TParalizeMethod Method, const TText& Text) {
  std::array<TNurbs6D, 2> curves = {UsedCurve(), TNurbs6D()};
  for (TNurbs6D& curve : curves) {
    const TCurveState before = StateOf(curve);
    EXPECT_THAT(Calling([&] { curve.CreateCross(&Poses, Method); }), RaisesGeneralError(Text)) << "method " << Method;
    EXPECT_THAT(curve, HasState(before)) << "method " << Method;
  }
}

// ---------------------------------------------------------------------------------------------- too few poses

TEST(TNurbs6D, ANullListIsNotFittedAndChangesNothing) {
  TNurbs6D curve = UsedCurve();
  const TCurveState before = StateOf(curve);
  for (const TParalizeMethod method : kAllMethods) {
    EXPECT_FALSE(curve.CreateCross(nullptr, method));
    EXPECT_THAT(curve, HasState(before));
  }
}

TEST(TNurbs6D, FewerThanFourPosesAreNotFittedButCounted) {
  for (int count = 0; count < 4; ++count) {
    const TPoint6DList poses = SomePoses(count);
    TNurbs6D curve = UsedCurve();
    TCurveState expected = StateOf(curve);
    expected.CrossPtNum = count;
    EXPECT_FALSE(curve.CreateCross(&poses, mChord));
    EXPECT_THAT(curve, HasState(expected));
  }
}

TEST(TNurbs6D, FourPosesAreEnough) {
  const TPoint6DList poses = SomePoses(4);
  TNurbs6D curve;
  EXPECT_TRUE(curve.CreateCross(&poses, mChord));
  EXPECT_EQ(curve.CrossPtNum(), 4);
}

// ---------------------------------------------------------------------------------------------- coincident poses

TEST(TNurbs6D, IdenticalNeighboursRaiseForEveryMethod) {
  for (const TParalizeMethod method : kAllMethods) {
    for (int at = 0; at < 6; ++at) {
      TPoint6DList poses = SomePoses(6);
      poses.Insert(at, poses[at]);
      ExpectFitRaises(poses, method, kCoincident.data());
    }
  }
}

TEST(TNurbs6D, NeighboursJustCloserThan1eMinus6RaiseForEveryMethod) {
  for (const TParalizeMethod method : kAllMethods) {
    TPoint6DList poses = SomePoses(6);
    poses.Insert(3, poses[2] + TPoint6D::Create(0, 0, 0, 0, 0, 0.99e-6));
    ExpectFitRaises(poses, method, kCoincident.data());
  }
}

// ---------------------------------------------------------------------------------------------- numbers that are none

TEST(TNurbs6D, APoseThatIsNotFiniteRaisesNamesItAndChangesNothing) {
  for (const double bad : {kNoNumber, kInfinity, -kInfinity}) {
    for (int at = 0; at < 5; ++at) {
      for (int item = 0; item < 6; ++item) {
        TPoint6DList poses = SomePoses(5);
        poses[at].Items(item) = bad;
        const std::string number = "\\b" + std::to_string(at) + "\\b";
        ExpectFitRaises(poses, kAllMethods.at(static_cast<std::size_t>(item % 3)), ContainsRegex(number));
      }
    }
  }
}

TEST(TNurbs6D, CoordinatesWhoseSquaresOverflowRaiseAndChangeNothing) {
  for (const double size : {1e155, 1e200, std::numeric_limits<double>::max()}) {
    for (int at = 0; at < 5; ++at) {
      TPoint6DList poses = SomePoses(5);
      poses[at].Z = size;
      for (const TParalizeMethod method : kAllMethods) ExpectFitRaises(poses, method, Not(HasSubstr("distance is 0")));
    }
  }
}

// Up to here the squares do not overflow, but those of the distance between two poses may.
TEST(TNurbs6D, PosesOnOppositeSidesWhoseDistanceOverflowsRaiseAndChangeNothing) {
  TPoint6DList poses;
  for (int i = 0; i < 5; ++i) poses.Add(i % 2 == 0 ? -1e154 : 1e154, i, 0);
  for (const TParalizeMethod method : kAllMethods) ExpectFitRaises(poses, method, HasSubstr("point 0 "));
}

// ---------------------------------------------------------------------------------------------- spans too short

/// Five poses, the neighbours First and First + 1 a ten-millionth of the path apart.
TPoint6DList PosesWithAShortStep(int First) {
  TPoint6DList poses;
  double x = 0;
  for (int i = 0; i < 5; ++i) {
    poses.Add(x, 0, 0);
    x += i == First ? 2e-6 : 5.0;
  }
  return poses;
}

TEST(TNurbs6D, NeighboursCloserThanAMillionthOfThePathRaiseAndAreNamed) {
  for (int first = 0; first < 4; ++first) {
    const std::string both = "\\b" + std::to_string(first) + "\\b.*\\b" + std::to_string(first + 1) + "\\b";
    ExpectFitRaises(PosesWithAShortStep(first), mChord,
                    testing::AllOf(ContainsRegex(both), Not(HasSubstr("distance is 0"))));
  }
}

TEST(TNurbs6D, AShortStepIsFittedWhereItsParametersAreFarEnoughApart) {
  for (int first = 0; first < 4; ++first) {
    const TPoint6DList poses = PosesWithAShortStep(first);
    for (const TParalizeMethod method : {mEqually, mCentripetal}) {
      const TNurbs6D curve = CurveThrough(poses, method);
      for (int i = 0; i < 5; ++i) {
        EXPECT_THAT(curve.EvalPoint(curve.BasicFun().Items(i + 3)), IsNearPose(poses[i], 1e-12));
      }
    }
  }
}

// Over a million poses the even step from knot to knot is below 1e-6.
TEST(TNurbs6D, TooManyPosesForTheUnitIntervalRaise) {
  TPoint6DList poses;
  poses.Reserve(1100000);
  for (int i = 0; i < 1100000; ++i) poses.Add(1e-3 * i, 0, 0);
  TNurbs6D curve = UsedCurve();
  const TCurveState before = StateOf(curve);
  for (const TParalizeMethod method : kAllMethods) {
    EXPECT_THAT(Calling([&] { curve.CreateCross(&poses, method); }), RaisesGeneralError(_));
    EXPECT_THAT(curve, HasState(before));
  }
}

// ---------------------------------------------------------------------------------------------- the steps of a fit

TEST(TNurbs6D, ParametersWithoutAPlaceForEveryPoseRaise) {
  const TPoint6DList poses = SomePoses(5);
  for (const TParalizeMethod method : kAllMethods) {
    std::array<double, 4> t = {7, 7, 7, 7};
    double length = 7;
    EXPECT_THAT(Calling([&] { TNurbs6D::CurveParalize(poses, t, length, method); }), RaisesGeneralError(_));
    EXPECT_THAT(Calling([&] { TNurbs6D::CurveParalize(poses, {}, length, method); }), RaisesGeneralError(_));
    EXPECT_THAT(t, ElementsAre(7, 7, 7, 7));
    EXPECT_EQ(length, 7);
  }
}

TEST(TNurbs6D, FewerThanTwoPosesHaveNoParameters) {
  for (const int count : {0, 1}) {
    const TPoint6DList poses = SomePoses(count);
    for (const TParalizeMethod method : kAllMethods) {
      std::array<double, 2> t{};
      double length = 0;
      EXPECT_FALSE(TNurbs6D::CurveParalize(poses, t, length, method));
    }
  }
}

TEST(TNurbs6D, SolveTridiagonalRaisesForArraysThatAreTooShortAndTouchesNothing) {
  const TPoint6DList Q = SomePoses(5);
  const TNurbs6D curve = CurveThrough(Q);
  const std::span<const double> U = curve.BasicFun().uArr();
  std::vector<TPoint6D> P(curve.pointArr().begin(), curve.pointArr().end());
  P[2] = P[3] = P[4] = TPoint6D::FOnes;
  const std::vector<TPoint6D> before = P;
  const auto expectRaises = [&](int n, const TPoint6DList& Poses, std::span<const double> Knots,
                                std::span<TPoint6D> Places) {
    EXPECT_THAT(Calling([&] { TNurbs6D::SolveTridiagonal(n, Poses, Knots, Places); }), RaisesGeneralError(_))
        << "n = " << n;
    EXPECT_TRUE(std::ranges::equal(P, before, IsSamePose)) << "n = " << n;
  };
  for (const int n : {2, 1, 0, -1, 5, 6, kSmallestInt, kLargestInt, kLargestInt - 6}) expectRaises(n, Q, U, P);
  expectRaises(4, SomePoses(4), U, P);
  expectRaises(4, Q, U.first(10), P);
  expectRaises(4, Q, U, std::span(P).first(6));
  EXPECT_NO_THROW(TNurbs6D::SolveTridiagonal(4, Q, U, P));
  EXPECT_TRUE(std::ranges::equal(P, curve.pointArr(), IsSamePose));
}

TEST(TNurbs6D, SolveTridiagonalNamesTheTwoPosesWhoseKnotsAreTooCloseAndTouchesNothing) {
  const TPoint6DList Q = SomePoses(6);
  for (int first = 1; first < 5; ++first) {
    std::vector<double> U = {0, 0, 0, 0, 0.2, 0.4, 0.6, 0.8, 1, 1, 1, 1};
    const auto at = static_cast<std::size_t>(first + 3);
    if (first < 4) U[at + 1] = U[at] + 5e-7;
    if (first == 4) U[at] = 1 - 5e-7;
    std::vector<TPoint6D> P(8, TPoint6D::FOnes);
    const std::string both = "\\b" + std::to_string(first) + "\\b.*\\b" + std::to_string(first + 1) + "\\b";
    EXPECT_THAT(Calling([&] { TNurbs6D::SolveTridiagonal(5, Q, U, P); }), RaisesGeneralError(ContainsRegex(both)))
        << first;
    for (const TPoint6D& point : P) EXPECT_THAT(point, IsExactPose(TPoint6D::FOnes)) << first;
  }
}

TEST(TNurbs6D, SolveTridiagonalRaisesForKnotsThatAreNoNumbers) {
  const TPoint6DList Q = SomePoses(6);
  for (const double bad : {kNoNumber, kInfinity}) {
    std::vector<double> U = {0, 0, 0, 0, 0.2, 0.4, 0.6, 0.8, 1, 1, 1, 1};
    U[6] = bad;
    std::vector<TPoint6D> P(8, TPoint6D::FOnes);
    EXPECT_THAT(Calling([&] { TNurbs6D::SolveTridiagonal(5, Q, U, P); }), RaisesGeneralError(_));
    for (const TPoint6D& point : P) EXPECT_THAT(point, IsExactPose(TPoint6D::FOnes));
  }
}

// ---------------------------------------------------------------------------------------------- given control points

TEST(TNurbs6D, ListsThatAreNullOrDoNotFitAreRefused) {
  TNurbs6D curve = UsedCurve();
  const TCurveState before = StateOf(curve);
  const TDoubleList knots{0, 0, 0, 0, 0.5, 1, 1, 1, 1};
  const TList<TPoint6D> points{std::span<const TPoint6D>(NumberedPoints(5))};
  const TList<TPoint6D> fewer{std::span<const TPoint6D>(NumberedPoints(4))};
  const TList<TPoint6D> more{std::span<const TPoint6D>(NumberedPoints(6))};
  EXPECT_FALSE(curve.CreateByCtlPoints(nullptr, &points, 5));
  EXPECT_FALSE(curve.CreateByCtlPoints(&knots, nullptr, 5));
  EXPECT_FALSE(curve.CreateByCtlPoints(&knots, &fewer, 4));
  EXPECT_FALSE(curve.CreateByCtlPoints(&knots, &more, 5));
  EXPECT_FALSE(curve.CreateByCtlPoints(std::span<const double>(knots), std::span<const TPoint6D>(fewer), 4));
  EXPECT_FALSE(curve.CreateByCtlPoints(std::span<const double>(knots), std::span<const TPoint6D>(more), 5));
  EXPECT_FALSE(curve.CreateByCtlPoints(std::span<const double>(), std::span<const TPoint6D>(points), 5));
  EXPECT_THAT(curve, HasState(before));
}

TEST(TNurbs6D, APointCountThatDoesNotFitRaisesAndKeepsTheCurve) {
  TNurbs6D curve = UsedCurve();
  const TCurveState before = StateOf(curve);
  const std::vector<double> knots = ClampedKnots(5);
  const std::vector<TPoint6D> points = NumberedPoints(5);
  const TDoubleList knotList{std::span<const double>(knots)};
  const TList<TPoint6D> pointList{std::span<const TPoint6D>(points)};
  for (const int count : {-1, 6, kSmallestInt, kLargestInt, kLargestInt - 3}) {
    EXPECT_THAT(Calling([&] { curve.CreateByCtlPoints(knots, points, count); }), RaisesGeneralError(_)) << count;
    EXPECT_THAT(Calling([&] { curve.CreateByCtlPoints(&knotList, &pointList, count); }), RaisesGeneralError(_))
        << count;
    EXPECT_THAT(curve, HasState(before)) << count;
  }
}

TEST(TNurbs6D, TooFewControlPointsForACubicRaiseOnlyWhereASpanIsNeeded) {
  for (int count = 0; count < 4; ++count) {
    const std::vector<double> knots(static_cast<std::size_t>(count + 4), 0.5);
    TNurbs6D curve;
    ASSERT_TRUE(curve.CreateByCtlPoints(knots, NumberedPoints(count), count));
    EXPECT_THAT(Calling([&] { curve.EvalPoint(0.5); }), RaisesGeneralError(_)) << count;
    std::array<TPoint6D, 4> CK;
    EXPECT_THAT(Calling([&] { curve.CurveDerivsAlg1(0.5, CK); }), RaisesGeneralError(_)) << count;
    EXPECT_THAT(Calling([&] { curve.InitLengthByUArray(); }), RaisesGeneralError(_)) << count;
    EXPECT_EQ(curve.SUTable().Count(), 0);
    if (count == 0) continue;
    EXPECT_EQ(curve.EvalPoint(1).X, count);
  }
}

// ---------------------------------------------------------------------------------------------- evaluation

TEST(TNurbs6D, WithoutControlPointsWhateverNeedsOneRaises) {
  TNurbs6D curve;
  for (const double u : {-1.0, 0.0, 0.5, 1.0, 2.0, kNoNumber}) {
    EXPECT_THAT(Calling([&] { curve.EvalPoint(u); }), RaisesGeneralError(_)) << u;
    std::array<TPoint6D, 4> CK;
    CK.fill(TPoint6D::FOnes);
    EXPECT_THAT(Calling([&] { curve.CurveDerivsAlg1(u, CK); }), RaisesGeneralError(_)) << u;
    for (const TPoint6D& point : CK) EXPECT_THAT(point, IsExactPose(TPoint6D::FOnes));
  }
  EXPECT_THAT(Calling([&] { curve.GetIsClosed(); }), RaisesGeneralError(_));
  EXPECT_THAT(Calling([&] { curve.Reverse(); }), RaisesGeneralError(_));
  EXPECT_THAT(curve, HasState(StateOf(TNurbs6D())));
}

TEST(TNurbs6D, TooFewPlacesForTheDerivativesRaise) {
  const TNurbs6D curve = UsedCurve();
  std::array<TPoint6D, 3> CK;
  CK.fill(TPoint6D::FOnes);
  EXPECT_THAT(Calling([&] { curve.CurveDerivsAlg1(0.5, CK); }), RaisesGeneralError(_));
  EXPECT_THAT(Calling([&] { curve.CurveDerivsAlg1(0.5, {}); }), RaisesGeneralError(_));
  for (const TPoint6D& point : CK) EXPECT_THAT(point, IsExactPose(TPoint6D::FOnes));
}

TEST(TNurbs6D, DerivativesAtNoNumberAreNoNumbersOrTheGeneralError) {
  const TNurbs6D curve = UsedCurve();
  std::array<TPoint6D, 4> CK;
  const bool raises = GeneralErrorOf([&] { curve.CurveDerivsAlg1(kNoNumber, CK); }).has_value();
  EXPECT_TRUE(raises || std::isnan(CK[0].X));
}

TEST(TNurbs6D, KnotsThatAreNotFiniteEndWithAPointOrTheGeneralErrorAndAreNotMeasured) {
  for (std::size_t at = 0; at < 9; ++at) {
    for (const double bad : {kNoNumber, kInfinity, -kInfinity}) {
      std::vector<double> knots = ClampedKnots(5);
      knots[at] = bad;
      TNurbs6D curve = UsedCurve();
      ASSERT_TRUE(curve.CreateByCtlPoints(knots, NumberedPoints(5), 5));
      const TCurveState before = StateOf(curve);
      std::array<TPoint6D, 4> CK;
      for (const double u : {0.1, 0.5, 0.9}) {
        GeneralErrorOf([&] { curve.EvalPoint(u); });
        GeneralErrorOf([&] { curve.CurveDerivsAlg1(u, CK); });
      }
      EXPECT_THAT(Calling([&] { curve.InitLengthByUArray(); }),
                  RaisesGeneralError(HasSubstr("knot " + std::to_string(at))));
      EXPECT_THAT(curve, HasState(before));
    }
  }
}

TEST(TNurbs6D, FallingKnotsAreNotMeasured) {
  TNurbs6D curve = UsedCurve();
  ASSERT_TRUE(
      curve.CreateByCtlPoints(std::array{0.0, 0.0, 0.0, 0.0, 0.6, 0.3, 1.0, 1.0, 1.0, 1.0}, NumberedPoints(6), 6));
  const TCurveState before = StateOf(curve);
  EXPECT_THAT(Calling([&] { curve.InitLengthByUArray(); }), RaisesGeneralError(HasSubstr("knot 5 ")));
  EXPECT_THAT(curve, HasState(before));
}

TEST(TNurbs6D, AParameterBeforeTheFirstKnotRaises) {
  TNurbs6D curve;
  ASSERT_TRUE(curve.CreateByCtlPoints(std::array{0.25, 0.25, 0.25, 0.25, 1.0, 1.0, 1.0, 1.0}, NumberedPoints(4), 4));
  for (const double u : {0.1, std::nextafter(0.25, 0)}) {
    EXPECT_THAT(Calling([&] { curve.EvalPoint(u); }), RaisesGeneralError(HasSubstr("before the first knot"))) << u;
  }
  EXPECT_EQ(curve.EvalPoint(0.25).X, 1);
  EXPECT_EQ(curve.EvalPoint(0).X, 1);
}

}  // namespace
}  // namespace ZORBase
