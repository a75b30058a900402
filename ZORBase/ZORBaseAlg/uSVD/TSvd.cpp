#include <ZORBase/ZORBaseAlg/uSVD/TSvd.h>

#include <algorithm>
#include <array>

namespace ZORBase {
namespace {

// From this number of columns on, rows are long enough for lanes.
constexpr std::size_t kManyColumns = 16;

constexpr std::size_t RoundedUp(std::size_t Count) {
  return (Count + TColumns::kBlock - 1) / TColumns::kBlock * TColumns::kBlock;
}

// Sums[j] = the sum of B[i] times the entry (i, j), row after row; four columns side by side. The last column stands in for
// those that are not there.
void ColumnDots(const TColumns& Matrix, std::size_t Columns, const double* B, double* Sums) {
  for (std::size_t j = 0; j < Columns; j += 4) {
    std::array<const double*, 4> columns{};
    for (std::size_t q = 0; q < 4; ++q) columns[q] = Matrix.At(0, std::min(j + q, Columns - 1));
    double sumA = 0.0, sumB = 0.0, sumC = 0.0, sumD = 0.0;
    for (std::size_t i = 0; i < Matrix.Rows; ++i) {
      const std::size_t at = i / TColumns::kBlock * Matrix.BlockStride + i % TColumns::kBlock;
      sumA += columns[0][at] * B[i];
      sumB += columns[1][at] * B[i];
      sumC += columns[2][at] * B[i];
      sumD += columns[3][at] * B[i];
    }
    const std::array<double, 4> sums{sumA, sumB, sumC, sumD};
    std::copy_n(sums.begin(), std::min<std::size_t>(4, Columns - j), Sums + j);
  }
}

// Sums[i] = the sum of X[j] times the entry (i, j), column after column.
void RowDots(const TColumns& Matrix, std::size_t Columns, const double* X, double* Sums) {
  for (std::size_t i = 0; i < Matrix.Rows; i += TColumns::kBlock) {
    std::array<double, TColumns::kBlock> sums{};
    for (std::size_t j = 0; j < Columns; ++j) {
      const double* const column = Matrix.At(i, j);
      for (std::size_t r = 0; r < TColumns::kBlock; ++r) sums[r] += column[r] * X[j];
    }
    std::copy_n(sums.begin(), std::min(TColumns::kBlock, Matrix.Rows - i), Sums + i);
  }
}

}  // namespace

TSvd::TSvd(std::size_t M, std::size_t N, TUse Use) : FRows(M), FColumns(N), FUse(Use), FIsByRows(N >= kManyColumns) {
  const std::size_t uStride = TSvdByColumns::ColumnStride(M);
  const std::size_t vStride = TSvdByColumns::ColumnStride(N);
  const std::size_t matrixSize = FIsByRows ? TSvdByRows::WorkSize(M, N) : N * uStride + TSvdByColumns::WorkSize(N);
  const std::size_t vSize = FIsByRows ? N * RoundedUp(N) : N * vStride;
  FWork = AllocateDoubles(matrixSize + vSize + 3 * N + 4 * TRotationLog::Capacity(N));
  double* const matrix = FWork.get();
  double* const v = matrix + matrixSize;
  double* const vectors = v + vSize;
  FMatrix.w = {vectors, N};
  FMatrix.e = {vectors + N, N};
  FMatrix.VSigns = {vectors + 2 * N, N};
  FRotations = reinterpret_cast<TRotation*>(vectors + 3 * N);
  if (FIsByRows) {
    FV = {v, N, TColumns::kBlock, TColumns::kBlock * N};
    FByRows.emplace(M, N, FMatrix, matrix);
  } else {
    FU = {matrix, M, uStride, TColumns::kBlock};
    FV = {v, N, vStride, TColumns::kBlock};
    for (std::size_t j = 0; j < N; ++j) std::fill(matrix + j * uStride + M, matrix + (j + 1) * uStride, 0.0);
    std::fill_n(v, vSize, 0.0);
    FByColumns.emplace(FU, FMatrix, matrix + N * uStride);
  }
}

void TSvd::Load(const double* From, std::size_t RowStride, std::size_t ColumnStride, const double* Offsets) {
  const auto offset = [Offsets](std::size_t j) { return Offsets != nullptr ? Offsets[j] : 0.0; };
  if (FIsByRows) {
    for (std::size_t i = 0; i < FRows; ++i) {
      double* const to = FByRows->A() + i * FByRows->Stride();
      for (std::size_t j = 0; j < FColumns; ++j) to[j] = From[i * RowStride + j * ColumnStride] - offset(j);
    }
    return;
  }
  constexpr std::size_t kRowsAtOnce = 64;  // they stay in the cache for all columns
  for (std::size_t first = 0; first < FRows; first += kRowsAtOnce) {
    const std::size_t end = std::min(first + kRowsAtOnce, FRows);
    for (std::size_t j = 0; j < FColumns; ++j) {
      double* const to = FU.At(0, j);
      const double* const from = From + j * ColumnStride;
      const double offsetOfColumn = offset(j);
      for (std::size_t i = first; i < end; ++i) to[i] = from[i * RowStride] - offsetOfColumn;
    }
  }
}

TSvdStatus TSvd::Decompose() {
  const bool isUWanted = FUse == TUse::Everything;
  if (FIsByRows) {
    FByRows->Reduce();
    FByRows->AccumulateV(FV);
    if (isUWanted) FU = FByRows->AccumulateU();
  } else {
    FByColumns->Reduce();
    FByColumns->AccumulateV(FV);
    if (isUWanted) FByColumns->AccumulateU();
  }
  TRotationLog uLog(isUWanted ? FU : TColumns{}, FRotations, FColumns);
  TRotationLog vLog(FV, FRotations + TRotationLog::Capacity(FColumns), FColumns);
  const TSvdStatus status = Diagonalise(FMatrix, uLog, vLog);
  NegateColumnsOfV();
  return status;
}

void TSvd::NegateColumnsOfV() {
  for (std::size_t j = 0; j < FColumns; ++j) {
    if (FMatrix.VSigns[j] > 0.0) continue;
    for (std::size_t i = 0; i < FColumns; ++i) *FV.At(i, j) = -*FV.At(i, j);
  }
}

void TSvd::Solve(const double* B, double* X) {
  double* const parts = FMatrix.e.data();  // which is of no more use
  ColumnDots(FU, FColumns, B, parts);
  for (std::size_t j = 0; j < FColumns; ++j) parts[j] = FMatrix.w[j] > 0.0 ? parts[j] / FMatrix.w[j] : 0.0;
  RowDots(FV, FColumns, parts, X);
}

}  // namespace ZORBase
