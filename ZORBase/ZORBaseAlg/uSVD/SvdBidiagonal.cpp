#include <ZORBase/ZORBaseAlg/uSVD/SvdBidiagonal.h>
#include <ZORBase/common/Sign.h>
#include <ZORBase/kernels/SafeHypot.h>

namespace ZORBase {
namespace {

// Iterations after which a singular value that has not settled is given up.
constexpr int kMaxIterations = 30;

class TIteration {
 public:
  TIteration(TBidiagonal& Matrix, TRotationLog& ULog, TRotationLog& VLog)
      : w(Matrix.w), e(Matrix.e), VSigns(Matrix.VSigns), FNorm(Matrix.Norm), U(ULog), V(VLog) {}

  // Iterates until w[k] stands alone; false when that takes too long.
  bool Settle(std::size_t k) {
    for (int iteration = 1;; ++iteration) {
      const std::size_t l = BeginOfBlock(k);
      if (l == k) break;
      if (iteration == kMaxIterations) return false;
      Sweep(l, k);
    }
    VSigns[k] = w[k] < 0.0 ? -1.0 : 1.0;
    if (w[k] < 0.0) w[k] = -w[k];
    return true;
  }

 private:
  bool IsNegligible(double Value) const { return std::fabs(Value) + FNorm == FNorm; }

  // The block that ends at k begins where the matrix falls apart. With NaN in the norm nothing is negligible: then at 0.
  std::size_t BeginOfBlock(std::size_t k) {
    for (std::size_t l = k; l > 0; --l) {
      if (IsNegligible(e[l])) return l;
      if (IsNegligible(w[l - 1])) {
        Cancel(l, k);
        return l;
      }
    }
    return 0;
  }

  // Rotates e[l] away, in the row of a diagonal entry that is 0.
  void Cancel(std::size_t l, std::size_t k) {
    double c = 0.0;
    double s = 1.0;
    for (std::size_t i = l; i <= k; ++i) {
      const double f = s * e[i];
      e[i] = c * e[i];
      if (IsNegligible(f)) break;
      const double g = w[i];
      const double h = SafeHypot(f, g);
      w[i] = h;
      c = g / h;
      s = -f / h;
      U.Rotate(l - 1, i, {c, s});
    }
  }

  // The shift is an eigenvalue of the last 2 x 2 minor of the matrix times its transpose. \return the first entry of the
  // column that the first rotation is made from.
  double ShiftedFirst(std::size_t l, std::size_t k) const {
    const double x = w[l];
    const double y = w[k - 1];
    const double z = w[k];
    const double g = e[k - 1];
    const double h = e[k];
    const double f = ((y - z) * (y + z) + (g - h) * (g + h)) / (2.0 * h * y);
    const double root = SafeHypot(f, 1.0);
    return ((x - z) * (x + z) + h * (y / (f + SignOf(root, f)) - h)) / x;
  }

  // One QR transformation of the block l..k: an entry beside the bidiagonal is chased from its top to its bottom.
  void Sweep(std::size_t l, std::size_t k) {
    double f = ShiftedFirst(l, k);
    double x = w[l];
    double c = 1.0;
    double s = 1.0;
    U.BeginSweep(l, k - l);
    V.BeginSweep(l, k - l);
    for (std::size_t j = l; j < k; ++j) {
      double g = e[j + 1];
      double y = w[j + 1];
      double h = s * g;
      g = c * g;
      double z = SafeHypot(f, h);
      e[j] = z;
      if (z != 0.0) {
        c = f / z;
        s = h / z;
      }
      V.Add(c, s);
      f = x * c + g * s;
      g = g * c - x * s;
      h = y * s;
      y = y * c;
      z = SafeHypot(f, h);
      w[j] = z;
      if (z != 0.0) {
        c = f / z;
        s = h / z;
      }
      U.Add(c, s);
      f = c * g + s * y;
      x = c * y - s * g;
    }
    e[l] = 0.0;
    e[k] = f;
    w[k] = x;
  }

  std::span<double> w;
  std::span<double> e;
  std::span<double> VSigns;
  double FNorm;
  TRotationLog& U;
  TRotationLog& V;
};

}  // namespace

TSvdStatus Diagonalise(TBidiagonal& Matrix, TRotationLog& U, TRotationLog& V) {
  for (double& sign : Matrix.VSigns) sign = 1.0;
  TIteration iteration(Matrix, U, V);
  TSvdStatus status = TSvdStatus::Good;
  for (std::size_t k = Matrix.w.size(); k-- > 0 && status == TSvdStatus::Good;) {
    if (!iteration.Settle(k)) status = TSvdStatus::NoConvergence;
  }
  U.Apply();
  V.Apply();
  return status;
}

}  // namespace ZORBase
