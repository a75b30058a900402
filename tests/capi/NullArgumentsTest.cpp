#include "capi/CapiTestSupport.h"

#include <string>

namespace ZORBase::Test {
namespace {

// Something for every argument but the one that is null.
class NullArguments : public testing::Test {
 protected:
  const TPosesHandle poses;
  const TCurveHandle curve;
  const TSpectrumHandle spectrum;
  const zorbase_pose pose = {};
  const zorbase_matrix matrix = {};
  const zorbase_quaternion q = {};
  const zorbase_point point = {};
  const zorbase_euler_pose angles = {};
  zorbase_pose poseOut = {};
  zorbase_matrix matrixOut = {};
  zorbase_quaternion qOut = {};
  zorbase_euler_pose anglesOut = {};
  zorbase_point pointOut = {};
  zorbase_filter* filter = nullptr;
  std::size_t count = 0;
  double number = 0;
};

testing::AssertionResult NamesNull(zorbase_status Status, const std::string& Name) {
  return Fails(Status, ZORBASE_BAD_ARGUMENT, testing::EndsWith(": " + Name + " is null"));
}

#define EXPECT_NULL(Call, Name) EXPECT_TRUE(NamesNull(Call, Name))

TEST_F(NullArguments, OfPoseCallsAreNamed) {
  EXPECT_NULL(zorbase_pose_to_text(nullptr, 3, nullptr, 0, nullptr), "pose");
  EXPECT_NULL(zorbase_pose_from_text("1", nullptr), "pose");
  EXPECT_NULL(zorbase_number_to_text(1, 3, nullptr, 8, nullptr), "text");
  EXPECT_NULL(zorbase_euler_to_poses(nullptr, 1, &poseOut), "euler_poses");
  EXPECT_NULL(zorbase_euler_to_poses(&angles, 1, nullptr), "poses");
  EXPECT_NULL(zorbase_poses_create(nullptr), "poses");
  EXPECT_NULL(zorbase_poses_load(nullptr, "x"), "poses");
  EXPECT_NULL(zorbase_poses_load(poses, nullptr), "file_name");
  EXPECT_NULL(zorbase_poses_load_euler(nullptr, "x"), "poses");
  EXPECT_NULL(zorbase_poses_load_euler(poses, nullptr), "file_name");
  EXPECT_NULL(zorbase_poses_save(nullptr, "x", 3), "poses");
  EXPECT_NULL(zorbase_poses_save(poses, nullptr, 3), "file_name");
  EXPECT_NULL(zorbase_poses_append(nullptr, &pose, 1), "poses");
  EXPECT_NULL(zorbase_poses_clear(nullptr), "poses");
  EXPECT_NULL(zorbase_poses_get(nullptr, 0, &poseOut), "poses");
  EXPECT_NULL(zorbase_poses_get(poses, 0, nullptr), "pose");
  EXPECT_NULL(zorbase_poses_get_all(nullptr, nullptr, 0, nullptr), "poses");
}

TEST_F(NullArguments, OfCurveCallsAreNamed) {
  EXPECT_NULL(zorbase_curve_create(nullptr), "curve");
  EXPECT_NULL(zorbase_curve_fit(nullptr, poses, 1), "curve");
  EXPECT_NULL(zorbase_curve_fit(curve, nullptr, 1), "poses");
  EXPECT_NULL(zorbase_curve_fit_array(nullptr, &pose, 1, 1), "curve");
  EXPECT_NULL(zorbase_curve_fit_array(curve, nullptr, 1, 1), "poses");
  EXPECT_NULL(zorbase_curve_set_control_points(nullptr, &number, 1, &pose, 1), "curve");
  EXPECT_NULL(zorbase_curve_set_control_points(curve, nullptr, 1, &pose, 1), "knots");
  EXPECT_NULL(zorbase_curve_set_control_points(curve, &number, 1, nullptr, 1), "points");
  EXPECT_NULL(zorbase_curve_measure(nullptr), "curve");
  EXPECT_NULL(zorbase_curve_reverse(nullptr), "curve");
  EXPECT_NULL(zorbase_curve_control_points(nullptr, nullptr, 0, nullptr), "curve");
  EXPECT_NULL(zorbase_curve_knots(nullptr, nullptr, 0, nullptr), "curve");
  EXPECT_NULL(zorbase_curve_evaluate(nullptr, 0, &poseOut), "curve");
  EXPECT_NULL(zorbase_curve_evaluate(curve, 0, nullptr), "pose");
  EXPECT_NULL(zorbase_curve_evaluate_many(nullptr, &number, 1, &poseOut), "curve");
  EXPECT_NULL(zorbase_curve_evaluate_many(curve, nullptr, 1, &poseOut), "params");
  EXPECT_NULL(zorbase_curve_evaluate_many(curve, &number, 1, nullptr), "poses");
  EXPECT_NULL(zorbase_curve_derivatives(nullptr, 0, &poseOut), "curve");
  EXPECT_NULL(zorbase_curve_derivatives(curve, 0, nullptr), "derivatives");
  EXPECT_NULL(zorbase_curve_curvature(nullptr, 0, &number), "curve");
  EXPECT_NULL(zorbase_curve_curvature(curve, 0, nullptr), "curvature");
  zorbase_closest closest = {};
  closest.size = sizeof closest;
  EXPECT_NULL(zorbase_curve_closest(nullptr, &pose, &closest), "curve");
  EXPECT_NULL(zorbase_curve_closest(curve, nullptr, &closest), "pose");
  EXPECT_NULL(zorbase_curve_closest(curve, &pose, nullptr), "closest");
  EXPECT_NULL(zorbase_curve_length(nullptr, &number), "curve");
  EXPECT_NULL(zorbase_curve_length(curve, nullptr), "length");
  EXPECT_NULL(zorbase_curve_length_of_param(nullptr, 0, 1, &number), "curve");
  EXPECT_NULL(zorbase_curve_length_of_param(curve, 0, 1, nullptr), "length");
  EXPECT_NULL(zorbase_curve_param_of_length(nullptr, 0, &number), "curve");
  EXPECT_NULL(zorbase_curve_param_of_length(curve, 0, nullptr), "param");
  EXPECT_NULL(zorbase_curve_lengths_of_params(nullptr, &number, 1, &number), "curve");
  EXPECT_NULL(zorbase_curve_lengths_of_params(curve, nullptr, 1, &number), "params");
  EXPECT_NULL(zorbase_curve_lengths_of_params(curve, &number, 1, nullptr), "lengths");
  EXPECT_NULL(zorbase_curve_params_of_lengths(nullptr, &number, 1, &number), "curve");
  EXPECT_NULL(zorbase_curve_params_of_lengths(curve, nullptr, 1, &number), "lengths");
  EXPECT_NULL(zorbase_curve_params_of_lengths(curve, &number, 1, nullptr), "params");
}

TEST_F(NullArguments, OfTransformCallsAreNamed) {
  EXPECT_NULL(zorbase_matrix_identity(nullptr), "result");
  EXPECT_NULL(zorbase_matrix_from_angles_xyz(nullptr, &matrixOut), "angles");
  EXPECT_NULL(zorbase_matrix_from_angles_xyz(&angles, nullptr), "result");
  EXPECT_NULL(zorbase_matrix_from_angles_zyx(nullptr, &matrixOut), "angles");
  EXPECT_NULL(zorbase_matrix_from_angles_zyx(&angles, nullptr), "result");
  EXPECT_NULL(zorbase_matrix_to_angles_xyz(nullptr, &anglesOut), "matrix");
  EXPECT_NULL(zorbase_matrix_to_angles_xyz(&matrix, nullptr), "angles");
  EXPECT_NULL(zorbase_matrix_to_angles_zyx(nullptr, &anglesOut), "matrix");
  EXPECT_NULL(zorbase_matrix_to_angles_zyx(&matrix, nullptr), "angles");
  EXPECT_NULL(zorbase_matrix_from_axis_angle(nullptr, 0, &matrixOut), "axis");
  EXPECT_NULL(zorbase_matrix_from_axis_angle(&point, 0, nullptr), "result");
  EXPECT_NULL(zorbase_matrix_from_vectors(nullptr, &point, &matrixOut), "from");
  EXPECT_NULL(zorbase_matrix_from_vectors(&point, nullptr, &matrixOut), "to");
  EXPECT_NULL(zorbase_matrix_from_vectors(&point, &point, nullptr), "result");
  EXPECT_NULL(zorbase_matrix_multiply(nullptr, &matrix, &matrixOut), "left");
  EXPECT_NULL(zorbase_matrix_multiply(&matrix, nullptr, &matrixOut), "right");
  EXPECT_NULL(zorbase_matrix_multiply(&matrix, &matrix, nullptr), "result");
  EXPECT_NULL(zorbase_matrix_invert(nullptr, &matrixOut), "matrix");
  EXPECT_NULL(zorbase_matrix_invert(&matrix, nullptr), "result");
  EXPECT_NULL(zorbase_matrix_transform_points(nullptr, &point, 1, &pointOut), "matrix");
  EXPECT_NULL(zorbase_matrix_transform_points(&matrix, nullptr, 1, &pointOut), "points");
  EXPECT_NULL(zorbase_matrix_transform_points(&matrix, &point, 1, nullptr), "results");
  EXPECT_NULL(zorbase_matrix_transform_directions(nullptr, &point, 1, &pointOut), "matrix");
  EXPECT_NULL(zorbase_matrix_transform_directions(&matrix, nullptr, 1, &pointOut), "directions");
  EXPECT_NULL(zorbase_matrix_transform_directions(&matrix, &point, 1, nullptr), "results");
  EXPECT_NULL(zorbase_matrix_transform_poses(nullptr, &pose, 1, &poseOut), "matrix");
  EXPECT_NULL(zorbase_matrix_transform_poses(&matrix, nullptr, 1, &poseOut), "poses");
  EXPECT_NULL(zorbase_matrix_transform_poses(&matrix, &pose, 1, nullptr), "results");
  EXPECT_NULL(zorbase_matrix_angle(nullptr, &matrix, &number), "from");
  EXPECT_NULL(zorbase_matrix_angle(&matrix, nullptr, &number), "to");
  EXPECT_NULL(zorbase_matrix_angle(&matrix, &matrix, nullptr), "angle");
}

TEST_F(NullArguments, OfQuaternionCallsAreNamed) {
  EXPECT_NULL(zorbase_quaternion_from_matrix(nullptr, &qOut), "matrix");
  EXPECT_NULL(zorbase_quaternion_from_matrix(&matrix, nullptr), "result");
  EXPECT_NULL(zorbase_quaternion_to_matrix(nullptr, &matrixOut), "quaternion");
  EXPECT_NULL(zorbase_quaternion_to_matrix(&q, nullptr), "result");
  EXPECT_NULL(zorbase_quaternion_multiply(nullptr, &q, &qOut), "left");
  EXPECT_NULL(zorbase_quaternion_multiply(&q, nullptr, &qOut), "right");
  EXPECT_NULL(zorbase_quaternion_multiply(&q, &q, nullptr), "result");
  EXPECT_NULL(zorbase_quaternion_angle(nullptr, &q, &number), "from");
  EXPECT_NULL(zorbase_quaternion_angle(&q, nullptr, &number), "to");
  EXPECT_NULL(zorbase_quaternion_angle(&q, &q, nullptr), "angle");
  EXPECT_NULL(zorbase_quaternion_nlerp(0, nullptr, &q, &qOut), "q1");
  EXPECT_NULL(zorbase_quaternion_nlerp(0, &q, nullptr, &qOut), "q2");
  EXPECT_NULL(zorbase_quaternion_nlerp(0, &q, &q, nullptr), "result");
  EXPECT_NULL(zorbase_quaternion_slerp(0, nullptr, &q, &qOut), "q1");
  EXPECT_NULL(zorbase_quaternion_slerp(0, &q, nullptr, &qOut), "q2");
  EXPECT_NULL(zorbase_quaternion_slerp(0, &q, &q, nullptr), "result");
  EXPECT_NULL(zorbase_quaternion_squad(0, nullptr, &q, &q, &q, &qOut), "q0");
  EXPECT_NULL(zorbase_quaternion_squad(0, &q, nullptr, &q, &q, &qOut), "q1");
  EXPECT_NULL(zorbase_quaternion_squad(0, &q, &q, nullptr, &q, &qOut), "q2");
  EXPECT_NULL(zorbase_quaternion_squad(0, &q, &q, &q, nullptr, &qOut), "q3");
  EXPECT_NULL(zorbase_quaternion_squad(0, &q, &q, &q, &q, nullptr), "result");
  EXPECT_NULL(zorbase_quaternion_slerp_many(nullptr, 1, &q, &q, &qOut), "t");
  EXPECT_NULL(zorbase_quaternion_slerp_many(&number, 1, nullptr, &q, &qOut), "q1");
  EXPECT_NULL(zorbase_quaternion_slerp_many(&number, 1, &q, nullptr, &qOut), "q2");
  EXPECT_NULL(zorbase_quaternion_slerp_many(&number, 1, &q, &q, nullptr), "results");
}

TEST_F(NullArguments, OfBlendCallsAreNamed) {
  EXPECT_NULL(zorbase_matrix_nlerp(0, nullptr, &matrix, &matrixOut), "m1");
  EXPECT_NULL(zorbase_matrix_nlerp(0, &matrix, nullptr, &matrixOut), "m2");
  EXPECT_NULL(zorbase_matrix_nlerp(0, &matrix, &matrix, nullptr), "result");
  EXPECT_NULL(zorbase_matrix_slerp(0, nullptr, &matrix, &matrixOut), "m1");
  EXPECT_NULL(zorbase_matrix_slerp(0, &matrix, nullptr, &matrixOut), "m2");
  EXPECT_NULL(zorbase_matrix_slerp(0, &matrix, &matrix, nullptr), "result");
  EXPECT_NULL(zorbase_matrix_squad(0, nullptr, &matrix, &matrix, &matrix, &matrixOut), "m0");
  EXPECT_NULL(zorbase_matrix_squad(0, &matrix, nullptr, &matrix, &matrix, &matrixOut), "m1");
  EXPECT_NULL(zorbase_matrix_squad(0, &matrix, &matrix, nullptr, &matrix, &matrixOut), "m2");
  EXPECT_NULL(zorbase_matrix_squad(0, &matrix, &matrix, &matrix, nullptr, &matrixOut), "m3");
  EXPECT_NULL(zorbase_matrix_squad(0, &matrix, &matrix, &matrix, &matrix, nullptr), "result");
  EXPECT_NULL(zorbase_matrix_slerp_many(nullptr, 1, &matrix, &matrix, &matrixOut), "t");
  EXPECT_NULL(zorbase_matrix_slerp_many(&number, 1, nullptr, &matrix, &matrixOut), "m1");
  EXPECT_NULL(zorbase_matrix_slerp_many(&number, 1, &matrix, nullptr, &matrixOut), "m2");
  EXPECT_NULL(zorbase_matrix_slerp_many(&number, 1, &matrix, &matrix, nullptr), "results");
  EXPECT_NULL(zorbase_pose_move(nullptr, 1, &pose, &pose, &poseOut), "t");
  EXPECT_NULL(zorbase_pose_move(&number, 1, nullptr, &pose, &poseOut), "from");
  EXPECT_NULL(zorbase_pose_move(&number, 1, &pose, nullptr, &poseOut), "to");
  EXPECT_NULL(zorbase_pose_move(&number, 1, &pose, &pose, nullptr), "results");
}

TEST_F(NullArguments, OfSignalCallsAreNamed) {
  EXPECT_NULL(zorbase_spectrum_create(nullptr), "spectrum");
  EXPECT_NULL(zorbase_spectrum_transform(nullptr, &number, 1, 1), "spectrum");
  EXPECT_NULL(zorbase_spectrum_transform(spectrum, nullptr, 1, 1), "samples");
  EXPECT_NULL(zorbase_spectrum_amplitudes(nullptr, nullptr, 0, nullptr), "spectrum");
  EXPECT_NULL(zorbase_spectrum_phases(nullptr, nullptr, 0, nullptr), "spectrum");
  EXPECT_NULL(zorbase_spectrum_frequencies(nullptr, nullptr, 0, nullptr), "spectrum");
  zorbase_filter_settings settings = {};
  settings.size = sizeof settings;
  EXPECT_NULL(zorbase_filter_create(nullptr, &filter), "settings");
  EXPECT_NULL(zorbase_filter_create(&settings, nullptr), "filter");
  EXPECT_NULL(zorbase_filter_step(nullptr, 0, &number), "filter");
  EXPECT_NULL(zorbase_filter_batch(nullptr, &number, 1, &number), "filter");
  EXPECT_NULL(zorbase_filter_timed(nullptr, 0, 1, &number, 1, &count), "filter");
  EXPECT_NULL(zorbase_filter_clear(nullptr, 0), "filter");
  EXPECT_NULL(zorbase_filter_weights(nullptr, nullptr, 0, nullptr), "filter");
  EXPECT_NULL(zorbase_filter_response(nullptr, 1, &number), "filter");
  EXPECT_NULL(zorbase_filter_frequency_of(nullptr, 1, &number), "filter");
}

TEST_F(NullArguments, OfSolverCallsAreNamed) {
  zorbase_surface* surface = nullptr;
  ASSERT_TRUE(Good(zorbase_surface_create(&surface)));
  const zorbase_point2 flat = {};
  zorbase_plane plane = {};
  zorbase_line line = {};
  plane.size = sizeof plane;
  line.size = sizeof line;
  EXPECT_NULL(zorbase_least_squares(nullptr, 1, 1, 1, &number, &number), "a");
  EXPECT_NULL(zorbase_least_squares(&number, 1, 1, 1, nullptr, &number), "b");
  EXPECT_NULL(zorbase_least_squares(&number, 1, 1, 1, &number, nullptr), "x");
  EXPECT_NULL(zorbase_fit_plane(nullptr, 1, &plane), "points");
  EXPECT_NULL(zorbase_fit_plane(&point, 1, nullptr), "plane");
  EXPECT_NULL(zorbase_fit_line(nullptr, 1, &line), "points");
  EXPECT_NULL(zorbase_fit_line(&flat, 1, nullptr), "line");
  EXPECT_NULL(zorbase_surface_create(nullptr), "surface");
  EXPECT_NULL(zorbase_surface_add(nullptr, &point, 1), "surface");
  EXPECT_NULL(zorbase_surface_add(surface, nullptr, 1), "samples");
  EXPECT_NULL(zorbase_surface_solve(nullptr), "surface");
  EXPECT_NULL(zorbase_surface_height(nullptr, 0, 0, &number), "surface");
  EXPECT_NULL(zorbase_surface_height(surface, 0, 0, nullptr), "z");
  EXPECT_NULL(zorbase_surface_heights(nullptr, &flat, 1, &number), "surface");
  EXPECT_NULL(zorbase_surface_heights(surface, nullptr, 1, &number), "places");
  EXPECT_NULL(zorbase_surface_heights(surface, &flat, 1, nullptr), "z");
  zorbase_surface_destroy(surface);
}

}  // namespace
}  // namespace ZORBase::Test
