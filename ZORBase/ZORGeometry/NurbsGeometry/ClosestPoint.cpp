#include <ZORBase/ZORGeometry/NurbsGeometry/ClosestPoint.h>

#include <ZORBase/ZORGeometry/NurbsGeometry/CurvePoint.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <utility>
#include <vector>

namespace ZORBase {
namespace {

// A polynomial of degree 6 over a piece of a span, by its Bernstein coefficients.
using TSextic = std::array<double, 7>;

TSextic FirstHalf(const TSextic& Whole) {
  TSextic half;
  TSextic rest = Whole;
  for (std::size_t level = 0; level < half.size(); ++level) {
    half[level] = rest[0];
    for (std::size_t i = 0; i + 1 + level < rest.size(); ++i) rest[i] = 0.5 * (rest[i] + rest[i + 1]);
  }
  return half;
}

TSextic Mirrored(TSextic Whole) {
  std::reverse(Whole.begin(), Whole.end());
  return Whole;
}

// The signs of the second differences, which are those of the second derivative: all of one kind, or mixed.
bool IsConvex(const TSextic& D) {
  for (std::size_t i = 0; i + 2 < D.size(); ++i) {
    if (D[i] - 2.0 * D[i + 1] + D[i + 2] < 0.0) return false;
  }
  return true;
}

bool IsConcave(TSextic D) {
  for (double& value : D) value = -value;
  return IsConvex(D);
}

// Whether the coefficients, and with them the polynomial, fall all the way, each by more than Noise.
bool IsFalling(const TSextic& D, double Noise) {
  for (std::size_t i = 0; i + 1 < D.size(); ++i) {
    if (!(D[i] - D[i + 1] > Noise)) return false;
  }
  return true;
}

// |C - Point|^2 over a span: coefficient k is the mean of the products b[i] . b[j], i + j = k, weighted with binomials.
template <class TPoint>
TSextic SquaredDistance(std::array<TPoint, 4> B, const TPoint& Point) {
  constexpr std::array<double, 4> binomial3 = {1.0, 3.0, 3.0, 1.0};
  constexpr std::array<double, 7> binomial6 = {1.0, 6.0, 15.0, 20.0, 15.0, 6.0, 1.0};
  for (TPoint& b : B) b = b - Point;
  TSextic result{};
  for (std::size_t i = 0; i < 4; ++i) {
    for (std::size_t j = 0; j < 4; ++j) result[i + j] += binomial3[i] * binomial3[j] * B[i].DotMul(B[j]);
  }
  for (std::size_t k = 0; k < result.size(); ++k) result[k] /= binomial6[k];
  return result;
}

template <class TPoint>
class TSearch {
 public:
  /// Reached is a squared distance that some place of the curve is known to have.
  TSearch(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, const TPoint& Point, double Reached)
      : FBasis(Basis), FControlPoints(P), FPoint(Point), FReached(Reached), FRounding(RoundingOf(P, Point)) {}

  const TClosestPoint<TPoint>& Best() const { return FBest; }

  /// Looks for a closer place between From and To, where the squared distance is D.
  void Visit(double From, double To, const TSextic& D) {
    const auto [smallest, largest] = std::minmax_element(D.begin(), D.end());
    // What rounding can have done to the coefficients.
    const double noise = 16.0 * std::numeric_limits<double>::epsilon() * *largest;
    if (*smallest - noise > FReached) return;
    const double middle = 0.5 * (From + To);
    // What is convex is asked before what falls. NOLINTNEXTLINE(bugprone-branch-clone)
    if (*largest - *smallest <= noise || To - From < kNarrowest || IsConcave(D)) {
      TryEnds(From, To);  // the smaller end of a hill, or of what is flat as far as doubles can tell
    } else if (IsConvex(D)) {
      Try(StationaryPlace(From, To));
    } else if (IsFalling(D, noise) || IsFalling(Mirrored(D), noise)) {
      TryEnds(From, To);  // around an inflection, where rounding hides which way it is bent, however short the piece
    } else {
      Visit(From, middle, FirstHalf(D));
      Visit(middle, To, Mirrored(FirstHalf(Mirrored(D))));
    }
  }

 private:
  void TryEnds(double From, double To) {
    Try(From);
    Try(To);
  }

  // Halving stops here: what is left is a single place as far as doubles can tell.
  static constexpr double kNarrowest = 1e-14;

  std::array<TPoint, 4> DerivsAt(double u) const {
    std::array<TPoint, 4> CK{};
    CurveDerivs<TPoint>(FBasis, FControlPoints, u, CK);
    return CK;
  }

  // What rounding can do to a distance from the curve.
  static double RoundingOf(std::span<const TPoint> P, const TPoint& Point) {
    double size = Point.Mag();
    for (const TPoint& point : P) size = std::max(size, point.Mag());
    return 8.0 * std::numeric_limits<double>::epsilon() * size;
  }

  // Places come in the order of their parameters. The first of several equally close ones stays: where rounding alone tells two
  // apart, only the same place, found more exactly, is taken.
  void Try(double u) {
    constexpr double kSamePlace = 1e-9;
    const TPoint place = CurvePoint(FBasis, FControlPoints, u);
    const double distance = Distance(place, FPoint);
    const double margin = u - FBest.Param < kSamePlace ? 0.0 : FRounding;
    if (!(distance < FBest.Distance - margin)) return;
    FBest = {u, place, distance};
    FReached = std::min(FReached, distance * distance);
  }

  // Half the derivative of the squared distance, and its slope.
  std::pair<double, double> Gradient(double u) const {
    const auto CK = DerivsAt(u);
    const TPoint away = CK[0] - FPoint;
    return {away.DotMul(CK[1]), CK[1].DotMul(CK[1]) + away.DotMul(CK[2])};
  }

  // Newton's iteration for the zero of the gradient, which rises from From to To; a step that leaves the bracket halves it.
  double StationaryPlace(double From, double To) const {
    constexpr int kRounds = 100;
    if (Gradient(From).first >= 0.0) return From;
    // To itself may belong to the next span.
    if (Gradient(std::nextafter(To, From)).first <= 0.0) return To;
    double u = 0.5 * (From + To);
    for (int round = 0; round < kRounds; ++round) {
      const auto [value, slope] = Gradient(u);
      if (value == 0.0) return u;
      (value < 0.0 ? From : To) = u;
      const double newton = u - value / slope;
      const double next = newton > From && newton < To ? newton : 0.5 * (From + To);
      if (std::fabs(next - u) <= std::numeric_limits<double>::epsilon() * u) return next;
      u = next;
    }
    return u;
  }

  const TNurbsBasicFunc& FBasis;
  std::span<const TPoint> FControlPoints;
  TPoint FPoint;
  double FReached;
  double FRounding;
  TClosestPoint<TPoint> FBest{0.0, {}, std::numeric_limits<double>::infinity()};
};

void RequireClamped(std::span<const double> U, const std::string& Operation) {
  const auto isAll = [](std::span<const double> Knots, double Value) {
    return std::all_of(Knots.begin(), Knots.end(), [Value](double Knot) { return Knot == Value; });
  };
  const bool isClamped = U.size() >= static_cast<std::size_t>(TNurbsBasicFunc::kFewestKnots) &&
                         isAll(U.first(4), 0.0) && isAll(U.last(4), 1.0) && std::is_sorted(U.begin(), U.end());
  if (!isClamped) RaiseGeneralError(Operation + ": the knots must rise from four zeros to four ones");
}

}  // namespace

template <class TPoint>
TClosestPoint<TPoint> FindClosestPoint(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, const TPoint& Point) {
  const std::string operation = CurveOperation<TPoint>("ClosestPoint");
  const std::span<const double> U = Basis.uArr();
  RequireClamped(U, operation);
  if (!std::isfinite(Distance(Point, P.front())))
    RaiseGeneralError(operation + ": the point is not finite, or too far away");
  struct TSpanDistance {
    double From;
    double To;
    TSextic D;
  };
  std::vector<TSpanDistance> spans;
  double reached = std::numeric_limits<double>::infinity();
  for (std::size_t span = 3; span + 4 < U.size(); ++span) {
    if (U[span] == U[span + 1]) continue;
    spans.push_back({U[span], U[span + 1], SquaredDistance(BezierPoints(U, P, span), Point)});
    if (!std::ranges::all_of(spans.back().D, [](double value) { return std::isfinite(value); }))
      RaiseGeneralError(operation + ": the curve reaches too far away for its distance to be measured");
    reached = std::min({reached, spans.back().D.front(), spans.back().D.back()});
  }
  TSearch<TPoint> search(Basis, P, Point, reached);
  for (const TSpanDistance& span : spans) search.Visit(span.From, span.To, span.D);
  return search.Best();
}

template TClosestPoint<TPoint2D> FindClosestPoint(const TNurbsBasicFunc&, std::span<const TPoint2D>, const TPoint2D&);
template TClosestPoint<TPoint6D> FindClosestPoint(const TNurbsBasicFunc&, std::span<const TPoint6D>, const TPoint6D&);

}  // namespace ZORBase
