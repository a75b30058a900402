#include <ZORBase/ZORGeometry/CADTypesEuler/TEulerPoint.h>

#include <ZORBase/common/BaseServices/NumberRow.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <type_traits>

namespace ZORBase {
namespace {

static_assert(std::is_trivially_copyable_v<TEulerPoint> && sizeof(TEulerPoint) == 6 * sizeof(double));

constinit TEulerPoint Zero;

constexpr std::array kComponents = {&TEulerPoint::X,  &TEulerPoint::Y,  &TEulerPoint::Z,
                                    &TEulerPoint::Rx, &TEulerPoint::Ry, &TEulerPoint::Rz};

double TEulerPoint::*Component(int Index) {
  if (Index < 0 || Index > 5) RaiseGeneralError("TEulerPoint has the items 0 to 5, not " + std::to_string(Index));
  return kComponents[static_cast<std::size_t>(Index)];
}

void AppendRow(std::string& Text, const TEulerPoint& P, int Decimal, TNumberForm Form) {
  AppendNumberRow(Text, P.ToArray(), std::clamp(Decimal, 0, kMaxRowDecimals), Form);
}

TEulerPoint ParseRow(std::string_view Text, TNumberForm Form) {
  std::array<double, 6> values{};
  ParseNumberRow(Text, values, Form, "TEulerPoint");
  return TEulerPoint::FromArray(values);
}

}  // namespace

constinit const TEulerPoint& TEulerPoint::FZero = Zero;

void TEulerPoint::FillConstants() { Zero = Create(0.0, 0.0, 0.0, 0.0, 0.0, 0.0); }

double& TEulerPoint::Items(int Index) { return this->*Component(Index); }
double TEulerPoint::Items(int Index) const { return this->*Component(Index); }

TPoint3D TEulerPoint::GetVector() const { return GetEuler().ToVector(); }

TPoint6D TEulerPoint::ToPoint6D() const { return TPoint6D::Create(GetPoint(), GetVector()); }

std::string TEulerPoint::ToString(int Decimal) const {
  std::string text;
  AppendString(text, Decimal);
  return text;
}

std::string TEulerPoint::ToString1033(int Decimal) const {
  std::string text;
  AppendString1033(text, Decimal);
  return text;
}

void TEulerPoint::AppendString(std::string& Text, int Decimal) const { AppendRow(Text, *this, Decimal, nfLocale); }

void TEulerPoint::AppendString1033(std::string& Text, int Decimal) const { AppendRow(Text, *this, Decimal, nf1033); }

TEulerPoint TEulerPoint::Parse(std::string_view S) { return ParseRow(S, nfLocale); }

TEulerPoint TEulerPoint::Parse1033(std::string_view S) { return ParseRow(S, nf1033); }

}  // namespace ZORBase
