#include <pages/ManPage.h>

#include <ZORBase/Version.h>
#include <fmt/format.h>

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <string_view>

namespace ZORBase::Tool {
namespace {

// ---------------------------------------------------------------------------------------------- text for roff

// The character that begins at Text[At], which moves behind it: UTF-8, which the program's help is written in.
std::uint32_t NextCharacter(std::string_view Text, std::size_t& At) {
  const auto lead = static_cast<unsigned char>(Text[At++]);
  if (lead < 0x80) return lead;
  const int further = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : 1;
  std::uint32_t character = lead & (0x3FU >> further);
  for (int i = 0; i < further && At < Text.size(); ++i) {
    character = character << 6 | (static_cast<unsigned char>(Text[At++]) & 0x3FU);
  }
  return character;
}

// Text in which nothing is a request or an escape, and what is typed looks as it is typed.
std::string Escaped(std::string_view Text) {
  std::string result;
  if (Text.starts_with('.') || Text.starts_with('\'')) result = "\\&";
  for (std::size_t at = 0; at < Text.size();) {
    const std::uint32_t character = NextCharacter(Text, at);
    switch (character) {
      case '\\': result += "\\e"; break;
      case '-': result += "\\-"; break;
      case '\'': result += "\\(aq"; break;
      case '`': result += "\\(ga"; break;
      case '^': result += "\\(ha"; break;
      case '~': result += "\\(ti"; break;
      case '"': result += "\\(dq"; break;
      default:
        result +=
            character < 0x80 ? std::string(1, static_cast<char>(character)) : fmt::format("\\[u{:04X}]", character);
    }
  }
  return result;
}

std::string Bold(std::string_view Text) { return "\\fB" + Escaped(Text) + "\\fR"; }
std::string Italic(std::string_view Text) { return "\\fI" + Escaped(Text) + "\\fR"; }

std::string Upper(std::string Text) {
  std::transform(Text.begin(), Text.end(), Text.begin(), [](unsigned char Letter) { return std::toupper(Letter); });
  return Text;
}

// ---------------------------------------------------------------------------------------------- pieces of a page

// "zor-fit", the name of the page of "fit".
std::string PageName(const TCommand& Program, const TCommand& Subcommand) {
  return Program.Name + "-" + Subcommand.Name;
}

std::string Head(const std::string& Name, const std::string& Summary, const std::string& Date) {
  return fmt::format(".TH {} 1 {} \"zor {}\" \"User Commands\"\n.SH NAME\n{} \\- {}\n", Upper(Escaped(Name)), Date,
                     ZORBASE_VERSION, Escaped(Name), Escaped(Summary));
}

void AppendBlocks(std::string& Page, const std::vector<TBlock>& Blocks) {
  for (std::size_t i = 0; i < Blocks.size(); ++i) {
    if (i > 0) Page += ".PP\n";
    if (Blocks[i].IsVerbatim) Page += ".EX\n";
    for (const std::string& line : Blocks[i].Lines) Page += Escaped(line) + "\n";
    if (Blocks[i].IsVerbatim) Page += ".EE\n";
  }
}

void AppendSection(std::string& Page, const TSection& Section) {
  if (Section.Blocks.empty()) return;
  Page += ".SH " + Upper(Escaped(Section.Title.empty() ? "Description" : Section.Title)) + "\n";
  AppendBlocks(Page, Section.Blocks);
}

void AppendSwitches(std::string& Page, const std::string& Title, const std::vector<TSwitch>& Switches) {
  if (Switches.empty()) return;
  Page += ".SH " + Title + "\n";
  for (const TSwitch& item : Switches) {
    const bool isArgument = !item.Names.front().starts_with('-');
    std::string head;
    for (const std::string& name : item.Names) {
      head += (head.empty() ? "" : ", ") + (isArgument ? Italic(name) : Bold(name));
    }
    if (item.TakesValue() && !isArgument) head += " " + Italic(item.ValueName);
    Page += ".TP\n" + head + "\n" + Escaped(item.Description) + (item.IsRequired && !isArgument ? " (required)" : "") +
            "\n";
  }
}

void AppendSeeAlso(std::string& Page, const std::vector<std::string>& Names) {
  Page += ".SH SEE ALSO\n";
  for (std::size_t i = 0; i < Names.size(); ++i) {
    Page += fmt::format(".BR {} (1){}\n", Escaped(Names[i]), i + 1 < Names.size() ? "," : "");
  }
}

const TSection* FindSection(const TCommand& Command, std::string_view Title) {
  const auto found = std::find_if(Command.Text.begin(), Command.Text.end(),
                                  [&](const TSection& Section) { return Section.Title == Title; });
  return found == Command.Text.end() ? nullptr : &*found;
}

}  // namespace

std::string ProgramPage(const TCommand& Program, const std::string& Date) {
  std::string page = Head(Program.Name, Program.Summary, Date);
  page += ".SH SYNOPSIS\n" + Bold(Program.Name) + " " + Italic("SUBCOMMAND") + " [" + Italic("OPTIONS") + "] [" +
          Italic("ARGUMENTS") + "]\n";
  AppendSection(page, Program.Text.front());
  AppendSwitches(page, "OPTIONS", Program.Options);
  page += ".SH SUBCOMMANDS\n";
  std::vector<std::string> others;
  for (const TCommand& command : Program.Subcommands) {
    page += ".TP\n" + Bold(command.Name) + "\n" + Escaped(command.Summary) + "\n";
    others.push_back(PageName(Program, command));
  }
  for (std::size_t i = 1; i < Program.Text.size(); ++i) AppendSection(page, Program.Text[i]);
  AppendSeeAlso(page, others);
  return page;
}

std::string SubcommandPage(const TCommand& Program, const TCommand& Subcommand, const std::string& Date) {
  std::string page = Head(PageName(Program, Subcommand), Subcommand.Summary, Date);
  page += ".SH SYNOPSIS\n" + Bold(Program.Name + " " + Subcommand.Name) + " [" + Italic("OPTIONS") + "]";
  for (const TSwitch& argument : Subcommand.Arguments) {
    const std::string name = Italic(argument.Names.front());
    page += argument.IsRequired ? " " + name : " [" + name + "]";
  }
  page += "\n";
  AppendSection(page, Subcommand.Text.front());
  AppendSwitches(page, "ARGUMENTS", Subcommand.Arguments);
  AppendSwitches(page, "OPTIONS", Subcommand.Options);
  for (std::size_t i = 1; i < Subcommand.Text.size(); ++i) AppendSection(page, Subcommand.Text[i]);
  // What a command ends with is the same for all, and told once.
  if (const TSection* const status = FindSection(Program, "Exit status")) AppendSection(page, *status);
  AppendSeeAlso(page, {Program.Name});
  return page;
}

}  // namespace ZORBase::Tool
