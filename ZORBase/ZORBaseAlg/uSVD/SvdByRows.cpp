#include <ZORBase/ZORBaseAlg/uSVD/SvdByRows.h>

#include <algorithm>
#include <array>
#include <utility>

namespace ZORBase {

using SvdLoops::kPanel;
using SvdLoops::TReflector;

namespace {

constexpr std::size_t kLine = 8;  // numbers in a cache line

// An odd number of cache lines, so that the rows of a column spread over the cache.
constexpr std::size_t OddLines(std::size_t Count) { return (Count + kLine - 1) / kLine * kLine | kLine; }

using TPanelSums = std::array<double, kPanel>;

// The rows of A, which are also to hold whole blocks of U.
constexpr std::size_t MatrixRows(std::size_t Rows) { return Rows + TColumns::kBlock - 1; }
static_assert(SvdLoops::kSpareRows < TColumns::kBlock);

// Vectors begin at a multiple of four.
constexpr std::size_t AlignedDown(std::size_t Column) { return Column / 4 * 4; }

}  // namespace

TSvdByRows::TSvdByRows(std::size_t Rows, std::size_t Columns, TBidiagonal& Matrix, double* Work)
    : FRows(Rows),
      FColumns(Columns),
      FStride(OddLines(Columns)),
      FReflectorStride(OddLines(Rows + SvdLoops::kSpareRows)),
      FMatrix(Matrix),
      FA(Work),
      FReflectors(FA + MatrixRows(Rows) * FStride),
      FQuotients(FReflectors + Columns * FReflectorStride),
      FPanel(FQuotients + Columns * FStride),
      FSums(FPanel + Rows * kPanel),
      FRow(FSums + FStride),
      FParts(FRow + FStride) {
  std::fill(FA, FReflectors, 0.0);
  std::fill_n(FSums, 3 * FStride, 0.0);
}

std::size_t TSvdByRows::WorkSize(std::size_t Rows, std::size_t Columns) {
  const std::size_t stride = OddLines(Columns);
  return MatrixRows(Rows) * stride + Columns * OddLines(Rows + SvdLoops::kSpareRows) + Columns * stride +
         Rows * kPanel + 3 * stride;
}

void TSvdByRows::Reduce() {
  FMatrix.e[0] = 0.0;
  double* const first = ColumnReflector(0);
  for (std::size_t k = 0; k < FRows + SvdLoops::kSpareRows; ++k) first[k] = std::exchange(Row(k)[0], 0.0);
  double magnitudes = SvdLoops::SumOfMagnitudes(first, FRows);
  for (std::size_t i = 0; i < FColumns; ++i) {
    magnitudes = ReduceStep(i, magnitudes);
    FMatrix.Measure(i);
  }
}

// The reflection that makes the column i zero below the diagonal. FSums become the multiples of it that the columns behind i
// are to get.
TReflector TSvdByRows::ReflectColumn(std::size_t i, double Magnitudes) {
  double* const column = ColumnReflector(i) + i;
  const TReflector reflector = SvdLoops::MakeReflector(column, FRows - i, Magnitudes);
  FMatrix.w[i] = reflector.Scale * reflector.G;
  if (!reflector.Exists() || i + 1 == FColumns) return reflector;
  const std::size_t from = AlignedDown(i + 1);
  SvdLoops::ColumnDots(Row(i) + from, FStride, FRows - i, FColumns - from, column, FSums + from);
  for (std::size_t j = from; j < FStride; ++j) FSums[j] /= reflector.H;
  return reflector;
}

// The reflection that makes the row i zero behind the superdiagonal, in FRow, with zeros up to there.
TReflector TSvdByRows::ReflectRow(std::size_t i) {
  const std::size_t l = i + 1;
  std::fill_n(FRow, l, 0.0);
  std::copy_n(Row(i) + l, FStride - l, FRow + l);
  const TReflector reflector =
      SvdLoops::MakeReflector(FRow + l, FColumns - l, SvdLoops::SumOfMagnitudes(FRow + l, FColumns - l));
  FMatrix.e[l] = reflector.Scale * reflector.G;
  if (!reflector.Exists()) return reflector;
  for (std::size_t j = AlignedDown(l); j < FStride; ++j) FParts[j] = FRow[j] / reflector.H;
  return reflector;
}

// Both reflections go over the rows below i in one pass, which also takes out the next column. \return the sum of the
// magnitudes of that; Magnitudes is the sum for this one.
double TSvdByRows::ReduceStep(std::size_t i, double Magnitudes) {
  double nextMagnitudes = 0.0;
  const std::size_t l = i + 1;
  double* const column = ColumnReflector(i);
  const TReflector byColumn = ReflectColumn(i, Magnitudes);
  if (l < FColumns) {
    double* const row = Row(i);
    if (byColumn.Exists()) {
      for (std::size_t j = l; j < FColumns; ++j) row[j] += FSums[j] * column[i];
    }
    const TReflector byRow = ReflectRow(i);
    const std::size_t from = AlignedDown(l);
    nextMagnitudes = SvdLoops::ReflectRows(
        Row(l) + from, FStride, FRows - l, FColumns - from, byColumn.Exists() ? FSums + from : nullptr, column + l,
        byRow.Exists() ? FRow + from : nullptr, FParts + from, l - from, ColumnReflector(l) + l);
    if (byRow.Exists()) {
      for (std::size_t j = l; j < FColumns; ++j) row[j] = FRow[j] * byRow.Scale;
    }
  }
  if (byColumn.Exists()) SvdLoops::Multiply(column + i, FRows - i, byColumn.Scale);
  return nextMagnitudes;
}

void TSvdByRows::AccumulateV(const TColumns& V) {
  for (std::size_t i = 0; i + 1 < FColumns; ++i) {
    const std::size_t l = i + 1;
    if (FMatrix.e[l] == 0.0) continue;
    // Divided twice, for the product of both may underflow.
    for (std::size_t j = l; j < FColumns; ++j) Quotients(i)[j] = Row(i)[j] / Row(i)[l] / FMatrix.e[l];
  }
  for (std::size_t p = 0; p < FColumns; p += kPanel) {
    const std::size_t end = std::min(p + kPanel, FColumns);
    AccumulateVPanel(p, end);
    StorePanel(V, p, end);
  }
}

// The columns First..End-1 of V. The reflection i leaves the rows and columns up to i as they are, so a column begins as a
// unit vector when its turn has come; until then what stands in its place has no meaning.
void TSvdByRows::AccumulateVPanel(std::size_t First, std::size_t End) {
  std::fill_n(FPanel, FColumns * kPanel, 0.0);
  TPanelSums sums{};
  for (std::size_t i = End; i-- > First;) {
    const std::size_t l = i + 1;
    double* const below = FPanel + l * kPanel;
    if (l < End && FMatrix.e[l] != 0.0) {
      sums.fill(0.0);
      SvdLoops::UpdatePanel(below, FColumns - l, nullptr, nullptr, Row(i) + l, sums.data());
      SvdLoops::UpdatePanel(below, FColumns - l, sums.data(), Quotients(i) + l, nullptr, nullptr);
    }
    for (std::size_t k = l; k < FColumns; ++k) FPanel[k * kPanel + i - First] = 0.0;
    FPanel[i * kPanel + i - First] = 1.0;
  }
  AccumulateVAbove(First);
}

// The reflections above the panel, which touch all of its columns: the update of one and the sums of the next one in the same
// pass.
void TSvdByRows::AccumulateVAbove(std::size_t First) {
  TPanelSums sums{};
  TPanelSums nextSums{};
  const bool isFirst = First > 0 && FMatrix.e[First] != 0.0;
  if (isFirst) {
    SvdLoops::UpdatePanel(FPanel + First * kPanel, FColumns - First, nullptr, nullptr, Row(First - 1) + First,
                          sums.data());
  }
  for (std::size_t i = First; i-- > 0;) {
    const std::size_t l = i + 1;
    const bool hasNext = i > 0 && FMatrix.e[i] != 0.0;
    if (hasNext) {
      for (std::size_t c = 0; c < kPanel; ++c) nextSums[c] = 0.0 + Row(i - 1)[i] * FPanel[i * kPanel + c];
    }
    SvdLoops::UpdatePanel(FPanel + l * kPanel, FColumns - l, FMatrix.e[l] != 0.0 ? sums.data() : nullptr,
                          Quotients(i) + l, hasNext ? Row(i - 1) + l : nullptr, nextSums.data());
    sums = nextSums;
  }
}

TColumns TSvdByRows::AccumulateU() {
  const TColumns u{FA, FRows, TColumns::kBlock, TColumns::kBlock * FColumns};
  for (std::size_t p = 0; p < FColumns; p += kPanel) {
    const std::size_t end = std::min(p + kPanel, FColumns);
    AccumulateUPanel(p, end);
    StorePanel(u, p, end);
  }
  return u;
}

// The columns First..End-1 of U. The reflection i begins the column i, whose place has no meaning before.
void TSvdByRows::AccumulateUPanel(std::size_t First, std::size_t End) {
  std::fill_n(FPanel, FRows * kPanel, 0.0);
  TPanelSums sums{};
  for (std::size_t i = End; i-- > First;) {
    const std::size_t l = i + 1;
    const double* const x = ColumnReflector(i);
    double* const column = FPanel + i - First;
    if (FMatrix.w[i] != 0.0) {
      const double g = 1.0 / FMatrix.w[i];
      if (l < End) {
        sums.fill(0.0);
        SvdLoops::UpdatePanel(FPanel + l * kPanel, FRows - l, nullptr, nullptr, x + l, sums.data());
        for (double& sum : sums) sum = sum / x[i] * g;
        SvdLoops::UpdatePanel(FPanel + i * kPanel, FRows - i, sums.data(), x + i, nullptr, nullptr);
      }
      for (std::size_t k = i; k < FRows; ++k) column[k * kPanel] = x[k] * g;
    } else {
      for (std::size_t k = i; k < FRows; ++k) column[k * kPanel] = 0.0;
    }
    column[i * kPanel] += 1.0;
  }
  AccumulateUAbove(First);
}

void TSvdByRows::AccumulateUAbove(std::size_t First) {
  TPanelSums sums{};
  if (First > 0 && FMatrix.w[First - 1] != 0.0) {
    SvdLoops::UpdatePanel(FPanel + First * kPanel, FRows - First, nullptr, nullptr, ColumnReflector(First - 1) + First,
                          sums.data());
  }
  for (std::size_t i = First; i-- > 0;) {
    const double* const x = ColumnReflector(i);
    const bool hasThis = FMatrix.w[i] != 0.0;
    const bool hasNext = i > 0 && FMatrix.w[i - 1] != 0.0;
    const double g = 1.0 / FMatrix.w[i];
    TPanelSums factors;
    for (std::size_t c = 0; c < kPanel; ++c) factors[c] = sums[c] / x[i] * g;
    sums.fill(0.0);
    SvdLoops::UpdatePanel(FPanel + i * kPanel, FRows - i, hasThis ? factors.data() : nullptr, x + i,
                          hasNext ? ColumnReflector(i - 1) + i : nullptr, sums.data());
  }
}

void TSvdByRows::StorePanel(const TColumns& To, std::size_t First, std::size_t End) const {
  for (std::size_t i = 0; i < To.Rows; i += TColumns::kBlock) {
    const std::size_t rows = std::min(TColumns::kBlock, To.Rows - i);
    for (std::size_t j = First; j < End; ++j) {
      const double* const from = FPanel + i * kPanel + j - First;
      double* const to = To.At(i, j);
      for (std::size_t r = 0; r < rows; ++r) to[r] = from[r * kPanel];
      for (std::size_t r = rows; r < TColumns::kBlock; ++r) to[r] = 0.0;
    }
  }
}

}  // namespace ZORBase
