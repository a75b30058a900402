#include <zor/Progress.h>

#include <fmt/format.h>
#include <unistd.h>

#include <utility>

namespace ZORBase::Tool {
namespace {

TProgress::TManner OnTheTerminal() {
  TProgress::TManner manner;
  manner.Stream = stderr;
  manner.IsShown = ::isatty(STDERR_FILENO) != 0;
  return manner;
}

}  // namespace

TProgress::TProgress(std::string Work, std::int64_t Total) : TProgress(std::move(Work), Total, OnTheTerminal()) {}

TProgress::TProgress(std::string Work, std::int64_t Total, const TManner& Manner)
    : FWork(std::move(Work)), FTotal(Total), FManner(Manner) {
  if (FManner.IsShown) FWatcher = std::thread([this] { Watch(); });
}

TProgress::~TProgress() {
  if (!FWatcher.joinable()) return;
  {
    const std::lock_guard lock(FMutex);
    FIsEnded = true;
  }
  FEnd.notify_one();
  FWatcher.join();
}

void TProgress::Watch() {
  const auto start = std::chrono::steady_clock::now();
  std::unique_lock lock(FMutex);
  const auto endsWithin = [&](std::chrono::milliseconds Time) {
    return FEnd.wait_for(lock, Time, [this] { return FIsEnded; });
  };
  if (endsWithin(FManner.Patience)) return;
  do {
    ShowLine(std::chrono::duration_cast<std::chrono::seconds>(std::chrono::steady_clock::now() - start));
  } while (!endsWithin(FManner.Interval));
  fmt::print(FManner.Stream, "\r\x1b[K");  // ESC [ K wipes the rest of the line
  std::fflush(FManner.Stream);
}

void TProgress::ShowLine(std::chrono::seconds Elapsed) {
  const std::int64_t done = FDone.load(std::memory_order_relaxed);
  std::string state;
  if (FTotal > 0) {
    state = fmt::format("{:.0f} %", 100.0 * static_cast<double>(done) / static_cast<double>(FTotal));
  } else if (done > 0) {
    state = fmt::format("{}", done);
  } else {
    state = fmt::format("{} s", Elapsed.count());
  }
  fmt::print(FManner.Stream, "\r\x1b[Kzor: {} ... {}", FWork, state);
  std::fflush(FManner.Stream);
}

}  // namespace ZORBase::Tool
