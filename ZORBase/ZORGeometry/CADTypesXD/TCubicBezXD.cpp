#include <ZORBase/ZORGeometry/CADTypesXD/TCubicBezXD.h>

#include <ZORBase/common/Cadtypes/TNumeric.h>
#include <ZORBase/kernels/BezierSpeed.h>

#include <algorithm>
#include <cmath>
#include <span>

namespace ZORBase {
namespace {

constexpr int kLengthPoints = 14;
constexpr double kLengthIntervalTolerance = 1e-6;

// ParamOfLength ends with a length this close, or with a step this small.
constexpr double kLengthTolerance = 1e-4;
constexpr double kSmallestStep = 1e-6;

// NaN becomes 0.
double ClampedParam(double t) { return t >= 1.0 ? 1.0 : (t > 0.0 ? t : 0.0); }

TPointXD PointAt(const TCubicBezXD& Bez, double t) {
  const double s = 1.0 - t;
  return Bez.FP0 * (s * s * s) + Bez.FP1 * 3.0 * (s * s) * t + Bez.FP2 * 3.0 * s * (t * t) + Bez.FP3 * (t * t * t);
}

TPointXD DerivAt(const TCubicBezXD& Bez, double t) {
  const double s = 1.0 - t;
  return (Bez.FP1 - Bez.FP0) * (3.0 * s * s) + (Bez.FP2 - Bez.FP1) * (6.0 * t * s) +
         (Bez.FP3 - Bez.FP2) * (3.0 * t * t);
}

TPointXD Deriv2At(const TCubicBezXD& Bez, double t) {
  const double s = 1.0 - t;
  const TPointXD first = Bez.FP0 + Bez.FP2 - Bez.FP1 - Bez.FP1;
  const TPointXD second = Bez.FP1 + Bez.FP3 - Bez.FP2 - Bez.FP2;
  return 6.0 * (s * first + t * second);
}

static_assert(TBezierTerms::kMaxCoordinates == TPointXD::kMaxDimension);

TBezierTerms TermsOf(const TCubicBezXD& Bez) {
  return {Bez.FP0.Items, Bez.FP1.Items, Bez.FP2.Items, Bez.FP3.Items, Bez.FP0.Coordinates().size()};
}

double LengthBetween(const TBezierTerms& Terms, double From, double To) {
  const double t0 = From < 0.0 ? 0.0 : From;
  const double t1 = To > 1.0 ? 1.0 : To;
  if (t0 >= t1) return 0.0;
  static_assert(kLengthPoints <= kSpeedLanes);
  const auto speeds = [&Terms](std::span<const double> Params, std::span<double> Speeds) {
    TSpeedLanes params{};
    TSpeedLanes results;
    std::copy(Params.begin(), Params.end(), params.begin());
    BezierSpeeds(Terms, params, results);
    std::copy_n(results.begin(), Speeds.size(), Speeds.begin());
  };
  return TNumeric::GaussQuadratureOfSpan(speeds, TGeInterval::Create(t0, t1, kLengthIntervalTolerance), kLengthPoints);
}

}  // namespace

TCubicBezXD TCubicBezXD::Create(const TPointXD& P0, const TPointXD& P1, const TPointXD& P2, const TPointXD& P3) {
  TCubicBezXD bez{P0, P1, P2, P3, 0.0};
  bez.FLength = bez.LengthOfParam(0.0, 1.0);
  return bez;
}

TPointXD TCubicBezXD::EvalPoint(double t) const {
  if (t >= 1.0) return FP3;
  if (!(t > 0.0)) return FP0;
  return PointAt(*this, t);
}

TPointXD TCubicBezXD::EvalPoint(double t, TPointXD& D1, TPointXD& D2, TPointXD& D3) const {
  const TCubicBezXD bez = *this;  // the results may be control points of this very segment
  const double clamped = ClampedParam(t);
  D1 = DerivAt(bez, clamped);
  D2 = Deriv2At(bez, clamped);
  D3 = 6.0 * (bez.FP3 - 3.0 * bez.FP2 + 3.0 * bez.FP1 - bez.FP0);
  return PointAt(bez, clamped);
}

TPointXD TCubicBezXD::EvalDeriv(double t) const { return DerivAt(*this, ClampedParam(t)); }

TPointXD TCubicBezXD::EvalDeriv2(double t) const { return Deriv2At(*this, ClampedParam(t)); }

double TCubicBezXD::GaussLengthFunc(double t) const { return BezierSpeed(TermsOf(*this), t); }

double TCubicBezXD::LengthOfParam(double t0, double t1) const { return LengthBetween(TermsOf(*this), t0, t1); }

double TCubicBezXD::ParamOfLength(double Len) const {
  const TBezierTerms terms = TermsOf(*this);
  double t = 1.0;
  double length = LengthBetween(terms, 0.0, 1.0);
  if (length <= Len) return 1.0;
  double step = 1.0;
  while (std::fabs(length - Len) >= kLengthTolerance) {
    step *= 0.5;
    if (step < kSmallestStep) break;
    t += length >= Len ? -step : step;
    length = LengthBetween(terms, 0.0, t);
  }
  return t;
}

}  // namespace ZORBase
