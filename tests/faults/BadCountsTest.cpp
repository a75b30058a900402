// Every entry that takes a count or an index is given those that fit nothing, and every object is asked before there is anything in
// it: each gives a result or raises the general error, takes little memory, and comes back.
#include "faults/BadInput.h"

#include <sys/time.h>
#include <unistd.h>

namespace ZORBase::Test {
namespace {

using namespace std::chrono_literals;

TEST(TTimeLimitDeathTest, ACaseThatDoesNotComeBackEndsTheProcessAndIsNamed) {
  const auto hang = [] {
    const TTimeLimit limit("entry of 5", 20ms);
    for (;;) ::pause();
  };
  EXPECT_DEATH(hang(), "took too long: entry of 5\n");
}

TEST(TTimeLimit, ACaseThatComesBackInTimeIsNotEndedLater) {
  const auto isTimerRunning = [] {
    itimerval timer{};
    EXPECT_EQ(::getitimer(ITIMER_REAL, &timer), 0);
    return timer.it_value.tv_sec != 0 || timer.it_value.tv_usec != 0;
  };
  {
    const TTimeLimit limit("entry of 5");
    EXPECT_TRUE(isTimerRunning());
  }
  EXPECT_FALSE(isTimerRunning());
}

TEST(BadCounts, GiveAResultOrTheGeneralErrorInLittleMemory) {
  const TCountEntries entries = {
      {"TList index", [](int n) { static_cast<void>(ListWith(1)[n]); }},
      {"TList::Insert", [](int n) { ListWith(1).Insert(n, 2.0); }},
      {"TList::Delete", [](int n) { ListWith(1).Delete(n); }},
      {"TPoint6D::Items", [](int n) { static_cast<void>(PoseAt(1, 1).Items(n)); }},
      {"TPoint6D::ToString1033", [](int n) { PoseAt(1, 1).ToString1033(n); }},
      {"TEulerPoint::ToString1033", [](int n) { TEulerPoint().ToString1033(n); }},
      {"TMatrix4D::RoundTo", [](int n) { MatrixWith(1).RoundTo(n); }},
      {"TMatrix4D::GetRowVector", [](int n) { MatrixWith(1).GetRowVector(static_cast<std::uint8_t>(n)); }},
      {"TQuaternion::Variable", [](int n) { static_cast<void>(TQuaternion::Create(1, 0, 0, 0).Variable(n)); }},
      {"TPointXD::Create", [](int n) { TPointXD::Create(n).Normal(); }},
      {"TNurbs6D::CreateByCtlPoints",
       [](int n) { TNurbs6D().CreateByCtlPoints(std::vector<double>(9, 0.5), PosesWith(1), n); }},
      {"TNurbs6D::SolveTridiagonal",
       [](int n) {
         std::vector<TPoint6D> points(8);
         TNurbs6D::SolveTridiagonal(n, PosesWith(1), std::vector<double>(12, 0.5), points);
       }},
      {"TNurbs6D::SpanBezier", [](int n) { FittedCurve().SpanBezier(n); }},
      {"TNurbsBasicFunc::Items", [](int n) { FittedCurve().BasicFun().Items(n); }},
      {"TNurbsBasicFunc::BasicFuns",
       [](int n) {
         std::array<double, 4> values{};
         FittedCurve().BasicFun().BasicFuns(n, 0.5, values);
       }},
      {"MatrixDivUsingSvd, M",
       [](int n) {
         const TDoubleList a = ListWith(1);
         TDoubleList x = ListWith(1);
         MatrixDivUsingSvd(&a, &a, n, 3, &x, true);
       }},
      {"MatrixDivUsingSvd, N",
       [](int n) {
         const TDoubleList a = ListWith(1);
         TDoubleList x = ListWith(1);
         MatrixDivUsingSvd(&a, &a, 1, n, &x, false);
       }},
      {"TNewtonIterator", [](int n) { TNewtonIterator(n, n, &Square, &Square, true); }},
      {"TWcsPtInterpolator", [](int n) { TWcsPtInterpolator(PoseAt(0, 0), PoseAt(1, 0), n, n).GetWcsPt(n); }},
      {"TEulerPtInterpolator",
       [](int n) { TEulerPtInterpolator(TEulerPoint(), TEulerPoint::Create(1, 0, 0, 0, 0, 0), n).GetWcsPt(n); }},
      {"TFFT::CalFFT", [](int n) { TFFT().CalFFT(ListWith(1), n, 0.5); }},
      {"TFFT::FFT", [](int n) { TFFT().FFT(ListWith(1), n); }},
      {"TFFT::getAmp", [](int n) { TFFT().getAmp(n); }},
      {"TFFT::Wn_i",
       [](int n) {
         TComplex w;
         TFFT::Wn_i(n, n, w, n);
       }},
      {"TLowPassWindowFilter order",
       [](int n) {
         THammingLowPassFilter filter;
         filter.SetFsample(148);
         filter.SetFcenter(15);
         filter.SetFilterOrder(n);
         filter.Initialize(0);
         filter.CalcSimuSignalMutiply(ListWith(1), n);
       }},
      {"TNumeric::GaussQuadrature",
       [](int n) { TNumeric::GaussQuadrature([](double x) { return x; }, TGeInterval::Create(0, 1, 1e-6), n); }},
      {"AppendFixed",
       [](int n) {
         std::string text;
         AppendFixed(text, 0.1, n);
       }},
  };
  ExpectAnAnswer("counts", entries, kBadCounts);
}

TEST(BadCounts, NothingAtAllGivesAResultOrTheGeneralError) {
  const TCountEntries entries = {
      {"TNurbs6D", [](int) { TNurbs6D().EvalPoint(0.5); }},
      {"TNurbs6D::CreateCross", [](int) { TNurbs6D().CreateCross(nullptr, mChord); }},
      {"TNurbs6D::ClosestPoint", [](int) { TNurbs6D().ClosestPoint(TPoint6D()); }},
      {"TNurbs6D::GetNearestPoint",
       [](int) {
         double param = 0;
         TNurbs6D().GetNearestPoint(TPoint6D(), 1, param);
       }},
      {"TNurbs6D::Reverse", [](int) { TNurbs6D().Reverse(); }},
      {"TTWoDerivCurveXD", [](int) { TTWoDerivCurveXD().CreateCorss({}); }},
      {"TV4Interpolator", [](int) { TV4Interpolator().CalcWeights(); }},
      {"THermiteInterpolater", [](int) { THermiteInterpolater().EndCurve(); }},
      {"MatrixDivUsingSvd", [](int) { MatrixDivUsingSvd(nullptr, nullptr, 1, 1, nullptr, true); }},
      {"FitLineUsingSvd",
       [](int) {
         TDoubleList none;
         FitLineUsingSvd(&none, &none);
       }},
      {"TFFT", [](int) { TFFT().CalFFT({}, 0, 1); }},
      {"TAverageLowPassFilter", [](int) { TAverageLowPassFilter().Filt(1.0); }},
      {"TPoint6D::Parse1033", [](int) { TPoint6D::Parse1033(""); }},
      {"TPoint6DList::LoadFromFile", [](int) { TPoint6DList().LoadFromFile(""); }},
  };
  ExpectAnAnswer("nothing at all", entries, std::array{0});
}

}  // namespace
}  // namespace ZORBase::Test
