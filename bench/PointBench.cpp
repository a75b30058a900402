// Points, poses, transforms and quaternions, beside the same in Eigen and glm. Their arithmetic is plain double; a pose of the
// library forms each sum and product in extended precision.
#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>
#include <span>
#include <vector>

#ifdef ZORBASE_BENCH_EIGEN
#include <Eigen/Geometry>
#endif
#ifdef ZORBASE_BENCH_GLM
#include <glm/glm.hpp>
#include <glm/gtc/quaternion.hpp>
#endif

namespace ZORBase::Bench {
namespace {

// Few enough to stay in the second-level cache.
constexpr std::size_t kItems = 2048;

// Enough that no processor learns by heart which way their branches go.
constexpr std::size_t kManyItems = 65536;

double Number() {
  static std::mt19937_64 random(1);
  return std::uniform_real_distribution<double>(-1.0, 1.0)(random);
}

TQuaternion UnitQuaternion() {
  const TQuaternion q = TQuaternion::Create(Number(), Number(), Number(), Number());
  return q / q.NormMag();
}

// Results[i] = Work(As[i], Bs[i]), again and again; an item is one of them.
template <class TA, class TB, class TResult, class TWork>
void Pairwise(benchmark::State& State, const std::vector<TA>& As, const std::vector<TB>& Bs,
              std::vector<TResult>& Results, TWork&& Work) {
  for (auto _ : State) {
    for (std::size_t i = 0; i < As.size(); ++i) Results[i] = Work(As[i], Bs[i]);
    benchmark::DoNotOptimize(Results.data());
    benchmark::ClobberMemory();
  }
  State.SetItemsProcessed(State.iterations() * static_cast<std::int64_t>(As.size()));
}

template <class T, class TMake>
std::vector<T> Many(TMake&& Make, std::size_t Count = kItems) {
  std::vector<T> items;
  for (std::size_t i = 0; i < Count; ++i) items.push_back(Make());
  return items;
}

// ---------------------------------------------------------------------------------------------- poses

TPoint6D Pose() { return TPoint6D::Create(Number(), Number(), Number(), Number(), Number(), Number()); }

template <class TResult, class TWork>
void Poses(benchmark::State& State, TWork&& Work) {
  const auto p = Many<TPoint6D>(Pose);
  const auto q = Many<TPoint6D>(Pose);
  std::vector<TResult> results(kItems);
  Pairwise(State, p, q, results, Work);
}

void PoseSum(benchmark::State& State) {
  Poses<TPoint6D>(State, [](const TPoint6D& P, const TPoint6D& Q) { return P + Q; });
}
void PoseScale(benchmark::State& State) {
  Poses<TPoint6D>(State, [](const TPoint6D& P, const TPoint6D& Q) { return P * Q.X; });
}
void PoseDot(benchmark::State& State) {
  Poses<double>(State, [](const TPoint6D& P, const TPoint6D& Q) { return P.DotMul(Q); });
}

BENCHMARK(PoseSum)->Name("Sum of poses/library");
BENCHMARK(PoseScale)->Name("Multiple of a pose/library");
BENCHMARK(PoseDot)->Name("Dot product of poses/library");

#ifdef ZORBASE_BENCH_EIGEN
using TEigenPose = Eigen::Matrix<double, 6, 1>;

template <class TResult, class TWork>
void EigenPoses(benchmark::State& State, TWork&& Work) {
  const auto make = [] {
    const auto values = Pose().ToArray();
    return TEigenPose(values.data());
  };
  const auto p = Many<TEigenPose>(make);
  const auto q = Many<TEigenPose>(make);
  std::vector<TResult> results(kItems);
  Pairwise(State, p, q, results, Work);
}

void EigenPoseSum(benchmark::State& State) {
  EigenPoses<TEigenPose>(State, [](const TEigenPose& P, const TEigenPose& Q) { return TEigenPose(P + Q); });
}
void EigenPoseScale(benchmark::State& State) {
  EigenPoses<TEigenPose>(State, [](const TEigenPose& P, const TEigenPose& Q) { return TEigenPose(P * Q[0]); });
}
void EigenPoseDot(benchmark::State& State) {
  EigenPoses<double>(State, [](const TEigenPose& P, const TEigenPose& Q) { return P.dot(Q); });
}

BENCHMARK(EigenPoseSum)->Name("Sum of poses/Eigen");
BENCHMARK(EigenPoseScale)->Name("Multiple of a pose/Eigen");
BENCHMARK(EigenPoseDot)->Name("Dot product of poses/Eigen");
#endif

// ---------------------------------------------------------------------------------------------- transforms

const TMatrix4D& Transform() {
  static const TMatrix4D transform = [] {
    TMatrix4D m = TMatrix4D::Create(TPoint3D::Create(0.3, -0.5, 0.7), 0.4);
    m.SetTranslationPt(TPoint3D::Create(10.0, 20.0, -30.0));
    return m;
  }();
  return transform;
}

// Work(points, results), over and over.
template <class TPoint, class TMake, class TWork>
void Transforms(benchmark::State& State, TMake&& Make, TWork&& Work) {
  std::vector<TPoint> points(static_cast<std::size_t>(State.range(0)));
  for (TPoint& point : points) point = Make(Number(), Number(), Number());
  std::vector<TPoint> results(points.size());
  for (auto _ : State) {
    Work(points, results);
    benchmark::DoNotOptimize(results.data());
    benchmark::ClobberMemory();
  }
  State.SetItemsProcessed(State.iterations() * State.range(0));
  State.SetBytesProcessed(State.iterations() * State.range(0) * static_cast<std::int64_t>(sizeof(TPoint)));
}

void TransformLibrary(benchmark::State& State) {
  Transforms<TPoint3D>(State, &TPoint3D::Create,
                       [](const std::vector<TPoint3D>& Points, std::vector<TPoint3D>& Results) {
                         Transform().TransformPts(Points, Results);
                       });
}

void TransformPlain(benchmark::State& State) {
  Transforms<TPoint3D>(State, &TPoint3D::Create,
                       [](const std::vector<TPoint3D>& Points, std::vector<TPoint3D>& Results) {
                         for (std::size_t i = 0; i < Points.size(); ++i)
                           Results[i] = Transform().TransformPt(Points[i]);
                       });
}

void TransformMemcpy(benchmark::State& State) {
  Transforms<TPoint3D>(
      State, &TPoint3D::Create, [](const std::vector<TPoint3D>& Points, std::vector<TPoint3D>& Results) {
        std::memcpy(static_cast<void*>(Results.data()), Points.data(), Points.size() * sizeof(TPoint3D));
      });
}

BENCHMARK(TransformLibrary)->Name("Points transformed:/library")->Arg(10'000)->Arg(1'000'000);
BENCHMARK(TransformPlain)->Name("Points transformed:/plain")->Arg(10'000)->Arg(1'000'000);
BENCHMARK(TransformMemcpy)->Name("Points transformed:/memcpy")->Arg(10'000)->Arg(1'000'000);

#ifdef ZORBASE_BENCH_EIGEN
void TransformEigen(benchmark::State& State) {
  const auto& m = Transform().fm;
  Eigen::Affine3d transform;
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 4; ++j) transform(i, j) = m[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
  }
  transform.makeAffine();
  const auto make = [](double X, double Y, double Z) { return Eigen::Vector3d(X, Y, Z); };
  Transforms<Eigen::Vector3d>(State, make,
                              [&](const std::vector<Eigen::Vector3d>& Points, std::vector<Eigen::Vector3d>& Results) {
                                for (std::size_t i = 0; i < Points.size(); ++i) Results[i] = transform * Points[i];
                              });
}
BENCHMARK(TransformEigen)->Name("Points transformed:/Eigen")->Arg(10'000)->Arg(1'000'000);
#endif

#ifdef ZORBASE_BENCH_GLM
void TransformGlm(benchmark::State& State) {
  const auto& m = Transform().fm;
  glm::dmat4 transform(1.0);
  for (int i = 0; i < 3; ++i) {
    for (int j = 0; j < 4; ++j) transform[j][i] = m[static_cast<std::size_t>(i)][static_cast<std::size_t>(j)];
  }
  const auto make = [](double X, double Y, double Z) { return glm::dvec3(X, Y, Z); };
  Transforms<glm::dvec3>(State, make, [&](const std::vector<glm::dvec3>& Points, std::vector<glm::dvec3>& Results) {
    for (std::size_t i = 0; i < Points.size(); ++i) Results[i] = glm::dvec3(transform * glm::dvec4(Points[i], 1.0));
  });
}
BENCHMARK(TransformGlm)->Name("Points transformed:/glm")->Arg(10'000)->Arg(1'000'000);
#endif

// ---------------------------------------------------------------------------------------------- quaternions

// The angle between neighbours is that of a path, well above none.
void SLerp(benchmark::State& State) {
  const auto from = Many<TQuaternion>(UnitQuaternion, kManyItems);
  const auto to = Many<TQuaternion>(UnitQuaternion, kManyItems);
  std::vector<TQuaternion> results(kManyItems);
  Pairwise(State, from, to, results,
           [](const TQuaternion& A, const TQuaternion& B) { return SLerpQuaternion(0.3, A, B); });
}

void ToMatrix(benchmark::State& State) {
  const auto q = Many<TQuaternion>(UnitQuaternion);
  std::vector<TMatrix4D> results(kItems);
  Pairwise(State, q, q, results, [](const TQuaternion& A, const TQuaternion&) { return A.ToMatrix4D(); });
}

void FromMatrix(benchmark::State& State) {
  const auto m = Many<TMatrix4D>([] { return UnitQuaternion().ToMatrix4D(); });
  std::vector<TQuaternion> results(kItems);
  Pairwise(State, m, m, results, [](const TMatrix4D& M, const TMatrix4D&) {
    TQuaternion q;
    q.CreateFromMatrix4D(M);
    return q;
  });
}

BENCHMARK(SLerp)->Name("SLerpQuaternion/library");
BENCHMARK(ToMatrix)->Name("Quaternion to matrix/library");
BENCHMARK(FromMatrix)->Name("Matrix to quaternion/library");

#ifdef ZORBASE_BENCH_EIGEN
Eigen::Quaterniond EigenQuaternion() {
  const TQuaternion q = UnitQuaternion();
  return {q.a, q.b, q.c, q.d};
}

void SLerpEigen(benchmark::State& State) {
  const auto from = Many<Eigen::Quaterniond>(EigenQuaternion, kManyItems);
  const auto to = Many<Eigen::Quaterniond>(EigenQuaternion, kManyItems);
  std::vector<Eigen::Quaterniond> results(kManyItems);
  Pairwise(State, from, to, results,
           [](const Eigen::Quaterniond& A, const Eigen::Quaterniond& B) { return A.slerp(0.3, B); });
}

void ToMatrixEigen(benchmark::State& State) {
  const auto q = Many<Eigen::Quaterniond>(EigenQuaternion);
  std::vector<Eigen::Matrix3d> results(kItems);
  Pairwise(State, q, q, results,
           [](const Eigen::Quaterniond& A, const Eigen::Quaterniond&) { return A.toRotationMatrix(); });
}

void FromMatrixEigen(benchmark::State& State) {
  const auto m = Many<Eigen::Matrix3d>([] { return EigenQuaternion().toRotationMatrix(); });
  std::vector<Eigen::Quaterniond> results(kItems);
  Pairwise(State, m, m, results,
           [](const Eigen::Matrix3d& M, const Eigen::Matrix3d&) { return Eigen::Quaterniond(M); });
}

BENCHMARK(SLerpEigen)->Name("SLerpQuaternion/Eigen");
BENCHMARK(ToMatrixEigen)->Name("Quaternion to matrix/Eigen");
BENCHMARK(FromMatrixEigen)->Name("Matrix to quaternion/Eigen");
#endif

#ifdef ZORBASE_BENCH_GLM
glm::dquat GlmQuaternion() {
  const TQuaternion q = UnitQuaternion();
  return {q.a, q.b, q.c, q.d};
}

void SLerpGlm(benchmark::State& State) {
  const auto from = Many<glm::dquat>(GlmQuaternion, kManyItems);
  const auto to = Many<glm::dquat>(GlmQuaternion, kManyItems);
  std::vector<glm::dquat> results(kManyItems);
  Pairwise(State, from, to, results, [](const glm::dquat& A, const glm::dquat& B) { return glm::slerp(A, B, 0.3); });
}

void ToMatrixGlm(benchmark::State& State) {
  const auto q = Many<glm::dquat>(GlmQuaternion);
  std::vector<glm::dmat3> results(kItems);
  Pairwise(State, q, q, results, [](const glm::dquat& A, const glm::dquat&) { return glm::mat3_cast(A); });
}

void FromMatrixGlm(benchmark::State& State) {
  const auto m = Many<glm::dmat3>([] { return glm::mat3_cast(GlmQuaternion()); });
  std::vector<glm::dquat> results(kItems);
  Pairwise(State, m, m, results, [](const glm::dmat3& M, const glm::dmat3&) { return glm::quat_cast(M); });
}

BENCHMARK(SLerpGlm)->Name("SLerpQuaternion/glm");
BENCHMARK(ToMatrixGlm)->Name("Quaternion to matrix/glm");
BENCHMARK(FromMatrixGlm)->Name("Matrix to quaternion/glm");
#endif

}  // namespace
}  // namespace ZORBase::Bench
