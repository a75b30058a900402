#include <ZORBase/common/Cadtypes/ArcCos.h>

#include "support/TestSupport.h"

#include <cmath>
#include <limits>
#include <numbers>

namespace ZORBase {
namespace {

using Test::Calling;
using Test::RaisesGeneralError;
using testing::StartsWith;

TEST(ArcCos, GivesTheAngleBetween0AndPi) {
  EXPECT_EQ(ArcCos(1.0), 0.0);
  EXPECT_DOUBLE_EQ(ArcCos(0.5), std::numbers::pi / 3);
  EXPECT_DOUBLE_EQ(ArcCos(0.0), std::numbers::pi / 2);
  EXPECT_EQ(ArcCos(-1.0), std::numbers::pi);
}

TEST(ArcCos, OneUnitOutsideIsAnErrorThatShowsTheValue) {
  EXPECT_THAT(Calling([] { ArcCos(std::nextafter(1.0, 2.0)); }),
              RaisesGeneralError("Arc cosine of a value outside [-1, 1]: 1.00000000000000022"));
  EXPECT_THAT(Calling([] { ArcCos(std::nextafter(-1.0, -2.0)); }),
              RaisesGeneralError("Arc cosine of a value outside [-1, 1]: -1.00000000000000022"));
}

TEST(ArcCos, WhatIsNoCosineAtAllIsAnError) {
  for (const double value : {2.0, -1e308, std::numeric_limits<double>::infinity(),
                             -std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_THAT(Calling([&] { ArcCos(value); }),
                RaisesGeneralError(StartsWith("Arc cosine of a value outside [-1, 1]: ")));
  }
}

}  // namespace
}  // namespace ZORBase
