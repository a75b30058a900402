// The fast curve against the plain one of PlainCurve.h: every number the same, bit for bit.
#include <limits>

#include "CurveTestSupport.h"
#include "PlainCurve.h"

namespace ZORBase::Test {
namespace {

bool IsSame(const TPoint6D& P, const TPlainPose& Q) { return IsSamePose(P, TPoint6D::FromArray(Q)); }

/// What Calculation gives; nothing when it raises the general error.
template <class TCalculation>
auto ResultOf(TCalculation&& Calculation) -> std::optional<decltype(Calculation())> {
  std::optional<decltype(Calculation())> result;
  if (GeneralErrorOf([&] { result = Calculation(); })) return std::nullopt;
  return result;
}

/// Parameters all over [-0.1, 1.1], and every knot (or Count of them) with its neighbours.
std::vector<double> SomeParameters(std::mt19937_64& Random, std::span<const double> Knots, int Count) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  std::vector<double> parameters = {0, 1, -0.0, -1, 1.5, std::nextafter(1.0, 0), std::nextafter(0.0, 1), 1e-300};
  for (int i = 0; i < Count / 4; ++i) {
    const double knot = Knots[Random() % Knots.size()];
    parameters.insert(parameters.end(), {knot, std::nextafter(knot, -infinity), std::nextafter(knot, infinity)});
  }
  for (int i = 0; i < Count / 4; ++i) parameters.push_back(Uniform(Random, -0.1, 1.1));
  return parameters;
}

void ExpectSamePoints(const TNurbs6D& Curve, const TPlainCurve& Plain, std::span<const double> Parameters) {
  std::vector<TPoint6D> points(Parameters.size());
  Curve.EvalPoints(Parameters, points);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double u = Parameters[i];
    const TPlainPose expected = Plain.EvalPoint(u);
    ASSERT_TRUE(IsSame(Curve.EvalPoint(u), expected)) << "at " << u;
    ASSERT_TRUE(IsSame(points[i], expected)) << "at " << u << ", one of many";
  }
}

void ExpectSameDerivatives(const TNurbs6D& Curve, const TPlainCurve& Plain, std::span<const double> Parameters) {
  for (const double u : Parameters) {
    std::array<TPoint6D, 4> CK;
    Curve.CurveDerivsAlg1(u, CK);
    const auto expected = Plain.CurveDerivsAlg1(u);
    for (std::size_t k = 0; k < 4; ++k) ASSERT_TRUE(IsSame(CK[k], expected[k])) << "derivative " << k << " at " << u;
  }
}

void ExpectSameTable(const TSUTable& Table, const TPlainTable& Plain) {
  ASSERT_EQ(Table.Count(), Plain.Rows.Count());
  for (int i = 0; i < Table.Count(); ++i) {
    ASSERT_TRUE(IsSameNumber(Table[i].S, Plain.Rows[i].S)) << "S of row " << i;
    ASSERT_TRUE(IsSameNumber(Table[i].u, Plain.Rows[i].u)) << "u of row " << i;
    ASSERT_TRUE(IsSame(Table[i].pos6d, Plain.Rows[i].P)) << "point of row " << i;
    ASSERT_TRUE(IsSame(Table[i].pos, {})) << "plane point of row " << i;
  }
}

/// Lengths or parameters close to rows of the table and all over it, and rows themselves.
std::vector<double> SomeKeys(std::mt19937_64& Random, const TPlainTable& Plain, double TPlainRow::*Key, int Count) {
  const double last = Plain.Rows.Last().*Key;
  std::vector<double> keys;
  for (int i = 0; i < Count; ++i) {
    const double atRow = Plain.Rows[static_cast<int>(Random() % Plain.Rows.size())].*Key;
    keys.insert(keys.end(), {atRow, atRow + Uniform(Random, -3e-7, 3e-7), last * Uniform(Random, -0.1, 1.1)});
  }
  return keys;
}

/// LookUp in the library's table agrees with LookUp in the plain one; with a cursor too, where the keys of the table rise.
template <class TLookUp>
void ExpectSameLookUps(const TSUTable& Table, const TPlainTable& Plain, double TPlainRow::*Key,
                       std::span<const double> Keys, TLookUp&& LookUp) {
  const auto isSame = [](std::optional<double> A, std::optional<double> B) {
    return A.has_value() == B.has_value() && (!A || IsSameNumber(*A, *B));
  };
  const bool isRising = std::ranges::is_sorted(Plain.Rows, {}, Key);
  TSUTable::TCursor cursor;
  for (const double key : Keys) {
    const std::optional<double> expected = ResultOf([&] { return LookUp(Plain, key); });
    ASSERT_TRUE(isSame(ResultOf([&] { return LookUp(Table, key); }), expected)) << key;
    if (!isRising) continue;
    ASSERT_TRUE(isSame(ResultOf([&] { return LookUp(Table, key, cursor); }), expected)) << key << " with a cursor";
  }
}

void ExpectSameLookUps(std::mt19937_64& Random, const TNurbs6D& Curve, const TPlainTable& Plain, int Count) {
  const auto toParam = [](const auto& Table, auto&&... Key) { return Table.GetUByS(Key...); };
  const auto toLength = [](const auto& Table, auto&&... Key) { return Table.GetSByU(Key...); };
  const TSUTable& table = Curve.SUTable();
  ExpectSameLookUps(table, Plain, &TPlainRow::S, SomeKeys(Random, Plain, &TPlainRow::S, Count), toParam);
  ExpectSameLookUps(table, Plain, &TPlainRow::u, SomeKeys(Random, Plain, &TPlainRow::u, Count), toLength);
}

void ExpectSameFit(std::mt19937_64& Random, const TPoint6DList& Poses, TParalizeMethod Method, int Count) {
  const TNurbs6D curve = CurveThrough(Poses, Method);
  const TPlainCurve plain = PlainFit(Poses, Method);
  ASSERT_TRUE(std::ranges::equal(curve.BasicFun().uArr(), plain.Basis.U, IsSameNumber)) << "knots";
  ASSERT_TRUE(std::ranges::equal(curve.pointArr(), plain.P, IsSame)) << "control points";
  ExpectSameTable(curve.SUTable(), plain.Table);
  const std::vector<double> parameters = SomeParameters(Random, curve.BasicFun().uArr(), Count);
  ExpectSamePoints(curve, plain, parameters);
  ExpectSameDerivatives(curve, plain, parameters);
  ExpectSameLookUps(Random, curve, plain.Table, Count / 3);
}

class AFittedCurve : public testing::TestWithParam<TPathKind> {};

TEST_P(AFittedCurve, IsThePlainOneToTheLastBit) {
  std::mt19937_64 random(20240611 + static_cast<unsigned>(GetParam()));
  for (const int count : {4, 5, 6, 7, 30, 300}) {
    const TPoint6DList poses = RandomPoses(random, GetParam(), count);
    for (const TParalizeMethod method : kAllMethods) {
      SCOPED_TRACE(testing::Message() << count << " poses, method " << method);
      ASSERT_NO_FATAL_FAILURE(ExpectSameFit(random, poses, method, CasesOf(10'000)));
    }
  }
}

std::string NameOfKind(const testing::TestParamInfo<TPathKind>& Info) {
  constexpr std::array names = {"Walk", "Closed", "Line", "Zigzag", "BigSteps", "Tangle"};
  return names.at(static_cast<std::size_t>(Info.param));
}

INSTANTIATE_TEST_SUITE_P(ThroughAPathOfEveryKind, AFittedCurve, testing::ValuesIn(kAllPathKinds), NameOfKind);

TEST(CurveAgainstPlain, MeasuredPosesGiveThePlainCurve) {
  std::mt19937_64 random(20240612);
  for (const std::string_view name : {"e387.100mm.poses.txt", "swept-plane.poses.txt"}) {
    TPoint6DList poses;
    poses.LoadFromFile(SampleFile(name));
    for (const TParalizeMethod method : kAllMethods) {
      SCOPED_TRACE(testing::Message() << name << ", method " << method);
      ASSERT_NO_FATAL_FAILURE(ExpectSameFit(random, poses, method, CasesOf(10'000)));
    }
  }
}

RC_GTEST_PROP(CurveAgainstPlain, RandomPathsGiveThePlainCurve, ()) {
  std::mt19937_64 random(*rc::gen::arbitrary<std::uint64_t>());
  ASSERT_NO_FATAL_FAILURE(ExpectSameFit(random, *AnyPoses(), *AnyMethod(), 100));
}

// ---------------------------------------------------------------------------------------------- given control points

struct TGivenKnots {
  const char* Name;
  std::vector<double> Knots;
};

const std::vector<TGivenKnots> kGivenKnots = {
    {"one span", {0, 0, 0, 0, 1, 1, 1, 1}},
    {"a double knot", {0, 0, 0, 0, 0.25, 0.5, 0.5, 1, 1, 1, 1}},
    {"a triple knot", {0, 0, 0, 0, 0.5, 0.5, 0.5, 0.75, 1, 1, 1, 1}},
    {"a break", {0, 0, 0, 0, 0.3, 0.3, 0.3, 0.3, 1, 1, 1, 1}},
    {"spans below 1e-6", {0, 0, 0, 0, 9e-7, 0.5, 0.5 + 9e-7, 0.5 + 2e-6, 1 - 5e-7, 1, 1, 1, 1}},
    {"a short domain", {0.25, 0.25, 0.25, 0.25, 0.5, 0.75, 0.75, 0.75, 0.75}},
    {"a domain that ends early", {0, 0, 0, 0, 0.25, 0.5, 0.5, 0.5, 0.5}},
    {"a loose end far behind", {0, 0, 0, 0, 0.5, 1, 1.1, 1.2, 1.3}},
    {"a long domain", {-2, -2, -2, -2, -0.5, 0.25, 0.75, 3, 3, 3, 3}},
    {"all knots equal", {0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5, 0.5}},
    {"loose ends inside", {0, 0, 0, 0, 0.1, 0.2, 0.9, 0.95, 1, 1}},
    {"not clamped", {-0.3, -0.2, -0.1, 0, 0.2, 0.5, 0.6, 1, 1.1, 1.2, 1.3}},
    {"knots on both sides of the domain", {0, 0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7, 0.8, 0.9, 1}},
    {"falling knots", {0, 0, 0, 0, 0.6, 0.3, 0.8, 1, 1, 1, 1}},
    {"knots that fall all the way", {1, 1, 1, 1, 0.6, 0.4, 0.3, 0, 0, 0, 0}},
};

TPlainCurve PlainCurveOf(std::span<const double> Knots, std::span<const TPoint6D> Points) {
  TPlainCurve plain;
  plain.Basis.U = TDoubleList(Knots);
  for (const TPoint6D& point : Points) plain.P.Add(point.ToArray());
  return plain;
}

// Where the plain bisection does not end, the library raises; everywhere else the numbers are the same.
TEST(CurveAgainstPlain, GivenKnotsOfEveryKindGiveThePlainPointsOrTheGeneralError) {
  std::mt19937_64 random(20240613);
  for (const auto& [name, knots] : kGivenKnots) {
    SCOPED_TRACE(name);
    std::vector<TPoint6D> points;
    for (std::size_t i = 0; i + 4 < knots.size(); ++i) points.push_back(RandomPose(random, 5));
    TNurbs6D curve;
    ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, static_cast<int>(points.size())));
    const TPlainCurve plain = PlainCurveOf(knots, points);
    for (const double u : SomeParameters(random, knots, 2000)) {
      const auto point = ResultOf([&] { return curve.EvalPoint(u); });
      const auto expected = ResultOf([&] { return plain.EvalPoint(u); });
      ASSERT_EQ(point.has_value(), expected.has_value()) << "at " << u;
      if (!point) continue;
      ASSERT_TRUE(IsSame(*point, *expected)) << "at " << u;
    }
  }
}

// Falling knots are not measured at all.
TEST(CurveAgainstPlain, GivenKnotsOfEveryKindGiveThePlainTableOrTheGeneralError) {
  std::mt19937_64 random(20240614);
  for (const auto& [name, knots] : kGivenKnots) {
    SCOPED_TRACE(name);
    std::vector<TPoint6D> points;
    for (std::size_t i = 0; i + 4 < knots.size(); ++i) points.push_back(RandomPose(random, 5));
    TNurbs6D curve = CurveThrough(RandomPoses(random, TPathKind::Walk, 5));
    ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, static_cast<int>(points.size())));
    const TCurveState before = StateOf(curve);
    TPlainCurve plain = PlainCurveOf(knots, points);
    const bool isRefused =
        !std::ranges::is_sorted(knots) || GeneralErrorOf([&] { plain.InitLengthByUArray(); }).has_value();
    ASSERT_EQ(GeneralErrorOf([&] { curve.InitLengthByUArray(); }).has_value(), isRefused);
    if (isRefused) {
      EXPECT_THAT(curve, HasState(before));
    } else {
      ASSERT_NO_FATAL_FAILURE(ExpectSameTable(curve.SUTable(), plain.Table));
      ASSERT_NO_FATAL_FAILURE(ExpectSameLookUps(random, curve, plain.Table, 400));
    }
  }
}

// Of so small numbers lanes cannot tell the error of a product: every row has to be made the other way.
TEST(CurveAgainstPlain, TinyComponentsGiveThePlainTable) {
  std::mt19937_64 random(20261147);
  const std::vector<double> knots = {0, 0, 0, 0, 0.25, 0.5, 0.5, 1, 1, 1, 1};
  std::vector<TPoint6D> points;
  for (std::size_t i = 0; i + 4 < knots.size(); ++i) {
    points.push_back(RandomPose(random, 50));
    for (const int c : {3, 4, 5}) points.back().Items(c) *= 1e-307;
  }
  TNurbs6D curve;
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, static_cast<int>(points.size())));
  curve.InitLengthByUArray();
  TPlainCurve plain = PlainCurveOf(knots, points);
  plain.InitLengthByUArray();
  ASSERT_NO_FATAL_FAILURE(ExpectSameTable(curve.SUTable(), plain.Table));
}

bool IsSameOrBothNaN(const TPoint6D& P, const TPlainPose& Q) {
  for (int i = 0; i < 6; ++i) {
    const double q = Q[static_cast<std::size_t>(i)];
    if (!IsSameNumber(P.Items(i), q) && !(std::isnan(P.Items(i)) && std::isnan(q))) return false;
  }
  return true;
}

// Products that underflow, sums that overflow, and zeros of either sign; the quick forms have to leave them to the others.
TEST(CurveAgainstPlain, ControlPointsOfEverySizeGiveThePlainPointsAndDerivatives) {
  std::mt19937_64 random(20261141);
  const std::vector<double> sizes = {0.0, -0.0,    5e-324, 1e-310,  1e-300, 0x1p-301, 0x1p-300,  1e-20,
                                     1.0, 0x1p299, 1e100,  0x1p301, 1e200,  1.7e308,  kInfinity, kNaN};
  for (std::size_t largest = 0; largest < sizes.size(); ++largest) {
    std::vector<double> knots = {0, 0, 0, 0, 0.125, 0.3, 0.3000001, 0.6, 0.9, 1, 1, 1, 1};
    std::vector<TPoint6D> points;
    for (std::size_t i = 0; i + 4 < knots.size(); ++i) {
      TPoint6D point = RandomPose(random, 1);
      for (int c = 0; c < 6; ++c) {
        // Component 5 is of one size, the others of all up to the largest.
        point.Items(c) *= sizes[c == 5 || random() % 4 == 0 ? largest : random() % (largest + 1)];
      }
      points.push_back(point);
    }
    TNurbs6D curve;
    ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, static_cast<int>(points.size())));
    const TPlainCurve plain = PlainCurveOf(knots, points);
    std::vector<double> parameters = SomeParameters(random, knots, 2000);
    std::vector<TPoint6D> many(parameters.size());
    curve.EvalPoints(parameters, many);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
      const double u = parameters[i];
      SCOPED_TRACE(testing::Message() << "up to " << sizes[largest] << ", at " << u);
      ASSERT_TRUE(IsSameOrBothNaN(curve.EvalPoint(u), plain.EvalPoint(u)));
      ASSERT_TRUE(IsSameOrBothNaN(many[i], plain.EvalPoint(u)));
      std::array<TPoint6D, 4> CK;
      curve.CurveDerivsAlg1(u, CK);
      const auto expected = plain.CurveDerivsAlg1(u);
      for (std::size_t k = 0; k < 4; ++k) ASSERT_TRUE(IsSameOrBothNaN(CK[k], expected[k])) << "derivative " << k;
    }
  }
}

// There the basis functions are so small that the errors of products with them underflow.
TEST(CurveAgainstPlain, ParametersNextToTheStartGiveThePlainPoints) {
  std::mt19937_64 random(20261144);
  TNurbs6D curve = CurveThrough(RandomPoses(random, TPathKind::Walk, 12));
  std::vector<TPoint6D> points(curve.pointArr().begin(), curve.pointArr().end());
  for (std::size_t i = 0; i < 3; ++i) points[i].Y = points[i].A = 0.0;
  const std::vector<double> knots(curve.BasicFun().uArr().begin(), curve.BasicFun().uArr().end());
  ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, static_cast<int>(points.size())));
  std::vector<double> parameters;
  for (int i = 0; i < CasesOf(40'000); ++i) parameters.push_back(std::pow(10.0, Uniform(random, -110, -80)));
  const TPlainCurve plain = PlainCurveOf(knots, points);
  ASSERT_NO_FATAL_FAILURE(ExpectSamePoints(curve, plain, parameters));
  ASSERT_NO_FATAL_FAILURE(ExpectSameDerivatives(curve, plain, parameters));
  // Alone, and behind four others.
  for (std::size_t i = 0; i < parameters.size(); ++i) {
    std::vector<double> few(i % 2 == 0 ? 0 : 4, 0.5);
    few.push_back(parameters[i]);
    ASSERT_NO_FATAL_FAILURE(ExpectSamePoints(curve, plain, few));
  }
}

// Steps from 1e-4 to 10, components that vanish, and points on a grid: sums that are exact, or half way between two doubles.
TEST(CurveAgainstPlain, GradedPathsAndGridsGiveThePlainCurve) {
  std::mt19937_64 random(20261142);
  for (int round = 0; round < 24; ++round) {
    TPoint6DList poses;
    TPoint6D pose{};
    const int count = 4 + static_cast<int>(random() % 30);
    for (int i = 0; i < count; ++i) {
      const double step = std::pow(10.0, Uniform(random, -4, 0.5));
      for (int c = 0; c < (round % 2 == 0 ? 6 : 3); ++c) pose.Items(c) += Uniform(random, -step, step);
      if (round % 3 == 0) pose.X = i * 0.125;
      if (round % 4 == 0 && i > count / 2) pose.Y = 0.0;
      poses.Add(pose);
    }
    SCOPED_TRACE(testing::Message() << "round " << round);
    if (GeneralErrorOf([&] { CurveThrough(poses); })) continue;  // neighbours that are too close
    ASSERT_NO_FATAL_FAILURE(ExpectSameFit(random, poses, kAllMethods[static_cast<std::size_t>(round) % 3], 400));
  }
}

// Numbers too small for the quick way through the equations, so that the other one has to give the control points.
TEST(CurveAgainstPlain, PosesWithVerySmallNumbersGiveThePlainCurve) {
  std::mt19937_64 random(20261143);
  for (const double size : {0x1p-299, 0x1p-301, 1e-300, 1e-310, 5e-324}) {
    SCOPED_TRACE(testing::Message() << "angles up to " << size);
    TPoint6DList poses = RandomPoses(random, TPathKind::Walk, 12);
    for (TPoint6D& pose : poses) {
      for (int c = 3; c < 6; ++c) pose.Items(c) *= size;
    }
    for (const TParalizeMethod method : kAllMethods) ASSERT_NO_FATAL_FAILURE(ExpectSameFit(random, poses, method, 100));
  }
}

TEST(CurveAgainstPlain, RandomClampedKnotsWithRepeatsGiveThePlainTable) {
  std::mt19937_64 random(20240615);
  for (int round = 0; round < 200; ++round) {
    std::vector<double> knots(4, 0.0);
    const auto inner = random() % 12;
    for (std::uint64_t i = 0; i < inner; ++i) {
      const bool isRepeat = random() % 3 == 0 && i > 0;
      knots.push_back(isRepeat ? knots.back() : Uniform(random, knots.back(), 1));
    }
    knots.insert(knots.end(), 4, 1.0);
    std::vector<TPoint6D> points;
    for (std::size_t i = 0; i + 4 < knots.size(); ++i) points.push_back(RandomPose(random, 1));
    TNurbs6D curve;
    ASSERT_TRUE(curve.CreateByCtlPoints(knots, points, static_cast<int>(points.size())));
    TPlainCurve plain = PlainCurveOf(knots, points);
    plain.InitLengthByUArray();
    curve.InitLengthByUArray();
    ASSERT_NO_FATAL_FAILURE(ExpectSameTable(curve.SUTable(), plain.Table)) << "round " << round;
    const std::vector<double> parameters = SomeParameters(random, knots, 200);
    ASSERT_NO_FATAL_FAILURE(ExpectSamePoints(curve, plain, parameters));
    ASSERT_NO_FATAL_FAILURE(ExpectSameDerivatives(curve, plain, parameters));
  }
}

// ---------------------------------------------------------------------------------------------- basis

TEST(CurveAgainstPlain, TheBasisAndItsDerivativesAreThePlainOnes) {
  std::mt19937_64 random(20240616);
  for (const auto& [name, knots] : kGivenKnots) {
    SCOPED_TRACE(name);
    TNurbsBasicFunc basis;
    basis.CreateCross(knots, static_cast<int>(knots.size()));
    const TPlainBasis plain{TDoubleList(std::span(knots))};
    for (const double u : SomeParameters(random, knots, 400)) {
      for (int span = 2; span + 3 < basis.uCount(); ++span) {
        std::array<double, 4> N{};
        double expected[4] = {};
        ASSERT_TRUE(basis.BasicFuns(span, u, N));
        plain.BasicFuns(span, u, expected);
        ASSERT_TRUE(std::ranges::equal(N, expected, IsSameNumber)) << "span " << span << " at " << u;
        for (int p = 0; p <= 3; ++p) {
          Double2DArray ders{};
          double expectedDers[4][4] = {};
          basis.DersBasciFuns(span, u, p, p, ders);
          plain.DersBasciFuns(span, u, p, p, expectedDers);
          for (std::size_t k = 0; k < 4; ++k) {
            ASSERT_TRUE(std::ranges::equal(ders[k], expectedDers[k], IsSameNumber))
                << "degree " << p << ", derivative " << k << ", span " << span << " at " << u;
          }
        }
      }
    }
  }
}

TEST(CurveAgainstPlain, TheSpanSearchGoesThePlainWay) {
  std::mt19937_64 random(20240617);
  for (const auto& [name, knots] : kGivenKnots) {
    SCOPED_TRACE(name);
    TNurbsBasicFunc basis;
    basis.CreateCross(knots, static_cast<int>(knots.size()));
    const TPlainBasis plain{TDoubleList(std::span(knots))};
    for (const double u : SomeParameters(random, knots, 2000)) {
      ASSERT_EQ(ResultOf([&] { return basis.FindSpan(u); }), ResultOf([&] { return plain.FindSpan(u); })) << u;
    }
  }
}

}  // namespace
}  // namespace ZORBase::Test
