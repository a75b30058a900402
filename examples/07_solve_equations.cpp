// Finds the centre and the radius of a bore from points that a probe touched: more equations than unknowns, solved by Newton
// steps, and the log of the steps.
#include <ZORBase/ZORBaseAlg/uNewtonIterator.h>
#include <ZORBase/common/BaseServices.h>
#include <ZORBase/common/Cadtypes.h>

#include <iostream>
#include <vector>

using namespace ZORBase;

int main() {
  // Six points on the wall of a bore of radius 12 around (40, 25), each measured to a hundredth.
  const std::vector<TPoint2D> touched = {TPoint2D::Create(52.00, 25.00), TPoint2D::Create(46.00, 35.39),
                                         TPoint2D::Create(34.01, 35.39), TPoint2D::Create(28.00, 25.01),
                                         TPoint2D::Create(34.00, 14.61), TPoint2D::Create(46.00, 14.60)};

  // The unknowns are the centre and the radius. Each point says: my distance from the centre is the radius.
  const auto residuals = [&](const TDoubleList& Unknowns) {
    const TPoint2D centre = TPoint2D::Create(Unknowns[0], Unknowns[1]);
    TDoubleList misses;
    for (const TPoint2D& point : touched) misses.Add((point - centre).Mag() - Unknowns[2]);
    return misses;
  };

  TNewtonIteratorPro iterator(3, static_cast<int>(touched.size()), residuals);  // the derivatives by differences
  iterator.SetConvergeTor(1e-6);
  iterator.SetLogger([](const std::string& Line) { std::cout << "  | " << Line << "\n"; });

  TDoubleList bore = {30, 30, 5};  // a rough guess
  if (!iterator.CalcParam(&bore)) return 1;
  std::cout << Format1033("centre %.3f, %.3f  radius %.3f\n", bore[0], bore[1], bore[2]);
}
