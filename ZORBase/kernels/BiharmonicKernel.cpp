#include <ZORBase/kernels/BiharmonicKernel.h>

#include <ZORBase/kernels/Logarithm.h>
#include <ZORBase/kernels/TargetClones.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>

// This file is compiled without errno and traps: a root that may set the one, or a selection that may raise the other, takes no lanes.

namespace ZORBase {
namespace {

// So many places are worked on side by side.
constexpr std::size_t kBlock = 16;

ZORBASE_INLINE double Distance(double DX, double DY) { return std::sqrt(DX * DX + DY * DY); }

// The distances that reach the logarithm are normal, infinite or NaN; at infinity the square decides and not the logarithm.
ZORBASE_INLINE double Term(double Weight, double d, double SamePlace) {
  const double term = Weight * (d * d) * (LnNormal(d) - 1.0);
  return d <= SamePlace ? 0.0 : term;  // adding 0 is leaving out: a sum that starts from 0 is never -0
}

// A block of entries of a row, from the first place of the block. Collects what is wrong.
struct TFaults {
  std::uint64_t Same[kBlock] = {};
  std::uint64_t TooFar[kBlock] = {};
};

ZORBASE_INLINE void FillBlock(const double* X, const double* Y, double AtX, double AtY, double SamePlace,
                              double* Entries, TFaults& Faults) {
  for (std::size_t l = 0; l < kBlock; ++l) {
    const double d = Distance(AtX - X[l], AtY - Y[l]);
    const double phi = d * d * (LnNormal(d) - 1.0);
    Entries[l] = phi;
    Faults.Same[l] |= d <= SamePlace ? std::uint64_t{1} : std::uint64_t{0};
    Faults.TooFar[l] |= phi <= std::numeric_limits<double>::max() ? std::uint64_t{0} : std::uint64_t{1};
  }
}

bool Any(const std::uint64_t (&Flags)[kBlock]) {
  return std::any_of(std::begin(Flags), std::end(Flags), [](std::uint64_t Flag) { return Flag != 0; });
}

// Copies the part above the diagonal to below it, tile by tile, so that both stay in cache.
void Mirror(double* Matrix, std::size_t Count) {
  constexpr std::size_t tile = 32;
  for (std::size_t row = 0; row < Count; row += tile) {
    for (std::size_t column = 0; column <= row; column += tile) {
      for (std::size_t i = row; i < std::min(row + tile, Count); ++i) {
        for (std::size_t j = column; j < std::min(column + tile, i); ++j) Matrix[i * Count + j] = Matrix[j * Count + i];
      }
    }
  }
}

// Row by row from the block of the diagonal on; what that block gives on the diagonal and below it is not looked at.
ZORBASE_TARGET_CLONES TPlacesFault FillBiharmonicMatrixClones(const TPlaces& Places, double SamePlace,
                                                              std::span<double> Matrix) {
  const std::size_t count = Places.X.size();
  TFaults faults;
  for (std::size_t i = 0; i < count; ++i) {
    const double x = Places.X[i];
    const double y = Places.Y[i];
    double* const row = Matrix.data() + i * count;
    std::size_t j = i + 1;
    for (; j + kBlock <= count; j += kBlock) FillBlock(&Places.X[j], &Places.Y[j], x, y, SamePlace, row + j, faults);
    for (; j < count; ++j) {
      const double d = Distance(x - Places.X[j], y - Places.Y[j]);
      row[j] = d * d * (LnNormal(d) - 1.0);
      if (d <= SamePlace) faults.Same[0] = 1;
      if (!(row[j] <= std::numeric_limits<double>::max())) faults.TooFar[0] = 1;
    }
    row[i] = 0.0;
  }
  if (Any(faults.Same)) return TPlacesFault::Same;
  if (Any(faults.TooFar)) return TPlacesFault::TooFar;
  Mirror(Matrix.data(), count);
  return TPlacesFault::None;
}

ZORBASE_TARGET_CLONES double BiharmonicHeightClones(const TPlaces& Places, std::span<const double> Weights,
                                                    double SamePlace, double X, double Y) {
  const double* const x = Places.X.data();
  const double* const y = Places.Y.data();
  const double* const weights = Weights.data();
  const std::size_t whole = Weights.size() - Weights.size() % kBlock;
  double sum = 0.0;
  for (std::size_t i = 0; i < whole; i += kBlock) {
    double terms[kBlock];
    for (std::size_t l = 0; l < kBlock; ++l)
      terms[l] = Term(weights[i + l], Distance(X - x[i + l], Y - y[i + l]), SamePlace);
    for (const double term : terms) sum += term;
  }
  for (std::size_t i = whole; i < Weights.size(); ++i) sum += Term(weights[i], Distance(X - x[i], Y - y[i]), SamePlace);
  return sum;
}

// Lanes are points: each has its own sum in order.
ZORBASE_TARGET_CLONES void BiharmonicHeightsClones(const TPlaces& Places, std::span<const double> Weights,
                                                   double SamePlace, std::span<const TPoint2D> At,
                                                   std::span<double> Heights) {
  constexpr std::size_t lanes = 8;
  for (std::size_t done = 0; done < At.size(); done += lanes) {
    const std::size_t points = std::min(lanes, At.size() - done);
    double x[lanes] = {};
    double y[lanes] = {};
    double sums[lanes] = {};
    for (std::size_t l = 0; l < points; ++l) {
      x[l] = At[done + l].X;
      y[l] = At[done + l].Y;
    }
    for (std::size_t i = 0; i < Weights.size(); ++i) {
      const double weight = Weights[i];
      const double atX = Places.X[i];
      const double atY = Places.Y[i];
      for (std::size_t l = 0; l < lanes; ++l) sums[l] += Term(weight, Distance(x[l] - atX, y[l] - atY), SamePlace);
    }
    std::copy_n(sums, points, Heights.data() + done);
  }
}

}  // namespace

TPlacesFault FillBiharmonicMatrix(const TPlaces& Places, double SamePlace, std::span<double> Matrix) {
  return FillBiharmonicMatrixClones(Places, SamePlace, Matrix);
}

double BiharmonicHeight(const TPlaces& Places, std::span<const double> Weights, double SamePlace, double X, double Y) {
  return BiharmonicHeightClones(Places, Weights, SamePlace, X, Y);
}

void BiharmonicHeights(const TPlaces& Places, std::span<const double> Weights, double SamePlace,
                       std::span<const TPoint2D> At, std::span<double> Heights) {
  BiharmonicHeightsClones(Places, Weights, SamePlace, At, Heights);
}

}  // namespace ZORBase
