#include <ZORBase/ZORBaseAlg/uSVD/MatrixDivUsingSvd.h>
#include <ZORBase/ZORBaseAlg/uSVD/SvdDecomposition.h>
#include <ZORBase/common/BaseServices/NumberText.h>

#include <cstdint>
#include <vector>

namespace ZORBase {
namespace {

void CheckSizes(const TDoubleList& AList, const TDoubleList& bList, int M, int N) {
  if (AList.Count() == std::int64_t{M} * N && bList.Count() == M && M >= 1 && N >= 1) return;
  RaiseGeneralError(Format1033("MatrixDivUsingSvd Err: Input Invalid MatA.Count = %d, VecB.Count = %d, M = %d, N = %d",
                               AList.Count(), bList.Count(), M, N));
}

// The entries row by row.
std::vector<double> RowByRow(const TDoubleList& AList, std::size_t Rows, std::size_t Columns, bool RowMajor) {
  if (RowMajor) return {AList.begin(), AList.end()};
  std::vector<double> a(Rows * Columns);
  for (std::size_t i = 0; i < Rows; ++i) {
    for (std::size_t j = 0; j < Columns; ++j) a[i * Columns + j] = AList.data()[j * Rows + i];
  }
  return a;
}

}  // namespace

bool MatrixDivUsingSvd(const TDoubleList* AList, const TDoubleList* bList, int M, int N, TDoubleList* XList,
                       bool RowMajor) {
  if (AList == nullptr || bList == nullptr || XList == nullptr) {
    RaiseGeneralError("MatrixDivUsingSvd Err: InputList(AList or bList or Xlist) Is Uninitialized");
  }
  CheckSizes(*AList, *bList, M, N);
  const auto rows = static_cast<std::size_t>(M);
  const auto columns = static_cast<std::size_t>(N);
  std::vector<double> x(columns);
  if (N <= M) {
    std::vector<double> u = RowByRow(*AList, rows, columns, RowMajor);
    std::vector<double> w(columns);
    std::vector<double> v(columns * columns);
    SvdDecompose(u, M, N, w, v);
    SvdBackSubstitute(u, w, v, M, N, *bList, x);
  }
  *XList = TDoubleList(std::span<const double>(x));
  return true;
}

}  // namespace ZORBase
