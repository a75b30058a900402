#include <ZORBase/common/BaseServices/TTextFileWriter.h>

#include "support/SystemLimits.h"
#include "support/TestAllocator.h"
#include "support/TestSupport.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cstdio>
#include <filesystem>
#include <future>
#include <memory>
#include <new>
#include <thread>

namespace ZORBase {
namespace {

namespace fs = std::filesystem;
using namespace std::string_view_literals;
using Test::Calling;
using Test::FileText;
using Test::RaisesGeneralError;
using Test::TFailingAllocations;
using Test::TFileSizeLimit;
using Test::TIgnoredSignal;
using Test::TScratchFolder;
using Test::TUnprivileged;
using Test::WriteFile;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

class TTextFileWriterTest : public testing::Test {
 protected:
  static void Save(const std::string& FileName, std::string_view Text) {
    TTextFileWriter writer(FileName);
    writer.Write(Text);
    writer.Commit();
  }

  TScratchFolder FFolder;
  std::string FFile = FFolder.File("out.txt");
};

TEST_F(TTextFileWriterTest, LinesEndInCrLfAndTextStandsAsItIs) {
  TTextFileWriter writer(FFile);
  writer.WriteLine("one");
  writer.Write("t\nw\0o"sv);
  writer.WriteLine("");
  writer.Commit();
  EXPECT_EQ(FileText(FFile), "one\r\nt\nw\0o\r\n"sv);
  EXPECT_EQ(FFolder.Count(), 1U);
}

TEST_F(TTextFileWriterTest, ALineMadeInPlaceIsALineAndOneThatRaisesIsNone) {
  TTextFileWriter writer(FFile);
  writer.WriteLine("one");
  writer.WriteLineOf([](std::string& Text) { Text += "two"; });
  const auto half = [&] {
    writer.WriteLineOf([](std::string& Text) {
      Text += "half";
      RaiseGeneralError("no more");
    });
  };
  EXPECT_THAT(Calling(half), RaisesGeneralError("no more"));
  writer.WriteLineOf([](std::string&) {});
  writer.Commit();
  EXPECT_EQ(FileText(FFile), "one\r\ntwo\r\n\r\n");
  EXPECT_THAT(Calling([&] { writer.WriteLineOf([](std::string&) {}); }),
              RaisesGeneralError(HasSubstr("after its Commit")));
}

TEST_F(TTextFileWriterTest, NothingWrittenGivesAnEmptyFile) {
  TTextFileWriter(FFile).Commit();
  EXPECT_TRUE(fs::exists(FFile));
  EXPECT_EQ(FileText(FFile), "");
}

TEST_F(TTextFileWriterTest, ALargeTextArrivesWhole) {
  std::string expected;
  TTextFileWriter writer(FFile);
  for (int i = 0; i < 200'000; ++i) {
    const std::string line = "line " + std::to_string(i);
    writer.WriteLine(line);
    expected += line + "\r\n";
  }
  writer.Write(std::string(1'000'000, 'x'));
  writer.Commit();
  EXPECT_EQ(FileText(FFile), expected + std::string(1'000'000, 'x'));
}

TEST_F(TTextFileWriterTest, TheOldFileStandsUntilCommit) {
  WriteFile(FFile, "old");
  TTextFileWriter writer(FFile);
  writer.Write(std::string(1'000'000, 'x'));
  EXPECT_EQ(FileText(FFile), "old");
  writer.Commit();
  EXPECT_EQ(FileText(FFile), std::string(1'000'000, 'x'));
  EXPECT_EQ(FFolder.Count(), 1U);
}

TEST_F(TTextFileWriterTest, WithoutACommitNothingHasHappened) {
  { TTextFileWriter(FFile).Write("half"); }
  EXPECT_EQ(FFolder.Count(), 0U);
  WriteFile(FFile, "old");
  { TTextFileWriter(FFile).Write(std::string(1'000'000, 'x')); }
  EXPECT_EQ(FileText(FFile), "old");
  EXPECT_EQ(FFolder.Count(), 1U);
}

TEST_F(TTextFileWriterTest, BehindACommitNothingMoreCanBeWritten) {
  TTextFileWriter writer(FFile);
  writer.Write("all");
  writer.Commit();
  EXPECT_THAT(Calling([&] { writer.Write("more"); }), RaisesGeneralError(HasSubstr("after its Commit")));
  EXPECT_THAT(Calling([&] { writer.WriteLine("more"); }), RaisesGeneralError(HasSubstr("after its Commit")));
  EXPECT_THAT(Calling([&] { writer.Commit(); }), RaisesGeneralError(HasSubstr("after its Commit")));
  EXPECT_EQ(FileText(FFile), "all");
}

TEST_F(TTextFileWriterTest, TwoWritersOfOneNameDoNotMix) {
  TTextFileWriter first(FFile);
  TTextFileWriter second(FFile);
  first.Write("first");
  second.Write("second");
  second.Commit();
  EXPECT_EQ(FileText(FFile), "second");
  first.Commit();
  EXPECT_EQ(FileText(FFile), "first");
  EXPECT_EQ(FFolder.Count(), 1U);
}

// ---------------------------------------------------------------------------------------------- what is kept

TEST_F(TTextFileWriterTest, ThePermissionsOfTheOldFileAreKept) {
  for (const mode_t mode : {0600U, 0640U, 0664U, 0755U}) {
    WriteFile(FFile, "old");
    ASSERT_EQ(::chmod(FFile.c_str(), mode), 0);
    Save(FFile, "new");
    EXPECT_EQ(static_cast<mode_t>(fs::status(FFile).permissions()), mode);
    EXPECT_EQ(FileText(FFile), "new");
  }
}

TEST_F(TTextFileWriterTest, ANewFileHasThePermissionsThatTheUserAsksFor) {
  const mode_t before = ::umask(027);
  Save(FFile, "new");
  ::umask(before);
  EXPECT_EQ(static_cast<mode_t>(fs::status(FFile).permissions()), mode_t{0640});
}

TEST_F(TTextFileWriterTest, ASymbolicLinkStaysOneAndItsTargetIsReplaced) {
  fs::create_directory(FFolder.Path() / "inner");
  const std::string target = FFolder.File("inner/target.txt");
  WriteFile(target, "old");
  fs::create_symlink("inner/target.txt", FFile);
  Save(FFile, "new");
  EXPECT_TRUE(fs::is_symlink(FFile));
  EXPECT_FALSE(fs::is_symlink(target));
  EXPECT_EQ(FileText(target), "new");
  EXPECT_EQ(FFolder.Count(), 2U);
}

TEST_F(TTextFileWriterTest, AChainOfSymbolicLinksIsFollowedToItsEnd) {
  WriteFile(FFolder.File("target.txt"), "old");
  fs::create_symlink("target.txt", FFolder.File("middle"));
  fs::create_symlink(FFolder.File("middle"), FFile);
  Save(FFile, "new");
  EXPECT_TRUE(fs::is_symlink(FFile) && fs::is_symlink(FFolder.File("middle")));
  EXPECT_EQ(FileText(FFolder.File("target.txt")), "new");
}

TEST_F(TTextFileWriterTest, ASymbolicLinkToNothingYetStaysOneAndItsTargetIsMade) {
  fs::create_symlink("target.txt", FFolder.File("middle"));
  fs::create_symlink("middle", FFile);
  Save(FFile, "new");
  EXPECT_TRUE(fs::is_symlink(FFile) && fs::is_symlink(FFolder.File("middle")));
  EXPECT_TRUE(fs::is_regular_file(fs::symlink_status(FFolder.File("target.txt"))));
  EXPECT_EQ(FileText(FFolder.File("target.txt")), "new");
}

TEST_F(TTextFileWriterTest, ALoopOfSymbolicLinksIsAnErrorAndStays) {
  fs::create_symlink("other", FFile);
  fs::create_symlink("out.txt", FFolder.File("other"));
  EXPECT_THAT(Calling([&] { Save(FFile, "new"); }),
              RaisesGeneralError("Cannot write file \"" + FFile + "\". Too many levels of symbolic links"));
  EXPECT_TRUE(fs::is_symlink(FFile) && fs::is_symlink(FFolder.File("other")));
  EXPECT_EQ(FFolder.Count(), 2U);
}

// ---------------------------------------------------------------------------------------------- what fails

TEST_F(TTextFileWriterTest, AFolderThatIsNotThereIsNamedWithTheReason) {
  const std::string file = FFolder.File("none/out.txt");
  EXPECT_THAT(Calling([&] { TTextFileWriter{file}; }),
              RaisesGeneralError("Cannot write file \"" + file + "\". No such file or directory"));
}

TEST_F(TTextFileWriterTest, AFolderIsNoFile) {
  const std::string folder = FFolder.Path().string();
  EXPECT_THAT(Calling([&] { TTextFileWriter{folder}; }),
              RaisesGeneralError("Cannot write file \"" + folder + "\". Is a directory"));
}

TEST_F(TTextFileWriterTest, AnEmptyNameIsAnErrorThatLeavesNothing) {
  const fs::path before = fs::current_path();
  fs::current_path(FFolder.Path());
  EXPECT_THAT(Calling([&] { Save("", "x"); }), RaisesGeneralError(StartsWith("Cannot write file \"\". ")));
  fs::current_path(before);
  EXPECT_EQ(FFolder.Count(), 0U);
}

TEST_F(TTextFileWriterTest, AFolderWithoutWritePermissionKeepsTheOldFile) {
  WriteFile(FFile, "old");
  fs::permissions(FFolder.Path(), fs::perms(0555));
  {
    const TUnprivileged user;
    ASSERT_TRUE(user.IsOrdinary());
    EXPECT_THAT(Calling([&] { Save(FFile, "new"); }),
                RaisesGeneralError("Cannot write file \"" + FFile + "\". Permission denied"));
  }
  fs::permissions(FFolder.Path(), fs::perms::owner_all);
  EXPECT_EQ(FileText(FFile), "old");
  EXPECT_EQ(FFolder.Count(), 1U);
}

TEST_F(TTextFileWriterTest, ADiskThatFillsUpWhileWritingLeavesTheOldFileAndNothingBesideIt) {
  WriteFile(FFile, "old");
  {
    const TFileSizeLimit limit(100'000);
    TTextFileWriter writer(FFile);
    EXPECT_THAT(Calling([&] { writer.Write(std::string(1'000'000, 'x')); }),
                RaisesGeneralError("Cannot write file \"" + FFile + "\". File too large"));
  }
  EXPECT_EQ(FileText(FFile), "old");
  EXPECT_EQ(FFolder.Count(), 1U);
}

TEST_F(TTextFileWriterTest, ADiskThatFillsUpAtTheEndLeavesTheOldFileAndNothingBesideIt) {
  WriteFile(FFile, "old");
  {
    const TFileSizeLimit limit(100);
    TTextFileWriter writer(FFile);
    writer.Write(std::string(1000, 'x'));
    EXPECT_THAT(Calling([&] { writer.Commit(); }),
                RaisesGeneralError("Cannot write file \"" + FFile + "\". File too large"));
  }
  EXPECT_EQ(FileText(FFile), "old");
  EXPECT_EQ(FFolder.Count(), 1U);
}

TEST_F(TTextFileWriterTest, WantOfMemoryWhileAnExistingFileIsOpenedLeavesNothingBesideIt) {
  WriteFile(FFile, "old");
  bool hasFailed = true;
  for (int k = 1; hasFailed; ++k) {
    hasFailed = false;
    try {
      const TFailingAllocations failing(k, 1);
      const TTextFileWriter writer(FFile);
    } catch (const std::bad_alloc&) {
      hasFailed = true;
    }
    EXPECT_EQ(FFolder.Count(), 1U) << "allocation " << k;
    EXPECT_EQ(FileText(FFile), "old");
  }
}

TEST_F(TTextFileWriterTest, AfterAFullDiskTheSameNameCanBeSavedAgain) {
  {
    const TFileSizeLimit limit(100);
    EXPECT_THAT(Calling([&] { Save(FFile, std::string(1000, 'x')); }), RaisesGeneralError(EndsWith("File too large")));
  }
  Save(FFile, "new");
  EXPECT_EQ(FileText(FFile), "new");
  EXPECT_EQ(FFolder.Count(), 1U);
}

// ---------------------------------------------------------------------------------------------- devices, pipes, streams

TEST_F(TTextFileWriterTest, AFullDeviceIsAnErrorForAShortAndForALongText) {
  for (const std::size_t size : {1U, 1'000'000U}) {
    EXPECT_THAT(Calling([&] { Save("/dev/full", std::string(size, 'x')); }),
                RaisesGeneralError("Cannot write file \"/dev/full\". No space left on device"));
  }
  EXPECT_TRUE(fs::is_character_file("/dev/full"));
}

TEST_F(TTextFileWriterTest, ADeviceIsWrittenIntoAndStaysADevice) {
  Save("/dev/null", "gone");
  EXPECT_TRUE(fs::is_character_file("/dev/null"));
  fs::create_symlink("/dev/null", FFile);
  Save(FFile, "gone");
  EXPECT_TRUE(fs::is_symlink(FFile));
}

TEST_F(TTextFileWriterTest, ANamedPipeCarriesTheTextToItsReader) {
  ASSERT_EQ(::mkfifo(FFile.c_str(), 0600), 0);
  auto reader = std::async(std::launch::async, [&] { return FileText(FFile); });
  Save(FFile, std::string(300'000, 'x'));
  EXPECT_EQ(reader.get(), std::string(300'000, 'x'));
  EXPECT_TRUE(fs::is_fifo(FFile));
  EXPECT_EQ(FFolder.Count(), 1U);
}

TEST_F(TTextFileWriterTest, APipeWhoseReaderGoesAwayIsAnError) {
  const TIgnoredSignal ignored(SIGPIPE);
  ASSERT_EQ(::mkfifo(FFile.c_str(), 0600), 0);
  std::thread reader([&] { ::close(::open(FFile.c_str(), O_RDONLY)); });
  TTextFileWriter writer(FFile);
  reader.join();
  writer.Write("x");
  EXPECT_THAT(Calling([&] { writer.Commit(); }),
              RaisesGeneralError("Cannot write file \"" + FFile + "\". Broken pipe"));
}

TEST_F(TTextFileWriterTest, AStreamTakesTheTextAtCommitAndStaysOpen) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(FFile.c_str(), "wb"), &std::fclose);
  {
    TTextFileWriter writer(stream.get(), "standard output");
    writer.WriteLine("kept");
    writer.Commit();
    EXPECT_EQ(FileText(FFile), "kept\r\n");
  }
  { TTextFileWriter(stream.get(), "standard output").WriteLine("never committed"); }
  ASSERT_GE(std::fputs("more", stream.get()), 0);
  ASSERT_EQ(std::fflush(stream.get()), 0);
  EXPECT_EQ(FileText(FFile), "kept\r\nmore");
}

TEST_F(TTextFileWriterTest, AStreamIsNamedInMessages) {
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen("/dev/full", "wb"), &std::fclose);
  TTextFileWriter writer(stream.get(), "standard output");
  writer.Write("x");
  EXPECT_THAT(Calling([&] { writer.Commit(); }),
              RaisesGeneralError("Cannot write file \"standard output\". No space left on device"));
}

}  // namespace
}  // namespace ZORBase
