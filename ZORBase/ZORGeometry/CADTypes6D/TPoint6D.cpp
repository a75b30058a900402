#include <ZORBase/ZORGeometry/CADTypes6D/TPoint6D.h>

#include <ZORBase/common/BaseServices/NumberRow.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Cadtypes/fEqual.h>

#include <algorithm>
#include <cmath>
#include <type_traits>

namespace ZORBase {
namespace {

// A six-vector that is not longer than this has no direction.
constexpr double kZeroLength = 1e-8;

static_assert(std::is_trivially_copyable_v<TPoint6D> && sizeof(TPoint6D) == 6 * sizeof(double));

constinit TPoint6D Zero;
constinit TPoint6D Ones = TPoint6D::Create(1.0, 1.0, 1.0, 1.0, 1.0, 1.0);

// The component Index of a pose, const or not.
template <class TPose>
auto& Component(TPose& P, int Index) {
  switch (Index) {
    case 0: return P.X;
    case 1: return P.Y;
    case 2: return P.Z;
    case 3: return P.A;
    case 4: return P.B;
    case 5: return P.C;
    default: RaiseGeneralError("TPoint6D has the items 0 to 5, not " + std::to_string(Index));
  }
}

// Applies Function to the components of one pose, or of several side by side.
template <class TFunction, class... TPoses>
TPoint6D ByComponent(TFunction&& Function, const TPoses&... Poses) {
  return TPoint6D::Create(Function(Poses.X...), Function(Poses.Y...), Function(Poses.Z...),  //
                          Function(Poses.A...), Function(Poses.B...), Function(Poses.C...));
}

void AppendRow(std::string& Text, const TPoint6D& P, int Digits, TNumberForm Form) {
  AppendNumberRow(Text, P.ToArray(), std::clamp(Digits, 0, kMaxRowDecimals), Form);
}

TPoint6D ParseRow(std::string_view Text, TNumberForm Form) {
  std::array<double, 6> values{};
  ParseNumberRow(Text, values, Form, "TPoint6D");
  return TPoint6D::FromArray(values);
}

}  // namespace

constinit const TPoint6D& TPoint6D::FZero = Zero;
constinit const TPoint6D& TPoint6D::FOnes = Ones;

void TPoint6D::FillConstants() {
  Zero = Create(0.0, 0.0, 0.0, 0.0, 0.0, 0.0);
  Ones = Create(1.0, 1.0, 1.0, 1.0, 1.0, 1.0);
}

double& TPoint6D::Items(int Index) { return Component(*this, Index); }
double TPoint6D::Items(int Index) const { return Component(*this, Index); }

TPoint6D TPoint6D::Abs(const TPoint6D& P) {
  return ByComponent([](double Value) { return std::fabs(Value); }, P);
}

TPoint6D TPoint6D::DotVecDiv(const TPoint6D& Q) const {
  return ByComponent([](double Value, double Divisor) { return Value / Divisor; }, *this, Q);
}

double TPoint6D::Mag() const { return std::sqrt(MagSqr()); }

double TPoint6D::GetMinItem() const {
  const auto values = ToArray();
  return *std::min_element(values.begin(), values.end());
}

void TPoint6D::Normalize() {
  const double mag = Mag();
  *this = mag <= kZeroLength ? FZero : ByComponent([mag](double Value) { return Value / mag; }, *this);
}

TPoint6D TPoint6D::Normal() const {
  TPoint6D result = *this;
  result.Normalize();
  return result;
}

void TPoint6D::VecNormalize() { SetVector(GetVector().Normal()); }

TPoint6D TPoint6D::VecNormal() const {
  TPoint6D result = *this;
  result.VecNormalize();
  return result;
}

double TPoint6D::ShadowLengthOnVec(const TPoint6D& AVec) const {
  const double mag = AVec.Mag();
  return mag <= kZeroLength ? Mag() : DotMul(AVec) / mag;
}

void TPoint6D::RestrainRange(const TPoint6D& AMin, const TPoint6D& AMax) {
  // The upper bound is applied last and so wins over a lower bound above it.
  *this = ByComponent([](double Value, double Min, double Max) { return std::min(Max, std::max(Min, Value)); }, *this,
                      AMin, AMax);
}

std::string TPoint6D::ToString(int Digits) const {
  std::string text;
  AppendRow(text, *this, Digits, nfLocale);
  return text;
}

std::string TPoint6D::ToString1033(int Digits) const {
  std::string text;
  AppendString1033(text, Digits);
  return text;
}

void TPoint6D::AppendString1033(std::string& Text, int Digits) const { AppendRow(Text, *this, Digits, nf1033); }

TPoint6D TPoint6D::Parse(std::string_view S) { return ParseRow(S, nfLocale); }

TPoint6D TPoint6D::Parse1033(std::string_view S) { return ParseRow(S, nf1033); }

bool TPoint6D::IsEqual(const TPoint6D& Q) const {
  const auto isEqual = [](double Value, double Other) { return fEqual(Value, Other, kEqualTolerance); };
  return isEqual(X, Q.X) && isEqual(Y, Q.Y) && isEqual(Z, Q.Z) && isEqual(A, Q.A) && isEqual(B, Q.B) && isEqual(C, Q.C);
}

}  // namespace ZORBase
