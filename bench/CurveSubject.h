// CurveSubject: the curves that the benchmarks of the curve, and their peers, are about.
#pragma once

#include <ZORBase/ZORBase.h>

#include <ZORGeometry/NurbsGeometry/PlainCurve.h>

#include <cstddef>
#include <string>
#include <vector>

namespace ZORBase::Bench {

/// The curve through Spans + 1 poses, about 1 apart along a wavy path, and the plain one of the same bits.
struct TCurveSubject {
  TPoint6DList Poses;
  TNurbs6D Curve;
  Test::TPlainCurve Plain;
};

/// Poses like those of path() in peers.py.
TPoint6DList WavyPath(int Count);

/// Made when it is first asked for. \throws std::logic_error when the curve and the plain one differ.
const TCurveSubject& CurveSubject(int Spans);

/// Parameters all over [0, 1): at random, the same in every run, or rising. A power of two of them.
inline constexpr std::size_t kParameters = 1U << 16U;
const std::vector<double>& RandomParameters();
const std::vector<double>& RisingParameters();

/// The sizes that are measured: numbers of spans, and of points to fit a curve through.
inline constexpr int kSpanCounts[] = {1'000, 10'000};
inline constexpr int kFitCounts[] = {100, 1'000, 10'000, 100'000};

/// "evaluate at random, 1000 spans/library"
std::string CurveBenchmarkName(const std::string& Kernel, int Size, const std::string& Who);

/// The names of the kernels.
inline const std::string kEvaluateAtRandom = "EvalPoint, random, spans:";
inline const std::string kEvaluateRising = "EvalPoints, rising, spans:";
inline const std::string kDerivatives = "CurveDerivsAlg1, random, spans:";
inline const std::string kFit = "CreateCross without its table, points:";
inline const std::string kTable = "InitLengthByUArray, a row, spans:";
inline const std::string kParamOfLength = "ParamOfLength, random, spans:";
inline const std::string kLengthOfParam = "GetSByU, random, spans:";
inline const std::string kWalk = "ParamOfLength, rising, spans:";

}  // namespace ZORBase::Bench
