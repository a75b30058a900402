// ZORBase: everything in one include. See the headers for what each module offers.
#pragma once

#include <ZORBase/Package.h>
#include <ZORBase/Version.h>
#include <ZORBase/ZORBaseAlg/LowPassFilter.h>
#include <ZORBase/ZORBaseAlg/uBezierHelper.h>
#include <ZORBase/ZORBaseAlg/uFFT.h>
#include <ZORBase/ZORBaseAlg/uHermiteInterpolater.h>
#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>
#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>
#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>
#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <ZORBase/ZORGeometry/CADTypesEuler.h>
#include <ZORBase/ZORGeometry/CADTypesXD.h>
#include <ZORBase/ZORGeometry/NurbsGeometry.h>
#include <ZORBase/common/BaseServices.h>
#include <ZORBase/common/Cadtypes.h>
#include <ZORBase/common/SysInit.h>
#include <ZORBase/common/uZORCommon.h>
