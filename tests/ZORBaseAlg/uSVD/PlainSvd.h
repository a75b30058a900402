// PlainSvd: the decomposition written down step by step, indices from 1 and one element after the other, to hold the
// library's against. The order of every sum and every rounding is what the library has to reproduce.
#pragma once

#include <cmath>
#include <cstddef>
#include <span>
#include <vector>

namespace ZORBase::Test {

/// A matrix with indices from 1, row by row.
class TPlainMatrix {
 public:
  TPlainMatrix(int Rows, int Columns)
      : FColumns(Columns), FItems(static_cast<std::size_t>(Rows) * static_cast<std::size_t>(Columns)) {}
  double& operator()(int i, int j) {
    return FItems[static_cast<std::size_t>(i - 1) * static_cast<std::size_t>(FColumns) +
                  static_cast<std::size_t>(j - 1)];
  }
  std::vector<double>& Items() { return FItems; }
  const std::vector<double>& Items() const { return FItems; }

 private:
  int FColumns;
  std::vector<double> FItems;
};

inline double PlainHypot(double A, double B) {
  const double larger = std::fabs(A) > std::fabs(B) ? std::fabs(A) : std::fabs(B);
  const double smaller = std::fabs(A) > std::fabs(B) ? std::fabs(B) : std::fabs(A);
  if (larger == 0.0) return smaller;  // 0, or NaN
  const double ratio = smaller / larger;
  return larger * std::sqrt(1.0 + ratio * ratio);
}

inline double PlainSign(double A, double B) { return B >= 0.0 ? std::fabs(A) : -std::fabs(A); }

/// The decomposition A = U diag(w) V'. U starts as A.
struct TPlainSvd {
  int M;
  int N;
  TPlainMatrix U;
  TPlainMatrix V;
  std::vector<double> w;    // from 1
  std::vector<double> rv1;  // from 1
  double anorm = 0.0;
  int Status = 0;

  TPlainSvd(std::span<const double> A, int Rows, int Columns)
      : M(Rows), N(Columns), U(Rows, Columns), V(Columns, Columns), w(static_cast<std::size_t>(Columns) + 1), rv1(w) {
    U.Items().assign(A.begin(), A.end());
    Status = Decompose();
  }

  std::vector<double> Solve(std::span<const double> b) {
    std::vector<double> tmp(w.size());
    std::vector<double> x;
    for (int j = 1; j <= N; ++j) {
      double s = 0.0;
      if (W(j) > 0.0) {
        for (int i = 1; i <= M; ++i) s += U(i, j) * b[static_cast<std::size_t>(i - 1)];
        s /= W(j);
      }
      tmp[static_cast<std::size_t>(j)] = s;
    }
    for (int j = 1; j <= N; ++j) {
      double s = 0.0;
      for (int jj = 1; jj <= N; ++jj) s += V(j, jj) * tmp[static_cast<std::size_t>(jj)];
      x.push_back(s);
    }
    return x;
  }

  double& W(int j) { return w[static_cast<std::size_t>(j)]; }
  double& E(int j) { return rv1[static_cast<std::size_t>(j)]; }

 private:
  bool IsNegligible(double Value) const { return std::fabs(Value) + anorm == anorm; }

  int Decompose() {
    if (N > M) return -3;
    Reduce();
    AccumulateRight();
    AccumulateLeft();
    for (int k = N; k >= 1; --k) {
      if (!Settle(k)) return -1;
    }
    return 0;
  }

  // To bidiagonal form: w is the diagonal, rv1(2..N) the one above.
  void Reduce() {
    for (int i = 1; i <= N; ++i) {
      ReflectColumn(i);
      if (i < N) ReflectRow(i);
      const double size = std::fabs(W(i)) + std::fabs(E(i));
      if (size > anorm) anorm = size;
    }
  }

  void ReflectColumn(int i) {
    double g = 0.0;
    double scale = 0.0;
    for (int k = i; k <= M; ++k) scale += std::fabs(U(k, i));
    if (scale != 0.0) {
      double s = 0.0;
      for (int k = i; k <= M; ++k) {
        U(k, i) /= scale;
        s += U(k, i) * U(k, i);
      }
      double f = U(i, i);
      g = -PlainSign(std::sqrt(s), f);
      const double h = f * g - s;
      U(i, i) = f - g;
      for (int j = i + 1; j <= N; ++j) {
        s = 0.0;
        for (int k = i; k <= M; ++k) s += U(k, i) * U(k, j);
        f = s / h;
        for (int k = i; k <= M; ++k) U(k, j) += f * U(k, i);
      }
      for (int k = i; k <= M; ++k) U(k, i) *= scale;
    }
    W(i) = scale * g;
  }

  void ReflectRow(int i) {
    const int l = i + 1;
    double g = 0.0;
    double scale = 0.0;
    for (int k = l; k <= N; ++k) scale += std::fabs(U(i, k));
    if (scale != 0.0) {
      double s = 0.0;
      for (int k = l; k <= N; ++k) {
        U(i, k) /= scale;
        s += U(i, k) * U(i, k);
      }
      const double f = U(i, l);
      g = -PlainSign(std::sqrt(s), f);
      const double h = f * g - s;
      U(i, l) = f - g;
      std::vector<double> part(static_cast<std::size_t>(N) + 1);
      for (int k = l; k <= N; ++k) part[static_cast<std::size_t>(k)] = U(i, k) / h;
      for (int j = l; j <= M; ++j) {
        s = 0.0;
        for (int k = l; k <= N; ++k) s += U(j, k) * U(i, k);
        for (int k = l; k <= N; ++k) U(j, k) += s * part[static_cast<std::size_t>(k)];
      }
      for (int k = l; k <= N; ++k) U(i, k) *= scale;
    }
    E(l) = scale * g;
  }

  void AccumulateRight() {
    V(N, N) = 1.0;
    for (int i = N - 1; i >= 1; --i) {
      const int l = i + 1;
      if (E(l) != 0.0) {
        // Divided twice, for the product of both may underflow.
        for (int j = l; j <= N; ++j) V(j, i) = U(i, j) / U(i, l) / E(l);
        for (int j = l; j <= N; ++j) {
          double s = 0.0;
          for (int k = l; k <= N; ++k) s += U(i, k) * V(k, j);
          for (int k = l; k <= N; ++k) V(k, j) += s * V(k, i);
        }
      }
      for (int j = l; j <= N; ++j) V(i, j) = V(j, i) = 0.0;
      V(i, i) = 1.0;
    }
  }

  void AccumulateLeft() {
    for (int i = N; i >= 1; --i) {
      const int l = i + 1;
      for (int j = l; j <= N; ++j) U(i, j) = 0.0;
      if (W(i) != 0.0) {
        const double g = 1.0 / W(i);
        for (int j = l; j <= N; ++j) {
          double s = 0.0;
          for (int k = l; k <= M; ++k) s += U(k, i) * U(k, j);
          const double f = s / U(i, i) * g;
          for (int k = i; k <= M; ++k) U(k, j) += f * U(k, i);
        }
        for (int k = i; k <= M; ++k) U(k, i) *= g;
      } else {
        for (int k = i; k <= M; ++k) U(k, i) = 0.0;
      }
      U(i, i) += 1.0;
    }
  }

  // QR iterations until w(k) stands alone; false when 30 are not enough.
  bool Settle(int k) {
    for (int its = 1;; ++its) {
      int l = k;
      for (; l > 1 && !IsNegligible(E(l)); --l) {
        if (IsNegligible(W(l - 1))) {
          Cancel(l, k);
          break;
        }
      }
      if (l == k) {
        if (W(k) < 0.0) {
          W(k) = -W(k);
          for (int j = 1; j <= N; ++j) V(j, k) = -V(j, k);
        }
        return true;
      }
      if (its == 30) return false;
      Sweep(l, k);
    }
  }

  void Cancel(int l, int k) {
    double c = 0.0;
    double s = 1.0;
    for (int i = l; i <= k; ++i) {
      const double f = s * E(i);
      E(i) = c * E(i);
      if (IsNegligible(f)) break;
      const double g = W(i);
      const double h = PlainHypot(f, g);
      W(i) = h;
      c = g / h;
      s = -f / h;
      Rotate(U, M, l - 1, i, c, s);
    }
  }

  void Sweep(int l, int k) {
    double x = W(l);
    double y = W(k - 1);
    double z = W(k);
    double g = E(k - 1);
    double h = E(k);
    double f = ((y - z) * (y + z) + (g - h) * (g + h)) / (2.0 * h * y);
    g = PlainHypot(f, 1.0);
    f = ((x - z) * (x + z) + h * (y / (f + PlainSign(g, f)) - h)) / x;
    double c = 1.0;
    double s = 1.0;
    for (int j = l; j < k; ++j) {
      const int i = j + 1;
      g = E(i);
      y = W(i);
      h = s * g;
      g = c * g;
      z = PlainHypot(f, h);
      E(j) = z;
      if (z != 0.0) {
        c = f / z;
        s = h / z;
      }
      f = x * c + g * s;
      g = g * c - x * s;
      h = y * s;
      y = y * c;
      Rotate(V, N, j, i, c, s);
      z = PlainHypot(f, h);
      W(j) = z;
      if (z != 0.0) {
        c = f / z;
        s = h / z;
      }
      f = c * g + s * y;
      x = c * y - s * g;
      Rotate(U, M, j, i, c, s);
    }
    E(l) = 0.0;
    E(k) = f;
    W(k) = x;
  }

  static void Rotate(TPlainMatrix& Matrix, int Rows, int p, int q, double c, double s) {
    for (int i = 1; i <= Rows; ++i) {
      const double y = Matrix(i, p);
      const double z = Matrix(i, q);
      Matrix(i, p) = y * c + z * s;
      Matrix(i, q) = z * c - y * s;
    }
  }
};

}  // namespace ZORBase::Test
