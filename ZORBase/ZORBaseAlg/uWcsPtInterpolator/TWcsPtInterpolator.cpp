#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator/TWcsPtInterpolator.h>

#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator/Steps.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TPoint3DHelper.h>
#include <ZORBase/common/Cadtypes/TMatrix3D.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace ZORBase {
namespace {

constexpr std::string_view kClassName = "TWcsPtInterpolator";

// The mode in which the direction does not pass through a lowest Z.
constexpr int kAvoidLowestZ = 1;

// An axis that is not longer than this is none.
constexpr double kZeroAxis = 1e-12;

// Products of four such components, as the angle between two directions takes them, stay finite.
constexpr double kLongestDirection = 1e75;

void RequireUsable(const TPoint6D& Pose, std::string_view Place) {
  RequireFinite(Pose.ToArray(), Place);
  const bool isUsable = Pose.GetVector().Mag() <= kLongestDirection;
  if (!isUsable) {
    RaiseGeneralError(std::string(Place) + " has a direction longer than 1e75; it should be a unit vector");
  }
}

// The turn the other way. One that rounding would make exactly 2 pi is none.
double OtherWay(double Angle) {
  constexpr double kFullTurn = 2.0 * std::numbers::pi;
  const double other = kFullTurn - Angle;
  return other == kFullTurn ? 0.0 : other;
}

}  // namespace

TWcsPtInterpolator::TWcsPtInterpolator(const TPoint6D& BeginPt, const TPoint6D& EndPt, int Cnt, int InterpType)
    : FBeginPt(BeginPt), FEndPt(EndPt), FOffsetPt((EndPt - BeginPt).GetPoint()) {
  RequireUsable(BeginPt, "TWcsPtInterpolator: BeginPt");
  RequireUsable(EndPt, "TWcsPtInterpolator: EndPt");
  RequireFinite(std::array{FOffsetPt.X, FOffsetPt.Y, FOffsetPt.Z}, "TWcsPtInterpolator: EndPt - BeginPt");
  const TPoint3D start = BeginPt.GetVector();
  const TPoint3D end = EndPt.GetVector();
  FOffSetAngle = start.AngleBetween(end);
  FCrossVec = start.CrossMul(end).Normal();
  if (FCrossVec.IsZeroLength(kZeroAxis)) FCrossVec = start.CrossMul(TPoint3DHelper::VerticalVec()).Normal();
  if (InterpType == kAvoidLowestZ && !CheckVecZDer()) {
    FCrossVec = -FCrossVec;
    FOffSetAngle = OtherWay(FOffSetAngle);
  }
  FInterpType = InterpType;
  SetCount(Cnt);
}

TWcsPtInterpolator::TWcsPtInterpolator(const TPoint6D& BeginPt, const TPoint6D& EndPt, double MaxDis, double MaxDeg,
                                       int InterpType)
    : TWcsPtInterpolator(BeginPt, EndPt, 1, InterpType) {
  const double maxRad = DegToRad(MaxDeg);
  RequireLimit("MaxDis", MaxDis, MaxDis, kClassName);
  RequireLimit("MaxDeg", MaxDeg, maxRad, kClassName);
  FCnt = StepCount(FOffsetPt.Mag(), MaxDis, FOffSetAngle, maxRad, kClassName);
}

// Whether the short turn may be taken: not when Z falls at its start and rises at its end, through a lowest Z between.
// With the start direction v and the axis k, the Z of v turned by t has the derivative z'(t) = vx (kx kz sin t - ky cos
// t) + vy (ky kz sin t + kx cos t) + vz (kz^2 - 1) sin t.
bool TWcsPtInterpolator::CheckVecZDer() const {
  const TPoint3D v = FBeginPt.GetVector();
  const TPoint3D& k = FCrossVec;
  const auto derivative = [&](double Sine, double Cosine) {
    return v.X * (k.X * k.Z * Sine - k.Y * Cosine) + v.Y * (k.Y * k.Z * Sine + k.X * Cosine) +
           v.Z * (k.Z * k.Z - 1.0) * Sine;
  };
  return derivative(0.0, 1.0) >= 0.0 || -derivative(std::sin(FOffSetAngle), std::cos(FOffSetAngle)) >= 0.0;
}

void TWcsPtInterpolator::SetCount(int Value) {
  FCnt = Value < 0 ? StepCount(FOffsetPt.Mag(), kMaxDis, FOffSetAngle, kMaxRad, kClassName) : std::max(Value, 1);
}

TPoint6D TWcsPtInterpolator::GetWcsPt(int Idx) const { return GetWcsPtbyParam(static_cast<double>(Idx) / FCnt); }

TPoint6D TWcsPtInterpolator::GetWcsPtbyParam(double Param) const {
  const double param = ClampedParam(Param, kClassName);
  TMatrix3D turn = TMatrix3D::CreateIdent();
  turn.RotateBy(param * FOffSetAngle, FCrossVec);
  return TPoint6D::Create(FBeginPt.GetPoint() + param * FOffsetPt, turn.Transform(FBeginPt.GetVector()));
}

void TWcsPtInterpolator::GetWcsPtsbyParams(std::span<const double> Params, std::span<TPoint6D> WcsPts) const {
  FillPoses(Params, WcsPts, kClassName, [this](double Param) { return GetWcsPtbyParam(Param); });
}

void TWcsPtInterpolator::SaveAllToFile(const std::string& AFileName) const {
  SavePointList(AFileName, TStepRange(FCnt),
                [this](std::string& Text, int Idx) { GetWcsPt(Idx).AppendString1033(Text, kStepFileDecimals); });
}

}  // namespace ZORBase
