#pragma once

#include <atomic>
#include <cstdint>

namespace ZORBase {

/// Makes the start-up and the shut-down of a module nest: the work of each happens once, on the first start-up and on
/// the matching last shut-down.
class TModuleGuard {
 public:
  /// Counts a start-up and does Work when the module was not started. A Work that raises leaves the module not started.
  template <class TWork>
  void StartUp(TWork&& Work) {
    if (FCounter.fetch_sub(1) != 0) return;
    try {
      Work();
    } catch (...) {
      ++FCounter;
      throw;
    }
  }

  /// Counts a shut-down and does Work when it is the last one.
  template <class TWork>
  void ShutDown(TWork&& Work) {
    if (++FCounter == 0) Work();
  }

  ///@{
  /// The same for a module that has no work to do then.
  void StartUp() {
    StartUp([] {});
  }
  void ShutDown() {
    ShutDown([] {});
  }
  ///@}

 private:
  // Minus the number of start-ups that no shut-down has answered yet.
  std::atomic<std::int32_t> FCounter{0};
};

}  // namespace ZORBase
