#include <ZORBase/common/Cadtypes/TBezierSegment2D.h>

namespace ZORBase {

void TBezierSegment2D::EvalPoint(double T, TPoint2D& APoint, TPoint2D& ADer1, TPoint2D& ADer2) const {
  // The Bernstein form keeps the end points exact: B(0) = P0 and B(1) = P3.
  const double r = 1.0 - T;
  const TPoint2D point = P0 * (r * r * r) + P1 * (3.0 * r * r * T) + P2 * (3.0 * r * T * T) + P3 * (T * T * T);
  const TPoint2D der1 = (P1 - P0) * (3.0 * r * r) + (P2 - P1) * (6.0 * r * T) + (P3 - P2) * (3.0 * T * T);
  const TPoint2D der2 = (P2 - P1 * 2.0 + P0) * (6.0 * r) + (P3 - P2 * 2.0 + P1) * (6.0 * T);
  APoint = point;
  ADer1 = der1;
  ADer2 = der2;
}

void TBezierSegment2D::EvalPoint(double T, TPoint2D& APoint, TPoint2D& ADer1, TPoint2D& ADer2, TPoint2D& ADer3) const {
  const TPoint2D der3 = (P3 - P0 - (P2 - P1) * 3.0) * 6.0;
  EvalPoint(T, APoint, ADer1, ADer2);
  ADer3 = der3;
}

}  // namespace ZORBase
