/* Package: what the host's package loader calls, and a guard for programs that link the library instead.
 *   GetPackageInfoTable, Initialize, Finalize   exported under exactly these names
 *   TPackageInfoTable, TPackageModule           the descriptor, readable from C
 *   TPackageSession                             starts the library, and shuts it down at the end of a scope
 */
#pragma once

#include <ZORBase/common/Export.h>

#include <cstdint>

namespace ZORBase {

/// A module's routines in the start-up table.
struct TPackageModule {
  const char* Name;    ///< its name
  void (*StartUp)();   ///< runs at the start of the library
  void (*ShutDown)();  ///< runs at its end
};

/// The package's descriptor. Everything it points to lives as long as the library is loaded.
struct TPackageInfoTable {
  std::int32_t ContainedCount;    ///< how many there are of Contained
  const char* const* Contained;   ///< names of the modules that the package contains
  std::int32_t RequiredCount;     ///< how many there are of Required
  const char* const* Required;    ///< names of the packages that it requires
  std::int32_t ModuleCount;       ///< how many there are of Modules
  const TPackageModule* Modules;  ///< start-up and shut-down routines, in the order of starting
};

extern "C" {

/// \return the descriptor; never null.
ZORBASE_API const TPackageInfoTable* GetPackageInfoTable();

/// Runs the start-up routines of all modules in table order. Calls nest: each needs a Finalize of its own. When a
/// start-up fails, the modules before it are shut down again and the failure passes on.
ZORBASE_API void Initialize();

/// Runs the shut-down routines of all modules in reverse table order.
ZORBASE_API void Finalize();

}  // extern "C"

/// Starts the library for the length of a scope: one object in main is enough, and several nest.
class TPackageSession {
 public:
  TPackageSession() { Initialize(); }
  ~TPackageSession() { Finalize(); }
  TPackageSession(const TPackageSession&) = delete;
  TPackageSession& operator=(const TPackageSession&) = delete;
};

}  // namespace ZORBase
