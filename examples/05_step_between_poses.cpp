// Steps a tool from one pose to another, and shows what goes wrong when its Euler angles are stepped instead.
#include <ZORBase/ZORBaseAlg/uWcsPtInterpolator.h>
#include <ZORBase/ZORGeometry/CADTypes6D.h>
#include <ZORBase/ZORGeometry/CADTypesEuler.h>

#include <iostream>

using namespace ZORBase;

namespace {

constexpr int kShortTurn = 0;
constexpr int kAvoidLowestZ = 1;

void Print(const TWcsPtInterpolator& Move) {
  for (int i = 0; i <= Move.Count(); ++i) std::cout << "  " << Move.GetWcsPt(i).ToString1033(3) << "\n";
}

// A step of X,Y,Z and the direction A,B,C: both move evenly.
void StepTheDirection() {
  const TWcsPtInterpolator move(TPoint6D::Create(0, 0, 50, 0, 0, 1), TPoint6D::Create(100, 0, 50, 1, 0, 0), 4,
                                kShortTurn);
  std::cout << "From upright to level in 4 steps\n";
  Print(move);

  // A count below 0 makes steps of at most 0.2 in length and 0.1 degree of turn.
  TWcsPtInterpolator fine = move;
  fine.SetCount(-1);
  std::cout << "In fine steps: " << fine.Count() << "\n\n";
}

// Both ends point 45 degrees downwards, on opposite sides: the short turn passes through straight down. Mode 1 goes over
// the top instead, 270 degrees the other way.
void StepOverTheTop() {
  const TPoint6D begin = TPoint6D::Create(0, 0, 0, 1, 0, -1).VecNormal();
  const TPoint6D end = TPoint6D::Create(0, 0, 0, -1, 0, -1).VecNormal();
  std::cout << "The short turn, through the lowest Z\n";
  Print({begin, end, 3, kShortTurn});
  std::cout << "The turn of mode 1, over the top\n";
  Print({begin, end, 3, kAvoidLowestZ});
  std::cout << "\n";
}

// A tool tilted by 30 degrees is swung about Z from 170 to -170 degrees. The ends are 20 degrees of swing apart, but the
// angles are 340 apart, and they are stepped as they stand: through 0, where the tool leans the opposite way.
void StepTheAngles() {
  const auto begin = TEulerPoint::Create(TPoint3D::FZero, TEulerAng::CreatebyDegree(0, 30, 170));
  const auto end = TEulerPoint::Create(TPoint3D::FZero, TEulerAng::CreatebyDegree(0, 30, -170));
  const TEulerPtInterpolator byAngles(begin, end, 4);
  std::cout << "From 170 to -170 degrees by angles: the long way round\n";
  for (int i = 0; i <= byAngles.Count(); ++i) {
    const TEulerPoint pose = byAngles.GetWcsPt(i);
    std::cout << "  Rz " << Format1033("%.0f", RadToDeg(pose.Rz)) << ": " << pose.ToPoint6D().ToString1033(3) << "\n";
  }

  std::cout << "The same ends by direction: the short way\n";
  Print({begin.ToPoint6D(), end.ToPoint6D(), 3, kShortTurn});
}

}  // namespace

int main() {
  StepTheDirection();
  StepOverTheTop();
  StepTheAngles();
}
