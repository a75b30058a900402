#include <ZORBase/ZORGeometry/CADTypesEuler.h>

#include "support/TestSupport.h"

namespace ZORBase {
namespace {

using Test::Calling;
using Test::IsNearPose;
using Test::RaisesGeneralError;
using Test::TLocaleGuard;
using testing::ElementsAre;
using testing::EndsWith;

const auto kPoint = TEulerPoint::Create(1, 2, 3, 4, 5, 6);

TEST(TEulerPoint, IsZeroByDefaultAndFZeroIsZeroBeforeAndAfterStartUp) {
  EXPECT_THAT(TEulerPoint().ToArray(), ElementsAre(0, 0, 0, 0, 0, 0));
  EXPECT_THAT(TEulerPoint::FZero.ToArray(), ElementsAre(0, 0, 0, 0, 0, 0));
  CADTypesEuler::initialization();
  EXPECT_THAT(TEulerPoint::FZero.ToArray(), ElementsAre(0, 0, 0, 0, 0, 0));
  CADTypesEuler::Finalization();
}

TEST(TEulerPoint, IsMadeOfSixNumbersOrOfPositionAndAngles) {
  EXPECT_EQ(kPoint.X, 1);
  EXPECT_EQ(kPoint.Y, 2);
  EXPECT_EQ(kPoint.Z, 3);
  EXPECT_EQ(kPoint.Rx, 4);
  EXPECT_EQ(kPoint.Ry, 5);
  EXPECT_EQ(kPoint.Rz, 6);
  const auto same = TEulerPoint::Create(TPoint3D::Create(1, 2, 3), TEulerAng::Create(4, 5, 6));
  EXPECT_EQ(same.ToArray(), kPoint.ToArray());
}

TEST(TEulerPoint, ItemsAreTheComponentsThemselves) {
  TEulerPoint point;
  for (int i = 0; i < 6; ++i) point.Items(i) = i + 1;
  EXPECT_EQ(point.ToArray(), kPoint.ToArray());
  EXPECT_EQ(kPoint.Items(3), 4);
  EXPECT_THAT(Calling([&] { point.Items(6); }), RaisesGeneralError("TEulerPoint has the items 0 to 5, not 6"));
  EXPECT_THAT(Calling([&] { kPoint.Items(-1); }), RaisesGeneralError("TEulerPoint has the items 0 to 5, not -1"));
}

TEST(TEulerPoint, PositionAndAnglesAreReadAndWrittenApart) {
  EXPECT_EQ(kPoint.GetPoint().Y, 2);
  EXPECT_EQ(kPoint.GetPointXY().X, 1);
  EXPECT_EQ(kPoint.GetPointXY().Y, 2);
  EXPECT_THAT(kPoint.GetEuler().ToArray(), ElementsAre(4, 5, 6));
  TEulerPoint point = kPoint;
  point.SetPoint(TPoint3D::Create(10, 20, 30));
  EXPECT_THAT(point.ToArray(), ElementsAre(10, 20, 30, 4, 5, 6));
  point.SetEuler(TEulerAng::Create(40, 50, 60));
  EXPECT_THAT(point.ToArray(), ElementsAre(10, 20, 30, 40, 50, 60));
}

TEST(TEulerPoint, ASixComponentPoseHasThePositionAndTheToolDirection) {
  const auto point = TEulerPoint::Create(1, 2, 3, kPi / 2, 0, 0);
  EXPECT_THAT(point.ToPoint6D(), IsNearPose(TPoint6D::Create(1, 2, 3, 0, -1, 0), 1e-16));
  EXPECT_EQ(point.GetVector().Y, point.ToPoint6D().B);
  EXPECT_THAT(TEulerPoint::FZero.ToPoint6D(), IsNearPose(TPoint6D::Create(0, 0, 0, 0, 0, 1), 0));
}

// ---------------------------------------------------------------------------------------------- text

TEST(TEulerPoint, TextFollowsTheLocaleAndThe1033FormDoesNot) {
  const auto point = TEulerPoint::Create(1, -2.5, 0, 0.125, 1e3, 6);
  {
    const TLocaleGuard guard(std::locale::classic());
    EXPECT_EQ(point.ToString(3), "1.000,-2.500,0.000,0.125,1000.000,6.000");
    EXPECT_EQ(point.ToString1033(3), "1.000,-2.500,0.000,0.125,1000.000,6.000");
  }
  const TLocaleGuard guard(std::locale("de_DE.UTF-8"));
  EXPECT_EQ(point.ToString(3), "1,000,-2,500,0,000,0,125,1000,000,6,000");
  EXPECT_EQ(point.ToString1033(3), "1.000,-2.500,0.000,0.125,1000.000,6.000");
}

TEST(TEulerPoint, DecimalsAreClampedInto0To12) {
  const auto point = TEulerPoint::Create(0.5, 1, 2, 3, 4, 5);
  const std::string longest =
      "0.500000000000,1.000000000000,2.000000000000,3.000000000000,4.000000000000,5.000000000000";
  EXPECT_EQ(point.ToString1033(12), longest);
  EXPECT_EQ(point.ToString1033(15), longest);
  EXPECT_EQ(kPoint.ToString1033(-1), "1,2,3,4,5,6");
  EXPECT_EQ(kPoint.ToString(-1), "1,2,3,4,5,6");
  const TLocaleGuard guard(std::locale::classic());
  EXPECT_EQ(point.ToString(15), longest);
}

TEST(TEulerPoint, TextIsAppendedToWhatIsThere) {
  std::string text = "pose ";
  kPoint.AppendString1033(text, 0);
  EXPECT_EQ(text, "pose 1,2,3,4,5,6");
  kPoint.AppendString(text, 0);
  EXPECT_EQ(text, "pose 1,2,3,4,5,61,2,3,4,5,6");
}

TEST(TEulerPoint, SixNumbersParseWhateverPartsThem) {
  for (const std::string_view text :
       {"1,2,3,4,5,6", "1, 2, 3, 4, 5, 6", "1 2 3 4 5 6", " \t1 , 2 ,3,4,5,6 \r\n", "\"1\",\" 2 \",3,4,5,6"}) {
    EXPECT_EQ(TEulerPoint::Parse1033(text).ToArray(), kPoint.ToArray()) << text;
    EXPECT_EQ(TEulerPoint::Parse(text).ToArray(), kPoint.ToArray()) << text;
  }
}

TEST(TEulerPoint, AWrongNumberOfItemsRaisesWithTheTextAndTheNumber) {
  EXPECT_THAT(Calling([] { TEulerPoint::Parse1033("1,2,3,4,5"); }),
              RaisesGeneralError("TEulerPoint Parse from string Failed(1,2,3,4,5). Error Item Number: 5"));
  EXPECT_THAT(Calling([] { TEulerPoint::Parse("1,2,3"); }),
              RaisesGeneralError("TEulerPoint Parse from string Failed(1,2,3). Error Item Number: 3"));
  EXPECT_THAT(Calling([] { TEulerPoint::Parse1033(""); }),
              RaisesGeneralError("TEulerPoint Parse from string Failed(). Error Item Number: 0"));
  EXPECT_THAT(Calling([] { TEulerPoint::Parse1033("1,2,3,4,5,6,"); }),
              RaisesGeneralError(EndsWith("Error Item Number: 7")));
}

TEST(TEulerPoint, AnItemThatIsNoNumberRaisesWithTheText) {
  EXPECT_THAT(Calling([] { TEulerPoint::Parse1033("1,2,x,4,5,6"); }),
              RaisesGeneralError("TEulerPoint Parse from string Failed(1,2,x,4,5,6). "
                                 "'x' is not a valid floating point value"));
  EXPECT_THAT(Calling([] { TEulerPoint::Parse1033("1,,3,4,5,6"); }),
              RaisesGeneralError("TEulerPoint Parse from string Failed(1,,3,4,5,6). "
                                 "'' is not a valid floating point value"));
  EXPECT_THAT(Calling([] { TEulerPoint::Parse1033("1,2,3,4,5,1e999"); }),
              RaisesGeneralError(EndsWith("'1e999' is too large for a floating point value")));
}

TEST(TEulerPoint, WithADecimalCommaNumbersStandInQuotes) {
  const TLocaleGuard guard(std::locale("de_DE.UTF-8"));
  EXPECT_THAT(TEulerPoint::Parse("\"1,5\",\"-2,25\",3,4,5,6").ToArray(), ElementsAre(1.5, -2.25, 3, 4, 5, 6));
  EXPECT_THAT(Calling([] { TEulerPoint::Parse("1,5,2,3,4,5,6"); }),
              RaisesGeneralError(EndsWith("Error Item Number: 7")));
  EXPECT_THAT(Calling([] { TEulerPoint::Parse("1.5,2,3,4,5,6"); }),
              RaisesGeneralError(EndsWith("'1.5' is not a valid floating point value")));
  EXPECT_EQ(TEulerPoint::Parse1033("1.5,2,3,4,5,6").X, 1.5);
}

// Half a unit of the last printed decimal, and the rounding of the numbers themselves.
RC_GTEST_PROP(TEulerPoint, TextParsesBackToThePrintedDecimals, ()) {
  TEulerPoint point;
  for (int i = 0; i < 6; ++i) point.Items(i) = *rc::gen::arbitrary<int>() * 1e-7;
  const int decimals = *rc::gen::inRange(0, 13);
  const TEulerPoint back = TEulerPoint::Parse1033(point.ToString1033(decimals));
  const double tolerance = 0.5 * std::pow(10.0, -decimals) + 1e-13;
  for (int i = 0; i < 6; ++i) RC_ASSERT(std::fabs(back.Items(i) - point.Items(i)) <= tolerance);
}

}  // namespace
}  // namespace ZORBase
