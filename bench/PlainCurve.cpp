#include "PlainCurve.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace ZORBase::Bench {
namespace {

// A * P + B * Q
TPlainPose Combined(double A, const TPlainPose& P, double B, const TPlainPose& Q) {
  TPlainPose sum;
  for (std::size_t i = 0; i < 6; ++i) sum[i] = A * P[i] + B * Q[i];
  return sum;
}

// The basis function with index i of degree p at u.
double Basis(std::span<const double> U, std::size_t i, std::size_t p, double u) {
  if (p == 0) return U[i] <= u && u < U[i + 1] ? 1.0 : 0.0;
  double sum = 0.0;
  if (U[i + p] > U[i]) sum += (u - U[i]) / (U[i + p] - U[i]) * Basis(U, i, p - 1, u);
  if (U[i + p + 1] > U[i + 1]) sum += (U[i + p + 1] - u) / (U[i + p + 1] - U[i + 1]) * Basis(U, i + 1, p - 1, u);
  return sum;
}

std::size_t SpanOf(std::span<const double> U, double u) {
  const auto next = std::upper_bound(U.begin() + 3, U.end() - 4, u);
  return static_cast<std::size_t>(next - U.begin()) - 1;
}

std::vector<double> ChordKnots(std::span<const TPlainPose> Q, double Length) {
  std::vector<double> U(4, 0.0);
  for (std::size_t k = 1; k + 1 < Q.size(); ++k) U.push_back(U.back() + PlainDistance(Q[k], Q[k - 1]) / Length);
  U.insert(U.end(), 4, 1.0);
  return U;
}

// Elimination without pivoting of the tridiagonal equations for P[2..n]; the outer points are known.
void SolveInner(std::span<const TPlainPose> Q, std::span<const double> U, std::vector<TPlainPose>& P) {
  const std::size_t n = Q.size() - 1;
  std::vector<double> upper(n + 1, 0.0);
  for (std::size_t i = 2; i <= n; ++i) {
    const double u = U[i + 2];
    const double below = Basis(U, i - 1, 3, u);
    const double above = Basis(U, i + 1, 3, u);
    const double pivot = Basis(U, i, 3, u) - (i == 2 ? 0.0 : below * upper[i - 1]);
    TPlainPose right = Combined(1.0, Q[i - 1], -below, P[i - 1]);
    if (i == n) right = Combined(1.0, right, -above, P[n + 1]);
    P[i] = Combined(1.0 / pivot, right, 0.0, right);
    upper[i] = above / pivot;
  }
  for (std::size_t i = n - 1; i >= 2; --i) P[i] = Combined(1.0, P[i], -upper[i], P[i + 1]);
}

}  // namespace

double PlainDistance(const TPlainPose& P, const TPlainPose& Q) {
  double sum = 0.0;
  for (std::size_t i = 0; i < 6; ++i) sum += (P[i] - Q[i]) * (P[i] - Q[i]);
  return std::sqrt(sum);
}

TPlainPose PlainEval(const TPlainCurve& Curve, double u) {
  const std::size_t s = SpanOf(Curve.Knots, u);
  std::array<TPlainPose, 4> d;
  for (std::size_t j = 0; j < 4; ++j) d[j] = Curve.Points[s - 3 + j];
  for (std::size_t r = 1; r <= 3; ++r) {
    for (std::size_t j = 3; j >= r; --j) {
      const double from = Curve.Knots[s - 3 + j];
      const double part = (u - from) / (Curve.Knots[s + 1 + j - r] - from);
      d[j] = Combined(1.0 - part, d[j - 1], part, d[j]);
    }
  }
  return d[3];
}

void PlainMeasure(TPlainCurve& Curve, double Spacing) {
  const std::vector<double>& U = Curve.Knots;
  Curve.Table = {{0.0, 0.0, PlainEval(Curve, 0.0)}};
  for (std::size_t k = 3; k + 4 < U.size(); ++k) {
    const double chord = PlainDistance(PlainEval(Curve, U[k + 1]), PlainEval(Curve, U[k]));
    const double steps = std::max(1.0, std::round(chord / Spacing));
    for (int step = 1; step <= static_cast<int>(steps); ++step) {
      const double u = U[k] + (U[k + 1] - U[k]) * step / steps;
      const TPlainPose pose = PlainEval(Curve, u);
      Curve.Table.push_back({Curve.Table.back().S + PlainDistance(pose, Curve.Table.back().Pose), u, pose});
    }
  }
}

TPlainCurve PlainFit(std::span<const TPlainPose> Poses, double Spacing) {
  const std::size_t n = Poses.size() - 1;
  double length = 0.0;
  for (std::size_t k = 1; k <= n; ++k) length += PlainDistance(Poses[k], Poses[k - 1]);

  TPlainCurve curve;
  curve.Knots = ChordKnots(Poses, length);
  curve.Points.resize(n + 3);
  // With chord lengths as parameters, a tangent of the path's length over a third of the span is a third of the chord.
  curve.Points[0] = Poses[0];
  curve.Points[1] = Combined(2.0 / 3.0, Poses[0], 1.0 / 3.0, Poses[1]);
  curve.Points[n + 1] = Combined(2.0 / 3.0, Poses[n], 1.0 / 3.0, Poses[n - 1]);
  curve.Points[n + 2] = Poses[n];
  SolveInner(Poses, curve.Knots, curve.Points);
  PlainMeasure(curve, Spacing);
  return curve;
}

}  // namespace ZORBase::Bench
