#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/FlatFit.h>

#include <memory>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(The plane is the one with the smallest sum of squared distances, taken at right angles. All columns need the same unit. Normal
is a unit vector, of either sign. The ratio says how much wider the points spread along the plane than across it, in its
narrower direction: large where they lie flat, near 1 where no plane stands out.

Examples:
  zor plane table.xyz.txt            rows of x,y,z: how level is the table, and how flat
  zor plane - --json < table.xyz.txt)";

struct TOptions {
  std::string File;
  bool IsJson = false;
};

void Run(const TOptions& Options) { FlatReport(Options.File, {3, "(x,y,z)", "point"}, "plane").Write(Options.IsJson); }

}  // namespace

void AddPlaneCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command =
      AddCommand(Program, "plane", "Fit a plane to points in space", kFooter, [options] { Run(*options); });
  AddNumberFile(command, options->File);
  AddJson(command, options->IsJson);
}

}  // namespace ZORBase::Tool
