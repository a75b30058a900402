// uNewtonIterator: systems of non-linear equations, as many as there are unknowns or more.
//   TNewtonIterator      Newton-Gauss steps with the caller's Jacobian
//   TNewtonIteratorPro   the same with a Jacobian by forward differences
#pragma once

#include <ZORBase/ZORBaseAlg/uNewtonIterator/TNewtonIterator.h>
#include <ZORBase/ZORBaseAlg/uNewtonIterator/TNewtonIteratorPro.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::uNewtonIterator {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::uNewtonIterator
