// The snippets of the page about poses and transforms.
#include <ZORBase/ZORBase.h>

#include <iostream>

using namespace ZORBase;

namespace {

void Poses() {
  //! [pose]
  TPoint6D pose = TPoint6D::Create(3, 4, 0, 0, 0, 2);   // at (3, 4, 0), along +Z, not a unit vector
  std::cout << Format1033("length %.4f, ", pose.Mag())  // over all six: sqrt(9 + 16 + 4)
            << pose.VecNormal().ToString1033(2) << "  " << pose.Normal().ToString1033(2) << "\n";
  //! [pose]

  //! [equal]
  const TPoint6D near = pose + TPoint6D::Create(9e-7, 0, 0, 0, 0, 0);
  const TPoint6D far = pose + TPoint6D::Create(1.1e-6, 0, 0, 0, 0, 0);
  std::cout << (pose == near ? "equal" : "different") << ", " << (pose == far ? "equal" : "different") << "\n";
  //! [equal]

  //! [text]
  std::cout << TPoint6D::Parse1033("1, 2.5 3 \"0\" 0,1").ToString1033(3) << "\n";
  //! [text]
}

void Transforms() {
  //! [order]
  TMatrix4D turn = TMatrix4D::Create(TPoint3D::Create(0, 0, 1), DegToRad(90));
  TMatrix4D shift = TMatrix4D::ReturnIdentityMatrix();
  shift.Translate(10, 0, 0);
  const TPoint6D pose = TPoint6D::Create(1, 0, 0, 1, 0, 0);
  std::cout << (shift * turn).TransformPose(pose).ToString1033(0) << "   turned, then shifted\n"
            << (turn * shift).TransformPose(pose).ToString1033(0) << "   shifted, then turned\n";
  //! [order]

  //! [angles]
  const TPoint6D frame = TPoint6D::Create(0, 0, 0, DegToRad(90), 0, DegToRad(90));
  TMatrix4D xyz;
  TMatrix4D zyx;
  xyz.CreateFromEulerAngleXYZ(frame);
  zyx.CreateFromEulerAngleZYX(frame);
  const TPoint6D tool = TPoint6D::Create(0, 0, 0, 0, 0, 1);
  std::cout << "XYZ " << xyz.TransformPose(tool).ToString1033(0) << "   ZYX " << zyx.TransformPose(tool).ToString1033(0)
            << "\n";
  //! [angles]
}

}  // namespace

int main() {
  Poses();
  Transforms();
}
