// Arc length: the table of a curve, and the way from length to parameter and back.
#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>
#include <ZORBase/common/Cadtypes.h>

#include <sys/resource.h>

#include <cstdlib>
#include <fstream>
#include <limits>
#include <new>

#include "CurveTestSupport.h"

namespace ZORBase {
namespace {

using Test::AnyMethod;
using Test::AnyPoses;
using Test::Calling;
using Test::ClampedKnots;
using Test::CurveOf;
using Test::CurveThrough;
using Test::HasState;
using Test::IsExactPose;
using Test::kAllMethods;
using Test::NumberedPoints;
using Test::RaisesGeneralError;
using Test::RandomPoses;
using Test::StateOf;
using Test::TCurveState;
using Test::TPathKind;
using testing::_;
using testing::AllOf;
using testing::HasSubstr;
using testing::Value;

TNurbs6D RandomCurve(TPathKind Kind, int Count) {
  std::mt19937_64 random(20240619);
  return CurveThrough(RandomPoses(random, Kind, Count));
}

/// A straight curve along X from 0 to Length with constant speed and one knot span.
TNurbs6D Segment(double Length) {
  std::vector<TPoint6D> points = NumberedPoints(4);
  for (int i = 0; i < 4; ++i) points[static_cast<std::size_t>(i)].X = Length * i / 3;
  return CurveOf(points);
}

// ---------------------------------------------------------------------------------------------- the table

RC_GTEST_PROP(TNurbs6D, TheTableStartsAtZeroAndEndsAtTheEndOfTheCurve, ()) {
  const TNurbs6D curve = CurveThrough(*AnyPoses(), *AnyMethod());
  const TSULine first = curve.SUTable().First();
  const TSULine last = curve.SUTable().Last();
  RC_ASSERT(first.S == 0);
  RC_ASSERT(first.u == 0);
  RC_ASSERT(last.u == 1);
  RC_ASSERT(last.S == curve.CurveLength());
  RC_ASSERT(Value(first.pos6d, IsExactPose(curve.EvalPoint(0))));
  RC_ASSERT(Value(last.pos6d, IsExactPose(curve.EvalPoint(1))));
}

RC_GTEST_PROP(TNurbs6D, TheTableNeverFallsAndRisesWhereTheCurveMoves, ()) {
  const TNurbs6D curve = CurveThrough(*AnyPoses(), *AnyMethod());
  const TSUTable& table = curve.SUTable();
  for (int i = 1; i < table.Count(); ++i) {
    const double step = (table[i].pos6d - table[i - 1].pos6d).Mag();
    RC_ASSERT(table[i].u >= table[i - 1].u);
    RC_ASSERT((table[i].S > table[i - 1].S) == (step != 0));
    RC_ASSERT(table[i].S >= table[i - 1].S);
    RC_ASSERT(table[i].S == table[i - 1].S + step);
  }
}

// The chord of a knot interval is cut into the nearest whole number of steps of 0.03, so an even piece has steps of 0.02 to
// 0.045. A straight line of constant speed is even.
TEST(TNurbs6D, RowsAreThreeHundredthsApart) {
  TPoint6DList poses;
  for (const double x : {0.0, 0.5, 1.3, 2.0, 2.1}) poses.Add(x, 0, 0);
  const TNurbs6D curve = CurveThrough(poses);
  const TSUTable& table = curve.SUTable();
  // 1 + three empty intervals at either end + 0.5, 0.8, 0.7 and 0.1 in steps of 0.03
  ASSERT_EQ(table.Count(), 1 + 3 + 17 + 27 + 23 + 3 + 3);
  for (int i = 4; i < table.Count() - 3; ++i) EXPECT_NEAR(table[i].S - table[i - 1].S, 0.03, 0.004) << i;
}

TEST(TNurbs6D, EmptyKnotIntervalsAddOneRowEach) {
  const TNurbs6D curve = [] {
    TNurbs6D result;
    result.CreateByCtlPoints(std::array{0.0, 0.0, 0.0, 0.0, 0.5, 0.5, 1.0, 1.0, 1.0, 1.0}, NumberedPoints(6), 6);
    result.InitLengthByUArray();
    return result;
  }();
  const TSUTable& table = curve.SUTable();
  for (int i = 0; i <= 3; ++i) {
    EXPECT_EQ(table[i].S, 0);
    EXPECT_EQ(table[i].u, 0);
    EXPECT_EQ(table[table.Count() - 1 - i].S, table.Last().S);
    EXPECT_EQ(table[table.Count() - 1 - i].u, 1);
  }
  const auto isMiddle = [](const TSULine& Row) { return Row.u == 0.5; };
  EXPECT_EQ(std::ranges::count_if(table, isMiddle), 2);
}

TEST(TNurbs6D, HalfAStepIsRoundedToTheEvenNumberOfSteps) {
  const auto stepsOf = [](double Length) {
    TNurbs6D curve = Segment(Length);
    curve.InitLengthByUArray();
    return curve.SUTable().Count() - 7;  // the first row and three empty intervals at either end
  };
  for (const auto& [steps, expected] : {std::pair(2.5, 2), {3.5, 4}, {8.5, 8}, {9.5, 10}, {14.5, 14}}) {
    const double length = 0.03 * steps;
    ASSERT_EQ(length * 3 / 3 / 0.03, steps) << "rounding spoils the half step";
    EXPECT_EQ(stepsOf(length), expected);
  }
  EXPECT_EQ(stepsOf(0.074), 2);
  EXPECT_EQ(stepsOf(0.076), 3);
  EXPECT_EQ(stepsOf(0.015), 1);
  EXPECT_EQ(stepsOf(0.001), 1);
}

// The chords of the samples cut every corner, so the table is never longer than the curve; on an arc of radius r a chord c
// is short by c^3 / (24 r^2).
TEST(TNurbs6D, TheLengthIsThatOfTheIntegralOfTheSpeed) {
  const TNurbs6D curve = RandomCurve(TPathKind::Walk, 20);
  const auto speed = [&curve](double u) {
    std::array<TPoint6D, 4> CK;
    curve.CurveDerivsAlg1(u, CK);
    return CK[1].Mag();
  };
  double length = 0;
  for (int i = 3; i + 4 < curve.BasicFun().uCount(); ++i) {
    const double a = curve.BasicFun().Items(i);
    const double b = curve.BasicFun().Items(i + 1);
    for (int part = 0; part < 8; ++part) {
      const auto interval = TGeInterval::Create(a + (b - a) * part / 8, a + (b - a) * (part + 1) / 8, 1e-12);
      length += TNumeric::GaussQuadrature(speed, interval, 16);
    }
  }
  EXPECT_LE(curve.CurveLength(), length * (1 + 1e-12));
  EXPECT_NEAR(curve.CurveLength(), length, 1e-3 * length);
}

TEST(TNurbs6D, ALineIsAsLongAsItsChord) {
  TPoint6DList poses;
  for (const double at : {0.0, 1.0, 2.5, 3.0, 5.0}) poses.Add(3 * at, 4 * at, 0, 0, 12 * at, 0);
  for (const TParalizeMethod method : kAllMethods) {
    EXPECT_NEAR(CurveThrough(poses, method).CurveLength(), 65, 1e-11);
  }
}

TEST(TNurbs6D, MeasuringAgainGivesTheSameTable) {
  TNurbs6D curve = RandomCurve(TPathKind::Walk, 8);
  const TCurveState before = StateOf(curve);
  curve.InitLengthByUArray();
  EXPECT_THAT(curve, HasState(before));
}

// ---------------------------------------------------------------------------------------------- length and parameter

TEST(TNurbs6D, LengthOfParamIsTheDifferenceOfTwoLengths) {
  const TNurbs6D curve = RandomCurve(TPathKind::Walk, 10);
  EXPECT_EQ(curve.LengthOfParam(0, 1), curve.CurveLength());
  EXPECT_EQ(curve.LengthOfParam(1, 0), -curve.CurveLength());
  EXPECT_EQ(curve.GetCurveLength(), curve.CurveLength());
  EXPECT_EQ(curve.LengthOfParam(0.25, 0.75), curve.GetSByU(0.75) - curve.GetSByU(0.25));
  EXPECT_EQ(curve.LengthOfParam(0.4, 0.4), 0);
  EXPECT_EQ(curve.LengthOfParam(-1, 2), curve.CurveLength());
}

TEST(TNurbs6D, ParamOfLengthIsThatOfTheTableWithAndWithoutACursor) {
  const TNurbs6D curve = RandomCurve(TPathKind::Walk, 10);
  EXPECT_EQ(curve.ParamOfLength(0), 0);
  EXPECT_EQ(curve.ParamOfLength(-1), 0);
  EXPECT_EQ(curve.ParamOfLength(curve.CurveLength()), 1);
  EXPECT_EQ(curve.ParamOfLength(1e9), 1);
  TSUTable::TCursor cursor;
  for (double s = -0.01; s < curve.CurveLength() + 0.02; s += 0.007) {
    ASSERT_EQ(curve.ParamOfLength(s), curve.SUTable().GetUByS(s));
    ASSERT_EQ(curve.ParamOfLength(s, cursor), curve.GetUByS(s));
  }
}

// No row is near to no number, so the bisection ends at the last two rows; those of a fit are the same.
TEST(TNurbs6D, NoNumberAsALengthOrParameterRaises) {
  const TNurbs6D curve = RandomCurve(TPathKind::Walk, 10);
  EXPECT_THAT(Calling([&] { curve.GetUByS(std::nan("")); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
  EXPECT_THAT(Calling([&] { curve.GetSByU(std::nan("")); }), RaisesGeneralError("CalcuHermiteS: The dividend is 0"));
}

/// How far s -> u -> s may miss around S. Between two rows both cubics run through the rows, with the slopes m0 and m1 there
/// way and 1/m0 and 1/m1 back. With h the length of the interval and d the largest relative deviation of the slopes from
/// the slope of the interval's chord, at most 1/2, the cubics undo each other to within h d^2: what is of first order in d
/// cancels. A value within 1e-7 of a row counts as the row, in u as in S.
double RoundTripBound(const TSUTable& Table, double S) {
  int i = 0;
  while (i + 2 < Table.Count() && Table[i + 1].S <= S) ++i;
  while (i > 0 && Table[i].S == Table[i + 1].S) --i;
  const auto slope = [&](int From, int To) { return (Table[To].S - Table[From].S) / (Table[To].u - Table[From].u); };
  const double h = Table[i + 1].S - Table[i].S;
  const double chord = slope(i, i + 1);
  const double before = slope(std::max(i - 1, 0), i + 1);
  const double after = slope(i, std::min(i + 2, Table.Count() - 1));
  const double d = std::max({std::fabs(before / chord - 1), std::fabs(after / chord - 1),  //
                             std::fabs(chord / before - 1), std::fabs(chord / after - 1)});
  const double snapped = 1e-7 + 1e-7 * std::max({chord, before, after}) * 1.5;
  return (d <= 0.5 ? h * d * d : h) + snapped + 1e-14 * Table.Last().S;
}

RC_GTEST_PROP(TNurbs6D, FromLengthToParameterAndBackCloses, ()) {
  const TNurbs6D curve = CurveThrough(*AnyPoses(), *AnyMethod());
  const double part = *rc::gen::inRange(0, 1001) / 1000.0;
  const double s = part * curve.CurveLength();
  RC_ASSERT(std::fabs(curve.GetSByU(curve.GetUByS(s)) - s) <= RoundTripBound(curve.SUTable(), s));
}

TEST(TNurbs6D, OnASmoothPathLengthToParameterAndBackClosesWithinAMillionthOfARow) {
  TPoint6DList poses;
  for (int i = 0; i <= 16; ++i) poses.Add(std::cos(i / 4.0), std::sin(i / 4.0), i / 8.0);
  const TNurbs6D curve = CurveThrough(poses);
  for (int i = 0; i <= 1000; ++i) {
    const double s = curve.CurveLength() * i / 1000;
    EXPECT_NEAR(curve.GetSByU(curve.GetUByS(s)), s, 1e-6) << s;
  }
}

TEST(TNurbs6D, EqualLengthsAreEqualStepsOnASmoothPath) {
  TPoint6DList poses;
  for (int i = 0; i <= 32; ++i) poses.Add(50 * std::cos(i / 10.0), 50 * std::sin(i / 10.0), i);
  const TNurbs6D curve = CurveThrough(poses);
  constexpr int kSteps = 200;
  const double step = curve.CurveLength() / kSteps;
  TPoint6D before = curve.EvalPoint(0);
  for (int i = 1; i <= kSteps; ++i) {
    const TPoint6D point = curve.EvalPoint(curve.ParamOfLength(i * step));
    EXPECT_NEAR((point - before).Mag(), step, 1e-3 * step);
    before = point;
  }
}

// ---------------------------------------------------------------------------------------------- curves without a table

TEST(TNurbs6D, WithoutATableThereIsNoLength) {
  const TNurbs6D given = CurveOf(NumberedPoints(5));
  const TNurbs6D empty;
  for (const TNurbs6D* curve : {&given, &empty}) {
    EXPECT_THAT(Calling([&] { curve->CurveLength(); }), RaisesGeneralError(_));
    EXPECT_THAT(Calling([&] { curve->GetCurveLength(); }), RaisesGeneralError(_));
    EXPECT_THAT(Calling([&] { curve->GetSByU(0.5); }), RaisesGeneralError("List index out of bounds (0)"));
    EXPECT_THAT(Calling([&] { curve->GetUByS(0.5); }), RaisesGeneralError("List index out of bounds (0)"));
    EXPECT_THAT(Calling([&] { curve->LengthOfParam(0, 1); }), RaisesGeneralError(_));
    EXPECT_THAT(Calling([&] { curve->ParamOfLength(1); }), RaisesGeneralError(_));
  }
}

// ---------------------------------------------------------------------------------------------- too long to measure

/// The largest size that the process ever had, in kilobytes; 0 where the system does not tell.
long PeakKilobytes() {
  std::ifstream status("/proc/self/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("VmPeak:")) return std::stol(line.substr(7));
  }
  return 0;
}

TEST(TNurbs6D, ATableOfMoreThan64MillionRowsIsRefusedWithItsFiguresBeforeAnythingIsAllocated) {
  TPoint6DList poses;
  for (int i = 0; i < 4; ++i) poses.Add(700000.0 * i, 0, 0);
  TNurbs6D curve = RandomCurve(TPathKind::Walk, 8);
  const TCurveState before = StateOf(curve);
  const long peakBefore = PeakKilobytes();
  // three chords of 23333333 steps, six empty intervals and the first row
  EXPECT_THAT(Calling([&] { curve.CreateCross(&poses, mChord); }),
              RaisesGeneralError(AllOf(HasSubstr("2100000"), HasSubstr("0.03"), HasSubstr("70000006"))));
  EXPECT_LT(PeakKilobytes() - peakBefore, 100000);
  EXPECT_THAT(curve, HasState(before));
}

/// Four poses on a line whose table has Rows rows with chord parameters: the chords share all rows but seven.
TPoint6DList PosesWithRows(int Rows) {
  const int steps = Rows - 7;
  TPoint6DList poses;
  for (const int before : {0, steps / 3, 2 * (steps / 3), steps}) poses.Add(0.03 * before, 0, 0);
  return poses;
}

TEST(TNurbs6D, TheTableOfPosesWithRowsHasThatManyRows) {
  for (const int rows : {1000, 1001, 1002}) EXPECT_EQ(CurveThrough(PosesWithRows(rows)).SUTable().Count(), rows);
}

TEST(TNurbs6D, ATableOfOneRowMoreThan64MillionIsRefused) {
  const TPoint6DList poses = PosesWithRows(64'000'001);
  TNurbs6D curve;
  EXPECT_THAT(Calling([&] { curve.CreateCross(&poses, mChord); }), RaisesGeneralError(HasSubstr("64000001")));
}

#if defined(__linux__) && !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) && !defined(__clang__)
// 64 million rows are let through to the allocation. A child process that may not have the 5 GB ends there at once.
TEST(TNurbs6DDeathTest, ATableOf64MillionRowsIsNotRefused) {
  const auto fitInLittleMemory = [] {
    constexpr rlimit kLimit = {rlim_t{2} << 30U, rlim_t{2} << 30U};
    const TPoint6DList poses = PosesWithRows(64'000'000);
    TNurbs6D curve;
    setrlimit(RLIMIT_AS, &kLimit);
    try {
      curve.CreateCross(&poses, mChord);
    } catch (const std::bad_alloc&) {
      std::exit(0);
    }
    std::exit(1);
  };
  EXPECT_EXIT(fitInLittleMemory(), testing::ExitedWithCode(0), "");
}
#endif

TEST(TNurbs6D, MeasuringGivenControlPointsThatAreTooLongKeepsTheTable) {
  TNurbs6D curve = RandomCurve(TPathKind::Walk, 8);
  std::vector<TPoint6D> points = NumberedPoints(5);
  points[4].X = 2e6;
  ASSERT_TRUE(curve.CreateByCtlPoints(ClampedKnots(5), points, 5));
  const TCurveState before = StateOf(curve);
  EXPECT_THAT(Calling([&] { curve.InitLengthByUArray(); }), RaisesGeneralError(HasSubstr("0.03")));
  EXPECT_THAT(curve, HasState(before));
}

TEST(TNurbs6D, PathsOfAnyLengthAreRefusedWithoutCountingPastAnyNumber) {
  for (const double size : {1e7, 1e15, 1e19, 1e25, 1e100, 1e153}) {
    TPoint6DList poses;
    for (int i = 0; i < 4; ++i) poses.Add(size * i, 0, 0);
    TNurbs6D curve;
    const TCurveState before = StateOf(curve);
    EXPECT_THAT(Calling([&] { curve.CreateCross(&poses, mChord); }), RaisesGeneralError(HasSubstr("0.03"))) << size;
    EXPECT_THAT(curve, HasState(before));
  }
}

TEST(TNurbs6D, ControlPointsThatAreNotFiniteAreNotMeasured) {
  for (const double bad : {std::numeric_limits<double>::infinity(), std::nan(""), 1e160}) {
    std::vector<TPoint6D> points = NumberedPoints(5);
    points[2].B = bad;
    TNurbs6D curve = RandomCurve(TPathKind::Walk, 8);
    ASSERT_TRUE(curve.CreateByCtlPoints(ClampedKnots(5), points, 5));
    const TCurveState before = StateOf(curve);
    EXPECT_THAT(Calling([&] { curve.InitLengthByUArray(); }), RaisesGeneralError(_)) << bad;
    EXPECT_THAT(curve, HasState(before));
  }
}

TEST(TNurbs6D, WithoutControlPointsThereIsNothingToMeasure) {
  TNurbs6D curve;
  EXPECT_THAT(Calling([&] { curve.InitLengthByUArray(); }), RaisesGeneralError(_));
  EXPECT_EQ(curve.SUTable().Count(), 0);
}

}  // namespace
}  // namespace ZORBase
