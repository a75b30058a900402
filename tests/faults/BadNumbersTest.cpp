// Every entry that takes numbers is given those that no calculation likes: it gives a result or raises the general error, takes little
// memory, and comes back.
#include <ZORBase/ZORBase.h>

#include <array>
#include <functional>

#include "faults/FaultSupport.h"
#include "support/TestAllocator.h"
#include "support/TestSupport.h"

namespace ZORBase::Test {
namespace {

constexpr double kSmallestDenormal = std::numeric_limits<double>::denorm_min();
constexpr double kLargestDouble = std::numeric_limits<double>::max();

constexpr std::array kBadNumbers = {kNaN,   kInfinity, -kInfinity, kSmallestDenormal, -kSmallestDenormal,
                                    1e308,  -1e308,    1e154,      kLargestDouble,    -kLargestDouble,
                                    1e-308, 0.0,       -0.0};
constexpr std::array kBadCounts = {0, -1, 1, kLargestInt, kLargestInt - 1, kSmallestInt, 1 << 30, 46341};

// What an entry may hold at a time: none of these numbers is a reason for a large table or a long list.
constexpr std::int64_t kMemoryLimit = std::int64_t{64} << 20U;

template <class TValue>
struct TNumberEntry {
  const char* Name;
  std::function<void(TValue)> Call;
};

template <class TValue, class TValues>
void ExpectAnAnswer(const char* Subject, const std::vector<TNumberEntry<TValue>>& Entries, const TValues& Values) {
  for (const auto& entry : Entries) {
    for (const TValue value : Values) {
      const TAllocationCount count;
      const TOutcome outcome = Outcome([&] { entry.Call(value); });
      const std::int64_t peak = count.PeakBytes();
      EXPECT_TRUE(outcome == TOutcome::Done || outcome == TOutcome::Refused) << entry.Name << " of " << value;
      EXPECT_LE(peak, kMemoryLimit) << entry.Name << " of " << value;
    }
  }
  ReportRow(std::string("bad input: ") + Subject, static_cast<std::int64_t>(Entries.size() * Values.size()),
            "a result or the general error, in less than 64 MiB");
}

// ---------------------------------------------------------------------------------------------- what the entries work on

TPoint6D PoseAt(double X, double Y) { return TPoint6D::Create(X, Y, 0, 0, 0, 1); }

TPoint6DList PosesWith(double Value) {
  TPoint6DList poses;
  for (const double y : {0.0, 1.0, 0.5, Value, 2.0}) poses.Add(PoseAt(static_cast<double>(poses.Count()), y));
  return poses;
}

TNurbs6D FittedCurve() {
  const TPoint6DList poses = PosesWith(0.25);
  TNurbs6D curve;
  curve.CreateCross(&poses, mChord);
  return curve;
}

TMatrix4D MatrixWith(double Value) {
  TMatrix4D matrix = TMatrix4D::Create(TPoint3D::Create(0, 0, 1), 0.5);
  matrix.fm[0][0] = Value;
  matrix.fm[1][3] = Value;
  return matrix;
}

TDoubleList ListWith(double Value) {
  TDoubleList list;
  for (const double number : {1.0, 2.0, 0.0, Value, 3.0, 1.0, 0.5, 0.25, 4.0}) list.Add(number);
  return list;
}

template <class TFilter>
void DesignAndFilter(double Fs, double Fc, double Value) {
  TFilter filter;
  filter.SetFsample(Fs);
  filter.SetFcenter(Fc);
  filter.Initialize(Value);
  filter.Filt(Value);
  double elapsed = 0.0;
  filter.RandomTimeFilt(1.0, Value, elapsed);
  filter.CalcAttenByF(Value);
  filter.CalcRouphFByAtten(Value);
}

TBezierSegment2D SegmentWith(double Value) {
  return TBezierSegment2D::Create(TPoint2D::Create(0, 0), TPoint2D::Create(Value, 1), TPoint2D::Create(2, 1),
                                  TPoint2D::Create(3, Value));
}

std::optional<TDoubleList> Square(const TDoubleList& X) {
  TDoubleList residuals;
  residuals.Add(X[0] * X[0] - 2.0);
  return residuals;
}

// ---------------------------------------------------------------------------------------------- numbers

using TNumberEntries = std::vector<TNumberEntry<double>>;

TNumberEntries PoseEntries() {
  return {
      {"TPoint6D text", [](double v) { TPoint6D::Parse1033(PoseAt(v, -v).ToString1033(12)); }},
      {"TPoint6D::Normalize", [](double v) { PoseAt(v, v).Normal(); }},
      {"TPoint6D::VecNormalize", [](double v) { TPoint6D::Create(0, 0, 0, v, v, 0).VecNormal(); }},
      {"TPoint6D::ShadowLengthOnVec", [](double v) { PoseAt(v, 1).ShadowLengthOnVec(PoseAt(1, v)); }},
      {"TPoint6D::DotVecDiv", [](double v) { PoseAt(1, 1).DotVecDiv(PoseAt(v, v)); }},
      {"TPoint6D / s", [](double v) { static_cast<void>(PoseAt(1, 1) / v); }},
      {"TEulerPoint::ToPoint6D", [](double v) { TEulerPoint::Create(0, 0, 0, v, v, v).ToPoint6D(); }},
      {"TEulerPoint text", [](double v) { TEulerPoint::Create(v, 0, 0, v, v, v).ToString1033(4); }},
      {"TEulerAng::CreatebyXYVec",
       [](double v) { TEulerAng::CreatebyXYVec(TPoint3D::Create(v, 1, 0), TPoint3D::Create(0, v, 1)); }},
      {"TMatrix4D::Invert", [](double v) { MatrixWith(v).Invert(); }},
      {"TMatrix4D::Multiply", [](double v) { static_cast<void>(MatrixWith(v) * MatrixWith(-v)); }},
      {"TMatrix4D::Create(axis)", [](double v) { TMatrix4D::Create(TPoint3D::Create(v, v, 0), v); }},
      {"TMatrix4D::Create(from, to)",
       [](double v) { TMatrix4D::Create(TPoint3D::Create(v, 0, 0), TPoint3D::Create(0, v, 0)); }},
      {"TMatrix4D angles", [](double v) { MatrixWith(v).Matrix4DToEulerAngleXYZ(); }},
      {"TMatrix4D angles, ZYX", [](double v) { MatrixWith(v).Matrix4DToEulerAngleZYX(); }},
      {"MatrixAngle", [](double v) { MatrixAngle(MatrixWith(1), MatrixWith(v)); }},
      {"SLerp4DMatrix, t", [](double v) { SLerp4DMatrix(v, MatrixWith(1), MatrixWith(0.5)); }},
      {"SLerp4DMatrix", [](double v) { SLerp4DMatrix(0.5, MatrixWith(1), MatrixWith(v)); }},
      {"SquadQuaternion",
       [](double v) {
         const TQuaternion q = TQuaternion::Create(v, 0, 0, 1);
         SquadQuaternion(0.5, q, q, TQuaternion::Create(1, v, 0, 0), q);
       }},
      {"TQuaternion::Exp", [](double v) { TQuaternion().Exp(TPoint3D::Create(v, v, v)); }},
      {"TQuaternion::Log", [](double v) { TQuaternion::Create(v, 0, 1, 0).Log(); }},
      {"TQuaternion::Inverse", [](double v) { TQuaternion::Create(v, v, 0, 0).Inverse(); }},
  };
}

TNumberEntries CurveEntries() {
  return {
      {"TNurbs6D::CreateCross",
       [](double v) {
         const TPoint6DList poses = PosesWith(v);
         TNurbs6D().CreateCross(&poses, mCentripetal);
       }},
      {"TNurbs6D::EvalPoint", [](double v) { FittedCurve().EvalPoint(v); }},
      {"TNurbs6D::Curvature", [](double v) { FittedCurve().Curvature(v); }},
      {"TNurbs6D::GetSByU", [](double v) { FittedCurve().GetSByU(v); }},
      {"TNurbs6D::GetUByS", [](double v) { FittedCurve().GetUByS(v); }},
      {"TNurbs6D::ClosestPoint", [](double v) { FittedCurve().ClosestPoint(PoseAt(v, v)); }},
      {"TNurbs6D::CreateByCtlPoints",
       [](double v) {
         TNurbs6D curve;
         const std::array knots = {0.0, 0.0, 0.0, 0.0, v, 1.0, 1.0, 1.0, 1.0};
         curve.CreateByCtlPoints(knots, PosesWith(0.5), 5);
         curve.InitLengthByUArray();
         curve.EvalPoint(0.5);
       }},
      {"TTWoDerivCurveXD::CreateCorss",
       [](double v) {
         TList<TPointXD> points;
         for (const TPoint6D& pose : PosesWith(v)) points.Add(pose);
         TTWoDerivCurveXD().CreateCorss(points);
       }},
      {"TCubicBezXD",
       [](double v) {
         const TCubicBezXD segment = TCubicBezXD::Create(PoseAt(0, 0), PoseAt(v, 1), PoseAt(2, 1), PoseAt(3, v));
         segment.EvalPoint(v);
         segment.ParamOfLength(v);
         segment.LengthOfParam(0, v);
       }},
      {"TBezierSegmentHelper", [](double v) { TBezierSegmentHelper::IsG2Continue(SegmentWith(v), SegmentWith(1)); }},
  };
}

TNumberEntries SolverEntries() {
  return {
      {"MatrixDivUsingSvd",
       [](double v) {
         const TDoubleList a = ListWith(v);
         TDoubleList x = ListWith(v);
         while (x.Count() > 3) x.Delete(0);
         MatrixDivUsingSvd(&a, &x, 3, 3, &x, true);
       }},
      {"FitPlaneUsingSvd",
       [](double v) {
         TDoubleList list = ListWith(v);
         FitPlaneUsingSvd(&list, &list);
       }},
      {"TV4Interpolator",
       [](double v) {
         TV4Interpolator surface;
         surface.AddPoint(0, 0, 1);
         surface.AddPoint(1, 0, 2);
         surface.AddPoint(0, 1, v);
         surface.AddPoint(v, 1, 2);
         surface.CalcWeights();
         surface.CalcZ(v, 0.5);
       }},
      {"THermiteInterpolater",
       [](double v) {
         THermiteInterpolater table;
         table.BeginCurve(false);
         table.AddPoint(0, v);
         table.AddPoint(1, 1);
         table.AddPoint(v, 2);
         table.EndCurve();
         table.CalcY(v);
       }},
      {"TNewtonIterator",
       [](double v) {
         TNewtonIteratorPro iterator(1, 1, &Square);
         iterator.SetConvergeTor(v);
         TDoubleList x;
         x.Add(v);
         iterator.CalcParam(&x);
       }},
      {"TWcsPtInterpolator",
       [](double v) { TWcsPtInterpolator(PoseAt(0, 0), PoseAt(v, 1), -1, 1).GetWcsPtbyParam(v); }},
      {"TWcsPtInterpolator, limits",
       [](double v) { TWcsPtInterpolator(PoseAt(0, 0), PoseAt(1, 1), v, v, 0).GetWcsPt(1); }},
      {"TEulerPtInterpolator, limits",
       [](double v) {
         TEulerPtInterpolator(TEulerPoint(), TEulerPoint::Create(1, 0, 0, 0.1, 0, 0), v, v).GetWcsPt(1);
       }},
      {"TFFT::CalFFT, samples", [](double v) { TFFT().CalFFT(ListWith(v), 9, 0.5); }},
      {"TFFT::CalFFT, step", [](double v) { TFFT().CalFFT(ListWith(1), 9, v); }},
      {"THammingLowPassFilter, fs", [](double v) { DesignAndFilter<THammingLowPassFilter>(v, 15, 1); }},
      {"TBlackmanLowPassFilter, fc", [](double v) { DesignAndFilter<TBlackmanLowPassFilter>(148, v, 1); }},
      {"TRectangleLowPassFilter, both", [](double v) { DesignAndFilter<TRectangleLowPassFilter>(v, v, 1); }},
      {"TAverageLowPassFilter, samples", [](double v) { DesignAndFilter<TAverageLowPassFilter>(148, 15, v); }},
  };
}

TNumberEntries CommonEntries() {
  return {
      {"SafeDiv", [](double v) { SafeDiv(1, v, v); }},
      {"fEqual", [](double v) { fEqual(1, v, v); }},
      {"FloatToStr", [](double v) { FloatToStr(v); }},
      {"Format1033", [](double v) { Format1033("%.3f", v); }},
      {"TMatrix3D::RotateBy", [](double v) { TMatrix3D::CreateIdent().RotateBy(v, TPoint3D::Create(v, 0, 1)); }},
      {"TNumeric::GaussQuadrature",
       [](double v) { TNumeric::GaussQuadrature([](double x) { return x; }, TGeInterval::Create(0, v, 1e-6), 14); }},
      {"TBezierSegment2D",
       [](double v) {
         TPoint2D point;
         TPoint2D der1;
         TPoint2D der2;
         SegmentWith(v).EvalPoint(v, point, der1, der2);
       }},
  };
}

TEST(BadNumbers, OfPosesAndRotationsGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("poses and rotations", PoseEntries(), kBadNumbers);
}
TEST(BadNumbers, OfCurvesGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("curves", CurveEntries(), kBadNumbers);
}
TEST(BadNumbers, OfSolversAndSignalsGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("solvers and signals", SolverEntries(), kBadNumbers);
}
TEST(BadNumbers, OfTheBaseGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("base", CommonEntries(), kBadNumbers);
}

// ---------------------------------------------------------------------------------------------- counts and indices

TEST(BadCounts, GiveAResultOrTheGeneralErrorInLittleMemory) {
  const std::vector<TNumberEntry<int>> entries = {
      {"TList index", [](int n) { static_cast<void>(ListWith(1)[n]); }},
      {"TList::Insert", [](int n) { ListWith(1).Insert(n, 2.0); }},
      {"TList::Delete", [](int n) { ListWith(1).Delete(n); }},
      {"TPoint6D::Items", [](int n) { static_cast<void>(PoseAt(1, 1).Items(n)); }},
      {"TPoint6D::ToString1033", [](int n) { PoseAt(1, 1).ToString1033(n); }},
      {"TEulerPoint::ToString1033", [](int n) { TEulerPoint().ToString1033(n); }},
      {"TMatrix4D::RoundTo", [](int n) { MatrixWith(1).RoundTo(n); }},
      {"TMatrix4D::GetRowVector", [](int n) { MatrixWith(1).GetRowVector(static_cast<std::uint8_t>(n)); }},
      {"TQuaternion::Variable", [](int n) { static_cast<void>(TQuaternion::Create(1, 0, 0, 0).Variable(n)); }},
      {"TPointXD::Create", [](int n) { TPointXD::Create(n).Normal(); }},
      {"TNurbs6D::CreateByCtlPoints",
       [](int n) { TNurbs6D().CreateByCtlPoints(std::vector<double>(9, 0.5), PosesWith(1), n); }},
      {"TNurbs6D::SolveTridiagonal",
       [](int n) {
         std::vector<TPoint6D> points(8);
         TNurbs6D::SolveTridiagonal(n, PosesWith(1), std::vector<double>(12, 0.5), points);
       }},
      {"TNurbs6D::SpanBezier", [](int n) { FittedCurve().SpanBezier(n); }},
      {"TNurbsBasicFunc::Items", [](int n) { FittedCurve().BasicFun().Items(n); }},
      {"TNurbsBasicFunc::BasicFuns",
       [](int n) {
         std::array<double, 4> values{};
         FittedCurve().BasicFun().BasicFuns(n, 0.5, values);
       }},
      {"MatrixDivUsingSvd, M",
       [](int n) {
         const TDoubleList a = ListWith(1);
         TDoubleList x = ListWith(1);
         MatrixDivUsingSvd(&a, &a, n, 3, &x, true);
       }},
      {"MatrixDivUsingSvd, N",
       [](int n) {
         const TDoubleList a = ListWith(1);
         TDoubleList x = ListWith(1);
         MatrixDivUsingSvd(&a, &a, 1, n, &x, false);
       }},
      {"TNewtonIterator", [](int n) { TNewtonIterator(n, n, &Square, &Square, true); }},
      {"TWcsPtInterpolator", [](int n) { TWcsPtInterpolator(PoseAt(0, 0), PoseAt(1, 0), n, n).GetWcsPt(n); }},
      {"TEulerPtInterpolator",
       [](int n) { TEulerPtInterpolator(TEulerPoint(), TEulerPoint::Create(1, 0, 0, 0, 0, 0), n).GetWcsPt(n); }},
      {"TFFT::CalFFT", [](int n) { TFFT().CalFFT(ListWith(1), n, 0.5); }},
      {"TFFT::FFT", [](int n) { TFFT().FFT(ListWith(1), n); }},
      {"TFFT::getAmp", [](int n) { TFFT().getAmp(n); }},
      {"TFFT::Wn_i",
       [](int n) {
         TComplex w;
         TFFT::Wn_i(n, n, w, n);
       }},
      {"TLowPassWindowFilter order",
       [](int n) {
         THammingLowPassFilter filter;
         filter.SetFsample(148);
         filter.SetFcenter(15);
         filter.SetFilterOrder(n);
         filter.Initialize(0);
         filter.CalcSimuSignalMutiply(ListWith(1), n);
       }},
      {"TNumeric::GaussQuadrature",
       [](int n) { TNumeric::GaussQuadrature([](double x) { return x; }, TGeInterval::Create(0, 1, 1e-6), n); }},
      {"AppendFixed",
       [](int n) {
         std::string text;
         AppendFixed(text, 0.1, n % 1000);
       }},
  };
  ExpectAnAnswer("counts", entries, kBadCounts);
}

TEST(BadCounts, NothingAtAllGivesAResultOrTheGeneralError) {
  const std::vector<TNumberEntry<int>> entries = {
      {"TNurbs6D", [](int) { TNurbs6D().EvalPoint(0.5); }},
      {"TNurbs6D::CreateCross", [](int) { TNurbs6D().CreateCross(nullptr, mChord); }},
      {"TNurbs6D::ClosestPoint", [](int) { TNurbs6D().ClosestPoint(TPoint6D()); }},
      {"TNurbs6D::GetNearestPoint",
       [](int) {
         double param = 0;
         TNurbs6D().GetNearestPoint(TPoint6D(), 1, param);
       }},
      {"TNurbs6D::Reverse", [](int) { TNurbs6D().Reverse(); }},
      {"TTWoDerivCurveXD", [](int) { TTWoDerivCurveXD().CreateCorss({}); }},
      {"TV4Interpolator", [](int) { TV4Interpolator().CalcWeights(); }},
      {"THermiteInterpolater", [](int) { THermiteInterpolater().EndCurve(); }},
      {"MatrixDivUsingSvd", [](int) { MatrixDivUsingSvd(nullptr, nullptr, 1, 1, nullptr, true); }},
      {"FitLineUsingSvd",
       [](int) {
         TDoubleList none;
         FitLineUsingSvd(&none, &none);
       }},
      {"TFFT", [](int) { TFFT().CalFFT({}, 0, 1); }},
      {"TAverageLowPassFilter", [](int) { TAverageLowPassFilter().Filt(1.0); }},
      {"TPoint6D::Parse1033", [](int) { TPoint6D::Parse1033(""); }},
      {"TPoint6DList::LoadFromFile", [](int) { TPoint6DList().LoadFromFile(""); }},
  };
  ExpectAnAnswer("nothing at all", entries, std::array{0});
}

}  // namespace
}  // namespace ZORBase::Test
