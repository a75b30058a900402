// The snippets of the page about quaternions and blends.
#include <ZORBase/ZORBase.h>

#include <cmath>
#include <iostream>
#include <string>

using namespace ZORBase;

namespace {

//! [about]
// The rotation by Angle radians about Axis.
TQuaternion About(const TPoint3D& Axis, double Angle) {
  TQuaternion q;
  q.Exp(Axis.Normal() * (Angle / 2));
  return q;
}
//! [about]

std::string Text(const TQuaternion& q) { return Format1033("(%.3f, %.3f, %.3f, %.3f)", q.a, q.b, q.c, q.d); }

void Products() {
  //! [product]
  const TQuaternion z90 = About(TPoint3D::Create(0, 0, 1), DegToRad(90));
  const TQuaternion x90 = About(TPoint3D::Create(1, 0, 0), DegToRad(90));
  const TPoint3D y = TPoint3D::Create(0, 1, 0);
  const TPoint3D z = TPoint3D::Create(0, 0, 1);
  const TPoint3D moved = (z90 * x90).ToMatrix4D().TransformPt(y);  // x90 first: y to z; then z90: z stays
  std::cout << Text(z90) << " " << Text(z90 * x90)
            << Format1033(", %.1f degrees from z\n", RadToDeg(moved.AngleBetween(z)));
  //! [product]

  //! [sign]
  std::cout << (z90 == -z90 ? "equal" : "different") << " numbers, "
            << (z90.ToMatrix4D() == (-z90).ToMatrix4D() ? "equal" : "different") << " rotations\n";
  //! [sign]

  //! [log]
  const TPoint3D half = z90.Log();  // the axis times half the angle
  std::cout << Format1033("log (%.4f, %.4f, %.4f)\n", half.X, half.Y, half.Z);
  //! [log]
}

void Blends() {
  //! [blends]
  const TQuaternion begin = About(TPoint3D::Create(0, 0, 1), 0.0);
  const TQuaternion end = About(TPoint3D::Create(0, 0, 1), DegToRad(120));
  for (const double t : {0.0, 0.25, 0.5, 1.0}) {
    const double steady = 2 * QuaternionAngle(begin, SLerpQuaternion(t, begin, end));
    const double quick = 2 * QuaternionAngle(begin, NLerpQuaternion(t, begin, end));
    std::cout << Format1033("t %.2f: SLerp %.2f, NLerp %.2f degrees\n", t, RadToDeg(steady), RadToDeg(quick));
  }
  //! [blends]
}

}  // namespace

int main() {
  Products();
  Blends();
}
