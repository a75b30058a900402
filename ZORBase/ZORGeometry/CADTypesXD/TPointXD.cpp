#include <ZORBase/ZORGeometry/CADTypesXD/TPointXD.h>

#include <ZORBase/common/BaseServices/Extended.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Cadtypes/ArcCos.h>
#include <ZORBase/common/Sign.h>

#include <cmath>
#include <type_traits>

namespace ZORBase {
namespace {

// What stands for a quotient without bound.
constexpr double kUnbounded = 1e12;

static_assert(std::is_trivially_copyable_v<TPointXD>);

}  // namespace

double SafeDivXD(double A, double B, double Eps) {
  if (std::fabs(B) >= Eps) return A / B;
  if (std::fabs(A) < Eps) return 0.0;
  return (B == 0.0 ? SignOf(A) : SignOfQuotient(A, B)) * kUnbounded;
}

TPointXD TPointXD::FromSpan(std::span<const double> Coordinates) {
  if (Coordinates.empty() || Coordinates.size() > static_cast<std::size_t>(kMaxDimension)) {
    RaiseGeneralError("TPointXD: " + std::to_string(Coordinates.size()) + " coordinates; 1 to 44 are possible");
  }
  TPointXD point = Create(static_cast<int>(Coordinates.size()));
  std::copy(Coordinates.begin(), Coordinates.end(), point.Items.begin());
  return point;
}

TPointXD::operator TPoint2D() const {
  const std::size_t count = InUse();
  return TPoint2D::Create(count > 0 ? Items[0] : 0.0, count > 1 ? Items[1] : 0.0);
}

TPointXD::operator TPoint3D() const { return static_cast<TPoint2D>(*this); }

TPointXD::operator TPoint6D() const {
  std::array<double, 6> values{};
  std::copy_n(Items.begin(), std::min(values.size(), InUse()), values.begin());
  return TPoint6D::FromArray(values);
}

// A point of Count coordinates, each from those of P and Q with the same index, as they are stored.
template <class TFunction>
TPointXD TPointXD::Combine(std::size_t Count, const TPointXD& P, const TPointXD& Q, TFunction&& Function) {
  TPointXD result;
  result.FDimension = static_cast<std::int32_t>(Count);
  for (std::size_t i = 0; i < Count; ++i) result.Items[i] = Function(P.Items[i], Q.Items[i]);
  return result;
}

TPointXD TPointXD::Abs(const TPointXD& P) {
  return Combine(P.InUse(), P, P, [](double Value, double) { return std::fabs(Value); });
}

double TPointXD::Mag() const { return std::sqrt(MagSqr()); }

double TPointXD::MagSqr() const {
  Extended sum = 0.0L;
  for (const double value : Coordinates()) sum += static_cast<Extended>(value) * value;
  return static_cast<double>(sum);
}

double TPointXD::DotMul(const TPointXD& P) const {
  double sum = 0.0;
  for (std::size_t i = 0; i < InUse(); ++i) sum += Items[i] * P.Items[i];
  return sum;
}

double TPointXD::DistanceTo(const TPointXD& P) const { return (*this - P).Mag(); }

double TPointXD::AngleBetween(const TPointXD& P) const {
  return ArcCos(std::clamp(SafeDivXD(DotMul(P), Mag() * P.Mag(), kTolerance), -1.0, 1.0));
}

TPointXD TPointXD::Normal() const { return *this / Mag(); }

// Choose makes the coordinates that both have; the longer point gives the rest.
template <class TChoose>
TPointXD TPointXD::Extreme(const TPointXD& P, const TPointXD& Q, TChoose&& Choose) {
  const TPointXD& longer = P.InUse() >= Q.InUse() ? P : Q;
  TPointXD result = Combine(longer.InUse(), longer, longer, [](double Value, double) { return Value; });
  for (std::size_t i = 0; i < std::min(P.InUse(), Q.InUse()); ++i) result.Items[i] = Choose(P.Items[i], Q.Items[i]);
  return result;
}

TPointXD TPointXD::ExtMax(const TPointXD& P) const {
  return Extreme(*this, P, [](double A, double B) { return std::max(A, B); });
}

TPointXD TPointXD::ExtMin(const TPointXD& P) const {
  return Extreme(*this, P, [](double A, double B) { return std::min(A, B); });
}

std::string TPointXD::ToString() const {
  std::string text;
  for (const double value : Coordinates()) text += ", " + FloatToStr(value);
  return text;
}

TPointXD operator+(const TPointXD& P, const TPointXD& Q) {
  return TPointXD::Combine(std::max(P.InUse(), Q.InUse()), P, Q, [](double A, double B) { return A + B; });
}

TPointXD operator-(const TPointXD& P, const TPointXD& Q) {
  return TPointXD::Combine(std::max(P.InUse(), Q.InUse()), P, Q, [](double A, double B) { return A - B; });
}

TPointXD operator*(const TPointXD& P, const TPointXD& Q) {
  return TPointXD::Combine(std::min(P.InUse(), Q.InUse()), P, Q, [](double A, double B) { return A * B; });
}

TPointXD operator*(const TPointXD& P, double S) {
  return TPointXD::Combine(P.InUse(), P, P, [S](double A, double) { return A * S; });
}

TPointXD operator/(const TPointXD& P, double S) {
  return TPointXD::Combine(P.InUse(), P, P, [S](double A, double) { return SafeDivXD(A, S, TPointXD::kTolerance); });
}

bool operator==(const TPointXD& P, const TPointXD& Q) {
  const auto isEqual = [](double A, double B) { return std::fabs(A - B) <= TPointXD::kTolerance; };
  const auto mine = P.Coordinates();
  const auto other = Q.Coordinates();
  return std::equal(mine.begin(), mine.end(), other.begin(), other.end(), isEqual);
}

}  // namespace ZORBase
