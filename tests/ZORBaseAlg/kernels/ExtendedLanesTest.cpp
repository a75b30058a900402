// Extended precision by lanes: the bits of the 80-bit unit, wherever the lanes give an answer.
#include <cmath>
#include <random>

#include "KernelNumbers.h"
#include "KernelVariants.h"

namespace ZORBase::Test {
namespace {

// The double nearest to what extended precision makes of an operation.
template <class TOperation>
TVector ByExtended(const TVector& A, const TVector& B, TOperation Operation) {
  TVector results;
  for (std::size_t i = 0; i < A.size(); ++i) {
    results.push_back(static_cast<double>(Operation(static_cast<long double>(A[i]), static_cast<long double>(B[i]))));
  }
  return results;
}

template <class TOperation>
int CountRoundedTwice(const TVector& A, const TVector& B, const TVector& Expected, TOperation Operation) {
  int count = 0;
  for (std::size_t i = 0; i < A.size(); ++i) count += Operation(A[i], B[i]) != Expected[i];
  return count;
}

// Numbers whose sums end near half way between two doubles: just so, above it, and below.
void AddNearTies(std::mt19937_64& Random, TVector& A, TVector& B) {
  for (int i = 0; i < 40000; ++i) {
    const double a = i % 5 == 0 ? std::ldexp(1.0, i % 7) : EvenNumber(Random, 1, 2);
    const double half = std::ldexp(1.0, -53 - i % 2);
    const std::array offsets = {0.0,     0x1p-53, -0x1p-53, 0x1p-11, -0x1p-11, 0x1p-11 + 0x1p-52, -0x1p-11 - 0x1p-52,
                                0x1p-12, -0x1p-12};
    const double b = half * (1 + offsets[Random() % offsets.size()]);
    A.push_back(Random() % 2 == 0 ? a : -a);
    B.push_back(Random() % 2 == 0 ? b : -b);
  }
}

TEST(ExtendedLanes, AreThoseOfThe80BitUnit) {
  const TLaneKernels& lanes = LaneKernels();
  if (!lanes.AreThere) return;
  std::mt19937_64 random(20261131);
  TVector a;
  TVector b;
  for (int i = 0; i < 400000; ++i) {
    // Of short numbers many products are half way between two doubles.
    const double shortNumber = std::ldexp(static_cast<double>(random() >> 38U), static_cast<int>(random() % 40));
    a.push_back(i % 4 == 0 ? shortNumber : RandomNumber(random, TNumberKind::Graded));
    b.push_back(i % 8 == 0 ? std::ldexp(static_cast<double>(random() >> 36U), -20)
                           : RandomNumber(random, TNumberKind::Graded));
  }
  AddNearTies(random, a, b);
  for (const double zero : {0.0, -0.0, 1.0, -1.0}) {
    for (const double other : {0.0, -0.0, 1.0, -1.0}) {
      a.push_back(zero);
      b.push_back(other);
    }
  }
  const TVector sums = ByExtended(a, b, std::plus<>());
  const TVector differences = ByExtended(a, b, std::minus<>());
  const TVector products = ByExtended(a, b, std::multiplies<>());
  ExpectSameNumbers(lanes.Sums(a, b), sums);
  ExpectSameNumbers(lanes.Differences(a, b), differences);
  ExpectSameNumbers(lanes.Products(a, b), products);
  // Plain doubles would not do.
  EXPECT_GT(CountRoundedTwice(a, b, sums, std::plus<>()), 1000);
  EXPECT_GT(CountRoundedTwice(a, b, differences, std::minus<>()), 1000);
  EXPECT_GT(CountRoundedTwice(a, b, products, std::multiplies<>()), 30);
}

TEST(ExtendedLanes, TakeOnlyNumbersWhoseProductsNeitherUnderflowNorOverflow) {
  const TLaneKernels& lanes = LaneKernels();
  const TVector poses = {1, -2, 0, -0.0, 0x1p-300, 0x1p300, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1, 1};
  for (std::size_t count : {6U, 12U, 18U}) EXPECT_EQ(lanes.AreForLanes(TNumbers(poses).first(count)), lanes.AreThere);
  for (const double number : {5e-324, 0x1p-301, -0x1p-301, 0x1p301, -0x1p301, kInfinity, -kInfinity, kNaN}) {
    for (std::size_t place = 0; place < poses.size(); ++place) {
      TVector changed = poses;
      changed[place] = number;
      EXPECT_FALSE(lanes.AreForLanes(changed)) << number << " at " << place;
    }
  }
}

// What lanes give at u, where they give anything.
void ExpectPlainPoses(const TPlainCurve& Plain, TNumbers Points, double u, int& Given) {
  const TVector pose = LaneKernels().Pose(&Plain.Basis.U[3], u, Points);
  const TVector derivatives = LaneKernels().Derivatives(&Plain.Basis.U[3], u, Points);
  TVector expected;
  for (const TPlainPose& derivative : Plain.CurveDerivsAlg1(u))
    expected.insert(expected.end(), derivative.begin(), derivative.end());
  if (!derivatives.empty()) ExpectSameNumbers(derivatives, expected);
  expected.resize(6);
  if (!pose.empty()) ExpectSameNumbers(pose, expected);
  Given += !pose.empty() + !derivatives.empty();
}

TEST(ExtendedLanes, GiveThePlainPosesAndDerivatives) {
  if (!LaneKernels().AreThere) return;
  std::mt19937_64 random(20261132);
  int asked = 0;
  int given = 0;
  for (int round = 0; round < 3000; ++round) {
    TPlainCurve plain;
    plain.Basis.U = RandomKnots(random);
    TVector points = RandomNumbers(random, round % 2 == 0 ? TNumberKind::Even : TNumberKind::Graded, 24);
    if (round % 3 == 0) {
      for (std::size_t r = 0; r < 4; ++r) points[6 * r + 3] = round % 2 == 0 ? 0.0 : -0.0;
    }
    for (std::size_t r = 0; r < 4; ++r) plain.P.Add(PlainPose(TNumbers(points).subspan(6 * r)));
    for (const double u : ParamsInside(random, plain.Basis, 20)) {
      ExpectPlainPoses(plain, points, u, given);
      asked += 2;
    }
    int atTheKnot = 0;
    ExpectPlainPoses(plain, points, plain.Basis.U[3], atTheKnot);
    ExpectPlainPoses(plain, points, std::nextafter(plain.Basis.U[3], 1.0), atTheKnot);
  }
  EXPECT_GE(given, asked * 99 / 100);
}

TEST(ExtendedLanes, SampleAKnotIntervalAsThePlainCurve) {
  if (!LaneKernels().AreThere) return;
  std::mt19937_64 random(20261133);
  for (const TNumberKind kind : {TNumberKind::Even, TNumberKind::Graded}) {
    for (std::size_t count = 1; count <= 64; ++count) {
      const TPlainBasis basis{RandomKnots(random)};
      const TVector values = BaselineKernels().BasisValues(&basis.U[3], ParamsInside(random, basis, count));
      const TVector points = RandomNumbers(random, kind, 24);
      ExpectSameNumbers(LaneKernels().SamplePoses(points, values), PlainSamples(points, values));
    }
  }
}

struct TSystem {
  TVector Q;
  TVector P;
  TPlainBasis Basis;
};

// Points of which every third one has its component Y or A zero, and knots between them.
TSystem RandomSystem(std::mt19937_64& Random, std::size_t Points) {
  TSystem system;
  for (std::size_t i = 0; i < Points; ++i) {
    const TVector pose = RandomNumbers(Random, Points % 2 == 0 ? TNumberKind::Even : TNumberKind::Graded, 6);
    system.Q.insert(system.Q.end(), pose.begin(), pose.end());
    if (i % 3 == 0) system.Q[6 * i + 1] = system.Q[6 * i + 3] = 0.0;
  }
  system.P = RandomNumbers(Random, TNumberKind::Even, 6 * (Points + 2));
  TVector steps(Points - 1);
  double total = 0.0;
  for (double& step : steps) total += step = EvenNumber(Random, 0.1, 5);
  double u = 0.0;
  for (int i = 0; i < 4; ++i) system.Basis.U.Add(0.0);
  for (std::size_t i = 0; i + 1 < steps.size(); ++i) system.Basis.U.Add(u += steps[i] / total);
  for (int i = 0; i < 4; ++i) system.Basis.U.Add(1.0);
  return system;
}

TVector PlainSolution(const TSystem& System) {
  TList<TPlainPose> Q;
  TList<TPlainPose> P;
  for (std::size_t i = 0; i < System.Q.size(); i += 6) Q.Add(PlainPose(TNumbers(System.Q).subspan(i)));
  for (std::size_t i = 0; i < System.P.size(); i += 6) P.Add(PlainPose(TNumbers(System.P).subspan(i)));
  PlainSolveTridiagonal(Q.Count() - 1, Q, System.Basis, P);
  TVector numbers;
  for (const TPlainPose& pose : P) numbers.insert(numbers.end(), pose.begin(), pose.end());
  return numbers;
}

TEST(ExtendedLanes, SolveForTheControlPointsOfThePlainFit) {
  if (!LaneKernels().AreThere) return;
  std::mt19937_64 random(20261134);
  for (std::size_t points = 4; points <= 400; points += points < 140 ? 1 : 37) {
    const TSystem system = RandomSystem(random, points);
    ExpectSameNumbers(LaneKernels().SolvePoses(system.Q, system.Basis.U, system.P), PlainSolution(system));
  }
}

// A curve through three points has no inner control points to solve for, and no list holds more points than an int tells.
TEST(ExtendedLanes, GiveUpForFewerThanFourPointsAndForMoreThanThereCanBe) {
  for (const std::size_t last : {std::size_t{0}, std::size_t{2}, std::size_t{1} << 31U, ~std::size_t{0}})
    EXPECT_FALSE(LaneKernels().SolveWithoutNumbers(last)) << last;
}

TEST(ExtendedLanes, GiveUpWhereAPointOrAnOuterControlPointIsNotModerate) {
  std::mt19937_64 random(20261151);
  const TSystem system = RandomSystem(random, 8);
  for (const auto& [numbers, place] : std::vector<std::pair<TVector TSystem::*, std::size_t>>{{&TSystem::Q, 0},
                                                                                              {&TSystem::Q, 47},
                                                                                              {&TSystem::P, 6},
                                                                                              {&TSystem::P, 11},
                                                                                              {&TSystem::P, 48},
                                                                                              {&TSystem::P, 53}}) {
    TSystem changed = system;
    (changed.*numbers)[place] = 1e-200;
    EXPECT_TRUE(LaneKernels().SolvePoses(changed.Q, changed.Basis.U, changed.P).empty()) << place;
  }
}

// Along zeros what is left of the first component shrinks by four from point to point, and would underflow in the end.
TEST(ExtendedLanes, GiveUpWhereASolutionIsNotModerate) {
  std::mt19937_64 random(20261135);
  TSystem system = RandomSystem(random, 600);
  for (std::size_t i = 1; i < 600; ++i) system.Q[6 * i] = 0.0;
  system.P[6] = 1.0;
  system.P[6 * 600] = 0.0;
  EXPECT_TRUE(LaneKernels().SolvePoses(system.Q, system.Basis.U, system.P).empty());
}

// Numbers near the smallest moderate one: the elimination may stay above it where the substitution does not.
TEST(ExtendedLanes, SolveForModerateNumbersOrGiveUp) {
  if (!LaneKernels().AreThere) return;
  std::mt19937_64 random(20261152);
  int given = 0;
  int refused = 0;
  for (int exponent = 280; exponent <= 300; ++exponent) {
    for (int round = 0; round < 20; ++round) {
      TSystem system = RandomSystem(random, 8);
      for (std::size_t i = 0; i < system.Q.size(); i += 6)
        system.Q[i] = EvenNumber(random, 0.5, 1) * std::ldexp(1.0, -exponent);
      for (std::size_t i = 0; i < system.P.size(); i += 6)
        system.P[i] = EvenNumber(random, 0.5, 1) * std::ldexp(1.0, -exponent);
      const TVector solution = LaneKernels().SolvePoses(system.Q, system.Basis.U, system.P);
      (solution.empty() ? refused : given) += 1;
      if (solution.empty()) continue;
      ExpectSameNumbers(solution, PlainSolution(system));
      for (std::size_t i = 12; i + 12 < solution.size(); i += 6)
        EXPECT_TRUE(solution[i] == 0.0 || std::fabs(solution[i]) >= 0x1p-300) << solution[i];
    }
  }
  EXPECT_GT(given, 100);
  EXPECT_GT(refused, 10);
}

TEST(ExtendedLanes, GiveUpWhereKnotsFallOrAreTooClose) {
  std::mt19937_64 random(20261136);
  const TSystem system = RandomSystem(random, 8);
  for (const double change : {-0.5, 1e-7}) {
    TSystem changed = system;
    changed.Basis.U[6] = changed.Basis.U[5] + change;
    EXPECT_TRUE(LaneKernels().SolvePoses(changed.Q, changed.Basis.U, changed.P).empty()) << change;
  }
}

}  // namespace
}  // namespace ZORBase::Test
