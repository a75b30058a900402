#include <ZORBase/ZORGeometry/CADTypesEuler.h>
#include <ZORBase/common/Cadtypes/Angles.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/PointKind.h>
#include <zor/Progress.h>
#include <zor/RowOutput.h>
#include <zor/TextOutput.h>

#include <array>
#include <memory>
#include <string_view>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(An Euler pose is X,Y,Z,Rx,Ry,Rz: a position and the angles of R = Rz(Rz) Ry(Ry) Rx(Rx). The tool direction is the third
column of R; the turn about the tool's own axis is lost.

Examples:
  zor convert poses.euler.txt --from euler --to poses -o poses.txt
  zor convert - --from euler --to poses --degrees < program.txt | zor info -)";

constexpr std::array<std::string_view, 1> kReadForms = {"euler"};
constexpr std::array<std::string_view, 1> kWrittenForms = {"poses"};

struct TOptions {
  std::string File;
  std::string From;
  std::string To;
  bool IsDegrees = false;
  std::string Output = std::string(kStandardStream);
  int Decimals = 6;
};

void Run(const TOptions& Options) {
  TRowOutput output(Options.Output, Options.Decimals);
  TProgress progress("converting poses", 0);
  std::int64_t count = 0;
  const auto radians = [&](double Angle) { return Options.IsDegrees ? DegToRad(Angle) : Angle; };
  ReadRows(Options.File, AnyNumberOf(kEulerRow), [&](std::span<const double> Row) {
    const TEulerPoint pose =
        TEulerPoint::Create(Row[0], Row[1], Row[2], radians(Row[3]), radians(Row[4]), radians(Row[5]));
    output.Add(pose.ToPoint6D().ToArray());
    progress.Advance(++count);
  });
  output.Commit();
}

}  // namespace

void AddConvertCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command =
      AddCommand(Program, "convert", "Convert poses from one form into another", kFooter, [options] { Run(*options); });
  AddFile(command, "FILE", options->File, "The poses, one X,Y,Z,Rx,Ry,Rz per line; - is standard input");
  SetRequired(AddChoice(command, "--from", options->From, kReadForms, "The form of the file"));
  SetRequired(AddChoice(command, "--to", options->To, kWrittenForms, "The form to convert into"));
  AddDegrees(command, options->IsDegrees, "The angles of the file are degrees, not radians");
  AddOutput(command, options->Output);
  AddDecimals(command, options->Decimals);
}

}  // namespace ZORBase::Tool
