#include "Subjects.h"

namespace ZORBase::Test {
namespace {

void MeasurePoses(const TMeasurement& Measurement) {
  const auto p = [](TCase C) { return PoseIn(C.In, 0); };
  const auto q = [](TCase C) { return PoseIn(C.In, 6); };
  Measurement.CompareAll(
      "TPoint6D, P + Q and P - Q", "TPoint6D, P + Q", TMeasure::Ulp, kRoundedOnce,
      {[=](TCase C) { return Components(p(C) + q(C)); }, [=](TCase C) { return Components(p(C) - (-q(C))); }},
      "by ExtendedSum");
  Measurement.Compare(
      "TPoint6D, P * S", TMeasure::Ulp, kRoundedOnce, [=](TCase C) { return Components(p(C) * C.In[6]); },
      "by ExtendedProduct");
  Measurement.Compare(
      "TPoint6D, P / S", TMeasure::Ulp, 1.5, [=](TCase C) { return Components(p(C) / C.In[6]); },
      "the reciprocal is rounded first, on purpose");
  Measurement.Compare("TPoint6D, DotVecMul", TMeasure::Ulp, kRoundedOnce,
                      [=](TCase C) { return Components(p(C).DotVecMul(q(C))); });
  Measurement.Compare("TPoint6D, DotVecDiv", TMeasure::Ulp, kRoundedOnce,
                      [=](TCase C) { return Components(p(C).DotVecDiv(q(C))); });
  Measurement.Compare("TPoint6D, DotMul", TMeasure::Eps, kRoundedOnce,
                      [=](TCase C) { return std::vector{p(C).DotMul(q(C))}; });
  Measurement.Compare("TPoint6D, MagSqr", TMeasure::Ulp, kRoundedOnce,
                      [=](TCase C) { return std::vector{p(C).MagSqr()}; });
  Measurement.Compare("TPoint6D, Mag", TMeasure::Ulp, 1.0, [=](TCase C) { return std::vector{p(C).Mag()}; });
  Measurement.Compare("TPoint6D, Normal", TMeasure::Ulp, 2.5, [=](TCase C) { return Components(p(C).Normal()); });
  Measurement.Compare("TPoint6D, VecNormal", TMeasure::Ulp, 3.0, [=](TCase C) { return Components(p(C).VecNormal()); });
  Measurement.CompareAs("TPoint6DList, AddAndNormal", "TPoint6D, VecNormal", TMeasure::Ulp, 3.0, [](TCase C) {
    TPoint6DList list;
    list.AddAndNormal(C.In[0], C.In[1], C.In[2], C.In[3], C.In[4], C.In[5]);
    return Components(list[0]);
  });
  Measurement.Compare("TPoint6D, ShadowLengthOnVec", TMeasure::Eps, 3.0,
                      [=](TCase C) { return std::vector{p(C).ShadowLengthOnVec(q(C))}; });
}

void MeasureSmallPoints(const TMeasurement& Measurement) {
  const auto p = [](TCase C) { return SpacePointIn(C.In, 0); };
  const auto q = [](TCase C) { return SpacePointIn(C.In, 3); };
  const auto u = [](TCase C) { return PointIn(C.In, 0); };
  const auto v = [](TCase C) { return PointIn(C.In, 2); };
  Measurement.Compare("TPoint3D, DotMul", TMeasure::Eps, 1.5, [=](TCase C) { return std::vector{p(C).DotMul(q(C))}; });
  Measurement.Compare("TPoint3D, CrossMul", TMeasure::Eps, 1.5,
                      [=](TCase C) { return Components(p(C).CrossMul(q(C))); });
  Measurement.Compare("TPoint3D, MagSqr", TMeasure::Ulp, 2.0, [=](TCase C) { return std::vector{p(C).MagSqr()}; });
  Measurement.Compare("TPoint3D, Mag", TMeasure::Ulp, 2.0, [=](TCase C) { return std::vector{p(C).Mag()}; });
  Measurement.Compare("TPoint3D, Normal", TMeasure::Ulp, 3.0, [=](TCase C) { return Components(p(C).Normal()); });
  Measurement.Compare("TPoint3D, DistanceXY", TMeasure::Ulp, 2.5,
                      [=](TCase C) { return std::vector{p(C).DistanceXY(q(C))}; });
  Measurement.Compare(
      "TPoint3D, AngleBetween", TMeasure::Absolute, 1e-15,
      [=](TCase C) { return std::vector{p(C).AngleBetween(q(C))}; }, "nearly parallel vectors included");
  Measurement.Compare("TPoint2D, DotMul", TMeasure::Eps, 1.0, [=](TCase C) { return std::vector{u(C).DotMul(v(C))}; });
  Measurement.Compare("TPoint2D, MagSqr", TMeasure::Ulp, 2.0, [=](TCase C) { return std::vector{u(C).MagSqr()}; });
  Measurement.Compare("TPoint2D, Mag", TMeasure::Ulp, 2.0, [=](TCase C) { return std::vector{u(C).Mag()}; });
  Measurement.Compare("TPoint2D, Normal", TMeasure::Ulp, 3.0, [=](TCase C) { return Components(u(C).Normal()); });
  Measurement.Compare("TPoint2D, AngleBetween", TMeasure::Absolute, 1e-15,
                      [=](TCase C) { return std::vector{u(C).AngleBetween(v(C))}; });
  const auto a = [](TCase C) { return TEulerAng::Create(C.In[0], C.In[1], C.In[2]); };
  const auto b = [](TCase C) { return TEulerAng::Create(C.In[3], C.In[4], C.In[5]); };
  Measurement.CompareAs("TEulerAng, MagSqr", "TPoint3D, MagSqr", TMeasure::Ulp, 2.0,
                        [=](TCase C) { return std::vector{a(C).MagSqr()}; });
  Measurement.CompareAs("TEulerAng, Mag", "TPoint3D, Mag", TMeasure::Ulp, 2.0,
                        [=](TCase C) { return std::vector{a(C).Mag()}; });
  Measurement.Compare("TEulerAng, DistanceTo", TMeasure::Ulp, 2.5,
                      [=](TCase C) { return std::vector{a(C).DistanceTo(b(C))}; });
}

void MeasurePointsOfManyDimensions(const TMeasurement& Measurement) {
  const auto part = [](TCase C, std::size_t From) { return TPointXD::FromSpan(std::span(C.In).subspan(From, 7)); };
  const auto p = [part](TCase C) { return part(C, 0); };
  const auto q = [part](TCase C) { return part(C, 7); };
  const auto whole = [](TCase C) { return TPointXD::FromSpan(C.In); };
  Measurement.CompareAs("TPointXD, P * Q", "TPoint6D, DotVecMul", TMeasure::Ulp, kRoundedOnce,
                        [](TCase C) { return Components(TPointXD(PoseIn(C.In, 0)) * TPointXD(PoseIn(C.In, 6))); });
  Measurement.Compare("TPointXD, DotMul", TMeasure::Eps, 4.0, [=](TCase C) { return std::vector{p(C).DotMul(q(C))}; });
  Measurement.Compare("TPointXD, MagSqr", TMeasure::Ulp, kRoundedOnce,
                      [=](TCase C) { return std::vector{whole(C).MagSqr()}; });
  Measurement.Compare("TPointXD, Mag", TMeasure::Ulp, 1.5, [=](TCase C) { return std::vector{whole(C).Mag()}; });
  Measurement.Compare("TPointXD, DistanceTo", TMeasure::Ulp, 2.5,
                      [=](TCase C) { return std::vector{p(C).DistanceTo(q(C))}; });
  Measurement.Compare("TPointXD, Normal", TMeasure::Ulp, 2.5, [=](TCase C) { return Components(whole(C).Normal()); });
  const auto angle = [=](TCase C) { return std::vector{p(C).AngleBetween(q(C))}; };
  Measurement.Compare("TPointXD, AngleBetween", TMeasure::Absolute, 1e-15, angle);
  Measurement.Compare("TPointXD, AngleBetween, nearly parallel", TMeasure::Absolute, 4e-10, angle,
                      "an arc cosine near 1, by design: angles of some 1e-5");
}

}  // namespace

void MeasurePoints(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Points");
  MeasurePoses(Measurement);
  MeasureSmallPoints(Measurement);
  MeasurePointsOfManyDimensions(Measurement);
}

}  // namespace ZORBase::Test
