#pragma once

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <cstdio>
#include <mutex>
#include <string>
#include <thread>

namespace ZORBase::Tool {

/// Tells on standard error how far a piece of work is, while it lives: only when standard error is a terminal, and only
/// once the work takes more than a second. The line is wiped at the end.
class TProgress {
 public:
  /// Where and when the line appears.
  struct TManner {
    std::FILE* Stream = nullptr;
    bool IsShown = false;
    std::chrono::milliseconds Patience{1000};  ///< work that is done sooner stays silent
    std::chrono::milliseconds Interval{250};   ///< between two states of the line
  };

  /// \param Work   what is going on, such as "fitting the curve".
  /// \param Total  how much Advance will count up to; 0 when nobody knows.
  explicit TProgress(std::string Work, std::int64_t Total = 0);
  TProgress(std::string Work, std::int64_t Total, const TManner& Manner);
  TProgress(const TProgress&) = delete;
  TProgress& operator=(const TProgress&) = delete;
  ~TProgress();

  /// Done of Total is done. Cheap enough for every turn of a loop.
  void Advance(std::int64_t Done) { FDone.store(Done, std::memory_order_relaxed); }

 private:
  void Watch();
  void ShowLine(std::chrono::seconds Elapsed);

  std::string FWork;
  std::int64_t FTotal;
  TManner FManner;
  std::atomic<std::int64_t> FDone = 0;
  std::mutex FMutex;
  std::condition_variable FEnd;
  bool FIsEnded = false;
  // A thread of its own, so that the line moves while a single long call is at work.
  std::thread FWatcher;
};

}  // namespace ZORBase::Tool
