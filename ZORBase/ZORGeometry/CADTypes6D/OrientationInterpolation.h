// OrientationInterpolation: blends of orientations and poses.
//   NLerp   along the chord, normalised: cheap, the angular speed varies
//   SLerp   along the arc at constant angular speed
//   Squad   a smooth curve through a row of orientations
// t = 0 is the first orientation, t = 1 the second; t is clamped to [0, 1]. All of them go the short way round: where
// the dot product of two quaternions is negative, one is replaced by its negative, which is the same rotation. Matrices
// blend their rotations through quaternions and their translations linearly. Arguments are never changed.
#pragma once

#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4D.h>
#include <ZORBase/ZORGeometry/CADTypes6D/TQuaternion.h>
#include <ZORBase/common/Export.h>

#include <span>

namespace ZORBase {

// ---------------------------------------------------------------------------------------------- angles

/// \return the arc between the two on the unit sphere of quaternions, 0 to pi/2 radians: half the angle of the rotation
///         that leads from one to the other. The dot product is clamped to [-1, 1].
/// \throws the general error when the dot product is not a number: the text of ArcCos, directly followed by the
///         components of the q2 used, the dot product, and 1 where that exceeds 1, else 0. Allocates nothing, takes no lock.
ZORBASE_API double QuaternionAngle(const TQuaternion& q1, const TQuaternion& q2);

/// \return the angle of the rotation that leads from one pose to the other, 0 to pi radians. Translations do not count.
///
/// It is 2 ArcCos of the real part of a normalised quaternion. That is not clamped: one unit in the last place outside
/// [-1, 1] would raise the error of ArcCos. The normalisation keeps every finite one inside, so that only entries that
/// are no numbers get there.
/// \throws the general error of Invert for an m1 without an inverse, and that of ArcCos. Allocates nothing, takes no lock.
ZORBASE_API double MatrixAngle(const TMatrix4D& m1, const TMatrix4D& m2);

// ---------------------------------------------------------------------------------------------- blends of quaternions

/// \return q1 (1 - t) + q2 t, made a unit quaternion.
/// \throws the general error "Divided by zero: n" when that sum has a magnitude n below 1e-6, which quaternions of a
///         magnitude of 1e-5 or more never give. Allocates nothing, takes no lock.
ZORBASE_API TQuaternion NLerpQuaternion(double t, const TQuaternion& q1, const TQuaternion& q2);

/// \return q1 sin((1 - t) angle) / sin(angle) + q2 sin(t angle) / sin(angle), not normalised; NLerpQuaternion for an
///         angle of at most 1e-6. The angle is QuaternionAngle(q1, q2).
/// \throws the general errors of QuaternionAngle and NLerpQuaternion. Allocates nothing, takes no lock.
ZORBASE_API TQuaternion SLerpQuaternion(double t, const TQuaternion& q1, const TQuaternion& q2);

/// The spline from q1 to q2, shaped by the neighbours q0 before and q3 after them: with spans that share their
/// neighbours the angular velocity is continuous from span to span.
/// \return SLerp(2 t (1 - t), SLerp(t, q1, q2), SLerp(t, s1, s2)) with the inner control orientations s1 and s2. Signs
///         follow q0, so that t = 0 may give -q1 and t = 1 may give -q2. For t outside [0, 1] the outer weight is
///         clamped to 0.
/// \throws the general errors of TQuaternion::Log and SLerpQuaternion. Allocates nothing, takes no lock.
ZORBASE_API TQuaternion SquadQuaternion(double t, const TQuaternion& q0, const TQuaternion& q1, const TQuaternion& q2,
                                        const TQuaternion& q3);

// ---------------------------------------------------------------------------------------------- blends of poses

/// The pose at t between two. \throws the general errors of the quaternion's blend. Allocates nothing, takes no lock.
ZORBASE_API TMatrix4D NLerp4DMatrix(double t, const TMatrix4D& m1, const TMatrix4D& m2);
ZORBASE_API TMatrix4D SLerp4DMatrix(double t, const TMatrix4D& m1, const TMatrix4D& m2);

/// The rotation follows the spline, the translation the straight line from m1 to m2; those of m0 and m3 are not used.
/// Allocates nothing, takes no lock.
ZORBASE_API TMatrix4D Squad4DMatrix(double t, const TMatrix4D& m0, const TMatrix4D& m1, const TMatrix4D& m2,
                                    const TMatrix4D& m3);

// ---------------------------------------------------------------------------------------------- many parameters

/// Results[i] is the single form's result at t[i] to the bit; what the two ends alone decide is computed once. What
/// Results has beyond the parameters stays.
/// \throws the general error when Results is shorter than t, and those of the single form; nothing is written then.
///         Allocates nothing, takes no lock.
ZORBASE_API void NLerpQuaternions(std::span<const double> t, const TQuaternion& q1, const TQuaternion& q2,
                                  std::span<TQuaternion> Results);
ZORBASE_API void SLerpQuaternions(std::span<const double> t, const TQuaternion& q1, const TQuaternion& q2,
                                  std::span<TQuaternion> Results);
ZORBASE_API void NLerp4DMatrices(std::span<const double> t, const TMatrix4D& m1, const TMatrix4D& m2,
                                 std::span<TMatrix4D> Results);
ZORBASE_API void SLerp4DMatrices(std::span<const double> t, const TMatrix4D& m1, const TMatrix4D& m2,
                                 std::span<TMatrix4D> Results);

// ---------------------------------------------------------------------------------------------- numbers

/// Exchanges the two numbers.
constexpr void SwapNumber(double& a, double& b) {
  const double before = a;
  a = b;
  b = before;
}

}  // namespace ZORBase
