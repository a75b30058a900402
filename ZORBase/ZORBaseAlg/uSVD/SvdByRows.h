// SvdByRows (internal): reflections for matrices of many columns, which stand row by row.
#pragma once

#include <ZORBase/ZORBaseAlg/uSVD/SvdBidiagonal.h>
#include <ZORBase/kernels/SvdLoops.h>
#include <ZORBase/kernels/SvdRotations.h>

namespace ZORBase {

/// The Householder reflections that make a matrix bidiagonal, and the orthogonal matrices of which they are factors. Those of
/// rows stand in place of A, above the diagonal; those of columns stand one after the other in an array of their own, so
/// that both are contiguous.
class TSvdByRows {
 public:
  /// \param Work  memory for WorkSize(Rows, Columns) numbers
  TSvdByRows(std::size_t Rows, std::size_t Columns, TBidiagonal& Matrix, double* Work);

  static std::size_t WorkSize(std::size_t Rows, std::size_t Columns);

  /// The matrix on the way in: row i begins at A() + i Stride().
  double* A() const { return FA; }
  std::size_t Stride() const { return FStride; }

  void Reduce();
  /// To be called before AccumulateU, once.
  void AccumulateV(const TColumns& V);
  /// \return U, in the place of A.
  TColumns AccumulateU();

 private:
  double* Row(std::size_t i) const { return FA + i * FStride; }
  double* ColumnReflector(std::size_t i) const { return FReflectors + i * FReflectorStride; }
  double* Quotients(std::size_t i) const { return FQuotients + i * FStride; }
  SvdLoops::TReflector ReflectColumn(std::size_t i, double Magnitudes);
  SvdLoops::TReflector ReflectRow(std::size_t i);
  double ReduceStep(std::size_t i, double Magnitudes);
  void AccumulateVPanel(std::size_t First, std::size_t End);
  void AccumulateVAbove(std::size_t First);
  void AccumulateUPanel(std::size_t First, std::size_t End);
  void AccumulateUAbove(std::size_t First);
  void StorePanel(const TColumns& To, std::size_t First, std::size_t End) const;

  std::size_t FRows;
  std::size_t FColumns;
  std::size_t FStride;
  std::size_t FReflectorStride;
  TBidiagonal& FMatrix;
  double* FA;
  double* FReflectors;  // of columns, from the diagonal on
  double* FQuotients;   // of row reflections, as AccumulateV needs them
  double* FPanel;
  double* FSums;
  double* FRow;    // the row that is reflected
  double* FParts;  // and that divided by H
};

}  // namespace ZORBase
