#include <algorithm>
#include <cmath>

#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

void MeasureMoves(const TMeasurement& Measurement) {
  const auto move = [](TCase C) { return TWcsPtInterpolator(PoseIn(C.In, 0), PoseIn(C.In, 6), 1, 0); };
  const auto pose = [=](TCase C) { return move(C).GetWcsPtbyParam(C.In[12]); };
  Measurement.Compare("TWcsPtInterpolator, position", TMeasure::Eps, 2.0,
                      [=](TCase C) { return Components(pose(C).GetPoint()); });
  Measurement.Compare("TWcsPtInterpolator, direction", TMeasure::Eps, 8.0,
                      [=](TCase C) { return Components(pose(C).GetVector()); });
  Measurement.Compare("TWcsPtInterpolator, OffSetAngle", TMeasure::Absolute, 1e-15,
                      [=](TCase C) { return std::vector{move(C).OffSetAngle()}; });
  const auto euler = [](TCase C) {
    const auto begin = TEulerPoint::FromArray(PoseIn(C.In, 0).ToArray());
    return TEulerPtInterpolator(begin, TEulerPoint::FromArray(PoseIn(C.In, 6).ToArray()), 1).GetWcsPtbyParam(C.In[12]);
  };
  Measurement.Compare("TEulerPtInterpolator, position", TMeasure::Eps, 2.0,
                      [=](TCase C) { return Components(euler(C).GetPoint()); });
  Measurement.Compare("TEulerPtInterpolator, angles", TMeasure::Eps, 2.0, [=](TCase C) {
    const TEulerAng angles = euler(C).GetEuler();
    return std::vector{angles.Rx, angles.Ry, angles.Rz};
  });
}

void MeasureHermite(const TMeasurement& Measurement) {
  const auto value = [](TCase C) {
    constexpr std::size_t count = 7;
    THermiteInterpolater table;
    table.BeginCurve(C.In[0] != 0.0);
    for (std::size_t i = 1; i <= count; ++i) table.AddPoint(C.In[i], C.In[count + i]);
    table.EndCurve();
    return std::vector{table.CalcY(C.In.back())};
  };
  Measurement.Compare("THermiteInterpolater, CalcY", TMeasure::Eps, 8.0, value);
  Measurement.Compare("THermiteInterpolater, CalcY, loop", TMeasure::Eps, 100.0, value,
                      "the end slopes are divided by a difference of values, by design, which may cancel");
}

void MeasureSurfaces(const TMeasurement& Measurement) {
  Measurement.Compare(
      "TV4Interpolator, CalcZ", TMeasure::Eps, 8.0,
      [](TCase C) {
        TV4Interpolator surface;
        for (std::size_t i = 0; i + 3 < C.In.size(); i += 3) surface.AddPoint(SpacePointIn(C.In, i));
        surface.CalcWeights();
        return std::vector{surface.CalcZ(C.In[C.In.size() - 2], C.In.back())};
      },
      "scale: the condition of the matrix times the largest height");
  TErrorRow& row = Measurement.Table.Row(
      {"TV4Interpolator, CalcZ at the samples", "of the largest height", "up to 80 samples"}, 1e-9);
  TPortableRandom random(51);
  for (int i = 0; i < Measurement.Cases(100, 10); ++i) {
    TV4Interpolator surface;
    const int count = 2 + random.Below(79);
    for (int k = 0; k < count; ++k) surface.AddPoint(random.Point3D(10.0));
    surface.CalcWeights();
    for (const TPoint3D& sample : surface.SrcPt()) {
      row.Add(std::fabs(surface.CalcZ(sample.X, sample.Y) - sample.Z) / 10.0,
              [i] { return "surface " + std::to_string(i); });
    }
  }
}

}  // namespace

void MeasureInterpolators(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Interpolators");
  MeasureMoves(Measurement);
  MeasureHermite(Measurement);
  MeasureSurfaces(Measurement);
}

}  // namespace ZORBase::Test
