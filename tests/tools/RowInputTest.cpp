#include <zor/RowInput.h>

#include "support/TestSupport.h"

#include <vector>

namespace ZORBase::Tool {
namespace {

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
      [&] {
        ReadRows(file, {2, "X,Y", "point"}, [](std::span<const double>) {});
      },
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
  EXPECT_THAT([&] { read(3); }, RaisesGeneralError(file + ", line 4: found more than 3 points. Divide the file."));
  EXPECT_EQ(count, 3);
}

TEST(ReadRows, StandardInputHasANameOfItsOwn) {
  EXPECT_EQ(InputName("-"), "standard input");
  EXPECT_EQ(InputName("a.txt"), "a.txt");
}

}  // namespace
}  // namespace ZORBase::Tool
