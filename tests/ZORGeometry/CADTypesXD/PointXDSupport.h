// PointXDSupport: points of many coordinates in tests.
//   PointOf, WithTail              a point from its numbers, and with something stored behind the coordinates in use
//   Bits, IsExactPointXD           equality of all that is stored, to the bit
//   IsNearPointXD                  equality within a tolerance
//   RandomPoint, RandomPoints      seeded coordinates in a cube around zero
#pragma once

#include <ZORBase/ZORGeometry/CADTypesXD/TPointXD.h>
#include <ZORBase/common/BaseServices/TList.h>

#include <gmock/gmock.h>

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>
#include <initializer_list>
#include <ostream>
#include <random>
#include <span>

namespace ZORBase::Test {

inline TPointXD PointOf(std::initializer_list<double> Coordinates) {
  TPointXD point;
  point.FDimension = static_cast<int>(Coordinates.size());
  std::copy(Coordinates.begin(), Coordinates.end(), point.Items.begin());
  return point;
}

/// \return the same point with Tail stored in every coordinate that is not in use.
inline TPointXD WithTail(TPointXD P, double Tail) {
  std::fill(P.Items.begin() + P.FDimension, P.Items.end(), Tail);
  return P;
}

/// \return a point of a dimension whose coordinate i is Value(i).
template <class TValue>
TPointXD PointBy(int Dimension, TValue&& Value) {
  TPointXD point = TPointXD::Create(Dimension);
  for (int i = 0; i < Dimension; ++i) point.Items[static_cast<std::size_t>(i)] = Value(i);
  return point;
}

using TRandom = std::mt19937_64;

inline double RandomNumber(TRandom& Random, double Size) {
  return std::uniform_real_distribution<double>(-Size, Size)(Random);
}

inline TPointXD RandomPoint(TRandom& Random, int Dimension, double Size) {
  return PointBy(Dimension, [&](int) { return RandomNumber(Random, Size); });
}

inline TList<TPointXD> RandomPoints(TRandom& Random, int Dimension, int Count, double Size) {
  TList<TPointXD> points;
  for (int i = 0; i < Count; ++i) points.Add(RandomPoint(Random, Dimension, Size));
  return points;
}

inline std::uint64_t Bits(double Value) { return std::bit_cast<std::uint64_t>(Value); }

/// Matches a point with the dimension of Expected whose 44 stored numbers are those of Expected bit for bit.
MATCHER_P(IsExactPointXD, Expected, "") {
  const TPointXD expected = Expected;
  if (arg.FDimension != expected.FDimension) {
    *result_listener << "the dimension is " << arg.FDimension << " and not " << expected.FDimension;
    return false;
  }
  for (std::size_t i = 0; i < expected.Items.size(); ++i) {
    if (Bits(arg.Items[i]) == Bits(expected.Items[i])) continue;
    *result_listener << "item " << i << " is " << arg.Items[i] << " and not " << expected.Items[i];
    return false;
  }
  return true;
}

/// Matches a point with the dimension of Expected whose coordinates are all within Tolerance of those of Expected.
MATCHER_P2(IsNearPointXD, Expected, Tolerance, "") {
  const TPointXD expected = Expected;
  if (arg.FDimension != expected.FDimension) {
    *result_listener << "the dimension is " << arg.FDimension << " and not " << expected.FDimension;
    return false;
  }
  for (std::size_t i = 0; i < expected.Coordinates().size(); ++i) {
    const double miss = std::fabs(arg.Items[i] - expected.Items[i]);
    if (miss <= Tolerance) continue;
    *result_listener << "item " << i << " is off by " << miss;
    return false;
  }
  return true;
}

}  // namespace ZORBase::Test

namespace ZORBase {
/// How GoogleTest prints a point.
inline void PrintTo(const TPointXD& P, std::ostream* Stream) {
  *Stream << "dimension " << P.FDimension << " (";
  for (const double coordinate : P.Coordinates()) *Stream << " " << coordinate;
  *Stream << " )";
}
}  // namespace ZORBase
