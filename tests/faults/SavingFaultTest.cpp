// Files that cannot be written to their end, and processes that are killed on the way: there is the old file or the new one.
#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>
#include <ZORBase/ZORGeometry/CADTypesEuler.h>
#include <ZORBase/capi/zorbase.h>

#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <random>
#include <thread>

#include "faults/FaultSupport.h"
#include "faults/FileCalls.h"
#include "support/SystemLimits.h"
#include "support/TestSupport.h"
#if defined(ZORBASE_HAS_TOOLS)
#include <zor/Program.h>
#endif

namespace ZORBase::Test {
namespace {

using TSave = std::function<void(const std::string& FileName)>;

struct TSaving {
  const char* Name;
  TSave Save;
};

TPoint6DList ManyPoses(int Count) {
  TPoint6DList poses;
  for (int i = 0; i < Count; ++i) poses.Add(i, 0.5 * i, -i, 0, 0, 1);
  return poses;
}

TEulerPointList ManyEulerPoses(int Count) {
  TEulerPointList poses;
  for (int i = 0; i < Count; ++i) poses.Add(i, 0.5 * i, -i, 0, 0.1, 0.2);
  return poses;
}

void SaveByC(const std::string& FileName, int Count) {
  zorbase_poses* poses = nullptr;
  const zorbase_pose pose = {1, 2, 3, 0, 0, 1};
  zorbase_poses_create(&poses);
  for (int i = 0; i < Count; ++i) zorbase_poses_append(poses, &pose, 1);
  const zorbase_status status = zorbase_poses_save(poses, FileName.c_str(), 4);
  zorbase_poses_destroy(poses);
  if (status == ZORBASE_ERROR) RaiseGeneralError(zorbase_last_error());
  if (status != ZORBASE_OK) throw std::runtime_error("another status");
}

// Everything in the library that writes a file, with about 40 bytes for each of Count rows.
std::vector<TSaving> Savings(int Count) {
  const TPoint6D begin = TPoint6D::Create(0, 0, 0, 0, 0, 1);
  const TPoint6D end = TPoint6D::Create(10, 0, 5, 1, 0, 0);
  return {
      {"TPoint6DList", [=](const std::string& Name) { ManyPoses(Count).SaveToFile(Name, 4); }},
      {"TEulerPointList", [=](const std::string& Name) { ManyEulerPoses(Count).SaveToFile(Name, 4); }},
      {"TWcsPtInterpolator",
       [=](const std::string& Name) { TWcsPtInterpolator(begin, end, Count, 0).SaveAllToFile(Name); }},
      {"TEulerPtInterpolator",
       [=](const std::string& Name) {
         TEulerPtInterpolator(TEulerPoint::FromArray(begin.ToArray()), TEulerPoint::FromArray(end.ToArray()), Count)
             .SaveAllToFile(Name);
       }},
      {"zorbase_poses_save", [=](const std::string& Name) { SaveByC(Name, Count); }},
  };
}

class TSavingFault : public testing::Test {
 protected:
  // \return what Save writes when nothing fails.
  std::string NewText(const TSave& Save) const {
    Save(FFile);
    return FileText(FFile);
  }

  // Every size near the ends, and steps between.
  static std::vector<std::size_t> Limits(std::size_t Size) {
    std::vector<std::size_t> limits = {0, 1, Size / 2, Size - 1, Size};
    const std::size_t step = IsThorough() ? std::max<std::size_t>(Size / 400, 1) : std::max<std::size_t>(Size / 4, 1);
    for (std::size_t limit = step; limit < Size; limit += step) limits.push_back(limit);
    for (std::size_t block = 4096; IsThorough() && block < Size; block *= 2) {
      limits.insert(limits.end(), {block - 1, block, block + 1});
    }
    return limits;
  }

  void ExpectOldOrNew(const std::string& Expected) const {
    EXPECT_EQ(FileText(FFile), Expected);
    EXPECT_EQ(FFolder.Count(), 1U) << "a temporary file stayed";
  }

  TScratchFolder FFolder;
  std::string FFile = FFolder.File("out.txt");
};

TEST_F(TSavingFault, AWriteThatFailsAtAnyPlaceLeavesTheOldFileAndNothingBesideIt) {
  for (const int rows : {20, Pick(8000, 30'000)}) {
    for (const TSaving& saving : Savings(rows)) {
      const std::string newText = NewText(saving.Save);
      std::int64_t faults = 0;
      for (const std::size_t limit : Limits(newText.size())) {
        SCOPED_TRACE(std::string(saving.Name) + ", files end at " + std::to_string(limit));
        WriteFile(FFile, kOldText);
        TOutcome outcome = TOutcome::Other;
        {
          const TFileSizeLimit full(limit);
          outcome = Outcome([&] { saving.Save(FFile); });
        }
        const bool hasRoom = limit >= newText.size();
        EXPECT_EQ(outcome, hasRoom ? TOutcome::Done : TOutcome::Refused);
        ExpectOldOrNew(hasRoom ? newText : std::string(kOldText));
        faults += hasRoom ? 0 : 1;
      }
      ReportRow(std::string("write: ") + saving.Name + ", " + std::to_string(newText.size()) + " bytes", faults,
                "the general error; the old file stays, nothing beside it");
    }
  }
}

TEST_F(TSavingFault, ADiskThatDoesNotTakeItLeavesTheOldFileAndNothingBesideIt) {
  using TKind = TFileFault::TKind;
  for (const TSaving& saving : Savings(20)) {
    for (const TKind kind : {TKind::NotOnDisk, TKind::LostOnClosing}) {
      SCOPED_TRACE(saving.Name);
      WriteFile(FFile, kOldText);
      const TFileFault fault(kind, 1);
      EXPECT_EQ(Outcome([&] { saving.Save(FFile); }), TOutcome::Refused);
      EXPECT_EQ(fault.Failed(), 1);
      ExpectOldOrNew(std::string(kOldText));
    }
  }
}

TEST_F(TSavingFault, AnotherNameIsTriedWhereTheOneBesideTheFileIsTaken) {
  const TSave save = Savings(20).front().Save;
  const std::string newText = NewText(save);
  WriteFile(FFile, kOldText);
  const TFileFault fault(TFileFault::TKind::NameTaken, 5);
  EXPECT_EQ(Outcome([&] { save(FFile); }), TOutcome::Done);
  EXPECT_EQ(fault.Failed(), 5);
  ExpectOldOrNew(newText);
}

TEST_F(TSavingFault, TheOldFileStaysWhereNoNameIsFree) {
  constexpr int kEndless = 1'000'000;
  const TSave save = Savings(20).front().Save;
  WriteFile(FFile, kOldText);
  const TFileFault fault(TFileFault::TKind::NameTaken, kEndless);
  EXPECT_EQ(Outcome([&] { save(FFile); }), TOutcome::Refused);
  EXPECT_LT(fault.Failed(), 1000);
  ExpectOldOrNew(std::string(kOldText));
}

// A full disk, for a process that nobody told to ignore the signal.
TEST_F(TSavingFault, AProcessThatAWriteEndsAtAnyPlaceLeavesTheOldFile) {
  const TSave save = Savings(Pick(2000, 30'000)).front().Save;
  const std::string newText = NewText(save);
  std::int64_t faults = 0;
  for (const std::size_t limit : Limits(newText.size())) {
    if (limit >= newText.size()) continue;
    WriteFile(FFile, kOldText);
    TChild child([&] {
      std::signal(SIGXFSZ, SIG_DFL);
      const rlimit full{limit, limit};
      ::setrlimit(RLIMIT_FSIZE, &full);
      save(FFile);
      return 0;
    });
    EXPECT_EQ(child.Wait(), -SIGXFSZ);
    EXPECT_EQ(FileText(FFile), kOldText) << "files end at " << limit;
    ++faults;
  }
  ReportRow("process ended by its write", faults, "the old file stays");
}

TEST_F(TSavingFault, AProcessThatIsKilledWhileItSavesAgainAndAgainLeavesOneOfTheFiles) {
  const TPoint6DList shorter = ManyPoses(1000);
  const TPoint6DList longer = ManyPoses(9000);
  const std::string shortText = NewText([&](const std::string& Name) { shorter.SaveToFile(Name, 4); });
  const std::string longText = NewText([&](const std::string& Name) { longer.SaveToFile(Name, 4); });
  std::minstd_rand random(7);
  const int kills = Pick(15, 1500);
  int longOnes = 0;
  for (int i = 0; i < kills; ++i) {
    TChild child([&] {
      for (;;) {
        longer.SaveToFile(FFile, 4);
        shorter.SaveToFile(FFile, 4);
      }
      return 0;
    });
    std::this_thread::sleep_for(std::chrono::microseconds(500 + random() % 20'000));
    child.Kill();
    EXPECT_EQ(child.Wait(), -SIGKILL);
    const std::string text = FileText(FFile);
    EXPECT_TRUE(text == shortText || text == longText) << "half a file of " << text.size() << " bytes";
    longOnes += text == longText ? 1 : 0;
  }
  // What a killed process leaves beside the file is in nobody's way.
  shorter.SaveToFile(FFile, 4);
  EXPECT_EQ(FileText(FFile), shortText);
  ReportRow("process killed while it saves", kills,
            "one of the two files, whole; the longer one in " + std::to_string(longOnes) + " of them");
}

#if defined(ZORBASE_HAS_TOOLS)

// ------------------------------------------------------------------------------------------------ the command

struct TCommand {
  std::string Name;
  std::vector<std::string> Args;  // behind zor; the file to write comes last
  std::string_view Input;
};

constexpr std::string_view kPoses = "0,0,0,0,0,1\n1,0,0,0,0,1\n2,1,0,0,0,1\n3,3,0,0,0,1\n5,4,0,0,0,1\n";
constexpr std::string_view kHeights = "0,0,0\n1,0,0\n0,1,0\n1,1,0.5\n";

std::vector<TCommand> Commands() {
  return {
      {"resample", {"resample", "in.txt", "--count", "300", "-o"}, kPoses},
      {"spline", {"spline", "in.txt", "--samples-per-segment", "80", "-o"}, kPoses},
      {"transform", {"transform", "in.txt", "--xyz", "1,2,3,0,0,1", "-o"}, kPoses},
      {"convert", {"convert", "in.txt", "--from", "euler", "--to", "poses", "-o"}, kPoses},
      {"blend", {"blend", "0,0,0,0,0,1", "10,0,0,1,0,0", "--count", "300", "-o"}, ""},
      {"filter", {"filter", "in.txt", "--fs", "10", "--fc", "1", "-o"}, "1\n2\n3\n4\n5\n"},
      {"filter --response", {"filter", "--fs", "10", "--fc", "1", "--response", "-o"}, ""},
      {"surface", {"surface", "in.txt", "--grid", "20,20", "-o"}, kHeights},
  };
}

// The command in a process of its own, in the folder of the file. \return its exit status.
int RunCommand(std::vector<std::string> Args, const std::filesystem::path& Folder, rlim_t Limit) {
  return TChild([&] {
           std::filesystem::current_path(Folder);
           const TFileSizeLimit full(Limit);
           Args.insert(Args.begin(), "zor");
           Args.emplace_back("out.txt");
           std::vector<char*> places;
           for (std::string& arg : Args) places.push_back(arg.data());
           places.push_back(nullptr);
           return Tool::RunProgram(static_cast<int>(Args.size()), places.data());
         })
      .Wait();
}

TEST_F(TSavingFault, ACommandThatCannotWriteToTheEndFailsAndLeavesTheOldFile) {
  for (const TCommand& command : Commands()) {
    SCOPED_TRACE(command.Name);
    WriteFile(FFolder.File("in.txt"), command.Input);
    ASSERT_EQ(RunCommand(command.Args, FFolder.Path(), RLIM_INFINITY), 0);
    const std::string newText = FileText(FFile);
    std::int64_t faults = 0;
    for (const std::size_t limit : Limits(newText.size())) {
      WriteFile(FFile, kOldText);
      const bool hasRoom = limit >= newText.size();
      EXPECT_EQ(RunCommand(command.Args, FFolder.Path(), limit), hasRoom ? 0 : 1) << "files end at " << limit;
      EXPECT_EQ(FileText(FFile), hasRoom ? newText : kOldText);
      EXPECT_EQ(FFolder.Count(), 2U) << "a temporary file stayed";
      faults += hasRoom ? 0 : 1;
    }
    ReportRow("write: zor " + command.Name, faults, "exit status 1; the old file stays, nothing beside it");
  }
}

#endif

}  // namespace
}  // namespace ZORBase::Test
