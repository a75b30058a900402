#include <ZORBase/ZORGeometry/NurbsGeometry/ClosestPoint.h>

#include <ZORBase/ZORGeometry/NurbsGeometry/CurvePoint.h>
#include <ZORBase/common/BaseServices/TGeneralError.h>
#include <ZORBase/common/RisingZero.h>

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

  /// Behind a break at From no place is the same as one before it, however close the parameters are.
  void GoOnBehindBreak(double From) { FUnbrokenFrom = From; }

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

  /// Places come in the order of their parameters. The first of several equally close ones stays: where rounding alone tells two
  /// apart, only the same place, found more exactly, is taken.
  void Try(double u) {
    constexpr double kSamePlace = 1e-9;
    const TPoint place = CurvePoint(FBasis, FControlPoints, u);
    const double distance = Distance(place, FPoint);
    const bool isSamePlace = u - FBest.Param < kSamePlace && FBest.Param >= FUnbrokenFrom;
    const double margin = isSamePlace ? 0.0 : FRounding;
    if (!(distance < FBest.Distance - margin)) return;
    FBest = {u, place, distance};
    FReached = std::min(FReached, distance * distance);
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

  // Half the derivative of the squared distance, and its slope.
  std::pair<double, double> Gradient(double u) const {
    const auto CK = DerivsAt(u);
    const TPoint away = CK[0] - FPoint;
    return {away.DotMul(CK[1]), CK[1].DotMul(CK[1]) + away.DotMul(CK[2])};
  }

  // The zero of the gradient, which rises from From to To.
  double StationaryPlace(double From, double To) const {
    if (Gradient(From).first >= 0.0) return From;
    // To itself may belong to the next span.
    if (Gradient(std::nextafter(To, From)).first <= 0.0) return To;
    return ZeroOfRising(From, To, 0.5 * (From + To), [this](double u) { return Gradient(u); });
  }

  const TNurbsBasicFunc& FBasis;
  std::span<const TPoint> FControlPoints;
  TPoint FPoint;
  double FReached;
  double FRounding;
  double FUnbrokenFrom = 0.0;
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

// At four equal inner knots, and at a fifth one at an end, the curve breaks: the intervals on the two sides share no control point.
bool BreaksBefore(std::span<const double> U, std::size_t Span) { return Span > 3 && U[Span - 3] == U[Span]; }
bool BreaksBehind(std::span<const double> U, std::size_t Span) {
  return Span + 5 < U.size() && U[Span + 1] == U[Span + 4];
}

// The curve over a knot interval that is not empty: From and To are the first and the last parameter that give places of it. A knot
// at a break belongs to what begins there; at 0 and 1 the end points stand alone then.
template <class TPoint>
struct TPiece {
  double From;
  double To;
  bool IsBehindBreak;
  TSextic D;

  static TPiece Create(std::span<const double> U, std::span<const TPoint> P, std::size_t Span, const TPoint& Point) {
    const bool isBehindBreak = BreaksBefore(U, Span);
    const double from = isBehindBreak && U[Span] == 0.0 ? std::nextafter(0.0, 1.0) : U[Span];
    const double to = BreaksBehind(U, Span) ? std::nextafter(U[Span + 1], 0.0) : U[Span + 1];
    return {from, to, isBehindBreak, SquaredDistance(BezierPoints(U, P, Span), Point)};
  }
};

}  // namespace

template <class TPoint>
TClosestPoint<TPoint> FindClosestPoint(const TNurbsBasicFunc& Basis, std::span<const TPoint> P, const TPoint& Point) {
  const std::string operation = CurveOperation<TPoint>("ClosestPoint");
  const std::span<const double> U = Basis.uArr();
  RequireClamped(U, operation);
  if (!std::isfinite(Distance(Point, P.front())))
    RaiseGeneralError(operation + ": the point is not finite, or too far away");
  std::vector<TPiece<TPoint>> pieces;
  double reached = std::numeric_limits<double>::infinity();
  for (std::size_t span = 3; span + 4 < U.size(); ++span) {
    if (U[span] == U[span + 1]) continue;
    pieces.push_back(TPiece<TPoint>::Create(U, P, span, Point));
    const TSextic& D = pieces.back().D;
    if (!std::ranges::all_of(D, [](double value) { return std::isfinite(value); }))
      RaiseGeneralError(operation + ": the curve reaches too far away for its distance to be measured");
    reached = std::min({reached, D.front(), D.back()});
  }
  TSearch<TPoint> search(Basis, P, Point, reached);
  if (BreaksBefore(U, 4)) search.Try(0.0);
  for (const TPiece<TPoint>& piece : pieces) {
    if (piece.IsBehindBreak) search.GoOnBehindBreak(piece.From);
    search.Visit(piece.From, piece.To, piece.D);
  }
  if (BreaksBehind(U, U.size() - 6)) {
    search.GoOnBehindBreak(1.0);
    search.Try(1.0);
  }
  return search.Best();
}

template TClosestPoint<TPoint2D> FindClosestPoint(const TNurbsBasicFunc&, std::span<const TPoint2D>, const TPoint2D&);
template TClosestPoint<TPoint6D> FindClosestPoint(const TNurbsBasicFunc&, std::span<const TPoint6D>, const TPoint6D&);

}  // namespace ZORBase
