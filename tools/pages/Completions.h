// Completions: what the shells offer when the tab key is pressed behind zor: subcommands, options, the values of those that
// have a list, files where files are meant, and nothing where only the user can know.
#pragma once

#include <pages/CommandTree.h>

#include <string>

namespace ZORBase::Tool {

std::string BashCompletion(const TCommand& Program);
std::string ZshCompletion(const TCommand& Program);
std::string FishCompletion(const TCommand& Program);

}  // namespace ZORBase::Tool
