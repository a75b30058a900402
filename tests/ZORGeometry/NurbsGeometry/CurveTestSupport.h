// CurveTestSupport: the words that the tests of the curve are written in.
//   RandomPoses, AnyPoses   lists of poses of every kind that a path has, from a seed or from RapidCheck
//   CurveThrough            a fitted curve
//   CurveOf, ClampedKnots   a curve of given control points
//   BasisOf, AnyClampedKnots, AnyParameter, RecursiveBasis   knots, and what their basis functions are
//   StateOf                 everything that a curve holds; EXPECT_THAT(Curve, HasState(Before))
#pragma once

#include <ZORBase/ZORGeometry/NurbsGeometry.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <functional>
#include <numbers>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include "support/TestSupport.h"

namespace ZORBase::Test {

inline constexpr std::array kAllMethods = {mEqually, mChord, mCentripetal};

// ---------------------------------------------------------------------------------------------- paths

enum class TPathKind { Walk, Closed, Line, Zigzag, BigSteps, Tangle };
inline constexpr std::array kAllPathKinds = {TPathKind::Walk,   TPathKind::Closed,   TPathKind::Line,
                                             TPathKind::Zigzag, TPathKind::BigSteps, TPathKind::Tangle};

/// A random number in [Low, High), the same on every machine.
inline double Uniform(std::mt19937_64& Random, double Low, double High) {
  return Low + (High - Low) * (static_cast<double>(Random() >> 11U) * 0x1p-53);
}

inline TPoint6D RandomPose(std::mt19937_64& Random, double Size) {
  TPoint6D pose;
  for (int i = 0; i < 6; ++i) pose.Items(i) = Uniform(Random, -Size, Size);
  return pose;
}

/// Count poses; no two neighbours are the same.
inline TPoint6DList RandomPoses(std::mt19937_64& Random, TPathKind Kind, int Count) {
  TPoint6DList poses;
  TPoint6D pose = RandomPose(Random, 10);
  const TPoint6D heading = RandomPose(Random, 0.5);
  const TPoint6D across = RandomPose(Random, 0.5);
  for (int i = 0; i < Count; ++i) {
    const double angle = 2 * std::numbers::pi * i / (Count - 1);
    switch (Kind) {
      case TPathKind::Walk: pose = pose + heading + RandomPose(Random, 0.5); break;
      case TPathKind::Closed: pose = heading * (20 * std::cos(angle)) + across * (20 * std::sin(angle)); break;
      case TPathKind::Line: pose = pose + heading * Uniform(Random, 0.1, 2); break;
      case TPathKind::Zigzag: pose = pose + heading * 0.1 + across * (i % 2 == 0 ? 1.0 : -1.0); break;
      case TPathKind::BigSteps: pose = pose + RandomPose(Random, std::pow(10, Uniform(Random, -1, 2))); break;
      case TPathKind::Tangle: pose = RandomPose(Random, 3); break;
    }
    poses.Add(pose);
  }
  if (Kind == TPathKind::Closed) poses[Count - 1] = poses[0];
  return poses;
}

/// 4 to 40 poses; neighbours are 0.005 to 6 apart.
inline rc::Gen<TPoint6DList> AnyPoses() {
  using TStep = std::array<int, 6>;
  const auto step = rc::gen::container<TStep>(rc::gen::inRange(-500, 501));
  const auto steps = rc::gen::mapcat(rc::gen::inRange<std::size_t>(4, 41), [step](std::size_t Count) {
    return rc::gen::container<std::vector<TStep>>(Count, step);
  });
  return rc::gen::map(steps, [](const std::vector<TStep>& Steps) {
    TPoint6DList poses;
    TPoint6D pose;
    for (TStep move : Steps) {
      if (move == TStep{}) move[0] = 1;
      for (int i = 0; i < 6; ++i) pose.Items(i) += move[static_cast<std::size_t>(i)] / 200.0;
      poses.Add(pose);
    }
    return poses;
  });
}

inline rc::Gen<TParalizeMethod> AnyMethod() { return rc::gen::element(mEqually, mChord, mCentripetal); }

inline double LargestCoordinate(std::span<const TPoint6D> Points) {
  double largest = 0;
  for (const TPoint6D& point : Points) {
    for (const double item : point.ToArray()) largest = std::max(largest, std::fabs(item));
  }
  return largest;
}

// ---------------------------------------------------------------------------------------------- curves

inline TNurbs6D CurveThrough(const TPoint6DList& Poses, TParalizeMethod Method = mChord) {
  TNurbs6D curve;
  if (!curve.CreateCross(&Poses, Method)) ADD_FAILURE() << "no curve through " << Poses.Count() << " poses";
  return curve;
}

/// The clamped knots of PointCount control points, evenly spread over [0, 1].
inline std::vector<double> ClampedKnots(int PointCount) {
  std::vector<double> knots(4, 0.0);
  for (int i = 1; i <= PointCount - 4; ++i) knots.push_back(static_cast<double>(i) / (PointCount - 3));
  knots.insert(knots.end(), 4, 1.0);
  return knots;
}

/// A curve of control points with evenly spread knots, without an arc-length table.
inline TNurbs6D CurveOf(std::span<const TPoint6D> Points) {
  TNurbs6D curve;
  const int count = static_cast<int>(Points.size());
  if (!curve.CreateByCtlPoints(ClampedKnots(count), Points, count)) ADD_FAILURE() << "no curve of these control points";
  return curve;
}

/// Control points with the X values 1, 2, ..., Count.
inline std::vector<TPoint6D> NumberedPoints(int Count) {
  std::vector<TPoint6D> points;
  for (int i = 1; i <= Count; ++i) points.push_back(TPoint6D::Create(i, 0, 0, 0, 0, 1));
  return points;
}

// ---------------------------------------------------------------------------------------------- basis

inline TNurbsBasicFunc BasisOf(std::span<const double> Knots) {
  TNurbsBasicFunc basis;
  basis.CreateCross(Knots, static_cast<int>(Knots.size()));
  return basis;
}

/// The clamped knots of two spans.
inline const std::vector<double> kTwoSpans = {0, 0, 0, 0, 0.5, 1, 1, 1, 1};

/// Clamped knots on [0, 1] whose spans are empty or at least 1e-5 wide.
inline rc::Gen<std::vector<double>> AnyClampedKnots() {
  return rc::gen::map(rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 100000)), [](std::vector<int> Inner) {
    std::ranges::sort(Inner);
    std::vector<double> knots(4, 0.0);
    for (const int knot : Inner) knots.push_back(knot / 100000.0);
    knots.insert(knots.end(), 4, 1.0);
    return knots;
  });
}

inline rc::Gen<double> AnyParameter() {
  return rc::gen::map(rc::gen::inRange<std::int64_t>(0, (std::int64_t{1} << 53) + 1),
                      [](std::int64_t Bits) { return static_cast<double>(Bits) * 0x1p-53; });
}

/// The k-th derivative of the basis function i of degree p by the recursion of Cox and de Boor, for u in [U[Span], U[Span+1]].
inline long double RecursiveBasis(std::span<const double> U, int Span, int i, int p, int k, long double u) {
  if (p == 0) return i == Span && k == 0 ? 1 : 0;
  const auto knot = [&](int Index) -> long double { return U[static_cast<std::size_t>(Index)]; };
  const long double left = knot(i + p) - knot(i);
  const long double right = knot(i + p + 1) - knot(i + 1);
  const auto lower = [&](int Index, int Order) { return RecursiveBasis(U, Span, Index, p - 1, Order, u); };
  long double value = 0;
  if (k == 0) {
    if (left != 0) value += (u - knot(i)) / left * lower(i, 0);
    if (right != 0) value += (knot(i + p + 1) - u) / right * lower(i + 1, 0);
  } else {
    if (left != 0) value += p / left * lower(i, k - 1);
    if (right != 0) value -= p / right * lower(i + 1, k - 1);
  }
  return value;
}

// ---------------------------------------------------------------------------------------------- state

inline bool IsSameNumber(double A, double B) {
  return std::bit_cast<std::uint64_t>(A) == std::bit_cast<std::uint64_t>(B);
}

inline bool IsSamePose(const TPoint6D& P, const TPoint6D& Q) {
  for (int i = 0; i < 6; ++i) {
    if (!IsSameNumber(P.Items(i), Q.Items(i))) return false;
  }
  return true;
}

inline bool IsSameRow(const TSULine& A, const TSULine& B) {
  return IsSameNumber(A.S, B.S) && IsSameNumber(A.u, B.u) && IsSameNumber(A.pos.X, B.pos.X) &&
         IsSameNumber(A.pos.Y, B.pos.Y) && IsSamePose(A.pos6d, B.pos6d);
}

struct TCurveState {
  std::vector<double> Knots;
  std::vector<TPoint6D> Points;
  std::vector<TSULine> Rows;
  TPoint6D Max;
  TPoint6D Min;
  bool PointsChanged = false;
  int CrossPtNum = 0;
};

inline TCurveState StateOf(const TNurbs6D& Curve) {
  const auto knots = Curve.BasicFun().uArr();
  const auto points = Curve.pointArr();
  const TSUTable& table = Curve.SUTable();
  return {{knots.begin(), knots.end()},
          {points.begin(), points.end()},
          {table.begin(), table.end()},
          Curve.maxPos(),
          Curve.minPos(),
          Curve.pointsChanged(),
          Curve.CrossPtNum()};
}

/// Matches a curve that holds exactly what it held when StateOf was taken; names the first part that differs.
MATCHER_P(HasState, Before, "") {
  const TCurveState& before = Before;
  const TCurveState now = StateOf(arg);
  const char* what = nullptr;
  if (!std::ranges::equal(now.Knots, before.Knots, IsSameNumber)) what = "knots";
  if (!std::ranges::equal(now.Points, before.Points, IsSamePose)) what = "control points";
  if (!std::ranges::equal(now.Rows, before.Rows, IsSameRow)) what = "table";
  if (!IsSamePose(now.Max, before.Max) || !IsSamePose(now.Min, before.Min)) what = "bounds";
  if (now.PointsChanged != before.PointsChanged) what = "pointsChanged";
  if (now.CrossPtNum != before.CrossPtNum) what = "CrossPtNum";
  if (arg.pCount() != static_cast<int>(before.Points.size())) what = "pCount";
  if (what == nullptr) return true;
  *result_listener << "whose " << what << " changed";
  return false;
}

}  // namespace ZORBase::Test
