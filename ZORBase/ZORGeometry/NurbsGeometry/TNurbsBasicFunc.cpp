#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/kernels/CubicBasis.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace ZORBase {
namespace {

// Where the range assertion has always been reported.
constexpr std::string_view kAssertionSource = "NurbsGeometry";
constexpr int kAssertionLine = 366;

// BasisDerivatives by degree and highest derivative.
template <int p, int n>
void Derivatives(const TKnotDistances& D, Double2DArray& Ders) {
  BasisDerivatives<false, p, n>(D, Ders);
}

constexpr void (*kDerivatives[4][4])(const TKnotDistances&, Double2DArray&) = {
    {Derivatives<0, 0>},
    {Derivatives<1, 0>, Derivatives<1, 1>},
    {Derivatives<2, 0>, Derivatives<2, 1>, Derivatives<2, 2>},
    {Derivatives<3, 0>, Derivatives<3, 1>, Derivatives<3, 2>, Derivatives<3, 3>},
};

}  // namespace

double TNurbsBasicFunc::GetItems(int idx) const {
  if (idx < 0 || idx >= uCount()) RaiseAssertion("TNurbsBasicFunc: Idx Out Of Range", kAssertionSource, kAssertionLine);
  return FKnots[static_cast<std::size_t>(idx)];
}

void TNurbsBasicFunc::CreateCross(const TDoubleList& uVec, int count) {
  CreateCross(std::span<const double>(uVec), count);
}

void TNurbsBasicFunc::CreateCross(std::span<const double> uVec, int count) {
  if (count < 0 || static_cast<std::size_t>(count) > uVec.size()) {
    RaiseGeneralError("TNurbsBasicFunc.CreateCross: " + std::to_string(count) + " knots asked for, " +
                      std::to_string(uVec.size()) + " given");
  }
  SetKnots(std::vector<double>(uVec.begin(), uVec.begin() + count));
}

void TNurbsBasicFunc::SetKnots(std::vector<double> Knots) {
  TBucketIndex spans;
  const std::size_t m = Knots.size();
  const double* const U = Knots.data();
  if (m >= static_cast<std::size_t>(kFewestKnots) && U[0] == U[3] && U[m - 4] == U[m - 1] && std::is_sorted(U, U + 3) &&
      std::is_sorted(U + m - 4, U + m)) {
    spans.Build(m - 6, [U](std::size_t i) { return U[kDegree + i]; });
  }
  FKnots = std::move(Knots);
  FSpans = std::move(spans);
}

int TNurbsBasicFunc::BisectForSpan(double u) const {
  const int m = uCount();
  if (m < kFewestKnots) {
    RaiseGeneralError("TNurbsBasicFunc.FindSpan: " + std::to_string(m) + " knots; a cubic curve has at least " +
                      std::to_string(kFewestKnots));
  }
  const double* const U = FKnots.data();
  if (u < U[0]) return 0;
  if (u >= U[m - 1]) return m - 5;
  int low = kDegree;
  int high = m - 4;
  int mid = (low + high) / 2;
  while (u < U[mid] || u >= U[mid + 1]) {
    int& bound = u < U[mid] ? high : low;
    if (bound == mid)
      RaiseGeneralError("TNurbsBasicFunc.FindSpan: no span between the inner knots holds the parameter " +
                        Format1033("%.17f", u));
    bound = mid;
    mid = (low + high) / 2;
  }
  return mid;
}

bool TNurbsBasicFunc::BasicFuns(int i, double u, std::span<double> N) const {
  const int m = uCount();
  if (i < 2 || i > m) return false;
  if (N.size() < 4) RaiseGeneralError("TNurbsBasicFunc.BasicFuns: the result needs 4 places");
  const auto knot = [this, m](int Index) { return FKnots[static_cast<std::size_t>(std::min(Index, m - 1))]; };
  const TKnotDistances distances = {{0.0, u - knot(i), u - knot(i - 1), u - knot(i - 2)},
                                    {0.0, knot(i + 1) - u, knot(i + 2) - u, knot(i + 3) - u}};
  BasisValues<false>(distances, N.data());
  return true;
}

void TNurbsBasicFunc::DersBasciFuns(int idx, double u, int p, int n, Double2DArray& ders) const {
  if (n < 0 || n > p || p > kDegree) {
    RaiseGeneralError("TNurbsBasicFunc.DersBasciFuns: derivative " + std::to_string(n) + " of degree " +
                      std::to_string(p));
  }
  if (idx < p - 1 || idx > uCount() - 1 - p) {
    RaiseGeneralError("TNurbsBasicFunc.DersBasciFuns: span " + std::to_string(idx) + " reaches beyond the " +
                      std::to_string(uCount()) + " knots");
  }
  // A degree below 3 does not look at the outer knots, which then need not exist.
  const auto knot = [this](int Index) { return FKnots[static_cast<std::size_t>(std::clamp(Index, 0, uCount() - 1))]; };
  const TKnotDistances distances = {{0.0, u - knot(idx), u - knot(idx - 1), u - knot(idx - 2)},
                                    {0.0, knot(idx + 1) - u, knot(idx + 2) - u, knot(idx + 3) - u}};
  kDerivatives[p][n](distances, ders);
}

void TNurbsBasicFunc::Reverse() {
  std::vector<double> knots(FKnots.rbegin(), FKnots.rend());
  for (double& knot : knots) knot = std::min(1.0, std::max(0.0, 1.0 - knot));
  SetKnots(std::move(knots));
}

void TNurbsBasicFunc::Assign(const TPersistent& Source) {
  if (const auto* const source = dynamic_cast<const TNurbsBasicFunc*>(&Source)) {
    *this = TNurbsBasicFunc(*source);
  } else {
    TPersistent::Assign(Source);
  }
}

std::string_view TNurbsBasicFunc::ClassName() const { return "TNurbsBasicFunc"; }

}  // namespace ZORBase
