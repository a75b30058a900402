// Every entry that takes numbers is given those that no calculation likes: it gives a result or raises the general error, takes little
// memory, and comes back. Curves and segments are in BadNumbersOfCurvesTest.cpp, solvers and signals in
// BadNumbersOfAlgorithmsTest.cpp, the C interface in CBadNumbersTest.cpp.
#include "faults/BadInput.h"

#include <cstdio>

namespace ZORBase::Test {
namespace {

std::string TextOf(double Value) {
  char text[32];
  std::snprintf(text, sizeof text, "%.17g", Value);
  return text;
}

TNumberEntries PoseEntries() {
  return {
      {"TPoint6D text", [](double v) { TPoint6D::Parse1033(PoseAt(v, -v).ToString1033(12)); }},
      {"TPoint6D::Normalize", [](double v) { PoseAt(v, v).Normal(); }},
      {"TPoint6D::VecNormalize", [](double v) { TPoint6D::Create(0, 0, 0, v, v, 0).VecNormal(); }},
      {"TPoint6D::ShadowLengthOnVec", [](double v) { PoseAt(v, 1).ShadowLengthOnVec(PoseAt(1, v)); }},
      {"TPoint6D::DotVecDiv", [](double v) { PoseAt(1, 1).DotVecDiv(PoseAt(v, v)); }},
      {"TPoint6D / s", [](double v) { static_cast<void>(PoseAt(1, 1) / v); }},
      {"TEulerPoint::ToPoint6D", [](double v) { TEulerPoint::Create(0, 0, 0, v, v, v).ToPoint6D(); }},
      {"TEulerPoint text", [](double v) { TEulerPoint::Create(v, 0, 0, v, v, v).ToString1033(4); }},
      {"TEulerAng::CreatebyXYVec",
       [](double v) { TEulerAng::CreatebyXYVec(TPoint3D::Create(v, 1, 0), TPoint3D::Create(0, v, 1)); }},
      {"TMatrix4D::Invert", [](double v) { MatrixWith(v).Invert(); }},
      {"TMatrix4D::Multiply", [](double v) { static_cast<void>(MatrixWith(v) * MatrixWith(-v)); }},
      {"TMatrix4D::Create(axis)", [](double v) { TMatrix4D::Create(TPoint3D::Create(v, v, 0), v); }},
      {"TMatrix4D::Create(from, to)",
       [](double v) { TMatrix4D::Create(TPoint3D::Create(v, 0, 0), TPoint3D::Create(0, v, 0)); }},
      {"TMatrix4D angles", [](double v) { MatrixWith(v).Matrix4DToEulerAngleXYZ(); }},
      {"TMatrix4D angles, ZYX", [](double v) { MatrixWith(v).Matrix4DToEulerAngleZYX(); }},
      {"MatrixAngle", [](double v) { MatrixAngle(MatrixWith(1), MatrixWith(v)); }},
      {"SLerp4DMatrix, t", [](double v) { SLerp4DMatrix(v, MatrixWith(1), MatrixWith(0.5)); }},
      {"SLerp4DMatrix", [](double v) { SLerp4DMatrix(0.5, MatrixWith(1), MatrixWith(v)); }},
      {"SquadQuaternion",
       [](double v) {
         const TQuaternion q = TQuaternion::Create(v, 0, 0, 1);
         SquadQuaternion(0.5, q, q, TQuaternion::Create(1, v, 0, 0), q);
       }},
      {"TQuaternion::Exp", [](double v) { TQuaternion().Exp(TPoint3D::Create(v, v, v)); }},
      {"TQuaternion::Log", [](double v) { TQuaternion::Create(v, 0, 1, 0).Log(); }},
      {"TPoint6D sums and products",
       [](double v) {
         const TPoint6D pose = PoseAt(v, 1) + PoseAt(1, v) * v;
         static_cast<void>((pose - PoseAt(v, v)).DotVecMul(pose).DotMul(pose));
       }},
      {"TPoint6D::Mag", [](double v) { PoseAt(v, -v).Mag(); }},
      {"TPoint6D::RestrainRange", [](double v) { PoseAt(1, 1).RestrainRange(PoseAt(v, 0), PoseAt(0, v)); }},
      {"TPoint6DList::SaveToFile",
       [](double v) {
         const TScratchFolder folder;
         PosesWith(v).SaveToFile(folder.File("poses.txt"), 12);
       }},
      {"TEulerPoint::ToString", [](double v) { TEulerPoint::Create(v, 0, 0, v, v, v).ToString(4); }},
      {"TEulerPointList::ToPoint6DList",
       [](double v) {
         TEulerPointList poses;
         poses.Add(v, 0, 0, v, -v, 1);
         poses.ToPoint6DList();
       }},
      {"TEulerAng::ToVector", [](double v) { TEulerAng::Create(v, v, v).ToVector(); }},
      {"TEulerAng::DistanceTo", [](double v) { TEulerAng::Create(v, 0, -v).DistanceTo(TEulerAng::Create(-v, v, 0)); }},
      {"TEulerAng::Mag", [](double v) { TEulerAng::Create(v, 0, -v).Mag(); }},
      {"TEulerAng text", [](double v) { TEulerAng::Create(v, 0, -v).ToStringDeg(9); }},
      {"TMatrix4D::Create(values)",
       [](double v) {
         TMatrix4D matrix;
         matrix.Create(std::array{v, 0.0, 0.0, v, 0.0, v, 0.0, 0.0, 0.0, 0.0, v, 1.0});
       }},
      {"TMatrix4D::TransformPt", [](double v) { MatrixWith(v).TransformPt(TPoint3D::Create(v, 1, -v)); }},
      {"TMatrix4D::TransformVec", [](double v) { MatrixWith(v).TransformVec(TPoint3D::Create(1, v, -v)); }},
      {"TMatrix4D::TransformPose", [](double v) { MatrixWith(v).TransformPose(TPoint6D::Create(v, 1, 0, 0, v, 1)); }},
      {"TMatrix4D::TransformLine",
       [](double v) {
         MatrixWith(v).TransformLine({TPoint3D::Create(v, 0, 1), TPoint3D::Create(0, v, 1)});
       }},
      {"TMatrix4D::TransformPts",
       [](double v) {
         std::vector<TPoint3D> points(9, TPoint3D::Create(v, 1, 0));
         MatrixWith(v).TransformPts(points, points);
       }},
      {"TMatrix4D::TransformVecs",
       [](double v) {
         std::vector<TPoint3D> vectors(9, TPoint3D::Create(v, 1, 0));
         MatrixWith(v).TransformVecs(vectors, vectors);
       }},
      {"TMatrix4D::TransformPoses",
       [](double v) {
         std::vector<TPoint6D> poses(9, PoseAt(v, 1));
         MatrixWith(v).TransformPoses(poses, poses);
       }},
      {"TMatrix4D::CreateFromEulerAngleXYZ",
       [](double v) { TMatrix4D().CreateFromEulerAngleXYZ(TPoint6D::Create(v, 0, 0, v, 1, v)); }},
      {"TMatrix4D::CreateFromEulerAngleZYX",
       [](double v) { TMatrix4D().CreateFromEulerAngleZYX(TPoint6D::Create(0, v, 0, 1, v, v)); }},
      {"TMatrix4D::Matrix4DToVecAng",
       [](double v) {
         double angle = 0.0;
         MatrixWith(v).Matrix4DToVecAng(TPoint3D::Create(0, 0, 1), angle);
       }},
      {"TMatrix4D::Matrix4DToVecAng, axis",
       [](double v) {
         double angle = 0.0;
         MatrixWith(1).Matrix4DToVecAng(TPoint3D::Create(v, 0, 1), angle);
       }},
      {"TMatrix4D::Matrix4DToVecAng, two axes",
       [](double v) {
         double one = 0.0, two = 0.0;
         MatrixWith(v).Matrix4DToVecAng(TPoint3D::Create(0, v, 1), TPoint3D::Create(1, 0, v), one, two);
       }},
      {"TMatrix4D::Determinant", [](double v) { MatrixWith(v).Determinant(); }},
      {"TMatrix4D::RoundTo", [](double v) { MatrixWith(v).RoundTo(-3); }},
      {"TMatrix4D::isOrthogonal", [](double v) { static_cast<void>(MatrixWith(v).isOrthogonal()); }},
      {"TMatrix4D text", [](double v) { MatrixWith(v).ToString(); }},
      {"QuaternionAngle",
       [](double v) { QuaternionAngle(TQuaternion::Create(v, 1, 0, 0), TQuaternion::Create(1, v, 0, 0)); }},
      {"NLerpQuaternion, t",
       [](double v) { NLerpQuaternion(v, TQuaternion::Create(1, 0, 0, 0), TQuaternion::Create(0, 1, 0, 0)); }},
      {"NLerpQuaternion",
       [](double v) { NLerpQuaternion(0.5, TQuaternion::Create(v, 0, 0, 1), TQuaternion::Create(0, v, 0, 1)); }},
      {"NLerpQuaternions",
       [](double v) {
         std::array<TQuaternion, 3> turns;
         NLerpQuaternions(std::array{0.0, v, 0.5}, TQuaternion::Create(1, 0, 0, v), TQuaternion::Create(0, 1, 0, 0),
                          turns);
       }},
      {"SLerpQuaternion",
       [](double v) { SLerpQuaternion(v, TQuaternion::Create(1, 0, v, 0), TQuaternion::Create(0, 1, 0, 0)); }},
      {"SLerpQuaternions",
       [](double v) {
         std::array<TQuaternion, 3> turns;
         SLerpQuaternions(std::array{0.0, v, 0.5}, TQuaternion::Create(1, 0, 0, 0), TQuaternion::Create(0, 1, v, 0),
                          turns);
       }},
      {"NLerp4DMatrix, t", [](double v) { NLerp4DMatrix(v, MatrixWith(1), MatrixWith(0.5)); }},
      {"NLerp4DMatrix", [](double v) { NLerp4DMatrix(0.5, MatrixWith(1), MatrixWith(v)); }},
      {"NLerp4DMatrices",
       [](double v) {
         std::array<TMatrix4D, 3> places;
         NLerp4DMatrices(std::array{0.0, v, 0.5}, MatrixWith(1), MatrixWith(v), places);
       }},
      {"SLerp4DMatrices",
       [](double v) {
         std::array<TMatrix4D, 3> places;
         SLerp4DMatrices(std::array{0.0, v, 0.5}, MatrixWith(v), MatrixWith(1), places);
       }},
      {"Squad4DMatrix, t",
       [](double v) { Squad4DMatrix(v, MatrixWith(1), MatrixWith(1), MatrixWith(1), MatrixWith(1)); }},
      {"Squad4DMatrix",
       [](double v) { Squad4DMatrix(0.5, MatrixWith(v), MatrixWith(1), MatrixWith(v), MatrixWith(0.5)); }},
      {"TQuaternion::CreateFromMatrix4D", [](double v) { TQuaternion().CreateFromMatrix4D(MatrixWith(v)); }},
      {"TQuaternion::ToMatrix4D", [](double v) { TQuaternion::Create(v, 1, -v, 0).ToMatrix4D(); }},
      {"TQuaternion / s", [](double v) { static_cast<void>(TQuaternion::Create(v, 0, 0, 1) / v); }},
      {"TQuaternion::Inverse", [](double v) { TQuaternion::Create(v, v, 0, 0).Inverse(); }},
  };
}

TNumberEntries CommonEntries() {
  return {
      {"SafeDiv", [](double v) { SafeDiv(1, v, v); }},
      {"SafeDivXD", [](double v) { SafeDivXD(v, v, 1e-12); }},
      {"SafeDivXD, tolerance", [](double v) { SafeDivXD(1, 1, v); }},
      {"ArcCos", [](double v) { ArcCos(v); }},
      {"DegToRad, RadToDeg", [](double v) { RadToDeg(DegToRad(v)); }},
      {"StrToFloat1033", [](double v) { StrToFloat1033(TextOf(v)); }},
      {"StrToFloat", [](double v) { StrToFloat(TextOf(v)); }},
      {"TryStrToFloat",
       [](double v) {
         double value = 0.0;
         TryStrToFloat(TextOf(v), nf1033, value);
       }},
      {"AppendFixed",
       [](double v) {
         std::string text;
         AppendFixed(text, v, 1074);
       }},
      {"TPoint2D::Normal", [](double v) { TPoint2D::Create(v, -v).Normal(); }},
      {"TPoint2D::AngleBetween", [](double v) { TPoint2D::Create(v, 1).AngleBetween(TPoint2D::Create(1, v)); }},
      {"TPoint2D / s", [](double v) { static_cast<void>(TPoint2D::Create(v, 1) / v); }},
      {"TPoint3D::Normal", [](double v) { TPoint3D::Create(v, 1, -v).Normal(); }},
      {"TPoint3D::AngleBetween", [](double v) { TPoint3D::Create(v, 1, 0).AngleBetween(TPoint3D::Create(1, v, 0)); }},
      {"TPoint3D::CrossMul", [](double v) { TPoint3D::Create(v, 1, 0).CrossMul(TPoint3D::Create(1, v, v)); }},
      {"TPoint3D::DistanceXY", [](double v) { TPoint3D::Create(v, 1, 0).DistanceXY(TPoint3D::Create(-v, v, v)); }},
      {"TPoint3D::IsZeroLength", [](double v) { static_cast<void>(TPoint3D::Create(v, 0, 0).IsZeroLength(v)); }},
      {"TMatrix2D::Transform",
       [](double v) { TMatrix2D::Create(v, 1, 0, v, -v, 1).Transform(TPoint2D::Create(v, 1)); }},
      {"TMatrix3D::Transform",
       [](double v) {
         TMatrix3D matrix = TMatrix3D::CreateIdent();
         matrix.fm[0][1] = matrix.fm[2][2] = v;
         matrix.Transform(TPoint3D::Create(v, 1, -v));
       }},
      {"fEqual", [](double v) { fEqual(1, v, v); }},
      {"FloatToStr", [](double v) { FloatToStr(v); }},
      {"Format1033", [](double v) { Format1033("%.3f", v); }},
      {"TMatrix3D::RotateBy", [](double v) { TMatrix3D::CreateIdent().RotateBy(v, TPoint3D::Create(v, 0, 1)); }},
      {"TNumeric::GaussQuadrature",
       [](double v) { TNumeric::GaussQuadrature([](double x) { return x; }, TGeInterval::Create(0, v, 1e-6), 14); }},
  };
}

TEST(BadNumbers, OfPosesAndRotationsGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("poses and rotations", PoseEntries(), kBadNumbers);
}
TEST(BadNumbers, OfTheBaseGiveAResultOrTheGeneralErrorInLittleMemory) {
  ExpectAnAnswer("base", CommonEntries(), kBadNumbers);
}

}  // namespace
}  // namespace ZORBase::Test
