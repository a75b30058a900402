// ManPage: the manual page of a command, for man(1): in the man macros that groff and mandoc share.
#pragma once

#include <pages/CommandTree.h>

#include <string>

namespace ZORBase::Tool {

/// \return the page of the program, zor(1).
std::string ProgramPage(const TCommand& Program, const std::string& Date);

/// \return the page of one of its subcommands, zor-NAME(1).
std::string SubcommandPage(const TCommand& Program, const TCommand& Subcommand, const std::string& Date);

}  // namespace ZORBase::Tool
