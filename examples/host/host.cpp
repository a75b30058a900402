// A host that is not linked with the library: it loads it at run time, as a package, looks into its descriptor, starts and stops
// it, uses it through the C interface, and unloads it; all of it twice. Its argument is the library's file.
#include <ZORBase/Package.h>
#include <ZORBase/capi/zorbase.h>
#include <dlfcn.h>

#include <array>
#include <cstdint>
#include <cstdlib>
#include <iostream>
#include <stdexcept>
#include <string>

using ZORBase::Finalize;
using ZORBase::GetPackageInfoTable;
using ZORBase::Initialize;

namespace {

class TLoadedPackage {
 public:
  explicit TLoadedPackage(const char* FileName) : FHandle(::dlopen(FileName, RTLD_NOW | RTLD_LOCAL)) {
    if (!FHandle) throw std::runtime_error(::dlerror());
  }
  ~TLoadedPackage() { ::dlclose(FHandle); }
  TLoadedPackage(const TLoadedPackage&) = delete;
  TLoadedPackage& operator=(const TLoadedPackage&) = delete;

  /// \return the function of this name, as a pointer of the type that its declaration has.
  template <class TFunction>
  TFunction* Function(const char* Name) const {
    void* const symbol = ::dlsym(FHandle, Name);
    if (!symbol) throw std::runtime_error(::dlerror());
    return reinterpret_cast<TFunction*>(symbol);
  }

 private:
  void* FHandle;
};

// Only the declarations come from the headers; nothing here is resolved before the package is loaded.
#define FUNCTION_OF(Package, Name) (Package).Function<decltype(Name)>(#Name)

void PrintNames(const char* Title, const char* const* Names, std::int32_t Count) {
  std::cout << Title;
  for (std::int32_t i = 0; i < Count; ++i) std::cout << " " << Names[i];
  std::cout << "\n";
}

void PrintTable(const ZORBase::TPackageInfoTable& Table) {
  PrintNames("contains", Table.Contained, Table.ContainedCount);
  PrintNames("requires", Table.Required, Table.RequiredCount);
  std::cout << "starts  ";
  for (std::int32_t i = 0; i < Table.ModuleCount; ++i) std::cout << " " << Table.Modules[i].Name;
  std::cout << "\n";
}

// Measures the curve through five poses on a straight line.
void Use(const TLoadedPackage& Package) {
  constexpr std::array<zorbase_pose, 5> poses = {
      {{0, 0, 0, 0, 0, 1}, {10, 0, 0, 0, 0, 1}, {20, 0, 0, 0, 0, 1}, {30, 0, 0, 0, 0, 1}, {40, 0, 0, 0, 0, 1}}};
  zorbase_curve* curve = nullptr;
  double length = 0.0;
  const bool isGood =
      FUNCTION_OF(Package, zorbase_curve_create)(&curve) == ZORBASE_OK &&
      FUNCTION_OF(Package, zorbase_curve_fit_array)(curve, poses.data(), poses.size(), ZORBASE_CHORD) == ZORBASE_OK &&
      FUNCTION_OF(Package, zorbase_curve_length)(curve, &length) == ZORBASE_OK;
  FUNCTION_OF(Package, zorbase_curve_destroy)(curve);
  if (!isGood) throw std::runtime_error(FUNCTION_OF(Package, zorbase_last_error)());
  std::cout << "  a curve of " << length << " mm\n";
}

void PrintState(const TLoadedPackage& Package, const char* When) {
  const zorbase_status status = FUNCTION_OF(Package, zorbase_set_log_enabled)(0);
  std::cout << "  " << When << ": " << (status == ZORBASE_OK ? "started" : "not started") << "\n";
}

void Run(const char* FileName) {
  const TLoadedPackage package(FileName);
  PrintTable(*FUNCTION_OF(package, GetPackageInfoTable)());
  const auto initialize = FUNCTION_OF(package, Initialize);
  const auto finalize = FUNCTION_OF(package, Finalize);
  for (int round = 0; round < 2; ++round) {
    PrintState(package, "before Initialize");
    initialize();
    initialize();  // another part of the host needs it as well
    Use(package);
    finalize();
    PrintState(package, "after one of two Finalize");
    finalize();
    PrintState(package, "after both");
  }
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return EXIT_FAILURE;
  try {
    for (int round = 0; round < 2; ++round) {
      Run(argv[1]);
      const bool isGone = ::dlopen(argv[1], RTLD_NOW | RTLD_NOLOAD) == nullptr;
      std::cout << (isGone ? "unloaded" : "still there") << "\n";
    }
  } catch (const std::exception& Error) {
    std::cerr << Error.what() << "\n";
    return EXIT_FAILURE;
  }
}
