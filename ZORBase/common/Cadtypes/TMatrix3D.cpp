#include <ZORBase/common/Cadtypes/TMatrix3D.h>

#include <cmath>

namespace ZORBase {
namespace {

// Rodrigues' rotation formula: R = c I + s [n]x + (1 - c) n n'.
TMatrix3D RotationAbout(const TPoint3D& Axis, double Angle) {
  const auto [x, y, z] = std::array{Axis.X, Axis.Y, Axis.Z};
  const double s = std::sin(Angle);
  const double c = std::cos(Angle);
  const double k = 1.0 - c;
  return {{{{x * x * k + c, x * y * k - z * s, x * z * k + y * s},
            {x * y * k + z * s, y * y * k + c, y * z * k - x * s},
            {x * z * k - y * s, y * z * k + x * s, z * z * k + c}}}};
}

}  // namespace

void TMatrix3D::RotateBy(double AAngle, const TPoint3D& AAxis) {
  const TPoint3D axis = AAxis.Normal();
  if (axis.MagSqr() == 0.0) return;
  const TMatrix3D turn = RotationAbout(axis, AAngle);
  TMatrix3D product;
  for (std::size_t column = 0; column < 3; ++column) {
    const TPoint3D image = turn.Transform(TPoint3D::Create(fm[0][column], fm[1][column], fm[2][column]));
    product.fm[0][column] = image.X;
    product.fm[1][column] = image.Y;
    product.fm[2][column] = image.Z;
  }
  *this = product;
}

}  // namespace ZORBase
