#include <ZORBase/kernels/SvdLoops.h>

#include <ZORBase/common/Sign.h>
#include <ZORBase/kernels/Lanes.h>

#include <cmath>
#include <utility>

namespace ZORBase::SvdLoops {
namespace {

// Four rows at once, so that a sum is loaded and stored once for four terms.
ZORBASE_INLINE void AddFourRows(const double* A, std::size_t Stride, std::size_t Columns, const double* C,
                                double* Sums) {
  const TLanes c0 = Splat(C[0]), c1 = Splat(C[1]), c2 = Splat(C[2]), c3 = Splat(C[3]);
  for (std::size_t j = 0; j < Columns; j += kLanes) {
    TLanes sum = Load(Sums + j);
    sum = sum + c0 * Load(A + j);
    sum = sum + c1 * Load(A + Stride + j);
    sum = sum + c2 * Load(A + 2 * Stride + j);
    sum = sum + c3 * Load(A + 3 * Stride + j);
    Store(Sums + j, sum);
  }
}

ZORBASE_INLINE void AddRow(const double* A, std::size_t Columns, double C, double* Sums) {
  const TLanes c = Splat(C);
  for (std::size_t j = 0; j < Columns; j += kLanes) Store(Sums + j, Load(Sums + j) + c * Load(A + j));
}

// One number for each of four rows, in all lanes.
struct TFour {
  TLanes A, B, C, D;
};

ZORBASE_INLINE TFour SplatFour(const double* From) {
  return {Splat(From[0]), Splat(From[1]), Splat(From[2]), Splat(From[3])};
}

// What ReflectRows does for four rows in a place of four columns: the column reflection, and the terms of the four sums.
template <bool IsByColumn, bool IsByRow>
ZORBASE_INLINE void FourRowsByColumn(double* A, std::size_t Stride, const double* F, const TFour& C, const double* Y,
                                     TLanes& Sums) {
  TLanes a0 = Load(A), a1 = Load(A + Stride), a2 = Load(A + 2 * Stride), a3 = Load(A + 3 * Stride);
  if constexpr (IsByColumn) {
    const TLanes f = Load(F);
    a0 = a0 + f * C.A;
    a1 = a1 + f * C.B;
    a2 = a2 + f * C.C;
    a3 = a3 + f * C.D;
    Store(A, a0);
    Store(A + Stride, a1);
    Store(A + 2 * Stride, a2);
    Store(A + 3 * Stride, a3);
  }
  if constexpr (IsByRow) {
    const TLanes y = Load(Y);
    a0 = a0 * y, a1 = a1 * y, a2 = a2 * y, a3 = a3 * y;
    Transpose(a0, a1, a2, a3);
    Sums = Sums + a0;
    Sums = Sums + a1;
    Sums = Sums + a2;
    Sums = Sums + a3;
  }
}

ZORBASE_INLINE void FourRowsByRow(double* A, std::size_t Stride, const double* P, const TFour& Sums) {
  const TLanes p = Load(P);
  Store(A, Load(A) + Sums.A * p);
  Store(A + Stride, Load(A + Stride) + Sums.B * p);
  Store(A + 2 * Stride, Load(A + 2 * Stride) + Sums.C * p);
  Store(A + 3 * Stride, Load(A + 3 * Stride) + Sums.D * p);
}

struct TReflections {
  std::size_t Stride;
  std::size_t Columns;
  const double* F;
  const double* Y;
  const double* P;
};

// Four rows, or eight: two chains of additions hide each other's latency.
template <std::size_t Fours, bool IsByColumn, bool IsByRow>
ZORBASE_INLINE void ReflectSomeRows(double* A, const TReflections& By, const double* C) {
  const std::size_t stride = By.Stride;
  const TFour c = SplatFour(C);
  TFour d = c;
  if constexpr (Fours == 2) d = SplatFour(C + 4);
  TLanes sums = Splat(0.0);
  TLanes moreSums = Splat(0.0);
  for (std::size_t j = 0; j < By.Columns; j += kLanes) {
    const double* const f = IsByColumn ? By.F + j : nullptr;
    const double* const y = IsByRow ? By.Y + j : nullptr;
    FourRowsByColumn<IsByColumn, IsByRow>(A + j, stride, f, c, y, sums);
    if constexpr (Fours == 2) {
      FourRowsByColumn<IsByColumn, IsByRow>(A + 4 * stride + j, stride, f, d, y, moreSums);
    }
  }
  if constexpr (IsByRow) {
    alignas(64) double s[2 * kLanes];
    Store(s, sums);
    Store(s + kLanes, moreSums);
    const TFour first = SplatFour(s);
    const TFour second = SplatFour(s + kLanes);
    for (std::size_t j = 0; j < By.Columns; j += kLanes) {
      FourRowsByRow(A + j, stride, By.P + j, first);
      if constexpr (Fours == 2) FourRowsByRow(A + 4 * stride + j, stride, By.P + j, second);
    }
  }
}

template <bool IsByColumn, bool IsByRow>
ZORBASE_INLINE double ReflectAllRows(double* A, std::size_t Rows, const TReflections& By, const double* C,
                                     std::size_t Lead, double* Next) {
  double sum = 0.0;
  for (std::size_t k = 0; k < Rows;) {
    double* const rows = A + k * By.Stride;
    const std::size_t count = Rows - k > 4 ? 8 : 4;
    if (count == 8) {
      ReflectSomeRows<2, IsByColumn, IsByRow>(rows, By, C + k);
    } else {
      ReflectSomeRows<1, IsByColumn, IsByRow>(rows, By, C + k);
    }
    for (std::size_t r = 0; r < count; ++r) {
      const double item = std::exchange(rows[r * By.Stride + Lead], 0.0);
      Next[k + r] = item;
      if (k + r < Rows) sum += std::fabs(item);
    }
    k += count;
  }
  return sum;
}

struct TPanelRow {
  TLanes A, B, C, D;
};

ZORBASE_INLINE TPanelRow LoadRow(const double* From) {
  return {Load(From), Load(From + kLanes), Load(From + 2 * kLanes), Load(From + 3 * kLanes)};
}
ZORBASE_INLINE void StoreRow(double* To, const TPanelRow& Row) {
  Store(To, Row.A);
  Store(To + kLanes, Row.B);
  Store(To + 2 * kLanes, Row.C);
  Store(To + 3 * kLanes, Row.D);
}
ZORBASE_INLINE void AddMultiple(TPanelRow& Row, const TPanelRow& Other, double Factor) {
  const TLanes factor = Splat(Factor);
  Row.A = Row.A + Other.A * factor;
  Row.B = Row.B + Other.B * factor;
  Row.C = Row.C + Other.C * factor;
  Row.D = Row.D + Other.D * factor;
}

template <bool IsUpdated, bool IsSummed>
ZORBASE_INLINE void UpdateRows(double* Panel, std::size_t Rows, const double* F, const double* C, const double* D,
                               double* Sums) {
  TPanelRow f, sums;
  if constexpr (IsUpdated) f = LoadRow(F);
  if constexpr (IsSummed) sums = LoadRow(Sums);
  for (std::size_t k = 0; k < Rows; ++k) {
    TPanelRow row = LoadRow(Panel + k * kPanel);
    if constexpr (IsUpdated) {
      AddMultiple(row, f, C[k]);
      StoreRow(Panel + k * kPanel, row);
    }
    if constexpr (IsSummed) AddMultiple(sums, row, D[k]);
  }
  if constexpr (IsSummed) StoreRow(Sums, sums);
}

// X divided by Divisor, and the sum of its squares.
ZORBASE_INLINE double DivideAndSquare(double* X, std::size_t Count, double Divisor) {
  const TLanes divisor = Splat(Divisor);
  double sum = 0.0;
  std::size_t k = 0;
  for (; k + kLanes <= Count; k += kLanes) {
    Store(X + k, Load(X + k) / divisor);
    sum += X[k] * X[k];
    sum += X[k + 1] * X[k + 1];
    sum += X[k + 2] * X[k + 2];
    sum += X[k + 3] * X[k + 3];
  }
  for (; k < Count; ++k) {
    X[k] /= Divisor;
    sum += X[k] * X[k];
  }
  return sum;
}

ZORBASE_TARGET_CLONES TReflector MakeReflectorClones(double* X, std::size_t Count, double Scale) {
  TReflector reflector{Scale};
  if (!reflector.Exists()) return reflector;
  const double sum = DivideAndSquare(X, Count, Scale);
  reflector.G = -SignOf(std::sqrt(sum), X[0]);
  reflector.H = X[0] * reflector.G - sum;
  X[0] = X[0] - reflector.G;
  return reflector;
}

ZORBASE_TARGET_CLONES void MultiplyClones(double* X, std::size_t Count, double Factor) {
  const TLanes factor = Splat(Factor);
  std::size_t k = 0;
  for (; k + kLanes <= Count; k += kLanes) Store(X + k, Load(X + k) * factor);
  for (; k < Count; ++k) X[k] *= Factor;
}

ZORBASE_TARGET_CLONES void ColumnDotsClones(const double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns,
                                            const double* C, double* Sums) {
  for (std::size_t j = 0; j < Columns; j += kLanes) Store(Sums + j, Splat(0.0));
  std::size_t k = 0;
  for (; k + 4 <= Rows; k += 4) AddFourRows(A + k * Stride, Stride, Columns, C + k, Sums);
  for (; k < Rows; ++k) AddRow(A + k * Stride, Columns, C[k], Sums);
}

ZORBASE_TARGET_CLONES double ReflectRowsClones(double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns,
                                               const double* F, const double* C, const double* Y, const double* P,
                                               std::size_t Lead, double* Next) {
  const TReflections by{Stride, Columns, F, Y, P};
  if (F != nullptr && Y != nullptr) return ReflectAllRows<true, true>(A, Rows, by, C, Lead, Next);
  if (F != nullptr) return ReflectAllRows<true, false>(A, Rows, by, C, Lead, Next);
  if (Y != nullptr) return ReflectAllRows<false, true>(A, Rows, by, C, Lead, Next);
  return ReflectAllRows<false, false>(A, Rows, by, C, Lead, Next);
}

ZORBASE_TARGET_CLONES void UpdatePanelClones(double* Panel, std::size_t Rows, const double* F, const double* C,
                                             const double* D, double* Sums) {
  if (F != nullptr && D != nullptr) {
    UpdateRows<true, true>(Panel, Rows, F, C, D, Sums);
  } else if (F != nullptr) {
    UpdateRows<true, false>(Panel, Rows, F, C, D, Sums);
  } else if (D != nullptr) {
    UpdateRows<false, true>(Panel, Rows, F, C, D, Sums);
  }
}

}  // namespace

double SumOfMagnitudes(const double* X, std::size_t Count) {
  double sum = 0.0;
  for (std::size_t k = 0; k < Count; ++k) sum += std::fabs(X[k]);
  return sum;
}

TReflector MakeReflector(double* X, std::size_t Count, double Scale) { return MakeReflectorClones(X, Count, Scale); }

void Multiply(double* X, std::size_t Count, double Factor) { MultiplyClones(X, Count, Factor); }

void ColumnDots(const double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* C,
                double* Sums) {
  ColumnDotsClones(A, Stride, Rows, Columns, C, Sums);
}

double ReflectRows(double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* F,
                   const double* C, const double* Y, const double* P, std::size_t Lead, double* Next) {
  return ReflectRowsClones(A, Stride, Rows, Columns, F, C, Y, P, Lead, Next);
}

void UpdatePanel(double* Panel, std::size_t Rows, const double* F, const double* C, const double* D, double* Sums) {
  UpdatePanelClones(Panel, Rows, F, C, D, Sums);
}

}  // namespace ZORBase::SvdLoops
