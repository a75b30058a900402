#include <ZORBase/ZORBaseAlg/uSVD/MatrixDivUsingSvd.h>
#include <ZORBase/ZORBaseAlg/uSVD/TSvd.h>
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

}  // namespace

bool MatrixDivUsingSvd(const TDoubleList* AList, const TDoubleList* bList, int M, int N, TDoubleList* XList,
                       bool RowMajor) {
  if (AList == nullptr || bList == nullptr || XList == nullptr) {
    RaiseGeneralError("MatrixDivUsingSvd Err: InputList(AList or bList or Xlist) Is Uninitialized");
  }
  CheckSizes(*AList, *bList, M, N);
  const auto rows = static_cast<std::size_t>(M);
  const auto columns = static_cast<std::size_t>(N);
  std::vector<double> x(columns, 0.0);
  if (N <= M) {
    TSvd svd(rows, columns, TSvd::TUse::Everything);
    svd.Load(AList->data(), RowMajor ? columns : 1, RowMajor ? 1 : rows);
    svd.Decompose();
    svd.Solve(bList->data(), x.data());
  }
  *XList = TDoubleList(std::span<const double>(x));
  return true;
}

}  // namespace ZORBase
