#include <ZORBase/ZORBaseAlg/uNewtonIterator/TNewtonIteratorPro.h>

namespace ZORBase {
namespace {

// The root of the precision of a double: with unknowns of the order of 1, cutting off the series and rounding weigh alike.
constexpr double kDifferenceStep = 1e-7;

bool Answers(const std::optional<TDoubleList>& Residuals, int EquationNum) {
  return Residuals && Residuals->Count() >= EquationNum;
}

// The derivatives of F at X, unknown after unknown; nothing where F gives fewer than EquationNum residuals.
std::optional<TDoubleList> GetJx(const TEquationFunc& F, int EquationNum, TDoubleList& X) {
  const std::optional<TDoubleList> atX = F ? F(X) : std::nullopt;
  if (!Answers(atX, EquationNum)) return std::nullopt;
  TDoubleList derivatives;
  derivatives.Reserve(X.size() * static_cast<std::size_t>(EquationNum));
  for (int i = 0; i < X.Count(); ++i) {
    X[i] += kDifferenceStep;
    const std::optional<TDoubleList> beside = F(X);
    if (!Answers(beside, EquationNum)) return std::nullopt;
    for (int r = 0; r < EquationNum; ++r) derivatives.Add(((*beside)[r] - (*atX)[r]) / kDifferenceStep);
    X[i] -= kDifferenceStep;  // not always the very number it was: intended, and what follows starts from there
  }
  return derivatives;
}

TEquationFunc JacobianOf(const TEquationFunc& F, int EquationNum) {
  return [F, EquationNum](const TDoubleList& X) {
    TDoubleList moved = X;
    return GetJx(F, EquationNum, moved);
  };
}

}  // namespace

// The function is kept twice. NOLINTNEXTLINE(performance-unnecessary-value-param)
TNewtonIteratorPro::TNewtonIteratorPro(int ParamNum, int EquationNum, TEquationFunc ErrFunc)
    : TNewtonIterator(ParamNum, EquationNum, ErrFunc, JacobianOf(ErrFunc, EquationNum), false) {}

std::optional<TDoubleList> TNewtonIteratorPro::CalcJacobian(TDoubleList& X) const {
  return GetJx(ErrFunc(), EquationNum(), X);
}

}  // namespace ZORBase
