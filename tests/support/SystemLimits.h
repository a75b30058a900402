// SystemLimits: the system at its limits for the length of a scope.
//   TUnprivileged     the rights of an ordinary user, also when the tests run as root
//   TFileSizeLimit    files end at a number of bytes, as on a full disk
//   TIgnoredSignal    a signal that would end the process is ignored
#pragma once

#include <sys/resource.h>
#include <sys/types.h>
#include <unistd.h>

#include <csignal>

namespace ZORBase::Test {

/// Root reads and writes everything; as nobody, permissions count.
class TUnprivileged {
 public:
  TUnprivileged() : FBefore(::geteuid()) {
    constexpr uid_t kNobody = 65534;
    if (FBefore == 0) FIsOrdinary = ::seteuid(kNobody) == 0;
  }
  ~TUnprivileged() {
    if (FBefore == 0) FIsOrdinary = ::seteuid(FBefore) != 0;
  }
  TUnprivileged(const TUnprivileged&) = delete;
  TUnprivileged& operator=(const TUnprivileged&) = delete;

  bool IsOrdinary() const { return FIsOrdinary; }

 private:
  uid_t FBefore;
  bool FIsOrdinary = true;
};

/// Makes the process survive a signal.
class TIgnoredSignal {
 public:
  explicit TIgnoredSignal(int Signal) : FSignal(Signal), FBefore(std::signal(Signal, SIG_IGN)) {}
  ~TIgnoredSignal() { std::signal(FSignal, FBefore); }
  TIgnoredSignal(const TIgnoredSignal&) = delete;
  TIgnoredSignal& operator=(const TIgnoredSignal&) = delete;

 private:
  int FSignal;
  void (*FBefore)(int);
};

/// No file grows beyond Bytes: a write that would fails as one on a full disk does.
class TFileSizeLimit {
 public:
  explicit TFileSizeLimit(rlim_t Bytes) {
    ::getrlimit(RLIMIT_FSIZE, &FBefore);
    const rlimit limit{Bytes, FBefore.rlim_max};
    ::setrlimit(RLIMIT_FSIZE, &limit);
  }
  ~TFileSizeLimit() { ::setrlimit(RLIMIT_FSIZE, &FBefore); }
  TFileSizeLimit(const TFileSizeLimit&) = delete;
  TFileSizeLimit& operator=(const TFileSizeLimit&) = delete;

 private:
  TIgnoredSignal FNoSignal{SIGXFSZ};
  rlimit FBefore{};
};

}  // namespace ZORBase::Test
