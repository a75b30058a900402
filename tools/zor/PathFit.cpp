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

// What stands behind a message that names the first of Count.
std::string OthersText(std::ptrdiff_t Count) {
  if (Count <= 1) return "";
  return fmt::format(" {} more {} like that.", Count - 1, Count == 2 ? "pair is" : "pairs are");
}

template <class TPoint>
void RequireDistinctNeighbours(const TPointFile<TPoint>& File) {
  constexpr double kSmallestChord = TPointKind<TPoint>::TCurve::kSmallestChord;
  const auto chords = ChordsOf(File.Points);
  const auto isSame = [](double Chord) { return Chord < kSmallestChord; };
  const auto first = std::find_if(chords->Chords.begin(), chords->Chords.end(), isSame);
  if (first == chords->Chords.end()) return;
  const int line = LineOf(static_cast<int>(first - chords->Chords.begin()));
  RaiseGeneralError(fmt::format(
      "{}, lines {} and {}: found the same {} twice (their distance is {:.3g}), expected neighbours at least "
      "{} apart. Remove one of the two lines; \"zor info\" lists all such pairs.{}",
      File.Name, line, line + 1, TPointKind<TPoint>::kRow.Noun, *first, kSmallestChord,
      OthersText(std::count_if(first, chords->Chords.end(), isSame))));
}

// The parts of the path from point to point, as a method counts them.
template <class TPoint>
std::vector<double> PartsOf(const typename TPointKind<TPoint>::TPoints& Points, TParalizeMethod Method) {
  using TCurve = typename TPointKind<TPoint>::TCurve;
  std::vector<double> params(Points.size());
  double length = 0.0;
  switch (Method) {
    case mEqually: TCurve::EquallyParalize(Points, params, length); break;
    case mChord: TCurve::ChordParalize(Points, params, length); break;
    default: TCurve::CentripetalParalize(Points, params, length);
  }
  std::vector<double> parts;
  parts.reserve(params.size());
  for (std::size_t k = 0; k + 1 < params.size(); ++k) parts.push_back(params[k + 1] - params[k]);
  return parts;
}

// Says in lines of the file what the fit said in numbers of points.
template <class TPoint>
[[noreturn]] void RaiseRefusal(const TPointFile<TPoint>& File, TParalizeMethod Method, const std::string& Refusal) {
  constexpr double kTooNarrow = 1.000000001e-6;  // what the fit asks for
  const std::vector<double> parts = PartsOf<TPoint>(File.Points, Method);
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

void RequireEnough(const std::string& Name, int Count, int Fewest, std::string_view Noun) {
  if (Count >= Fewest) return;
  RaiseGeneralError(fmt::format("{}: found {} {}{}, expected {} or more to fit a path through. Measure more {}s.", Name,
                                Count, Noun, Count == 1 ? "" : "s", Fewest, Noun));
}

template <class TPoint>
typename TPointKind<TPoint>::TCurve FitPath(const TPointFile<TPoint>& File, TParalizeMethod Method) {
  using TKind = TPointKind<TPoint>;
  RequireEnough(File.Name, File.Points.Count(), TKind::TCurve::kFewestFitPoints, TKind::kRow.Noun);
  RequireDistinctNeighbours(File);
  const TProgress progress(fmt::format("fitting the path (method {})", MethodName(Method)));
  typename TKind::TCurve path;
  try {
    TKind::Fit(path, File.Points, Method);
  } catch (const TGeneralError& Error) {
    RaiseRefusal(File, Method, Error.what());
  }
  return path;
}

template <class TPoint>
std::string MetresWarning(const TPointFile<TPoint>& File) {
  using TKind = TPointKind<TPoint>;
  const auto chords = ChordsOf(File.Points);
  if (!chords || !LooksLikeMetres(*chords)) return "";
  return fmt::format(
      "the {0} are {1:.3g} apart on average, closer than {2} where lengths along a path are tabulated; the "
      "length between two {0} is then a straight line. If the file is in metres, multiply {3} by 1000.",
      TKind::kNouns, chords->Mean, TKind::TCurve::kSampleSpacing, TKind::kPosition);
}

template TNurbs2D FitPath(const TPointFile<TPoint2D>&, TParalizeMethod);
template TNurbs6D FitPath(const TPointFile<TPoint6D>&, TParalizeMethod);
template std::string MetresWarning(const TPointFile<TPoint2D>&);
template std::string MetresWarning(const TPointFile<TPoint6D>&);

}  // namespace ZORBase::Tool
