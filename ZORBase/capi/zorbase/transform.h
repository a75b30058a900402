/* transform.h: transforms of points and poses, and rotations and poses blended into each other. */
#pragma once

#include <ZORBase/capi/zorbase/poses.h>

/* NOLINTBEGIN(modernize-*) */
ZORBASE_BEGIN_C

/** A transform: row i is R[i][0], R[i][1], R[i][2], t[i]. A point p goes to R p + t, a direction v to R v. */
typedef struct zorbase_matrix {
  double m[3][4]; /**< three rows of R and t */
} zorbase_matrix;

/** A quaternion, the real part first. A unit one is a rotation; q and -q are the same one. */
typedef struct zorbase_quaternion {
  double a; /**< the real part */
  double b; /**< with i */
  double c; /**< with j */
  double d; /**< with k */
} zorbase_quaternion;

/* ---------------------------------------------------------------------------------------------- transforms */

/** Gives the identity. */
ZORBASE_API zorbase_status zorbase_matrix_identity(zorbase_matrix* result) ZORBASE_NOEXCEPT;

/** Gives the transform with the translation (x, y, z) and the rotation by the angles rx, ry, rz. The order xyz is R =
 *  Rx(rx) Ry(ry) Rz(rz), the order zyx is R = Rz(rz) Ry(ry) Rx(rx). */
ZORBASE_API zorbase_status zorbase_matrix_from_angles_xyz(const zorbase_euler_pose* angles,
                                                          zorbase_matrix* result) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_matrix_from_angles_zyx(const zorbase_euler_pose* angles,
                                                          zorbase_matrix* result) ZORBASE_NOEXCEPT;

/** Give the translation and the angles from which the call above makes this transform again. Angles lie in (-pi, pi];
 *  where ry is +-pi/2, rx is 0. */
ZORBASE_API zorbase_status zorbase_matrix_to_angles_xyz(const zorbase_matrix* matrix,
                                                        zorbase_euler_pose* angles) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_matrix_to_angles_zyx(const zorbase_matrix* matrix,
                                                        zorbase_euler_pose* angles) ZORBASE_NOEXCEPT;

/** Gives the right-handed rotation about an axis, which need not be a unit vector but must not be zero. */
ZORBASE_API zorbase_status zorbase_matrix_from_axis_angle(const zorbase_point* axis, double angle,
                                                          zorbase_matrix* result) ZORBASE_NOEXCEPT;

/** Gives the rotation that turns one vector onto another the shortest way. ZORBASE_ERROR unless they are equally long,
 *  within 1e-4 of the squares, and longer than 0.01. Opposite vectors give the point reflection, which is no rotation.
 *  */
ZORBASE_API zorbase_status zorbase_matrix_from_vectors(const zorbase_point* from, const zorbase_point* to,
                                                       zorbase_matrix* result) ZORBASE_NOEXCEPT;

/** Gives the composition: right first, then left. A factor within 1e-6 of the identity is taken for it. The result may
 *  be one of the factors. */
ZORBASE_API zorbase_status zorbase_matrix_multiply(const zorbase_matrix* left, const zorbase_matrix* right,
                                                   zorbase_matrix* result) ZORBASE_NOEXCEPT;

/** Gives the inverse. ZORBASE_ERROR where the determinant is at most 1e-6. The result may be the matrix itself. */
ZORBASE_API zorbase_status zorbase_matrix_invert(const zorbase_matrix* matrix, zorbase_matrix* result) ZORBASE_NOEXCEPT;

/** Transform points, directions and poses, whose position is a point and whose direction a direction. One with a
 *  coordinate above 1e10 passes untouched. The results may be the items themselves, but must not overlap them in
 *  another way. */
ZORBASE_API zorbase_status zorbase_matrix_transform_points(const zorbase_matrix* matrix, const zorbase_point* points,
                                                           size_t count, zorbase_point* results) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_matrix_transform_directions(const zorbase_matrix* matrix,
                                                               const zorbase_point* directions, size_t count,
                                                               zorbase_point* results) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_matrix_transform_poses(const zorbase_matrix* matrix, const zorbase_pose* poses,
                                                          size_t count, zorbase_pose* results) ZORBASE_NOEXCEPT;

/** Gives the angle of the rotation that leads from one transform to the other, 0 to pi. Translations do not count. */
ZORBASE_API zorbase_status zorbase_matrix_angle(const zorbase_matrix* from, const zorbase_matrix* to,
                                                double* angle) ZORBASE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------- quaternions */

/** Gives the quaternion of the rotation of a transform. Its real part may be negative. */
ZORBASE_API zorbase_status zorbase_quaternion_from_matrix(const zorbase_matrix* matrix,
                                                          zorbase_quaternion* result) ZORBASE_NOEXCEPT;

/** Gives the rotation of a quaternion, which is taken as a unit one. */
ZORBASE_API zorbase_status zorbase_quaternion_to_matrix(const zorbase_quaternion* quaternion,
                                                        zorbase_matrix* result) ZORBASE_NOEXCEPT;

/** Gives the product: the rotation right, then left. The result may be one of the factors. */
ZORBASE_API zorbase_status zorbase_quaternion_multiply(const zorbase_quaternion* left, const zorbase_quaternion* right,
                                                       zorbase_quaternion* result) ZORBASE_NOEXCEPT;

/** Gives half the angle between two rotations, 0 to pi/2. ZORBASE_ERROR where it is no number. */
ZORBASE_API zorbase_status zorbase_quaternion_angle(const zorbase_quaternion* from, const zorbase_quaternion* to,
                                                    double* angle) ZORBASE_NOEXCEPT;

/* ---------------------------------------------------------------------------------------------- blends */

/* All blends take t from 0, the first, to 1, the second, clamped to that range, and go the short way round. An nlerp is
 *  cheap and
 * a little slower at its ends, an slerp turns at constant speed, a squad is a smooth curve from q1 to q2 shaped by
 * their neighbours q0 and q3. Those of transforms blend the translation linearly. ZORBASE_ERROR where the arguments are
 * no rotations: zero or not finite. The calls for many t give in results[i] the blend at t[i], the same one to the bit.
 * */

ZORBASE_API zorbase_status zorbase_quaternion_nlerp(double t, const zorbase_quaternion* q1,
                                                    const zorbase_quaternion* q2,
                                                    zorbase_quaternion* result) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_quaternion_slerp(double t, const zorbase_quaternion* q1,
                                                    const zorbase_quaternion* q2,
                                                    zorbase_quaternion* result) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_quaternion_squad(double t, const zorbase_quaternion* q0,
                                                    const zorbase_quaternion* q1, const zorbase_quaternion* q2,
                                                    const zorbase_quaternion* q3,
                                                    zorbase_quaternion* result) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_quaternion_slerp_many(const double* t, size_t count, const zorbase_quaternion* q1,
                                                         const zorbase_quaternion* q2,
                                                         zorbase_quaternion* results) ZORBASE_NOEXCEPT;

ZORBASE_API zorbase_status zorbase_matrix_nlerp(double t, const zorbase_matrix* m1, const zorbase_matrix* m2,
                                                zorbase_matrix* result) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_matrix_slerp(double t, const zorbase_matrix* m1, const zorbase_matrix* m2,
                                                zorbase_matrix* result) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_matrix_squad(double t, const zorbase_matrix* m0, const zorbase_matrix* m1,
                                                const zorbase_matrix* m2, const zorbase_matrix* m3,
                                                zorbase_matrix* result) ZORBASE_NOEXCEPT;
ZORBASE_API zorbase_status zorbase_matrix_slerp_many(const double* t, size_t count, const zorbase_matrix* m1,
                                                     const zorbase_matrix* m2,
                                                     zorbase_matrix* results) ZORBASE_NOEXCEPT;

/** Gives poses on the straight move from one pose to another: the position moves along the line, the direction turns
 *  about one axis, both in proportion to t[i], clamped to 0..1. ZORBASE_ERROR for poses that are not finite and a t
 *  that is NaN. */
ZORBASE_API zorbase_status zorbase_pose_move(const double* t, size_t count, const zorbase_pose* from,
                                             const zorbase_pose* to, zorbase_pose* results) ZORBASE_NOEXCEPT;

ZORBASE_END_C
/* NOLINTEND(modernize-*) */
