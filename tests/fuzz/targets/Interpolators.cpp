// Steps between poses, and a table of values. Input: a count, the kind of turn, the longest step and turn, a parameter, two poses, then
// x and y of the table.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORBaseAlg/uHermiteInterpolater.h>
#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>

#include <optional>

namespace ZORBase::Test::FuzzInterpolators {
namespace {

// A move may have 2^31 - 1 steps. Here few of them are listed and written, for speed.
constexpr int kMostListed = 2000;

constexpr int kMostRows = 64;

template <class TInterpolator>
void Use(TInterpolator& Steps, int Count, double Param) {
  Require(Steps.Count() >= 1, "a move has a step");
  Steps.GetWcsPt(Count);
  Attempt([&] { Steps.GetWcsPtbyParam(Param); });
  Attempt([&] { Steps.SetCount(Count); });
  Steps.GetWcsPt(Steps.Count() / 2);
  const TFuzzFolder folder;
  if (Steps.Count() <= kMostListed) Steps.SaveAllToFile(TFuzzFolder::File("steps.txt"));
}

void UseTable(TFuzzInput& Input, bool IsLoop, double Param) {
  THermiteInterpolater table;
  Attempt([&] { table.CalcY(Param); });
  Attempt([&] { table.BeginCurve(IsLoop); });
  for (int i = 0; i < kMostRows && !Input.AtEnd(); ++i) {
    const TPoint2D row = Input.Point2D();
    Attempt([&] { table.AddPoint(row.X, row.Y); });
  }
  Attempt([&] { table.EndCurve(); });
  Attempt([&] { table.CalcY(Param); });
}

}  // namespace

ZORBASE_FUZZ_TARGET(Interpolators) {
  const int count = Input.Int();
  const int kind = Input.Int();
  const double maxStep = Input.Number();
  const double maxTurn = Input.Number();
  const double param = Input.Number();
  const TPoint6D begin = Input.Pose();
  const TPoint6D end = Input.Pose();
  Attempt([&] {
    TWcsPtInterpolator steps(begin, end, count, kind);
    Use(steps, count, param);
  });
  Attempt([&] {
    TWcsPtInterpolator steps(begin, end, maxStep, maxTurn, kind);
    Use(steps, kind, param);
  });
  Attempt([&] {
    TEulerPtInterpolator steps(TEulerPoint::FromArray(begin.ToArray()), TEulerPoint::FromArray(end.ToArray()), maxStep,
                               maxTurn);
    Use(steps, count, param);
    if (steps.Count() <= kMostListed) steps.GetWcsList();
  });
  UseTable(Input, count % 2 == 1, param);
}

}  // namespace ZORBase::Test::FuzzInterpolators
