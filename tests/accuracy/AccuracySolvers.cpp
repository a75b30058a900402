#include <ZORBaseAlg/uNewtonIterator/NistRegression.h>
#include <ZORBaseAlg/uSVD/SvdMatrices.h>

#include <algorithm>
#include <cmath>
#include <utility>

#include "Subjects.h"

namespace ZORBase::Test {
namespace {

// ---------------------------------------------------------------------------------------------- decompositions

// The entry (Row, Column) of a matrix row by row.
class TView {
 public:
  TView(const std::vector<double>& Items, int Columns) : FItems(Items), FColumns(static_cast<std::size_t>(Columns)) {}
  long double operator()(int Row, int Column) const {
    return FItems[static_cast<std::size_t>(Row) * FColumns + static_cast<std::size_t>(Column)];
  }

 private:
  const std::vector<double>& FItems;
  std::size_t FColumns;
};

// The largest sum of magnitudes in a column of the matrix with the entries Entry(Row, Column).
template <class TEntry>
double OneNorm(int Rows, int Columns, TEntry&& Entry) {
  long double largest = 0.0L;
  for (int j = 0; j < Columns; ++j) {
    long double sum = 0.0L;
    for (int i = 0; i < Rows; ++i) sum += std::fabs(Entry(i, j));
    largest = Worse(largest, sum);
  }
  return static_cast<double>(largest);
}

// |I - Q' Q| / (M eps) for a Q of M rows.
double Orthogonality(const std::vector<double>& Items, int M, int N) {
  const TView q(Items, N);
  const auto entry = [&](int i, int j) {
    long double sum = i == j ? -1.0L : 0.0L;
    for (int k = 0; k < M; ++k) sum += q(k, i) * q(k, j);
    return sum;
  };
  return OneNorm(N, N, entry) / (M * kEpsilon);
}

void MeasureMatrix(const TMatrixCase& Matrix, const std::string& Name, TErrorRow& Backward, TErrorRow& OfU,
                   TErrorRow& OfV) {
  const int m = Matrix.M;
  const int n = Matrix.N;
  std::vector<double> u = Matrix.Items;
  std::vector<double> w(static_cast<std::size_t>(n));
  std::vector<double> v(static_cast<std::size_t>(n) * static_cast<std::size_t>(n));
  SvdDecompose(u, m, n, w, v);
  const TView a(Matrix.Items, n), left(u, n), right(v, n);
  const auto rest = [&](int i, int j) {
    long double sum = a(i, j);
    for (int k = 0; k < n; ++k) sum -= left(i, k) * w[static_cast<std::size_t>(k)] * right(j, k);
    return sum;
  };
  const std::string where = Name + " " + std::to_string(m) + " x " + std::to_string(n);
  Backward.Add(OneNorm(m, n, rest) / (OneNorm(m, n, a) * std::max(m, n) * kEpsilon), where);
  OfU.Add(Orthogonality(u, m, n), where);
  OfV.Add(Orthogonality(v, n, n), where);
}

struct TSize {
  int M;
  int N;
};
constexpr TSize kSmallSizes[] = {{1, 1}, {2, 2}, {3, 3}, {5, 3}, {8, 8}, {20, 7}, {33, 33}, {50, 20}};
constexpr TSize kLargeSizes[] = {{64, 64}, {100, 100}, {200, 100}, {250, 250}, {1000, 3}};

}  // namespace

void MeasureDecompositions(const TMeasurement& Measurement) {
  TErrorTable& table = Measurement.Table;
  table.Subject("Decompositions and linear systems");
  constexpr double limit = 10.0;
  const TBound ratio = AsGoal(10.0);
  TErrorRow& backward =
      table.Row({"SvdDecompose, backward error", "norm(A - U W V') / (norm(A) max(M, N) eps)"}, ratio);
  TErrorRow& ofU = table.Row({"SvdDecompose, orthogonality of U", "norm(I - U'U) / (M eps)"}, ratio);
  TErrorRow& ofV = table.Row({"SvdDecompose, orthogonality of V", "norm(I - V'V) / (N eps)"}, ratio);
  std::vector<TSize> sizes(std::begin(kSmallSizes), std::end(kSmallSizes));
  if (Measurement.Effort == TEffort::Full) sizes.insert(sizes.end(), std::begin(kLargeSizes), std::end(kLargeSizes));
  for (const auto& [m, n] : sizes) {
    MeasureMatrix(NoiseMatrix(m, n), "noise", backward, ofU, ofV);
    MeasureMatrix(ScaledNoise(m, n, 1e-150), "noise of 1e-150", backward, ofU, ofV);
    MeasureMatrix(GradedMatrix(m, n), "graded", backward, ofU, ofV);
    MeasureMatrix(DependentColumns(m, n, 1e-12), "nearly of rank one", backward, ofU, ofV);
    MeasureMatrix(BidiagonalWithZeros(m, n), "bidiagonal with zeros", backward, ofU, ofV);
  }
  Measurement.Compare("SvdDecompose, singular values", TMeasure::Eps, limit, [](TCase C) {
    std::vector<double> u(C.In.begin() + 2, C.In.end());
    const auto columns = static_cast<std::size_t>(C.In[1]);
    std::vector<double> w(columns), v(columns * columns);
    SvdDecompose(u, static_cast<int>(C.In[0]), static_cast<int>(C.In[1]), w, v);
    std::sort(w.begin(), w.end());
    return w;
  });
  const auto solution = [](TCase C) {
    const int m = static_cast<int>(C.In[0]);
    const int n = static_cast<int>(C.In[1]);
    const std::span<const double> numbers = std::span(C.In).subspan(2);
    const auto count = static_cast<std::size_t>(m) * static_cast<std::size_t>(n);
    const TDoubleList a(numbers.first(count)), b(numbers.subspan(count));
    TDoubleList x;
    MatrixDivUsingSvd(&a, &b, m, n, &x, true);
    return std::vector<double>(x.begin(), x.end());
  };
  const std::string scale = "scale: cond norm(x) + cond^2 norm(residual) / norm(A)";
  Measurement.Compare("MatrixDivUsingSvd", TMeasure::Eps, limit, solution, scale);
  Measurement.Compare("MatrixDivUsingSvd, Hilbert matrices", TMeasure::Eps, 0.06, solution, scale);
  Measurement.Compare("SvdBackSubstitute", TMeasure::Eps, 4.0, [](TCase C) {
    const int m = static_cast<int>(C.In[0]);
    const int n = static_cast<int>(C.In[1]);
    const auto rows = static_cast<std::size_t>(m), columns = static_cast<std::size_t>(n);
    std::span<const double> numbers = std::span(C.In).subspan(2);
    const auto take = [&](std::size_t Count) {
      const auto taken = numbers.first(Count);
      numbers = numbers.subspan(Count);
      return taken;
    };
    const auto u = take(rows * columns), w = take(columns), v = take(columns * columns), b = take(rows);
    std::vector<double> x(columns);
    SvdBackSubstitute(u, w, v, m, n, b, x);
    return x;
  });
}

namespace {

// What a fit gives; the sign of normal and offset is either one.
struct TFitted {
  std::vector<double> Normal;
  double Offset = 0.0;
  double Ratio = 0.0;
};

TFitted FittedPlane(TCase Case) {
  const TDoubleList points{std::span<const double>(Case.In)};
  double a = 0, b = 0, c = 0, d = 0, ratio = 0;
  FitPlaneUsingSvd(&points, a, b, c, d, ratio);
  return {{a, b, c}, d, ratio};
}

TFitted FittedLine(TCase Case) {
  const TDoubleList points{std::span<const double>(Case.In)};
  double a = 0, b = 0, c = 0;
  FitLineUsingSvd(&points, a, b, c);
  return {{a, b}, c, 0.0};
}

// The references of a fit, planes or lines: the normal, then the offset.
struct TFitRows {
  std::string Name;
  std::string OffsetName;
  TFitted (*Fitted)(TCase);
  double OffsetLimit;
};
const TFitRows kPlaneRows = {"FitPlaneUsingSvd", "D", FittedPlane, 10.0};
const TFitRows kLineRows = {"FitLineUsingSvd", "C", FittedLine, 5.0};

void MeasureFit(const TMeasurement& Measurement, const TFitRows& Fit, const std::string& Place, double NormalGoal) {
  TErrorRow& normals = Measurement.Table.Row({Fit.Name + ", normal" + Place, "rad"}, AsGoal(NormalGoal));
  TErrorRow& offsets = Measurement.Table.Row(
      {Fit.Name + ", " + Fit.OffsetName + Place, "eps", "by the distance of the farthest point from the origin"},
      Fit.OffsetLimit);
  for (const TReferenceCase& item : Measurement.References.Of(Fit.Name + Place)) {
    const auto [normal, offset, ratio] = Fit.Fitted(item);
    const std::size_t size = normal.size();
    double cosine = 0.0;
    for (std::size_t i = 0; i < size; ++i) cosine += normal[i] * item.Out[i].Nearest;
    const double sign = cosine < 0.0 ? -1.0 : 1.0;
    // The chord between unit vectors so close together is the angle between them.
    double square = 0.0;
    for (std::size_t i = 0; i < size; ++i) square += std::pow(item.Out[i].ErrorOf(sign * normal[i]), 2);
    normals.Add(std::sqrt(square), item.Name);
    offsets.Add(item.Out[size].ErrorOf(sign * offset) / (item.Scale * kEpsilon), item.Name);
  }
}

// Behind the offset of a plane stand the ratio and what eps of the largest singular value makes of it.
void MeasureRatio(const TMeasurement& Measurement, const std::string& Place) {
  TErrorRow& row = Measurement.Table.Row(
      {"FitPlaneUsingSvd, Ratio" + Place, "eps", "scale: the ratio times the largest singular value by the smallest"},
      2.0);
  for (const TReferenceCase& item : Measurement.References.Of("FitPlaneUsingSvd" + Place)) {
    row.Add(item.Out[4].ErrorOf(FittedPlane(item).Ratio) / (item.Out[5].Nearest * kEpsilon), item.Name);
  }
}

}  // namespace

void MeasureFits(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Planes and lines");
  for (const auto& [place, goal] : {std::pair{"", 1e-13}, std::pair{", far from the origin", 1e-10}}) {
    MeasureFit(Measurement, kPlaneRows, place, goal);
    MeasureRatio(Measurement, place);
    MeasureFit(Measurement, kLineRows, place, goal);
  }
}

void MeasureNewton(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Newton iteration");
  TErrorRow& own = Measurement.Table.Row({"TNewtonIterator, parameters of the NIST problems", "relative",
                                          "certified to 11 digits, which are 5e-11 at most"},
                                         5e-11);
  TErrorRow& differences = Measurement.Table.Row(
      {"TNewtonIteratorPro, the same", "relative", "forward differences with a step of 1e-7, by design"}, 2.5e-5);
  for (const TNistCase& problem : kNistCases) {
    const TRegression regression(problem);
    const auto residuals = [&](const TDoubleList& X) { return regression.Residuals(X); };
    const int params = regression.ParamNum();
    const int equations = regression.EquationNum();
    TNewtonIterator iterator(
        params, equations, residuals, [&](const TDoubleList& X) { return regression.Jacobian(X); }, true);
    iterator.SetConvergeTor(regression.Tolerances(1e-12));
    TDoubleList x = regression.Start();
    iterator.CalcParam(&x);
    own.Add(std::pow(10.0, -regression.MatchingDigits(x)), std::string(problem.Name));

    TNewtonIteratorPro pro(params, equations, residuals);
    pro.SetConvergeTor(regression.Tolerances(1e-7));
    x = regression.Start();
    pro.CalcParam(&x);
    differences.Add(std::pow(10.0, -regression.MatchingDigits(x)), std::string(problem.Name));
  }
}

}  // namespace ZORBase::Test
