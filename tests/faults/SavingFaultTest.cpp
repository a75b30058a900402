// Files that cannot be written to their end, and processes that are killed on the way: there is the old file or the new one.
#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>
#include <ZORBase/ZORGeometry/CADTypesEuler.h>
#include <ZORBase/capi/zorbase.h>

#include <sys/resource.h>
#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <random>
#include <set>
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
  ReportRow("process ended by its write", faults, "the old file stays; the temporary file may stay beside it");
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
            "one of the two files, whole; the longer one in " + std::to_string(longOnes) +
                " of them; the temporary file may stay beside it");
}

#if defined(ZORBASE_HAS_TOOLS)

// ------------------------------------------------------------------------------------------------ the command

constexpr std::string_view kRows = "out.txt";
constexpr std::string_view kPicture = "out.svg";

struct TCommand {
  std::string Name;
  std::vector<std::string> Args;  // behind zor, without the files that are written
  std::vector<std::string_view> Files;
  std::string_view Input;
};

constexpr std::string_view kPoses = "0,0,0,0,0,1\n1,0,0,0,0,1\n2,1,0,0,0,1\n3,3,0,0,0,1\n5,4,0,0,0,1\n";
constexpr std::string_view kHeights = "0,0,0\n1,0,0\n0,1,0\n1,1,0.5\n";
constexpr std::string_view kSignal = "1\n2\n3\n4\n5\n";

// Everything that writes files.
std::vector<TCommand> Commands() {
  return {
      {"resample", {"resample", "in.txt", "--count", "300"}, {kRows, kPicture}, kPoses},
      {"spline", {"spline", "in.txt", "--samples-per-segment", "80"}, {kRows, kPicture}, kPoses},
      {"transform", {"transform", "in.txt", "--xyz", "1,2,3,0,0,1"}, {kRows}, kPoses},
      {"convert", {"convert", "in.txt", "--from", "euler", "--to", "poses"}, {kRows}, kPoses},
      {"blend", {"blend", "0,0,0,0,0,1", "10,0,0,1,0,0", "--count", "300"}, {kRows}, ""},
      {"filter", {"filter", "in.txt", "--fs", "10", "--fc", "1"}, {kRows, kPicture}, kSignal},
      {"filter --response", {"filter", "--fs", "10", "--fc", "1", "--response"}, {kRows, kPicture}, ""},
      {"surface", {"surface", "in.txt", "--grid", "20,20"}, {kRows, kPicture}, kHeights},
      {"info", {"info", "in.txt"}, {kPicture}, kPoses},
      {"fit", {"fit", "in.txt"}, {kPicture}, kPoses},
      {"nearest", {"nearest", "in.txt", "--to", "2,2,0,0,0,1"}, {kPicture}, kPoses},
      {"spectrum", {"spectrum", "in.txt", "--dt", "0.1"}, {kPicture}, kSignal},
  };
}

// The commands in a folder of old files; a gnuplot draws their pictures that does nothing but print its script, twice. So no
// other file is as long as a picture.
class TCommandFault : public TSavingFault {
 protected:
  TCommandFault() {
    WriteFile(FPrograms.File("gnuplot"), "#!/bin/sh\nscript=$(cat)\nprintf '%s\\n%s' \"$script\" \"$script\"\n");
    std::filesystem::permissions(FPrograms.File("gnuplot"), std::filesystem::perms::owner_all);
  }

  // Runs the command in a process of its own, where Around is done, and undone, around it. \return its exit status.
  template <class TAround>
  int Run(const TCommand& Command, TAround&& Around) const {
    for (const std::string_view file : Command.Files) WriteFile(FFolder.File(file), kOldText);
    WriteFile(FFolder.File("in.txt"), Command.Input);
    std::vector<std::string> args = Command.Args;
    args.insert(args.begin(), "zor");
    for (const std::string_view file : Command.Files) {
      args.emplace_back(file == kPicture ? "--plot" : "-o");
      args.emplace_back(file);
    }
    std::vector<char*> places;
    for (std::string& arg : args) places.push_back(arg.data());
    places.push_back(nullptr);
    return TChild([&] {
             std::filesystem::current_path(FFolder.Path());
             ::setenv("PATH", (FPrograms.Path().string() + ":/usr/bin:/bin").c_str(), 1);
             [[maybe_unused]] const auto fault = Around();
             return Tool::RunProgram(static_cast<int>(args.size()), places.data());
           })
        .Wait();
  }

  // Few in the ordinary tests: sanitizers make a process of its own a tenth of a second long.
  static std::vector<std::size_t> CommandLimits(std::size_t Size) {
    return IsThorough() ? Limits(Size) : std::vector{Size / 2, Size - 1};
  }

  static auto Nothing() {
    return [] { return 0; };
  }

  std::vector<std::string> TextsOf(const TCommand& Command) const {
    std::vector<std::string> texts;
    for (const std::string_view file : Command.Files) texts.push_back(FileText(FFolder.File(file)));
    return texts;
  }

  void ExpectNoOther(const TCommand& Command) {
    EXPECT_EQ(FFolder.Count(), FFilesSoFar.size() + 1) << "a temporary file stayed after zor " << Command.Name;
  }

  // \return what the command writes when nothing fails.
  std::vector<std::string> NewTexts(const TCommand& Command) {
    FFilesSoFar.insert(Command.Files.begin(), Command.Files.end());
    EXPECT_EQ(Run(Command, Nothing()), 0);
    return TextsOf(Command);
  }

 private:
  TScratchFolder FPrograms;
  std::set<std::string_view> FFilesSoFar;
};

TEST_F(TCommandFault, ACommandThatCannotWriteToTheEndFailsAndLeavesTheOldFiles) {
  for (const TCommand& command : Commands()) {
    SCOPED_TRACE(command.Name);
    const std::vector<std::string> newTexts = NewTexts(command);
    std::int64_t faults = 0;
    for (const std::string& text : newTexts) {
      for (const std::size_t limit : CommandLimits(text.size())) {
        const int status = Run(command, [&] { return TFileSizeLimit(limit); });
        const std::vector<std::string> texts = TextsOf(command);
        bool hasRoom = true;
        for (std::size_t i = 0; i < texts.size(); ++i) {
          const bool isNew = texts[i] == newTexts[i];
          EXPECT_TRUE(isNew ? limit >= newTexts[i].size() : texts[i] == kOldText) << command.Files[i] << ", " << limit;
          hasRoom = hasRoom && limit >= newTexts[i].size();
        }
        EXPECT_EQ(status, hasRoom ? 0 : 1) << "files end at " << limit;
        EXPECT_EQ(texts == newTexts, hasRoom) << "files end at " << limit;
        ExpectNoOther(command);
        faults += hasRoom ? 0 : 1;
      }
    }
    const char* const files = command.Files.size() == 1
                                  ? "the old file stays, nothing beside it"
                                  : "each file is the old one or the new one, nothing beside them";
    ReportRow("write: zor " + command.Name, faults, std::string("exit status 1; ") + files);
  }
}

TEST_F(TCommandFault, ADiskThatDoesNotTakeOneOfTheFilesLeavesTheOldOneOfThose) {
  for (const TCommand& command : Commands()) {
    SCOPED_TRACE(command.Name);
    const std::vector<std::string> newTexts = NewTexts(command);
    for (int before = 0; before < static_cast<int>(command.Files.size()); ++before) {
      EXPECT_EQ(Run(command, [&] { return TFileFault(TFileFault::TKind::NotOnDisk, 1, before); }), 1);
      const std::vector<std::string> texts = TextsOf(command);
      int news = 0;
      for (std::size_t i = 0; i < texts.size(); ++i) {
        news += texts[i] == newTexts[i] ? 1 : 0;
        EXPECT_TRUE(texts[i] == newTexts[i] || texts[i] == kOldText) << command.Files[i];
      }
      EXPECT_EQ(news, before) << "files that are written before the one that is not";
      ExpectNoOther(command);
    }
  }
}

#endif

}  // namespace
}  // namespace ZORBase::Test
