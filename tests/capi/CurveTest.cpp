#include "capi/CapiTestSupport.h"

#include <cstring>
#include <limits>
#include <thread>

namespace ZORBase::Test {
namespace {

using testing::HasSubstr;

constexpr double kNoNumber = std::numeric_limits<double>::quiet_NaN();

// The same curve twice: through the C interface, and by the class.
class ZorbaseCurve : public testing::Test {
 protected:
  void SetUp() override {
    const TPoint6DList poses = SwungPoses(30);
    const std::vector<zorbase_pose> given = PosesOutside(poses);
    ASSERT_TRUE(Good(zorbase_curve_fit_array(Curve, given.data(), given.size(), ZORBASE_CHORD)));
    ASSERT_TRUE(Inside.CreateCross(&poses, mChord));
  }

  std::vector<zorbase_pose> ControlPoints() const {
    std::size_t count = 0;
    EXPECT_TRUE(Good(zorbase_curve_control_points(Curve, nullptr, 0, &count)));
    std::vector<zorbase_pose> points(count);
    EXPECT_TRUE(Good(zorbase_curve_control_points(Curve, points.data(), count, nullptr)));
    return points;
  }
  std::vector<double> Knots() const {
    std::size_t count = 0;
    EXPECT_TRUE(Good(zorbase_curve_knots(Curve, nullptr, 0, &count)));
    std::vector<double> knots(count);
    EXPECT_TRUE(Good(zorbase_curve_knots(Curve, knots.data(), count, nullptr)));
    return knots;
  }
  void ExpectSameCurve() const {
    EXPECT_EQ(Bits(ControlPoints()), Bits(std::vector(Inside.pointArr().begin(), Inside.pointArr().end())));
    const auto knots = Inside.BasicFun().uArr();
    EXPECT_EQ(Bits(Knots()), Bits(std::vector(knots.begin(), knots.end())));
  }

  const TCurveHandle Curve;
  TNurbs6D Inside;
};

const std::vector<double> kParams = {-1, 0, 1e-9, 0.1, 0.25, 0.5, 0.77, 0.999999, 1, 2, kNoNumber, 0.3};

TEST_F(ZorbaseCurve, IsFittedToAListAndToAnArrayByEveryMethodAsTheClassDoes) {
  const TPoint6DList poses = SwungPoses(12);
  const std::vector<zorbase_pose> given = PosesOutside(poses);
  const TPosesHandle list;
  ASSERT_TRUE(Good(zorbase_poses_append(list, given.data(), given.size())));
  for (const int32_t method : {ZORBASE_EQUALLY, ZORBASE_CHORD, ZORBASE_CENTRIPETAL}) {
    ASSERT_TRUE(Inside.CreateCross(&poses, static_cast<TParalizeMethod>(method)));
    ASSERT_TRUE(Good(zorbase_curve_fit(Curve, list, method)));
    ExpectSameCurve();
    ASSERT_TRUE(Good(zorbase_curve_fit_array(Curve, given.data(), given.size(), method)));
    ExpectSameCurve();
  }
}

TEST_F(ZorbaseCurve, WithFewerThanFourPosesIsNotPossibleAndStaysAsItWas) {
  const std::vector<zorbase_pose> three = PosesOutside(SwungPoses(3));
  EXPECT_TRUE(Fails(zorbase_curve_fit_array(Curve, three.data(), 3, ZORBASE_CHORD), ZORBASE_NOT_POSSIBLE,
                    "zorbase_curve_fit_array: a curve needs at least 4 poses, and there are 3"));
  const TPosesHandle none;
  EXPECT_TRUE(Fails(zorbase_curve_fit(Curve, none, ZORBASE_CHORD), ZORBASE_NOT_POSSIBLE,
                    "zorbase_curve_fit: a curve needs at least 4 poses, and there are 0"));
  ExpectSameCurve();
}

TEST_F(ZorbaseCurve, ThroughCoincidentPosesIsTheErrorOfTheClassAndStaysAsItWas) {
  std::vector<zorbase_pose> poses = PosesOutside(SwungPoses(6));
  poses[3] = poses[2];
  EXPECT_TRUE(Fails(zorbase_curve_fit_array(Curve, poses.data(), poses.size(), ZORBASE_CHORD), ZORBASE_ERROR,
                    "Error TNurbs6D.CreateCross PtList distance is 0"));
  ExpectSameCurve();
}

TEST_F(ZorbaseCurve, IsMadeOfControlPointsAndMeasured) {
  const TCurveHandle copy;
  const std::vector<zorbase_pose> points = ControlPoints();
  const std::vector<double> knots = Knots();
  ASSERT_TRUE(Good(zorbase_curve_set_control_points(copy, knots.data(), knots.size(), points.data(), points.size())));
  double length = 0;
  EXPECT_TRUE(Fails(zorbase_curve_length(copy, &length), ZORBASE_ERROR, HasSubstr("List index out of bounds")));
  ASSERT_TRUE(Good(zorbase_curve_measure(copy)));
  ASSERT_TRUE(Good(zorbase_curve_length(copy, &length)));
  EXPECT_EQ(Bits(length), Bits(Inside.CurveLength()));
  EXPECT_TRUE(
      Fails(zorbase_curve_set_control_points(copy, knots.data(), knots.size() - 1, points.data(), points.size()),
            ZORBASE_NOT_POSSIBLE, HasSubstr("32 control points need 4 more knots, and there are 35")));
}

TEST_F(ZorbaseCurve, IsEvaluatedAsTheClassDoes) {
  std::vector<zorbase_pose> many(kParams.size());
  ASSERT_TRUE(Good(zorbase_curve_evaluate_many(Curve, kParams.data(), kParams.size(), many.data())));
  for (std::size_t i = 0; i < kParams.size(); ++i) {
    zorbase_pose pose = {};
    ASSERT_TRUE(Good(zorbase_curve_evaluate(Curve, kParams[i], &pose)));
    EXPECT_EQ(Bits(pose), Bits(Inside.EvalPoint(kParams[i])));
    EXPECT_EQ(Bits(many[i]), Bits(pose));
  }
}

TEST_F(ZorbaseCurve, HasTheDerivativesAndTheCurvatureOfTheClass) {
  for (const double param : {0.0, 0.2, 0.6, 1.0}) {
    std::vector<zorbase_pose> derivatives(5, zorbase_pose{7, 7, 7, 7, 7, 7});
    std::vector<TPoint6D> inside(4);
    ASSERT_TRUE(Good(zorbase_curve_derivatives(Curve, param, derivatives.data())));
    Inside.CurveDerivsAlg1(param, inside);
    EXPECT_EQ(derivatives.back().x, 7);
    derivatives.pop_back();
    EXPECT_EQ(Bits(derivatives), Bits(inside));
    double curvature = 0;
    ASSERT_TRUE(Good(zorbase_curve_curvature(Curve, param, &curvature)));
    EXPECT_EQ(Bits(curvature), Bits(Inside.Curvature(param)));
  }
}

TEST_F(ZorbaseCurve, HasTheLengthsOfTheClassBothWays) {
  double length = 0;
  ASSERT_TRUE(Good(zorbase_curve_length(Curve, &length)));
  EXPECT_EQ(Bits(length), Bits(Inside.CurveLength()));
  ASSERT_TRUE(Good(zorbase_curve_length_of_param(Curve, 0.7, 0.2, &length)));
  EXPECT_EQ(Bits(length), Bits(Inside.LengthOfParam(0.7, 0.2)));
  EXPECT_LT(length, 0);

  const std::vector<double> lengths = {-1, 0, 0.001, 5, 77, Inside.CurveLength(), 1e9, 33};
  std::vector<double> params(lengths.size());
  std::vector<double> back(lengths.size());
  ASSERT_TRUE(Good(zorbase_curve_params_of_lengths(Curve, lengths.data(), lengths.size(), params.data())));
  ASSERT_TRUE(Good(zorbase_curve_lengths_of_params(Curve, params.data(), params.size(), back.data())));
  for (std::size_t i = 0; i < lengths.size(); ++i) {
    double param = 0;
    ASSERT_TRUE(Good(zorbase_curve_param_of_length(Curve, lengths[i], &param)));
    EXPECT_EQ(Bits(param), Bits(Inside.ParamOfLength(lengths[i])));
    EXPECT_EQ(Bits(params[i]), Bits(param));
    EXPECT_EQ(Bits(back[i]), Bits(Inside.GetSByU(param)));
  }
}

TEST_F(ZorbaseCurve, IsReversedAsTheClassDoes) {
  ASSERT_TRUE(Good(zorbase_curve_reverse(Curve)));
  Inside.Reverse();
  ExpectSameCurve();
}

TEST_F(ZorbaseCurve, FindsTheClosestPlaceOfTheClass) {
  const zorbase_pose pose = {10, -20, 30, 0, 0, 1};
  zorbase_closest closest = {};
  closest.size = sizeof closest;
  ASSERT_TRUE(Good(zorbase_curve_closest(Curve, &pose, &closest)));
  const auto inside = Inside.ClosestPoint(TPoint6D::Create(10, -20, 30, 0, 0, 1));
  EXPECT_EQ(closest.size, sizeof closest);
  EXPECT_EQ(Bits(closest.param), Bits(inside.Param));
  EXPECT_EQ(Bits(closest.distance), Bits(inside.Distance));
  EXPECT_EQ(Bits(closest.pose), Bits(inside.Point));

  const zorbase_closest before = closest;
  const zorbase_pose nowhere = {kNoNumber, 0, 0, 0, 0, 1};
  EXPECT_EQ(zorbase_curve_closest(Curve, &nowhere, &closest), ZORBASE_ERROR);
  EXPECT_EQ(std::memcmp(&closest, &before, sizeof before), 0);
}

TEST_F(ZorbaseCurve, WritesAStructOfALaterVersionWithZerosInItsNewFields) {
  struct {
    zorbase_closest Known;
    double New;
    double Behind;
  } later = {};
  later.Known.size = sizeof later.Known + sizeof later.New;
  later.New = later.Behind = 7;
  const zorbase_pose pose = {10, -20, 30, 0, 0, 1};
  ASSERT_TRUE(Good(zorbase_curve_closest(Curve, &pose, &later.Known)));
  EXPECT_EQ(later.Known.size, sizeof later.Known + sizeof later.New);
  EXPECT_GT(later.Known.distance, 0);
  EXPECT_EQ(later.New, 0);
  EXPECT_EQ(later.Behind, 7);
}

TEST_F(ZorbaseCurve, RefusesAStructWhoseSizeWasNotSet) {
  const zorbase_pose pose = {10, -20, 30, 0, 0, 1};
  for (const std::size_t size : {std::size_t{0}, sizeof(zorbase_closest) - 1, ~std::size_t{0}}) {
    zorbase_closest closest = {};
    closest.size = size;
    closest.param = 7;
    EXPECT_TRUE(Fails(zorbase_curve_closest(Curve, &pose, &closest), ZORBASE_BAD_ARGUMENT,
                      HasSubstr("closest has the size " + std::to_string(size))));
    EXPECT_EQ(closest.param, 7);
  }
}

TEST(ZorbaseCurveWithoutPoints, IsTheErrorOfTheClassInEveryCallThatNeedsThem) {
  const TCurveHandle curve;
  std::vector<zorbase_pose> poses(4);
  double number = 7;
  EXPECT_EQ(zorbase_curve_evaluate(curve, 0.5, poses.data()), ZORBASE_ERROR);
  EXPECT_EQ(zorbase_curve_evaluate_many(curve, &number, 1, poses.data()), ZORBASE_ERROR);
  EXPECT_EQ(zorbase_curve_derivatives(curve, 0.5, poses.data()), ZORBASE_ERROR);
  EXPECT_EQ(zorbase_curve_curvature(curve, 0.5, &number), ZORBASE_ERROR);
  EXPECT_EQ(zorbase_curve_length(curve, &number), ZORBASE_ERROR);
  EXPECT_EQ(zorbase_curve_param_of_length(curve, 1, &number), ZORBASE_ERROR);
  EXPECT_EQ(zorbase_curve_measure(curve), ZORBASE_ERROR);
  EXPECT_EQ(zorbase_curve_reverse(curve), ZORBASE_ERROR);
  EXPECT_EQ(number, 7);
  std::size_t count = 9;
  EXPECT_TRUE(Good(zorbase_curve_control_points(curve, nullptr, 0, &count)));
  EXPECT_EQ(count, 0U);
  const auto before = Bits(poses);
  count = 9;
  EXPECT_TRUE(Good(zorbase_curve_control_points(curve, poses.data(), poses.size(), &count)));
  EXPECT_EQ(count, 0U);
  EXPECT_EQ(Bits(poses), before);
}

TEST_F(ZorbaseCurve, IsReadFromManyThreadsAtOnce) {
  const auto expected = Bits(Inside.EvalPoint(Inside.ParamOfLength(40)));
  const auto walk = [&] {
    for (int i = 0; i < 1000; ++i) {
      double param = 0;
      zorbase_pose pose = {};
      ASSERT_TRUE(Good(zorbase_curve_param_of_length(Curve, 40, &param)));
      ASSERT_TRUE(Good(zorbase_curve_evaluate(Curve, param, &pose)));
      ASSERT_EQ(Bits(pose), expected);
    }
  };
  std::thread other(walk);
  walk();
  other.join();
}

}  // namespace
}  // namespace ZORBase::Test
