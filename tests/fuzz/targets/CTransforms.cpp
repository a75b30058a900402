// The transforms of the C interface, all of them on the same arguments. Input: three angles and a position, two matrices, two poses, four
// quaternions, three parameters, each of its numbers one after the other; what is missing is 0.
#include <algorithm>

#include "fuzz/CCalls.h"

namespace ZORBase::Test::FuzzCTransforms {
namespace {

struct TArguments {
  zorbase_euler_pose Angles{};
  std::array<zorbase_matrix, 2> Matrices{};
  std::array<zorbase_pose, 2> Poses{};
  std::array<zorbase_quaternion, 4> Quaternions{};
  std::array<double, 3> T{};
  std::array<zorbase_point, 4> Points{};  // of the poses

  explicit TArguments(TFuzzInput& Input) {
    for (double* const part : {&Angles.x, &Angles.y, &Angles.z, &Angles.rx, &Angles.ry, &Angles.rz})
      *part = Input.Number();
    for (zorbase_matrix& matrix : Matrices) {
      for (auto& row : matrix.m) {
        for (double& entry : row) entry = Input.Number();
      }
    }
    for (zorbase_pose& pose : Poses) pose = NextPose(Input);
    for (zorbase_quaternion& q : Quaternions) {
      for (double* const part : {&q.a, &q.b, &q.c, &q.d}) *part = Input.Number();
    }
    for (double& t : T) t = Input.Number();
    for (std::size_t i = 0; i < Poses.size(); ++i) {
      Points[2 * i] = {Poses[i].x, Poses[i].y, Poses[i].z};
      Points[2 * i + 1] = {Poses[i].a, Poses[i].b, Poses[i].c};
    }
  }
};

void MakeMatrices(const TArguments& Given) {
  zorbase_matrix identity{}, made{};
  zorbase_euler_pose angles{};
  zorbase_pose pose{};
  double angle = 0.0;
  const zorbase_matrix& matrix = Given.Matrices[0];
  Check(zorbase_matrix_identity(&identity));
  Check(zorbase_matrix_from_angles_xyz(&Given.Angles, &made));
  Check(zorbase_matrix_to_angles_xyz(&made, &angles));
  Check(zorbase_matrix_from_angles_zyx(&Given.Angles, &made));
  Check(zorbase_matrix_to_angles_zyx(&made, &angles));
  Check(zorbase_matrix_to_angles_xyz(&matrix, &angles));
  Check(zorbase_matrix_to_angles_zyx(&matrix, &angles));
  Check(zorbase_euler_to_poses(&Given.Angles, 1, &pose));
  Check(zorbase_matrix_from_axis_angle(Given.Points.data(), Given.T[0], &made));
  Check(zorbase_matrix_from_vectors(&Given.Points[1], &Given.Points[3], &made));
  Check(zorbase_matrix_multiply(&matrix, &Given.Matrices[1], &made));
  if (Check(zorbase_matrix_angle(&matrix, &Given.Matrices[1], &angle)))
    Require(angle >= 0.0 && angle <= 3.1415926535897936, "an angle is one of 0 to pi");
  Check(zorbase_matrix_multiply(&matrix, &identity, &made));
  // What is almost the identity is taken for it.
  Require(SameStruct(made, matrix) || SameStruct(made, identity), "a product with the identity is the other factor");
  made = matrix;
  zorbase_matrix inverse{};
  const bool isInvertible = Check(zorbase_matrix_invert(&matrix, &inverse));
  Require(Check(zorbase_matrix_invert(&made, &made)) == isInvertible, "a matrix is inverted in its own place");
  if (isInvertible) Require(SameStruct(made, inverse), "and gives the same there");
}

void TransformItems(const TArguments& Given) {
  for (const zorbase_matrix& matrix : Given.Matrices) {
    CheckCallForMany<zorbase_point, 4>(
        "points are transformed together as one by one",
        [&](zorbase_point* Results) {
          return zorbase_matrix_transform_points(&matrix, Given.Points.data(), 4, Results);
        },
        [&](std::size_t i, zorbase_point* Result) {
          return zorbase_matrix_transform_points(&matrix, &Given.Points[i], 1, Result);
        });
    CheckCallForMany<zorbase_point, 4>(
        "directions are transformed together as one by one",
        [&](zorbase_point* Results) {
          return zorbase_matrix_transform_directions(&matrix, Given.Points.data(), 4, Results);
        },
        [&](std::size_t i, zorbase_point* Result) {
          return zorbase_matrix_transform_directions(&matrix, &Given.Points[i], 1, Result);
        });
    CheckCallForMany<zorbase_pose, 2>(
        "poses are transformed together as one by one, and in their own places",
        [&](zorbase_pose* Results) {
          std::copy(Given.Poses.begin(), Given.Poses.end(), Results);
          return zorbase_matrix_transform_poses(&matrix, Results, 2, Results);
        },
        [&](std::size_t i, zorbase_pose* Result) {
          return zorbase_matrix_transform_poses(&matrix, &Given.Poses[i], 1, Result);
        });
  }
}

void BlendMatrices(const TArguments& Given) {
  const zorbase_matrix& m1 = Given.Matrices[0];
  const zorbase_matrix& m2 = Given.Matrices[1];
  zorbase_matrix made{};
  for (const double t : Given.T) {
    Check(zorbase_matrix_nlerp(t, &m1, &m2, &made));
    Check(zorbase_matrix_squad(t, &m2, &m1, &m2, &m1, &made));
  }
  CheckCallForMany<zorbase_matrix, 3>(
      "matrices are blended at many parameters as at one",
      [&](zorbase_matrix* Results) { return zorbase_matrix_slerp_many(Given.T.data(), 3, &m1, &m2, Results); },
      [&](std::size_t i, zorbase_matrix* Result) { return zorbase_matrix_slerp(Given.T[i], &m1, &m2, Result); });
  CheckCallForMany<zorbase_pose, 3>(
      "a move gives at many parameters what it gives at one",
      [&](zorbase_pose* Results) {
        return zorbase_pose_move(Given.T.data(), 3, Given.Poses.data(), &Given.Poses[1], Results);
      },
      [&](std::size_t i, zorbase_pose* Result) {
        return zorbase_pose_move(&Given.T[i], 1, Given.Poses.data(), &Given.Poses[1], Result);
      });
}

void UseQuaternions(const TArguments& Given) {
  const auto& q = Given.Quaternions;
  zorbase_quaternion made{};
  zorbase_matrix matrix{};
  double angle = 0.0;
  Check(zorbase_quaternion_from_matrix(Given.Matrices.data(), &made));
  Check(zorbase_quaternion_to_matrix(q.data(), &matrix));
  Check(zorbase_quaternion_multiply(q.data(), &q[1], &made));
  if (Check(zorbase_quaternion_angle(q.data(), &q[1], &angle)))
    Require(angle >= 0.0 && angle <= 1.5707963267948968, "half an angle is one of 0 to pi/2");
  for (const double t : Given.T) {
    Check(zorbase_quaternion_nlerp(t, q.data(), &q[1], &made));
    Check(zorbase_quaternion_squad(t, q.data(), &q[1], &q[2], &q[3], &made));
  }
  CheckCallForMany<zorbase_quaternion, 3>(
      "quaternions are blended at many parameters as at one",
      [&](zorbase_quaternion* Results) {
        return zorbase_quaternion_slerp_many(Given.T.data(), 3, q.data(), &q[1], Results);
      },
      [&](std::size_t i, zorbase_quaternion* Result) {
        return zorbase_quaternion_slerp(Given.T[i], q.data(), &q[1], Result);
      });
}

}  // namespace

ZORBASE_FUZZ_TARGET(CTransforms) {
  const TArguments given(Input);
  MakeMatrices(given);
  TransformItems(given);
  BlendMatrices(given);
  UseQuaternions(given);
}

}  // namespace ZORBase::Test::FuzzCTransforms
