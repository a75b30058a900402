// Every error text of the page about errors, as it comes out.
#include <ZORBase/ZORBase.h>

#include <cmath>
#include <functional>
#include <iostream>
#include <limits>
#include <string>

using namespace ZORBase;

namespace {

void Show(const std::string& Title, const std::function<void()>& Work) {
  try {
    Work();
    std::cout << Title << ": no error\n";
  } catch (const TGeneralError& Error) {
    std::string text = Error.what();
    for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos;) text.replace(at, 2, " | ");
    std::cout << Title << ":\n  " << text << "\n";
  }
}

void Fit(const TPoint6DList& Poses) {
  TNurbs6D curve;
  curve.CreateCross(&Poses, mChord);
}

TPoint6DList Line(std::initializer_list<double> Places) {
  TPoint6DList poses;
  for (const double x : Places) poses.Add(x, 0, 0);
  return poses;
}

void Files() {
  Show("A file that is not there", [] { TPoint6DList().LoadFromFile("data/none.txt"); });
  Show("A line with five numbers", [] { TPoint6D::Parse1033("1,2,3,4,5"); });
  Show("A line with a word", [] { TPoint6D::Parse1033("1,2,three,4,5,6"); });
  Show("A folder that is not there", [] { Line({0, 1}).SaveToFile("no/such/folder/part.txt", 3); });
}

void Curves() {
  Show("Two equal neighbours", [] { Fit(Line({0, 1, 1, 2, 3})); });
  Show("Neighbours too close for the path", [] { Fit(Line({0, 1, 1.00001, 1000, 2000})); });
  Show("A pose that is no number", [] { Fit(Line({0, 1, std::nan(""), 3})); });
  Show("A path too long for its unit", [] { Fit(Line({0, 1e6, 2e6, 3e6, 4e6})); });
  Show("A curve without points", [] { TNurbs6D().EvalPoint(0.5); });
  Show("A curve without a table", [] { TNurbs6D().CurveLength(); });
}

void Algebra() {
  Show("An index too far", [] { Line({0, 1})[2]; });
  Show("A matrix without an inverse", [] { TMatrix4D::ReturnZeroMatrix().Invert(); });
  Show("Vectors of different length", [] { TMatrix4D::Create(TPoint3D::Create(1, 0, 0), TPoint3D::Create(0, 2, 0)); });
  Show("A cosine above 1", [] { ArcCos(1.0 + 1e-15); });
  Show("A quaternion without length", [] { TQuaternion::ReturnQuaternionZero().Inverse(); });
  Show("A quaternion without direction", [] { TQuaternion::ReturnQuaternionZero().Log(); });
  Show("Axes that are not perpendicular",
       [] { TEulerAng::CreatebyXYVec(TPoint3D::Create(1, 0, 0), TPoint3D::Create(1, 1, 0)); });
  Show("Another class", [] { TNurbs6D().Assign(TNurbs2D()); });
}

void Signals() {
  Show("A spectrum of nothing", [] { TFFT().CalFFT({}, 0, 0.1); });
  Show("A bin that is not there", [] { TFFT().getAmp(0); });
  Show("A filter before Initialize", [] { THammingLowPassFilter().Filt(1.0); });
  Show("Samples of equal x", [] {
    THermiteInterpolater table;
    table.BeginCurve(false);
    for (const double x : {0.0, 0.0, 0.0}) table.AddPoint(x, x);
    table.CalcY(0.0);
    table.AddPoint(1.0, 1.0);
    table.CalcY(0.5);
  });
}

TDoubleList Zeros(int Count) {
  TDoubleList numbers;
  for (int i = 0; i < Count; ++i) numbers.Add(0.0);
  return numbers;
}

void Solve(int MatrixCount, int M, int N) {
  const TDoubleList matrix = Zeros(MatrixCount);
  const TDoubleList right = Zeros(M);
  TDoubleList x;
  MatrixDivUsingSvd(&matrix, &right, M, N, &x, true);
}

void FitPlane(const TDoubleList* Points) {
  TDoubleList plane;
  FitPlaneUsingSvd(Points, &plane);
}

void Solvers() {
  Show("Numbers that make no matrix", [] { Solve(5, 2, 3); });
  Show("Numbers that make no points", [] {
    const TDoubleList points = Zeros(7);
    FitPlane(&points);
  });
  Show("A list that is not there", [] { FitPlane(nullptr); });
  Show("More unknowns than equations", [] { TNewtonIteratorPro(3, 2, {}); });
  Show("Tolerances of another number", [] { TNewtonIteratorPro(2, 2, {}).SetConvergeTor(Zeros(3)); });
}

// The surface through one height above each of the places.
TV4Interpolator SurfaceAbove(std::initializer_list<double> Places) {
  TV4Interpolator surface;
  for (const double x : Places) surface.AddPoint(x, 0, 0);
  surface.CalcWeights();
  return surface;
}

void Surfaces() {
  Show("A finished surface", [] { SurfaceAbove({0, 1, 2}).AddPoint(3, 0, 0); });
  Show("Two heights above one place", [] { SurfaceAbove({0, 1, 1}); });
  Show("A surface of too many samples", [] {
    TV4Interpolator surface;
    for (int i = 0; i < 11586; ++i) surface.AddPoint(i, 0, 0);
    surface.CalcWeights();
  });
}

}  // namespace

int main() {
  Files();
  Curves();
  Algebra();
  Signals();
  Solvers();
  Surfaces();
}
