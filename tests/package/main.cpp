#include <ZORBase/ZORBase.h>

// Ends with 0 when a straight path of 30 fitted by the installed library is 30 long.
int main() {
  const ZORBase::TPackageSession session;
  ZORBase::TPoint6DList poses;
  for (int i = 0; i < 4; ++i) poses.Add(10.0 * i, 0.0, 0.0);
  ZORBase::TNurbs6D line;
  return line.CreateCross(&poses, ZORBase::mChord) && ZORBase::fEqual(line.CurveLength(), 30.0, 1e-9) ? 0 : 1;
}
