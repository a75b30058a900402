// uSurfaceInterpolater: heights over the plane, between scattered samples.
//   TV4Interpolator   the biharmonic spline through all samples
#pragma once

#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater/TV4Interpolator.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::uSurfaceInterpolater {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::uSurfaceInterpolater
