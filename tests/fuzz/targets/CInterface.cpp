// The C interface: a row of calls on objects that the calls before have left. Input: a number for the call, then its arguments, and so
// on. Pointers are right or null; what a pointer stands for is always as large as is said.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/capi/zorbase.h>

#include <algorithm>
#include <array>
#include <cstring>

namespace ZORBase::Test::FuzzCInterface {
namespace {

constexpr int kMostCalls = 40;
constexpr int kMostItems = 32;
constexpr double kLargestPart = 50.0;  // of a pose that is fitted: a table has a row per 0.03 of length

// The design of a filter takes as many sines as their product.
constexpr int kLongestFilter = 1000;
constexpr double kHighestFrequency = 1000.0;

void Check(zorbase_status Status) {
  Require(Status >= ZORBASE_OK && Status < ZORBASE_UNEXPECTED, "a status is one of the known ones");
  Require((Status == ZORBASE_OK) == (std::strlen(zorbase_last_error()) == 0), "a failure has a text, a success none");
}

struct TObjects {
  zorbase_poses* Poses = nullptr;
  zorbase_curve* Curve = nullptr;
  zorbase_spectrum* Spectrum = nullptr;
  zorbase_filter* Filter = nullptr;
  zorbase_surface* Surface = nullptr;

  TObjects() {
    Check(zorbase_poses_create(&Poses));
    Check(zorbase_curve_create(&Curve));
    Check(zorbase_spectrum_create(&Spectrum));
    Check(zorbase_surface_create(&Surface));
  }
  ~TObjects() {
    zorbase_poses_destroy(Poses);
    zorbase_curve_destroy(Curve);
    zorbase_spectrum_destroy(Spectrum);
    zorbase_filter_destroy(Filter);
    zorbase_surface_destroy(Surface);
  }
  TObjects(const TObjects&) = delete;
  TObjects& operator=(const TObjects&) = delete;
};

zorbase_pose NextPose(TFuzzInput& Input) {
  zorbase_pose pose{};
  for (double* const part : {&pose.x, &pose.y, &pose.z, &pose.a, &pose.b, &pose.c}) *part = Input.Number();
  return pose;
}

std::vector<zorbase_pose> NextPoses(TFuzzInput& Input) {
  std::vector<zorbase_pose> poses(static_cast<std::size_t>(Input.Count(kMostItems)));
  for (zorbase_pose& pose : poses) pose = NextPose(Input);
  return poses;
}

// The numbers and their count, which may be one that no array has.
struct TNumbers {
  std::vector<double> Values;
  std::size_t Count;
  explicit TNumbers(TFuzzInput& Input)
      : Values(static_cast<std::size_t>(Input.Count(kMostItems))), Count(Values.size()) {
    for (double& value : Values) value = Input.Number();
    if (Count == 0) Count = static_cast<std::size_t>(Input.Int()) & ~std::size_t{0x7fffffff};
  }
  const double* Data() const { return Values.empty() ? nullptr : Values.data(); }
};

void PosesCall(TFuzzInput& Input, TObjects& Objects) {
  std::array<zorbase_pose, kMostItems> places{};
  std::array<char, 64> text{};
  std::size_t count = 0;
  switch (Input.Choice(8)) {
    case 0: Check(zorbase_poses_clear(Objects.Poses)); break;
    case 1: Check(zorbase_poses_get(Objects.Poses, Input.Int(), places.data())); break;
    case 2: Check(zorbase_poses_get_all(Objects.Poses, places.data(), places.size(), &count)); break;
    case 3: {
      const zorbase_pose pose = NextPose(Input);
      Check(zorbase_pose_to_text(&pose, std::min(Input.Int(), 1000), text.data(), text.size(), &count));
      break;
    }
    case 4: Check(zorbase_pose_from_text(std::string(Input.Word()).c_str(), places.data())); break;
    case 5: {
      const double value = Input.Number();
      Check(zorbase_number_to_text(value, std::min(Input.Int(), 1000), nullptr, 0, &count));
      break;
    }
    default: {
      const std::vector<zorbase_pose> poses = NextPoses(Input);
      Check(zorbase_poses_append(Objects.Poses, poses.data(), poses.size()));
    }
  }
}

bool AreSmall(std::span<const zorbase_pose> Poses) {
  return std::all_of(Poses.begin(), Poses.end(), [](const zorbase_pose& Pose) {
    return std::max({Pose.x, Pose.y, Pose.z, Pose.a, Pose.b, Pose.c}) < kLargestPart &&
           std::min({Pose.x, Pose.y, Pose.z, Pose.a, Pose.b, Pose.c}) > -kLargestPart;
  });
}

void MakeCurve(TFuzzInput& Input, TObjects& Objects) {
  const int method = Input.Int();
  const std::vector<zorbase_pose> poses = NextPoses(Input);
  if (!AreSmall(poses)) return;
  if (method >= -1) return Check(zorbase_curve_fit_array(Objects.Curve, poses.data(), poses.size(), method));
  const TNumbers knots(Input);
  Check(zorbase_curve_set_control_points(Objects.Curve, knots.Data(), knots.Count, poses.data(), poses.size()));
  Check(zorbase_curve_measure(Objects.Curve));
}

void CurveCall(TFuzzInput& Input, TObjects& Objects) {
  std::array<zorbase_pose, kMostItems> poses{};
  std::array<double, kMostItems> numbers{};
  std::size_t count = 0;
  zorbase_curve* const curve = Objects.Curve;
  switch (Input.Choice(12)) {
    case 0: Check(zorbase_curve_evaluate(curve, Input.Number(), poses.data())); break;
    case 1: Check(zorbase_curve_derivatives(curve, Input.Number(), poses.data())); break;
    case 2: Check(zorbase_curve_curvature(curve, Input.Number(), numbers.data())); break;
    case 3: Check(zorbase_curve_length(curve, numbers.data())); break;
    case 4: Check(zorbase_curve_length_of_param(curve, Input.Number(), 1.0, numbers.data())); break;
    case 5: Check(zorbase_curve_param_of_length(curve, Input.Number(), numbers.data())); break;
    case 6: Check(zorbase_curve_reverse(curve)); break;
    case 7: Check(zorbase_curve_knots(curve, numbers.data(), numbers.size(), &count)); break;
    case 8: Check(zorbase_curve_control_points(curve, poses.data(), poses.size(), &count)); break;
    case 9: {
      const TNumbers params(Input);
      Check(zorbase_curve_evaluate_many(curve, params.Data(), params.Count, poses.data()));
      Check(zorbase_curve_params_of_lengths(curve, params.Data(), params.Count, numbers.data()));
      Check(zorbase_curve_lengths_of_params(curve, params.Data(), params.Count, numbers.data()));
      break;
    }
    case 10: {
      const zorbase_pose pose = NextPose(Input);
      zorbase_closest closest{};
      closest.size = sizeof closest;
      Check(zorbase_curve_closest(curve, &pose, &closest));
      break;
    }
    default: MakeCurve(Input, Objects);
  }
}

void SolveCall(TFuzzInput& Input, TObjects& Objects) {
  std::array<double, kMostItems> results{};
  switch (Input.Choice(3)) {
    case 0: {
      const TNumbers a(Input);
      const TNumbers b(Input);
      // All rows are whole.
      const std::size_t columns = b.Values.empty() ? 0 : a.Values.size() / b.Values.size();
      Check(zorbase_least_squares(a.Data(), b.Values.size(), columns, Input.Int(), b.Data(), results.data()));
      break;
    }
    case 1: {
      const std::array samples = {zorbase_point{Input.Number(), Input.Number(), Input.Number()},
                                  zorbase_point{Input.Number(), Input.Number(), Input.Number()},
                                  zorbase_point{Input.Number(), Input.Number(), Input.Number()}};
      zorbase_plane plane{};
      plane.size = static_cast<std::size_t>(Input.Count(1)) * sizeof plane;
      Check(zorbase_fit_plane(samples.data(), samples.size(), &plane));
      Check(zorbase_surface_add(Objects.Surface, samples.data(), samples.size()));
      break;
    }
    default: {
      const TPoint2D place = Input.Point2D();
      Check(zorbase_surface_solve(Objects.Surface));
      Check(zorbase_surface_height(Objects.Surface, place.X, place.Y, results.data()));
    }
  }
}

void MakeFilter(TFuzzInput& Input, TObjects& Objects) {
  zorbase_filter_settings settings{};
  settings.size = sizeof settings;
  settings.kind = Input.Int();
  settings.order = std::min(Input.Int(), kLongestFilter);
  settings.sample_frequency = std::min(Input.Number(), kHighestFrequency);
  settings.cutoff_frequency = std::max(Input.Number(), settings.sample_frequency / kLongestFilter);
  settings.initial_value = Input.Number();
  zorbase_filter_destroy(Objects.Filter);
  Check(zorbase_filter_create(&settings, &Objects.Filter));
}

void SignalCall(TFuzzInput& Input, TObjects& Objects) {
  std::array<double, kMostItems> results{};
  std::size_t count = 0;
  switch (Input.Choice(7)) {
    case 0: MakeFilter(Input, Objects); break;
    case 1: {
      const TNumbers samples(Input);
      Check(zorbase_filter_batch(Objects.Filter, samples.Data(), samples.Count, results.data()));
      break;
    }
    case 2: {
      const double sample = Input.Number();
      Check(zorbase_filter_timed(Objects.Filter, sample, Input.Number(), results.data(), results.size(), &count));
      break;
    }
    case 3: Check(zorbase_filter_clear(Objects.Filter, Input.Number())); break;
    case 4:
      Check(zorbase_filter_response(Objects.Filter, Input.Number(), results.data()));
      Check(zorbase_filter_frequency_of(Objects.Filter, Input.Number(), results.data()));
      break;
    case 5: Check(zorbase_spectrum_phases(Objects.Spectrum, results.data(), results.size(), &count)); break;
    default: {
      const TNumbers samples(Input);
      Check(zorbase_spectrum_transform(Objects.Spectrum, samples.Data(), samples.Count, Input.Number()));
    }
  }
}

void TransformCall(TFuzzInput& Input) {
  zorbase_matrix matrix{};
  zorbase_matrix other{};
  for (auto& row : matrix.m) {
    for (double& entry : row) entry = Input.Number();
  }
  std::array<zorbase_pose, 2> poses = {NextPose(Input), NextPose(Input)};
  const double t = Input.Number();
  zorbase_euler_pose angles{};
  zorbase_quaternion quaternion{};
  Check(zorbase_matrix_invert(&matrix, &other));
  Check(zorbase_matrix_multiply(&matrix, &other, &matrix));
  Check(zorbase_matrix_to_angles_xyz(&matrix, &angles));
  Check(zorbase_euler_to_poses(&angles, 1, poses.data()));
  Check(zorbase_quaternion_from_matrix(&matrix, &quaternion));
  Check(zorbase_matrix_slerp_many(&t, 1, &matrix, &other, &other));
  Check(zorbase_matrix_squad(t, &matrix, &other, &matrix, &other, &other));
  Check(zorbase_matrix_transform_poses(&matrix, poses.data(), poses.size(), poses.data()));
  Check(zorbase_pose_move(&t, 1, poses.data(), poses.data() + 1, poses.data()));
}

}  // namespace

ZORBASE_FUZZ_TARGET(CInterface) {
  TObjects objects;
  for (int i = 0; i < kMostCalls && !Input.AtEnd(); ++i) {
    switch (Input.Choice(5)) {
      case 0: PosesCall(Input, objects); break;
      case 1: CurveCall(Input, objects); break;
      case 2: SolveCall(Input, objects); break;
      case 3: SignalCall(Input, objects); break;
      default: TransformCall(Input);
    }
  }
}

}  // namespace ZORBase::Test::FuzzCInterface
