// Least squares, plane fits and decompositions of noise: the library beside the plain transcription and beside the peers that
// are installed, each on one thread. Every benchmark goes through the same few matrices, for the number of iterations depends on
// the matrix.
#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <benchmark/benchmark.h>

#include <array>
#include <numeric>
#include <string>
#include <utility>
#include <vector>

#include "../tests/ZORBaseAlg/uSVD/PlainSvd.h"
#include "../tests/ZORBaseAlg/uSVD/SvdMatrices.h"

#if defined(ZORBASE_BENCH_EIGEN)
#include <Eigen/Dense>
#endif
#if defined(ZORBASE_BENCH_OPENBLAS)
#include <lapacke.h>
extern "C" void openblas_set_num_threads(int);  // its header and GSL's do not go together
#endif
#if defined(ZORBASE_BENCH_GSL)
#include <gsl/gsl_linalg.h>
#endif

namespace ZORBase::Bench {
namespace {

using Test::TMatrixCase;

// A system of equations in the forms that its solvers want.
struct TSystem {
  TMatrixCase Rows;
  std::vector<double> Columns;  // the same matrix column by column
  std::vector<double> Right;
  TDoubleList AList;
  TDoubleList bList;
};

std::vector<TSystem> Systems(int M, int N) {
  const int count = M * N <= 10'000 ? 16 : 1;
  std::vector<TSystem> systems;
  for (int s = 0; s < count; ++s) {
    TSystem system{Test::NoiseMatrix(M, N, static_cast<unsigned>(s)), {}, Test::NoiseMatrix(M, 1, 99).Items, {}, {}};
    const auto rows = static_cast<std::size_t>(M);
    const auto columns = static_cast<std::size_t>(N);
    system.Columns.resize(rows * columns);
    for (std::size_t i = 0; i < rows; ++i) {
      for (std::size_t j = 0; j < columns; ++j) system.Columns[j * rows + i] = system.Rows.Items[i * columns + j];
    }
    system.AList = TDoubleList(std::span<const double>(system.Rows.Items));
    system.bList = TDoubleList(std::span<const double>(system.Right));
    systems.push_back(std::move(system));
  }
  return systems;
}

template <class TWork>
void Run(benchmark::State& State, int M, int N, TWork&& Work) {
  const std::vector<TSystem> systems = Systems(M, N);
  std::size_t next = 0;
  for (auto _ : State) {
    Work(systems[next]);
    next = (next + 1) % systems.size();
    benchmark::ClobberMemory();
  }
}

// ---------------------------------------------------------------------------------------------- least squares

void SolveLibrary(benchmark::State& State, int M, int N) {
  TDoubleList x;
  Run(State, M, N, [&](const TSystem& System) { MatrixDivUsingSvd(&System.AList, &System.bList, M, N, &x, true); });
}

void SolvePlain(benchmark::State& State, int M, int N) {
  Run(State, M, N, [&](const TSystem& System) {
    Test::TPlainSvd svd(System.Rows.Items, M, N);
    benchmark::DoNotOptimize(svd.Solve(System.Right));
  });
}

#if defined(ZORBASE_BENCH_EIGEN)
template <class TDecomposition>
void SolveEigen(benchmark::State& State, int M, int N) {
  using TMatrix = typename TDecomposition::MatrixType;
  Run(State, M, N, [&](const TSystem& System) {
    const TMatrix a = Eigen::Map<const Eigen::MatrixXd>(System.Columns.data(), M, N);
    const TDecomposition svd(a, TMatrix::RowsAtCompileTime == Eigen::Dynamic
                                    ? Eigen::ComputeThinU | Eigen::ComputeThinV
                                    : Eigen::ComputeFullU | Eigen::ComputeFullV);
    const Eigen::VectorXd x = svd.solve(Eigen::Map<const Eigen::VectorXd>(System.Right.data(), M));
    benchmark::DoNotOptimize(x.data());
  });
}
#endif

#if defined(ZORBASE_BENCH_OPENBLAS)
// The same family of algorithm, and then x = V diag(1 / w) U' b.
void SolveLapack(benchmark::State& State, int M, int N) {
  openblas_set_num_threads(1);
  const auto rows = static_cast<std::size_t>(M);
  const auto columns = static_cast<std::size_t>(N);
  std::vector<double> u(rows * columns), w(columns), vt(columns * columns), t(columns), x(columns);
  double size = 0.0;
  LAPACKE_dgesvd_work(LAPACK_COL_MAJOR, 'S', 'S', M, N, u.data(), M, w.data(), u.data(), M, vt.data(), N, &size, -1);
  std::vector<double> work(static_cast<std::size_t>(size));
  Run(State, M, N, [&](const TSystem& System) {
    std::vector<double> a = System.Columns;
    LAPACKE_dgesvd_work(LAPACK_COL_MAJOR, 'S', 'S', M, N, a.data(), M, w.data(), u.data(), M, vt.data(), N, work.data(),
                        static_cast<int>(work.size()));
    for (std::size_t j = 0; j < columns; ++j) {
      t[j] = std::inner_product(System.Right.begin(), System.Right.end(), &u[j * rows], 0.0) / w[j];
    }
    for (std::size_t j = 0; j < columns; ++j) x[j] = std::inner_product(t.begin(), t.end(), &vt[j * columns], 0.0);
    benchmark::DoNotOptimize(x.data());
  });
}
#endif

#if defined(ZORBASE_BENCH_GSL)
void SolveGsl(benchmark::State& State, int M, int N) {
  const auto rows = static_cast<std::size_t>(M);
  const auto columns = static_cast<std::size_t>(N);
  gsl_matrix* const a = gsl_matrix_alloc(rows, columns);
  gsl_matrix* const v = gsl_matrix_alloc(columns, columns);
  gsl_vector* const w = gsl_vector_alloc(columns);
  gsl_vector* const work = gsl_vector_alloc(columns);
  gsl_vector* const x = gsl_vector_alloc(columns);
  Run(State, M, N, [&](const TSystem& System) {
    const auto from = gsl_matrix_const_view_array(System.Rows.Items.data(), rows, columns);
    const auto right = gsl_vector_const_view_array(System.Right.data(), rows);
    gsl_matrix_memcpy(a, &from.matrix);
    gsl_linalg_SV_decomp(a, v, w, work);
    gsl_linalg_SV_solve(a, v, w, &right.vector, x);
  });
  gsl_vector_free(x);
  gsl_vector_free(work);
  gsl_vector_free(w);
  gsl_matrix_free(v);
  gsl_matrix_free(a);
}
#endif

// ---------------------------------------------------------------------------------------------- the plane of points

constexpr int kPoints = 10'000;

void PlaneLibrary(benchmark::State& State) {
  double a = 0, b = 0, c = 0, d = 0, ratio = 0;
  Run(State, kPoints, 3, [&](const TSystem& System) { FitPlaneUsingSvd(&System.AList, a, b, c, d, ratio); });
}

std::array<double, 3> Centroid(const std::vector<double>& Points) {
  std::array<double, 3> sum{};
  for (std::size_t i = 0; i < Points.size(); i += 3) {
    for (std::size_t j = 0; j < 3; ++j) sum[j] += Points[i + j];
  }
  for (double& value : sum) value /= kPoints;
  return sum;
}

void PlanePlain(benchmark::State& State) {
  Run(State, kPoints, 3, [&](const TSystem& System) {
    const std::array<double, 3> centroid = Centroid(System.Rows.Items);
    std::vector<double> a = System.Rows.Items;
    for (std::size_t i = 0; i < a.size(); i += 3) {
      for (std::size_t j = 0; j < 3; ++j) a[i + j] -= centroid[j];
    }
    Test::TPlainSvd svd(a, kPoints, 3);
    benchmark::DoNotOptimize(svd.V.Items().data());
  });
}

#if defined(ZORBASE_BENCH_OPENBLAS)
// Without U, which a fit has no use for.
void PlaneLapack(benchmark::State& State) {
  openblas_set_num_threads(1);
  std::array<double, 3> w{};
  std::array<double, 9> vt{};
  std::vector<double> a(3 * kPoints);
  double size = 0.0;
  LAPACKE_dgesvd_work(LAPACK_COL_MAJOR, 'N', 'S', kPoints, 3, a.data(), kPoints, w.data(), nullptr, 1, vt.data(), 3,
                      &size, -1);
  std::vector<double> work(static_cast<std::size_t>(size));
  Run(State, kPoints, 3, [&](const TSystem& System) {
    const std::array<double, 3> centroid = Centroid(System.Rows.Items);
    for (std::size_t j = 0; j < 3; ++j) {
      for (std::size_t i = 0; i < kPoints; ++i) a[j * kPoints + i] = System.Rows.Items[3 * i + j] - centroid[j];
    }
    LAPACKE_dgesvd_work(LAPACK_COL_MAJOR, 'N', 'S', kPoints, 3, a.data(), kPoints, w.data(), nullptr, 1, vt.data(), 3,
                        work.data(), static_cast<int>(work.size()));
  });
}
#endif

// ---------------------------------------------------------------------------------------------- the table of benchmarks

benchmark::internal::Benchmark* Register(const std::string& Subject, const std::string& Name,
                                         void (*Function)(benchmark::State&, int, int), int M, int N) {
  return benchmark::RegisterBenchmark((Subject + "/" + Name).c_str(),
                                      [=](benchmark::State& State) { Function(State, M, N); })
      ->Unit(benchmark::kMicrosecond);
}

const bool kIsRegistered = [] {
  for (const auto& [m, n] : std::vector<std::pair<int, int>>{
           {3, 3}, {6, 6}, {12, 12}, {50, 20}, {200, 100}, {500, 500}, {1000, 1000}, {10'000, 3}}) {
    const std::string subject = "SVD and solution, " + std::to_string(m) + "x" + std::to_string(n);
    benchmark::internal::Benchmark* const plain = Register(subject, "plain", SolvePlain, m, n);
    if (n >= 1000) plain->Iterations(1)->Repetitions(1);  // half a minute
    Register(subject, "library", SolveLibrary, m, n);
#if defined(ZORBASE_BENCH_OPENBLAS)
    Register(subject, "OpenBLAS", SolveLapack, m, n);
#endif
#if defined(ZORBASE_BENCH_EIGEN)
    if (m == 3) {
      Register(subject, "Eigen Jacobi", SolveEigen<Eigen::JacobiSVD<Eigen::Matrix3d>>, m, n);
    } else {
      Register(subject, "Eigen", SolveEigen<Eigen::BDCSVD<Eigen::MatrixXd>>, m, n);
    }
#endif
#if defined(ZORBASE_BENCH_GSL)
    if (n <= 500) Register(subject, "GSL", SolveGsl, m, n);
#endif
  }
  benchmark::RegisterBenchmark("FitPlaneUsingSvd, 10000 points/plain", PlanePlain)->Unit(benchmark::kMicrosecond);
  benchmark::RegisterBenchmark("FitPlaneUsingSvd, 10000 points/library", PlaneLibrary)->Unit(benchmark::kMicrosecond);
#if defined(ZORBASE_BENCH_OPENBLAS)
  benchmark::RegisterBenchmark("FitPlaneUsingSvd, 10000 points/OpenBLAS", PlaneLapack)->Unit(benchmark::kMicrosecond);
#endif
  return true;
}();

}  // namespace
}  // namespace ZORBase::Bench
