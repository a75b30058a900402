// PoseMeasures: what the poses of a file, or the points of a plane profile, are like before anything is fitted through them.
// Distances, also called chords, are over all components, as the fit and its lengths count.
#pragma once

#include <zor/PointKind.h>

#include <optional>
#include <vector>

namespace ZORBase::Tool {

/// A number that belongs to a pose, or to a pose and its follower.
struct TPoseFact {
  double Value = 0.0;
  int Pose = 0;  ///< counted from 0
};

/// The chords between neighbours.
struct TChordFigures {
  std::vector<double> Chords;  ///< the chord k leads from pose k to pose k + 1
  double Sum = 0.0;
  double Mean = 0.0;
  TPoseFact Smallest;
  TPoseFact Largest;
};

/// How bad it is that two neighbours are close.
enum TCloseness {
  clSame,       ///< closer than 1e-6: no path can be fitted
  clTooClose,   ///< closer than 1e-6 of the sum of chords: no path with the chord method
  clDangerous,  ///< twice that: a path of the double length would be refused
};

struct TCloseNeighbours {
  TPoseFact Chord;
  TCloseness Closeness = clSame;
};

struct TTurn {
  double PerLength = 0.0;  ///< radians per length
  double Angle = 0.0;      ///< radians
  int Pose = 0;            ///< the turn leads from this pose to its follower
};

/// The largest and the smallest of each component; those that a point of the plane does not have are 0. Points must not be
/// empty, here and below.
struct TBox {
  TPoint6D Min;
  TPoint6D Max;
};
template <class TPoint>
TBox BoxOf(const TList<TPoint>& Points);

/// \return the largest side of X, Y, Z; something to draw an axis with where that is nothing.
double ExtentOf(const TBox& Box);

/// \return nothing for a single point.
template <class TPoint>
std::optional<TChordFigures> ChordsOf(const TList<TPoint>& Points);

/// The shortest and the longest direction.
struct TDirectionFigures {
  TPoseFact Shortest;
  TPoseFact Longest;
};
TDirectionFigures DirectionsOf(const TPoint6DList& Poses);

/// \return the neighbours that are too close for a fit, or nearly so, in the order of the file.
std::vector<TCloseNeighbours> CloseNeighbours(const TChordFigures& Chords);

/// \return the largest turn of the direction from pose to pose per chord; neighbours that are the same pose are passed over.
TTurn LargestTurn(const TPoint6DList& Poses, const TChordFigures& Chords);

/// \return whether the poses stand so close that the arc-length table, whose rows are 0.03 apart, has nothing between them;
///         mostly because the file is in metres.
bool LooksLikeMetres(const TChordFigures& Chords);

}  // namespace ZORBase::Tool
