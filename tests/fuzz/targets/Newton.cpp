// Newton's iteration on polynomials. Input: P, E, 1 for rows, the tolerance, a fault, P guesses, then the coefficients of the
// residuals: equation r is the sum of c x^k over the unknowns, with k = 1 to 3. A fault of 1 to 3 lets F or J be of a wrong length or
// give nothing.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>

#include <algorithm>
#include <cmath>

namespace ZORBase::Test::FuzzNewton {
namespace {

constexpr int kMostUnknowns = 6;
constexpr int kMostEquations = 12;

struct TPolynomials {
  int Unknowns;
  int Equations;
  std::vector<double> Coefficients;

  double At(int r, int i, int k) const {
    const auto place = static_cast<std::size_t>((r * Unknowns + i) * 3 + k);
    return place < Coefficients.size() ? Coefficients[place] : 1.0;
  }
  TDoubleList F(const TDoubleList& X) const {
    TDoubleList residuals;
    for (int r = 0; r < Equations; ++r) {
      double sum = r - 1.0;
      for (int i = 0; i < Unknowns; ++i) sum += X[i] * (At(r, i, 0) + X[i] * (At(r, i, 1) + X[i] * At(r, i, 2)));
      residuals.Add(sum);
    }
    return residuals;
  }
  TDoubleList J(const TDoubleList& X) const {
    TDoubleList derivatives;
    for (int r = 0; r < Equations; ++r) {
      for (int i = 0; i < Unknowns; ++i) {
        derivatives.Add(At(r, i, 0) + X[i] * (2.0 * At(r, i, 1) + X[i] * 3.0 * At(r, i, 2)));
      }
    }
    return derivatives;
  }
};

}  // namespace

ZORBASE_FUZZ_TARGET(Newton) {
  const int unknowns = Input.Int();
  const int equations = Input.Int();
  const bool isByRow = Input.Choice(2) == 1;
  const double tolerance = Input.Number();
  const int fault = Input.Choice(4);
  const int size = std::clamp(unknowns, 0, kMostUnknowns);
  TDoubleList start;
  for (int i = 0; i < size; ++i) start.Add(Input.Number());
  const TPolynomials system{size, std::clamp(equations, 0, kMostEquations),
                            Input.Numbers(kMostUnknowns * kMostEquations * 3)};
  const auto f = [&](const TDoubleList& X) -> std::optional<TDoubleList> {
    if (fault == 1) return std::nullopt;
    TDoubleList residuals = system.F(X);
    if (fault == 2) residuals.Add(1.0);
    return residuals;
  };
  const auto j = [&](const TDoubleList& X) -> std::optional<TDoubleList> {
    if (fault == 3) return TDoubleList();
    return system.J(X);
  };
  std::size_t lines = 0;
  const auto run = [&](TNewtonIterator&& Iterator) {
    Iterator.SetConvergeTor(tolerance);
    Iterator.SetLogger([&](const std::string& Line) { lines += Line.size(); });
    TDoubleList x = start;
    if (!Iterator.CalcParam(&x)) {
      Require(SameBits({x.data(), x.size()}, {start.data(), start.size()}), "a failure leaves the guess");
    }
  };
  Attempt([&] { run(TNewtonIterator(unknowns, equations, f, j, isByRow)); });
  Attempt([&] { run(TNewtonIteratorPro(unknowns, equations, f)); });
}

}  // namespace ZORBase::Test::FuzzNewton
