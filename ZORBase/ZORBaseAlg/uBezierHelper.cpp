#include <ZORBase/ZORBaseAlg/uBezierHelper.h>

#include <ZORBase/common/Cadtypes/fEqual.h>
#include <ZORBase/common/TModuleGuard.h>

namespace ZORBase {
namespace {

constinit TModuleGuard Guard;

constexpr double kZeroLength = 1e-12;
constexpr double kAngleTolerance = 1e-6;
constexpr double kMagTolerance = 1e-6;

// A derivative shorter than this has no direction.
constexpr double kShortestDerivative = 1e-7;

// Tangent and curvature at the two sides of the joint from Segment to Next.
struct TJoint {
  TPoint2D TangentBefore, CurvatureBefore, TangentAfter, CurvatureAfter;

  TJoint(const TBezierSegment2D& Segment, const TBezierSegment2D& Next) {
    TBezierSegmentHelper::EvalDerVector(Segment, 1.0, TangentBefore, CurvatureBefore);
    TBezierSegmentHelper::EvalDerVector(Next, 0.0, TangentAfter, CurvatureAfter);
  }

  bool IsG1() const { return CheckSameVec(TangentBefore, TangentAfter, false); }
  bool IsG2() const { return IsG1() && CheckSameVec(CurvatureBefore, CurvatureAfter, true); }
};

}  // namespace

bool CheckSameVec(const TPoint2D& A, const TPoint2D& B, bool CheckMag) {
  const double magA = A.Mag();
  const double magB = B.Mag();
  const bool isZeroA = fEqual(magA, 0.0, kZeroLength);
  const bool isZeroB = fEqual(magB, 0.0, kZeroLength);
  if (isZeroA || isZeroB) return isZeroA && isZeroB;
  if (!fEqual(A.AngleBetween(B), 0.0, kAngleTolerance)) return false;
  return !CheckMag || fEqual(magA, magB, kMagTolerance);
}

void TransferU1U2U3ToS1S2S3(const TPoint2D& U1, const TPoint2D& U2, const TPoint2D& U3, TPoint2D& S1, TPoint2D& S2,
                            TPoint2D& S3) {
  TPoint2D first = U1;
  double m = U1.Mag();
  if (m < kShortestDerivative) {
    if (U2.Mag() < kShortestDerivative) {
      S1 = S2 = S3 = TPoint2D::FZero;
      return;
    }
    first = U2;
    m = U2.Mag();
  }
  const auto [x1, y1] = first;
  const auto [x2, y2] = U2;
  const auto [x3, y3] = U3;
  const double q = x1 * x1 + y1 * y1;
  const double q2 = q * q;
  // The second terms of the brackets stay apart from the first: together they would round otherwise.
  const double s3x = ((x3 * (y1 * y1) + 2.0 * x2 * y2 * y1 - x2 * y2 * y1 - x1 * y3 * y1 - x1 * (y2 * y2)) * q2 -
                      2.0 * (x2 * (y1 * y1) - x1 * y2 * y1) * q * (2.0 * x1 * x2 + 2.0 * y1 * y2)) /
                     q2 / q2 / m;
  const double s3y = ((y3 * (x1 * x1) + 2.0 * y2 * x2 * x1 - y2 * x2 * x1 - y1 * x3 * x1 - y1 * (x2 * x2)) * q2 -
                      2.0 * (y2 * (x1 * x1) - y1 * x2 * x1) * q * (2.0 * y1 * y2 + 2.0 * x1 * x2)) /
                     q2 / q2 / m;
  const TPoint2D curvature = TPoint2D::Create((x2 * y1 - y2 * x1) * y1 / q2, (y2 * x1 - x2 * y1) * x1 / q2);
  S1 = TPoint2D::Create(x1 / m, y1 / m);
  S2 = curvature;
  S3 = TPoint2D::Create(s3x, s3y);
}

void TBezierSegmentHelper::EvalDerVector(const TBezierSegment2D& Segment, double Param, TPoint2D& V1, TPoint2D& V2) {
  TPoint2D point, u1, u2, u3, s3;
  Segment.EvalPoint(Param, point, u1, u2, u3);
  TransferU1U2U3ToS1S2S3(u1, u2, u3, V1, V2, s3);
}

bool TBezierSegmentHelper::IsG1Continue(const TBezierSegment2D& Segment, const TBezierSegment2D& ABezier) {
  return TJoint(Segment, ABezier).IsG1();
}

bool TBezierSegmentHelper::IsG2Continue(const TBezierSegment2D& Segment, const TBezierSegment2D& ABezier) {
  return TJoint(Segment, ABezier).IsG2();
}

namespace uBezierHelper {
void initialization() { Guard.StartUp(); }
void Finalization() { Guard.ShutDown(); }
}  // namespace uBezierHelper

}  // namespace ZORBase
