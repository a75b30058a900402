// The C interface: a row of calls on objects that the calls before have left. Input: a number for the call, then its arguments, and so
// on. Pointers are right or null; what a pointer stands for is always as large as is said. CTransforms has the transforms.
#include <algorithm>

#include "fuzz/CCalls.h"

namespace ZORBase::Test::FuzzCInterface {
namespace {

constexpr int kMostCalls = 40;
constexpr int kMostItems = 32;
constexpr double kLargestPart = 50.0;  // of a pose that is fitted: a table has a row per 0.03 of length

// The design of a filter takes as many sines as their product.
constexpr int kLongestFilter = 1000;
constexpr double kHighestFrequency = 1000.0;

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

// The numbers lose digits on the way, and those that are none can not be read again.
void SaveAndLoad(const TObjects& Objects, int Digits) {
  const TFuzzFolder folder;
  const std::string name = TFuzzFolder::File("poses.txt");
  if (!Check(zorbase_poses_save(Objects.Poses, name.c_str(), Digits))) return;
  std::size_t count = 0;
  std::size_t countAgain = 0;
  TObjects others;
  if (!Check(zorbase_poses_load(others.Poses, name.c_str()))) return;
  Check(zorbase_poses_get_all(Objects.Poses, nullptr, 0, &count));
  Check(zorbase_poses_get_all(others.Poses, nullptr, 0, &countAgain));
  Require(count == countAgain, "a saved list is loaded whole");
}

void Load(const TObjects& Objects, std::string_view Text) {
  const TFuzzFolder folder;
  const std::string name = TFuzzFolder::Write("poses.txt", Text);
  Check(zorbase_poses_load(Objects.Poses, name.c_str()));
  std::size_t before = 0;
  std::size_t after = 0;
  Check(zorbase_poses_get_all(Objects.Poses, nullptr, 0, &before));
  const bool isLoaded = Check(zorbase_poses_load_euler(Objects.Poses, name.c_str()));
  Check(zorbase_poses_get_all(Objects.Poses, nullptr, 0, &after));
  Require(isLoaded || before == after, "a file of poses with angles that is not loaded leaves the list");
}

void PosesCall(TFuzzInput& Input, TObjects& Objects) {
  std::array<zorbase_pose, kMostItems> places{};
  std::array<char, 64> text{};
  std::size_t count = 0;
  switch (Input.Choice(10)) {
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
    case 8: SaveAndLoad(Objects, Input.Int()); break;
    case 9: Load(Objects, Input.Line()); break;
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
  if (method >= -1) {
    Check(zorbase_curve_fit_array(Objects.Curve, poses.data(), poses.size(), method));
    return;
  }
  const TNumbers knots(Input);
  Check(zorbase_curve_set_control_points(Objects.Curve, knots.Data(), knots.Count, poses.data(), poses.size()));
  Check(zorbase_curve_measure(Objects.Curve));
}

// A fit through the list is that through the array.
void FitThroughList(TFuzzInput& Input, TObjects& Objects) {
  const int method = Input.Int();
  std::size_t count = 0;
  Check(zorbase_poses_get_all(Objects.Poses, nullptr, 0, &count));
  std::vector<zorbase_pose> poses(count);
  Check(zorbase_poses_get_all(Objects.Poses, poses.data(), poses.size(), &count));
  if (count > kMostItems || !AreSmall(poses)) return;
  TObjects others;
  const bool isFitted = Check(zorbase_curve_fit_array(others.Curve, poses.data(), poses.size(), method));
  Require(Check(zorbase_curve_fit(Objects.Curve, Objects.Poses, method)) == isFitted,
          "a list is fitted where its array is");
  if (!isFitted) return;
  std::array<std::array<zorbase_pose, kMostItems + 2>, 2> points{};
  Check(zorbase_curve_control_points(Objects.Curve, points[0].data(), points[0].size(), nullptr));
  Check(zorbase_curve_control_points(others.Curve, points[1].data(), points[1].size(), nullptr));
  Require(SameStructs<zorbase_pose>(points[0], points[1]), "a list is fitted as its array is");
}

void CurveCall(TFuzzInput& Input, TObjects& Objects) {
  std::array<zorbase_pose, kMostItems> poses{};
  std::array<double, kMostItems> numbers{};
  std::size_t count = 0;
  zorbase_curve* const curve = Objects.Curve;
  switch (Input.Choice(13)) {
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
    case 12: FitThroughList(Input, Objects); break;
    default: MakeCurve(Input, Objects);
  }
}

void FitLine(TFuzzInput& Input) {
  std::vector<zorbase_point2> points(static_cast<std::size_t>(Input.Count(kMostItems)));
  for (zorbase_point2& point : points) {
    point.x = Input.Number();
    point.y = Input.Number();
  }
  zorbase_line line{};
  line.size = static_cast<std::size_t>(Input.Count(1)) * sizeof line;
  Check(zorbase_fit_line(points.data(), points.size(), &line));
}

void ReadHeights(TFuzzInput& Input, TObjects& Objects) {
  std::array<zorbase_point2, 3> places{};
  for (zorbase_point2& place : places) {
    place.x = Input.Number();
    place.y = Input.Number();
  }
  CheckCallForMany<double, 3>(
      "heights are read together as one by one",
      [&](double* Heights) { return zorbase_surface_heights(Objects.Surface, places.data(), places.size(), Heights); },
      [&](std::size_t i, double* Height) {
        return zorbase_surface_height(Objects.Surface, places[i].x, places[i].y, Height);
      });
}

void SolveCall(TFuzzInput& Input, TObjects& Objects) {
  std::array<double, kMostItems> results{};
  switch (Input.Choice(5)) {
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
    case 3: FitLine(Input); break;
    case 4: ReadHeights(Input, Objects); break;
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

// Starts anew twice, so that both ways of filtering begin alike.
void StepAndBatch(TFuzzInput& Input, zorbase_filter* Filter) {
  const double before = Input.Number();
  const TNumbers samples(Input);
  std::array<double, kMostItems> together{};
  std::array<double, kMostItems> single{};
  if (!Check(zorbase_filter_clear(Filter, before))) return;
  if (!Check(zorbase_filter_batch(Filter, samples.Data(), samples.Values.size(), together.data()))) return;
  Check(zorbase_filter_clear(Filter, before));
  for (std::size_t i = 0; i < samples.Values.size(); ++i)
    Require(Check(zorbase_filter_step(Filter, samples.Values[i], &single[i])),
            "what is filtered in a row is filtered one by one");
  Require(SameNumbers(together, single), "samples are filtered in a row as one by one");
}

void AskForWeights(const zorbase_filter* Filter) {
  std::size_t count = 0;
  if (!Check(zorbase_filter_weights(Filter, nullptr, 0, &count))) return;
  std::vector<double> weights(count);
  Require(Check(zorbase_filter_weights(Filter, weights.data(), weights.size(), &count)) && count == weights.size(),
          "the weights fit into as many places as are asked for");
}

void AskForBins(const zorbase_spectrum* Spectrum) {
  std::array<double, kMostItems> bins{};
  std::array<std::size_t, 3> counts{};
  Check(zorbase_spectrum_amplitudes(Spectrum, bins.data(), bins.size(), counts.data()));
  Check(zorbase_spectrum_frequencies(Spectrum, bins.data(), bins.size(), &counts[1]));
  Check(zorbase_spectrum_phases(Spectrum, bins.data(), bins.size(), &counts[2]));
  Require(counts[0] == counts[1] && counts[0] == counts[2], "each bin has an amplitude, a frequency and a phase");
}

void SignalCall(TFuzzInput& Input, TObjects& Objects) {
  std::array<double, kMostItems> results{};
  std::size_t count = 0;
  switch (Input.Choice(10)) {
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
    case 5: AskForBins(Objects.Spectrum); break;
    case 7: StepAndBatch(Input, Objects.Filter); break;
    case 8: AskForWeights(Objects.Filter); break;
    case 9:
      if (Objects.Filter) Check(zorbase_filter_step(Objects.Filter, Input.Number(), results.data()));
      break;
    default: {
      const TNumbers samples(Input);
      Check(zorbase_spectrum_transform(Objects.Spectrum, samples.Data(), samples.Count, Input.Number()));
    }
  }
}

void FrameCall(TFuzzInput& Input) {
  Require(zorbase_interface_version() > 0 && std::strlen(zorbase_version()) > 0, "there is always a version");
  const int enabled = Input.Int();
  Require(!Check(zorbase_set_log_enabled(enabled)), "there is no logger before the start");
  Require(Check(zorbase_start()) && Check(zorbase_start()), "starts nest");
  Require(Check(zorbase_stop()) && Check(zorbase_set_log_enabled(enabled)), "the first of two stops leaves the logger");
  Require(Check(zorbase_stop()), "and the second one goes well, too");
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
      default: FrameCall(Input);
    }
  }
}

}  // namespace ZORBase::Test::FuzzCInterface
