#include <cmath>

#include "Corpus.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

constexpr TParalizeMethod kMethods[] = {mEqually, mChord, mCentripetal};

// Steps of 0.3 to 1.3 in directions that change slowly.
TPoint6DList Wander(TPortableRandom& Random, int Count) {
  TPoint6DList path;
  TPoint6D at = Random.Point6D(1.0);
  TPoint6D heading = Random.Point6D(1.0);
  for (int i = 0; i < Count; ++i) {
    path.Add(at);
    heading = (heading + Random.Point6D(0.5)).Normal();
    at = at + heading * Random.Within(0.3, 1.3);
  }
  return path;
}

TNurbs6D CurveThrough(const TPoint6DList& Path, TParalizeMethod Method) {
  TNurbs6D curve;
  curve.CreateCross(&Path, Method);
  return curve;
}

TNurbs6D WanderingCurve(std::uint64_t Seed, int Count) {
  TPortableRandom random(Seed);
  return CurveThrough(Wander(random, Count), mChord);
}

void AddFits(TCorpus& Corpus) {
  Corpus.Exact("TNurbs6D.CreateCross: knots, control points, table", [](TResults& Result) {
    TPortableRandom random(501);
    for (const int count : {4, 5, 17, 120}) {
      const TPoint6DList path = Wander(random, count);
      for (const TParalizeMethod method : kMethods) {
        const TNurbs6D curve = CurveThrough(path, method);
        Result(curve.BasicFun().uArr());
        for (const TPoint6D& point : curve.pointArr()) Result(point);
        for (const TSULine& row : curve.SUTable()) Result(row.S, row.u, row.pos6d);
      }
    }
  });
  Corpus.Exact("TNurbs6D through the sample files", [](TResults& Result) {
    for (const char* const name : {"swept-plane.poses.txt", "e387.100mm.poses.txt"}) {
      TPoint6DList path;
      path.LoadFromFile(std::string(ZORBASE_SAMPLE_DATA) + "/" + name);
      const TNurbs6D curve = CurveThrough(path, mCentripetal);
      Result(curve.CurveLength());
      for (const TPoint6D& point : curve.pointArr()) Result(point);
      for (int i = 0; i < curve.SUTable().Count(); i += 97) Result(curve.SUTable()[i].S, curve.SUTable()[i].pos6d);
    }
  });
  Corpus.Exact("TNurbs2D.CreateCross: control points, table", [](TResults& Result) {
    TPortableRandom random(502);
    TList<TPoint2D> path;
    for (const TPoint6D& pose : Wander(random, 60)) path.Add(TPoint2D::Create(pose.X, pose.Y));
    TNurbs2D curve;
    for (const TParalizeMethod method : kMethods) {
      curve.CreateCross(path, method);
      for (const TPoint2D& point : curve.pointArr()) Result(point);
      for (const TSULine& row : curve.SUTable()) Result(row.S, row.u, row.pos);
      Result(curve.EvalPoint(0.37), curve.Curvature(0.61));
    }
  });
}

void AddQueries(TCorpus& Corpus) {
  Corpus.Exact("TNurbsBasicFunc: values and derivatives", [](TResults& Result) {
    TPortableRandom random(503);
    const TNurbs6D curve = WanderingCurve(504, 30);
    const TNurbsBasicFunc& basis = curve.BasicFun();
    for (int i = 0; i < 500; ++i) {
      const double u = random.Unit();
      const int span = basis.FindSpan(u);
      std::array<double, 4> values{};
      Double2DArray derivatives{};
      basis.BasicFuns(span, u, values);
      basis.DersBasciFuns(span, u, 3, 3, derivatives);
      Result(span, std::span<const double>(values));
      for (const auto& row : derivatives) Result(std::span<const double>(row));
    }
  });
  Corpus.Exact("TNurbs6D: points, derivatives, curvature", [](TResults& Result) {
    TPortableRandom random(505);
    const TNurbs6D curve = WanderingCurve(506, 80);
    std::vector<double> params(1003);
    for (double& param : params) param = random.Within(-0.01, 1.01);
    std::vector<TPoint6D> points(params.size());
    curve.EvalPoints(params, points);
    for (std::size_t i = 0; i < params.size(); ++i) {
      std::array<TPoint6D, 4> derivatives;
      curve.CurveDerivsAlg1(params[i], derivatives);
      Result(points[i], curve.EvalPoint(params[i]), curve.Curvature(params[i]));
      for (const TPoint6D& derivative : derivatives) Result(derivative);
    }
  });
  Corpus.Exact("TNurbs6D: length to parameter and back", [](TResults& Result) {
    TPortableRandom random(507);
    const TNurbs6D curve = WanderingCurve(508, 80);
    for (int i = 0; i < 3000; ++i) {
      const double part = random.Within(-0.01, 1.01);
      Result(curve.ParamOfLength(part * curve.CurveLength()), curve.GetSByU(part));
    }
  });
  Corpus.Exact("TNurbs6D: closest point, Bezier points, reversal", [](TResults& Result) {
    TPortableRandom random(509);
    TNurbs6D curve = WanderingCurve(510, 25);
    for (int i = 0; i < 100; ++i) {
      const auto closest = curve.ClosestPoint(random.Point6D(8.0));
      Result(closest.Param, closest.Point, closest.Distance);
    }
    for (int span = 3; span < curve.pCount(); ++span) {
      for (const TPoint6D& point : curve.SpanBezier(span)) Result(point);
    }
    curve.Reverse();
    curve.RelativeToZero();
    for (int i = 0; i <= 64; ++i) Result(curve.EvalPoint(i / 64.0), curve.GetSByU(i / 64.0));
  });
}

TNurbs2D PlaneCurveOf(const TNurbs6D& Curve) {
  std::vector<TPoint2D> points;
  for (const TPoint6D& point : Curve.pointArr()) points.push_back(TPoint2D::Create(point.X, point.Y));
  TNurbs2D planeCurve;
  planeCurve.CreateByCtlPoints(Curve.BasicFun().uArr(), points, Curve.pCount());
  planeCurve.InitLengthByUArray();
  return planeCurve;
}

void AddPlaneQueries(TCorpus& Corpus) {
  Corpus.Exact("TNurbs2D: points, derivatives, length to parameter", [](TResults& Result) {
    TPortableRandom random(511);
    const TNurbs2D curve = PlaneCurveOf(WanderingCurve(512, 80));
    std::vector<double> params(503);
    for (double& param : params) param = random.Within(-0.01, 1.01);
    std::vector<TPoint2D> points(params.size());
    curve.EvalPoints(params, points);
    for (std::size_t i = 0; i < params.size(); ++i) {
      std::array<TPoint2D, 4> derivatives;
      curve.CurveDerivsAlg1(params[i], derivatives);
      Result(points[i], curve.EvalPoint(params[i]), curve.Curvature(params[i]));
      for (const TPoint2D& derivative : derivatives) Result(derivative);
      Result(curve.ParamOfLength(params[i] * curve.CurveLength()), curve.GetSByU(params[i]));
    }
  });
  Corpus.Exact("TNurbs2D: closest and nearest points, bounds, transform", [](TResults& Result) {
    TPortableRandom random(513);
    TNurbs2D curve = PlaneCurveOf(WanderingCurve(514, 25));
    for (int i = 0; i < 10; ++i) {
      for (int k = 0; k < 10; ++k) {
        const TPoint2D place = random.Point2D(8.0);
        const auto closest = curve.ClosestPoint(place);
        double param = 0.0;
        const TPoint2D nearest = curve.GetNearestPoint(place, 1e-6, param);
        Result(closest.Param, closest.Point, closest.Distance, nearest, param);
      }
      const std::vector<double> m = random.Numbers(6, 1.5);
      curve.TransformBy(TMatrix2D::Create(m[0], m[1], m[2], m[3], m[4], m[5]));
      for (const TPoint2D& point : curve.pointArr()) Result(point);
      Result(curve.GetMax(), curve.GetMin(), curve.EvalPoint(0.37));
    }
  });
}

void AddQueriesNextToTheStart(TCorpus& Corpus) {
  // There Y and A come from the fourth control point alone, whose weight is too small for the vector lanes.
  Corpus.Exact("TNurbs6D: points and derivatives next to the start", [](TResults& Result) {
    TPortableRandom random(515);
    TNurbs6D curve = WanderingCurve(516, 12);
    std::vector<TPoint6D> control(curve.pointArr().begin(), curve.pointArr().end());
    for (std::size_t i = 0; i < 3; ++i) control[i].Y = control[i].A = 0.0;
    const std::vector<double> knots(curve.BasicFun().uArr().begin(), curve.BasicFun().uArr().end());
    curve.CreateByCtlPoints(knots, control, static_cast<int>(control.size()));
    std::vector<double> params(1003);  // about 1e-110 to 1e-80
    for (double& param : params) {
      const double mantissa = random.Within(1.0, 2.0);
      param = std::ldexp(mantissa, random.Below(100) - 365);
    }
    std::vector<TPoint6D> points(params.size());
    curve.EvalPoints(params, points);
    for (std::size_t i = 0; i < params.size(); ++i) {
      std::array<TPoint6D, 4> derivatives;
      curve.CurveDerivsAlg1(params[i], derivatives);
      Result(points[i], curve.EvalPoint(params[i]));
      for (const TPoint6D& derivative : derivatives) Result(derivative);
    }
  });
}

void LookUpAll(TResults& Result, const TSUTable& Table, std::span<const double> Parts) {
  std::vector<double> lengths;
  for (const double part : Parts) lengths.push_back(part * Table.Last().S);
  std::vector<double> found(Parts.size());
  Table.GetUByS(lengths, found);
  Result(found);
  Table.GetSByU(Parts, found);
  Result(found);
  TSUTable::TCursor byLength, byParam;
  for (std::size_t i = 0; i < Parts.size(); ++i) {
    Result(Table.GetUByS(lengths[i], byLength), Table.GetSByU(Parts[i], byParam));
  }
}

void AddLookUps(TCorpus& Corpus) {
  Corpus.Exact("TSUTable: look-ups of many and with a cursor, with an index and without", [](TResults& Result) {
    TPortableRandom random(517);
    TSUTable table = WanderingCurve(518, 80).SUTable();
    std::vector<double> jumping(1001), rising;
    for (double& part : jumping) part = random.Within(-0.01, 1.01);
    for (double part = -0.01; part < 1.01; part += random.Unit() * 2e-3) rising.push_back(part);
    const auto lookUpBoth = [&] {
      LookUpAll(Result, table, jumping);
      LookUpAll(Result, table, rising);
    };
    lookUpBoth();
    table.Delete(7);  // which drops the index
    lookUpBoth();
  });
}

}  // namespace

void AddCurves(TCorpus& Corpus) {
  AddFits(Corpus);
  AddQueries(Corpus);
  AddPlaneQueries(Corpus);
  AddQueriesNextToTheStart(Corpus);
  AddLookUps(Corpus);
}

namespace {

void AddDerivativesOfSegments(TCorpus& Corpus) {
  const auto derive = [](TResults& Result, const TCubicBezXD& Segment) {
    for (const double t : {-0.25, 0.0, 0.125, 0.3, 0.77, 1.0, 1.5}) Result(Segment.EvalDeriv(t), Segment.EvalDeriv2(t));
  };
  Corpus.Exact("TCubicBezXD: first and second derivative", [derive](TResults& Result) {
    TPortableRandom random(604);
    for (const std::size_t dimension : {1U, 2U, 3U, 6U, 7U, 44U}) {
      std::array<TPointXD, 4> p;
      for (TPointXD& point : p) point = TPointXD::FromSpan(random.Numbers(dimension, 20.0));
      derive(Result, TCubicBezXD::Create(p[0], p[1], p[2], p[3]));
    }
  });
  Corpus.Inherited("TTWoDerivCurveXD: tangents, derivatives of the segments", [derive](TResults& Result) {
    TPortableRandom random(605);
    for (const std::size_t dimension : {2U, 3U, 6U, 44U}) {
      TList<TPointXD> path;
      for (int i = 0; i < 20; ++i) path.Add(TPointXD::FromSpan(random.Numbers(dimension, 50.0)));
      TTWoDerivCurveXD curve;
      curve.SetRenderPath([&](const TCubicBezXD& Segment) { derive(Result, Segment); });
      curve.CreateCorss(path);
      for (const TPointXD& tangent : curve.BezDerivList()) Result(tangent);
    }
  });
}

// Segment after segment; every other joint is smooth, and of these half have one curvature as well.
std::vector<TBezierSegment2D> SegmentsInARow(TPortableRandom& Random, int Count) {
  std::vector<TBezierSegment2D> row;
  TPoint2D p0 = Random.Point2D(9.0), p1 = Random.Point2D(9.0), p2 = Random.Point2D(9.0);
  for (int i = 0; i < Count; ++i) {
    const TPoint2D p3 = Random.Point2D(9.0);
    row.push_back(TBezierSegment2D::Create(p0, p1, p2, p3));
    const TPoint2D handle = p3 - p2;
    p0 = p3;
    p2 = i % 4 == 0 ? p1 + 4.0 * handle : Random.Point2D(9.0);
    p1 = i % 2 == 0 ? p3 + handle : Random.Point2D(9.0);
  }
  return row;
}

void AddJoints(TCorpus& Corpus) {
  Corpus.Exact("TBezierSegmentHelper: tangents and curvature vectors", [](TResults& Result) {
    TPortableRandom random(606);
    for (const TBezierSegment2D& segment : SegmentsInARow(random, 200)) {
      for (const double t : {0.0, 0.4, 1.0}) {
        TPoint2D tangent, curvature;
        TBezierSegmentHelper::EvalDerVector(segment, t, tangent, curvature);
        Result(tangent, curvature);
      }
    }
  });
  Corpus.Inherited("CheckSameVec, IsG1Continue, IsG2Continue", [](TResults& Result) {
    TPortableRandom random(607);
    const std::vector<TBezierSegment2D> row = SegmentsInARow(random, 200);
    for (std::size_t i = 1; i < row.size(); ++i) {
      Result(TBezierSegmentHelper::IsG1Continue(row[i - 1], row[i]),
             TBezierSegmentHelper::IsG2Continue(row[i - 1], row[i]));
      const TPoint2D v = random.Point2D(2.0);
      const TPoint2D turned = v + TPoint2D::Create(-v.Y, v.X) * random.Within(0.0, 2e-6);  // about the tolerance
      Result(CheckSameVec(v, turned, true), CheckSameVec(v, turned * 3.0, true), CheckSameVec(v, turned * 3.0, false));
    }
  });
}

}  // namespace

void AddSegments(TCorpus& Corpus) {
  Corpus.Exact("TBezierSegment2D and its joints", [](TResults& Result) {
    TPortableRandom random(601);
    for (int i = 0; i < 500; ++i) {
      const TPoint2D p0 = random.Point2D(9.0), p1 = random.Point2D(9.0), p2 = random.Point2D(9.0);
      const auto segment = TBezierSegment2D::Create(p0, p1, p2, random.Point2D(9.0));
      const double t = random.Within(-0.5, 1.5);
      TPoint2D point, d1, d2, d3, s1, s2, s3;
      segment.EvalPoint(t, point, d1, d2, d3);
      TransferU1U2U3ToS1S2S3(d1, d2, d3, s1, s2, s3);
      Result(point, d1, d2, d3, s1, s2, s3);
    }
  });
  const auto segmentOf = [](TPortableRandom& Random, std::size_t Dimension) {
    std::array<TPointXD, 4> p;
    for (TPointXD& point : p) point = TPointXD::FromSpan(Random.Numbers(Dimension, 20.0));
    return TCubicBezXD::Create(p[0], p[1], p[2], p[3]);
  };
  Corpus.Exact("TCubicBezXD: points, derivatives, lengths", [segmentOf](TResults& Result) {
    TPortableRandom random(602);
    for (const std::size_t dimension : {1U, 2U, 3U, 6U, 7U, 44U}) {
      for (int i = 0; i < 20; ++i) {
        const TCubicBezXD segment = segmentOf(random, dimension);
        const double t = random.Unit();
        TPointXD d1, d2, d3;
        Result(segment, segment.EvalPoint(t), segment.EvalPoint(t, d1, d2, d3), segment.GaussLengthFunc(t));
        Result(d1, d2, d3, segment.LengthOfParam(0.1, t), segment.ParamOfLength(t * segment.FLength));
      }
    }
  });
  Corpus.Exact("TNumeric: Gauss-Legendre rules and integrals", [](TResults& Result) {
    for (const int n : {1, 2, 3, 5, 8, 13, 14, 21, 64, 101, 256}) {
      for (const TGaussNode& node : TNumeric::GaussLegendreRule(n)) Result(node.Place, node.Weight);
      Result(TNumeric::GaussQuadrature([](double x) { return 1.0 / (1.0 + x * x); },
                                       TGeInterval::Create(-1.5, 4.0, 0.0), n));
    }
  });
  Corpus.Inherited("TTWoDerivCurveXD: segments", [](TResults& Result) {
    TPortableRandom random(603);
    for (const std::size_t dimension : {2U, 3U, 6U, 44U}) {
      TList<TPointXD> path;
      for (int i = 0; i < 40; ++i) path.Add(TPointXD::FromSpan(random.Numbers(dimension, 50.0)));
      TTWoDerivCurveXD curve;
      curve.SetRenderPath([&](const TCubicBezXD& Segment) { Result(Segment); });
      curve.CreateCorss(path);
      Result(curve.BezWeightList());
    }
  });
  AddDerivativesOfSegments(Corpus);
  AddJoints(Corpus);
}

}  // namespace ZORBase::Test
