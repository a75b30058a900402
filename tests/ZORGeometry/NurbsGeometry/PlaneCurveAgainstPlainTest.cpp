// The fast curve of the plane against the plain one of PlainCurve.h: every number the same, bit for bit.
#include "CurveTestSupport.h"
#include "PlainCurve.h"

namespace ZORBase::Test {
namespace {

using TPlainPoint2D = TPlainPoint<2>;

bool IsSamePlanePoint(const TPoint2D& P, const TPlainPoint2D& Q) {
  return IsSameNumber(P.X, Q[0]) && IsSameNumber(P.Y, Q[1]);
}

TList<TPoint2D> RandomPoints(std::mt19937_64& Random, int Count) {
  TList<TPoint2D> points;
  TPoint2D point;
  for (int i = 0; i < Count; ++i) {
    points.Add(point);
    const double size = std::pow(10, Uniform(Random, -2, 1));
    point = point + TPoint2D::Create(Uniform(Random, 0.01, size + 0.01), Uniform(Random, -size, size));
  }
  return points;
}

std::vector<double> SomeNumbers(std::mt19937_64& Random, double Last, int Count) {
  std::vector<double> numbers = {-1, -0.0, 0, Last, 2 * Last};
  for (int i = 0; i < Count; ++i) numbers.push_back(Uniform(Random, -0.01, 1.01) * Last);
  return numbers;
}

void ExpectSamePoints(const TNurbs2D& Curve, const TPlainCurveOf<2>& Plain, std::span<const double> Parameters) {
  std::vector<TPoint2D> points(Parameters.size());
  Curve.EvalPoints(Parameters, points);
  for (std::size_t i = 0; i < points.size(); ++i) {
    const double u = Parameters[i];
    ASSERT_TRUE(IsSamePlanePoint(Curve.EvalPoint(u), Plain.EvalPoint(u))) << "at " << u;
    ASSERT_TRUE(IsSamePlanePoint(points[i], Plain.EvalPoint(u))) << "at " << u << ", one of many";
    std::array<TPoint2D, 4> CK;
    Curve.CurveDerivsAlg1(u, CK);
    const auto expected = Plain.CurveDerivsAlg1(u);
    for (std::size_t k = 0; k < 4; ++k)
      ASSERT_TRUE(IsSamePlanePoint(CK[k], expected[k])) << "derivative " << k << " at " << u;
  }
}

void ExpectSameTable(std::mt19937_64& Random, const TNurbs2D& Curve, const TPlainTableOf<2>& Plain) {
  const TSUTable& table = Curve.SUTable();
  ASSERT_EQ(table.Count(), Plain.Rows.Count());
  for (int i = 0; i < table.Count(); ++i) {
    ASSERT_TRUE(IsSameNumber(table[i].S, Plain.Rows[i].S)) << "S of row " << i;
    ASSERT_TRUE(IsSameNumber(table[i].u, Plain.Rows[i].u)) << "u of row " << i;
    ASSERT_TRUE(IsSamePlanePoint(table[i].pos, Plain.Rows[i].P)) << "point of row " << i;
  }
  for (const double S : SomeNumbers(Random, Curve.CurveLength(), 1000)) {
    ASSERT_TRUE(IsSameNumber(Curve.GetUByS(S), Plain.GetUByS(S))) << S;
  }
  for (const double u : SomeNumbers(Random, 1, 1000)) {
    ASSERT_TRUE(IsSameNumber(Curve.GetSByU(u), Plain.GetSByU(u))) << u;
  }
}

TEST(CurveOfThePlaneAgainstPlain, RandomPathsGiveThePlainCurve) {
  std::mt19937_64 random(20240701);
  for (const int count : {4, 5, 8, 40, 300}) {
    for (const TParalizeMethod method : kAllMethods) {
      SCOPED_TRACE(testing::Message() << count << " points, method " << method);
      const TList<TPoint2D> points = RandomPoints(random, count);
      TNurbs2D curve;
      ASSERT_TRUE(curve.CreateCross(points, method));
      const TPlainCurveOf<2> plain = PlainFit(points, method);
      ASSERT_TRUE(std::ranges::equal(curve.BasicFun().uArr(), plain.Basis.U, IsSameNumber)) << "knots";
      ASSERT_TRUE(std::ranges::equal(curve.pointArr(), plain.P, IsSamePlanePoint)) << "control points";
      ASSERT_NO_FATAL_FAILURE(ExpectSamePoints(curve, plain, SomeNumbers(random, 1, 3000)));
      ASSERT_NO_FATAL_FAILURE(ExpectSameTable(random, curve, plain.Table));
    }
  }
}

}  // namespace
}  // namespace ZORBase::Test
