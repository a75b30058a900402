#pragma once

#include <ZORBase/ZORBaseAlg/uNewtonIterator/TNewtonIterator.h>

namespace ZORBase {

/// A Newton iterator that needs no Jacobian from the caller: it takes forward differences with the step 1e-7, the same absolute
/// step for every unknown. Scale the unknowns so that they are of the order of 1: far larger ones swallow the step. A step costs
/// P + 2 evaluations of F.
class ZORBASE_API TNewtonIteratorPro : public TNewtonIterator {
 public:
  /// As TNewtonIterator; JacobFunc is GetJx at a copy of X, and ReadByRow is false.
  TNewtonIteratorPro(int ParamNum, int EquationNum, TEquationFunc ErrFunc);

 protected:
  std::optional<TDoubleList> CalcJacobian(TDoubleList& X) const override;
};

}  // namespace ZORBase
