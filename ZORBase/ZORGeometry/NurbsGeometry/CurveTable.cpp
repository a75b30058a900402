#include <ZORBase/ZORGeometry/NurbsGeometry/CurveTable.h>

#include <ZORBase/ZORGeometry/NurbsGeometry/CurvePoint.h>
#include <ZORBase/common/BaseServices/NumberText.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/kernels/CubicBasis.h>
#include <ZORBase/kernels/CurveLanes.h>
#include <ZORBase/kernels/CurveSamples.h>

#include <algorithm>
#include <cmath>
#include <string>
#include <utility>
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
TTablePlan PlanTable(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, bool ForLanes) {
  const std::span<const double> U = Basis.uArr();
  TTablePlan plan;
  plan.Steps.reserve(U.size());
  TPoint prev = CurvePoint(Basis, P, 0.0);
  for (std::size_t k = 0; k + 1 < U.size(); ++k) {
    int span = static_cast<int>(k);
    int next = span + 1;
    const TPoint atEnd = CurvePoint(Basis, P, next, U[k + 1], ForLanes);
    const double chord = Distance(atEnd, prev);
    const double steps = std::max(1.0, std::nearbyint(chord / kTableSpacing));
    plan.Steps.push_back(steps);
    plan.Rows += steps;
    plan.Length += chord;
    // The last sample of the interval may miss its end by a rounding.
    const double last = Sample(U[k], U[k + 1], steps, steps);
    prev = last == U[k + 1] ? atEnd : CurvePoint(Basis, P, span, last, ForLanes);
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

void SampleBlock(const TPoint2D* P, TSampleBlock<2>& Block, bool /*ForLanes*/) { SamplePlane(&P->X, Block); }
void SampleBlock(const TPoint6D* P, TSampleBlock<6>& Block, bool ForLanes) {
  if (!ForLanes || !SampleByLanes(&P->X, Block)) SampleExtended(&P->X, Block);
}

}  // namespace

// Makes the rows of a table, one knot interval after the other.
template <class TPoint>
class TTableSampler {
 public:
  TTableSampler(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, bool ForLanes, TSUTable& Table)
      : FBasis(Basis), FControlPoints(P), FForLanes(ForLanes), FTable(Table) {}

  /// Nothing takes memory, nor is anything raised, while a table is made for which this holds.
  bool IsSure(const TTablePlan& Plan) const {
    const bool isEveryParameterInside = FBasis.IsInside(0.0) && FBasis.uArr().back() >= 1.0;
    return isEveryParameterInside && FTable.HasRoomFor(static_cast<std::size_t>(Plan.Rows));
  }

  void Make(const TTablePlan& Plan) {
    FTable.Clear();
    FTable.ReserveRows(static_cast<std::size_t>(Plan.Rows));
    const TPoint start = CurvePoint(FBasis, FControlPoints, 0.0);
    AddRow(0.0, &start.X, 0.0);
    for (std::size_t k = 0; k < Plan.Steps.size(); ++k) AddInterval(k, Plan.Steps[k]);
    FTable.IndexRows();
  }

 private:
  /// Samples 1 to Steps of the interval from U[k] to U[k+1].
  void AddInterval(std::size_t k, double Steps) {
    const double from = FBasis.uArr()[k];
    const double to = FBasis.uArr()[k + 1];
    double step = 1.0;
    if (IsEasy(from, to)) {
      // All but the last one, which may lie in the next interval. A step is far larger than a rounding.
      for (; step < Steps; step += static_cast<double>(FBlock.Count)) {
        FBlock.Count = static_cast<std::size_t>(std::min(Steps - step, static_cast<double>(FBlock.kSize)));
        for (std::size_t i = 0; i < FBlock.Count; ++i) {
          FBlock.u[i] = Sample(from, to, step + static_cast<double>(i), Steps);
        }
        AddBlock(k);
      }
    }
    int span = static_cast<int>(k);
    for (; step <= Steps; ++step) {
      const double u = Sample(from, to, step, Steps);
      const TPoint point = CurvePoint(FBasis, FControlPoints, span, u, FForLanes);
      AddRow(u, &point.X, Distance(point, FRow.*TCurveKind<TPoint>::kRowPoint));
    }
  }

  // Whether what lies between the two knots is inside [0, 1] and inside the knots, in an interval that is wide.
  bool IsEasy(double From, double To) const {
    return From >= 0.0 && To <= 1.0 && To - From >= kSurelyWide && FBasis.IsInside(From);
  }

  void AddBlock(std::size_t k) {
    const TPoint& prev = FRow.*TCurveKind<TPoint>::kRowPoint;
    std::copy_n(&prev.X, kComponents, FBlock.Points[0]);
    SampleBasis(FBasis.uArr().data() + k, FBlock.u, FBlock.Count, FBlock.N);
    SampleBlock(FControlPoints.data() + (k - TNurbsBasicFunc::kDegree), FBlock, FForLanes);
    for (std::size_t i = 0; i < FBlock.Count; ++i) AddRow(FBlock.u[i], FBlock.Points[i + 1], FBlock.Distances[i]);
  }

  void AddRow(double u, const double* Point, double Distance) {
    FRow.S += Distance;
    FRow.u = u;
    std::copy_n(Point, kComponents, &(FRow.*TCurveKind<TPoint>::kRowPoint).X);
    FTable.AddRow(FRow);
  }

  static constexpr std::size_t kComponents = sizeof(TPoint) / sizeof(double);

  const TNurbsBasicFunc& FBasis;
  std::span<const TPoint> FControlPoints;
  bool FForLanes;
  TSUTable& FTable;
  TSULine FRow;
  TSampleBlock<kComponents> FBlock;
};

template <class TPoint>
void MeasureCurve(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, TSUTable& Table) {
  const std::string operation = CurveOperation<TPoint>("InitLengthByUArray");
  RequireRisingKnots(Basis.uArr(), operation);
  const bool areForLanes = AreForLanes(P);
  const TTablePlan plan = PlanTable(Basis, P, areForLanes);
  RequireRoom(plan, operation);
  TTableSampler<TPoint> sampler(Basis, P, areForLanes, Table);
  if (sampler.IsSure(plan)) {
    sampler.Make(plan);
  } else {
    TSUTable table;
    TTableSampler<TPoint>(Basis, P, areForLanes, table).Make(plan);
    Table = std::move(table);
  }
}

template void MeasureCurve(const TNurbsBasicFunc&, std::span<const TPoint2D>, TSUTable&);
template void MeasureCurve(const TNurbsBasicFunc&, std::span<const TPoint6D>, TSUTable&);

}  // namespace ZORBase
