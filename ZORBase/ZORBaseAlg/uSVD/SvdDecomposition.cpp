#include <ZORBase/ZORBaseAlg/uSVD/SvdDecomposition.h>
#include <ZORBase/ZORBaseAlg/uSVD/TSvd.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <cstddef>
#include <cstdint>
#include <string_view>
#include <vector>

namespace ZORBase {
namespace {

void CheckLength(std::string_view Where, std::string_view What, std::size_t Length, std::int64_t Expected) {
  if (static_cast<std::int64_t>(Length) == Expected) return;
  RaiseGeneralError(Format1033("%s: %s has %d numbers and must have %d", Where, What, Length, Expected));
}

void CheckShape(std::string_view Where, int M, int N, std::size_t A, std::size_t W, std::size_t V) {
  if (M < 1 || N < 1) RaiseGeneralError(Format1033("%s: a matrix cannot be %d by %d", Where, M, N));
  CheckLength(Where, "the matrix", A, std::int64_t{M} * N);
  CheckLength(Where, "W", W, N);
  CheckLength(Where, "V", V, std::int64_t{N} * N);
}

}  // namespace

TSvdStatus SvdDecompose(std::span<double> A, int M, int N, std::span<double> W, std::span<double> V) {
  CheckShape("SvdDecompose", M, N, A.size(), W.size(), V.size());
  if (N > M) return TSvdStatus::MoreColumnsThanRows;
  const auto rows = static_cast<std::size_t>(M);
  const auto columns = static_cast<std::size_t>(N);
  TSvd svd(rows, columns, TSvd::TUse::Everything);
  svd.Load(A.data(), columns, 1);
  const TSvdStatus status = svd.Decompose();
  for (std::size_t i = 0; i < rows; ++i) {
    for (std::size_t j = 0; j < columns; ++j) A[i * columns + j] = svd.U(i, j);
  }
  for (std::size_t j = 0; j < columns; ++j) W[j] = svd.W(j);
  for (std::size_t i = 0; i < columns; ++i) {
    for (std::size_t j = 0; j < columns; ++j) V[i * columns + j] = svd.V(i, j);
  }
  return status;
}

void SvdBackSubstitute(std::span<const double> U, std::span<const double> W, std::span<const double> V, int M, int N,
                       std::span<const double> B, std::span<double> X) {
  CheckShape("SvdBackSubstitute", M, N, U.size(), W.size(), V.size());
  CheckLength("SvdBackSubstitute", "B", B.size(), M);
  CheckLength("SvdBackSubstitute", "X", X.size(), N);
  const auto columns = static_cast<std::size_t>(N);
  std::vector<double> parts(columns, 0.0);
  for (std::size_t i = 0; i < B.size(); ++i) {
    for (std::size_t j = 0; j < columns; ++j) parts[j] += U[i * columns + j] * B[i];
  }
  for (std::size_t j = 0; j < columns; ++j) parts[j] = W[j] > 0.0 ? parts[j] / W[j] : 0.0;
  for (std::size_t i = 0; i < columns; ++i) {
    double sum = 0.0;
    for (std::size_t j = 0; j < columns; ++j) sum += V[i * columns + j] * parts[j];
    X[i] = sum;
  }
}

}  // namespace ZORBase
