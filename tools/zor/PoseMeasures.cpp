#include <zor/PoseMeasures.h>

#include <algorithm>

namespace ZORBase::Tool {
namespace {

// The smallest part of the path that the fit accepts from pose to pose; see TNurbs6D::CreateCross.
constexpr double kSmallestPart = 1e-6;

void Keep(TPoseFact& Kept, double Value, int Pose, bool IsBetter) {
  if (IsBetter) Kept = {Value, Pose};
}

}  // namespace

template <class TPoint>
TBox BoxOf(const TList<TPoint>& Points) {
  TBox box{Points.First(), Points.First()};
  for (const TPoint6D point : Points) {
    for (int i = 0; i < 6; ++i) {
      box.Min.Items(i) = std::min(box.Min.Items(i), point.Items(i));
      box.Max.Items(i) = std::max(box.Max.Items(i), point.Items(i));
    }
  }
  return box;
}

double ExtentOf(const TBox& Box) {
  constexpr double kBeyondRounding = 1e-9;  // of the coordinates: less is not to be told from rounding
  const TPoint6D sides = Box.Max - Box.Min;
  const double farthest = std::max(Box.Max.GetPoint().Mag(), Box.Min.GetPoint().Mag());
  const double extent = std::max({sides.X, sides.Y, sides.Z, kBeyondRounding * farthest});
  return extent > 0.0 ? extent : 1.0;
}

template <class TPoint>
std::optional<TChordFigures> ChordsOf(const TList<TPoint>& Points) {
  if (Points.Count() < 2) return std::nullopt;
  TChordFigures figures;
  figures.Chords.reserve(Points.size() - 1);
  figures.Smallest.Value = figures.Largest.Value = (Points[1] - Points[0]).Mag();
  for (int k = 0; k + 1 < Points.Count(); ++k) {
    const double chord = (Points[k + 1] - Points[k]).Mag();
    figures.Chords.push_back(chord);
    figures.Sum += chord;
    Keep(figures.Smallest, chord, k, chord < figures.Smallest.Value);
    Keep(figures.Largest, chord, k, chord > figures.Largest.Value);
  }
  figures.Mean = figures.Sum / static_cast<double>(figures.Chords.size());
  return figures;
}

TDirectionFigures DirectionsOf(const TPoint6DList& Poses) {
  const double first = Poses.First().GetVector().Mag();
  TDirectionFigures figures{{first, 0}, {first, 0}};
  for (int i = 0; i < Poses.Count(); ++i) {
    const double length = Poses[i].GetVector().Mag();
    Keep(figures.Shortest, length, i, length < figures.Shortest.Value);
    Keep(figures.Longest, length, i, length > figures.Longest.Value);
  }
  return figures;
}

std::vector<TCloseNeighbours> CloseNeighbours(const TChordFigures& Chords) {
  std::vector<TCloseNeighbours> found;
  const double tooClose = kSmallestPart * Chords.Sum;
  for (std::size_t k = 0; k < Chords.Chords.size(); ++k) {
    const double chord = Chords.Chords[k];
    const bool isSame = chord < TNurbs6D::kSmallestChord;
    if (!isSame && chord >= 2.0 * tooClose) continue;
    found.push_back({{chord, static_cast<int>(k)}, isSame ? clSame : (chord < tooClose ? clTooClose : clDangerous)});
  }
  return found;
}

TTurn LargestTurn(const TPoint6DList& Poses, const TChordFigures& Chords) {
  TTurn largest;
  for (int k = 0; k + 1 < Poses.Count(); ++k) {
    const double chord = Chords.Chords[static_cast<std::size_t>(k)];
    if (chord < TNurbs6D::kSmallestChord) continue;
    const double angle = Poses[k].GetVector().AngleBetween(Poses[k + 1].GetVector());
    if (angle / chord > largest.PerLength) largest = {angle / chord, angle, k};
  }
  return largest;
}

bool LooksLikeMetres(const TChordFigures& Chords) { return Chords.Mean < TNurbs6D::kSampleSpacing; }

template TBox BoxOf(const TList<TPoint2D>&);
template TBox BoxOf(const TList<TPoint6D>&);
template std::optional<TChordFigures> ChordsOf(const TList<TPoint2D>&);
template std::optional<TChordFigures> ChordsOf(const TList<TPoint6D>&);

}  // namespace ZORBase::Tool
