// Handles: the objects behind the opaque pointers of several files. Internal.
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <ZORBase/capi/zorbase/poses.h>

struct zorbase_poses {
  ZORBase::TPoint6DList Value;
};
