#include "faults/FileCalls.h"

#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "support/HiddenFunction.h"

namespace ZORBase::Test {
namespace {

constinit thread_local TFileFault::TKind FaultKind{};
constinit thread_local int FaultTimes = 0;
constinit thread_local int CallsBefore = 0;
constinit thread_local int FaultsSoFar = 0;

bool IsToFail(TFileFault::TKind Kind) {
  if (FaultKind != Kind) return false;
  if (CallsBefore > 0) {
    --CallsBefore;
    return false;
  }
  const bool isToFail = FaultsSoFar < FaultTimes;
  FaultsSoFar += isToFail ? 1 : 0;
  return isToFail;
}

constinit std::atomic<std::FILE* (*)(const char*, const char*)> HiddenOpen{};
constinit std::atomic<int (*)(int)> HiddenSync{};

std::FILE* OpenOrFail(const char* FileName, const char* Mode) {
  if (std::strchr(Mode, 'x') && IsToFail(TFileFault::TKind::NameTaken)) {
    errno = EEXIST;
    return nullptr;
  }
  return Hidden(HiddenOpen, "fopen")(FileName, Mode);
}

int SyncOrFail(int File) {
  if (IsToFail(TFileFault::TKind::NotOnDisk)) {
    errno = EIO;
    return -1;
  }
  if (IsToFail(TFileFault::TKind::LostOnClosing)) return ::close(File);  // behind the back of the stream
  return Hidden(HiddenSync, "fsync")(File);
}

}  // namespace

TFileFault::TFileFault(TKind Kind, int Times, int Before) {
  FaultKind = Kind;
  CallsBefore = Before;
  FaultTimes = Times;
  FaultsSoFar = 0;
}

TFileFault::~TFileFault() { FaultTimes = 0; }

int TFileFault::Failed() const { return FaultsSoFar; }

}  // namespace ZORBase::Test

extern "C" {

std::FILE* fopen(const char* FileName, const char* Mode) { return ZORBase::Test::OpenOrFail(FileName, Mode); }
int fsync(int File) { return ZORBase::Test::SyncOrFail(File); }
}
