#include <ZORBase/common/TableLookup.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

// ---------------------------------------------------------------------------------------------- fits

// The input is the method, then the points. What differs between the kinds of curves stands in overloads.
TParalizeMethod MethodOf(TCase Case) { return static_cast<TParalizeMethod>(static_cast<int>(Case.In[0])); }

void TakePoints(TCase Case, TList<TPoint2D>& Points) {
  for (std::size_t i = 1; i < Case.In.size(); i += 2) Points.Add(PointIn(Case.In, i));
}
void TakePoints(TCase Case, TPoint6DList& Points) {
  for (std::size_t i = 1; i < Case.In.size(); i += 6) Points.Add(PoseIn(Case.In, i));
}

void SpreadAlong(const TList<TPoint2D>& Points, TParalizeMethod Method, std::span<double> Params, double& Length) {
  if (Method == mEqually) TNurbs2D::EquallyParalize(Points, Params, Length);
  if (Method == mChord) TNurbs2D::ChordParalize(Points, Params, Length);
  if (Method == mCentripetal) TNurbs2D::CentripetalParalize(Points, Params, Length);
}
void SpreadAlong(const TPoint6DList& Points, TParalizeMethod Method, std::span<double> Params, double& Length) {
  TNurbs6D::CurveParalize(Points, Params, Length, Method);
}

void FitThrough(const TList<TPoint2D>& Points, TParalizeMethod Method, TNurbs2D& Curve) {
  Curve.CreateCross(Points, Method);
}
void FitThrough(const TPoint6DList& Points, TParalizeMethod Method, TNurbs6D& Curve) {
  Curve.CreateCross(&Points, Method);
}

template <class TCurve, class TPoints>
TCurve CurveThrough(const TPoints& Points, TParalizeMethod Method) {
  TCurve curve;
  FitThrough(Points, Method, curve);
  return curve;
}

// The control points of the fit, of which those between the outer ones are solved for once more.
template <class TCurve, class TPoints>
std::vector<double> SolvedOnceMore(const TPoints& Points, TParalizeMethod Method) {
  const auto curve = CurveThrough<TCurve>(Points, Method);
  std::vector points(curve.pointArr().begin(), curve.pointArr().end());
  std::fill(points.begin() + 2, points.end() - 2, typename TPoints::value_type{});
  TCurve::SolveTridiagonal(Points.Count() - 1, Points, curve.BasicFun().uArr(), points);
  return Components(std::span<const typename TPoints::value_type>(points));
}

template <class TCurve, class TPoints>
void MeasureFitSteps(const TMeasurement& Measurement, const std::string& Class, const std::string& Methods,
                     double ControlLimit) {
  const auto points = [](TCase C) {
    TPoints list;
    TakePoints(C, list);
    return list;
  };
  const auto spread = [points](TCase C, double& Length) {
    const TPoints list = points(C);
    std::vector<double> params(list.size());
    SpreadAlong(list, MethodOf(C), params, Length);
    return params;
  };
  const std::string of = Class + ", " + Methods;
  Measurement.CompareAs(of + ", parameters", Class + ", parameters of a fit", TMeasure::Eps, 3.0, [=](TCase C) {
    double length = 0.0;
    return spread(C, length);
  });
  Measurement.CompareAs(of + ", length", Class + ", chord length of a fit", TMeasure::Ulp, 3.0, [=](TCase C) {
    double length = 0.0;
    spread(C, length);
    return std::vector{length};
  });
  Measurement.CompareAll(Class + ", CreateCross and SolveTridiagonal, control points",
                         Class + ", control points of a fit", TMeasure::Eps, ControlLimit,
                         {[=](TCase C) { return Components(CurveThrough<TCurve>(points(C), MethodOf(C)).pointArr()); },
                          [=](TCase C) { return SolvedOnceMore<TCurve>(points(C), MethodOf(C)); }});
}

// ---------------------------------------------------------------------------------------------- Bezier points

// The input: a span, 9 knots and 5 control points.
template <class TCurve, class TPoint>
std::vector<double> BezierOf(TCase Case, std::span<const TPoint> Points) {
  constexpr std::size_t knots = 9;
  TCurve curve;
  curve.CreateByCtlPoints(std::span(Case.In).subspan(1, knots), Points, static_cast<int>(Points.size()));
  const std::array<TPoint, 4> bezier = curve.SpanBezier(static_cast<int>(Case.In[0]));
  return Components(std::span<const TPoint>(bezier));
}

void MeasureBezierPoints(const TMeasurement& Measurement) {
  constexpr std::size_t first = 10;
  Measurement.Compare("TNurbs2D, SpanBezier", TMeasure::Eps, 2.0, [](TCase C) {
    std::vector<TPoint2D> points;
    for (std::size_t i = first; i < C.In.size(); i += 2) points.push_back(PointIn(C.In, i));
    return BezierOf<TNurbs2D, TPoint2D>(C, points);
  });
  Measurement.Compare("TNurbs6D, SpanBezier", TMeasure::Eps, 2.0, [](TCase C) {
    std::vector<TPoint6D> points;
    for (std::size_t i = first; i < C.In.size(); i += 6) points.push_back(PoseIn(C.In, i));
    return BezierOf<TNurbs6D, TPoint6D>(C, points);
  });
}

// ---------------------------------------------------------------------------------------------- tables

// The input: the lengths of 8 rows, their parameters, and what to look up.
TSUTable TableOf(TCase Case) {
  constexpr std::size_t rows = 8;
  TSUTable table;
  for (std::size_t i = 0; i < rows; ++i) table.Add({Case.In[i], Case.In[rows + i], {}, {}});
  return table;
}

void MeasureTableLookUps(const TMeasurement& Measurement) {
  Measurement.Compare("HermiteStep", TMeasure::Eps, 4.0, [](TCase C) {
    const std::vector<double>& in = C.In;
    return std::vector{HermiteStep(in[0], in[1], in[2], in[3], in[4], in[5], in[6])};
  });
  const std::string remark = "of the cubic between the rows";
  Measurement.Compare(
      "TSUTable, GetSByU", TMeasure::Eps, 4.0, [](TCase C) { return std::vector{TableOf(C).GetSByU(C.In.back())}; },
      remark);
  Measurement.Compare(
      "TSUTable, GetUByS", TMeasure::Eps, 4.0, [](TCase C) { return std::vector{TableOf(C).GetUByS(C.In.back())}; },
      remark);
}

// ---------------------------------------------------------------------------------------------- curves of their own

template <class TPoint>
long double ExactDistance(const TPoint& P, const TPoint& Q) {
  const std::vector<double> p = Components(P), q = Components(Q);
  long double square = 0.0L;
  for (std::size_t i = 0; i < p.size(); ++i) {
    const long double step = static_cast<long double>(p[i]) - q[i];
    square += step * step;
  }
  return std::sqrt(square);
}

TNurbs2D FittedThrough(const TPoint6DList& Path, TPoint2D TSULine::*) {
  TList<TPoint2D> points;
  for (const TPoint6D& P : Path) points.Add(TPoint2D::Create(P.X, P.Y));
  TNurbs2D curve;
  curve.CreateCross(points, mChord);
  return curve;
}
TNurbs6D FittedThrough(const TPoint6DList& Path, TPoint6D TSULine::*) {
  TNurbs6D curve;
  curve.CreateCross(&Path, mChord);
  return curve;
}

// The length of the table, against the chords of its own rows.
template <class TCurve, class TPoint>
double TableError(const TCurve& Curve, TPoint TSULine::*At) {
  const TSUTable& rows = Curve.SUTable();
  long double length = 0.0L;
  for (int i = 1; i < rows.Count(); ++i) length += ExactDistance(rows[i - 1].*At, rows[i].*At);
  return static_cast<double>(std::fabs(Curve.CurveLength() - length) / length) / kEpsilon;
}

// The worst of P - Q.
double WorstShift(const std::vector<double>& Shifted, const std::vector<double>& P, const std::vector<double>& Q) {
  double worst = 0.0;
  for (std::size_t i = 0; i < P.size(); ++i) {
    worst = Worse(worst, LastPlacesOff(Shifted[i], static_cast<long double>(P[i]) - Q[i]));
  }
  return worst;
}

// The worst of the numbers that are End less those before, in the other order.
double WorstMirrored(const std::vector<double>& Mirrored, double End, const std::vector<double>& Before) {
  return WorstShift(Mirrored, std::vector<double>(Before.size(), End), {Before.rbegin(), Before.rend()});
}

std::vector<double> LengthsOf(const TSUTable& Table) {
  std::vector<double> lengths;
  for (const TSULine& row : Table) lengths.push_back(row.S);
  return lengths;
}

// Runs Measure with curves through random lists, a parameter on each, and how to name it. At tells the kind of curve.
template <class TPoint, class TMeasureOne>
void ForRandomCurves(const TMeasurement& Measurement, TPoint TSULine::*At, TMeasureOne&& Measure) {
  constexpr int seed = 35;
  TPortableRandom random(seed);
  for (int i = 0; i < Measurement.Cases(300, 10); ++i) {
    TPoint6DList path = Wander(random);
    // An even number of control points does not keep the middle pair in its order when it is reversed.
    if (path.Count() % 2 == 0) path.Delete(path.Count() - 1);
    if (path.Count() < 4) continue;
    // 1 - u is exact.
    const double u = std::ldexp(random.Below(1 << 20), -20);
    Measure(FittedThrough(path, At), u, [i] { return Drawn("list", i, seed); });
  }
}

template <class TPoint>
void MeasureOwnTable(const TMeasurement& Measurement, const std::string& Class, TPoint TSULine::*At) {
  TErrorTable& table = Measurement.Table;
  TErrorRow& lengths =
      table.Row({Class + ", arc-length table", "eps", "by the length; against the chords of its own rows"}, 30.0);
  TErrorRow& parts = table.Row({Class + ", LengthOfParam", "ulp", "of the difference of two look-ups"}, kRoundedOnce);
  TErrorRow& nearest = table.Row({Class + ", ClosestPoint, its distance", "ulp", "from the point that it gives"}, 3.0);
  TPortableRandom random(36);
  ForRandomCurves(Measurement, At, [&](const auto& Curve, double u, const auto& Where) {
    lengths.Add(TableError(Curve, At), Where);
    const long double rest = static_cast<long double>(Curve.GetSByU(1.0)) - Curve.GetSByU(u);
    parts.Add(LastPlacesOff(Curve.LengthOfParam(u, 1.0), rest), Where);
    const TPoint beside = Curve.EvalPoint(u) + TPoint(random.Point2D(0.5));
    const auto closest = Curve.ClosestPoint(beside);
    nearest.Add(LastPlacesOff(closest.Distance, ExactDistance(beside, closest.Point)), Where);
  });
}

template <class TPoint>
void MeasureChanges(const TMeasurement& Measurement, const std::string& Class, TPoint TSULine::*At) {
  TErrorTable& table = Measurement.Table;
  TErrorRow& shifts = table.Row({Class + ", RelativeToZero", "ulp"}, kRoundedOnce);
  TErrorRow& knots = table.Row({Class + ", Reverse, knots", "ulp"}, kRoundedOnce);
  TErrorRow& rows = table.Row({Class + ", Reverse, arc-length table", "ulp"}, kRoundedOnce);
  TErrorRow& mirrored =
      table.Row({Class + ", Reverse, points", "eps", "by the largest coordinate; the mirrored knots are rounded"}, 8.0);
  const auto numbers = [](std::span<const double> Numbers) { return std::vector(Numbers.begin(), Numbers.end()); };
  ForRandomCurves(Measurement, At, [&](const auto& Curve, double u, const auto& Where) {
    auto moved = Curve;
    moved.RelativeToZero();
    const std::span<const TPoint> before = Curve.pointArr(), after = moved.pointArr();
    for (std::size_t k = 0; k < before.size(); ++k) {
      shifts.Add(WorstShift(Components(after[k]), Components(before[k]), Components(before[0])), Where);
    }
    auto back = Curve;
    back.Reverse();
    knots.Add(WorstMirrored(numbers(back.BasicFun().uArr()), 1.0, numbers(Curve.BasicFun().uArr())), Where);
    rows.Add(WorstMirrored(LengthsOf(back.SUTable()), Curve.CurveLength(), LengthsOf(Curve.SUTable())), Where);
    const std::vector<double> point = Components(Curve.EvalPoint(u));
    mirrored.Add(FarthestApart(Components(back.EvalPoint(1.0 - u)), point) / (LargestOf(point) * kEpsilon), Where);
  });
}

// The curves of one kind, which At names by their points in a table.
template <class TPoint>
void MeasureKind(const TMeasurement& Measurement, const std::string& Class, TPoint TSULine::*At) {
  MeasureOwnTable(Measurement, Class, At);
  MeasureChanges(Measurement, Class, At);
}

}  // namespace

void MeasureCurveParts(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Parts and changes of curves");
  MeasureFitSteps<TNurbs2D, TList<TPoint2D>>(Measurement, "TNurbs2D",
                                             "EquallyParalize, ChordParalize and CentripetalParalize", 20.0);
  MeasureFitSteps<TNurbs6D, TPoint6DList>(Measurement, "TNurbs6D", "CurveParalize", 8.0);
  MeasureBezierPoints(Measurement);
  MeasureTableLookUps(Measurement);
  MeasureKind(Measurement, "TNurbs2D", &TSULine::pos);
  MeasureKind(Measurement, "TNurbs6D", &TSULine::pos6d);
}

}  // namespace ZORBase::Test
