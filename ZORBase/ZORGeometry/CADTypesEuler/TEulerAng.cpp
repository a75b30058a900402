#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerAng.h>

#include <ZORBase/common/BaseServices/NumberRow.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Cadtypes/ArcTan2.h>
#include <ZORBase/common/Cadtypes/fEqual.h>

#include <algorithm>
#include <cmath>
#include <numbers>
#include <type_traits>

namespace ZORBase {
namespace {

// Axes may be this far from perpendicular, in radians: 0.01 degree.
constexpr double kPerpendicularTolerance = 1.745329252e-4;

// Sines and cosines closer to 0 than this lock Rx and Rz onto one axis.
constexpr double kLockTolerance = 1e-6;

constexpr int kMaxDecimals = 9;

static_assert(std::is_trivially_copyable_v<TEulerAng> && sizeof(TEulerAng) == 3 * sizeof(double));

constinit TEulerAng Zero;

constexpr std::array kComponents = {&TEulerAng::Rx, &TEulerAng::Ry, &TEulerAng::Rz};

double TEulerAng::*Component(int Index) {
  if (Index < 0 || Index > 2) RaiseGeneralError("TEulerAng has the items 0 to 2, not " + std::to_string(Index));
  return kComponents[static_cast<std::size_t>(Index)];
}

}  // namespace

constinit const TEulerAng& TEulerAng::FZero = Zero;

void TEulerAng::FillConstants() { Zero = Create(0.0, 0.0, 0.0); }

// With the columns X, Y, Z of R = Rz Ry Rx the third row is (-sin Ry, cos Ry sin Rx, cos Ry cos Rx), which gives Rx and
// Ry; turned back by them, the second column is (-sin Rz, cos Rz, 0).
TEulerAng TEulerAng::CreatebyXYVec(const TPoint3D& XVec, const TPoint3D& YVec) {
  const TPoint3D x = XVec.Normal();
  const TPoint3D y = YVec.Normal();
  const bool isPerpendicular = std::fabs(x.AngleBetween(y) - std::numbers::pi / 2) <= kPerpendicularTolerance;
  if (!isPerpendicular) RaiseGeneralError("CalcEulerAngZYXByVec ErrInput");
  const TPoint3D z = x.CrossMul(y);
  const bool isLocked = fEqual(y.Z, 0.0, kLockTolerance) && fEqual(z.Z, 0.0, kLockTolerance);
  TEulerAng result;
  result.Rx = isLocked ? 0.0 : ArcTan2(y.Z, z.Z);
  const double s = std::sin(result.Rx);
  const double c = std::cos(result.Rx);
  result.Ry = ArcTan2(-x.Z, y.Z * s + z.Z * c);
  result.Rz = ArcTan2(z.X * s - y.X * c, y.Y * c - z.Y * s);
  return result;
}

double& TEulerAng::Items(int Index) { return this->*Component(Index); }
double TEulerAng::Items(int Index) const { return this->*Component(Index); }

double TEulerAng::DistanceTo(const TEulerAng& Other) const { return (Other - *this).Mag(); }

double TEulerAng::Mag() const { return std::sqrt(MagSqr()); }

TPoint3D TEulerAng::ToVector() const {
  const double sx = std::sin(Rx);
  const double cx = std::cos(Rx);
  const double sy = std::sin(Ry);
  const double cy = std::cos(Ry);
  const double sz = std::sin(Rz);
  const double cz = std::cos(Rz);
  return TPoint3D::Create(sx * sz + cx * sy * cz, cx * sy * sz - sx * cz, cx * cy);
}

std::string TEulerAng::ToString(int Decimal) const {
  std::string text;
  AppendNumberRow(text, ToArray(), std::clamp(Decimal, 0, kMaxDecimals), nfLocale);
  return text;
}

std::string TEulerAng::ToStringDeg(int Decimal) const {
  const int decimals = std::clamp(Decimal, 0, kMaxDecimals);
  std::string text;
  for (const double angle : ToArray()) {
    if (!text.empty()) text += ',';
    AppendFixed(text, RadToDeg(angle), decimals, nfLocale);
    text += "° ";
  }
  return text;
}

}  // namespace ZORBase
