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

// What stands behind a message that names the first of Count.
std::string OthersText(std::ptrdiff_t Count) {
  if (Count <= 1) return "";
  return fmt::format(" {} more {} like that.", Count - 1, Count == 2 ? "pair is" : "pairs are");
}

void RequireDistinctNeighbours(const TPoseFile& File) {
  const auto chords = ChordsOf(File.Poses);
  const auto isSame = [](double Chord) { return Chord < TNurbs6D::kSmallestChord; };
  const auto first = std::find_if(chords->Chords.begin(), chords->Chords.end(), isSame);
  if (first == chords->Chords.end()) return;
  const int line = LineOf(static_cast<int>(first - chords->Chords.begin()));
  RaiseGeneralError(fmt::format(
      "{}, lines {} and {}: found the same pose twice (their distance is {:.3g}), expected neighbours at least "
      "{} apart. Remove one of the two lines; \"zor info\" lists all such pairs.{}",
      File.Name, line, line + 1, *first, TNurbs6D::kSmallestChord,
      OthersText(std::count_if(first, chords->Chords.end(), isSame))));
}

// The parts of the path from pose to pose, as a method counts them.
std::vector<double> PartsOf(const TPoint6DList& Poses, TParalizeMethod Method) {
  std::vector<double> params(Poses.size());
  double length = 0.0;
  TNurbs6D::CurveParalize(Poses, params, length, Method);
  std::vector<double> parts;
  parts.reserve(params.size());
  for (std::size_t k = 0; k + 1 < params.size(); ++k) parts.push_back(params[k + 1] - params[k]);
  return parts;
}

// Says in lines of the file what the fit said in numbers of points.
[[noreturn]] void RaiseRefusal(const TPoseFile& File, TParalizeMethod Method, const std::string& Refusal) {
  constexpr double kTooNarrow = 1.000000001e-6;  // what the fit asks for
  const std::vector<double> parts = PartsOf(File.Poses, Method);
  const auto isTooNarrow = [](double Part) { return Part < kTooNarrow; };
  const auto first = std::find_if(parts.begin(), parts.end(), isTooNarrow);
  if (first == parts.end()) RaiseGeneralError(File.Name + ": " + Refusal);
  const int line = LineOf(static_cast<int>(first - parts.begin()));
  RaiseGeneralError(
      fmt::format("{}, lines {} and {}: found neighbours that are {:.3g} of the path apart (method {}), "
                  "expected more than 1e-06. Remove one of the two lines, divide the file, or use another "
                  "--method.{}",
                  File.Name, line, line + 1, *first, MethodName(Method),
                  OthersText(std::count_if(first, parts.end(), isTooNarrow))));
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
