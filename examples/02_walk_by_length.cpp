// Walks along a measured wing profile in steps of 1 mm: the poses in the file are unevenly spaced, those written are not.
#include <ZORBase/ZORBase.h>

#include <algorithm>
#include <iostream>
#include <string>

using namespace ZORBase;

namespace {

constexpr double kStep = 1.0;  // mm

void PrintSpacing(const std::string& Name, const TPoint6DList& Poses) {
  double smallest = (Poses[1] - Poses[0]).Mag();
  double largest = smallest;
  for (int i = 2; i < Poses.Count(); ++i) {
    const double chord = (Poses[i] - Poses[i - 1]).Mag();
    smallest = std::min(smallest, chord);
    largest = std::max(largest, chord);
  }
  std::cout << Format1033("%s %d poses, neighbours %.3f to %.3f mm apart\n", Name, Poses.Count(), smallest, largest);
}

TPoint6DList WalkAlong(const TNurbs6D& Curve, double Step) {
  TPoint6DList walked;
  for (int i = 0; i * Step < Curve.CurveLength(); ++i) {
    walked.Add(Curve.EvalPoint(Curve.ParamOfLength(i * Step)));
  }
  return walked;
}

void Run(const std::string& OutputFolder) {
  TPoint6DList measured;
  measured.LoadFromFile("data/e387.100mm.poses.txt");
  PrintSpacing("measured:", measured);

  TNurbs6D curve;
  if (!curve.CreateCross(&measured, mChord)) RaiseGeneralError("A curve needs at least four poses");
  std::cout << Format1033("curve:    %.3f mm long\n", curve.CurveLength());

  const TPoint6DList walked = WalkAlong(curve, kStep);
  PrintSpacing("walked:  ", walked);
  walked.SaveToFile(OutputFolder + "/e387.1mm.poses.txt", 4);
  for (int i = 100; i < 104; ++i) std::cout << Format1033("at %d mm: %s\n", i, walked[i].ToString1033(3));
}

}  // namespace

/// The argument is the folder that the poses are written to, by default the current one.
int main(int argc, char** argv) {
  const TPackageSession session;
  try {
    Run(argc > 1 ? argv[1] : ".");
  } catch (const TGeneralError& Error) {
    std::cerr << Error.what() << "\n";
    return 1;
  }
}
