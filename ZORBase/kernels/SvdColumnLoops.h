// SvdColumnLoops (internal): as SvdLoops, for matrices of few columns that stand column by column. Columns are Stride numbers
// apart. Sums over rows are chains of their own, up to four side by side; where there is a sum for each row, lanes lie across
// rows. Up to three rows beyond the last one are worked on and have no meaning.
#pragma once

#include <cstddef>

namespace ZORBase::SvdColumnLoops {

/// Sums[j] = the sum of C[k] A[j][k] over the rows k = 0..Rows-1, for the columns j = 0..Columns-1.
void ColumnDots(const double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* C,
                double* Sums);

/// A[j][k] += F[j] C[k]
void AddMultiples(double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* F,
                  const double* C);

/// A reflection of the columns and one of the rows, for all rows k = 0..Rows-1:
///   where F is given:  A[j][k] += F[j] C[k]                                       for j = 0..Columns-1
///   where Y is given:  s = the sum of A[j][k] Y[j] over j = 0..Columns-1, then A[j][k] += s P[j]
/// \return the sum of the magnitudes of the column 0 after that.
double ReflectRows(double* A, std::size_t Stride, std::size_t Rows, std::size_t Columns, const double* F,
                   const double* C, const double* Y, const double* P);

}  // namespace ZORBase::SvdColumnLoops
