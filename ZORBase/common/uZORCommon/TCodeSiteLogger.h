#pragma once

#include <ZORBase/common/Export.h>

#include <atomic>
#include <cstdint>
#include <functional>
#include <mutex>
#include <string>
#include <string_view>

namespace ZORBase {

/// A logger with a category, a colour for viewers that show one, a switch and a sink. It may be used from several
/// threads; messages reach the sink one at a time.
class ZORBASE_API TCodeSiteLogger {
 public:
  /// Takes the category and one message. It must not call the logger.
  using TSink = std::function<void(std::string_view Category, std::string_view Message)>;

  /// A logger without a category, switched off, whose sink is the standard error stream.
  TCodeSiteLogger();

  ///@{
  /// The category, which the sink gets with every message.
  std::string Category() const;
  void SetCategory(std::string_view Value);
  ///@}

  ///@{
  /// The colour in blue-green-red byte order: 0x00BBGGRR.
  std::uint32_t CategoryColor() const { return FCategoryColor; }
  void SetCategoryColor(std::uint32_t Value) { FCategoryColor = Value; }
  ///@}

  ///@{
  /// Whether messages reach the sink.
  bool Enabled() const { return FEnabled; }
  void SetEnabled(bool Value) { FEnabled = Value; }
  ///@}

  /// Replaces the sink; an empty one brings back the standard error stream.
  void SetSink(TSink Sink);

  /// Hands Message to the sink while the logger is switched on. What the sink raises passes through.
  void Send(std::string_view Message);

 private:
  mutable std::mutex FLock;
  std::string FCategory;
  TSink FSink;
  std::atomic<std::uint32_t> FCategoryColor{0};
  std::atomic<bool> FEnabled{false};
};

}  // namespace ZORBase
