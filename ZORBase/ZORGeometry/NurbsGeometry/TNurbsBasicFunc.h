#pragma once

#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/BaseServices/TPersistent.h>
#include <ZORBase/common/Export.h>
#include <ZORBase/kernels/BucketIndex.h>

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace ZORBase {

/// How a fit spreads the parameters of its points over [0, 1].
enum TParalizeMethod : int {
  mEqually = 0,     ///< the same step from point to point
  mChord = 1,       ///< in proportion to the distances of the points
  mCentripetal = 2  ///< in proportion to the square roots of the distances
};

/// Row k, column j: the k-th derivative of the basis function with index span - p + j.
using Double2DArray = std::array<std::array<double, 4>, 4>;

/// The knot vector U[0..uCount-1] of a cubic B-spline curve and its basis functions.
///
/// The knots do not fall. A fitted curve has four zeros at the start and four ones at the end. Divisions by a knot difference
/// smaller than 1e-6 give 0, so that coincident knots drop out of the sums.
///
/// Formulas: L. Piegl, W. Tiller, "The NURBS Book", 2nd edition, algorithms A2.1 to A2.3.
class ZORBASE_API TNurbsBasicFunc : public TPersistent {
 public:
  static constexpr int kDegree = 3;  ///< of the basis functions
  /// A cubic knot vector has at least this many knots.
  static constexpr int kFewestKnots = 8;

  int uCount() const { return static_cast<int>(FKnots.size()); }  ///< the number of knots
  std::span<const double> uArr() const { return FKnots; }         ///< the knots

  ///@{
  /// The knot idx. \throws the assertion "TNurbsBasicFunc: Idx Out Of Range" outside 0..uCount-1.
  double Items(int idx) const { return GetItems(idx); }
  double GetItems(int idx) const;
  ///@}

  ///@{
  /// Takes over the first count knots. \throws the general error when there are fewer, or for a negative count.
  void CreateCross(const TDoubleList& uVec, int count);
  void CreateCross(std::span<const double> uVec, int count);
  ///@}

  /// \return the index s of the span with U[s] <= u < U[s+1]; 0 for u before the first knot, the last span for u at or behind
  ///         the last knot. Knots that rise from four equal ones to four equal ones, as a fit's do, are looked up in an index
  ///         whose cost hardly depends on their number; others are bisected.
  /// \throws the general error for fewer than 8 knots, and where no inner span holds u (knots that fall, or a vector without
  ///         four equal knots at its ends). Allocates nothing, takes no lock.
  int FindSpan(double u) const { return IsInside(u) ? SpanInside(u) : BisectForSpan(u); }

  /// \return whether u lies in [U[0], U[uCount-1]) of knots that rise from four equal ones to four equal ones, and are more than 8.
  bool IsInside(double u) const { return FSpans.Covers(u); }
  /// FindSpan of such a u.
  int SpanInside(double u) const {
    const double* const U = FKnots.data() + kDegree;
    return kDegree + static_cast<int>(FSpans.Find([U](std::size_t i) { return U[i]; }, u));
  }

  /// Gives the four cubic basis values with the indices i-3 to i at u in N[0..3]; they sum to 1 inside span i.
  /// Knots behind the last one count as the last one.
  /// \return false, with N as it was, for i < 2 or i > uCount.
  /// \throws the general error when N has fewer than 4 places. Allocates nothing, takes no lock.
  bool BasicFuns(int i, double u, std::span<double> N) const;

  /// Gives the derivatives 0 to n of the basis functions of degree p in span idx at u: ders[k][j] for k = 0..n, j = 0..p.
  /// Rows beyond n stay as they were.
  /// \throws the general error unless 0 <= n <= p <= 3 and the knots idx+1-p to idx+p exist. Allocates nothing, takes no lock.
  void DersBasciFuns(int idx, double u, int p, int n, Double2DArray& ders) const;

  /// Mirrors the knots on [0, 1]: U[i] becomes 1 - U[uCount-1-i], clamped into [0, 1].
  void Reverse();

  /// Takes over the knots of another TNurbsBasicFunc.
  void Assign(const TPersistent& Source) override;
  std::string_view ClassName() const override;

 private:
  int BisectForSpan(double u) const;
  void SetKnots(std::vector<double> Knots);

  std::vector<double> FKnots;
  TBucketIndex FSpans;  // over U[3..uCount-4]; empty where the bisection has to be done step by step
};

}  // namespace ZORBase
