#include <ZORBase/common/uZORCommon.h>

#include <ZORBase/common/BaseServices/Extended.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/Sign.h>
#include <ZORBase/common/TModuleGuard.h>

#include <algorithm>
#include <atomic>
#include <cmath>
#include <memory>
#include <mutex>

namespace ZORBase {
namespace {

// Pale yellow: blue 0x97, green 0xFF, red 0xFF.
constexpr std::uint32_t kLogCategoryColor = 0x0097FFFF;

constexpr double kSmallestDivTolerance = 1e-7;

constinit TModuleGuard Guard;
constinit std::mutex LogLock;
constinit std::atomic<TCodeSiteLogger*> Logger{nullptr};

}  // namespace

TCodeSiteLogger* ZORLog() {
  const std::lock_guard lock(LogLock);
  return Logger.load();
}

void SetZORLogEnable(bool Value) {
  TCodeSiteLogger* const logger = Logger.load();
  if (!logger) RaiseGeneralError("SetZORLogEnable: the library is not started; call Initialize first");
  logger->SetEnabled(Value);
}

double SafeDiv(double Numerator, double Denominator, double Tolerance) {
  const Extended e = std::max(kSmallestDivTolerance, Tolerance);
  if (std::fabs(Denominator) >= e) return static_cast<double>(static_cast<Extended>(Numerator) / Denominator);
  if (std::fabs(Numerator) < e) return 0.0;
  const double sign = Denominator == 0.0 ? SignOf(Numerator) : SignOfQuotient(Numerator, Denominator);
  return static_cast<double>(sign / e);
}

namespace uZORCommon {

void initialization() {
  Guard.StartUp([] {
    auto logger = std::make_unique<TCodeSiteLogger>();
    logger->SetCategory("ZORLog");
    logger->SetCategoryColor(kLogCategoryColor);
    logger->SetEnabled(DebuggerAttached());
    const std::lock_guard lock(LogLock);
    Logger = logger.release();
  });
}

void Finalization() {
  Guard.ShutDown([] {
    const std::lock_guard lock(LogLock);
    delete Logger.exchange(nullptr);
  });
}

}  // namespace uZORCommon

}  // namespace ZORBase
