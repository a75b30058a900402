// BadInput: numbers and counts that no calculation likes, and what has to come of them.
//   kBadNumbers, kBadCounts   the numbers and the counts
//   TNumberEntry              an entry of the library that takes one
//   Answer                    one of the calls of an entry that makes several
//   ExpectAnAnswer            a result or the general error, in little memory and time
//   PoseAt, PosesWith, PlacesWith, FittedCurve, MatrixWith, ListWith, Square   what entries work on
#pragma once

#include <ZORBase/ZORBase.h>

#include <array>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "faults/FaultSupport.h"
#include "support/TestAllocator.h"
#include "support/TestSupport.h"

namespace ZORBase::Test {

inline constexpr double kSmallestDenormal = std::numeric_limits<double>::denorm_min();
inline constexpr double kLargestDouble = std::numeric_limits<double>::max();

inline constexpr std::array kBadNumbers = {kNaN,   kInfinity, -kInfinity, kSmallestDenormal, -kSmallestDenormal,
                                           1e308,  -1e308,    1e154,      kLargestDouble,    -kLargestDouble,
                                           1e-308, 0.0,       -0.0};
inline constexpr std::array kBadCounts = {0, -1, 1, kLargestInt, kLargestInt - 1, kSmallestInt, 1 << 30, 46341};

/// What an entry may hold at a time: none of these numbers is a reason for a large table or a long list.
inline constexpr std::int64_t kMemoryLimit = std::int64_t{64} << 20U;

/// An entry of the library and a call of it.
template <class TValue>
struct TNumberEntry {
  std::string Name;
  std::function<void(TValue)> Call;
};
using TNumberEntries = std::vector<TNumberEntry<double>>;
using TCountEntries = std::vector<TNumberEntry<int>>;

/// A call of several in an entry, which are all made. \throws what is no general error where the call gave no answer.
inline void Answer(const std::function<void()>& Call) {
  const TOutcome outcome = Outcome(Call);
  if (outcome != TOutcome::Done && outcome != TOutcome::Refused) throw std::runtime_error("no answer");
}

/// Calls every entry with every value; each call gives a result or raises the general error, in less than kMemoryLimit and than
/// the ten seconds of TTimeLimit.
template <class TValue, class TValues>
void ExpectAnAnswer(const char* Subject, const std::vector<TNumberEntry<TValue>>& Entries, const TValues& Values) {
  for (const auto& entry : Entries) {
    for (const TValue value : Values) {
      const TTimeLimit limit(entry.Name + " of " + testing::PrintToString(value));
      const TAllocationCount count;
      const TOutcome outcome = Outcome([&] { entry.Call(value); });
      const std::int64_t peak = count.PeakBytes();
      EXPECT_TRUE(outcome == TOutcome::Done || outcome == TOutcome::Refused) << entry.Name << " of " << value;
      EXPECT_LE(peak, kMemoryLimit) << entry.Name << " of " << value;
    }
  }
  ReportRow(std::string("bad input: ") + Subject, static_cast<std::int64_t>(Entries.size() * Values.size()),
            "a result or the general error, in less than 64 MiB and 10 s");
}

inline TPoint6D PoseAt(double X, double Y) { return TPoint6D::Create(X, Y, 0, 0, 0, 1); }

inline TPoint6DList PosesWith(double Value) {
  TPoint6DList poses;
  for (const double y : {0.0, 1.0, 0.5, Value, 2.0}) poses.Add(PoseAt(static_cast<double>(poses.Count()), y));
  return poses;
}

/// The places of PosesWith in the plane.
inline TList<TPoint2D> PlacesWith(double Value) {
  TList<TPoint2D> places;
  for (const TPoint6D& pose : PosesWith(Value)) places.Add(TPoint2D::Create(pose.X, pose.Y));
  return places;
}

inline TNurbs6D FittedCurve() {
  const TPoint6DList poses = PosesWith(0.25);
  TNurbs6D curve;
  curve.CreateCross(&poses, mChord);
  return curve;
}

/// A turn about Z, but for an entry of the rotation and one of the translation.
inline TMatrix4D MatrixWith(double Value) {
  TMatrix4D matrix = TMatrix4D::Create(TPoint3D::Create(0, 0, 1), 0.5);
  matrix.fm[0][0] = Value;
  matrix.fm[1][3] = Value;
  return matrix;
}

inline TDoubleList ListWith(double Value) {
  TDoubleList list;
  for (const double number : {1.0, 2.0, 0.0, Value, 3.0, 1.0, 0.5, 0.25, 4.0}) list.Add(number);
  return list;
}

/// The residual of x^2 = 2.
inline std::optional<TDoubleList> Square(const TDoubleList& X) {
  TDoubleList residuals;
  residuals.Add(X[0] * X[0] - 2.0);
  return residuals;
}

}  // namespace ZORBase::Test
