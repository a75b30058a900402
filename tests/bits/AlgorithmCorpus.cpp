#include <cmath>

#include "Corpus.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

struct TMatrixSize {
  int M;
  int N;
};

// Sizes on both sides of every block and panel of the decomposition.
constexpr TMatrixSize kMatrixSizes[] = {{1, 1},   {3, 2},   {3, 3},    {17, 5}, {40, 33},
                                        {64, 64}, {90, 71}, {130, 20}, {700, 3}};

std::size_t Product(int M, int N) { return static_cast<std::size_t>(M) * static_cast<std::size_t>(N); }

void AddDecompositions(TCorpus& Corpus) {
  Corpus.Exact("SvdDecompose, SvdBackSubstitute", [](TResults& Result) {
    TPortableRandom random(701);
    for (const auto& [m, n] : kMatrixSizes) {
      std::vector<double> a = random.Numbers(Product(m, n), 1.0);
      const std::vector<double> b = random.Numbers(static_cast<std::size_t>(m), 1.0);
      std::vector<double> w(static_cast<std::size_t>(n)), v(Product(n, n)), x(static_cast<std::size_t>(n));
      const auto status = static_cast<int>(SvdDecompose(a, m, n, w, v));
      SvdBackSubstitute(a, w, v, m, n, b, x);
      Result(status, a, w, v, x);
    }
  });
  Corpus.Exact("MatrixDivUsingSvd by rows and by columns", [](TResults& Result) {
    TPortableRandom random(702);
    for (const auto& [m, n] : kMatrixSizes) {
      const TDoubleList a(random.Numbers(Product(m, n), 1.0));
      const TDoubleList b(random.Numbers(static_cast<std::size_t>(m), 1.0));
      for (const bool isByRow : {true, false}) {
        TDoubleList x;
        MatrixDivUsingSvd(&a, &b, m, n, &x, isByRow);
        Result(x);
      }
    }
  });
  Corpus.Exact("FitPlaneUsingSvd, FitLineUsingSvd", [](TResults& Result) {
    TPortableRandom random(703);
    for (const std::size_t count : {2U, 3U, 4U, 9U, 50U, 1001U}) {
      const TDoubleList space(random.Numbers(3 * count, 100.0));
      const TDoubleList plane(random.Numbers(2 * count, 100.0));
      double a = 0, b = 0, c = 0, d = 0, ratio = 0;
      FitPlaneUsingSvd(&space, a, b, c, d, ratio);
      Result(a, b, c, d, ratio);
      FitLineUsingSvd(&plane, a, b, c);
      Result(a, b, c);
    }
  });
}

// Residuals of sums and products only; three equations, two unknowns.
std::optional<TDoubleList> Residuals(const TDoubleList& X) {
  return TDoubleList{X[0] * X[0] + X[1] * X[1] - 4.0, X[0] * X[1] - 1.0, X[0] + 2.0 * X[1] - 3.1};
}

std::optional<TDoubleList> Jacobian(const TDoubleList& X) {
  return TDoubleList{2.0 * X[0], 2.0 * X[1], X[1], X[0], 1.0, 2.0};
}

}  // namespace

void AddSolvers(TCorpus& Corpus) {
  AddDecompositions(Corpus);
  Corpus.Exact("TNewtonIterator, TNewtonIteratorPro", [](TResults& Result) {
    TPortableRandom random(704);
    for (int i = 0; i < 30; ++i) {
      const double x = random.Within(1.0, 3.0);
      TDoubleList own{x, random.Within(0.1, 1.0)};
      TDoubleList byDifferences = own;
      TNewtonIterator iterator(2, 3, Residuals, Jacobian, true);
      iterator.SetConvergeTor(1e-13);
      Result(iterator.CalcParam(&own), own);
      TNewtonIteratorPro pro(2, 3, Residuals);
      Result(pro.CalcParam(&byDifferences), byDifferences);
    }
  });
}

void AddInterpolators(TCorpus& Corpus) {
  Corpus.Exact("TV4Interpolator: weights, heights one by one and in a row", [](TResults& Result) {
    TPortableRandom random(801);
    for (const int count : {1, 2, 5, 40, 83}) {
      TV4Interpolator surface;
      for (int i = 0; i < count; ++i) surface.AddPoint(random.Point3D(10.0));
      surface.CalcWeights();
      Result(surface.Weights());
      std::vector<TPoint2D> places(101);
      for (TPoint2D& place : places) place = random.Point2D(12.0);
      std::vector<double> heights(places.size());
      surface.CalcZ(places, heights);
      Result(heights, surface.CalcZ(places[7].X, places[7].Y));
    }
  });
  Corpus.Exact("THermiteInterpolater", [](TResults& Result) {
    TPortableRandom random(802);
    for (const bool isLoop : {false, true}) {
      THermiteInterpolater table;
      table.BeginCurve(isLoop);
      double x = 0.0;
      for (int i = 0; i < 40; ++i) {
        x += random.Within(0.1, 2.0);
        table.AddPoint(x, random.Signed(5.0));
      }
      table.EndCurve();
      Result(table.SrcDiff());
      for (int i = 0; i < 500; ++i) Result(table.CalcY(random.Within(-1.0, x + 1.0)));
    }
  });
  Corpus.Exact("TEulerPtInterpolator", [](TResults& Result) {
    TPortableRandom random(803);
    for (int i = 0; i < 100; ++i) {
      const auto begin = TEulerPoint::FromArray(random.Point6D(3.0).ToArray());
      const TEulerPtInterpolator move(begin, TEulerPoint::FromArray(random.Point6D(3.0).ToArray()), -1);
      Result(move.Count(), move.GetWcsPt(3), move.GetWcsPtbyParam(random.Unit()));
    }
  });
  Corpus.Exact("TEulerPtInterpolator.GetWcsPtsbyParams", [](TResults& Result) {
    TPortableRandom random(805);
    const auto begin = TEulerPoint::FromArray(random.Point6D(3.0).ToArray());
    const TEulerPtInterpolator move(begin, TEulerPoint::FromArray(random.Point6D(3.0).ToArray()), 5);
    std::vector<double> params(101);
    for (double& param : params) param = random.Within(-0.1, 1.1);
    std::vector<TEulerPoint> poses(params.size());
    move.GetWcsPtsbyParams(params, poses);
    for (const TEulerPoint& pose : poses) Result(pose);
  });
  Corpus.Inherited("TWcsPtInterpolator.GetWcsPtsbyParams", [](TResults& Result) {
    TPortableRandom random(806);
    TPoint6D begin = random.Point6D(3.0), end = random.Point6D(3.0);
    begin.SetVector(random.Direction());
    end.SetVector(random.Direction());
    std::vector<double> params(101);
    for (double& param : params) param = random.Within(-0.1, 1.1);
    std::vector<TPoint6D> poses(params.size());
    for (const int type : {0, 1}) {
      TWcsPtInterpolator(begin, end, 5, type).GetWcsPtsbyParams(params, poses);
      for (const TPoint6D& pose : poses) Result(pose);
    }
  });
  Corpus.Inherited("TWcsPtInterpolator", [](TResults& Result) {
    TPortableRandom random(804);
    for (int i = 0; i < 100; ++i) {
      TPoint6D begin = random.Point6D(3.0), end = random.Point6D(3.0);
      begin.SetVector(random.Direction());
      end.SetVector(random.Direction());
      const TWcsPtInterpolator move(begin, end, -1, i % 2);
      Result(move.Count(), move.OffSetAngle(), move.CrossVec(), move.GetWcsPt(3), move.GetWcsPtbyParam(random.Unit()));
    }
  });
}

namespace {

void Smooth(TResults& Result, TBaseLowPassFilter& Filter, std::uint64_t Seed) {
  TPortableRandom random(Seed);
  Filter.SetFsample(1000.0);
  for (const double cutOff : {300.0, 47.0, 6.5}) {
    Filter.SetFcenter(cutOff);
    Filter.Initialize(random.Signed(1.0));
    Result(Filter.Coeff());
    for (int i = 0; i < 300; ++i) Result(Filter.Filt(random.Signed(1.0)));
    std::vector<double> samples = random.Numbers(500, 1.0);
    Filter.Filt(samples, samples);
    double elapsed = 0.0;
    const double late = Filter.RandomTimeFilt(random.Signed(1.0), 0.0123, elapsed);
    Result(samples, late, elapsed);
  }
}

// At a signal as long as the filter and at shorter ones.
template <class TFilter>
void SumUp(TResults& Result, std::uint64_t Seed) {
  TPortableRandom random(Seed);
  TFilter filter;
  filter.SetFsample(1000.0);
  filter.SetFcenter(47.0);
  filter.Initialize(0.0);
  const auto order = static_cast<int>(filter.Coeff().size());
  const std::vector<double> signal = random.Numbers(filter.Coeff().size(), 1.0);
  for (const int count : {order, order / 2, 1, 0, -1}) Result(filter.CalcSimuSignalMutiply(signal, count));
}

template <class TFilter>
void AddWindow(TCorpus& Corpus, const char* Name, std::uint64_t Seed) {
  Corpus.Inherited(Name, [Seed](TResults& Result) {
    TFilter filter;
    Smooth(Result, filter, Seed);
    for (const double f : {0.0, 3.0, 6.5, 20.0, 333.0}) Result(filter.CalcAttenByF(f));
    Result(filter.CalcRouphFByAtten(0.5));
  });
}

}  // namespace

void AddSignals(TCorpus& Corpus) {
  Corpus.Exact("TAverageLowPassFilter", [](TResults& Result) {
    TAverageLowPassFilter filter;
    Smooth(Result, filter, 901);
  });
  AddWindow<THammingLowPassFilter>(Corpus, "THammingLowPassFilter", 902);
  AddWindow<TRectangleLowPassFilter>(Corpus, "TRectangleLowPassFilter", 903);
  AddWindow<TBlackmanLowPassFilter>(Corpus, "TBlackmanLowPassFilter", 904);
  Corpus.Exact("TAverageLowPassFilter.CalcSimuSignalMutiply",
               [](TResults& Result) { SumUp<TAverageLowPassFilter>(Result, 908); });
  Corpus.Inherited("CalcSimuSignalMutiply of the windows", [](TResults& Result) {
    SumUp<THammingLowPassFilter>(Result, 909);
    SumUp<TRectangleLowPassFilter>(Result, 910);
    SumUp<TBlackmanLowPassFilter>(Result, 911);
  });
  Corpus.Exact("TComplex: products, quotients, powers, magnitudes", [](TResults& Result) {
    TPortableRandom random(905);
    for (int i = 0; i < 500; ++i) {
      const TPoint2D p = random.Point2D(2.0), q = random.Point2D(2.0);
      const TComplex a{p.X, p.Y}, b{q.X, q.Y};
      Result(a + b, a - b, a * b, a / b, 0.3 * a, a.getNorm(), a.ComplexPower(i % 20));
    }
  });
  Corpus.Inherited("TComplex.getAngle, TFFT.Wn_i", [](TResults& Result) {
    TPortableRandom random(906);
    for (int i = 0; i < 500; ++i) {
      const TPoint2D p = random.Point2D(2.0);
      TComplex w;
      TFFT::Wn_i(1000, i, w, i % 2);
      Result(TComplex{p.X, p.Y}.getAngle(), w);
    }
  });
  Corpus.Exact("TFFT.getFrq", [](TResults& Result) {
    TPortableRandom random(912);
    for (const int count : {2, 3, 100, 1000}) {
      TFFT transform;
      const double step = random.Within(1e-4, 2.0);
      transform.CalFFT(random.Numbers(static_cast<std::size_t>(count), 1.0), count, step);
      for (int i = 0; i < transform.Count(); ++i) Result(transform.getFrq(i));
    }
  });
  Corpus.Inherited("TFFT: spectrum, amplitudes, phases", [](TResults& Result) {
    TPortableRandom random(907);
    for (const int count : {1, 2, 3, 8, 16, 100, 1024, 5000, 1 << 15}) {
      TFFT transform;
      transform.CalFFT(random.Numbers(static_cast<std::size_t>(count), 1.0), count, 0.001);
      for (const TComplex& bin : transform.Spectrum()) Result(bin);
      Result(transform.Amplitudes(), transform.Phases());
    }
  });
}

}  // namespace ZORBase::Test
