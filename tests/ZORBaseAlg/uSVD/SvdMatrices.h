// SvdMatrices: matrices to decompose, row by row, the same in every run.
#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <utility>
#include <vector>

namespace ZORBase::Test {

struct TMatrixCase {
  int M;
  int N;
  std::vector<double> Items{};
};

/// Numbers within -1..1.
inline TMatrixCase NoiseMatrix(int M, int N, std::uint64_t Seed = 1) {
  std::mt19937_64 random(Seed + static_cast<std::uint64_t>(M * 1000 + N));
  TMatrixCase matrix{M, N};
  matrix.Items.resize(static_cast<std::size_t>(M) * static_cast<std::size_t>(N));
  for (double& item : matrix.Items) item = static_cast<double>(random() >> 11U) * 0x1p-52 - 1.0;
  return matrix;
}

/// Matrix with Change(i, j, item) in place of every item.
template <class TChange>
TMatrixCase Changed(TMatrixCase Matrix, TChange&& Change) {
  for (int i = 0; i < Matrix.M; ++i) {
    for (int j = 0; j < Matrix.N; ++j) {
      double& item =
          Matrix.Items[static_cast<std::size_t>(i) * static_cast<std::size_t>(Matrix.N) + static_cast<std::size_t>(j)];
      item = Change(i, j, item);
    }
  }
  return Matrix;
}

inline TMatrixCase ScaledNoise(int M, int N, double Scale) {
  return Changed(NoiseMatrix(M, N), [Scale](int, int, double Item) { return Item * Scale; });
}

/// Rank one, but for a little noise of size Rest.
inline TMatrixCase DependentColumns(int M, int N, double Rest) {
  return Changed(NoiseMatrix(M, N),
                 [Rest](int i, int j, double Item) { return std::sin(1.0 + i) * std::cos(2.0 + j) + Rest * Item; });
}

/// Rows and columns that fall by many orders of magnitude.
inline TMatrixCase GradedMatrix(int M, int N) {
  return Changed(NoiseMatrix(M, N), [](int i, int j, double Item) { return Item * std::pow(2.0, -(i + j)); });
}

/// Bidiagonal already, with zeros on the diagonal, which have to be rotated out of the way.
inline TMatrixCase BidiagonalWithZeros(int M, int N) {
  return Changed(NoiseMatrix(M, N), [](int i, int j, double Item) {
    if (i == j) return i % 3 == 1 ? 0.0 : 2.0 + Item;
    return j == i + 1 ? 1.0 + Item / 2 : 0.0;
  });
}

inline TMatrixCase WithItem(TMatrixCase Matrix, std::size_t Place, double Value) {
  Matrix.Items[Place % Matrix.Items.size()] = Value;
  return Matrix;
}

}  // namespace ZORBase::Test
