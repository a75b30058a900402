#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

using TNumbers = std::vector<double>;
using TExactly = long double (*)(long double A, long double B);

const char* const kReciprocal = "the reciprocal is rounded first, on purpose";

struct TArithmetic {
  const char* Sign;
  TExactly Exactly;
};

// Counts the worst of the numbers that come from P and Q, one of each, and names those two.
void AddWorst(TErrorRow& Row, const TNumbers& Results, const TNumbers& P, const TNumbers& Q,
              const TArithmetic& Arithmetic) {
  double worst = 0.0;
  std::size_t at = 0;
  for (std::size_t i = 0; i < Results.size(); ++i) {
    const double error = LastPlacesOff(Results[i], Arithmetic.Exactly(P[i], Q[i]));
    if (error <= worst) continue;
    worst = Worse(worst, error);
    at = i;
  }
  Row.Add(worst, [&] { return Listed({P[at]}) + Arithmetic.Sign + Listed({Q[at]}); });
}

const TArithmetic kSum = {" + ", [](long double A, long double B) { return A + B; }};
const TArithmetic kDifference = {" - ", [](long double A, long double B) { return A - B; }};
const TArithmetic kProduct = {" \\* ", [](long double A, long double B) { return A * B; }};
const TArithmetic kQuotient = {" / ", [](long double A, long double B) { return A / B; }};

// The arithmetic of a type that runs over Count numbers, of which Make makes a value.
template <class TMake>
void MeasureType(const TMeasurement& Measurement, const std::string& Type, std::size_t Count, TMake&& Make,
                 double QuotientLimit = kRoundedOnce, const std::string& QuotientRemark = {}) {
  TErrorRow& sums = Measurement.Table.Row({Type + ", P + Q and P - Q", "ulp"}, kRoundedOnce);
  TErrorRow& products = Measurement.Table.Row({Type + ", S * P", "ulp"}, kRoundedOnce);
  constexpr bool divides = requires { Make(TNumbers{}) / 2.0; };
  TErrorRow* const quotients =
      divides ? &Measurement.Table.Row({Type + ", P / S", "ulp", QuotientRemark}, QuotientLimit) : nullptr;
  TPortableRandom random(13);
  for (int k = 0; k < Measurement.Cases(10'000, 200); ++k) {
    const TNumbers p = random.Numbers(Count, 50.0), q = random.Numbers(Count, 3.0);
    const TNumbers s(Count, random.Within(0.1, 5.0));
    const auto a = Make(p), b = Make(q);
    AddWorst(sums, Components(a + b), p, q, kSum);
    AddWorst(sums, Components(a - b), p, q, kDifference);
    AddWorst(products, Components(s[0] * a), p, s, kProduct);
    if constexpr (divides) AddWorst(*quotients, Components(a / s[0]), p, s, kQuotient);
  }
}

}  // namespace

void MeasureComponents(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Arithmetic by components");
  constexpr double byReciprocal = 1.5;
  MeasureType(Measurement, "TPoint2D", 2, [](const TNumbers& P) { return PointIn(P, 0); });
  MeasureType(Measurement, "TPoint3D", 3, [](const TNumbers& P) { return SpacePointIn(P, 0); });
  MeasureType(Measurement, "TPointXD", 7, [](const TNumbers& P) { return TPointXD::FromSpan(P); });
  MeasureType(
      Measurement, "TEulerAng", 3, [](const TNumbers& P) { return TEulerAng::Create(P[0], P[1], P[2]); }, byReciprocal,
      kReciprocal);
  MeasureType(
      Measurement, "TQuaternion", 4, [](const TNumbers& P) { return QuaternionIn(P, 0); }, byReciprocal, kReciprocal);
  MeasureType(Measurement, "TMatrix4D", 12, [](const TNumbers& P) { return MatrixIn(P, 0); });
  MeasureType(Measurement, "TComplex", 2, [](const TNumbers& P) { return TComplex{P[0], P[1]}; });
}

}  // namespace ZORBase::Test
