#include <ZORBase/ZORBaseAlg/uSVD/SvdByColumns.h>
#include <ZORBase/kernels/SvdColumnLoops.h>
#include <ZORBase/kernels/SvdLoops.h>

#include <algorithm>

namespace ZORBase {

using SvdLoops::TReflector;

TSvdByColumns::TSvdByColumns(const TColumns& Matrix, TBidiagonal& Bidiagonal, double* Work)
    : A(Matrix),
      FRows(Matrix.Rows),
      FColumns(Bidiagonal.w.size()),
      FMatrix(Bidiagonal),
      FSums(Work),
      FRow(Work + FColumns + 3),
      FParts(Work + 2 * (FColumns + 3)) {}

std::size_t TSvdByColumns::ColumnStride(std::size_t Rows) {
  constexpr std::size_t kSpare = 3;
  return (Rows + kSpare + TColumns::kBlock - 1) / TColumns::kBlock * TColumns::kBlock;
}

void TSvdByColumns::Reduce() {
  FMatrix.e[0] = 0.0;
  double magnitudes = SvdLoops::SumOfMagnitudes(Column(0), FRows);
  for (std::size_t i = 0; i < FColumns; ++i) {
    magnitudes = ReduceStep(i, magnitudes);
    FMatrix.Measure(i);
  }
}

// The reflection that makes the column i zero below the diagonal, in its place. FSums become the multiples of it that the
// columns behind i are to get.
TReflector TSvdByColumns::ReflectColumn(std::size_t i, double Magnitudes) {
  double* const column = Column(i) + i;
  const std::size_t others = FColumns - i - 1;
  const TReflector reflector = SvdLoops::MakeReflector(column, FRows - i, Magnitudes);
  FMatrix.w[i] = reflector.Scale * reflector.G;
  if (!reflector.Exists() || others == 0) return reflector;
  SvdColumnLoops::ColumnDots(Column(i + 1) + i, A.ColumnStride, FRows - i, others, column, FSums);
  for (std::size_t j = 0; j < others; ++j) FSums[j] /= reflector.H;
  return reflector;
}

// The reflection that makes the row i zero behind the superdiagonal, in FRow.
TReflector TSvdByColumns::ReflectRow(std::size_t i) {
  const std::size_t l = i + 1;
  const std::size_t columns = FColumns - l;
  for (std::size_t j = 0; j < columns; ++j) FRow[j] = Column(l + j)[i];
  const TReflector reflector = SvdLoops::MakeReflector(FRow, columns, SvdLoops::SumOfMagnitudes(FRow, columns));
  FMatrix.e[l] = reflector.Scale * reflector.G;
  if (!reflector.Exists()) return reflector;
  for (std::size_t j = 0; j < columns; ++j) FParts[j] = FRow[j] / reflector.H;
  return reflector;
}

// Both reflections go over the rows below i in one pass. \return the sum of the magnitudes of the next column from the diagonal
// on; Magnitudes is the sum for this one.
double TSvdByColumns::ReduceStep(std::size_t i, double Magnitudes) {
  const std::size_t l = i + 1;
  double nextMagnitudes = 0.0;
  double* const column = Column(i);
  const TReflector byColumn = ReflectColumn(i, Magnitudes);
  if (l < FColumns) {
    const std::size_t columns = FColumns - l;
    if (byColumn.Exists()) {
      for (std::size_t j = 0; j < columns; ++j) Column(l + j)[i] += FSums[j] * column[i];
    }
    const TReflector byRow = ReflectRow(i);
    nextMagnitudes = SvdColumnLoops::ReflectRows(Column(l) + l, A.ColumnStride, FRows - l, columns,
                                                 byColumn.Exists() ? FSums : nullptr, column + l,
                                                 byRow.Exists() ? FRow : nullptr, FParts);
    if (byRow.Exists()) {
      for (std::size_t j = 0; j < columns; ++j) Column(l + j)[i] = FRow[j] * byRow.Scale;
    }
  }
  if (byColumn.Exists()) SvdLoops::Multiply(column + i, FRows - i, byColumn.Scale);
  return nextMagnitudes;
}

// From the last reflection to the first, each in the part of V that the later ones have filled.
void TSvdByColumns::AccumulateV(const TColumns& V) const {
  const std::size_t n = FColumns;
  for (std::size_t i = n; i-- > 0;) {
    const std::size_t l = i + 1;
    if (l < n && FMatrix.e[l] != 0.0) {
      for (std::size_t k = l; k < n; ++k) FRow[k] = Column(k)[i];
      // Divided twice, for the product of both may underflow.
      for (std::size_t k = l; k < n; ++k) FParts[k] = FRow[k] / FRow[l] / FMatrix.e[l];
      double* const from = V.Items + l * V.ColumnStride + l;
      SvdColumnLoops::ColumnDots(from, V.ColumnStride, n - l, n - l, FRow + l, FSums);
      SvdColumnLoops::AddMultiples(from, V.ColumnStride, n - l, n - l, FSums, FParts + l);
    }
    V.Items[i * V.ColumnStride + i] = 1.0;
  }
}

void TSvdByColumns::AccumulateU() {
  for (std::size_t i = FColumns; i-- > 0;) {
    const std::size_t l = i + 1;
    const std::size_t others = FColumns - l;
    double* const column = Column(i) + i;
    double* const next = column + A.ColumnStride;
    for (std::size_t j = 0; j < others; ++j) next[j * A.ColumnStride] = 0.0;
    if (FMatrix.w[i] != 0.0) {
      const double g = 1.0 / FMatrix.w[i];
      SvdColumnLoops::ColumnDots(next + 1, A.ColumnStride, FRows - l, others, column + 1, FSums);
      for (std::size_t j = 0; j < others; ++j) FSums[j] = FSums[j] / *column * g;
      SvdColumnLoops::AddMultiples(next, A.ColumnStride, FRows - i, others, FSums, column);
      SvdLoops::Multiply(column, FRows - i, g);
    } else {
      std::fill_n(column, FRows - i, 0.0);
    }
    *column += 1.0;
  }
}

}  // namespace ZORBase
