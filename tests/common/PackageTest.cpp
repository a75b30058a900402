#include <ZORBase/Package.h>

#include <ZORBase/ZORBase.h>

#include "support/TestAllocator.h"
#include "support/TestSupport.h"

#if !defined(ZORBASE_STATIC)
#include <dlfcn.h>
#endif

#include <algorithm>
#include <new>
#include <span>
#include <string>
#include <vector>

namespace ZORBase {
namespace {

using Test::IsExactPose;
using Test::TFailingAllocations;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::UnorderedElementsAreArray;

std::vector<std::string> NamesOf(const char* const* Names, std::int32_t Count) { return {Names, Names + Count}; }

std::span<const TPackageModule> Modules() {
  const TPackageInfoTable* const table = GetPackageInfoTable();
  return {table->Modules, static_cast<std::size_t>(table->ModuleCount)};
}

std::vector<std::string> ModuleNames() {
  std::vector<std::string> names;
  for (const TPackageModule& module : Modules()) names.emplace_back(module.Name);
  return names;
}

TEST(PackageInfoTable, NamesTheContainedModulesInTheirOrder) {
  const TPackageInfoTable* const table = GetPackageInfoTable();
  ASSERT_NE(table, nullptr);
  EXPECT_THAT(NamesOf(table->Contained, table->ContainedCount),
              ElementsAre("uSurfaceInterpolater", "uSVD", "uZORCommon", "SysInit", "uHermiteInterpolater",
                          "uBezierHelper", "CADTypesEuler", "CADTypes6D", "CADTypesXD", "uNewtonIterator",
                          "uWcsPtInterpolator", "NurbsGeometry", "uFFT", "LowPassFilter"));
  EXPECT_EQ(GetPackageInfoTable(), table);
}

TEST(PackageInfoTable, RequiresBaseLibraryLoggingGeometryLibraryAndRunTimeInThisOrder) {
  const TPackageInfoTable* const table = GetPackageInfoTable();
  EXPECT_THAT(NamesOf(table->Required, table->RequiredCount),
              ElementsAre("BaseLibrary", "CodeSiteLogging", "GeometryLibrary", "LanguageRunTime"));
}

TEST(PackageInfoTable, StartsEveryContainedModuleOnce) {
  const TPackageInfoTable* const table = GetPackageInfoTable();
  EXPECT_THAT(ModuleNames(), UnorderedElementsAreArray(NamesOf(table->Contained, table->ContainedCount)));
  for (const TPackageModule& module : Modules()) {
    EXPECT_NE(module.StartUp, nullptr) << module.Name;
    EXPECT_NE(module.ShutDown, nullptr) << module.Name;
  }
}

TEST(PackageInfoTable, AModuleStartsBehindThoseItBuildsOn) {
  const std::vector<std::string> names = ModuleNames();
  const auto place = [&](std::string_view Name) { return std::find(names.begin(), names.end(), Name) - names.begin(); };
  const std::pair<std::string_view, std::string_view> orders[] = {
      {"uZORCommon", "CADTypes6D"},     {"CADTypes6D", "CADTypesEuler"},         {"CADTypes6D", "CADTypesXD"},
      {"CADTypes6D", "NurbsGeometry"},  {"CADTypesEuler", "uWcsPtInterpolator"}, {"uSVD", "uNewtonIterator"},
      {"uSVD", "uSurfaceInterpolater"},
  };
  for (const auto& [first, second] : orders) EXPECT_LT(place(first), place(second)) << first << " and " << second;
}

TEST(PackageInfoTable, ItsRoutinesAreThoseOfTheModules) {
  const auto isAt = [&](std::string_view Name, void (*StartUp)(), void (*ShutDown)()) {
    return std::any_of(Modules().begin(), Modules().end(), [&](const TPackageModule& Module) {
      return Module.Name == Name && Module.StartUp == StartUp && Module.ShutDown == ShutDown;
    });
  };
#define EXPECT_ROUTINES_OF(Name) EXPECT_TRUE(isAt(#Name, &Name::initialization, &Name::Finalization))
  EXPECT_ROUTINES_OF(uSurfaceInterpolater);
  EXPECT_ROUTINES_OF(uSVD);
  EXPECT_ROUTINES_OF(uZORCommon);
  EXPECT_ROUTINES_OF(SysInit);
  EXPECT_ROUTINES_OF(uHermiteInterpolater);
  EXPECT_ROUTINES_OF(uBezierHelper);
  EXPECT_ROUTINES_OF(CADTypesEuler);
  EXPECT_ROUTINES_OF(CADTypes6D);
  EXPECT_ROUTINES_OF(CADTypesXD);
  EXPECT_ROUTINES_OF(uNewtonIterator);
  EXPECT_ROUTINES_OF(uWcsPtInterpolator);
  EXPECT_ROUTINES_OF(NurbsGeometry);
  EXPECT_ROUTINES_OF(uFFT);
  EXPECT_ROUTINES_OF(LowPassFilter);
#undef EXPECT_ROUTINES_OF
}

#if !defined(ZORBASE_STATIC)
TEST(PackageEntryPoints, AreExportedUnderTheirPlainNames) {
  EXPECT_EQ(::dlsym(RTLD_DEFAULT, "GetPackageInfoTable"), reinterpret_cast<void*>(&GetPackageInfoTable));
  EXPECT_EQ(::dlsym(RTLD_DEFAULT, "Initialize"), reinterpret_cast<void*>(&Initialize));
  EXPECT_EQ(::dlsym(RTLD_DEFAULT, "Finalize"), reinterpret_cast<void*>(&Finalize));
}
#endif

TEST(Package, InitializeStartsTheLoggerAndFillsTheConstantsUntilTheMatchingFinalize) {
  EXPECT_EQ(ZORLog(), nullptr);
  Initialize();
  EXPECT_NE(ZORLog(), nullptr);
  EXPECT_THAT(TPoint6D::FZero, IsExactPose(TPoint6D::Create(0, 0, 0, 0, 0, 0)));
  EXPECT_THAT(TPoint6D::FOnes, IsExactPose(TPoint6D::Create(1, 1, 1, 1, 1, 1)));
  Initialize();
  Finalize();
  EXPECT_NE(ZORLog(), nullptr);
  Finalize();
  EXPECT_EQ(ZORLog(), nullptr);
  EXPECT_THAT(TPoint6D::FOnes, IsExactPose(TPoint6D::Create(1, 1, 1, 1, 1, 1)));
}

TEST(Package, ASessionLastsForItsScopeAndNests) {
  {
    const TPackageSession outer;
    const TCodeSiteLogger* const logger = ZORLog();
    EXPECT_NE(logger, nullptr);
    { const TPackageSession inner; }
    EXPECT_EQ(ZORLog(), logger);
  }
  EXPECT_EQ(ZORLog(), nullptr);
}

TEST(Package, AModuleThatTheHostStartedItselfOutlivesTheFinalize) {
  uZORCommon::initialization();
  { const TPackageSession session; }
  EXPECT_NE(ZORLog(), nullptr);
  uZORCommon::Finalization();
  EXPECT_EQ(ZORLog(), nullptr);
}

// The logger is the one thing that a start-up allocates.
TEST(Package, AStartUpThatFailsPassesOnAndLeavesNothingStarted) {
  bool hasFailed = false;
  try {
    const TFailingAllocations failing;
    Initialize();
  } catch (const std::bad_alloc&) {
    hasFailed = true;
  }
  EXPECT_TRUE(hasFailed);
  EXPECT_EQ(ZORLog(), nullptr);
  Initialize();
  EXPECT_NE(ZORLog(), nullptr);
  Finalize();
  EXPECT_EQ(ZORLog(), nullptr);
}

}  // namespace
}  // namespace ZORBase
