#include <ZORBase/ZORBaseAlg/uNewtonIterator/TNewtonIterator.h>

#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <ZORBase/common/BaseServices/NumberText.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <utility>

namespace ZORBase {
namespace {

constexpr double kUsualTolerance = 0.001;

// Where the assertions stand for whoever reads their text.
constexpr std::string_view kSource = "ZORBaseAlg\\uNewtonIterator";
constexpr int kLineOfCreate = 230;
constexpr int kLineOfSetConvergeTor = 252;

int CheckedParamNum(int ParamNum, int EquationNum) {
  if (ParamNum < 1 || EquationNum < 1 || ParamNum > EquationNum) {
    RaiseAssertion("TNewtonIterator Input Err", kSource, kLineOfCreate);
  }
  if (std::int64_t{ParamNum} * EquationNum > std::numeric_limits<int>::max()) {
    RaiseGeneralError(
        Format1033("TNewtonIterator: %d unknowns and %d equations have more derivatives than a list holds", ParamNum,
                   EquationNum));
  }
  return ParamNum;
}

std::optional<TDoubleList> Call(const TEquationFunc& Func, const TDoubleList& X) {
  return Func ? Func(X) : std::nullopt;
}

bool HasCount(const std::optional<TDoubleList>& List, int Count) { return List && List->Count() == Count; }

// "Name " and the values, each followed by two blanks.
std::string ValuesLine(std::string_view Name, const TDoubleList& Values) {
  std::string line(Name);
  line += ' ';
  for (const double value : Values) {
    AppendFixed(line, value, 5, nfLocale);
    line += "  ";
  }
  return line;
}

}  // namespace

// The state of one run.
struct TNewtonIterator::TRun {
  TDoubleList X;
  int Steps = 0;
  std::optional<TDoubleList> Fx;  // nothing while there is no list of the right length
  std::optional<TDoubleList> Jx;
  TDoubleList dX;
};

TNewtonIterator::TNewtonIterator(int ParamNum, int EquationNum, TEquationFunc ErrFunc, TEquationFunc JacobFunc,
                                 bool ReadByRow)
    : FParamNum(CheckedParamNum(ParamNum, EquationNum)),
      FEquationNum(EquationNum),
      FErrFunc(std::move(ErrFunc)),
      FJacobFunc(std::move(JacobFunc)),
      FReadByRow(ReadByRow),
      FConvergeTor(static_cast<std::size_t>(ParamNum), kUsualTolerance) {}

TNewtonIterator::~TNewtonIterator() = default;
TNewtonIterator::TNewtonIterator(TNewtonIterator&&) noexcept = default;
TNewtonIterator& TNewtonIterator::operator=(TNewtonIterator&&) noexcept = default;

void TNewtonIterator::SetConvergeTor(double AConvergeTor) {
  std::fill(FConvergeTor.begin(), FConvergeTor.end(), AConvergeTor);
}

void TNewtonIterator::SetConvergeTor(std::optional<TDoubleList> AConvergeTor) {
  if (!HasCount(AConvergeTor, static_cast<int>(FConvergeTor.size()))) {
    RaiseAssertion("TNewtonIterator.SetConvergeTor Err", kSource, kLineOfSetConvergeTor);
  }
  std::copy(AConvergeTor->begin(), AConvergeTor->end(), FConvergeTor.begin());
}

void TNewtonIterator::SetLogger(TLogProc AProc) {
  if (AProc) FLogger = std::move(AProc);
}

void TNewtonIterator::AddLog(const std::string& Message) const {
  if (FLogger) FLogger(Message);
}

bool TNewtonIterator::CalcParam(TDoubleList* XList) {
  if (XList == nullptr || XList->Count() != FParamNum) {
    AddLog("TNewtonIterator.CalcParam Input Param Err");
    return false;
  }
  AddLog(Format("牛顿求解未知数个数，方程数分别为：%d，%d", FParamNum, FEquationNum));
  TRun run;
  run.X = *XList;
  const bool isSolved = Iterate(run);
  if (isSolved) std::copy(run.X.begin(), run.X.end(), XList->begin());
  LogEnd(run);
  return isSolved;
}

// Steps until they are small or there were too many. \return false for a step that cannot be computed.
bool TNewtonIterator::Iterate(TRun& Run) const {
  do {
    if (!Step(Run)) return false;
    if (IsConverged(Run.dX)) return true;
  } while (Run.Steps != FIterMaxNum);
  AddLog("CheckErr Exceed Max IterNum");
  return true;
}

bool TNewtonIterator::Step(TRun& Run) const {
  if (!Evaluate(Run)) {
    AddLog("TNewtonIterator.CalcParam Fx or Jx Fail");
    return false;
  }
  Run.dX.Clear();
  if (!MatrixDivUsingSvd(&*Run.Jx, &*Run.Fx, FEquationNum, FParamNum, &Run.dX, FReadByRow)) {
    AddLog("MatrixDivUsingSvd Fail");
    return false;
  }
  for (int i = 0; i < FParamNum; ++i) Run.X[i] -= Run.dX[i];
  ++Run.Steps;
  return true;
}

// F, and J unless F failed.
bool TNewtonIterator::Evaluate(TRun& Run) const {
  Run.Fx = Call(FErrFunc, Run.X);
  if (!HasCount(Run.Fx, FEquationNum)) {
    Run.Fx.reset();
    AddLog("求解方程输入错误");
    return false;
  }
  Run.Jx = CalcJacobian(Run.X);
  if (!HasCount(Run.Jx, FEquationNum * FParamNum)) {
    AddLog("雅各比矩阵输入错误");
    return false;
  }
  return true;
}

std::optional<TDoubleList> TNewtonIterator::CalcJacobian(TDoubleList& X) const { return Call(FJacobFunc, X); }

bool TNewtonIterator::IsConverged(const TDoubleList& dX) const {
  return std::equal(dX.begin(), dX.end(), FConvergeTor.begin(),
                    [](double Step, double Tolerance) { return std::fabs(Step) < Tolerance; });
}

void TNewtonIterator::LogEnd(const TRun& Run) const {
  AddLog(Format("迭代次数为：%d", Run.Steps));
  AddLog(ValuesLine("Fx", Run.Fx.value_or(TDoubleList())));
  AddLog(ValuesLine("FxDivJx", Run.dX));
}

}  // namespace ZORBase
