#include <ZORBase/ZORBaseAlg/uSVD.h>
#include <ZORBase/ZORBaseAlg/uSurfaceInterpolater.h>
#include <ZORBase/capi/Call.h>
#include <ZORBase/capi/Twins.h>

#include <array>
#include <climits>

// C functions stand outside of every namespace. NOLINTBEGIN(google-build-using-namespace)
using namespace ZORBase;
using namespace ZORBase::capi;
// NOLINTEND(google-build-using-namespace)

struct zorbase_surface {
  TV4Interpolator Value;
};

namespace {

void RequireSolved(bool IsSolved) {
  if (!IsSolved) Refuse(ZORBASE_NOT_POSSIBLE, "the decomposition gives no solution");
}

// The product of two counts, as far as a list can be long.
std::size_t CheckedArea(std::size_t Rows, std::size_t Columns) {
  constexpr std::size_t kMost = INT_MAX;
  if (Rows > 0 && Columns > kMost / Rows) RefuseArgument("a", "has more than 2147483647 numbers");
  return Rows * Columns;
}

// The coordinates of points, one after the other.
TDoubleList CoordinatesOf(std::span<const TPoint3D> Points) {
  CheckedArea(Points.size(), 3);
  TDoubleList list;
  list.Reserve(3 * Points.size());
  for (const TPoint3D& point : Points) list.AddRange(std::array{point.X, point.Y, point.Z});
  return list;
}

TDoubleList CoordinatesOf(std::span<const TPoint2D> Points) {
  CheckedArea(Points.size(), 2);
  TDoubleList list;
  list.Reserve(2 * Points.size());
  for (const TPoint2D& point : Points) list.AddRange(std::array{point.X, point.Y});
  return list;
}

const TV4Interpolator& SurfaceOf(const zorbase_surface* Surface) { return Given(Surface, "surface").Value; }

}  // namespace

// ---------------------------------------------------------------------------------------------- fits

zorbase_status zorbase_least_squares(const double* a, size_t rows, size_t columns, int32_t layout, const double* b,
                                     double* x) noexcept {
  return Call(__func__, [&] {
    const TDoubleList matrix{Items(a, CheckedArea(rows, columns), "a")};
    const TDoubleList right{Items(b, rows, "b")};
    const auto places = Items(x, columns, "x");
    TDoubleList solution;
    RequireSolved(MatrixDivUsingSvd(&matrix, &right, static_cast<int>(rows), static_cast<int>(columns), &solution,
                                    layout != ZORBASE_COLUMN_MAJOR));
    GiveItems<double>(solution, places.data(), places.size(), nullptr, "x");
  });
}

zorbase_status zorbase_fit_plane(const zorbase_point* points, size_t count, zorbase_plane* plane) noexcept {
  return Call(__func__, [&] {
    TGrowing place(plane, "plane");
    const TDoubleList list = CoordinatesOf(Twins(Items(points, count, "points")));
    zorbase_plane fitted{};
    RequireSolved(FitPlaneUsingSvd(&list, fitted.a, fitted.b, fitted.c, fitted.d, fitted.ratio));
    place.Write(fitted);
  });
}

zorbase_status zorbase_fit_line(const zorbase_point2* points, size_t count, zorbase_line* line) noexcept {
  return Call(__func__, [&] {
    TGrowing place(line, "line");
    const TDoubleList list = CoordinatesOf(Twins(Items(points, count, "points")));
    zorbase_line fitted{};
    RequireSolved(FitLineUsingSvd(&list, fitted.a, fitted.b, fitted.c));
    place.Write(fitted);
  });
}

// ---------------------------------------------------------------------------------------------- surfaces

zorbase_status zorbase_surface_create(zorbase_surface** surface) noexcept {
  return Call(__func__, [&] { CreateHandle(surface, "surface"); });
}

void zorbase_surface_destroy(zorbase_surface* surface) noexcept { delete surface; }

zorbase_status zorbase_surface_add(zorbase_surface* surface, const zorbase_point* samples, size_t count) noexcept {
  return Call(__func__, [&] {
    TV4Interpolator& place = Given(surface, "surface").Value;
    place.AddPointList(TList<TPoint3D>{Twins(Items(samples, count, "samples"))});
  });
}

zorbase_status zorbase_surface_solve(zorbase_surface* surface) noexcept {
  return Call(__func__, [&] { Given(surface, "surface").Value.CalcWeights(); });
}

zorbase_status zorbase_surface_height(const zorbase_surface* surface, double x, double y, double* z) noexcept {
  return Call(__func__, [&] {
    double& place = Given(z, "z");
    place = SurfaceOf(surface).CalcZ(x, y);
  });
}

zorbase_status zorbase_surface_heights(const zorbase_surface* surface, const zorbase_point2* places, size_t count,
                                       double* z) noexcept {
  return Call(__func__, [&] { SurfaceOf(surface).CalcZ(Twins(Items(places, count, "places")), Items(z, count, "z")); });
}
