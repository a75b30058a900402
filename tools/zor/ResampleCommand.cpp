#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/PathFit.h>
#include <zor/PathPicture.h>
#include <zor/PoseInput.h>
#include <zor/Progress.h>
#include <zor/RowInput.h>
#include <zor/RowOutput.h>
#include <zor/TextOutput.h>
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cmath>
#include <memory>
#include <optional>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(The path is a cubic curve through all poses; lengths along it are over all six components. The end of the path is
always the last pose, also behind a shorter last step and behind the lengths of --at.

Examples:
  zor resample poses.txt --step 0.5 -o even.txt      a pose every 0.5 of length
  zor resample poses.txt --count 200 -o even.txt     200 poses, evenly spaced from the start to the end
  zor resample poses.txt --at 0,12.5,40              the poses at these lengths, and the end
  zor resample - --step 1 < poses.txt | zor info -   in a pipeline)";

struct TOptions {
  std::string File;
  std::optional<double> Step;
  std::optional<std::int64_t> Count;
  std::vector<double> At;
  std::optional<TParalizeMethod> Method;
  std::string Output = std::string(kStandardStream);
  int Decimals = 6;
  std::string Plot;
};

void RequireOneSpacing(const TOptions& Options) {
  const int given = (Options.Step ? 1 : 0) + (Options.Count ? 1 : 0) + (Options.At.empty() ? 0 : 1);
  if (given != 1) throw TUsageError("give exactly one of --step, --count and --at");
}

// ------------------------------------------------------------------------------------------------ places

/// Lengths along a path, the last of them its end.
class TPlaces {
 public:
  TPlaces(const TOptions& Options, double Length) : FOptions(Options), FLength(Length) {
    if (Options.Step) {
      CountSteps(*Options.Step);
    } else if (Options.Count) {
      FBeforeEnd = *Options.Count - 1;
    } else {
      CheckLengths();
    }
  }

  std::int64_t Count() const { return FBeforeEnd + 1; }

  double operator[](std::int64_t Index) const {
    const auto index = static_cast<double>(Index);
    if (Index == FBeforeEnd) return FLength;
    if (FOptions.Step) return index * *FOptions.Step;
    if (FOptions.Count) return FLength * (index / static_cast<double>(FBeforeEnd));
    return FOptions.At[static_cast<std::size_t>(Index)];
  }

 private:
  // The steps before the end. One that meets it but for rounding is the end: two poses there would be the same.
  void CountSteps(double Step) {
    const double steps = FLength / Step;
    if (!(steps < static_cast<double>(kMaxPoses))) {
      throw TUsageError(
          fmt::format("--step: found {}, expected at least {:.3g}: the path is {:.6f} long, and at most {} poses "
                      "are given",
                      Step, FLength / static_cast<double>(kMaxPoses - 1), FLength, kMaxPoses));
    }
    const double tolerance = std::min(TNurbs6D::kSmallestChord, Step / 2.0);
    FBeforeEnd = static_cast<std::int64_t>(std::ceil((FLength - tolerance) / Step));
  }

  void CheckLengths() {
    const double largest = *std::max_element(FOptions.At.begin(), FOptions.At.end());
    if (largest > FLength + TNurbs6D::kSmallestChord) {
      throw TUsageError(
          fmt::format("--at: found {}, expected lengths from 0 to {:.6f}, where the path ends", largest, FLength));
    }
    FBeforeEnd = static_cast<std::int64_t>(FOptions.At.size());
    if (FOptions.At.back() >= FLength - TNurbs6D::kSmallestChord) --FBeforeEnd;
  }

  const TOptions& FOptions;
  double FLength;
  std::int64_t FBeforeEnd = 0;
};

// Calls Take with the pose at each place. Rising lengths are cheap: the search of each starts where the last one ended.
template <class TTake>
void Walk(const TNurbs6D& Path, const TPlaces& Places, TTake&& Take) {
  TSUTable::TCursor cursor;
  const std::int64_t last = Places.Count() - 1;
  for (std::int64_t i = 0; i < last; ++i) Take(i, Path.EvalPoint(Path.ParamOfLength(Places[i], cursor)));
  Take(last, Path.EvalPoint(1.0));
}

void Draw(const TOptions& Options, const TPoseFile& File, const TNurbs6D& Path, const TPlaces& Places) {
  constexpr std::int64_t kDrawn = 3000;
  const std::int64_t stride = std::max<std::int64_t>(1, Places.Count() / kDrawn);
  TPathPicture picture;
  picture.Title =
      fmt::format("{}: {} poses along a path of length {:.6g}", File.Name, Places.Count(), Path.CurveLength());
  picture.Paths = {
      DrawnCurve(fmt::format("path by method {}", MethodName(Options.Method.value_or(kUsualMethod))), Path)};
  picture.PosesName = "resampled poses";
  Walk(Path, Places, [&](std::int64_t Index, const TPoint6D& Pose) {
    if (Index % stride == 0 || Index == Places.Count() - 1) picture.Poses.Add(Pose);
  });
  SavePathPicture(picture, Options.Plot);
}

void Write(const TOptions& Options, const TNurbs6D& Path, const TPlaces& Places) {
  TProgress progress("writing poses", Places.Count());
  TRowOutput output(Options.Output, Options.Decimals);
  Walk(Path, Places, [&](std::int64_t Index, const TPoint6D& Pose) {
    output.Add(Pose);
    progress.Advance(Index + 1);
  });
  output.Commit();
}

void Run(const TOptions& Options) {
  RequireOneSpacing(Options);
  const TPoseFile file = ReadPoses(Options.File);
  const TNurbs6D path = FitPath(file, Options.Method.value_or(kUsualMethod));
  const TPlaces places(Options, path.CurveLength());
  if (const std::string warning = MetresWarning(file.Poses); !warning.empty()) Warn(file.Name + ": " + warning);
  if (!Options.Plot.empty()) Draw(Options, file, path, places);
  Write(Options, path, places);
}

}  // namespace

void AddResampleCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App* const command = Program.add_subcommand("resample", "Give poses along the path by arc length");
  command->footer(kFooter);
  AddPoseFile(*command, options->File);
  AddPositive(*command, "--step", "S", options->Step, "A pose every S of length; the last step may be shorter");
  AddCount(*command, "--count", options->Count, 2, kMaxPoses, "N poses, evenly spaced from the start to the end");
  AddLengths(*command, "--at", "S1,S2,...", options->At, "The poses at these lengths from the start");
  AddMethod(*command, options->Method, "How the curve parameter is spread over the poses (default: chord)");
  AddOutput(*command, options->Output);
  AddDecimals(*command, options->Decimals);
  AddPlot(*command, options->Plot);
  command->callback([options] { Run(*options); });
}

}  // namespace ZORBase::Tool
