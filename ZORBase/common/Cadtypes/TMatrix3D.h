#pragma once

#include <ZORBase/common/Cadtypes/TPoint3D.h>
#include <ZORBase/common/Export.h>

#include <array>

namespace ZORBase {

/// A rotation of space, as a 3 x 3 matrix; all zero by default.
struct ZORBASE_API TMatrix3D {
  std::array<std::array<double, 3>, 3> fm{};  ///< row by row

  /// No turn.
  static constexpr TMatrix3D CreateIdent() { return {{{{1.0, 0.0, 0.0}, {0.0, 1.0, 0.0}, {0.0, 0.0, 1.0}}}}; }

  /// Composes a right-handed rotation by AAngle radians about AAxis into the matrix: Transform then turns as before, and
  /// about AAxis after that. The axis need not be a unit vector; about the zero vector nothing turns.
  void RotateBy(double AAngle, const TPoint3D& AAxis);

  /// \return the vector that P becomes: the matrix times P.
  constexpr TPoint3D Transform(const TPoint3D& P) const {
    const auto row = [&](const std::array<double, 3>& Row) { return Row[0] * P.X + Row[1] * P.Y + Row[2] * P.Z; };
    return TPoint3D::Create(row(fm[0]), row(fm[1]), row(fm[2]));
  }
};

}  // namespace ZORBase
