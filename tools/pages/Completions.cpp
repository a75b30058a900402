#include <pages/Completions.h>

#include <fmt/format.h>

#include <algorithm>
#include <string_view>

namespace ZORBase::Tool {
namespace {

std::string Joined(const std::vector<std::string>& Words, std::string_view Separator = " ") {
  return fmt::format("{}", fmt::join(Words, Separator));
}

// Text with Escape before each of these characters.
std::string Guarded(std::string_view Text, std::string_view Characters, std::string_view Escape = "\\") {
  std::string result;
  for (const char character : Text) {
    if (Characters.find(character) != std::string_view::npos) result += Escape;
    result += character;
  }
  return result;
}

// In single quotes for bash and zsh, which end the quotes around a quote.
std::string Quoted(std::string_view Text) {
  std::string result = "'";
  for (const char character : Text) result += character == '\'' ? "'\\''" : std::string(1, character);
  return result + "'";
}

std::vector<std::string> NamesOf(const std::vector<TSwitch>& Switches) {
  std::vector<std::string> names;
  for (const TSwitch& item : Switches) names.insert(names.end(), item.Names.begin(), item.Names.end());
  return names;
}

std::vector<std::string> NamesOf(const std::vector<TCommand>& Commands) {
  std::vector<std::string> names;
  names.reserve(Commands.size());
  for (const TCommand& command : Commands) names.push_back(command.Name);
  return names;
}

bool TakesFileArgument(const TCommand& Command) {
  return std::ranges::any_of(Command.Arguments, [](const TSwitch& Argument) { return Argument.TakesFile(); });
}

// ---------------------------------------------------------------------------------------------- bash

constexpr auto kBashHead = R"(# bash completion for zor

_zor_files() {
  mapfile -t COMPREPLY < <(compgen -f -- "$1")
  compopt -o filenames 2>/dev/null
}

_zor_words() { mapfile -t COMPREPLY < <(compgen -W "$2" -- "$1"); }

_zor() {
  local current=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]} command="" word
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    if [[ $word != -* ]]; then
      command=$word
      break
    fi
  done
  # bash makes three words of --name=value
  if [[ $current == "=" ]]; then
    current=""
  elif [[ $before == "=" ]]; then
    before=${COMP_WORDS[COMP_CWORD - 2]}
  fi
  COMPREPLY=()
)";

// The branch for the value of an option.
std::string BashValue(const TCommand& Command, const TSwitch& Switch) {
  std::vector<std::string> patterns;
  for (const std::string& name : Switch.Names) patterns.push_back(Command.Name + ":" + name);
  std::string action;
  if (!Switch.Choices.empty()) {
    action = fmt::format("_zor_words \"$current\" {} ", Quoted(Joined(Switch.Choices)));
  } else if (Switch.TakesFile()) {
    action = "_zor_files \"$current\" ";
  }
  return fmt::format("    {}) {};;\n", Joined(patterns, " | "), action);
}

// The branch for a word that is no value: an option, or an argument of the command.
std::string BashWords(const TCommand& Command) {
  const std::string words = Quoted(Joined(NamesOf(Command.Options)));
  if (!TakesFileArgument(Command)) return fmt::format("    {}:*) _zor_words \"$current\" {} ;;\n", Command.Name, words);
  return fmt::format(
      "    {}:*) if [[ $current == -* ]]; then _zor_words \"$current\" {}; else _zor_files \"$current\"; fi ;;\n",
      Command.Name, words);
}

// ---------------------------------------------------------------------------------------------- zsh

// An argument for _arguments: '(-o --output)'{-o,--output}'[description]:OUT:_files'
std::string ZshOption(const TSwitch& Switch) {
  std::string value;
  if (Switch.TakesValue()) {
    const std::string action = !Switch.Choices.empty() ? "(" + Joined(Switch.Choices) + ")"
                               : Switch.TakesFile()    ? "_files"
                                                       : " ";
    value = ":" + Guarded(Switch.ValueName, ":") + ":" + action;
  }
  const std::string told = "[" + Guarded(Switch.Description, "[]:") + "]" + value;
  if (Switch.Names.size() == 1) return Quoted(Switch.Names.front() + told);
  return Quoted("(" + Joined(Switch.Names) + ")") + "{" + Joined(Switch.Names, ",") + "}" + Quoted(told);
}

std::string ZshArguments(const TCommand& Command) {
  std::string arguments;
  for (const TSwitch& option : Command.Options) arguments += " \\\n            " + ZshOption(option);
  for (const TSwitch& argument : Command.Arguments) {
    arguments += " \\\n            " +
                 Quoted(":" + Guarded(argument.Names.front(), ":") + ":" + (argument.TakesFile() ? "_files" : " "));
  }
  return arguments;
}

// ---------------------------------------------------------------------------------------------- fish

std::string FishQuoted(std::string_view Text) { return "'" + Guarded(Text, "\\'") + "'"; }

std::string FishOption(const std::string& Condition, const TSwitch& Switch) {
  std::string line = "complete -c zor -n " + Condition;
  for (const std::string& name : Switch.Names) {
    line += name.starts_with("--") ? " -l " + name.substr(2) : " -s " + name.substr(1);
  }
  if (!Switch.Choices.empty()) {
    line += " -x -a " + FishQuoted(Joined(Switch.Choices));
  } else if (Switch.TakesFile()) {
    line += " -r -F";
  } else if (Switch.TakesValue()) {
    line += " -x";
  }
  return line + " -d " + FishQuoted(Switch.Description) + "\n";
}

}  // namespace

std::string BashCompletion(const TCommand& Program) {
  std::string text = kBashHead;
  text += "  case $command:$before in\n";
  for (const TCommand& command : Program.Subcommands) {
    for (const TSwitch& option : command.Options) {
      if (option.TakesValue()) text += BashValue(command, option);
    }
  }
  for (const TCommand& command : Program.Subcommands) text += BashWords(command);
  text += fmt::format("    :*) _zor_words \"$current\" {} ;;\n  esac\n}}\n\ncomplete -F _zor zor\n",
                      Quoted(Joined(NamesOf(Program.Subcommands)) + " " + Joined(NamesOf(Program.Options))));
  return text;
}

std::string ZshCompletion(const TCommand& Program) {
  std::string text =
      "#compdef zor\n\n_zor() {\n  local context state state_descr line\n  typeset -A opt_args\n  _arguments -C";
  for (const TSwitch& option : Program.Options) text += " \\\n    " + ZshOption(option);
  text += " \\\n    '1:subcommand:->subcommand' \\\n    '*::argument:->argument'\n  case $state in\n    subcommand)\n";
  text += "      local -a subcommands=(\n";
  for (const TCommand& command : Program.Subcommands) {
    text += "        " + Quoted(command.Name + ":" + Guarded(command.Summary, ":")) + "\n";
  }
  text +=
      "      )\n      _describe -t commands subcommand subcommands\n      ;;\n    argument)\n      case $words[1] in\n";
  for (const TCommand& command : Program.Subcommands) {
    text += "        " + command.Name + ")\n          _arguments" + ZshArguments(command) + "\n          ;;\n";
  }
  text += "      esac\n      ;;\n  esac\n}\n\n_zor \"$@\"\n";
  return text;
}

std::string FishCompletion(const TCommand& Program) {
  std::string text = "complete -c zor -f\n";
  for (const TSwitch& option : Program.Options) text += FishOption("__fish_use_subcommand", option);
  for (const TCommand& command : Program.Subcommands) {
    text += fmt::format("complete -c zor -n __fish_use_subcommand -a {} -d {}\n", command.Name,
                        FishQuoted(command.Summary));
  }
  for (const TCommand& command : Program.Subcommands) {
    const std::string condition = "'__fish_seen_subcommand_from " + command.Name + "'";
    for (const TSwitch& option : command.Options) text += FishOption(condition, option);
    if (TakesFileArgument(command)) text += "complete -c zor -n " + condition + " -F\n";
  }
  return text;
}

}  // namespace ZORBase::Tool
