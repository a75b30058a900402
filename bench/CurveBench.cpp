// The curve: evaluating, fitting, measuring, and walking by arc length; the library and the plain version of the same bits.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <span>

#include "CurveSubject.h"
#include "PythonPeer.h"

namespace ZORBase::Bench {
namespace {

// Does Work with each of the numbers.
template <class TWork>
void WithEach(benchmark::State& State, const std::vector<double>& Numbers, TWork&& Work) {
  for (auto _ : State) {
    for (const double number : Numbers) benchmark::DoNotOptimize(Work(number));
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(Numbers.size()));
}

std::vector<double> Lengths(const TNurbs6D& Curve, std::vector<double> Parts) {
  for (double& part : Parts) part *= Curve.CurveLength();
  return Parts;
}

// ---------------------------------------------------------------------------------------------- evaluating

void EvalLibrary(benchmark::State& State, int Spans) {
  const TNurbs6D& curve = CurveSubject(Spans).Curve;
  WithEach(State, RandomParameters(), [&](double u) { return curve.EvalPoint(u); });
}

void EvalPlain(benchmark::State& State, int Spans) {
  const Test::TPlainCurve& curve = CurveSubject(Spans).Plain;
  WithEach(State, RandomParameters(), [&](double u) { return curve.EvalPoint(u); });
}

void EvalRisingLibrary(benchmark::State& State, int Spans) {
  const TNurbs6D& curve = CurveSubject(Spans).Curve;
  const std::vector<double>& parameters = RisingParameters();
  std::vector<TPoint6D> points(parameters.size());
  for (auto _ : State) {
    curve.EvalPoints(parameters, points);
    benchmark::ClobberMemory();
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(points.size()));
}

void EvalRisingPlain(benchmark::State& State, int Spans) {
  const Test::TPlainCurve& curve = CurveSubject(Spans).Plain;
  WithEach(State, RisingParameters(), [&](double u) { return curve.EvalPoint(u); });
}

void DerivativesLibrary(benchmark::State& State, int Spans) {
  const TNurbs6D& curve = CurveSubject(Spans).Curve;
  WithEach(State, RandomParameters(), [&](double u) {
    std::array<TPoint6D, 4> CK;
    curve.CurveDerivsAlg1(u, CK);
    return CK;
  });
}

void DerivativesPlain(benchmark::State& State, int Spans) {
  const Test::TPlainCurve& curve = CurveSubject(Spans).Plain;
  WithEach(State, RandomParameters(), [&](double u) { return curve.CurveDerivsAlg1(u); });
}

// ---------------------------------------------------------------------------------------------- fitting

// The steps of CreateCross whose cost grows with the points, but for the table; the outer control points are given.
void FitLibrary(benchmark::State& State, int Points) {
  const TPoint6DList poses = WavyPath(Points);
  const auto count = static_cast<std::size_t>(Points);
  for (auto _ : State) {
    std::vector<double> knots(count + 6);
    std::vector<TPoint6D> P(count + 2);
    double length = 0.0;
    TNurbs6D::ChordParalize(poses, std::span(knots).subspan(3), length);
    std::fill(knots.end() - 3, knots.end(), 1.0);
    P[0] = P[1] = poses.First();
    P[count] = P[count + 1] = poses.Last();
    TNurbs6D::SolveTridiagonal(Points - 1, poses, knots, P);
    benchmark::DoNotOptimize(P.data());
  }
  State.SetItemsProcessed(State.iterations() * Points);
}

void FitPlain(benchmark::State& State, int Points) {
  const TPoint6DList poses = WavyPath(Points);
  for (auto _ : State) benchmark::DoNotOptimize(Test::PlainFitWithoutTable(poses, mChord).P.data());
  State.SetItemsProcessed(State.iterations() * Points);
}

// ---------------------------------------------------------------------------------------------- arc length

void TableLibrary(benchmark::State& State, int Spans) {
  TNurbs6D curve;
  curve.Assign(CurveSubject(Spans).Curve);
  for (auto _ : State) {
    curve.InitLengthByUArray();
    benchmark::DoNotOptimize(curve.CurveLength());
  }
  State.SetItemsProcessed(State.iterations() * curve.SUTable().Count());
}

void TablePlain(benchmark::State& State, int Spans) {
  Test::TPlainCurve curve = CurveSubject(Spans).Plain;
  for (auto _ : State) {
    curve.InitLengthByUArray();
    benchmark::DoNotOptimize(curve.Table.Rows.Last().S);
  }
  State.SetItemsProcessed(State.iterations() * curve.Table.Rows.Count());
}

void ParamOfLengthLibrary(benchmark::State& State, int Spans) {
  const TNurbs6D& curve = CurveSubject(Spans).Curve;
  WithEach(State, Lengths(curve, RandomParameters()), [&](double S) { return curve.ParamOfLength(S); });
}

void ParamOfLengthPlain(benchmark::State& State, int Spans) {
  const TCurveSubject& subject = CurveSubject(Spans);
  WithEach(State, Lengths(subject.Curve, RandomParameters()), [&](double S) { return subject.Plain.Table.GetUByS(S); });
}

void LengthOfParamLibrary(benchmark::State& State, int Spans) {
  const TNurbs6D& curve = CurveSubject(Spans).Curve;
  WithEach(State, RandomParameters(), [&](double u) { return curve.GetSByU(u); });
}

void LengthOfParamPlain(benchmark::State& State, int Spans) {
  const Test::TPlainCurve& curve = CurveSubject(Spans).Plain;
  WithEach(State, RandomParameters(), [&](double u) { return curve.Table.GetSByU(u); });
}

void WalkLibrary(benchmark::State& State, int Spans) {
  const TNurbs6D& curve = CurveSubject(Spans).Curve;
  const std::vector<double> lengths = Lengths(curve, RisingParameters());
  std::vector<double> parameters(lengths.size());
  for (auto _ : State) {
    curve.ParamOfLength(lengths, parameters);
    benchmark::ClobberMemory();
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(lengths.size()));
}

void WalkPlain(benchmark::State& State, int Spans) {
  const TCurveSubject& subject = CurveSubject(Spans);
  WithEach(State, Lengths(subject.Curve, RisingParameters()), [&](double S) { return subject.Plain.Table.GetUByS(S); });
}

using TBench = void (*)(benchmark::State&, int);

void Register(const std::string& Kernel, int Size, TBench Library, TBench Plain) {
  benchmark::RegisterBenchmark(CurveBenchmarkName(Kernel, Size, "library").c_str(), Library, Size);
  benchmark::RegisterBenchmark(CurveBenchmarkName(Kernel, Size, "plain").c_str(), Plain, Size);
}

[[maybe_unused]] const bool kIsRegistered = [] {
  for (const int spans : kSpanCounts) {
    Register(kEvaluateAtRandom, spans, EvalLibrary, EvalPlain);
    Register(kEvaluateRising, spans, EvalRisingLibrary, EvalRisingPlain);
    RegisterPythonPeer(CurveBenchmarkName(kEvaluateRising, spans, "SciPy"), "evaluate_rising", spans);
    Register(kDerivatives, spans, DerivativesLibrary, DerivativesPlain);
    Register(kTable, spans, TableLibrary, TablePlain);
    Register(kParamOfLength, spans, ParamOfLengthLibrary, ParamOfLengthPlain);
    Register(kLengthOfParam, spans, LengthOfParamLibrary, LengthOfParamPlain);
    Register(kWalk, spans, WalkLibrary, WalkPlain);
  }
  for (const int points : kFitCounts) {
    Register(kFit, points, FitLibrary, FitPlain);
    RegisterPythonPeer(CurveBenchmarkName(kFit, points, "SciPy"), "fit", points);
  }
  return true;
}();

}  // namespace
}  // namespace ZORBase::Bench
