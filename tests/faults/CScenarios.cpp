#include <array>

#include "faults/COwned.h"

namespace ZORBase::Test {
namespace {

template <class T>
std::unique_ptr<TScenario> MakeCScenario(const std::string& Input, const std::string& File) {
  return std::make_unique<T>(Input, File);
}

class TCLoadFitResample : public TScenario {
 public:
  TCLoadFitResample(const std::string& Input, const std::string&) : FInput(Input) {}
  std::vector<double> Run() override {
    double length = 0.0;
    Ask(zorbase_poses_load(FPoses.Get(), FInput.c_str()));
    Ask(zorbase_curve_fit(FCurve.Get(), FPoses.Get(), ZORBASE_CHORD));
    Ask(zorbase_curve_length(FCurve.Get(), &length));
    std::vector<double> results;
    for (const double share : {0.0, 0.25, 0.5, 1.0}) {
      double param = 0.0;
      zorbase_pose pose{};
      Ask(zorbase_curve_param_of_length(FCurve.Get(), share * length, &param));
      Ask(zorbase_curve_evaluate(FCurve.Get(), param, &pose));
      results.insert(results.end(), {param, pose.x, pose.y, pose.z, pose.a, pose.b, pose.c});
    }
    return results;
  }

 private:
  std::string FInput;
  TOwnedPoses FPoses;
  TOwnedCurve FCurve;
};

class TCBlendSave : public TScenario {
 public:
  TCBlendSave(const std::string&, const std::string& File) : FFile(File) {}
  std::vector<double> Run() override {
    const zorbase_pose from = {0, 0, 0, 0, 0, 1};
    const zorbase_pose to = {10, 0, 5, 1, 0, 0};
    const std::array t = {0.0, 0.25, 0.5, 0.75, 1.0};
    std::array<zorbase_pose, t.size()> poses{};
    std::size_t count = 0;
    Ask(zorbase_pose_move(t.data(), t.size(), &from, &to, poses.data()));
    Ask(zorbase_poses_clear(FPoses.Get()));
    Ask(zorbase_poses_append(FPoses.Get(), poses.data(), poses.size()));
    Ask(zorbase_poses_save(FPoses.Get(), FFile.c_str(), 5));
    Ask(zorbase_poses_load(FPoses.Get(), FFile.c_str()));
    Ask(zorbase_poses_get_all(FPoses.Get(), poses.data(), poses.size(), &count));
    std::vector<double> results;
    for (const zorbase_pose& pose : poses)
      results.insert(results.end(), {pose.x, pose.y, pose.z, pose.a, pose.b, pose.c});
    return results;
  }

 private:
  std::string FFile;
  TOwnedPoses FPoses;
};

class TCSurface : public TScenario {
 public:
  TCSurface(const std::string&, const std::string&) {}
  std::vector<double> Run() override {
    const std::array<zorbase_point, 5> samples = {{{0, 0, 1}, {1, 0, 2}, {0, 1, 3}, {1, 1, 5}, {0.5, 0.25, 0}}};
    const std::array<zorbase_point2, 2> places = {{{0.25, 0.5}, {0.75, 0.25}}};
    TOwnedSurface surface;
    std::vector<double> heights(places.size());
    Ask(zorbase_surface_add(surface.Get(), samples.data(), samples.size()));
    Ask(zorbase_surface_solve(surface.Get()));
    Ask(zorbase_surface_heights(surface.Get(), places.data(), places.size(), heights.data()));
    return heights;
  }
};

class TCSmooth : public TScenario {
 public:
  TCSmooth(const std::string&, const std::string&) {}
  ~TCSmooth() override { zorbase_filter_destroy(FFilter); }
  std::vector<double> Run() override {
    std::array<double, 32> samples{};
    std::array<double, 32> results{};
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = static_cast<double>(i * i % 7);
    zorbase_filter_settings settings{};
    settings.size = sizeof settings;
    settings.kind = ZORBASE_HAMMING;
    settings.sample_frequency = 148.0;
    settings.cutoff_frequency = 15.0;
    zorbase_filter_destroy(FFilter);
    Ask(zorbase_filter_create(&settings, &FFilter));
    Ask(zorbase_filter_batch(FFilter, samples.data(), samples.size(), results.data()));
    std::vector<double> all(results.begin(), results.end());
    std::size_t bins = 0;
    Ask(zorbase_spectrum_transform(FSpectrum.Get(), samples.data(), samples.size(), 0.5));
    Ask(zorbase_spectrum_amplitudes(FSpectrum.Get(), results.data(), results.size(), &bins));
    all.insert(all.end(), results.begin(), results.begin() + static_cast<std::ptrdiff_t>(bins));
    return all;
  }

 private:
  zorbase_filter* FFilter = nullptr;
  TOwnedSpectrum FSpectrum;
};

class TCStartUp : public TScenario {
 public:
  TCStartUp(const std::string&, const std::string&) {}
  std::vector<double> Run() override {
    Ask(zorbase_start());
    const zorbase_status enabled = zorbase_set_log_enabled(1);
    Ask(zorbase_stop());
    Ask(enabled);
    return {1.0};
  }
};

}  // namespace

std::span<const TScenarioKind> CScenarios() {
  static constexpr std::array kScenarios = {
      TScenarioKind{"load, fit, resample", &MakeCScenario<TCLoadFitResample>},
      TScenarioKind{"blend, save", &MakeCScenario<TCBlendSave>},
      TScenarioKind{"surface", &MakeCScenario<TCSurface>},
      TScenarioKind{"filter, spectrum", &MakeCScenario<TCSmooth>},
      TScenarioKind{"package start-up", &MakeCScenario<TCStartUp>},
  };
  return kScenarios;
}

}  // namespace ZORBase::Test
