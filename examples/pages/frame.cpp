// The snippets of the page about the library's frame.
#include <ZORBase/ZORBase.h>

#include <cmath>
#include <iostream>
#include <string>

using namespace ZORBase;

namespace {

void Log() {
  //! [log]
  ZORLog()->SetSink(
      [](std::string_view Category, std::string_view Message) { std::cout << Category << ": " << Message << "\n"; });
  SetZORLogEnable(true);
  ZORLog()->Send("the head is warm");
  //! [log]
  SetZORLogEnable(false);
  ZORLog()->SetSink({});
}

void Catch() {
  //! [catch]
  try {
    TPoint6D::Parse1033("1,2,3,4,5");
  } catch (const TGeneralError& Error) {
    std::cout << Error.what() << "\n";
  }
  //! [catch]
}

void Divide() {
  //! [divide]
  std::cout << Format1033("%.2f %.2f %.2f\n", SafeDiv(1.0, 4.0, 1e-6), SafeDiv(-2.0, 0.0, 1e-6),
                          SafeDiv(0.0, 0.0, 1e-6));
  //! [divide]
}

void Integrate() {
  //! [integrate]
  const auto sine = [](double X) { return std::sin(X); };
  const TGeInterval halfTurn = TGeInterval::Create(0.0, DegToRad(180.0), 0.0);
  for (const int points : {2, 4, 6}) {
    std::cout << Format1033("%d points: %.10f\n", points, TNumeric::GaussQuadrature(sine, halfTurn, points));
  }
  //! [integrate]
}

}  // namespace

int main() {
  //! [session]
  const TPackageSession session;  // until the end of this scope
  //! [session]
  Log();
  Catch();
  Divide();
  Integrate();
}
