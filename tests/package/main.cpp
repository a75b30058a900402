#include <ZORBase/ZORBase.h>

#include <iostream>

int main() {
  const ZORBase::TPackageSession session;  // starts the library, and shuts it down at the end

  ZORBase::TPoint6DList poses;
  poses.LoadFromFile("part.txt");

  ZORBase::TNurbs6D curve;
  if (!curve.CreateCross(&poses, ZORBase::mChord)) return 1;  // fewer than four poses
  const ZORBase::TPoint6D halfWay = curve.EvalPoint(curve.ParamOfLength(curve.CurveLength() / 2));
  std::cout << halfWay.ToString1033(3) << "\n";
}
