// PlainCurve: the curve as a textbook has it, to compare times with. Six components side by side in an array, plain doubles,
// the basis by its recursion, a search for every parameter.
#pragma once

#include <array>
#include <span>
#include <vector>

namespace ZORBase::Bench {

using TPlainPose = std::array<double, 6>;

struct TPlainRow {
  double S = 0.0;
  double u = 0.0;
  TPlainPose Pose{};
};

struct TPlainCurve {
  std::vector<double> Knots;
  std::vector<TPlainPose> Points;
  std::vector<TPlainRow> Table;
};

/// \return the distance over all six components.
double PlainDistance(const TPlainPose& P, const TPlainPose& Q);

/// \return the point at 0 <= u <= 1, by de Boor's recursion.
TPlainPose PlainEval(const TPlainCurve& Curve, double u);

/// Fills the table in steps of Spacing, measured by the chord across each knot interval.
void PlainMeasure(TPlainCurve& Curve, double Spacing);

/// \return the curve through Poses with chord-length parameters, tangents along its first and last chord, and a table.
TPlainCurve PlainFit(std::span<const TPlainPose> Poses, double Spacing);

}  // namespace ZORBase::Bench
