#include <ZORBase/ZORBaseAlg/uSVD/FitUsingSvd.h>
#include <ZORBase/ZORBaseAlg/uSVD/TSvd.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/uZORCommon.h>

#include <array>
#include <cmath>
#include <utility>

namespace ZORBase {
namespace {

constexpr double kRatioTolerance = 1e-7;

// What a fit in N dimensions gives: Normal . point + Offset = 0.
template <std::size_t N>
struct TFit {
  std::array<double, N> Normal;
  double Offset;
  std::array<double, N> SingularValues;  // magnitudes, in the decomposition's order
};

// The first of the smallest values.
template <std::size_t N>
std::size_t IndexOfSmallest(const std::array<double, N>& Values) {
  std::size_t smallest = 0;
  for (std::size_t j = 1; j < N; ++j) {
    if (Values[j] < Values[smallest]) smallest = j;
  }
  return smallest;
}

// The messages name the plane for both fits.
template <std::size_t N>
void CheckCount(const TDoubleList& Points) {
  if (Points.Count() > 0 && Points.Count() % static_cast<int>(N) == 0) return;
  RaiseGeneralError(Format1033("FitPlaneUsingSvd Err: Input Invalid MatA.Count = %d", Points.Count()));
}

template <std::size_t N>
std::array<double, N> Centroid(const TDoubleList& Points) {
  const std::size_t count = Points.size() / N;
  std::array<double, N> sum{};
  for (std::size_t i = 0; i < Points.size(); i += N) {
    for (std::size_t j = 0; j < N; ++j) sum[j] += Points.data()[i + j];
  }
  for (double& value : sum) value /= static_cast<double>(count);
  return sum;
}

// The normal is the right singular vector of the smallest singular value of the centred points.
template <std::size_t N>
TFit<N> Fit(const TDoubleList& Points) {
  CheckCount<N>(Points);
  const std::array<double, N> centroid = Centroid<N>(Points);
  const std::size_t count = Points.size() / N;
  std::array<double, N> w{};
  std::array<double, N> normal{};
  if (count >= N) {  // fewer leave the decomposition undone, and zeros
    TSvd svd(count, N, TSvd::TUse::VOnly);
    svd.Load(Points.data(), N, 1, centroid.data());
    svd.Decompose();
    for (std::size_t j = 0; j < N; ++j) w[j] = std::fabs(svd.W(j));
    const std::size_t k = IndexOfSmallest(w);
    for (std::size_t j = 0; j < N; ++j) normal[j] = svd.V(j, k);
  }
  double sum = normal[0] * centroid[0];
  for (std::size_t j = 1; j < N; ++j) sum += normal[j] * centroid[j];
  return {normal, -sum, w};
}

std::array<double, 3> Ascending(std::array<double, 3> Values) {
  if (Values[1] < Values[0]) std::swap(Values[0], Values[1]);
  if (Values[2] < Values[1]) std::swap(Values[1], Values[2]);
  if (Values[1] < Values[0]) std::swap(Values[0], Values[1]);
  return Values;
}

// XList may be AList: the points are out of it before it is cleared.
template <class TFitPoints>
bool FitInto(const TDoubleList* AList, TDoubleList& XList, TFitPoints&& FitPoints) {
  if (AList != &XList) {
    XList.Clear();
    return FitPoints(AList);
  }
  const TDoubleList points = std::exchange(XList, {});
  return FitPoints(&points);
}

}  // namespace

bool FitPlaneUsingSvd(const TDoubleList* AList, double& A, double& B, double& C, double& D, double& Ratio) {
  if (AList == nullptr) RaiseGeneralError("FitPlaneUsingSvd Err: InputList AList Is Uninitialized");
  const TFit<3> fit = Fit<3>(*AList);
  const std::array<double, 3> w = Ascending(fit.SingularValues);
  Ratio = SafeDiv(w[1], w[0], kRatioTolerance);
  A = fit.Normal[0];
  B = fit.Normal[1];
  C = fit.Normal[2];
  D = fit.Offset;
  return true;
}

bool FitPlaneUsingSvd(const TDoubleList* AList, double& A, double& B, double& C, double& D) {
  double ratio = 0.0;
  return FitPlaneUsingSvd(AList, A, B, C, D, ratio);
}

bool FitPlaneUsingSvd(const TDoubleList* AList, TDoubleList* XList) {
  if (XList == nullptr) RaiseGeneralError("FitPlaneUsingSvd Err: InputList Xlist Is Uninitialized");
  return FitInto(AList, *XList, [XList](const TDoubleList* Points) {
    double a = 0.0, b = 0.0, c = 0.0, d = 0.0;
    const bool isFitted = FitPlaneUsingSvd(Points, a, b, c, d);
    *XList = {a, b, c, d};
    return isFitted;
  });
}

bool FitLineUsingSvd(const TDoubleList* AList, double& A, double& B, double& C) {
  if (AList == nullptr) RaiseGeneralError("FitLineUsingSvd Err: InputList AList Is Uninitialized");
  const TFit<2> fit = Fit<2>(*AList);
  A = fit.Normal[0];
  B = fit.Normal[1];
  C = fit.Offset;
  return true;
}

bool FitLineUsingSvd(const TDoubleList* AList, TDoubleList* XList) {
  if (XList == nullptr) RaiseGeneralError("FitLineUsingSvd Err: InputList Xlist Is Uninitialized");
  return FitInto(AList, *XList, [XList](const TDoubleList* Points) {
    double a = 0.0, b = 0.0, c = 0.0;
    const bool isFitted = FitLineUsingSvd(Points, a, b, c);
    *XList = {a, b, c};
    return isFitted;
  });
}

}  // namespace ZORBase
