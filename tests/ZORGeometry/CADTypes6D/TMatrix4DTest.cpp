#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4D.h>

#include <ZORBase/ZORGeometry/CADTypes6D/TMatrix4DList.h>

#include "ZORGeometry/CADTypes6D/PoseTestSupport.h"

#include <limits>

namespace ZORBase {
namespace {

using namespace Test;  // NOLINT(google-build-using-namespace)

// Twelve different entries: rows (1 2 3 | 10), (4 5 6 | 11), (7 8 9 | 12).
constexpr TMatrix4D kCounted = TMatrix4D::Create(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12);

// ---------------------------------------------------------------------------------------------- making

TEST(TMatrix4D, IsAllZeroByDefault) {
  EXPECT_THAT(TMatrix4D(), IsExactly(TMatrix4D::Create(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)));
  EXPECT_THAT(TMatrix4D::ReturnZeroMatrix(), IsExactly(TMatrix4D()));
}

TEST(TMatrix4D, TwelveNumbersAreTheRotationRowByRowAndThenTheTranslation) {
  const std::array<std::array<double, 4>, 3> expected = {{{1, 2, 3, 10}, {4, 5, 6, 11}, {7, 8, 9, 12}}};
  EXPECT_EQ(kCounted.fm, expected);
}

TEST(TMatrix4D, NineNumbersLeaveNoTranslation) {
  EXPECT_THAT(TMatrix4D::Create(1, 2, 3, 4, 5, 6, 7, 8, 9), IsExactly(At(kCounted, Pt(0, 0, 0))));
}

TEST(TMatrix4D, AxesBecomeTheColumnsAsTheyAre) {
  const TMatrix4D frame = TMatrix4D::Create(Pt(1, 4, 7), Pt(2, 5, 8), Pt(3, 6, 9), Pt(10, 11, 12));
  EXPECT_THAT(frame, IsExactly(kCounted));
  EXPECT_THAT(TMatrix4D::Create(Pt(1, 4, 7), Pt(2, 5, 8), Pt(3, 6, 9)), IsExactly(At(kCounted, Pt(0, 0, 0))));
}

TEST(TMatrix4D, CreateOfAMatrixIsACopy) { EXPECT_THAT(TMatrix4D::Create(kCounted), IsExactly(kCounted)); }

TEST(TMatrix4D, TheIdentityLeavesEveryAxisWhereItIs) {
  EXPECT_THAT(kIdentity, IsExactly(TMatrix4D::Create(Pt(1, 0, 0), Pt(0, 1, 0), Pt(0, 0, 1))));
  TMatrix4D matrix = kCounted;
  matrix.Reset();
  EXPECT_THAT(matrix, IsExactly(kIdentity));
}

TEST(TMatrix4D, FewerThanNineValuesWriteNothing) {
  const std::vector<double> values(8, -1.0);
  TMatrix4D matrix = kCounted;
  matrix.Create(values);
  matrix.Create(std::span<const double>());
  EXPECT_THAT(matrix, IsExactly(kCounted));
}

TEST(TMatrix4D, NineToElevenValuesWriteTheRotationAlone) {
  for (const std::size_t count : {9U, 10U, 11U}) {
    const std::vector<double> values = {11, 12, 13, 14, 15, 16, 17, 18, 19, -1, -2};
    TMatrix4D matrix = kCounted;
    matrix.Create(std::span(values).first(count));
    EXPECT_THAT(matrix, IsExactly(TMatrix4D::Create(11, 12, 13, 14, 15, 16, 17, 18, 19, 10, 11, 12))) << count;
  }
}

TEST(TMatrix4D, TwelveOrMoreValuesWriteEverything) {
  const std::vector<double> values = {11, 12, 13, 14, 15, 16, 17, 18, 19, -1, -2, -3, -4};
  for (const std::size_t count : {12U, 13U}) {
    TMatrix4D matrix = kCounted;
    matrix.Create(std::span(values).first(count));
    EXPECT_THAT(matrix, IsExactly(TMatrix4D::Create(11, 12, 13, 14, 15, 16, 17, 18, 19, -1, -2, -3))) << count;
  }
}

// ---------------------------------------------------------------------------------------------- entries

TEST(TMatrix4D, MatrixUnitsAreCountedFromOne) {
  EXPECT_EQ(kCounted.GetMatrixUnit(1, 1), 1);
  EXPECT_EQ(kCounted.GetMatrixUnit(2, 3), 6);
  EXPECT_EQ(kCounted.GetMatrixUnit(3, 4), 12);
}

TEST(TMatrix4D, AMatrixUnitOutsideRaises) {
  EXPECT_THAT(Calling([] { kCounted.GetMatrixUnit(0, 1); }),
              RaisesGeneralError("TMatrix4D has the rows 1 to 3 and the columns 1 to 4, no row 0 column 1"));
  EXPECT_THAT(Calling([] { kCounted.GetMatrixUnit(4, 1); }),
              RaisesGeneralError(testing::HasSubstr("no row 4 column 1")));
  EXPECT_THAT(Calling([] { kCounted.GetMatrixUnit(1, 0); }),
              RaisesGeneralError(testing::HasSubstr("no row 1 column 0")));
  EXPECT_THAT(Calling([] { kCounted.GetMatrixUnit(3, 5); }),
              RaisesGeneralError(testing::HasSubstr("no row 3 column 5")));
  EXPECT_THAT(Calling([] { kCounted.GetMatrixUnit(255, 255); }), RaisesGeneralError(testing::HasSubstr("no row 255")));
}

TEST(TMatrix4D, RowsAndColumnsAreCountedFromZeroAndOthersMeanTheFirst) {
  EXPECT_THAT(kCounted.GetRowVector(0), IsExactly(Pt(1, 2, 3)));
  EXPECT_THAT(kCounted.GetRowVector(2), IsExactly(Pt(7, 8, 9)));
  EXPECT_THAT(kCounted.GetRowVector(3), IsExactly(Pt(1, 2, 3)));
  EXPECT_THAT(kCounted.GetColVector(0), IsExactly(Pt(1, 4, 7)));
  EXPECT_THAT(kCounted.GetColVector(2), IsExactly(Pt(3, 6, 9)));
  EXPECT_THAT(kCounted.GetColVector(3), IsExactly(Pt(10, 11, 12)));
  EXPECT_THAT(kCounted.GetColVector(4), IsExactly(Pt(1, 4, 7)));
  EXPECT_THAT(kCounted.GetColVector(255), IsExactly(Pt(1, 4, 7)));
}

TEST(TMatrix4D, SettingARowKeepsTheTranslation) {
  TMatrix4D matrix = kCounted;
  matrix.SetRowVector(1, Pt(-1, -2, -3));
  EXPECT_THAT(matrix, IsExactly(TMatrix4D::Create(1, 2, 3, -1, -2, -3, 7, 8, 9, 10, 11, 12)));
  matrix.SetRowVector(3, Pt(-4, -5, -6));
  EXPECT_THAT(matrix, IsExactly(TMatrix4D::Create(-4, -5, -6, -1, -2, -3, 7, 8, 9, 10, 11, 12)));
}

TEST(TMatrix4D, SettingAColumnReachesTheTranslationToo) {
  TMatrix4D matrix = kCounted;
  matrix.SetColVector(1, Pt(-1, -2, -3));
  matrix.SetColVector(3, Pt(-7, -8, -9));
  EXPECT_THAT(matrix, IsExactly(TMatrix4D::Create(1, -1, 3, 4, -2, 6, 7, -3, 9, -7, -8, -9)));
  matrix.SetColVector(4, Pt(-4, -5, -6));
  EXPECT_THAT(matrix, IsExactly(TMatrix4D::Create(-4, -1, 3, -5, -2, 6, -6, -3, 9, -7, -8, -9)));
}

TEST(TMatrix4D, TheTranslationIsReadSetAddedToAndCleared) {
  TMatrix4D matrix = kCounted;
  EXPECT_THAT(matrix.GetTranslationPt(), IsExactly(Pt(10, 11, 12)));
  matrix.Translate(1, 2, 3);
  EXPECT_THAT(matrix, IsExactly(At(kCounted, Pt(11, 13, 15))));
  matrix.Translate(Pt(-1, 0, 1));
  EXPECT_THAT(matrix, IsExactly(At(kCounted, Pt(10, 13, 16))));
  matrix.SetTranslationCol(Pt(1, 2, 3));
  EXPECT_THAT(matrix.GetTranslationPt(), IsExactly(Pt(1, 2, 3)));
  matrix.SetTranslationPt(Pt(4, 5, 6));
  EXPECT_THAT(matrix.GetColVector(3), IsExactly(Pt(4, 5, 6)));
  matrix.ClearTranslation();
  EXPECT_THAT(matrix, IsExactly(TMatrix4D::Create(1, 2, 3, 4, 5, 6, 7, 8, 9)));
}

TEST(TMatrix4D, SumsDifferencesAndMultiplesRunOverAllTwelveEntries) {
  const TMatrix4D doubled = TMatrix4D::Create(2, 4, 6, 8, 10, 12, 14, 16, 18, 20, 22, 24);
  EXPECT_THAT(kCounted + kCounted, IsExactly(doubled));
  EXPECT_THAT(kCounted * 2, IsExactly(doubled));
  EXPECT_THAT(2 * kCounted, IsExactly(doubled));
  EXPECT_THAT(doubled - kCounted, IsExactly(kCounted));
}

// ---------------------------------------------------------------------------------------------- tests

TEST(TMatrix4D, IsTheIdentityUpToLessThan1eMinus6InEveryEntry) {
  EXPECT_TRUE(kIdentity.isIdent());
  EXPECT_FALSE(TMatrix4D().isIdent());
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 4; ++j) {
      for (const double sign : {1.0, -1.0}) {
        TMatrix4D matrix = kIdentity;
        matrix.fm[i][j] += sign * 9e-7;
        EXPECT_TRUE(matrix.isIdent()) << i << j;
        matrix.fm[i][j] += sign * 2e-7;
        EXPECT_FALSE(matrix.isIdent()) << i << j;
        EXPECT_EQ(matrix.isRotIdent(), j == 3) << i << j;
      }
    }
  }
}

TEST(TMatrix4D, ADifferenceOfExactlyTheToleranceIsEqualButNotIdentical) {
  const TMatrix4D matrix = At(kIdentity, Pt(1e-6, 0, 0));
  EXPECT_EQ(matrix, kIdentity);
  EXPECT_FALSE(matrix.isIdent());
}

TEST(TMatrix4D, EqualityComparesEveryEntryWithin1eMinus6) {
  for (std::size_t i = 0; i < 3; ++i) {
    for (std::size_t j = 0; j < 4; ++j) {
      TMatrix4D matrix = kCounted;
      matrix.fm[i][j] += 9e-7;
      EXPECT_TRUE(matrix == kCounted && !(matrix != kCounted)) << i << j;
      matrix.fm[i][j] += 2e-7;
      EXPECT_TRUE(matrix != kCounted && !(matrix == kCounted)) << i << j;
    }
  }
}

TEST(TMatrix4D, AnEntryThatIsNoNumberEqualsNothing) {
  const TMatrix4D matrix = At(kIdentity, Pt(0, kNaN, 0));
  EXPECT_FALSE(matrix == matrix);
  EXPECT_FALSE(matrix.isIdent());
  EXPECT_TRUE(matrix.isRotIdent());
}

TEST(TMatrix4D, RotationsAndReflectionsAreOrthogonalShearsAndScalingsAreNot) {
  EXPECT_TRUE(kIdentity.isOrthogonal());
  EXPECT_TRUE(At(TurnX(1) * TurnZ(2), Pt(1, 2, 3)).isOrthogonal());
  EXPECT_TRUE(TMatrix4D::Create(0, 1, 0, 1, 0, 0, 0, 0, 1).isOrthogonal());
  EXPECT_FALSE(TMatrix4D::Create(1, 0.1, 0, 0, 1, 0, 0, 0, 1).isOrthogonal());
  EXPECT_FALSE(TMatrix4D::Create(2, 0, 0, 0, 2, 0, 0, 0, 2).isOrthogonal());
  EXPECT_FALSE(TMatrix4D().isOrthogonal());
}

// (1 + 9e-7)^2 is 1.8e-6 above 1; without translation the product never gets formed.
TEST(TMatrix4D, AScalingOfLessThan1eMinus6IsOrthogonalOnlyAsTheIdentityIs) {
  const TMatrix4D scaling = TMatrix4D::Create(1 + 9e-7, 0, 0, 0, 1, 0, 0, 0, 1);
  EXPECT_TRUE(scaling.isOrthogonal());
  EXPECT_FALSE(At(scaling, Pt(1, 0, 0)).isOrthogonal());
}

// ---------------------------------------------------------------------------------------------- text and rounding

TEST(TMatrix4D, TheTextHasTheTwelveEntriesInStorageOrder) {
  const TLocaleGuard classic(std::locale::classic());
  EXPECT_EQ(kCounted.ToString(), "(1, 2, 3, 10, 4, 5, 6, 11, 7, 8, 9, 12)");
  const TMatrix4D matrix = TMatrix4D::Create(0.1 + 0.2, -0.5, 1e20, 0, 1.0 / 3, 1e-7, 0, 0, 0, 0, 0, 0);
  EXPECT_EQ(matrix.ToString(), "(0.3, -0.5, 1e+20, 0, 0, 0.333333333333333, 1e-07, 0, 0, 0, 0, 0)");
}

TEST(TMatrix4D, TheTextFollowsTheLocale) {
  const TLocaleGuard german(std::locale("de_DE.UTF-8"));
  EXPECT_EQ((kCounted * 0.5).ToString(), "(0,5, 1, 1,5, 5, 2, 2,5, 3, 5,5, 3,5, 4, 4,5, 6)");
}

double Rounded(double Value, int Digits) { return At({}, Pt(Value, 0, 0)).RoundTo(Digits).fm[0][3]; }

TEST(TMatrix4D, RoundToRoundsAllTwelveEntries) {
  const TMatrix4D matrix = kCounted + TMatrix4D::Create(.04, .06, .04, .06, .04, .06, .04, .06, .04, .06, .04, .06);
  const TMatrix4D expected = kCounted + TMatrix4D::Create(0, .1, 0, .1, 0, .1, 0, .1, 0, .1, 0, .1);
  EXPECT_THAT(matrix.RoundTo(-1), IsExactly(expected));
}

TEST(TMatrix4D, RoundToKeepsDecimalsOrDropsPlacesByItsSign) {
  EXPECT_EQ(Rounded(1.23456, -3), 1.235);
  EXPECT_EQ(Rounded(-1.23456, -3), -1.235);
  EXPECT_EQ(Rounded(1.23456, 0), 1);
  EXPECT_EQ(Rounded(1251, 2), 1300);
  EXPECT_EQ(Rounded(-1251, 2), -1300);
  EXPECT_EQ(Rounded(49, 2), 0);
}

TEST(TMatrix4D, RoundToGivesATieToTheEvenMultiple) {
  EXPECT_EQ(Rounded(0.125, -2), 0.12);
  EXPECT_EQ(Rounded(0.375, -2), 0.38);
  EXPECT_EQ(Rounded(2.5, 0), 2);
  EXPECT_EQ(Rounded(3.5, 0), 4);
  EXPECT_EQ(Rounded(250, 2), 200);
  EXPECT_EQ(Rounded(350, 2), 400);
}

// The double nearest to 1.115 lies below it, but times 100 it rounds to the tie 111.5, whose even neighbour is 112.
TEST(TMatrix4D, RoundToRoundsTheExactBinaryValue) { EXPECT_EQ(Rounded(1.115, -2), 1.11); }

TEST(TMatrix4D, RoundToTakesAnyNumberOfDigitsAndAnyEntry) {
  EXPECT_EQ(Rounded(0.1, std::numeric_limits<int>::min()), 0.1);
  EXPECT_EQ(Rounded(5e-324, -2000), 5e-324);
  EXPECT_EQ(Rounded(1e300, std::numeric_limits<int>::max()), 0);
  EXPECT_DOUBLE_EQ(Rounded(1.6e300, 300), 2e300);
  EXPECT_EQ(Rounded(kInfinity, -3), kInfinity);
  EXPECT_EQ(Rounded(-kInfinity, 3), -kInfinity);
  EXPECT_TRUE(std::isnan(Rounded(kNaN, -3)));
}

TEST(TMatrix4DList, IsAListOfMatrices) {
  TMatrix4DList list;
  list.Add(kCounted);
  list.Insert(0, kIdentity);
  ASSERT_EQ(list.Count(), 2);
  EXPECT_THAT(list[1], IsExactly(kCounted));
  EXPECT_THAT(list.First(), IsExactly(kIdentity));
}

}  // namespace
}  // namespace ZORBase
