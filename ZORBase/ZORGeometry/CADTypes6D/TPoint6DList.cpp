#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6DList.h>

#include <ZORBase/ZORGeometry/CADTypes6D/TPoint3DHelper.h>
#include <ZORBase/common/BaseServices/PointListFile.h>

namespace ZORBase {

void TPoint6DList::Add(double X, double Y, double Z, double A, double B, double C) {
  Add(TPoint6D::Create(X, Y, Z, A, B, C));
}

void TPoint6DList::Add(double X, double Y, double Z) {
  Add(TPoint6D::Create(TPoint3D::Create(X, Y, Z), TPoint3DHelper::VerticalVec()));
}

void TPoint6DList::AddAndNormal(double X, double Y, double Z, double A, double B, double C) {
  Add(TPoint6D::Create(X, Y, Z, A, B, C).VecNormal());
}

void TPoint6DList::From3DList(const TList<TPoint3D>& AList, const TPoint3D& AVec) {
  Clear();
  Reserve(AList.size());
  for (const TPoint3D& point : AList) Add(TPoint6D::Create(point, AVec));
}

void TPoint6DList::SaveToFile(const std::string& AFileName, int Decimal) const {
  SavePointList(AFileName, *this,
                [Decimal](std::string& Text, const TPoint6D& P) { P.AppendString1033(Text, Decimal); });
}

bool TPoint6DList::LoadFromFile(const std::string& AFileName) {
  LoadPointList(AFileName, "TPoint6DList", *this);
  return true;
}

}  // namespace ZORBase
