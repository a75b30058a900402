#include <array>
#include <cmath>

#include "Subjects.h"
#include "support/PlaneCurveLength.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

constexpr TParalizeMethod kMethods[] = {mEqually, mChord, mCentripetal};
constexpr const char* kMethodNames[] = {"equal parameters", "chord parameters", "centripetal parameters"};
// Of the length of a table, on cutting files in millimetres.
constexpr double kLengthGoal = 5e-6;
constexpr double kProfileGoal = 1e-5;
const TBound kDerivativeGoal = AsGoal(1e-12);
constexpr const char* kMillimetreFiles[] = {"swept-plane.poses.txt", "e387.100mm.poses.txt"};
constexpr const char* kProfileFile = "e387.xy.txt";

// ---------------------------------------------------------------------------------------------- evaluating

constexpr std::size_t kPlaneKnots = 12;  // of the curves in the reference sets
constexpr std::size_t kSpaceKnots = 10;

struct TBasisAt {
  TNurbsBasicFunc Basis;
  double u;
  int Span;
};

TBasisAt BasisOf(TCase Case) {
  TBasisAt result;
  result.Basis.CreateCross(std::span(Case.In), static_cast<int>(kPlaneKnots));
  result.u = Case.In.back();
  result.Span = result.Basis.FindSpan(result.u);
  return result;
}

TNurbs2D PlaneCurveOf(TCase Case) {
  std::vector<TPoint2D> points;
  for (std::size_t i = kPlaneKnots; i + 2 < Case.In.size(); i += 2) points.push_back(PointIn(Case.In, i));
  TNurbs2D curve;
  curve.CreateByCtlPoints(std::span(Case.In).first(kPlaneKnots), points, static_cast<int>(points.size()));
  return curve;
}

TNurbs6D SpaceCurveOf(TCase Case) {
  std::vector<TPoint6D> points;
  for (std::size_t i = kSpaceKnots; i + 6 < Case.In.size(); i += 6) points.push_back(PoseIn(Case.In, i));
  TNurbs6D curve;
  curve.CreateByCtlPoints(std::span(Case.In).first(kSpaceKnots), points, static_cast<int>(points.size()));
  return curve;
}

template <class TCurve, class TPoint>
std::vector<double> Derivative(const TCurve& Curve, double u, std::size_t Order) {
  std::array<TPoint, 4> derivatives;
  Curve.CurveDerivsAlg1(u, derivatives);
  return Components(derivatives[Order]);
}

void MeasureBasis(const TMeasurement& Measurement) {
  Measurement.Compare("TNurbsBasicFunc, BasicFuns", TMeasure::Eps, 4.0, [](TCase C) {
    const TBasisAt at = BasisOf(C);
    std::vector<double> values(4);
    at.Basis.BasicFuns(at.Span, at.u, values);
    return values;
  });
  for (const std::size_t order : {1U, 2U, 3U}) {
    const auto derivatives = [order](TCase C) {
      const TBasisAt at = BasisOf(C);
      Double2DArray rows{};
      at.Basis.DersBasciFuns(at.Span, at.u, 3, 3, rows);
      return std::vector<double>(rows[order].begin(), rows[order].end());
    };
    Measurement.Compare("TNurbsBasicFunc, derivatives " + std::to_string(order), TMeasure::Relative, kDerivativeGoal,
                        derivatives);
  }
}

void MeasureSumOfBasis(const TMeasurement& Measurement) {
  TErrorRow& row = Measurement.Table.Row({"TNurbsBasicFunc, sum of the basis values", "eps", "is 1"}, AsGoal(4.0));
  constexpr int seed = 31;
  TPortableRandom random(seed);
  for (int k = 0; k < Measurement.Cases(1000, 20); ++k) {
    std::vector<double> knots(4, 0.0);
    double last = 0.0;
    for (int i = 0; i < 12; ++i) knots.push_back(last += random.Within(0.001, 0.07));
    knots.insert(knots.end(), 4, 1.0);
    TNurbsBasicFunc basis;
    basis.CreateCross(knots, static_cast<int>(knots.size()));
    for (int i = 0; i < 1000; ++i) {
      const double u = random.Unit();
      std::array<double, 4> N{};
      basis.BasicFuns(basis.FindSpan(u), u, N);
      const long double sum = 0.0L + N[0] + N[1] + N[2] + N[3];
      row.Add(static_cast<double>(std::fabs(sum - 1.0L)) / kEpsilon,
              [&] { return "u = " + Listed({u}) + Drawn(", knots", k, seed); });
    }
  }
}

// ---------------------------------------------------------------------------------------------- fitting

// How far the curve passes by its points, as a part of the largest coordinate. The point i has the parameter U[i + 3].
double MissOf(const TPoint6DList& Path, TParalizeMethod Method) {
  TNurbs6D curve;
  curve.CreateCross(&Path, Method);
  double miss = 0.0;
  double largest = 0.0;
  for (int i = 0; i < Path.Count(); ++i) {
    miss = Worse(miss, LargestOf(Components(curve.EvalPoint(curve.BasicFun().Items(i + 3)) - Path[i])));
    largest = Worse(largest, LargestOf(Components(Path[i])));
  }
  return miss / largest;
}

TPoint6DList SamplePoses(const std::string& Name) {
  TPoint6DList path;
  path.LoadFromFile(std::string(ZORBASE_SAMPLE_DATA) + "/" + Name);
  return path;
}

TList<TPoint2D> SamplePlanePoints() {
  TList<TPoint2D> points;
  TTextFileReader file(std::string(ZORBASE_SAMPLE_DATA) + "/" + kProfileFile);
  while (file.Next()) {
    const std::string line(file.Line());
    const std::size_t comma = line.find(',');
    points.Add(TPoint2D::Create(StrToFloat1033(line.substr(0, comma)), StrToFloat1033(line.substr(comma + 1))));
  }
  return points;
}

void MeasureFitsThroughPoints(const TMeasurement& Measurement) {
  const TBound limit = AsGoal(1e-13);
  TErrorRow& lists =
      Measurement.Table.Row({"TNurbs6D through its points, random lists", "of the largest coordinate"}, limit);
  constexpr int seed = 32;
  TPortableRandom random(seed);
  for (int i = 0; i < Measurement.Cases(1000, 60); ++i) {
    lists.Add(MissOf(Wander(random), kMethods[i % 3]), [i] { return Drawn("list", i, seed); });
  }
  TErrorRow& files =
      Measurement.Table.Row({"TNurbs6D through its points, sample files", "of the largest coordinate"}, limit);
  for (const char* const name : kMillimetreFiles) {
    const TPoint6DList path = SamplePoses(name);
    for (const TParalizeMethod method : kMethods) {
      files.Add(MissOf(path, method), [&] { return std::string(name) + ", " + kMethodNames[method]; });
    }
  }
  TErrorRow& plane =
      Measurement.Table.Row({"TNurbs2D through its points, sample file", "of the largest coordinate"}, limit);
  const TList<TPoint2D> points = SamplePlanePoints();
  for (const TParalizeMethod method : kMethods) {
    TNurbs2D curve;
    curve.CreateCross(points, method);
    for (int i = 0; i < points.Count(); ++i) {
      const TPoint2D miss = curve.EvalPoint(curve.BasicFun().Items(i + 3)) - points[i];
      plane.Add(Worse(std::fabs(miss.X), std::fabs(miss.Y)),
                [&] { return "point " + std::to_string(i) + " of " + kProfileFile + ", " + kMethodNames[method]; });
    }
  }
}

}  // namespace

void MeasureCurves(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Curves");
  MeasureBasis(Measurement);
  MeasureSumOfBasis(Measurement);
  Measurement.Compare("TNurbs2D, EvalPoint", TMeasure::Eps, 4.0,
                      [](TCase C) { return Components(PlaneCurveOf(C).EvalPoint(C.In.back())); });
  Measurement.Compare("TNurbs6D, EvalPoint", TMeasure::Eps, 4.0,
                      [](TCase C) { return Components(SpaceCurveOf(C).EvalPoint(C.In.back())); });
  for (const std::size_t order : {1U, 2U, 3U}) {
    const std::string name = "derivative " + std::to_string(order);
    Measurement.Compare("TNurbs2D, " + name, TMeasure::Relative, kDerivativeGoal, [order](TCase C) {
      return Derivative<TNurbs2D, TPoint2D>(PlaneCurveOf(C), C.In.back(), order);
    });
    Measurement.Compare("TNurbs6D, " + name, TMeasure::Relative, kDerivativeGoal, [order](TCase C) {
      return Derivative<TNurbs6D, TPoint6D>(SpaceCurveOf(C), C.In.back(), order);
    });
  }
  Measurement.Compare("TNurbs2D, Curvature", TMeasure::Relative, 6e-16,
                      [](TCase C) { return std::vector{PlaneCurveOf(C).Curvature(C.In.back())}; });
  Measurement.CompareAs("TNurbs2D, 1 / CurvatureRadius", "TNurbs2D, Curvature", TMeasure::Relative, 6e-16,
                        [](TCase C) { return std::vector{1.0 / PlaneCurveOf(C).CurvatureRadius(C.In.back())}; });
  Measurement.Compare("TNurbs6D, Curvature", TMeasure::Relative, 6e-16,
                      [](TCase C) { return std::vector{SpaceCurveOf(C).Curvature(C.In.back())}; });
  MeasureFitsThroughPoints(Measurement);
}

// ---------------------------------------------------------------------------------------------- lengths

namespace {

// The length of the curve up to its end, by adaptive quadrature in the extended format.
double QuadratureOf(const TNurbs6D& Curve) {
  std::vector<std::array<double, 6>> points;
  for (const TPoint6D& point : Curve.pointArr()) points.push_back(point.ToArray());
  return static_cast<double>(SplineLength<6>(Curve.BasicFun().uArr(), points, 1e-10L));
}

// Where long moves meet points 0.09 apart, other parameters than those in proportion to the distances make narrow loops between
// them, which a table by the chord of a knot interval cuts into few steps.
double LimitOf(const std::string& File, TParalizeMethod Method) {
  if (File != kMillimetreFiles[0] || Method == mChord) return kLengthGoal;
  return Method == mCentripetal ? 5e-5 : 5e-3;
}

void MeasureTables(const TMeasurement& Measurement) {
  for (const std::string file : kMillimetreFiles) {
    const TPoint6DList path = SamplePoses(file);
    for (const TParalizeMethod method : kMethods) {
      const double limit = LimitOf(file, method);
      const bool isEven = limit == kLengthGoal;
      const std::string remark = isEven ? "" : ": too long for the narrow loops that these parameters make";
      TErrorRow& row = Measurement.Table.Row({std::string("TNurbs6D, CurveLength, ") + kMethodNames[method], "relative",
                                              "chords of some 0.03, by design, against adaptive quadrature" + remark},
                                             {limit, kLengthGoal});
      TNurbs6D curve;
      curve.CreateCross(&path, method);
      const double length = QuadratureOf(curve);
      row.Add(std::fabs(curve.CurveLength() - length) / length, file);
    }
  }
  TErrorRow& unit =
      Measurement.Table.Row({"TNurbs2D, CurveLength, wing profile with a chord of 1", "relative",
                             "the same spacing on a path of 2 in all: for lengths in millimetres, on purpose"},
                            {6e-4, kProfileGoal});
  TNurbs2D profile;
  profile.CreateCross(SamplePlanePoints(), mChord);
  const double length = PlaneCurveLength(profile.BasicFun().uArr(), profile.pointArr(), 1e-12L);
  unit.Add(std::fabs(profile.CurveLength() - length) / length, std::string(kProfileFile));
}

void MeasureStraightLines(const TMeasurement& Measurement) {
  TErrorRow& row = Measurement.Table.Row({"TNurbs6D, CurveLength, straight lines", "relative"}, AsGoal(1e-12));
  TErrorRow& there =
      Measurement.Table.Row({"TNurbs6D, EvalPoint(ParamOfLength), straight lines", "of the length"}, 2e-14);
  constexpr int seed = 33;
  TPortableRandom random(seed);
  for (int i = 0; i < Measurement.Cases(1000, 30); ++i) {
    const TPoint6D start = random.Point6D(100.0);
    const TPoint6D heading = random.Point6D(1.0).Normal();
    TPoint6DList path;
    double at = 0.0;
    for (int k = 0; k < 6; ++k) {
      path.Add(start + heading * at);
      at += random.Within(0.2, 4.0);
    }
    TNurbs6D line;
    line.CreateCross(&path, mChord);
    long double square = 0.0L;
    for (int c = 0; c < 6; ++c) {
      const long double step = static_cast<long double>(path.Last().Items(c)) - path.First().Items(c);
      square += step * step;
    }
    const auto length = static_cast<double>(std::sqrt(square));
    const auto where = [i] { return Drawn("line", i, seed); };
    row.Add(std::fabs(line.CurveLength() - length) / length, where);
    const double part = random.Unit() * length;
    const TPoint6D point = line.EvalPoint(line.ParamOfLength(part));
    there.Add(std::fabs((point - path.First()).Mag() - part) / length, where);
  }
}

void MeasureInversion(const TMeasurement& Measurement) {
  TErrorRow& row = Measurement.Table.Row({"TNurbs6D, GetSByU(ParamOfLength), random lists", "of the length",
                                          "two cubic tables that are not each other's inverse, by design"},
                                         1e-5);
  TErrorRow& right =
      Measurement.Table.Row({"TNurbs6D, ClosestPoint, cosine between its distance and the tangent", "absolute"}, 2e-12);
  constexpr int seed = 34;
  TPortableRandom random(seed);
  for (int i = 0; i < Measurement.Cases(300, 20); ++i) {
    const TPoint6DList path = Wander(random);
    TNurbs6D curve;
    curve.CreateCross(&path, kMethods[1 + i % 2]);
    const auto where = [i] { return Drawn("list", i, seed); };
    for (int k = 0; k < 20; ++k) {
      const double length = random.Unit() * curve.CurveLength();
      row.Add(std::fabs(curve.GetSByU(curve.ParamOfLength(length)) - length) / curve.CurveLength(), where);
      const TPoint6D point = curve.EvalPoint(random.Unit()) + random.Point6D(0.3);
      const auto closest = curve.ClosestPoint(point);
      if (closest.Param <= 0.0 || closest.Param >= 1.0) continue;
      std::array<TPoint6D, 4> derivatives;
      curve.CurveDerivsAlg1(closest.Param, derivatives);
      const TPoint6D away = point - closest.Point;
      right.Add(std::fabs(away.DotMul(derivatives[1])) / (away.Mag() * derivatives[1].Mag()), where);
    }
  }
}

}  // namespace

void MeasureLengths(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Arc length");
  MeasureTables(Measurement);
  MeasureStraightLines(Measurement);
  MeasureInversion(Measurement);
}

}  // namespace ZORBase::Test
