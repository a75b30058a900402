#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbsBasicFunc.h>

#include <ZORBase/common/BaseServices/Extended.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <cmath>
#include <string>

namespace ZORBase {
namespace {

// Where the range assertion has always been reported.
constexpr std::string_view kAssertionSource = "NurbsGeometry";
constexpr int kAssertionLine = 366;

// Knots closer than this coincide.
constexpr double kSmallestKnotDistance = SmallestDoubleFrom(1e-6L);

// Coincident knots give 0/0 in the recursion. The term vanishes in the limit, so 0 is its value here, not a guard.
double SafeQuotient(double Denominator, double Numerator) {
  return std::fabs(Denominator) >= kSmallestKnotDistance ? Numerator / Denominator : 0.0;
}

// The two-table scheme for basis functions and derivatives: ndu holds the basis functions in its upper triangle and the knot
// differences in its lower one.
struct TDerivativeTables {
  Double2DArray ndu{};

  TDerivativeTables(std::span<const double> U, int idx, double u, int p) {
    std::array<double, 4> left{};
    std::array<double, 4> right{};
    ndu[0][0] = 1.0;
    for (int j = 1; j <= p; ++j) {
      const auto column = static_cast<std::size_t>(j);
      left[column] = u - U[static_cast<std::size_t>(idx + 1 - j)];
      right[column] = U[static_cast<std::size_t>(idx + j)] - u;
      double saved = 0.0;
      for (std::size_t r = 0; r < column; ++r) {
        ndu[column][r] = right[r + 1] + left[column - r];
        const double temp = SafeQuotient(ndu[column][r], ndu[r][column - 1]);
        ndu[r][column] = saved + right[r + 1] * temp;
        saved = left[column - r] * temp;
      }
      ndu[column][column] = saved;
    }
  }

  double At(int Row, int Column) const { return ndu[static_cast<std::size_t>(Row)][static_cast<std::size_t>(Column)]; }

  // Derivatives 1 to n of the basis function r, without the factorial factors.
  void Derive(int r, int p, int n, Double2DArray& ders) const {
    std::array<std::array<double, 4>, 2> a{};
    std::size_t s1 = 0;
    std::size_t s2 = 1;
    a[0][0] = 1.0;
    for (int k = 1; k <= n; ++k) {
      double d = 0.0;
      const int rk = r - k;
      const int pk = p - k;
      if (r >= k) {
        a[s2][0] = SafeQuotient(At(pk + 1, rk), a[s1][0]);
        d = a[s2][0] * At(rk, pk);
      }
      const int j1 = rk < -1 ? -rk : 1;
      const int j2 = pk < r - 1 ? p - r : k - 1;
      for (int j = j1; j <= j2; ++j) {
        const auto at = static_cast<std::size_t>(j);
        a[s2][at] = SafeQuotient(At(pk + 1, rk + j), a[s1][at] - a[s1][at - 1]);
        d += a[s2][at] * At(rk + j, pk);
      }
      if (r <= pk) {
        const auto at = static_cast<std::size_t>(k);
        a[s2][at] = -SafeQuotient(At(pk + 1, r), a[s1][at - 1]);
        d += a[s2][at] * At(r, pk);
      }
      ders[static_cast<std::size_t>(k)][static_cast<std::size_t>(r)] = d;
      std::swap(s1, s2);
    }
  }
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
  FKnots = std::vector<double>(uVec.begin(), uVec.begin() + count);
}

int TNurbsBasicFunc::FindSpan(double u) const {
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
  const std::array<double, 4> left{0.0, u - knot(i), u - knot(i - 1), u - knot(i - 2)};
  const std::array<double, 4> right{0.0, knot(i + 1) - u, knot(i + 2) - u, knot(i + 3) - u};
  N[0] = 1.0;
  for (std::size_t j = 1; j <= kDegree; ++j) {
    double saved = 0.0;
    for (std::size_t r = 0; r < j; ++r) {
      const double temp = SafeQuotient(right[r + 1] + left[j - r], N[r]);
      N[r] = saved + right[r + 1] * temp;
      saved = left[j - r] * temp;
    }
    N[j] = saved;
  }
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
  const TDerivativeTables tables(FKnots, idx, u, p);
  for (int j = 0; j <= p; ++j) ders[0][static_cast<std::size_t>(j)] = tables.At(j, p);
  for (int r = 0; r <= p; ++r) tables.Derive(r, p, n, ders);
  double factor = p;
  for (int k = 1; k <= n; ++k) {
    for (int j = 0; j <= p; ++j) ders[static_cast<std::size_t>(k)][static_cast<std::size_t>(j)] *= factor;
    factor *= p - k;
  }
}

void TNurbsBasicFunc::Reverse() {
  for (double& knot : FKnots) knot = std::min(1.0, std::max(0.0, 1.0 - knot));
  std::reverse(FKnots.begin(), FKnots.end());
}

void TNurbsBasicFunc::Assign(const TPersistent& Source) {
  if (const auto* const source = dynamic_cast<const TNurbsBasicFunc*>(&Source)) {
    FKnots = source->FKnots;
  } else {
    TPersistent::Assign(Source);
  }
}

std::string_view TNurbsBasicFunc::ClassName() const { return "TNurbsBasicFunc"; }

}  // namespace ZORBase
