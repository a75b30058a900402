#include <ZORBase/common/BaseServices/TTextFileReader.h>

#include "support/SystemLimits.h"
#include "support/TestSupport.h"

#include <rapidcheck/gtest.h>
#include <cstdio>
#include <memory>
#include <random>
#include <vector>

namespace ZORBase {
namespace {

using namespace std::string_view_literals;
using Test::Calling;
using Test::RaisesGeneralError;
using Test::TScratchFolder;
using Test::TUnprivileged;
using Test::WriteFile;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr std::size_t kBlock = std::size_t{128} << 10U;  // bytes that the reader takes at a time

class TTextFileReaderTest : public testing::Test {
 protected:
  std::vector<std::string> LinesOf(std::string_view Text) const {
    WriteFile(FFile, Text);
    return LinesOfFile(FFile);
  }

  static std::vector<std::string> LinesOfFile(const std::string& FileName) {
    std::vector<std::string> lines;
    for (TTextFileReader reader(FileName); reader.Next();) lines.emplace_back(reader.Line());
    return lines;
  }

  TScratchFolder FFolder;
  std::string FFile = FFolder.File("lines.txt");
};

// The lines of a text by their definition, character by character.
std::vector<std::string> LinesByDefinition(std::string_view Text) {
  std::vector<std::string> lines;
  std::string line;
  for (std::size_t i = 0; i < Text.size(); ++i) {
    if (Text[i] != '\r' && Text[i] != '\n') {
      line += Text[i];
      if (i + 1 < Text.size()) continue;
    } else if (Text[i] == '\r' && i + 1 < Text.size() && Text[i + 1] == '\n') {
      ++i;
    }
    lines.push_back(std::exchange(line, {}));
  }
  return lines;
}

TEST_F(TTextFileReaderTest, EveryKindOfLineEndEndsALine) {
  EXPECT_THAT(LinesOf("a\r\nb\r\n"), ElementsAre("a", "b"));
  EXPECT_THAT(LinesOf("a\nb\n"), ElementsAre("a", "b"));
  EXPECT_THAT(LinesOf("a\rb\r"), ElementsAre("a", "b"));
  EXPECT_THAT(LinesOf("a\rb\nc\r\nd"), ElementsAre("a", "b", "c", "d"));
}

TEST_F(TTextFileReaderTest, TheLastLineNeedsNoEnd) {
  EXPECT_THAT(LinesOf("a\r\nb"), ElementsAre("a", "b"));
  EXPECT_THAT(LinesOf("a"), ElementsAre("a"));
}

TEST_F(TTextFileReaderTest, AnEmptyFileHasNoLines) {
  EXPECT_THAT(LinesOf(""), IsEmpty());
  EXPECT_THAT(LinesOf("\xEF\xBB\xBF"), IsEmpty());
}

TEST_F(TTextFileReaderTest, EmptyLinesAreLines) {
  EXPECT_THAT(LinesOf("\n"), ElementsAre(""));
  EXPECT_THAT(LinesOf("\r\n\r\n"), ElementsAre("", ""));
  EXPECT_THAT(LinesOf("\n\r"), ElementsAre("", ""));
  EXPECT_THAT(LinesOf("\r\r\n\n"), ElementsAre("", "", ""));
  EXPECT_THAT(LinesOf("a\n\nb\n\n"), ElementsAre("a", "", "b", ""));
}

TEST_F(TTextFileReaderTest, BehindTheLastLineThereIsNoneForGood) {
  WriteFile(FFile, "a\r\n");
  TTextFileReader reader(FFile);
  EXPECT_TRUE(reader.Next());
  EXPECT_FALSE(reader.Next());
  EXPECT_FALSE(reader.Next());
}

TEST_F(TTextFileReaderTest, BytesZeroAndAboveArePartOfALine) {
  EXPECT_THAT(LinesOf("a\0b\n\xC3\xA9\x1A\xFF"sv), ElementsAre("a\0b"sv, "\xC3\xA9\x1A\xFF"));
}

TEST_F(TTextFileReaderTest, AUtf8MarkIsPassedOverAtTheStartOnly) {
  EXPECT_THAT(LinesOf("\xEF\xBB\xBF"
                      "1\n\xEF\xBB\xBF"
                      "2"),
              ElementsAre("1",
                          "\xEF\xBB\xBF"
                          "2"));
  EXPECT_THAT(LinesOf("\xEF\xBB"), ElementsAre("\xEF\xBB"));
}

TEST_F(TTextFileReaderTest, Utf16IsRefusedByItsMark) {
  for (const std::string_view text : {"\xFF\xFE\x31\x00"sv, "\xFE\xFF\x00\x31"sv, "\xFF\xFE"sv}) {
    EXPECT_THAT(Calling([&] { LinesOf(text); }),
                RaisesGeneralError("\"" + FFile + "\" is UTF-16 text; save it as ASCII or UTF-8"));
  }
}

// The second half of a CR LF may arrive with the next block; so may everything else.
TEST_F(TTextFileReaderTest, LineEndsAndMarksAreUnderstoodAcrossBlocks) {
  for (const std::string_view end : {"\r\n"sv, "\n"sv, "\r"sv, "\r\r"sv, "\n\r"sv, "\r\n\r\n"sv}) {
    for (std::size_t length = kBlock - 4; length <= kBlock + 1; ++length) {
      for (const std::string_view mark : {""sv, "\xEF\xBB\xBF"sv}) {
        const std::string body = std::string(length, 'x') + std::string(end) + "y" + std::string(end) + "z";
        ASSERT_EQ(LinesOf(std::string(mark) + body), LinesByDefinition(body)) << length;
      }
    }
  }
}

TEST_F(TTextFileReaderTest, ALineMayBeMuchLongerThanABlock) {
  for (const std::size_t length : {2 * kBlock - 1, 2 * kBlock, 2 * kBlock + 1, 5 * kBlock + 7}) {
    const std::string line(length, 'x');
    ASSERT_THAT(LinesOf("a\r\n" + line + "\r\n" + line + "b\r\nc"), ElementsAre("a", line, line + "b", "c")) << length;
  }
}

TEST_F(TTextFileReaderTest, ManyBlocksOfShortLinesKeepTheirLines) {
  std::mt19937 random(3);
  std::string text;
  while (text.size() < 5 * kBlock) {
    text += std::string(random() % 90, 'x') + std::array{"\r\n", "\n", "\r"}[random() % 3];
  }
  EXPECT_EQ(LinesOf(text), LinesByDefinition(text));
}

RC_GTEST_FIXTURE_PROP(TTextFileReaderTest, AnyMixtureOfLineEndsGivesTheLinesOfTheirDefinition, ()) {
  const auto text = *rc::gen::container<std::string>(rc::gen::elementOf(std::string("a\r\n")));
  RC_ASSERT(LinesOf(text) == LinesByDefinition(text));
}

TEST_F(TTextFileReaderTest, ALineOfTheLimitIsReadAndOneByteMoreIsRefused) {
  constexpr std::size_t limit = TTextFileReader::kLineLimit;
  EXPECT_EQ(limit, std::size_t{64} << 20U);
  const std::string longest(limit, 'x');
  for (const std::string_view end : {""sv, "\r\n"sv}) {
    WriteFile(FFile, longest + std::string(end));
    TTextFileReader reader(FFile);
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Line().size(), limit);
    EXPECT_FALSE(reader.Next());

    WriteFile(FFile, longest + "x" + std::string(end));
    EXPECT_THAT(
        Calling([&] { LinesOfFile(FFile); }),
        RaisesGeneralError("\"" + FFile + "\" has a line of more than 67108864 bytes; it is no text file of points"));
  }
}

TEST_F(TTextFileReaderTest, AFileThatIsNotThereIsNamedWithTheReason) {
  EXPECT_THAT(Calling([&] { TTextFileReader(FFolder.File("none.txt")); }),
              RaisesGeneralError("Cannot open file \"" + FFolder.File("none.txt") + "\". No such file or directory"));
}

TEST_F(TTextFileReaderTest, AFileThatMayNotBeReadIsNamedWithTheReason) {
  WriteFile(FFile, "1");
  std::filesystem::permissions(FFolder.Path(), std::filesystem::perms(0755));
  std::filesystem::permissions(FFile, std::filesystem::perms::none);
  const TUnprivileged user;
  ASSERT_TRUE(user.IsOrdinary());
  EXPECT_THAT(Calling([&] { LinesOfFile(FFile); }),
              RaisesGeneralError("Cannot open file \"" + FFile + "\". Permission denied"));
}

TEST_F(TTextFileReaderTest, AFileWhoseBytesCannotBeReadIsNamedWithTheReason) {
  EXPECT_THAT(Calling([&] { LinesOfFile("/proc/self/mem"); }),
              RaisesGeneralError("Cannot read \"/proc/self/mem\". Input/output error"));
}

TEST_F(TTextFileReaderTest, AFolderIsNoFile) {
  EXPECT_THAT(Calling([&] { LinesOfFile(FFolder.Path().string()); }),
              RaisesGeneralError("Cannot read \"" + FFolder.Path().string() + "\". Is a directory"));
}

TEST_F(TTextFileReaderTest, AStreamIsReadFromWhereItStandsAndStaysOpen) {
  WriteFile(FFile, "skipped\na\r\nb");
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(FFile.c_str(), "rb"), &std::fclose);
  ASSERT_EQ(std::fseek(stream.get(), 8, SEEK_SET), 0);
  {
    TTextFileReader reader(stream.get(), "standard input");
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Line(), "a");
    ASSERT_TRUE(reader.Next());
    EXPECT_EQ(reader.Line(), "b");
    EXPECT_FALSE(reader.Next());
  }
  EXPECT_EQ(std::fseek(stream.get(), 0, SEEK_SET), 0);
  EXPECT_EQ(std::fgetc(stream.get()), 's');
}

TEST_F(TTextFileReaderTest, AStreamIsNamedInMessages) {
  WriteFile(FFile, "\xFF\xFE");
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(FFile.c_str(), "rb"), &std::fclose);
  TTextFileReader reader(stream.get(), "standard input");
  EXPECT_THAT(Calling([&] { reader.Next(); }), RaisesGeneralError(StartsWith("\"standard input\" is UTF-16")));
}

TEST_F(TTextFileReaderTest, TellsTheShareOfTheFileThatHasBeenRead) {
  WriteFile(FFile, "12\r\n456\n89");
  TTextFileReader reader(FFile);
  EXPECT_EQ(reader.ShareRead(), 0.0);
  ASSERT_TRUE(reader.Next());
  EXPECT_EQ(reader.ShareRead(), 3.0 / 10.0);  // the second half of a line end goes with the line behind it
  ASSERT_TRUE(reader.Next());
  EXPECT_EQ(reader.ShareRead(), 8.0 / 10.0);
  ASSERT_TRUE(reader.Next());
  EXPECT_EQ(reader.ShareRead(), 1.0);
}

TEST_F(TTextFileReaderTest, AStreamOfUnknownSizeIsTakenForRead) {
  WriteFile(FFile, "1\n2\n");
  const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(std::fopen(FFile.c_str(), "rb"), std::fclose);
  TTextFileReader reader(stream.get(), "stream");
  ASSERT_TRUE(reader.Next());
  EXPECT_EQ(reader.ShareRead(), 1.0);
}

}  // namespace
}  // namespace ZORBase
