#include <ZORBase/ZORGeometry/NurbsGeometry/TNurbs6D.h>

namespace ZORBase {

bool TNurbs6D::CreateCross(const TPoint6DList* passByPoints, TParalizeMethod paralizeMethod) {
  if (!passByPoints) return false;
  const bool isFitted = FitThrough(*passByPoints, paralizeMethod);
  FPassByPtNum = passByPoints->Count();
  return isFitted;
}

bool TNurbs6D::CreateByCtlPoints(const TDoubleList* uVec, const TList<TPoint6D>* points, int pointCount) {
  if (!uVec || !points) return false;
  return TakeControlPoints(*uVec, *points, pointCount);
}

bool TNurbs6D::CreateByCtlPoints(std::span<const double> uVec, std::span<const TPoint6D> points, int pointCount) {
  return TakeControlPoints(uVec, points, pointCount);
}

bool TNurbs6D::CurveParalize(const TPoint6DList& Points, std::span<double> Params, double& Length,
                             TParalizeMethod Method) {
  return SpreadParams<TPoint6D>(Points, Params, Length, Method);
}

bool TNurbs6D::EquallyParalize(const TPoint6DList& Points, std::span<double> Params, double& Length) {
  return CurveParalize(Points, Params, Length, mEqually);
}

bool TNurbs6D::ChordParalize(const TPoint6DList& Points, std::span<double> Params, double& Length) {
  return CurveParalize(Points, Params, Length, mChord);
}

bool TNurbs6D::CentripetalParalize(const TPoint6DList& Points, std::span<double> Params, double& Length) {
  return CurveParalize(Points, Params, Length, mCentripetal);
}

void TNurbs6D::SolveTridiagonal(int n, const TPoint6DList& Q, std::span<const double> U, std::span<TPoint6D> P) {
  SolveInnerPoints<TPoint6D>(n, Q, U, P);
}

bool TNurbs6D::TransformBy(const TMatrix2D& /*M*/) { return true; }

void TNurbs6D::Assign(const TPersistent& Source) {
  if (const auto* const source = dynamic_cast<const TNurbs6D*>(&Source)) {
    AssignCurve(*source);
  } else {
    TPersistent::Assign(Source);
  }
}

std::string_view TNurbs6D::ClassName() const { return "TNurbs6D"; }

}  // namespace ZORBase
