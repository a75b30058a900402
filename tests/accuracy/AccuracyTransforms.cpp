#include <array>
#include <cmath>
#include <numbers>

#include "Subjects.h"

namespace ZORBase::Test {
namespace {

void MeasureTurns(const TMeasurement& Measurement) {
  const auto rotated = [](TCase C) {
    TMatrix3D matrix = TMatrix3D::CreateIdent();
    matrix.RotateBy(C.In[3], SpacePointIn(C.In, 0));
    return matrix;
  };
  const auto plane = [](TCase C) { return TMatrix2D::Create(C.In[0], C.In[1], C.In[2], C.In[3], C.In[4], C.In[5]); };
  Measurement.Compare("TMatrix2D, Transform", TMeasure::Eps, 1.5,
                      [=](TCase C) { return Components(plane(C).Transform(PointIn(C.In, 6))); });
  Measurement.CompareAs("TNurbs2D, TransformBy", "TMatrix2D, Transform", TMeasure::Eps, 1.5, [=](TCase C) {
    const std::array<TPoint2D, 4> points = {PointIn(C.In, 6)};
    TNurbs2D curve;
    curve.CreateByCtlPoints(std::array{0.0, 0.0, 0.0, 0.0, 1.0, 1.0, 1.0, 1.0}, points, 4);
    curve.TransformBy(plane(C));
    return Components(curve.pointArr()[0]);
  });
  Measurement.Compare("TMatrix3D, RotateBy", TMeasure::Eps, 4.0, [=](TCase C) { return Components(rotated(C)); });
  Measurement.Compare("TMatrix3D, RotateBy and Transform", TMeasure::Eps, 4.0,
                      [=](TCase C) { return Components(rotated(C).Transform(SpacePointIn(C.In, 4))); });
  Measurement.Compare("TMatrix3D, RotateBy, three turns", TMeasure::Eps, 8.0, [](TCase C) {
    TMatrix3D matrix = TMatrix3D::CreateIdent();
    for (std::size_t i = 0; i < C.In.size(); i += 4) matrix.RotateBy(C.In[i + 3], SpacePointIn(C.In, i));
    return Components(matrix);
  });
  Measurement.Compare("TMatrix4D, about an axis", TMeasure::Eps, 4.0,
                      [](TCase C) { return Rotation(TMatrix4D::Create(SpacePointIn(C.In, 0), C.In[3])); });
  Measurement.Compare("TMatrix4D, from vector to vector", TMeasure::Eps, 8.0, [](TCase C) {
    return Rotation(TMatrix4D::Create(SpacePointIn(C.In, 0), SpacePointIn(C.In, 3)));
  });
}

void MeasureCompositions(const TMeasurement& Measurement) {
  const auto product = [](TCase C) { return MatrixIn(C.In, 0) * MatrixIn(C.In, 12); };
  const auto inverse = [](TCase C) {
    TMatrix4D matrix = MatrixIn(C.In, 0);
    matrix.Invert();
    return matrix;
  };
  Measurement.Compare("TMatrix4D, product, rotation", TMeasure::Eps, 1.0,
                      [=](TCase C) { return Rotation(product(C)); });
  Measurement.Compare("TMatrix4D, product, translation", TMeasure::Eps, 2.0,
                      [=](TCase C) { return Components(product(C).GetTranslationPt()); });
  Measurement.Compare(
      "TMatrix4D, Invert, rotation", TMeasure::Eps, 0.0, [=](TCase C) { return Rotation(inverse(C)); },
      "the transpose, exactly");
  Measurement.Compare("TMatrix4D, Invert, translation", TMeasure::Eps, 2.0,
                      [=](TCase C) { return Components(inverse(C).GetTranslationPt()); });
  Measurement.Compare(
      "TMatrix4D, Invert, any matrix", TMeasure::Eps, 0.6, [=](TCase C) { return Rotation(inverse(C)); },
      "scale: the inverse times the condition");
  Measurement.Compare(
      "TMatrix4D, Invert, any matrix, translation", TMeasure::Eps, 0.6,
      [=](TCase C) { return Components(inverse(C).GetTranslationPt()); },
      "scale: the inverse times the condition and the translation");
  Measurement.Compare("TMatrix4D, Determinant", TMeasure::Eps, 3.0,
                      [](TCase C) { return std::vector{MatrixIn(C.In, 0).Determinant()}; });
  Measurement.Compare("TMatrix4D, TransformPt", TMeasure::Eps, 2.0,
                      [](TCase C) { return Components(MatrixIn(C.In, 0).TransformPt(SpacePointIn(C.In, 12))); });
  Measurement.Compare("TMatrix4D, TransformVec", TMeasure::Eps, 2.0,
                      [](TCase C) { return Components(MatrixIn(C.In, 0).TransformVec(SpacePointIn(C.In, 12))); });
  Measurement.Compare("TMatrix4D, TransformPose", TMeasure::Eps, 2.0,
                      [](TCase C) { return Components(MatrixIn(C.In, 0).TransformPose(PoseIn(C.In, 12))); });
  Measurement.Compare("TMatrix4D, TransformLine", TMeasure::Eps, 2.0, [](TCase C) {
    return Components(MatrixIn(C.In, 0).TransformLine({SpacePointIn(C.In, 12), SpacePointIn(C.In, 15)}));
  });
  Measurement.Compare("TMatrix4D, P * M", TMeasure::Eps, 2.0,
                      [](TCase C) { return Components(SpacePointIn(C.In, 12) * MatrixIn(C.In, 0)); });
}

void MeasureEntries(const TMeasurement& Measurement) {
  Measurement.Compare("TMatrix4D, Translate", TMeasure::Ulp, kRoundedOnce, [](TCase C) {
    TMatrix4D matrix = MatrixIn(C.In, 0);
    matrix.Translate(SpacePointIn(C.In, 12));
    return Components(matrix.GetTranslationPt());
  });
  Measurement.Compare("TMatrix4D, RoundTo", TMeasure::Ulp, kRoundedOnce,
                      [](TCase C) { return Components(MatrixIn(C.In, 1).RoundTo(static_cast<int>(C.In[0]))); });
}

// The angles A, B, C of a result.
std::vector<double> Angles(const TPoint6D& Pose) { return Components(Pose.GetVector()); }

// Whole turns more or less are the same angle.
std::vector<double> WithTurnsOf(TCase Case, std::vector<double> Results) {
  constexpr double turn = 2.0 * std::numbers::pi;
  for (std::size_t i = 0; i < Results.size(); ++i) {
    const double turns = std::round((Results[i] - Case.Out[i].Nearest) / turn);
    if (turns != 0.0) Results[i] -= turns * turn;
  }
  return Results;
}

void MeasureEulerAngles(const TMeasurement& Measurement) {
  Measurement.Compare("TMatrix4D, from Euler angles XYZ", TMeasure::Eps, 3.0, [](TCase C) {
    TMatrix4D matrix;
    matrix.CreateFromEulerAngleXYZ(TPoint6D::Create({}, SpacePointIn(C.In, 0)));
    return Rotation(matrix);
  });
  Measurement.Compare("TMatrix4D, from Euler angles ZYX", TMeasure::Eps, 3.0, [](TCase C) {
    TMatrix4D matrix;
    matrix.CreateFromEulerAngleZYX(TPoint6D::Create({}, SpacePointIn(C.In, 0)));
    return Rotation(matrix);
  });
  const std::string remark = "the rounding of the given entries included; the middle angle within 1.4";
  Measurement.Compare(
      "TMatrix4D, to Euler angles XYZ", TMeasure::Eps, 3.0,
      [](TCase C) { return Angles(MatrixIn(C.In, 0).Matrix4DToEulerAngleXYZ()); }, remark);
  Measurement.Compare(
      "TMatrix4D, to Euler angles ZYX", TMeasure::Eps, 3.0,
      [](TCase C) { return Angles(MatrixIn(C.In, 0).Matrix4DToEulerAngleZYX()); }, remark);
  Measurement.Compare(
      "TEulerAng, CreatebyXYVec", TMeasure::Eps, 3.0,
      [](TCase C) {
        const TEulerAng angles = TEulerAng::CreatebyXYVec(SpacePointIn(C.In, 0), SpacePointIn(C.In, 3));
        return std::vector{angles.Rx, angles.Ry, angles.Rz};
      },
      remark);
  Measurement.Compare("TEulerAng, ToVector", TMeasure::Eps, 3.0,
                      [](TCase C) { return Components(TEulerAng::Create(C.In[0], C.In[1], C.In[2]).ToVector()); });
  const auto pose = [](TCase C) { return TEulerPoint::Create(1.0, 2.0, 3.0, C.In[0], C.In[1], C.In[2]); };
  Measurement.CompareAll("TEulerPoint, ToPoint6D and GetVector", "TEulerAng, ToVector", TMeasure::Eps, 3.0,
                         {[=](TCase C) { return Components(pose(C).ToPoint6D().GetVector()); },
                          [=](TCase C) { return Components(pose(C).GetVector()); }});
}

void MeasureAnglesAboutAxes(const TMeasurement& Measurement) {
  Measurement.Compare(
      "TMatrix4D, angle about an axis", TMeasure::Eps, 6.0,
      [](TCase C) {
        double angle = 0.0;
        MatrixIn(C.In, 0).Matrix4DToVecAng(SpacePointIn(C.In, 12), angle);
        return WithTurnsOf(C, {angle});
      },
      "the rounding of the given entries included");
  Measurement.Compare(
      "TMatrix4D, angles about two axes", TMeasure::Eps, 10.0,
      [](TCase C) {
        double first = 0.0;
        double second = 0.0;
        MatrixIn(C.In, 0).Matrix4DToVecAng(SpacePointIn(C.In, 12), SpacePointIn(C.In, 15), first, second);
        return WithTurnsOf(C, {first, second});
      },
      "axes with a sine of 0.3 between them, or more, which is divided by twice");
}

}  // namespace

void MeasureTransforms(const TMeasurement& Measurement) {
  Measurement.Table.Subject("Transforms");
  MeasureTurns(Measurement);
  MeasureCompositions(Measurement);
  MeasureEntries(Measurement);
  MeasureEulerAngles(Measurement);
  MeasureAnglesAboutAxes(Measurement);
}

}  // namespace ZORBase::Test
