#include <zor/Program.h>

#include <ZORBase/Version.h>
#include <fmt/format.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/TextOutput.h>
#include <CLI/CLI.hpp>

#include <csignal>
#include <cstdio>
#include <new>
#include <string>

namespace ZORBase::Tool {
namespace {

constexpr auto kProgramFooter =
    R"(Files hold one pose per line, X,Y,Z,A,B,C: a position and the direction of the tool axis. "-" is standard
input or standard output. "zor SUBCOMMAND --help" shows the options of a subcommand and examples.

Examples:
  zor info poses.txt
  zor resample poses.txt --step 0.5 -o even.txt

Exit status: 0 done; 1 a file cannot be read, used or written; 2 the command line is wrong.)";

// "zor info", or "zor" while no subcommand is known.
std::string SpokenName(const CLI::App& Program) {
  const auto chosen = Program.get_subcommands();
  return chosen.empty() ? "zor" : "zor " + chosen.front()->get_name();
}

void Complain(const CLI::App& Program, const std::string& Message) {
  fmt::print(stderr, "{}: {}\n", SpokenName(Program), Message);
}

int RefuseUsage(const CLI::App& Program, const std::string& Message) {
  Complain(Program, Message);
  fmt::print(stderr, "Run \"{} --help\" for the options and examples.\n", SpokenName(Program));
  return esUsage;
}

// Reads the command line and runs its subcommand.
void Parse(CLI::App& Program, int ArgCount, char** Args) {
  try {
    Program.parse(ArgCount, Args);
    if (Program.get_subcommands().empty()) throw TUsageError("name a subcommand, such as \"zor info poses.txt\"");
  } catch (const CLI::CallForHelp&) {
    WriteToStandardOutput(Program.help());
  } catch (const CLI::CallForVersion&) {
    WriteToStandardOutput(Program.version() + "\n");
  }
}

}  // namespace

std::unique_ptr<CLI::App> MakeProgram() {
  auto made = std::make_unique<CLI::App>(
      "Works on measured tool poses, smooth paths through them, and sampled signals.", "zor");
  CLI::App& program = *made;
  program.footer(kProgramFooter);
  program.set_help_flag("-h,--help", "Print this help and exit");
  program.set_version_flag("--version", "zor " ZORBASE_VERSION, "Print the version and exit");
  program.require_subcommand(0, 1);
  AddInfoCommand(program);
  AddFitCommand(program);
  AddResampleCommand(program);
  AddNearestCommand(program);
  AddSplineCommand(program);
  AddTransformCommand(program);
  AddConvertCommand(program);
  AddBlendCommand(program);
  AddSpectrumCommand(program);
  AddFilterCommand(program);
  AddPlaneCommand(program);
  AddLineCommand(program);
  AddSurfaceCommand(program);
  return made;
}

int RunProgram(int ArgCount, char** Args) {
#ifdef SIGPIPE
  // Whoever started the command may have this signal ignored; a reader that went away would then be reported as an error.
  std::signal(SIGPIPE, SIG_DFL);
#endif
  const std::unique_ptr<CLI::App> made = MakeProgram();
  CLI::App& program = *made;
  try {
    Parse(program, ArgCount, Args);
    return esDone;
  } catch (const CLI::Error& Error) {
    return RefuseUsage(program, Error.what());
  } catch (const TUsageError& Error) {
    return RefuseUsage(program, Error.what());
  } catch (const std::bad_alloc&) {
    Complain(program, "there is not enough memory for this");
  } catch (const std::exception& Error) {
    Complain(program, Error.what());
  }
  return esInput;
}

}  // namespace ZORBase::Tool
