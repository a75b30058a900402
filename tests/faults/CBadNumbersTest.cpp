// Every call of the C interface that takes numbers is given those that no calculation likes: its status is one of those for results and
// for input that is refused, it takes little memory, and comes back.
#include <initializer_list>

#include "faults/BadInput.h"
#include "faults/COwned.h"

namespace ZORBase::Test {
namespace {

constexpr std::size_t kRoom = 16;

// The calls of an entry, which have all been made.
void Answers(std::initializer_list<zorbase_status> Statuses) {
  for (const zorbase_status status : Statuses) {
    const bool isAnswer = status == ZORBASE_OK || status == ZORBASE_ERROR || status == ZORBASE_BAD_ARGUMENT ||
                          status == ZORBASE_NOT_POSSIBLE;
    if (!isAnswer) throw TStatusError{status};
  }
}

std::array<zorbase_pose, 5> CPosesWith(double Value) {
  return {
      {{0, 0, 0, 0, 0, 1}, {1, 1, 0, 0, 0, 1}, {2, 0.5, 0, 0, 0, 1}, {3, Value, 0, 0, Value, 1}, {4, 2, 0, 0, 0, 1}}};
}

// A turn about Z, but for an entry of the rotation and one of the translation.
zorbase_matrix CMatrixWith(double Value) { return {{{Value, -1, 0, 0}, {1, 0, 0, Value}, {0, 0, 1, 0}}}; }

TNumberEntries CPoseEntries() {
  return {
      {"zorbase_pose_to_text, zorbase_number_to_text",
       [](double v) {
         std::array<char, 2048> text{};
         std::size_t count = 0;
         const zorbase_pose pose = {v, -v, 0, v, 1, v};
         Answers({zorbase_pose_to_text(&pose, 12, text.data(), text.size(), &count),
                  zorbase_number_to_text(v, 1074, text.data(), text.size(), &count)});
       }},
      {"zorbase_pose_from_text",
       [](double v) {
         zorbase_pose pose{};
         const std::string text = "0 1 2 3 4 " + FloatToStr(v);
         Answers({zorbase_pose_from_text(text.c_str(), &pose)});
       }},
      {"zorbase_euler_to_poses, zorbase_pose_move",
       [](double v) {
         const std::array<zorbase_euler_pose, 2> angles = {{{v, 0, 0, v, -v, 1}, {0, 0, 0, 0, v, 0}}};
         std::array<zorbase_pose, 3> poses{};
         const std::array t = {0.0, v, 0.5};
         const zorbase_pose from = {0, 0, 0, 0, 0, 1}, to = {1, 0, 0, 0, 1, 0}, bad = {v, 0, 0, v, 0, 1};
         Answers({zorbase_euler_to_poses(angles.data(), angles.size(), poses.data()),
                  zorbase_pose_move(t.data(), t.size(), &from, &to, poses.data()),
                  zorbase_pose_move(t.data(), t.size(), &from, &bad, poses.data())});
       }},
      {"zorbase_poses",
       [](double v) {
         const TScratchFolder folder;
         const std::string name = folder.File("poses.txt");
         const auto items = CPosesWith(v);
         TOwnedPoses poses;
         Answers({zorbase_poses_append(poses.Get(), items.data(), items.size()),
                  zorbase_poses_save(poses.Get(), name.c_str(), 12), zorbase_poses_load(poses.Get(), name.c_str()),
                  zorbase_poses_load_euler(poses.Get(), name.c_str())});
       }},
  };
}

TNumberEntries CCurveEntries() {
  return {
      {"zorbase_curve_fit, zorbase_curve_fit_array",
       [](double v) {
         const auto items = CPosesWith(v);
         TOwnedPoses poses;
         TOwnedCurve curve;
         Answers({zorbase_poses_append(poses.Get(), items.data(), items.size()),
                  zorbase_curve_fit(curve.Get(), poses.Get(), ZORBASE_CHORD),
                  zorbase_curve_fit_array(curve.Get(), items.data(), items.size(), ZORBASE_CENTRIPETAL)});
       }},
      {"zorbase_curve_set_control_points, zorbase_curve_measure",
       [](double v) {
         const auto points = CPosesWith(v);
         const std::array knots = {0.0, 0.0, 0.0, 0.0, 0.5, 1.0, 1.0, 1.0, 1.0};
         const std::array badKnots = {0.0, 0.0, 0.0, 0.0, v, 1.0, 1.0, 1.0, 1.0};
         const zorbase_pose somewhere = {1, 0, 0, 0, 0, 1};
         zorbase_pose pose{};
         zorbase_closest closest{};
         closest.size = sizeof closest;
         for (const auto& knotVector : {knots, badKnots}) {
           TOwnedCurve curve;
           Answers({zorbase_curve_set_control_points(curve.Get(), knotVector.data(), knotVector.size(), points.data(),
                                                     points.size()),
                    zorbase_curve_evaluate(curve.Get(), 0.5, &pose), zorbase_curve_measure(curve.Get()),
                    zorbase_curve_closest(curve.Get(), &somewhere, &closest), zorbase_curve_reverse(curve.Get())});
         }
       }},
      {"zorbase_curve, what is asked of it",
       [](double v) {
         const auto poses = CPosesWith(0.25);
         const std::array numbers = {0.5, v, 0.25};
         const zorbase_pose place = {v, -v, 0, 0, 0, 1};
         std::array<zorbase_pose, kRoom> found{};
         std::array<double, kRoom> values{};
         zorbase_closest closest{};
         closest.size = sizeof closest;
         TOwnedCurve curve;
         Answers({zorbase_curve_fit_array(curve.Get(), poses.data(), poses.size(), ZORBASE_CHORD),
                  zorbase_curve_evaluate(curve.Get(), v, found.data()),
                  zorbase_curve_evaluate_many(curve.Get(), numbers.data(), numbers.size(), found.data()),
                  zorbase_curve_derivatives(curve.Get(), v, found.data()),
                  zorbase_curve_curvature(curve.Get(), v, values.data()),
                  zorbase_curve_closest(curve.Get(), &place, &closest),
                  zorbase_curve_length_of_param(curve.Get(), v, -v, values.data()),
                  zorbase_curve_param_of_length(curve.Get(), v, values.data()),
                  zorbase_curve_lengths_of_params(curve.Get(), numbers.data(), numbers.size(), values.data()),
                  zorbase_curve_params_of_lengths(curve.Get(), numbers.data(), numbers.size(), values.data())});
       }},
  };
}

TNumberEntries CSolveEntries() {
  return {
      {"zorbase_least_squares",
       [](double v) {
         const std::array a = {1.0, v, 0.0, 2.0, 1.0, v};
         const std::array b = {1.0, 2.0, v};
         std::array<double, kRoom> x{};
         Answers({zorbase_least_squares(a.data(), 3, 2, ZORBASE_ROW_MAJOR, b.data(), x.data()),
                  zorbase_least_squares(a.data(), 3, 2, ZORBASE_COLUMN_MAJOR, b.data(), x.data())});
       }},
      {"zorbase_fit_plane, zorbase_fit_line",
       [](double v) {
         const std::array<zorbase_point, 4> points = {{{0, 0, 1}, {1, v, 2}, {0, 1, v}, {v, 1, 0}}};
         const std::array<zorbase_point2, 3> places = {{{0, 1}, {v, 2}, {1, v}}};
         zorbase_plane plane{};
         zorbase_line line{};
         plane.size = sizeof plane;
         line.size = sizeof line;
         Answers({zorbase_fit_plane(points.data(), points.size(), &plane),
                  zorbase_fit_line(places.data(), places.size(), &line)});
       }},
      {"zorbase_surface",
       [](double v) {
         const std::array<zorbase_point, 4> samples = {{{0, 0, 1}, {1, 0, 2}, {0, 1, 3}, {1, 1, 5}}};
         const zorbase_point bad = {v, 2, v};
         const std::array<zorbase_point2, 2> places = {{{0.5, 0.25}, {v, -v}}};
         std::array<double, kRoom> z{};
         TOwnedSurface surface;
         Answers({zorbase_surface_add(surface.Get(), samples.data(), samples.size()),
                  zorbase_surface_add(surface.Get(), &bad, 1), zorbase_surface_solve(surface.Get()),
                  zorbase_surface_height(surface.Get(), v, 0.5, z.data()),
                  zorbase_surface_heights(surface.Get(), places.data(), places.size(), z.data())});
       }},
  };
}

// Makes a filter and gives it numbers.
void UseFilter(zorbase_filter_settings Settings, double Value) {
  const std::array samples = {1.0, Value, 2.0};
  std::array<double, kRoom> outputs{};
  std::size_t count = 0;
  zorbase_filter* filter = nullptr;
  Settings.size = sizeof Settings;
  Answers({zorbase_filter_create(&Settings, &filter), zorbase_filter_step(filter, Value, outputs.data()),
           zorbase_filter_batch(filter, samples.data(), samples.size(), outputs.data()),
           zorbase_filter_timed(filter, Value, 0.01, outputs.data(), outputs.size(), &count),
           zorbase_filter_timed(filter, 1.0, Value, outputs.data(), outputs.size(), &count),
           zorbase_filter_clear(filter, Value), zorbase_filter_response(filter, Value, outputs.data()),
           zorbase_filter_frequency_of(filter, Value, outputs.data())});
  zorbase_filter_destroy(filter);
}

TNumberEntries CSignalEntries() {
  return {
      {"zorbase_spectrum",
       [](double v) {
         const std::array samples = {1.0, v, 0.0, 2.0, 1.0, v};
         std::array<double, kRoom> bins{};
         std::size_t count = 0;
         TOwnedSpectrum spectrum;
         for (const double step : {0.5, v}) {
           Answers({zorbase_spectrum_transform(spectrum.Get(), samples.data(), samples.size(), step),
                    zorbase_spectrum_amplitudes(spectrum.Get(), bins.data(), bins.size(), &count),
                    zorbase_spectrum_phases(spectrum.Get(), bins.data(), bins.size(), &count),
                    zorbase_spectrum_frequencies(spectrum.Get(), bins.data(), bins.size(), &count)});
         }
       }},
      {"zorbase_filter, samples",
       [](double v) {
         UseFilter({0, ZORBASE_HAMMING, 0, 148, 15, 0}, v);
       }},
      {"zorbase_filter, initial value",
       [](double v) {
         UseFilter({0, ZORBASE_AVERAGE, 0, 148, 15, v}, v);
       }},
      {"zorbase_filter, sample frequency",
       [](double v) {
         UseFilter({0, ZORBASE_BLACKMAN, 9, v, 15, 0}, 1);
       }},
      {"zorbase_filter, cut-off frequency",
       [](double v) {
         UseFilter({0, ZORBASE_RECTANGLE, 9, 148, v, 0}, 1);
       }},
  };
}

TNumberEntries CMatrixEntries() {
  return {
      {"zorbase_matrix, made",
       [](double v) {
         const zorbase_euler_pose angles = {v, 0, 1, v, -v, v};
         const zorbase_point axis = {v, 1, 0}, other = {0, v, 1}, up = {0, 0, 1};
         zorbase_matrix made{};
         Answers({zorbase_matrix_from_angles_xyz(&angles, &made), zorbase_matrix_from_angles_zyx(&angles, &made),
                  zorbase_matrix_from_axis_angle(&axis, 1.0, &made), zorbase_matrix_from_axis_angle(&up, v, &made),
                  zorbase_matrix_from_vectors(&axis, &other, &made)});
       }},
      {"zorbase_matrix, used",
       [](double v) {
         const zorbase_matrix matrix = CMatrixWith(v), turn = CMatrixWith(0);
         zorbase_matrix made{};
         zorbase_euler_pose angles{};
         double angle = 0.0;
         Answers({zorbase_matrix_to_angles_xyz(&matrix, &angles), zorbase_matrix_to_angles_zyx(&matrix, &angles),
                  zorbase_matrix_multiply(&matrix, &matrix, &made), zorbase_matrix_invert(&matrix, &made),
                  zorbase_matrix_angle(&matrix, &turn, &angle), zorbase_matrix_angle(&turn, &matrix, &angle)});
       }},
      {"zorbase_matrix, transforms",
       [](double v) {
         std::array<zorbase_point, 2> points = {{{v, 1, 0}, {1, v, -v}}};
         std::array<zorbase_pose, 5> poses = CPosesWith(v);
         for (const zorbase_matrix& matrix : {CMatrixWith(v), CMatrixWith(0)}) {
           Answers({zorbase_matrix_transform_points(&matrix, points.data(), points.size(), points.data()),
                    zorbase_matrix_transform_directions(&matrix, points.data(), points.size(), points.data()),
                    zorbase_matrix_transform_poses(&matrix, poses.data(), poses.size(), poses.data())});
         }
       }},
      {"zorbase_matrix, blends",
       [](double v) {
         const zorbase_matrix matrix = CMatrixWith(v), turn = CMatrixWith(0);
         const std::array t = {0.0, v, 0.5};
         std::array<zorbase_matrix, 3> made{};
         Answers({zorbase_matrix_nlerp(v, &turn, &turn, made.data()),
                  zorbase_matrix_nlerp(0.5, &turn, &matrix, made.data()),
                  zorbase_matrix_slerp(v, &turn, &turn, made.data()),
                  zorbase_matrix_slerp(0.5, &matrix, &turn, made.data()),
                  zorbase_matrix_slerp_many(t.data(), t.size(), &turn, &turn, made.data()),
                  zorbase_matrix_squad(v, &turn, &turn, &turn, &turn, made.data()),
                  zorbase_matrix_squad(0.5, &matrix, &turn, &matrix, &turn, made.data())});
       }},
      {"zorbase_quaternion",
       [](double v) {
         const zorbase_quaternion bad = {v, 0, -v, 1}, turn = {1, 0, 0, 0};
         const zorbase_matrix matrix = CMatrixWith(v);
         const std::array t = {0.0, v, 0.5};
         std::array<zorbase_quaternion, 3> made{};
         zorbase_matrix rotation{};
         double angle = 0.0;
         Answers({zorbase_quaternion_from_matrix(&matrix, made.data()), zorbase_quaternion_to_matrix(&bad, &rotation),
                  zorbase_quaternion_multiply(&bad, &bad, made.data()), zorbase_quaternion_angle(&bad, &turn, &angle),
                  zorbase_quaternion_nlerp(v, &turn, &turn, made.data()),
                  zorbase_quaternion_nlerp(0.5, &bad, &turn, made.data()),
                  zorbase_quaternion_slerp(v, &turn, &turn, made.data()),
                  zorbase_quaternion_slerp(0.5, &turn, &bad, made.data()),
                  zorbase_quaternion_slerp_many(t.data(), t.size(), &turn, &bad, made.data()),
                  zorbase_quaternion_squad(v, &turn, &turn, &turn, &turn, made.data()),
                  zorbase_quaternion_squad(0.5, &bad, &turn, &bad, &turn, made.data())});
       }},
  };
}

TCountEntries CCountEntries() {
  return {
      {"zorbase_poses_get, zorbase_poses_save",
       [](int n) {
         const TScratchFolder folder;
         const auto items = CPosesWith(1);
         zorbase_pose pose{};
         TOwnedPoses poses;
         Answers({zorbase_poses_append(poses.Get(), items.data(), items.size()),
                  zorbase_poses_get(poses.Get(), n, &pose),
                  zorbase_poses_save(poses.Get(), folder.File("poses.txt").c_str(), n)});
       }},
      {"zorbase_pose_to_text, zorbase_number_to_text",
       [](int n) {
         std::array<char, 2048> text{};
         std::size_t count = 0;
         const zorbase_pose pose = {1, 2, 3, 0, 0, 1};
         Answers({zorbase_pose_to_text(&pose, n, text.data(), text.size(), &count),
                  zorbase_number_to_text(0.1, n, text.data(), text.size(), &count)});
       }},
      {"zorbase_curve_fit_array, method",
       [](int n) {
         const auto items = CPosesWith(1);
         TOwnedCurve curve;
         Answers({zorbase_curve_fit_array(curve.Get(), items.data(), items.size(), n)});
       }},
      {"zorbase_least_squares, layout",
       [](int n) {
         const std::array a = {1.0, 2.0, 0.0, 2.0};
         std::array<double, 2> x{};
         Answers({zorbase_least_squares(a.data(), 2, 2, n, a.data(), x.data())});
       }},
      {"zorbase_filter_create, kind",
       [](int n) {
         UseFilter({0, n, 9, 148, 15, 0}, 1);
       }},
      {"zorbase_filter_create, order",
       [](int n) {
         UseFilter({0, ZORBASE_HAMMING, n, 148, 15, 0}, 1);
       }},
  };
}

TEST(CBadNumbers, OfPosesGiveAStatusInLittleMemory) {
  ExpectAnAnswer("poses, C interface", CPoseEntries(), kBadNumbers);
}
TEST(CBadNumbers, OfCurvesGiveAStatusInLittleMemory) {
  ExpectAnAnswer("curves, C interface", CCurveEntries(), kBadNumbers);
}
TEST(CBadNumbers, OfSolversGiveAStatusInLittleMemory) {
  ExpectAnAnswer("solvers, C interface", CSolveEntries(), kBadNumbers);
}
TEST(CBadNumbers, OfSignalsGiveAStatusInLittleMemory) {
  ExpectAnAnswer("signals, C interface", CSignalEntries(), kBadNumbers);
}
TEST(CBadNumbers, OfTransformsGiveAStatusInLittleMemory) {
  ExpectAnAnswer("transforms, C interface", CMatrixEntries(), kBadNumbers);
}
TEST(CBadCounts, GiveAStatusInLittleMemory) { ExpectAnAnswer("counts, C interface", CCountEntries(), kBadCounts); }

}  // namespace
}  // namespace ZORBase::Test
