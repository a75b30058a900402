#include <array>
#include <cmath>

#include "Subjects.h"
#include "support/PortableRandom.h"

namespace ZORBase::Test {
namespace {

const char* const kArcRemark = "an arc cosine near 1 or -1, by design: eps over the angle's sine";

void MeasureQuaternions(const TMeasurement& Measurement) {
  const auto q = [](TCase C) { return QuaternionIn(C.In, 0); };
  Measurement.Compare("TQuaternion, product", TMeasure::Eps, 2.5,
                      [=](TCase C) { return Components(q(C) * QuaternionIn(C.In, 4)); });
  Measurement.Compare("TQuaternion, NormMagSqr", TMeasure::Ulp, 2.5,
                      [=](TCase C) { return std::vector{q(C).NormMagSqr()}; });
  Measurement.Compare("TQuaternion, NormMag", TMeasure::Ulp, 2.0, [=](TCase C) { return std::vector{q(C).NormMag()}; });
  Measurement.Compare("TQuaternion, DotMul", TMeasure::Eps, 1.5,
                      [=](TCase C) { return std::vector{q(C).DotMul(QuaternionIn(C.In, 4))}; });
  Measurement.Compare("TQuaternion, Inverse", TMeasure::Eps, 3.0, [=](TCase C) { return Components(q(C).Inverse()); });
  Measurement.Compare("TQuaternion, ToMatrix4D", TMeasure::Eps, 3.0,
                      [=](TCase C) { return Rotation(q(C).ToMatrix4D()); });
  Measurement.Compare(
      "TQuaternion, CreateFromMatrix4D", TMeasure::Eps, 4.0,
      [](TCase C) {
        TQuaternion result;
        result.CreateFromMatrix4D(MatrixIn(C.In, 0));
        return WithSignOf(C, Components(result));
      },
      "the rounding of the given entries included");
  Measurement.Compare("TQuaternion, Exp", TMeasure::Eps, 3.0, [](TCase C) {
    TQuaternion result;
    result.Exp(SpacePointIn(C.In, 0));
    return Components(result);
  });
  const auto log = [=](TCase C) { return Components(q(C).Log()); };
  Measurement.Compare("TQuaternion, Log", TMeasure::Eps, 8.0, log, kArcRemark);
  Measurement.Compare("TQuaternion, Log, of another magnitude than 1", TMeasure::Eps, 4.0, log,
                      "which is divided by twice, on purpose");
}

void MeasureBlends(const TMeasurement& Measurement) {
  const auto first = [](TCase C) { return QuaternionIn(C.In, 1); };
  const auto second = [](TCase C) { return QuaternionIn(C.In, 5); };
  const auto arc = [](TCase C) { return std::vector{QuaternionAngle(QuaternionIn(C.In, 0), QuaternionIn(C.In, 4))}; };
  const auto slerp = [=](TCase C) { return WithSignOf(C, Components(SLerpQuaternion(C.In[0], first(C), second(C)))); };
  Measurement.Compare("NLerpQuaternion", TMeasure::Eps, 4.0, [=](TCase C) {
    return WithSignOf(C, Components(NLerpQuaternion(C.In[0], first(C), second(C))));
  });
  Measurement.Compare("SLerpQuaternion", TMeasure::Eps, 8.0, slerp);
  Measurement.Compare("SLerpQuaternion, nearly parallel", TMeasure::Eps, 8.0, slerp, "angles of some 1e-4");
  Measurement.Compare(
      "SquadQuaternion", TMeasure::Eps, 6.0,
      [=](TCase C) {
        const TQuaternion q3 = QuaternionIn(C.In, 13);
        return WithSignOf(C, Components(SquadQuaternion(C.In[0], first(C), second(C), QuaternionIn(C.In, 9), q3)));
      },
      "as Log");
  Measurement.Compare("QuaternionAngle", TMeasure::Eps, 64.0, arc, kArcRemark);
  Measurement.Compare("QuaternionAngle, nearly parallel", TMeasure::Absolute, 1e-10, arc,
                      "angles of some 1e-4: the same");
  Measurement.Compare(
      "MatrixAngle", TMeasure::Eps, 20.0,
      [](TCase C) { return std::vector{MatrixAngle(MatrixIn(C.In, 0), MatrixIn(C.In, 12))}; }, kArcRemark);
}

void MeasurePoseBlends(const TMeasurement& Measurement) {
  const auto at = [](TCase C, std::size_t Pose) { return MatrixIn(C.In, 1 + 12 * Pose); };
  const auto squad = [at](TCase C) { return Squad4DMatrix(C.In[0], at(C, 0), at(C, 1), at(C, 2), at(C, 3)); };
  const std::string remark = "the rounding of the given entries included";
  Measurement.Compare(
      "NLerp4DMatrix, rotation", TMeasure::Eps, 8.0,
      [=](TCase C) { return Rotation(NLerp4DMatrix(C.In[0], at(C, 0), at(C, 1))); }, remark);
  Measurement.Compare(
      "SLerp4DMatrix, rotation", TMeasure::Eps, 8.0,
      [=](TCase C) { return Rotation(SLerp4DMatrix(C.In[0], at(C, 0), at(C, 1))); }, remark);
  Measurement.Compare(
      "Squad4DMatrix, rotation", TMeasure::Eps, 16.0, [=](TCase C) { return Rotation(squad(C)); }, remark);
  Measurement.CompareAs("NLerp4DMatrix, SLerp4DMatrix and Squad4DMatrix, translation", "Blended translations",
                        TMeasure::Eps, 1.0, [=](TCase C) {
                          const TMatrix4D from = at(C, 1), to = at(C, 2);
                          return Components<TPoint3D>(std::array{NLerp4DMatrix(C.In[0], from, to).GetTranslationPt(),
                                                                 SLerp4DMatrix(C.In[0], from, to).GetTranslationPt(),
                                                                 squad(C).GetTranslationPt()});
                        });
}

// ---------------------------------------------------------------------------------------------- round trips

// In eps; q and -q are the same rotation.
double Apart(const TQuaternion& P, const TQuaternion& Q) {
  return FarthestApart(Components(P), Components(P.DotMul(Q) < 0.0 ? -Q : Q)) / kEpsilon;
}
double Apart(const TMatrix4D& M, const TMatrix4D& N) { return FarthestApart(Rotation(M), Rotation(N)) / kEpsilon; }

TQuaternion FromMatrix(const TMatrix4D& M) {
  TQuaternion q;
  q.CreateFromMatrix4D(M);
  return q;
}

// From half a turn by 10^-3 to 10^-17 about any axis.
TQuaternion NearHalfTurn(TPortableRandom& Random) {
  const double real = std::pow(10.0, -Random.Within(3.0, 17.0));
  return TQuaternion::Create(real, Random.Direction() * std::sqrt(1.0 - real * real));
}

template <class TDraw>
void MeasureTrips(const TMeasurement& Measurement, const std::string& Kind, int Cases, TDraw&& Draw) {
  const TBound limit = AsGoal(16.0);
  TErrorTable& table = Measurement.Table;
  TErrorRow& quaternion = table.Row({"quaternion, matrix, quaternion" + Kind, "eps"}, limit);
  TErrorRow& matrix = table.Row({"matrix, quaternion, matrix" + Kind, "eps"}, limit);
  TErrorRow& xyz = table.Row({"matrix, Euler angles XYZ, matrix" + Kind, "eps"}, limit);
  TErrorRow& zyx = table.Row({"matrix, Euler angles ZYX, matrix" + Kind, "eps"}, limit);
  TErrorRow& all = table.Row({"quaternion, matrix, Euler angles XYZ, matrix, quaternion" + Kind, "eps"}, limit);
  for (int i = 0; i < Cases; ++i) {
    const TQuaternion q = Draw();
    const TMatrix4D m = q.ToMatrix4D();
    TMatrix4D byXyz, byZyx;
    byXyz.CreateFromEulerAngleXYZ(m.Matrix4DToEulerAngleXYZ());
    byZyx.CreateFromEulerAngleZYX(m.Matrix4DToEulerAngleZYX());
    const auto where = [&] { return Listed(Components(q)); };
    quaternion.Add(Apart(q, FromMatrix(m)), where);
    matrix.Add(Apart(m, FromMatrix(m).ToMatrix4D()), where);
    xyz.Add(Apart(m, byXyz), where);
    zyx.Add(Apart(m, byZyx), where);
    all.Add(Apart(q, FromMatrix(byXyz)), where);
  }
}

}  // namespace

void MeasureOrientations(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Quaternions and blends");
  MeasureQuaternions(Measurement);
  MeasureBlends(Measurement);
  MeasurePoseBlends(Measurement);
}

void MeasureRoundTrips(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Rotations and back");
  TPortableRandom random(21);
  MeasureTrips(Measurement, "", Measurement.Cases(1'000'000, 10'000), [&] { return random.Orientation(); });
  MeasureTrips(Measurement, ", near half a turn", Measurement.Cases(10'000, 2'000),
               [&] { return NearHalfTurn(random); });
}

}  // namespace ZORBase::Test
