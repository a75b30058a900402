#include <ZORBase/common/Cadtypes/TPoint2D.h>

#include <cmath>

namespace ZORBase {

constinit const TPoint2D TPoint2D::FZero{};

double TPoint2D::Mag() const { return std::sqrt(MagSqr()); }

TPoint2D TPoint2D::Normal() const {
  const double mag = Mag();
  return mag == 0.0 ? TPoint2D{} : *this / mag;
}

double TPoint2D::AngleBetween(const TPoint2D& Q) const {
  const double cross = X * Q.Y - Y * Q.X;
  const double dot = DotMul(Q);
  return cross == 0.0 && dot == 0.0 ? 0.0 : std::atan2(std::fabs(cross), dot);
}

}  // namespace ZORBase
