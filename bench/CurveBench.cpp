// The curve: fitting, evaluating, measuring, and walking by arc length.
#include <ZORBase/ZORBase.h>
#include <benchmark/benchmark.h>

#include <span>
#include <stdexcept>
#include <vector>

#include "PlainCurve.h"

namespace ZORBase::Bench {
namespace {

constexpr int kSteps = 10'000;

// The measured path, and the curve through it both ways. The two must agree, or their times are no comparison.
struct TSubject {
  TPoint6DList Poses;
  std::vector<TPlainPose> PlainPoses;
  TNurbs6D Curve;
  TPlainCurve Plain;

  TSubject() {
    Poses.LoadFromFile(ZORBASE_SAMPLE_DATA "/swept-plane.poses.txt");
    for (const TPoint6D& pose : Poses) PlainPoses.push_back(pose.ToArray());
    Curve.CreateCross(&Poses, mChord);
    Plain = PlainFit(PlainPoses, TNurbs6D::kSampleSpacing);
    for (int i = 0; i <= 100; ++i) {
      const double u = i / 100.0;
      if (PlainDistance(Curve.EvalPoint(u).ToArray(), PlainEval(Plain, u)) > 1e-6) {
        throw std::logic_error("the plain curve is another one");
      }
    }
  }
};

const TSubject& Subject() {
  static const TSubject subject;
  return subject;
}

void FitLibrary(benchmark::State& State) {
  const TSubject& subject = Subject();
  for (auto _ : State) {
    TNurbs6D curve;
    curve.CreateCross(&subject.Poses, mChord);
    benchmark::DoNotOptimize(curve.CurveLength());
  }
}

void FitPlain(benchmark::State& State) {
  const TSubject& subject = Subject();
  for (auto _ : State) {
    const TPlainCurve curve = PlainFit(subject.PlainPoses, TNurbs6D::kSampleSpacing);
    benchmark::DoNotOptimize(curve.Table.back().S);
  }
}

void TableLibrary(benchmark::State& State) {
  TNurbs6D curve;
  curve.Assign(Subject().Curve);
  for (auto _ : State) {
    curve.InitLengthByUArray();
    benchmark::DoNotOptimize(curve.CurveLength());
  }
}

void TablePlain(benchmark::State& State) {
  TPlainCurve curve = Subject().Plain;
  for (auto _ : State) {
    PlainMeasure(curve, TNurbs6D::kSampleSpacing);
    benchmark::DoNotOptimize(curve.Table.back().S);
  }
}

void EvalLibrary(benchmark::State& State) {
  const TSubject& subject = Subject();
  for (auto _ : State) {
    for (int i = 0; i < kSteps; ++i) benchmark::DoNotOptimize(subject.Curve.EvalPoint(i / static_cast<double>(kSteps)));
  }
  State.SetItemsProcessed(State.iterations() * kSteps);
}

void EvalPlain(benchmark::State& State) {
  const TSubject& subject = Subject();
  for (auto _ : State) {
    for (int i = 0; i < kSteps; ++i)
      benchmark::DoNotOptimize(PlainEval(subject.Plain, i / static_cast<double>(kSteps)));
  }
  State.SetItemsProcessed(State.iterations() * kSteps);
}

void WalkWithCursor(benchmark::State& State) {
  const TNurbs6D& curve = Subject().Curve;
  const double step = curve.CurveLength() / kSteps;
  for (auto _ : State) {
    TSUTable::TCursor cursor;
    for (int i = 0; i < kSteps; ++i) benchmark::DoNotOptimize(curve.ParamOfLength(i * step, cursor));
  }
  State.SetItemsProcessed(State.iterations() * kSteps);
}

// Here the plain version is the library's own look-up, which searches the whole table each time.
void WalkBySearching(benchmark::State& State) {
  const TNurbs6D& curve = Subject().Curve;
  const double step = curve.CurveLength() / kSteps;
  for (auto _ : State) {
    for (int i = 0; i < kSteps; ++i) benchmark::DoNotOptimize(curve.ParamOfLength(i * step));
  }
  State.SetItemsProcessed(State.iterations() * kSteps);
}

BENCHMARK(FitPlain)->Name("fit/plain")->Unit(benchmark::kMillisecond);
BENCHMARK(FitLibrary)->Name("fit/CreateCross")->Unit(benchmark::kMillisecond);
BENCHMARK(TablePlain)->Name("table/plain")->Unit(benchmark::kMillisecond);
BENCHMARK(TableLibrary)->Name("table/InitLengthByUArray")->Unit(benchmark::kMillisecond);
BENCHMARK(EvalPlain)->Name("evaluate/plain")->Unit(benchmark::kMicrosecond);
BENCHMARK(EvalLibrary)->Name("evaluate/EvalPoint")->Unit(benchmark::kMicrosecond);
BENCHMARK(WalkBySearching)->Name("walk/plain")->Unit(benchmark::kMicrosecond);
BENCHMARK(WalkWithCursor)->Name("walk/ParamOfLength with a cursor")->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace ZORBase::Bench
