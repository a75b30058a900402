#include <pages/CommandTree.h>

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cctype>
#include <sstream>
#include <string_view>

namespace ZORBase::Tool {
namespace {

std::vector<std::string> Split(std::string_view Text, char Separator) {
  std::vector<std::string> parts;
  for (std::size_t begin = 0; begin <= Text.size();) {
    const std::size_t end = std::min(Text.find(Separator, begin), Text.size());
    parts.emplace_back(Text.substr(begin, end - begin));
    begin = end + 1;
  }
  return parts;
}

// ---------------------------------------------------------------------------------------------- options

// The name of a value stands before the check that it must pass: "hamming|average:{hamming,average}".
void TakeValue(const std::string& TypeName, TSwitch& Switch) {
  Switch.ValueName = TypeName.substr(0, TypeName.find(':'));
  const std::size_t open = TypeName.find(":{");
  const std::size_t close = TypeName.find('}', open);
  if (open != std::string::npos && close != std::string::npos) {
    Switch.Choices = Split(std::string_view(TypeName).substr(open + 2, close - open - 2), ',');
  } else if (Switch.ValueName.find('|') != std::string::npos) {
    Switch.Choices = Split(Switch.ValueName, '|');
  }
}

TSwitch SwitchFrom(const CLI::Option& Option) {
  TSwitch result;
  for (const std::string& name : Option.get_snames()) result.Names.push_back("-" + name);
  for (const std::string& name : Option.get_lnames()) result.Names.push_back("--" + name);
  if (Option.get_items_expected_max() > 0) TakeValue(Option.get_type_name(), result);
  if (result.Names.empty()) {
    result.Names.push_back(Option.get_name(true));
    result.ValueName = result.Names.front();
  }
  result.Description = Option.get_description();
  result.IsRequired = Option.get_required();
  return result;
}

void AddSwitches(const CLI::App& Program, TCommand& Command) {
  for (const CLI::Option* option : Program.get_options()) {
    if (option->get_group().empty()) continue;  // hidden
    (option->get_positional() && !option->nonpositional() ? Command.Arguments : Command.Options)
        .push_back(SwitchFrom(*option));
  }
}

// ---------------------------------------------------------------------------------------------- text

bool IsIndented(const std::string& Line) { return Line.starts_with("  "); }

// A title is a word or two and a colon at the start of a block: "Examples:", "Exit status: 0 done".
std::string TitleOf(const std::string& Line) {
  const std::string title = Line.substr(0, Line.find(':'));
  const bool isOne = title.size() < Line.size() && std::isupper(static_cast<unsigned char>(title.front())) &&
                     std::count(title.begin(), title.end(), ' ') <= 1 &&
                     std::all_of(title.begin(), title.end(),
                                 [](unsigned char Letter) { return std::isalpha(Letter) || Letter == ' '; });
  return isOne ? title : "";
}

void AddLine(const std::string& Line, bool StartsBlock, std::vector<TSection>& Text) {
  std::string line = Line;
  if (StartsBlock && !IsIndented(line)) {
    if (const std::string title = TitleOf(line); !title.empty()) {
      Text.push_back({title, {}});
      line.erase(0, std::min(line.size(), title.size() + 2));
      if (line.empty()) return;
    }
  }
  std::vector<TBlock>& blocks = Text.back().Blocks;
  if (StartsBlock || blocks.empty() || blocks.back().IsVerbatim != IsIndented(line)) {
    blocks.push_back({{}, IsIndented(line)});
  }
  blocks.back().Lines.push_back(line);
}

std::vector<TSection> SectionsFrom(const std::string& Text) {
  std::vector<TSection> sections{{}};
  bool startsBlock = true;
  std::istringstream lines(Text);
  for (std::string line; std::getline(lines, line);) {
    if (!line.empty()) AddLine(line, startsBlock, sections);
    startsBlock = line.empty();
  }
  return sections;
}

}  // namespace

TCommand ReadCommandTree(const CLI::App& Program) {
  TCommand command;
  command.Name = Program.get_name();
  command.Summary = Program.get_description();
  command.Text = SectionsFrom(Program.get_footer());
  AddSwitches(Program, command);
  for (const CLI::App* sub : Program.get_subcommands([](const CLI::App* App) { return !App->get_group().empty(); })) {
    command.Subcommands.push_back(ReadCommandTree(*sub));
  }
  return command;
}

}  // namespace ZORBase::Tool
