// Commands: the subcommands. Each one lives in a source of its name (InfoCommand.cpp), adds its arguments to the program and
// does its work when the command line was read without an error.
#pragma once

namespace CLI {
class App;
}

namespace ZORBase::Tool {

void AddInfoCommand(CLI::App& Program);
void AddFitCommand(CLI::App& Program);
void AddResampleCommand(CLI::App& Program);
void AddNearestCommand(CLI::App& Program);
void AddSplineCommand(CLI::App& Program);
void AddTransformCommand(CLI::App& Program);
void AddConvertCommand(CLI::App& Program);
void AddBlendCommand(CLI::App& Program);
void AddSpectrumCommand(CLI::App& Program);
void AddFilterCommand(CLI::App& Program);
void AddPlaneCommand(CLI::App& Program);
void AddLineCommand(CLI::App& Program);
void AddSurfaceCommand(CLI::App& Program);

}  // namespace ZORBase::Tool
