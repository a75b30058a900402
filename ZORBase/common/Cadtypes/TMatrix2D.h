#pragma once

#include <ZORBase/common/Cadtypes/TPoint2D.h>

namespace ZORBase {

/// An affine transform of the plane: P -> (m00 x + m01 y + tx, m10 x + m11 y + ty). All zero by default.
struct TMatrix2D {
  ///@{
  /// An entry, by its name in the formula above.
  double m00 = 0.0;
  double m01 = 0.0;
  double m10 = 0.0;
  double m11 = 0.0;
  double tx = 0.0;
  double ty = 0.0;
  ///@}

  /// The transform with these entries.
  static constexpr TMatrix2D Create(double m00, double m01, double m10, double m11, double tx, double ty) {
    return {m00, m01, m10, m11, tx, ty};
  }
  /// No turn and no shift.
  static constexpr TMatrix2D CreateIdent() { return {1.0, 0.0, 0.0, 1.0, 0.0, 0.0}; }

  /// \return what the point P becomes.
  constexpr TPoint2D Transform(const TPoint2D& P) const {
    return {m00 * P.X + m01 * P.Y + tx, m10 * P.X + m11 * P.Y + ty};
  }
};

}  // namespace ZORBase
