// Every entry of curves, their tables, segments and points of many coordinates that takes numbers is given those that no calculation
// likes: it gives a result or raises the general error, takes little memory, and comes back.
#include "faults/BadInput.h"

namespace ZORBase::Test {
namespace {

TBezierSegment2D SegmentWith(double Value) {
  return TBezierSegment2D::Create(TPoint2D::Create(0, 0), TPoint2D::Create(Value, 1), TPoint2D::Create(2, 1),
                                  TPoint2D::Create(3, Value));
}

// ---------------------------------------------------------------------------------------------- curves of both kinds

constexpr std::array kInnerKnot = {0.0, 0.0, 0.0, 0.0, 0.5, 1.0, 1.0, 1.0, 1.0};

// A curve, how it is fitted through five points of which one has the number, and a place with the number.
struct TPoseKind {
  using TCurve = TNurbs6D;
  using TPoint = TPoint6D;
  static constexpr const char* kName = "TNurbs6D";
  static TPoint6DList Points(double Value) { return PosesWith(Value); }
  static bool Fit(TNurbs6D& Curve, const TPoint6DList& Points) { return Curve.CreateCross(&Points, mCentripetal); }
  static TPoint6D Place(double Value) { return PoseAt(Value, -Value); }
};
struct TPlaneKind {
  using TCurve = TNurbs2D;
  using TPoint = TPoint2D;
  static constexpr const char* kName = "TNurbs2D";
  static TList<TPoint2D> Points(double Value) { return PlacesWith(Value); }
  static bool Fit(TNurbs2D& Curve, const TList<TPoint2D>& Points) { return Curve.CreateCross(Points, mCentripetal); }
  static TPoint2D Place(double Value) { return TPoint2D::Create(Value, -Value); }
};

template <class TKind>
typename TKind::TCurve Fitted() {
  typename TKind::TCurve curve;
  TKind::Fit(curve, TKind::Points(0.25));
  return curve;
}

// Of control points, of which one has the number, and without a table.
template <class TKind>
typename TKind::TCurve Given(double Value) {
  typename TKind::TCurve curve;
  curve.CreateByCtlPoints(kInnerKnot, TKind::Points(Value), 5);
  return curve;
}

using TNamedCall = std::pair<const char*, std::function<void(double)>>;

template <class TKind>
TNumberEntries EntriesOf(const std::vector<TNamedCall>& Calls) {
  TNumberEntries entries;
  for (const auto& [name, call] : Calls) entries.push_back({std::string(TKind::kName) + "::" + name, call});
  return entries;
}

template <class TKind>
TNumberEntries MakingEntries() {
  using TPoint = typename TKind::TPoint;
  return EntriesOf<TKind>({
      {"CreateCross",
       [](double v) {
         typename TKind::TCurve curve;
         TKind::Fit(curve, TKind::Points(v));
       }},
      {"ChordParalize",
       [](double v) {
         std::array<double, 5> params{};
         double length = 0.0;
         TKind::TCurve::ChordParalize(TKind::Points(v), params, length);
       }},
      {"CentripetalParalize",
       [](double v) {
         std::array<double, 5> params{};
         double length = 0.0;
         TKind::TCurve::CentripetalParalize(TKind::Points(v), params, length);
       }},
      {"SolveTridiagonal",
       [](double v) {
         std::array<TPoint, 7> points{};
         const std::array knots = {0.0, 0.0, 0.0, 0.0, v, 0.5, 0.75, 1.0, 1.0, 1.0, 1.0};
         TKind::TCurve::SolveTridiagonal(4, TKind::Points(v), knots, points);
       }},
      {"CreateByCtlPoints, knot",
       [](double v) {
         typename TKind::TCurve curve;
         curve.CreateByCtlPoints(std::array{0.0, 0.0, 0.0, 0.0, v, 1.0, 1.0, 1.0, 1.0}, TKind::Points(0.5), 5);
         curve.EvalPoint(0.5);
       }},
      {"InitLengthByUArray, knot",
       [](double v) {
         typename TKind::TCurve curve;
         curve.CreateByCtlPoints(std::array{0.0, 0.0, 0.0, 0.0, v, 1.0, 1.0, 1.0, 1.0}, TKind::Points(0.5), 5);
         curve.InitLengthByUArray();
         curve.GetUByS(0.5);
       }},
      {"EvalPoint, control point", [](double v) { Given<TKind>(v).EvalPoint(0.5); }},
      {"CurveDerivsAlg1, control point",
       [](double v) {
         std::array<TPoint, 4> derivatives;
         Given<TKind>(v).CurveDerivsAlg1(0.5, derivatives);
       }},
      {"Curvature, control point", [](double v) { Given<TKind>(v).Curvature(0.5); }},
      {"ClosestPoint, control point", [](double v) { Given<TKind>(v).ClosestPoint(TKind::Place(1)); }},
      {"SpanBezier, control point", [](double v) { Given<TKind>(v).SpanBezier(3); }},
      {"InitLengthByUArray, control point", [](double v) { Given<TKind>(v).InitLengthByUArray(); }},
      {"GetMax, GetMin", [](double v) { static_cast<void>(Given<TKind>(v).GetMax()); }},
      {"Reverse", [](double v) { Given<TKind>(v).Reverse(); }},
      {"RelativeToZero", [](double v) { Given<TKind>(v).RelativeToZero(); }},
      {"TransformBy", [](double v) { Fitted<TKind>().TransformBy(TMatrix2D::Create(v, 0, 1, v, -v, 1)); }},
      {"TransformBy, control point", [](double v) { Given<TKind>(v).TransformBy(TMatrix2D::CreateIdent()); }},
  });
}

template <class TKind>
TNumberEntries AskingEntries() {
  using TPoint = typename TKind::TPoint;
  return EntriesOf<TKind>({
      {"EvalPoint", [](double v) { Fitted<TKind>().EvalPoint(v); }},
      {"EvalPoints",
       [](double v) {
         std::array<TPoint, 3> points;
         Fitted<TKind>().EvalPoints(std::array{0.5, v, 0.25}, points);
       }},
      {"CurveDerivsAlg1",
       [](double v) {
         std::array<TPoint, 4> derivatives;
         Fitted<TKind>().CurveDerivsAlg1(v, derivatives);
       }},
      {"Curvature", [](double v) { Fitted<TKind>().Curvature(v); }},
      {"CurvatureRadius", [](double v) { Fitted<TKind>().CurvatureRadius(v); }},
      {"ClosestPoint", [](double v) { Fitted<TKind>().ClosestPoint(TKind::Place(v)); }},
      {"GetNearestPoint",
       [](double v) {
         double param = 0.0;
         Fitted<TKind>().GetNearestPoint(TKind::Place(v), v, param);
       }},
      {"GetSByU", [](double v) { Fitted<TKind>().GetSByU(v); }},
      {"GetUByS", [](double v) { Fitted<TKind>().GetUByS(v); }},
      {"LengthOfParam", [](double v) { Fitted<TKind>().LengthOfParam(v, -v); }},
      {"ParamOfLength with a cursor",
       [](double v) {
         TSUTable::TCursor cursor;
         Fitted<TKind>().ParamOfLength(v, cursor);
       }},
      {"ParamOfLength, many",
       [](double v) {
         std::array<double, 3> params{};
         Fitted<TKind>().ParamOfLength(std::array{0.5, v, 0.25}, params);
       }},
      {"BasicFun().FindSpan", [](double v) { Fitted<TKind>().BasicFun().FindSpan(v); }},
      {"BasicFun().BasicFuns",
       [](double v) {
         std::array<double, 4> values{};
         Fitted<TKind>().BasicFun().BasicFuns(3, v, values);
       }},
      {"BasicFun().DersBasciFuns",
       [](double v) {
         Double2DArray derivatives{};
         Fitted<TKind>().BasicFun().DersBasciFuns(3, v, 3, 3, derivatives);
       }},
  });
}

// ---------------------------------------------------------------------------------------------- tables of one's own

// In rising order but for the number, in the row Row.
TSUTable TableWith(double S, double U, int Row) {
  TSUTable table;
  for (int i = 0; i < 12; ++i) {
    TSULine line;
    line.S = i == Row ? S : 0.5 * i;
    line.u = i == Row ? U : i / 11.0;
    table.Add(line);
  }
  return table;
}

void LookUpEverywhere(const TSUTable& Table, double Value) {
  TSUTable::TCursor byLength, byParam;
  std::array<double, 4> found{};
  const std::array places = {0.1, Value, 0.7, 3.0};
  for (const double place : places) {
    Answer([&] { Table.GetUByS(place); });
    Answer([&] { Table.GetUByS(place, byLength); });
    Answer([&] { Table.GetSByU(place); });
    Answer([&] { Table.GetSByU(place, byParam); });
  }
  Answer([&] { Table.GetUByS(places, found); });
  Answer([&] { Table.GetSByU(places, found); });
}

TNumberEntries TableEntries() {
  return {
      {"TSUTable, value", [](double v) { LookUpEverywhere(TableWith(0.5, 1 / 11.0, 1), v); }},
      {"TSUTable, S of the first row", [](double v) { LookUpEverywhere(TableWith(v, 0, 0), 0.3); }},
      {"TSUTable, u of the first row", [](double v) { LookUpEverywhere(TableWith(0, v, 0), 0.3); }},
      {"TSUTable, S of an inner row", [](double v) { LookUpEverywhere(TableWith(v, 3 / 11.0, 3), 1.4); }},
      {"TSUTable, u of an inner row", [](double v) { LookUpEverywhere(TableWith(1.5, v, 3), 0.3); }},
      {"TSUTable, S of the last row", [](double v) { LookUpEverywhere(TableWith(v, 1, 11), 5.4); }},
      {"TSUTable, u of the last row", [](double v) { LookUpEverywhere(TableWith(5.5, v, 11), 0.99); }},
      {"TSUTable, a row and the value", [](double v) { LookUpEverywhere(TableWith(v, v, 4), v); }},
      {"TSUTable, the only row",
       [](double v) {
         TSUTable table;
         table.Add({v, v, {}, {}});
         LookUpEverywhere(table, v);
       }},
      {"TNurbsBasicFunc::CreateCross",
       [](double v) {
         TNurbsBasicFunc basis;
         basis.CreateCross(std::array{0.0, 0.0, 0.0, v, 0.5, 1.0, 1.0, 1.0, 1.0}, 9);
         basis.FindSpan(0.25);
       }},
      {"TNurbsBasicFunc::Reverse",
       [](double v) {
         TNurbsBasicFunc basis;
         basis.CreateCross(std::array{v, 0.0, 0.0, v, 0.5, 1.0, 1.0, 1.0, -v}, 9);
         basis.Reverse();
       }},
  };
}

// ---------------------------------------------------------------------------------------------- segments, many coordinates

TCubicBezXD SegmentXDWith(double Value) {
  return TCubicBezXD::Create(PoseAt(0, 0), PoseAt(Value, 1), PoseAt(2, 1), PoseAt(3, Value));
}

TPointXD PointXDWith(double Value) { return TPointXD::FromSpan(std::array{1.0, Value, 0.0, -Value, 2.0, Value, 3.0}); }

TNumberEntries PointXDEntries() {
  return {
      {"TPointXD sums and products",
       [](double v) {
         const TPointXD point = PointXDWith(v);
         static_cast<void>((point + point * v - point) * point);
       }},
      {"TPointXD / s", [](double v) { static_cast<void>(PointXDWith(v) / v); }},
      {"TPointXD ==", [](double v) { static_cast<void>(PointXDWith(v) == PointXDWith(v)); }},
      {"TPointXD::Mag", [](double v) { PointXDWith(v).Mag(); }},
      {"TPointXD::DotMul", [](double v) { PointXDWith(v).DotMul(PointXDWith(-v)); }},
      {"TPointXD::DistanceTo", [](double v) { PointXDWith(v).DistanceTo(PointXDWith(-v)); }},
      {"TPointXD::AngleBetween", [](double v) { PointXDWith(v).AngleBetween(PointXDWith(1)); }},
      {"TPointXD::Normal", [](double v) { PointXDWith(v).Normal(); }},
      {"TPointXD::Abs", [](double v) { TPointXD::Abs(PointXDWith(v)); }},
      {"TPointXD::ExtMax, ExtMin", [](double v) { PointXDWith(v).ExtMax(PointXDWith(1)).ExtMin(PointXDWith(v)); }},
      {"TPointXD text", [](double v) { PointXDWith(v).ToString(); }},
      {"TPointXD to TPoint6D", [](double v) { static_cast<void>(static_cast<TPoint6D>(PointXDWith(v))); }},
  };
}

TNumberEntries SegmentEntries() {
  return {
      {"TTWoDerivCurveXD::CreateCorss",
       [](double v) {
         TList<TPointXD> points;
         for (const TPoint6D& pose : PosesWith(v)) points.Add(pose);
         TTWoDerivCurveXD().CreateCorss(points);
       }},
      {"TCubicBezXD",
       [](double v) {
         const TCubicBezXD segment = TCubicBezXD::Create(PoseAt(0, 0), PoseAt(v, 1), PoseAt(2, 1), PoseAt(3, v));
         segment.EvalPoint(v);
         segment.ParamOfLength(v);
         segment.LengthOfParam(0, v);
       }},
      {"TBezierSegment2D",
       [](double v) {
         TPoint2D point;
         TPoint2D der1;
         TPoint2D der2;
         SegmentWith(v).EvalPoint(v, point, der1, der2);
       }},
      {"TBezierSegment2D, t and the third derivative",
       [](double v) {
         TPoint2D point, der1, der2, der3;
         SegmentWith(1).EvalPoint(v, point, der1, der2, der3);
       }},
      {"TCubicBezXD::EvalDeriv", [](double v) { SegmentXDWith(v).EvalDeriv(v); }},
      {"TCubicBezXD::EvalDeriv2", [](double v) { SegmentXDWith(v).EvalDeriv2(v); }},
      {"TCubicBezXD::EvalPoint with derivatives",
       [](double v) {
         TPointXD d1, d2, d3;
         SegmentXDWith(1).EvalPoint(v, d1, d2, d3);
       }},
      {"TCubicBezXD::GaussLengthFunc", [](double v) { SegmentXDWith(1).GaussLengthFunc(v); }},
      {"TCubicBezXD::LengthOfParam", [](double v) { SegmentXDWith(1).LengthOfParam(-v, v); }},
      {"TCubicBezXD::ParamOfLength", [](double v) { SegmentXDWith(1).ParamOfLength(v); }},
      {"TBezierSegmentHelper::IsG1Continue",
       [](double v) { TBezierSegmentHelper::IsG1Continue(SegmentWith(v), SegmentWith(1)); }},
      {"TBezierSegmentHelper::IsG2Continue",
       [](double v) { TBezierSegmentHelper::IsG2Continue(SegmentWith(v), SegmentWith(v)); }},
      {"TBezierSegmentHelper::EvalDerVector",
       [](double v) {
         TPoint2D tangent, curvature;
         TBezierSegmentHelper::EvalDerVector(SegmentWith(1), v, tangent, curvature);
       }},
      {"CheckSameVec", [](double v) { CheckSameVec(TPoint2D::Create(v, 1), TPoint2D::Create(1, v), true); }},
      {"TransferU1U2U3ToS1S2S3",
       [](double v) {
         TPoint2D s1, s2, s3;
         TransferU1U2U3ToS1S2S3({v, 0}, {1, v}, {v, -v}, s1, s2, s3);
       }},
  };
}

TEST(BadNumbers, OfCurvesOfPosesGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("making curves of poses", MakingEntries<TPoseKind>(), kBadNumbers);
  ExpectAnAnswer("asking curves of poses", AskingEntries<TPoseKind>(), kBadNumbers);
}
TEST(BadNumbers, OfPlaneCurvesGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("making plane curves", MakingEntries<TPlaneKind>(), kBadNumbers);
  ExpectAnAnswer("asking plane curves", AskingEntries<TPlaneKind>(), kBadNumbers);
}
TEST(BadNumbers, OfTablesOfOnesOwnGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("tables and knots", TableEntries(), kBadNumbers);
}
TEST(BadNumbers, OfSegmentsGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("segments", SegmentEntries(), kBadNumbers);
}
TEST(BadNumbers, OfPointsOfManyCoordinatesGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("points of many coordinates", PointXDEntries(), kBadNumbers);
}

}  // namespace
}  // namespace ZORBase::Test
