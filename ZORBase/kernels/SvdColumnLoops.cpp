#include <ZORBase/kernels/SvdColumnLoops.h>

#include <ZORBase/kernels/Lanes.h>

#include <cmath>

namespace ZORBase::SvdColumnLoops {
namespace {

// Count sums, 1 to 4, whose chains of additions hide each other's latency.
template <std::size_t Count>
ZORBASE_INLINE void SomeDots(const double* A, std::size_t Stride, std::size_t Rows, const double* C, double* Sums) {
  const double* const b = A + Stride;
  const double* const c = b + Stride;
  const double* const d = c + Stride;
  double sumA = 0.0, sumB = 0.0, sumC = 0.0, sumD = 0.0;
  for (std::size_t k = 0; k < Rows; ++k) {
    sumA += C[k] * A[k];
    if constexpr (Count > 1) sumB += C[k] * b[k];
    if constexpr (Count > 2) sumC += C[k] * c[k];
    if constexpr (Count > 3) sumD += C[k] * d[k];
  }
  Sums[0] = sumA;
  if constexpr (Count > 1) Sums[1] = sumB;
  if constexpr (Count > 2) Sums[2] = sumC;
  if constexpr (Count > 3) Sums[3] = sumD;
}

struct TReflections {
  double* A;
  std::size_t Stride;
  std::size_t Columns;
  const double* F;
  const double* C;
  const double* Y;
  const double* P;
};

// Both reflections of four rows.
template <bool IsByColumn, bool IsByRow>
ZORBASE_INLINE void ReflectFourRows(const TReflections& By, std::size_t k) {
  TLanes sums = Splat(0.0);
  for (std::size_t j = 0; j < By.Columns; ++j) {
    double* const at = By.A + j * By.Stride + k;
    TLanes a = Load(at);
    if constexpr (IsByColumn) {
      a = a + Splat(By.F[j]) * Load(By.C + k);
      Store(at, a);
    }
    if constexpr (IsByRow) sums = sums + a * Splat(By.Y[j]);
  }
  if constexpr (IsByRow) {
    for (std::size_t j = 0; j < By.Columns; ++j) {
      double* const at = By.A + j * By.Stride + k;
      Store(at, Load(at) + sums * Splat(By.P[j]));
    }
  }
}

template <bool IsByColumn, bool IsByRow>
ZORBASE_INLINE double ReflectAllRows(const TReflections& By, std::size_t Rows) {
  double sum = 0.0;
  for (std::size_t k = 0; k < Rows; k += kLanes) {
    ReflectFourRows<IsByColumn, IsByRow>(By, k);
    for (std::size_t r = k; r < k + kLanes && r < Rows; ++r) sum += std::fabs(By.A[r]);
  }
  return sum;
}

ZORBASE_TARGET_CLONES void AddMultiplesClones(double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns,
                                              const double* F, const double* C) {
  for (std::size_t j = 0; j < Columns; ++j) {
    const TLanes f = Splat(F[j]);
    double* const column = A + j * Stride;
    std::size_t k = 0;
    for (; k + kLanes <= Rows; k += kLanes) Store(column + k, Load(column + k) + f * Load(C + k));
    for (; k < Rows; ++k) column[k] += F[j] * C[k];
  }
}

ZORBASE_TARGET_CLONES double ReflectRowsClones(double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns,
                                               const double* F, const double* C, const double* Y, const double* P) {
  if (F != nullptr && Y != nullptr) return ReflectAllRows<true, true>({A, Stride, Columns, F, C, Y, P}, Rows);
  if (F != nullptr) return ReflectAllRows<true, false>({A, Stride, Columns, F, C, Y, P}, Rows);
  if (Y != nullptr) return ReflectAllRows<false, true>({A, Stride, Columns, F, C, Y, P}, Rows);
  return ReflectAllRows<false, false>({A, Stride, Columns, F, C, Y, P}, Rows);
}

}  // namespace

void ColumnDots(const double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* C,
                double* Sums) {
  std::size_t j = 0;
  for (; j + 4 <= Columns; j += 4) SomeDots<4>(A + j * Stride, Stride, Rows, C, Sums + j);
  switch (Columns - j) {
    case 3: return SomeDots<3>(A + j * Stride, Stride, Rows, C, Sums + j);
    case 2: return SomeDots<2>(A + j * Stride, Stride, Rows, C, Sums + j);
    case 1: return SomeDots<1>(A + j * Stride, Stride, Rows, C, Sums + j);
    default: return;
  }
}

void AddMultiples(double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* F,
                  const double* C) {
  AddMultiplesClones(A, Stride, Rows, Columns, F, C);
}

double ReflectRows(double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* F,
                   const double* C, const double* Y, const double* P) {
  return ReflectRowsClones(A, Stride, Rows, Columns, F, C, Y, P);
}

}  // namespace ZORBase::SvdColumnLoops
