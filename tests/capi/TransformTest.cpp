#include "capi/CapiTestSupport.h"

#include <limits>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

constexpr zorbase_euler_pose kAngles = {10, -20, 30, 0.3, -0.7, 1.9};
constexpr zorbase_euler_pose kOtherAngles = {-5, 4, 3, -1.2, 0.4, 0.1};

TPoint6D Inside(const zorbase_euler_pose& Angles) {
  return TPoint6D::Create(Angles.x, Angles.y, Angles.z, Angles.rx, Angles.ry, Angles.rz);
}

zorbase_matrix Outside(const TMatrix4D& Matrix) {
  zorbase_matrix outside = {};
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 4; ++j) outside.m[i][j] = Matrix.fm[i][j];
  }
  return outside;
}

zorbase_quaternion Outside(const TQuaternion& q) { return {q.a, q.b, q.c, q.d}; }

TMatrix4D Frame(const zorbase_euler_pose& Angles) {
  TMatrix4D frame;
  frame.CreateFromEulerAngleZYX(Inside(Angles));
  return frame;
}

TQuaternion Rotation(const zorbase_euler_pose& Angles) {
  TQuaternion rotation;
  rotation.CreateFromMatrix4D(Frame(Angles));
  return rotation;
}

const TMatrix4D kFirst = Frame(kAngles);
const TMatrix4D kSecond = Frame(kOtherAngles);
const std::vector<double> kTimes = {-1, 0, 0.2, 0.5, 0.9, 1, 3};

TEST(ZorbaseMatrix, IsMadeAndTakenApartAsTheClassDoes) {
  zorbase_matrix matrix = {};
  ASSERT_TRUE(Good(zorbase_matrix_identity(&matrix)));
  EXPECT_EQ(Bits(matrix), Bits(TMatrix4D::ReturnIdentityMatrix()));

  TMatrix4D inside;
  zorbase_euler_pose angles = {};
  ASSERT_TRUE(Good(zorbase_matrix_from_angles_xyz(&kAngles, &matrix)));
  inside.CreateFromEulerAngleXYZ(Inside(kAngles));
  EXPECT_EQ(Bits(matrix), Bits(inside));
  ASSERT_TRUE(Good(zorbase_matrix_to_angles_xyz(&matrix, &angles)));
  EXPECT_EQ(Bits(angles), Bits(inside.Matrix4DToEulerAngleXYZ()));

  ASSERT_TRUE(Good(zorbase_matrix_from_angles_zyx(&kAngles, &matrix)));
  inside.CreateFromEulerAngleZYX(Inside(kAngles));
  EXPECT_EQ(Bits(matrix), Bits(inside));
  ASSERT_TRUE(Good(zorbase_matrix_to_angles_zyx(&matrix, &angles)));
  EXPECT_EQ(Bits(angles), Bits(inside.Matrix4DToEulerAngleZYX()));
}

TEST(ZorbaseMatrix, RotatesAboutAnAxisAndFromOneVectorOntoAnother) {
  const zorbase_point axis = {1, 2, -3};
  zorbase_matrix matrix = {};
  ASSERT_TRUE(Good(zorbase_matrix_from_axis_angle(&axis, 0.8, &matrix)));
  EXPECT_EQ(Bits(matrix), Bits(TMatrix4D::Create(TPoint3D::Create(1, 2, -3), 0.8)));
  const zorbase_point from = {3, 0, 4};
  const zorbase_point to = {0, 5, 0};
  ASSERT_TRUE(Good(zorbase_matrix_from_vectors(&from, &to, &matrix)));
  EXPECT_EQ(Bits(matrix), Bits(TMatrix4D::Create(TPoint3D::Create(3, 0, 4), TPoint3D::Create(0, 5, 0))));
  const zorbase_matrix before = matrix;
  EXPECT_TRUE(Fails(zorbase_matrix_from_vectors(&from, &axis, &matrix), ZORBASE_ERROR, "two vectors mag not equal!!!"));
  EXPECT_EQ(Bits(matrix), Bits(before));
}

TEST(ZorbaseMatrix, IsComposedAndInvertedAlsoIntoItself) {
  const zorbase_matrix first = Outside(kFirst);
  const zorbase_matrix second = Outside(kSecond);
  zorbase_matrix result = {};
  ASSERT_TRUE(Good(zorbase_matrix_multiply(&first, &second, &result)));
  EXPECT_EQ(Bits(result), Bits(kFirst * kSecond));
  result = first;
  ASSERT_TRUE(Good(zorbase_matrix_multiply(&second, &result, &result)));
  EXPECT_EQ(Bits(result), Bits(kSecond * kFirst));

  TMatrix4D inverse = kFirst;
  inverse.Invert();
  result = first;
  ASSERT_TRUE(Good(zorbase_matrix_invert(&result, &result)));
  EXPECT_EQ(Bits(result), Bits(inverse));
}

TEST(ZorbaseMatrix, WithoutInverseIsTheErrorOfTheClass) {
  const zorbase_matrix flat = {{{1, 0, 0, 5}, {0, 1, 0, 6}, {0, 0, 0, 7}}};
  zorbase_matrix result = {{{9, 9, 9, 9}, {9, 9, 9, 9}, {9, 9, 9, 9}}};
  const zorbase_matrix before = result;
  const std::string text = GeneralErrorOf([] {
                             TMatrix4D inside = TMatrix4D::Create(1, 0, 0, 0, 1, 0, 0, 0, 0, 5, 6, 7);
                             inside.Invert();
                           }).value_or("raises nothing");
  EXPECT_TRUE(Fails(zorbase_matrix_invert(&flat, &result), ZORBASE_ERROR, text));
  EXPECT_EQ(Bits(result), Bits(before));
}

TEST(ZorbaseMatrix, TransformsArraysAlsoInPlace) {
  const zorbase_matrix matrix = Outside(kFirst);
  const TPoint6DList insidePoses = SwungPoses(9);
  std::vector<zorbase_pose> poses = PosesOutside(insidePoses);
  std::vector<TPoint6D> expected(9);
  kFirst.TransformPoses(insidePoses, expected);
  std::vector<zorbase_pose> results(9);
  ASSERT_TRUE(Good(zorbase_matrix_transform_poses(&matrix, poses.data(), 9, results.data())));
  EXPECT_EQ(Bits(results), Bits(expected));
  ASSERT_TRUE(Good(zorbase_matrix_transform_poses(&matrix, poses.data(), 9, poses.data())));
  EXPECT_EQ(Bits(poses), Bits(expected));

  std::vector<zorbase_point> points = {{1, 2, 3}, {-4, 5e10, 6}, {0, 0, 0}};
  std::vector<zorbase_point> directions = points;
  ASSERT_TRUE(Good(zorbase_matrix_transform_points(&matrix, points.data(), 3, points.data())));
  ASSERT_TRUE(Good(zorbase_matrix_transform_directions(&matrix, directions.data(), 3, directions.data())));
  const std::vector<TPoint3D> inside = {TPoint3D::Create(1, 2, 3), TPoint3D::Create(-4, 5e10, 6), TPoint3D{}};
  for (std::size_t i = 0; i < inside.size(); ++i) {
    EXPECT_EQ(Bits(points[i]), Bits(kFirst.TransformPt(inside[i])));
    EXPECT_EQ(Bits(directions[i]), Bits(kFirst.TransformVec(inside[i])));
  }
}

TEST(ZorbaseMatrix, HasTheAngleToAnother) {
  const zorbase_matrix first = Outside(kFirst);
  const zorbase_matrix second = Outside(kSecond);
  double angle = 0;
  ASSERT_TRUE(Good(zorbase_matrix_angle(&first, &second, &angle)));
  EXPECT_EQ(Bits(angle), Bits(MatrixAngle(kFirst, kSecond)));
}

TEST(ZorbaseQuaternion, ConvertsAndMultipliesAsTheClassDoes) {
  const TQuaternion p = Rotation(kAngles);
  const TQuaternion q = Rotation(kOtherAngles);
  const zorbase_matrix matrix = Outside(kFirst);
  zorbase_quaternion quaternion = {};
  ASSERT_TRUE(Good(zorbase_quaternion_from_matrix(&matrix, &quaternion)));
  EXPECT_EQ(Bits(quaternion), Bits(p));
  zorbase_matrix back = {};
  ASSERT_TRUE(Good(zorbase_quaternion_to_matrix(&quaternion, &back)));
  EXPECT_EQ(Bits(back), Bits(p.ToMatrix4D()));
  const zorbase_quaternion other = Outside(q);
  double angle = 0;
  ASSERT_TRUE(Good(zorbase_quaternion_angle(&quaternion, &other, &angle)));
  EXPECT_EQ(Bits(angle), Bits(QuaternionAngle(p, q)));
  ASSERT_TRUE(Good(zorbase_quaternion_multiply(&quaternion, &other, &quaternion)));
  EXPECT_EQ(Bits(quaternion), Bits(p * q));
}

TEST(ZorbaseQuaternion, IsBlendedAsTheFunctionsDo) {
  const TQuaternion q[4] = {Rotation(kAngles), Rotation(kOtherAngles), Rotation({0, 0, 0, 0.5, 0.5, 0.5}),
                            Rotation({0, 0, 0, 1, 0.2, -0.5})};
  const zorbase_quaternion o[4] = {Outside(q[0]), Outside(q[1]), Outside(q[2]), Outside(q[3])};
  std::vector<zorbase_quaternion> many(kTimes.size());
  ASSERT_TRUE(Good(zorbase_quaternion_slerp_many(kTimes.data(), kTimes.size(), &o[0], &o[1], many.data())));
  for (std::size_t i = 0; i < kTimes.size(); ++i) {
    const double t = kTimes[i];
    zorbase_quaternion result = {};
    ASSERT_TRUE(Good(zorbase_quaternion_nlerp(t, &o[0], &o[1], &result)));
    EXPECT_EQ(Bits(result), Bits(NLerpQuaternion(t, q[0], q[1])));
    ASSERT_TRUE(Good(zorbase_quaternion_slerp(t, &o[0], &o[1], &result)));
    EXPECT_EQ(Bits(result), Bits(SLerpQuaternion(t, q[0], q[1])));
    EXPECT_EQ(Bits(many[i]), Bits(result));
    ASSERT_TRUE(Good(zorbase_quaternion_squad(t, &o[0], &o[1], &o[2], &o[3], &result)));
    EXPECT_EQ(Bits(result), Bits(SquadQuaternion(t, q[0], q[1], q[2], q[3])));
  }
}

TEST(ZorbaseQuaternion, BlendOfWhatIsNoRotationIsTheErrorOfTheFunction) {
  const zorbase_quaternion zero = {0, 0, 0, 0};
  zorbase_quaternion result = {7, 7, 7, 7};
  EXPECT_TRUE(Fails(zorbase_quaternion_nlerp(0.5, &zero, &zero, &result), ZORBASE_ERROR, HasSubstr("Divided by zero")));
  EXPECT_EQ(result.a, 7);
}

TEST(ZorbaseMatrix, IsBlendedAsTheFunctionsDo) {
  const TMatrix4D m[4] = {kFirst, kSecond, Frame({7, 8, 9, 0.5, 0.5, 0.5}), Frame({1, 0, 2, 1, 0.2, -0.5})};
  const zorbase_matrix o[4] = {Outside(m[0]), Outside(m[1]), Outside(m[2]), Outside(m[3])};
  std::vector<zorbase_matrix> many(kTimes.size());
  ASSERT_TRUE(Good(zorbase_matrix_slerp_many(kTimes.data(), kTimes.size(), &o[0], &o[1], many.data())));
  for (std::size_t i = 0; i < kTimes.size(); ++i) {
    const double t = kTimes[i];
    zorbase_matrix result = {};
    ASSERT_TRUE(Good(zorbase_matrix_nlerp(t, &o[0], &o[1], &result)));
    EXPECT_EQ(Bits(result), Bits(NLerp4DMatrix(t, m[0], m[1])));
    ASSERT_TRUE(Good(zorbase_matrix_slerp(t, &o[0], &o[1], &result)));
    EXPECT_EQ(Bits(result), Bits(SLerp4DMatrix(t, m[0], m[1])));
    EXPECT_EQ(Bits(many[i]), Bits(result));
    ASSERT_TRUE(Good(zorbase_matrix_squad(t, &o[0], &o[1], &o[2], &o[3], &result)));
    EXPECT_EQ(Bits(result), Bits(Squad4DMatrix(t, m[0], m[1], m[2], m[3])));
  }
}

TEST(ZorbasePoseMove, IsThatOfTheInterpolator) {
  const zorbase_pose from = {0, 0, 50, 0, 0, 1};
  const zorbase_pose to = {100, 20, 50, 1, 0, 0};
  const TWcsPtInterpolator inside(TPoint6D::Create(0, 0, 50, 0, 0, 1), TPoint6D::Create(100, 20, 50, 1, 0, 0), 1, 0);
  std::vector<zorbase_pose> results(kTimes.size());
  ASSERT_TRUE(Good(zorbase_pose_move(kTimes.data(), kTimes.size(), &from, &to, results.data())));
  for (std::size_t i = 0; i < kTimes.size(); ++i) {
    EXPECT_EQ(Bits(results[i]), Bits(inside.GetWcsPtbyParam(kTimes[i])));
  }
  const double noNumber = std::numeric_limits<double>::quiet_NaN();
  const auto before = Bits(results);
  EXPECT_EQ(zorbase_pose_move(&noNumber, 1, &from, &to, results.data()), ZORBASE_ERROR);
  EXPECT_EQ(Bits(results), before);
}

}  // namespace
}  // namespace ZORBase::Test
