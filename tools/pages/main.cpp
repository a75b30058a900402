// zor_pages FOLDER DATE: writes the manual pages and the completions of zor below FOLDER, in the places where shells and man
// look for them below share/. DATE is that of the pages.
#include <pages/CommandTree.h>
#include <pages/Completions.h>
#include <pages/ManPage.h>
#include <zor/Program.h>
#include <CLI/CLI.hpp>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

namespace {

namespace Tool = ZORBase::Tool;

void Write(const std::filesystem::path& File, const std::string& Text) {
  std::filesystem::create_directories(File.parent_path());
  std::ofstream stream(File, std::ios::binary);
  stream << Text;
  if (!stream.flush()) throw std::runtime_error("cannot write " + File.string());
}

void WritePages(const std::filesystem::path& Folder, const std::string& Date) {
  const Tool::TCommand program = Tool::ReadCommandTree(*Tool::MakeProgram());
  const std::filesystem::path manual = Folder / "man" / "man1";
  Write(manual / (program.Name + ".1"), Tool::ProgramPage(program, Date));
  for (const Tool::TCommand& command : program.Subcommands) {
    Write(manual / (program.Name + "-" + command.Name + ".1"), Tool::SubcommandPage(program, command, Date));
  }
  Write(Folder / "bash-completion" / "completions" / program.Name, Tool::BashCompletion(program));
  Write(Folder / "zsh" / ("_" + program.Name), Tool::ZshCompletion(program));
  Write(Folder / "fish" / "vendor_completions.d" / (program.Name + ".fish"), Tool::FishCompletion(program));
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: zor_pages FOLDER DATE\n";
    return 2;
  }
  try {
    WritePages(argv[1], argv[2]);
  } catch (const std::exception& Error) {
    std::cerr << "zor_pages: " << Error.what() << "\n";
    return 1;
  }
}
