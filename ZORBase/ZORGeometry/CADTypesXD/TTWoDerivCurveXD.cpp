#include <ZORBase/ZORGeometry/CADTypesXD/TTWoDerivCurveXD.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Cadtypes/ArcCos.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>

namespace ZORBase {
namespace {

constexpr int kFewestPoints = 3;

// The correction of the weights: so many steps, each a secant over this difference of the weight, taken with this damping.
constexpr int kCorrectionSteps = 4;
constexpr double kWeightDifference = 0.001;
constexpr double kDamping = 0.6;

double ClampedWeight(double Weight) { return std::clamp(Weight, 0.0, 1.0); }

// ---------------------------------------------------------------------------------------------- tangents

TPointXD InnerTangent(double Weight, const TPTPInfo& Incoming, const TPTPInfo& Outgoing) {
  return (Weight * Incoming.vec + (1.0 - Weight) * Outgoing.vec).Normal();
}

// The tangents at the two ends of the curve lean away from the one next to them. They are normalised twice.
TPointXD StartTangent(double Weight, const TPTPInfo& First, const TPointXD& Next) {
  return (First.vec - Weight * Next).Normal().Normal();
}

TPointXD EndTangent(double Weight, const TPTPInfo& Last, const TPointXD& Before) {
  return (Last.vec - (1.0 - Weight) * Before).Normal().Normal();
}

// ---------------------------------------------------------------------------------------------- segments

// The length of a handle as a fraction of the chord, for the angle Own between tangent and chord at its end and the angle
// Other at the other end. Fitted constants.
double HandleFactor(double Own, double Other) {
  const double z = Own - 0.3 * std::sin(2.0 * Other - 0.4 * std::sin(2.0 * Other));
  return 0.417 * std::fabs(std::cos(z) - 0.2 * std::cos(3.0 * z));
}

double AngleToChord(const TPointXD& Tangent, const TPTPInfo& Chord) {
  return ArcCos(std::clamp(Tangent.DotMul(Chord.vec), -1.0, 1.0));
}

// The segment without its length, which only those that are delivered need.
TCubicBezXD UnmeasuredBez(const TBezInfo& Info) {
  const double angle0 = AngleToChord(Info.th0, Info.line);
  const double angle1 = AngleToChord(Info.th1, Info.line);
  const double f0 = HandleFactor(angle0, angle1) * Info.line.len;
  const double f1 = HandleFactor(angle1, angle0) * Info.line.len;
  return {Info.p1, Info.p1 + f0 * Info.th0, Info.p2 - f1 * Info.th1, Info.p2, 0.0};
}

TCubicBezXD CreateBez(const TBezInfo& Info) {
  const TCubicBezXD bez = UnmeasuredBez(Info);
  return TCubicBezXD::Create(bez.FP0, bez.FP1, bez.FP2, bez.FP3);
}

// ---------------------------------------------------------------------------------------------- curvature

// The curvature vector, the derivative of the unit tangent with respect to arc length, from the first two derivatives: K[i] is
// the sum over j of (D2[i] D1[j] - D1[i] D2[j]) D1[j], divided by |D1|^4. The term with j = i is 0.
TPointXD CurvatureVector(const TPointXD& D1, const TPointXD& D2) {
  TPointXD curvature = TPointXD::Create(std::max(D1.FDimension, D2.FDimension));
  const double speed = D1.Mag();
  if (speed < TPointXD::kTolerance) return curvature;  // no direction
  const std::size_t dimension = curvature.Coordinates().size();
  for (std::size_t j = 0; j < dimension; ++j) {
    for (std::size_t i = 0; i < dimension; ++i) {
      curvature.Items[i] += (D2.Items[i] * D1.Items[j] - D1.Items[i] * D2.Items[j]) * D1.Items[j];
    }
  }
  const double divisor = std::pow(speed, 4.0);
  for (double& value : curvature.Coordinates()) value /= divisor;
  return curvature;
}

// The curvature of a segment at one of its ends. There the derivatives are 3 (Handle - End) and 6 ((End + FarHandle) - Handle -
// Handle), and every other term of them is 0; at the end of a segment the first one has the other sign, which the curvature
// does not see.
double CurvatureAtEnd(const TPointXD& End, const TPointXD& Handle, const TPointXD& FarHandle) {
  return CurvatureVector((Handle - End) * 3.0, 6.0 * (End + FarHandle - Handle - Handle)).Mag();
}

// The relative jump of the curvature where A ends and B begins.
double JointCurvError(const TBezInfo& A, const TBezInfo& B) {
  const TCubicBezXD incoming = UnmeasuredBez(A);
  const TCubicBezXD outgoing = UnmeasuredBez(B);
  const double before = CurvatureAtEnd(incoming.FP3, incoming.FP2, incoming.FP1);
  const double after = CurvatureAtEnd(outgoing.FP0, outgoing.FP1, outgoing.FP2);
  return SafeDivXD(std::fabs(before - after), std::max(before, after), TPointXD::kTolerance);
}

// ---------------------------------------------------------------------------------------------- refusals

// Stored numbers count as far as the longest point reaches: there they are read where dimensions meet.
void RequireMeasurable(const TList<TPointXD>& Points) {
  static_assert(TTWoDerivCurveXD::kFarthest == 1e100);
  TPointXD widest;
  for (const TPointXD& point : Points) widest.FDimension = std::max(widest.FDimension, point.FDimension);
  for (int i = 0; i < Points.Count(); ++i) {
    if ((Points[i] + widest).Mag() <= TTWoDerivCurveXD::kFarthest) continue;
    RaiseGeneralError("TTWoDerivCurveXD.CreateCorss: point " + std::to_string(i) +
                      " (counted from 0) is not finite, or farther than 1e100 from the origin");
  }
}

void RequireDirections(const TList<TPointXD>& Points) {
  const std::optional<int> index = TTWoDerivCurveXD::PointWithoutDirection(Points);
  if (!index) return;
  RaiseGeneralError("TTWoDerivCurveXD.CreateCorss: point " + std::to_string(*index) +
                    " (counted from 0) is the same as both its neighbours; drop one of them");
}

}  // namespace

std::optional<int> TTWoDerivCurveXD::PointWithoutDirection(const TList<TPointXD>& Points) {
  for (int i = 1; i + 1 < Points.Count(); ++i) {
    const bool hasChord = (Points[i] - Points[i - 1]).Mag() + (Points[i + 1] - Points[i]).Mag() > 0.0;
    if (!hasChord) return i;
  }
  return std::nullopt;
}

bool TTWoDerivCurveXD::CreateCorss(const TList<TPointXD>& ctrlPt) {
  if (ctrlPt.Count() < kFewestPoints) return false;
  if (FCtrlPtList.Count() > 0) {
    RaiseGeneralError("TTWoDerivCurveXD.CreateCorss: the object has its curve already; use a new one for another");
  }
  RequireMeasurable(ctrlPt);
  RequireDirections(ctrlPt);
  TTWoDerivCurveXD curve;  // built aside: a failure on the way leaves this one as it was
  curve.FRenderPath = FRenderPath;
  curve.InitialThs(ctrlPt);
  curve.UpDateDeriv();
  for (int k = 0; k < kCorrectionSteps; ++k) {
    curve.IterDumb();
    curve.UpDateDeriv();
  }
  *this = std::move(curve);
  Render();
  return true;
}

void TTWoDerivCurveXD::InitialThs(const TList<TPointXD>& ctrlPt) {
  FCtrlPtList = ctrlPt;
  FPtLenList.Reserve(ctrlPt.size() - 1);
  FBezWeightList.Reserve(ctrlPt.size() - 2);
  for (int j = 0; j + 1 < ctrlPt.Count(); ++j) {
    const TPointXD step = ctrlPt[j + 1] - ctrlPt[j];
    const double length = step.Mag();
    if (j > 0) FBezWeightList.Add(length / (FPtLenList.Last().len + length));
    FPtLenList.Add({length, step / length});
  }
}

void TTWoDerivCurveXD::UpDateDeriv() {
  FBezDerivList.Clear();
  FBezDerivList.Reserve(FCtrlPtList.size());
  const int count = FBezWeightList.Count();
  for (int j = 0; j < count; ++j) {
    const double weight = FBezWeightList[j];
    const TPointXD tangent = InnerTangent(weight, FPtLenList[j], FPtLenList[j + 1]);
    if (j == 0) FBezDerivList.Add(StartTangent(weight, FPtLenList[0], tangent));
    FBezDerivList.Add(tangent);
    if (j == count - 1) FBezDerivList.Add(EndTangent(weight, FPtLenList[j + 1], tangent));
  }
}

// All corrections come from the same weights before any is applied.
void TTWoDerivCurveXD::IterDumb() {
  TDoubleList steps;
  steps.Reserve(FBezWeightList.size());
  for (int j = 0; j < FBezWeightList.Count(); ++j) steps.Add(SecantStep(j));
  for (int j = 0; j < FBezWeightList.Count(); ++j) {
    FBezWeightList[j] = ClampedWeight(FBezWeightList[j] + kDamping * steps[j]);
  }
}

// The change of weight j that would bring the curvature jump at its point to zero, were it linear in the weight.
double TTWoDerivCurveXD::SecantStep(int j) const {
  TBezInfo before = GetThs(j);
  TBezInfo after = GetThs(j + 1);
  const double error = JointCurvError(before, after);
  const double weight = ClampedWeight(FBezWeightList[j] + kWeightDifference);
  const TPointXD tangent = InnerTangent(weight, FPtLenList[j], FPtLenList[j + 1]);
  before.th1 = after.th0 = tangent;
  if (j == 0) before.th0 = StartTangent(weight, FPtLenList[0], tangent);
  if (j == FBezWeightList.Count() - 1) after.th1 = EndTangent(weight, FPtLenList[j + 1], tangent);
  const double change = JointCurvError(before, after) - error;
  return -SafeDivXD(error, change, TPointXD::kTolerance) * kWeightDifference;
}

TBezInfo TTWoDerivCurveXD::GetThs(int i) const {
  return {FBezDerivList[i], FBezDerivList[i + 1], FPtLenList[i], FCtrlPtList[i], FCtrlPtList[i + 1]};
}

void TTWoDerivCurveXD::Render() const {
  if (!FRenderPath) return;
  const TRenderPath render = FRenderPath;  // stays alive when the callback sets another one
  for (int i = 0; i < FPtLenList.Count(); ++i) render(CreateBez(GetThs(i)));
}

}  // namespace ZORBase
