#pragma once

#include <sys/resource.h>
#include <csignal>

namespace ZORBase::Test {

/// No file grows beyond Bytes for the length of a scope: what a full disk looks like to a program.
class TFileSizeLimit {
 public:
  explicit TFileSizeLimit(rlim_t Bytes) : FSignalBefore(std::signal(SIGXFSZ, SIG_IGN)) {
    getrlimit(RLIMIT_FSIZE, &FBefore);
    rlimit limit = FBefore;
    limit.rlim_cur = Bytes;
    setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~TFileSizeLimit() {
    setrlimit(RLIMIT_FSIZE, &FBefore);
    std::signal(SIGXFSZ, FSignalBefore);
  }
  TFileSizeLimit(const TFileSizeLimit&) = delete;
  TFileSizeLimit& operator=(const TFileSizeLimit&) = delete;

 private:
  void (*FSignalBefore)(int);
  rlimit FBefore{};
};

}  // namespace ZORBase::Test
