#include <ZORBase/ZORGeometry/CADTypes6D/TQuaternion.h>

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Cadtypes/ArcCos.h>
#include <ZORBase/common/Cadtypes/fEqual.h>

#include <string>
#include <type_traits>

namespace ZORBase {
namespace {

static_assert(std::is_trivially_copyable_v<TQuaternion> && sizeof(TQuaternion) == 4 * sizeof(double));

// The component Index of a quaternion, const or not.
template <class TValue>
auto& Component(TValue& q, int Index) {
  switch (Index) {
    case 0: return q.a;
    case 1: return q.b;
    case 2: return q.c;
    case 3: return q.d;
    default: RaiseGeneralError("TQuaternion has the variables 0 to 3, not " + std::to_string(Index));
  }
}

}  // namespace

double& TQuaternion::Variable(int Index) { return Component(*this, Index); }
double TQuaternion::Variable(int Index) const { return Component(*this, Index); }

TQuaternion TQuaternion::Inverse() const {
  const double n = NormMagSqr();
  if (std::fabs(n) < kTolerance) RaiseGeneralError(Format1033("Quaternion mag zero: %.6f", n));
  return Conj() / n;
}

TPoint3D TQuaternion::Log() const {
  const double n = NormMagSqr();
  const TQuaternion u = fEqual(1.0, n, kTolerance) ? *this : *this / n;
  const double s = std::sqrt(u.b * u.b + u.c * u.c + u.d * u.d);
  if (fEqual(0.0, s, kTolerance)) return {};
  return u.GetImgVector() * ArcCos(u.a) / s;
}

void TQuaternion::Exp(const TPoint3D& v) {
  const double theta = v.Mag();
  const TPoint3D axis = fEqual(0.0, theta, kTolerance) ? TPoint3D{} : v / theta;
  *this = Create(std::cos(theta), axis * std::sin(theta));
}

TQuaternion TQuaternion::DividedBy(double s) const {
  if (std::fabs(s) < kTolerance) RaiseGeneralError(Format1033("Divided by zero: %.6f", s));
  return *this * (1.0 / s);
}

bool TQuaternion::IsEqual(const TQuaternion& q) const {
  const auto isEqual = [](double Value, double Other) { return fEqual(Value, Other, kTolerance); };
  return isEqual(a, q.a) && isEqual(b, q.b) && isEqual(c, q.c) && isEqual(d, q.d);
}

}  // namespace ZORBase
