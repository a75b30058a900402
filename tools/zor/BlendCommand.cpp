#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>
#include <ZORBase/common/Cadtypes/Angles.h>
#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/Progress.h>
#include <zor/RowInput.h>
#include <zor/RowOutput.h>
#include <zor/TextOutput.h>

#include <algorithm>
#include <array>
#include <memory>
#include <optional>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(Steps are equal; N steps make N + 1 poses, BEGIN and END among them. By --mode:

  wcs     BEGIN and END are X,Y,Z,A,B,C; the direction turns about one axis, the short way (the default)
  wcs-up  the same, but a turn that would lead the direction through a lowest Z goes the other way round
  euler   BEGIN and END are X,Y,Z,Rx,Ry,Rz, and so is the result; every angle runs straight from its first to its last
          value. From 170 to -170 degrees that is the long way round, 340 degrees back through 0. To go the short way,
          write -170 as 190, or blend the directions with --mode wcs.

Examples:
  zor blend "0,0,0,0,0,1" "10,0,0,1,0,0" --count 4
  zor blend "0,0,0,0,0,1" "10,0,0,1,0,0" --max-step 0.5 --max-angle 2 -o move.txt
  zor blend "0,0,0,0,0,170" "10,0,0,0,0,190" --mode euler --degrees --count 10)";

constexpr std::array<std::string_view, 3> kModes = {"wcs", "wcs-up", "euler"};
constexpr int kShortTurn = 0;
constexpr int kTurnAwayFromLowestZ = 1;

struct TOptions {
  std::optional<std::vector<double>> Begin;
  std::optional<std::vector<double>> End;
  std::optional<std::int64_t> Count;
  std::optional<double> MaxStep;
  std::optional<double> MaxAngle;
  std::string Mode = std::string(kModes.front());
  bool IsDegrees = false;
  std::string Output = std::string(kStandardStream);
  int Decimals = 6;
};

void RequireOneSpacing(const TOptions& Options) {
  const bool hasLimits = Options.MaxStep && Options.MaxAngle;
  const bool hasAnyLimit = Options.MaxStep || Options.MaxAngle;
  if (Options.Count ? hasAnyLimit : !hasLimits) {
    throw TUsageError("give either --count, or --max-step and --max-angle together");
  }
}

template <class TInterpolator, class TRowOf>
void Write(const TOptions& Options, const TInterpolator& Move, TRowOf&& RowOf) {
  if (Move.Count() >= kMaxPoses) {
    throw TUsageError(
        fmt::format("found {} steps, expected fewer than {}: allow larger ones", Move.Count(), kMaxPoses));
  }
  TProgress progress("writing poses", Move.Count());
  TRowOutput output(Options.Output, Options.Decimals);
  for (int i = 0; i <= Move.Count(); ++i) {
    output.Add(RowOf(Move.GetWcsPt(i)));
    progress.Advance(i);
  }
  output.Commit();
}

// ------------------------------------------------------------------------------------------------ directions

TPoint6D PoseOf(const std::vector<double>& Numbers, const std::string& Name) {
  const TPoint6D pose =
      TPoint6D::Create(Numbers[0], Numbers[1], Numbers[2], Numbers[3], Numbers[4], Numbers[5]).VecNormal();
  if (pose.GetVector().MagSqr() == 0.0) throw TUsageError(Name + ": found no direction, expected one: A,B,C are all 0");
  return pose;
}

void BlendDirections(const TOptions& Options) {
  const int type = Options.Mode == "wcs-up" ? kTurnAwayFromLowestZ : kShortTurn;
  const TPoint6D begin = PoseOf(*Options.Begin, "BEGIN");
  const TPoint6D end = PoseOf(*Options.End, "END");
  const auto move = Options.Count ? TWcsPtInterpolator(begin, end, static_cast<int>(*Options.Count), type)
                                  : TWcsPtInterpolator(begin, end, *Options.MaxStep, *Options.MaxAngle, type);
  Write(Options, move, [](const TPoint6D& Pose) { return Pose.ToArray(); });
}

// ------------------------------------------------------------------------------------------------ angles

TEulerPoint EulerPoseOf(const std::vector<double>& Numbers, bool IsDegrees) {
  const auto radians = [IsDegrees](double Angle) { return IsDegrees ? DegToRad(Angle) : Angle; };
  return TEulerPoint::Create(Numbers[0], Numbers[1], Numbers[2], radians(Numbers[3]), radians(Numbers[4]),
                             radians(Numbers[5]));
}

void BlendAngles(const TOptions& Options) {
  const TEulerPoint begin = EulerPoseOf(*Options.Begin, Options.IsDegrees);
  const TEulerPoint end = EulerPoseOf(*Options.End, Options.IsDegrees);
  const auto move = Options.Count ? TEulerPtInterpolator(begin, end, static_cast<int>(*Options.Count))
                                  : TEulerPtInterpolator(begin, end, *Options.MaxStep, *Options.MaxAngle);
  Write(Options, move, [&](const TEulerPoint& Pose) {
    std::array<double, 6> row = Pose.ToArray();
    if (Options.IsDegrees) std::transform(row.begin() + 3, row.end(), row.begin() + 3, RadToDeg);
    return row;
  });
}

void Run(const TOptions& Options) {
  RequireOneSpacing(Options);
  if (Options.Mode == "euler") {
    BlendAngles(Options);
  } else if (Options.IsDegrees) {
    throw TUsageError("--degrees goes with --mode euler; directions have no angles");
  } else {
    BlendDirections(Options);
  }
}

}  // namespace

void AddBlendCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command =
      AddCommand(Program, "blend", "Step from one pose to another", kFooter, [options] { Run(*options); });
  SetRequired(AddNumbers(command, "BEGIN", "", 6, options->Begin, "The first pose, six numbers"));
  SetRequired(AddNumbers(command, "END", "", 6, options->End, "The last pose, six numbers"));
  AddCount(command, "--count", options->Count, 1, kMaxPoses - 1, "N equal steps, which make N + 1 poses");
  AddPositive(command, "--max-step", "D", options->MaxStep, "Steps of at most this length");
  AddPositive(command, "--max-angle", "DEG", options->MaxAngle, "Steps that turn by at most this many degrees");
  AddChoice(command, "--mode", options->Mode, kModes, "How the pose turns (default: wcs)");
  AddDegrees(command, options->IsDegrees, "With --mode euler: angles are degrees, in BEGIN, END and the result");
  AddOutput(command, options->Output);
  AddDecimals(command, options->Decimals);
}

}  // namespace ZORBase::Tool
