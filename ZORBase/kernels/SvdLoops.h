// SvdLoops (internal): the loops in which a singular value decomposition spends its time, apart from rotations.
//
// Every sum runs over its terms in the order of their index, from 0, and every product and sum is rounded; lanes lie across
// sums, not within one. Rows of a matrix are Stride numbers apart. Columns are taken four at a time, so that rows are
// read and written up to the next multiple of 4: what stands beside the matrix must be zeros, and stays so unless the whole
// row becomes NaN.
#pragma once

#include <cstddef>

namespace ZORBase::SvdLoops {

/// The Householder reflection I + x x' / H that turns a vector into Scale G times the first unit vector. Scale 0: the vector
/// is 0, and there is no reflection.
struct TReflector {
  double Scale;
  double G = 0.0;
  double H = 0.0;

  bool Exists() const { return Scale != 0.0; }
};

/// \return the sum of the magnitudes.
double SumOfMagnitudes(const double* X, std::size_t Count);

/// Makes X the vector x of its own reflection. With X divided by Scale, the sum of its magnitudes, s is the sum of squares,
/// G the root of s with the sign that X[0] has not, H = X[0] G - s, and G is taken off X[0].
TReflector MakeReflector(double* X, std::size_t Count, double Scale);

/// X[k] *= Factor
void Multiply(double* X, std::size_t Count, double Factor);

/// Columns that an accumulation works on at a time: a row of a panel.
inline constexpr std::size_t kPanel = 16;

/// Rows beyond the last one that ReflectRows may read and write.
inline constexpr std::size_t kSpareRows = 3;

/// Sums[j] = the sum of C[k] A[k][j] over the rows k = 0..Rows-1, for the columns j = 0..Columns-1.
void ColumnDots(const double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* C,
                double* Sums);

/// A reflection of the columns and one of the rows, for all rows k = 0..Rows-1:
///   where F is given:  A[k][j] += F[j] C[k]                                       for j = 0..Columns-1
///   where Y is given:  s = the sum of A[k][j] Y[j] over j = 0..Columns-1, then A[k][j] += s P[j]
/// and then A[k][Lead] moves to Next[k] and leaves 0.
/// \return the sum of the magnitudes of Next[0..Rows-1].
double ReflectRows(double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* F,
                   const double* C, const double* Y, const double* P, std::size_t Lead, double* Next);

/// A panel of kPanel columns, row after row without gaps, for all rows k = 0..Rows-1:
///   where F is given:  Panel[k][j] += F[j] C[k]
///   where D is given:  Sums[j] += D[k] Panel[k][j], one row after the other
void UpdatePanel(double* Panel, std::size_t Rows, const double* F, const double* C, const double* D, double* Sums);

}  // namespace ZORBase::SvdLoops
