#include <ZORBase/capi/zorbase.h>

#include <bit>
#include <memory>

#include "support/EvaluationArguments.h"
#include "support/Evaluations.h"

namespace ZORBase::Test {
namespace {

using TCalls = std::vector<TEvaluation>;

/// What was asked for must be given; a failure ends the test.
void Check(zorbase_status Status) {
  if (Status != ZORBASE_OK) throw std::runtime_error(zorbase_last_error());
}

zorbase_matrix Outside(const TMatrix4D& Matrix) { return std::bit_cast<zorbase_matrix>(Matrix); }
zorbase_quaternion Outside(const TQuaternion& q) { return std::bit_cast<zorbase_quaternion>(q); }
zorbase_pose Outside(const TPoint6D& P) { return std::bit_cast<zorbase_pose>(P); }

/// A call that gives a T, for each of the arguments.
template <class T, class TFunction>
std::function<void(TResults&)> ForEachOf(const TArguments& Arguments, TFunction Function) {
  return [Arguments, Function](TResults& Results) {
    for (const double argument : Arguments) {
      T result{};
      Check(Function(argument, &result));
      Results.Add(result);
    }
  };
}

/// A call that gives a T for each of the arguments at once.
template <class T, class TFunction>
std::function<void(TResults&)> ForAllOf(const TArguments& Arguments, TFunction Function) {
  return [Arguments, Function](TResults& Results) {
    std::array<T, kEvaluations> results{};
    Check(Function(Arguments.data(), Arguments.size(), results.data()));
    Results.AddAll(std::span<const T>(results));
  };
}

std::shared_ptr<zorbase_curve> NewCurve() {
  zorbase_curve* curve = nullptr;
  Check(zorbase_curve_create(&curve));
  std::vector<zorbase_pose> poses;
  for (const TPoint6D& pose : SpiralPoses(30)) poses.push_back(Outside(pose));
  Check(zorbase_curve_fit_array(curve, poses.data(), poses.size(), ZORBASE_CHORD));
  return {curve, zorbase_curve_destroy};
}

void AddCurve(TCalls& Calls) {
  const auto curve = NewCurve();
  const zorbase_curve* const c = curve.get();
  double length = 0.0;
  Check(zorbase_curve_length(c, &length));
  const TArguments lengths = Spread(-1.0, 1.05 * length);
  const auto one = [&]<class T>(const char* Name, const TArguments& Arguments, T, auto Function) {
    Calls.push_back(
        {Name, ForEachOf<T>(Arguments, [curve, Function](double x, T* y) { return Function(curve.get(), x, y); })});
  };
  const auto all = [&]<class T>(const char* Name, const TArguments& Arguments, T, auto Function) {
    Calls.push_back(
        {Name, ForAllOf<T>(Arguments, [curve, Function](auto... Values) { return Function(curve.get(), Values...); })});
  };
  one("zorbase_curve_evaluate", kParameters, zorbase_pose{}, zorbase_curve_evaluate);
  all("zorbase_curve_evaluate_many", kParameters, zorbase_pose{}, zorbase_curve_evaluate_many);
  one("zorbase_curve_derivatives", kParameters, std::array<zorbase_pose, 4>{},
      [](auto* Curve, double u, auto* Result) { return zorbase_curve_derivatives(Curve, u, Result->data()); });
  one("zorbase_curve_curvature", kParameters, 0.0, zorbase_curve_curvature);
  one("zorbase_curve_length", kParameters, 0.0,
      [](auto* Curve, double, auto* Result) { return zorbase_curve_length(Curve, Result); });
  one("zorbase_curve_length_of_param", kParameters, 0.0,
      [](auto* Curve, double u, auto* Result) { return zorbase_curve_length_of_param(Curve, 0.3, u, Result); });
  one("zorbase_curve_param_of_length", lengths, 0.0, zorbase_curve_param_of_length);
  all("zorbase_curve_lengths_of_params", kParameters, 0.0, zorbase_curve_lengths_of_params);
  all("zorbase_curve_params_of_lengths", lengths, 0.0, zorbase_curve_params_of_lengths);
}

void AddTransforms(TCalls& Calls) {
  const zorbase_matrix frame = Outside(FrameOf(1));
  Calls.push_back({"zorbase_matrix_transform_points", ForEachOf<zorbase_point>(kParameters, [=](double t, auto* R) {
                     const zorbase_point point = {t, 1.0, -t};
                     return zorbase_matrix_transform_points(&frame, &point, 1, R);
                   })});
  Calls.push_back({"zorbase_matrix_transform_directions", ForEachOf<zorbase_point>(kParameters, [=](double t, auto* R) {
                     const zorbase_point direction = {t, 1.0, -t};
                     return zorbase_matrix_transform_directions(&frame, &direction, 1, R);
                   })});
  Calls.push_back({"zorbase_matrix_transform_poses", ForEachOf<zorbase_pose>(kParameters, [=](double t, auto* R) {
                     const zorbase_pose pose = {t, 1.0, -t, 0.0, 0.6, 0.8};
                     return zorbase_matrix_transform_poses(&frame, &pose, 1, R);
                   })});
  Calls.push_back({"zorbase_matrix_multiply", ForEachOf<zorbase_matrix>(kParameters, [=](double t, auto* R) {
                     const zorbase_matrix right = Outside(FrameOf(t));
                     return zorbase_matrix_multiply(&frame, &right, R);
                   })});
  Calls.push_back({"zorbase_matrix_invert", ForEachOf<zorbase_matrix>(kParameters, [=](double t, auto* R) {
                     const zorbase_matrix matrix = Outside(FrameOf(t));
                     return zorbase_matrix_invert(&matrix, R);
                   })});
  Calls.push_back({"zorbase_matrix_angle", ForEachOf<double>(kParameters, [=](double t, auto* R) {
                     const zorbase_matrix to = Outside(FrameOf(t));
                     return zorbase_matrix_angle(&frame, &to, R);
                   })});
}

void AddBlends(TCalls& Calls) {
  std::array<zorbase_quaternion, 4> q{};
  std::array<zorbase_matrix, 4> m{};
  for (std::size_t i = 0; i < 4; ++i) {
    q[i] = Outside(RotationOf(static_cast<double>(i)));
    m[i] = Outside(FrameOf(static_cast<double>(i)));
  }
  using TRotation = zorbase_quaternion;
  using TFrame = zorbase_matrix;
  const auto add = [&](const char* Name, std::function<void(TResults&)> Run) {
    Calls.push_back({Name, std::move(Run)});
  };
  add("zorbase_quaternion_nlerp", ForEachOf<TRotation>(kParameters, [=](double t, auto* R) {
        return zorbase_quaternion_nlerp(t, &q[1], &q[2], R);
      }));
  add("zorbase_quaternion_slerp", ForEachOf<TRotation>(kParameters, [=](double t, auto* R) {
        return zorbase_quaternion_slerp(t, &q[1], &q[2], R);
      }));
  add("zorbase_quaternion_squad", ForEachOf<TRotation>(kParameters, [=](double t, auto* R) {
        return zorbase_quaternion_squad(t, &q[0], &q[1], &q[2], &q[3], R);
      }));
  add("zorbase_quaternion_slerp_many", ForAllOf<TRotation>(kParameters, [=](auto* t, auto count, auto* R) {
        return zorbase_quaternion_slerp_many(t, count, &q[1], &q[2], R);
      }));
  add("zorbase_quaternion_angle", ForEachOf<double>(kParameters, [=](double t, auto* R) {
        const TRotation to = Outside(RotationOf(t));
        return zorbase_quaternion_angle(&q[0], &to, R);
      }));
  add("zorbase_matrix_nlerp",
      ForEachOf<TFrame>(kParameters, [=](double t, auto* R) { return zorbase_matrix_nlerp(t, &m[1], &m[2], R); }));
  add("zorbase_matrix_slerp",
      ForEachOf<TFrame>(kParameters, [=](double t, auto* R) { return zorbase_matrix_slerp(t, &m[1], &m[2], R); }));
  add("zorbase_matrix_squad", ForEachOf<TFrame>(kParameters, [=](double t, auto* R) {
        return zorbase_matrix_squad(t, &m[0], &m[1], &m[2], &m[3], R);
      }));
  add("zorbase_matrix_slerp_many", ForAllOf<TFrame>(kParameters, [=](auto* t, auto count, auto* R) {
        return zorbase_matrix_slerp_many(t, count, &m[1], &m[2], R);
      }));
  const zorbase_pose from = {0, 0, 0, 0, 0, 1};
  const zorbase_pose to = {10, 5, 1, 0, 0.6, 0.8};
  add("zorbase_pose_move", ForAllOf<zorbase_pose>(kParameters, [=](auto* t, auto count, auto* R) {
        return zorbase_pose_move(t, count, &from, &to, R);
      }));
}

void AddSurface(TCalls& Calls) {
  zorbase_surface* made = nullptr;
  Check(zorbase_surface_create(&made));
  const std::shared_ptr<zorbase_surface> surface(made, zorbase_surface_destroy);
  std::vector<zorbase_point> samples;
  for (const TPoint3D& sample : BowlSamples()) samples.push_back({sample.X, sample.Y, sample.Z});
  Check(zorbase_surface_add(made, samples.data(), samples.size()));
  Check(zorbase_surface_solve(made));
  Calls.push_back({"zorbase_surface_height", ForEachOf<double>(kParameters, [=](double x, auto* z) {
                     return zorbase_surface_height(surface.get(), 30 * x, 7 - x, z);
                   })});
  Calls.push_back({"zorbase_surface_heights", ForAllOf<double>(kParameters, [=](auto* x, auto count, auto* z) {
                     std::array<zorbase_point2, kEvaluations> places{};
                     for (std::size_t i = 0; i < count; ++i) places[i] = {30 * x[i], 7 - x[i]};
                     return zorbase_surface_heights(surface.get(), places.data(), count, z);
                   })});
}

std::shared_ptr<zorbase_filter> NewFilter(int32_t Kind) {
  const zorbase_filter_settings settings = {.size = sizeof(zorbase_filter_settings),
                                            .kind = Kind,
                                            .order = 0,
                                            .sample_frequency = 1000,
                                            .cutoff_frequency = 40,
                                            .initial_value = 0.5};
  zorbase_filter* filter = nullptr;
  Check(zorbase_filter_create(&settings, &filter));
  return {filter, zorbase_filter_destroy};
}

}  // namespace

std::vector<TEvaluation> CEvaluations() {
  TCalls calls;
  AddCurve(calls);
  AddTransforms(calls);
  AddBlends(calls);
  AddSurface(calls);
  return calls;
}

std::vector<TEvaluation> CSampleCalls() {
  TCalls calls;
  for (const int32_t kind : {ZORBASE_HAMMING, ZORBASE_BLACKMAN, ZORBASE_RECTANGLE, ZORBASE_AVERAGE}) {
    const std::string name = "zorbase_filter of the kind " + std::to_string(kind) + ": ";
    const auto f = NewFilter(kind);
    calls.push_back({name + "step", ForEachOf<double>(kParameters, [f](double x, auto* y) {
                       return zorbase_filter_step(f.get(), x, y);
                     })});
    calls.push_back({name + "batch", ForAllOf<double>(kParameters, [f](auto* x, auto count, auto* y) {
                       return zorbase_filter_batch(f.get(), x, count, y);
                     })});
    calls.push_back({name + "timed", ForEachOf<std::array<double, 8>>(kParameters, [f](double x, auto* y) {
                       size_t count = 0;
                       return zorbase_filter_timed(f.get(), x, 0.0053, y->data(), y->size(), &count);
                     })});
    calls.push_back({name + "clear", ForEachOf<double>(kParameters, [f](double x, auto*) {
                       return zorbase_filter_clear(f.get(), x);
                     })});
    calls.push_back({name + "response", ForEachOf<double>(Spread(0, 500), [f](double x, auto* y) {
                       return zorbase_filter_response(f.get(), x, y);
                     })});
    calls.push_back({name + "frequency_of", ForEachOf<double>(Spread(0, 1), [f](double x, auto* y) {
                       return zorbase_filter_frequency_of(f.get(), x, y);
                     })});
  }
  return calls;
}

}  // namespace ZORBase::Test
