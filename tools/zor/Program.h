#pragma once

#include <memory>

namespace CLI {
class App;
}

namespace ZORBase::Tool {

/// \return the program with all its subcommands, options and help texts.
std::unique_ptr<CLI::App> MakeProgram();

/// Runs the command line. Results go to standard output or the files it names, errors to standard error as
/// "zor SUBCOMMAND: what is wrong and what to do".
/// \return a TExitStatus. A reader that closes its end of a pipe ends the process by SIGPIPE, without a word.
int RunProgram(int ArgCount, char** Args);

}  // namespace ZORBase::Tool
