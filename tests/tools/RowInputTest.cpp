#include <zor/RowInput.h>

#include "support/TestSupport.h"

#include <vector>

namespace ZORBase::Tool {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;
using Test::TScratchFolder;
using Test::WriteFile;

TEST(ReadRows, HandsOverRowsOfTheFormInOrder) {
  const TScratchFolder folder;
  WriteFile(folder.File("xy.txt"), "1,2\n-3e1 .5\n");
  std::vector<std::vector<double>> rows;
  ReadRows(folder.File("xy.txt"), {2, "X,Y", "point"},
           [&](std::span<const double> Row) { rows.emplace_back(Row.begin(), Row.end()); });
  EXPECT_THAT(rows, testing::ElementsAre(testing::ElementsAre(1.0, 2.0), testing::ElementsAre(-30.0, 0.5)));
}

TEST(ReadRows, NamesTheFormWhereALineDiffers) {
  const TScratchFolder folder;
  const std::string file = folder.File("xy.txt");
  WriteFile(file, "1,2\n1,2,3\n");
  EXPECT_THAT(
      Calling([&] {
        ReadRows(file, {2, "X,Y", "point"}, [](std::span<const double>) {});
      }),
      RaisesGeneralError(file + ", line 2: found 3 items in \"1,2,3\", expected 2 numbers X,Y. Numbers have a decimal "
                                "point, not a decimal comma, and one row stands on each line."));
}

TEST(ReadRows, RefusesMoreRowsThanTheFormAllows) {
  const TScratchFolder folder;
  const std::string file = folder.File("xy.txt");
  WriteFile(file, "1,2\n1,2\n1,2\n1,2\n");
  int count = 0;
  const auto read = [&](std::int64_t MostRows) {
    count = 0;
    ReadRows(file, {2, "X,Y", "point", MostRows}, [&](std::span<const double>) { ++count; });
  };
  read(4);
  EXPECT_EQ(count, 4);
  EXPECT_THAT(Calling([&] { read(3); }),
              RaisesGeneralError(file + ", line 4: found more than 3 points. Divide the file."));
  EXPECT_EQ(count, 3);
}

TEST(ReadRows, OneNumberIsNotWrittenInThePlural) {
  const TScratchFolder folder;
  const std::string file = folder.File("v.txt");
  WriteFile(file, "1,2\n");
  EXPECT_THAT(Calling([&] {
                ReadRows(file, {1, "(one sample)", "sample"}, [](std::span<const double>) {});
              }),
              RaisesGeneralError(testing::HasSubstr("expected 1 number (one sample). ")));
}

// ------------------------------------------------------------------------------------------------ rows of any count

constexpr TRowForm kAnyRow = {0, "", "point"};

TEST(ReadRowFile, TheFirstLineSaysHowManyNumbersThereAre) {
  const TScratchFolder folder;
  WriteFile(folder.File("p.txt"), "1,2,3\n4 5 6\r\n");
  const TRowFile file = ReadRowFile(folder.File("p.txt"), kAnyRow);
  EXPECT_EQ(file.Name, folder.File("p.txt"));
  EXPECT_EQ(file.Columns, 3U);
  ASSERT_EQ(file.Count(), 2U);
  EXPECT_THAT(file[0], testing::ElementsAre(1.0, 2.0, 3.0));
  EXPECT_THAT(file[1], testing::ElementsAre(4.0, 5.0, 6.0));
}

TEST(ReadRowFile, ALineWithAnotherCountIsNamed) {
  const TScratchFolder folder;
  const std::string name = folder.File("p.txt");
  WriteFile(name, "1,2,3\n4,5,6\n7,8\n");
  EXPECT_THAT(Calling([&] { ReadRowFile(name, kAnyRow); }),
              RaisesGeneralError(name + ", line 3: found 2 items in \"7,8\", expected 3 numbers as on line 1. Complete "
                                        "the line or remove it."));
  WriteFile(name, "1,2,3\n4,5,6,7\n");
  EXPECT_THAT(Calling([&] { ReadRowFile(name, kAnyRow); }),
              RaisesGeneralError(testing::StartsWith(name + ", line 2: found 4 items in \"4,5,6,7\", expected 3 ")));
}

TEST(ReadRowFile, UpTo44NumbersStandOnALine) {
  const TScratchFolder folder;
  const std::string name = folder.File("p.txt");
  std::string line = "1";
  for (int i = 2; i <= 44; ++i) line += ",1";
  WriteFile(name, line);
  EXPECT_EQ(ReadRowFile(name, kAnyRow).Columns, 44U);
  WriteFile(name, line + ",1");
  EXPECT_THAT(Calling([&] { ReadRowFile(name, kAnyRow); }),
              RaisesGeneralError(testing::AllOf(testing::StartsWith(name + ", line 1: found 45 items in "),
                                                testing::HasSubstr(", expected 1 to 44 numbers. "))));
}

TEST(ReadRowFile, AFirstLineThatIsNoRowSaysWhatOneIs) {
  using namespace std::string_literals;
  const TScratchFolder folder;
  const std::string name = folder.File("p.txt");
  const auto refuses = [&](const std::string& Text, const std::string& Found) {
    WriteFile(name, Text);
    EXPECT_THAT(
        Calling([&] {
          ReadRowFile(name, {0, "", "point", kMaxPoses, 2, 3});
        }),
        RaisesGeneralError(testing::StartsWith(name + ", line 1: found " + Found + ", expected 2 to 3 numbers. ")));
  };
  refuses("x,y\n1,2\n", "\"x\" as number 1");
  refuses("1\n2\n", "1 item in \"1\"");
  refuses("1,2,3,4\n", "4 items in \"1,2,3,4\"");
  refuses("\n1,2\n", "an empty line");
  refuses("1,2\0\n"s, "a byte 0 at column 4");
}

TEST(ReadRowFile, AnEmptyFileIsRefused) {
  const TScratchFolder folder;
  const std::string name = folder.File("p.txt");
  WriteFile(name, "");
  EXPECT_THAT(Calling([&] { ReadRowFile(name, kAnyRow); }),
              RaisesGeneralError(name + ": found no points, expected one per line: 1 to 44 numbers. Name another "
                                        "file."));
}

TEST(ReadRows, StandardInputHasANameOfItsOwn) {
  EXPECT_EQ(InputName("-"), "standard input");
  EXPECT_EQ(InputName("a.txt"), "a.txt");
}

}  // namespace
}  // namespace ZORBase::Tool
