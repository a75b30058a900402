#include <ZORBase/ZORBaseAlg/uSVD/SvdDecomposition.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Sign.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ZORBase {
namespace {

// Unconverged iterations after which a singular value is given up.
constexpr int kMaxIterations = 30;

// sqrt(A A + B B), without overflow or underflow in the squares.
double SafeHypot(double A, double B) {
  const double a = std::fabs(A);
  const double b = std::fabs(B);
  const double larger = a > b ? a : b;
  const double smaller = a > b ? b : a;
  if (larger == 0.0) return smaller;  // 0, or NaN
  const double ratio = smaller / larger;
  return larger * std::sqrt(1.0 + ratio * ratio);
}

// Row by row, indices from 0.
struct TMatrixView {
  double* Items;
  std::size_t Columns;
  double& operator()(std::size_t i, std::size_t j) const { return Items[i * Columns + j]; }
};

class TDecomposition {
 public:
  TDecomposition(double* A, std::size_t M, std::size_t N, double* AW, double* AV)
      : FM(M), FN(N), U{A, N}, V{AV, N}, w(AW), rv1(N), FPart(N) {}

  TSvdStatus Run() {
    for (std::size_t i = 0; i < FN; ++i) {
      ReflectColumn(i);
      if (i + 1 < FN) ReflectRow(i);
      const double size = std::fabs(w[i]) + std::fabs(rv1[i]);
      if (size > FNorm) FNorm = size;
    }
    AccumulateRight();
    for (std::size_t i = FN; i-- > 0;) AccumulateLeft(i);
    for (std::size_t k = FN; k-- > 0;) {
      if (!Settle(k)) return TSvdStatus::NoConvergence;
    }
    return TSvdStatus::Good;
  }

 private:
  bool IsNegligible(double Value) const { return std::fabs(Value) + FNorm == FNorm; }

  void ReflectColumn(std::size_t i) {
    double g = 0.0;
    double scale = 0.0;
    for (std::size_t k = i; k < FM; ++k) scale += std::fabs(U(k, i));
    if (scale != 0.0) {
      double s = 0.0;
      for (std::size_t k = i; k < FM; ++k) {
        U(k, i) /= scale;
        s += U(k, i) * U(k, i);
      }
      const double f = U(i, i);
      g = -SignOf(std::sqrt(s), f);
      const double h = f * g - s;
      U(i, i) = f - g;
      for (std::size_t j = i + 1; j < FN; ++j) {
        s = 0.0;
        for (std::size_t k = i; k < FM; ++k) s += U(k, i) * U(k, j);
        const double factor = s / h;
        for (std::size_t k = i; k < FM; ++k) U(k, j) += factor * U(k, i);
      }
      for (std::size_t k = i; k < FM; ++k) U(k, i) *= scale;
    }
    w[i] = scale * g;
  }

  void ReflectRow(std::size_t i) {
    const std::size_t l = i + 1;
    double g = 0.0;
    double scale = 0.0;
    for (std::size_t k = l; k < FN; ++k) scale += std::fabs(U(i, k));
    if (scale != 0.0) {
      double s = 0.0;
      for (std::size_t k = l; k < FN; ++k) {
        U(i, k) /= scale;
        s += U(i, k) * U(i, k);
      }
      const double f = U(i, l);
      g = -SignOf(std::sqrt(s), f);
      const double h = f * g - s;
      U(i, l) = f - g;
      for (std::size_t k = l; k < FN; ++k) FPart[k] = U(i, k) / h;
      for (std::size_t j = l; j < FM; ++j) {
        s = 0.0;
        for (std::size_t k = l; k < FN; ++k) s += U(j, k) * U(i, k);
        for (std::size_t k = l; k < FN; ++k) U(j, k) += s * FPart[k];
      }
      for (std::size_t k = l; k < FN; ++k) U(i, k) *= scale;
    }
    rv1[l] = scale * g;
  }

  void AccumulateRight() {
    V(FN - 1, FN - 1) = 1.0;
    for (std::size_t i = FN - 1; i-- > 0;) {
      const std::size_t l = i + 1;
      if (rv1[l] != 0.0) {
        // Divided twice, for the product of both may underflow.
        for (std::size_t j = l; j < FN; ++j) V(j, i) = U(i, j) / U(i, l) / rv1[l];
        for (std::size_t j = l; j < FN; ++j) {
          double s = 0.0;
          for (std::size_t k = l; k < FN; ++k) s += U(i, k) * V(k, j);
          for (std::size_t k = l; k < FN; ++k) V(k, j) += s * V(k, i);
        }
      }
      for (std::size_t j = l; j < FN; ++j) V(i, j) = V(j, i) = 0.0;
      V(i, i) = 1.0;
    }
  }

  void AccumulateLeft(std::size_t i) {
    const std::size_t l = i + 1;
    for (std::size_t j = l; j < FN; ++j) U(i, j) = 0.0;
    if (w[i] != 0.0) {
      const double g = 1.0 / w[i];
      for (std::size_t j = l; j < FN; ++j) {
        double s = 0.0;
        for (std::size_t k = l; k < FM; ++k) s += U(k, i) * U(k, j);
        const double f = s / U(i, i) * g;
        for (std::size_t k = i; k < FM; ++k) U(k, j) += f * U(k, i);
      }
      for (std::size_t k = i; k < FM; ++k) U(k, i) *= g;
    } else {
      for (std::size_t k = i; k < FM; ++k) U(k, i) = 0.0;
    }
    U(i, i) += 1.0;
  }

  // QR iterations until w[k] stands alone; false when there are too many.
  bool Settle(std::size_t k) {
    for (int iteration = 1;; ++iteration) {
      const std::size_t l = Split(k);
      if (l == k) break;
      if (iteration == kMaxIterations) return false;
      Sweep(l, k);
    }
    if (w[k] < 0.0) {
      w[k] = -w[k];
      for (std::size_t j = 0; j < FN; ++j) V(j, k) = -V(j, k);
    }
    return true;
  }

  // The place where the block that ends at k begins.
  std::size_t Split(std::size_t k) {
    std::size_t l = k;
    for (; l > 0 && !IsNegligible(rv1[l]); --l) {
      if (IsNegligible(w[l - 1])) {
        Cancel(l, k);
        break;
      }
    }
    return l;
  }

  // Turns rv1[l] away, above which w is 0.
  void Cancel(std::size_t l, std::size_t k) {
    double c = 0.0;
    double s = 1.0;
    for (std::size_t i = l; i <= k; ++i) {
      const double f = s * rv1[i];
      rv1[i] = c * rv1[i];
      if (IsNegligible(f)) break;
      const double g = w[i];
      const double h = SafeHypot(f, g);
      w[i] = h;
      c = g / h;
      s = -f / h;
      Rotate(U, FM, l - 1, i, c, s);
    }
  }

  void Sweep(std::size_t l, std::size_t k) {
    double x = w[l];
    double y = w[k - 1];
    double z = w[k];
    double g = rv1[k - 1];
    double h = rv1[k];
    double f = ((y - z) * (y + z) + (g - h) * (g + h)) / (2.0 * h * y);
    g = SafeHypot(f, 1.0);
    f = ((x - z) * (x + z) + h * (y / (f + SignOf(g, f)) - h)) / x;
    double c = 1.0;
    double s = 1.0;
    for (std::size_t j = l; j < k; ++j) {
      const std::size_t i = j + 1;
      g = rv1[i];
      y = w[i];
      h = s * g;
      g = c * g;
      z = SafeHypot(f, h);
      rv1[j] = z;
      if (z != 0.0) {
        c = f / z;
        s = h / z;
      }
      f = x * c + g * s;
      g = g * c - x * s;
      h = y * s;
      y = y * c;
      Rotate(V, FN, j, i, c, s);
      z = SafeHypot(f, h);
      w[j] = z;
      if (z != 0.0) {
        c = f / z;
        s = h / z;
      }
      f = c * g + s * y;
      x = c * y - s * g;
      Rotate(U, FM, j, i, c, s);
    }
    rv1[l] = 0.0;
    rv1[k] = f;
    w[k] = x;
  }

  static void Rotate(TMatrixView Matrix, std::size_t Rows, std::size_t p, std::size_t q, double c, double s) {
    for (std::size_t i = 0; i < Rows; ++i) {
      const double y = Matrix(i, p);
      const double z = Matrix(i, q);
      Matrix(i, p) = y * c + z * s;
      Matrix(i, q) = z * c - y * s;
    }
  }

  std::size_t FM;
  std::size_t FN;
  TMatrixView U;
  TMatrixView V;
  double* w;
  std::vector<double> rv1;
  std::vector<double> FPart;
  double FNorm = 0.0;
};

void CheckLength(std::string_view Where, std::string_view What, std::size_t Length, std::int64_t Expected) {
  if (static_cast<std::int64_t>(Length) == Expected) return;
  RaiseGeneralError(Format1033("%s: %s has %d numbers and must have %d", Where, What, Length, Expected));
}

void CheckShape(std::string_view Where, int M, int N, std::size_t A, std::size_t W, std::size_t V) {
  if (M < 1 || N < 1) RaiseGeneralError(Format1033("%s: a matrix cannot be %d by %d", Where, M, N));
  CheckLength(Where, "the matrix", A, std::int64_t{M} * N);
  CheckLength(Where, "W", W, N);
  CheckLength(Where, "V", V, std::int64_t{N} * N);
}

}  // namespace

TSvdStatus SvdDecompose(std::span<double> A, int M, int N, std::span<double> W, std::span<double> V) {
  CheckShape("SvdDecompose", M, N, A.size(), W.size(), V.size());
  if (N > M) return TSvdStatus::MoreColumnsThanRows;
  for (double& value : V) value = 0.0;
  return TDecomposition(A.data(), static_cast<std::size_t>(M), static_cast<std::size_t>(N), W.data(), V.data()).Run();
}

void SvdBackSubstitute(std::span<const double> U, std::span<const double> W, std::span<const double> V, int M, int N,
                       std::span<const double> B, std::span<double> X) {
  CheckShape("SvdBackSubstitute", M, N, U.size(), W.size(), V.size());
  CheckLength("SvdBackSubstitute", "B", B.size(), M);
  CheckLength("SvdBackSubstitute", "X", X.size(), N);
  const auto columns = static_cast<std::size_t>(N);
  std::vector<double> part(columns);
  for (std::size_t j = 0; j < columns; ++j) {
    if (!(W[j] > 0.0)) continue;
    double s = 0.0;
    for (std::size_t i = 0; i < B.size(); ++i) s += U[i * columns + j] * B[i];
    part[j] = s / W[j];
  }
  for (std::size_t i = 0; i < columns; ++i) {
    double s = 0.0;
    for (std::size_t j = 0; j < columns; ++j) s += V[i * columns + j] * part[j];
    X[i] = s;
  }
}

}  // namespace ZORBase
