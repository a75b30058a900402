#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <ZORBase/common/Cadtypes/Angles.h>
#include <zor/Arguments.h>
#include <zor/Commands.h>
#include <zor/ExitStatus.h>
#include <zor/PointKind.h>
#include <zor/Progress.h>
#include <zor/RowOutput.h>
#include <zor/TextOutput.h>

#include <memory>
#include <optional>
#include <vector>

namespace ZORBase::Tool {
namespace {

constexpr auto kFooter =
    R"(Positions are turned and moved, directions are turned. The transform is a turn R and a shift t: a pose (p, v) becomes
(R p + t, R v).

  --xyz "x,y,z,a,b,c"  R = Rx(a) Ry(b) Rz(c), t = (x, y, z)
  --zyx "x,y,z,a,b,c"  R = Rz(c) Ry(b) Rx(a), t = (x, y, z)
  --matrix             the rows of (R t): r00,r01,r02,tx,r10,r11,r12,ty,r20,r21,r22,tz

A transform that is within 1e-6 of none at all leaves the poses as they are, and so does any transform with a position
that has a coordinate above 1e10.

Examples:
  zor transform part.txt --zyx "100,0,50,0,0,90" --degrees -o table.txt   a quarter turn about Z, then a shift
  zor transform table.txt --zyx "100,0,50,0,0,90" --degrees --invert      and back
  zor transform part.txt --matrix "-1,0,0,0, 0,1,0,0, 0,0,1,0"            mirrored at the plane x = 0)";

struct TOptions {
  std::string File;
  std::optional<std::vector<double>> Xyz;
  std::optional<std::vector<double>> Zyx;
  std::optional<std::vector<double>> Matrix;
  bool IsDegrees = false;
  bool IsInverse = false;
  std::string Output = std::string(kStandardStream);
  int Decimals = 6;
};

// Position and angles in radians.
TPoint6D EulerPose(const std::vector<double>& Numbers, bool IsDegrees) {
  const auto radians = [IsDegrees](double Angle) { return IsDegrees ? DegToRad(Angle) : Angle; };
  return TPoint6D::Create(Numbers[0], Numbers[1], Numbers[2], radians(Numbers[3]), radians(Numbers[4]),
                          radians(Numbers[5]));
}

TMatrix4D MatrixFromRows(const std::vector<double>& m) {
  const TMatrix4D matrix = TMatrix4D::Create(m[0], m[1], m[2], m[4], m[5], m[6], m[8], m[9], m[10], m[3], m[7], m[11]);
  if (!matrix.isOrthogonal()) {
    throw TUsageError(
        "--matrix: found numbers whose part R is no rotation, expected the rows of (R t): "
        "r00,r01,r02,tx,r10,r11,r12,ty,r20,r21,r22,tz");
  }
  return matrix;
}

TMatrix4D TransformOf(const TOptions& Options) {
  const int given = (Options.Xyz ? 1 : 0) + (Options.Zyx ? 1 : 0) + (Options.Matrix ? 1 : 0);
  if (given != 1) throw TUsageError("give exactly one of --xyz, --zyx and --matrix");
  if (Options.Matrix && Options.IsDegrees)
    throw TUsageError("--degrees goes with --xyz and --zyx; a matrix has no angles");
  TMatrix4D matrix;
  if (Options.Matrix) matrix = MatrixFromRows(*Options.Matrix);
  if (Options.Xyz) matrix.CreateFromEulerAngleXYZ(EulerPose(*Options.Xyz, Options.IsDegrees));
  if (Options.Zyx) matrix.CreateFromEulerAngleZYX(EulerPose(*Options.Zyx, Options.IsDegrees));
  if (Options.IsInverse) matrix.Invert();
  return matrix;
}

void Run(const TOptions& Options) {
  const TMatrix4D transform = TransformOf(Options);
  TRowOutput output(Options.Output, Options.Decimals);
  TProgress progress("transforming poses", 0);
  std::int64_t count = 0;
  ReadRows(Options.File, AnyNumberOf(kPoseRow), [&](std::span<const double> Row) {
    output.Add(transform.TransformPose(TPointKind<TPoint6D>::FromRow(Row)).ToArray());
    progress.Advance(++count);
  });
  output.Commit();
}

}  // namespace

void AddTransformCommand(CLI::App& Program) {
  const auto options = std::make_shared<TOptions>();
  CLI::App& command = AddCommand(Program, "transform", "Turn and move poses", kFooter, [options] { Run(*options); });
  AddPoseFile(command, options->File);
  AddNumbers(command, "--xyz", "NUMBERS", 6, options->Xyz, "Position and angles of the frame, turned about x, y', z''");
  AddNumbers(command, "--zyx", "NUMBERS", 6, options->Zyx, "Position and angles of the frame, turned about z, y', x''");
  AddNumbers(command, "--matrix", "NUMBERS", 12, options->Matrix, "The transform as a matrix of three rows");
  AddDegrees(command, options->IsDegrees, "The angles of --xyz and --zyx are degrees, not radians");
  AddFlag(command, "--invert", options->IsInverse, "The other way: from the frame back");
  AddOutput(command, options->Output);
  AddDecimals(command, options->Decimals);
}

}  // namespace ZORBase::Tool
