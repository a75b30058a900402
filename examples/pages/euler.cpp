// The snippets of the page about Euler poses.
#include <ZORBase/ZORBase.h>

#include <iostream>

using namespace ZORBase;

int main() {
  //! [direction]
  const TEulerAng tilted = TEulerAng::CreatebyDegree(0, 30, 90);  // 30 degrees about y, then 90 about the fixed z
  const TPoint3D tool = tilted.ToVector();
  std::cout << Format1033("%.3f %.3f %.3f\n", tool.X, tool.Y, tool.Z);
  //! [direction]

  //! [lost]
  const TPoint6D pose = TEulerPoint::Create(TPoint3D::Create(1, 2, 3), tilted).ToPoint6D();
  const TPoint6D turned =
      TEulerPoint::Create(TPoint3D::Create(1, 2, 3), TEulerAng::CreatebyDegree(-30, 0, 0)).ToPoint6D();
  std::cout << pose.ToString1033(3) << "   " << turned.ToString1033(3) << "\n";
  //! [lost]

  //! [axes]
  const TEulerAng found = TEulerAng::CreatebyXYVec(TPoint3D::Create(0, 2, 0), TPoint3D::Create(-5, 0, 0));
  std::cout << found.ToStringDeg(1) << "\n";
  //! [axes]
}
