// TableLookup: finding a value in a table whose rows rise, and interpolating between two rows.
//   FindRow       the row at or before a value, by bisection
//   FindRowFrom   the same, starting where the last search ended
//   FindRowAt     the same, where it is known between which rows the value stands
//   HermiteStep   the cubic between two rows with given slopes
#pragma once

#include <ZORBase/common/BaseServices/Extended.h>

#include <cmath>

namespace ZORBase {

/// A value closer to a row than this is that row's.
inline constexpr Extended kRowTolerance = 1e-7L;

/// Where a value stands in a table.
struct TRowPlace {
  int Row = 0;           ///< counted from 0
  bool Between = false;  ///< between Row and Row + 1; otherwise Row itself answers
};

/// Bisects a table of Count >= 1 rows with the keys Key(0) <= ... <= Key(Count - 1). A value within kRowTolerance of a row that
/// the bisection meets, or outside the table, gives that row or the nearest end.
template <class TKey>
TRowPlace FindRow(int Count, TKey&& Key, double Value) {
  if (Key(0) + kRowTolerance > Value) return {0, false};
  if (Key(Count - 1) - kRowTolerance < Value) return {Count - 1, false};
  int low = 0;
  int high = Count - 1;
  while (high - low > 1) {
    const int middle = low + (high - low) / 2;
    if (std::fabs(static_cast<Extended>(Key(middle)) - Value) < kRowTolerance) return {middle, false};
    (Key(middle) >= Value ? high : low) = middle;
  }
  return {low, true};
}

/// As FindRow, looking from row Start to both sides in growing steps: cheap when Value is near that row. The answer is that
/// of FindRow.
template <class TKey>
TRowPlace FindRowFrom(int Start, int Count, TKey&& Key, double Value) {
  int low = Start < 0 || Start >= Count ? 0 : Start;
  int high = low;
  for (int step = 1; low > 0 && !(Key(low) < Value); step *= 2) {
    high = low;
    low = low > step ? low - step : 0;
  }
  for (int step = 1; high < Count - 1 && Key(high) < Value; step *= 2) {
    low = high;
    high = step < Count - 1 - high ? high + step : Count - 1;
  }
  while (high - low > 1) {
    const int middle = low + (high - low) / 2;
    (Key(middle) >= Value ? high : low) = middle;
  }
  // Next to a row, which row answers depends on those that a bisection of the whole table meets. The margin is wide enough
  // for the rounding of every comparison there.
  constexpr Extended margin = 2 * kRowTolerance;
  const bool isClear = high == low + 1 && Key(low) + margin <= Value && Value <= Key(high) - margin;
  return isClear ? TRowPlace{low, true} : FindRow(Count, Key, Value);
}

/// As FindRow for keys that rise, where Key(Place) <= Value < Key(Place + 1). Takes the steps of the bisection without looking
/// at the rows: on which side of the value a row lies is known, and only its neighbours can be within the tolerance.
template <class TKey>
TRowPlace FindRowAt(int Place, int Count, TKey&& Key, double Value) {
  if (Key(0) + kRowTolerance > Value) return {0, false};
  if (Key(Count - 1) - kRowTolerance < Value) return {Count - 1, false};
  const auto isNear = [&](int Row) { return std::fabs(static_cast<Extended>(Key(Row)) - Value) < kRowTolerance; };
  int firstNear = Place + 1;
  int lastNear = Place;
  while (firstNear > 0 && isNear(firstNear - 1)) --firstNear;
  while (lastNear < Count - 1 && isNear(lastNear + 1)) ++lastNear;
  int firstNotBelow = Place + 1;
  while (firstNotBelow > 0 && Key(firstNotBelow - 1) >= Value) --firstNotBelow;
  int low = 0;
  int high = Count - 1;
  while (high - low > 1) {
    const int middle = low + (high - low) / 2;
    if (firstNear <= middle && middle <= lastNear) return {middle, false};
    (middle >= firstNotBelow ? high : low) = middle;
  }
  return {low, true};
}

/// \return the value at X of the cubic that has the values Y0, Y1 and the slopes M0, M1 at X0, X1.
inline double HermiteStep(double X, double X0, double X1, double Y0, double Y1, double M0, double M1) {
  const double h = X1 - X0;
  const double d0 = X - X0;
  const double d1 = X - X1;
  const double r0 = (d0 / h) * (d0 / h);
  const double r1 = (d1 / h) * (d1 / h);
  return r1 * (2.0 * d0 / h + 1.0) * Y0 + r0 * (1.0 - 2.0 * d1 / h) * Y1 + r1 * d0 * M0 + r0 * d1 * M1;
}

}  // namespace ZORBase
