// The smooth curve in all 44 coordinates: laid and delivered in a time that grows with the number of its points and no faster.
#include <ZORBase/ZORGeometry/CADTypesXD/TTWoDerivCurveXD.h>
#include <benchmark/benchmark.h>

#include <cmath>
#include <stdexcept>

#include "ZORGeometry/CADTypesXD/PlainCurveXD.h"

namespace ZORBase::Bench {
namespace {

// In each coordinate a wave of its own.
TList<TPointXD> Winding(int Count) {
  TList<TPointXD> points;
  points.Reserve(static_cast<std::size_t>(Count));
  for (int k = 0; k < Count; ++k) {
    TPointXD point = TPointXD::Create(TPointXD::kMaxDimension);
    const double place = k + 0.3 * std::sin(0.2 * k);
    for (std::size_t i = 0; i < point.Items.size(); ++i) {
      const auto index = static_cast<double>(i);
      point.Items[i] = 4 * std::sin(index + place * (0.1 + 0.003 * index));
    }
    points.Add(point);
  }
  return points;
}

double LengthOf(const TList<TPointXD>& Points) {
  double length = 0.0;
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&length](const TCubicBezXD& Segment) { length += Segment.FLength; });
  curve.CreateCorss(Points);
  return length;
}

double PlainLengthOf(const TList<TPointXD>& Points) {
  double length = 0.0;
  for (const Test::TPlainBezXD& segment : Test::TPlainCurveXD(Points).Segments()) length += segment.Length;
  return length;
}

void Deliver(benchmark::State& State) {
  const TList<TPointXD> points = Winding(static_cast<int>(State.range(0)));
  for (auto _ : State) benchmark::DoNotOptimize(LengthOf(points));
  State.SetComplexityN(State.range(0));
  State.SetItemsProcessed(State.iterations() * State.range(0));
}

constexpr int kComparedPoints = 1000;

void DeliverCompared(benchmark::State& State) {
  const TList<TPointXD> points = Winding(kComparedPoints);
  for (auto _ : State) benchmark::DoNotOptimize(LengthOf(points));
}

void DeliverPlain(benchmark::State& State) {
  const TList<TPointXD> points = Winding(kComparedPoints);
  if (LengthOf(points) != PlainLengthOf(points)) throw std::logic_error("the plain curve is another one");
  for (auto _ : State) benchmark::DoNotOptimize(PlainLengthOf(points));
}

BENCHMARK(DeliverPlain)->Name("TTWoDerivCurveXD, one path/plain")->Unit(benchmark::kMillisecond);
BENCHMARK(DeliverCompared)->Name("TTWoDerivCurveXD, one path/library")->Unit(benchmark::kMillisecond);
BENCHMARK(Deliver)
    ->Name("TTWoDerivCurveXD, 44 coordinates, points:/library")
    ->RangeMultiplier(10)
    ->Range(1'000, 100'000)
    ->Complexity(benchmark::oN)
    ->Unit(benchmark::kMillisecond);

}  // namespace
}  // namespace ZORBase::Bench
