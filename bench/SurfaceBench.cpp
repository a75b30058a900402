// The biharmonic surface: weights and heights by the library, by the plain algorithm, and the weights by Eigen's fastest
// decomposition of the same kind.
#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>
#include <benchmark/benchmark.h>
#include <tests/ZORBaseAlg/uSVD/PlainSvd.h>
#include <tests/ZORBaseAlg/uSurfaceInterpolater/PlainV4.h>
#ifdef ZORBASE_BENCH_EIGEN
#include <Eigen/Dense>
#endif

#include <cmath>
#include <cstdint>
#include <map>
#include <random>
#include <span>
#include <string>
#include <vector>

#include "PythonPeer.h"

namespace {

using ZORBase::TDoubleList;
using ZORBase::TList;
using ZORBase::TPoint2D;
using ZORBase::TPoint3D;
using ZORBase::TV4Interpolator;

constexpr double kSide = 10.0;
constexpr int kPlaces = 256;

// Heights at random places of a square.
TList<TPoint3D> Samples(int Count) {
  std::mt19937 random(5);
  const auto coordinate = [&] { return kSide * static_cast<double>(random()) / 4294967296.0; };
  TList<TPoint3D> samples;
  for (int i = 0; i < Count; ++i) {
    const double x = coordinate();
    const double y = coordinate();
    samples.Add(TPoint3D::Create(x, y, std::sin(x) * std::cos(y)));
  }
  return samples;
}

double LibraryLog(double d) { return std::log(d); }

// ------------------------------------------------------------------------------------------------ weights

void WeightsLibrary(benchmark::State& State) {
  const TList<TPoint3D> samples = Samples(static_cast<int>(State.range(0)));
  for (auto _ : State) {
    TV4Interpolator surface;
    surface.AddPointList(samples);
    surface.CalcWeights();
    benchmark::DoNotOptimize(surface.Weights().data());
  }
}

void WeightsPlain(benchmark::State& State) {
  const TList<TPoint3D> samples = Samples(static_cast<int>(State.range(0)));
  std::vector<double> heights;
  for (const TPoint3D& sample : samples) heights.push_back(sample.Z);
  for (auto _ : State) {
    ZORBase::Test::TPlainSvd svd(ZORBase::Test::PlainMatrix(samples, LibraryLog), samples.Count(), samples.Count());
    benchmark::DoNotOptimize(svd.Solve(heights));
  }
}

#ifdef ZORBASE_BENCH_EIGEN
void WeightsEigen(benchmark::State& State) {
  const TList<TPoint3D> samples = Samples(static_cast<int>(State.range(0)));
  const Eigen::Index count = samples.Count();
  Eigen::VectorXd heights(count);
  for (int i = 0; i < samples.Count(); ++i) heights(i) = samples[i].Z;
  for (auto _ : State) {
    const TDoubleList matrix = ZORBase::Test::PlainMatrix(samples, LibraryLog);
    const Eigen::Map<const Eigen::MatrixXd> view(matrix.data(), count, count);  // symmetric: rows are columns
    const Eigen::BDCSVD<Eigen::MatrixXd> svd(view, Eigen::ComputeThinU | Eigen::ComputeThinV);
    benchmark::DoNotOptimize(Eigen::VectorXd(svd.solve(heights)));
  }
}
#endif

// ------------------------------------------------------------------------------------------------ the matrix

void MatrixPlain(benchmark::State& State) {
  const TList<TPoint3D> samples = Samples(static_cast<int>(State.range(0)));
  for (auto _ : State) benchmark::DoNotOptimize(ZORBase::Test::PlainMatrix(samples, LibraryLog));
}

// ------------------------------------------------------------------------------------------------ heights

std::vector<TPoint2D> Places() {
  std::vector<TPoint2D> places;
  for (const TPoint3D& place : Samples(2 * kPlaces)) places.push_back(TPoint2D::Create(place.Y, place.X));
  places.resize(kPlaces);
  return places;
}

// Each surface is laid once: that takes longer than all heights that are timed.
const TV4Interpolator& Surface(int Count) {
  static std::map<int, TV4Interpolator> surfaces;
  const auto [place, isNew] = surfaces.try_emplace(Count);
  if (isNew) {
    place->second.AddPointList(Samples(Count));
    place->second.CalcWeights();
  }
  return place->second;
}

template <class TWork>
void Heights(benchmark::State& State, TWork&& Work) {
  const TV4Interpolator& surface = Surface(static_cast<int>(State.range(0)));
  const std::vector<TPoint2D> places = Places();
  std::vector<double> heights(places.size());
  for (auto _ : State) {
    Work(surface, places, heights);
    benchmark::ClobberMemory();
  }
  State.SetItemsProcessed(State.iterations() * kPlaces);
}

void HeightsOneByOne(benchmark::State& State) {
  Heights(State, [](const auto& Spline, const auto& At, auto& Z) {
    for (std::size_t i = 0; i < At.size(); ++i) Z[i] = Spline.CalcZ(At[i].X, At[i].Y);
  });
}

void HeightsOfASpan(benchmark::State& State) {
  Heights(State, [](const auto& Spline, const auto& At, auto& Z) { Spline.CalcZ(At, Z); });
}

void HeightsPlain(benchmark::State& State) {
  Heights(State, [](const auto& Spline, const auto& At, auto& Z) {
    for (std::size_t i = 0; i < At.size(); ++i) {
      Z[i] = ZORBase::Test::PlainZ(Spline.SrcPt(), Spline.Weights(), At[i].X, At[i].Y, LibraryLog);
    }
  });
}

BENCHMARK(WeightsPlain)->Name("V4 weights, samples:/plain")->Arg(100)->Arg(300)->Unit(benchmark::kMillisecond);
BENCHMARK(WeightsLibrary)
    ->Name("V4 weights, samples:/library")
    ->Arg(100)
    ->Arg(300)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);
#ifdef ZORBASE_BENCH_EIGEN
BENCHMARK(WeightsEigen)
    ->Name("V4 weights, samples:/Eigen")
    ->Arg(100)
    ->Arg(300)
    ->Arg(1000)
    ->Unit(benchmark::kMillisecond);
#endif
BENCHMARK(MatrixPlain)->Name("surface matrix/plain")->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(HeightsPlain)->Name("CalcZ, samples:/plain")->Arg(100)->Arg(1000);
BENCHMARK(HeightsOneByOne)->Name("CalcZ, samples:/library")->Arg(100)->Arg(1000);
BENCHMARK(HeightsOfASpan)->Name("CalcZ of a span, samples:/library")->Arg(100)->Arg(1000);

[[maybe_unused]] const bool kPeersAreRegistered = [] {
  for (const int samples : {100, 1000}) {
    ZORBase::Bench::RegisterPythonPeer("CalcZ, samples:/SciPy/" + std::to_string(samples), "surface_heights", samples);
  }
  return true;
}();

}  // namespace
