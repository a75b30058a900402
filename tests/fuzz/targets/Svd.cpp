// Least squares, planes and lines. Input: M, N, 1 for rows, how many numbers A has, A, then b.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORBaseAlg/uSVD.h>

#include <array>
#include <cmath>

namespace ZORBase::Test::FuzzSvd {
namespace {

constexpr int kMostNumbers = 400;

TDoubleList ListOf(std::span<const double> Numbers) {
  TDoubleList list;
  list.AddRange(Numbers);
  return list;
}

void Solve(const TDoubleList& A, const TDoubleList& B, int M, int N, bool IsByRows) {
  TDoubleList x = ListOf(std::array{7.0});
  if (Attempt([&] { MatrixDivUsingSvd(&A, &B, M, N, &x, IsByRows); })) {
    Require(x.Count() == N, "there are as many solutions as unknowns");
  } else {
    Require(x.Count() == 1 && x[0] == 7.0, "a refused system leaves the solution as it was");
  }
}

void Decompose(TDoubleList A, int M, int N) {
  std::vector<double> w(static_cast<std::size_t>(N));
  std::vector<double> v(w.size() * w.size());
  const std::span<double> a(A.data(), A.size());
  Attempt([&] { SvdDecompose(a, M, N, w, v); });
  Attempt([&] { SvdBackSubstitute(a, w, v, M, N, A, w); });
}

void FitPlanes(const TDoubleList& Points) {
  double a = 0.0;
  double b = 0.0;
  double c = 0.0;
  double d = 0.0;
  double ratio = 0.0;
  Attempt([&] { FitPlaneUsingSvd(&Points, a, b, c, d, ratio); });
  Attempt([&] { FitLineUsingSvd(&Points, a, b, c); });
  TDoubleList own = Points;
  Attempt([&] { FitPlaneUsingSvd(&own, &own); });
  own = Points;
  Attempt([&] { FitLineUsingSvd(&own, &own); });
}

}  // namespace

ZORBASE_FUZZ_TARGET(Svd) {
  const int m = Input.Int();
  const int n = Input.Int();
  const bool isByRows = Input.Choice(2) == 1;
  const TDoubleList a = ListOf(Input.Numbers(Input.Count(kMostNumbers)));
  const TDoubleList b = ListOf(Input.Numbers(kMostNumbers));
  Solve(a, b, m, n, isByRows);
  if (m >= 0 && n >= 0 && m <= 100 && n <= 100) Decompose(a, m, n);
  FitPlanes(a);
}

}  // namespace ZORBase::Test::FuzzSvd
