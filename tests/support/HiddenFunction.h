// HiddenFunction: for the programs that put a function of their own in place of one of the C library.
#pragma once

#include <dlfcn.h>

#include <atomic>

namespace ZORBase::Test {

/// \return the function Name that this program hides, kept in Known. No function's static object, for that would be locked.
template <class TFunction>
TFunction* Hidden(std::atomic<TFunction*>& Known, const char* Name) {
  TFunction* function = Known.load(std::memory_order_relaxed);
  if (!function) {
    function = reinterpret_cast<TFunction*>(::dlsym(RTLD_NEXT, Name));
    Known.store(function, std::memory_order_relaxed);
  }
  return function;
}

}  // namespace ZORBase::Test
