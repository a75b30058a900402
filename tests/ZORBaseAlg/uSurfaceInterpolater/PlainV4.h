// PlainV4: the biharmonic spline written down as it is defined, with the library's logarithm.
#pragma once

#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>

#include <cmath>
#include <vector>

namespace ZORBase::Test {

/// The matrix of the samples row by row. No two of them have the same place.
template <class TLogFunc>
TDoubleList PlainMatrix(const TList<TPoint3D>& Samples, TLogFunc&& Ln) {
  TDoubleList matrix;
  for (int i = 0; i < Samples.Count(); ++i) {
    for (int j = 0; j < Samples.Count(); ++j) {
      const double d = Samples[i].DistanceXY(Samples[j]);
      matrix.Add(i == j ? 0.0 : d * d * (Ln(d) - 1.0));
    }
  }
  return matrix;
}

template <class TLogFunc>
double PlainZ(const TList<TPoint3D>& Samples, const TDoubleList& Weights, double X, double Y, TLogFunc&& Ln) {
  double z = 0.0;
  for (int i = 0; i < Weights.Count(); ++i) {
    const double d = TPoint3D(TPoint2D::Create(X, Y)).DistanceXY(Samples[i]);
    if (d <= 1e-12) continue;
    z = z + Weights[i] * (d * d) * (Ln(d) - 1.0);
  }
  return z;
}

}  // namespace ZORBase::Test
