#include <ZORBase/common/BaseServices/PointListFile.h>

#include <ZORBase/common/BaseServices/NumberRow.h>

#include "support/TestSupport.h"

#include <algorithm>
#include <array>
#include <new>
#include <random>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::FileText;
using Test::RaisesGeneralError;
using Test::TScratchFolder;
using Test::WriteFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::SizeIs;
using testing::StartsWith;

// The smallest point there is.
struct TMark {
  double Place = 0.0;

  static TMark Parse1033(std::string_view S) {
    if (S == "memory") throw std::bad_alloc();
    TMark mark;
    ParseNumberRow(S, {&mark.Place, 1}, nf1033, "TMark");
    return mark;
  }
  friend bool operator==(const TMark&, const TMark&) = default;
};

class PointListFile : public testing::Test {
 protected:
  void Load() { LoadPointList(FFile, "TMarkList", FMarks); }

  std::string FailText(int Line, std::string_view Reason) const {
    return "TMarkList LoadFromFile Fail: " + FFile + " Line " + std::to_string(Line) + ". \r\n" + std::string(Reason);
  }

  TScratchFolder FFolder;
  std::string FFile = FFolder.File("marks.txt");
  TList<TMark> FMarks = {{-1}, {-2}};
};

TEST_F(PointListFile, LoadingReplacesTheContents) {
  WriteFile(FFile, "1\r\n2.5\r\n");
  Load();
  EXPECT_THAT(FMarks, ElementsAre(TMark{1}, TMark{2.5}));
  WriteFile(FFile, "");
  Load();
  EXPECT_THAT(FMarks, SizeIs(0));
}

// Long files make room ahead of their end.
TEST_F(PointListFile, ALongFileIsReadWhole) {
  constexpr int kCount = 5000;
  std::string text;
  for (int i = 0; i < kCount; ++i) text += std::to_string(10000 + i) + "\r\n";
  WriteFile(FFile, text);
  Load();
  ASSERT_THAT(FMarks, SizeIs(kCount));
  for (int i = 0; i < kCount; ++i) EXPECT_EQ(FMarks[i].Place, 10000 + i);
}

TEST_F(PointListFile, AFailingLineIsNamedAndKeepsThePointsBeforeIt) {
  WriteFile(FFile, "1\r\n2\r\nx\r\n4\r\n");
  EXPECT_THAT(
      Calling([&] { Load(); }),
      RaisesGeneralError(FailText(3, "TMark Parse from string Failed(x). 'x' is not a valid floating point value")));
  EXPECT_THAT(FMarks, ElementsAre(TMark{1}, TMark{2}));
}

TEST_F(PointListFile, AFileThatCannotBeOpenedFailsInLine1WithTheListEmptied) {
  EXPECT_THAT(Calling([&] { Load(); }),
              RaisesGeneralError(FailText(1, "Cannot open file \"" + FFile + "\". No such file or directory")));
  EXPECT_THAT(FMarks, SizeIs(0));
}

TEST_F(PointListFile, ALineThatCannotBeReadIsTheOneThatIsNamed) {
  WriteFile(FFile, "1\n2\n3\n" + std::string(TTextFileReader::kLineLimit + 1, '4') + "\n5\n");
  EXPECT_THAT(Calling([&] { Load(); }),
              RaisesGeneralError(FailText(
                  4, "\"" + FFile + "\" has a line of more than 67108864 bytes; it is no text file of points")));
  EXPECT_THAT(FMarks, ElementsAre(TMark{1}, TMark{2}, TMark{3}));
}

TEST_F(PointListFile, EveryStandardErrorIsWrapped) {
  WriteFile(FFile, "1\nmemory\n");
  EXPECT_THAT(Calling([&] { Load(); }), RaisesGeneralError(StartsWith(FailText(2, ""))));
}

TEST_F(PointListFile, LinesAreCountedWhateverEndsThem) {
  WriteFile(FFile, "1\r2\n3\r\n4\r\rx");
  EXPECT_THAT(Calling([&] { Load(); }),
              RaisesGeneralError(FailText(5, "TMark Parse from string Failed(). Error Item Number: 0")));
  EXPECT_EQ(FMarks.Count(), 4);
}

// Files of several blocks, so that block ends fall on every kind of place; and more lines than are taken for a sample.
TEST_F(PointListFile, LinesAreTheSameWhereverABlockEnds) {
  std::mt19937_64 random(1);
  for (const std::string lineEnd : {"\n", "\r\n", "\r"}) {
    std::string text;
    std::vector<TMark> marks;
    while (text.size() < 600'000) {
      marks.push_back({static_cast<double>(random() % 1'000'000'000) / 1e6});
      std::string line;
      AppendFixed(line, marks.back().Place, static_cast<int>(6 + random() % 30));
      text += std::string(random() % 3, ' ') + line + lineEnd;
    }
    WriteFile(FFile, text);
    Load();
    ASSERT_EQ(FMarks.size(), marks.size());
    EXPECT_TRUE(std::equal(marks.begin(), marks.end(), FMarks.begin()));

    text += "x" + lineEnd;
    WriteFile(FFile, text);
    EXPECT_THAT(Calling([&] { Load(); }),
                RaisesGeneralError(StartsWith(FailText(static_cast<int>(marks.size()) + 1, "TMark"))));
    EXPECT_EQ(FMarks.size(), marks.size());
  }
}

TEST_F(PointListFile, SavingWritesOneCrLfLinePerPointAndNothingElse) {
  const auto appendLine = [](std::string& Text, const TMark& Mark) { AppendFixed(Text, Mark.Place, 2); };
  SavePointList(FFile, FMarks, appendLine);
  EXPECT_EQ(FileText(FFile), "-1.00\r\n-2.00\r\n");
  SavePointList(FFile, std::vector<TMark>{}, appendLine);
  EXPECT_EQ(FileText(FFile), "");
  EXPECT_EQ(FFolder.Count(), 1U);
}

TEST_F(PointListFile, ALineThatCannotBeMadeLeavesTheOldFile) {
  WriteFile(FFile, "old");
  const auto appendLine = [](std::string& Text, const TMark& Mark) {
    if (Mark.Place == -2) RaiseGeneralError("no text for this one");
    Text += "1";
  };
  EXPECT_THAT(Calling([&] { SavePointList(FFile, FMarks, appendLine); }), RaisesGeneralError("no text for this one"));
  EXPECT_EQ(FileText(FFile), "old");
  EXPECT_EQ(FFolder.Count(), 1U);
}

}  // namespace
}  // namespace ZORBase
