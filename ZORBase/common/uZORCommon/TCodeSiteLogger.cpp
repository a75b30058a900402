#include <ZORBase/common/uZORCommon/TCodeSiteLogger.h>

#include <cstdio>
#include <utility>

namespace ZORBase {
namespace {

void WriteToStandardError(std::string_view Category, std::string_view Message) {
  const std::string line = std::string(Category) + ": " + std::string(Message) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

}  // namespace

TCodeSiteLogger::TCodeSiteLogger() : FSink(WriteToStandardError) {}

std::string TCodeSiteLogger::Category() const {
  const std::lock_guard lock(FLock);
  return FCategory;
}

void TCodeSiteLogger::SetCategory(std::string_view Value) {
  const std::lock_guard lock(FLock);
  FCategory = Value;
}

void TCodeSiteLogger::SetSink(TSink Sink) {
  const std::lock_guard lock(FLock);
  FSink = Sink ? std::move(Sink) : TSink(WriteToStandardError);
}

void TCodeSiteLogger::Send(std::string_view Message) {
  if (!FEnabled) return;
  const std::lock_guard lock(FLock);
  FSink(FCategory, Message);
}

}  // namespace ZORBase
