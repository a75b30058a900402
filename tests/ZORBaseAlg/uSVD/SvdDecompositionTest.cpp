// The decomposition and the solution from it, by the laws they obey.
#include <ZORBase/ZORBaseAlg/uSVD.h>

#include "SvdMatrices.h"
#include "support/TestSupport.h"

#include <Eigen/Dense>
#include <algorithm>

namespace ZORBase {
namespace {

using namespace Test;

using TRowMajor = Eigen::Matrix<double, Eigen::Dynamic, Eigen::Dynamic, Eigen::RowMajor>;
using TMap = Eigen::Map<const TRowMajor>;

struct TParts {
  TSvdStatus Status;
  TRowMajor U;
  Eigen::VectorXd W;
  TRowMajor V;
};

TParts Decomposed(const TMatrixCase& Matrix) {
  const auto n = static_cast<std::size_t>(Matrix.N);
  std::vector<double> u = Matrix.Items;
  std::vector<double> w(n);
  std::vector<double> v(n * n);
  const TSvdStatus status = SvdDecompose(u, Matrix.M, Matrix.N, w, v);
  return {status, TMap(u.data(), Matrix.M, Matrix.N), Eigen::Map<const Eigen::VectorXd>(w.data(), Matrix.N),
          TMap(v.data(), Matrix.N, Matrix.N)};
}

// The ratios by which LAPACK judges its own decompositions: errors in units of the rounding, below 10 is sound.
constexpr double kSoundRatio = 10.0;

void ExpectSound(const TMatrixCase& Matrix) {
  SCOPED_TRACE(testing::Message() << Matrix.M << " x " << Matrix.N);
  const TParts parts = Decomposed(Matrix);
  ASSERT_EQ(parts.Status, TSvdStatus::Good);
  const TMap a(Matrix.Items.data(), Matrix.M, Matrix.N);
  const double norm = a.cwiseAbs().colwise().sum().maxCoeff();
  const TRowMajor product = parts.U * parts.W.asDiagonal() * parts.V.transpose();
  const double miss = (a - product).cwiseAbs().colwise().sum().maxCoeff();
  EXPECT_LE(miss, kSoundRatio * norm * std::max(Matrix.M, Matrix.N) * kEpsilon);
  EXPECT_GE(parts.W.minCoeff(), 0.0);
  const TRowMajor unit = TRowMajor::Identity(Matrix.N, Matrix.N);
  EXPECT_LE((unit - parts.V.transpose() * parts.V).cwiseAbs().colwise().sum().maxCoeff(),
            kSoundRatio * Matrix.N * kEpsilon);
  EXPECT_LE((unit - parts.V * parts.V.transpose()).cwiseAbs().colwise().sum().maxCoeff(),
            kSoundRatio * Matrix.N * kEpsilon);
  EXPECT_LE((unit - parts.U.transpose() * parts.U).cwiseAbs().colwise().sum().maxCoeff(),
            kSoundRatio * Matrix.M * kEpsilon);
}

template <class TMatrixOfSize>
void ExpectSoundForAllSizes(TMatrixOfSize&& MatrixOfSize) {
  const std::vector<std::pair<int, int>> sizes = {
      {1, 1},   {2, 1},   {2, 2},   {3, 2},   {3, 3},   {10, 3},  {5, 5},   {8, 8},    {9, 7},    {16, 16},
      {17, 15}, {33, 20}, {40, 40}, {50, 20}, {65, 33}, {80, 17}, {64, 64}, {120, 70}, {100, 100}};
  for (const auto& [m, n] : sizes) ExpectSound(MatrixOfSize(m, n));
}

TEST(SvdDecompose, IsSoundForNoise) {
  ExpectSoundForAllSizes([](int M, int N) { return NoiseMatrix(M, N); });
}

TEST(SvdDecompose, IsSoundForNumbersNearTheLimits) {
  ExpectSoundForAllSizes([](int M, int N) { return ScaledNoise(M, N, 1e150); });
  ExpectSoundForAllSizes([](int M, int N) { return ScaledNoise(M, N, 1e-150); });
}

TEST(SvdDecompose, IsSoundForGradedMatrices) { ExpectSoundForAllSizes(GradedMatrix); }

TEST(SvdDecompose, IsSoundForColumnsThatAreNearlyDependent) {
  ExpectSoundForAllSizes([](int M, int N) { return DependentColumns(M, N, 1e-10); });
}

TEST(SvdDecompose, IsSoundForAMatrixOfRankOne) {
  ExpectSoundForAllSizes([](int M, int N) { return DependentColumns(M, N, 0.0); });
}

TEST(SvdDecompose, IsSoundForZeros) {
  ExpectSoundForAllSizes([](int M, int N) { return ScaledNoise(M, N, 0.0); });
}

TEST(SvdDecompose, IsSoundForABidiagonalMatrixWithZerosOnItsDiagonal) { ExpectSoundForAllSizes(BidiagonalWithZeros); }

TEST(SvdDecompose, TheSingularValuesAreThoseOfAnIndependentDecomposition) {
  for (const auto& [m, n] : std::vector<std::pair<int, int>>{{3, 3}, {20, 7}, {50, 20}, {64, 48}}) {
    const TMatrixCase matrix = NoiseMatrix(m, n);
    Eigen::VectorXd w = Decomposed(matrix).W;
    std::sort(w.begin(), w.end(), std::greater<>());
    const Eigen::VectorXd expected = Eigen::JacobiSVD<TRowMajor>(TMap(matrix.Items.data(), m, n)).singularValues();
    // A singular value is off by no more than the matrix that the parts make up.
    EXPECT_LE((w - expected).cwiseAbs().maxCoeff(), kSoundRatio * m * kEpsilon * expected[0]) << m << " x " << n;
  }
}

TEST(SvdDecompose, TheSingularValuesAreNotSorted) {
  // A diagonal matrix is left as it is.
  const TParts parts = Decomposed({3, 3, {2, 0, 0, 0, 5, 0, 0, 0, 3}});
  EXPECT_THAT(std::vector<double>(parts.W.begin(), parts.W.end()), testing::ElementsAre(2.0, 5.0, 3.0));
}

TEST(SvdDecompose, MoreColumnsThanRowsAreReportedAndNothingIsTouched) {
  std::vector<double> a = {1, 2, 3, 4, 5, 6};
  std::vector<double> w = {7, 8, 9};
  std::vector<double> v = {1, 2, 3, 4, 5, 6, 7, 8, 9};
  const auto a0 = a, w0 = w, v0 = v;
  EXPECT_EQ(SvdDecompose(a, 2, 3, w, v), TSvdStatus::MoreColumnsThanRows);
  EXPECT_EQ(static_cast<int>(TSvdStatus::MoreColumnsThanRows), -3);
  EXPECT_EQ(a, a0);
  EXPECT_EQ(w, w0);
  EXPECT_EQ(v, v0);
}

TEST(SvdDecompose, ANaNDoesNotConverge) {
  EXPECT_EQ(Decomposed(WithItem(NoiseMatrix(5, 4), 7, kNaN)).Status, TSvdStatus::NoConvergence);
  EXPECT_EQ(Decomposed(WithItem(NoiseMatrix(50, 40), 7, kNaN)).Status, TSvdStatus::NoConvergence);
  EXPECT_EQ(static_cast<int>(TSvdStatus::NoConvergence), -1);
}

TEST(SvdDecompose, SpansOfAnotherLengthRaiseAndNothingIsTouched) {
  std::vector<double> a = {1, 2, 3, 4, 5, 6};
  std::vector<double> w = {7, 8};
  std::vector<double> v = {1, 2, 3, 4};
  EXPECT_THAT(Calling([&] { SvdDecompose(std::span(a).first(5), 3, 2, w, v); }),
              RaisesGeneralError("SvdDecompose: the matrix has 5 numbers and must have 6"));
  EXPECT_THAT(Calling([&] { SvdDecompose(a, 3, 2, std::span(w).first(1), v); }),
              RaisesGeneralError("SvdDecompose: W has 1 numbers and must have 2"));
  EXPECT_THAT(Calling([&] { SvdDecompose(a, 3, 2, w, std::span(v).first(3)); }),
              RaisesGeneralError("SvdDecompose: V has 3 numbers and must have 4"));
  EXPECT_THAT(Calling([&] { SvdDecompose(a, 0, 2, w, v); }),
              RaisesGeneralError("SvdDecompose: a matrix cannot be 0 by 2"));
  EXPECT_THAT(Calling([&] { SvdDecompose(a, 3, -2, w, v); }),
              RaisesGeneralError("SvdDecompose: a matrix cannot be 3 by -2"));
  EXPECT_THAT(Calling([&] { SvdDecompose({}, 65536, 65536, w, v); }),
              RaisesGeneralError("SvdDecompose: the matrix has 0 numbers and must have 4294967296"));
  EXPECT_THAT(a, testing::ElementsAre(1, 2, 3, 4, 5, 6));
  EXPECT_THAT(w, testing::ElementsAre(7, 8));
}

TEST(SvdBackSubstitute, DropsSingularValuesThatAreNotPositiveAndNoOthers) {
  const std::vector<double> unit = {1, 0, 0, 0, 1, 0, 0, 0, 1};
  std::vector<double> x(3);
  SvdBackSubstitute(unit, std::vector{0.0, -2.0, 1e-300}, unit, 3, 3, std::vector{1.0, 1.0, 1e-300}, x);
  EXPECT_THAT(x, testing::ElementsAre(0.0, 0.0, 1.0));
}

TEST(SvdBackSubstitute, TheUnknownsMayOverwriteTheRightSide) {
  const std::vector<double> unit = {1, 0, 0, 1};
  const std::vector<double> flip = {0, 1, 1, 0};
  std::vector<double> b = {6, 8};
  SvdBackSubstitute(unit, std::vector{2.0, 4.0}, flip, 2, 2, b, b);
  EXPECT_THAT(b, testing::ElementsAre(2.0, 3.0));
}

TEST(SvdBackSubstitute, SpansOfAnotherLengthRaise) {
  const std::vector<double> one = {1};
  const std::vector<double> two = {1, 2};
  std::vector<double> x = {7};
  EXPECT_THAT(Calling([&] { SvdBackSubstitute(one, one, one, 1, 1, two, x); }),
              RaisesGeneralError("SvdBackSubstitute: B has 2 numbers and must have 1"));
  EXPECT_THAT(Calling([&] { SvdBackSubstitute(one, one, one, 1, 1, one, std::span(x).first(0)); }),
              RaisesGeneralError("SvdBackSubstitute: X has 0 numbers and must have 1"));
  EXPECT_THAT(Calling([&] { SvdBackSubstitute(one, one, one, 1, 0, one, x); }),
              RaisesGeneralError("SvdBackSubstitute: a matrix cannot be 1 by 0"));
  EXPECT_THAT(x, testing::ElementsAre(7.0));
}

// Least squares of noise, where the condition is moderate, against a decomposition of another kind.
TEST(MatrixDivUsingSvd, AgreesWithAnIndependentLeastSquaresSolution) {
  for (const auto& [m, n] : std::vector<std::pair<int, int>>{{1, 1}, {4, 2}, {9, 9}, {30, 5}, {40, 18}, {100, 60}}) {
    const TMatrixCase matrix = NoiseMatrix(m, n);
    const TMatrixCase right = NoiseMatrix(m, 1, 5);
    const TDoubleList a{std::span<const double>(matrix.Items)};
    const TDoubleList b{std::span<const double>(right.Items)};
    TDoubleList x;
    ASSERT_TRUE(MatrixDivUsingSvd(&a, &b, m, n, &x, true));
    const TMap map(matrix.Items.data(), m, n);
    const Eigen::VectorXd expected = map.colPivHouseholderQr().solve(Eigen::Map<const Eigen::VectorXd>(b.data(), m));
    const Eigen::VectorXd miss = Eigen::Map<const Eigen::VectorXd>(x.data(), n) - expected;
    const Eigen::VectorXd w = Eigen::JacobiSVD<TRowMajor>(map).singularValues();
    const double condition = w[0] / w[n - 1];
    EXPECT_LE(miss.norm(), 100 * kEpsilon * condition * condition * (1 + expected.norm())) << m << " x " << n;
  }
}

TEST(MatrixDivUsingSvd, TheColumnOrderIsTheTransposedRowOrder) {
  const TMatrixCase rows = NoiseMatrix(23, 17);
  TMatrixCase columns = rows;
  for (std::size_t i = 0; i < 23; ++i) {
    for (std::size_t j = 0; j < 17; ++j) columns.Items[j * 23 + i] = rows.Items[i * 17 + j];
  }
  const TDoubleList a{std::span<const double>(rows.Items)};
  const TDoubleList transposed{std::span<const double>(columns.Items)};
  const TDoubleList b{std::span<const double>(NoiseMatrix(23, 1).Items)};
  TDoubleList x;
  TDoubleList y;
  MatrixDivUsingSvd(&a, &b, 23, 17, &x, true);
  MatrixDivUsingSvd(&transposed, &b, 23, 17, &y, false);
  EXPECT_TRUE(std::equal(x.begin(), x.end(), y.begin(), y.end()));
}

// What is left over of a least-squares solution is perpendicular to every column.
RC_GTEST_PROP(MatrixDivUsingSvdLaws, TheResidualIsPerpendicularToTheColumns, ()) {
  const int n = *rc::gen::inRange(1, 25);
  const int m = n + *rc::gen::inRange(0, 25);
  const TMatrixCase matrix = NoiseMatrix(m, n, *rc::gen::arbitrary<std::uint32_t>());
  const TDoubleList a{std::span<const double>(matrix.Items)};
  const TDoubleList b{std::span<const double>(NoiseMatrix(m, 1, 3).Items)};
  TDoubleList x;
  RC_ASSERT(MatrixDivUsingSvd(&a, &b, m, n, &x, true));
  const TMap map(matrix.Items.data(), m, n);
  const Eigen::Map<const Eigen::VectorXd> solution(x.data(), n);
  const Eigen::VectorXd rest = Eigen::Map<const Eigen::VectorXd>(b.data(), m) - map * solution;
  const double size = map.norm() * (map.norm() * solution.norm() + 1.0);
  RC_ASSERT((map.transpose() * rest).norm() <= 100 * m * kEpsilon * size);
}

}  // namespace
}  // namespace ZORBase
