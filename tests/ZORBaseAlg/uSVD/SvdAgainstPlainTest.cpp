// The library's decomposition against the plain one, bit for bit, as this machine runs it and for each instruction set that
// it has.
#include <ZORBase/ZORBaseAlg/uSVD.h>

#include "PlainSvd.h"
#include "SvdMatrices.h"
#include "SvdVariants.h"
#include "support/TestSupport.h"

#include <array>
#include <bit>
#include <thread>
#include <utility>
#include <vector>

namespace ZORBase {
namespace {

using namespace Test;

// Sizes around every block of lanes, rows and columns; tall, square, and one that needs several rounds of rotations.
const std::vector<std::pair<int, int>> kSizes = {
    {1, 1},   {2, 1},   {9, 1},   {2, 2},   {5, 2},   {3, 3},   {4, 3},   {17, 3},  {4, 4},    {5, 5},   {7, 6},
    {8, 8},   {15, 9},  {13, 13}, {15, 15}, {40, 15}, {16, 16}, {17, 16}, {17, 17}, {19, 18},  {20, 20}, {50, 20},
    {31, 31}, {32, 32}, {33, 33}, {48, 47}, {64, 49}, {70, 64}, {66, 65}, {90, 33}, {100, 100}};

// Equal bits; a NaN is as good as another one.
bool IsSame(double A, double B) {
  return std::bit_cast<std::uint64_t>(A) == std::bit_cast<std::uint64_t>(B) || (std::isnan(A) && std::isnan(B));
}

void ExpectSame(std::span<const double> Found, std::span<const double> Expected, const char* What) {
  ASSERT_EQ(Found.size(), Expected.size()) << What;
  for (std::size_t i = 0; i < Expected.size(); ++i) {
    ASSERT_TRUE(IsSame(Found[i], Expected[i])) << What << " " << i << " is " << Found[i] << ", not " << Expected[i];
  }
}

void ExpectSame(const TSvdResult& Found, const TPlainSvd& Expected) {
  EXPECT_EQ(Found.Status, Expected.Status);
  ExpectSame(Found.W, std::span(Expected.w).subspan(1), "w");
  ExpectSame(Found.V, Expected.V.Items(), "v");
  ExpectSame(Found.U, Expected.U.Items(), "u");
}

TSvdResult LibrarySvd(const TMatrixCase& Matrix) {
  TSvdResult result;
  const auto n = static_cast<std::size_t>(Matrix.N);
  result.U = Matrix.Items;
  result.W.resize(n, kNaN);
  result.V.resize(n * n, kNaN);
  result.Status = static_cast<int>(SvdDecompose(result.U, Matrix.M, Matrix.N, result.W, result.V));
  return result;
}

void ExpectSameSolution(const TMatrixCase& Matrix, TPlainSvd& Plain) {
  const TDoubleList a{std::span<const double>(Matrix.Items)};
  const TDoubleList b{std::span<const double>(NoiseMatrix(Matrix.M, 1, 9).Items)};
  TDoubleList x;
  EXPECT_TRUE(MatrixDivUsingSvd(&a, &b, Matrix.M, Matrix.N, &x, true));
  ExpectSame(x, Plain.Solve(b), "x");
}

void ExpectAsPlain(const TMatrixCase& Matrix) {
  SCOPED_TRACE(testing::Message() << Matrix.M << " x " << Matrix.N);
  TPlainSvd plain(Matrix.Items, Matrix.M, Matrix.N);
  ExpectSame(LibrarySvd(Matrix), plain);
  ExpectSame(BaselineSvd(Matrix.Items, Matrix.M, Matrix.N), plain);
  if (HasAvx2()) ExpectSame(Avx2Svd(Matrix.Items, Matrix.M, Matrix.N), plain);
  ExpectSameSolution(Matrix, plain);
}

template <class TMatrixOfSize>
void ExpectAsPlainForAllSizes(TMatrixOfSize&& MatrixOfSize) {
  for (const auto& [m, n] : kSizes) ExpectAsPlain(MatrixOfSize(m, n));
}

TEST(SvdAgainstPlain, Noise) {
  ExpectAsPlainForAllSizes([](int M, int N) { return NoiseMatrix(M, N); });
}

TEST(SvdAgainstPlain, NoiseThatFillsTheRotationLogManyTimes) { ExpectAsPlain(NoiseMatrix(300, 200)); }

TEST(SvdAgainstPlain, DependentColumns) {
  ExpectAsPlainForAllSizes([](int M, int N) { return DependentColumns(M, N, 0.0); });
  ExpectAsPlainForAllSizes([](int M, int N) { return DependentColumns(M, N, 1e-12); });
}

TEST(SvdAgainstPlain, GradedMatrices) { ExpectAsPlainForAllSizes(GradedMatrix); }

TEST(SvdAgainstPlain, VeryLargeAndVerySmallNumbers) {
  for (const double scale : {1e150, 1e-150, 1e308, 1e-308, 1e-320}) {
    ExpectAsPlainForAllSizes([scale](int M, int N) { return ScaledNoise(M, N, scale); });
  }
}

TEST(SvdAgainstPlain, ZerosOfBothSigns) {
  ExpectAsPlainForAllSizes([](int M, int N) { return ScaledNoise(M, N, 0.0); });
}

TEST(SvdAgainstPlain, ZerosOnTheDiagonalOfABidiagonalMatrix) { ExpectAsPlainForAllSizes(BidiagonalWithZeros); }

TEST(SvdAgainstPlain, ColumnsAndRowsOfZeros) {
  ExpectAsPlainForAllSizes([](int M, int N) {
    return Changed(NoiseMatrix(M, N), [](int i, int j, double Item) { return i % 4 == 1 || j % 3 == 1 ? 0.0 : Item; });
  });
}

TEST(SvdAgainstPlain, IntegersWithManyEqualSingularValues) {
  ExpectAsPlainForAllSizes([](int M, int N) {
    return Changed(NoiseMatrix(M, N), [](int i, int j, double) {
      return i == j ? 3.0 : (i + j) % 7 == 0 ? -1.0 : 0.0;
    });
  });
}

TEST(SvdAgainstPlain, ANaNOrAnInfinity) {
  for (const double value : {kNaN, kInfinity, -kInfinity}) {
    for (const std::size_t place : {0U, 1U, 17U, 333U, 4000U}) {
      for (const auto& [m, n] : std::vector<std::pair<int, int>>{{3, 3}, {6, 2}, {17, 9}, {20, 20}, {41, 33}}) {
        ExpectAsPlain(WithItem(NoiseMatrix(m, n), place, value));
        ExpectAsPlain(WithItem(ScaledNoise(m, n, 0.0), place, value));
        ExpectAsPlain(WithItem(BidiagonalWithZeros(m, n), place, value));
      }
    }
  }
}

TEST(SvdAgainstPlain, WithoutUTheRestIsTheSame) {
  for (const auto& [m, n] : kSizes) {
    SCOPED_TRACE(testing::Message() << m << " x " << n);
    const TMatrixCase matrix = NoiseMatrix(m, n);
    const TSvdResult expected = BaselineSvd(matrix.Items, m, n);
    const TSvdResult found = BaselineSvdWithoutU(matrix.Items, m, n);
    EXPECT_EQ(found.Status, expected.Status);
    ExpectSame(found.W, expected.W, "w");
    ExpectSame(found.V, expected.V, "v");
  }
}

TEST(SvdAgainstPlain, SeveralThreadsAtOnce) {
  const TMatrixCase matrix = NoiseMatrix(60, 40);
  const TPlainSvd plain(matrix.Items, matrix.M, matrix.N);
  std::vector<TSvdResult> results(4);
  std::vector<std::thread> threads;
  for (TSvdResult& result : results) threads.emplace_back([&] { result = LibrarySvd(matrix); });
  for (std::thread& thread : threads) thread.join();
  for (const TSvdResult& result : results) ExpectSame(result, plain);
}

TEST(SvdAgainstPlain, TheFitsTakeTheirVectorFromTheSameDecomposition) {
  for (const int count : {3, 4, 7, 8, 50, 1001}) {
    SCOPED_TRACE(count);
    const TMatrixCase points = NoiseMatrix(count, 3);
    std::array<double, 3> mean{};
    for (int j = 0; j < 3; ++j) {
      for (int i = 0; i < count; ++i)
        mean[static_cast<std::size_t>(j)] += points.Items[static_cast<std::size_t>(3 * i + j)];
      mean[static_cast<std::size_t>(j)] /= count;
    }
    const TMatrixCase centred =
        Changed(points, [&mean](int, int j, double Item) { return Item - mean[static_cast<std::size_t>(j)]; });
    TPlainSvd plain(centred.Items, count, 3);
    int k = 1;
    for (const int j : {2, 3}) {
      if (plain.W(j) < plain.W(k)) k = j;
    }
    const TDoubleList list{std::span<const double>(points.Items)};
    TDoubleList x;
    ASSERT_TRUE(FitPlaneUsingSvd(&list, &x));
    const std::array expected{plain.V(1, k), plain.V(2, k), plain.V(3, k),
                              -(plain.V(1, k) * mean[0] + plain.V(2, k) * mean[1] + plain.V(3, k) * mean[2])};
    ExpectSame(x, expected, "plane");
  }
}

}  // namespace
}  // namespace ZORBase
