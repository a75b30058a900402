// The kernels against plain transcriptions, bit for bit, for each instruction set that this machine has.
#include <ZORBase/kernels/Logarithm.h>

#include <ZORBaseAlg/uFFT/PlainFFT.h>
#include <ZORGeometry/NurbsGeometry/PlainCurve.h>

#include <cmath>
#include <random>
#include <string>

#include "KernelNumbers.h"
#include "KernelVariants.h"
#include "support/TestSupport.h"

namespace ZORBase::Test {
namespace {

std::vector<const TKernels*> KernelsOfThisMachine() {
  std::vector<const TKernels*> kernels = {&BaselineKernels()};
  if (Avx2Kernels()) kernels.push_back(Avx2Kernels());
  return kernels;
}

class EachVariantOfAKernel : public testing::TestWithParam<const TKernels*> {};

std::string NameOfVariant(const testing::TestParamInfo<const TKernels*>& Info) { return Info.param->Name; }

INSTANTIATE_TEST_SUITE_P(OnThisMachine, EachVariantOfAKernel, testing::ValuesIn(KernelsOfThisMachine()), NameOfVariant);

TVector PlainTransform(TNumbers Matrix, TNumbers Points, bool IsMove) {
  TVector results;
  for (std::size_t i = 0; i < Points.size(); i += 3) {
    const double x = Points[i];
    const double y = Points[i + 1];
    const double z = Points[i + 2];
    const bool isFar = x > 1e10 || y > 1e10 || z > 1e10;
    for (std::size_t row = 0; row < 12; row += 4) {
      const double turned = Matrix[row] * x + Matrix[row + 1] * y + Matrix[row + 2] * z;
      const double result = IsMove ? turned + Matrix[row + 3] : turned;
      results.push_back(isFar ? Points[i + row / 4] : result);
    }
  }
  return results;
}

TEST_P(EachVariantOfAKernel, TransformsPointsAndVectorsAsThePlainOne) {
  std::mt19937_64 random(20261121);
  for (const TNumberKind kind : kNumberKinds) {
    for (std::size_t points = 0; points <= 70; ++points) {
      const TVector matrix = RandomNumbers(random, kind == TNumberKind::Anything ? TNumberKind::Graded : kind, 12);
      const TVector numbers = RandomNumbers(random, kind, 3 * points);
      ExpectSameNumbers(GetParam()->MovePoints(matrix, numbers), PlainTransform(matrix, numbers, true));
      ExpectSameNumbers(GetParam()->TurnVectors(matrix, numbers), PlainTransform(matrix, numbers, false));
    }
  }
}

double PlainSumFrom(TNumbers Terms, std::size_t First, std::size_t Stride) {
  double sum = 0.0;
  for (std::size_t i = First; i < Terms.size(); i += Stride) sum += Terms[i];
  return sum;
}

// Sixteen partial sums of every sixteenth term, added by halves, and then what is left.
double PlainWeightedSum(TNumbers Weights, TNumbers Values) {
  TVector terms;
  for (std::size_t i = 0; i < Weights.size(); ++i) terms.push_back(Weights[i] * Values[i]);
  const std::size_t whole = terms.size() / 16 * 16;
  if (whole == 0) return PlainSumFrom(terms, 0, 1);
  TVector partial;
  for (std::size_t i = 0; i < 16; ++i) partial.push_back(PlainSumFrom(TNumbers(terms).first(whole), i, 16));
  for (std::size_t half = 8; half > 0; half /= 2) {
    for (std::size_t i = 0; i < half; ++i) partial[i] += partial[i + half];
  }
  return whole == terms.size() ? partial[0] : partial[0] + PlainSumFrom(terms, whole, 1);
}

TEST_P(EachVariantOfAKernel, SumsInTheOneOrder) {
  std::mt19937_64 random(20261122);
  for (const TNumberKind kind : kNumberKinds) {
    for (std::size_t count = 1; count <= 150; count += count < 40 ? 1 : 7) {
      const TVector weights = RandomNumbers(random, kind, count);
      const TVector ones(count, 1.0);
      const TVector values = RandomNumbers(random, kind, count + count % 90);
      const TNumbers first = TNumbers(values).first(count);
      ExpectSameNumbers({GetParam()->WeightedSum(weights, first)}, {PlainWeightedSum(weights, first)});
      ExpectSameNumbers({GetParam()->PlainSum(first)}, {PlainWeightedSum(ones, first)});
      TVector weighted;
      TVector plain;
      for (std::size_t i = 0; i + count <= values.size(); ++i) {
        weighted.push_back(PlainWeightedSum(weights, TNumbers(values).subspan(i)));
        plain.push_back(PlainWeightedSum(ones, TNumbers(values).subspan(i)));
      }
      ExpectSameNumbers(GetParam()->WeightedSums(weights, values), weighted);
      ExpectSameNumbers(GetParam()->PlainSums(static_cast<int>(count), values), plain);
    }
  }
}

TEST_P(EachVariantOfAKernel, GivesTheSpeedsOfABezierCurve) {
  std::mt19937_64 random(20261123);
  constexpr std::size_t kRow = 44;
  for (const TNumberKind kind : kNumberKinds) {
    for (const int coordinates : {1, 2, 3, 7, 8, 9, 43, 44}) {
      const TVector rows = RandomNumbers(random, kind, 4 * kRow);
      const TVector params = RandomNumbers(random, TNumberKind::Even, 16);
      TVector expected;
      for (const double t : params) {
        double sum = 0.0;
        for (std::size_t i = 0; i < static_cast<std::size_t>(coordinates); ++i) {
          const double a = rows[i];
          const double b = rows[kRow + i];
          const double c = rows[2 * kRow + i];
          const double d = rows[3 * kRow + i];
          const double cubic = -3.0 * a + 9.0 * b - 9.0 * c + 3.0 * d;
          const double derivative = t * (t * cubic + 6.0 * a - 12.0 * b + 6.0 * c) - 3.0 * a + 3.0 * b;
          sum += derivative * derivative;
        }
        expected.push_back(std::sqrt(sum));
      }
      ExpectSameNumbers(GetParam()->BezierSpeeds(rows, coordinates, params), expected);
    }
  }
}

TEST_P(EachVariantOfAKernel, GivesTheBiharmonicMatrixAndItsHeights) {
  std::mt19937_64 random(20261124);
  const auto distance = [](double X, double Y) { return std::sqrt(X * X + Y * Y); };
  for (std::size_t count = 1; count <= 70; count += count < 20 ? 1 : 9) {
    const TVector x = RandomNumbers(random, TNumberKind::Even, count);
    const TVector y = RandomNumbers(random, TNumberKind::Even, count);
    const TVector weights = RandomNumbers(random, TNumberKind::Graded, count);
    TVector matrix;
    for (std::size_t i = 0; i < count; ++i) {
      for (std::size_t j = 0; j < count; ++j) {
        const double d = distance(x[i] - x[j], y[i] - y[j]);
        matrix.push_back(i == j ? 0.0 : d * d * (Ln(d) - 1.0));
      }
    }
    ExpectSameNumbers(GetParam()->BiharmonicMatrix(x, y), matrix);
    TVector at = RandomNumbers(random, TNumberKind::Even, 2 * (count % 13));
    at.insert(at.end(), {x[0], y[0]});  // a sample's own place counts nothing
    TVector heights;
    for (std::size_t i = 0; i < at.size(); i += 2) {
      double z = 0.0;
      for (std::size_t k = 0; k < count; ++k) {
        const double d = distance(at[i] - x[k], at[i + 1] - y[k]);
        if (d <= 1e-12) continue;
        z = z + weights[k] * (d * d) * (Ln(d) - 1.0);
      }
      heights.push_back(z);
      ExpectSameNumbers({GetParam()->BiharmonicHeight(x, y, weights, at[i], at[i + 1])}, {z});
    }
    ExpectSameNumbers(GetParam()->BiharmonicHeights(x, y, weights, at), heights);
  }
}

TEST_P(EachVariantOfAKernel, TransformsSignalsAsThePlainRadix2Scheme) {
  std::mt19937_64 random(20261125);
  for (std::size_t n = 2; n <= 8192; n *= 2) {
    const TVector samples = RandomNumbers(random, TNumberKind::Graded, n);
    TVector expected;
    for (const TComplex& bin : PlainFFT(samples)) expected.insert(expected.end(), {bin.real, bin.imag});
    ExpectSameNumbers(GetParam()->TransformReal(samples), expected);
  }
}

TEST_P(EachVariantOfAKernel, SamplesAKnotIntervalAsThePlainCurve) {
  std::mt19937_64 random(20261126);
  for (const TNumberKind kind : kNumberKinds) {
    for (std::size_t count = 1; count <= 64; ++count) {
      const TPlainBasis basis{RandomKnots(random)};
      const TVector params = ParamsInside(random, basis, count);
      TVector expected;
      for (const double u : params) {
        double N[4] = {};
        basis.BasicFuns(3, u, N);
        expected.insert(expected.end(), N, N + 4);
      }
      const TVector values = GetParam()->BasisValues(&basis.U[3], params);
      ExpectSameNumbers(values, expected);
      const TVector points = RandomNumbers(random, kind, 24);
      ExpectSameNumbers(GetParam()->SamplePoses(points, values), PlainSamples(points, values));
    }
  }
}

}  // namespace
}  // namespace ZORBase::Test
