// The manual pages and completions, held against what the command itself prints as its help.
#include "support/TestSupport.h"
#include "tools/ProcessRunner.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <regex>
#include <sstream>
#include <string>
#include <vector>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

std::string Page(const std::string& Place) {
  std::ifstream file(std::filesystem::path(ZOR_PAGES) / Place, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string ManPage(const std::string& Command) { return Page("man/man1/zor" + Command + ".1"); }
std::string Zsh() { return Page("zsh/_zor"); }
std::string Fish() { return Page("fish/vendor_completions.d/zor.fish"); }

// The first words of the lines of one part of a help text: "Options:", "Subcommands:".
std::vector<std::string> ListedIn(const std::string& Help, const std::string& Part) {
  std::vector<std::string> words;
  std::istringstream lines(Help.substr(std::min(Help.find("\n" + Part + "\n") + 1, Help.size())));
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line) && line.starts_with("  ")) {
    if (line[2] != ' ') words.push_back(line.substr(2, line.find(' ', 2) - 2));
  }
  return words;
}

std::vector<std::string> Subcommands() { return ListedIn(Zor({"--help"}).Out, "Subcommands:"); }

// "-o,--output" -> "-o", "--output"
std::vector<std::string> NamesIn(const std::string& Word) {
  std::vector<std::string> names;
  std::istringstream parts(Word);
  for (std::string name; std::getline(parts, name, ',');) names.push_back(name);
  return names;
}

std::vector<std::string> OptionsOf(const std::string& Command) {
  std::vector<std::string> names;
  for (const std::string& word : ListedIn(Zor({Command, "--help"}).Out, "Options:")) {
    for (const std::string& name : NamesIn(word)) names.push_back(name);
  }
  return names;
}

std::string InRoff(const std::string& Name) { return std::regex_replace(Name, std::regex("-"), "\\-"); }

// What bash offers for the last of these words of a command line.
std::string Offered(const std::vector<std::string>& Words) {
  std::string line = "source '" + std::string(ZOR_PAGES) + "/bash-completion/completions/zor'; COMP_WORDS=(";
  for (const std::string& word : Words) line += "'" + word + "' ";
  line += "); COMP_CWORD=" + std::to_string(Words.size() - 1) + "; _zor; echo \"${COMPREPLY[*]}\"";
  const TRun run = Shell("bash -c \"" + std::regex_replace(line, std::regex("[\"$]"), "\\$&") + "\"");
  EXPECT_EQ(run.Status, 0) << run.Err;
  return run.Out;
}

// The part of a text from one mark up to the next.
std::string Between(const std::string& Text, const std::string& Begin, const std::string& End) {
  const std::size_t at = Text.find(Begin);
  if (at == std::string::npos) return "";
  return Text.substr(at, Text.find(End, at) - at);
}

TEST(ZorPages, EverySubcommandHasAManualPageAndStandsInThatOfTheProgram) {
  ASSERT_THAT(Subcommands(), testing::IsSupersetOf({"info", "fit", "resample", "filter"}));
  for (const std::string& command : Subcommands()) {
    EXPECT_THAT(ManPage(""), HasSubstr(".TP\n\\fB" + InRoff(command) + "\\fR\n")) << command;
    EXPECT_THAT(ManPage(""), HasSubstr(".BR zor\\-" + InRoff(command) + " (1)")) << command;
    EXPECT_THAT(ManPage("-" + command), HasSubstr("\\fBzor " + InRoff(command) + "\\fR [\\fIOPTIONS\\fR]"));
    EXPECT_THAT(ManPage("-" + command), HasSubstr(".SH EXAMPLES\n.EX\n  zor " + InRoff(command) + " "));
    EXPECT_THAT(ManPage("-" + command), HasSubstr(".SH EXIT STATUS\n0 done; 1 "));
  }
}

TEST(ZorPages, EveryOptionStandsInTheManualPageOfItsSubcommand) {
  for (const std::string& command : Subcommands()) {
    const std::vector<std::string> options = OptionsOf(command);
    EXPECT_THAT(options, testing::Contains("--help"));
    for (const std::string& name : options) {
      EXPECT_THAT(ManPage("-" + command), HasSubstr("\\fB" + InRoff(name) + "\\fR")) << command;
    }
    for (const std::string& name : ListedIn(Zor({command, "--help"}).Out, "Positionals:")) {
      EXPECT_THAT(ManPage("-" + command), HasSubstr("\n\\fI" + name + "\\fR\n")) << command;
    }
  }
}

TEST(ZorPages, EverySubcommandAndOptionIsCompletedByBash) {
  for (const std::string& command : Subcommands()) {
    EXPECT_EQ(Offered({"zor", command}), command + "\n");
    for (const std::string& name : OptionsOf(command)) {
      EXPECT_THAT(" " + Offered({"zor", command, name}), testing::ContainsRegex("[ ]" + name + "[ \n]")) << command;
    }
  }
}

TEST(ZorPages, EverySubcommandAndOptionStandsInTheCompletionsOfZshAndFish) {
  for (const std::string& command : Subcommands()) {
    const std::string zsh = Between(Zsh(), "\n        " + command + ")\n", ";;");
    for (const std::string& name : OptionsOf(command)) {
      EXPECT_THAT(zsh, testing::ContainsRegex("[' ({,]" + name + "[[ )},]")) << command;
      const std::string inFish = name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
      EXPECT_THAT(Fish(), testing::ContainsRegex("'__fish_seen_subcommand_from " + command + "'[^\n]*" + inFish + " "));
    }
  }
}

TEST(ZorPages, BashOffersTheValuesOfAnOptionThatHasAList) {
  EXPECT_EQ(Offered({"zor", "fit", "--method", ""}), "equal chord centripetal\n");
  EXPECT_EQ(Offered({"zor", "fit", "--method", "ch"}), "chord\n");
  EXPECT_EQ(Offered({"zor", "fit", "--method", "=", "c"}), "chord centripetal\n");
  EXPECT_EQ(Offered({"zor", "convert", "--from", ""}), "euler\n");
  EXPECT_EQ(Offered({"zor", "resample", "--step", ""}), "\n");
}

TEST(ZorPages, BashOffersFilesWhereAFileIsMeantAndTheirNamesMayHaveBlanks) {
  const TScratchFolder folder;
  const std::string file = folder.File("a part.txt");
  std::ofstream(file) << "0,0,0,0,0,1\n";
  EXPECT_EQ(Offered({"zor", "info", file.substr(0, file.size() - 3)}), file + "\n");
  EXPECT_EQ(Offered({"zor", "resample", "-o", file.substr(0, file.size() - 3)}), file + "\n");
  EXPECT_EQ(Offered({"zor", "blend", file.substr(0, file.size() - 3)}), "\n");
}

}  // namespace
}  // namespace ZORBase::Test
