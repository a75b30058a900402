#include <array>
#include <cmath>
#include <numbers>

#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

TBezierSegment2D PlaneSegment(TCase Case) {
  return TBezierSegment2D::Create(PointIn(Case.In, 0), PointIn(Case.In, 2), PointIn(Case.In, 4), PointIn(Case.In, 6));
}

// The point and its three derivatives.
std::array<TPoint2D, 4> PlaneSegmentAt(TCase Case) {
  std::array<TPoint2D, 4> results;
  PlaneSegment(Case).EvalPoint(Case.In[8], results[0], results[1], results[2], results[3]);
  return results;
}

TCubicBezXD SpaceSegment(TCase Case) {
  const auto point = [&](std::size_t From) { return TPointXD::FromSpan(std::span(Case.In).subspan(From, 3)); };
  return TCubicBezXD::Create(point(0), point(3), point(6), point(9));
}

void MeasurePlaneSegments(const TMeasurement& Measurement) {
  for (const std::size_t order : {0U, 1U, 2U, 3U}) {
    Measurement.Compare("TBezierSegment2D, derivative " + std::to_string(order), TMeasure::Eps, 4.0,
                        [order](TCase C) { return Components(PlaneSegmentAt(C)[order]); });
  }
  Measurement.Compare(
      "TransferU1U2U3ToS1S2S3", TMeasure::Relative, 4e-15,
      [](TCase C) {
        const std::array<TPoint2D, 4> at = PlaneSegmentAt(C);
        TPoint2D s1, s2, s3;
        TransferU1U2U3ToS1S2S3(at[1], at[2], at[3], s1, s2, s3);
        return std::vector{s1.X, s1.Y, s2.X, s2.Y, s3.X, s3.Y};
      },
      "of a segment's own derivatives, with their rounding");
  Measurement.Compare("TBezierSegmentHelper, EvalDerVector", TMeasure::Relative, 1.5e-15, [](TCase C) {
    TPoint2D tangent, curvature;
    TBezierSegmentHelper::EvalDerVector(PlaneSegment(C), C.In[8], tangent, curvature);
    return std::vector{tangent.X, tangent.Y, curvature.X, curvature.Y};
  });
}

void MeasureSpaceSegments(const TMeasurement& Measurement) {
  for (const std::size_t order : {0U, 1U, 2U, 3U}) {
    Measurement.Compare("TCubicBezXD, derivative " + std::to_string(order), TMeasure::Eps, order == 0 ? 2.0 : 0.6,
                        [order](TCase C) {
                          std::array<TPointXD, 4> results;
                          results[0] = SpaceSegment(C).EvalPoint(C.In[12], results[1], results[2], results[3]);
                          return Components(results[order]);
                        });
  }
  const std::string point = "TCubicBezXD, derivative 0", first = "TCubicBezXD, derivative 1",
                    second = "TCubicBezXD, derivative 2";
  Measurement.CompareAs("TCubicBezXD, EvalPoint without derivatives", point, TMeasure::Eps, 2.0,
                        [](TCase C) { return Components(SpaceSegment(C).EvalPoint(C.In[12])); });
  Measurement.CompareAs("TCubicBezXD, EvalDeriv", first, TMeasure::Eps, 0.6,
                        [](TCase C) { return Components(SpaceSegment(C).EvalDeriv(C.In[12])); });
  Measurement.CompareAs("TCubicBezXD, EvalDeriv2", second, TMeasure::Eps, 0.6,
                        [](TCase C) { return Components(SpaceSegment(C).EvalDeriv2(C.In[12])); });
  Measurement.Compare("TCubicBezXD, GaussLengthFunc", TMeasure::Eps, 1.5,
                      [](TCase C) { return std::vector{SpaceSegment(C).GaussLengthFunc(C.In[12])}; });
  const auto length = [](TCase C) { return std::vector{SpaceSegment(C).LengthOfParam(0.0, C.In[12])}; };
  Measurement.Compare("TCubicBezXD, LengthOfParam", TMeasure::Relative, 5e-9, length, "14-point quadrature, by design");
  Measurement.Compare("TCubicBezXD, LengthOfParam, against the 14-point rule itself", TMeasure::Eps, 8.0, length);
  Measurement.Compare("TCubicBezXD, CurveLength, against the 14-point rule itself", TMeasure::Eps, 8.0,
                      [](TCase C) { return std::vector{SpaceSegment(C).CurveLength()}; });
  Measurement.Compare(
      "TCubicBezXD, ParamOfLength", TMeasure::Absolute, 4e-5,
      [](TCase C) { return std::vector{SpaceSegment(C).ParamOfLength(C.In[12])}; },
      "halving steps until the length is within 1e-4, by design");
}

std::vector<double> TunedWeights(TCase Case, std::vector<double>& Handles) {
  TList<TPointXD> points;
  for (std::size_t i = 0; i < Case.In.size(); i += 3) points.Add(SpacePointIn(Case.In, i));
  TTWoDerivCurveXD curve;
  curve.SetRenderPath([&](const TCubicBezXD& Segment) {
    for (const TPointXD& handle : {Segment.FP1, Segment.FP2}) {
      for (const double item : Components(handle)) Handles.push_back(item);
    }
  });
  curve.CreateCorss(points);
  return {curve.BezWeightList().begin(), curve.BezWeightList().end()};
}

void MeasureTunedCurves(const TMeasurement& Measurement) {
  const std::string remark = "four secant steps over 0.001, which divides by small differences";
  Measurement.Compare(
      "TTWoDerivCurveXD, weights", TMeasure::Absolute, 1e-11,
      [](TCase C) {
        std::vector<double> handles;
        return TunedWeights(C, handles);
      },
      remark);
  Measurement.Compare(
      "TTWoDerivCurveXD, handles", TMeasure::Relative, 2e-13,
      [](TCase C) {
        std::vector<double> handles;
        TunedWeights(C, handles);
        return handles;
      },
      remark);
}

// The angle by which the directions of neighbouring segments differ where they meet.
void MeasureJoints(const TMeasurement& Measurement) {
  TErrorRow& row = Measurement.Table.Row({"TTWoDerivCurveXD, angle between neighbours at a joint", "rad"}, 2e-14);
  constexpr int seed = 41;
  TPortableRandom random(seed);
  for (int i = 0; i < Measurement.Cases(300, 30); ++i) {
    TList<TPointXD> path;
    for (int k = 0; k < 12; ++k) path.Add(TPointXD::FromSpan(random.Numbers(6, 50.0)));
    std::vector<TCubicBezXD> segments;
    TTWoDerivCurveXD curve;
    curve.SetRenderPath([&](const TCubicBezXD& Segment) { segments.push_back(Segment); });
    curve.CreateCorss(path);
    for (std::size_t k = 1; k < segments.size(); ++k) {
      const TPointXD before = segments[k - 1].FP3 - segments[k - 1].FP2;
      const TPointXD behind = segments[k].FP1 - segments[k].FP0;
      row.Add(before.Normal().DistanceTo(behind.Normal()), [i] { return Drawn("path", i, seed); });
    }
  }
}

void MeasureQuadrature(const TMeasurement& Measurement) {
  const auto node = [](TCase C) {
    return TNumeric::GaussLegendreRule(static_cast<int>(C.In[0]))[static_cast<std::size_t>(C.In[1])];
  };
  const auto weight = [=](TCase C) { return std::vector{node(C).Weight}; };
  Measurement.Compare("GaussLegendreRule, places", TMeasure::Ulp, kRoundedOnce,
                      [=](TCase C) { return std::vector{node(C).Place}; });
  Measurement.Compare("GaussLegendreRule, weights of 14 points", TMeasure::Ulp, kRoundedOnce, weight);
  Measurement.Compare("GaussLegendreRule, weights of other rules", TMeasure::Ulp, 2.5, weight);
  TErrorRow& row = Measurement.Table.Row({"GaussQuadrature of sin over [0, pi / 2]", "eps", "14 points"}, 1.5);
  const double integral = TNumeric::GaussQuadrature([](double x) { return std::sin(x); },
                                                    TGeInterval::Create(0.0, std::numbers::pi / 2, 0.0), 14);
  row.Add(std::fabs(integral - 1.0) / kEpsilon, std::string("the integral itself"));
}

// A rule of N points is exact for polynomials of degree 2 N - 1.
void MeasurePolynomials(const TMeasurement& Measurement) {
  TErrorRow& row =
      Measurement.Table.Row({"GaussQuadrature of polynomials of degree 2 N - 1", "eps",
                             "scale: the integral of the magnitudes times the degree, since places are rounded"},
                            2.5);
  constexpr int seed = 42;
  TPortableRandom random(seed);
  for (int k = 0; k < Measurement.Cases(10'000, 500); ++k) {
    const int points = 1 + random.Below(10);
    const std::vector<double> coefficients = random.Numbers(2 * static_cast<std::size_t>(points), 1.0);
    const double from = random.Within(-1.5, 0.0), to = random.Within(0.0, 1.5);
    const auto value = [&](double x) {
      double sum = 0.0;
      for (std::size_t i = coefficients.size(); i-- > 0;) sum = sum * x + coefficients[i];
      return sum;
    };
    long double exact = 0.0L;
    long double size = 0.0L;
    for (std::size_t i = 0; i < coefficients.size(); ++i) {
      const auto power = static_cast<int>(i) + 1;
      const long double below = std::pow(static_cast<long double>(from), power);
      const long double above = std::pow(static_cast<long double>(to), power);
      exact += coefficients[i] * (above - below) / power;
      size += std::fabs(coefficients[i]) * (std::fabs(above) + std::fabs(below)) / power;
    }
    const double integral = TNumeric::GaussQuadrature(value, TGeInterval::Create(from, to, 0.0), points);
    const int degree = 2 * points - 1;
    row.Add(static_cast<double>(std::fabs(integral - exact) / (degree * size)) / kEpsilon,
            [k] { return Drawn("polynomial", k, seed); });
  }
}

}  // namespace

void MeasureSegments(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Segments, joints and quadrature");
  MeasurePlaneSegments(Measurement);
  MeasureSpaceSegments(Measurement);
  MeasureTunedCurves(Measurement);
  MeasureJoints(Measurement);
  MeasureQuadrature(Measurement);
  MeasurePolynomials(Measurement);
}

}  // namespace ZORBase::Test
