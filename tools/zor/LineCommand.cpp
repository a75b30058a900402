#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/FlatFit.h>

#include <memory>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(The line is the one with the smallest sum of squared distances, taken at right angles. Both columns need the same unit. Normal is
a unit vector, of either sign. The ratio says how much wider the points spread along the line than across it: large where they lie
straight, near 1 where no line stands out.

Examples:
  zor line edge.xy.txt            rows of x,y: which way does the edge run, and how straight
  zor line - --json < edge.xy.txt)";

struct TOptions {
  std::string File;
  bool IsJson = false;
};

void Run(const TOptions& Options) { FlatReport(Options.File, {2, "(x,y)", "point"}, "line").Write(Options.IsJson); }

}  // namespace

void AddLineCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command =
      AddCommand(Program, "line", "Fit a line to points of the plane", kFooter, [options] { Run(*options); });
  AddNumberFile(command, options->File);
  AddJson(command, options->IsJson);
}

}  // namespace ZORBase::Tool
