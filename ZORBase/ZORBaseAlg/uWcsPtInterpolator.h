// uWcsPtInterpolator: the straight move between two tool poses, cut into equal steps.
//   TWcsPtInterpolator    poses with a direction, which turns about one fixed axis
//   TEulerPtInterpolator  poses with Euler angles, each of which changes linearly
#pragma once

#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator/TEulerPtInterpolator.h>
#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator/TWcsPtInterpolator.h>
#include <ZORBase/common/Export.h>

namespace ZORBase::uWcsPtInterpolator {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace ZORBase::uWcsPtInterpolator
