#include <ZORBase/ZORGeometry/CADTypes6D/TQuaternion.h>

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Cadtypes/ArcCos.h>
#include <ZORBase/common/Cadtypes/fEqual.h>

#include <array>
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

// The four candidates are 4 a^2, 4 b^2, 4 c^2 and 4 d^2 of a unit quaternion. They sum to 4, so that the largest is at
// least 1 and its root a safe divisor: the products of it with the others stand in the sums and differences of entries.
void TQuaternion::CreateFromMatrix4D(const TMatrix4D& m) {
  const auto& r = m.fm;
  const std::array<double, 4> candidates = {r[0][0] + r[1][1] + r[2][2] + 1.0, r[0][0] - r[1][1] - r[2][2] + 1.0,
                                            r[1][1] - r[0][0] - r[2][2] + 1.0, r[2][2] - r[0][0] - r[1][1] + 1.0};
  std::size_t index = 0;
  for (std::size_t i = 1; i < 4; ++i) {
    if (candidates[i] > candidates[index]) index = i;
  }
  const double h = std::sqrt(candidates[index]) / 2.0;
  const double f = 0.25 / h;
  switch (index) {
    case 0: *this = Create(h, (r[2][1] - r[1][2]) * f, (r[0][2] - r[2][0]) * f, (r[1][0] - r[0][1]) * f); break;
    case 1: *this = Create((r[2][1] - r[1][2]) * f, h, (r[1][0] + r[0][1]) * f, (r[0][2] + r[2][0]) * f); break;
    case 2: *this = Create((r[0][2] - r[2][0]) * f, (r[1][0] + r[0][1]) * f, h, (r[2][1] + r[1][2]) * f); break;
    default: *this = Create((r[1][0] - r[0][1]) * f, (r[0][2] + r[2][0]) * f, (r[2][1] + r[1][2]) * f, h); break;
  }
}

TMatrix4D TQuaternion::ToMatrix4D() const {
  return TMatrix4D::Create(1.0 - 2.0 * c * c - 2.0 * d * d, 2.0 * b * c - 2.0 * a * d, 2.0 * a * c + 2.0 * b * d,  //
                           2.0 * b * c + 2.0 * a * d, 1.0 - 2.0 * b * b - 2.0 * d * d, 2.0 * c * d - 2.0 * a * b,  //
                           2.0 * b * d - 2.0 * a * c, 2.0 * a * b + 2.0 * c * d, 1.0 - 2.0 * b * b - 2.0 * c * c);
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
