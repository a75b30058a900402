#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerPointList.h>

#include <ZORBase/common/BaseServices/PointListFile.h>

namespace ZORBase {
namespace {

constexpr int kFileDecimals = 4;

}

void TEulerPointList::Add(double X, double Y, double Z, double Rx, double Ry, double Rz) {
  Add(TEulerPoint::Create(X, Y, Z, Rx, Ry, Rz));
}

void TEulerPointList::Add(double X, double Y, double Z) {
  Add(TEulerPoint::Create(TPoint3D::Create(X, Y, Z), TEulerAng::FZero));
}

void TEulerPointList::SaveToFile(const std::string& AFileName, int /*Decimal*/) const {
  SavePointList(AFileName, *this,
                [](std::string& Text, const TEulerPoint& P) { P.AppendString1033(Text, kFileDecimals); });
}

bool TEulerPointList::LoadFromFile(const std::string& AFileName) {
  LoadPointList(AFileName, "TPointSphereList", *this);
  return true;
}

TPoint6DList TEulerPointList::ToPoint6DList() const {
  TPoint6DList poses;
  poses.Reserve(size());
  for (const TEulerPoint& point : *this) poses.Add(point.ToPoint6D());
  return poses;
}

}  // namespace ZORBase
