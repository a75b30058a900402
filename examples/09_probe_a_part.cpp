// Probing a part: how its top face is tilted, and where a bore is, from points that a probe has touched.
//
//   FitPlaneUsingSvd    the plane closest to points in space
//   MatrixDivUsingSvd   unknowns from more equations than there need be
#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <ZORBase/common/BaseServices.h>

#include <array>
#include <cmath>
#include <iostream>
#include <numbers>

using namespace ZORBase;

namespace {

constexpr double kDegree = std::numbers::pi / 180;  // in radians

// A x + B y + C z + D = 0, with a normal that points up.
void ShowFace(const TDoubleList& points) {
  double a = 0, b = 0, c = 0, d = 0;
  FitPlaneUsingSvd(&points, a, b, c, d);
  const double up = c < 0 ? -1.0 : 1.0;
  double farthest = 0;
  for (int i = 0; i < points.Count(); i += 3) {
    farthest = std::fmax(farthest, std::fabs(a * points[i] + b * points[i + 1] + c * points[i + 2] + d));
  }
  std::cout << Format1033("The face: normal %.5f, %.5f, %.5f, tilted by %.3f degrees, flat within %.3f mm\n", up * a,
                          up * b, up * c, std::acos(up * c) / kDegree, farthest);
}

// The circle x^2 + y^2 = p x + q y + r: one equation for each point, linear in p, q and r.
void ShowBore(const TDoubleList& points) {
  TDoubleList matrix;
  TDoubleList squares;
  for (int i = 0; i < points.Count(); i += 2) {
    const double x = points[i], y = points[i + 1];
    for (const double entry : {x, y, 1.0}) matrix.Add(entry);
    squares.Add(x * x + y * y);
  }
  TDoubleList unknowns;
  MatrixDivUsingSvd(&matrix, &squares, squares.Count(), 3, &unknowns, true);
  const double x = unknowns[0] / 2, y = unknowns[1] / 2;
  std::cout << Format1033("The bore: centre %.3f, %.3f, diameter %.3f\n", x, y,
                          2 * std::sqrt(unknowns[2] + x * x + y * y));
}

}  // namespace

int main() {
  // In mm. The face rises by 0.2 per 100 in x and falls by 0.1 per 100 in y; the probe is good to a few micrometres.
  ShowFace({0,      0,   40.001, 100,    0, 40.199, 200,    0,   40.402, 0,      50,  39.948, 100,   50,
            40.151, 200, 50,     40.350, 0, 80,     39.921, 100, 80,     40.119, 200, 80,     40.322});
  // A bore of 30 about (120, 45), touched at seven places.
  ShowBore({135.002, 45, 130.606, 55.607, 120, 60.003, 109.394, 55.604, 105, 44.998, 109.395, 34.392, 120.001, 29.999});
}
