#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <csignal>
#include <string>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

constexpr const char* kGoodLine = "1,2,3,0,0,1\n";
constexpr const char* kHowNumbersLook =
    "Write numbers like -12.5 or 1e-3, with a decimal point, and part them by commas or blanks.";

/// One file of poses in a folder of its own.
class ZorOnABadFile : public testing::Test {
 protected:
  TRun InfoOf(std::string_view Text) {
    WriteFile(FFile, Text);
    return Zor({"info", FFile});
  }

  // The refusal of a line in which something else than six numbers was found.
  auto RefusesLine(int Line, const std::string& Found, const std::string& Advice) const {
    return RefusesInput("zor info: " + FFile + ", line " + std::to_string(Line) + ": found " + Found +
                        ", expected 6 numbers X,Y,Z,A,B,C. " + Advice);
  }

  const std::string& File() const { return FFile; }

 private:
  TScratchFolder FFolder;
  std::string FFile = FFolder.File("poses.txt");
};

TEST_F(ZorOnABadFile, ALineOfFiveNumbersIsNamed) {
  EXPECT_THAT(InfoOf(std::string(kGoodLine) + kGoodLine + "1,2,3,4,5\n"),
              RefusesLine(3, "5 items in \"1,2,3,4,5\"", "Complete the line or remove it."));
  EXPECT_THAT(InfoOf("1,2,3,0,0,1,\n"),
              RefusesLine(1, "7 items in \"1,2,3,0,0,1,\"",
                          "Numbers have a decimal point, not a decimal comma, and one row stands on each line."));
  EXPECT_THAT(InfoOf("17\n"), RefusesLine(1, "1 item in \"17\"", "Complete the line or remove it."));
}

TEST_F(ZorOnABadFile, ADecimalCommaIsSuspectedWhereThereAreTooManyNumbers) {
  EXPECT_THAT(InfoOf("1,5 2,5 3,5 0,0 0,0 1,0\n"),
              RefusesLine(1, "12 items in \"1,5 2,5 3,5 0,0 0,0 1,0\"",
                          "Numbers have a decimal point, not a decimal comma, and one row stands on each line."));
}

TEST_F(ZorOnABadFile, AnItemThatIsNoNumberIsNamed) {
  const std::string before(kGoodLine);
  EXPECT_THAT(InfoOf("x,y,z,a,b,c\n"), RefusesLine(1, "\"x\" as number 1", kHowNumbersLook));
  EXPECT_THAT(InfoOf(before + "1,2,nan,0,0,1\n"), RefusesLine(2, "\"nan\" as number 3", kHowNumbersLook));
  EXPECT_THAT(InfoOf(before + "1,2,3,-inf,0,1\n"), RefusesLine(2, "\"-inf\" as number 4", kHowNumbersLook));
  EXPECT_THAT(InfoOf(before + "0x1p3,2,3,0,0,1\n"), RefusesLine(2, "\"0x1p3\" as number 1", kHowNumbersLook));
  EXPECT_THAT(InfoOf(before + "1,,3,0,0,1\n"), RefusesLine(2, "\"\" as number 2", kHowNumbersLook));
  EXPECT_THAT(InfoOf(before + "1;2;3;0;0;1\n"), RefusesLine(2, "\"1;2;3;0;0;1\" as number 1", kHowNumbersLook));
  EXPECT_THAT(InfoOf(before + "1,\xE2\x88\x92"
                              "2,3,0,0,1\n"),
              RefusesLine(2,
                          "\"\xE2\x88\x92"
                          "2\" as number 2",
                          kHowNumbersLook));
}

TEST_F(ZorOnABadFile, ANumberTooLargeToMeasureWithIsNamed) {
  const std::string advice = "Look for a lost decimal point or blank.";
  EXPECT_THAT(InfoOf("1,2,3,0,0,1e400\n"),
              RefusesLine(1, "\"1e400\" as number 6, which is too large to measure with", advice));
  EXPECT_THAT(InfoOf("1,-1e200,3,0,0,1\n"),
              RefusesLine(1, "\"-1e200\" as number 2, which is too large to measure with", advice));
}

TEST_F(ZorOnABadFile, AnEmptyLineIsNamedAlsoAtTheEnd) {
  const std::string advice = "Remove it; there are no blank lines, not even at the end.";
  EXPECT_THAT(InfoOf(std::string(kGoodLine) + "\n" + kGoodLine), RefusesLine(2, "an empty line", advice));
  EXPECT_THAT(InfoOf(std::string(kGoodLine) + kGoodLine + "\r\n"), RefusesLine(3, "an empty line", advice));
  EXPECT_THAT(InfoOf(std::string(kGoodLine) + "  \t \n"), RefusesLine(2, "an empty line", advice));
}

TEST_F(ZorOnABadFile, AByteZeroIsNamed) {
  using namespace std::string_literals;
  EXPECT_THAT(InfoOf("1,2,3,0,0,1\n1,2\0,3,0,0,1\n"s),
              RefusesLine(2, "a byte 0 at column 4", "Save the file as plain ASCII or UTF-8 text."));
}

TEST_F(ZorOnABadFile, Utf16IsNamed) {
  using namespace std::string_literals;
  EXPECT_THAT(InfoOf("\xFF\xFE\x31\x00\x2C\x00"s),
              RefusesInput("zor info: \"" + File() +
                           "\" is UTF-16 text; save it as ASCII or UTF-8. Name a text file that can be "
                           "read, or - for standard input."));
  EXPECT_THAT(InfoOf("\xFE\xFF\x00\x31"s), EndsWith(1, HasSubstr("is UTF-16 text")));
}

TEST_F(ZorOnABadFile, AnEmptyFileIsRefused) {
  EXPECT_THAT(InfoOf(""), RefusesInput("zor info: " + File() +
                                       ": found no poses, expected one per line: X,Y,Z,A,B,C. Name another file."));
}

TEST_F(ZorOnABadFile, ControlCharactersDoNotReachTheTerminal) {
  EXPECT_THAT(InfoOf("\"\x1b[31mred\x7f\"\n"), RefusesLine(1, "\"\\x1B[31mred\\x7F\" as number 1", kHowNumbersLook));
  EXPECT_THAT(InfoOf("1 2\x07\n"), RefusesLine(1, "2 items in \"1 2\\x07\"", "Complete the line or remove it."));
}

constexpr double kSlowdown = kIsSlowBuild ? 20.0 : 1.0;

TEST_F(ZorOnABadFile, ALineOfTenMegabytesIsAnsweredSoonAndShortly) {
  for (const std::string& item : {std::string("x"), std::string("1,"), std::string("\"")}) {
    std::string text;
    while (text.size() < 10'000'000) text += item;
    const TRun run = InfoOf(kGoodLine + text);
    EXPECT_LT(run.Seconds, kSlowdown);
    EXPECT_EQ(run.Status, 1);
    EXPECT_THAT(run.Err, HasSubstr("line 2: found "));
    EXPECT_LT(run.Err.size(), 1000U);
  }
}

// ------------------------------------------------------------------------------------------------ odd but good

class ZorOnAnOddFile : public ZorOnABadFile {
 protected:
  void ExpectTwoPoses(std::string_view Text) {
    const TRun run = InfoOf(Text);
    EXPECT_THAT(run, IsDone());
    EXPECT_THAT(run.Out, HasSubstr("poses       2\n"));
  }
};

TEST_F(ZorOnAnOddFile, AByteOrderMarkIsPassedOver) {
  ExpectTwoPoses(
      "\xEF\xBB\xBF"
      "1,2,3,0,0,1\n2,2,3,0,0,1\n");
}
TEST_F(ZorOnAnOddFile, CarriageReturnsAloneEndLines) { ExpectTwoPoses("1,2,3,0,0,1\r2,2,3,0,0,1\r"); }
TEST_F(ZorOnAnOddFile, LineEndsMayBeMixed) { ExpectTwoPoses("1,2,3,0,0,1\r\n2,2,3,0,0,1\n"); }
TEST_F(ZorOnAnOddFile, TheLastLineNeedsNoEnd) { ExpectTwoPoses("1,2,3,0,0,1\n2,2,3,0,0,1"); }
TEST_F(ZorOnAnOddFile, BlanksPartNumbersToo) { ExpectTwoPoses(" 1 2\t3 0 0 1 \n2 , 2 , 3 , 0 , 0 , 1\n"); }

// ------------------------------------------------------------------------------------------------ files that are none

TEST(ZorOnAFileThatIsNone, AMissingFileIsNamed) {
  const TScratchFolder folder;
  EXPECT_THAT(
      Zor({"info", folder.File("no.txt")}),
      RefusesInput("zor info: Cannot open file \"" + folder.File("no.txt") +
                   "\". No such file or directory. Name a text file that can be read, or - for standard input."));
}

TEST(ZorOnAFileThatIsNone, ADirectoryIsNamed) {
  const TScratchFolder folder;
  EXPECT_THAT(Zor({"fit", folder.Path().string()}),
              RefusesInput("zor fit: Cannot read \"" + folder.Path().string() +
                           "\". Is a directory. Name a text file that can be read, or - for standard input."));
}

TEST(ZorOnAFileThatIsNone, EndlessInputIsRefused) {
  EXPECT_THAT(Shell("zor info /dev/zero"), EndsWith(1, HasSubstr("has a line of more than 67108864 bytes")));
}

TEST(ZorOnAFileThatIsNone, AFolderThatDoesNotExistTakesNoOutput) {
  const TScratchFolder folder;
  EXPECT_THAT(
      Zor({"resample", SampleFile("e387.100mm.poses.txt"), "--step", "1", "-o", folder.File("no/out.txt")}),
      RefusesInput("zor resample: Cannot write file \"" + folder.File("no/out.txt") + "\". No such file or directory"));
}

// ------------------------------------------------------------------------------------------------ full disks, closed pipes

TEST(ZorOnAFullDisk, SaysSoWhateverItPrints) {
  const std::string file = SampleFile("e387.100mm.poses.txt");
  const std::vector<std::vector<std::string>> commands = {{"info", file},
                                                          {"info", file, "--json"},
                                                          {"fit", file},
                                                          {"resample", file, "--count", "2"},
                                                          {"resample", file, "--step", "0.001"},
                                                          {"fit", "--help"},
                                                          {"--help"},
                                                          {"--version"}};
  for (const auto& args : commands) {
    EXPECT_THAT(Zor(args, {"", "/dev/full", false, {}}),
                EndsWith(1, testing::EndsWith(": Cannot write file \"standard output\". No space left on device\n")));
  }
}

TEST(ZorOnAFullDisk, SaysSoForANamedFile) {
  EXPECT_THAT(Zor({"resample", SampleFile("e387.100mm.poses.txt"), "--step", "1", "-o", "/dev/full"}),
              RefusesInput("zor resample: Cannot write file \"/dev/full\". No space left on device"));
}

TEST(ZorOnAClosedPipe, EndsBySigPipeWithoutAWord) {
  const std::string file = SampleFile("e387.100mm.poses.txt");
  const std::vector<std::vector<std::string>> commands = {
      {"info", file}, {"fit", file, "--json"}, {"resample", file, "--step", "0.01"}, {"--help"}};
  for (const auto& args : commands) {
    const TRun run = Zor(args, {"", {}, true, {}});
    EXPECT_EQ(run.Signal, SIGPIPE);
    EXPECT_EQ(run.Err, "");
  }
}

TEST(ZorOnAClosedPipe, EndsEarlyBehindAReaderThatHasEnough) {
  const TRun run = Shell("zor resample '" + SampleFile("swept-plane.poses.txt") + "' --step 0.001 | head -n 1");
  EXPECT_THAT(run, IsDone());
  EXPECT_EQ(run.Out, "43.457451,30.363845,200.000000,0.500000,0.296198,0.813798\r\n");
}

TEST(ZorOnAClosedPipe, EndsWithoutAWordAlsoWhereTheSignalWasIgnored) {
  const TRun run =
      Shell("trap '' PIPE; zor resample '" + SampleFile("swept-plane.poses.txt") + "' --step 0.001 | head -n 1");
  EXPECT_THAT(run, IsDone());
}

}  // namespace
}  // namespace ZORBase::Test
