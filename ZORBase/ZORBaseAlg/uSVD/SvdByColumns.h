// SvdByColumns (internal): reflections for matrices of few columns, which stand column by column.
#pragma once

#include <ZORBase/ZORBaseAlg/uSVD/SvdBidiagonal.h>
#include <ZORBase/kernels/SvdLoops.h>
#include <ZORBase/kernels/SvdRotations.h>

namespace ZORBase {

/// The Householder reflections that make a matrix bidiagonal, and the orthogonal matrices of which they are factors. The
/// reflections stand in place of A: those of columns on and below the diagonal, those of rows above it.
class TSvdByColumns {
 public:
  /// \param Matrix      in blocks that follow each other without gaps, so that columns are contiguous
  /// \param Bidiagonal  receives the two diagonals
  /// \param Work        memory for WorkSize(Columns) numbers
  TSvdByColumns(const TColumns& Matrix, TBidiagonal& Bidiagonal, double* Work);

  static std::size_t WorkSize(std::size_t Columns) { return 3 * (Columns + 3); }
  /// \return a distance of columns that leaves room for the rows that are worked on beyond the last one.
  static std::size_t ColumnStride(std::size_t Rows);

  void Reduce();
  /// V is zeros before.
  void AccumulateV(const TColumns& V) const;
  /// Replaces A by U.
  void AccumulateU();

 private:
  double* Column(std::size_t j) const { return A.Items + j * A.ColumnStride; }
  SvdLoops::TReflector ReflectColumn(std::size_t i, double Magnitudes);
  SvdLoops::TReflector ReflectRow(std::size_t i);
  double ReduceStep(std::size_t i, double Magnitudes);

  TColumns A;
  std::size_t FRows;
  std::size_t FColumns;
  TBidiagonal& FMatrix;
  double* FSums;   // of columns
  double* FRow;    // the row that is reflected
  double* FParts;  // and that divided by H
};

}  // namespace ZORBase
