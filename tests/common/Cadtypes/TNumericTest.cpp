#include <ZORBase/common/Cadtypes/TNumeric.h>

#include "support/TestSupport.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <thread>
#include <vector>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;

const TGeInterval kUnit = TGeInterval::Create(-1, 1, 1e-6);

// The positive places of the 14-point rule and their weights to 50 digits.
constexpr TGaussNode kNodesOf14[] = {
    {0.10805494870734366206624465021983474761195160547424, 0.21526385346315779019587644331626003527499755805413},
    {0.31911236892788976043567182416847546683426120353384, 0.20519846372129560396592406566121805571033906130942},
    {0.51524863635815409196529071855118866230888528256931, 0.18553839747793781374171659012515703624892260293733},
    {0.68729290481168547014801980301933413753840121274717, 0.15720316715819353456960193862384215660566803733732},
    {0.82720131506976499318979474265039496103970110147508, 0.12151857068790318468941480907247662595666934569007},
    {0.92843488366357351733639113937787426447703921040984, 0.080158087159760209805633277062854309583697785394595},
    {0.98628380869681233884159726670405280167609140723923, 0.035119460331751863031832876138191780619705609277127},
};

TEST(GaussLegendreRule, The14PointRuleIsExactToTheLastBit) {
  const auto rule = TNumeric::GaussLegendreRule(14);
  ASSERT_EQ(rule.size(), 14U);
  for (std::size_t i = 0; i < 7; ++i) {
    EXPECT_EQ(rule[7 + i].Place, kNodesOf14[i].Place) << i;
    EXPECT_EQ(rule[7 + i].Weight, kNodesOf14[i].Weight) << i;
    EXPECT_EQ(rule[6 - i].Place, -kNodesOf14[i].Place) << i;
    EXPECT_EQ(rule[6 - i].Weight, kNodesOf14[i].Weight) << i;
  }
}

// Next to the ends of the interval the places lie closest together, and weights are hardest to get right.
TEST(GaussLegendreRule, TheOuterNodesOfLargeRulesAreRight) {
  struct TOuter {
    int Count;
    std::size_t Index;
    TGaussNode Node;
  };
  constexpr TOuter outers[] = {
      {8,
       0,
       {-0.96028985649753623168356086856947299042823523430145, 0.10122853629037625915253135430996219011539409105168}},
      {64,
       0,
       {-0.99930504173577213945690562434563631196971219167561, 0.001783280721696432947296079144971933179959347271928}},
      {255,
       0,
       {-0.99995570531756375173019114567802812573986208762212, 0.00011367361999142272115645954414015794225413539967}},
      {255,
       1,
       {-0.99976662131200056936706323863045192553656257025653, 0.00026459387119083065532790838854947906704509648460}},
      {256,
       0,
       {-0.99995605001899223073480121016841593607594150196605, 0.00011278901782227217551253887724983760559023505128}},
      {256,
       1,
       {-0.99976843740926318610487858551188302594151181041288, 0.00026253494429644590628745756249949673272472953726}},
  };
  for (const TOuter& outer : outers) {
    const TGaussNode node = TNumeric::GaussLegendreRule(outer.Count)[outer.Index];
    EXPECT_EQ(node.Place, outer.Node.Place) << outer.Count;
    EXPECT_DOUBLE_EQ(node.Weight, outer.Node.Weight) << outer.Count;
  }
}

TEST(GaussLegendreRule, TheSmallRulesAreTheClassicalOnes) {
  const auto one = TNumeric::GaussLegendreRule(1);
  EXPECT_EQ(one[0].Place, 0);
  EXPECT_EQ(one[0].Weight, 2);
  const auto two = TNumeric::GaussLegendreRule(2);
  EXPECT_DOUBLE_EQ(two[1].Place, 1 / std::numbers::sqrt3);
  EXPECT_EQ(two[1].Weight, 1);
  const auto three = TNumeric::GaussLegendreRule(3);
  EXPECT_DOUBLE_EQ(three[2].Place, std::sqrt(0.6));
  EXPECT_DOUBLE_EQ(three[2].Weight, 5.0 / 9.0);
  EXPECT_DOUBLE_EQ(three[1].Weight, 8.0 / 9.0);
}

TEST(GaussLegendreRule, EveryRuleRisesIsSymmetricAndHasTheWeightOfTheInterval) {
  for (int n = 1; n <= TNumeric::kGaussPointLimit; ++n) {
    const auto rule = TNumeric::GaussLegendreRule(n);
    ASSERT_EQ(rule.size(), static_cast<std::size_t>(n));
    double sum = 0;
    for (std::size_t i = 0; i < rule.size(); ++i) {
      ASSERT_GT(rule[i].Place, i == 0 ? -1.0 : rule[i - 1].Place);
      ASSERT_EQ(rule[i].Place, -rule[rule.size() - 1 - i].Place);
      ASSERT_EQ(rule[i].Weight, rule[rule.size() - 1 - i].Weight);
      ASSERT_FALSE(rule[i].Place == 0 && std::signbit(rule[i].Place));
      sum += rule[i].Weight;
    }
    ASSERT_LT(rule.back().Place, 1.0);
    ASSERT_NEAR(sum, 2.0, 1e-14) << n;
  }
}

TEST(GaussLegendreRule, OnlyCountsFrom1ToTheLimitArePossible) {
  constexpr int limit = TNumeric::kGaussPointLimit;
  for (const int n : {0, -1, limit + 1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
    const std::string text =
        "Gauss quadrature with " + std::to_string(n) + " points; 1 to " + std::to_string(limit) + " are possible";
    EXPECT_THAT(Calling([&] { TNumeric::GaussLegendreRule(n); }), RaisesGeneralError(text));
    EXPECT_THAT(Calling([&] { TNumeric::GaussQuadrature([](double X) { return X; }, kUnit, n); }),
                RaisesGeneralError(text));
  }
}

TEST(GaussLegendreRule, SeveralThreadsGetTheSameRule) {
  std::vector<std::span<const TGaussNode>> rules(8);
  std::vector<std::thread> threads;
  for (auto& rule : rules) threads.emplace_back([&rule] { rule = TNumeric::GaussLegendreRule(233); });
  for (std::thread& thread : threads) thread.join();
  for (const auto& rule : rules) EXPECT_EQ(rule.data(), rules[0].data());
}

// The integral of x^k over [-1, 1] is 2 / (k + 1) for an even k and 0 for an odd one.
TEST(GaussQuadrature, IsExactForPolynomialsOfDegree2NMinus1) {
  for (int n = 1; n <= TNumeric::kGaussPointLimit; n += n < 40 ? 1 : 59) {
    for (const int degree : {0, 1, n, 2 * n - 2, 2 * n - 1}) {
      const double exact = degree % 2 == 0 ? 2.0 / (degree + 1) : 0.0;
      const double sum = TNumeric::GaussQuadrature([&](double X) { return std::pow(X, degree); }, kUnit, n);
      ASSERT_NEAR(sum, exact, 1e-14) << n << " points, degree " << degree;
    }
  }
}

// At degree 2N the rule misses by the integral of the square of the monic Legendre polynomial,
// 2^(2N+1) (N!)^4 / ((2N+1) ((2N)!)^2): 2 at N = 0, and N^2 / ((2N+1) (2N-1)) times the one before at every further N.
TEST(GaussQuadrature, TheFirstDegreeThatIsNotExactMissesByItsKnownRemainder) {
  double remainder = 2.0;
  for (int n = 1; n <= 12; ++n) {
    remainder *= n * n / ((2.0 * n + 1) * (2.0 * n - 1));
    const double sum = TNumeric::GaussQuadrature([&](double X) { return std::pow(X, 2 * n); }, kUnit, n);
    ASSERT_NEAR(2.0 / (2 * n + 1) - sum, remainder, 1e-14) << n;
  }
}

TEST(GaussQuadrature, MapsTheRuleOntoTheInterval) {
  const auto square = [](double X) { return X * X; };
  EXPECT_DOUBLE_EQ(TNumeric::GaussQuadrature(square, TGeInterval::Create(1, 4, 1e-6), 2), 21);
  EXPECT_DOUBLE_EQ(TNumeric::GaussQuadrature(square, TGeInterval::Create(-3, 0, 1e-6), 14), 9);
  EXPECT_NEAR(TNumeric::GaussQuadrature([](double X) { return std::sin(X); },
                                        TGeInterval::Create(0, std::numbers::pi, 1e-6), 14),
              2, 1e-15);
}

TEST(GaussQuadrature, AReversedIntervalGivesTheNegativeAndAnEmptyOneNothing) {
  const auto f = [](double X) { return std::exp(X); };
  const double forward = TNumeric::GaussQuadrature(f, TGeInterval::Create(0, 1, 1e-6), 14);
  EXPECT_DOUBLE_EQ(forward, std::numbers::e - 1);
  EXPECT_DOUBLE_EQ(TNumeric::GaussQuadrature(f, TGeInterval::Create(1, 0, 1e-6), 14), -forward);
  EXPECT_EQ(TNumeric::GaussQuadrature(f, TGeInterval::Create(1, 1, 1e-6), 14), 0);
}

TEST(GaussQuadrature, CallsTheFunctionOncePerPointFromAToB) {
  std::vector<double> places;
  const auto note = [&](double X) { return places.push_back(X), 1.0; };
  TNumeric::GaussQuadrature(note, TGeInterval::Create(10, 20, 1e-6), 14);
  EXPECT_EQ(places.size(), 14U);
  EXPECT_TRUE(std::is_sorted(places.begin(), places.end()));
  EXPECT_GT(places.front(), 10);
  EXPECT_LT(places.back(), 20);
}

TEST(GaussQuadrature, TheToleranceOfTheIntervalDoesNotChangeTheResult) {
  const auto f = [](double X) { return std::sqrt(1 + X * X); };
  const double fine = TNumeric::GaussQuadrature(f, TGeInterval::Create(0, 5, 1e-15), 14);
  EXPECT_EQ(TNumeric::GaussQuadrature(f, TGeInterval::Create(0, 5, 1.0), 14), fine);
}

}  // namespace
}  // namespace ZORBase
