// Blending poses: a tool head travels from one pose to another and turns on the way.
//
//   SLerp4DMatrix   turns at constant speed
//   NLerp4DMatrix   goes the same way, a little slower at the ends and faster in the middle, for less work
//   MatrixAngle     how far two poses are turned against each other
#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <ZORBase/common/BaseServices.h>

#include <array>
#include <iostream>
#include <numbers>

using namespace ZORBase;

namespace {

constexpr double kDegree = std::numbers::pi / 180;  // in radians

// The head at a place in mm, tilted about Y and swung round about Z.
TMatrix4D Head(const TPoint3D& place, double tiltDeg, double swingDeg) {
  TMatrix4D table_T_head;
  table_T_head.CreateFromEulerAngleZYX(
      TPoint6D::Create(place, TPoint3D::Create(0, tiltDeg * kDegree, swingDeg * kDegree)));
  return table_T_head;
}

// The tool tip and the direction of the tool, which is the head's Z axis.
TPoint6D ToolPose(const TMatrix4D& table_T_head) {
  return TPoint6D::Create(table_T_head.GetTranslationPt(), table_T_head.GetColVector(2));
}

}  // namespace

int main() {
  const TMatrix4D begin = Head(TPoint3D::Create(0, 0, 50), 10, 0);
  const TMatrix4D end = Head(TPoint3D::Create(120, 40, 80), 55, 130);

  // Five poses at once; each is what SLerp4DMatrix gives at that t.
  constexpr std::array t = {0.0, 0.25, 0.5, 0.75, 1.0};
  std::array<TMatrix4D, t.size()> steady;
  std::array<TMatrix4D, t.size()> quick;
  SLerp4DMatrices(t, begin, end, steady);
  NLerp4DMatrices(t, begin, end, quick);

  std::cout << "t      tool tip in mm and direction             turned by SLerp, NLerp\n";
  for (std::size_t i = 0; i < t.size(); ++i) {
    std::cout << Format1033("%.2f   %s   %.2f, %.2f\n", t[i], ToolPose(steady[i]).ToString1033(3),
                            MatrixAngle(begin, steady[i]) / kDegree, MatrixAngle(begin, quick[i]) / kDegree);
  }

  // Blends go the short way round: from 170 to -170 degrees is 20 degrees, through 180 and not through 0.
  const TMatrix4D before = Head({}, 0, 170);
  const TMatrix4D after = Head({}, 0, -170);
  const TMatrix4D between = SLerp4DMatrix(0.25, before, after);
  std::cout << Format1033("\nfrom 170 to -170 degrees: %.1f degrees, a quarter of the way at %.1f\n",
                          MatrixAngle(before, after) / kDegree, between.Matrix4DToEulerAngleZYX().C / kDegree);
}
