#include <ZORBase/ZORGeometry/CADTypes6D/OrientationInterpolation.h>

#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Cadtypes/ArcCos.h>
#include <ZORBase/common/Cadtypes/fEqual.h>
#include <ZORBase/kernels/TargetClones.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string_view>

namespace ZORBase {
namespace {

// An arc that is no longer than this is followed along its chord.
constexpr double kShortArc = 1e-6;

// Two aligned quaternions of at least this magnitude m blend to at least m / sqrt(2), which is far from zero.
constexpr double kSafeMagnitude = 1e-5;

double ClampedToUnit(double t) { return t < 0.0 ? 0.0 : t > 1.0 ? 1.0 : t; }

// q or -q, whichever lies on the side that the sign of its dot product tells; q itself on neither. Without a branch: nobody
// can predict it, and compilers make one of a choice between two numbers.
TQuaternion Aligned(const TQuaternion& q, double Dot) {
  constexpr std::array<double, 2> kSigns = {1.0, -1.0};
  return q * kSigns[Dot < 0.0 ? 1 : 0];
}

TQuaternion Aligned(const TQuaternion& q, const TQuaternion& Reference) { return Aligned(q, Reference.DotMul(q)); }

// What ArcCos says of the cosine c, and more.
[[noreturn]] ZORBASE_NOINLINE void RaiseNoArc(const TQuaternion& q, double c) {
  try {
    RaiseNoCosine(c);
  } catch (const TGeneralError& Error) {
    RaiseGeneralError(Error.what() +
                      Format1033("%.6f %.6f %.6f %.6f %.8f %d", q.a, q.b, q.c, q.d, c, static_cast<int>(c > 1.0)));
  }
}

// The arc to q from a quaternion that it is aligned with. Dot is their product up to its sign, which alignment takes away.
ZORBASE_INLINE double ArcTo(const TQuaternion& q, double Dot) {
  const double c = std::fabs(Dot) > 1.0 ? 1.0 : std::fabs(Dot);
  if (std::isnan(c)) RaiseNoArc(q, c);  // every other one is a cosine
  return ArcCos(c);
}

TQuaternion QuaternionOf(const TMatrix4D& m) {
  TQuaternion q;
  q.CreateFromMatrix4D(m);
  return q;
}

TPoint3D BlendedTranslation(double t, const TMatrix4D& m1, const TMatrix4D& m2) {
  return m1.GetTranslationPt() * (1.0 - t) + m2.GetTranslationPt() * t;
}

TMatrix4D PoseOf(const TQuaternion& q, const TPoint3D& Translation) {
  TMatrix4D pose = q.ToMatrix4D();
  pose.SetTranslationPt(Translation);
  return pose;
}

// The blends, ready to be evaluated at any number of parameters.

class TNLerp {
 public:
  TNLerp(const TQuaternion& q1, const TQuaternion& q2) : FFrom(q1), FTo(Aligned(q2, q1)) {}

  TQuaternion At(double t) const {
    const double weight = ClampedToUnit(t);
    const TQuaternion r = FFrom * (1.0 - weight) + FTo * weight;
    return r / r.NormMag();
  }

  // Whether At may meet a sum that is too small to be normalised.
  bool MayFail() const { return std::min(FFrom.NormMag(), FTo.NormMag()) < kSafeMagnitude; }

 private:
  TQuaternion FFrom;
  TQuaternion FTo;
};

class TSLerp {
 public:
  TSLerp(const TQuaternion& q1, const TQuaternion& q2) : TSLerp(q1, q2, q1.DotMul(q2)) {}

  TQuaternion At(double t) const {
    const double weight = ClampedToUnit(t);
    if (IsShort()) return Short(weight);
    const double w1 = std::sin((1.0 - weight) * FAngle) / FSine;
    const double w2 = std::sin(weight * FAngle) / FSine;
    return FFrom * w1 + FTo * w2;
  }

  bool MayFail() const { return IsShort() && TNLerp(FFrom, FTo).MayFail(); }

 private:
  TSLerp(const TQuaternion& q1, const TQuaternion& q2, double Dot)
      : FFrom(q1), FTo(Aligned(q2, Dot)), FAngle(ArcTo(FTo, Dot)), FSine(std::sin(FAngle)) {}

  bool IsShort() const { return fEqual(FAngle, 0.0, kShortArc); }
  // Out of the way of the common case.
  ZORBASE_NOINLINE TQuaternion Short(double Weight) const { return TNLerp(FFrom, FTo).At(Weight); }

  TQuaternion FFrom;
  TQuaternion FTo;
  double FAngle;
  double FSine;
};

template <class TRotation>
class TPoseBlend {
 public:
  TPoseBlend(const TMatrix4D& m1, const TMatrix4D& m2)
      : FFrom(m1), FTo(m2), FRotation(QuaternionOf(m1), QuaternionOf(m2)) {}

  TMatrix4D At(double t) const {
    const double weight = ClampedToUnit(t);
    return PoseOf(FRotation.At(weight), BlendedTranslation(weight, FFrom, FTo));
  }

  bool MayFail() const { return FRotation.MayFail(); }

 private:
  TMatrix4D FFrom;
  TMatrix4D FTo;
  TRotation FRotation;
};

template <class TBlend, class TResult>
void EvaluateAll(std::string_view Name, const TBlend& Blend, std::span<const double> t, std::span<TResult> Results) {
  if (Results.size() < t.size()) {
    RaiseGeneralError(Format1033("%s: %d parameters do not fit into %d results", Name, t.size(), Results.size()));
  }
  if (Blend.MayFail()) {
    for (const double parameter : t) Blend.At(parameter);  // raises before anything is written
  }
  std::transform(t.begin(), t.end(), Results.begin(), [&](double parameter) { return Blend.At(parameter); });
}

// The inner control orientation at q, between the neighbours q0 and q2: with it the spans on either side of q meet with
// the same angular velocity.
TQuaternion ControlOrientation(const TQuaternion& q0, const TQuaternion& q, const TQuaternion& q2) {
  const TPoint3D before = q0.Conj().QuaternionMul(q).Log();
  const TQuaternion step = q.Conj().QuaternionMul(q2);
  const TPoint3D direct = step.Log();
  const TPoint3D turned = (-step).Log();
  const bool isTurnedNearer = (before - turned).Mag() < (before - direct).Mag();
  const TPoint3D after = isTurnedNearer ? turned : direct;
  TQuaternion bend;
  bend.Exp((before - after) / 4.0);
  return q * bend;
}

}  // namespace

// ---------------------------------------------------------------------------------------------- angles

double QuaternionAngle(const TQuaternion& q1, const TQuaternion& q2) {
  const double dot = q1.DotMul(q2);
  return ArcTo(Aligned(q2, dot), dot);
}

double MatrixAngle(const TMatrix4D& m1, const TMatrix4D& m2) {
  TMatrix4D back = m1;
  back.Invert();
  const TQuaternion q = QuaternionOf(m2 * back);
  const double angle = 2.0 * ArcCos((q / q.NormMag()).a);
  return angle > std::numbers::pi ? 2.0 * std::numbers::pi - angle : angle;
}

// ---------------------------------------------------------------------------------------------- blends of quaternions

TQuaternion NLerpQuaternion(double t, const TQuaternion& q1, const TQuaternion& q2) { return TNLerp(q1, q2).At(t); }

TQuaternion SLerpQuaternion(double t, const TQuaternion& q1, const TQuaternion& q2) { return TSLerp(q1, q2).At(t); }

TQuaternion SquadQuaternion(double t, const TQuaternion& q0, const TQuaternion& q1, const TQuaternion& q2,
                            const TQuaternion& q3) {
  const TQuaternion p1 = Aligned(q1, q0);
  const TQuaternion p2 = Aligned(q2, p1);
  const TQuaternion p3 = Aligned(q3, p2);
  const TQuaternion s1 = Aligned(ControlOrientation(q0, p1, p2), p1);
  const TQuaternion s2 = Aligned(ControlOrientation(p1, p2, p3), s1);
  const TQuaternion end = Aligned(p2, s2);
  return SLerpQuaternion(2.0 * t * (1.0 - t), SLerpQuaternion(t, p1, end), SLerpQuaternion(t, s1, s2));
}

// ---------------------------------------------------------------------------------------------- blends of poses

TMatrix4D NLerp4DMatrix(double t, const TMatrix4D& m1, const TMatrix4D& m2) { return TPoseBlend<TNLerp>(m1, m2).At(t); }

TMatrix4D SLerp4DMatrix(double t, const TMatrix4D& m1, const TMatrix4D& m2) { return TPoseBlend<TSLerp>(m1, m2).At(t); }

TMatrix4D Squad4DMatrix(double t, const TMatrix4D& m0, const TMatrix4D& m1, const TMatrix4D& m2, const TMatrix4D& m3) {
  const TQuaternion q = SquadQuaternion(t, QuaternionOf(m0), QuaternionOf(m1), QuaternionOf(m2), QuaternionOf(m3));
  return PoseOf(q, BlendedTranslation(ClampedToUnit(t), m1, m2));
}

// ---------------------------------------------------------------------------------------------- many parameters

void NLerpQuaternions(std::span<const double> t, const TQuaternion& q1, const TQuaternion& q2,
                      std::span<TQuaternion> Results) {
  EvaluateAll("NLerpQuaternions", TNLerp(q1, q2), t, Results);
}

void SLerpQuaternions(std::span<const double> t, const TQuaternion& q1, const TQuaternion& q2,
                      std::span<TQuaternion> Results) {
  EvaluateAll("SLerpQuaternions", TSLerp(q1, q2), t, Results);
}

void NLerp4DMatrices(std::span<const double> t, const TMatrix4D& m1, const TMatrix4D& m2,
                     std::span<TMatrix4D> Results) {
  EvaluateAll("NLerp4DMatrices", TPoseBlend<TNLerp>(m1, m2), t, Results);
}

void SLerp4DMatrices(std::span<const double> t, const TMatrix4D& m1, const TMatrix4D& m2,
                     std::span<TMatrix4D> Results) {
  EvaluateAll("SLerp4DMatrices", TPoseBlend<TSLerp>(m1, m2), t, Results);
}

}  // namespace ZORBase
