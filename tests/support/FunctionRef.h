// FunctionRef: what takes a callable by reference, as one type for all.
#pragma once

#include <concepts>
#include <utility>

namespace ZORBase::Test {

template <class TSignature>
class TFunctionRef;

/// Refers to a callable, which has to live as long. What takes it is compiled once, and not again for each lambda; the compiler makes
/// far less of it than of a std::function.
template <class TResult, class... TArgs>
class TFunctionRef<TResult(TArgs...)> {
 public:
  /// What Function returns is converted to TResult.
  template <class TFunction>
  requires std::invocable<const TFunction&, TArgs...> TFunctionRef(
      const TFunction& Function)  // NOLINT(google-explicit-constructor): a lambda is a function
      : FFunction(&Function), FCall([](const void* AFunction, TArgs... Args) {
          return static_cast<TResult>((*static_cast<const TFunction*>(AFunction))(std::forward<TArgs>(Args)...));
        }) {}

  TResult operator()(TArgs... Args) const { return FCall(FFunction, std::forward<TArgs>(Args)...); }

 private:
  const void* FFunction;
  TResult (*FCall)(const void*, TArgs...);
};

}  // namespace ZORBase::Test
