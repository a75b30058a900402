#include <algorithm>
#include <cmath>

#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

// End - Begin of each pair of poses, as Offset gives it.
template <class TOffset>
void MeasureOffsets(const TMeasurement& Measurement, const std::string& Operation, const std::string& Moves,
                    TOffset&& Offset) {
  TErrorRow& row = Measurement.Table.Row({Operation, "ulp"}, kRoundedOnce);
  for (const TReferenceCase& item : Measurement.References.Of(Moves)) {
    const std::vector<double> offset = Offset(item);
    for (std::size_t i = 0; i < offset.size(); ++i) {
      row.Add(LastPlacesOff(offset[i], static_cast<long double>(item.In[6 + i]) - item.In[i]), item.Name);
    }
  }
}

void MeasureMoves(const TMeasurement& Measurement) {
  const auto move = [](TCase C) { return TWcsPtInterpolator(PoseIn(C.In, 0), PoseIn(C.In, 6), 1, 0); };
  const auto pose = [=](TCase C) { return move(C).GetWcsPtbyParam(C.In[12]); };
  Measurement.Compare("TWcsPtInterpolator, position", TMeasure::Eps, 2.0,
                      [=](TCase C) { return Components(pose(C).GetPoint()); });
  Measurement.Compare("TWcsPtInterpolator, direction", TMeasure::Eps, 8.0,
                      [=](TCase C) { return Components(pose(C).GetVector()); });
  Measurement.Compare("TWcsPtInterpolator, OffSetAngle", TMeasure::Absolute, 1e-15,
                      [=](TCase C) { return std::vector{move(C).OffSetAngle()}; });
  const auto turn = [](TCase C, int InterpType) {
    return TWcsPtInterpolator(TPoint6D::Create({}, SpacePointIn(C.In, 0)), TPoint6D::Create({}, SpacePointIn(C.In, 3)),
                              1, InterpType);
  };
  Measurement.Compare("TWcsPtInterpolator, CrossVec", TMeasure::Eps, 3.5,
                      [=](TCase C) { return Components(turn(C, 0).CrossVec()); });
  Measurement.Compare("TWcsPtInterpolator, OffSetAngle, no lowest Z", TMeasure::Absolute, 3e-15,
                      [=](TCase C) { return std::vector{turn(C, 1).OffSetAngle()}; });
  Measurement.Compare("TWcsPtInterpolator, direction, no lowest Z", TMeasure::Eps, 10.0,
                      [=](TCase C) { return Components(turn(C, 1).GetWcsPtbyParam(C.In[6]).GetVector()); });
  MeasureOffsets(Measurement, "TWcsPtInterpolator, OffsetPt", "TWcsPtInterpolator, position",
                 [=](TCase C) { return Components(move(C).OffsetPt()); });
}

void MeasureEulerMoves(const TMeasurement& Measurement) {
  const auto move = [](TCase C) {
    const auto begin = TEulerPoint::FromArray(PoseIn(C.In, 0).ToArray());
    return TEulerPtInterpolator(begin, TEulerPoint::FromArray(PoseIn(C.In, 6).ToArray()), 1);
  };
  const auto euler = [=](TCase C) { return move(C).GetWcsPtbyParam(C.In[12]); };
  Measurement.Compare("TEulerPtInterpolator, position", TMeasure::Eps, 2.0,
                      [=](TCase C) { return Components(euler(C).GetPoint()); });
  Measurement.Compare("TEulerPtInterpolator, angles", TMeasure::Eps, 2.0,
                      [=](TCase C) { return Components(euler(C).GetEuler()); });
  MeasureOffsets(
      Measurement, "TEulerPtInterpolator, OffsetPt and OffOrient", "TEulerPtInterpolator, angles", [=](TCase C) {
        return Components(TPoint6D::Create(move(C).OffsetPt(), SpacePointIn(Components(move(C).OffOrient()), 0)));
      });
}

void MeasureHermite(const TMeasurement& Measurement) {
  Measurement.Compare("THermiteInterpolater, SrcDiff", TMeasure::Ulp, 2.5, [](TCase C) {
    THermiteInterpolater table;
    table.BeginCurve(false);
    for (std::size_t i = 0; i < C.In.size() / 2; ++i) table.AddPoint(C.In[i], C.In[C.In.size() / 2 + i]);
    table.EndCurve();
    return std::vector<double>(table.SrcDiff().begin(), table.SrcDiff().end());
  });
  const auto value = [](TCase C) {
    constexpr std::size_t count = 7;
    THermiteInterpolater table;
    table.BeginCurve(C.In[0] != 0.0);
    for (std::size_t i = 1; i <= count; ++i) table.AddPoint(C.In[i], C.In[count + i]);
    table.EndCurve();
    return std::vector{table.CalcY(C.In.back())};
  };
  Measurement.Compare("THermiteInterpolater, CalcY", TMeasure::Eps, 8.0, value);
  Measurement.Compare("THermiteInterpolater, CalcY, loop", TMeasure::Eps, 3.0, value,
                      "the end slopes are divided by a difference of values, by design, which may cancel");
}

void MeasureSurfaces(const TMeasurement& Measurement) {
  const auto surface = [](TCase C) {
    constexpr std::size_t count = 8;
    TV4Interpolator result;
    for (std::size_t i = 0; i < count; ++i) result.AddPoint(SpacePointIn(C.In, 3 * i));
    result.CalcWeights();
    return result;
  };
  Measurement.Compare(
      "TV4Interpolator, Weights", TMeasure::Eps, 2.0,
      [=](TCase C) {
        const TV4Interpolator at = surface(C);
        return std::vector<double>(at.Weights().begin(), at.Weights().end());
      },
      "scale: the condition of the matrix times the largest weight");
  Measurement.Compare(
      "TV4Interpolator, CalcZ", TMeasure::Eps, 8.0,
      [=](TCase C) { return std::vector{surface(C).CalcZ(C.In[C.In.size() - 2], C.In.back())}; },
      "scale: the condition of the matrix times the largest height");
  TErrorRow& row = Measurement.Table.Row(
      {"TV4Interpolator, CalcZ at the samples", "of the largest height", "up to 80 samples"}, 3e-10);
  constexpr int seed = 51;
  TPortableRandom random(seed);
  for (int i = 0; i < Measurement.Cases(100, 10); ++i) {
    TV4Interpolator drawn;
    const int count = 2 + random.Below(79);
    for (int k = 0; k < count; ++k) drawn.AddPoint(random.Point3D(10.0));
    drawn.CalcWeights();
    for (const TPoint3D& sample : drawn.SrcPt()) {
      row.Add(std::fabs(drawn.CalcZ(sample.X, sample.Y) - sample.Z) / 10.0, [i] { return Drawn("surface", i, seed); });
    }
  }
}

}  // namespace

void MeasureInterpolators(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Interpolators");
  MeasureMoves(Measurement);
  MeasureEulerMoves(Measurement);
  MeasureHermite(Measurement);
  MeasureSurfaces(Measurement);
}

}  // namespace ZORBase::Test
