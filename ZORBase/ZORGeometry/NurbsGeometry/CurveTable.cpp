#include <ZORBase/ZORGeometry/NurbsGeometry/CurveTable.h>

#include <ZORBase/ZORGeometry/NurbsGeometry/CurvePoint.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <vector>

namespace ZORBase {
namespace {

// How many steps the table takes over each knot interval, and what comes of it in all.
struct TTablePlan {
  std::vector<double> Steps;
  double Rows = 1.0;
  double Length = 0.0;
};

double Sample(double From, double To, double Step, double Steps) { return From + (To - From) * Step / Steps; }

// Between knots that fall the samples would fall too, and would not lie in the spans where they are looked for.
void RequireRisingKnots(std::span<const double> U, const std::string& Operation) {
  for (std::size_t k = 0; k < U.size(); ++k) {
    if (std::isfinite(U[k]) && (k == 0 || U[k - 1] <= U[k])) continue;
    RaiseGeneralError(Operation + ": knot " + std::to_string(k) + " (counted from 0) is not finite, or falls");
  }
}

template <class TPoint>
TTablePlan PlanTable(const TNurbsBasicFunc& Basis, std::span<const TPoint> P) {
  const std::span<const double> U = Basis.uArr();
  TTablePlan plan;
  plan.Steps.reserve(U.size());
  TPoint prev = CurvePoint(Basis, P, 0.0);
  for (std::size_t k = 0; k + 1 < U.size(); ++k) {
    int span = static_cast<int>(k);
    const TPoint atEnd = CurvePoint(Basis, P, U[k + 1]);
    const double chord = Distance(atEnd, prev);
    const double steps = std::max(1.0, std::nearbyint(chord / kTableSpacing));
    plan.Steps.push_back(steps);
    plan.Rows += steps;
    plan.Length += chord;
    // The last sample of the interval may miss its end by a rounding.
    const double last = Sample(U[k], U[k + 1], steps, steps);
    prev = last == U[k + 1] ? atEnd : CurvePoint(Basis, P, span, last);
  }
  return plan;
}

void RequireRoom(const TTablePlan& Plan, const std::string& Operation) {
  if (!std::isfinite(Plan.Length)) RaiseGeneralError(Operation + ": the length of the curve is not finite");
  if (Plan.Rows <= static_cast<double>(kMaxTableRows)) return;
  RaiseGeneralError(Format1033(
      "%s: a path about %.6f long needs %.0f table rows at a spacing of %.2f; at most %d are possible. Give the "
      "points in a larger length unit or divide the path",
      Operation, Plan.Length, Plan.Rows, kTableSpacing, kMaxTableRows));
}

}  // namespace

template <class TPoint>
TSUTable MeasureCurve(const TNurbsBasicFunc& Basis, std::span<const TPoint> P) {
  const std::string operation = CurveOperation<TPoint>("InitLengthByUArray");
  RequireRisingKnots(Basis.uArr(), operation);
  const TTablePlan plan = PlanTable(Basis, P);
  RequireRoom(plan, operation);
  TSUTable table;
  table.Reserve(static_cast<std::size_t>(plan.Rows));
  TSULine row;
  const auto addRow = [&](const TPoint& Point) {
    row.*TCurveKind<TPoint>::kRowPoint = Point;
    table.Add(row);
  };
  const std::span<const double> U = Basis.uArr();
  TPoint prev = CurvePoint(Basis, P, 0.0);
  addRow(prev);
  for (std::size_t k = 0; k + 1 < U.size(); ++k) {
    int span = static_cast<int>(k);
    for (double step = 1.0; step <= plan.Steps[k]; ++step) {
      row.u = Sample(U[k], U[k + 1], step, plan.Steps[k]);
      const TPoint point = CurvePoint(Basis, P, span, row.u);
      row.S += Distance(point, prev);
      addRow(point);
      prev = point;
    }
  }
  return table;
}

template TSUTable MeasureCurve(const TNurbsBasicFunc&, std::span<const TPoint2D>);
template TSUTable MeasureCurve(const TNurbsBasicFunc&, std::span<const TPoint6D>);

}  // namespace ZORBase
