// AlignedDoubles: work space for kernels.
#pragma once

#include <cstddef>
#include <memory>
#include <new>

namespace ZORBase {

struct TAlignedDelete {
  void operator()(double* Values) const { ::operator delete (Values, std::align_val_t{64}); }
};

/// Numbers on cache lines of their own.
using TAlignedDoubles = std::unique_ptr<double[], TAlignedDelete>;

/// \return Count numbers, uninitialised. Throws std::bad_alloc.
inline TAlignedDoubles AllocateDoubles(std::size_t Count) {
  return TAlignedDoubles(static_cast<double*>(::operator new (Count * sizeof(double), std::align_val_t{64})));
}

}  // namespace ZORBase
