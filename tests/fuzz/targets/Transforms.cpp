// Transforms, rotations and small helpers. Input: a parameter, twelve numbers of one matrix and of another, a point, a vector.
#include "fuzz/FuzzTarget.h"

#include <ZORBase/ZORBaseAlg/uBezierHelper.h>
#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <ZORBase/ZORGeometry/CADTypesEuler.h>
#include <ZORBase/common/uZORCommon.h>

#include <array>
#include <cmath>

namespace ZORBase::Test::FuzzTransforms {
namespace {

TMatrix4D NextMatrix(TFuzzInput& Input) {
  TMatrix4D matrix = TMatrix4D::ReturnIdentityMatrix();
  for (auto& row : matrix.fm) {
    for (double& entry : row) entry = Input.Number();
  }
  return matrix;
}

void UseMatrices(const TMatrix4D& M1, const TMatrix4D& M2, const TPoint3D& P, double t) {
  double angle1 = 0.0;
  double angle2 = 0.0;
  (M1 * M2).TransformPt(P);
  TMatrix4D inverse = M1;
  if (!Attempt([&] { inverse.Invert(); })) {
    Require(SameBits(inverse.fm[0], M1.fm[0]) && SameBits(inverse.fm[2], M1.fm[2]),
            "a refused inverse leaves the matrix");
  }
  Attempt([&] { M1.Matrix4DToEulerAngleXYZ(); });
  Attempt([&] { M1.Matrix4DToEulerAngleZYX(); });
  Attempt([&] { M1.Matrix4DToVecAng(P, angle1); });
  Attempt([&] { M1.Matrix4DToVecAng(P, M2.GetTranslationPt(), angle1, angle2); });
  Attempt([&] { M1.RoundTo(AsInt(t)); });
  Attempt([&] { MatrixAngle(M1, M2); });
  Attempt([&] { NLerp4DMatrix(t, M1, M2); });
  Attempt([&] { SLerp4DMatrix(t, M1, M2); });
  Attempt([&] { Squad4DMatrix(t, M1, M2, inverse, M1); });
  Attempt([&] { TMatrix4D::Create(P, t); });
  Attempt([&] { TMatrix4D::Create(P, M2.GetTranslationPt()); });
  M1.ToString();
}

void UseQuaternions(const TMatrix4D& M1, const TMatrix4D& M2, const TPoint3D& P, double t) {
  TQuaternion p;
  p.CreateFromMatrix4D(M1);
  const TQuaternion q = TQuaternion::Create(M2.fm[0][0], M2.fm[0][1], M2.fm[0][2], M2.fm[0][3]);
  TQuaternion e;
  e.Exp(P);
  Attempt([&] { p.Log(); });
  Attempt([&] { q.Inverse(); });
  Attempt([&] { QuaternionAngle(p, q); });
  Attempt([&] { NLerpQuaternion(t, p, q); });
  Attempt([&] { SLerpQuaternion(t, p, q); });
  Attempt([&] { SquadQuaternion(t, p, q, e, q); });
  std::array<TQuaternion, 2> results;
  Attempt([&] { SLerpQuaternions(std::array{t, 0.5}, p, q, results); });
}

void UsePoses(TPoint6D Pose, const TPoint6D& Other, double t) {
  Attempt([&] { Pose.ShadowLengthOnVec(Other); });
  Attempt([&] { Pose.DotVecDiv(Other); });
  Attempt([&] { Pose.VecNormal(); });
  Attempt([&] { Pose.RestrainRange(Other, Pose); });
  Attempt([&] { Pose.Normalize(); });
  Attempt([&] { TEulerAng::CreatebyXYVec(Pose.GetPoint(), Other.GetVector()); });
  Attempt([&] { SafeDiv(Pose.X, Other.X, t); });
}

void UseSegments(const TMatrix4D& M1, const TMatrix4D& M2, double t) {
  const auto point = [](const TMatrix4D& M, std::size_t i) { return TPoint2D::Create(M.fm[i][0], M.fm[i][1]); };
  const auto segment = [&](const TMatrix4D& M) {
    return TBezierSegment2D::Create(point(M, 0), point(M, 1), point(M, 2), TPoint2D::Create(M.fm[0][3], M.fm[1][3]));
  };
  TPoint2D v1;
  TPoint2D v2;
  Attempt([&] { TBezierSegmentHelper::EvalDerVector(segment(M1), t, v1, v2); });
  Attempt([&] { TBezierSegmentHelper::IsG2Continue(segment(M1), segment(M2)); });
}

}  // namespace

ZORBASE_FUZZ_TARGET(Transforms) {
  const double t = Input.Number();
  const TMatrix4D m1 = NextMatrix(Input);
  const TMatrix4D m2 = NextMatrix(Input);
  const TPoint3D point = Input.Point3D();
  const TPoint3D vector = Input.Point3D();
  UseMatrices(m1, m2, point, t);
  UseQuaternions(m1, m2, vector, t);
  UsePoses(TPoint6D::Create(point, vector), TPoint6D::Create(m1.GetTranslationPt(), m2.GetTranslationPt()), t);
  UseSegments(m1, m2, t);
}

}  // namespace ZORBase::Test::FuzzTransforms
