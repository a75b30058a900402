#include <ZORBase/common/Cadtypes/TPoint3D.h>

#include <cmath>

namespace ZORBase {

constinit const TPoint3D TPoint3D::FZero{};

double TPoint3D::Mag() const { return std::sqrt(MagSqr()); }

TPoint3D TPoint3D::Normal() const {
  const double mag = Mag();
  return mag == 0.0 ? TPoint3D{} : *this / mag;
}

double TPoint3D::AngleBetween(const TPoint3D& Q) const {
  const double sine = CrossMul(Q).Mag();
  const double cosine = DotMul(Q);
  return sine == 0.0 && cosine == 0.0 ? 0.0 : std::atan2(sine, cosine);
}

double TPoint3D::DistanceXY(const TPoint3D& Q) const { return TPoint2D::Create(X - Q.X, Y - Q.Y).Mag(); }

bool TPoint3D::IsZeroLength(double Eps) const { return Mag() <= Eps; }

}  // namespace ZORBase
