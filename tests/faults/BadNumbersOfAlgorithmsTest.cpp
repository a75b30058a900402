// Every entry of solvers, interpolators, spectra and filters that takes numbers is given those that no calculation likes: it gives a
// result or raises the general error, takes little memory, and comes back.
#include "faults/BadInput.h"

namespace ZORBase::Test {
namespace {

template <class TFilter>
void DesignAndFilter(double Fs, double Fc, double Value) {
  TFilter filter;
  filter.SetFsample(Fs);
  filter.SetFcenter(Fc);
  filter.Initialize(Value);
  filter.Filt(Value);
  double elapsed = 0.0;
  filter.RandomTimeFilt(1.0, Value, elapsed);
  filter.CalcAttenByF(Value);
  filter.CalcRouphFByAtten(Value);
}

template <class TFilter>
TFilter Designed() {
  TFilter filter;
  filter.SetFsample(148);
  filter.SetFcenter(15);
  filter.Initialize(0);
  return filter;
}

template <class TFilter>
void FilterMany(double Value) {
  const TDoubleList samples = ListWith(Value);
  std::vector<double> outputs(samples.size());
  Designed<TFilter>().Filt(samples, outputs);
}

template <class TFilter>
void FilterAtTimes(double Value, double DeltaT) {
  std::array<double, 9> outputs{};
  Designed<TFilter>().RandomTimeFilt(Value, DeltaT, outputs);
}

TNumberEntries SolverEntries() {
  return {
      {"MatrixDivUsingSvd",
       [](double v) {
         const TDoubleList a = ListWith(v);
         TDoubleList x = ListWith(v);
         while (x.Count() > 3) x.Delete(0);
         MatrixDivUsingSvd(&a, &x, 3, 3, &x, true);
       }},
      {"FitPlaneUsingSvd",
       [](double v) {
         TDoubleList list = ListWith(v);
         FitPlaneUsingSvd(&list, &list);
       }},
      {"FitPlaneUsingSvd, ratio",
       [](double v) {
         const TDoubleList list = ListWith(v);
         double a = 0, b = 0, c = 0, d = 0, ratio = 0;
         FitPlaneUsingSvd(&list, a, b, c, d, ratio);
       }},
      {"FitLineUsingSvd",
       [](double v) {
         TDoubleList list = ListWith(v);
         list.Add(v);
         FitLineUsingSvd(&list, &list);
       }},
      {"SvdDecompose, SvdBackSubstitute",
       [](double v) {
         const TDoubleList numbers = ListWith(v);
         std::vector<double> a(numbers.begin(), numbers.end());
         std::vector<double> w(3), turn(9), x(3);
         SvdDecompose(a, 3, 3, w, turn);
         SvdBackSubstitute(a, w, turn, 3, 3, std::array{v, 1.0, v}, x);
       }},
      {"TV4Interpolator",
       [](double v) {
         TV4Interpolator surface;
         surface.AddPoint(0, 0, 1);
         surface.AddPoint(1, 0, 2);
         surface.AddPoint(0, 1, v);
         surface.AddPoint(v, 1, 2);
         surface.CalcWeights();
         surface.CalcZ(v, 0.5);
       }},
      {"TV4Interpolator::CalcZ, many",
       [](double v) {
         TV4Interpolator surface;
         for (const double place : {0.0, 1.0, 3.0, 7.0}) surface.AddPoint(place, place * place, 1.0 - place);
         surface.CalcWeights();
         const std::vector<TPoint2D> places(9, TPoint2D::Create(v, 1));
         std::vector<double> heights(places.size());
         surface.CalcZ(places, heights);
       }},
      {"THermiteInterpolater",
       [](double v) {
         THermiteInterpolater table;
         table.BeginCurve(false);
         table.AddPoint(0, v);
         table.AddPoint(1, 1);
         table.AddPoint(v, 2);
         table.EndCurve();
         table.CalcY(v);
       }},
      {"TNewtonIterator",
       [](double v) {
         TNewtonIteratorPro iterator(1, 1, &Square);
         iterator.SetConvergeTor(v);
         TDoubleList x;
         x.Add(v);
         iterator.CalcParam(&x);
       }},
      {"TNewtonIterator, a tolerance for each",
       [](double v) {
         TNewtonIteratorPro iterator(1, 1, &Square);
         iterator.SetConvergeTor(TDoubleList{v});
         TDoubleList x{1.0};
         iterator.CalcParam(&x);
       }},
      {"TWcsPtInterpolator::GetWcsPtbyParam",
       [](double v) { TWcsPtInterpolator(PoseAt(0, 0), PoseAt(1, 1), 5, 0).GetWcsPtbyParam(v); }},
      {"TWcsPtInterpolator::GetWcsPtsbyParams",
       [](double v) {
         std::array<TPoint6D, 3> poses;
         TWcsPtInterpolator(PoseAt(0, 0), PoseAt(1, 1), 5, 1).GetWcsPtsbyParams(std::array{0.0, v, 0.5}, poses);
       }},
      {"TEulerPtInterpolator",
       [](double v) { TEulerPtInterpolator(TEulerPoint::Create(v, 0, 0, 0, v, 0), TEulerPoint(), 5).GetWcsPt(1); }},
      {"TEulerPtInterpolator::GetWcsPtbyParam",
       [](double v) {
         TEulerPtInterpolator(TEulerPoint(), TEulerPoint::Create(1, 0, 0, 1, 0, 0), 5).GetWcsPtbyParam(v);
       }},
      {"TEulerPtInterpolator::GetWcsPtsbyParams",
       [](double v) {
         std::array<TEulerPoint, 3> poses;
         TEulerPtInterpolator(TEulerPoint(), TEulerPoint::Create(1, 0, 0, 1, 0, 0), 5)
             .GetWcsPtsbyParams(std::array{0.0, v, 0.5}, poses);
       }},
      {"TWcsPtInterpolator",
       [](double v) { TWcsPtInterpolator(PoseAt(0, 0), PoseAt(v, 1), -1, 1).GetWcsPtbyParam(v); }},
      {"TWcsPtInterpolator, limits",
       [](double v) { TWcsPtInterpolator(PoseAt(0, 0), PoseAt(1, 1), v, v, 0).GetWcsPt(1); }},
      {"TEulerPtInterpolator, limits",
       [](double v) {
         TEulerPtInterpolator(TEulerPoint(), TEulerPoint::Create(1, 0, 0, 0.1, 0, 0), v, v).GetWcsPt(1);
       }},
      {"TFFT::CalFFT, samples", [](double v) { TFFT().CalFFT(ListWith(v), 9, 0.5); }},
      {"TFFT::CalFFT, step", [](double v) { TFFT().CalFFT(ListWith(1), 9, v); }},
      {"TFFT::FFT",
       [](double v) {
         TFFT transform;
         transform.CalFFT(ListWith(1), 9, 0.5);
         transform.FFT(ListWith(v), 8);
         transform.getPhase(1);
       }},
      {"TComplex sums, products, quotients",
       [](double v) {
         const TComplex a{v, 1.0}, b{-v, v};
         static_cast<void>((a + b) * b / a - v * b);
       }},
      {"TComplex::getNorm",
       [](double v) {
         TComplex{v, -v}.getNorm();
       }},
      {"TComplex::getAngle",
       [](double v) {
         TComplex{v, -v}.getAngle();
       }},
      {"TComplex::ComplexPower",
       [](double v) {
         TComplex{v, 1.0}.ComplexPower(9);
       }},
      {"THammingLowPassFilter, fs", [](double v) { DesignAndFilter<THammingLowPassFilter>(v, 15, 1); }},
      {"TBlackmanLowPassFilter, fc", [](double v) { DesignAndFilter<TBlackmanLowPassFilter>(148, v, 1); }},
      {"TRectangleLowPassFilter, both", [](double v) { DesignAndFilter<TRectangleLowPassFilter>(v, v, 1); }},
      {"TLowPassWindowFilter, many samples", [](double v) { FilterMany<THammingLowPassFilter>(v); }},
      {"TAverageLowPassFilter, many samples", [](double v) { FilterMany<TAverageLowPassFilter>(v); }},
      {"TLowPassWindowFilter::RandomTimeFilt, value", [](double v) { FilterAtTimes<TBlackmanLowPassFilter>(v, 0.02); }},
      {"TLowPassWindowFilter::RandomTimeFilt, time", [](double v) { FilterAtTimes<TBlackmanLowPassFilter>(1.0, v); }},
      {"TAverageLowPassFilter::RandomTimeFilt", [](double v) { FilterAtTimes<TAverageLowPassFilter>(v, v); }},
      {"TBaseLowPassFilter::Clear", [](double v) { Designed<TRectangleLowPassFilter>().Clear(v); }},
      {"TBaseLowPassFilter::CalcAttenByF", [](double v) { Designed<THammingLowPassFilter>().CalcAttenByF(v); }},
      {"TBaseLowPassFilter::CalcRouphFByAtten",
       [](double v) { Designed<THammingLowPassFilter>().CalcRouphFByAtten(v); }},
      {"TBaseLowPassFilter::CalcSimuSignalMutiply",
       [](double v) { Designed<THammingLowPassFilter>().CalcSimuSignalMutiply(ListWith(v), 9); }},
      {"TAverageLowPassFilter, samples", [](double v) { DesignAndFilter<TAverageLowPassFilter>(148, 15, v); }},
  };
}

TEST(BadNumbers, OfSolversAndSignalsGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("solvers and signals", SolverEntries(), kBadNumbers);
}

}  // namespace
}  // namespace ZORBase::Test
