#include "capi/CapiTestSupport.h"

#include <limits>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

using TSurfaceHandle = THandle<zorbase_surface, zorbase_surface_create, zorbase_surface_destroy>;

const std::vector<double> kMatrix = {1, 2, 3, 4, 5, 6.5, 7, -8};
const std::vector<double> kRight = {1, -2, 3, 4};

TEST(ZorbaseLeastSquares, SolvesRowsAndColumnsAsTheFunctionDoes) {
  const TDoubleList matrix{std::span(kMatrix)};
  const TDoubleList right{std::span(kRight)};
  for (const int32_t layout : {ZORBASE_COLUMN_MAJOR, ZORBASE_ROW_MAJOR}) {
    TDoubleList expected;
    ASSERT_TRUE(MatrixDivUsingSvd(&matrix, &right, 4, 2, &expected, layout == ZORBASE_ROW_MAJOR));
    std::vector<double> x(2);
    ASSERT_TRUE(Good(zorbase_least_squares(kMatrix.data(), 4, 2, layout, kRight.data(), x.data())));
    EXPECT_EQ(Bits(x), Bits(expected));
  }
}

TEST(ZorbaseLeastSquares, NeedsARowAndAColumnAndCountsThatFit) {
  std::vector<double> x = {7, 7};
  EXPECT_TRUE(Fails(zorbase_least_squares(nullptr, 0, 2, 1, nullptr, x.data()), ZORBASE_ERROR,
                    "MatrixDivUsingSvd Err: Input Invalid MatA.Count = 0, VecB.Count = 0, M = 0, N = 2"));
  EXPECT_TRUE(
      Fails(zorbase_least_squares(nullptr, 4, 0, 1, kRight.data(), nullptr), ZORBASE_ERROR, HasSubstr("M = 4, N = 0")));
  constexpr std::size_t many = std::size_t{1} << 20U;
  EXPECT_TRUE(Fails(zorbase_least_squares(kMatrix.data(), many, many, 1, kRight.data(), x.data()), ZORBASE_BAD_ARGUMENT,
                    "zorbase_least_squares: a has more than 2147483647 numbers"));
  EXPECT_EQ(x, std::vector<double>({7, 7}));
}

const std::vector<zorbase_point> kPoints = {{0, 0, 0.1}, {10, 1, 0.2}, {1, 11, -0.3}, {9, 8, 0.05}, {5, -3, 1}};

TEST(ZorbaseFit, OfAPlaneAndOfALineIsThatOfTheFunctions) {
  TDoubleList space;
  TDoubleList plane;
  std::vector<zorbase_point2> flat;
  for (const zorbase_point& point : kPoints) {
    space.AddRange(std::array{point.x, point.y, point.z});
    plane.AddRange(std::array{point.x, point.z});
    flat.push_back({point.x, point.z});
  }
  zorbase_plane expected = {};
  zorbase_plane fitted = {};
  expected.size = fitted.size = sizeof fitted;
  ASSERT_TRUE(FitPlaneUsingSvd(&space, expected.a, expected.b, expected.c, expected.d, expected.ratio));
  ASSERT_TRUE(Good(zorbase_fit_plane(kPoints.data(), kPoints.size(), &fitted)));
  EXPECT_EQ(Bits(fitted), Bits(expected));

  zorbase_line expectedLine = {};
  zorbase_line line = {};
  expectedLine.size = line.size = sizeof line;
  ASSERT_TRUE(FitLineUsingSvd(&plane, expectedLine.a, expectedLine.b, expectedLine.c));
  ASSERT_TRUE(Good(zorbase_fit_line(flat.data(), flat.size(), &line)));
  EXPECT_EQ(Bits(line), Bits(expectedLine));
}

TEST(ZorbaseFit, OfNoPointsIsTheErrorOfTheFunctionAndASizeHasToBeSet) {
  zorbase_plane plane = {};
  zorbase_line line = {};
  EXPECT_TRUE(
      Fails(zorbase_fit_plane(kPoints.data(), 5, &plane), ZORBASE_BAD_ARGUMENT, HasSubstr("plane has the size 0")));
  EXPECT_TRUE(Fails(zorbase_fit_line(nullptr, 0, &line), ZORBASE_BAD_ARGUMENT, HasSubstr("line has the size 0")));
  plane.size = sizeof plane;
  line.size = sizeof line;
  EXPECT_TRUE(Fails(zorbase_fit_plane(nullptr, 0, &plane), ZORBASE_ERROR,
                    "FitPlaneUsingSvd Err: Input Invalid MatA.Count = 0"));
  EXPECT_TRUE(
      Fails(zorbase_fit_line(nullptr, 0, &line), ZORBASE_ERROR, "FitPlaneUsingSvd Err: Input Invalid MatA.Count = 0"));
}

TEST(ZorbaseSurface, IsThatOfTheInterpolator) {
  TV4Interpolator inside;
  for (const zorbase_point& point : kPoints) inside.AddPoint(point.x, point.y, point.z);
  inside.CalcWeights();
  const TSurfaceHandle surface;
  ASSERT_TRUE(Good(zorbase_surface_add(surface, kPoints.data(), 2)));
  ASSERT_TRUE(Good(zorbase_surface_add(surface, kPoints.data() + 2, 3)));
  ASSERT_TRUE(Good(zorbase_surface_solve(surface)));
  const std::vector<zorbase_point2> places = {{0, 0}, {3, 4}, {-5, 20}, {10, 1}};
  std::vector<double> many(places.size());
  ASSERT_TRUE(Good(zorbase_surface_heights(surface, places.data(), places.size(), many.data())));
  for (std::size_t i = 0; i < places.size(); ++i) {
    double z = 0;
    ASSERT_TRUE(Good(zorbase_surface_height(surface, places[i].x, places[i].y, &z)));
    EXPECT_EQ(Bits(z), Bits(inside.CalcZ(places[i].x, places[i].y)));
    EXPECT_EQ(Bits(many[i]), Bits(z));
  }
}

TEST(ZorbaseSurface, OutOfOrderIsTheErrorOfTheInterpolator) {
  const TSurfaceHandle surface;
  double z = 7;
  EXPECT_TRUE(Fails(zorbase_surface_solve(surface), ZORBASE_ERROR, "TV4Interpolator Wrong State 0 Suppose State 1"));
  EXPECT_TRUE(
      Fails(zorbase_surface_height(surface, 0, 0, &z), ZORBASE_ERROR, "TV4Interpolator Wrong State 0 Suppose State 2"));
  const std::vector<zorbase_point> twice = {{0, 0, 0}, {0, 0, 5}};
  ASSERT_TRUE(Good(zorbase_surface_add(surface, twice.data(), twice.size())));
  EXPECT_TRUE(Fails(zorbase_surface_solve(surface), ZORBASE_ERROR, "TV4Interpolator Fail For Duplicate data"));
  EXPECT_TRUE(Fails(zorbase_surface_add(surface, twice.data(), 1), ZORBASE_ERROR,
                    "TV4Interpolator Wrong State 2 Suppose State 0 or 1"));
  EXPECT_EQ(z, 7);
  EXPECT_TRUE(Good(zorbase_surface_height(surface, 3, 4, &z)));
  EXPECT_EQ(z, 0);
}

TEST(ZorbaseSurface, TakesNoSamplesOfWhichOneIsNotFinite) {
  const TSurfaceHandle surface;
  const std::vector<zorbase_point> bad = {{0, 0, 0}, {1, std::numeric_limits<double>::infinity(), 5}};
  EXPECT_EQ(zorbase_surface_add(surface, bad.data(), bad.size()), ZORBASE_ERROR);
  EXPECT_TRUE(Fails(zorbase_surface_solve(surface), ZORBASE_ERROR, HasSubstr("Wrong State")));
}

}  // namespace
}  // namespace ZORBase::Test
