// The length of a Bezier segment, and the parameter at a length: the quadrature of the library beside that of GSL, which is
// given the same formula of the speed.
#include <ZORBase/ZORGeometry/CADTypesXD.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <random>
#include <stdexcept>
#include <vector>

#ifdef ZORBASE_BENCH_GSL
#include <gsl/gsl_integration.h>
#endif

#include "ZORGeometry/CADTypesXD/PlainCurveXD.h"

namespace ZORBase::Bench {
namespace {

using Test::TPlainBezXD;

constexpr std::size_t kSegments = 64;
constexpr int kGaussPoints = 14;

// Gently bent segments about 3 long: no two are the same.
std::vector<TCubicBezXD> Segments(std::int64_t Dimension) {
  std::mt19937_64 random(1);
  std::uniform_real_distribution<double> noise(-0.2, 0.2);
  const auto point = [&](double Place) {
    TPointXD p = TPointXD::Create(static_cast<int>(Dimension));
    for (double& coordinate : p.Coordinates()) coordinate = noise(random);
    p.Items[0] += Place;
    return p;
  };
  std::vector<TCubicBezXD> segments;
  for (std::size_t i = 0; i < kSegments; ++i) {
    const TPointXD p0 = point(0);
    const TPointXD p1 = point(1);
    const TPointXD p2 = point(2);
    segments.push_back(TCubicBezXD::Create(p0, p1, p2, point(3)));
  }
  return segments;
}

std::vector<TPlainBezXD> PlainSegments(std::int64_t Dimension) {
  std::vector<TPlainBezXD> plain;
  for (const TCubicBezXD& s : Segments(Dimension)) plain.push_back(TPlainBezXD::Create(s.FP0, s.FP1, s.FP2, s.FP3));
  return plain;
}

// Work gives a number for a segment.
template <class TSegment, class TWork>
void ForEach(benchmark::State& State, const std::vector<TSegment>& Segments, TWork&& Work) {
  for (auto _ : State) {
    for (const TSegment& segment : Segments) benchmark::DoNotOptimize(Work(segment));
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(Segments.size()));
}

void LengthLibrary(benchmark::State& State) {
  ForEach(State, Segments(State.range(0)), [](const TCubicBezXD& S) { return S.LengthOfParam(0.0, 1.0); });
}

void LengthPlain(benchmark::State& State) {
  ForEach(State, PlainSegments(State.range(0)), [](const TPlainBezXD& S) { return S.LengthOfParam(0.0, 1.0); });
}

void ParamLibrary(benchmark::State& State) {
  ForEach(State, Segments(State.range(0)), [](const TCubicBezXD& S) { return S.ParamOfLength(0.37 * S.FLength); });
}

void ParamPlain(benchmark::State& State) {
  ForEach(State, PlainSegments(State.range(0)), [](const TPlainBezXD& S) { return S.ParamOfLength(0.37 * S.Length); });
}

#ifdef ZORBASE_BENCH_GSL
void LengthGsl(benchmark::State& State) {
  const auto segments = PlainSegments(State.range(0));
  gsl_integration_glfixed_table* const rule = gsl_integration_glfixed_table_alloc(kGaussPoints);
  const auto lengthOf = [rule](const TPlainBezXD& S) {
    const auto speed = [](double t, void* Segment) {
      return static_cast<const TPlainBezXD*>(Segment)->GaussLengthFunc(t);
    };
    const gsl_function function{speed, const_cast<TPlainBezXD*>(&S)};
    return gsl_integration_glfixed(&function, 0.0, 1.0, rule);
  };
  if (std::fabs(lengthOf(segments[0]) - segments[0].Length) > 1e-12) throw std::logic_error("GSL has another length");
  ForEach(State, segments, lengthOf);
  gsl_integration_glfixed_table_free(rule);
}
BENCHMARK(LengthGsl)->Name("Bezier length, dimension:/GSL")->Arg(3)->Arg(44);
#endif

BENCHMARK(LengthLibrary)->Name("Bezier length, dimension:/library")->Arg(3)->Arg(44);
BENCHMARK(LengthPlain)->Name("Bezier length, dimension:/plain")->Arg(3)->Arg(44);
BENCHMARK(ParamLibrary)->Name("Bezier ParamOfLength, dimension:/library")->Arg(3)->Arg(44);
BENCHMARK(ParamPlain)->Name("Bezier ParamOfLength, dimension:/plain")->Arg(3)->Arg(44);

}  // namespace
}  // namespace ZORBase::Bench
