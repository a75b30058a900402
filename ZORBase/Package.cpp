#include <ZORBase/Package.h>

#include <ZORBase/ZORBase.h>

#include <array>
#include <cstddef>

namespace ZORBase {
namespace {

constexpr std::array kContained = {
    "uSurfaceInterpolater", "uSVD",          "uZORCommon", "SysInit",       "uHermiteInterpolater",
    "uBezierHelper",        "CADTypesEuler", "CADTypes6D", "CADTypesXD",    "uNewtonIterator",
    "uWcsPtInterpolator",   "NurbsGeometry", "uFFT",       "LowPassFilter",
};

constexpr std::array kRequired = {"BaseLibrary", "CodeSiteLogging", "GeometryLibrary", "LanguageRunTime"};

#define ZORBASE_MODULE(Name) \
  TPackageModule { #Name, &Name::initialization, &Name::Finalization }

// Every module stands behind those it builds on.
constexpr std::array kModules = {
    ZORBASE_MODULE(SysInit),
    ZORBASE_MODULE(uZORCommon),
    ZORBASE_MODULE(CADTypes6D),
    ZORBASE_MODULE(CADTypesEuler),
    ZORBASE_MODULE(CADTypesXD),
    ZORBASE_MODULE(NurbsGeometry),
    ZORBASE_MODULE(uSVD),
    ZORBASE_MODULE(uNewtonIterator),
    ZORBASE_MODULE(uWcsPtInterpolator),
    ZORBASE_MODULE(uHermiteInterpolater),
    ZORBASE_MODULE(uSurfaceInterpolater),
    ZORBASE_MODULE(uBezierHelper),
    ZORBASE_MODULE(uFFT),
    ZORBASE_MODULE(LowPassFilter),
};

#undef ZORBASE_MODULE

constexpr TPackageInfoTable kInfoTable = {
    static_cast<std::int32_t>(kContained.size()), kContained.data(),
    static_cast<std::int32_t>(kRequired.size()),  kRequired.data(),
    static_cast<std::int32_t>(kModules.size()),   kModules.data(),
};

void ShutDownFirst(std::size_t Count) {
  for (std::size_t i = Count; i > 0; --i) kModules[i - 1].ShutDown();
}

}  // namespace

const TPackageInfoTable* GetPackageInfoTable() { return &kInfoTable; }

void Initialize() {
  std::size_t started = 0;
  try {
    for (; started < kModules.size(); ++started) kModules[started].StartUp();
  } catch (...) {
    ShutDownFirst(started);
    throw;
  }
}

void Finalize() { ShutDownFirst(kModules.size()); }

}  // namespace ZORBase
