// The snippets of the page about solvers and fits.
#include <ZORBase/ZORBase.h>

#include <cmath>
#include <iostream>
#include <string>

using namespace ZORBase;

namespace {

void LeastSquares() {
  //! [line]
  // y = a + b x through (0, 1.0), (1, 2.9), (2, 5.1) and (3, 7.0): four equations for two unknowns.
  const TDoubleList matrix = {1, 0, 1, 1, 1, 2, 1, 3};  // row after row
  const TDoubleList heights = {1.0, 2.9, 5.1, 7.0};
  TDoubleList line;
  MatrixDivUsingSvd(&matrix, &heights, 4, 2, &line, true);
  std::cout << Format1033("a = %.3f, b = %.3f\n", line[0], line[1]);
  //! [line]
}

void NoCutOff() {
  //! [dependent]
  const auto solve = [](double Last) {
    const TDoubleList matrix = {1, 1, 0, Last};
    const TDoubleList right = {2, 1e-9};
    TDoubleList x;
    MatrixDivUsingSvd(&matrix, &right, 2, 2, &x, true);
    return Format1033("(%.3f, %.3f)", x[0], x[1]);
  };
  std::cout << "second row (0, 0): " << solve(0.0) << ", and (0, 1e-12): " << solve(1e-12) << "\n";
  //! [dependent]
}

void Plane() {
  //! [plane]
  // Five places of a table, probed to a hundredth of a millimetre.
  const TDoubleList probed = {0, 0, 0.00, 100, 0, 0.01, 0, 60, -0.01, 100, 60, 0.02, 50, 30, 0.01};
  double a = 0.0, b = 0.0, c = 0.0, d = 0.0, ratio = 0.0;
  FitPlaneUsingSvd(&probed, a, b, c, d, ratio);
  std::cout << Format1033("tilted by %.4f degrees, %.0f times wider than high\n",
                          RadToDeg(std::atan2(std::hypot(a, b), std::fabs(c))), ratio);
  //! [plane]
}

//! [equations]
// Where the circle of radius 2 meets the parabola y = x^2.
TDoubleList Misses(const TDoubleList& X) { return {X[0] * X[0] + X[1] * X[1] - 4, X[1] - X[0] * X[0]}; }

// The derivatives with respect to x and y: of the first equation, then of the second.
TDoubleList Slopes(const TDoubleList& X) { return {2 * X[0], 2 * X[1], -2 * X[0], 1}; }
//! [equations]

void Newton() {
  //! [newton]
  TNewtonIterator exact(2, 2, Misses, Slopes, true);
  TNewtonIteratorPro differences(2, 2, Misses);
  for (TNewtonIterator* const iterator : {&exact, static_cast<TNewtonIterator*>(&differences)}) {
    iterator->SetConvergeTor(1e-9);
    TDoubleList x = {1, 1};  // a rough guess
    if (!iterator->CalcParam(&x)) return;
    std::cout << Format1033("(%.9f, %.9f)\n", x[0], x[1]);
  }
  //! [newton]
}

void NoSolution() {
  //! [no solution]
  // x^2 + 1 has no zero, yet the last step counts as a success.
  TNewtonIteratorPro iterator(1, 1, [](const TDoubleList& X) { return TDoubleList{X[0] * X[0] + 1}; });
  bool isConverged = true;
  iterator.SetLogger([&](const std::string& Line) { isConverged = isConverged && !Line.starts_with("CheckErr"); });
  TDoubleList x = {3};
  const bool isSolved = iterator.CalcParam(&x);
  std::cout << (isSolved ? "a result" : "no result") << ", " << (isConverged ? "converged" : "not converged") << "\n";
  //! [no solution]
}

}  // namespace

int main() {
  LeastSquares();
  NoCutOff();
  Plane();
  Newton();
  NoSolution();
}
