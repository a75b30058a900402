#include <zor/PathFit.h>

#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <fmt/format.h>
#include <zor/Arguments.h>
#include <zor/PoseMeasures.h>
#include <zor/Progress.h>

#include <algorithm>
#include <vector>

namespace ZORBase::Tool {
namespace {

void RequireEnoughPoses(const TPoseFile& File) {
  const int count = File.Poses.Count();
  if (count >= TNurbs6D::kFewestFitPoints) return;
  RaiseGeneralError(fmt::format("{}: found {} pose{}, expected {} or more to fit a path through. Measure more poses.",
                                File.Name, count, count == 1 ? "" : "s", TNurbs6D::kFewestFitPoints));
}

void RequireDistinctNeighbours(const TPoseFile& File) {
  const auto chords = ChordsOf(File.Poses);
  const auto isSame = [](double Chord) { return Chord < TNurbs6D::kSmallestChord; };
  const auto same = std::count_if(chords->Chords.begin(), chords->Chords.end(), isSame);
  if (same == 0) return;
  const auto first = std::find_if(chords->Chords.begin(), chords->Chords.end(), isSame);
  const int line = LineOf(static_cast<int>(first - chords->Chords.begin()));
  const std::string others =
      same == 1 ? "" : fmt::format(" {} more neighbours are like that; \"zor info\" lists them.", same - 1);
  RaiseGeneralError(fmt::format(
      "{}, lines {} and {}: found the same pose twice (their distance is {:.3g}), expected neighbours at least "
      "{} apart. Remove one of the two lines.{}",
      File.Name, line, line + 1, *first, TNurbs6D::kSmallestChord, others));
}

// The neighbours that take the smallest part of the path by this method.
int NarrowestStep(const TPoint6DList& Poses, TParalizeMethod Method, double& Part) {
  std::vector<double> params(Poses.size());
  double length = 0.0;
  TNurbs6D::CurveParalize(Poses, params, length, Method);
  std::vector<double> steps;
  for (std::size_t k = 0; k + 1 < params.size(); ++k) steps.push_back(params[k + 1] - params[k]);
  const auto narrowest = std::min_element(steps.begin(), steps.end());
  Part = *narrowest;
  return static_cast<int>(narrowest - steps.begin());
}

// Says in lines of the file what the fit said in numbers of points.
[[noreturn]] void RaiseRefusal(const TPoseFile& File, TParalizeMethod Method, const std::string& Refusal) {
  constexpr double kTooNarrow = 1.1e-6;  // the fit needs 1e-6, and a little for rounding
  double part = 0.0;
  const int pose = NarrowestStep(File.Poses, Method, part);
  if (part > kTooNarrow) RaiseGeneralError(File.Name + ": " + Refusal);
  const std::string advice = Method == mEqually
                                 ? "Divide the file, or use another --method."
                                 : "Remove one of the two lines, divide the file, or use another --method.";
  RaiseGeneralError(
      fmt::format("{}, lines {} and {}: found neighbours that are {:.3g} of the path apart (method {}), "
                  "expected more than 1e-06. {}",
                  File.Name, LineOf(pose), LineOf(pose + 1), part, MethodName(Method), advice));
}

}  // namespace

TNurbs6D FitPath(const TPoseFile& File, TParalizeMethod Method) {
  RequireEnoughPoses(File);
  RequireDistinctNeighbours(File);
  const TProgress progress(fmt::format("fitting the path (method {})", MethodName(Method)));
  TNurbs6D path;
  try {
    path.CreateCross(&File.Poses, Method);
  } catch (const TGeneralError& Error) {
    RaiseRefusal(File, Method, Error.what());
  }
  return path;
}

std::string MetresWarning(const TPoint6DList& Poses) {
  const auto chords = ChordsOf(Poses);
  if (!chords || !LooksLikeMetres(*chords)) return "";
  return fmt::format(
      "the poses are {:.3g} apart on average, closer than {} where lengths along a path are tabulated; the "
      "length between two poses is then a straight line. If the file is in metres, multiply X, Y, Z by 1000.",
      chords->Mean, TNurbs6D::kSampleSpacing);
}

}  // namespace ZORBase::Tool
