// FileCalls: the C library's fopen and fsync as this program has them, which can fail as a disk seldom does.
#pragma once

namespace ZORBase::Test {

/// What befalls the files of this thread while the object lives. One at a time.
class TFileFault {
 public:
  enum class TKind {
    NameTaken,     ///< a file that must be new has a name that is taken
    NotOnDisk,     ///< what is written does not reach the disk
    LostOnClosing  ///< nor can the file be closed, which only then turns out
  };

  /// Times calls fail, behind the first Before of them.
  TFileFault(TKind Kind, int Times, int Before = 0);
  ~TFileFault();
  TFileFault(const TFileFault&) = delete;
  TFileFault& operator=(const TFileFault&) = delete;

  int Failed() const;  ///< how many calls have failed
};

}  // namespace ZORBase::Test
