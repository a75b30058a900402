#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater/TV4Interpolator.h>
#include <ZORBase/common/BaseServices/NumberText.h>

#include <cmath>
#include <string>

namespace ZORBase {
namespace {

// Samples closer than this have one place: their rows of the matrix would be the same.
constexpr double kSamePlace = 1e-12;

// The Green function of the biharmonic operator in the plane, for d > 0.
double Phi(double d) { return d * d * (std::log(d) - 1.0); }

void CheckFinite(const TPoint3D& Pt, int Index) {
  if (std::isfinite(Pt.X) && std::isfinite(Pt.Y) && std::isfinite(Pt.Z)) return;
  RaiseGeneralError(Format1033("TV4Interpolator: the sample %d is not finite: %f, %f, %f", Index, Pt.X, Pt.Y, Pt.Z));
}

void CheckMatrixMemory(std::size_t N) {
  if (N * N <= TV4Interpolator::kMatrixMemoryLimit / sizeof(double)) return;
  RaiseGeneralError(Format1033("TV4Interpolator: the matrix of %d samples takes %d bytes, the limit is %d", N,
                               N * N * sizeof(double), TV4Interpolator::kMatrixMemoryLimit));
}

double MatrixEntry(const TPoint3D& From, const TPoint3D& To) {
  const double d = From.DistanceXY(To);
  if (d <= kSamePlace) RaiseGeneralError("TV4Interpolator Fail For Duplicate data");
  return Phi(d);
}

// The matrix of the samples, row by row.
TDoubleList MatrixOf(const TList<TPoint3D>& Samples) {
  TDoubleList matrix;
  matrix.Reserve(Samples.size() * Samples.size());
  for (int i = 0; i < Samples.Count(); ++i) {
    for (int j = 0; j < Samples.Count(); ++j) {
      const double entry = j == i ? 0.0 : MatrixEntry(Samples[i], Samples[j]);
      if (!std::isfinite(entry)) {
        RaiseGeneralError(Format1033("TV4Interpolator: the samples %d and %d are too far apart", i, j));
      }
      matrix.Add(entry);
    }
  }
  return matrix;
}

}  // namespace

void TV4Interpolator::CheckState(TInterpolatorState Expected) const {
  if (FState != Expected) {
    RaiseGeneralError(Format1033("TV4Interpolator Wrong State %d Suppose State %d", int{FState}, int{Expected}));
  }
}

void TV4Interpolator::CheckState(TInterpolatorState Expected, TInterpolatorState OrExpected) const {
  if (FState != Expected && FState != OrExpected) {
    RaiseGeneralError(Format1033("TV4Interpolator Wrong State %d Suppose State %d or %d", int{FState}, int{Expected},
                                 int{OrExpected}));
  }
}

void TV4Interpolator::AddPoint(const TPoint3D& Pt) {
  CheckState(cbsIdle, cbsAddPoint);
  CheckFinite(Pt, FSrcPt.Count());
  FState = cbsAddPoint;
  FSrcPt.Add(Pt);
}

void TV4Interpolator::AddPoint(double X, double Y, double Z) { AddPoint(TPoint3D::Create(X, Y, Z)); }

void TV4Interpolator::AddPointList(const TList<TPoint3D>& Points) {
  CheckState(cbsIdle, cbsAddPoint);
  for (int i = 0; i < Points.Count(); ++i) CheckFinite(Points[i], i);
  FState = cbsAddPoint;
  for (int i = 0, count = Points.Count(); i < count; ++i) FSrcPt.Add(Points[i]);
}

void TV4Interpolator::CalcWeights() {
  CheckState(cbsAddPoint);
  FState = cbsFinish;  // before the work: there is one attempt
  CheckMatrixMemory(FSrcPt.size());
  const TDoubleList matrix = MatrixOf(FSrcPt);
  TDoubleList heights;
  heights.Reserve(FSrcPt.size());
  for (const TPoint3D& sample : FSrcPt) heights.Add(sample.Z);
  const int n = FSrcPt.Count();
  if (!MatrixDivUsingSvd(&matrix, &heights, n, n, &FWeights, true)) {
    RaiseGeneralError("TV4Interpolator CalcWeights Fail");
  }
}

double TV4Interpolator::CalcZ(double X, double Y) const {
  CheckState(cbsFinish);
  const TPoint3D place = TPoint2D::Create(X, Y);
  double z = 0.0;
  for (int i = 0; i < FWeights.Count(); ++i) {
    const double d = place.DistanceXY(FSrcPt[i]);
    if (d <= kSamePlace) continue;
    z += FWeights[i] * (d * d) * (std::log(d) - 1.0);
  }
  return z;
}

void TV4Interpolator::CalcZ(std::span<const TPoint2D> Places, std::span<double> Z) const {
  CheckState(cbsFinish);
  if (Places.size() != Z.size()) {
    RaiseGeneralError(Format1033("TV4Interpolator: %d places and %d heights", Places.size(), Z.size()));
  }
  for (std::size_t i = 0; i < Places.size(); ++i) Z[i] = CalcZ(Places[i].X, Places[i].Y);
}

}  // namespace ZORBase
