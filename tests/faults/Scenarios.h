// Scenarios: whole tasks of a host, each to be done while something fails, and again on the same objects when nothing does.
#pragma once

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace ZORBase::Test {

/// A task and the objects that it works on. Run may be called again after it failed.
class TScenario {
 public:
  TScenario() = default;
  virtual ~TScenario() = default;
  TScenario(const TScenario&) = delete;
  TScenario& operator=(const TScenario&) = delete;

  /// \return the numbers that the task gives. \throws what the library raises.
  virtual std::vector<double> Run() = 0;
};

/// How to make a scenario; those that write do so into File, those that read find poses in Input.
struct TScenarioKind {
  const char* Name;
  std::unique_ptr<TScenario> (*Make)(const std::string& Input, const std::string& File);
};

/// The five tasks through the classes: load, fit and resample; blend and save; a surface; spectrum and filter; start-up.
std::span<const TScenarioKind> Scenarios();

/// The same tasks through the C interface. Instead of raising, they end with TStatusError.
std::span<const TScenarioKind> CScenarios();

/// A call of the C interface that did not go well.
struct TStatusError {
  int Status;
};

}  // namespace ZORBase::Test
