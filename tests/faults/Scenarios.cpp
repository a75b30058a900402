#include "faults/Scenarios.h"

#include <ZORBase/ZORBase.h>

#include <array>
#include <cmath>

namespace ZORBase::Test {
namespace {

template <class T>
std::unique_ptr<TScenario> MakeScenario(const std::string& Input, const std::string& File) {
  return std::make_unique<T>(Input, File);
}

void AppendPose(std::vector<double>& Results, const TPoint6D& Pose) {
  const auto numbers = Pose.ToArray();
  Results.insert(Results.end(), numbers.begin(), numbers.end());
}

class TLoadFitResample : public TScenario {
 public:
  TLoadFitResample(const std::string& Input, const std::string&) : FInput(Input) {}
  std::vector<double> Run() override {
    constexpr int kPlaces = 20;
    std::vector<double> results;
    FPoses.LoadFromFile(FInput);
    FCurve.CreateCross(&FPoses, mChord);
    for (int i = 0; i <= kPlaces; ++i) {
      AppendPose(results, FCurve.EvalPoint(FCurve.ParamOfLength(FCurve.CurveLength() * i / kPlaces)));
    }
    AppendPose(results, FCurve.ClosestPoint(FPoses[1]).Point);
    return results;
  }

 private:
  std::string FInput;
  TPoint6DList FPoses;
  TNurbs6D FCurve;
};

class TBlendSave : public TScenario {
 public:
  TBlendSave(const std::string&, const std::string& File) : FFile(File) {}
  std::vector<double> Run() override {
    constexpr int kSteps = 30;
    std::vector<double> results;
    TPoint6DList poses;
    const TWcsPtInterpolator steps(TPoint6D::Create(0, 0, 0, 0, 0, 1), TPoint6D::Create(10, 0, 5, 1, 0, 0), kSteps, 0);
    for (int i = 0; i <= kSteps; ++i) poses.Add(steps.GetWcsPt(i));
    steps.SaveAllToFile(FFile);
    poses.SaveToFile(FFile, 5);
    TPoint6DList saved;
    saved.LoadFromFile(FFile);
    for (const TPoint6D& pose : saved) AppendPose(results, pose);
    return results;
  }

 private:
  std::string FFile;
};

// A bump over the plane.
double HeightAt(double X, double Y) { return std::exp(-X * X - Y * Y); }

class TLaySurface : public TScenario {
 public:
  TLaySurface(const std::string&, const std::string&) {}
  std::vector<double> Run() override {
    constexpr int kSide = 4;
    TV4Interpolator surface;
    TList<TPoint3D> samples;
    std::vector<TPoint2D> places;
    for (int i = 0; i < kSide * kSide; ++i) {
      const double x = i % kSide - 1.3;
      const double y = i / kSide - 1.6;  // NOLINT(bugprone-integer-division): the row
      samples.Add(TPoint3D::Create(x, y, HeightAt(x, y)));
      places.push_back(TPoint2D::Create(x + 0.3, y + 0.4));
    }
    surface.AddPointList(samples);
    surface.CalcWeights();
    std::vector<double> heights(places.size());
    surface.CalcZ(places, heights);
    FSurface = std::move(surface);
    return heights;
  }

 private:
  TV4Interpolator FSurface;
};

class TSmooth : public TScenario {
 public:
  TSmooth(const std::string&, const std::string&) {}
  std::vector<double> Run() override {
    constexpr int kSamples = 100;
    std::vector<double> samples;
    for (int i = 0; i < kSamples; ++i) samples.push_back(std::sin(0.1 * i) + 0.1 * (i % 3));
    FFilter.SetFsample(148.0);
    FFilter.SetFcenter(15.0);
    FFilter.Initialize(0.0);
    std::vector<double> results(samples.size());
    FFilter.Filt(samples, results);
    FSpectrum.CalFFT(samples, kSamples, 1.0 / 148.0);
    for (const double amplitude : FSpectrum.Amplitudes()) results.push_back(amplitude);
    return results;
  }

 private:
  THammingLowPassFilter FFilter;
  TFFT FSpectrum;
};

class TStartUp : public TScenario {
 public:
  TStartUp(const std::string&, const std::string&) {}
  std::vector<double> Run() override {
    const TPackageSession session;
    SetZORLogEnable(true);
    return {TPoint6D::FOnes.X, ZORLog() ? 1.0 : 0.0};
  }
};

}  // namespace

std::span<const TScenarioKind> Scenarios() {
  static constexpr std::array kScenarios = {
      TScenarioKind{"load, fit, resample", &MakeScenario<TLoadFitResample>},
      TScenarioKind{"blend, save", &MakeScenario<TBlendSave>},
      TScenarioKind{"surface", &MakeScenario<TLaySurface>},
      TScenarioKind{"filter, spectrum", &MakeScenario<TSmooth>},
      TScenarioKind{"package start-up", &MakeScenario<TStartUp>},
  };
  return kScenarios;
}

}  // namespace ZORBase::Test
