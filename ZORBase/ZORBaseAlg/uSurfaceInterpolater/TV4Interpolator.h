#pragma once

#include <ZORBase/common/BaseServices/TList.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Export.h>

#include <cstddef>
#include <span>
#include <vector>

namespace ZORBase {

/// The height z over the plane as a biharmonic spline through scattered samples (D. T. Sandwell, Biharmonic spline interpolation,
/// Geophysical Research Letters 14, 1987): z(X, Y) = sum of w[i] phi(d[i]) with phi(d) = d^2 (ln d - 1) and d[i] the distance of
/// (X, Y) from sample i in the plane. There are no polynomial terms: nothing but the weights makes the surface, a single sample
/// gives 0 everywhere, and the result depends on the unit of X and Y.
///
/// To be called in this order: AddPoint or AddPointList for all samples, CalcWeights once, then CalcZ as often as wanted. Anything
/// else raises the general error "TV4Interpolator Wrong State %d Suppose State %d", or "... %d or %d", with TInterpolatorState
/// numbers: the state reached, then those that would do.
class ZORBASE_API TV4Interpolator {
 public:
  /// The stage that is reached.
  enum TInterpolatorState : int {
    cbsIdle = 0,      ///< there is nothing yet
    cbsAddPoint = 1,  ///< samples were added
    cbsFinish = 2     ///< CalcWeights was called
  };

  /// Samples no farther apart than this in the plane have the same place: their rows of the matrix would be the same.
  static constexpr double kSamePlace = 1e-12;

  /// What the matrix of N samples may take, 8 N^2 bytes; the decomposition needs about three times as much.
  static constexpr std::size_t kMatrixMemoryLimit = std::size_t{1} << 30U;

  TV4Interpolator() = default;
  ~TV4Interpolator() = default;
  TV4Interpolator(TV4Interpolator&&) = default;             ///< moves samples, weights and state
  TV4Interpolator& operator=(TV4Interpolator&&) = default;  ///< moves samples, weights and state
  TV4Interpolator(const TV4Interpolator&) = delete;
  TV4Interpolator& operator=(const TV4Interpolator&) = delete;

  ///@{
  /// Appends a sample: X and Y place it, Z is the height.
  /// \throws the general error for a number that is not finite; nothing is changed then.
  void AddPoint(const TPoint3D& Pt);
  void AddPoint(double X, double Y, double Z);
  ///@}

  /// Appends all samples in order, or none of them when one is not finite: then the general error names its index.
  void AddPointList(const TList<TPoint3D>& Points);

  /// Finds the weights of N samples, so that the surface passes through them. The state is cbsFinish even when it fails; then there
  /// are no weights, and every height is 0.
  /// \throws the general error "TV4Interpolator Fail For Duplicate data" when two samples have the same place, "TV4Interpolator
  ///         CalcWeights Fail" when the solver fails, and one with the numbers when the matrix exceeds kMatrixMemoryLimit or
  ///         samples are too far apart for a square of their distance.
  /// Cost: a singular value decomposition of N x N.
  void CalcWeights();

  /// \return the height at (X, Y). At a sample it is that of the sample to the accuracy of the solution. Cost: N logarithms.
  ///         Allocates nothing, takes no lock.
  double CalcZ(double X, double Y) const;

  /// Gives in Z[i] the height at Places[i], the same bits as one by one and faster. Allocates nothing, takes no lock.
  /// \throws the general error when the two differ in length.
  void CalcZ(std::span<const TPoint2D> Places, std::span<double> Z) const;

  ///@{
  /// The samples, their weights, and the stage that is reached.
  const TList<TPoint3D>& SrcPt() const { return FSrcPt; }
  const TDoubleList& Weights() const { return FWeights; }
  TInterpolatorState State() const { return FState; }
  ///@}

 private:
  void CheckState(TInterpolatorState Expected) const;
  void CheckState(TInterpolatorState Expected, TInterpolatorState OrExpected) const;

  TList<TPoint3D> FSrcPt;
  TDoubleList FWeights;
  TInterpolatorState FState = cbsIdle;
  std::vector<double> FX;  // of FSrcPt, once the weights are asked for
  std::vector<double> FY;
};

}  // namespace ZORBase
