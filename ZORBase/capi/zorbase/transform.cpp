#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>
#include <ZORBase/capi/Call.h>
#include <ZORBase/capi/Twins.h>

// C functions stand outside of every namespace. NOLINTBEGIN(google-build-using-namespace)
using namespace ZORBase;
using namespace ZORBase::capi;
// NOLINTEND(google-build-using-namespace)

namespace {

// Gives what Make returns, as the caller's struct. The place is checked first, so that Make may read what lies there.
template <class T, class TMake>
zorbase_status Give(const char* Function, T* Place, TMake&& Make) noexcept {
  return Call(Function, [&] {
    T& place = Given(Place, "result");
    place = Twin(Make());
  });
}

// The translation and the angles of a transform, as the library takes and gives them.
TPoint6D PointOf(const TEulerPoint& Angles) { return TPoint6D::FromArray(Angles.ToArray()); }
TEulerPoint AnglesOf(const TPoint6D& Point) { return TEulerPoint::FromArray(Point.ToArray()); }

}  // namespace

// ---------------------------------------------------------------------------------------------- transforms

zorbase_status zorbase_matrix_identity(zorbase_matrix* result) noexcept {
  return Give(__func__, result, TMatrix4D::ReturnIdentityMatrix);
}

zorbase_status zorbase_matrix_from_angles_xyz(const zorbase_euler_pose* angles, zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] {
    TMatrix4D matrix;
    matrix.CreateFromEulerAngleXYZ(PointOf(Twin(Given(angles, "angles"))));
    return matrix;
  });
}

zorbase_status zorbase_matrix_from_angles_zyx(const zorbase_euler_pose* angles, zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] {
    TMatrix4D matrix;
    matrix.CreateFromEulerAngleZYX(PointOf(Twin(Given(angles, "angles"))));
    return matrix;
  });
}

zorbase_status zorbase_matrix_to_angles_xyz(const zorbase_matrix* matrix, zorbase_euler_pose* angles) noexcept {
  return Call(__func__, [&] {
    zorbase_euler_pose& place = Given(angles, "angles");
    place = Twin(AnglesOf(Twin(Given(matrix, "matrix")).Matrix4DToEulerAngleXYZ()));
  });
}

zorbase_status zorbase_matrix_to_angles_zyx(const zorbase_matrix* matrix, zorbase_euler_pose* angles) noexcept {
  return Call(__func__, [&] {
    zorbase_euler_pose& place = Given(angles, "angles");
    place = Twin(AnglesOf(Twin(Given(matrix, "matrix")).Matrix4DToEulerAngleZYX()));
  });
}

zorbase_status zorbase_matrix_from_axis_angle(const zorbase_point* axis, double angle,
                                              zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] { return TMatrix4D::Create(Twin(Given(axis, "axis")), angle); });
}

zorbase_status zorbase_matrix_from_vectors(const zorbase_point* from, const zorbase_point* to,
                                           zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] { return TMatrix4D::Create(Twin(Given(from, "from")), Twin(Given(to, "to"))); });
}

zorbase_status zorbase_matrix_multiply(const zorbase_matrix* left, const zorbase_matrix* right,
                                       zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] { return Twin(Given(left, "left")) * Twin(Given(right, "right")); });
}

zorbase_status zorbase_matrix_invert(const zorbase_matrix* matrix, zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] {
    TMatrix4D inverse = Twin(Given(matrix, "matrix"));
    inverse.Invert();
    return inverse;
  });
}

zorbase_status zorbase_matrix_transform_points(const zorbase_matrix* matrix, const zorbase_point* points, size_t count,
                                               zorbase_point* results) noexcept {
  return Call(__func__, [&] {
    Twin(Given(matrix, "matrix"))
        .TransformPts(Twins(Items(points, count, "points")), Twins(Items(results, count, "results")));
  });
}

zorbase_status zorbase_matrix_transform_directions(const zorbase_matrix* matrix, const zorbase_point* directions,
                                                   size_t count, zorbase_point* results) noexcept {
  return Call(__func__, [&] {
    Twin(Given(matrix, "matrix"))
        .TransformVecs(Twins(Items(directions, count, "directions")), Twins(Items(results, count, "results")));
  });
}

zorbase_status zorbase_matrix_transform_poses(const zorbase_matrix* matrix, const zorbase_pose* poses, size_t count,
                                              zorbase_pose* results) noexcept {
  return Call(__func__, [&] {
    Twin(Given(matrix, "matrix"))
        .TransformPoses(Twins(Items(poses, count, "poses")), Twins(Items(results, count, "results")));
  });
}

zorbase_status zorbase_matrix_angle(const zorbase_matrix* from, const zorbase_matrix* to, double* angle) noexcept {
  return Call(__func__, [&] {
    double& place = Given(angle, "angle");
    place = MatrixAngle(Twin(Given(from, "from")), Twin(Given(to, "to")));
  });
}

// ---------------------------------------------------------------------------------------------- quaternions

zorbase_status zorbase_quaternion_from_matrix(const zorbase_matrix* matrix, zorbase_quaternion* result) noexcept {
  return Give(__func__, result, [&] {
    TQuaternion quaternion;
    quaternion.CreateFromMatrix4D(Twin(Given(matrix, "matrix")));
    return quaternion;
  });
}

zorbase_status zorbase_quaternion_to_matrix(const zorbase_quaternion* quaternion, zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] { return Twin(Given(quaternion, "quaternion")).ToMatrix4D(); });
}

zorbase_status zorbase_quaternion_multiply(const zorbase_quaternion* left, const zorbase_quaternion* right,
                                           zorbase_quaternion* result) noexcept {
  return Give(__func__, result, [&] { return Twin(Given(left, "left")) * Twin(Given(right, "right")); });
}

zorbase_status zorbase_quaternion_angle(const zorbase_quaternion* from, const zorbase_quaternion* to,
                                        double* angle) noexcept {
  return Call(__func__, [&] {
    double& place = Given(angle, "angle");
    place = QuaternionAngle(Twin(Given(from, "from")), Twin(Given(to, "to")));
  });
}

// ---------------------------------------------------------------------------------------------- blends

zorbase_status zorbase_quaternion_nlerp(double t, const zorbase_quaternion* q1, const zorbase_quaternion* q2,
                                        zorbase_quaternion* result) noexcept {
  return Give(__func__, result, [&] { return NLerpQuaternion(t, Twin(Given(q1, "q1")), Twin(Given(q2, "q2"))); });
}

zorbase_status zorbase_quaternion_slerp(double t, const zorbase_quaternion* q1, const zorbase_quaternion* q2,
                                        zorbase_quaternion* result) noexcept {
  return Give(__func__, result, [&] { return SLerpQuaternion(t, Twin(Given(q1, "q1")), Twin(Given(q2, "q2"))); });
}

zorbase_status zorbase_quaternion_squad(double t, const zorbase_quaternion* q0, const zorbase_quaternion* q1,
                                        const zorbase_quaternion* q2, const zorbase_quaternion* q3,
                                        zorbase_quaternion* result) noexcept {
  return Give(__func__, result, [&] {
    return SquadQuaternion(t, Twin(Given(q0, "q0")), Twin(Given(q1, "q1")), Twin(Given(q2, "q2")),
                           Twin(Given(q3, "q3")));
  });
}

zorbase_status zorbase_quaternion_slerp_many(const double* t, size_t count, const zorbase_quaternion* q1,
                                             const zorbase_quaternion* q2, zorbase_quaternion* results) noexcept {
  return Call(__func__, [&] {
    SLerpQuaternions(Items(t, count, "t"), Twin(Given(q1, "q1")), Twin(Given(q2, "q2")),
                     Twins(Items(results, count, "results")));
  });
}

zorbase_status zorbase_matrix_nlerp(double t, const zorbase_matrix* m1, const zorbase_matrix* m2,
                                    zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] { return NLerp4DMatrix(t, Twin(Given(m1, "m1")), Twin(Given(m2, "m2"))); });
}

zorbase_status zorbase_matrix_slerp(double t, const zorbase_matrix* m1, const zorbase_matrix* m2,
                                    zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] { return SLerp4DMatrix(t, Twin(Given(m1, "m1")), Twin(Given(m2, "m2"))); });
}

zorbase_status zorbase_matrix_squad(double t, const zorbase_matrix* m0, const zorbase_matrix* m1,
                                    const zorbase_matrix* m2, const zorbase_matrix* m3,
                                    zorbase_matrix* result) noexcept {
  return Give(__func__, result, [&] {
    return Squad4DMatrix(t, Twin(Given(m0, "m0")), Twin(Given(m1, "m1")), Twin(Given(m2, "m2")), Twin(Given(m3, "m3")));
  });
}

zorbase_status zorbase_matrix_slerp_many(const double* t, size_t count, const zorbase_matrix* m1,
                                         const zorbase_matrix* m2, zorbase_matrix* results) noexcept {
  return Call(__func__, [&] {
    SLerp4DMatrices(Items(t, count, "t"), Twin(Given(m1, "m1")), Twin(Given(m2, "m2")),
                    Twins(Items(results, count, "results")));
  });
}

zorbase_status zorbase_pose_move(const double* t, size_t count, const zorbase_pose* from, const zorbase_pose* to,
                                 zorbase_pose* results) noexcept {
  constexpr int kOneStep = 1;
  constexpr int kShortTurn = 0;
  return Call(__func__, [&] {
    TWcsPtInterpolator(Twin(Given(from, "from")), Twin(Given(to, "to")), kOneStep, kShortTurn)
        .GetWcsPtsbyParams(Items(t, count, "t"), Twins(Items(results, count, "results")));
  });
}
