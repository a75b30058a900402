#include "support/Evaluations.h"

#include <memory>
#include <utility>

#include "support/EvaluationArguments.h"

namespace ZORBase::Test {
namespace {

using TCalls = std::vector<TEvaluation>;

/// A call for each of the arguments; Function gives a number or a record of numbers.
template <class TFunction>
std::function<void(TResults&)> ForEachOf(const TArguments& Arguments, TFunction Function) {
  return [Arguments, Function](TResults& Results) {
    for (const double argument : Arguments) Results.Add(Function(argument));
  };
}

/// One call for all arguments, into places for results of type T.
template <class T, class TFunction>
std::function<void(TResults&)> ForAllOf(const TArguments& Arguments, TFunction Function) {
  return [Arguments, Function](TResults& Results) {
    std::array<T, kEvaluations> places{};
    Function(std::span<const double>(Arguments), std::span<T>(places));
    Results.AddAll(std::span<const T>(places));
  };
}

// ---------------------------------------------------------------------------------------------- curves

template <class TCurve, class TPoint>
void AddCurve(TCalls& Calls, const std::string& Name, const std::shared_ptr<const TCurve>& Curve) {
  const TArguments lengths = Spread(-1.0, 1.05 * Curve->CurveLength());
  Calls.push_back({Name + "::EvalPoint", ForEachOf(kParameters, [=](double u) { return Curve->EvalPoint(u); })});
  Calls.push_back(
      {Name + "::EvalPoints", ForAllOf<TPoint>(kParameters, [=](auto u, auto P) { Curve->EvalPoints(u, P); })});
  Calls.push_back({Name + "::CurveDerivsAlg1", ForEachOf(kParameters, [=](double u) {
                     std::array<TPoint, 4> CK{};
                     Curve->CurveDerivsAlg1(u, CK);
                     return CK;
                   })});
  Calls.push_back({Name + "::Curvature", ForEachOf(kParameters, [=](double u) { return Curve->Curvature(u); })});
  Calls.push_back({Name + "::SpanBezier", ForEachOf(kParameters, [=](double u) {
                     return Curve->SpanBezier(u < 0.5 ? 3 : Curve->pCount() - 1);
                   })});
  Calls.push_back({Name + "::GetSByU", ForEachOf(kParameters, [=](double u) { return Curve->GetSByU(u); })});
  Calls.push_back({Name + "::GetUByS", ForEachOf(lengths, [=](double S) { return Curve->GetUByS(S); })});
  Calls.push_back({Name + "::CurveLength", ForEachOf(kParameters, [=](double) { return Curve->CurveLength(); })});
  Calls.push_back(
      {Name + "::LengthOfParam", ForEachOf(kParameters, [=](double u) { return Curve->LengthOfParam(0.3, u); })});
  Calls.push_back({Name + "::ParamOfLength", ForEachOf(lengths, [=](double S) { return Curve->ParamOfLength(S); })});
  Calls.push_back({Name + "::ParamOfLength with a cursor", [=](TResults& Results) {
                     TSUTable::TCursor cursor;
                     for (const double S : lengths) Results.Add(Curve->ParamOfLength(S, cursor));
                   }});
  Calls.push_back({Name + "::ParamOfLength of many",
                   ForAllOf<double>(lengths, [=](auto S, auto u) { Curve->ParamOfLength(S, u); })});
  Calls.push_back({Name + "::GetNearestPoint", ForEachOf(kParameters, [=](double u) {
                     std::pair<TPoint, double> nearest;
                     nearest.first = Curve->GetNearestPoint(Curve->EvalPoint(u), 0.0, nearest.second);
                     return std::array{nearest.second};
                   })});
}

void AddTable(TCalls& Calls, const std::string& Name, const std::shared_ptr<const TSUTable>& Table) {
  const TArguments lengths = Spread(-1.0, 1.05 * Table->Last().S);
  Calls.push_back({Name + "::GetSByU", ForEachOf(kParameters, [=](double u) { return Table->GetSByU(u); })});
  Calls.push_back({Name + "::GetUByS", ForEachOf(lengths, [=](double S) { return Table->GetUByS(S); })});
  Calls.push_back(
      {Name + "::GetSByU of many", ForAllOf<double>(kParameters, [=](auto u, auto S) { Table->GetSByU(u, S); })});
  Calls.push_back(
      {Name + "::GetUByS of many", ForAllOf<double>(lengths, [=](auto S, auto u) { Table->GetUByS(S, u); })});
  Calls.push_back({Name + "::GetSByU with a cursor", [=](TResults& Results) {
                     TSUTable::TCursor cursor;
                     for (const double u : kParameters) Results.Add(Table->GetSByU(u, cursor));
                   }});
}

void AddKnots(TCalls& Calls, const std::shared_ptr<const TNurbsBasicFunc>& Basis) {
  Calls.push_back(
      {"TNurbsBasicFunc::FindSpan", ForEachOf(kParameters, [=](double u) { return double(Basis->FindSpan(u)); })});
  Calls.push_back({"TNurbsBasicFunc::BasicFuns", ForEachOf(Spread(0.0, 0.999), [=](double u) {
                     std::array<double, 4> N{};
                     Basis->BasicFuns(Basis->FindSpan(u), u, N);
                     return N;
                   })});
  Calls.push_back({"TNurbsBasicFunc::DersBasciFuns", ForEachOf(Spread(0.0, 0.999), [=](double u) {
                     Double2DArray ders{};
                     Basis->DersBasciFuns(Basis->FindSpan(u), u, 3, 3, ders);
                     return ders;
                   })});
}

void AddCurves(TCalls& Calls) {
  const TPoint6DList poses = SpiralPoses(30);
  TList<TPoint2D> places;
  for (const TPoint6D& pose : poses) places.Add(TPoint2D::Create(pose.X, pose.Y));
  const auto curve = std::make_shared<TNurbs6D>();
  const auto planeCurve = std::make_shared<TNurbs2D>();
  curve->CreateCross(&poses, mChord);
  planeCurve->CreateCross(places, mCentripetal);
  AddCurve<TNurbs6D, TPoint6D>(Calls, "TNurbs6D", curve);
  AddCurve<TNurbs2D, TPoint2D>(Calls, "TNurbs2D", planeCurve);
  const auto table = std::make_shared<TSUTable>(curve->SUTable());
  const auto changedTable = std::make_shared<TSUTable>(curve->SUTable());
  changedTable->Last().S += 0.001;
  AddTable(Calls, "TSUTable", table);
  AddTable(Calls, "TSUTable without an index", changedTable);
  AddKnots(Calls, std::make_shared<TNurbsBasicFunc>(curve->BasicFun()));
}

// ---------------------------------------------------------------------------------------------- transforms and blends

/// The forms of a transform for one item and for many, of type T.
template <class T, class TOne, class TMany>
void AddTransform(TCalls& Calls, const std::string& Name, const std::array<T, kEvaluations>& Items, TOne One,
                  TMany Many) {
  Calls.push_back({Name, [=](TResults& Results) {
                     for (const T& item : Items) Results.Add(One(item));
                   }});
  Calls.push_back({Name + " of many", [=](TResults& Results) {
                     std::array<T, kEvaluations> results{};
                     Many(std::span<const T>(Items), std::span<T>(results));
                     Results.AddAll(std::span<const T>(results));
                   }});
}

void AddTransforms(TCalls& Calls) {
  const TMatrix4D frame = FrameOf(1);
  std::array<TPoint3D, kEvaluations> points;
  std::array<TPoint6D, kEvaluations> poses;
  for (std::size_t i = 0; i < kEvaluations; ++i) {
    points[i] = TPoint3D::Create(kParameters[i], 1 - kParameters[i], 100 * kParameters[i]);
    poses[i] = TPoint6D::Create(points[i], points[i].Normal());
  }
  AddTransform<TPoint3D>(
      Calls, "TMatrix4D::TransformPt", points, [=](auto& P) { return frame.TransformPt(P); },
      [=](auto P, auto R) { frame.TransformPts(P, R); });
  AddTransform<TPoint3D>(
      Calls, "TMatrix4D::TransformVec", points, [=](auto& V) { return frame.TransformVec(V); },
      [=](auto V, auto R) { frame.TransformVecs(V, R); });
  AddTransform<TPoint6D>(
      Calls, "TMatrix4D::TransformPose", poses, [=](auto& P) { return frame.TransformPose(P); },
      [=](auto P, auto R) { frame.TransformPoses(P, R); });
  Calls.push_back({"TMatrix4D::TransformLine", ForEachOf(kParameters, [=](double t) {
                     return frame.TransformLine({TPoint3D::Create(t, 1, 2), TPoint3D::Create(3, t, 4)});
                   })});
  Calls.push_back({"TMatrix4D::Multiply and Invert", ForEachOf(kParameters, [=](double t) {
                     TMatrix4D product = frame;
                     product.Multiply(FrameOf(t), true);
                     product.Invert();
                     return product;
                   })});
  Calls.push_back(
      {"Euler angles", ForEachOf(kParameters, [](double t) {
         const TPoint6D angles = FrameOf(t).Matrix4DToEulerAngleZYX();
         return TEulerPoint::Create(angles.GetPoint(), TEulerAng::Create(angles.A, angles.B, angles.C)).ToPoint6D();
       })});
}

void AddBlends(TCalls& Calls) {
  const TQuaternion q0 = RotationOf(0), q1 = RotationOf(1), q2 = RotationOf(2), q3 = RotationOf(3);
  const TMatrix4D m0 = FrameOf(0), m1 = FrameOf(1), m2 = FrameOf(2), m3 = FrameOf(3);
  const auto one = [&](const char* Name, auto Function) { Calls.push_back({Name, ForEachOf(kParameters, Function)}); };
  one("NLerpQuaternion", [=](double t) { return NLerpQuaternion(t, q1, q2); });
  one("SLerpQuaternion", [=](double t) { return SLerpQuaternion(t, q1, q2); });
  one("SquadQuaternion", [=](double t) { return SquadQuaternion(t, q0, q1, q2, q3); });
  one("NLerp4DMatrix", [=](double t) { return NLerp4DMatrix(t, m1, m2); });
  one("SLerp4DMatrix", [=](double t) { return SLerp4DMatrix(t, m1, m2); });
  one("Squad4DMatrix", [=](double t) { return Squad4DMatrix(t, m0, m1, m2, m3); });
  one("QuaternionAngle", [=](double t) { return QuaternionAngle(q1, RotationOf(t)); });
  one("MatrixAngle", [=](double t) { return MatrixAngle(m1, FrameOf(t)); });
  one("TQuaternion::Log and Exp", [](double t) {
    TQuaternion q;
    q.Exp(RotationOf(t).Log());
    return q;
  });
  Calls.push_back({"NLerpQuaternions",
                   ForAllOf<TQuaternion>(kParameters, [=](auto t, auto R) { NLerpQuaternions(t, q1, q2, R); })});
  Calls.push_back({"SLerpQuaternions",
                   ForAllOf<TQuaternion>(kParameters, [=](auto t, auto R) { SLerpQuaternions(t, q1, q2, R); })});
  Calls.push_back(
      {"NLerp4DMatrices", ForAllOf<TMatrix4D>(kParameters, [=](auto t, auto R) { NLerp4DMatrices(t, m1, m2, R); })});
  Calls.push_back(
      {"SLerp4DMatrices", ForAllOf<TMatrix4D>(kParameters, [=](auto t, auto R) { SLerp4DMatrices(t, m1, m2, R); })});
}

/// The straight move of an interpolator with poses of type TPose.
template <class TPose, class TInterpolator>
void AddMove(TCalls& Calls, const std::string& Name, const TInterpolator& Move) {
  Calls.push_back(
      {Name + "::GetWcsPt", ForEachOf(Spread(-1, 12), [=](double i) { return Move.GetWcsPt(static_cast<int>(i)); })});
  Calls.push_back(
      {Name + "::GetWcsPtbyParam", ForEachOf(kParameters, [=](double t) { return Move.GetWcsPtbyParam(t); })});
  Calls.push_back({Name + "::GetWcsPtsbyParams",
                   ForAllOf<TPose>(kParameters, [=](auto t, auto P) { Move.GetWcsPtsbyParams(t, P); })});
}

// ---------------------------------------------------------------------------------------------- segments, tables, surfaces

void AddSegments(TCalls& Calls) {
  const auto plane = TBezierSegment2D::Create({0, 0}, {1, 3}, {5, -2}, {8, 1});
  Calls.push_back({"TBezierSegment2D::EvalPoint", ForEachOf(kParameters, [=](double t) {
                     std::array<TPoint2D, 4> P{};
                     plane.EvalPoint(t, P[0], P[1], P[2], P[3]);
                     return P;
                   })});
  Calls.push_back({"TBezierSegmentHelper::EvalDerVector", ForEachOf(kParameters, [=](double t) {
                     std::array<TPoint2D, 2> V{};
                     TBezierSegmentHelper::EvalDerVector(plane, t, V[0], V[1]);
                     return V;
                   })});
  const auto point = [](double Shift) {
    return TPointXD(TPoint6D::Create(Shift, 2 * Shift, 1, Shift * Shift, 0, -Shift));
  };
  const auto segment = TCubicBezXD::Create(point(0), point(1), point(3), point(4));
  Calls.push_back({"TCubicBezXD::EvalPoint",
                   ForEachOf(kParameters, [=](double t) { return static_cast<TPoint6D>(segment.EvalPoint(t)); })});
  Calls.push_back(
      {"TCubicBezXD::LengthOfParam", ForEachOf(kParameters, [=](double t) { return segment.LengthOfParam(0, t); })});
  Calls.push_back({"TCubicBezXD::ParamOfLength", ForEachOf(Spread(-1, 1.1 * segment.CurveLength()),
                                                           [=](double S) { return segment.ParamOfLength(S); })});
}

void AddTables(TCalls& Calls) {
  const auto table = std::make_shared<THermiteInterpolater>();
  table->BeginCurve(false);
  for (int i = 0; i < 50; ++i) table->AddPoint(0.02 * i, std::sin(0.3 * i));
  table->EndCurve();
  Calls.push_back({"THermiteInterpolater::CalcY", ForEachOf(kParameters, [=](double x) { return table->CalcY(x); })});

  const auto surface = std::make_shared<TV4Interpolator>();
  surface->AddPointList(BowlSamples());
  surface->CalcWeights();
  Calls.push_back(
      {"TV4Interpolator::CalcZ", ForEachOf(kParameters, [=](double x) { return surface->CalcZ(30 * x, 7 - x); })});
  Calls.push_back({"TV4Interpolator::CalcZ of many", ForAllOf<double>(kParameters, [=](auto x, auto z) {
                     std::array<TPoint2D, kEvaluations> places{};
                     for (std::size_t i = 0; i < places.size(); ++i) places[i] = {30 * x[i], 7 - x[i]};
                     surface->CalcZ(places, z);
                   })});
}

// ---------------------------------------------------------------------------------------------- filters

template <class TFilter>
void AddFilter(TCalls& Calls, const std::string& Name) {
  const auto made = [] {
    auto filter = std::make_shared<TFilter>();
    filter->SetFsample(1000);
    filter->SetFcenter(40);
    filter->Initialize(0.5);
    return filter;
  };
  const auto response = std::shared_ptr<const TFilter>(made());
  Calls.push_back(
      {Name + "::CalcAttenByF", ForEachOf(Spread(0, 500), [=](double f) { return response->CalcAttenByF(f); })});
  Calls.push_back({Name + "::CalcRouphFByAtten",
                   ForEachOf(Spread(0, 1), [=](double a) { return response->CalcRouphFByAtten(a); })});
  Calls.push_back({Name + "::Filt", ForEachOf(kParameters, [filter = made()](double x) { return filter->Filt(x); })});
  Calls.push_back({Name + "::Filt of many",
                   ForAllOf<double>(kParameters, [filter = made()](auto x, auto y) { filter->Filt(x, y); })});
  Calls.push_back({Name + "::RandomTimeFilt", ForEachOf(kParameters, [filter = made()](double x) {
                     std::array<double, 2> result{};
                     result[0] = filter->RandomTimeFilt(x, 0.0037, result[1]);
                     return result;
                   })});
  Calls.push_back({Name + "::RandomTimeFilt with many outputs", ForEachOf(kParameters, [filter = made()](double x) {
                     std::array<double, 8> outputs{};
                     filter->RandomTimeFilt(x, 0.0053, std::span<double>(outputs));
                     return outputs;
                   })});
  Calls.push_back({Name + "::Clear", ForEachOf(kParameters, [filter = made()](double x) {
                     filter->Clear(x);
                     return filter->LastOutput();
                   })});
}

void Append(TCalls& To, TCalls More) { std::ranges::move(More, std::back_inserter(To)); }

}  // namespace

std::vector<TEvaluation> Evaluations() {
  TCalls calls;
  AddCurves(calls);
  AddTransforms(calls);
  AddBlends(calls);
  const TPoint6DList poses = SpiralPoses(2);
  AddMove<TPoint6D>(calls, "TWcsPtInterpolator", TWcsPtInterpolator(poses[0], poses[1], 10, 0));
  AddMove<TEulerPoint>(calls, "TEulerPtInterpolator",
                       TEulerPtInterpolator({}, TEulerPoint::Create(1, 2, 3, 0.1, 0.2, 0.3), 10));
  AddSegments(calls);
  AddTables(calls);
  Append(calls, CEvaluations());
  return calls;
}

std::vector<TEvaluation> SampleCalls() {
  TCalls calls;
  AddFilter<THammingLowPassFilter>(calls, "THammingLowPassFilter");
  AddFilter<TRectangleLowPassFilter>(calls, "TRectangleLowPassFilter");
  AddFilter<TBlackmanLowPassFilter>(calls, "TBlackmanLowPassFilter");
  AddFilter<TAverageLowPassFilter>(calls, "TAverageLowPassFilter");
  Append(calls, CSampleCalls());
  return calls;
}

}  // namespace ZORBase::Test
