// uBezierHelper: continuity of plane cubic Bezier segments where they meet.
//   TBezierSegmentHelper      tangent and curvature of a segment, tests of a joint
//   TransferU1U2U3ToS1S2S3    derivatives with respect to the parameter -> with respect to arc length
//   CheckSameVec              tolerant equality of two vectors
#pragma once

#include <ZORBase/common/Cadtypes/TBezierSegment2D.h>
#include <ZORBase/common/Cadtypes/TPoint2D.h>
#include <ZORBase/common/Export.h>

namespace ZORBase {

/// \return whether the directions of A and B agree within 1e-6 radians and, where CheckMag asks for it, their lengths within
///         1e-6. Vectors shorter than 1e-12 equal each other and nothing else.
ZORBASE_API bool CheckSameVec(const TPoint2D& A, const TPoint2D& B, bool CheckMag);

/// Turns the first three derivatives of a plane curve with respect to its parameter into those with respect to arc length: S1
/// is the unit tangent, S2 the curvature vector. Where U1 is shorter than 1e-7, U2 stands in for it; where that is so as well,
/// all three are zero.
ZORBASE_API void TransferU1U2U3ToS1S2S3(const TPoint2D& U1, const TPoint2D& U2, const TPoint2D& U3, TPoint2D& S1,
                                        TPoint2D& S2, TPoint2D& S3);

/// What the curves add to TBezierSegment2D.
struct ZORBASE_API TBezierSegmentHelper {
  /// Gives the unit tangent V1 and the curvature vector V2 at Param. Allocates nothing, takes no lock.
  static void EvalDerVector(const TBezierSegment2D& Segment, double Param, TPoint2D& V1, TPoint2D& V2);
  /// \return whether the tangent at the end of Segment agrees with that at the start of ABezier.
  static bool IsG1Continue(const TBezierSegment2D& Segment, const TBezierSegment2D& ABezier);
  /// \return whether tangent and curvature vector agree there.
  static bool IsG2Continue(const TBezierSegment2D& Segment, const TBezierSegment2D& ABezier);
};

namespace uBezierHelper {
ZORBASE_API void initialization();
ZORBASE_API void Finalization();
}  // namespace uBezierHelper

}  // namespace ZORBase
