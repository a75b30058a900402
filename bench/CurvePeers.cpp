// What other libraries take for the work of CurveBench.cpp: the same curve and the same numbers, in six components.
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <stdexcept>

#include "CurveSubject.h"

#ifdef ZORBASE_BENCH_EIGEN
#include <unsupported/Eigen/Splines>
#endif
#ifdef ZORBASE_BENCH_GSL
#include <gsl/gsl_spline.h>
#endif
#ifdef ZORBASE_BENCH_SISL
#include <sisl.h>
#endif

namespace ZORBase::Bench {
namespace {

template <class TWork>
void Register(const std::string& Kernel, int Size, const std::string& Who, TWork Work) {
  benchmark::RegisterBenchmark(CurveBenchmarkName(Kernel, Size, Who).c_str(), Work, Size);
}

template <class TWork>
void WithEach(benchmark::State& State, const std::vector<double>& Numbers, TWork&& Work) {
  for (auto _ : State) {
    for (const double number : Numbers) benchmark::DoNotOptimize(Work(number));
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(Numbers.size()));
}

// A peer that works on another curve is no comparison.
void RequireNear(const TPoint6D& Expected, const double* Found) {
  for (int i = 0; i < 6; ++i) {
    if (!(std::abs(Expected.Items(i) - Found[i]) < 1e-6)) throw std::logic_error("a peer's curve is another one");
  }
}

[[maybe_unused]] std::vector<double> ChordParameters(const TPoint6DList& Poses) {
  std::vector<double> parameters(Poses.size());
  double length = 0.0;
  TNurbs6D::ChordParalize(Poses, parameters, length);
  return parameters;
}

#ifdef ZORBASE_BENCH_SISL
// ---------------------------------------------------------------------------------------------- SISL

using TSislCurve = std::unique_ptr<SISLCurve, decltype(&freeCurve)>;

void SislEval(SISLCurve& Curve, int Derivatives, double u, int& Left, double* Result) {
  int status = 0;
  s1227(&Curve, Derivatives, u, &Left, Result, &status);
  if (status < 0) throw std::logic_error("s1227 failed");
}

TSislCurve SislCurveOf(const TNurbs6D& Curve) {
  std::vector<double> knots(Curve.BasicFun().uArr().begin(), Curve.BasicFun().uArr().end());
  std::vector<double> points;
  for (const TPoint6D& P : Curve.pointArr()) {
    for (const double item : P.ToArray()) points.push_back(item);
  }
  TSislCurve curve(newCurve(Curve.pCount(), 4, knots.data(), points.data(), 1, 6, 1), freeCurve);
  int left = 0;
  for (int i = 0; i <= 10; ++i) {
    std::array<double, 6> point{};
    SislEval(*curve, 0, i / 10.0, left, point.data());
    RequireNear(Curve.EvalPoint(i / 10.0), point.data());
  }
  return curve;
}

template <int Derivatives>
void SislEvalEach(benchmark::State& State, int Spans, const std::vector<double>& Parameters) {
  const TSislCurve curve = SislCurveOf(CurveSubject(Spans).Curve);
  int left = 0;
  WithEach(State, Parameters, [&](double u) {
    std::array<double, 6 * (Derivatives + 1)> result;
    SislEval(*curve, Derivatives, u, left, result.data());
    return result;
  });
}

void SislEvalRandom(benchmark::State& State, int Spans) { SislEvalEach<0>(State, Spans, RandomParameters()); }
void SislEvalRising(benchmark::State& State, int Spans) { SislEvalEach<0>(State, Spans, RisingParameters()); }
void SislDerivatives(benchmark::State& State, int Spans) { SislEvalEach<3>(State, Spans, RandomParameters()); }

void SislEvalTable(benchmark::State& State, int Spans) {
  std::vector<double> parameters;
  for (const TSULine& row : CurveSubject(Spans).Curve.SUTable()) parameters.push_back(row.u);
  SislEvalEach<0>(State, Spans, parameters);
}

void SislFit(benchmark::State& State, int Points) {
  const TPoint6DList poses = WavyPath(Points);
  std::vector<double> wanted = ChordParameters(poses);
  std::vector<double> points;
  for (const TPoint6D& P : poses) {
    for (const double item : P.ToArray()) points.push_back(item);
  }
  std::vector<int> kinds(static_cast<std::size_t>(Points), 1);
  for (auto _ : State) {
    SISLCurve* curve = nullptr;
    double* parameters = nullptr;
    double end = 0.0;
    int count = 0;
    int status = 0;
    s1357(points.data(), Points, 6, kinds.data(), wanted.data(), 0, 0, 1, 4, 0.0, &end, &curve, &parameters, &count,
          &status);
    if (status < 0) throw std::logic_error("s1357 failed");
    freeCurve(curve);
    std::free(parameters);
  }
  State.SetItemsProcessed(State.iterations() * Points);
}

void RegisterSisl() {
  for (const int spans : kSpanCounts) {
    Register(kEvaluateAtRandom, spans, "SISL", SislEvalRandom);
    Register(kEvaluateRising, spans, "SISL", SislEvalRising);
    Register(kDerivatives, spans, "SISL", SislDerivatives);
    Register(kTable, spans, "SISL evaluation", SislEvalTable);
  }
  for (const int points : kFitCounts) Register(kFit, points, "SISL", SislFit);
}
#else
void RegisterSisl() {}
#endif

#ifdef ZORBASE_BENCH_EIGEN
// ---------------------------------------------------------------------------------------------- Eigen

using TEigenCurve = Eigen::Spline<double, 6, 3>;

TEigenCurve EigenCurveOf(const TNurbs6D& Curve) {
  TEigenCurve::KnotVectorType knots(Curve.BasicFun().uCount());
  for (int i = 0; i < knots.size(); ++i) knots[i] = Curve.BasicFun().Items(i);
  TEigenCurve::ControlPointVectorType points(6, Curve.pCount());
  for (int i = 0; i < points.cols(); ++i) {
    for (int row = 0; row < 6; ++row) points(row, i) = Curve.pointArr()[static_cast<std::size_t>(i)].Items(row);
  }
  TEigenCurve curve(knots, points);
  for (int i = 0; i < 10; ++i) RequireNear(Curve.EvalPoint(i / 10.0), TEigenCurve::PointType(curve(i / 10.0)).data());
  return curve;
}

void EigenEval(benchmark::State& State, int Spans) {
  const TEigenCurve curve = EigenCurveOf(CurveSubject(Spans).Curve);
  WithEach(State, RandomParameters(), [&](double u) { return TEigenCurve::PointType(curve(u)); });
}

void EigenDerivatives(benchmark::State& State, int Spans) {
  const TEigenCurve curve = EigenCurveOf(CurveSubject(Spans).Curve);
  WithEach(State, RandomParameters(), [&](double u) { return Eigen::Array<double, 6, 4>(curve.derivatives<3>(u)); });
}

void RegisterEigen() {
  for (const int spans : kSpanCounts) {
    Register(kEvaluateAtRandom, spans, "Eigen", EigenEval);
    Register(kDerivatives, spans, "Eigen", EigenDerivatives);
  }
}
#else
void RegisterEigen() {}
#endif

#ifdef ZORBASE_BENCH_GSL
// ---------------------------------------------------------------------------------------------- GSL

class TGslSpline {
 public:
  TGslSpline(const std::vector<double>& X, const std::vector<double>& Y)
      : FSpline(gsl_spline_alloc(gsl_interp_cspline, X.size()), gsl_spline_free) {
    gsl_spline_init(FSpline.get(), X.data(), Y.data(), X.size());
  }
  double operator()(double X, gsl_interp_accel& Accelerator) const {
    return gsl_spline_eval(FSpline.get(), X, &Accelerator);
  }

 private:
  std::unique_ptr<gsl_spline, decltype(&gsl_spline_free)> FSpline;
};

std::vector<double> Column(const TPoint6DList& Poses, int Component) {
  std::vector<double> column;
  for (const TPoint6D& P : Poses) column.push_back(P.Items(Component));
  return column;
}

void GslEval(benchmark::State& State, int Spans, const std::vector<double>& Parameters) {
  const TCurveSubject& subject = CurveSubject(Spans);
  const auto knots = subject.Curve.BasicFun().uArr().subspan(3, static_cast<std::size_t>(Spans) + 1);
  std::vector<TGslSpline> splines;
  for (int i = 0; i < 6; ++i)
    splines.emplace_back(std::vector<double>(knots.begin(), knots.end()), Column(subject.Poses, i));
  gsl_interp_accel accelerator{};
  WithEach(State, Parameters, [&](double u) {
    std::array<double, 6> point;
    for (std::size_t i = 0; i < 6; ++i) point[i] = splines[i](u, accelerator);
    return point;
  });
}

void GslEvalRandom(benchmark::State& State, int Spans) { GslEval(State, Spans, RandomParameters()); }
void GslEvalRising(benchmark::State& State, int Spans) { GslEval(State, Spans, RisingParameters()); }

void GslFit(benchmark::State& State, int Points) {
  const TPoint6DList poses = WavyPath(Points);
  const std::vector<double> parameters = ChordParameters(poses);
  std::array<std::vector<double>, 6> columns;
  for (int i = 0; i < 6; ++i) columns[static_cast<std::size_t>(i)] = Column(poses, i);
  for (auto _ : State) {
    for (const std::vector<double>& column : columns) benchmark::DoNotOptimize(TGslSpline(parameters, column));
  }
  State.SetItemsProcessed(State.iterations() * Points);
}

// A spline through the rows of the arc-length table, one way or the other.
template <double TSULine::*Key, double TSULine::*Value>
void GslLookUp(benchmark::State& State, int Spans) {
  std::vector<double> keys;
  std::vector<double> values;
  for (const TSULine& row : CurveSubject(Spans).Curve.SUTable()) {
    if (!keys.empty() && !(keys.back() < row.*Key)) continue;
    keys.push_back(row.*Key);
    values.push_back(row.*Value);
  }
  const TGslSpline spline(keys, values);
  gsl_interp_accel accelerator{};
  std::vector<double> numbers = RandomParameters();
  for (double& number : numbers) number *= keys.back();
  WithEach(State, numbers, [&](double X) { return spline(X, accelerator); });
}

void RegisterGsl() {
  for (const int spans : kSpanCounts) {
    Register(kEvaluateAtRandom, spans, "GSL x6", GslEvalRandom);
    Register(kEvaluateRising, spans, "GSL x6", GslEvalRising);
    Register(kParamOfLength, spans, "GSL", GslLookUp<&TSULine::S, &TSULine::u>);
    Register(kLengthOfParam, spans, "GSL", GslLookUp<&TSULine::u, &TSULine::S>);
  }
  for (const int points : kFitCounts) Register(kFit, points, "GSL x6", GslFit);
}
#else
void RegisterGsl() {}
#endif

[[maybe_unused]] const bool kIsRegistered = [] {
  RegisterSisl();
  RegisterEigen();
  RegisterGsl();
  return true;
}();

}  // namespace
}  // namespace ZORBase::Bench
