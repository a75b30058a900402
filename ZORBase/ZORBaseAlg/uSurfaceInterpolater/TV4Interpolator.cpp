#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater/TV4Interpolator.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/kernels/BiharmonicKernel.h>

#include <cmath>
#include <string>
#include <vector>

namespace ZORBase {
namespace {

void CheckFinite(const TPoint3D& Pt, int Index) {
  if (std::isfinite(Pt.X) && std::isfinite(Pt.Y) && std::isfinite(Pt.Z)) return;
  RaiseGeneralError(Format1033("TV4Interpolator: the sample %d is not finite: %f, %f, %f", Index, Pt.X, Pt.Y, Pt.Z));
}

void CheckMatrixMemory(std::size_t N) {
  if (N * N <= TV4Interpolator::kMatrixMemoryLimit / sizeof(double)) return;
  RaiseGeneralError(Format1033("TV4Interpolator: the matrix of %d samples takes %d bytes, the limit is %d", N,
                               N * N * sizeof(double), TV4Interpolator::kMatrixMemoryLimit));
}

// The matrix of the samples, row by row.
TDoubleList MatrixOf(const TPlaces& Places) {
  const std::size_t n = Places.X.size();
  TDoubleList matrix(std::vector<double>(n * n));
  switch (FillBiharmonicMatrix(Places, TV4Interpolator::kSamePlace, matrix)) {
    case TPlacesFault::Same: RaiseGeneralError("TV4Interpolator Fail For Duplicate data");
    case TPlacesFault::TooFar:
      RaiseGeneralError("TV4Interpolator: samples are too far apart for the square of their distance");
    case TPlacesFault::None: break;
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
  TDoubleList heights;
  for (const TPoint3D& sample : FSrcPt) {
    FX.push_back(sample.X);
    FY.push_back(sample.Y);
    heights.Add(sample.Z);
  }
  const TDoubleList matrix = MatrixOf({FX, FY});
  const int n = FSrcPt.Count();
  if (!MatrixDivUsingSvd(&matrix, &heights, n, n, &FWeights, true)) {
    RaiseGeneralError("TV4Interpolator CalcWeights Fail");
  }
}

double TV4Interpolator::CalcZ(double X, double Y) const {
  CheckState(cbsFinish);
  return BiharmonicHeight({FX, FY}, FWeights, kSamePlace, X, Y);
}

void TV4Interpolator::CalcZ(std::span<const TPoint2D> Places, std::span<double> Z) const {
  CheckState(cbsFinish);
  if (Places.size() != Z.size()) {
    RaiseGeneralError(Format1033("TV4Interpolator: %d places and %d heights", Places.size(), Z.size()));
  }
  BiharmonicHeights({FX, FY}, FWeights, kSamePlace, Places, Z);
}

}  // namespace ZORBase
