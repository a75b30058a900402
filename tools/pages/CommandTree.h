// CommandTree: what the options of zor say about themselves, in a form that pages are written from.
//   TSwitch, TSection, TCommand   an option or argument, a piece of the help text, a command with its subcommands
//   ReadCommandTree               the tree of a program
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace ZORBase::Tool {

/// An option, or an argument that has no dashes.
struct TSwitch {
  std::vector<std::string>
      Names;              ///< as they are written, "-o" before "--output"; one name without dashes for an argument
  std::string ValueName;  ///< empty for an option without a value
  std::vector<std::string> Choices;  ///< the values that are possible, where that is a list
  std::string Description;
  bool IsRequired = false;

  bool TakesValue() const { return !ValueName.empty(); }
  /// \return whether the value names a file.
  bool TakesFile() const { return ValueName == "FILE" || ValueName == "OUT"; }
};

/// Paragraphs, and lines that keep their form because they are indented.
struct TBlock {
  std::vector<std::string> Lines;
  bool IsVerbatim = false;
};

/// A titled part of the help text; what comes before the first title has the title "".
struct TSection {
  std::string Title;
  std::vector<TBlock> Blocks;
};

struct TCommand {
  std::string Name;
  std::string Summary;
  std::vector<TSwitch> Options;
  std::vector<TSwitch> Arguments;
  std::vector<TSection> Text;  ///< at least one, with the title ""
  std::vector<TCommand> Subcommands;
};

TCommand ReadCommandTree(const CLI::App& Program);

}  // namespace ZORBase::Tool
