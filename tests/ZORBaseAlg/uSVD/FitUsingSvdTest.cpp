#include <ZORBase/ZORBaseAlg/uSVD.h>

#include "support/TestSupport.h"

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;
using testing::ElementsAre;

struct TPlane {
  double A = 7, B = 7, C = 7, D = 7, Ratio = 7;
};

TPlane PlaneOf(const TDoubleList& Points) {
  TPlane plane;
  EXPECT_TRUE(FitPlaneUsingSvd(&Points, plane.A, plane.B, plane.C, plane.D, plane.Ratio));
  return plane;
}

struct TLine {
  double A = 7, B = 7, C = 7;
};

TLine LineOf(const TDoubleList& Points) {
  TLine line;
  EXPECT_TRUE(FitLineUsingSvd(&Points, line.A, line.B, line.C));
  return line;
}

TEST(FitPlaneUsingSvd, FourCornersOfASquareOnTheGroundGiveTheGround) {
  const TPlane plane = PlaneOf({0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0});
  EXPECT_EQ(plane.A, 0.0);
  EXPECT_EQ(plane.B, 0.0);
  EXPECT_EQ(std::fabs(plane.C), 1.0);
  EXPECT_EQ(plane.D, 0.0);
}

TEST(FitPlaneUsingSvd, TheRatioSaturatesForPointsInAPlane) {
  // Singular values 1, 1, 0: SafeDiv(1, 0, 1e-7).
  EXPECT_NEAR(PlaneOf({0, 0, 5, 1, 0, 5, 0, 1, 5, 1, 1, 5}).Ratio, 1e7, 1e-3);
}

TEST(FitPlaneUsingSvd, TheRatioIsTheSecondSmallestSingularValueByTheSmallest) {
  // Points on the axes: singular values sqrt(2) times 5, 3, 2.
  const TPlane plane = PlaneOf({5, 0, 0, -5, 0, 0, 0, 2, 0, 0, -2, 0, 0, 0, 3, 0, 0, -3});
  EXPECT_NEAR(plane.Ratio, 1.5, 1e-14);
  EXPECT_NEAR(std::fabs(plane.B), 1.0, 1e-14);
}

TEST(FitPlaneUsingSvd, EqualSingularValuesKeepTheLowerIndex) {
  // The corners of an octahedron have no direction that stands out: all three values are the same.
  const TPlane plane = PlaneOf({1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1, 0, 0, 0, 1, 0, 0, -1});
  EXPECT_EQ(std::fabs(plane.A), 1.0);
  EXPECT_EQ(plane.B, 0.0);
  EXPECT_EQ(plane.C, 0.0);
  EXPECT_EQ(plane.Ratio, 1.0);
}

TEST(FitPlaneUsingSvd, TheFormWithoutRatioAndTheListSayTheSame) {
  const TDoubleList points = {0, 0, 1, 1, 0, 2, 0, 1, 3.5, 1, 1, 4, 2, 5, -1};
  const TPlane plane = PlaneOf(points);
  double a = 0, b = 0, c = 0, d = 0;
  EXPECT_TRUE(FitPlaneUsingSvd(&points, a, b, c, d));
  EXPECT_THAT((std::array{a, b, c, d}), ElementsAre(plane.A, plane.B, plane.C, plane.D));
  TDoubleList list = {1, 2, 3, 4, 5, 6};
  EXPECT_TRUE(FitPlaneUsingSvd(&points, &list));
  EXPECT_THAT(list, ElementsAre(plane.A, plane.B, plane.C, plane.D));
  list = points;
  EXPECT_TRUE(FitPlaneUsingSvd(&list, &list));
  EXPECT_THAT(list, ElementsAre(plane.A, plane.B, plane.C, plane.D));
}

TEST(FitPlaneUsingSvd, FewerThanThreePointsGiveZerosAndTrue) {
  for (const TDoubleList& points : {TDoubleList{1, 2, 3}, TDoubleList{1, 2, 3, 4, 5, 6}}) {
    const TPlane plane = PlaneOf(points);
    EXPECT_THAT((std::array{plane.A, plane.B, plane.C, plane.D, plane.Ratio}), testing::Each(0.0));
  }
}

TEST(FitPlaneUsingSvd, ACountThatIsNoMultipleOfThreeRaisesAndChangesNothing) {
  const TDoubleList seven = {1, 2, 3, 4, 5, 6, 7};
  TPlane p;
  EXPECT_THAT(Calling([&] { FitPlaneUsingSvd(&seven, p.A, p.B, p.C, p.D, p.Ratio); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: Input Invalid MatA.Count = 7"));
  EXPECT_THAT(Calling([&] { FitPlaneUsingSvd(&seven, p.A, p.B, p.C, p.D); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: Input Invalid MatA.Count = 7"));
  EXPECT_THAT((std::array{p.A, p.B, p.C, p.D, p.Ratio}), testing::Each(7.0));
}

TEST(FitPlaneUsingSvd, NoPointsAtAllRaise) {
  TPlane p;
  const TDoubleList none;
  EXPECT_THAT(Calling([&] { FitPlaneUsingSvd(&none, p.A, p.B, p.C, p.D, p.Ratio); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: Input Invalid MatA.Count = 0"));
}

TEST(FitPlaneUsingSvd, AMissingListRaises) {
  TPlane p;
  TDoubleList list = {1, 2};
  EXPECT_THAT(Calling([&] { FitPlaneUsingSvd(nullptr, p.A, p.B, p.C, p.D, p.Ratio); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: InputList AList Is Uninitialized"));
  EXPECT_THAT(Calling([&] { FitPlaneUsingSvd(nullptr, p.A, p.B, p.C, p.D); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: InputList AList Is Uninitialized"));
  EXPECT_THAT(Calling([&] { FitPlaneUsingSvd(&list, nullptr); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: InputList Xlist Is Uninitialized"));
  EXPECT_THAT(Calling([] { FitPlaneUsingSvd(nullptr, nullptr); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: InputList Xlist Is Uninitialized"));
}

TEST(FitPlaneUsingSvd, TheListIsClearedBeforeTheFitChecksThePoints) {
  TDoubleList list = {1, 2};
  EXPECT_THAT(Calling([&] { FitPlaneUsingSvd(nullptr, &list); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: InputList AList Is Uninitialized"));
  EXPECT_THAT(list, testing::SizeIs(0));
  list = {1, 2, 3, 4};
  EXPECT_THAT(Calling([&] { FitPlaneUsingSvd(&list, &list); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: Input Invalid MatA.Count = 4"));
  EXPECT_THAT(list, testing::SizeIs(0));
}

TEST(FitPlaneUsingSvd, PointsThatAreNotFiniteEndWithTrue) {
  for (const double value : {kNaN, kInfinity}) {
    for (int place = 0; place < 12; ++place) {
      TDoubleList points = {1, 2, 3, 4, 5, 6, 7, 8, 10, 9, 11, 13};
      points[place] = value;
      PlaneOf(points);
      LineOf(points);
    }
  }
}

TEST(FitLineUsingSvd, PointsOnALineGiveAUnitNormalPerpendicularToIt) {
  // (1, 1) + t (3, 4): the normal is (4, -3) / 5 up to its sign, and 4 x - 3 y = 1.
  const TLine line = LineOf({1, 1, 4, 5, 7, 9, -2, -3});
  const double sign = line.A < 0 ? -1.0 : 1.0;
  EXPECT_NEAR(sign * line.A, 0.8, 1e-15);
  EXPECT_NEAR(sign * line.B, -0.6, 1e-15);
  EXPECT_NEAR(sign * line.C, -0.2, 1e-15);
}

TEST(FitLineUsingSvd, EqualSingularValuesKeepTheLowerIndex) {
  const TLine line = LineOf({1, 0, -1, 0, 0, 1, 0, -1});
  EXPECT_EQ(std::fabs(line.A), 1.0);
  EXPECT_EQ(line.B, 0.0);
}

TEST(FitLineUsingSvd, TheListSaysTheSame) {
  const TDoubleList points = {1, 1, 4, 5.5, 7, 8.7, -2, -3};
  const TLine line = LineOf(points);
  TDoubleList list = {1, 2, 3, 4, 5, 6};
  EXPECT_TRUE(FitLineUsingSvd(&points, &list));
  EXPECT_THAT(list, ElementsAre(line.A, line.B, line.C));
  list = points;
  EXPECT_TRUE(FitLineUsingSvd(&list, &list));
  EXPECT_THAT(list, ElementsAre(line.A, line.B, line.C));
}

TEST(FitLineUsingSvd, ASinglePointGivesZerosAndTrue) {
  const TLine line = LineOf({3, 4});
  EXPECT_THAT((std::array{line.A, line.B, line.C}), testing::Each(0.0));
}

TEST(FitLineUsingSvd, AnOddCountRaisesInTheWordsOfThePlane) {
  const TDoubleList five = {1, 2, 3, 4, 5};
  const TDoubleList none;
  TLine line;
  EXPECT_THAT(Calling([&] { FitLineUsingSvd(&five, line.A, line.B, line.C); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: Input Invalid MatA.Count = 5"));
  EXPECT_THAT(Calling([&] { FitLineUsingSvd(&none, line.A, line.B, line.C); }),
              RaisesGeneralError("FitPlaneUsingSvd Err: Input Invalid MatA.Count = 0"));
  EXPECT_THAT((std::array{line.A, line.B, line.C}), testing::Each(7.0));
}

TEST(FitLineUsingSvd, AMissingListRaisesAndTheListIsClearedFirst) {
  TLine line;
  TDoubleList list = {1, 2};
  EXPECT_THAT(Calling([&] { FitLineUsingSvd(nullptr, line.A, line.B, line.C); }),
              RaisesGeneralError("FitLineUsingSvd Err: InputList AList Is Uninitialized"));
  EXPECT_THAT(Calling([&] { FitLineUsingSvd(&list, nullptr); }),
              RaisesGeneralError("FitLineUsingSvd Err: InputList Xlist Is Uninitialized"));
  EXPECT_THAT(Calling([&] { FitLineUsingSvd(nullptr, &list); }),
              RaisesGeneralError("FitLineUsingSvd Err: InputList AList Is Uninitialized"));
  EXPECT_THAT(list, testing::SizeIs(0));
}

}  // namespace
}  // namespace ZORBase
