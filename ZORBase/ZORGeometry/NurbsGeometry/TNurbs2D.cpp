#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs2D.h>

namespace ZORBase {

bool TNurbs2D::CreateCross(const TList<TPoint2D>& Points, TParalizeMethod Method) { return FitThrough(Points, Method); }

bool TNurbs2D::CreateByCtlPoints(std::span<const double> uVec, std::span<const TPoint2D> points, int pointCount) {
  return TakeControlPoints(uVec, points, pointCount);
}

bool TNurbs2D::EquallyParalize(const TList<TPoint2D>& Points, std::span<double> Params, double& Length) {
  return SpreadParams<TPoint2D>(Points, Params, Length, mEqually);
}

bool TNurbs2D::ChordParalize(const TList<TPoint2D>& Points, std::span<double> Params, double& Length) {
  return SpreadParams<TPoint2D>(Points, Params, Length, mChord);
}

bool TNurbs2D::CentripetalParalize(const TList<TPoint2D>& Points, std::span<double> Params, double& Length) {
  return SpreadParams<TPoint2D>(Points, Params, Length, mCentripetal);
}

void TNurbs2D::SolveTridiagonal(int n, const TList<TPoint2D>& Q, std::span<const double> U, std::span<TPoint2D> P) {
  SolveInnerPoints<TPoint2D>(n, Q, U, P);
}

bool TNurbs2D::TransformBy(const TMatrix2D& M) {
  TransformControlPoints([&M](const TPoint2D& P) { return M.Transform(P); });
  return true;
}

void TNurbs2D::Assign(const TPersistent& Source) {
  if (const auto* const source = dynamic_cast<const TNurbs2D*>(&Source)) {
    AssignCurve(*source);
  } else {
    TPersistent::Assign(Source);
  }
}

std::string_view TNurbs2D::ClassName() const { return "TNurbs2D"; }

}  // namespace ZORBase
