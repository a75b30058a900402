#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator/TEulerPtInterpolator.h>

#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator/Steps.h>
#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator/TWcsPtInterpolator.h>

#include <algorithm>
#include <cmath>

namespace ZORBase {
namespace {

constexpr std::string_view kClassName = "TEulerPtInterpolator";

}  // namespace

TEulerPtInterpolator::TEulerPtInterpolator(const TEulerPoint& BeginPt, const TEulerPoint& EndPt, int Cnt)
    : FBeginPt(BeginPt), FEndPt(EndPt), FMaxDis(TWcsPtInterpolator::kMaxDis), FMaxRad(TWcsPtInterpolator::kMaxRad) {
  TakeOffsets();
  SetCount(Cnt);
}

TEulerPtInterpolator::TEulerPtInterpolator(const TEulerPoint& BeginPt, const TEulerPoint& EndPt, double MaxDis,
                                           double MaxDeg)
    : FBeginPt(BeginPt), FEndPt(EndPt), FMaxDis(MaxDis), FMaxRad(DegToRad(MaxDeg)) {
  TakeOffsets();
  RequireLimit("MaxDis", MaxDis, FMaxDis, kClassName);
  RequireLimit("MaxDeg", MaxDeg, FMaxRad, kClassName);
  SetCount(-1);
}

void TEulerPtInterpolator::TakeOffsets() {
  RequireFinite(FBeginPt.ToArray(), "TEulerPtInterpolator: BeginPt");
  RequireFinite(FEndPt.ToArray(), "TEulerPtInterpolator: EndPt");
  FOffsetPt = FEndPt.GetPoint() - FBeginPt.GetPoint();
  FOffOrient = FEndPt.GetEuler() - FBeginPt.GetEuler();
  RequireFinite(TEulerPoint::Create(FOffsetPt, FOffOrient).ToArray(), "TEulerPtInterpolator: EndPt - BeginPt");
}

void TEulerPtInterpolator::SetCount(int Value) {
  FCnt = Value < 0 ? StepCount(FOffsetPt.Mag(), FMaxDis, FOffOrient.Mag(), FMaxRad, kClassName) : std::max(Value, 1);
}

TEulerPoint TEulerPtInterpolator::GetWcsPt(int Idx) const { return GetWcsPtbyParam(static_cast<double>(Idx) / FCnt); }

TEulerPoint TEulerPtInterpolator::GetWcsPtbyParam(double Param) const {
  const double param = ClampedParam(Param, kClassName);
  return TEulerPoint::Create(FBeginPt.GetPoint() + param * FOffsetPt, FBeginPt.GetEuler() + param * FOffOrient);
}

void TEulerPtInterpolator::GetWcsPtsbyParams(std::span<const double> Params, std::span<TEulerPoint> WcsPts) const {
  FillPoses(Params, WcsPts, kClassName, [this](double Param) { return GetWcsPtbyParam(Param); });
}

std::optional<TList<TEulerPoint>> TEulerPtInterpolator::GetWcsList() const {
  if (FCnt < 2) return std::nullopt;
  if (FCnt >= kMaxListPoses) {
    RaiseGeneralError(
        Format1033("%s.GetWcsList: %d steps make more than the %d poses that a list holds; use SaveAllToFile or "
                   "GetWcsPt",
                   kClassName, FCnt, kMaxListPoses));
  }
  TList<TEulerPoint> poses;
  poses.Reserve(static_cast<std::size_t>(FCnt) + 1);
  for (const int idx : TStepRange(FCnt)) poses.Add(GetWcsPt(idx));
  return poses;
}

void TEulerPtInterpolator::SaveAllToFile(const std::string& AFileName) const {
  SavePointList(AFileName, TStepRange(FCnt),
                [this](std::string& Text, int Idx) { GetWcsPt(Idx).AppendString(Text, kStepFileDecimals); });
}

}  // namespace ZORBase
